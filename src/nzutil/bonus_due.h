#pragma once
// What the law gives in the slip of low and middle incomes, from the records of a calculated slip.
// It shares no figure with the calculation that it is held against. Amounts in cents.

#include <optional>

#include "nzutil/calculated_slip.h"

namespace nzutil {

/// Bonus due for the year on the slip that settles it, what another employer paid (Q278) included.
[[nodiscard]] double bonus_due(const CalculatedSlip& slip);
/// Bonus of the month, P022; nothing where it hangs on the yearly deductions of a family.
[[nodiscard]] std::optional<double> bonus_of_the_month(const CalculatedSlip& slip);

/// Further deduction due for the year, and of the month.
[[nodiscard]] double further_deduction_due(const CalculatedSlip& slip);
[[nodiscard]] double further_deduction_of_the_month(const CalculatedSlip& slip);

/// Integrative sum due for the year, and of the month.
[[nodiscard]] double integrative_sum_due(const CalculatedSlip& slip);
[[nodiscard]] double integrative_sum_of_the_month(const CalculatedSlip& slip);

}  // namespace nzutil
