// The general exemption of the code P916: the procedure walks the table of the codes.

#include <algorithm>
#include <string>

#include "calc/dates.h"
#include "calc/employer_rates.h"
#include "calc/exemption_codes.h"
#include "calc/exemption_terms.h"
#include "calc/incentives.h"
#include "calc/remaining.h"
#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "slip/slip_table.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

constexpr double kMonthsInYear = 12;
constexpr double kWhole = 100;
constexpr double kHalf = 50;

/// Limits in euro.
struct Limits {
    double month;
    double year;
};

// ---- Part-time ----

constexpr int kHoursItem = 300;
constexpr double kUsualWeek = 40;

/// Hours of the part-timer: the quantity of item 300, else P020.
double part_time_hours() {
    double hours = 0;
    walk_lines([&hours](int /*number*/, int code, const std::string& line) {
        hours = code == kHoursItem ? line_quantity(line) / kQuantityUnits : hours;
        return hours == 0;
    });
    return hours != 0 ? hours : num(P020);
}

/// Hours over those of the full time, in percent; more than a week has are the month's.
double formed_percent() {
    const double week = num(P441) != 0 ? num(P441) : kUsualWeek;
    const double hours = part_time_hours();
    const double full_time = hours > week ? slip.DIVISOREORE : week;
    return std::min(kWhole, Int(hours / full_time * 100 + 0.5));
}

/// P755, formed where the record has none; 100 for a full-timer.
double part_time_percent() {
    if (num(P019) != 1) {
        return kWhole;
    }
    if (num(P755) == 0) {
        scrivi(P755, formed_percent());
    }
    return num(P755);
}

// ---- Limits ----

/// The employee's own amounts: P955 a year, else P959 a month, with no limit for the year but what
/// Q974 can hold.
Limits own_limits() {
    constexpr double kMostOfQ974 = 999999.99;
    const double yearly = num(P955);
    return yearly != 0 ? Limits{twelfth(yearly), yearly} : Limits{num(P959), kMostOfQ974};
}

Limits full_limits(const ExemptionCap& cap) {
    const double amount = num(cap.field);
    if (amount == 0 && cap.else_own) {
        return own_limits();
    }
    return cap.monthly ? Limits{amount, amount * kMonthsInYear} : Limits{twelfth(amount), amount};
}

/// Limit of a day: of the days of the year for starts to 2016, of a month of 31 after them.
double daily_limit(double monthly, int start_year) {
    constexpr int kLastYearByTheYear = 2016;
    constexpr double kDaysOfYear = 365;
    constexpr double kLongMonth = 31;
    return importo(start_year <= kLastYearByTheYear ? monthly * kMonthsInYear / kDaysOfYear
                                                    : monthly / kLongMonth);
}

/// The part of the month that lies within the exemption.
struct DaysInside {
    int days = 0;
    int start_year = 0;
};

/// Limits of the cap for the employee's working time and the days of the month within the term.
Limits limits_of(const ExemptionCap& cap, double percent, const DaysInside& inside) {
    const Limits full = full_limits(cap);
    const Limits scaled{importo(full.month * percent / 100), importo(full.year * percent / 100)};
    if (inside.days == days_of_month(period.year(), period.month())) {
        return scaled;
    }
    const double by_days = daily_limit(scaled.month, inside.start_year) * inside.days;
    return {std::min(scaled.month, arrotonda(by_days)), scaled.year};
}

// ---- Term ----

bool region_admitted(const ExemptionCode& code) {
    return code.particular != Particular::not_in_the_north ||
           !northern_region(static_cast<int>(num(P120)));
}

/// Days of the month within the term of the code; none where the code does not hold.
DaysInside days_inside(const ExemptionCode& code) {
    const Date start = exemption_start();
    const bool too_late = code.last_period != 0 && period.yyyymm() > code.last_period;
    if (too_late || !code.covers(start)) {
        return {};
    }
    return {days_of_exemption(start, code.end(start, testo(P412))), start.year};
}

// ---- Amounts ----

/// The employer's percentage: of the group and class of the employee, else his ordinary one.
double employer_percent() {
    return group_percentage().value_or(employer_percentages.PCTDATORE) +
           (num(T714) == 1 ? num(S332) : 0);
}

/// A percentage of the employer's contributions on the slip's wage.
double relief_of(double percent) {
    const double contributions = num(P240) * employer_percent() / 100;
    return std::max(0.0, arrotonda(contributions * percent / 100));
}

double left_of(double limit, double taken) {
    return std::max(0.0, arrotonda(limit - taken));
}

/// The amount of the month within what is left of the year; P919 shows what the year cuts.
void store_within_year(double amount, double yearly) {
    const double within = std::min(amount, left_of(yearly, num(Q974)));
    scrivi(P917, within);
    scrivi(P919, amount - within);
    exemption.added_to_Q974 = num(P917) + num(P918) + num(P940);
    aggiungi(Q974, exemption.added_to_Q974);
}

/// P967: half of the contributions within the second cap, as a part of P917.
void store_half(const ExemptionCap& cap, double percent, const DaysInside& inside) {
    const double limit = left_of(limits_of(cap, percent, inside).month, exemption.other_slip_P967);
    scrivi(P967, std::min({relief_of(kHalf), limit, num(P917)}));
}

void exempt(const ExemptionCode& code, const DaysInside& inside) {
    const double percent = part_time_percent();
    const Limits limits = limits_of(code.cap, percent, inside);
    const double month = num(P959) != 0 ? std::min(limits.month, num(P959)) : limits.month;
    if (code.particular == Particular::limit_in_PC36) {
        scrivi(PC36, month);
    }
    store_within_year(std::min(relief_of(code.percent), left_of(month, exemption.other_slip_P917)),
                      limits.year);
    if (code.half_within) {
        store_half(*code.half_within, percent, inside);
    }
}

}  // namespace

void ERR_CALCOLA_ESONERO_NUOVI_ASS() {
    TRACCIA("ERR_CALCOLA_ESONERO_NUOVI_ASS");
    const ExemptionCode* code = exemption_code(testo(P916), testo(P412));
    if (code == nullptr || !region_admitted(*code)) {
        return;
    }
    const DaysInside inside = days_inside(*code);
    if (inside.days > 0) {
        exempt(*code, inside);
    }
}

}  // namespace ModSWCALM
