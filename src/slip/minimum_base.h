#pragma once
// The minimum wage on which contributions are due.

namespace ModSWCALM {

/// Minimum base of the month, what is held against it, and the minimum of a part-timer's hours,
/// into the slip's state.
void take_minimum_base();

}  // namespace ModSWCALM
