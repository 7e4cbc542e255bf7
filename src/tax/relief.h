#pragma once
// Tax relief on premiums and tips.

namespace ModSWCALB {

void DETASSAZIONE();
void TASSAZIONE_MANCE();
void DETRPREMI();

}  // namespace ModSWCALB
