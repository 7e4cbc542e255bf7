// The run's lock in the hand of a command that writes.

#include "nzutil/write_lock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "installation/demo.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/killed_run.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/temp_directory.h"

namespace nzutil {
namespace {

namespace fs = std::filesystem;
using namespace MXLIBRERIA::file_numbers;
using test_support::FaultFileSystem;
using test_support::Killed;

class WriteLockTest : public ::testing::Test {
  protected:
    void TearDown() override {
        platform::set_files(nullptr);
        MXLIBRERIA::recovery_slot = {};
        MXLIBRERIA::CHIUDI(0);
    }
    [[nodiscard]] bool in_archive(const std::string& name) const {
        return fs::exists(root + "/archivi/" + name);
    }

    test_support::TempDirectory directory;
    std::string root = directory.file("demo");
};

TEST_F(WriteLockTest, FilesAndSlotAreClosedWhileItIsStillHeld) {
    make_demo_installation(root).close();
    Installation demo = Installation::open(root);
    const auto plan = FaultFileSystem::install();
    std::size_t slots_taken_away = 0;
    plan->before_removal = [&](const std::string& path) {
        slots_taken_away += path.ends_with("VELMOR.RIP") ? 1U : 0U;
        EXPECT_TRUE(in_archive("VELMOR.LCK")) << path;
    };
    {
        const WriteLock lock(demo, "prova");
        demo.write_period("30062024", '4');
        EXPECT_TRUE(in_archive("VELMOR.RIP"));
    }
    EXPECT_EQ(slots_taken_away, 1U);
    EXPECT_FALSE(in_archive("VELMOR.LCK"));
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kPeriod].CANALI, 0);
}

/// A kill within the records that stand in for those left out leaves none half written.
TEST_F(WriteLockTest, RecordsThatAreFilledInGoThroughTheSlotToo) {
    make_demo_installation(root).close();
    std::string items;
    int length = 0;
    {
        Installation demo = Installation::open(root);
        items = demo.path(kPayItems);
        length = demo.record_length(kPayItems);
        const int present = demo.record_count(kPayItems);
        const WriteLock lock(demo, "prova");
        const auto plan = FaultFileSystem::install();
        MXLIBRERIA::CHIUDI(kPayItems);
        plan->kill_at = 2;  // the slot, then the record
        plan->kill_keeps = 0.5;
        EXPECT_THROW(demo.write(kPayItems, present + 3, "001"), Killed);
        platform::set_files(nullptr);
        MXLIBRERIA::recovery_slot = {};
    }
    ASSERT_NE(fs::file_size(items) % static_cast<std::uintmax_t>(length), 0U);
    open_installation(root).close();
    EXPECT_EQ(fs::file_size(items) % static_cast<std::uintmax_t>(length), 0U);
}

TEST_F(WriteLockTest, AnInstallationIsMadeUnderIt) {
    std::ofstream(directory.file("prova.yaml")) << "titolo: prova\nperiodo: {data: \"31052024\"}\n";
    for (const Arguments& command :
         {Arguments{"demo", root}, Arguments{"installa", directory.file("prova.yaml"), root}}) {
        fs::remove_all(root);
        const auto plan = FaultFileSystem::install();
        std::size_t changes = 0;
        plan->after_change = [&] {
            ++changes;
            EXPECT_TRUE(in_archive("VELMOR.LCK"));
        };
        EXPECT_EQ(run_tool(command), 0);
        EXPECT_GT(changes, 100U) << command.front();
        EXPECT_FALSE(in_archive("VELMOR.LCK"));
    }
}

TEST_F(WriteLockTest, NothingIsMadeWhereAnotherProgramWorks) {
    fs::create_directories(root + "/archivi");
    const auto other = platform::try_directory_lock(root + "/archivi", "velmor");
    EXPECT_EQ(run_tool({"demo", root}), 1);
    EXPECT_FALSE(in_archive("NZBASE.DAT"));
    EXPECT_EQ(run_tool({"modelli", root + "/archivi"}), 1);
    EXPECT_FALSE(in_archive("TABCOMXX.MDB"));
}

}  // namespace
}  // namespace nzutil
