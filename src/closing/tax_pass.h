#pragma once
// The general contribution and tax pass of the closing (P168 = 0).

namespace ModSwCalm2 {

void TFRETASSAZIONESEPARATA();

/// The phases that the entertainers' pass shares with the general one: from relief on premiums to
/// the days of the year (phases 7 to 20).
void tax_and_termination_phases();

}  // namespace ModSwCalm2
