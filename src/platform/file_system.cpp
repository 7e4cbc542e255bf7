#include "platform/file_system.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "platform/failure.h"

namespace platform {

namespace {

struct ErrorNumber {
    int system;
    int basic;
};
/// System errors as numbers of the Basic run-time; any other one is a device error.
constexpr std::array<ErrorNumber, 17> kErrorNumbers{{
    {ENOENT, kFileNotFound},
    {ENOTDIR, kPathNotFound},
    {ENAMETOOLONG, kPathNotFound},
    {ELOOP, kPathNotFound},
    {EACCES, kPathFileAccess},
    {EPERM, kPathFileAccess},
    {EROFS, kPathFileAccess},
    {EISDIR, kPathFileAccess},
    {ETXTBSY, kPathFileAccess},
    {EWOULDBLOCK, kPermissionDenied},
    {ENOSPC, kDiskFull},
    {EDQUOT, kDiskFull},
    {EFBIG, kDiskFull},
    {EMFILE, kTooManyFiles},
    {ENFILE, kTooManyFiles},
    {EEXIST, kFileAlreadyExists},
    {ENOMEM, kOutOfMemory},
}};

int basic_number(int system_error) {
    const auto* found =
        std::find_if(kErrorNumbers.begin(), kErrorNumbers.end(),
                     [system_error](const ErrorNumber& e) { return e.system == system_error; });
    return found == kErrorNumbers.end() ? static_cast<int>(kDeviceIo) : found->basic;
}

[[noreturn]] void fail(int number, const std::string& path) {
    Failure failure(number);
    failure.culprit = path;
    throw failure;
}

bool is_directory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string parent_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// A missing file in a missing directory is "Path not found".
[[noreturn]] void fail_with_errno(int system_error, const std::string& path) {
    if (system_error == ENOENT && !is_directory(parent_of(path))) {
        fail(kPathNotFound, path);
    }
    fail(basic_number(system_error), path);
}

/// A file descriptor, closed when it goes.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    [[nodiscard]] int get() const { return fd_; }

  private:
    int fd_;
};

class MachineChannel final : public Channel {
  public:
    MachineChannel(Descriptor descriptor, std::string path, bool writable)
        : descriptor_(std::move(descriptor)), path_(std::move(path)), writable_(writable) {}

    std::size_t read_at(std::uint64_t position, char* buffer, std::size_t buffer_size) override {
        std::size_t done = 0;
        while (done < buffer_size) {
            const ssize_t got = ::pread(descriptor_.get(), buffer + done, buffer_size - done,
                                        static_cast<off_t>(position + done));
            if (got == 0) {
                break;
            }
            if (got > 0) {
                done += static_cast<std::size_t>(got);
            } else if (errno != EINTR) {
                fail_with_errno(errno, path_);
            }
        }
        return done;
    }

    void write_at(std::uint64_t position, std::string_view bytes) override {
        if (!writable_) {
            fail(kPathFileAccess, path_);
        }
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t put = ::pwrite(descriptor_.get(), bytes.data() + done,
                                         bytes.size() - done, static_cast<off_t>(position + done));
            if (put >= 0) {
                done += static_cast<std::size_t>(put);
            } else if (errno != EINTR) {
                fail_with_errno(errno, path_);
            }
        }
    }

    std::uint64_t length() override {
        struct stat status {};
        if (::fstat(descriptor_.get(), &status) != 0) {
            fail_with_errno(errno, path_);
        }
        return static_cast<std::uint64_t>(status.st_size);
    }

    void sync() override {
        while (::fdatasync(descriptor_.get()) != 0) {
            if (errno == EINVAL || errno == EROFS) {
                return;
            }
            if (errno != EINTR) {
                fail_with_errno(errno, path_);
            }
        }
    }

  private:
    Descriptor descriptor_;
    std::string path_;
    bool writable_;
};

struct Opened {
    Descriptor descriptor;
    bool writable;
};

/// Opens for reading and writing, or for reading alone where writing is refused.
Opened open_descriptor(const std::string& path, OpenMode mode) {
    constexpr mode_t kRights = 0666;
    const bool reads_only = mode == OpenMode::read_only;
    const int makes = reads_only || mode == OpenMode::existing ? 0 : O_CREAT;
    if (!reads_only) {
        const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC | makes, kRights);
        if (fd >= 0) {
            return {Descriptor(fd), true};
        }
        const bool refused = errno == EACCES || errno == EROFS || errno == EPERM;
        if (!refused || mode == OpenMode::truncate) {
            fail_with_errno(errno, path);
        }
        const int refusal = errno;
        Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        if (descriptor.get() < 0) {
            fail_with_errno(refusal, path);
        }
        return {std::move(descriptor), false};
    }
    Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (descriptor.get() < 0) {
        fail_with_errno(errno, path);
    }
    return {std::move(descriptor), false};
}

