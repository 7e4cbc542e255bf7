#pragma once
// The end of every run that got past the start.

namespace ModSWCALM {

/// Closes archives and files, tells the operator, offers the lists, waits for Comando1; ends the
/// program by platform::EndOfProgram and so does not return. The status is 1 where the run fell
/// short of its selection, which the final message tells, else 0.
[[noreturn]] void FINEPROG();

}  // namespace ModSWCALM
