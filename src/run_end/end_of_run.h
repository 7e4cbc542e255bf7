#pragma once
// The end of every run that got past the start.

namespace ModSWCALM {

/// Closes archives and files, tells the operator, offers the lists, waits for Comando1; ends the
/// program by platform::EndOfProgram(0) and so does not return.
[[noreturn]] void FINEPROG();

}  // namespace ModSWCALM
