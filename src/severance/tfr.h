#pragma once
// Severance pay: accrual, revaluation, payment at termination.

namespace ModSwCalm2 {

void FONDOPREV();
void ElaboraTFR();
void ERR_CALCOLO_TFRINBUSTA_RECUP_CTR();
void CALCOLO_TFR_MESE();

}  // namespace ModSwCalm2
