#include "slip/seniority.h"

#include <algorithm>

#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using MXLIBRERIA::TRACCIA;

namespace {

constexpr double kMonthsOfYear = 12;

/// Date of the next step, mmyyyy, `interval` months after the one that falls due.
std::string next_step_date(double month, double year, double interval) {
    for (double passed = 1; passed <= interval; ++passed) {
        month += 1;
        if (month > kMonthsOfYear) {
            month = 1;
            year += 1;
        }
    }
    return zeri_a_sinistra(testo_numero(month), 2) + zeri_a_sinistra(testo_numero(year), 4);
}

}  // namespace

void SCATTI(const std::string& date, const std::string& /*three_digits*/) {
    TRACCIA("SCATTI");
    const std::string due = testo(P027);
    const double month = valore(ritaglia(due, 1, 2));
    const double year = valore(ritaglia(due, 3, 4));
    if (month == 0 || valore(due) != valore(ritaglia(date, 3, 6))) {
        return;
    }
    const double seniority_pay = num(P061) + num(P026);
    const double step = num(P029) + 1;
    const double last_step = num(P030);
    if (last_step < step) {
        return;
    }
    const std::string next = last_step == step ? due : next_step_date(month, year, num(P028));
    scrivi(P061, seniority_pay);
    scrivi(P027, next);
    scrivi(P029, step);
}

void CALCOLACIG() {
    TRACCIA("CALCOLACIG");
    const double months = std::max(kMonthsOfYear, Int(num(P090)));
    const double monthly_reference = months * num(P213) / kMonthsOfYear;
    scrivi(Q190, monthly_reference > num(T205) ? num(T204) : num(T203));
}

double CALC13() {
    TRACCIA("CALC13");
    return num(P168) == 0 && num(T188) == 1 ? num(P090) : 0;
}

void ENPALSPEC(const std::string& date) {
    TRACCIA("ENPALSPEC");
    if (ritaglia(testo(Q179), 3, 6) == ritaglia(date, 3, 6)) {
        aggiungi(P268, num(P250));  // a repeat or a second slip of the month
        return;
    }
    svuota({P268, P604, P605, P606, Q881, P749});
    azzera({P918, P924, P926, P928});
    for (const Descriptor& kept : {P764, P930}) {
        scrivi(kept, num(kept));
    }
}

}  // namespace ModSWCALM
