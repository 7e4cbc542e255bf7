#pragma once
// The formulas of a pension fund: up to thirteen cells of an operator and an operand, as those of a
// pay item, ended by a lone point.

#include <span>

#include "records/descriptor.h"

namespace ModSwCalm2 {

/// The wage in euro that a formula gives, for a percentage to be taken of it: with P050 1 as a unit
/// value (five decimals), else as a quantity (two). It uses the item area FOTX$. What the formula
/// stores in fields of the employee is stored; a target that is none shows its box.
[[nodiscard]] double fund_formula(std::span<const MXREPOSITORY::Descriptor> cells);

}  // namespace ModSwCalm2
