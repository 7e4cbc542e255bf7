#include "closing/tax_pass.h"

#include <algorithm>
#include <array>

#include "closing/state.h"
#include "closing/withholding.h"
#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/advances.h"
#include "severance/back_pay.h"
#include "severance/pension_funds.h"
#include "severance/tfr.h"
#include "slip/percentage_items.h"
#include "slip/seniority.h"
#include "slip/slip.h"
#include "tax/income_tax.h"
#include "tax/relief.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

bool is_december() {
    return period.month() == 12;
}

// ---- Year-end decision ----

/// An additional slip never adjusts: the ordinary slip of the month does it.
void decide_year_end() {
    const bool adjusts = period.ordinary() && (num(P017) > 0 || (num(P169) == 0 && is_december()));
    if (adjusts && num(P792) == 0 && is_december() && num(Q801) != 0) {
        aggiungi(Q014, num(Q801));
        slip.suspended_tax_joined = true;
    }
    tax_state.ConguaglioAnnuale = adjusts || (period.ordinary() && num(P118) == 1);
    if (num(Q801) != 0 || ModSWCALB::adjustment_only()) {
        contributions.amounts = {};
    }
}

// ---- Contributions ----

void older_fund() {
    if (num(P401) != 0 && num(P184) != 0 && !severance_in_the_packet()) {
        FONDOPREV();
    }
}

/// Q224 takes what the items have not brought: the fund's contribution of those who are no members,
/// and in December the part of item 3 already paid in the year comes off.
void complete_contributions() {
    if (is_december() && period.ordinary() && !ModSWCALB::adjustment_only() &&
        contributions.amounts[3] != 0) {
        aggiungi(Q224, -num(Q010));
    }
    if (num(P401) == 0 && num(P450) != 0) {
        aggiungi(Q224, num(P450));
    }
}

/// Company rule T187: a relief, in percent of the contributions of items 1 to 6 (P189) and of item
/// 7 (P190), at the rates of cells 9 and 10.
void contribution_relief_T187() {
    if (num(T187) != 1) {
        return;
    }
    double first_six = 0;
    for (std::size_t item = 1; item <= 6; ++item) {
        first_six += contributions.amounts[item];
    }
    struct Relief {
        std::size_t cell;
        double switched;
        double amount;
    };
    for (const Relief& relief :
         {Relief{9, num(P189), first_six}, Relief{10, num(P190), contributions.amounts[7]}}) {
        const double taken_off =
            std::min(0.0, -relief.switched * relief.amount * slip.PCTCONTR[relief.cell] / 100);
        contributions.amounts[relief.cell] = taken_off;
        const double before = num(Q224);
        contributions.reductions += before - aggiungi(Q224, taken_off);
    }
}

// ---- Parts shown on the slip, contributions into the deductions ----

void slip_parts() {
    scrivi(Q225, num(Q224) + contributions.reductions - contributions.fund_share);
    double minor_items = 0;
    for (const std::size_t item : {2U, 4U, 5U, 6U, 7U}) {
        minor_items += contributions.amounts[item];
    }
    const double others = num(P450) + num(P221) + num(Q800);
    scrivi(P254, minor_items);
    scrivi(P255, others);
    scrivi(P253, num(Q224) - num(P254) - num(P255));
    aggiungi(P259, num(Q224));
}

// ---- Termination and severance ----

void severance_in_packet() {
    ModSWCALB::DETRPREMI();
    if (num(P921) == 1) {
        ERR_CALCOLO_TFRINBUSTA_RECUP_CTR();
    }
    if (num(PA48) == 1) {
        CALCOLO_TFR_MESE();
    }
}

void termination() {
    const bool leaver = tax_state.ConguaglioAnnuale && num(P017) > 0;
    if (leaver && num(P447) == 0 && num(P260) == 0 && num(T745) == 1) {
        aggiungi(Q136, -1);
    }
    ElaboraAnticipazioni();
    if (testo(Q055).substr(0, 8) == std::string(8, ' ')) {
        for (const Descriptor& field :
             {Q052, Q053, Q177, Q178, Q263, Q054, Q055, Q267, Q270, Q121, Q122,
              Q057, Q126, Q127, Q128, Q774, Q129, Q969, Q058, Q264, Q265, Q268}) {
            scrivi(field, "0");
        }
    }
    ElaboraTFR();
    ElaboraArretratiAP();
    aggiungi(Q191, Int(num(P447) == 1 ? num(P449) : num(P215)));
}

}  // namespace

void bases_and_fund(Pass pass) {
    item_bases_before_fund(pass);
    if (!severance_in_the_packet()) {
        FONDOPENSIONE();
    }
    ModSWCALM::recompute_percentage_items();
    item_bases_after_fund();
}

void tax_and_termination_phases() {
    if (ModSWCALB::adjustment_only() && !tax_state.ConguaglioAnnuale) {
        tax_state.PrimaPassata = 0;  // no days, hence no deductions against what it pays
    }
    ModSWCALB::DETASSAZIONE();
    ModSWCALB::TASSAZIONE_MANCE();
    if (num(P401) != 0 && num(T467) == 1) {
        DEDUCIBILITA_CTR_FP();
    }
    slip_parts();
    separate_taxation(P244);
    separate_taxation(P245);
    severance_in_packet();
    taxable_of_the_month();
    tax_of_the_month();
    termination();
}

void TFRETASSAZIONESEPARATA() {
    TRACCIA("TFRETASSAZIONESEPARATA");
    older_fund();
    decide_year_end();
    bases_and_fund(Pass::general);
    employee_amounts();
    back_pay_contribution();
    complete_contributions();
    contribution_relief_T187();
    solidarity_above_ceiling();
    tax_and_termination_phases();
}

}  // namespace ModSwCalm2
