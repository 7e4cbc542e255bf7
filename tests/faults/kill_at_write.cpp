// Preloaded into a program (LD_PRELOAD): a kill that comes within one of its writes to a file.
//
//   VELMOR_KILL_AT     number of the write that is cut, from 1; removals of files count too
//   VELMOR_KILL_KEEPS  thousandths of its bytes that still reach the file
//
// Holding files to the disk takes no time: a kill leaves the pages of the system alone.

#include <signal.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cstdlib>

namespace {

long number_in(const char* name) {
    const char* text = std::getenv(name);
    return text == nullptr ? 0 : std::strtol(text, nullptr, 10);
}

/// True at the write that is cut.
bool kill_comes() {
    static long writes = 0;
    return ++writes == number_in("VELMOR_KILL_AT");
}

[[noreturn]] void end_here() {
    ::kill(::getpid(), SIGKILL);
    for (;;) {
        ::pause();
    }
}

ssize_t write_bytes(int file, const void* bytes, size_t count, off_t position) {
    constexpr size_t kThousandths = 1000;
    if (!kill_comes()) {
        return ::syscall(SYS_pwrite64, file, bytes, count, position);
    }
    const auto kept = count * static_cast<size_t>(number_in("VELMOR_KILL_KEEPS")) / kThousandths;
    ::syscall(SYS_pwrite64, file, bytes, kept, position);
    end_here();
}

}  // namespace

extern "C" {

ssize_t pwrite(int file, const void* bytes, size_t count, off_t position) {
    return write_bytes(file, bytes, count, position);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off_t position) {
    return write_bytes(file, bytes, count, position);
}

int unlink(const char* path) noexcept {
    if (kill_comes()) {
        end_here();
    }
    return static_cast<int>(::syscall(SYS_unlink, path));
}

int fdatasync(int /*file*/) {
    return 0;
}
}
