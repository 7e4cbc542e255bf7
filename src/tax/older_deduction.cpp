// Employment deduction in its older form: two sums of the yearly table, each lowered by one
// quotient of income.

#include <algorithm>

#include "context/trace.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/deductions.h"
#include "tax/family.h"
#include "tax/income_tax.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;

namespace {

// How P034 counts the months.
constexpr double kFromFirstMonth = 1;  ///< all months of employment in the year, whenever it is set
constexpr double kByInstalments = 3;   ///< P090 instalments a year

/// Instalments of the year: with P034 = 3 the P090 of the employee where it is 1 to 12.
double older_periods() {
    if (num(P034) != kByInstalments) {
        return deduction_periods();
    }
    const double instalments = num(P090);
    return instalments >= 1 && instalments <= 12 ? instalments : 12;
}

/// Months of employment deduction so far (Q660): by instalments, or one for each month of service.
void count_employment_months() {
    if (adjustment_only()) {
        return;
    }
    const double mode = num(P034);
    if (num(P447) == 1 || mode == kByInstalments) {
        aggiungi(Q660, Int(12 / older_periods()));
    } else if (month_counts_for_deductions()) {
        const MonthSpan employment = employment_months();
        const double months = std::max(0, employment.last - employment.first + 1);
        scrivi(Q660, mode == kFromFirstMonth ? months : num(Q660) + 1);
    }
}

/// Parts of the year in the table's sums: they are yearly when P585 = 0, otherwise those of the
/// month. At the year-end they are taken whole.
double periods_of_the_table() {
    return tax_state.ConguaglioAnnuale || num(P585) != 0 ? 1 : older_periods();
}

/// Type of the first dependant. Where it is the only one it takes the spouse's place, and no
/// deduction for children follows.
void read_household() {
    DeductionState::Household& household = deduction_state.household;
    household.spouse = num(P404) == 1 ? 1 : 0;
    household.second = num(P462) == 1 ? 1 : 0;
    household.third = num(P588) == 1 ? 1 : 0;
    household.only_first = num(P035) > 0 && num(P462) + num(P404) + num(P588) == num(P035);
}

/// The lower of the whole sum and the sum by the quotient of income.
double share_of(double table_sum) {
    const double periods = periods_of_the_table();
    return std::min(table_sum / periods, table_sum * num(Q670) / periods);
}

/// Writes one part: the month's share is added to date; the year's goes by the months counted.
void take(double share, const Descriptor& to_date, const Descriptor& on_the_slip) {
    if (tax_state.ConguaglioAnnuale) {
        const double of_the_year = share / 12 * std::min(num(Q660), 12.0);
        scrivi(to_date, of_the_year);
        scrivi(on_the_slip, of_the_year);
    } else {
        scrivi(on_the_slip, share);
        aggiungi(to_date, num(on_the_slip));
    }
}

}  // namespace

void DetrLavoro() {
    MXLIBRERIA::TRACCIA("DetrLavoro");
    count_employment_months();
    read_household();
    const double income_limit = num(F400);
    scrivi(Q670, deduction_quotient(income_limit - deduction_income(), income_limit));
    take(share_of(num(F403) + num(F404) + num(F405)), Q641, Q648);
    take(share_of(num(F406) + num(F407)), Q644, Q651);
}

}  // namespace ModSWCALB
