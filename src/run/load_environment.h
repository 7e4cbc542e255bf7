#pragma once
// The environment of the run: directories, task, installation data, and the lock that keeps a
// second instance out.

#include <memory>
#include <string>

#include "platform/directory_lock.h"

namespace ModSWCALM {

/// Held from start-up to the end of the program.
struct InstanceLock {
    std::string directory;  ///< canonical path of the archive directory
    std::unique_ptr<platform::DirectoryLock> lock;
};
extern InstanceLock instance_lock;

/// Environment from the registry. Ends the program with status 3 if another program works on the
/// same archive; a remark says which, and since when. Leaves the archive directory empty if one of
/// the two directories does not exist.
void CARICAAMBIENTE();

/// Environment from NZPERARK.NZP and NZPERPRO.NZP, for a machine without the registry values. Ends
/// the program with status 2 if one of them is missing or blank.
void load_from_path_files();

}  // namespace ModSWCALM
