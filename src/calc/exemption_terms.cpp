#include "calc/exemption_terms.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip_table.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;

namespace {

/// Years of exemption of a code, for hirings from a year on.
struct Term {
    char code;
    int years;
    int first_hire_year;
};

constexpr int kFirstHireYear = 2016;
constexpr std::array kTerms{
    Term{'3', 3, kFirstHireYear}, Term{'4', 3, kFirstHireYear}, Term{'6', 3, kFirstHireYear},
    Term{'5', 1, kFirstHireYear}, Term{'8', 1, kFirstHireYear}, Term{'9', 1, kFirstHireYear},
    Term{'A', 1, kFirstHireYear}, Term{'7', 2, kFirstHireYear}, Term{'B', 2, 2019}};
constexpr Term kOtherTerm{' ', 2, kFirstHireYear};

constexpr int kMonthsInYear = 12;
constexpr int kMiddleOfMonth = 15;
constexpr int kMostMonths = 36;

bool is_date(const Date& date) {
    return date.day >= 1 && date.day <= 31 && date.month >= 1 && date.month <= kMonthsInYear &&
           date.year >= 1900;
}

/// A yearly cap, and the token by which an item names it as its target.
struct Cap {
    Descriptor field;
    std::string_view token;
    bool found = false;
};

}  // namespace

Date exemption_start() {
    return Date::of(testo(num(P939) != 0 ? P939 : P013));
}

std::string exemption_expiry(char code, const Date& start) {
    const auto row = std::find_if(kTerms.begin(), kTerms.end(),
                                  [code](const Term& term) { return term.code == code; });
    const Term& term = row == kTerms.end() ? kOtherTerm : *row;
    if (start.year < term.first_hire_year) {
        return "000000";
    }
    return zeri_a_sinistra(testo_numero(start.yyyymm() + 100 * term.years), 6);
}

bool exemption_is_over() {
    const std::string code = testo(P916);
    if (code.empty() || code == "0") {
        return false;
    }
    return exemption_expiry(code.front(), exemption_start()) <=
           period.year_text() + period.month_text();
}

int exemption_months(const Date& start, const Date& end) {
    if (!is_date(start) || !is_date(end)) {
        return 0;
    }
    const int between = (end.year - start.year) * kMonthsInYear + end.month - start.month;
    int months = start.yyyymmdd() < end.yyyymmdd() ? between + 1 : between - 1;
    months -= start.day > kMiddleOfMonth ? 1 : 0;
    months -= end.day < kMiddleOfMonth ? 1 : 0;
    return std::min(months, kMostMonths);
}

int months_of_exemption() {
    const Date start = Date::of(testo(P013));
    const Date leaving = Date::of(testo(P017));
    const bool leaves_this_year = leaving.given() && leaving.year == period.year();
    return exemption_months(start, leaves_this_year ? leaving : Date::of(period.date()));
}

void take_caps_from_items() {
    azzera({P854, P855, P953, P954});
    std::array caps{Cap{P855, "=P855"}, Cap{P953, "=P953"}, Cap{P954, "=P954"}};
    walk_lines([&](int /*number*/, int /*code*/, const std::string& line) {
        for (Cap& cap : caps) {
            if (!cap.found && area(Area::FOTX).find(cap.token) != std::string::npos) {
                scrivi(cap.field, valore(ritaglia(line, 5, 13)) / 100);
                cap.found = true;
            }
        }
        return !std::all_of(caps.begin(), caps.end(), [](const Cap& cap) { return cap.found; });
    });
}

}  // namespace ModSWCALM
