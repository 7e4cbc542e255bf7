#include <array>
#include <string>

#include "calc/phases.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/operator_wage.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

namespace {

constexpr double kUsualHours = 173;
constexpr double kUsualDays = 26;
constexpr int kValueDecimals = 5;
constexpr std::size_t kReferenceWidth = 10;

constexpr std::array kPayElements{P058, P060, P061, P062, P063, P064,
                                  P065, P066, P067, P353, P354, P355};

bool monthly_elements() {
    return num(P050) != 0;
}

double rounded(double value) {
    return arrotonda(value, kValueDecimals);
}

/// P214 and P427 show the divisors of the company as they are, the slip takes the usual ones where
/// there are none.
void set_divisors() {
    const double hours = hours_divisor();
    const double days = days_divisor();
    scrivi(P214, hours);
    scrivi(P427, Int(days));
    slip.DIVISOREORE = hours != 0 ? hours : kUsualHours;
    slip.DIVISOREGG = days != 0 ? days : kUsualDays;
}

/// Pay base P069 into P198, by the hour where the elements are hourly; returns the value for P211.
double set_pay_base() {
    const double pay_base = num(P069);
    if (monthly_elements()) {
        const double former = num(P198);
        scrivi(P198, pay_base);
        return former != 0 ? former : pay_base;
    }
    const double hourly_base = rounded(dividi(pay_base, slip.DIVISOREORE));
    scrivi(P198, hourly_base);
    return hourly_base;
}

/// PAGAORARIA, the elements kept apart from the base, and the share that carries the base.
void sum_elements() {
    slip.PAGAORARIA = num(P198) + pay_elements();
    const double separate = monthly_elements() ? num(P070) : dividi(num(P070), slip.DIVISOREORE);
    slip.ELEMENTINONBASE = num(P059) + num(P068) + separate;
    slip.QUOTABASE =
        slip.PAGAORARIA == 0 ? 1 : (100 - slip.ELEMENTINONBASE * 100 / slip.PAGAORARIA) / 100;
}

/// Reference value of the company, or P067, whole, by the hour and by the day, and the elements
/// kept apart: four values of ten characters for the closing.
void set_reference_values() {
    const double reference = num(T230) == 1 ? num(P067) : num(T052);
    const std::array values{reference, dividi(reference, slip.DIVISOREORE),
                            dividi(reference, slip.DIVISOREGG), slip.ELEMENTINONBASE};
    slip.reference_values.clear();
    for (const double value : values) {
        const std::string text = arrotondato_testo(value, kValueDecimals);
        slip.reference_values += destra(std::string(kReferenceWidth, ' ') + text, kReferenceWidth);
    }
}

struct Pay {
    double hourly;
    double daily;
    double monthly;
};

Pay month_pay() {
    if (monthly_elements()) {
        return {.hourly = dividi(slip.PAGAORARIA, slip.DIVISOREORE),
                .daily = dividi(slip.PAGAORARIA, slip.DIVISOREGG),
                .monthly = rounded(slip.PAGAORARIA)};
    }
    const double hourly = rounded(slip.PAGAORARIA);
    const double monthly = hourly * slip.DIVISOREORE;
    return {.hourly = hourly, .daily = dividi(monthly, slip.DIVISOREGG), .monthly = monthly};
}

void set_pay_values() {
    const Pay pay = month_pay();
    const double former_monthly = num(P209);
    scrivi(P208, pay.hourly);
    scrivi(P209, pay.monthly);
    scrivi(P210, former_monthly != 0 ? former_monthly : pay.monthly);
    scrivi(P251, pay.daily);
}

/// Monthly payments beyond the twelfth, by the month.
void set_extra_payment_share() {
    if (num(P756) > 12) {
        scrivi(P854, num(P209) / 12 * (num(P756) - 12));
    }
}

/// Base of the closing: the daily part for the days of the month, and the monthly pay.
void set_closing_base(double former_pay_base) {
    slip.base_value = rounded(num(P073) * slip.DIVISOREGG + num(P209));
    scrivi(P213, slip.base_value);
    scrivi(P211, former_pay_base);
    svuota({P212});
}

}  // namespace

double pay_elements() {
    double sum = 0;
    for (const Descriptor& element : kPayElements) {
        sum += num(element);
    }
    return sum;
}

void divisors_and_hourly_values() {
    set_divisors();
    const double former_pay_base = set_pay_base();
    sum_elements();
    set_reference_values();
    set_pay_values();
    azzera({P071});
    CREA_OPERATORE_RETR_EMENS();
    set_extra_payment_share();
    set_closing_base(former_pay_base);
}

}  // namespace ModSWCALM
