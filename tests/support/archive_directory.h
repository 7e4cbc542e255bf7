#pragma once
// An archive directory of its own for a test: the environment of the run points to it, and its
// NZBASE.DAT is written line by line.

#include <algorithm>
#include <string>

#include "context/environment.h"
#include "files/logical_files.h"
#include "tests/support/temp_directory.h"

namespace test_support {

class ArchiveDirectory : public TempDirectory {
  public:
    ArchiveDirectory() {
        MXLIBRERIA::environment = {};
        MXLIBRERIA::environment.archive_directory = path();
    }
    ~ArchiveDirectory() {
        MXLIBRERIA::CHIUDI(0);
        MXLIBRERIA::placeholders() = {};
        MXLIBRERIA::environment = {};
    }
    ArchiveDirectory(const ArchiveDirectory&) = delete;
    ArchiveDirectory& operator=(const ArchiveDirectory&) = delete;
    ArchiveDirectory(ArchiveDirectory&&) = delete;
    ArchiveDirectory& operator=(ArchiveDirectory&&) = delete;

    /// Line of a logical number; `length` as it stands in its five columns.
    void define(std::size_t n, const std::string& name, const std::string& length) {
        base_.resize(std::max(base_.size(), n * kLine), ' ');
        std::string line = "   " + name;
        line.resize(32, ' ');
        line += length;
        line.resize(kLine, ' ');
        base_.replace((n - 1) * kLine, kLine, line);
        write("NZBASE.DAT", base_);
    }
    void define(std::size_t n, const std::string& name, int length) {
        const std::string digits = std::to_string(length);
        define(n, name, std::string(5 - digits.size(), '0') + digits);
    }

  private:
    static constexpr std::size_t kLine = 79;
    std::string base_;
};

}  // namespace test_support
