// What the tool does where a run has been killed within the write of an employee's record.

#include "nzutil/killed_run.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "installation/demo.h"
#include "nzutil/commands.h"
#include "platform/directory_lock.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/temp_directory.h"

namespace nzutil {
namespace {

using MXLIBRERIA::file_numbers::kEmployees;
using test_support::FaultFileSystem;
using test_support::Killed;
using test_support::TempDirectory;

constexpr int kEmployee = 3;

class AfterAKilledRun : public ::testing::Test {
  protected:
    /// A run that was about to write the slip of May: half of the record is on file.
    void SetUp() override {
        make_demo_installation(root()).close();
        {
            const Installation demo = Installation::open(root());
            written = *demo.read(kEmployees, kEmployee);
            MXREPOSITORY::SCRIVICAMPONUM(MXREPOSITORY::Q171, 5, 0, written);
            written.back() = 'X';
            kill_write_of(written);
        }
    }
    void TearDown() override {
        platform::set_files(nullptr);
        MXLIBRERIA::recovery_slot = {};
        MXLIBRERIA::CHIUDI(0);
    }

    static void kill_write_of(const std::string& record) {
        const auto plan = FaultFileSystem::install();
        MXLIBRERIA::CHIUDI(0);
        MXLIBRERIA::FAIOPEN(kEmployees);
        MXLIBRERIA::recovery_slot.in_use = true;
        plan->kill_at = 2;  // the slot, then the record
        plan->kill_keeps = 0.5;
        EXPECT_THROW(MXLIBRERIA::write_whole_record(kEmployees, kEmployee, record), Killed);
        platform::set_files(nullptr);
        MXLIBRERIA::recovery_slot = {};
        MXLIBRERIA::CHIUDI(0);
    }

    [[nodiscard]] std::string root() const { return directory.file("demo"); }
    [[nodiscard]] bool slot_waits() const {
        return std::filesystem::exists(root() + "/archivi/VELMOR.RIP");
    }
    [[nodiscard]] std::string employee() const {
        const Installation demo = Installation::open(root());
        return *demo.read(kEmployees, kEmployee);
    }

    TempDirectory directory;
    std::string written;
};

TEST_F(AfterAKilledRun, ACommandThatReadsFinishesTheRecord) {
    EXPECT_FALSE(employee() == written);
    EXPECT_EQ(run_tool({"leggi", root(), "2", "3", "Q171"}), 0);
    EXPECT_TRUE(employee() == written);
    EXPECT_FALSE(slot_waits());
}

TEST_F(AfterAKilledRun, WhatACommandWritesIsNotUndoneByTheNextStart) {
    EXPECT_EQ(run_tool({"scrivi", root(), "2", "3", "P116", "1"}), 0);
    std::string expected = written;
    MXREPOSITORY::SCRIVICAMPONUM(MXREPOSITORY::P116, 1, 0, expected);
    EXPECT_TRUE(employee() == expected);
    EXPECT_FALSE(slot_waits());
}

TEST_F(AfterAKilledRun, NothingIsFinishedWhileARunGoesOn) {
    const auto running = platform::try_directory_lock(root() + "/archivi", "velmor");
    ASSERT_NE(running.lock, nullptr);
    EXPECT_EQ(run_tool({"leggi", root(), "2", "3", "Q171"}), 0);
    EXPECT_FALSE(employee() == written);
    EXPECT_TRUE(slot_waits());
}

}  // namespace
}  // namespace nzutil
