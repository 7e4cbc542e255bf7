#pragma once
// The one-off payment at the end of 2022.

namespace ModSWCALM {

/// The one-off of 150 euro (QA24) on a slip of November or December 2022, once: PB25 is the month
/// that paid it, and stays. An additional slip of November pays nothing. D.L. 144/2022, art. 18
void one_off_2022();

}  // namespace ModSWCALM
