#pragma once
// Tables of law that have a text a year, demo/anni/YEAR.yaml: price indexes, limits of
// contributions and deductions, minimum wage, rates, brackets of income tax.

#include <vector>

#include "installation/description.h"

namespace nzutil {

/// Years that have such a file, in order.
[[nodiscard]] std::vector<int> years_with_tables();

/// What the file of a year says. ToolError if there is none or it says anything but tables.
[[nodiscard]] Description year_tables(int year);

}  // namespace nzutil
