#pragma once
// The logical files of an installation that we make: names and record lengths of our own choosing.
// The batch itself learns both from NZBASE.DAT, and works with any other choice as well.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "files/file_numbers.h"
#include "records/descriptor.h"

namespace nzutil {

/// How a new file stands on disk.
enum class Content {
    records,  ///< fixed records, at first none
    index,    ///< three-level index, at first empty
    text,     ///< lines
    lock,     ///< the semaphore
};

/// One logical file of our installation.
struct FileLayout {
    int number;
    std::string_view name;
    int length;  ///< of a record, in bytes
    Content content = Content::records;
    MXREPOSITORY::Area area =
        MXREPOSITORY::Area::unknown;  ///< area whose fields lie in its records
};

using namespace MXLIBRERIA::file_numbers;

/// Length of a key P001, and of a block of an index over it: (10 + 7) x 128.
inline constexpr int kEmployeeKey = 10;
/// Key of the history.
inline constexpr int kHistoryKey = 20;
[[nodiscard]] constexpr int index_block(int key_length) {
    return (key_length + 7) * 128;
}

/// Grades that a contract record of ours holds: groups of 290 characters from position 101.
inline constexpr int kGrades = 20;

/// All files that have a content here, by number. The other numbers up to 600 have a name each and
/// no file.
[[nodiscard]] std::span<const FileLayout> file_layouts();
/// Layout of a number, or nullptr.
[[nodiscard]] const FileLayout* find_layout(int number);

/// A record without content: blanks, and zeros in every numeric field of the area.
[[nodiscard]] std::string empty_record(MXREPOSITORY::Area area, std::size_t length);

}  // namespace nzutil
