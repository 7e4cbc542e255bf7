// The program itself, killed within a write to a file, for every write and at random points, and
// then started again: the archive is byte for byte the one of a run that nobody has killed.

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <string>

#include "installation/demo.h"
#include "installation/installation.h"
#include "nzutil/process.h"
#include "platform/file_system.h"
#include "tests/support/temp_directory.h"
#include "texts/texts.h"

namespace {

namespace fs = std::filesystem;
using nzutil::Installation;
using nzutil::ProcessCall;
using nzutil::ProcessResult;
using test_support::TempDirectory;

using Snapshot = std::map<std::string, std::string>;

constexpr int kKilled = 128 + SIGKILL;
constexpr int kAllBytes = 1000;

class KilledProcess : public ::testing::Test {
  protected:
    void SetUp() override {
        nzutil::make_demo_installation(directory.file("demo")).close();
        fs::create_directories(directory.file("run"));
    }

    [[nodiscard]] Installation installation() const {
        return Installation::open(directory.file("demo"));
    }
    [[nodiscard]] std::string archive() const { return directory.file("demo/archivi"); }

    /// June after May has been calculated: before-images are on file, month cells are full.
    void go_to_june() const {
        ASSERT_EQ(run().status, 0);
        Installation demo = installation();
        demo.write_period("30062024", '4');
        demo.close();
    }

    [[nodiscard]] Snapshot snapshot() const {
        Snapshot files;
        for (const fs::directory_entry& entry : fs::directory_iterator(archive())) {
            files[entry.path().filename().string()] =
                platform::read_whole_file(entry.path().string());
        }
        return files;
    }
    void restore() const {
        const Snapshot present = snapshot();
        for (const auto& [name, bytes] : present) {
            if (!before.contains(name)) {
                fs::remove(archive() + "/" + name);
            }
        }
        for (const auto& [name, bytes] : before) {
            if (!present.contains(name) || present.at(name) != bytes) {
                std::ofstream(archive() + "/" + name, std::ios::binary) << bytes;
            }
        }
    }

    [[nodiscard]] ProcessResult call(const std::string& program,
                                     const std::vector<std::string>& arguments, std::uint64_t write,
                                     int keeps) const {
        return nzutil::run_process({program,
                                    arguments,
                                    {{"SOLMAREL_REGISTRO", directory.file("demo/registro.ini")},
                                     {"VELMOR_INTERFACCIA", "console"},
                                     {"VELMOR_RISPOSTE", "no"},
                                     {"VELMOR_TASK", ""},
                                     {"LD_PRELOAD", KILL_AT_WRITE},
                                     {"ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0"},
                                     {"VELMOR_KILL_AT", std::to_string(write)},
                                     {"VELMOR_KILL_KEEPS", std::to_string(keeps)}},
                                    directory.file("run")});
    }
    [[nodiscard]] ProcessResult run(std::uint64_t killed_at = 0, int keeps = 0) const {
        return call(VELMOR_PROGRAM, {}, killed_at, keeps);
    }

    /// Runs from the archive as it stands to the end; what that leaves is what every other run is
    /// held against.
    void run_whole() {
        before = snapshot();
        ASSERT_EQ(run().status, 0);
        calculated = snapshot();
        ASSERT_NE(calculated, before);
    }

    /// What stands between the killed run and the next one.
    enum class Meanwhile { nothing, index_check };

    void check_index() const {
        const ProcessResult check =
            call(NZUTIL_PROGRAM, {"isam", directory.file("demo"), "36", "verifica"}, 0, 0);
        EXPECT_EQ(check.status, 0) << check.output << check.errors;
    }

    /// Kills a run and starts it again. False if the run ended before the write came.
    bool killed_and_started_again(std::uint64_t write, int keeps, Meanwhile meanwhile) const {
        SCOPED_TRACE("write " + std::to_string(write) + ", " + std::to_string(keeps) +
                     " thousandths of it");
        restore();
        const int status = run(write, keeps).status;
        if (status == 0) {
            return false;
        }
        EXPECT_EQ(status, kKilled);
        if (meanwhile == Meanwhile::index_check) {
            check_index();
        }
        const ProcessResult again = run();
        EXPECT_EQ(again.status, 0) << again.output << again.errors;
        const Snapshot left = snapshot();
        for (const auto& [name, bytes] : left) {
            EXPECT_TRUE(calculated.contains(name) && calculated.at(name) == bytes) << name;
        }
        return true;
    }

    /// The last write that a kill can cut.
    [[nodiscard]] std::uint64_t writes_of_run() const {
        std::uint64_t killed = 1;
        std::uint64_t ended = 10000;
        while (ended > killed + 1) {
            const std::uint64_t middle = (killed + ended) / 2;
            restore();
            (run(middle).status == 0 ? ended : killed) = middle;
        }
        return killed;
    }

    TempDirectory directory;
    Snapshot before;
    Snapshot calculated;
};

TEST_F(KilledProcess, AtEveryWriteHalfOfItWritten) {
    Installation demo = installation();
    demo.write_selection({{1, 3}, {1, 5}, {1, 9}});
    demo.close();
    run_whole();
    std::uint64_t write = 1;
    while (killed_and_started_again(write, kAllBytes / 2, Meanwhile::nothing) && !HasFailure()) {
        EXPECT_TRUE(killed_and_started_again(write, kAllBytes / 2, Meanwhile::index_check));
        ++write;
    }
    EXPECT_GT(write, 30U);  // three employees of ten writes and more each
}

/// The tool writes through the slot too: the next command finishes what a killed one began.
TEST_F(KilledProcess, ACommandThatWritesARecord) {
    const std::vector<std::string> write_field = {
        "scrivi", directory.file("demo"), "2", "3", "P116", "1"};
    before = snapshot();
    ASSERT_EQ(call(NZUTIL_PROGRAM, write_field, 0, 0).status, 0);
    calculated = snapshot();
    ASSERT_NE(calculated, before);
    int killed = 0;
    for (std::uint64_t write = 1;; ++write) {
        restore();
        if (call(NZUTIL_PROGRAM, write_field, write, kAllBytes / 2).status != kKilled) {
            break;
        }
        ++killed;
        check_index();
        const std::string employees = snapshot().at("DIPEND.DAT");
        EXPECT_TRUE(employees == before.at("DIPEND.DAT") ||
                    employees == calculated.at("DIPEND.DAT"));
    }
    EXPECT_GE(killed, 4);  // slot, record, state, removal
}

TEST_F(KilledProcess, At300RandomPoints) {
    go_to_june();
    run_whole();
    const std::uint64_t seed = std::random_device{}();
    std::cout << "seed " << seed << '\n';
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<std::uint64_t> write(1, writes_of_run());
    std::uniform_int_distribution<int> keeps(0, kAllBytes);
    for (int points = 0; points < 300 && !HasFailure(); ++points) {
        const std::uint64_t at = write(random);
        const int kept = keeps(random);
        EXPECT_TRUE(killed_and_started_again(
            at, kept, kept % 4 == 0 ? Meanwhile::index_check : Meanwhile::nothing));
    }
}

}  // namespace
