#pragma once
// The formula of a pay item: 100 cells of an operator and a 10-character operand.

#include <array>
#include <cstdint>
#include <string>

namespace MXREPOSITORY {

/// Registers of the formulas, entries 1 to 10; cleared at the start of each employee.
struct FormulaRegisters {
    std::array<std::string, 11> MEM;
    std::array<std::string, 11> TMP;
};
extern FormulaRegisters formula_registers;

/// Evaluates the formula of the item in FOTX$: Z151 quantity, Z152 unit value, Z153 amount.
/// `write` -1 posts everything, other than 0 lets fields be stored, 0 changes no field of the
/// employee.
void DECFORM(std::int16_t write);

}  // namespace MXREPOSITORY
