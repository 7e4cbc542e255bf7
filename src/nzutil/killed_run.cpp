#include "nzutil/killed_run.h"

#include <iostream>

#include "files/recovery_slot.h"
#include "installation/tool_error.h"
#include "platform/directory_lock.h"
#include "platform/failure.h"

namespace nzutil {

Installation open_installation(const std::string& directory) {
    Installation installation = Installation::open(directory);
    installation.attach();
    if (!MXLIBRERIA::step_waits_in_slot()) {
        return installation;
    }
    try {
        const platform::LockAttempt attempt =
            platform::try_directory_lock(installation.archive_directory(), "nzutil");
        if (attempt.lock != nullptr) {
            finish_killed_run(installation);
        }
    } catch (const platform::Failure& failure) {
        std::cerr << fill(texts::kToolFailure,
                          {std::to_string(failure.number()), failure.description()})
                  << '\n';
    }
    return installation;
}

void finish_killed_run(const Installation& installation) {
    installation.attach();
    for (const MXLIBRERIA::FinishedRecord& record : MXLIBRERIA::finish_killed_step()) {
        std::cerr << fill(texts::kToolFinishedRecord,
                          {std::to_string(static_cast<int>(record.file)),
                           std::to_string(static_cast<int>(record.record))})
                  << '\n';
    }
}

}  // namespace nzutil
