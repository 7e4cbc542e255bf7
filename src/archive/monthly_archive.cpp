#include "archive/monthly_archive.h"

#include "context/trace.h"

namespace NZRetMes {

using MXLIBRERIA::TRACCIA;

// Filled when the room of the monthly archive is built; each does nothing yet.

void prepare_tables() {
    TRACCIA("PREPARARETMEN");
}

void open_archive() {
    TRACCIA("APRIRETMEN");
}

void close_archive() {
    TRACCIA("CHIUDIRETMEN");
}

void AGGIORNA_RETRIBUZIONI_MENSILI_INPS() {
    TRACCIA("AGGIORNA_RETRIBUZIONI_MENSILI_INPS");
}

}  // namespace NZRetMes
