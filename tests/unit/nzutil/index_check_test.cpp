#include "nzutil/index_check.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "files/isam.h"
#include "tests/support/temp_directory.h"

namespace {

constexpr int kIndex = nzutil::kBeforeImageIndex;
constexpr std::streamoff kBlock = nzutil::index_block(nzutil::kEmployeeKey);
constexpr std::streamoff kEntry = nzutil::kEmployeeKey + 7;

class IndexCheckTest : public ::testing::Test {
  protected:
    void SetUp() override {
        static_cast<void>(made.record_length(kIndex));
        for (int i = 1; i <= 300; ++i) {  // more than one block of level 3
            std::array<char, 11> key{};
            std::snprintf(key.data(), key.size(), "%010d", i * 7919 % 100000);
            MXLIBRERIA::ISAM(kIndex, key.data(), MXLIBRERIA::kIsamInsert, i);
        }
    }
    /// Overwrites bytes of an entry (1-based block, 0-based entry).
    void spoil(int block, int entry, std::streamoff place, const std::string& bytes) {
        made.close();
        std::fstream file(made.path(kIndex), std::ios::binary | std::ios::in | std::ios::out);
        file.seekp((block - 1) * kBlock + entry * kEntry + place);
        file << bytes;
    }
    [[nodiscard]] std::string damage() const { return nzutil::check_index(made, kIndex).damage; }

    test_support::TempDirectory directory;
    nzutil::Installation made = nzutil::Installation::create(directory.file("made"));
};

TEST_F(IndexCheckTest, SoundIndexCountsItsKeys) {
    const nzutil::IndexCheck check = nzutil::check_index(made, kIndex);
    EXPECT_EQ(check.damage, "");
    EXPECT_EQ(check.keys, 300);
    EXPECT_GT(check.blocks, 3);
}

TEST_F(IndexCheckTest, FindsAKeyOutOfOrder) {
    spoil(3, 1, 0, "9999999999");
    EXPECT_NE(damage(), "");
}

TEST_F(IndexCheckTest, FindsAPointerToNoBlock) {
    spoil(1, 0, nzutil::kEmployeeKey + 1, "000999");
    EXPECT_NE(damage(), "");
}

TEST_F(IndexCheckTest, FindsALevelThatIsWrong) {
    spoil(3, 0, nzutil::kEmployeeKey, "2");
    EXPECT_NE(damage(), "");
}

TEST_F(IndexCheckTest, FindsAFirstKeyThatTheParentDoesNotKnow) {
    spoil(3, 0, 0, "0000000000");
    EXPECT_NE(damage(), "");
}

TEST_F(IndexCheckTest, FindsAFileCutShort) {
    made.close();
    std::filesystem::resize_file(made.path(kIndex), static_cast<std::uintmax_t>(kBlock * 2 + 5));
    EXPECT_NE(damage(), "");
    std::filesystem::resize_file(made.path(kIndex), static_cast<std::uintmax_t>(kBlock * 2));
    EXPECT_NE(damage(), "");
    std::filesystem::resize_file(made.path(kIndex), 0);
    EXPECT_NE(damage(), "");
}

TEST_F(IndexCheckTest, FileOfOtherRecordsIsNoIndex) {
    EXPECT_THROW(static_cast<void>(nzutil::check_index(made, nzutil::kPeriod)), std::runtime_error);
}

}  // namespace
