#pragma once
// A program in a process of its own that a test watches, stops and feeds while it runs. What it
// opened goes with the object, and so does a process that still runs.

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace test_support {

/// Waits until `condition` holds; false if it does not within the time.
template <typename Condition>
bool wait_until(Condition condition, std::chrono::seconds longest = std::chrono::seconds(60)) {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

class ChildProcess {
  public:
    static constexpr int kClosed = -2;
    static constexpr int kNull = -1;

    /// What the process is started with. A stream is a descriptor of the test, kNull or kClosed.
    struct Start {
        std::vector<std::string> command;
        std::vector<std::pair<std::string, std::string>> environment;  ///< "" takes one away
        int input = kNull;
        int output = kNull;
        int errors = kNull;
        /// Of a session of its own, whose terminal is its input.
        bool terminal = false;
    };

    explicit ChildProcess(const Start& start) : process_(::fork()) {
        if (process_ < 0) {
            throw std::runtime_error("no new process");
        }
        if (process_ == 0) {
            become(start);
        }
    }
    ~ChildProcess() {
        if (!ended_) {
            ::kill(process_, SIGKILL);
            static_cast<void>(wait());
        }
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess(ChildProcess&&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;

    [[nodiscard]] pid_t id() const { return process_; }
    void signal(int number) const { ::kill(process_, number); }

    [[nodiscard]] bool ended() {
        if (!ended_ && ::wait4(process_, &raw_, WNOHANG, &usage_) == process_) {
            ended_ = true;
        }
        return ended_;
    }
    /// Exit status, 128 + n when signal n ended it; -1 when it has not ended after a minute.
    [[nodiscard]] int wait() {
        if (!wait_until([this] { return ended(); })) {
            return -1;
        }
        return WIFEXITED(raw_) ? WEXITSTATUS(raw_) : 128 + WTERMSIG(raw_);
    }
    /// Processor seconds that it took; after its end.
    [[nodiscard]] double processor_seconds() const {
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        };
        return seconds(usage_.ru_utime) + seconds(usage_.ru_stime);
    }

  private:
    static void place(int given, int stream) {
        if (given == kClosed) {
            ::close(stream);
        } else if (given == kNull) {
            const int null = ::open("/dev/null", O_RDWR);
            ::dup2(null, stream);
            ::close(null);
        } else {
            ::dup2(given, stream);
        }
    }
    [[noreturn]] static void become(const Start& start) {
        constexpr int kCannotStart = 127;
        if (start.terminal && (::setsid() < 0 || ::ioctl(start.input, TIOCSCTTY, 0) != 0)) {
            ::_exit(kCannotStart);
        }
        // What the test itself was started with (nohup) is not what it is about.
        for (const int number : {SIGHUP, SIGINT, SIGTERM, SIGPIPE}) {
            ::signal(number, SIG_DFL);
        }
        place(start.input, STDIN_FILENO);
        place(start.output, STDOUT_FILENO);
        place(start.errors, STDERR_FILENO);
        for (const auto& [name, value] : start.environment) {
            if (value.empty()) {
                ::unsetenv(name.c_str());
            } else {
                ::setenv(name.c_str(), value.c_str(), 1);
            }
        }
        std::vector<std::string> copies = start.command;
        std::vector<char*> arguments;
        for (std::string& argument : copies) {
            arguments.push_back(argument.data());
        }
        arguments.push_back(nullptr);
        ::execv(arguments.front(), arguments.data());
        ::_exit(kCannotStart);
    }

    pid_t process_;
    bool ended_ = false;
    int raw_ = 0;
    rusage usage_{};
};

/// A descriptor of the test, not handed on to its processes.
class TestDescriptor {
  public:
    explicit TestDescriptor(int descriptor) : descriptor_(descriptor) {
        ::fcntl(descriptor_, F_SETFD, FD_CLOEXEC);
    }
    ~TestDescriptor() { close(); }
    TestDescriptor(const TestDescriptor&) = delete;
    TestDescriptor& operator=(const TestDescriptor&) = delete;
    TestDescriptor(TestDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    TestDescriptor& operator=(TestDescriptor&&) = delete;

    [[nodiscard]] int get() const { return descriptor_; }
    void close() {
        if (descriptor_ >= 0) {
            ::close(std::exchange(descriptor_, -1));
        }
    }
    /// What can be read up to the end.
    [[nodiscard]] std::string rest() const {
        std::string all;
        std::string piece(4096, '\0');
        for (ssize_t got = 0; (got = ::read(descriptor_, piece.data(), piece.size())) > 0;) {
            all.append(piece, 0, static_cast<std::size_t>(got));
        }
        return all;
    }
    /// Bytes that wait to be read.
    [[nodiscard]] int waiting() const {
        int bytes = 0;
        return ::ioctl(descriptor_, FIONREAD, &bytes) == 0 ? bytes : -1;
    }

  private:
    int descriptor_;
};

/// A file that takes the output of a process and can be read meanwhile.
class OutputFile {
  public:
    explicit OutputFile(std::string path)
        : path_(std::move(path)),
          descriptor_(::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600)) {}
    [[nodiscard]] int get() const { return descriptor_.get(); }
    [[nodiscard]] std::string content() const {
        std::ifstream in(path_, std::ios::binary);
        std::ostringstream bytes;
        bytes << in.rdbuf();
        return bytes.str();
    }
    [[nodiscard]] bool holds(const std::string& text) const {
        return content().find(text) != std::string::npos;
    }

  private:
    std::string path_;
    TestDescriptor descriptor_;
};

}  // namespace test_support
