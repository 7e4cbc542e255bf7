// The wage that each contribution item is worked out on.

#include <algorithm>
#include <array>

#include "context/period.h"
#include "contributions/contribution_items.h"
#include "contributions/contributions.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/cut_lines.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using MXLIBRERIA::period;

namespace {

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

/// P252 takes the base of item 2 where it is in force; otherwise it stays the wage of the lines,
/// which the ceiling of item 4 counts to date (Q002).
void write_wage_of_item2() {
    if (item_cell(contributions.switches, 2) != 0) {
        scrivi(P252, item_cell(contributions.bases, 2));
    }
}

void fill_bases(Pass pass) {
    for (int item = 1; item <= kItems; ++item) {
        const Item& row = kItemTable.at(static_cast<std::size_t>(item) - 1);
        const double in_force = switch_of(item);
        const double wage = num(pass == Pass::entertainers ? row.entertainers_wage : row.wage);
        item_cell(contributions.switches, item) = in_force;
        item_cell(contributions.bases, item) = row.whole ? unita(wage * in_force) : wage * in_force;
    }
    write_wage_of_item2();
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
    write_wage_of_item2();
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

}  // namespace

double switch_of(int item) {
    if (item == 1) {
        return num(P181) == 1 && num(P185) == 0 ? num(P181) : num(P185);
    }
    return num(kItemTable.at(static_cast<std::size_t>(item) - 1).switched);
}

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

}  // namespace ModSwCalm2
