#pragma once
// The one-off payment at the end of 2022.

namespace ModSWCALM {

/// The one-off of 150 euro (QA24, PB25). D.L. 144/2022, art. 18
void one_off_2022();

}  // namespace ModSWCALM
