#include "nzutil/year_carry.h"

#include <string>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/advances.h"
#include "tax/surtaxes.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

/// Revaluation of the fund and its substitute tax (D.Lgs. 47/2000, art. 11).
void revalue_fund(int closed_year) {
    const double fund = num(Q039) - ModSwCalm2::revalued_elsewhere();
    scrivi(Q270, ModSwCalm2::revaluation_of(fund, end_of_year(closed_year)));
    scrivi(Q121, ModSwCalm2::substitute_tax(num(Q270)));
}

/// The year's accrual, less contribution and advances.
void close_accrual() {
    constexpr double kUsualDivisor = 13.5;  // art. 2120 c.c., c. 1
    scrivi(Q041, num(Q037) / (num(P467) != 0 ? num(P467) : kUsualDivisor));
    scrivi(Q264, num(Q041) - num(Q038));
    scrivi(Q265, ModSwCalm2::advances_of_the_year());
}

}  // namespace

void set_period_to_december(int closed_year) {
    MXLIBRERIA::period.set("3112" + std::to_string(closed_year) + "4");
}

ModSwCalm2::RevaluationTerm end_of_year(int closed_year) {
    return {
        .yyyymm = closed_year * 100 + 12, .months = num(Q136), .series = true, .settles = false};
}

void carry_income() {
    scrivi(Q032, num(Q031));
    scrivi(Q031, num(Q013) + num(Q514));
}

void carry_surtaxes(bool left) {
    if (left || ModSWCALB::surtaxes_are_charged_at_once()) {
        azzera({Q317, Q235});
        return;
    }
    // Below 0, Q343 is the advance itself.
    const bool given_up = num(Q674) == 0 && num(Q343) >= 0;
    scrivi(Q317, num(Q342));
    scrivi(Q235, num(Q343) - (given_up ? num(Q678) + num(Q675) : 0));
}

void carry_fund(int closed_year) {
    close_accrual();
    revalue_fund(closed_year);
    const double net_revaluation = num(Q270) - num(Q121);
    aggiungi(Q039, num(Q264) - num(Q265) - num(Q236) + net_revaluation);
    aggiungi(Q056, net_revaluation);
    aggiungi(Q042, num(Q136));
    aggiungi(Q043, num(Q265));
    aggiungi(Q044, ModSwCalm2::tax_on_advances_of_the_year());
    for (const ModSwCalm2::Advance& advance : ModSwCalm2::kAdvances) {
        azzera({advance.amount, advance.charged, advance.month});
    }
    azzera({Q136, Q037, Q038, Q041, Q236});
}

}  // namespace nzutil
