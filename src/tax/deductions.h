#pragma once
// Deductions from gross tax: employment, spouse and dependants, large family.

namespace ModSWCALB {

/// Annualised income for the deductions, R.
[[nodiscard]] double deduction_income();
/// Instalments of the year, N: 12, or P090 for a collaborator.
[[nodiscard]] double deduction_periods();

void CALCOLADETRAZIONIREDDITO_2022();
void DetrLavoro();
void DetrFamiliari();
void VerificaFamiliari();
/// False if a dependant with a share has no tax code ("INSERIRE CODFISC").
[[nodiscard]] bool ControllaCodFiscFamiliari();

/// Large-family sum that the tax cannot take is paid on the slip (Q772); `net_tax` before it is
/// cut at 0.
void refund_unused_large_family(double& net_tax);

}  // namespace ModSWCALB
