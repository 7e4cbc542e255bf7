#include "slip/premium_ceiling.h"

#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

double own_contribution_percent() {
    double percent = 0;
    percent += num(P181) == 1 ? slip.PCTCONTR[1] : 0;
    percent += num(P183) == 1 ? slip.PCTCONTR[3] : 0;
    percent += num(P188) == 1 ? slip.PCTCONTR[8] : 0;
    return percent;
}

double ceiling_limit(double percent) {
    const double limit = num(F413);
    const double rule = num(F415);
    if (rule == 0) {
        return importo(dividi(limit, 100 - percent) * 100);
    }
    return rule == 1 || rule == 2 ? limit : 0;
}

bool below_ceiling() {
    const double income = num(Q775);
    return num(P758) == 0 && income != 0 && num(F412) >= income &&
           num(Q776) < ceiling_limit(own_contribution_percent());
}

}  // namespace ModSWCALM
