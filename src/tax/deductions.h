#pragma once
// Deductions from gross tax: employment, spouse and dependants, large family.

#include <array>
#include <string>

#include "records/dictionary/DIPX.h"

namespace ModSWCALB {

/// One of the 24 places for a dependant on the employee.
struct DependantSlot {
    MXREPOSITORY::Descriptor tax_code;
    MXREPOSITORY::Descriptor birth_date;  ///< ddmmyyyy
    MXREPOSITORY::Descriptor share;       ///< percent of the deduction that is the employee's
    MXREPOSITORY::Descriptor kind;        ///< C spouse, F child, D disabled child, A other
    MXREPOSITORY::Descriptor months;      ///< months of the year as a dependant
    MXREPOSITORY::Descriptor last_used;   ///< 1 when the last slip counted the dependant
};
inline constexpr std::size_t kSlotCount = 24;
/// The slots in the order in which the dependants are read.
extern const std::array<DependantSlot, kSlotCount> kDependantSlots;

/// What belongs to the deductions of one employee.
struct DeductionState {
    /// Type of the first dependant, each 1 or 0, and whether the household is that one alone.
    /// Cleared by each CALCIMPOSTA.
    struct Household {
        double spouse = 0;  ///< P404
        double second = 0;  ///< P462
        double third = 0;   ///< P588
        bool only_first = false;
    } household;
    /// What the dependants give for a whole year, by the month's slip and after the quotients.
    double family_of_a_year = 0;
    /// One letter a slot: "S" in order, "N" a share without a tax code.
    std::string slot_marks = std::string(kSlotCount, 'S');
};
extern DeductionState deduction_state;

/// Annualised income for the deductions, R, in cents: Q669 and twelve times (a collaborator's
/// number of instalments) the month's taxable P256; with ConguaglioAnnuale the year's own figure.
/// Holds while the deductions run, before CALCIMPOSTA enlarges its base.
[[nodiscard]] double deduction_income();
/// Instalments of the year, N: 12, or P090 for a collaborator.
[[nodiscard]] double deduction_periods();
/// Days of the month that carry deductions: P215, a collaborator's P449.
[[nodiscard]] double deduction_days();
/// Days by which a yearly deduction is divided: 365, or 366 in a leap year when F169 = 0.
[[nodiscard]] double deduction_days_of_year();
/// Quotient of a deduction: its first four decimals are taken, the rest is dropped; not below 0.
[[nodiscard]] double deduction_quotient(double dividend, double divisor);

/// Employment deduction of a whole year at an income, in euro and not rounded; 0 for somebody who
/// has none (P583).
[[nodiscard]] double employment_deduction_of_year(double income);
/// Employment deduction by income; the month's share, or the year's by days.
void CALCOLADETRAZIONIREDDITO_2022();
/// Older employment deduction, from the sums of the yearly table.
void DetrLavoro();
/// Spouse, children, other dependants, large family.
void DetrFamiliari();
/// Clears the mark "last used" of dependants with a birth date for whom the year gives nothing.
void VerificaFamiliari();
/// False if a dependant with a share has no tax code: the slip is dropped ("INSERIRE CODFISC").
[[nodiscard]] bool ControllaCodFiscFamiliari();
/// Sets ABORTODIP if ControllaCodFiscFamiliari has found a tax code missing. The closing calls it
/// once more after the repeat guard, which may clear the flag.
void drop_slip_without_tax_codes();

/// Large-family sum that the tax cannot take is paid on the slip (Q772, P241). `net_tax` is the tax
/// after the credit and the deductions, before it is cut at 0; it rises by what is paid.
void refund_unused_large_family(double& net_tax);

}  // namespace ModSWCALB
