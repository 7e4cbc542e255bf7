// Relief of the employer's contributions on the severance pay of the month.

#include <algorithm>
#include <array>
#include <string>

#include "calc/dates.h"
#include "calc/exemption_codes.h"
#include "calc/remaining.h"
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

/// Percent by which the year relieves the employer's contributions. D.L. 203/2005, art. 8
struct YearRelief {
    int first_year;
    double percent;
};
constexpr std::array kYearReliefs{
    YearRelief{2014, 0.28}, YearRelief{2013, 0.27}, YearRelief{2012, 0.26}, YearRelief{2011, 0.25},
    YearRelief{2010, 0.23}, YearRelief{2009, 0.21}, YearRelief{2008, 0.19}};

double relief_of_year() {
    const auto row = std::ranges::find_if(
        kYearReliefs, [](const YearRelief& relief) { return period.year() >= relief.first_year; });
    return row == kYearReliefs.end() ? 0 : row->percent;
}

/// Contribution to the guarantee fund. D.Lgs. 252/2005, art. 10, c. 2
constexpr double kGuaranteeFund = 0.20;

/// What the employee's contribution takes off the severance pay of the month, once the exemption
/// of P916 is over.
double taken_off_after_exemption(double contribution) {
    constexpr double kHalf = 0.50;
    constexpr double kOthers = 0.60;
    const std::string code = testo(P916);
    if (code == "4" || code == "5") {
        return contribution * kHalf;
    }
    if (code == "B") {
        return arrotonda(contribution);
    }
    if ((code >= "6" && code <= "9") || code == "A") {
        return northern_region(static_cast<int>(num(P120))) ? 0 : arrotonda(contribution);
    }
    return contribution * kOthers;
}

/// Severance pay of the month, and the share of it that stays out of the fund.
struct MonthSeverance {
    double kept = 0;   ///< without the fund's part, in euro
    double ratio = 0;  ///< of the whole, five decimals
};

MonthSeverance severance_of_month() {
    const bool leaves_without_pay =
        Date::of(testo(P017)).yyyymm() == period.yyyymm() && num(P260) == 0;
    const bool over = slip.exemption_over && !leaves_without_pay;
    const bool contributes = (num(P083) == 0 || over) && !leaves_without_pay;
    const double contribution = contributes ? num(P240) * num(P620) / 100 : 0;
    const double taken_off = over ? taken_off_after_exemption(contribution) : contribution;
    const double severance = num(P260) / slip.severance_divisor - taken_off;
    MonthSeverance month;
    month.kept = severance - num(Q201);
    month.ratio = severance > 0 ? arrotonda(month.kept / severance, 5) : 0;
    return month;
}

double relief_of(const MonthSeverance& month, double percent) {
    return std::max(0.0, num(P240) * month.ratio * percent / 100);
}

void small_company_relief() {
    scrivi(P748, relief_of(severance_of_month(), relief_of_year()));
    aggiungi(Q744, num(P748));
}

/// The sums of the year take an additional slip only in the month of P599.
void add_relief_to_date() {
    if (period.additional() && ritaglia(testo(Q179), 3, 6) != testo(P599)) {
        return;
    }
    aggiungi(Q687, num(P604));
    aggiungi(Q690, num(P605));
    aggiungi(Q744, num(P749));
}

void general_relief() {
    if (num(P598) != 0) {
        if (period.ordinary()) {
            scrivi(P606, num(P260));
        }
        return;
    }
    const MonthSeverance month = severance_of_month();
    scrivi(P604, std::max(0.0, month.kept));
    scrivi(P605, relief_of(month, kGuaranteeFund));
    scrivi(P606, num(P260));
    scrivi(P749, relief_of(month, relief_of_year()));
    add_relief_to_date();
}

}  // namespace

void severance_fund_relief() {
    azzera({P600, P601, P602, P603, P748});
    if (num(P188) == 1 && num(T404) == 1) {
        small_company_relief();
    } else {
        general_relief();
    }
}

}  // namespace ModSWCALM
