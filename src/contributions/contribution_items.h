#pragma once
// What bases, amounts and the additional percent share of the contribution items.

#include <cstddef>

namespace ModSwCalm2 {

inline constexpr int kItems = 8;
inline constexpr std::size_t kFirstBracketCell = 30;  // F152, euro a month

/// Switch of an item. Item 1 follows P185 when that is set, or when P181 is not 1.
[[nodiscard]] double switch_of(int item);
/// Adds an amount of the employee's share to Q224 and Q225.
void add_contribution(double amount);

}  // namespace ModSwCalm2
