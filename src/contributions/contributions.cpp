#include "contributions/contributions.h"

#include <array>

#include "contributions/contribution_cuts.h"
#include "contributions/contribution_items.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using ModSWCALM::slip;

Contributions contributions;

void require_item(double item, std::size_t size) {
    if (!(item >= 0) || item >= static_cast<double>(size)) {
        throw platform::Failure(platform::kSubscriptOutOfRange);
    }
}

namespace {

constexpr std::size_t kHigherRateCell = 32;  // second half of F140, hundredths of a percent

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
    if (contributions.item7_in_units) {
        scrivi(Q226, unita(num(Q226)));
    }
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

}  // namespace

void add_contribution(double amount) {
    aggiungi(Q224, amount);
    aggiungi(Q225, amount);
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

double pension_contribution() {
    return contributions.amounts[1] + contributions.amounts[2] + contributions.amounts[8];
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

}  // namespace ModSwCalm2
