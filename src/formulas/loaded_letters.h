#pragma once
// Where the letters loaded so far stand in TABELLACAMPI.

#include <cstdint>
#include <string_view>

namespace MXREPOSITORY {

/// Slot of a code in its letter's range: 17 for P017, 2048 for PA48.
[[nodiscard]] double slot_of(std::string_view code);

/// Base of a letter in the table; -1 for a letter that is not loaded.
[[nodiscard]] std::int32_t base_of(char letter);

/// Highest index that belongs to a loaded letter.
[[nodiscard]] std::int32_t last_index_of(char letter);

/// Last index of the table.
[[nodiscard]] std::int32_t highest_index();

}  // namespace MXREPOSITORY
