#pragma once
// The machine's file system with faults: the Nth operation fails, the disk is full beyond a given
// length, or the program is killed within its Nth write. Put in place by platform::set_files; the
// plan is shared with the test.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/file_system.h"

namespace test_support {

/// The process would be gone: no handler of the program catches it.
struct Killed {};

struct FaultPlan {
    std::uint64_t operations = 0;             ///< operations so far
    std::uint64_t fail_at = 0;                ///< number of the one that fails; 0: none
    int number = platform::kDeviceIo;         ///< failure that it raises
    std::uint64_t disk_ends_at = UINT64_MAX;  ///< no file grows beyond this length
    std::uint64_t writes = 0;                 ///< writes so far
    std::uint64_t changes = 0;                ///< writes and removals so far
    std::uint64_t kill_at = 0;                ///< number of the change that a kill cuts; 0: none
    double kill_keeps = 0;                    ///< part of that write that reaches the file, 0 to 1
    bool killed = false;                      ///< nothing more reaches the disk
    std::function<void()> after_change;       ///< called after each whole write
    std::function<void(const std::string&)> before_removal;  ///< with the path
    std::vector<std::string> synced;  ///< names of the files held to the disk, in order

    void count() {
        if (killed) {
            throw Killed();
        }
        if (++operations == fail_at) {
            throw platform::Failure(number);
        }
    }
    /// True at the change that the kill cuts.
    bool kill_comes() {
        killed = ++changes == kill_at;
        return killed;
    }
};

class FaultChannel final : public platform::Channel {
  public:
    FaultChannel(std::unique_ptr<platform::Channel> inner, std::shared_ptr<FaultPlan> plan,
                 std::string name)
        : inner_(std::move(inner)), plan_(std::move(plan)), name_(std::move(name)) {}

    std::size_t read_at(std::uint64_t position, char* buffer, std::size_t buffer_size) override {
        plan_->count();
        return inner_->read_at(position, buffer, buffer_size);
    }
    /// A disk that is full takes the bytes that still fit, as a real one does.
    void write_at(std::uint64_t position, std::string_view bytes) override {
        plan_->count();
        ++plan_->writes;
        if (plan_->kill_comes()) {
            const auto kept = static_cast<std::size_t>(
                std::lround(plan_->kill_keeps * static_cast<double>(bytes.size())));
            inner_->write_at(position, bytes.substr(0, kept));
            throw Killed();
        }
        if (position + bytes.size() <= plan_->disk_ends_at) {
            inner_->write_at(position, bytes);
            if (plan_->after_change) {
                plan_->after_change();
            }
            return;
        }
        const std::uint64_t room = plan_->disk_ends_at - std::min(position, plan_->disk_ends_at);
        if (room > 0) {
            inner_->write_at(position, bytes.substr(0, room));
        }
        throw platform::Failure(platform::kDiskFull);
    }
    std::uint64_t length() override {
        plan_->count();
        return inner_->length();
    }
    void sync() override {
        plan_->count();
        plan_->synced.push_back(name_);
    }

  private:
    std::unique_ptr<platform::Channel> inner_;
    std::shared_ptr<FaultPlan> plan_;
    std::string name_;
};

class FaultFileSystem final : public platform::FileSystem {
  public:
    explicit FaultFileSystem(std::shared_ptr<FaultPlan> plan) : plan_(std::move(plan)) {}

    /// Puts a faulty file system in the place of the machine's own and returns its plan.
    static std::shared_ptr<FaultPlan> install() {
        auto plan = std::make_shared<FaultPlan>();
        platform::set_files(std::make_unique<FaultFileSystem>(plan));
        return plan;
    }

    std::unique_ptr<platform::Channel> open(const std::string& path,
                                            platform::OpenMode mode) override {
        plan_->count();
        return std::make_unique<FaultChannel>(platform::real_files().open(path, mode), plan_,
                                              path.substr(path.find_last_of("/\\") + 1));
    }
    bool exists(const std::string& path) override { return platform::real_files().exists(path); }
    bool directory_exists(const std::string& path) override {
        return platform::real_files().directory_exists(path);
    }
    std::uint64_t length(const std::string& path) override {
        plan_->count();
        return platform::real_files().length(path);
    }
    void remove(const std::string& path) override {
        plan_->count();
        if (plan_->kill_comes()) {
            throw Killed();
        }
        if (plan_->before_removal) {
            plan_->before_removal(path);
        }
        platform::real_files().remove(path);
    }
    void copy(const std::string& source, const std::string& target) override {
        plan_->count();
        platform::real_files().copy(source, target);
    }
    bool permitted(const std::string& path) override {
        return platform::real_files().permitted(path);
    }

  private:
    std::shared_ptr<FaultPlan> plan_;
};

}  // namespace test_support
