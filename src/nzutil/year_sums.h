#pragma once
// The sums of a year, of the employee in the area.
//
// Every sum that slips add up starts again: those that a rule holds against the limits or the tax
// of the year, and those of which the archive only takes the month's growth. The growth is what a
// slip adds to the record that the run found, and an opened record is found with its sums empty.
// What the year does not end runs on: the severance fund and its part in the treasury, the twelfths
// of the 14th, and recoveries by instalments that are under way. The deductions by kind (Q641 to
// Q657) start again with January's first slip.

namespace nzutil {

/// Empties the sums that start again.
void restart_sums();

/// Does the record hold sums of a year that has not been opened yet?
[[nodiscard]] bool has_sums();

}  // namespace nzutil
