#include <algorithm>
#include <string>
#include <utility>

#include "calc/incentives.h"
#include "calc/phases.h"
#include "context/period.h"
#include "context/utilities.h"
#include "contributions/contributions.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "formulas/formula.h"
#include "history/stored_history.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/contract.h"
#include "slip/fixed_data.h"
#include "slip/line_accumulators.h"
#include "slip/premium_ceiling.h"
#include "slip/slip.h"
#include "slip/slip_table.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr int kSlipLines = 100;
constexpr double kLeavingItem = 320;
constexpr double kEndOfTable = 999;

bool collaborator() {
    return num(P447) == 1;
}

/// Everything that belongs to the employee, back to its default at this one point. The tables stay:
/// a bracket file that ends early, and a rate that no switch decides, leave what stood in them.
void reset_slip(double employee_record) {
    Slip opened;
    opened.TABIRP = slip.TABIRP;
    opened.TABIRPAC = slip.TABIRPAC;
    opened.PCTCONTR = slip.PCTCONTR;
    slip = std::move(opened);
    slip.employee_record = employee_record;
    if (BISESTILE(period.year()) == kTrue) {
        slip.GIORNIMESE = "31312931303130313130313031";
    }
    ABORTODIP = 0;
    ModSwCalm2::contributions = ModSwCalm2::Contributions{};
    formula_registers = FormulaRegisters{};
}

void read_employee(double employee_record) {
    LEGGIREC(kEmployees, employee_record);
    area(Area::DIPX) = record_buffer(kEmployees);
    read_table(kSectors, num(T067));
    area(Area::SETX) = record_buffer(kSectors);
    if (collaborator() && num(P090) <= 0) {
        scrivi(P090, 12);
    }
}

/// Employment that ended on 31 December 2023 keeps the brackets of that year, before those of
/// D.Lgs. 216/2023, art. 1.
void load_tax_brackets() {
    if (rifilato(P017) == "31122023") {
        brackets_of_2023();
        return;
    }
    INTATABIRP(slip.TABIRP);
    INTATABIRP(slip.TABIRPAC);
}

/// The pay scale is written into a copy of the record, which then replaces the record.
void apply_pay_scale() {
    slip.record_copy = area(Area::DIPX);
    PASSQUAL();
    area(Area::DIPX).swap(slip.record_copy);
    fill_record(kEmployees, area(Area::DIPX));
}

void keep_days_of_previous_slip() {
    if (!collaborator()) {
        slip.month_days_previous = valore(testo(P215) + testo(P216));
    }
}

/// Length of the period's month; February has 28 days where the year counts 365.
int days_of_period_month() {
    return period.month() == 2 && num(F169) == 1 ? 28 : month_length(period.month());
}

void set_days_of_month() {
    scrivi(Q187, 30);
    if (collaborator()) {
        slip.GGLAVORABILI = num(P449);
        svuota({P215, P216});
        return;
    }
    slip.GGLAVORABILI = days_of_period_month();
    scrivi(P215, slip.GGLAVORABILI);
    scrivi(P216, slip.GGLAVORABILI);
}

void set_switches() {
    slip.calendar_days = num(T180) == 1;
    if (num(P118) == 2) {
        scrivi(P038, "9");
    }
    if (period.additional()) {
        scrivi(P281, "0");
    }
}

/// Rate S004 of the sector; the contracts 4 and 5 with P188 pay half a point less. A collaborator
/// has none of the sector's rates.
void set_sector_rate() {
    if (collaborator()) {
        return;
    }
    const double contract = num(P045);
    const bool reduced = (contract == 4 || contract == 5) && num(P188) == 1;
    slip.sector_rate = std::max(0.0, num(S004) - (reduced ? 0.5 : 0.0));
    slip.PCTCONTR[2] = slip.sector_rate;
}

/// Day from which the service counts: P014 where it is given, else the hiring.
Date service_start() {
    return Date::of(testo(num(P014) != 0 ? P014 : P013));
}

