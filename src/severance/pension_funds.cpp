#include "severance/pension_funds.h"

#include "context/trace.h"

namespace ModSwCalm2 {

using MXLIBRERIA::TRACCIA;

// Filled when the room of the pension funds is built; each does nothing yet.

void INIZIALIZZAFP() {
    TRACCIA("INIZIALIZZAFP");
}

void AZZERACONTRIBUTOFP(int /*month*/) {
    TRACCIA("AZZERACONTRIBUTOFP");
}

void INCREMENTAMESIFP() {
    TRACCIA("INCREMENTAMESIFP");
}

void FONDOPENSIONE() {
    TRACCIA("FONDOPENSIONE");
}

void DEDUCIBILITA_CTR_FP() {
    TRACCIA("DEDUCIBILITA_CTR_FP");
}

}  // namespace ModSwCalm2
