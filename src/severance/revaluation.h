#pragma once
// Revaluation of the severance fund: 1.5 percent a year and three quarters of the rise of the
// consumer price index (art. 2120 c.c., c. 4).

namespace ModSwCalm2 {

/// Coefficient in percent, six decimals, for whole months of the year. A fall of the index counts
/// as none; an index or a number of months of 0 gives 0.
[[nodiscard]] double CalcolaCoefRivalTFR(double current_index, double base_index, double months);

/// The index at 31 December before the year (F021), mended where the published one was rounded too
/// far to give the coefficient of the law.
[[nodiscard]] double base_index_of_year(int year, double F021);

}  // namespace ModSwCalm2
