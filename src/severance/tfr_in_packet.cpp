// Severance that is paid with the wages instead of joining a fund (L. 190/2014, c. 26 to 30).

#include <algorithm>

#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/tfr.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

/// Accrual of the month less its contribution, in cents and not below 0.
double accrual_of_the_month() {
    const double contribution = num(P240) * accrual_contribution_percent() / 100;
    return std::max(0.0, arrotonda(num(P260) / slip.severance_divisor - contribution));
}

/// A figure of the ordinary slip, or its companion of the additional one.
const Descriptor& by_kind(const Descriptor& ordinary, const Descriptor& additional) {
    return period.ordinary() ? ordinary : additional;
}

/// What the employer recovers of the contributions, in percent of the wage: 0.40 where nothing is
/// paid, 0.28 unless T718 says otherwise (D.Lgs. 252/2005, art. 10; D.L. 203/2005, art. 8).
void recover_contributions(double paid) {
    constexpr double kWithoutPayment = 0.4;
    constexpr double kFurtherCosts = 0.28;
    const double wage = std::max(0.0, num(P240));
    if (paid == 0) {
        scrivi(by_kind(P925, P926), wage * kWithoutPayment / 100);
        aggiungi(Q962, num(P925));
    }
    if (num(T718) == 0) {
        scrivi(by_kind(P927, P928), wage * kFurtherCosts / 100);
    }
}

}  // namespace

bool severance_in_the_packet() {
    return num(P921) != 0 || num(PA48) != 0;
}

void ERR_CALCOLO_TFRINBUSTA_RECUP_CTR() {
    TRACCIA("ERR_CALCOLO_TFRINBUSTA_RECUP_CTR");
    const double sum = accrual_of_the_month();
    aggiungi(P241, sum);
    if (num(P031) != 0) {
        aggiungi(P256, sum);
    }
    aggiungi(Q954, num(P260));
    aggiungi(Q955, sum);
    scrivi(by_kind(P922, P924), sum);
    aggiungi(Q956, num(P922));
    recover_contributions(sum);
}

void CALCOLO_TFR_MESE() {
    TRACCIA("CALCOLO_TFR_MESE");
    constexpr double kFlatRate = 23;
    const double sum = accrual_of_the_month();
    const bool taxed = num(PB53) == 0 && num(P031) != 0;
    scrivi(PA51, kFlatRate);
    const double tax = taxed ? arrotonda(kFlatRate * sum / 100) : 0;
    aggiungi(QA01, num(P260));
    aggiungi(QA02, sum);
    scrivi(by_kind(PA49, PA50), sum);
    if (num(PB53) == 0) {
        scrivi(by_kind(PA52, PA53), tax);
    }
    aggiungi(QA03, sum);
    aggiungi(QA04, tax);
    aggiungi(P241, sum);
    aggiungi(P259, tax);
    scrivi(P260, 0);
}

}  // namespace ModSwCalm2
