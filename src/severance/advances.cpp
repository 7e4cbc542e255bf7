#include "severance/advances.h"

#include <algorithm>
#include <cstdint>

#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/tfr.h"
#include "tax/income_tax.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

/// Percent with two decimals that the scale takes of the reference income on the average.
double average_rate(double reference) {
    if (reference == 0) {
        return 0;
    }
    std::int16_t alternate = 0;
    const double tax = ModSWCALB::CalcolaImposta(reference, alternate);
    return Int(tax * 100 / reference * 100 + 0.5) / 100;
}

/// What of the fund bears no income tax, as it bore its own (revaluations) or none.
double untaxed_part() {
    const double corrections = num(T492) == 1 ? num(Q372) - num(Q376) : 0;
    return std::max(0.0, corrections + num(Q056) - num(Q365));
}

void take_up(const Advance& advance) {
    scrivi(advance.month, period.month());
    scrivi(advance.amount, num(advance.request));
}

/// `earlier_paid`, `earlier_tax`: the advances before this one, in euro.
void work_out_tax(const Advance& advance, double earlier_paid, double earlier_tax) {
    scrivi(advance.fund, num(Q043) + num(Q039) + num(Q262) - num(Q372) + num(Q376));
    scrivi(advance.reference, reference_income(num(advance.fund), num(Q042)));
    scrivi(advance.rate, num(P031) == 0 ? 0 : average_rate(num(advance.reference)));
    scrivi(advance.paid, earlier_paid + num(advance.amount));
    scrivi(advance.offsets, untaxed_part());
    const double taxed = num(advance.paid) - num(advance.offsets);
    scrivi(advance.tax, std::max(0.0, taxed * num(advance.rate) / 100));
    scrivi(advance.due, std::max(0.0, num(advance.tax) - num(advance.prior_tax)));
    if (num(PB53) == 0) {
        scrivi(advance.charged, std::max(0.0, num(advance.due) - earlier_tax));
    }
}

}  // namespace

double advances_of_the_year() {
    double sum = 0;
    for (const Advance& advance : kAdvances) {
        sum += num(advance.amount);
    }
    return sum;
}

double tax_on_advances_of_the_year() {
    double sum = 0;
    for (const Advance& advance : kAdvances) {
        sum += num(advance.charged);
    }
    return sum;
}

void ElaboraAnticipazioni() {
    TRACCIA("ElaboraAnticipazioni");
    double paid = num(Q043);
    double taxed = num(Q044);
    for (const Advance& advance : kAdvances) {
        if (num(advance.request) != 0) {
            take_up(advance);
            work_out_tax(advance, paid, taxed);
            aggiungi(P258, num(advance.charged));
            aggiungi(P259, num(advance.charged));
        }
        paid += num(advance.amount);
        taxed += num(advance.charged);
    }
}

}  // namespace ModSwCalm2
