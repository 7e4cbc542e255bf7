#pragma once
// The tables of the monthly wage archive as data: their columns, and what stands in each while
// nothing does.

#include <span>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace NZRetMes {

enum class ColumnKind { text, number };

/// Columns of a table that have the same empty value: of numbers 0, of texts `value`.
struct EmptyColumns {
    ColumnKind kind;
    std::string_view value;
    std::string_view columns;  ///< "1-6, 8": numbers behind the table's prefix
};
struct StoreTable {
    std::string_view name;
    std::string_view prefix;  ///< of the columns: "DIP_"
    std::span<const EmptyColumns> empty;
};

/// DIPRETMEN, DIPRETMEN2 and DIPRETMEN3; the last one stands in an archive of its own.
[[nodiscard]] std::span<const StoreTable> store_tables();
/// The numbers of a list of columns, in its order.
[[nodiscard]] std::vector<int> column_numbers(std::string_view list);
/// The table as it stands in the archive. The engine numbers the rows of the first one (KSEQ); the
/// others take its number.
[[nodiscard]] platform::Table store_schema(const StoreTable& table);
/// Table RELEASE, of one row.
[[nodiscard]] platform::Table release_schema();

}  // namespace NZRetMes
