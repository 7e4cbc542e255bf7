#pragma once
// What December leaves to the new year, in the employee's area: income, surtaxes, severance fund.
// The areas of the company and of the closed year's tables are loaded.

#include "severance/revaluation.h"

namespace nzutil {

/// The tables of the closed year are read as its last slip read them.
void set_period_to_december(int closed_year);
/// The fund is revalued by December's index, as the last slip did it (art. 2120 c.c., c. 4).
[[nodiscard]] ModSwCalm2::RevaluationTerm end_of_year(int closed_year);

/// Income of the last two years, for the rate of back pay (TUIR, art. 21).
void carry_income();
/// Surtaxes of the closed year, withheld in instalments of the new one (D.Lgs. 446/1997, art. 50;
/// D.Lgs. 360/1998, art. 1). An advance that the settlement has given up comes off the balance.
/// Those who left, and those whose leaving date lies ahead, have settled theirs on the last slip.
void carry_surtaxes(bool left);
/// The fund at 31 December. Its revaluation has borne its own tax, so that it is none of what the
/// termination taxes (TUIR, art. 19, c. 1): Q056. Advances become those of earlier years.
void carry_fund(int closed_year);

}  // namespace nzutil
