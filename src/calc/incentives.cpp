#include "calc/incentives.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "calc/dates.h"
#include "calc/exemption_codes.h"
#include "calc/exemption_terms.h"
#include "calc/phases.h"
#include "calc/remaining.h"
#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

ExemptionState exemption;

namespace {

constexpr double kDaysOfIncentive = 30;
constexpr double kWageThird = 3;
constexpr double kMonthsInYear = 12;

/// Days that an incentive counts: 30, in the month of hiring those from the hiring on.
double days_of_incentive() {
    const Date hiring = Date::of(testo(P013));
    if (!hiring.exists() || hiring.yyyymm() != period.yyyymm()) {
        return kDaysOfIncentive;
    }
    return days_of_month(hiring.year, hiring.month) - hiring.day + 1;
}

double by_days(double amount) {
    const double days = days_of_incentive();
    return days == kDaysOfIncentive ? amount : amount / kDaysOfIncentive * days;
}

// ---- Relief by territory ----

constexpr int kFirstReliefPeriod = 202010;
constexpr int kLastPeriod = 999999;
constexpr double kNoLimit = std::numeric_limits<double>::max();

/// A part of the employer's contributions, by class and period.
struct Relief {
    int relief_class;
    int first;  ///< yyyymm
    int last;   ///< yyyymm
    double percent;
    double limit;
    int first_hire;  ///< yyyymm
};
constexpr std::array kReliefs{
    // South: D.L. 104/2020, art. 27; L. 178/2020, art. 1, c. 161
    Relief{1, kFirstReliefPeriod, 202512, 30, kNoLimit, 0},
    // The same for hirings from July 2022
    Relief{2, kFirstReliefPeriod, 202512, 30, kNoLimit, 202207},
    // South: L. 207/2024, art. 1, cc. 406-412
    Relief{3, 202501, 202512, 25, 145, 0},
    Relief{3, 202601, 202712, 20, 125, 0},
    Relief{3, 202801, 202812, 20, 100, 0},
    Relief{3, 202901, 202912, 15, 75, 0},
    // In the other years the class gives the whole
    Relief{3, kFirstReliefPeriod, kLastPeriod, 100, kNoLimit, 0},
};

const Relief* relief_of_period() {
    const double relief_class = num(P219);
    const Date hiring = Date::of(testo(P013));
    const auto row = std::ranges::find_if(kReliefs, [&](const Relief& relief) {
        return relief.relief_class == relief_class && period.yyyymm() >= relief.first &&
               period.yyyymm() <= relief.last &&
               (relief.first_hire == 0 ||
                (hiring.exists() && hiring.yyyymm() >= relief.first_hire));
    });
    return row == kReliefs.end() ? nullptr : &*row;
}

/// What another slip of the month has left of the cap that the employer has chosen (P959).
double within_own_cap(double amount, double other_slip) {
    const double own = num(P959);
    return own == 0 ? amount : std::min(amount, std::max(0.0, own - other_slip));
}

/// Days of the month in service; all of them for pay that follows the leaving.
double days_served() {
    const int length = days_of_month(period.year(), period.month());
    const int days = days_in_service(length, static_cast<int>(period.yyyymm()),
                                     Date::of(testo(P013)), Date::of(testo(P017)));
    return days != 0 ? days : length;
}

// ---- Slips of the month ----

/// Kind of the slip before this one. One of adjustment only and a collaborator's have none in P444,
/// which then reads as 0; P281 tells ordinary slips.
bool earlier_was_additional() {
    return num(P444) == 0 && num(P281) != 1;
}

/// Entertainers who carry the month are paid by several ordinary slips.
bool carries_the_month() {
    return num(P168) == 2 || num(P168) == 3;
}

/// Wage of the earlier slip, where this one does not take its place.
double earlier_wage() {
    return exemption.other_slip ? slip.former_P268 : 0;
}

}  // namespace

void keep_exemption_of_other_slip() {
    exemption = ExemptionState{};
    const bool replaced = earlier_was_additional() == period.additional() && !carries_the_month();
    if (slip.earlier_slip_this_month && !replaced) {
        exemption.other_slip = true;
        exemption.other_slip_P917 = num(P917);
        exemption.other_slip_P967 = num(P967);
        exemption.other_slip_PB51 = num(PB51);
        exemption.other_slip_P220 = num(P220);
    }
}

int days_of_exemption(const Date& start, const Date& end) {
    const Date leaving = Date::of(testo(P017));
    const bool leaves = leaving.yyyymm() == period.yyyymm() &&
                        leaving.yyyymmdd() >= start.yyyymmdd() &&
                        leaving.yyyymmdd() < end.yyyymmdd();
    const Date last = leaves ? leaving : Date{end.day - 1, end.month, end.year};
    return days_in_service(days_of_month(period.year(), period.month()),
                           static_cast<int>(period.yyyymm()), start, last);
}

double twelfth(double yearly) {
    constexpr double kCents = 100;
    // Six decimals first: the binary fraction of a whole number of cents may lie under it.
    return Int(arrotonda(yearly / kMonthsInYear * kCents, 6)) / kCents;
}

// D.L. 76/2013, art. 1: a third of the wage for a hiring of young people
void CALCOLA_INCENTIVO_DL76() {
    TRACCIA("CALCOLA_INCENTIVO_DL76");
    const double wage = earlier_wage() + (period.ordinary() ? num(P250) : 0);
    scrivi(P889, by_days(std::min(wage / kWageThird, num(F432))));
}

// Decree of the Ministry of Labour 264/2013: a fixed amount for a hiring of dismissed workers
void CALCOLA_INCENTIVO_LICE() {
    TRACCIA("CALCOLA_INCENTIVO_LICE");
    scrivi(P901, by_days(num(F435)));
}

void share_of_wage() {
    const WageIncentive* incentive = wage_incentive(testo(P916));
    const Date start = exemption_start();
    if (incentive == nullptr || testo(P412) != "I" || !start.exists() ||
        start.yyyymmdd() < incentive->first_hire || start.yyyymmdd() > incentive->last_hire) {
        return;
    }
    // In the month of the end the wage counts by days.
    const double days = days_of_exemption(start, months_after(start, incentive->months));
    const double served = days_served();
    const double counted = days < served ? days / served : days > 0 ? 1 : 0;
    const double other_slip =
        incentive->amount == PB51 ? exemption.other_slip_PB51 : exemption.other_slip_P917;
    scrivi(incentive->amount,
           within_own_cap(num(P240) * incentive->percent / 100 * counted, other_slip));
}

void yearly_exemption_share() {
    const double yearly = num(P955);
    const double before = arrotonda(num(Q974) - exemption.added_to_Q974);
    double share = twelfth(yearly);
    const double left = arrotonda(yearly - before - share);
    if (left < 0) {
        share = yearly - before;
    } else if (left < share) {
        share -= left;
    }
    azzera({P917, P918, P940, P919, P967, PC36});
    scrivi(P917, share);
    scrivi(Q974, before + num(P917));
}

void geographical_relief() {
    azzera({P220});
    const Relief* relief = relief_of_period();
    if (relief == nullptr || period.additional()) {
        return;
    }
    const double contributions = num(P240) * employer_percentages.PCTDATORE / 100;
    scrivi(P220, std::min(contributions * relief->percent / 100,
                          std::max(0.0, relief->limit - exemption.other_slip_P220)));
    aggiungi(Q845, num(P220));
}

}  // namespace ModSWCALM
