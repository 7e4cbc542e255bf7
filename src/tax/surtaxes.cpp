#include "tax/surtaxes.h"

#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using MXLIBRERIA::TRACCIA;

namespace {

// Filled when the surtaxes are built; they do nothing yet.
void regional_surtax() {}
void municipal_surtax() {}

}  // namespace

// Filled when the surtaxes are built; withholds no instalment yet.
double RATAADDIZIONALI() {
    TRACCIA("RATAADDIZIONALI");
    return 0;
}

bool surtaxes_are_recomputed() {
    const bool leaves = num(P017) > 0;
    return !leaves || num(P938) != 1;
}

void surtaxes_of_the_year() {
    if (surtaxes_are_recomputed()) {
        regional_surtax();
        municipal_surtax();
    }
}

}  // namespace ModSWCALB
