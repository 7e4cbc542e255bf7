// An index operation killed within each of its writes: after the next start the index is sound, and
// its keys are those before the operation or those after it.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "tests/support/archive_directory.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/index_model.h"
#include "tests/support/scripted_window.h"

namespace MXLIBRERIA {
namespace {

using test_support::ArchiveDirectory;
using test_support::FaultFileSystem;
using test_support::IndexReader;
using test_support::Killed;
using test_support::ScriptedWindow;
using namespace MXLIBRERIA::file_numbers;

constexpr std::size_t kKeyLength = 10;

std::string key_of(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(kKeyLength - digits.size(), '0') + digits;
}

/// Sorted keys leave 64 in a leaf; with this many the branch has its entry 128 and is split.
constexpr std::size_t kOneBranch = 128U * 64U;

struct KilledOperation {
    const char* name;
    std::size_t keys;  ///< even keys 2, 4, 6 ... in the index before
    std::size_t key;   ///< of the operation
    double operation;
    std::uint64_t blocks;  ///< that the operation writes; a file that it removes counts too
};

void PrintTo(const KilledOperation& operation, std::ostream* out) {
    *out << operation.name;
}

class IndexOfAKilledRun : public ::testing::TestWithParam<KilledOperation> {
  protected:
    void SetUp() override {
        archive_.define(kBeforeImageIndex, "NZINDEX.DAT", 2176);
        recovery_slot = {};
        ISAM(kBeforeImageIndex, "", kIsamEmpty, 0);
        for (std::size_t i = 1; i <= GetParam().keys; ++i) {
            ISAM(kBeforeImageIndex, key_of(i * 2), kIsamInsert, static_cast<double>(i));
        }
        CHIUDI(0);
        before_ = archive_.read("NZINDEX.DAT");
    }
    void TearDown() override {
        platform::set_files(nullptr);
        CHIUDI(0);
        recovery_slot = {};
    }

    static void work() {
        FAIOPEN(kBeforeImageIndex);
        recovery_slot.in_use = true;
        ISAM(kBeforeImageIndex, key_of(GetParam().key), GetParam().operation, 777);
    }

    /// Bytes of the index after the operation, and the changes that it made: the slot, the blocks,
    /// the state.
    std::string whole_operation() {
        const auto plan = FaultFileSystem::install();
        work();
        EXPECT_EQ(plan->changes, GetParam().blocks + 2);
        CHIUDI(0);
        platform::set_files(nullptr);
        return archive_.read("NZINDEX.DAT");
    }

    void killed_operation(std::uint64_t change, double keeps) {
        archive_.write("NZINDEX.DAT", before_);
        std::filesystem::remove(archive_.file("VELMOR.RIP"));
        const auto plan = FaultFileSystem::install();
        plan->kill_at = change;
        plan->kill_keeps = keeps;
        EXPECT_THROW(work(), Killed);
        platform::set_files(nullptr);
        recovery_slot = {};
        CHIUDI(0);
    }

    ArchiveDirectory archive_;
    ScriptedWindow& window_ = ScriptedWindow::install();
    std::string before_;
};

TEST_P(IndexOfAKilledRun, IsTheOneBeforeOrTheOneAfter) {
    const std::string after = whole_operation();
    ASSERT_NE(after, before_);
    ASSERT_EQ(IndexReader(after, kKeyLength).fault, "");
    for (std::uint64_t change = 1; change <= GetParam().blocks + 2; ++change) {
        for (const double keeps : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            killed_operation(change, keeps);
            static_cast<void>(finish_killed_step());
            const bool begun = change > 1 || keeps == 1;
            ASSERT_TRUE(archive_.read("NZINDEX.DAT") == (begun ? after : before_))
                << "write " << change << ", " << keeps << " of it";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Operations, IndexOfAKilledRun,
    ::testing::Values(KilledOperation{"first key", 0, 7, kIsamInsert, 3},  // root, branch, leaf
                      KilledOperation{"plain insertion", 100, 7, kIsamInsert, 1},
                      KilledOperation{"below all keys", 100, 1, kIsamInsert,
                                      3},  // first keys of the path too
                      KilledOperation{"split of a leaf", 127, 255, kIsamInsert, 3},
                      KilledOperation{"split of leaf and branch", kOneBranch - 1, 2 * kOneBranch,
                                      kIsamInsert, 5},  // two new blocks and the path
                      KilledOperation{"removal", 100, 50, kIsamDelete, 1},
                      KilledOperation{"last key", 1, 2, kIsamDelete, 3},
                      KilledOperation{"emptying", 100, 0, kIsamEmpty, 2}));

class EmptiedIndex : public IndexOfAKilledRun {};

/// Emptying removes the file before it makes it again: a kill in between leaves none.
TEST_P(EmptiedIndex, IsMadeByTheNextStartWhereTheFileIsMissing) {
    const std::string after = whole_operation();
    killed_operation(2, 0);
    std::filesystem::remove(archive_.file("NZINDEX.DAT"));
    EXPECT_EQ(finish_killed_step().size(), 1U);
    EXPECT_TRUE(archive_.read("NZINDEX.DAT") == after);
}

TEST_P(EmptiedIndex, IsLeftAloneWhereTheSlotIsAnotherArchives) {
    killed_operation(2, 0);
    archive_.define(kBeforeImageIndex, "NZINDEX.DAT", 2048);  // keys of nine characters
    EXPECT_TRUE(finish_killed_step().empty());
    EXPECT_TRUE(archive_.read("NZINDEX.DAT") == before_);
}

INSTANTIATE_TEST_SUITE_P(Operation, EmptiedIndex,
                         ::testing::Values(KilledOperation{"emptying", 100, 0, kIsamEmpty, 2}));

}  // namespace
}  // namespace MXLIBRERIA
