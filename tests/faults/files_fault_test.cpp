// The Nth operation on the files fails, for every N; the disk runs full. A failure has to come out
// with its number, other records have to keep every byte, and the index every key.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "tests/support/archive_directory.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/index_model.h"
#include "tests/support/other_process.h"
#include "tests/support/scripted_window.h"

namespace MXLIBRERIA {
namespace {

using test_support::ArchiveDirectory;
using test_support::FaultFileSystem;
using test_support::IndexReader;
using test_support::ScriptedWindow;
using namespace MXLIBRERIA::file_numbers;

constexpr std::size_t kKeyLength = 10;

std::string key_of(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(kKeyLength - digits.size(), '0') + digits;
}

/// Sorted keys leave 64 in a leaf; with this many the branch has its entry 128 and is split.
constexpr std::size_t kOneBranch = 128U * 64U;
const std::string kLastKey = key_of(2 * kOneBranch);

class FilesUnderFaults : public ::testing::Test {
  protected:
    void SetUp() override {
        archive_.define(kEmployees, "NZDIPEND.DAT", 20);
        archive_.define(kBeforeImageIndex, "NZINDEX.DAT", 2176);
        archive_.write("NZDIPEND.DAT", records_);
    }
    void TearDown() override {
        CHIUDI(0);
        platform::set_files(nullptr);
    }

    /// Runs `work` with a fault at operation 1, 2, 3 ... until it gets through, each time on files
    /// as `prepare` leaves them; `check` sees what the failed run has left. Returns how many
    /// failed.
    static int fail_each_operation(const std::function<void()>& prepare,
                                   const std::function<void()>& work,
                                   const std::function<void()>& check) {
        for (int failed = 0;; ++failed) {
            platform::set_files(nullptr);
            prepare();
            const auto plan = FaultFileSystem::install();
            plan->fail_at = static_cast<std::uint64_t>(failed) + 1;
            plan->number = platform::kDeviceIo;
            try {
                work();
                EXPECT_LT(plan->operations, plan->fail_at);
                CHIUDI(0);
                return failed;
            } catch (const platform::Failure& failure) {
                EXPECT_EQ(failure.number(), 57);
                EXPECT_EQ(failure.description(), "Device I/O error");
            }
            CHIUDI(0);
            platform::set_files(nullptr);
            check();
        }
    }

    ArchiveDirectory archive_;
    ScriptedWindow& window_ = ScriptedWindow::install();
    const std::string records_ = std::string(20, 'a') + std::string(20, 'b') + std::string(20, 'c');
};

TEST_F(FilesUnderFaults, WritingARecordTouchesNoOther) {
    const auto write = [] {
        FAIOPEN(kEmployees);
        LEGGIREC(kEmployees, 2);
        SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
    };
    const int failed =
        fail_each_operation([&] { archive_.write("NZDIPEND.DAT", records_); }, write,
                            [&] { EXPECT_EQ(archive_.read("NZDIPEND.DAT"), records_); });
    EXPECT_EQ(failed, 5);  // NZBASE.DAT opened and read; the file opened, read, written
    EXPECT_EQ(archive_.read("NZDIPEND.DAT"),
              std::string(20, 'a') + std::string(20, 'X') + std::string(20, 'c'));
}

TEST_F(FilesUnderFaults, AFullDiskKeepsTheRecordsThatAreThere) {
    const auto plan = FaultFileSystem::install();
    FAIOPEN(kEmployees);
    plan->disk_ends_at = records_.size() + 7;  // room for a part of the new record
    try {
        SCRIVIREC(kEmployees, 4, std::string(20, 'X'));
        FAIL();
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), 61);
        EXPECT_EQ(failure.description(), "Disk full");
    }
    EXPECT_EQ(archive_.read("NZDIPEND.DAT").substr(0, records_.size()), records_);
    // The piece of a record reads as the end of the file, and the next try takes its place.
    EXPECT_EQ(LEGGIREC(kEmployees, 4), 1);
    plan->disk_ends_at = UINT64_MAX;
    SCRIVIREC(kEmployees, 4, std::string(20, 'Y'));
    EXPECT_EQ(archive_.read("NZDIPEND.DAT"), records_ + std::string(20, 'Y'));
}

TEST_F(FilesUnderFaults, AReadOnlyArchiveIsReadAndRefusesTheWrite) {
    std::filesystem::permissions(archive_.file("NZDIPEND.DAT"), std::filesystem::perms(0444));
    std::filesystem::permissions(archive_.file("NZBASE.DAT"), std::filesystem::perms(0444));
    std::filesystem::permissions(archive_.path(), std::filesystem::perms(0555));
    EXPECT_EQ(test_support::in_other_process([&] {
                  test_support::become_ordinary_user();
                  FAIOPEN(kEmployees);
                  if (LEGGIREC(kEmployees, 2) != 0 || record_buffer(kEmployees)[0] != 'b') {
                      return 1;
                  }
                  try {
                      SCRIVIREC(kEmployees, 2, std::string(20, 'X'));
                  } catch (const platform::Failure& failure) {
                      return failure.number();
                  }
                  return 2;
              }),
              75);
    EXPECT_EQ(archive_.read("NZDIPEND.DAT"), records_);
}

