#include <string>

#include "calc/phases.h"
#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;

namespace {

void clear_always() {
    svuota({P468, Q201, Q189, P633, Q710});
    azzera(elenco<P759, P762>);
    azzera({PB55, PB56, P812, P820, PB06, PB08, PB10, PB11, PB14, PB15, PB09, PB07, PB18, PB25,
            PB26, PB29, PB02});
}

/// What an earlier slip of the month saved, where P281 does not say that it is valid.
void clear_saved_slip() {
    if (num(P281) == 1) {
        return;
    }
    svuota(elenco<P268, P281>);
    svuota({PB03});
    svuota(elenco<P604, P606>);
    svuota({Q881});
    azzera({PB07, PB09, P918, P924, P926, P928, P930});
    svuota({P749, P724, P764, P851, P883, P884});
    azzera({PA50, PA53});
}

/// Days and rates of the month; the net of the earlier slip is kept aside.
void clear_days_and_rates(const StartingRates& rates) {
    svuota({P202, P322, P207});
    slip.former_Q173 = num(Q173);
    svuota({Q173});
    scrivi(P224, rates.P224);
    scrivi(P225, rates.P225);
    scrivi(P227, rates.P227);
    svuota({P226});
    svuota(elenco<P228, P237>);
}

/// Kind and date of this slip; by the date a later run knows a repeat of the month.
void mark_slip() {
    const bool no_kind = num(P447) == 1 || num(P118) == 2;
    scrivi(P444, no_kind ? std::string_view() : ritaglia(period.PERIODO, 9, 1));
    scrivi(P238, "0");
    svuota({P239});
    scrivi(Q179, period.date());
}

void clear_bases_and_amounts() {
    svuota({P240, P241, Q173});
    svuota(elenco<P242, P248>);
    svuota({P081, P082, P559, P291, P292});
    svuota(elenco<P193, P195>);
    if (num(P118) != 2) {
        svuota({Q052});
    }
    svuota(elenco<P250, P260>);
    svuota({Q137, P196, P793, P794});
}

void clear_contributions_and_taxes() {
    svuota({Q225, Q226, P407, Q227, Q228, Q139, Q140, Q130, Q138, Q224, P289});
    svuota({Q021, Q022, Q036});
    if (num(T184) == 1) {
        svuota({Q162, Q163});
    }
}

void clear_month_figures() {
    svuota(elenco<P454, P456>);
    svuota({P956, P458, P459, P451, P452, P499, P500, P765, P782, P535, P543});
    svuota(elenco<P546, P555>);
    svuota({P561, P562, P813, P814, P878, P879, P902, P903, P911, P912});
    azzera({PC29, PC30});  // free and taxed part of a sports collaborator's line
    for (const Descriptor& date : elenco<PA25, PA32>) {
        scrivi(date, "00000000");
    }
}

void clear_bonuses_and_incentives() {
    azzera({P905, Q938, Q939, P022, Q280, Q281, PC33, QA41, QA42, P907,
            P908, P920, P917, P940, P922, P925, P927, P929, PA49, PA52});
    svuota(elenco<Q621, Q633, 2>);
    svuota({Q970, Q973, P850, P852});
    azzera({P880, P889, P901, P220});
    azzera(elenco<P868, P870>);
    azzera({P881, P882});
    if (rifilato(P916).empty()) {
        scrivi(P916, "0");
    }
}

}  // namespace

void clear_month_results(const StartingRates& rates) {
    clear_always();
    clear_saved_slip();
    clear_days_and_rates(rates);
    mark_slip();
    clear_bases_and_amounts();
    clear_contributions_and_taxes();
    clear_month_figures();
    clear_bonuses_and_incentives();
}

}  // namespace ModSWCALM
