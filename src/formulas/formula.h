#pragma once
// The formula of a pay item: 100 cells of an operator and a 10-character operand, Z051 to Z150.
//
// Operators work on one accumulator: '.' begins anew, '+' '-' '*', '%' percentage of the operand,
// '<' the smaller, '>' the greater, '=' stores, any other divides. Operands: registers MEM0-MEM9
// and TMP0-TMP9, fields P, Q and F by name, #1 to #4 (pay, pay with seniority months, hourly and
// daily value), CU unit value, OG quantity, IM amount, or a number. Targets: CU, OG, IM, MEM, TMP
// and the fields P, Q, T. A cell "." with a blank operand ends the formula.

#include <array>
#include <cstdint>
#include <string>

namespace MXREPOSITORY {

/// Registers of the formulas, entries 1 to 10 (digit + 1); cleared at the start of each employee.
struct FormulaRegisters {
    std::array<std::string, 11> MEM;
    std::array<std::string, 11> TMP;
};
extern FormulaRegisters formula_registers;

/// Evaluates the formula of the item in FOTX$: Z151 quantity, Z152 unit value, and Z153 amount,
/// which always ends as quantity times unit value (whole units with Z029 = 1; added to Q100 with
/// Z026 = 1). `write` -1 posts everything, other than 0 lets fields be stored, 0 changes no field
/// of the employee. A target that is none shows its box and the formula goes on; a division by 0
/// leaves the accumulator; a result that no number holds is failure 6.
void DECFORM(std::int16_t write);

}  // namespace MXREPOSITORY
