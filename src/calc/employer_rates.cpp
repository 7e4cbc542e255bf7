#include "calc/employer_rates.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "records/dictionary/DIPX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

namespace {

struct GroupRate {
    std::string_view group;
    int rate_class;
    Descriptor percent;
};
constexpr std::array kGroupRates{GroupRate{"37", 2, S268}, GroupRate{"37", 3, S269},
                                 GroupRate{"37", 4, S270}, GroupRate{"38", 2, S333},
                                 GroupRate{"38", 3, S334}, GroupRate{"38", 4, S335}};

}  // namespace

std::optional<double> group_percentage() {
    const std::string group = rifilato(P594);
    const double rate_class = num(P593);
    const auto row = std::ranges::find_if(kGroupRates, [&](const GroupRate& rate) {
        return rate.group == group && rate.rate_class == rate_class;
    });
    if (row == kGroupRates.end()) {
        return std::nullopt;
    }
    return num(row->percent) + num(S304) + num(S340);
}

}  // namespace ModSWCALM
