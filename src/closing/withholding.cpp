#include "closing/withholding.h"

#include <algorithm>
#include <string>
#include <utility>

#include "closing/state.h"
#include "closing/tax_pass.h"
#include "context/period.h"
#include "contributions/contributions.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/seniority.h"
#include "slip/slip.h"
#include "tax/deductions.h"
#include "tax/income_tax.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using ModSWCALM::company_is;
using MXLIBRERIA::period;

namespace {

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

}  // namespace

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

double withheld_unless_suspended(double tax) {
    if (num(P792) != 1) {
        return tax;
    }
    scrivi(P793, tax);
    aggiungi(Q801, num(P793));
    return 0;
}

}  // namespace ModSwCalm2
