#pragma once
// Severance pay (art. 2120 c.c.): accrual, revaluation, payment and its tax at termination.

namespace ModSwCalm2 {

/// The severance fund of the slip: accrual and revaluation to date, the tax that the fund bears at
/// termination. A leaver's slip pays it (P241, P258, P259).
void ElaboraTFR();

/// Contribution of the year to date that comes off the accrual (Q038; L. 297/1982, art. 3), this
/// slip's wage included: no more than what the pension fund has left of the accrual.
void TFRZERO50();

// ---- Severance paid with the wages (L. 190/2014, c. 26) ----

/// Is the accrual paid with the wages (P921, PA48)? Then neither the employer's fund nor a pension
/// fund takes it.
[[nodiscard]] bool severance_in_the_packet();

/// P921: the month's accrual joins gross and taxable (P922, on an additional slip P924), and with
/// it what the employer recovers of the contributions (P925 to P928).
void ERR_CALCOLO_TFRINBUSTA_RECUP_CTR();

/// PA48: pays the month's accrual with its tax at a flat rate.
void CALCOLO_TFR_MESE();

// ---- What funds and payments have in common ----

/// Percent of the wage that the accrual bears: F020, P620 where it is set, 0 with P083.
[[nodiscard]] double accrual_contribution_percent();

/// What the slip adds to the accrual of the year (`wage` euro of severance wage) and to the
/// contribution that it bears, both in cents: the slips of a year add up to the year's figures.
[[nodiscard]] double accrual_of_slip(double wage);
[[nodiscard]] double contribution_of_slip();

/// Reference income of a fund: twelve times a year of it, in euro (TUIR, art. 19, c. 1). Less than
/// a year counts as one.
[[nodiscard]] double reference_income(double fund, double months);

}  // namespace ModSwCalm2
