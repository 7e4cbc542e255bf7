#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "files/logical_files.h"
#include "platform/failure.h"
#include "tests/support/archive_directory.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/other_process.h"

namespace MXLIBRERIA {
namespace {

using platform::OpenMode;
using test_support::ArchiveDirectory;
using test_support::in_other_process;

class Semaphore : public ::testing::Test {
  protected:
    [[nodiscard]] std::string path() const { return archive_.file("NZSEMA.DAT"); }

    /// Can a program open the semaphore at this moment?
    [[nodiscard]] bool free_for_others() const {
        return in_other_process([&] {
                   try {
                       static_cast<void>(platform::files().open(path(), OpenMode::exclusive));
                   } catch (const platform::Failure& failure) {
                       return failure.number();
                   }
                   return 0;
               }) == 0;
    }
    ArchiveDirectory archive_;
};

TEST_F(Semaphore, IsHeldBetweenOpeningAndClosing) {
    APRISEMA();
    EXPECT_NE(file_table.entries[16].CANALI, 0);
    EXPECT_FALSE(free_for_others());
    CHIUDISEMA();
    EXPECT_EQ(file_table.entries[16].CANALI, 0);
    EXPECT_TRUE(free_for_others());
}

TEST_F(Semaphore, IsReleasedByClosingLogicalFile16) {
    APRISEMA();
    CHIUDI(16);
    EXPECT_TRUE(free_for_others());
}

TEST_F(Semaphore, TakingItTwiceIsTakingItOnce) {
    APRISEMA();
    APRISEMA();
    EXPECT_FALSE(free_for_others());
    CHIUDISEMA();
    EXPECT_TRUE(free_for_others());
}

TEST_F(Semaphore, IsFreeAgainWhenItsHolderDies) {
    EXPECT_EQ(in_other_process([] {
                  APRISEMA();
                  return 7;  // the process ends with the semaphore in its hands
              }),
              7);
    APRISEMA();
    CHIUDISEMA();
}

/// Reads a number from the file, adds 1, writes it back: only safe for one program at a time.
void add_one(const std::string& path) {
    const auto channel = platform::real_files().open(path, OpenMode::shared);
    std::array<char, 8> digits{};
    static_cast<void>(channel->read_at(0, digits.data(), digits.size()));
    const int value = std::stoi(std::string(digits.data(), digits.size())) + 1;
    std::string text = std::to_string(value);
    text.insert(0, digits.size() - text.size(), '0');
    channel->write_at(0, text);
}

TEST_F(Semaphore, TwoProgramsNeverStandInTheSection) {
    archive_.write("counter", "00000000");
    const std::string counter = archive_.file("counter");
    constexpr int kRounds = 500;
    const auto work = [&] {
        for (int i = 0; i < kRounds; ++i) {
            APRISEMA();
            add_one(counter);
            CHIUDISEMA();
        }
        return 0;
    };
    const pid_t first = test_support::start_process(work);
    const pid_t second = test_support::start_process(work);
    EXPECT_EQ(test_support::result_of(first), 0);
    EXPECT_EQ(test_support::result_of(second), 0);
    EXPECT_EQ(archive_.read("counter"), "00001000");
}

/// An opening that is refused with 70 and 75 in turn before it succeeds.
class HeldForAWhile final : public platform::FileSystem {
  public:
    explicit HeldForAWhile(int* refusals) : refusals_(refusals) {}
    std::unique_ptr<platform::Channel> open(const std::string& path, OpenMode mode) override {
        if (*refusals_ > 0) {
            --*refusals_;
            throw platform::Failure(*refusals_ % 2 == 0 ? 70 : 75);
        }
        return platform::real_files().open(path, mode);
    }
    bool exists(const std::string& path) override { return platform::real_files().exists(path); }
    bool directory_exists(const std::string& path) override {
        return platform::real_files().directory_exists(path);
    }
    std::uint64_t length(const std::string& path) override {
        return platform::real_files().length(path);
    }
    void remove(const std::string& path) override { platform::real_files().remove(path); }
    void copy(const std::string& source, const std::string& target) override {
        platform::real_files().copy(source, target);
    }
    bool permitted(const std::string& path) override {
        return platform::real_files().permitted(path);
    }

  private:
    int* refusals_;
};

TEST_F(Semaphore, IsTriedAgainWhileItIsHeld) {
    int refusals = 21;
    platform::set_files(std::make_unique<HeldForAWhile>(&refusals));
    APRISEMA();
    platform::set_files(nullptr);
    EXPECT_EQ(refusals, 0);
    EXPECT_NE(file_table.entries[16].CANALI, 0);
}

TEST_F(Semaphore, AnyOtherFailureIsNotWaitedFor) {
    const auto plan = test_support::FaultFileSystem::install();
    plan->fail_at = 1;
    plan->number = 57;
    EXPECT_THROW(APRISEMA(), platform::Failure);
    platform::set_files(nullptr);
    EXPECT_EQ(plan->operations, 1U);
}

TEST_F(Semaphore, AReadOnlyDirectoryWithoutItIsAFailureAndNoEndlessWait) {
    std::filesystem::permissions(archive_.path(), std::filesystem::perms(0555));
    EXPECT_EQ(in_other_process([] {
                  test_support::become_ordinary_user();
                  try {
                      APRISEMA();
                  } catch (const platform::Failure& failure) {
                      return failure.number();
                  }
                  return 0;
              }),
              75);
}

TEST_F(Semaphore, OneThatMayOnlyBeReadServesAsALock) {
    archive_.write("NZSEMA.DAT", std::string(2000, ' '));
    std::filesystem::permissions(path(), std::filesystem::perms(0444));
    std::filesystem::permissions(archive_.path(), std::filesystem::perms(0555));
    EXPECT_EQ(in_other_process([&] {
                  test_support::become_ordinary_user();
                  APRISEMA();
                  return free_for_others() ? 1 : 0;
              }),
              0);
}

}  // namespace
}  // namespace MXLIBRERIA