TEST_F(FilesUnderFaults, MakingAFileAnewFailsOrSucceedsWhole) {
    const int failed = fail_each_operation(
        [&] { archive_.write("NZDIPEND.DAT", records_); }, [] { RICREAFILE(kEmployees); },
        [&] {
            const std::string left = archive_.read("NZDIPEND.DAT");
            EXPECT_TRUE(left == records_ || left.empty());
        });
    EXPECT_GT(failed, 5);
    EXPECT_EQ(archive_.read("NZDIPEND.DAT"), "");
}

TEST_F(FilesUnderFaults, TheSemaphoreGoesWhenTheSectionFails) {
    const int failed =
        fail_each_operation([] {},
                            [] {
                                APRISEMA();
                                FAIOPEN(kEmployees);
                                SCRIVIREC(kEmployees, 4, std::string(20, 'X'));
                                CHIUDISEMA();
                            },
                            [&] {
                                EXPECT_NO_THROW(static_cast<void>(platform::files().open(
                                    archive_.file("NZSEMA.DAT"), platform::OpenMode::exclusive)));
                            });
    EXPECT_EQ(failed, 6);
}

/// An index on disk, kept as bytes so that each try starts from the same state.
class IndexUnderFaults : public FilesUnderFaults {
  protected:
    /// Keys 2, 4, 6 ... in order.
    void build(std::size_t keys) {
        ISAM(kBeforeImageIndex, "", kIsamEmpty, 0);
        for (std::size_t i = 1; i <= keys; ++i) {
            ISAM(kBeforeImageIndex, key_of(i * 2), kIsamInsert, static_cast<double>(i));
            keys_[key_of(i * 2)] = static_cast<double>(i);
        }
        CHIUDI(kBeforeImageIndex);
        before_ = archive_.read("NZINDEX.DAT");
    }

    /// Every key but `changed` is found with its record, and every tenth from the one before it.
    /// `changed` is found or not.
    void check_keys(const std::string& changed) {
        FAIOPEN(kBeforeImageIndex);
        std::string before = key_of(1);
        int number = 0;
        for (const auto& [key, record] : keys_) {
            if (key == changed) {
                continue;
            }
            ASSERT_EQ(ISAM(kBeforeImageIndex, key, kIsamSearch, 0), record);
            if (++number % 10 == 0) {
                double above = ISAM(kBeforeImageIndex, before, kIsamNext, 0);
                if (isam_state.last_key == changed) {
                    above = ISAM(kBeforeImageIndex, changed, kIsamNext, 0);
                }
                ASSERT_EQ(above, record);
                ASSERT_EQ(isam_state.last_key, key);
            }
            before = key;
        }
        CHIUDI(kBeforeImageIndex);
    }

    int fail_each_block(const std::string& key, double operation) {
        return fail_each_operation([&] { archive_.write("NZINDEX.DAT", before_); },
                                   [&] {
                                       FAIOPEN(kBeforeImageIndex);
                                       ISAM(kBeforeImageIndex, key, operation, 777);
                                   },
                                   [&] { check_keys(key); });
    }

    // File operations: an index is opened (NZBASE.DAT opened and read, the file opened), the blocks
    // of three levels are read, changed ones are written; a new block asks for the file's length.
    static constexpr int kOpening = 3;
    static constexpr int kNewBlock = 2;

    std::map<std::string, double> keys_;
    std::string before_;
};

TEST_F(IndexUnderFaults, APlainInsertion) {
    build(100);
    EXPECT_EQ(fail_each_block(key_of(7), kIsamInsert),
              7);  // NZBASE.DAT, opening, length, 3 reads, 1 write
    EXPECT_EQ(IndexReader(archive_.read("NZINDEX.DAT"), kKeyLength).keys.at(key_of(7)), 777);
}

TEST_F(IndexUnderFaults, AnInsertionBelowAllKeys) {
    build(100);
    EXPECT_EQ(fail_each_block(key_of(1), kIsamInsert), kOpening + 3 + 3);  // the first keys too
    EXPECT_EQ(IndexReader(archive_.read("NZINDEX.DAT"), kKeyLength).fault, "");
}

