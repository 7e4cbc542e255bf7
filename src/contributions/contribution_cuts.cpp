#include "contributions/contribution_cuts.h"

#include <algorithm>
#include <array>
#include <string>

#include "context/period.h"
#include "context/utilities.h"
#include "contributions/contributions.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/cut_lines.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::slip;
using MXLIBRERIA::period;

namespace {

// June 2022 carries no cut.
constexpr std::array<CutPeriod, 9> kCutPeriods{{
    {0, 202112, CutForm::none, 0, 0, 0, 0},
    {202201, 202205, CutForm::single, 0, 0.8, 0, 0},
    {202206, 202206, CutForm::none, 0, 0, 0, 0},
    {202207, 202209, CutForm::single, 0, 0.8, 0, 0},
    {202210, 202212, CutForm::single_new, 0, 1, 0, 2},
    {202301, 202306, CutForm::two_bands, 3, 2, 3, 2},
    {202307, 202312, CutForm::two_bands, 7, 6, 7, 6},
    {202401, 202412, CutForm::two_bands, 7, 6, 7, 6},
    {202501, 999912, CutForm::none, 0, 0, 0, 0},
}};

constexpr double kLowWage = 1923;   // euro a month, included
constexpr double kHighWage = 2692;  // euro a month, not included

/// Where the amounts of a cut are kept.
struct CutFields {
    Descriptor month;  ///< on the month's wage
    Descriptor apart;  ///< on the wage of items 59, 60, 74
};
constexpr CutFields kSingle{PB06, PB10};
constexpr CutFields kHighBand{PB14, PB15};
constexpr CutFields kLowBand{PB26, PB29};

/// What of the table applies to the slip; no fields when no cut does.
struct Band {
    const CutFields* fields = nullptr;
    double percent = 0;
    double half_points = 0;
};

/// Wage of the earlier slip of the month. Without one the field may still hold another month's.
double earlier_slip_wage() {
    return slip.earlier_slip_this_month ? num(P268) : 0;
}

Band band_of_slip(const CutPeriod& rule) {
    if (rule.form == CutForm::none || num(PB05) != 0) {
        return {};
    }
    const double wage = ModSWCALM::tested_wage_of_the_cut() + earlier_slip_wage();
    if (rule.form == CutForm::two_bands && wage <= kLowWage) {
        return {&kLowBand, rule.low, rule.half_low};
    }
    if (wage >= kHighWage) {
        return {};
    }
    return {rule.form == CutForm::single ? &kSingle : &kHighBand, rule.high, rule.half_high};
}

/// The 13th payment has a cut of its own, by its own amount. In 2022 it counts on the second slip
/// of a month below the limit.
bool extra_payment_counts(const CutPeriod& rule, const Band& band) {
    if (num(PB05) != 0) {
        return false;
    }
    return rule.form == CutForm::two_bands || (band.fields != nullptr && earlier_slip_wage() != 0);
}

/// Writes an amount of the cut, at most what is left of the contribution due.
double take(const Descriptor& field, double amount, double& left) {
    scrivi(field, std::min(arrotonda(std::max(0.0, amount)), left));
    left -= num(field);
    return num(field);
}

/// The employee's pension rate: S010 for apprentices (P045 5), S003 for the others.
double pension_rate() {
    return num(P045) == 5 ? num(S010) : num(S003);
}

// ---- Relief of mothers ----

struct RecoveryWindow {
    std::string_view company;
    int last;  ///< year x 100 + month
};
constexpr int kRecoveryFrom = 202401;
constexpr std::array<RecoveryWindow, 6> kRecoveryWindows{{{"90000000022", 202402},
                                                          {"11111111111", 202402},
                                                          {"90000000011", 202402},
                                                          {"90000000077", 202402},
                                                          {"90000000088", 202402},
                                                          {"90000000099", 202404}}};

const RecoveryWindow* recovery_window() {
    const auto* const found =
        std::find_if(kRecoveryWindows.begin(), kRecoveryWindows.end(),
                     [](const RecoveryWindow& row) { return ModSWCALM::company_is(row.company); });
    return found == kRecoveryWindows.end() ? nullptr : found;
}

bool inside(const RecoveryWindow& window) {
    const double now = period.yyyymm();
    return now >= kRecoveryFrom && now <= window.last;
}

constexpr double kMothersMonthlyLimit = 250;
constexpr double kMothersMonthDays = 31;

/// The relief's limit of the month; by days in service for who is hired or leaves in it.
double mothers_limit() {
    const std::string hired = num(P014) != 0 ? testo(P014) : testo(P013);
    const std::string left = testo(P017);
    const bool hired_now = MXLIBRERIA::yyyymm_of(hired) == period.yyyymm();
    const bool left_now = MXLIBRERIA::yyyymm_of(left) == period.yyyymm();
    if (!hired_now && !left_now) {
        return kMothersMonthlyLimit;
    }
    const double first = hired_now ? valore(ritaglia(hired, 1, 2)) : 1;
    const double last = left_now ? valore(ritaglia(left, 1, 2))
                                 : MXLIBRERIA::days_of_month(period.month(), period.year());
    return kMothersMonthlyLimit / kMothersMonthDays * std::max(0.0, last - first + 1);
}

}  // namespace

