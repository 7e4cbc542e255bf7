#include "closing/entertainers.h"

#include <algorithm>
#include <string>
#include <vector>

#include "closing/state.h"
#include "closing/tax_pass.h"
#include "context/period.h"
#include "context/trace.h"
#include "contributions/contributions.h"
#include "contributions/pension_paid.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/income_tax.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using ModSWCALM::run_tables;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

// ---- Daily wages ----

constexpr std::size_t kDailyWageRows = 128;

struct DailyBracket {
    double from;
    double to;
    double credited;
};

/// The table of daily wages; empty in an installation without it.
std::vector<DailyBracket> read_daily_brackets() {
    std::vector<DailyBracket> rows;
    if (MXLIBRERIA::VERBASE(kDailyWages) == 0) {
        return rows;
    }
    MXLIBRERIA::FAIOPENIO(kDailyWages, 0);
    std::string line;
    while (rows.size() < kDailyWageRows && MXLIBRERIA::LEGGIRIGA(kDailyWages, line)) {
        rows.push_back({valore(ritaglia(line, 1, 10)), valore(ritaglia(line, 11, 10)),
                        valore(ritaglia(line, 21, 10))});
    }
    MXLIBRERIA::CHIUDI(kDailyWages);
    return rows;
}

/// Wage credited for the days: by the bracket of the daily wage, else the wage that contributes.
double credited_wage(double daily_wage, double days, double contributing) {
    for (const DailyBracket& row : read_daily_brackets()) {
        if (daily_wage >= row.from && daily_wage <= row.to) {
            return row.credited * days;
        }
    }
    return contributing;
}

/// The wage of the slip under the limits by day: at least F166 for the classes 3 and 4, at most
/// F143 with P324 0. A payment without days has no daily wage.
double wage_by_day(double wage, double days) {
    const double kind = num(P094);
    if (days == 0 || wage == 0) {
        return wage;
    }
    if (kind == 3 || kind == 4) {
        wage = std::max(wage, num(F166) * days);
    }
    const double daily_limit = num(F143);
    if (num(P324) == 0 && daily_limit > 0 && wage / days > daily_limit) {
        wage = daily_limit * days;
    }
    return wage;
}

/// What of the wage lies above the yearly ceiling F198; 0 when there is none.
double above_yearly_ceiling(double wage) {
    const double ceiling = num(F198);
    return ceiling > 0 ? std::clamp(num(Q003) + wage - ceiling, 0.0, std::max(0.0, wage)) : 0;
}

std::string cents(double amount, std::size_t width) {
    return zeri_a_sinistra(testo_numero(unita(std::max(0.0, amount) * 100)), width);
}

double amount_at(const std::string& text, std::size_t column, std::size_t width) {
    return valore(ritaglia(text, column, width)) / 100;
}

double rounded_by_P169(double wage) {
    return num(P169) == 0 ? unita(wage) : wage;
}

/// The four amounts go to the slip: P250 and P240 take the wage that contributes, P881 (P883 on an
/// additional slip) and Q926 what lies above; with P168 2 and 3 Q168 the credited wage of the
/// month.
void take_wage_limits() {
    if (num(P250) <= 0) {
        return;
    }
    const std::string amounts = FAI_ENPALS();
    const double contributing = amount_at(amounts, 1, 10);
    const double above = amount_at(amounts, 11, 10);
    if (num(P168) > 1) {
        aggiungi(Q168, amount_at(amounts, 21, 8));
    }
    if (contributing == num(P250)) {
        return;
    }
    const double before = num(P240);
    scrivi(P250, contributing);
    scrivi(P240, rounded_by_P169(contributing));
    if (above > 0 && before > num(P240)) {
        const Descriptor& excess = period.additional() ? P883 : P881;
        scrivi(excess, before - num(P240));
        aggiungi(Q926, num(excess));
    }
}

// ---- Pass ----

/// The month's sums start with the first slip of the month; CALC has cleared Q168 and Q170. The
/// additional percent of the other workers is none of theirs.
void open_month() {
    azzera({P221, Q167});
    if (num(P168) > 1 && !slip.earlier_slip_this_month) {
        svuota({P204});
    }
}

void amounts_to_date() {
    aggiungi(Q170, num(Q010));
    if (num(P168) > 1) {
        aggiungi(Q010, item_cell(contributions.amounts, 5));
    }
}

/// The voluntary sum of those who are no members of a fund; members pay it with the fund.
void voluntary_sum() {
    if (num(P401) == 0 && num(P450) != 0) {
        aggiungi(Q224, num(P450));
    }
}

// ---- Settlement of the year ----

constexpr std::size_t kFirstBracketCell = 30;  // F152, euro a month
constexpr std::size_t kRateCell = 31;          // first half of F140, hundredths of a percent
constexpr std::size_t kRateAboveCell = 32;     // second half of F140
constexpr double kYearlyAddition = 4000;
constexpr double kHundredthsOfPercent = 10000;

bool year_is_settled_apart() {
    return num(P118) != 2 && num(P182) != 0 && run_tables.TABFISSO.at(kRateCell) != 0;
}

}  // namespace

std::string FAI_ENPALS() {
    TRACCIA("FAI_ENPALS$");
    const double days = num(P201);
    const double wage = num(P250);
    const double kind = num(P094);
    double contributing = wage;
    double credited = wage;
    if (kind >= 1 && kind <= 4) {
        const double by_day = wage_by_day(wage, days);
        contributing = by_day - above_yearly_ceiling(by_day);
        credited = days == 0 ? contributing : credited_wage(wage / days, days, contributing);
    }
    const double above = std::max(0.0, wage - contributing);
    const double left = std::max(0.0, num(F198) - num(Q003) - contributing);
    return cents(contributing, 10) + cents(above, 10) + cents(credited, 8) + cents(left, 8);
}

void CONGSOLIDENPALS() {
    TRACCIA("CONGSOLIDENPALS");
    if (!year_is_settled_apart()) {
        return;
    }
    const double ceiling = run_tables.TABFISSO.at(kFirstBracketCell) * 12 + kYearlyAddition;
    const double wage = num(Q002) + num(P252);
    const double above = std::max(0.0, wage - ceiling);
    const double due =
        arrotonda((wage - above) * run_tables.TABFISSO.at(kRateCell) / kHundredthsOfPercent);
    const double due_above =
        arrotonda(above * run_tables.TABFISSO.at(kRateAboveCell) / kHundredthsOfPercent);
    const double paid = pension_paid();
    const double owed = arrotonda(due - paid - pension_contribution());
    const double owed_above = arrotonda(due_above - num(Q009));
    scrivi(P282, due);
    scrivi(P283, due_above);
    scrivi(P284, owed);
    scrivi(P285, owed_above);
    write_pension_paid(paid + owed);
    aggiungi(Q009, owed_above);
    aggiungi(Q224, owed + owed_above);
}

void CSOCTASSEPENPALS() {
    TRACCIA("CSOCTASSEPENPALS");
    open_month();
    take_wage_limits();
    bases_and_fund(Pass::entertainers);
    employee_amounts(Pass::entertainers);
    amounts_to_date();
    back_pay_contribution();
    voluntary_sum();
    if (tax_state.ConguaglioAnnuale) {
        CONGSOLIDENPALS();
    }
    tax_and_termination_phases();
}

}  // namespace ModSwCalm2
