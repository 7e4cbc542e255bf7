#include "nzutil/write_lock.h"

#include <string>

#include "context/messages.h"
#include "installation/tool_error.h"
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
}

}  // namespace nzutil
