#include "slip/cut_lines.h"

#include <string>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/item_formula.h"
#include "slip/slip.h"
#include "slip/slip_table.h"
#include "slip/taxable_bases.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

constexpr double kCutOf2022 = 0.8;         // percent, L. 234/2021, art. 1, c. 121
constexpr double kCutFromOctober2022 = 1;  // percent, in the months from 202210
constexpr double kCut3 = 3;                // percent, L. 197/2022, art. 1, c. 281
constexpr double kCut2 = 2;
constexpr double kFirstWageLimit = 1923;
constexpr double kWageLimit = 2692;

bool left_out_of_the_cut(int code) {
    return code == 59 || code == 60 || code == 74;
}

bool of_2022() {
    return period.year() == 2022;
}

/// The sum that a line counts in; none of them for an ordinary line. In 2022 the code on the line
/// tells the items 59, 60, 74; from 2023 first the formula: one that reads the months of the
/// thirteenth (Q164) or fourteenth (Q165) is theirs, whatever the code.
double* sum_of_line(int code) {
    if (of_2022() && left_out_of_the_cut(code)) {
        return &slip.items_59_60_74;
    }
    if (formula_reads("Q164")) {
        return &slip.thirteenth_wage;
    }
    if (formula_reads("Q165")) {
        return &slip.fourteenth_wage;
    }
    return left_out_of_the_cut(code) ? &slip.items_59_60_74 : nullptr;
}

/// Contribution wage of the excluded lines and of the extra months; a deduction takes off. An item
/// that is neither earning nor deduction, or of no social class, does not count.
void sum_lines_of_the_cut() {
    slip.items_59_60_74 = 0;
    slip.thirteenth_wage = 0;
    slip.fourteenth_wage = 0;
    walk_lines([](int, int code, const std::string& line) {
        if (num(Z011) > 1 || num(Z014) == 0) {
            return true;
        }
        const double amount = num(Z011) == 1 ? -line_amount(line) : line_amount(line);
        if (double* sum = sum_of_line(code); sum != nullptr) {
            *sum = importo(*sum + amount);
        }
        return true;
    });
    slip.extra_month_wage = importo(slip.thirteenth_wage + slip.fourteenth_wage);
}

/// The contribution wage less an amount in it: formed in cents, then rounded as P240 is. Where a
/// ceiling or a conventional wage has replaced the wage of the lines, P240 has no cents of its own.
double wage_without(double amount) {
    if (amount == 0) {
        return num(P240);
    }
    const double wage = num(P240) == slip.wage_of_lines ? slip.wage_in_cents : num(P240);
    const double rest = arrotonda(wage - amount);
    return wage_is_whole() ? unita(rest) : rest;
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

}  // namespace

double tested_wage_of_the_cut() {
    return wage_without(slip.extra_month_wage + (of_2022() ? slip.items_59_60_74 : 0));
}

double own_wage_of_the_cut() {
    return tested_wage_of_the_cut() - (of_2022() ? 0 : slip.items_59_60_74);
}

void sum_reduction_items() {
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
    sum_lines_of_the_cut();
    scrivi(PB11, slip.items_59_60_74);
    if (num(PB05) != 0) {
        scrivi(PB26, percent_of(own_wage_of_the_cut(), employee_percentage_sum() / 2));
        return;
    }
    if (period.year() == 2023) {
        cut_of_extra_month(slip.thirteenth_wage, PB28, PB16);
        cut_of_extra_month(slip.fourteenth_wage, PB27, PB17);
    }
}

}  // namespace ModSWCALM
