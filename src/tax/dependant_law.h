#pragma once
// Yearly amounts of the deductions for spouse, children and other dependants, by date of law
// (art. 12 TUIR).

#include <span>

namespace ModSWCALB {

/// Who the dependant is to the employee.
enum class Dependant { spouse, child, disabled_child, other };

/// Amounts in euro a year; ages in whole months, the month of the birthday counted to both sides.
struct DependantLaw {
    int from;                  ///< first month, yyyymm
    int to;                    ///< last month
    bool in_force;             ///< false: the charges of the family lower the income, not the tax
    double child;              ///< child of three and more
    double child_under_three;  ///< child up to the third birthday
    double disabled_increase;  ///< more for a disabled child
    double many_children;      ///< more for each child of more than three
    int youngest;              ///< age from which a child counts
    int oldest;                ///< age up to which a child that is not disabled counts
};

/// The rows of the table; each month is taken by exactly one.
[[nodiscard]] std::span<const DependantLaw> dependant_laws();
/// The row of a month (yyyymm).
[[nodiscard]] const DependantLaw& dependant_law(int yyyymm);

/// Months of age in a month; `birth` and `month` as yyyymm.
[[nodiscard]] int age_in_months(int birth, int month);

/// Yearly amount for a child in a month, 0 if none is due. A child whose birth (yyyymm) is 0 has no
/// known age: it counts only where the law asks for none, as one of three and more.
[[nodiscard]] double child_amount(int month, int birth, bool disabled, bool many_children);
/// Is the child in that month one that has not passed the third birthday?
[[nodiscard]] bool under_three(int month, int birth);
/// Yearly amount for the spouse at an income R, its quotient applied.
[[nodiscard]] double spouse_amount(int month, double income);
/// Yearly amount for another dependant, before the quotient.
[[nodiscard]] double other_amount(int month);

}  // namespace ModSWCALB
