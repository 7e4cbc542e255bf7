#pragma once
// Regional and municipal surtaxes: fixed by the year-end adjustment on the year's base, withheld in
// the next year by instalments (D.Lgs. 446/1997, art. 50; D.Lgs. 360/1998, art. 1).

namespace ModSWCALB {

/// Books last month's instalments and forms those of the month: regional and municipal balance of
/// last year, advance on the municipal surtax of this one. Returns their sum, in euro. January's
/// ordinary slip pays out a municipal balance that is below 0.
[[nodiscard]] double RATAADDIZIONALI();
/// Surtaxes on the year's base, regional (Q342) and municipal (Q343), at the year-end adjustment;
/// who leaves is charged at once. ImpostaLorda holds the net tax of the year.
void surtaxes_of_the_year();
/// Does the employment end, in whatever month? A leaving date (P017) before the start of the
/// employment (P014, else P013) belongs to an earlier one.
[[nodiscard]] bool leaves();
/// Does the year-end adjustment work the surtaxes out again? With P938 = 1 not on a termination;
/// where only the leaving date of an earlier employment brings the adjustment, in December alone.
[[nodiscard]] bool surtaxes_are_recomputed();
/// Does the slip that settles the tax charge the surtaxes of the year at once?
[[nodiscard]] bool surtaxes_are_charged_at_once();
/// December's ordinary slip: into how many instalments the balances go next year, 11 or 10 (T183).
void instalments_of_next_year();

}  // namespace ModSWCALB
