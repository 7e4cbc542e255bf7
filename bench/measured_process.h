#pragma once
// The batch as a process of its own, measured: processor time, time on the clock, memory, and the
// system calls that it made.

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

namespace bench {

struct Measure {
    double processor = 0;  ///< seconds of processor time, of the program and of the system for it
    double clock = 0;      ///< seconds
    long memory = 0;       ///< highest resident set, KiB
};

inline double seconds(const timeval& time) {
    constexpr double kMicroseconds = 1e6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / kMicroseconds;
}

inline double processor_seconds(const rusage& usage) {
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// In the new process: a run without a terminal, its list in `list`.
[[noreturn]] inline void become_batch(const std::string& program, const std::string& registry,
                                      const std::string& list) {
    const int nothing = ::open("/dev/null", O_RDWR);
    const int output = ::open(list.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    ::close(nothing);
    ::close(output);
    ::setenv("SOLMAREL_REGISTRO", registry.c_str(), 1);
    ::setenv("VELMOR_INTERFACCIA", "console", 1);
    ::setenv("VELMOR_RISPOSTE", "no", 1);
    ::execl(program.c_str(), program.c_str(), nullptr);
    ::_exit(127);
}

inline void require_success(int status) {
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error("the run did not end in order");
    }
}

/// One run, measured.
inline Measure measured_run(const std::string& program, const std::string& registry,
                            const std::string& list) {
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        become_batch(program, registry, list);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child) {
        throw std::runtime_error("the batch cannot be started");
    }
    require_success(status);
    return {processor_seconds(usage),
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count(),
            usage.ru_maxrss};
}

/// System calls of one run; nothing where this machine lets no process be traced.
inline std::optional<std::uint64_t> counted_run(const std::string& program,
                                                const std::string& registry,
                                                const std::string& list) {
    constexpr int kTraceRefused = 126;
    constexpr int kCallStop = SIGTRAP | 0x80;
    const pid_t child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            ::_exit(kTraceRefused);
        }
        become_batch(program, registry, list);
    }
    int status = 0;
    std::uint64_t stops = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) {
        return std::nullopt;
    }
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    int signal = 0;
    while (::ptrace(PTRACE_SYSCALL, child, nullptr, signal) == 0 &&
           ::waitpid(child, &status, 0) == child && WIFSTOPPED(status)) {
        const bool call = WSTOPSIG(status) == kCallStop;
        stops += call ? 1U : 0U;
        signal = call ? 0 : WSTOPSIG(status);
    }
    require_success(status);
    return stops / 2;  // one at the entry of a call, one at its return
}

}  // namespace bench
