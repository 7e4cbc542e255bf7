#pragma once
// Year totals.

namespace ModElaboraStorico {

/// The year's sums of the employee's certificate: F197 percent of the income that gives a right to
/// the deduction, and the further amounts. Both 0 for an employee without one.
void DETRCUD(double& first, double& second);
/// Empties the employee's certificate but for his code, at the first slip of the year; without one
/// nothing is written.
void AZZERA_CUD();

}  // namespace ModElaboraStorico
