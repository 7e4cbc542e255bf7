#include "tax/bonus.h"

#include "context/trace.h"

namespace ModSWCALB {

using MXLIBRERIA::TRACCIA;

// Filled when bonus, integrative sum and further deduction are built; does nothing yet.

void CALCOLO_BONUS_DL032020() {
    TRACCIA("CALCOLO_BONUS_DL032020");
}

void CALCOLA_ULT_DET() {
    TRACCIA("CALCOLA_ULT_DET");
}

void CALCOLA_ULT_DET_2025() {
    TRACCIA("CALCOLA_ULT_DET_2025");
}

void CALCOLA_SOMMA_INTEGRATIVA() {
    TRACCIA("CALCOLA_SOMMA_INTEGRATIVA");
}

}  // namespace ModSWCALB
