// Contributions to pension funds above what the year lets an employee deduct.

#include <algorithm>
#include <array>

#include "context/period.h"
#include "context/trace.h"
#include "contributions/contributions.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "severance/pension_funds.h"
#include "severance/yearly_table.h"
#include "slip/slip.h"
#include "slip/slip_table.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA::file_numbers;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

/// Pay items of contributions to a fund.
constexpr std::array<int, 2> kFundItems{29, 44};

double contributions_by_lines() {
    double sum = 0;
    ModSWCALM::walk_lines([&sum](int, int code, const std::string& line) {
        if (std::ranges::find(kFundItems, code) != kFundItems.end()) {
            sum += ModSWCALM::line_amount(line);
        }
        return true;
    });
    return sum;
}

/// What the twelve-month table has of the year; the cells behind the month are last year's.
double contributions_of_months() {
    if (MXLIBRERIA::LEGGIREC(kTwelveMonths, slip.employee_record) == 1) {
        return 0;
    }
    const std::string& months = MXLIBRERIA::record_buffer(kTwelveMonths);
    double sum = 0;
    for (std::int16_t month = 1; month <= period.month(); ++month) {
        sum += LEGGICAMPONUM(J563, month, months) + LEGGICAMPONUM(J363, month, months);
    }
    return sum;
}

/// The yearly tables of 2009 may lack the limit.
void fill_limit_of_2009() {
    constexpr double kLimitOfTheLaw = 5164.57;
    if (period.year() == 2009 && num(F420) == 0) {
        write_yearly(F420, kLimitOfTheLaw);
    }
}

}  // namespace

void DEDUCIBILITA_CTR_FP() {
    TRACCIA("DEDUCIBILITA_CTR_FP");
    fill_limit_of_2009();
    const double of_slip = contributions.fund_share + contributions_by_lines() + num(P407);
    const double of_year = of_slip + contributions_of_months();
    scrivi(P794, std::max(0.0, of_year - num(F420) - num(Q804)));
    aggiungi(Q804, num(P794));
    aggiungi(P256, num(P794));
}

}  // namespace ModSwCalm2
