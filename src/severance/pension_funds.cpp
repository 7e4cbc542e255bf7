#include "severance/pension_funds.h"

#include <algorithm>
#include <limits>
#include <string>

#include "context/trace.h"
#include "contributions/contributions.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/fund_formula.h"
#include "severance/tfr.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA::file_numbers;
using ModSWCALM::slip;
using MXLIBRERIA::TRACCIA;

namespace {

/// The employee's fund into FOPX$; false on a slip of adjustment only, and where there is none.
bool load_fund() {
    const double code = num(P401);
    if (code < 1 || num(P118) == 2 || !funds_of_run.file_exists ||
        MXLIBRERIA::read_table(kPensionFunds, code) == 1) {
        return false;
    }
    area(Area::FOPX) = MXLIBRERIA::record_buffer(kPensionFunds);
    return true;
}

// ---- Severance accrual ----

/// Codes of P916 whose accrual bears no contribution and goes to the fund whole.
bool whole_accrual_by_class() {
    const std::string severance_class = rifilato(P916);
    return severance_class == "4" || severance_class == "5";
}

/// Wage of the slip under the yearly limit R060; 0 is no limit.
double accruing_wage() {
    const double limit = num(R060);
    return limit == 0 ? num(P260) : std::min(num(P260), std::max(0.0, limit - num(Q037)));
}

double accrual_by_percent() {
    const double accrual = accrual_of_slip(accruing_wage());
    if (whole_accrual_by_class()) {
        return std::max(0.0, accrual);
    }
    return std::max(0.0, accrual - contribution_of_slip()) * num(R005) / 100;
}

/// Workers whose accrual the older fund has taken already.
bool accrual_taken_by_older_fund() {
    return num(P184) != 0 && num(P168) == 0;
}

void accrual_to_fund() {
    if (accrual_taken_by_older_fund()) {
        return;
    }
    const bool by_formula = num(R009) == 1;
    scrivi(Q201,
           by_formula ? fund_formula(elenco<R010, R022>) * num(R005) / 100 : accrual_by_percent());
    aggiungi(Q236, num(Q201));
}

// ---- Contributions of employee and employer ----

/// The part of the slip's wage that lies between two wages of the year.
double wage_between(double from, double to) {
    const double before = num(Q037);
    return std::clamp(before + num(P260), from, to) - std::clamp(before, from, to);
}

/// Contributions of a slip, in euro. The two of the employee are rounded each by itself.
struct FundContributions {
    double employee = 0;
    double employee_above = 0;  ///< his own P402 on the wage above the band
    double employer = 0;
};

/// The same percentages on the whole wage; R055 is the employer's where it is set.
FundContributions without_band() {
    const double wage = num(P260);
    const double employer = num(R055) != 0 ? num(R055) : num(R003);
    return {(num(R004) + num(P402)) * wage / 100, 0, employer * wage / 100};
}

FundContributions one_band() {
    const double within = wage_between(-std::numeric_limits<double>::infinity(), num(R007));
    const double above = num(R062) == 1 ? num(P260) - within : 0;
    return {(num(R004) + num(P402)) * within / 100, num(P402) * above / 100,
            num(R003) * within / 100};
}

FundContributions two_bands() {
    const bool both = num(R054) != 0 && num(R056) != 0;
    const double first_end = both ? std::min(num(R054), num(R056)) : num(R054) + num(R056);
    const double second_end =
        both ? std::max(num(R054), num(R056)) : std::numeric_limits<double>::infinity();
    const double first = wage_between(-std::numeric_limits<double>::infinity(), first_end);
    const double second = wage_between(first_end, second_end);
    return {((num(R057) + num(P402)) * first + (num(R059) + num(P402)) * second) / 100, 0,
            (num(R058) * first + num(R055) * second) / 100};
}

/// By the limits of the fund. A fund with a limit of two bands, and no percentage for the employer
/// in the second, has no rule.
FundContributions by_percent() {
    if (num(R007) != 0) {
        return one_band();
    }
    if (num(R055) != 0 && num(R054) != 0) {
        return two_bands();
    }
    return num(R054) + num(R056) == 0 ? without_band() : FundContributions{};
}

/// A formula gives the wage in the place of the fund's own rule.
FundContributions contributions_of_slip() {
    FundContributions due = by_percent();
    if (num(R023) != 0) {
        const double wage = fund_formula(elenco<R024, R036>);
        due.employee = (num(R004) + num(P402)) * wage / 100;
        due.employee_above = 0;
    }
    if (num(R037) == 2) {
        due.employer = num(R003) * fund_formula(elenco<R038, R050>) / 100;
    }
    return due;
}

void employee_and_employer() {
    const FundContributions due = contributions_of_slip();
    const double before = num(Q224);
    aggiungi(Q224, due.employee);
    aggiungi(Q224, due.employee_above);
    aggiungi(Q224, num(P450));
    contributions.fund_share = num(Q224) - before;
    scrivi(P407, due.employer);
    aggiungi(Q314, num(P407));
}

/// R061: what is paid to the fund for the month in whole euro. The sums of the year keep the cents.
void round_to_units() {
    if (num(R061) != 1) {
        return;
    }
    scrivi(P407, unita(num(P407)));
    scrivi(Q201, unita(num(Q201)));
    contributions.item7_in_units = true;
}

}  // namespace

void FONDOPENSIONE() {
    TRACCIA("FONDOPENSIONE");
    if (!load_fund()) {
        return;
    }
    accrual_to_fund();
    employee_and_employer();
    round_to_units();
}

void FONDOPREV() {
    TRACCIA("FONDOPREV");
    constexpr double kYearlyCeiling = 82215.39;
    constexpr double kMonths = 12;
    scrivi(Q201, 0);
    if (!load_fund()) {
        return;
    }
    const double first_month = std::clamp(num(R052), 1.0, kMonths);
    const double ceiling = kYearlyCeiling / kMonths * (kMonths + 1 - first_month);
    const double excess = std::max(0.0, num(Q170) + num(P260) - ceiling);
    const double accrual = accrual_of_slip(std::max(0.0, num(P260) - excess));
    scrivi(Q201, std::max(0.0, accrual - contribution_of_slip()));
    aggiungi(Q236, num(Q201));
}

}  // namespace ModSwCalm2
