#include "slip/year_end_carry.h"

#include <algorithm>

#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

namespace {

/// Q359, the yearly base of the settlement; once a slip, at the first item of the class.
void open_carry() {
    if (num(T176) != 1 || slip.carry_opened || num(Z050) != 1) {
        return;
    }
    slip.carry_opened = true;
    const double of_this_line = num(Z014) == 1 ? num(Z153) : 0;
    scrivi(Q359, num(Q003) + slip.IMPSOCIALE1 + of_this_line - num(Q363) + num(Q358));
}

/// On the slips of the year: splits the amount into its exempt and its taxed part.
void split_carried_item() {
    const bool has_own_divisor = !rifilato(T019).empty();
    double wage = has_own_divisor ? slip.PAGAORARIA : slip.PAGAORARIA * num(P090);
    if (has_own_divisor && num(P050) == 0) {
        wage = num(P240);
    }
    scrivi(Q357, wage);
    const double amount = num(Z153);
    double share = 0;
    if (company.DIVISOREANNO != 0) {
        const double yearly = has_own_divisor ? num(Q357) : num(Q357) + num(Q358) + amount;
        share = yearly / company.DIVISOREANNO * -1;
    }
    const double exempt = std::min(share, amount);
    const double taxed = amount - exempt;
    aggiungi(Q363, taxed);
    aggiungi(Q360, exempt);
    aggiungi(Q358, amount);
    scrivi(P458, exempt);
    scrivi(P459, taxed);
}

/// On the last line of the last slip: the year's exempt part against what the slips have exempted.
void settle_carry() {
    if (!slip.last_line || num(T464) == 1 || num(Q358) == 0 || company.DIVISOREANNO == 0) {
        return;
    }
    const double yearly_share = num(Q359) / company.DIVISOREANNO * -1;
    const double target = std::min(yearly_share, num(Q358)) - num(Q360);
    if (target < 0) {
        scrivi(Q361, target);
    } else {
        scrivi(Q362, target);
        scrivi(P458, target);
        scrivi(P459, slip.carried_amount - target);
    }
    aggiungi(Q360, target);
    scrivi(Q363, num(Q358) - num(Q360));
}

}  // namespace

void year_end_carry() {
    if (!slip.CEDOLINOFINALE) {
        if (num(Z050) == 1 && num(T176) == 1) {
            split_carried_item();
        }
        return;
    }
    if (num(T464) == 1) {
        scrivi(T176, 0.0);
    }
    open_carry();
    if (num(Z050) == 1) {
        aggiungi(Q358, num(Z153));
        slip.carried_amount = num(Z153);
    }
    settle_carry();
}

}  // namespace ModSWCALM
