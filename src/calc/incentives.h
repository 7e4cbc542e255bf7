#pragma once
// Employer incentives and exemptions.

namespace ModSWCALM {

void CALCOLA_INCENTIVO_DL76();
void CALCOLA_INCENTIVO_LICE();
void ERR_CALCOLA_ESONERO_NUOVI_ASS();
/// Opens the exemptions of the kinds "O" and "P" (P916).
void open_exemption_OP();
/// Monthly share of the yearly exemption (P955).
void yearly_exemption_share();
void youth_contract_incentive();

}  // namespace ModSWCALM
