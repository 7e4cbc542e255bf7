#pragma once
// An expected value against what a record holds, or what several runs add up to.

#include <optional>
#include <string>

#include "nzutil/scenario.h"

namespace nzutil {

/// What differs in the field of a record; nothing if it holds the value as the field stores it, or
/// one no further from it than the tolerance.
[[nodiscard]] std::optional<Difference> compare_value(const FieldValue& expected,
                                                      const std::string& record);

/// The same for a sum of the field over runs.
[[nodiscard]] std::optional<Difference> compare_sum(const FieldValue& expected, double sum);

}  // namespace nzutil
