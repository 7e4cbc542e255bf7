#pragma once
// The municipal rates TABCOM.MDB, table CATASTO: opened at start-up, closed at the end of the run.

namespace ModSWCALB {

/// Opens the table; called only where the file exists.
void TABCOM();
void close_TABCOM();

}  // namespace ModSWCALB
