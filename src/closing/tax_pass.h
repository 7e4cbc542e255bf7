#pragma once
// The general contribution and tax pass of the closing (P168 = 0), and the phases that the
// entertainers' pass shares with it.

#include "contributions/contributions.h"

namespace ModSwCalm2 {

void TFRETASSAZIONESEPARATA();

/// The bases of the items with the pension fund's part between them; the items that are a
/// percentage on the base follow the final one.
void bases_and_fund(Pass pass);

/// From the parts shown on the slip to the days of the year: relief on premiums, contributions into
/// the deductions, separate taxation, month's taxable and tax, termination, severance.
void tax_and_termination_phases();

/// What is left to withhold of a tax: under suspension (P792 = 1) nothing, the tax moving to P793
/// and to Q801, the suspended tax to date.
[[nodiscard]] double withheld_unless_suspended(double tax);

}  // namespace ModSwCalm2
