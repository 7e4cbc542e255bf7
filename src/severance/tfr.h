#pragma once
// Severance pay (art. 2120 c.c.): accrual, revaluation, payment and its tax at termination.

namespace ModSwCalm2 {

void FONDOPREV();

/// The severance fund of the slip: accrual and revaluation to date, the tax that the fund bears at
/// termination. A leaver's slip pays it (P241, P258, P259).
void ElaboraTFR();

/// Contribution of the year to date that comes off the accrual (Q038; L. 297/1982, art. 3), this
/// slip's wage included.
void TFRZERO50();

void ERR_CALCOLO_TFRINBUSTA_RECUP_CTR();

/// Pays the month's accrual in the packet, with its tax at a flat rate (L. 190/2014, c. 26).
void CALCOLO_TFR_MESE();

/// Percent of the wage that the accrual bears: F020, P620 where it is set, 0 with P083.
[[nodiscard]] double accrual_contribution_percent();

/// Reference income of a fund: twelve times a year of it, in euro (TUIR, art. 19, c. 1). Less than
/// a year counts as one.
[[nodiscard]] double reference_income(double fund, double months);

}  // namespace ModSwCalm2
