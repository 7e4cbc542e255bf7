#pragma once
// Logical files for tests: a directory with an NZBASE.DAT of the files that the test names, and
// records written into them. The file table and the archive directory are put back at the end.

#include <iomanip>
#include <map>
#include <sstream>
#include <string>

#include "files/logical_files.h"
#include "run/environment.h"
#include "tests/support/temp_directory.h"

namespace test_support {

class LogicalFiles {
  public:
    LogicalFiles() {
        MXLIBRERIA::file_table = MXLIBRERIA::FileTable{};
        MXLIBRERIA::environment = MXLIBRERIA::Environment{};
        MXLIBRERIA::environment.archive_directory = directory_.path();
    }
    ~LogicalFiles() {
        MXLIBRERIA::file_table = MXLIBRERIA::FileTable{};
        MXLIBRERIA::environment = MXLIBRERIA::Environment{};
    }
    LogicalFiles(const LogicalFiles&) = delete;
    LogicalFiles& operator=(const LogicalFiles&) = delete;
    LogicalFiles(LogicalFiles&&) = delete;
    LogicalFiles& operator=(LogicalFiles&&) = delete;

    /// Names logical file `n`, records of `length` bytes; the file itself is empty.
    void define(int n, std::size_t length) {
        lengths_[n] = length;
        write_table();
        directory_.write(name(n), "");
    }
    /// Puts a record (cut or blank-filled to the length) into the file; records before it that are
    /// missing are blank.
    void put(int n, std::size_t record, std::string text) const {
        const std::size_t length = lengths_.at(n);
        text.resize(length, ' ');
        std::string bytes = directory_.read(name(n));
        if (bytes.size() < record * length) {
            bytes.resize(record * length, ' ');
        }
        directory_.write(name(n), bytes.replace((record - 1) * length, length, text));
    }
    /// The record as the file holds it.
    [[nodiscard]] std::string get(int n, std::size_t record) const {
        const std::size_t length = lengths_.at(n);
        const std::string bytes = directory_.read(name(n));
        return bytes.size() < record * length ? std::string()
                                              : bytes.substr((record - 1) * length, length);
    }
    [[nodiscard]] const TempDirectory& directory() const { return directory_; }

  private:
    static std::string name(int n) { return "FILE" + std::to_string(n) + ".DAT"; }

    void write_table() const {
        constexpr std::size_t kLine = 79;
        std::string table(static_cast<std::size_t>(lengths_.rbegin()->first) * kLine, ' ');
        for (const auto& [n, length] : lengths_) {
            std::ostringstream line;
            line << "   " << std::left << std::setw(29) << name(n) << std::right
                 << std::setfill('0') << std::setw(5) << length;
            table.replace(static_cast<std::size_t>(n) * kLine - kLine, line.str().size(),
                          line.str());
        }
        directory_.write("NZBASE.DAT", table);
    }

    TempDirectory directory_;
    std::map<int, std::size_t> lengths_;
};

}  // namespace test_support
