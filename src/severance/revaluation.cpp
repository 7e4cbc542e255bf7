#include "severance/revaluation.h"

#include <algorithm>

#include "context/messages.h"
#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/advances.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

/// January 2012 and 2017: after the change of base the year end stands in the other series.
bool year_end_in_other_series() {
    return period.yyyymm() == 201201 || period.year() == 2017;
}

/// The index of a month of the term's year; month 0 is the year end before.
double index_in(const RevaluationTerm& term, int month) {
    if (month == 0) {
        return base_index_of(term);
    }
    return month == kYearEndIndex ? 0 : INDICEISTAT(month, term.series);
}

void tell_missing(double index, const texts::Text& text) {
    if (index == 0) {
        MXLIBRERIA::MSG(text.bytes());
    }
}

/// What the advance would have earned from its month on, had it stayed in the fund.
double revaluation_lost(const Advance& advance, double current, const RevaluationTerm& term) {
    if (num(advance.amount) == 0) {
        return 0;
    }
    const int month = static_cast<int>(num(advance.month));
    const double index = index_in(term, month);
    if (term.settles) {
        tell_missing(index, *advance.wrong_month);
    }
    const double months = std::max(0, term.month() - month);
    return num(advance.amount) * CalcolaCoefRivalTFR(current, index, months) / 100;
}

}  // namespace

double CalcolaCoefRivalTFR(double current_index, double base_index, double months) {
    TRACCIA("CalcolaCoefRivalTFR");
    if (current_index == 0 || base_index == 0 || months == 0) {
        return 0;
    }
    constexpr double kSixDecimals = 1000000;
    constexpr double kFixedPerMonth = 1.5 / 12;
    constexpr double kShareOfRise = 75;
    const double rise = std::max(0.0, (current_index * 100 - base_index * 100) / 100);
    const double percent = Int(rise / base_index * 100 * kSixDecimals + 0.5) / kSixDecimals;
    const double coefficient = kFixedPerMonth * months + percent * kShareOfRise / 100;
    return Int((coefficient + 0.0000005) * kSixDecimals) / kSixDecimals;
}

double INDICEISTAT(int month, bool series) {
    TRACCIA("INDICEISTAT");
    if (month == kYearEndIndex) {
        return num(series && !year_end_in_other_series() ? F021 : F294);
    }
    if (month < 1 || month > 12) {
        return 0;
    }
    return num(dopo(series ? F023 : F295, month - 1));
}

double mended_base_index(int yyyymm, double published) {
    constexpr double kLinkOf2011 = 0.001165331;  // 2010 = 100 takes the place of 1995 = 100
    constexpr double kPublishedFor2016 = 99.9;   // 107.0 on the former base, 99.906629
    constexpr double kRoundedOffIn2016 = 0.006629;
    if (published == 0) {
        return 0;
    }
    if (yyyymm / 100 == 2011) {
        return published + kLinkOf2011;
    }
    const bool new_base = yyyymm >= 201607 && yyyymm <= 201612;
    return new_base && published == kPublishedFor2016 ? published + kRoundedOffIn2016 : published;
}

double base_index_of(const RevaluationTerm& term) {
    return mended_base_index(term.yyyymm, INDICEISTAT(kYearEndIndex, term.series));
}

double revaluation_of(double fund, const RevaluationTerm& term) {
    const double base = base_index_of(term);
    const double current = index_in(term, term.month());
    if (fund != 0) {
        tell_missing(base, texts::kIndexYearEndMissing);
        if (term.settles) {
            tell_missing(current, texts::kIndexDecemberMissing);
        }
    }
    scrivi(Q267, CalcolaCoefRivalTFR(current, base, term.months));
    double revaluation = std::max(0.0, fund * num(Q267) / 100);
    for (const Advance& advance : kAdvances) {
        revaluation -= revaluation_lost(advance, current, term);
    }
    return std::max(0.0, revaluation);
}

double revalued_elsewhere() {
    return num(T587) == 1 ? num(Q699) + num(Q896) + num(Q698) : 0;
}

double substitute_tax(double revaluation) {
    return num(P031) == 0 ? 0 : num(F322) * revaluation / 100;
}

}  // namespace ModSwCalm2
