#pragma once
// One program at a time works on a directory, whatever the spelling of its path.
//
// The lock is a locked file, not the presence of one: a process that dies holds nothing. The file
// VELMOR.LCK stands in the directory itself; where the user may not make it there, it is
// velmor-<digest of the canonical path>.lock in /run/lock or, failing that, in /tmp. Whoever has
// taken one of the three looks at the two others too, since another user's rights may have put the
// lock there. The file says who holds it and goes with the lock.

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// Who holds a directory; all empty where the file does not tell.
struct LockHolder {
    std::string program;
    std::string process;  ///< process id
    std::string since;    ///< local time, dd/mm/yyyy hh:mm:ss
    std::string machine;  ///< host name
};

/// Held for the life of the object.
class DirectoryLock {
  public:
    virtual ~DirectoryLock() = default;
    DirectoryLock() = default;
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;
    DirectoryLock(DirectoryLock&&) = delete;
    DirectoryLock& operator=(DirectoryLock&&) = delete;
};

/// The lock, or who holds it instead.
struct LockAttempt {
    std::unique_ptr<DirectoryLock> lock;  ///< nullptr: another program holds the directory
    LockHolder holder;
};

/// Takes the lock of a directory that exists, for the program named. Failure 75 where none of the
/// three files can be made, 76 where there is no such directory.
[[nodiscard]] LockAttempt try_directory_lock(const std::string& directory,
                                             std::string_view program);

/// The directory's path without links, `.` and `..`, in the case that stands on disk; empty if
/// there is no such directory.
[[nodiscard]] std::string canonical_directory(const std::string& directory);

}  // namespace platform
