#include "files/recovery_slot.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <sstream>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "tests/support/archive_directory.h"
#include "tests/support/fault_file_system.h"

namespace MXLIBRERIA {
namespace {

using test_support::ArchiveDirectory;
using test_support::FaultFileSystem;
using test_support::FaultPlan;
using test_support::Killed;
using namespace MXLIBRERIA::file_numbers;

constexpr const char* kSlot = "VELMOR.RIP";

/// The checksum as the slot's header tells it, word by word.
std::string checksum_of(const std::string& image) {
    const std::uint64_t factor = 0x9E3779B97F4A7C15U;
    std::string bytes = image;
    bytes.replace(32, 16, 16, ' ');
    bytes.resize((bytes.size() / 32 + 1) * 32, '\0');
    std::uint64_t sums[4] = {1, 2, 3, 4};
    for (std::size_t i = 0; i < bytes.size() / 8; ++i) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i * 8, 8);
        sums[i % 4] = std::rotl(sums[i % 4] ^ word, 29) * factor;
    }
    std::uint64_t whole = 0;
    for (const std::uint64_t sum : sums) {
        whole = std::rotl(whole ^ sum, 29) * factor;
    }
    std::ostringstream digits;
    digits << std::hex << std::setw(16) << std::setfill('0') << whole;
    return digits.str();
}

/// Two files of three records each; the slot is in use.
class Slot : public ::testing::Test {
  protected:
    void SetUp() override {
        archive_.define(2, "NZDIPEND.DAT", 20);
        archive_.define(97, "NZMESI$$.DAT", 8);
        restore();
        recovery_slot = {};
        open();
    }
    void TearDown() override {
        platform::set_files(nullptr);
        CHIUDI(0);
        recovery_slot = {};
    }

    void restore() {
        archive_.write("NZDIPEND.DAT", employees_);
        archive_.write("NZMESI01.DAT", months_);
        std::filesystem::remove(archive_.file(kSlot));
    }
    static void open() {
        FAIOPEN(kEmployees);
        FAIOPEN(kTwelveMonths);
        recovery_slot.in_use = true;
    }

    /// Writes employee 2 and months 4, which makes the file longer, as one step.
    static void write_step() {
        SlotStep step;
        SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
        SCRIVIREC(kTwelveMonths, 4, std::string(8, 'Y'));
        step.commit();
    }

    /// The step, killed within a write; what is in memory is gone, as with the process.
    static void killed_step(std::uint64_t change, double keeps) {
        const auto plan = FaultFileSystem::install();
        open();
        plan->kill_at = change;
        plan->kill_keeps = keeps;
        EXPECT_THROW(write_step(), Killed);
        platform::set_files(nullptr);
        recovery_slot = {};
        CHIUDI(0);
    }

    [[nodiscard]] std::string employees() const { return archive_.read("NZDIPEND.DAT"); }
    [[nodiscard]] std::string months() const { return archive_.read("NZMESI01.DAT"); }
    [[nodiscard]] bool slot_exists() const { return std::filesystem::exists(archive_.file(kSlot)); }

    ArchiveDirectory archive_;
    const std::string employees_ =
        std::string(20, 'a') + std::string(20, 'b') + std::string(20, 'c');
    const std::string months_ = std::string(8, '1') + std::string(8, '2') + std::string(8, '3');
    const std::string new_employees_ =
        std::string(20, 'a') + std::string(20, 'X') + std::string(20, 'c');
    const std::string new_months_ = months_ + std::string(8, 'Y');
};

// Writes of a step: 1 the slot, 2 the employee, 3 the months, 4 the state.
constexpr std::uint64_t kWrites = 4;

TEST_F(Slot, AStepReachesItsFilesAtItsEnd) {
    {
        SlotStep step;
        SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
        SCRIVIREC(kTwelveMonths, 4, std::string(8, 'Y'));
        EXPECT_EQ(employees(), employees_);
        step.commit();
    }
    EXPECT_EQ(employees(), new_employees_);
    EXPECT_EQ(months(), new_months_);
    EXPECT_EQ(archive_.read(kSlot)[8], '0');
}

TEST_F(Slot, AStepWithoutItsEndWritesNothing) {
    {
        const SlotStep step;
        SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
    }
    EXPECT_EQ(employees(), employees_);
    EXPECT_FALSE(slot_exists());
    SCRIVIREC(kEmployees, 1, std::string(20, 'Z'));  // the next write is none of the step
    EXPECT_EQ(employees().substr(0, 40), std::string(20, 'Z') + std::string(20, 'b'));
}

