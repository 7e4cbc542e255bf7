#pragma once
// Logical files for tests: an archive directory with the dictionary, in which a test names the
// files that it needs and reads and writes their records behind the program's back.

#include <map>
#include <string>

#include "files/logical_files.h"
#include "tests/support/dictionary_archive.h"

namespace test_support {

class LogicalFiles {
  public:
    /// Names logical file `n`, records of `length` bytes; the file itself is empty.
    void define(int n, std::size_t length) {
        lengths_[n] = length;
        archive_.add(n, "", static_cast<int>(length));
    }
    /// Puts a record (cut or blank-filled to the length) into the file; records before it that are
    /// missing are blank.
    void put(int n, std::size_t record, std::string text) const {
        const std::size_t length = lengths_.at(n);
        const std::string name = DictionaryArchive::name_of(n);
        text.resize(length, ' ');
        std::string bytes = archive_.directory().read(name);
        if (bytes.size() < record * length) {
            bytes.resize(record * length, ' ');
        }
        archive_.directory().write(name, bytes.replace((record - 1) * length, length, text));
        // What a run has kept of a table is not what the file now holds.
        MXLIBRERIA::file_table.entries.at(static_cast<std::size_t>(n)).table.reset();
    }
    /// The record as the file holds it; empty if there is none.
    [[nodiscard]] std::string get(int n, std::size_t record) const {
        const std::size_t length = lengths_.at(n);
        const std::string bytes = archive_.directory().read(DictionaryArchive::name_of(n));
        return bytes.size() < record * length ? std::string()
                                              : bytes.substr((record - 1) * length, length);
    }
    [[nodiscard]] const TempDirectory& directory() const { return archive_.directory(); }

  private:
    DictionaryArchive archive_;
    std::map<int, std::size_t> lengths_;
};

}  // namespace test_support
