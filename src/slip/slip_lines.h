#pragma once
// The evaluation of the slip's lines.

namespace ModSWCALM {

/// Evaluates all lines in order, with bases and accumulators.
void evaluate_lines();

}  // namespace ModSWCALM
