#pragma once
// The environment of the run: directories, task, installation data, and the lock that keeps a
// second instance out.

#include <memory>
#include <string>

#include "platform/file_system.h"

namespace ModSWCALM {

/// Held from start-up to the end of the process: velmor-<digest of the archive directory>.lock in
/// the machine's directory of temporary files.
struct InstanceLock {
    std::string name;
    std::unique_ptr<platform::NamedLock> lock;
};
extern InstanceLock instance_lock;

/// Environment from the registry. Ends the program with status 3 if another instance works on the
/// same archive. Leaves the archive directory empty if one of the two directories does not exist.
void CARICAAMBIENTE();

/// Environment from NZPERARK.NZP and NZPERPRO.NZP, for a machine without the registry values. Ends
/// the program with status 2 if one of them is missing or blank.
void load_from_path_files();

}  // namespace ModSWCALM
