#pragma once
// Totals by Z021 and the severance base, fed by each line.

namespace ModSWCALM {

/// The amount of the line joins one of the three totals (Z021).
void add_to_totals(double amount);
/// How the item enters the severance base P260 (Z020), or one of the buckets.
void add_to_severance(double amount);

/// Result of the month-counted test of T073: does the month count for this employee?
[[nodiscard]] bool month_counts(double minimum_days);

}  // namespace ModSWCALM
