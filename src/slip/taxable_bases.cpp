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
    if (num(Z011) == 0) {
        slip.TOTCOMPETENZE += amount;
    } else if (num(Z011) == 1) {
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
    if (wage_is_whole()) {
        slip.IMPSOCIALE1 = unita(slip.IMPSOCIALE1);
    }
    scrivi(P240, slip.IMPSOCIALE1);
}

/// The wage behind P240 before its rounding; raised to the minimum it is the minimum. `in_line` is
/// what this line let into the first social base, which itself is rounded where F041 is not 1.
void keep_wage_in_cents(double in_line) {
    const double wage = run_tables.F041 == 1 ? slip.IMPSOCIALE1 : slip.wage_in_cents + in_line;
    slip.wage_in_cents = std::max(wage, slip.minimum_base);
    slip.wage_of_lines = num(P240);
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

bool wage_is_whole() {
    return num(P169) == 0 || run_tables.F041 == 1;
}

double taxable_part() {
    return is_collaborator_or_sport() ? collaborator_taxable_part() : employee_taxable_part();
}

void AGGIMPFISCSOC() {
    TRACCIA("AGGIMPFISCSOC");
    add_to_slip_totals();
    fiscal_pass();
    const double before = slip.IMPSOCIALE1;
    social_pass();
    const double in_line = slip.IMPSOCIALE1 - before;
    take_minimum_base();
    write_P240();
    keep_wage_in_cents(in_line);
    write_P252();
    scrivi(P250, slip.IMPSOCIALE2);
}

}  // namespace ModSWCALM
