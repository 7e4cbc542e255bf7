#include "calc/incentives.h"

#include "context/trace.h"

namespace ModSWCALM {

using MXLIBRERIA::TRACCIA;

// Filled when the incentives are built; does nothing yet.
void CALCOLA_INCENTIVO_DL76() {
    TRACCIA("CALCOLA_INCENTIVO_DL76");
}

// Filled when the incentives are built; does nothing yet.
void CALCOLA_INCENTIVO_LICE() {
    TRACCIA("CALCOLA_INCENTIVO_LICE");
}

// Filled when the incentives are built; does nothing yet.
void ERR_CALCOLA_ESONERO_NUOVI_ASS() {
    TRACCIA("ERR_CALCOLA_ESONERO_NUOVI_ASS");
}

// Filled when the incentives are built; does nothing yet.
void open_exemption_OP() {}

// Filled when the incentives are built; does nothing yet.
void yearly_exemption_share() {}

// Filled when the incentives are built; does nothing yet.
void youth_contract_incentive() {}

}  // namespace ModSWCALM
