#include <array>
#include <string>
#include <string_view>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "formulas/formula.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "slip/slip_lines.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

// ---- Formula cells of the item in FOTX$ ----

constexpr int kCells = 100;
constexpr std::size_t kCellWidth = 11;

/// Cell n (1 to 100) of the formula, Z051 to Z150: operator and operand, trimmed.
std::string formula_cell(int n) {
    const auto first = static_cast<std::size_t>(Z051.offset);
    return rifila(ritaglia(area(Area::FOTX), first + static_cast<std::size_t>(n - 1) * kCellWidth,
                           kCellWidth));
}

/// Does a cell of the formula read the field?
bool formula_reads(std::string_view field) {
    for (int n = 1; n <= kCells; ++n) {
        const std::string cell = formula_cell(n);
        if (!cell.empty() && cell.front() != '=' &&
            rifila(ritaglia(cell, 2, kCellWidth)).starts_with(field)) {
            return true;
        }
    }
    return false;
}

/// Quantity by rate as the line holds them, in cents.
double line_amount(const std::string& line) {
    return importo(line_quantity(line) / kQuantityUnits * line_rate(line));
}

// ---- Operator's wage for the declaration ----

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

// ---- Sums for the contribution cut ----

constexpr double kCutOf2022 = 0.8;         // percent, L. 234/2021, art. 1, c. 121
constexpr double kCutFromOctober2022 = 1;  // percent, in the months from 202210
constexpr double kCut3 = 3;                // percent, L. 197/2022, art. 1, c. 281
constexpr double kCut2 = 2;
constexpr double kFirstWageLimit = 1923;
constexpr double kWageLimit = 2692;

bool left_out_of_the_cut(int code) {
    return code == 59 || code == 60 || code == 74;
}

/// Contribution wage of the excluded lines and of the extra months; a deduction takes off. An item
/// that is neither earning nor deduction, or of no social class, does not count. An item whose
/// formula reads the months of the thirteenth (Q164) or fourteenth (Q165) is theirs, whatever its
/// code.
void sum_lines_of_the_cut() {
    slip.items_59_60_74 = 0;
    slip.thirteenth_wage = 0;
    slip.fourteenth_wage = 0;
    walk_lines([](int, int code, const std::string& line) {
        if (num(Z011) > 1 || num(Z014) == 0) {
            return true;
        }
        const double amount = num(Z011) == 1 ? -line_amount(line) : line_amount(line);
        if (formula_reads("Q164")) {
            slip.thirteenth_wage = importo(slip.thirteenth_wage + amount);
        } else if (formula_reads("Q165")) {
            slip.fourteenth_wage = importo(slip.fourteenth_wage + amount);
        } else if (left_out_of_the_cut(code)) {
            slip.items_59_60_74 = importo(slip.items_59_60_74 + amount);
        }
        return true;
    });
    slip.extra_month_wage = importo(slip.thirteenth_wage + slip.fourteenth_wage);
}

double percent_of(double wage, double percent) {
    return wage * percent / 100;
}

/// The employee's percentages: pension, item 3, apprentices, each if its switch is on.
double employee_percentage_sum() {
    return (num(P181) == 1 ? slip.PCTCONTR[1] : 0) + (num(P183) == 1 ? slip.PCTCONTR[3] : 0) +
           (num(P188) == 1 ? slip.PCTCONTR[8] : 0);
}

/// One extra month: 3 percent up to the first limit, 2 percent below the second.
void cut_of_extra_month(double wage, const Descriptor& at_three, const Descriptor& at_two) {
    if (wage <= kFirstWageLimit) {
        scrivi(at_three, percent_of(wage, kCut3));
    } else if (wage < kWageLimit) {
        scrivi(at_two, percent_of(wage, kCut2));
    }
}

// ---- Items that are a percentage on the base ----

