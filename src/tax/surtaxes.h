#pragma once
// Regional and municipal surtaxes.

namespace ModSWCALB {

/// Instalments of the month of last year's surtaxes; returns their sum.
[[nodiscard]] double RATAADDIZIONALI();
/// Surtaxes on the year's base, at the year-end adjustment.
void regional_surtax();
void municipal_surtax();

}  // namespace ModSWCALB
