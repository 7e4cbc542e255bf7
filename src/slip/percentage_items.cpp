#include "slip/percentage_items.h"

#include <string>

#include "context/utilities.h"
#include "formulas/formula.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/item_formula.h"
#include "slip/slip.h"
#include "slip/slip_table.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

/// ".P240", then "%..." and "=OG..." in the next two cells or after one cell between. A note is
/// never worked out.
bool is_percentage_on_base() {
    if (num(Z048) == 1 || num(Z011) != 2 || num(Z017) != 1 || num(Z016) != 0) {
        return false;
    }
    const auto pair_at = [](int n) {
        return n + 1 <= kFormulaCells && formula_cell(n).starts_with('%') &&
               formula_cell(n + 1).starts_with("=OG");
    };
    for (int n = 1; n + 2 <= kFormulaCells; ++n) {
        if (formula_cell(n) == ".P240" && (pair_at(n + 1) || pair_at(n + 2))) {
            return true;
        }
    }
    return false;
}

/// Gives every line of the code the quantity of the item in FOTX$; the change of their amounts.
double rewrite_lines_of(int code) {
    double change = 0;
    const double quantity = num(Z151);
    walk_lines([&](int number, int line_item, const std::string& line) {
        if (line_item == code) {
            load_line_into_item(line);
            scrivi(Z151, quantity);
            const std::string rewritten = line_from_item(line);
            change += line_amount(rewritten) - line_amount(line);
            set_slip_line(number, rewritten);
        }
        return true;
    });
    return change;
}

}  // namespace

void recompute_percentage_items() {
    constexpr double kTakenOff = 2;
    walk_lines([](int, int code, const std::string& line) {
        if (!is_percentage_on_base()) {
            return true;
        }
        const double fiscal_class = num(Z013);
        const bool joins_Q100 = num(Z026) == 1;
        const double former_Q100 = num(Q100);
        load_line_into_item(line);
        DECFORM(kTrue);
        const double change = rewrite_lines_of(code);
        if (joins_Q100) {
            scrivi(Q100, former_Q100 + change);  // the formula has added the whole amount again
        }
        if (fiscal_class != 0) {
            aggiungi(P256, fiscal_class == kTakenOff ? -change : change);
        }
        return true;
    });
}

}  // namespace ModSWCALM