TEST_F(Slot, AStepReadsWhatItHasWritten) {
    SlotStep step;
    SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
    SCRIVIREC(kEmployees, 2, std::string(20, 'Z'));
    SCRIVIREC(kTwelveMonths, 5, std::string(8, 'Y'));
    EXPECT_EQ(LEGGIREC(kEmployees, 2), 0);
    EXPECT_EQ(record_buffer(kEmployees), std::string(20, 'Z'));
    EXPECT_EQ(LEGGIREC(kEmployees, 1), 0);
    EXPECT_EQ(record_buffer(kEmployees), std::string(20, 'a'));
    EXPECT_EQ(file_length(kTwelveMonths), 40);  // five records of 8
    step.commit();
    EXPECT_EQ(employees().substr(20, 20), std::string(20, 'Z'));
}

TEST_F(Slot, AStepInsideAnotherIsPartOfIt) {
    SlotStep outer;
    {
        SlotStep inner;
        SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
        inner.commit();
    }
    SCRIVIREC(kTwelveMonths, 4, std::string(8, 'Y'));
    EXPECT_EQ(employees(), employees_);
    outer.commit();
    EXPECT_EQ(employees(), new_employees_);
    EXPECT_EQ(months(), new_months_);
}

TEST_F(Slot, WithoutARunRecordsAreSimplyWritten) {
    recovery_slot.in_use = false;
    write_step();
    write_whole_record(kEmployees, 1, std::string(20, 'W'));
    EXPECT_EQ(employees().substr(0, 20), std::string(20, 'W'));
    EXPECT_EQ(months(), new_months_);
    EXPECT_FALSE(slot_exists());
}

TEST_F(Slot, AClosedFileIsToldAtOnce) {
    CHIUDI(kEmployees);
    const SlotStep step;
    EXPECT_THROW(SCRIVIREC(kEmployees, 2, std::string(20, 'X')), platform::Failure);
}

TEST_F(Slot, ClosingEverythingTakesTheSlotAway) {
    write_step();
    EXPECT_TRUE(slot_exists());
    CHIUDI(0);
    EXPECT_FALSE(slot_exists());
}

TEST_F(Slot, FormatOfASlot) {
    killed_step(2, 0);
    const std::string image = archive_.read(kSlot);
    // 48 of header, 24 + 20 of the employee, 24 + 8 of the months
    ASSERT_EQ(image.size(), 124U);
    EXPECT_EQ(image.substr(0, 32), "VELMORR110100002000000000124    ");
    EXPECT_EQ(image.substr(32, 16), checksum_of(image));
    EXPECT_EQ(image.substr(48, 44), "00200000000000200000020 " + std::string(20, 'X'));
    EXPECT_EQ(image.substr(92), "09700000000000400000008 " + std::string(8, 'Y'));
}

TEST_F(Slot, AKillWithinAnyWriteLeavesAllOfTheStepOrNothing) {
    for (std::uint64_t change = 1; change <= kWrites; ++change) {
        for (const double keeps : {0.0, 0.02, 0.3, 0.5, 0.7, 0.99, 1.0}) {
            restore();
            killed_step(change, keeps);
            const std::size_t finished = finish_killed_step().size();
            const bool begun = change > 1 || keeps == 1;
            EXPECT_EQ(employees(), begun ? new_employees_ : employees_) << change << ' ' << keeps;
            EXPECT_EQ(months(), begun ? new_months_ : months_) << change << ' ' << keeps;
            const bool emptied = change == kWrites && keeps >= 0.5;  // its one byte
            EXPECT_EQ(finished, begun && !emptied ? 2U : 0U) << change << ' ' << keeps;
            EXPECT_TRUE(finish_killed_step().empty());
        }
    }
}

TEST_F(Slot, AKillWhileTheStepIsBeingFinishedLosesNothing) {
    for (std::uint64_t change = 1; change <= 3; ++change) {  // employee, months, removal
        restore();
        killed_step(2, 0.5);
        const auto plan = FaultFileSystem::install();
        plan->kill_at = change;
        plan->kill_keeps = 0.5;
        EXPECT_THROW(static_cast<void>(finish_killed_step()), Killed);
        platform::set_files(nullptr);
        recovery_slot = {};
        CHIUDI(0);
        EXPECT_EQ(finish_killed_step().size(), 2U);
        EXPECT_EQ(employees(), new_employees_);
        EXPECT_EQ(months(), new_months_);
    }
}

TEST_F(Slot, FinishedRecordsAreToldAndTheSlotIsGone) {
    killed_step(2, 0.5);
    const std::vector<FinishedRecord> records = finish_killed_step();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].file, kEmployees);
    EXPECT_EQ(records[0].record, 2);
    EXPECT_EQ(records[0].bytes, std::string(20, 'X'));
    EXPECT_EQ(records[1].file, kTwelveMonths);
    EXPECT_FALSE(slot_exists());
}

