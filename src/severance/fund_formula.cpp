#include "severance/fund_formula.h"

#include <string>
#include <string_view>

#include "formulas/formula.h"
#include "formulas/formula_cells.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;

namespace {

constexpr std::string_view kLastCell = ".";
constexpr std::int16_t kPostEverything = -1;

/// The cells up to the lone point, each in its width.
std::string cells_of(std::span<const Descriptor> cells) {
    std::string formula;
    for (const Descriptor& cell : cells) {
        const std::string text = a_sinistra(testo(cell), kCellWidth);
        if (rifila(text) == kLastCell) {
            break;
        }
        formula += text;
    }
    return formula;
}

/// An empty item with this formula.
std::string item_with(std::string_view formula) {
    constexpr std::size_t kItemLength = 1500;
    std::string item(kItemLength, ' ');
    item.replace(static_cast<std::size_t>(Z051.offset) - 1, formula.size(), formula);
    return item;
}

}  // namespace

double fund_formula(std::span<const Descriptor> cells) {
    const bool paid_by_month = num(P050) == 1;
    const std::string_view target = paid_by_month ? "=CU" : "=OG";
    area(Area::FOTX) = item_with(cells_of(cells) + a_sinistra(target, kCellWidth) +
                                 a_sinistra(kLastCell, kCellWidth));
    DECFORM(kPostEverything);
    return num(paid_by_month ? Z152 : Z151);
}

}  // namespace ModSwCalm2
