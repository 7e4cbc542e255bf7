#pragma once
// Where the run finds its files, and for whom it runs.

#include <string>

namespace MXLIBRERIA {

/// Environment of the run: lives from CARICAAMBIENTE to the end.
struct Environment {
    std::string archive_directory;      ///< PERCORSOARCHIVI
    std::string programs_directory;     ///< PERCORSOPROGRAMMI
    std::string task = "01";            ///< 2 characters, placeholder "$$" of the file names
    std::string installation_name;      ///< file 395, positions 1-30, upper case, trimmed
    std::string installation_tax_code;  ///< file 395, positions 31-41
    std::string installation_record;    ///< record 1 of file 55
};
extern Environment environment;

/// Path of a file of the archive directory: archive_path("\\NZRETMEN.MDB").
[[nodiscard]] std::string archive_path(const std::string& name);

}  // namespace MXLIBRERIA
