// Net pay of the slip and its rounding.

#include <algorithm>
#include <cmath>

#include "closing/closing.h"
#include "context/period.h"
#include "context/utilities.h"
#include "history/slip_images.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/bonus.h"
#include "tax/income_tax.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using ModSWCALM::company_is;
using ModSWCALM::slip;
using MXLIBRERIA::period;

namespace {

/// Rounding up to the whole unit: Int(x + 0.999).
double rounded_up(double net) {
    return Int(net + 0.999);
}

void settle_flags_and_sums() {
    if (num(P031) == 0) {
        svuota({P186, Q244});
    }
    aggiungi(Q109, slip.ESENTEA);
    if (tax_state.ConguaglioAnnuale && num(P792) == 1) {
        scrivi(P793, num(P793));
    }
}

/// Tax at source at the employee's flat rate (P056 = 3, rate P077), also of those who have no
/// income tax by the scale: their taxable amount is the one of the lines.
void flat_tax_at_source() {
    if (num(P056) != 3 || num(P077) == 0) {
        return;
    }
    const double taxable = num(P031) == 0 ? std::max(0.0, slip.IMPFISCALE) : num(P256);
    scrivi(P535, taxable * num(P077) / 100);
    aggiungi(P259, num(P535));
}

/// Company 90000000011 pays a net between Q089 and Q088: the gross is moved by Q090.
void fixed_net_adjustment() {
    if (!company_is("90000000011") || period.additional()) {
        return;
    }
    scrivi(Q090, 0);
    double net = num(P241) - num(P259);
    if (num(T184) == 0) {
        net = rounded_up(net);
    }
    if (num(Q089) != 0 && num(Q089) > net) {
        scrivi(Q090, num(Q089) - net);
        aggiungi(P241, num(Q090));
    }
    if (num(Q088) != 0 && num(Q088) < net) {
        scrivi(Q090, net - num(Q088));
        aggiungi(P241, -num(Q090));
    }
}

void advance_on_the_net() {
    if (ModSWCALB::adjustment_only()) {
        return;
    }
    scrivi(PA44, 0);
    scrivi(PB54, num(PB54));
}

/// The net as a whole number whose last digit goes to 0, or stays at 5. Failure 6 above 32767.
double rounded_by_tens(double net) {
    const std::int16_t whole = intero16(Fix(net));
    const int digit = whole % 10;
    if (digit == 5) {
        return whole;
    }
    return digit < 5 ? whole - digit : whole + 10 - digit;
}

void pay(double net, double paid) {
    scrivi(Q163, paid - net);
    scrivi(Q173, paid);
}

}  // namespace

void net_and_rounding() {
    // In cents: the difference of two fields may lie a hair below the euro whose last digit counts.
    const double net = arrotonda(num(P241) - num(P259));
    const bool dismissed_in_month = num(P054) == 1 && !company_is("90000000011");
    if (net < 0) {
        scrivi(Q163, -net);
        scrivi(Q173, 0);
    } else if (dismissed_in_month || num(T184) == 1) {
        pay(net, net);
    } else if (num(TA43) == 1) {
        pay(net, rounded_by_tens(net));
    } else {
        pay(net, rounded_up(net));
    }
}

bool slip_is_taxed() {
    return num(Q274) != 0 || num(P031) != 0;
}

void net_pay_block() {
    const bool taxed = slip_is_taxed();
    if (taxed) {
        settle_flags_and_sums();
    }
    flat_tax_at_source();
    if (taxed) {
        if (!tax_state.ConguaglioAnnuale) {
            ModSWCALB::bonus_steps();
        }
        fixed_net_adjustment();
        advance_on_the_net();
    }
    NZCedLibPaga::closing_step_net();
    net_and_rounding();
}

void cumulative_method() {
    if (num(T184) != 1 || tax_state.ConguaglioAnnuale) {
        return;
    }
    tax_state.ImponibileCorrente = num(P256) + num(Q013);
    ModSWCALB::CALCIMPOSTA();
    tax_state.PrimaPassata = 0;
    // Off the tax of the year so far go the credit (Q174) and the deductions (Q666) so far.
    const double tax = std::max(0.0, tax_state.ImpostaLorda - num(Q174) - num(Q666));
    const double withheld = num(Q014) + num(Q515);
    if (withheld > tax) {
        const double difference = withheld - tax;
        if (num(Q023) == 1) {
            scrivi(Q023, difference);
        } else {
            scrivi(Q022, difference);
            aggiungi(P241, num(Q022));
        }
    } else {
        scrivi(Q021, arrotonda(tax - withheld));
        aggiungi(P259, num(Q021));
    }
    scrivi(Q014, tax);
}

}  // namespace ModSwCalm2
