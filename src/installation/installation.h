#pragma once
// An installation that we make or look into: its archive directory with NZBASE.DAT and all logical
// files, its programs directory, and the registry file that names both.
//
//   DIR/registro.ini   PERCORSOARCHIVI and PERCORSOPROGRAMMI
//   DIR/archivi/       NZBASE.DAT, NZSEMA.DAT and the logical files
//   DIR/programmi/
//
// Records are read and written through the system's own file operations, so one installation at a
// time is in hand in a process; using another one closes the files of the former.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "installation/file_layout.h"

namespace nzutil {

/// The archive directory of an installation that is to be made, made if missing; its absolute path.
/// ToolError where that cannot be.
[[nodiscard]] std::string make_archive_directory(const std::string& directory);

class Installation {
  public:
    /// Makes an installation without companies and employees: all files, the indexes and text files
    /// empty, the dictionary files full. ToolError if the directory holds one already.
    [[nodiscard]] static Installation create(const std::string& directory);
    /// The installation in `directory`; an archive directory itself will do as well. ToolError if
    /// there is none.
    [[nodiscard]] static Installation open(const std::string& directory);

    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    Installation(Installation&& other) noexcept = default;
    Installation& operator=(Installation&&) = delete;
    ~Installation();

    [[nodiscard]] const std::string& archive_directory() const { return archive_directory_; }
    /// Path of registro.ini; empty where only an archive directory was opened.
    [[nodiscard]] const std::string& registry_file() const { return registry_file_; }

    /// Path of a logical file. ToolError for a number outside 1 to 600 or without a name.
    [[nodiscard]] std::string path(int file) const;
    [[nodiscard]] int record_length(int file) const;
    [[nodiscard]] int record_count(int file) const;
    [[nodiscard]] bool exists(int file) const;

    /// A record; nothing past the end. ToolError if there is no such file.
    [[nodiscard]] std::optional<std::string> read(int file, int record) const;
    /// Writes a record, cut or blank-filled to the record length. Records left out before it are
    /// written too: deleted pay items and contracts, empty records elsewhere.
    void write(int file, int record, const std::string& bytes);
    /// Writes all records of a file, and takes away what it held before.
    void write_all(int file, const std::vector<std::string>& records);
    /// Writes a text file.
    void write_lines(int file, const std::vector<std::string>& lines);

    /// Area whose fields lie in the records of the file; unknown if there is none.
    [[nodiscard]] static MXREPOSITORY::Area area_of(int file);

    /// Record 1 of file 6: date ddmmyyyy and run kind.
    void write_period(std::string_view date, char kind);
    /// The selection: company and employee record numbers, in the order of the run.
    void write_selection(const std::vector<std::pair<int, int>>& entries);
    [[nodiscard]] std::vector<std::pair<int, int>> read_selection() const;

    /// Makes this installation the one that the file operations work on.
    void attach() const;
    /// Closes the files, so that another program finds them as they stand.
    void close() const;

  private:
    Installation(std::string archive_directory, std::string registry_file);
    /// The same with `file` open.
    void use(int file) const;

    std::string archive_directory_;
    std::string registry_file_;
};

/// Copies an installation that nobody has open; the copy's registry names the copy.
[[nodiscard]] Installation copy_installation(const std::string& source, const std::string& target);

}  // namespace nzutil
