#pragma once
// Fiscal and social class of a pay item, and what both kinds of lines, employees' and
// collaborators', have in common. For the classification of a line only.

#include "slip/taxable_bases.h"

namespace ModSWCALM {

inline constexpr int kFiscal = 0;
inline constexpr int kSocial = 1;

/// Class of the line for one base, and its exempt limit; class 0 moves no base.
struct ItemClass {
    double number = 0;
    double limit = 0;
};

/// Class by Z013 and by Z014; the amounts that a class only sets aside are booked.
[[nodiscard]] ItemClass fiscal_class();
[[nodiscard]] ItemClass social_class();

/// Fiscal class as the base takes it; books nothing.
[[nodiscard]] ItemClass class_in_taxable();
/// What of the line an employee's, or a collaborator's, taxable amount takes in; books nothing.
[[nodiscard]] double employee_taxable_part();
[[nodiscard]] double collaborator_taxable_part();

/// Part of the line above the limit: of the amount, or of the rate for each unit (Z016 not 0).
[[nodiscard]] double excess(double limit);
/// A deduction takes off a base what an earning of its amount would put in.
[[nodiscard]] double with_sign(double value);
/// Signed amount of the line: a deduction, and class 2, count against the base.
[[nodiscard]] double signed_amount(double item_class);

/// The whole amount joins the second total and, in the social pass, what is held against the
/// minimum base.
void add_whole_amount(double x);
/// Class 4: only the part above the limit counts for the minimum base.
void class_4(double whole, double above);
/// What a class lets in joins the first and the third total.
void add_to_base(double x);

/// Month and year of the period where the item's formula stores Q788.
void date_the_mark_Q788();

}  // namespace ModSWCALM
