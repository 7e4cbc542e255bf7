#pragma once
// Employer's contribution percentages that two codes of the employee choose from the sector.

#include <optional>

namespace ModSWCALM {

/// The percentage of group P594 ("37", "38") and class P593 (2 to 4), with the sector's two
/// additions; nothing for any other pair.
[[nodiscard]] std::optional<double> group_percentage();

}  // namespace ModSWCALM
