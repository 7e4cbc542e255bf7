#include "nzutil/process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "installation/tool_error.h"

namespace nzutil {

namespace {

constexpr int kCannotStart = 127;

std::string content(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void redirect(const std::string& path, int flags, int descriptor) {
    const int file = ::open(path.c_str(), flags, 0600);
    if (file < 0 || ::dup2(file, descriptor) < 0) {
        ::_exit(kCannotStart);
    }
}

/// In the new process: never returns.
[[noreturn]] void become(const ProcessCall& call, const std::string& output,
                         const std::string& errors) {
    redirect("/dev/null", O_RDONLY, STDIN_FILENO);
    redirect(output, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    redirect(errors, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    for (const auto& [name, value] : call.environment) {
        if (value.empty()) {
            ::unsetenv(name.c_str());
        } else {
            ::setenv(name.c_str(), value.c_str(), 1);
        }
    }
    std::vector<char*> arguments;
    std::string program = call.program;
    arguments.push_back(program.data());
    std::vector<std::string> copies = call.arguments;
    for (std::string& argument : copies) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    ::execv(call.program.c_str(), arguments.data());
    ::_exit(kCannotStart);
}

int exit_status(int raw) {
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

}  // namespace

ProcessResult run_process(const ProcessCall& call) {
    if (::access(call.program.c_str(), X_OK) != 0) {
        throw ToolError(texts::kToolNoProgram, {call.program});
    }
    const std::string output = call.directory + "/output.txt";
    const std::string errors = call.directory + "/errors.txt";
    const pid_t child = ::fork();
    if (child < 0) {
        throw ToolError(texts::kToolNoProgram, {call.program});
    }
    if (child == 0) {
        become(call, output, errors);
    }
    ProcessResult result;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(call.seconds);
    auto pause = std::chrono::microseconds(200);
    int raw = 0;
    while (::waitpid(child, &raw, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &raw, 0);
            result.too_long = true;
            break;
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::microseconds(20000));
    }
    result.status = exit_status(raw);
    result.output = content(output);
    result.errors = content(errors);
    return result;
}

}  // namespace nzutil
