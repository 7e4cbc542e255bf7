#pragma once
// MAIN: from the start of the program to the second walk.

namespace ModSWCALM {

/// The whole run. Ends through platform::EndOfProgram.
void MAIN();

/// Puts the deductions for children of the period's year into the yearly table (the area only).
void correct_dated_parameters();
/// Revaluation percentage of the severance fund for the period, from the table's F021.
[[nodiscard]] double revaluation_of_period(double F021);

}  // namespace ModSWCALM
