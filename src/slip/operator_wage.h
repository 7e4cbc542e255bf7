#pragma once
// The operator's wage for the declaration.

namespace ModSWCALM {

/// P071, the operator's wage for the declaration, from the lines and the pay elements.
void CREA_OPERATORE_RETR_EMENS();

}  // namespace ModSWCALM
