// Municipal surtax: exemption, bands and brackets of the municipality, the advance that has paid
// part of it, and the line of the control list.

#include <algorithm>
#include <string>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/income_tax.h"
#include "tax/municipal_table.h"
#include "tax/surtaxes.h"
#include "tax/surtaxes_parts.h"
#include "texts/texts.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using MXLIBRERIA::period;

namespace {

/// How the rate was chosen, for the control list.
enum class Method { table_rate, brackets, employee_rate };

struct Choice {
    Method method = Method::employee_rate;
    bool marked = false;     ///< no such municipality, or none with a rate of its own
    double by_brackets = 0;  ///< surtax of the bracket form
};

// ---- Municipality and base ----

std::string municipality() {
    const std::string replacing = rifilato(P961);
    if (replacing.empty()) {
        svuota(P961);
    }
    return replacing.empty() ? rifilato(P591) : replacing;
}

/// Nothing is due without income tax, under the flat tax, and for those who are only in the books.
double municipal_base() {
    constexpr double kFlatTax = 2;  // P031
    if (num(P031) == kFlatTax || num(P768) != 0 || tax_state.ImpostaLorda <= 0) {
        return 0;
    }
    return std::max(0.0, arrotonda(tax_state.ImponibileAddizionali));
}

// ---- Rate ----

/// The band that holds the base sets the rate, and its lower limit, where it has one, the part that
/// stays free. A limit of 0 ends the walk with the band before it.
void walk_bands(const MunicipalRates& rates, double base) {
    double lower = 0;
    for (std::size_t i = 0; i < kMunicipalBands && rates.bands[i].limit != 0; ++i) {
        const MunicipalRates::Band& band = rates.bands[i];
        scrivi(Q902, band.rate);
        scrivi(Q787, lower);
        if (base <= band.limit) {
            return;
        }
        lower = band.limit;
    }
}

/// Part of the base inside each band at its rate; what lies above the last one goes at its rate.
double sum_of_brackets(const MunicipalRates& rates, double base) {
    double sum = 0;
    double lower = 0;
    double rate = 0;
    for (std::size_t i = 0; i < kMunicipalBands && rates.bands[i].limit != 0 && base > lower; ++i) {
        rate = rates.bands[i].rate;
        sum += (std::min(base, rates.bands[i].limit) - lower) * rate / 100;
        lower = rates.bands[i].limit;
    }
    sum += std::max(0.0, base - lower) * rate / 100;
    return std::max(0.0, sum);
}

Choice choose_rate(const std::optional<MunicipalRates>& rates, double base) {
    if (!rates) {
        const bool looked_for = municipal_table.rows != nullptr;
        return {.method = Method::employee_rate, .marked = looked_for};
    }
    if (rates->kind != kByBrackets) {
        walk_bands(*rates, base);
    }
    if (num(Q902) != 0) {
        return {.method = Method::table_rate};
    }
    azzera({Q787});
    if (rates->kind == kNoRateOfItsOwn) {
        return {.method = Method::employee_rate, .marked = true};
    }
    return {.method = Method::brackets, .by_brackets = sum_of_brackets(*rates, base)};
}

/// Surtax of the year less what earlier slips and another employer have taken, not below 0.
double amount_due(const Choice& choice, double base) {
    double surtax = choice.by_brackets;
    if (choice.method != Method::brackets) {
        const double rate = num(Q902) != 0 ? num(Q902) : num(Q319);
        surtax = std::max(0.0, base - num(Q787)) * rate / 100;
    }
    return std::max(0.0, arrotonda(surtax - num(Q343) - num(Q506)));
}

// ---- Advance ----

/// What has been withheld of the advance and not been given back yet.
double advance_held() {
    const bool given_back = leaves() && num(Q674) == 0;
    return given_back ? 0 : num(Q678) + num(Q675);
}

/// No surtax is due: the advance comes back. Who stays gets it in January.
void give_advance_back() {
    scrivi(Q343, -advance_held());
    if (leaves()) {
        azzera({Q674});
        aggiungi(P241, -num(Q343));
    }
}

/// The advance has paid part of the amount. One that is higher is given up as a whole: what was
/// withheld goes back, to a leaver now, to others in the balance that the next year begins with.
void set_off_advance(double amount) {
    constexpr int kFirstMonthOfAdvance = 3;
    const bool overpaid = num(Q674) > amount;
    if (period.month() < kFirstMonthOfAdvance) {
        scrivi(Q343, amount);
    } else if (overpaid) {
        scrivi(Q343, amount);
        if (leaves()) {
            aggiungi(P241, advance_held());
        }
        azzera({Q674});
    } else {
        scrivi(Q343, amount - num(Q674));
    }
    if (leaves()) {
        aggiungi(P259, num(Q343));
    }
}

// ---- Control list ----

/// A rate with the decimals it has, two at least.
std::string rate_text(double rate) {
    constexpr int kDecimals = 5;
    std::string text = arrotondato_testo(rate, kDecimals);
    const std::size_t two_decimals = text.find('.') + 3;
    while (text.size() > two_decimals && text.back() == '0') {
        text.pop_back();
    }
    return text;
}

std::string method_text(const Choice& choice) {
    switch (choice.method) {
        case Method::table_rate:
            return texts::kMunicipalTableRate.bytes() + rate_text(num(Q902)) +
                   texts::kMunicipalByBands.bytes();
        case Method::brackets:
            return texts::kMunicipalByBrackets.bytes();
        case Method::employee_rate:
            break;
    }
    return texts::kMunicipalEmployeeRate.bytes() + rate_text(num(Q319));
}

/// One line for each employee whose surtax has a rate, a calculation type or a mark, also where no
/// surtax is due. The list ends with its 999th line.
void list_line(const Choice& choice, const std::string& code) {
    const bool in_play = num(Q901) != 0 || choice.marked || choice.method == Method::brackets ||
                         num(Q902) != 0 || num(Q319) != 0;
    const auto next = static_cast<std::size_t>(run_tables.list_1000_count + 1);
    if (!in_play || next >= run_tables.list_1000.size()) {
        return;
    }
    run_tables.list_1000_count += 1;
    run_tables.list_1000[next] =
        testo(P001) + " " + rifilato(P002) + " " + rifilato(P003) + texts::kMunicipalType.bytes() +
        testo_numero(num(Q901)) + texts::kMunicipalCode.bytes() + code +
        (choice.marked ? texts::kMunicipalMark.bytes() : "") + method_text(choice);
}

}  // namespace

void municipal_surtax() {
    constexpr double kBackToTable = 3;  // Q901
    const std::string code = municipality();
    if (num(Q901) == kBackToTable) {
        azzera({Q901});
    }
    azzera({Q902, Q787});
    const double base = municipal_base();
    Choice choice;
    if (num(Q901) == 0) {
        if (base != 0) {
            azzera({Q318});
        }
        const std::optional<MunicipalRates> rates = municipal_rates(code);
        if (rates && rates->exempt_up_to != 0 && rates->exempt_up_to >= base) {
            scrivi(Q787, rates->exempt_up_to);
            give_advance_back();
            return;
        }
        choice = choose_rate(rates, base);
    }
    if (base == 0) {
        give_advance_back();
    } else {
        set_off_advance(amount_due(choice, base));
    }
    list_line(choice, code);
}

}  // namespace ModSWCALB
