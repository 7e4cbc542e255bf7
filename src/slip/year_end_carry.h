#pragma once
// Year-end carry of the items that are settled on the last slip (class Z050 = 1).

namespace ModSWCALM {

/// The line in FOTX$: split into its exempt and its taxed part on the slips of the year, settled on
/// the last one (Q357 to Q363, P458, P459).
void year_end_carry();

}  // namespace ModSWCALM
