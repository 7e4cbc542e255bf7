#pragma once
// Regional and municipal surtaxes.

namespace ModSWCALB {

/// Instalments of the month of last year's surtaxes; returns their sum.
[[nodiscard]] double RATAADDIZIONALI();
/// Surtaxes on the year's base, regional and municipal, at the year-end adjustment.
void surtaxes_of_the_year();
/// Does the year-end adjustment work the surtaxes out again? With P938 = 1 not on a termination.
[[nodiscard]] bool surtaxes_are_recomputed();

}  // namespace ModSWCALB
