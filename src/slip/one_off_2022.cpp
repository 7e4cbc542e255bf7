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

void one_off_2022() {
    constexpr double kOneOff = 150;
    constexpr double kOneOffWageLimit = 1538;
    constexpr double kNovember = 11;
    if (num(T246) != 0 || num(PA39) != 0 || rifilato(P412) == "I") {
        return;
    }
    scrivi(QA24, 0.0);
    if (period.yyyymm() <= 202211) {
        scrivi(PB25, 0.0);
    } else if (slip.former_PB25 == kNovember) {
        scrivi(PB25, kNovember);  // paid with November's slip: December pays nothing more
        return;
    }
    // Wage above the yearly ceiling counts too: it has left P240 for P881 or P883.
    const double wage = num(P240) + num(P881) + num(P883) - num(PB11);
    if (num(P071) != 0 && wage <= kOneOffWageLimit) {
        scrivi(QA24, kOneOff);
        if (period.yyyymm() == 202211 || period.yyyymm() == 202212) {
            scrivi(PB25, period.month());
        }
    }
    if (num(QA24) > 0) {
        aggiungi(P241, num(QA24));
    }
}

}  // namespace ModSWCALM
