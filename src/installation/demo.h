#pragma once
// The demo installation, made from the text files under demo/:
//   base.yaml        yearly tables, company, sector
//   contratti.yaml   collective agreements
//   voci.yaml        pay items with their formulas
//   ordinario.yaml   the ordinary employee: what the others, and scenarios, do not name
//   dipendenti.yaml  the employees of the demo

#include <string>

#include "installation/installation.h"

namespace nzutil {

/// Directory of this program's executable.
[[nodiscard]] std::string program_directory();

/// Where the demo's data stand: `demo` beside the program or its parent, else the sources'.
[[nodiscard]] std::string demo_directory();

/// Tables, company and the ordinary employee in record 1: what a scenario starts from.
[[nodiscard]] Installation make_base_installation(const std::string& directory);

/// The demo: the base with its employees and their slips.
[[nodiscard]] Installation make_demo_installation(const std::string& directory);

}  // namespace nzutil
