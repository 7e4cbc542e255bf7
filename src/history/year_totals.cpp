#include "history/year_totals.h"

#include "context/trace.h"

namespace ModElaboraStorico {

using MXLIBRERIA::TRACCIA;

// Filled when the room of the year totals is built; each does nothing yet.

void update_yearly_totals() {
    TRACCIA("AZZERA_CUD");
}

void DETRCUD(double& first, double& second) {
    TRACCIA("DETRCUD");
    first = 0;
    second = 0;
}

}  // namespace ModElaboraStorico
