#include "nzutil/write_lock.h"

#include <string>

#include "context/messages.h"
#include "files/recovery_slot.h"
#include "installation/tool_error.h"
#include "nzutil/killed_run.h"
#include "platform/code_page.h"

namespace nzutil {

WriteLock::WriteLock(const Installation& installation, std::string_view command) {
    platform::LockAttempt attempt = platform::try_directory_lock(installation.archive_directory(),
                                                                 "nzutil " + std::string(command));
    if (attempt.lock == nullptr) {
        throw ToolError(texts::kToolRefused,
                        {platform::to_terminal(MXLIBRERIA::archive_in_use(attempt.holder))});
    }
    lock_ = std::move(attempt.lock);
    finish_killed_run(installation);
    MXLIBRERIA::recovery_slot.in_use = true;
}

}  // namespace nzutil
