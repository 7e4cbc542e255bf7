// The additional percent on the wage above the first pension bracket.

#include <algorithm>

#include "context/period.h"
#include "contributions/contribution_items.h"
#include "contributions/contributions.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using MXLIBRERIA::period;

namespace {

constexpr std::size_t kAdditionalRateCell = 34;  // F048, percent
constexpr double kYearlyAddition = 2065.83;      // 4 million lire

/// Is the wage of the slip under a pension item?
bool bears_additional_percent() {
    return num(P447) != 1 && run_tables.TABFISSO.at(kFirstBracketCell) != 0 &&
           (switch_of(1) != 0 || switch_of(8) != 0);
}

bool year_is_settled() {
    const bool closes = period.month() == 12 || num(P017) != 0 || num(P118) == 1;
    return period.ordinary() && closes;
}

/// Additional percent on the month's wage, or what the year still owes (negative: is given back).
double additional_percent(double yearly_limit, double rate) {
    if (!year_is_settled()) {
        return std::max(0.0, num(P240) - unita(yearly_limit / 12)) * rate / 100;
    }
    const double year_wage = num(Q001) + num(P240) + num(P111);
    return std::max(0.0, year_wage - yearly_limit) * rate / 100 - num(Q004);
}

}  // namespace

void solidarity_above_ceiling() {
    azzera({P221, Q167});
    if (!bears_additional_percent()) {
        return;
    }
    const double yearly_limit = run_tables.TABFISSO.at(kFirstBracketCell) * 12 + kYearlyAddition;
    const double rate = run_tables.TABFISSO.at(kAdditionalRateCell);
    const double difference = arrotonda(additional_percent(yearly_limit, rate));
    if (difference < 0) {
        scrivi(Q167, 1);
    }
    scrivi(P221, difference < 0 ? -difference : difference);
    if (period.additional()) {
        scrivi(P724, num(P221));
    }
    add_contribution(difference);
    aggiungi(Q004, difference);
}

}  // namespace ModSwCalm2
