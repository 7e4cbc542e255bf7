#pragma once
// The formula cells of the item in FOTX$, as a line walk looks at them.

#include <string>
#include <string_view>

namespace ModSWCALM {

inline constexpr int kFormulaCells = 100;

/// Cell n (1 to 100) of the formula, Z051 to Z150: operator and operand, trimmed.
[[nodiscard]] std::string formula_cell(int n);
/// Does a cell of the formula read the field?
[[nodiscard]] bool formula_reads(std::string_view field);

}  // namespace ModSWCALM
