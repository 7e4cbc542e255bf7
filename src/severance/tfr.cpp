#include "severance/tfr.h"

#include "context/trace.h"

namespace ModSwCalm2 {

using MXLIBRERIA::TRACCIA;

// Filled when severance pay is built; does nothing yet.

void FONDOPREV() {
    TRACCIA("FONDOPREV");
}

void ElaboraTFR() {
    TRACCIA("ElaboraTFR");
}

void ERR_CALCOLO_TFRINBUSTA_RECUP_CTR() {
    TRACCIA("ERR_CALCOLO_TFRINBUSTA_RECUP_CTR");
}

void CALCOLO_TFR_MESE() {
    TRACCIA("CALCOLO_TFR_MESE");
}

}  // namespace ModSwCalm2
