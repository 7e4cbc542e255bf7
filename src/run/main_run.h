#pragma once
// MAIN: from the start of the program to the second walk.

namespace ModSWCALM {

/// The whole run. Ends through platform::EndOfProgram.
void MAIN();

}  // namespace ModSWCALM