/// ".P240", then "%..." and "=OG..." in the next two cells or after one cell between. A note is
/// never worked out.
bool is_percentage_on_base() {
    if (num(Z048) == 1 || num(Z011) != 2 || num(Z017) != 1 || num(Z016) != 0) {
        return false;
    }
    const auto pair_at = [](int n) {
        return n + 1 <= kCells && formula_cell(n).starts_with('%') &&
               formula_cell(n + 1).starts_with("=OG");
    };
    for (int n = 1; n + 2 <= kCells; ++n) {
        if (formula_cell(n) == ".P240" && (pair_at(n + 1) || pair_at(n + 2))) {
            return true;
        }
    }
    return false;
}

/// Gives every line of the code the quantity of the item in FOTX$; the change of their amounts.
double rewrite_lines_of(int code) {
    double change = 0;
    const double quantity = num(Z151);
    walk_lines([&](int number, int line_item, const std::string& line) {
        if (line_item == code) {
            load_line_into_item(line);
            scrivi(Z151, quantity);
            const std::string rewritten = line_from_item(line);
            change += line_amount(rewritten) - line_amount(line);
            set_slip_line(number, rewritten);
        }
        return true;
    });
    return change;
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

void sum_reduction_items() {
    TRACCIA("sum_reduction_items");
    sum_lines_of_the_cut();
    scrivi(PB11, slip.items_59_60_74);
    scrivi(PB09, slip.extra_month_wage);
    if (period.yyyymm() < 202210) {
        scrivi(PB10, percent_of(slip.items_59_60_74, kCutOf2022));
        scrivi(PB07, percent_of(slip.extra_month_wage, kCutOf2022));
    } else if (period.year() == 2022) {
        scrivi(PB15, percent_of(slip.items_59_60_74, kCutFromOctober2022));
        scrivi(PB16, percent_of(slip.extra_month_wage, kCutFromOctober2022));
    }
}

void sum_extra_month_items() {
    TRACCIA("sum_extra_month_items");
    sum_lines_of_the_cut();
    scrivi(PB11, slip.items_59_60_74);
    if (num(PB05) != 0) {
        const double wage = num(P240) - slip.items_59_60_74 - slip.extra_month_wage;
        scrivi(PB26, percent_of(wage, employee_percentage_sum() / 2));
        return;
    }
    if (period.year() == 2023) {
        cut_of_extra_month(slip.thirteenth_wage, PB28, PB16);
        cut_of_extra_month(slip.fourteenth_wage, PB27, PB17);
    }
}

void recompute_percentage_items() {
    TRACCIA("recompute_percentage_items");
    constexpr double kTakenOff = 2;
    walk_lines([](int, int code, const std::string& line) {
        if (!is_percentage_on_base()) {
            return true;
        }
        const double fiscal_class = num(Z013);
        const bool joins_Q100 = num(Z026) == 1;
        const double former_Q100 = num(Q100);
        load_line_into_item(line);
        DECFORM(kTrue);
        const double change = rewrite_lines_of(code);
        if (joins_Q100) {
            scrivi(Q100, former_Q100 + change);  // the formula has added the whole amount again
        }
        if (fiscal_class != 0) {
            aggiungi(P256, fiscal_class == kTakenOff ? -change : change);
        }
        return true;
    });
}

void one_off_2022() {
    TRACCIA("one_off_2022");
    constexpr double kOneOff = 150;
    constexpr double kOneOffWageLimit = 1538;
    constexpr double kNovember = 11;
    if (num(T246) != 0 || num(PA39) != 0 || rifilato(P412) == "I") {
        return;
    }
    scrivi(QA24, 0.0);
    if (period.yyyymm() <= 202211) {
        scrivi(PB25, 0.0);
    } else if (slip.former_PB25 == kNovember) {
        scrivi(PB25, kNovember);  // paid with November's slip: December pays nothing more
        return;
    }
    // Wage above the yearly ceiling counts too: it has left P240 for P881 or P883.
    const double wage = num(P240) + num(P881) + num(P883) - num(PB11);
    if (num(P071) != 0 && wage <= kOneOffWageLimit) {
        scrivi(QA24, kOneOff);
        if (period.yyyymm() == 202211 || period.yyyymm() == 202212) {
            scrivi(PB25, period.month());
        }
    }
    if (num(QA24) > 0) {
        aggiungi(P241, num(QA24));
    }
}

}  // namespace ModSWCALM
