#pragma once
// The calculated slip of one employee as a person reads it: head, lines with quantity, rate and
// amount, contributions, taxable, tax, deductions, net, year to date, severance.

#include <string>
#include <vector>

#include "installation/installation.h"

namespace nzutil {

/// Width of the slip in characters.
inline constexpr std::size_t kSlipWidth = 88;

/// The slip of an employee (record of file 2), as lines in code page 1252: company, pay items and
/// agreement come from the installation, the month from its period. Fills the record areas.
/// ToolError if the company is missing.
[[nodiscard]] std::vector<std::string> pay_slip_lines(const Installation& installation,
                                                      int employee);

/// Record of the employee with a code ("0010000001", dashes allowed); ToolError if there is none.
[[nodiscard]] int employee_record(const Installation& installation, const std::string& code);

}  // namespace nzutil
