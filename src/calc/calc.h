#pragma once
// CALC: the second walk of the selection. One call a run; ends in FINEPROG.

namespace ModSWCALM {

void CALC();

}  // namespace ModSWCALM
