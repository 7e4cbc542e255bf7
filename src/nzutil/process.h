#pragma once
// Another program, run to its end.

#include <string>
#include <utility>
#include <vector>

namespace nzutil {

struct ProcessResult {
    int status = -1;        ///< exit status; 128 + n when ended by signal n
    bool too_long = false;  ///< stopped because it did not end by itself
    std::string output;     ///< standard output
    std::string errors;     ///< standard error
};

/// What a process is started with.
struct ProcessCall {
    std::string program;
    std::vector<std::string> arguments;
    /// Environment: these values over the present ones; an empty value takes a variable away.
    std::vector<std::pair<std::string, std::string>> environment;
    std::string directory;  ///< its output is kept here while it runs
    int seconds = 120;      ///< longest time
};

/// Runs the program without a terminal. ToolError if it cannot be started.
[[nodiscard]] ProcessResult run_process(const ProcessCall& call);

}  // namespace nzutil
