// Year-end adjustment: the scale is applied once to the whole year's base, and the difference
// against the tax withheld is charged or refunded (D.P.R. 600/1973, art. 23, c. 3).

#include <algorithm>

#include "closing/closing.h"
#include "closing/state.h"
#include "closing/tax_pass.h"
#include "context/period.h"
#include "history/year_totals.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/bonus.h"
#include "tax/deductions.h"
#include "tax/income_tax.h"
#include "tax/surtaxes.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using MXLIBRERIA::period;

namespace {

constexpr double kMonthsOfYear = 12;

/// The two sums of the year's certificate: income and further amounts.
struct CertificateSums {
    double first = 0;
    double further = 0;
};

CertificateSums sums_to_date() {
    scrivi(Q658, std::min(num(Q658), kMonthsOfYear));
    aggiungi(Q261, num(Q260) * closing.period_factor / 100);
    scrivi(Q174, num(Q174));
    CertificateSums sums;
    ModElaboraStorico::DETRCUD(sums.first, sums.further);
    return sums;
}

/// Gross tax on the year's base; employment ended on 31 December 2004 keeps the older scale.
void tax_of_the_year(const CertificateSums& sums) {
    const double taxable = num(Q013);
    tax_state.ImponibileCorrente = sums.first > taxable ? taxable : taxable - sums.first;
    tax_state.TabellaAlternativa = testo(P017) == "31122004" ? 1 : 0;
    ModSWCALB::CALCIMPOSTA();
    tax_state.TabellaAlternativa = 0;
    tax_state.PrimaPassata = 0;
    if (num(P287) != 0 && num(P525) != 0) {
        tax_state.ImpostaLorda = tax_state.ImponibileCorrente * num(P287) / 100;
    }
}

/// Net tax of the year; it stands in ImpostaLorda for the surtaxes, which are due only with it.
void net_tax_of_the_year(const CertificateSums& sums) {
    double net_tax = tax_state.ImpostaLorda - (sums.first + sums.further + num(Q174)) -
                     ModSWCALB::sum_of_deductions();
    ModSWCALB::refund_unused_large_family(net_tax);
    tax_state.ImpostaLorda = std::max(0.0, net_tax);
}

void settlement() {
    const bool suspended = num(P792) == 1;
    const double withheld = num(Q014) + num(Q515) + (suspended ? num(Q801) : 0);
    const double tax = tax_state.ImpostaLorda;
    if (withheld > tax) {
        scrivi(Q022, withheld - tax);
        aggiungi(P241, num(Q022));
        aggiungi(Q014, -num(Q022));
        return;
    }
    scrivi(Q021, withheld_unless_suspended(tax - withheld));
    aggiungi(P259, num(Q021));
    aggiungi(Q014, num(Q021));
}

}  // namespace

void year_end_block() {
    if (ModSWCALB::adjustment_only() && period.additional()) {
        return;
    }
    const CertificateSums sums = sums_to_date();
    tax_of_the_year(sums);
    net_tax_of_the_year(sums);
    ModSWCALB::surtaxes_of_the_year();
    settlement();
    if (slip_is_taxed()) {
        ModSWCALB::bonus_steps();
    }
}

}  // namespace ModSwCalm2
