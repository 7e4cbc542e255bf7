#pragma once
// A piece of a test in a process of its own: for locks between programs, and for the rights of an
// ordinary user where the tests run as root.

#include <sys/wait.h>
#include <unistd.h>

#include <exception>

namespace test_support {

/// Starts `work` in a child; its result (0 to 125) is the exit status. 126: it threw.
template <typename Work>
pid_t start_process(Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        int status = 126;
        try {
            status = work();
        } catch (const std::exception&) {
            status = 126;
        }
        ::_exit(status);
    }
    return child;
}

/// Waits for a child and returns its exit status, 127 if a signal ended it.
inline int result_of(pid_t child) {
    int status = 0;
    if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
        return 127;
    }
    return WEXITSTATUS(status);
}

template <typename Work>
int in_other_process(Work work) {
    return result_of(start_process(work));
}

/// Gives up the rights of root for good; to be called in a child.
inline void become_ordinary_user() {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
        ::_exit(125);
    }
}

}  // namespace test_support
