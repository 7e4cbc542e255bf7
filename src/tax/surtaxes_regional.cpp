// Regional surtax: the lines of the regional table, and what a region's law fixes beside its rates.

#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/deductions.h"
#include "tax/family.h"
#include "tax/income_tax.h"
#include "tax/surtaxes.h"
#include "tax/surtaxes_parts.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using ModSWCALM::slip;
using MXLIBRERIA::period;

namespace {

// ---- What the law of a region fixes ----

enum class Rule {
    whole,          ///< the rate of the band reached on the whole base
    exempt,         ///< nothing up to the limit, then brackets
    disabled,       ///< with P469, up to the limit, the fixed rate on the whole base
    softened_step,  ///< whole, but just above the limit nobody keeps less than at the limit
    few_children,   ///< brackets; with one child at most no more than the rate up to the limit
};
constexpr int kNoEnd = 9999;

struct RegionalLaw {
    std::string_view region;
    int first_year;
    int last_year;
    Rule rule;
    double limit;
    double rate;  ///< percent
};
/// What a region's own law fixes, by tax year. Where no row holds: by brackets (D.Lgs. 68/2011,
/// art. 6, c. 4).
constexpr std::array<RegionalLaw, 6> kRegionalLaws{{
    {"07", 2012, kNoEnd, Rule::whole, 0, 0},            // Friuli-Venezia Giulia
    {"09", 2012, 2013, Rule::softened_step, 28000, 0},  // Liguria
    // Liguria, relief of the families by its budget law for 2024 (D.Lgs. 68/2011, art. 6, c. 5)
    {"09", 2024, kNoEnd, Rule::few_children, 28000, 1.79},
    {"18", 2024, 2025, Rule::exempt, 30000, 0},        // Provincia autonoma di Trento
    {"20", 2024, kNoEnd, Rule::exempt, 15000, 0},      // Valle d'Aosta
    {"21", 2022, kNoEnd, Rule::disabled, 50000, 0.9},  // Veneto
}};

enum class Relief {
    fixed,
    by_months,  ///< a twelfth for each dependant's month, by the share
    by_place,   ///< for each dependant
    children,   ///< by_months for children alone, from the month of the birth
};
constexpr double kNoUpperLimit = 999999999.99;

/// What comes off the surtax for bases from one limit to the other; the surtax does not fall below
/// 0. The rows of a region add up.
struct RegionalRelief {
    std::string_view region;
    int first_year;
    double from;
    double up_to;
    Relief relief;
    double amount;
};
constexpr std::array<RegionalRelief, 6> kRegionalReliefs{{
    // Bolzano, L.P. 9/1998, art. 21-undecies
    {"03", 2024, 0, 50000, Relief::fixed, 430.50},
    {"03", 2024, 50000.01, kNoUpperLimit, Relief::fixed, 125},
    {"03", 2024, 0, 70000, Relief::children, 252},
    {"08", 2024, 28000, 35000, Relief::fixed, 60},   // Lazio
    {"09", 2024, 0, 28000, Relief::by_place, 200},   // Liguria
    {"15", 2022, 0, 50000, Relief::by_months, 200},  // Sardegna
}};

/// The row of a table for the region in the year of the run; none where nothing is fixed.
const RegionalLaw* law_of(std::string_view region) {
    const auto* const row = std::ranges::find_if(kRegionalLaws, [region](const RegionalLaw& law) {
        return law.region == region && law.first_year <= period.year() &&
               period.year() <= law.last_year;
    });
    return row == kRegionalLaws.end() ? nullptr : row;
}

// ---- The region's line of the table ----

constexpr std::size_t kColumns = 10;  ///< limit and rate of five brackets, in turn
constexpr std::array<std::size_t, kColumns> kPositions{3, 14, 19, 30, 35, 46, 51, 62, 67, 78};
constexpr std::size_t kLimitWidth = 11;
constexpr std::size_t kRateWidth = 5;

/// Region by which the surtax goes: that of the residence, else that of the work, which is then
/// kept.
std::string region_of_employee() {
    if (num(P592) == 0) {
        scrivi(P592, num(P120));
    }
    return zeri_a_sinistra(rifilato(P592), 2);
}

/// Cuts the region's line into the columns of the slip; false, and all blank, where the table has
/// none. The table ends at an empty line or at one that begins with "*".
bool take_columns(std::string_view region) {
    slip.regional_columns.fill({});
    for (const std::string& line : std::span(run_tables.PARAMETRI).subspan(1)) {
        if (rifila(line).empty() || line.front() == '*') {
            return false;
        }
        if (ritaglia(line, 1, 2) == region) {
            for (std::size_t i = 0; i < kColumns; ++i) {
                slip.regional_columns[i] =
                    ritaglia(line, kPositions[i], i % 2 == 0 ? kLimitWidth : kRateWidth);
            }
            return true;
        }
    }
    return false;
}

struct Bracket {
    double limit;
    double rate;
};

/// A closed table: a limit "*" before the base is reached, and the surtax is 0.
bool is_closed(std::size_t bracket) {
    return rifila(slip.regional_columns[2 * bracket]).starts_with('*');
}

Bracket bracket_of(std::size_t bracket) {
    return {valore(slip.regional_columns[2 * bracket]),
            valore(slip.regional_columns[2 * bracket + 1])};
}

// ---- Surtax on a base ----

/// A rate that the bracket up to the limit does not exceed; none where the rate is 0.
struct RateCeiling {
    double limit = 0;
    double rate = 0;
};

/// Sum by brackets; a line with fewer columns goes on with its last rate.
double by_brackets(double base, const RateCeiling& ceiling = {}) {
    double surtax = 0;
    Bracket former{0, 0};
    for (std::size_t i = 0; i < kColumns / 2; ++i) {
        if (is_closed(i)) {
            return 0;
        }
        Bracket bracket = bracket_of(i);
        if (bracket.limit == 0) {
            break;
        }
        if (ceiling.rate != 0 && bracket.limit == ceiling.limit) {
            bracket.rate = std::min(bracket.rate, ceiling.rate);
        }
        surtax += (std::min(base, bracket.limit) - former.limit) * bracket.rate / 100;
        if (base <= bracket.limit) {
            return surtax;
        }
        former = bracket;
    }
    return surtax + (base - former.limit) * former.rate / 100;
}

/// Rate of the band that holds the base; above the last band its rate.
double rate_of_band(double base) {
    constexpr double kCent = 0.01;
    Bracket former{0, 0};
    for (std::size_t i = 0; i < kColumns / 2; ++i) {
        if (is_closed(i)) {
            return 0;
        }
        const Bracket band = bracket_of(i);
        if (band.limit == 0) {
            break;
        }
        if (arrotonda(former.limit + kCent) <= base && base <= band.limit) {
            return band.rate;
        }
        former = band;
    }
    return former.rate;
}

double on_the_whole(double base) {
    return base * rate_of_band(base) / 100;
}

/// Just above 28000 the step of the rate would take more than the income grows.
double with_softened_step(double base, double limit) {
    constexpr double kWholeAgain = 28142.46;
    constexpr double kGivenBack = 0.9827;
    const double surtax = on_the_whole(base);
    return base > limit && base <= kWholeAgain ? surtax - (kWholeAgain - base) * kGivenBack
                                               : surtax;
}

// ---- Dependants ----

/// Does the dependant in the place have a share?
bool has_share(const DependantSlot& place) {
    return num(place.share) > 0;
}

/// Is the place that of a child with a share?
bool is_dependent_child(std::size_t place) {
    return has_share(kDependantSlots[place]) && child_in_slot(place);
}

/// Does the place count for a sum a dependant? One born in the year of the run brings nothing yet.
bool counts_as_dependant(std::size_t place) {
    return has_share(kDependantSlots[place]) && birth_in_slot(place) / 100 != period.year();
}

int places_of(bool (*counts)(std::size_t place)) {
    int number = 0;
    for (std::size_t place = 0; place < kSlotCount; ++place) {
        number += counts(place) ? 1 : 0;
    }
    return number;
}

// ---- Fixed rules ----

double before_reliefs(std::string_view region, double base) {
    const RegionalLaw* const law = law_of(region);
    if (law == nullptr) {
        return by_brackets(base);
    }
    switch (law->rule) {
        case Rule::whole:
            return on_the_whole(base);
        case Rule::exempt:
            return base <= law->limit ? 0 : by_brackets(base);
        case Rule::disabled:
            return num(P469) != 0 && base <= law->limit ? base * law->rate / 100
                                                        : by_brackets(base);
        case Rule::softened_step:
            return with_softened_step(base, law->limit);
        case Rule::few_children:
            return places_of(is_dependent_child) > 1 ? by_brackets(base)
                                                     : by_brackets(base, {law->limit, law->rate});
    }
    return 0;
}

// ---- Reliefs ----

/// Months of the year as a dependant, not before the month of the birth.
int months_as_dependant(std::size_t place) {
    const MonthSpan months = months_granted(place);
    const int birth = birth_in_slot(place);
    const int born = birth / 100 == period.year() ? birth % 100 : 1;
    return std::clamp(months.last - std::max(months.first, born) + 1, 0, 12);
}

/// A twelfth of the amount for each month and the employee's share of it.
double relief_by_months(double amount, bool (*counts)(std::size_t place)) {
    double relief = 0;
    for (std::size_t place = 0; place < kSlotCount; ++place) {
        if (counts(place)) {
            relief +=
                amount / 12 * months_as_dependant(place) * num(kDependantSlots[place].share) / 100;
        }
    }
    return relief;
}

double amount_of(const RegionalRelief& row) {
    switch (row.relief) {
        case Relief::fixed:
            return row.amount;
        case Relief::by_months:
            return relief_by_months(row.amount, counts_as_dependant);
        case Relief::by_place:
            return row.amount * places_of(counts_as_dependant);
        case Relief::children:
            return relief_by_months(row.amount, is_dependent_child);
    }
    return 0;
}

double relief_of(std::string_view region, double base) {
    double relief = 0;
    for (const RegionalRelief& row : kRegionalReliefs) {
        const bool holds = row.region == region && row.first_year <= period.year() &&
                           row.from <= base && base <= row.up_to;
        relief += holds ? amount_of(row) : 0;
    }
    return relief;
}

}  // namespace

double regional_surtax_on(double base) {
    const std::string region = region_of_employee();
    if (!take_columns(region)) {
        return 0;
    }
    const double cents = arrotonda(base);
    return std::max(0.0, before_reliefs(region, cents) - relief_of(region, cents));
}

void regional_surtax() {
    constexpr double kFlatTax = 2;  // P031
    const bool due =
        tax_state.ImponibileAddizionali > 0 && tax_state.ImpostaLorda > 0 && num(P031) != kFlatTax;
    if (!due) {
        return;
    }
    const double surtax = regional_surtax_on(tax_state.ImponibileAddizionali);
    scrivi(Q342, surtax - num(Q342) - num(Q505));
    if (leaves()) {
        aggiungi(P259, num(Q342));
    }
}

}  // namespace ModSWCALB
