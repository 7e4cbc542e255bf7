#pragma once
// A run that was killed may have left a step of records half written. The tool finishes it as the
// next run would, so that nobody reads a torn record, and no record that the tool writes is
// overwritten by an older one later.

#include <string>

#include "installation/installation.h"

namespace nzutil {

/// The installation of a command. What a killed run left is finished first, and told on standard
/// error; not while a run is going on, and not where the archive is only to be read.
[[nodiscard]] Installation open_installation(const std::string& directory);

/// The same for an installation whose lock is held.
void finish_killed_run(const Installation& installation);

}  // namespace nzutil
