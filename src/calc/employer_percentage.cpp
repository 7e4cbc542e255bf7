// The employer's contribution percentage of the employee.

#include <algorithm>
#include <array>
#include <string>

#include "calc/employer_rates.h"
#include "calc/remaining.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

namespace {

/// Total rate of P410 = 5 by the insurance P040, the second one with P316 = 1.
struct TotalRate {
    double insurance;
    Descriptor first;
    Descriptor second;
};
constexpr std::array kTotalRates{TotalRate{1, S024, S027}, TotalRate{3, S013, S016}};

/// P040 0: the total less the employee's share, unless item 7 is in force.
double ordinary_percentage() {
    if (num(P187) != 0) {
        return num(S043);
    }
    return num(S043) - num(num(S007) != 0 ? S007 : S003);
}

/// P040 1 and 3.
double percentage_of_other_insurance() {
    if (rifilato(P410) != "5") {
        return group_percentage().value_or(0);
    }
    const auto row = std::ranges::find(kTotalRates, num(P040), &TotalRate::insurance);
    return num(num(P316) == 1 ? row->second : row->first) - num(S003);
}

double percentage_by_insurance() {
    const double insurance = num(P040);
    if (insurance == 0) {
        return ordinary_percentage();
    }
    if (insurance == 2) {
        return num(S035) - num(S003);
    }
    return insurance == 1 || insurance == 3 ? percentage_of_other_insurance() : 0;
}

}  // namespace

void employer_percentage() {
    employer_percentages.PCTDATORE = std::max(0.0, arrotonda(percentage_by_insurance()));
}

void second_employer_percentage() {
    const std::string code = rifilato(P537);
    const bool halved = code == "55" || code == "82";
    employer_percentages.PCTDATORE2 = employer_percentages.PCTDATORE / (halved ? 2 : 1);
}

}  // namespace ModSWCALM
