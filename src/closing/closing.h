#pragma once
// The closing of the month: pass, net pay, year-to-date, repeat guard, year-end adjustment.

namespace ModSwCalm2 {

/// Closing of the slip; sets ABORTODIP when the month is already calculated.
void CALCOLACHIUSURA();

}  // namespace ModSwCalm2
