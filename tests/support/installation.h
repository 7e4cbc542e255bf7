#pragma once
// A small installation for tests: an archive directory of its own with NZBASE.DAT and the files
// that a test asks for, records in, records out.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "files/logical_files.h"
#include "run/environment.h"
#include "tests/support/temp_directory.h"

namespace test_support {

class Installation {
  public:
    Installation() : base_(kLines * kLineLength, ' ') {
        MXLIBRERIA::environment = {};
        MXLIBRERIA::environment.archive_directory = directory_.path();
        MXLIBRERIA::environment.programs_directory = directory_.path();
    }
    ~Installation() {
        MXLIBRERIA::CHIUDI(0);
        MXLIBRERIA::file_table = {};
        MXLIBRERIA::environment = {};
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    Installation(Installation&&) = delete;
    Installation& operator=(Installation&&) = delete;

    /// Names a logical file in NZBASE.DAT and makes it, empty, in the archive directory.
    void define(int n, const std::string& name, std::size_t length) {
        const std::size_t line = (static_cast<std::size_t>(n) - 1) * kLineLength;
        base_.replace(line + 3, 29, name + std::string(29 - name.size(), ' '));
        const std::string digits = std::to_string(length);
        base_.replace(line + 32, 5, std::string(5 - digits.size(), '0') + digits);
        directory_.write("NZBASE.DAT", base_);
        directory_.write(name, "");
        files_[n] = {name, length};
    }

    /// Writes a record (blank-filled to its length), record numbers from 1.
    void put(int n, std::size_t record, std::string text) const {
        const File& file = files_.at(n);
        text.resize(file.length, ' ');
        std::string content = directory_.read(file.name);
        content.resize(std::max(content.size(), record * file.length), ' ');
        content.replace((record - 1) * file.length, file.length, text);
        directory_.write(file.name, content);
    }

    /// The record as it stands on disk; empty beyond the end.
    [[nodiscard]] std::string get(int n, std::size_t record) const {
        const File& file = files_.at(n);
        const std::string content = directory_.read(file.name);
        const std::size_t start = (record - 1) * file.length;
        return start < content.size() ? content.substr(start, file.length) : std::string();
    }
    [[nodiscard]] std::size_t records(int n) const {
        const File& file = files_.at(n);
        return directory_.read(file.name).size() / file.length;
    }

    [[nodiscard]] const TempDirectory& directory() const { return directory_; }

  private:
    static constexpr std::size_t kLineLength = 79;
    static constexpr std::size_t kLines = 600;
    struct File {
        std::string name;
        std::size_t length = 0;
    };

    TempDirectory directory_;
    std::string base_;
    std::map<int, File> files_;
};

}  // namespace test_support
