#include "tax/surtaxes.h"

#include "context/trace.h"

namespace ModSWCALB {

using MXLIBRERIA::TRACCIA;

// Filled when the surtaxes are built; does nothing yet, and withholds no instalment.

double RATAADDIZIONALI() {
    TRACCIA("RATAADDIZIONALI");
    return 0;
}

void regional_surtax() {
    TRACCIA("regional_surtax");
}

void municipal_surtax() {
    TRACCIA("municipal_surtax");
}

}  // namespace ModSWCALB
