#pragma once
// Contributions, bases, tax and employment deduction of a calculated slip, worked out again from
// its records. Nothing where the records do not tell enough: a pension fund of two bands or with
// formulas, an entertainer's bases, a sports collaborator's limits.

#include <optional>

#include "nzutil/calculated_slip.h"

namespace nzutil {

/// What the employee owes of the month's contributions, and the cuts already off it, in euro.
struct EmployeeContributions {
    double owed = 0;
    double reductions = 0;
    double to_fund = 0;  ///< of it to the pension fund, which the declaration (Q225) leaves out
};
[[nodiscard]] std::optional<EmployeeContributions> employee_contributions(
    const CalculatedSlip& slip);

/// Percent of the wage that the employee owes before any cut.
[[nodiscard]] std::optional<double> own_contribution_percent(const CalculatedSlip& slip);

/// Contributions of the slip to the pension fund, by the percentages of its record on the whole
/// wage or below the limit of one band.
struct FundShares {
    double employee = 0;
    double employer = 0;
};
[[nodiscard]] std::optional<FundShares> fund_shares(const CalculatedSlip& slip);
/// Has the slip a line that has moved accrual to a fund (Z020 8)? It comes off the wage P260.
[[nodiscard]] bool moves_accrual(const CalculatedSlip& slip);

/// Sum of the lines in the fiscal and in the social base.
[[nodiscard]] std::optional<double> fiscal_base(const CalculatedSlip& slip);
[[nodiscard]] std::optional<double> social_base(const CalculatedSlip& slip);

/// Contributions that lie on the amounts under separate taxation P244 and P245, which the record
/// holds without them.
[[nodiscard]] std::optional<double> contributions_on_separate_amounts(const CalculatedSlip& slip);

/// Gross tax on a yearly base by the scale of the employee, not rounded.
[[nodiscard]] double tax_by_scale(const CalculatedSlip& slip, double base);
/// Net tax of the whole year by the scale, not rounded.
[[nodiscard]] std::optional<double> tax_of_the_year(const CalculatedSlip& slip);

/// Employment deduction of a whole year at an income; 0 where another form holds (P583).
[[nodiscard]] double deduction_at_income(const CalculatedSlip& slip, double income);
/// Employment deduction (art. 13 TUIR since 2022) for the year's days, and for the month's.
[[nodiscard]] double deduction_of_the_year(const CalculatedSlip& slip);
[[nodiscard]] double deduction_of_the_month(const CalculatedSlip& slip);

}  // namespace nzutil
