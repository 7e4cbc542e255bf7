#include "tax/relief.h"

#include "context/trace.h"

namespace ModSWCALB {

using MXLIBRERIA::TRACCIA;

// Filled when the reliefs on premiums and tips are built; does nothing yet.

void DETASSAZIONE() {
    TRACCIA("DETASSAZIONE");
}

void TASSAZIONE_MANCE() {
    TRACCIA("TASSAZIONE_MANCE");
}

void DETRPREMI() {
    TRACCIA("DETRPREMI");
}

}  // namespace ModSWCALB
