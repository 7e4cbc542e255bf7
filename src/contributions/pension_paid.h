#pragma once
// Pension contributions of the year, before any cut (Q007). The field has no place for ten
// thousands: above 108,800 euro of wage at 9.19 percent it shows what exceeds them.

namespace ModSwCalm2 {

/// Pension contributions of the year up to the slip before, in euro: Q007 with its ten thousands.
/// They are those that bring it nearest to the contributions withheld (Q005 without the settlement
/// Q009), and to what the wage to date (Q001, item 2
/// Q002) owes at the rates in force, whichever are fewer.
[[nodiscard]] double pension_paid();

/// Writes the sum of the year to Q007, without its ten thousands.
void write_pension_paid(double sum);

}  // namespace ModSwCalm2
