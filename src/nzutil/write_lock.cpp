#include "nzutil/write_lock.h"

#include <exception>

#include "context/messages.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "installation/tool_error.h"
#include "nzutil/killed_run.h"
#include "platform/code_page.h"

namespace nzutil {

WriteLock::WriteLock(const std::string& archive_directory, std::string_view command) {
    platform::LockAttempt attempt =
        platform::try_directory_lock(archive_directory, "nzutil " + std::string(command));
    if (attempt.lock == nullptr) {
        throw ToolError(texts::kToolRefused,
                        {platform::to_terminal(MXLIBRERIA::archive_in_use(attempt.holder))});
    }
    lock_ = std::move(attempt.lock);
}

WriteLock::WriteLock(const Installation& installation, std::string_view command)
    : WriteLock(installation.archive_directory(), command) {
    finish_killed_run(installation);
    MXLIBRERIA::recovery_slot.in_use = true;
}

WriteLock WriteLock::of_directory(const std::string& archive_directory, std::string_view command) {
    return {archive_directory, command};
}

WriteLock::~WriteLock() {
    try {
        MXLIBRERIA::CHIUDI(0);
    } catch (const std::exception&) {  // closing a file that is gone harms nobody
    }
}

}  // namespace nzutil
