#include "slip/item_formula.h"

#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

namespace {

constexpr std::size_t kCellWidth = 11;

}  // namespace

std::string formula_cell(int n) {
    const auto first = static_cast<std::size_t>(Z051.offset);
    return rifila(ritaglia(area(Area::FOTX), first + static_cast<std::size_t>(n - 1) * kCellWidth,
                           kCellWidth));
}

bool formula_reads(std::string_view field) {
    if (area(Area::FOTX).find(field) == std::string::npos) {
        return false;
    }
    for (int n = 1; n <= kFormulaCells; ++n) {
        const std::string cell = formula_cell(n);
        if (!cell.empty() && cell.front() != '=' &&
            rifila(ritaglia(cell, 2, kCellWidth)).starts_with(field)) {
            return true;
        }
    }
    return false;
}

}  // namespace ModSWCALM
