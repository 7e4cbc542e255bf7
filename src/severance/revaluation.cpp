#include "severance/revaluation.h"

#include <algorithm>

#include "context/trace.h"
#include "records/numbers.h"

namespace ModSwCalm2 {

using MXREPOSITORY::Int;

double CalcolaCoefRivalTFR(double current_index, double base_index, double months) {
    MXLIBRERIA::TRACCIA("CalcolaCoefRivalTFR");
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

double base_index_of_year(int year, double F021) {
    constexpr double kLinkOf2011 = 0.001165331;  // 2010 = 100 takes the place of 1995 = 100
    constexpr double kPublishedFor2016 = 99.9;   // 107.0 on the former base, 99.906629
    constexpr double kRoundedOffIn2016 = 0.006629;
    if (year == 2011) {
        return F021 + kLinkOf2011;
    }
    return year == 2016 && F021 == kPublishedFor2016 ? F021 + kRoundedOffIn2016 : F021;
}

}  // namespace ModSwCalm2
