#pragma once
// Back pay of earlier years under separate taxation (TUIR, art. 17, c. 1, b, and art. 21).

namespace ModSwCalm2 {

/// Taxes the back pay of the slip (P195, P248) at the average rate of the last two years' income
/// (Q031, Q032), or at the first bracket's where there was none.
void ElaboraArretratiAP();

}  // namespace ModSwCalm2
