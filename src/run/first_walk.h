#pragma once
// The first walk of the selection: skip test, clearing of the month, before-image, write-back.

namespace ModSWCALM {

/// Walks the selection once. An entry without its company shows a box and is passed over; an entry
/// without its employee is failure 63.
void first_walk();

/// Does a period of the fund's contribution start in the month (1 to 12)? `frequency` is R051:
/// 1 monthly, 2 every two months, 3 quarterly, 4 every four months, 6 half-yearly; others never.
[[nodiscard]] bool fund_period_starts(double frequency, int month);

}  // namespace ModSWCALM
