#pragma once
// The calculated slip of one employee as a person reads it: head, lines with quantity, rate and
// amount, contributions, taxable, tax, deductions, net, year to date, severance.

#include <string>
#include <vector>

namespace nzutil {

/// Width of the slip in characters.
inline constexpr std::size_t kSlipWidth = 88;

/// The slip of the employee and company in the record areas (DIPX$, DITX$, FISX$), as lines in code
/// page 1252. Reads the pay items (file 401) and the agreement (file 71), which must be open, and
/// leaves their areas changed. The period is the one of the run (MXLIBRERIA::period).
[[nodiscard]] std::vector<std::string> pay_slip_lines();

}  // namespace nzutil
