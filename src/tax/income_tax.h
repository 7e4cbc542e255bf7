#pragma once
// Income tax: one bracket walk behind four entry points.

#include <cstdint>

#include "calc/slip.h"

namespace ModSWCALB {

/// State of the tax step, in euro and percent.
struct TaxState {
    double ImponibileCorrente = 0;      ///< base to tax; enlarged in place at the year-end
    double ImponibileAddizionali = 0;   ///< base of the surtaxes
    double ImpostaLorda = 0;            ///< gross tax, the result
    double AliquotaMarginale = 0;       ///< rate of the last bracket reached
    double AliquotaPrimoScaglione = 0;  ///< rate of the first bracket
    double ResiduoScaglione = 0;        ///< part of the base above the last limit passed
    double IndiceScaglione = 0;         ///< walking index
    double TabellaAlternativa = 0;      ///< 1 starts the walk of CALCIMPOSTA at cell 21
    bool ConguaglioAnnuale = false;     ///< this slip is the year-end adjustment
    double PrimaPassata = 0;            ///< 1 in the pass that counts months and runs deductions
    double tax_credit = 0;              ///< module tax credit
};
extern TaxState tax_state;

/// Tax on ImponibileCorrente, with the counts and the deductions of the slip.
void CALCIMPOSTA();
/// Tax on `base`; the flag tells whether the alternate table was used.
[[nodiscard]] double CalcolaImposta(double& base, std::int16_t& flag);
/// The same for back pay of earlier years.
[[nodiscard]] double CalcolaImpostaAP(double& base, std::int16_t& flag);
/// The same on the severance table; the flag chooses the table.
[[nodiscard]] double CalcolaImpostaTFR(double& base, std::int16_t& flag);

/// Sum of the eleven deduction fields of the slip.
[[nodiscard]] double sum_of_deductions();

}  // namespace ModSWCALB