const CutPeriod& cut_period(double yyyymm) {
    const auto* const found = std::find_if(
        kCutPeriods.begin(), kCutPeriods.end(),
        [yyyymm](const CutPeriod& row) { return yyyymm >= row.from && yyyymm <= row.to; });
    if (found == kCutPeriods.end()) {
        throw platform::Failure(platform::kSubscriptOutOfRange);
    }
    return *found;
}

int cut_periods_of(double yyyymm) {
    return static_cast<int>(std::count_if(
        kCutPeriods.begin(), kCutPeriods.end(),
        [yyyymm](const CutPeriod& row) { return yyyymm >= row.from && yyyymm <= row.to; }));
}

double contribution_cut(double due) {
    if (num(PB05) != 0) {
        return 0;
    }
    const CutPeriod& rule = cut_period(period.yyyymm());
    const Band band = band_of_slip(rule);
    double left = std::max(0.0, due);
    double cut = 0;
    azzera({PB06, PB10, PB14, PB15, PB26, PB29});
    if (band.fields != nullptr) {
        const double own = ModSWCALM::own_wage_of_the_cut();
        cut += take(band.fields->month, own * band.percent / 100, left);
        cut += take(band.fields->apart, slip.items_59_60_74 * band.percent / 100, left);
    }
    const bool counts = extra_payment_counts(rule, band);
    for (const Descriptor& field : {PB07, PB16, PB28}) {
        cut += take(field, counts ? num(field) : 0, left);
    }
    return arrotonda(cut);
}

bool half_share() {
    const double kind = num(PB20);
    return kind == 1 || kind == 2;
}

double half_share_amount() {
    const Band band = band_of_slip(cut_period(period.yyyymm()));
    const double percent = std::max(0.0, pension_rate() - band.half_points) / 2;
    scrivi(PB21, percent * num(P240) / 100);
    return num(PB21) + (band.fields == nullptr ? 0 : num(band.fields->apart));
}

bool archived_relief_wanted() {
    const RecoveryWindow* window = recovery_window();
    return window != nullptr && inside(*window) && num(PC16) == 1;
}

void store_archived_relief(const ArchivedMonth& january, const ArchivedMonth& february) {
    struct Fields {
        Descriptor high_cut;
        Descriptor low_cut;
        Descriptor contribution;
    };
    const auto store = [](const Fields& fields, const ArchivedMonth& month) {
        scrivi(fields.high_cut, month.high_cut);
        scrivi(fields.low_cut, month.low_cut);
        scrivi(fields.contribution, month.contribution);
    };
    store({PB23, PB59, PB60}, january);
    store({PB88, PB89, PB90}, february);
}

void mothers_relief() {
    const RecoveryWindow* window = recovery_window();
    if (window == nullptr) {
        return;
    }
    if (!inside(*window)) {
        if (period.yyyymm() > window->last) {
            svuota({PB23, PB59, PB60, PB88, PB89, PB90});
        }
        return;
    }
    if (num(PB20) != 3) {
        return;
    }
    const bool limit_reached = num(PB85) <= num(QA29);
    scrivi(PB21, limit_reached ? 0 : std::min(num(P240) * pension_rate() / 100, mothers_limit()));
    aggiungi(QA29, num(PB21));
    aggiungi(Q224, -num(PB21));
    aggiungi(Q225, -num(PB21));
}

}  // namespace ModSwCalm2