/// An exclusive opening excludes every other one, and is refused while there is another. A file
/// system without locks still serves the shared openings.
void lock(const Descriptor& descriptor, OpenMode mode, const std::string& path) {
    const bool alone = mode == OpenMode::exclusive;
    if (::flock(descriptor.get(), (alone ? LOCK_EX : LOCK_SH) | LOCK_NB) == 0) {
        return;
    }
    if (errno == EWOULDBLOCK || alone) {
        fail_with_errno(errno, path);
    }
}

class MachineFiles final : public FileSystem {
  public:
    std::unique_ptr<Channel> open(const std::string& path, OpenMode mode) override {
        const std::string name = path_on_disk(path);
        // A directory opens for reading; for writing the machine refuses it itself.
        if (mode == OpenMode::read_only && is_directory(name)) {
            fail(kPathFileAccess, name);
        }
        Opened opened = open_descriptor(name, mode);
        if (mode != OpenMode::read_only && mode != OpenMode::existing) {
            made_on_disk(name);
        }
        lock(opened.descriptor, mode, name);
        if (mode == OpenMode::truncate && ::ftruncate(opened.descriptor.get(), 0) != 0) {
            fail_with_errno(errno, name);
        }
        return std::make_unique<MachineChannel>(std::move(opened.descriptor), name,
                                                opened.writable);
    }

    bool exists(const std::string& path) override {
        const std::optional<std::string> name = find_on_disk(path);
        struct stat status {};
        return name && ::stat(name->c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
    }

    bool directory_exists(const std::string& path) override {
        return is_directory(path_on_disk(path));
    }

    std::uint64_t length(const std::string& path) override {
        const std::string name = path_on_disk(path);
        struct stat status {};
        if (::stat(name.c_str(), &status) != 0) {
            fail_with_errno(errno, name);
        }
        return static_cast<std::uint64_t>(status.st_size);
    }

    void remove(const std::string& path) override {
        const std::string name = path_on_disk(path);
        if (::unlink(name.c_str()) != 0) {
            fail_with_errno(errno, name);
        }
        deleted_on_disk(name);
    }

    void copy(const std::string& source, const std::string& target) override {
        const std::unique_ptr<Channel> from = open(source, OpenMode::read_only);
        const std::unique_ptr<Channel> to = open(target, OpenMode::truncate);
        constexpr std::size_t kPiece = std::size_t{1} << 20U;
        std::string piece(kPiece, '\0');
        std::uint64_t position = 0;
        for (;;) {
            const std::size_t got = from->read_at(position, piece.data(), piece.size());
            to->write_at(position, std::string_view(piece).substr(0, got));
            position += got;
            if (got < piece.size()) {
                return;
            }
        }
    }

    bool permitted(const std::string& path) override {
        const std::string name = path_on_disk(path);
        if (::access(name.c_str(), F_OK) == 0) {
            return !is_directory(name) && ::access(name.c_str(), R_OK) == 0;
        }
        return ::access(parent_of(name).c_str(), W_OK | X_OK) == 0;
    }
};

struct FilesInUse {
    MachineFiles machine;
    std::unique_ptr<FileSystem> other;
};
FilesInUse files_in_use;

}  // namespace

std::string read_whole_file(const std::string& path) {
    const std::unique_ptr<Channel> channel = files().open(path, OpenMode::read_only);
    std::string bytes(channel->length(), '\0');
    bytes.resize(channel->read_at(0, bytes.data(), bytes.size()));
    return bytes;
}

std::vector<std::string> read_lines(const std::string& path) {
    const std::string bytes = read_whole_file(path);
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        std::string line = bytes.substr(begin, end - begin);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(std::move(line));
        begin = end + 1;
    }
    return lines;
}

FileSystem& real_files() {
    return files_in_use.machine;
}

FileSystem& files() {
    return files_in_use.other == nullptr ? files_in_use.machine : *files_in_use.other;
}

std::unique_ptr<FileSystem> set_files(std::unique_ptr<FileSystem> other) {
    return std::exchange(files_in_use.other, std::move(other));
}

}  // namespace platform
