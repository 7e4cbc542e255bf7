#pragma once
// Social contributions of the employee: bases, ceilings, amounts, reductions.

#include <array>

namespace ModSwCalm2 {

/// Arrays indexed by contribution item, 0 unused; an index beyond the bound is failure 9.
struct Contributions {
    std::array<double, 9> bases{};
    std::array<double, 9> switches{};
    std::array<double, 11> amounts{};
    double residue_item4 = 0;         ///< what is left of the yearly ceiling of item 4
    double reductions = 0;            ///< contribution cut of the month, taken off Q224
    double reduction_exclusions = 0;  ///< wage of items 59, 60, 74 kept out of the cut
    double extra_month_wage = 0;      ///< wage of the 13th and 14th lines of the slip
};
extern Contributions contributions;

/// Steps of the general pass, called by TFRETASSAZIONESEPARATA in this order.
void item_bases();                ///< ceilings and bases (steps 1 to 8)
void employee_amounts();          ///< Q224 and the reductions (steps 9 to 12)
void back_pay_contribution();     ///< Q053, P212
void solidarity_above_ceiling();  ///< P221, Q004

void GESTIONE_MASSIMALE_CONTRIBUTIVO();
void GESTIONE_RETR_CONVENZ_ESTERO();

}  // namespace ModSwCalm2
