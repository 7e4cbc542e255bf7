#pragma once
// The selection of the run: logical file 5, records of 20 entries of 10 characters.
//   positions  content
//   1-3        company, record number in logical file 1
//   4-6        not used
//   7-10       employee, record number in logical file 2
// The entry 9999999999 ends the selection, and so does the end of the file.

#include <cstddef>
#include <optional>

namespace ModSWCALM {

struct SelectionEntry {
    double company = 0;
    double employee_record = 0;
};

/// Reads the selection in order. The file is open.
class Selection {
  public:
    /// Next entry; nothing at the end of the selection.
    [[nodiscard]] std::optional<SelectionEntry> next();

    /// Number of entries of the whole selection.
    [[nodiscard]] static std::size_t count();

  private:
    double record_ = 0;
    std::size_t position_ = 0;  ///< of the next entry, 1-based; 0 before the first record
};

}  // namespace ModSWCALM
