#pragma once
// Lines that the contribution cut tells apart. Read as the evaluation has left them.

namespace ModSWCALM {

/// Contribution cut of 2022: wage of the lines 59, 60, 74 (PB11) and of the extra months (PB09)
/// with its percentage (PB10, PB07; from October 2022 PB15, PB16). Leaves the wages in the slip,
/// too. L. 234/2021, art. 1, c. 121
void sum_reduction_items();
/// Contribution cut from 2023: the same wages, and what the extra months are due (PB16, PB17, PB27,
/// PB28, in 2023 only). PB26 of those without the cut (PB05 not 0): half of their percentages.
/// L. 197/2022, art. 1, c. 281; L. 234/2021, art. 1, c. 137
void sum_extra_month_items();

/// The wage of the month that the limits of the cut are held against: without 13th and 14th, and in
/// 2022 without the items 59, 60, 74, as `sum_...` have left them in the slip.
[[nodiscard]] double tested_wage_of_the_cut();
/// What of it the month's own cut is worked out on: without the items 59, 60, 74 in every year.
[[nodiscard]] double own_wage_of_the_cut();

}  // namespace ModSWCALM
