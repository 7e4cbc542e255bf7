#include "slip/taxable_bases.h"

#include <algorithm>

#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/item_classes.h"
#include "slip/minimum_base.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

Classification classification;

namespace {

bool is_collaborator_or_sport() {
    return num(PC23) != 0;
}

void classify(int mode, double first, double second, double third) {
    classification.mode = mode;
    classification.first = first;
    classification.second = second;
    classification.third = third;
    if (is_collaborator_or_sport()) {
        NONSOCHECALCOLI_COCOCO_SPORT();
    } else {
        NONSOCHECALCOLI();
    }
}

void add_to_slip_totals() {
    const double amount = num(Z153);
    classification.negative = num(Z011) == 1;
    if (num(Z011) == 0) {
        slip.TOTCOMPETENZE += amount;
    } else if (classification.negative) {
        slip.TOTTRATTENUTE += amount;
    }
}

void fiscal_pass() {
    classify(kFiscal, slip.IMPFISCALE, 0, 0);
    slip.IMPFISCALE = classification.first;
    scrivi(P256, slip.IMPFISCALE);
}

void social_pass() {
    classify(kSocial, slip.IMPSOCIALE1, slip.IMPSOCIALE2, slip.IMPSOCIALE3);
    slip.IMPSOCIALE1 = classification.first - slip.FRANCHIGIALINEA;
    slip.IMPSOCIALE2 = classification.second - slip.FRANCHIGIALINEA;
    slip.IMPSOCIALE3 = classification.third - slip.FRANCHIGIALINEA;
    slip.IMPMINIMALE -= slip.FRANCHIGIALINEA;
    slip.FRANCHIGIALINEA = 0;
}

/// P240: the first social base, not below the minimum. With F041 = 1 the rounding is kept apart and
/// the base goes on as it is.
void write_P240() {
    if (run_tables.F041 == 1) {
        slip.rounded_base = unita(std::max(slip.IMPSOCIALE1, slip.minimum_base));
        scrivi(P240, slip.rounded_base);
        return;
    }
    slip.IMPSOCIALE1 = std::max(slip.IMPSOCIALE1, slip.minimum_base);
    if (num(P169) == 0) {
        slip.IMPSOCIALE1 = unita(slip.IMPSOCIALE1);
    }
    scrivi(P240, slip.IMPSOCIALE1);
}

/// P252: the third social base in the same way, in whole euro always.
void write_P252() {
    const double base = unita(std::max(slip.IMPSOCIALE3, slip.minimum_base));
    if (run_tables.F041 != 1) {
        slip.IMPSOCIALE3 = base;
    }
    scrivi(P252, base);
}

}  // namespace

void AGGIMPFISCSOC() {
    TRACCIA("AGGIMPFISCSOC");
    add_to_slip_totals();
    fiscal_pass();
    social_pass();
    take_minimum_base();
    write_P240();
    write_P252();
    scrivi(P250, slip.IMPSOCIALE2);
}

}  // namespace ModSWCALM
