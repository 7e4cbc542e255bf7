#include "slip/operator_wage.h"

#include <string>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "formulas/formula.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "slip/slip_table.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

constexpr double kDefaultHours = 173;

double divisor_or_default() {
    const double divisor = hours_divisor();
    return divisor == 0 ? kDefaultHours : divisor;
}

/// Quantity of the line by the rate that the item's formula gives, no field of the employee
/// changed.
double evaluated_amount(const std::string& line) {
    load_line_into_item(line);
    DECFORM(0);
    return line_quantity(line) / kQuantityUnits * num(Z152);
}

/// Items that are marked as part of the declared wage.
double marked_lines() {
    double sum = 0;
    walk_lines([&](int, int, const std::string& line) {
        if (rifilato(Z156) == "RT" && num(Z011) < 2) {
            sum = importo(sum + evaluated_amount(line));
        }
        return true;
    });
    return sum;
}

/// Wage of a whole month from the pay elements.
double monthly_wage() {
    const double divisor = divisor_or_default();
    const bool by_the_hour = num(P050) == 0;
    double sum = by_the_hour ? num(P069) / divisor : num(P069);
    for (const Descriptor& element :
         {P058, P060, P061, P062, P063, P064, P065, P066, P067, P353, P354, P355}) {
        sum += num(element);
    }
    const bool part_time = num(P019) != 0 && num(P020) != 0;
    if (by_the_hour) {
        return sum * (part_time ? num(P020) : divisor);
    }
    return num(P050) == 1 && num(P019) == 1 ? sum / divisor * num(P020) : sum;
}

/// Is the month of hiring or of leaving the month of the run?
bool partial_month() {
    const std::string start = num(P014) != 0 ? testo(P014) : testo(P013);
    return ritaglia(start, 3, 6) == period.month_year() ||
           ritaglia(testo(P017), 3, 6) == period.month_year();
}

/// Days of the month in service, by its length with the Gregorian February.
double days_in_service(double length) {
    const std::string start = num(P014) != 0 ? testo(P014) : testo(P013);
    const std::string leaving = testo(P017);
    double days = length;
    if (ritaglia(start, 3, 6) == period.month_year()) {
        days -= valore(ritaglia(start, 1, 2)) - 1;
    }
    if (ritaglia(leaving, 3, 6) == period.month_year()) {
        days -= length - valore(ritaglia(leaving, 1, 2));
    }
    return days;
}

/// Amount of the first line of item `code`; false if the slip has none.
bool ordinary_pay_line(int code, double& amount) {
    bool found = false;
    walk_lines([&](int, int line_item, const std::string& line) {
        if (line_item != code) {
            return true;
        }
        amount = evaluated_amount(line);
        found = true;
        return false;
    });
    return found;
}

/// Pay of a month not worked in full: the slip's own ordinary pay line (1 by the hour, 2 by the
/// day); without one the days in service of the whole month's wage.
double partial_wage(double whole_month) {
    constexpr int kPayByTheHour = 1;
    constexpr int kPayByTheDay = 2;
    double amount = 0;
    if (num(P050) == 0 && ordinary_pay_line(kPayByTheHour, amount)) {
        return amount;
    }
    if (ordinary_pay_line(kPayByTheDay, amount)) {
        return amount;
    }
    const double length = days_of_month(period.month(), period.year());
    return whole_month * days_in_service(length) / length;
}

}  // namespace

void CREA_OPERATORE_RETR_EMENS() {
    TRACCIA("CREA_OPERATORE_RETR_EMENS");
    constexpr double kLinesAndWage = 0;
    constexpr double kWageOnly = 1;
    constexpr double kLinesOnly = 2;
    scrivi(P071, 0.0);
    const double kind = num(P757);
    // The lines are evaluated here for their amounts only: their registers begin anew afterwards.
    const FormulaRegisters registers = formula_registers;
    double total = 0;
    if (kind == kLinesAndWage || kind == kLinesOnly) {
        total += marked_lines();
    }
    if (kind == kLinesAndWage || kind == kWageOnly) {
        const double wage = monthly_wage();
        total += partial_month() ? partial_wage(wage) : wage;
    }
    formula_registers = registers;
    scrivi(P071, total);
}

}  // namespace ModSWCALM
