#pragma once
// The public-sector declaration NZINPD<year>.MDB.

#include <string>
#include <vector>

#include "platform/database.h"

namespace NZRetMesINPDAP {

/// The archive of the run's own year: lives from start-up to the end of the run.
struct Quadri {
    std::string path;  ///< empty until the name has been prepared
};
extern Quadri quadri;

/// The tables of a year's declaration.
[[nodiscard]] std::vector<platform::Table> quadri_schema();
/// Name of the archive of a year ("2024", always four digits), with its path.
[[nodiscard]] std::string archive_name(const std::string& year);
/// Name of the archive of the period's year.
void prepare_name();
/// Does the archive whose name has been prepared exist?
[[nodiscard]] bool archive_exists();
void open_archive();
void close_archive();
void update_declaration();

}  // namespace NZRetMesINPDAP
