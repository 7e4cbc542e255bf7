#include "platform/directory_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <optional>
#include <sstream>
#include <thread>
#include <utility>

#include "platform/failure.h"
#include "platform/file_system.h"

namespace platform {

namespace {

constexpr const char* kNameInDirectory = "VELMOR.LCK";
/// Directories of the machine for what the directory itself may not hold. Not TMPDIR, which may
/// differ from one user to the next.
constexpr std::array<const char*, 2> kMachineDirectories{"/run/lock", "/tmp"};

[[noreturn]] void fail(int number, const std::string& path) {
    Failure failure(number);
    failure.culprit = path;
    throw failure;
}

/// A short name for a path, the same in every process (FNV-1a over its characters).
std::string digest(const std::string& text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    std::ostringstream name;
    name << std::hex << std::setw(16) << std::setfill('0') << hash;
    return name.str();
}

/// The places of a directory's lock, the best one first.
std::array<std::string, 3> places_of(const std::string& directory) {
    const std::string name = "/velmor-" + digest(directory) + ".lock";
    return {directory + "/" + kNameInDirectory, kMachineDirectories[0] + name,
            kMachineDirectories[1] + name};
}

/// An open file of a lock.
class LockFile {
  public:
    LockFile(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) {}
    ~LockFile() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    LockFile(LockFile&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}
    LockFile& operator=(LockFile&&) = delete;

    [[nodiscard]] bool open() const { return descriptor_ >= 0; }

    /// True if the lock is ours now. errno tells why not: EAGAIN or EACCES while another has it.
    [[nodiscard]] bool take() const { return apply(F_OFD_SETLK, F_WRLCK); }
    /// Has another program the lock? Takes nothing.
    [[nodiscard]] bool held_by_another() const {
        struct flock region = whole_file(F_WRLCK);
        return ::fcntl(descriptor_, F_OFD_GETLK, &region) == 0 && region.l_type != F_UNLCK;
    }
    /// False if the former holder has removed the file since it was opened.
    [[nodiscard]] bool still_there() const {
        struct stat mine {};
        struct stat present {};
        return ::fstat(descriptor_, &mine) == 0 && ::stat(path_.c_str(), &present) == 0 &&
               mine.st_ino == present.st_ino && mine.st_dev == present.st_dev;
    }

    /// What the file says is for people: a full disk does not keep the lock from holding.
    void write(const std::string& content) const {
        if (::ftruncate(descriptor_, 0) == 0) {
            static_cast<void>(!::pwrite(descriptor_, content.data(), content.size(), 0));
        }
    }
    [[nodiscard]] std::string read() const {
        std::array<char, 512> content{};
        const ssize_t got = ::pread(descriptor_, content.data(), content.size(), 0);
        return {content.data(), got > 0 ? static_cast<std::size_t>(got) : 0};
    }
    void remove() const { ::unlink(path_.c_str()); }

  private:
    static struct flock whole_file(short type) {
        struct flock region {};
        region.l_type = type;
        region.l_whence = SEEK_SET;
        return region;
    }
    [[nodiscard]] bool apply(int command, short type) const {
        struct flock region = whole_file(type);
        return ::fcntl(descriptor_, command, &region) == 0;
    }

    int descriptor_;
    std::string path_;
};

/// Opens the file of a lock, made if missing: every user who may write the directory has to open
/// it, so its rights are not left to the mask of whoever came first.
LockFile open_or_make(const std::string& path) {
    constexpr int kFlags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    constexpr mode_t kForAll = 0666;
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), kFlags);
        if (descriptor < 0 && errno == ENOENT) {
            const mode_t mask = ::umask(0);
            descriptor = ::open(path.c_str(), kFlags | O_CREAT | O_EXCL, kForAll);
            const int refusal = errno;
            ::umask(mask);
            errno = refusal;
        }
    } while (descriptor < 0 && errno == EEXIST);  // made by another in between
    return {descriptor, path};
}

