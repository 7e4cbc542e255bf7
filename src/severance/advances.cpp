#include "severance/advances.h"

#include "context/trace.h"

namespace ModSwCalm2 {

using MXLIBRERIA::TRACCIA;

// Filled when advances and back pay are built; does nothing yet.

void ElaboraAnticipazioni() {
    TRACCIA("ElaboraAnticipazioni");
}

void ElaboraArretratiAP() {
    TRACCIA("ElaboraArretratiAP");
}

}  // namespace ModSwCalm2
