#include "tax/bonus_restitution.h"

#include <algorithm>

#include "context/period.h"
#include "context/trace.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/income_tax.h"
#include "tax/surtaxes.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;

namespace {

constexpr double kLargestSingleSum = 60;

double number_in(const std::optional<Descriptor>& field) {
    return field ? num(*field) : 0;
}

void write_in(const std::optional<Descriptor>& field, double value) {
    if (field) {
        scrivi(*field, value);
    }
}

/// Is this the adjustment of somebody who leaves? A date of an earlier employment is none.
bool adjusts_a_leaver() {
    return tax_state.ConguaglioAnnuale && leaves();
}

double plan_total(const Restitution& sum) {
    return num(sum.total) - number_in(sum.settled_apart);
}

/// What is still to be taken of the plan in the record; 0 without one (a total without a count is
/// none), and when it is finished.
double rest_of(const Restitution& sum) {
    return num(sum.count) == 0 ? 0 : std::max(0.0, arrotonda(plan_total(sum) - num(sum.paid)));
}

/// The instalment of the month: even shares, and with the last one all that is left.
double next_instalment(const Restitution& sum) {
    const double count = num(sum.count) - number_in(sum.count_apart);
    const double rest = rest_of(sum);
    return num(sum.done) >= count ? rest
                                  : std::clamp(arrotonda(plan_total(sum) / count), 0.0, rest);
}

void take_instalment(const Restitution& sum) {
    aggiungi(sum.done, 1);
    scrivi(sum.instalment, next_instalment(sum));
    aggiungi(sum.paid, num(sum.instalment));
    aggiungi(P259, num(sum.instalment));
}

// ---- Control lists ----

constexpr std::size_t kNameWidth = 40;

/// One line: employee, note, total, and for a plan how many instalments of how much.
std::string list_line(const Restitution& sum, double total, const texts::Text& note) {
    const std::string name = rifilato(P002) + " " + rifilato(P003);
    std::string line = testo(P001) + "-" + a_sinistra(name, kNameWidth) + " " + note.bytes() + " " +
                       formato_importo(total);
    if (num(sum.count) > 1 && !adjusts_a_leaver()) {
        line += texts::kRestitutionInstalments.bytes() + testo_numero(num(sum.count)) +
                texts::kRestitutionEach.bytes() + formato_importo(num(sum.instalment));
    }
    return line;
}

/// A slip that is dropped leaves no line.
void list(const Restitution& sum, double total, const texts::Text& note) {
    if (ModSWCALM::ABORTODIP != 0) {
        return;
    }
    auto& tables = ModSWCALM::run_tables;
    const std::string line = list_line(sum, total, note);
    if (sum.list == RestitutionList::bonus) {
        tables.bonus_list.push_back(line);
        return;
    }
    tables.list_999_count += 1;
    const auto place = static_cast<std::size_t>(tables.list_999_count);
    if (place >= tables.list_999.size()) {
        tables.list_999.resize(place + 1);
    }
    tables.list_999[place] = line;
}

// ---- A new excess ----

/// Was a part given back before the first plan, so that the rest goes in fewer instalments?
bool begins_with_part_settled(const Restitution& sum) {
    return sum.count_after > 0 && number_in(sum.settled_apart) != 0 && num(sum.total) == 0;
}

/// Instalments of a new plan. A count in the record was set for it, unless a finished plan has left
/// it there.
double count_of_new_plan(const Restitution& sum) {
    const bool left_behind = num(sum.done) > 0 && rest_of(sum) == 0;
    const double set = left_behind ? 0 : num(sum.count);
    if (set >= 1 && set <= sum.longest) {
        return set;
    }
    if (begins_with_part_settled(sum)) {
        return sum.count_after;
    }
    const int month = static_cast<int>(period.yyyymm());
    const auto usual = std::ranges::find_if(
        sum.usual, [month](const UsualCount& row) { return month >= row.from && month <= row.to; });
    return usual->count;
}

/// A plan in the record starts anew. What was settled apart belonged to the plan before.
void write_plan(const Restitution& sum, double total, double count) {
    if (!begins_with_part_settled(sum)) {
        write_in(sum.settled_apart, 0);
        write_in(sum.count_apart, 0);
    }
    scrivi(sum.count, count);
    scrivi(sum.done, 0);
    scrivi(sum.paid, 0);
    scrivi(sum.total, total);
}

/// Up to 60 euro at once, otherwise by instalments from this slip on. The rest of a running plan
/// joins.
void open_plan(const Restitution& sum) {
    const double total = num(sum.excess) + rest_of(sum);
    const bool at_once = total <= kLargestSingleSum;
    write_plan(sum, total, at_once ? 1 : count_of_new_plan(sum));
    take_instalment(sum);
    list(sum, total, at_once ? *sum.at_once : *sum.by_instalments);
}

/// What the slip and the list say of somebody who leaves: a small sum goes by its own name.
const texts::Text* leavers_note(const Restitution& sum, double total) {
    return total <= kLargestSingleSum ? sum.at_once : sum.on_leaving;
}

/// The rest of a running plan and a new excess, each on its own.
void charge_leaver(const Restitution& sum, double excess) {
    const double rest = rest_of(sum);
    if (rest > 0) {
        aggiungi(sum.rest, rest);
        write_in(sum.rest_noted, rest);
        aggiungi(sum.paid, rest);
        aggiungi(P259, rest);
    }
    if (excess > 0) {
        write_plan(sum, excess, 1);
        scrivi(sum.done, 1);
        scrivi(sum.paid, excess);
        aggiungi(sum.leaver, excess);
        aggiungi(P259, excess);
    }
    if (rest + excess > 0) {
        const double total = arrotonda(rest + excess);
        list(sum, total, *leavers_note(sum, total));
    }
}

// ---- A running plan ----

/// The month's instalment of a plan that an earlier slip has opened.
void RECUPERO(const Restitution& sum) {
    MXLIBRERIA::TRACCIA("RECUPERO");
    if (num(sum.count) > 0 && rest_of(sum) > 0) {
        take_instalment(sum);
    }
}

double new_excess(const Restitution& sum) {
    const double excess = tax_state.ConguaglioAnnuale ? num(sum.excess) : 0;
    return excess >= kLeastRestitution ? excess : 0;
}

void take_back(const Restitution& sum) {
    const double excess = new_excess(sum);
    if (excess == 0 && adjustment_only()) {
        return;
    }
    if (adjusts_a_leaver()) {
        charge_leaver(sum, excess);
    } else if (excess > 0) {
        open_plan(sum);
    } else {
        RECUPERO(sum);
    }
}

}  // namespace

void open_restitutions() {
    for (const Restitution& sum : kRestitutions) {
        azzera({sum.instalment, sum.rest});
    }
}

void take_back() {
    if (period.additional()) {
        return;
    }
    for (const Restitution& sum : kRestitutions) {
        take_back(sum);
    }
}

double taken_back(const Restitution& sum) {
    const double rest = sum.rest == sum.instalment ? 0 : num(sum.rest);
    return num(sum.instalment) + rest;
}

const texts::Text* restitution_note(const Restitution& sum) {
    if (taken_back(sum) == 0) {
        return nullptr;
    }
    if (leaves()) {
        return leavers_note(sum, taken_back(sum));
    }
    return num(sum.count) == 1 ? sum.at_once : sum.by_instalments;
}

}  // namespace ModSWCALB
