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
#include "slip/taxable_bases.h"

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

struct Change {
    double amount = 0;
    double taxable = 0;
};

/// What the line in FOTX$ lets into the taxable amount.
double taxable_of(const std::string& line) {
    load_line_into_item(line);
    scrivi(Z153, line_amount(line));
    return taxable_part();
}

/// Gives every line of the code the quantity of the item in FOTX$; the change of their amounts, and
/// of what their fiscal class lets into the taxable amount. Premiums and tips of the slip follow.
Change rewrite_lines_of(int code) {
    Change change;
    const double quantity = num(Z151);
    walk_lines([&](int number, int line_item, const std::string& line) {
        if (line_item == code) {
            const double taxable_before = taxable_of(line);
            scrivi(Z151, quantity);
            const std::string rewritten = line_from_item(line);
            const double grown = line_amount(rewritten) - line_amount(line);
            change.amount += grown;
            change.taxable += taxable_of(rewritten) - taxable_before;
            set_aside(grown);
            set_slip_line(number, rewritten);
        }
        return true;
    });
    return change;
}

}  // namespace

void recompute_percentage_items() {
    walk_lines([](int, int code, const std::string& line) {
        if (!is_percentage_on_base()) {
            return true;
        }
        const bool joins_Q100 = num(Z026) == 1;
        const double former_Q100 = num(Q100);
        load_line_into_item(line);
        DECFORM(kTrue);
        const Change change = rewrite_lines_of(code);
        if (joins_Q100) {
            scrivi(Q100,
                   former_Q100 + change.amount);  // the formula has added the whole amount again
        }
        if (num(P031) != 0) {  // without income tax there is no taxable amount
            aggiungi(P256, change.taxable);
        }
        return true;
    });
}

}  // namespace ModSWCALM
