#include "tax/municipal_table.h"

#include "context/trace.h"

namespace ModSWCALB {

// Filled when the room of the surtaxes is built; each does nothing yet.

void TABCOM() {
    MXLIBRERIA::TRACCIA("TABCOM");
}

void close_TABCOM() {}

}  // namespace ModSWCALB