TEST_F(Slot, AShorterStepAfterALongerOne) {
    const auto plan = FaultFileSystem::install();
    open();
    write_step();
    plan->kill_at = kWrites + 2;
    EXPECT_THROW(write_whole_record(kEmployees, 3, std::string(20, 'Z')), Killed);
    platform::set_files(nullptr);
    recovery_slot = {};
    CHIUDI(0);
    EXPECT_EQ(archive_.read(kSlot).size(), 124U);  // the longer one's end is still there
    EXPECT_EQ(finish_killed_step().size(), 1U);
    EXPECT_EQ(employees().substr(40), std::string(20, 'Z'));
}

/// Every byte of the slot changed, one after the other; and every shorter length.
TEST_F(Slot, ADamagedSlotIsNotApplied) {
    killed_step(2, 0);
    const std::string image = archive_.read(kSlot);
    for (std::size_t at = 0; at < image.size(); ++at) {
        std::string damaged = image;
        damaged[at] = static_cast<char>(damaged[at] ^ 4);
        archive_.write(kSlot, damaged);
        EXPECT_TRUE(finish_killed_step().empty()) << at;
        archive_.write(kSlot, image.substr(0, at));
        EXPECT_TRUE(finish_killed_step().empty()) << at;
    }
    EXPECT_EQ(employees(), employees_);
    EXPECT_EQ(months(), months_);
    archive_.write(kSlot, image);
    EXPECT_EQ(finish_killed_step().size(), 2U);
}

TEST_F(Slot, ASlotOfAnotherArchiveIsNotApplied) {
    killed_step(2, 0);
    const std::string image = archive_.read(kSlot);
    const auto is_refused = [&] {
        archive_.write(kSlot, image);
        const std::size_t finished = finish_killed_step().size();
        CHIUDI(0);
        return finished == 0;
    };
    archive_.define(2, "NZDIPEND.DAT", 10);
    EXPECT_TRUE(is_refused());
    archive_.define(2, "NZALTRO.DAT", 20);
    EXPECT_TRUE(is_refused());
    archive_.define(2, "NZDIPEND.DAT", 20);
    archive_.write("NZMESI01.DAT", months_.substr(0, 8));  // months 4 would leave a gap
    EXPECT_TRUE(is_refused());
    EXPECT_EQ(employees(), employees_);
    archive_.write(kSlot, std::string(500, 'V'));
    EXPECT_TRUE(finish_killed_step().empty());
    archive_.write("NZMESI01.DAT", months_);
    EXPECT_FALSE(is_refused());
}

TEST_F(Slot, TheTaskOfTheKilledRunNamesItsFiles) {
    killed_step(3, 0.5);
    environment.task = "07";
    EXPECT_EQ(finish_killed_step().size(), 2U);
    EXPECT_EQ(months(), new_months_);  // NZMESI01.DAT, the file of task 01
    EXPECT_EQ(environment.task, "07");
}

/// An employee file that only this user may not write: nothing has changed, nothing is to finish.
TEST_F(Slot, ARefusedFirstWriteLeavesNothingToFinish) {
    const auto plan = FaultFileSystem::install();
    open();
    plan->number = platform::kPathFileAccess;
    plan->fail_at = plan->operations + 3;  // slot opened, slot written, employee
    EXPECT_THROW(write_step(), platform::Failure);
    platform::set_files(nullptr);
    EXPECT_EQ(archive_.read(kSlot)[8], '0');
    EXPECT_EQ(employees(), employees_);
}

TEST_F(Slot, AStepThatTheDiskRefusedIsTriedOnceMoreAtTheEnd) {
    const auto plan = FaultFileSystem::install();
    open();
    plan->fail_at = plan->operations + 4;  // the months, after the employee
    EXPECT_THROW(write_step(), platform::Failure);
    EXPECT_EQ(months(), months_);
    CHIUDI(0);
    EXPECT_EQ(months(), new_months_);
    EXPECT_FALSE(slot_exists());
}

TEST_F(Slot, AStepThatTheDiskRefusesTwiceWaitsForTheNextStart) {
    const auto plan = FaultFileSystem::install();
    open();
    plan->disk_ends_at = 130;  // beyond the slot's 124 bytes
    SlotStep step;
    SCRIVIREC(kTwelveMonths, 17, std::string(8, 'Y'));  // ends at 136
    EXPECT_THROW(step.commit(), platform::Failure);
    CHIUDI(0);
    EXPECT_EQ(archive_.read(kSlot)[8], '1');
}

TEST_F(Slot, EachFileIsHeldToTheDiskOnceForWhatWasWritten) {
    const auto plan = FaultFileSystem::install();
    open();
    sync_recovery_slot();
    sync_file(kEmployees);
    EXPECT_TRUE(plan->synced.empty());  // nothing written, nothing to hold
    write_step();
    sync_recovery_slot();
    sync_file(kEmployees);
    sync_file(kEmployees);
    EXPECT_EQ(plan->synced, (std::vector<std::string>{"VELMOR.RIP", "NZDIPEND.DAT"}));
}

}  // namespace
}  // namespace MXLIBRERIA
