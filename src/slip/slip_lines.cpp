#include "slip/slip_lines.h"

#include <algorithm>
#include <array>
#include <string>

#include "context/period.h"
#include "context/utilities.h"
#include "formulas/formula.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/line_accumulators.h"
#include "slip/slip.h"
#include "slip/slip_table.h"
#include "slip/taxable_bases.h"
#include "slip/year_end_carry.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

bool mentions(const std::string& item, std::string_view text) {
    return item.find(text) != std::string::npos;
}

/// A yearly limit that an item may draw on: without it the item does not run, save the item that
/// sets it.
struct LimitedItem {
    Descriptor limit;
    std::string_view mention;
    std::string_view target;
};
constexpr std::array<LimitedItem, 3> kLimitedItems{
    {{P855, "P855", "=P855"}, {P953, "P953", "=P953"}, {P954, "P954", "=P954"}}};

bool waits_for_its_limit(const std::string& item) {
    return std::any_of(kLimitedItems.begin(), kLimitedItems.end(), [&](const LimitedItem& row) {
        return mentions(item, row.mention) && num(row.limit) <= 0 && !mentions(item, row.target);
    });
}

/// Z154 as the preparation of the item area gives it; 0 when the formula rules.
double evaluation_mode() {
    scrivi(Z154, 0.0);
    if (slip.line_mode > 0) {
        scrivi(Z154, slip.line_mode);
    }
    return num(Z154);
}

/// Amount of a line whose quantity and rate were worked out before: no formula.
void preset_amount(double mode) {
    scrivi(Z153, num(Z151) * num(Z152));
    if (mode == 1) {
        aggiungi(P242, num(Z153));
        return;
    }
    aggiungi(P243, num(Z153));
    if (mode == 2) {
        aggiungi(P238, num(Z151));
    } else if (mode == 3) {
        scrivi(P239, num(P233) + num(Z151));
    }
}

/// Items that date a yearly figure, or that set the social base outright.
void follow_formula_marks(const std::string& item) {
    constexpr std::array<std::string_view, 3> kDatedTargets{"=Q711", "=Q712", "=Q713"};
    if (std::any_of(kDatedTargets.begin(), kDatedTargets.end(),
                    [&](std::string_view target) { return mentions(item, target); })) {
        scrivi(Q743, period.month_year());
    }
    if (mentions(item, "=P240")) {
        slip.IMPSOCIALE1 = slip.IMPSOCIALE2 = slip.IMPSOCIALE3 = num(Z153);
        slip.wage_in_cents = slip.IMPSOCIALE1;
        scrivi(P240, slip.IMPSOCIALE1);
    }
}

void evaluate_line(const std::string& line, int code) {
    if (!read_item(code)) {
        return;
    }
    const std::string item = area(Area::FOTX);
    if (waits_for_its_limit(item)) {
        return;
    }
    if (num(Z048) == 1) {
        slip.note_item = zeri_a_sinistra(std::to_string(code), 3);
        return;
    }
    load_line_into_item(line);
    const double mode = evaluation_mode();
    if (mode > 0) {
        preset_amount(mode);
    } else {
        DECFORM(kTrue);
    }
    if (num(Z029) == 1) {
        scrivi(Z152, num(Z151) == 0 ? 0 : num(Z153) / num(Z151));
    }
    follow_formula_marks(item);
    year_end_carry();
    write_line_back(line);
    slip.IMPORTOVOCE = num(Z153);
    AGGIMPFISCSOC();
    add_to_totals(slip.IMPORTOVOCE);
    add_to_severance(slip.IMPORTOVOCE);
}

}  // namespace

void evaluate_lines() {
    slip.piece = kFirstPiece;
    slip.position = 1;
    slip.last_line = false;
    slip.carry_opened = false;
    while (slip.piece <= kLastPiece) {
        const std::string line(current_line());
        const int code = line_code(line);
        if (code == 0 || ritaglia(line, 2, 3) == kEndOfTable) {
            return;
        }
        evaluate_line(line, code);
        advance();
        look_ahead();
    }
}

}  // namespace ModSWCALM
