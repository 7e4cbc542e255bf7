#pragma once
// The cells of a pay item's formula: an operator and an operand of ten characters each, up to the
// cell of a lone point.

#include <cstddef>
#include <string>
#include <string_view>

#include "records/dictionary/FOTX.h"
#include "records/numbers.h"

namespace MXREPOSITORY {

inline constexpr int kCells = 100;
inline constexpr std::size_t kCellWidth = 11;
inline constexpr std::size_t kFormulaWidth = kCells * kCellWidth;

/// Calls `use` with each cell of the item's formula, in order.
template <typename Use>
void for_each_cell(const std::string& item, const Use& use) {
    constexpr std::string_view kLastCell = ".          ";
    const std::string formula = a_sinistra(
        ritaglia(item, static_cast<std::size_t>(Z051.offset), kFormulaWidth), kFormulaWidth);
    for (int cell = 0; cell < kCells; ++cell) {
        const std::string_view here = std::string_view(formula).substr(
            static_cast<std::size_t>(cell) * kCellWidth, kCellWidth);
        if (cell > 0 && here == kLastCell) {
            return;
        }
        use(here);
    }
}

}  // namespace MXREPOSITORY
