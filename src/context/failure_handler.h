#pragma once
// The one way of dealing with run-time failures.

#include <functional>
#include <string>

#include "platform/failure.h"

namespace MXLIBRERIA {

/// Shows number, description and the last ten procedures, asks for the restore of the task, closes
/// all files. Returns the exit status of the program (1). Called once, at the top. A failure inside
/// it ends the process with the same status.
int GESTIONEERRORE(const platform::Failure& failure);

/// Prints one line. A printer failure (482) asks the operator to retry; on No, whether to close
/// the program; if it goes on, the line is lost. Ends the program by EndOfProgram(1) otherwise.
void stampa_riga(const std::string& line);
/// The same for any statement that works the printer (opening a document, ending it).
void con_stampante(const std::function<void()>& statement);

/// What the handler and the end of the program run to close files (the file floor registers here).
void set_close_all_files(std::function<void()> close_all);
void close_all_files();

}  // namespace MXLIBRERIA