/// Item 320 carries the leaving date as its quantity, a plain ddmmyyyy.
void take_leaving_date_from_item() {
    for (int number = 1; number <= kSlipLines; ++number) {
        const std::string line = slip_line(number);
        const double code = valore(ritaglia(line, 2, 3));
        if (code == kEndOfTable) {
            return;
        }
        if (code == kLeavingItem) {
            scrivi(P017, testo_numero(valore(ritaglia(line, 5, 13))));
            slip.CEDOLINOFINALE = true;
            return;
        }
    }
}

std::string month_mark() {
    return std::string(ritaglia(testo(P197), 1, 1));
}

/// The new mark in P197, the former one behind it.
void set_month_mark(bool counted) {
    scrivi(P197, (counted ? "1" : "0") + month_mark());
}

/// The mark of P197 stands for the month of the last slip; where the record knows no last slip it
/// is taken as it stands.
bool mark_of_earlier_month() {
    return !slip.earlier_slip_this_month && num(Q179) != 0;
}

bool month_already_counted() {
    return month_mark() == "1" && !mark_of_earlier_month();
}

/// A slip that counts no month takes the mark of an earlier month off: it leaves its own date in
/// the record, and the ordinary slip after it would find its month counted already.
void take_off_mark_of_earlier_month() {
    if (month_mark() == "1" && mark_of_earlier_month()) {
        set_month_mark(false);
    }
}

void count_month_of_service() {
    slip.month_counted = month_counts(num(T073));
    if (slip.month_counted) {
        aggiungi(Q136, 1);
    }
    set_month_mark(slip.month_counted);
}

}  // namespace

void open_slip(double employee_record) {
    reset_slip(employee_record);
    read_employee(employee_record);
    load_tax_brackets();
    slip.ordinary_worker = num(P168) == 0;
    if (num(P467) != 0) {
        slip.severance_divisor = num(P467);
    }
    load_contribution_percentages();
    slip.ceiling_flag = below_ceiling();
    slip.former_Q110 = num(Q110);
    ModElaboraStorico::PREPARASTORICO();
    svuota({P423});
    apply_pay_scale();
    load_slip_table();
    keep_days_of_previous_slip();
    svuota({P260});
    slip.earlier_slip_this_month = ritaglia(testo(Q179), 3, 6) == period.month_year();
    keep_exemption_of_other_slip();
    set_days_of_month();
    set_switches();
    set_sector_rate();
    slip.CEDOLINOFINALE = period.month() == 12 && period.ordinary();
}

void leaver_scan() {
    if (num(P118) == 2) {
        take_off_mark_of_earlier_month();
        return;
    }
    take_leaving_date_from_item();
    if (period.additional()) {
        take_off_mark_of_earlier_month();
    } else if (!month_already_counted()) {
        count_month_of_service();
    }
}

int days_in_service(int length, int yyyymm, const Date& start, const Date& leaving) {
    int first = 1;
    int last = length;
    if (start.given()) {
        if (start.yyyymm() > yyyymm) {
            return 0;
        }
        if (start.yyyymm() == yyyymm) {
            first = std::min(start.day, length);
        }
    }
    // A leaving date before the start is the one of an earlier employment.
    if (leaving.given() && leaving.yyyymmdd() >= start.yyyymmdd()) {
        if (leaving.yyyymm() < yyyymm) {
            return 0;
        }
        if (leaving.yyyymm() == yyyymm) {
            last = std::min(leaving.day, length);
        }
    }
    return std::max(0, last - first + 1);
}

void take_off_days_outside_service() {
    if (collaborator()) {
        return;
    }
    const int days = days_in_service(days_of_period_month(), static_cast<int>(period.yyyymm()),
                                     service_start(), Date::of(testo(P017)));
    slip.GGLAVORABILI = days;
    scrivi(P215, days);
    scrivi(P216, days);
}

}  // namespace ModSWCALM
