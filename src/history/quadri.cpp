#include "history/quadri.h"

#include "context/environment.h"
#include "context/period.h"
#include "context/utilities.h"

namespace NZRetMesINPDAP {

using MXLIBRERIA::ESISTEFILE;
using MXLIBRERIA::kTrue;

Quadri quadri;

std::string archive_name(const std::string& year) {
    return MXLIBRERIA::archive_path("\\NZINPD" + year + ".MDB");
}

void prepare_name() {
    quadri.path = archive_name(MXLIBRERIA::period.year_text());
}

bool archive_exists() {
    return !quadri.path.empty() && ESISTEFILE(quadri.path) == kTrue;
}

// Filled when the room of the public-sector quadri is built; each does nothing yet.

void open_archive() {}

void close_archive() {}

void update_declaration() {}

}  // namespace NZRetMesINPDAP
