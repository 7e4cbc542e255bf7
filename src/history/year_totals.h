#pragma once
// Year totals.

namespace ModElaboraStorico {

/// Yearly totals of the employee, moved at the first slip of the year.
void update_yearly_totals();
/// The two sums of the certificate of the year.
void DETRCUD(double& first, double& second);

}  // namespace ModElaboraStorico
