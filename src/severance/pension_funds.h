#pragma once
// Pension funds.

namespace ModSwCalm2 {

void INIZIALIZZAFP();
void AZZERACONTRIBUTOFP(int month);
void INCREMENTAMESIFP();
void FONDOPENSIONE();
void DEDUCIBILITA_CTR_FP();

}  // namespace ModSwCalm2
