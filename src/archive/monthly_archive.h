#pragma once
// The monthly wage archive NZRETMEN.MDB.

namespace NZRetMes {

/// Prepares the tables' handling at start-up.
void prepare_tables();
void open_archive();
void close_archive();
/// Replaces the rows of the employee's month.
void AGGIORNA_RETRIBUZIONI_MENSILI_INPS();

}  // namespace NZRetMes
