#include "nzutil/slip_reliefs.h"

#include <algorithm>

#include "nzutil/slip_law.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/numbers.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

constexpr double kTipsClass = 9;
constexpr double kNetOfContributions = 2;  // F415

template <class Counts>
double sum_of_lines(const CalculatedSlip& slip, const Counts& counts) {
    double sum = 0;
    for (const SlipLine& line : slip.lines()) {
        sum += counts(line) ? line.amount : 0;
    }
    return arrotonda(sum);
}

bool is_premium(const SlipLine& line) {
    return line.of_item(Z013) == kPremiumClass;
}

bool has_premiums(const CalculatedSlip& slip) {
    return slip.now(PC23) == 0 && std::ranges::any_of(slip.lines(), is_premium);
}

/// F413 is net of the employee's contributions where F415 = 0.
double ceiling(const CalculatedSlip& slip, double percent) {
    const double net = slip.yearly(F413);
    return slip.yearly(F415) == 0 ? arrotonda(net / (1 - percent / 100)) : net;
}

bool has_relieved_premiums(const CalculatedSlip& slip) {
    return has_premiums(slip) && premiums_are_relieved(slip).value_or(false);
}

double sum_of_premiums(const CalculatedSlip& slip) {
    return has_relieved_premiums(slip) ? sum_of_lines(slip, is_premium) : 0;
}

bool is_pay_told_as_premium(const SlipLine& line) {
    return is_premium(line) && line.of_item(Z011) == 2 && line.of_item(Z014) == 0;
}

}  // namespace

std::optional<bool> premiums_are_relieved(const CalculatedSlip& slip) {
    const double income_before = slip.was(Q775);
    if (slip.now(P758) != 0 || income_before == 0 || income_before > slip.yearly(F412) ||
        slip.yearly(F415) > kNetOfContributions) {
        return false;
    }
    const std::optional<double> percent = own_contribution_percent(slip);
    return percent ? std::optional(slip.was(Q776) < ceiling(slip, *percent)) : std::nullopt;
}

std::optional<RelievedPremium> relieved_premium(const CalculatedSlip& slip) {
    const double premium = sum_of_premiums(slip);
    if (premium == 0) {
        return has_premiums(slip) && !premiums_are_relieved(slip)
                   ? std::nullopt
                   : std::optional(RelievedPremium{});
    }
    const std::optional<double> percent = own_contribution_percent(slip);
    if (!percent) {
        return std::nullopt;
    }
    const double room = ceiling(slip, *percent) - slip.was(Q776) - slip.now(Q808);
    RelievedPremium relieved;
    relieved.gross = premium < 0 ? premium : std::clamp(room, 0.0, premium);
    if (slip.yearly(F415) == kNetOfContributions) {
        relieved.contributions = arrotonda(relieved.gross * *percent / 100);
    }
    return relieved;
}

double premiums_in_taxable(const CalculatedSlip& slip) {
    const double premium = sum_of_premiums(slip);
    const double told_as_premium = has_relieved_premiums(slip) && !slip.settles_year()
                                       ? sum_of_lines(slip, is_pay_told_as_premium)
                                       : 0;
    return premium - slip.now(P759) + slip.now(P760) - told_as_premium;
}

double premium_into_taxable(const CalculatedSlip& slip) {
    return slip.now(P040) == 0 && slip.now(P025) == 1 ? slip.moved(Q110) : 0;
}

double tips_of_lines(const CalculatedSlip& slip) {
    return sum_of_lines(slip,
                        [](const SlipLine& line) { return line.of_item(Z013) == kTipsClass; });
}

}  // namespace nzutil
