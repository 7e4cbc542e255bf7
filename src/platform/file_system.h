#pragma once
// All file traffic of the program goes through this interface, so that a test can wrap it
// (fail the Nth operation, count operations). Failures are platform::Failure with Basic numbers:
// 53 not found, 76 path not found, 70 locked by another, 75 access denied, 61 disk full, 67 too
// many files, 57 other; `culprit` names the file.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/disk_names.h"

namespace platform {

/// An open file, addressed by 0-based byte position. Closed by its destructor.
class Channel {
  public:
    virtual ~Channel() = default;
    Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;
    Channel(Channel&&) = delete;
    Channel& operator=(Channel&&) = delete;

    /// Reads up to `buffer_size` bytes; returns how many the file gave (less only at its end).
    virtual std::size_t read_at(std::uint64_t position, char* buffer, std::size_t buffer_size) = 0;
    virtual void write_at(std::uint64_t position, std::string_view bytes) = 0;
    [[nodiscard]] virtual std::uint64_t length() = 0;
    /// Returns when the written bytes would outlive a fall of the current. A file that cannot be
    /// held to it (a pipe, a device) is left as it is.
    virtual void sync() = 0;
};

enum class OpenMode {
    read_only,  ///< must exist
    existing,   ///< read and write, must exist; read only where writing is refused
    shared,     ///< as existing, but made empty if missing
    exclusive,  ///< as shared, and locked against every other opening (or 70)
    truncate,   ///< written anew
};

class FileSystem {
  public:
    virtual ~FileSystem() = default;
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    FileSystem(FileSystem&&) = delete;
    FileSystem& operator=(FileSystem&&) = delete;

    /// Opens a file. A path may hold `\`, and its names are found whatever their case on disk.
    [[nodiscard]] virtual std::unique_ptr<Channel> open(const std::string& path, OpenMode mode) = 0;
    /// True if a file (not a directory) of that name exists.
    [[nodiscard]] virtual bool exists(const std::string& path) = 0;
    [[nodiscard]] virtual bool directory_exists(const std::string& path) = 0;
    /// Length in bytes; 53 if there is no such file.
    [[nodiscard]] virtual std::uint64_t length(const std::string& path) = 0;
    virtual void remove(const std::string& path) = 0;
    virtual void copy(const std::string& source, const std::string& target) = 0;
    /// False where the rights of this user never let the file be opened (or made, if it is
    /// missing): there is nothing to wait for.
    [[nodiscard]] virtual bool permitted(const std::string& path) = 0;
};

/// Whole content of a file. Failures as FileSystem::open.
[[nodiscard]] std::string read_whole_file(const std::string& path);

/// Lines of a text file, without CR and LF.
[[nodiscard]] std::vector<std::string> read_lines(const std::string& path);

/// The file system in use (the machine's own unless a test has set another).
[[nodiscard]] FileSystem& files();
/// Sets another file system; nullptr brings back the machine's own. Returns the former override.
std::unique_ptr<FileSystem> set_files(std::unique_ptr<FileSystem> other);
/// The machine's own file system, for wrappers.
[[nodiscard]] FileSystem& real_files();

}  // namespace platform
