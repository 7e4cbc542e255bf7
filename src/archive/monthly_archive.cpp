#include "archive/monthly_archive.h"

#include "context/trace.h"

namespace NZRetMes {

using MXLIBRERIA::TRACCIA;

// Filled when the room of the monthly archive is built; each does nothing yet.

void prepare_tables() {}

void open_archive() {}

void close_archive() {}

void AGGIORNA_RETRIBUZIONI_MENSILI_INPS() {
    TRACCIA("AGGIORNA_RETRIBUZIONI_MENSILI_INPS");
}

}  // namespace NZRetMes
