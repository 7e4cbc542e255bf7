#pragma once
// Municipalities of the surtax: from a text to TABCOM.MDB.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "installation/installation.h"
#include "platform/database.h"

namespace nzutil {

/// A row of the table CATASTO: its columns with their values, CHIAVE among them. Columns that are
/// not named are Null.
struct Municipality {
    std::vector<std::pair<std::string, platform::Value>> columns;

    [[nodiscard]] std::string code() const;
};

/// The column of the table CATASTO, as it is spelt there; empty where the table has none of that
/// name.
[[nodiscard]] std::string municipal_column(std::string_view name);
/// The typed value of a column: a number for limits and rates, a point or a comma before its
/// decimals; empty is Null. ToolError says what was expected.
[[nodiscard]] platform::Value municipal_value(const std::string& column, const std::string& typed);

/// Reads a CSV: UTF-8, the names of the columns in its first line, `;` or `,` between them.
/// ToolError names file and line.
[[nodiscard]] std::vector<Municipality> read_municipalities(const std::string& csv);

/// Writes the municipalities to TABCOM.MDB of an archive directory, all or none of them; makes the
/// archive where it is missing. A code that is there already gets the new row in its place.
void write_municipalities(const std::string& archive_directory,
                          const std::vector<Municipality>& municipalities);

/// The municipalities that come with the demo.
[[nodiscard]] std::vector<Municipality> demo_municipalities();

}  // namespace nzutil
