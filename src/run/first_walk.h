#pragma once
// The first walk of the selection: skip test, clearing of the month, before-image, write-back.
//
// Logical file 5, the selection, holds 20 entries of 10 characters a record; "9999999999" ends it.
//   positions in an entry  width  content
//   1-3                    3      company: record number in logical file 1
//   4-6                    3      not used
//   7-10                   4      employee: record number in logical files 2 and 97

#include <cstddef>

namespace ModSWCALM {

/// Walks the selection once. An entry without its company shows a box and is passed over; an entry
/// without its employee is failure 63.
void first_walk();

/// Entries of the selection in front of its end.
[[nodiscard]] std::size_t count_selection();

/// Does a period of the fund's contribution start in the month (1 to 12)? `frequency` is R051:
/// 1 monthly, 2 every two months, 3 quarterly, 4 every four months, 6 half-yearly; others never.
[[nodiscard]] bool fund_period_starts(double frequency, int month);

}  // namespace ModSWCALM
