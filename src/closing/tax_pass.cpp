#include "closing/tax_pass.h"

#include <algorithm>
#include <array>
#include <utility>

#include "closing/state.h"
#include "context/period.h"
#include "context/trace.h"
#include "contributions/contributions.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/advances.h"
#include "severance/pension_funds.h"
#include "severance/tfr.h"
#include "slip/seniority.h"
#include "slip/slip.h"
#include "slip/slip_lines.h"
#include "tax/deductions.h"
#include "tax/income_tax.h"
#include "tax/relief.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using ModSWCALM::company_is;
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
    if (num(P401) != 0 && num(P184) != 0) {
        FONDOPREV();
    }
}

void bases_and_fund() {
    item_bases_before_fund();
    if (num(P921) == 0 && num(PA48) == 0) {
        const double before = num(Q224);
        FONDOPENSIONE();
        closing.fund_contribution = num(Q224) - before;
    }
    ModSWCALM::recompute_percentage_items();
    item_bases_after_fund();
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
    scrivi(Q225, num(Q224) + contributions.reductions - closing.fund_contribution);
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

// ---- Separate taxation ----

/// How many such payments make a year: 12, or the instalments of CALC13. A collaborator with 1 to
/// 11 instalments is paid for 12 / P090 months at once.
double payments_of_the_year() {
    if (num(P447) == 1) {
        const double instalments = num(P090);
        const double months = instalments >= 1 && instalments <= 11 ? 12 / instalments : 1;
        return 12 / months;
    }
    const double instalments = ModSWCALM::CALC13();
    return instalments != 0 ? instalments : 12;
}

/// The same for amounts under separate taxation: entertainers by the kind of their pay (P330).
double separate_payments_of_the_year() {
    if (num(P168) == 0) {
        return payments_of_the_year();
    }
    const std::string kind = rifilato(P330);
    return kind == "1" ? 24 : kind == "2" ? 52 : kind == "3" ? 365 : 12;
}

/// An amount under separate taxation: its contributions off, then its tax as twelve such amounts.
/// Months and deductions are not counted here. On an adjusting slip the year's tax covers it.
void separate_taxation(const Descriptor& field) {
    if (num(field) == 0) {
        return;
    }
    const double amount = unita(num(field));
    double taken_off = contributions_on(amount);
    if (period.additional()) {
        taken_off += contributions.amounts[5] + num(P724);
    }
    closing.separate_contributions += taken_off;
    scrivi(field, amount - taken_off);
    if (tax_state.ConguaglioAnnuale || num(T184) == 1) {
        return;
    }
    const double payments = separate_payments_of_the_year();
    const double pass = std::exchange(tax_state.PrimaPassata, 0);
    tax_state.ImponibileCorrente = num(field) * payments;
    ModSWCALB::CALCIMPOSTA();
    tax_state.PrimaPassata = pass;
    aggiungi(P257, tax_state.ImpostaLorda / payments);
}

void severance_in_packet() {
    ModSWCALB::DETRPREMI();
    if (num(P921) == 1) {
        ERR_CALCOLO_TFRINBUSTA_RECUP_CTR();
    }
    if (num(PA48) == 1) {
        CALCOLO_TFR_MESE();
    }
}

// ---- Month's taxable and tax ----

/// Workers under the ten percent rule: a tenth of the wage is taxable, the rest is told apart.
void ten_percent_rule() {
    const std::string rule = rifilato(P943);
    if (num(P921) != 1 || rule.empty() || rule == "0") {
        return;
    }
    const double wage = num(P256);
    scrivi(P256, wage * 10 / 100);
    aggiungi(QA21, wage * 90 / 100);
}

void taxable_of_the_month() {
    if (num(P447) == 1 && num(P957) == 1) {
        aggiungi(P256, num(P451));
    }
    ten_percent_rule();
    double taxable = num(P256);
    const bool employer_pays = num(PB20) != 0 && num(PB20) != 2;
    if (!employer_pays) {
        scrivi(PB21, 0);
        taxable += num(P212) + num(Q053);
    }
    if (!ModSWCALB::adjustment_only()) {
        taxable += closing.separate_contributions - num(Q224);
    }
    scrivi(P256, std::max(0.0, taxable));
}

bool withholds_by_month() {
    return !tax_state.ConguaglioAnnuale && num(T184) != 1;
}

void gross_tax_of_the_month() {
    const double payments = payments_of_the_year();
    tax_state.ImponibileCorrente = num(P256) * payments;
    ModSWCALB::CALCIMPOSTA();
    tax_state.PrimaPassata = 0;
    if (num(P090) == 12 && num(P287) != 0) {
        tax_state.ImpostaLorda = tax_state.ImponibileCorrente * num(P287) / 100;
    }
    aggiungi(P257, tax_state.ImpostaLorda / payments);
}

void net_tax_of_the_month() {
    double tax = num(P257) - tax_state.tax_credit - ModSWCALB::sum_of_deductions();
    ModSWCALB::refund_unused_large_family(tax);
    scrivi(Q137, withheld_unless_suspended(std::max(0.0, tax)));
    aggiungi(P258, num(Q137));
    aggiungi(P259, num(Q137));
}

void tax_of_the_month() {
    if (withholds_by_month()) {
        gross_tax_of_the_month();
        net_tax_of_the_month();
    } else {
        scrivi(Q137, 0);
    }
    aggiungi(P256, num(P244) + num(P245));
    if (company_is("90000000066")) {
        aggiungi(P256, num(P212));
    }
    if (ModSWCALB::adjustment_only()) {
        const double back_pay = company_is("90000000066") ? num(Q053) : 0;
        const double contributions_left = num(Q224) - closing.separate_contributions;
        scrivi(P256, std::max(0.0, num(P256) - contributions_left + back_pay));
    }
}

// ---- Termination and severance ----

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
    scrivi(Q373, num(Q040) * num(F322) / 100);
    ElaboraArretratiAP();
    aggiungi(Q191, Int(num(P447) == 1 ? num(P449) : num(P215)));
}

}  // namespace

double withheld_unless_suspended(double tax) {
    if (num(P792) != 1) {
        return tax;
    }
    scrivi(P793, tax);
    aggiungi(Q801, num(P793));
    return 0;
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
    bases_and_fund();
    employee_amounts();
    back_pay_contribution();
    complete_contributions();
    contribution_relief_T187();
    solidarity_above_ceiling();
    tax_and_termination_phases();
}

}  // namespace ModSwCalm2
