// Year-to-date fields of the employee, and the repeat guard at their end.

#include <algorithm>
#include <numeric>

#include "closing/closing.h"
#include "context/period.h"
#include "contributions/allowances.h"
#include "contributions/contributions.h"
#include "contributions/pension_paid.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "slip/taxable_bases.h"
#include "tax/deductions.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::slip;
using MXLIBRERIA::period;

namespace {

double sum_of(std::span<const Descriptor> fields) {
    return std::accumulate(fields.begin(), fields.end(), 0.0,
                           [](double sum, const Descriptor& field) { return sum + num(field); });
}

// ---- Collaborators ----

/// Sums of sports collaborators to date, the month's one in its own field (Q523 January ... Q534).
void collaborator_sums() {
    aggiungi(Q782, num(P765));
    aggiungi(Q847, num(P782));
    const double month_sum = num(P500) + num(P765) + num(P782);
    if (month_sum != 0) {
        scrivi(dopo(Q523, period.month() - 1), month_sum);
        scrivi(Q680, sum_of(elenco<Q523, Q534>));
    }
    const bool sports = num(PC23) != 0;
    aggiungi(Q520, num(P499) + (sports ? num(PC26) : 0));
    aggiungi(Q521, num(P451) + (sports ? num(PC27) : 0));
    aggiungi(Q522, num(P452));
}

/// What of a collaborator's wage is insured against accidents: nothing up to the lower limit, the
/// wage itself between the two, and no more than the upper one (F345, F346 a year; one alone is
/// both, without either the whole wage is insured). D.Lgs. 38/2000, art. 5
double insured_wage(double wage, double months) {
    if (num(F345) == 0 && num(F346) == 0) {
        return std::max(0.0, wage);
    }
    const double first = num(F345) != 0 ? num(F345) : num(F346);
    const double second = num(F346) != 0 ? num(F346) : num(F345);
    const double least = std::min(first, second) / 12 * months;
    const double most = std::max(first, second) / 12 * months;
    return wage > least ? std::min(wage, most) : 0;
}

/// The insured wage of the month, and its sum under the class of P032.
void collaborator_accident_limits() {
    const double months = std::max(
        1.0, num(P447) == 1 && num(P090) >= 1 && num(P090) <= 11 ? Int(12 / num(P090)) : 1.0);
    const double counted = insured_wage(num(P240), months);
    if (counted == 0) {
        return;
    }
    scrivi(Q204, counted);
    const double insurance_class = num(P032);
    if (insurance_class >= 1 && insurance_class <= 9) {
        aggiungi(dopo(Q205, static_cast<int>(insurance_class) - 1), counted);
    }
}

/// A collaborator above the ceiling of the fixed data (F421) goes to the control list.
void collaborator_ceiling_list() {
    if (num(F421) != 0 && num(F421) < num(Q680)) {
        list_above_ceiling(num(F421));
    }
}

void collaborators() {
    if (num(P447) != 1) {
        return;
    }
    collaborator_sums();
    collaborator_accident_limits();
    collaborator_ceiling_list();
}

/// The wage is raised to the minimum of the month, unless the yearly ceiling has taken wage away.
/// The minimum is in whole euro where the wage is: the contributions are on the rounded minimum.
/// P249 is what this slip was raised by.
void raise_to_minimum() {
    azzera({P249});
    if (num(P881) != 0 || num(P883) != 0) {
        return;
    }
    const double whole_minimum = unita(slip.minimum_base);
    const double minimum = ModSWCALM::wage_is_whole() ? whole_minimum : slip.minimum_base;
    if (num(P240) < minimum) {
        scrivi(P249, minimum - num(P240));
        scrivi(P240, minimum);
    }
    if (num(P252) < whole_minimum) {
        scrivi(P252, whole_minimum);
    }
}

void taxable_and_wages() {
    aggiungi(Q013, num(P031) != 0 ? num(P256) : num(P256) - num(Q224));
    if (num(T184) != 1) {
        aggiungi(Q014, num(Q137));
    }
    aggiungi(Q001, num(P528) > 0 ? unita(num(P250)) : num(P240));
    aggiungi(Q003, num(P250));
}

/// Accident-insurance wage to date: by calendar (P160) the contributions have counted it already.
void accident_insurance() {
    if (num(P160) != 1) {
        aggiungi(Q094, unita(num(P250)));
    }
    double days = num(P201);
    if (num(P032) != 0) {
        days = unita(num(P161) / 26 * num(P201));
    }
    scrivi(Q012, Int(num(Q214)));
    if (num(P938) == 0) {
        ASSEGNAINAIL(period.month(), num(P240), days);
    }
}

void other_sums_to_date() {
    aggiungi(Q005, num(Q224));
    if (num(P849) == 1 && num(P852) > 0) {
        aggiungi(Q005, num(P852));
    }
    write_pension_paid(num(Q007) + pension_contribution());
    aggiungi(Q002, unita(num(P252)));
    aggiungi(Q063, num(P201));
    aggiungi(Q068, num(P242));
    aggiungi(Q078, num(P243));
    aggiungi(Q071, sum_of(elenco<P228, P237>));
    aggiungi(Q081, num(P238) + num(P239));
    aggiungi(Q066, std::max(0.0, slip.ESENTEB));
    aggiungi(Q062, Int(num(P444)));
}

/// The month's slip is calculated once: Q171 is the last month calculated, Q172 the mark of the
/// additional slip, P116 = 1 lets the month be calculated again.
void repeat_guard() {
    if (period.additional()) {
        if (num(Q172) == 1) {
            ModSWCALM::ABORTODIP = -1;
        }
        scrivi(Q172, "1");
        return;
    }
    scrivi(Q172, "0");
    const double month = period.month();
    if (month <= num(Q171)) {
        ModSWCALM::ABORTODIP = -1;
    }
    if ((month == 1 && num(Q171) == 12) || num(P116) == 1) {
        ModSWCALM::ABORTODIP = 0;
    }
    scrivi(Q171, month);
}

}  // namespace

void year_to_date_block() {
    collaborators();
    raise_to_minimum();
    taxable_and_wages();
    accident_insurance();
    other_sums_to_date();
    repeat_guard();
    ModSWCALB::drop_slip_without_tax_codes();
}

}  // namespace ModSwCalm2
