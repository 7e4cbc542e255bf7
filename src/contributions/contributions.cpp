#include "contributions/contributions.h"

#include <algorithm>
#include <array>

#include "context/period.h"
#include "contributions/contribution_cuts.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "slip/slip_lines.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using ModSWCALM::slip;
using MXLIBRERIA::period;

Contributions contributions;

void require_item(double item, std::size_t size) {
    if (!(item >= 0) || item >= static_cast<double>(size)) {
        throw platform::Failure(platform::kSubscriptOutOfRange);
    }
}

namespace {

constexpr int kItems = 8;

struct Item {
    Descriptor switched;           ///< in force for the employee
    Descriptor wage;               ///< in the general pass
    Descriptor entertainers_wage;  ///< in the entertainers' pass
    bool whole;                    ///< the base is written in whole euro
};
constexpr std::array<Item, kItems> kItemTable{{
    {P181, P240, P240, false},
    {P182, P252, P252, true},
    {P183, P240, P240, false},
    {P184, P240, P240, true},
    {P185, P240, P250, false},
    {P186, P240, P240, false},
    {P187, P240, P240, false},
    {P188, P240, P240, false},
}};

/// Switch of an item. Item 1 follows P185 when that is set, or when P181 is not 1.
double switch_of(int item) {
    if (item == 1) {
        return num(P181) == 1 && num(P185) == 0 ? num(P181) : num(P185);
    }
    return num(kItemTable.at(static_cast<std::size_t>(item) - 1).switched);
}

// ---- Yearly ceiling of item 4 ----

constexpr double kItem4Ceiling = 82215.39;       // euro a year
constexpr double kItem4FirstBracket = 20658.27;  // 40 million lire
constexpr std::size_t kItem4Cell = 41;           // F039

double residue_of_item4() {
    const bool counted = run_tables.TABFISSO.at(kItem4Cell) == kItem4FirstBracket || num(P111) != 0;
    const double wage = counted ? num(Q002) + num(P111) : 0;
    return std::max(0.0, kItem4Ceiling - std::max(0.0, kItem4FirstBracket - wage) - wage);
}

// ---- Shares beside the items ----

void shares_by_percent() {
    if (num(P849) == 1) {
        scrivi(period.additional() ? P851 : P850, num(P240) * num(S300) / 100);
    }
    if (num(T633) == 1) {
        scrivi(P868, num(P250) * num(S305) / 100);
        scrivi(P869, num(P250) * num(S306) / 100);
        scrivi(P870, num(P250) * num(S307) / 100);
    }
}

// ---- Bases ----

/// Item 4 bears what item 2 does not, up to the rest of its ceiling; not in force it bears nothing.
void limit_item4() {
    double& base = item_cell(contributions.bases, 4);
    const double item2 = item_cell(contributions.bases, 2);
    if (item2 > 0 && item_cell(contributions.switches, 4) != 0) {
        base -= item2;
    }
    base = std::min(base, contributions.residue_item4);
}

void fill_bases(Pass pass) {
    for (int item = 1; item <= kItems; ++item) {
        const Item& row = kItemTable.at(static_cast<std::size_t>(item) - 1);
        const double in_force = switch_of(item);
        const double wage = num(pass == Pass::entertainers ? row.entertainers_wage : row.wage);
        item_cell(contributions.switches, item) = in_force;
        item_cell(contributions.bases, item) = row.whole ? unita(wage * in_force) : wage * in_force;
    }
    scrivi(P252, item_cell(contributions.bases, 2));
    limit_item4();
}

struct MonthLimit {
    int item;
    std::size_t cell;  ///< yearly amount in the table of fixed data; 0 there is no limit
    bool raised;       ///< a lower base is raised to the limit when P185 is 0
};
constexpr std::array<MonthLimit, 3> kMonthLimits{{{5, 37, false}, {6, 38, true}, {7, 39, true}}};

void month_limits(Pass pass) {
    if (pass == Pass::entertainers ? num(P168) <= 1 : num(P040) > 0) {
        return;
    }
    for (const MonthLimit& row : kMonthLimits) {
        const double limit =
            run_tables.TABFISSO.at(row.cell) / 12 * item_cell(contributions.switches, row.item);
        double& base = item_cell(contributions.bases, row.item);
        if (limit != 0 && (base > limit || (row.raised && num(P185) == 0))) {
            base = limit;
        }
    }
    if (num(P184) == 0) {
        item_cell(contributions.bases, 4) = 0;
    }
}

/// Workers paid by the calendar of 26 days: conventional wages by day, or by hour with P019.
void calendar_of_26_days() {
    if (num(P160) != 1) {
        return;
    }
    const double days = num(P201);
    const bool by_hour = num(P019) == 1;
    const auto base_of = [&](int item, const Descriptor& by_month, const Descriptor& hourly) {
        const double base = by_hour ? num(hourly) * num(P207) : num(by_month) / 26 * days;
        item_cell(contributions.bases, item) = unita(base) * switch_of(item);
    };
    aggiungi(Q094, unita(num(P163)));
    base_of(1, P161, P357);
    base_of(6, P162, P358);
    item_cell(contributions.bases, 2) = unita(num(P163) / 26 * days * switch_of(2));
    scrivi(P252, item_cell(contributions.bases, 2));
    scrivi(P240, item_cell(contributions.bases, 1));
}

/// The part of the wage that goes from item 1 to item 6. Nothing is cut at 0.
void deduction_from_base() {
    const double deduction = num(S088);
    if (deduction != 0) {
        item_cell(contributions.bases, 1) -= deduction;
        item_cell(contributions.bases, 6) = deduction;
    }
}

// ---- Amounts ----

constexpr std::size_t kFirstBracketCell = 30;  // F152, euro a month
constexpr std::size_t kHigherRateCell = 32;    // second half of F140, hundredths of a percent

double rate_of(int item) {
    return item_cell(slip.PCTCONTR, item);
}

/// Item 7: the ordinary part in Q226. With T180 the wage of entertainers above the first bracket
/// bears the higher rate, shown in Q227.
double amount_of_item7(Pass pass) {
    const double base = item_cell(contributions.bases, 7);
    const double bracket = run_tables.TABFISSO.at(kFirstBracketCell);
    const double higher_rate = run_tables.TABFISSO.at(kHigherRateCell) / 100;
    const bool two_rates = pass == Pass::entertainers && num(T180) != 0 && bracket > 0 &&
                           base > bracket && higher_rate > rate_of(7);
    const double ordinary = two_rates ? bracket : base;
    scrivi(Q226, ordinary * rate_of(7) / 100);
    scrivi(Q227, (base - ordinary) * higher_rate / 100);
    return num(Q226) + num(Q227);
}

void amounts_of_items(Pass pass) {
    for (int item = 1; item <= kItems; ++item) {
        item_cell(contributions.amounts, item) =
            item == 7 ? amount_of_item7(pass)
                      : arrotonda(item_cell(contributions.bases, item) * rate_of(item) / 100);
    }
}

/// The pension item that PB21 replaces for PB20 1 and 2: item 1, for apprentices also item 8.
bool replaced_by_half_share(int item) {
    return half_share() && (item == 1 || (item == 8 && num(P045) == 5));
}

void add_contribution(double amount) {
    aggiungi(Q224, amount);
    aggiungi(Q225, amount);
}

void add_items() {
    for (int item = 1; item <= kItems; ++item) {
        if (!replaced_by_half_share(item)) {
            add_contribution(item_cell(contributions.amounts, item));
        }
    }
}

/// The half that the employee owes; what is neither owed nor taken over by PB21 is the cut.
void owe_half_share() {
    double due = 0;
    for (const int item : {1, 8}) {
        due += replaced_by_half_share(item) ? item_cell(contributions.amounts, item) : 0;
    }
    const double owed = half_share_amount();
    contributions.reductions += arrotonda(due - owed - num(PB21));
    aggiungi(Q224, owed);
    aggiungi(Q225, due - num(PB21));
}

// ---- Contributions on back pay ----

struct BackPayItem {
    int item;
    bool only_with_P040;
};
constexpr std::array<BackPayItem, 6> kBackPayItems{
    {{1, false}, {3, false}, {8, false}, {5, true}, {6, true}, {2, true}}};

// ---- Additional percent above the first bracket ----

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

void item_bases_before_fund(Pass pass) {
    contributions = {};
    contributions.residue_item4 = residue_of_item4();
    shares_by_percent();
    if (num(P885) == 1) {
        GESTIONE_MASSIMALE_CONTRIBUTIVO();
    }
    if (num(P886) == 1) {
        GESTIONE_RETR_CONVENZ_ESTERO();
    }
    fill_bases(pass);
    month_limits(pass);
    calendar_of_26_days();
    deduction_from_base();
}

void item_bases_after_fund() {
    azzera({PB17, PB16, PB27, PB28});
    if (period.year() == 2022) {
        ModSWCALM::sum_reduction_items();
    } else if (period.year() >= 2023) {
        ModSWCALM::sum_extra_month_items();
    }
}

void employee_amounts(Pass pass) {
    azzera({PB21});
    amounts_of_items(pass);
    add_items();
    const double due = item_cell(contributions.amounts, 1) + item_cell(contributions.amounts, 8);
    const double cut = contribution_cut(due);
    if (half_share()) {
        owe_half_share();
    } else {
        contributions.reductions += cut;
        aggiungi(Q224, -cut);
    }
    mothers_relief();
}

double contributions_on(double amount) {
    double sum = 0;
    for (const BackPayItem& row : kBackPayItems) {
        if (!row.only_with_P040 || num(P040) != 0) {
            sum += arrotonda(amount * rate_of(row.item) * switch_of(row.item) / 100);
        }
    }
    return sum;
}

void back_pay_contribution() {
    scrivi(Q053, contributions_on(unita(num(Q052))) + num(Q800));
    add_contribution(num(Q800));
    // A customer keeps these contributions out of the taxable.
    if (num(P195) != 0 && num(P040) != 0 && !ModSWCALM::company_is("90000000099")) {
        aggiungi(P212, contributions_on(unita(num(P195))));
    }
}

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
