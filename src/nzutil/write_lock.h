#pragma once
// A command that writes records keeps the batch out of the archive, and stays out itself while the
// batch is calculating: a period or a record that changes under a run would go into the wages.

#include <memory>
#include <string_view>

#include "installation/installation.h"
#include "platform/directory_lock.h"

namespace nzutil {

/// The run's own lock, for the life of the object.
class WriteLock {
  public:
    /// Finishes what a killed run has left; what the command writes goes through the recovery slot.
    /// ToolError that names the holder if another program works on the archive.
    WriteLock(const Installation& installation, std::string_view command);

  private:
    std::unique_ptr<platform::DirectoryLock> lock_;
};

}  // namespace nzutil
