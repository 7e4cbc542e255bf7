#pragma once
// Income tax: one bracket walk behind four entry points.
//
// The month is not taxed by a monthly scale: its base is brought to the year, the yearly scale is
// applied, and the tax is brought back to the month. The year-end adjustment applies the scale once
// to the whole year's base.

#include <array>
#include <cstdint>

#include "records/dictionary/DIPX.h"
#include "slip/slip.h"

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
    double PrimaPassata = 0;  ///< 1 in the one call of the slip that counts months and runs
                              ///< deductions; the callers set it
    double tax_credit = 0;    ///< module tax credit
};
extern TaxState tax_state;

/// The deductions that the tax of the slip is lowered by. Cleared by each CALCIMPOSTA.
inline constexpr std::array<MXREPOSITORY::Descriptor, 11> kDeductionFields{
    MXREPOSITORY::Q657, MXREPOSITORY::Q277, MXREPOSITORY::Q648, MXREPOSITORY::Q649,
    MXREPOSITORY::Q650, MXREPOSITORY::Q652, MXREPOSITORY::Q665, MXREPOSITORY::Q651,
    MXREPOSITORY::Q653, MXREPOSITORY::Q668, MXREPOSITORY::Q741};

/// Tax on ImponibileCorrente, with the counts and the deductions of the slip. Leaves ImpostaLorda,
/// AliquotaMarginale and ImponibileAddizionali; nothing is rounded. A table that no closing limit
/// (999999.99) ends is failure 9.
void CALCIMPOSTA();
/// Tax on `base`; 0 for a base of 0. The flag comes back -1 when the alternate table was used, for
/// a termination on 31 December 2006.
[[nodiscard]] double CalcolaImposta(double& base, std::int16_t& flag);
/// The same for back pay of earlier years, always on the first table: the flag comes back 0.
[[nodiscard]] double CalcolaImpostaAP(double& base, std::int16_t& flag);
/// The same on the severance table (slip.TABIRPAC); a flag that is set chooses the alternate table.
[[nodiscard]] double CalcolaImpostaTFR(double& base, std::int16_t& flag);

/// Sum of the eleven deduction fields of the slip.
[[nodiscard]] double sum_of_deductions();

/// Is this a slip of adjustment only (P118 = 2)? It counts neither months nor days.
[[nodiscard]] bool adjustment_only();
/// Has the employee left in the month of the run, or not at all? Only such a slip counts a month of
/// deductions; one of adjustment only does not.
[[nodiscard]] bool month_counts_for_deductions();

}  // namespace ModSWCALB
