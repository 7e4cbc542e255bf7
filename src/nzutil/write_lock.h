#pragma once
// A command that writes records keeps the batch out of the archive, and stays out itself while the
// batch is calculating: a period or a record that changes under a run would go into the wages.

#include <memory>
#include <string>
#include <string_view>

#include "installation/installation.h"
#include "platform/directory_lock.h"

namespace nzutil {

/// The run's own lock, for the life of the object. It goes after the files and the recovery slot
/// have been closed: what a run that starts then opens is its own.
class WriteLock {
  public:
    /// Finishes what a killed run has left; what the command writes goes through the recovery slot.
    /// ToolError that names the holder if another program works on the archive.
    WriteLock(const Installation& installation, std::string_view command);
    /// Keeps runs out of a directory while new files are made in it. What is written there goes
    /// straight to the files, as nobody has wages in them yet.
    [[nodiscard]] static WriteLock of_directory(const std::string& archive_directory,
                                                std::string_view command);
    ~WriteLock();
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;
    WriteLock(WriteLock&&) = delete;
    WriteLock& operator=(WriteLock&&) = delete;

  private:
    WriteLock(const std::string& archive_directory, std::string_view command);

    std::unique_ptr<platform::DirectoryLock> lock_;
};

}  // namespace nzutil