LockFile open_present(const std::string& path) {
    return {::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW), path};
}

// ---- Who holds it ----

std::string this_process(std::string_view program) {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 256> machine{};
    if (::gethostname(machine.data(), machine.size() - 1) != 0 || machine[0] == '\0') {
        machine = {'?'};
    }
    std::ostringstream content;
    content << ::getpid() << ' ' << std::put_time(&local, "%d/%m/%Y %H:%M:%S") << ' '
            << machine.data() << ' ' << program << '\n';
    return content.str();
}

LockHolder holder_of(const std::string& content) {
    LockHolder holder;
    std::string day;
    std::string time;
    std::istringstream in(content);
    if (in >> holder.process >> day >> time >> holder.machine >> std::ws &&
        std::getline(in, holder.program)) {
        holder.since = day + " " + time;
        return holder;
    }
    return {};
}

/// The holder as the file tells it; one that has only just taken the lock needs a moment to write.
LockHolder wait_for_holder(const LockFile& file) {
    constexpr int kTries = 20;
    constexpr auto kPause = std::chrono::milliseconds(10);
    for (int i = 0; i < kTries; ++i) {
        if (LockHolder holder = holder_of(file.read()); !holder.process.empty()) {
            return holder;
        }
        std::this_thread::sleep_for(kPause);
    }
    return {};
}

/// Who holds the lock of a place, without taking it; nothing if nobody does.
std::optional<LockHolder> holder_at(const std::string& place) {
    const LockFile file = open_present(place);
    if (!file.open() || !file.held_by_another()) {
        return std::nullopt;
    }
    return wait_for_holder(file);
}

// ---- Taking it ----

class HeldFile final : public DirectoryLock {
  public:
    explicit HeldFile(LockFile file) : file_(std::move(file)) {}
    /// Removed while it is still locked: who has it open already finds that it is no longer there.
    /// Where the directory has been put back from a copy meanwhile, the file is no longer ours.
    ~HeldFile() override {
        if (file_.still_there()) {
            file_.remove();
        }
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    HeldFile(HeldFile&&) = delete;
    HeldFile& operator=(HeldFile&&) = delete;

  private:
    LockFile file_;
};

/// Takes the lock of one place; nothing where the file cannot be made or locked there.
std::optional<LockAttempt> take_at(const std::string& place, const std::string& content) {
    for (;;) {
        LockFile file = open_or_make(place);
        if (!file.open()) {
            return std::nullopt;
        }
        if (file.take()) {
            if (!file.still_there()) {
                continue;
            }
            file.write(content);
            return LockAttempt{std::make_unique<HeldFile>(std::move(file)), {}};
        }
        if (errno != EAGAIN && errno != EACCES) {
            return std::nullopt;
        }
        if (file.still_there()) {
            return LockAttempt{nullptr, wait_for_holder(file)};
        }
    }
}

}  // namespace

std::string canonical_directory(const std::string& directory) {
    std::error_code missing;
    const std::string path = std::filesystem::canonical(path_on_disk(directory), missing).string();
    return missing || !std::filesystem::is_directory(path, missing) ? std::string() : path;
}

LockAttempt try_directory_lock(const std::string& directory, std::string_view program) {
    const std::string canonical = canonical_directory(directory);
    if (canonical.empty()) {
        fail(kPathNotFound, directory);
    }
    const std::string content = this_process(program);
    const auto places = places_of(canonical);
    std::optional<LockAttempt> attempt;
    const std::string* taken = nullptr;
    for (const std::string& place : places) {
        if (!attempt) {
            attempt = take_at(place, content);
            taken = attempt ? &place : nullptr;
        }
    }
    if (!attempt) {
        fail(kPathFileAccess, places.front());
    }
    for (const std::string& place : places) {
        if (attempt->lock != nullptr && &place != taken) {
            if (std::optional<LockHolder> other = holder_at(place)) {
                return {nullptr, *std::move(other)};
            }
        }
    }
    return *std::move(attempt);
}

}  // namespace platform
