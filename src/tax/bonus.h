#pragma once
// Bonus, integrative sum and further deduction.

namespace ModSWCALB {

void CALCOLO_BONUS_DL032020();
void CALCOLA_ULT_DET();
void CALCOLA_ULT_DET_2025();
void CALCOLA_SOMMA_INTEGRATIVA();

}  // namespace ModSWCALB
