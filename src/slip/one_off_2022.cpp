#include "slip/one_off_2022.h"

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

/// The month of payment stands in PB25; the clearing of the month's results has taken it off.
bool paid_by_an_earlier_slip() {
    constexpr double kNovember = 11;
    constexpr double kDecember = 12;
    return slip.former_PB25 == kNovember || slip.former_PB25 == kDecember;
}

}  // namespace

void one_off_2022() {
    constexpr double kOneOff = 150;
    constexpr double kOneOffWageLimit = 1538;
    if (num(T246) != 0 || num(PA39) != 0 || rifilato(P412) == "I") {
        return;
    }
    scrivi(QA24, 0.0);
    if (paid_by_an_earlier_slip()) {
        scrivi(PB25, slip.former_PB25);
        return;
    }
    if (period.yyyymm() == 202211) {
        if (period.additional()) {
            return;
        }
        scrivi(PB25, 0.0);
    }
    // Wage above the yearly ceiling counts too: it has left P240 for P881 or P883.
    const double wage = num(P240) + num(P881) + num(P883) - num(PB11);
    if (num(P071) != 0 && wage <= kOneOffWageLimit) {
        scrivi(QA24, kOneOff);
        scrivi(PB25, period.month());
    }
    if (num(QA24) > 0) {
        aggiungi(P241, num(QA24));
    }
}

}  // namespace ModSWCALM