TEST_F(IndexUnderFaults, ASplitOfALeaf) {
    build(127);
    EXPECT_EQ(fail_each_block(key_of(255), kIsamInsert), kOpening + 3 + kNewBlock + 2);
    const IndexReader reader(archive_.read("NZINDEX.DAT"), kKeyLength);
    EXPECT_EQ(reader.fault, "");
    EXPECT_EQ(reader.blocks[3], 2);
}

TEST_F(IndexUnderFaults, ASplitOfALeafAndOfItsBranch) {
    build(kOneBranch - 1);  // the next key fills the branch's entry 128
    EXPECT_EQ(fail_each_block(kLastKey, kIsamInsert), kOpening + 3 + 2 * kNewBlock + 3);
    const IndexReader reader(archive_.read("NZINDEX.DAT"), kKeyLength);
    EXPECT_EQ(reader.fault, "");
    EXPECT_EQ(reader.blocks[2], 2);
    EXPECT_EQ(reader.keys.size(), kOneBranch);
}

TEST_F(IndexUnderFaults, ASplitInTheMiddleOfABranch) {
    constexpr std::size_t kMiddle = 2563;  // the 20th leaf holds the even keys 2562 to 2688
    build(kOneBranch - 1);
    CHIUDI(0);
    FAIOPEN(kBeforeImageIndex);
    for (std::size_t i = 0; i < 63; ++i) {  // a leaf in the lower half gets 127 keys
        const std::string key = key_of(kMiddle + i * 2);
        ISAM(kBeforeImageIndex, key, kIsamInsert, 9);
        keys_[key] = 9;
    }
    CHIUDI(kBeforeImageIndex);
    before_ = archive_.read("NZINDEX.DAT");
    EXPECT_EQ(fail_each_block(key_of(kMiddle + 126), kIsamInsert),
              kOpening + 3 + 2 * kNewBlock + 3);
    EXPECT_EQ(IndexReader(archive_.read("NZINDEX.DAT"), kKeyLength).fault, "");
}

TEST_F(IndexUnderFaults, TheFirstKey) {
    build(0);
    EXPECT_EQ(fail_each_block(key_of(7), kIsamInsert), kOpening + 1 + 3);
    EXPECT_EQ(IndexReader(archive_.read("NZINDEX.DAT"), kKeyLength).keys.size(), 1U);
}

TEST_F(IndexUnderFaults, ARemovalThatEmptiesABlock) {
    build(128);
    CHIUDI(0);
    FAIOPEN(kBeforeImageIndex);
    for (std::size_t i = 2; i <= 64; ++i) {
        ISAM(kBeforeImageIndex, key_of(i * 2), kIsamDelete, 0);
        keys_.erase(key_of(i * 2));
    }
    CHIUDI(kBeforeImageIndex);
    before_ = archive_.read("NZINDEX.DAT");
    EXPECT_EQ(fail_each_block(key_of(2), kIsamDelete), kOpening + 3 + 3);
    const IndexReader reader(archive_.read("NZINDEX.DAT"), kKeyLength);
    EXPECT_EQ(reader.fault, "");
    EXPECT_EQ(reader.keys.size(), 64U);
}

TEST_F(IndexUnderFaults, TheLastKey) {
    build(1);
    EXPECT_EQ(fail_each_block(key_of(2), kIsamDelete), kOpening + 3 + 3);
    EXPECT_EQ(IndexReader(archive_.read("NZINDEX.DAT"), kKeyLength).keys.size(), 0U);
}

TEST_F(IndexUnderFaults, ASplitOnAFullDisk) {
    build(kOneBranch - 1);
    FAIOPEN(kBeforeImageIndex);
    CHIUDI(kBeforeImageIndex);
    for (const std::size_t room : {0U, 1000U, 2176U, 3000U}) {  // both splits need a new block
        archive_.write("NZINDEX.DAT", before_);
        const auto plan = FaultFileSystem::install();
        FAIOPEN(kBeforeImageIndex);
        plan->disk_ends_at = before_.size() + room;
        try {
            ISAM(kBeforeImageIndex, kLastKey, kIsamInsert, 777);
            FAIL();
        } catch (const platform::Failure& failure) {
            EXPECT_EQ(failure.number(), 61);
        }
        plan->disk_ends_at = UINT64_MAX;
        CHIUDI(kBeforeImageIndex);
        check_keys(kLastKey);
        FAIOPEN(kBeforeImageIndex);  // with room again the same insertion succeeds
        EXPECT_EQ(ISAM(kBeforeImageIndex, kLastKey, kIsamInsert, 777), 0);
        EXPECT_EQ(IndexReader(archive_.read("NZINDEX.DAT"), kKeyLength).fault, "");
        CHIUDI(kBeforeImageIndex);
        platform::set_files(nullptr);
    }
}

}  // namespace
}  // namespace MXLIBRERIA
