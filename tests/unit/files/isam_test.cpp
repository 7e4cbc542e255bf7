#include "files/isam.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <random>

#include "context/failure_handler.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "tests/support/archive_directory.h"
#include "tests/support/index_model.h"
#include "tests/support/scripted_window.h"

namespace MXLIBRERIA {
namespace {

using test_support::ArchiveDirectory;
using test_support::IndexModel;
using test_support::IndexReader;
using test_support::ScriptedWindow;
using namespace MXLIBRERIA::file_numbers;

constexpr std::size_t kKeyLength = 10;

double insert(const std::string& key, double record) {
    return ISAM(kBeforeImageIndex, key, kIsamInsert, record);
}
double search(const std::string& key) {
    return ISAM(kBeforeImageIndex, key, kIsamSearch, 0);
}
double next(const std::string& key) {
    return ISAM(kBeforeImageIndex, key, kIsamNext, 0);
}
double erase(const std::string& key) {
    return ISAM(kBeforeImageIndex, key, kIsamDelete, 0);
}

/// Number as a key of ten digits.
std::string key_of(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(kKeyLength - digits.size(), '0') + digits;
}

/// An empty index of ten-character keys: blocks of 17 x 128 = 2176 bytes.
class Index : public ::testing::Test {
  protected:
    void SetUp() override {
        archive_.define(36, "NZINDEX.DAT", 2176);
        EXPECT_EQ(ISAM(kBeforeImageIndex, "", kIsamEmpty, 0), 0);
    }
    void TearDown() override { window_.verify(); }

    [[nodiscard]] std::string bytes() const { return archive_.read("NZINDEX.DAT"); }
    [[nodiscard]] std::string block(std::size_t number) const {
        return bytes().substr((number - 1) * 2176, 2176);
    }
    [[nodiscard]] std::string entry(std::size_t block_number, std::size_t index) const {
        return block(block_number).substr(index * 17, 17);
    }
    [[nodiscard]] IndexReader read() const { return IndexReader(bytes(), kKeyLength); }

    ArchiveDirectory archive_;
    ScriptedWindow& window_ = ScriptedWindow::install();
    const std::string high_ = std::string(kKeyLength, '\xFC');
};

TEST_F(Index, AnEmptyIndexIsOneBlockOfHighKeys) {
    EXPECT_EQ(bytes().size(), 2176U);
    for (std::size_t i = 0; i < 128; ++i) {
        EXPECT_EQ(entry(1, i), high_ + "1000000");
    }
    EXPECT_EQ(search(key_of(1)), -1);
    EXPECT_EQ(erase(key_of(1)), -1);
}

TEST_F(Index, TheFirstKeyMakesBlocksOneToThree) {
    EXPECT_EQ(insert("0010000001", 15), 0);
    EXPECT_EQ(bytes().size(), 3 * 2176U);
    EXPECT_EQ(entry(1, 0), "00100000011000002");
    EXPECT_EQ(entry(2, 0), "00100000012000003");
    EXPECT_EQ(entry(3, 0), "00100000013000015");
    EXPECT_EQ(entry(1, 1), high_ + "1000000");
    EXPECT_EQ(entry(2, 127), high_ + "2000000");
    EXPECT_EQ(entry(3, 1), high_ + "3000000");
    EXPECT_EQ(search("0010000001"), 15);
    EXPECT_EQ(search("0010000002"), -1);
}

TEST_F(Index, APresentKeyKeepsItsRecord) {
    insert(key_of(1), 15);
    EXPECT_EQ(insert(key_of(1), 16), 15);
    EXPECT_EQ(search(key_of(1)), 15);
}

TEST_F(Index, AKeyBelowAllOthersChangesTheFirstKeysOfThePath) {
    insert(key_of(50), 1);
    insert(key_of(10), 2);
    EXPECT_EQ(entry(1, 0), "00000000101000002");
    EXPECT_EQ(entry(2, 0), "00000000102000003");
    EXPECT_EQ(entry(3, 0), "00000000103000002");
    EXPECT_EQ(entry(3, 1), "00000000503000001");
}

TEST_F(Index, TheEntry128SplitsTheBlockAtOnce) {
    for (std::size_t i = 1; i <= 127; ++i) {
        insert(key_of(i), static_cast<double>(i));
    }
    EXPECT_EQ(bytes().size(), 3 * 2176U);
    insert(key_of(128), 128);
    EXPECT_EQ(bytes().size(), 4 * 2176U);
    EXPECT_EQ(entry(3, 63), "00000000643000064");
    EXPECT_EQ(entry(3, 64), high_ + "3000000");
    EXPECT_EQ(entry(4, 0), "00000000653000065");
    EXPECT_EQ(entry(4, 63), "00000001283000128");
    EXPECT_EQ(entry(4, 64), high_ + "3000000");
    EXPECT_EQ(entry(2, 0), "00000000012000003");
    EXPECT_EQ(entry(2, 1), "00000000652000004");
    for (std::size_t i = 1; i <= 128; ++i) {
        EXPECT_EQ(search(key_of(i)), static_cast<double>(i));
    }
}

TEST_F(Index, ASplitByAKeyBelowAllOthersCarriesItUpToo) {
    for (std::size_t i = 128; i >= 1; --i) {
        insert(key_of(i), static_cast<double>(i));
    }
    EXPECT_EQ(entry(1, 0), "00000000011000002");
    EXPECT_EQ(entry(2, 0), "00000000012000003");
    EXPECT_EQ(entry(2, 1), "00000000652000004");
    EXPECT_EQ(read().fault, "");
}

TEST_F(Index, DeletingTheOnlyKeyEmptiesTheRootAndTheNextStartsAnew) {
    insert(key_of(7), 15);
    EXPECT_EQ(erase(key_of(7)), 15);
    EXPECT_EQ(entry(1, 0), high_ + "1000000");
    EXPECT_EQ(entry(2, 0), high_ + "2000000");
    EXPECT_EQ(entry(3, 0), high_ + "3000000");
    EXPECT_EQ(bytes().size(), 3 * 2176U);
    insert(key_of(8), 16);
    EXPECT_EQ(entry(1, 0), "00000000081000002");
    EXPECT_EQ(bytes().size(), 3 * 2176U);
    EXPECT_EQ(search(key_of(8)), 16);
}

TEST_F(Index, DeletingAFirstKeyCarriesTheNextOneUp) {
    for (const std::size_t i : {10U, 20U, 30U}) {
        insert(key_of(i), static_cast<double>(i));
    }
    EXPECT_EQ(erase(key_of(10)), 10);
    EXPECT_EQ(entry(1, 0), "00000000201000002");
    EXPECT_EQ(entry(2, 0), "00000000202000003");
    EXPECT_EQ(entry(3, 0), "00000000203000020");
    EXPECT_EQ(entry(3, 2), high_ + "3000000");
    EXPECT_EQ(erase(key_of(10)), -1);
}

TEST_F(Index, AnEmptiedBlockLeavesTheTree) {
    for (std::size_t i = 1; i <= 128; ++i) {
        insert(key_of(i), static_cast<double>(i));
    }
    for (std::size_t i = 1; i <= 64; ++i) {
        EXPECT_EQ(erase(key_of(i)), static_cast<double>(i));
    }
    EXPECT_EQ(entry(2, 0), "00000000652000004");  // block 3 is out
    EXPECT_EQ(entry(2, 1), high_ + "2000000");
    EXPECT_EQ(entry(1, 0), "00000000651000002");
    EXPECT_EQ(entry(3, 0), high_ + "3000000");
    EXPECT_EQ(read().keys.size(), 64U);
    insert(key_of(5), 5);
    EXPECT_EQ(bytes().size(), 4 * 2176U);  // goes to block 4, which now comes first
    EXPECT_EQ(entry(4, 0), "00000000053000005");
}

TEST_F(Index, NextGivesTheFirstKeyAbove) {
    for (const std::size_t i : {10U, 20U, 30U}) {
        insert(key_of(i), static_cast<double>(i));
    }
    EXPECT_EQ(next(key_of(1)), 10);  // below all
    EXPECT_EQ(isam_state.last_key, key_of(10));
    EXPECT_EQ(next(key_of(10)), 20);  // present: the one after it
    EXPECT_EQ(next(key_of(15)), 20);  // not present
    EXPECT_EQ(isam_state.last_key, key_of(20));
    EXPECT_EQ(next(key_of(30)), kIsamEnd);
    EXPECT_EQ(isam_state.last_key, high_);
}

TEST_F(Index, NextOnAnEmptyIndexIsTheEnd) {
    EXPECT_EQ(next(key_of(1)), 999999);
    EXPECT_EQ(isam_state.last_key, high_);
}

TEST_F(Index, NextWalksOverBlocksAndBranches) {
    // Sorted keys leave 64 in each leaf, and 64 leaves in each branch: 4096 keys a branch, and the
    // third branch comes with key 64 x (64 + 128) = 12288.
    constexpr std::size_t kKeys = 12400;
    for (std::size_t i = 1; i <= kKeys; ++i) {
        insert(key_of(i * 2), static_cast<double>(i));
    }
    EXPECT_EQ(read().blocks[2], 3);
    std::string key = key_of(1);
    for (std::size_t i = 1; i <= kKeys; ++i) {
        ASSERT_EQ(next(key), static_cast<double>(i));
        key = isam_state.last_key;
    }
    EXPECT_EQ(next(key), kIsamEnd);
}

TEST_F(Index, RefusalsShowTheirBoxAndGiveZero) {
    insert(key_of(1), 15);
    const std::string before = bytes();
    window_.expect_box("ERRORE ISAM - LUNK=0");
    EXPECT_EQ(search(""), 0);
    window_.expect_box("ERRORE ISAM - LUNK NO OK");
    EXPECT_EQ(search("123456789"), 0);
    for (const double operation : {kIsamInsert, kIsamSearch, kIsamNext}) {
        window_.expect_box("ERRORE ISAM - K=BLANK");
        EXPECT_EQ(ISAM(kBeforeImageIndex, std::string(10, ' '), operation, 1), 0);
    }
    window_.expect_box("ERRORE CODICE ISAM 5");
    EXPECT_EQ(ISAM(kBeforeImageIndex, key_of(1), 5, 0), 0);
    window_.expect_box("ERR.ISAM - N.REC.=0");
    EXPECT_EQ(insert(key_of(2), 0), 0);
    EXPECT_EQ(bytes(), before);
}

TEST_F(Index, ABlankKeyMayBeDeleted) {
    insert(key_of(1), 15);
    EXPECT_EQ(erase(std::string(10, ' ')), -1);
    EXPECT_TRUE(window_.boxes.empty());
}

TEST_F(Index, TheChecksComeInTheirOrder) {
    RICREAFILE(kBeforeImageIndex);  // a file of length 0 comes before everything
    window_.expect_box("ERRORE ISAM - FILE VUOTO 36");
    EXPECT_EQ(search(""), 0);
    ISAM(kBeforeImageIndex, "", kIsamEmpty, 0);
    window_.expect_box("ERRORE ISAM - K=BLANK");  // before the unknown operation
    EXPECT_EQ(ISAM(kBeforeImageIndex, std::string(10, ' '), 7, 0), 0);
    window_.expect_box("ERRORE ISAM - LUNK NO OK");  // before the blank key
    EXPECT_EQ(ISAM(kBeforeImageIndex, " ", kIsamSearch, 0), 0);
}

TEST_F(Index, AClosedIndexIsAFailure) {
    CHIUDI(kBeforeImageIndex);
    EXPECT_THROW(search(key_of(1)), platform::Failure);
}

TEST_F(Index, EmptyingOpensAClosedFileAndKeepsNoKey) {
    insert(key_of(1), 15);
    CHIUDI(kBeforeImageIndex);
    EXPECT_EQ(ISAM(kBeforeImageIndex, "", kIsamEmpty, 0), 0);
    EXPECT_EQ(bytes().size(), 2176U);
    EXPECT_EQ(search(key_of(1)), -1);
}

TEST_F(Index, EmptyingTakesTheValuesOfThePlaceholdersOnce) {
    archive_.define(36, "IX###.DAT", 2176);
    file_table.DITTAOPEN = 7;
    EXPECT_EQ(ISAM(kBeforeImageIndex, "", kIsamEmpty, 0), 0);
    EXPECT_EQ(archive_.read("IX007.DAT").size(), 2176U);
}

TEST_F(Index, ARecordLengthOfNoKeyIsFailure59) {
    for (const int length : {896, 2177, 100}) {
        archive_.define(36, "NZINDEX.DAT", length);
        try {
            ISAM(kBeforeImageIndex, "", kIsamEmpty, 0);
            FAIL();
        } catch (const platform::Failure& failure) {
            EXPECT_EQ(failure.number(), 59);
        }
    }
}

TEST_F(Index, ARecordNumberThatSixDigitsDoNotHoldIsFailure63) {
    const std::string before = bytes();
    for (const double record : {1000000.0, -1.0, 1.5}) {
        EXPECT_THROW(insert(key_of(1), record), platform::Failure);
    }
    EXPECT_EQ(bytes(), before);
    insert(key_of(1), 999999);
    EXPECT_EQ(search(key_of(1)), 999999);
}

TEST_F(Index, KeysMayHoldAnyCharacter) {
    const std::string umlaut = "M\xFCLLER    ";  // code 252 inside a key is no end of the block
    insert(umlaut, 1);
    insert("MULLER    ", 2);
    insert("ZZ        ", 3);
    EXPECT_EQ(search(umlaut), 1);
    EXPECT_EQ(search("MULLER    "), 2);
    EXPECT_EQ(next("MULLER    "), 1);  // code 252 is above every letter
    EXPECT_EQ(next(umlaut), 3);
    EXPECT_EQ(next("ZZ        "), kIsamEnd);
}

TEST_F(Index, ADamagedIndexIsAFailureAndNoEndlessWalk) {
    insert(key_of(1), 15);
    const std::string sound = bytes();
    CHIUDI(kBeforeImageIndex);
    std::string culprit;
    const auto failure_with = [&](const std::string& damaged) {
        archive_.write("NZINDEX.DAT", damaged);
        FAIOPEN(kBeforeImageIndex);
        try {
            search(key_of(1));
        } catch (const platform::Failure& failure) {
            culprit = failure.culprit;
            return failure.number();
        }
        return 0;
    };
    EXPECT_EQ(failure_with(sound.substr(0, 4352)), 62);        // block 3 is missing
    EXPECT_EQ(culprit, "36-3");                                // index and block, for the operator
    EXPECT_EQ(failure_with(sound.substr(0, 2176 + 100)), 62);  // block 2 is cut short
    EXPECT_EQ(culprit, "36-2");
    EXPECT_EQ(failure_with(sound.substr(0, 100)), 62);  // the root is cut short
    EXPECT_EQ(culprit, "36-1");
    std::string pointer_zero = sound;
    pointer_zero.replace(11, 6, "000000");
    EXPECT_EQ(failure_with(pointer_zero), 63);
    std::string pointer_letters = sound;
    pointer_letters.replace(11, 6, "ABCDEF");
    EXPECT_EQ(failure_with(pointer_letters), 63);
}

TEST_F(Index, OtherKeyLengthsHaveTheirOwnBlocks) {
    archive_.define(37, "NZINDE2.DAT", (1 + 7) * 128);
    ISAM(37, "", kIsamEmpty, 0);
    for (char c = 'A'; c <= 'Z'; ++c) {
        EXPECT_EQ(ISAM(37, std::string(1, c), kIsamInsert, c), 0);
        insert(key_of(static_cast<std::size_t>(c)), c);  // two indexes in turn
    }
    EXPECT_EQ(ISAM(37, "Q", kIsamSearch, 0), 'Q');
    EXPECT_EQ(search(key_of('Q')), 'Q');
    EXPECT_EQ(archive_.read("NZINDE2.DAT").substr(0, 8), "A1000002");
}

// --- The full root

/// Bytes of a block from its first entries.
std::string block_of(int level, const std::vector<std::pair<std::string, int>>& entries) {
    std::string out;
    for (std::size_t i = 0; i < 128; ++i) {
        const bool used = i < entries.size();
        out += used ? entries[i].first : std::string(kKeyLength, '\xFC');
        out += static_cast<char>('0' + level);
        const std::string digits = std::to_string(used ? entries[i].second : 0);
        out += std::string(6 - digits.size(), '0') + digits;
    }
    return out;
}

/// A root of 128 branches. The last branch has 127 leaves, the last of them `leaf_keys` keys; the
/// other blocks hold one entry each, and every leaf its own first key.
std::string full_index(std::size_t leaf_keys) {
    std::vector<std::pair<std::string, int>> root;
    std::vector<std::pair<std::string, int>> last_branch;
    std::string blocks;
    int next_block = 2;
    for (std::size_t i = 0; i < 127; ++i) {
        const std::string key = key_of(i + 1);
        root.emplace_back(key, next_block);
        blocks += block_of(2, {{key, next_block + 1}}) + block_of(3, {{key, 1}});
        next_block += 2;
    }
    for (std::size_t i = 0; i < 126; ++i) {
        last_branch.emplace_back(key_of(1000 + i), next_block++);
        blocks += block_of(3, {{key_of(1000 + i), 1}});
    }
    std::vector<std::pair<std::string, int>> leaf;
    for (std::size_t i = 0; i < leaf_keys; ++i) {
        leaf.emplace_back(key_of(5000 + i * 2), 1);
    }
    last_branch.emplace_back(key_of(5000), next_block++);
    blocks += block_of(3, leaf);
    root.emplace_back(key_of(1000), next_block);
    blocks += block_of(2, last_branch);
    return block_of(1, root) + blocks;
}

class FullIndex : public Index {
  protected:
    void start_with(std::size_t leaf_keys) {
        CHIUDI(kBeforeImageIndex);
        archive_.write("NZINDEX.DAT", full_index(leaf_keys));
        FAIOPEN(kBeforeImageIndex);
        ASSERT_EQ(read().fault, "");
    }
};

TEST_F(FullIndex, IsSearchedToItsLastKey) {
    start_with(127);
    EXPECT_EQ(search(key_of(127)), 1);
    EXPECT_EQ(search(key_of(5000 + 126 * 2)), 1);
    EXPECT_EQ(next(key_of(1000)), 1);
    EXPECT_EQ(isam_state.last_key, key_of(1001));
    EXPECT_EQ(next(key_of(5000 + 126 * 2)), kIsamEnd);
}

TEST_F(FullIndex, TakesKeysUntilTheRootIsReached) {
    start_with(126);
    EXPECT_EQ(insert(key_of(5001), 2), 0);  // the leaf's 127th
    EXPECT_EQ(insert(key_of(500), 2), 0);   // another leaf
    EXPECT_THROW(insert(key_of(5003), 2), platform::Failure);
}

TEST_F(FullIndex, OverflowGoesThroughTheHandlerAndLeavesTheIndexSound) {
    start_with(127);
    const std::string before = bytes();
    try {
        insert(key_of(9999), 2);
        FAIL() << "the 129th entry of the root was accepted";
    } catch (const platform::Failure& failure) {
        window_.expect_box("Errore 9 Subscript out of range");
        window_.expect_box("LANCIARE RIPRISTINO TASK");
        EXPECT_EQ(GESTIONEERRORE(failure), 1);
    }
    EXPECT_EQ(bytes(), before);
    FAIOPEN(kBeforeImageIndex);
    EXPECT_EQ(search(key_of(9999)), -1);
    EXPECT_EQ(search(key_of(5000)), 1);
}

// --- Against models

TEST_F(Index, HoldsTheBytesOfTheModelAfterSortedKeysAndRemovals) {
    IndexModel model(kKeyLength);
    constexpr std::size_t kKeys = 12300;  // three branches of 4096 keys, 4096 and the rest
    for (std::size_t i = 1; i <= kKeys; ++i) {
        ASSERT_EQ(insert(key_of(i * 3), static_cast<double>(i)),
                  model.insert(key_of(i * 3), static_cast<int>(i)));
    }
    ASSERT_EQ(bytes(), model.bytes());
    EXPECT_EQ(read().fault, "");
    EXPECT_EQ(read().blocks[2], 3);
    for (std::size_t i = 1; i <= 4200; ++i) {  // the whole first branch goes, and more
        ASSERT_EQ(erase(key_of(i * 3)), model.remove(key_of(i * 3)));
    }
    ASSERT_EQ(bytes(), model.bytes());
    EXPECT_EQ(read().blocks[2], 2);
    EXPECT_EQ(read().fault, "");
    for (std::size_t i = kKeys; i > 4200; --i) {
        ASSERT_EQ(erase(key_of(i * 3)), model.remove(key_of(i * 3)));
    }
    ASSERT_EQ(bytes(), model.bytes());
    EXPECT_EQ(entry(1, 0), high_ + "1000000");
}

/// Seed of the random tests: printed, and taken from VELMOR_SEED to play a run again.
std::uint64_t seed() {
    const char* given = std::getenv("VELMOR_SEED");
    const std::uint64_t value =
        given != nullptr ? std::strtoull(given, nullptr, 10) : std::random_device{}();
    std::cout << "seed " << value << " (VELMOR_SEED plays it again)" << std::endl;
    return value;
}

TEST_F(Index, HoldsTheBytesOfTheModelAfterRandomOperations) {
    IndexModel model(kKeyLength);
    std::mt19937_64 random(seed());
    for (int i = 0; i < 12000; ++i) {
        const std::string key = key_of(random() % 3000 + 1);
        if (random() % 100 < 60) {
            const int record = static_cast<int>(random() % 999999 + 1);
            ASSERT_EQ(insert(key, record), model.insert(key, record));
        } else {
            ASSERT_EQ(erase(key), model.remove(key));
        }
        if (i % 1000 == 0) {
            ASSERT_EQ(bytes(), model.bytes()) << "after operation " << i;
        }
    }
    EXPECT_EQ(bytes(), model.bytes());
}

/// The index beside a sorted map.
class AgainstAMap : public Index {
  protected:
    void insert_one(const std::string& key) {
        const auto record = static_cast<double>(random_() % 999999 + 1);
        const auto [place, added] = map_.try_emplace(key, record);
        ASSERT_EQ(insert(key, record), added ? 0 : place->second);
    }
    void erase_one(const std::string& key) {
        const auto place = map_.find(key);
        ASSERT_EQ(erase(key), place == map_.end() ? -1 : place->second);
        if (place != map_.end()) {
            map_.erase(place);
        }
    }
    void look(const std::string& key) {
        const auto place = map_.find(key);
        ASSERT_EQ(search(key), place == map_.end() ? -1 : place->second);
        const auto above = map_.upper_bound(key);
        ASSERT_EQ(next(key), above == map_.end() ? kIsamEnd : above->second);
        ASSERT_EQ(isam_state.last_key, above == map_.end() ? high_ : above->first);
    }
    std::string any_key() { return key_of(random_() % kKeySpace + 1); }

    /// Operations in phases: mostly insertions, then removals of whole ranges, then anything.
    void one_operation(int number) {
        const std::uint64_t choice = random_() % 100;
        const bool growing = number % 100000 < 70000;
        if (choice < (growing ? 60U : 10U)) {
            insert_one(any_key());
        } else if (choice < (growing ? 70U : 20U)) {
            erase_one(any_key());
        } else if (choice < 40U && !growing) {
            erase_range();
        } else {
            look(any_key());
        }
    }
    /// Removes the keys that follow one: leaves run empty, and branches.
    void erase_range() {
        auto place = map_.lower_bound(any_key());
        for (int i = 0; i < 40 && place != map_.end(); ++i) {
            const auto [key, record] = *place;
            place = map_.erase(place);
            ASSERT_EQ(erase(key), record);
            ++operations_;
        }
    }
    void check_whole() const {
        const IndexReader reader = read();
        ASSERT_EQ(reader.fault, "");
        ASSERT_TRUE(std::equal(reader.keys.begin(), reader.keys.end(), map_.begin(), map_.end()));
    }

    static constexpr std::size_t kKeySpace = 60000;
    std::mt19937_64 random_{seed()};
    std::map<std::string, double> map_;
    int operations_ = 0;
};

TEST_F(AgainstAMap, TwoHundredThousandRandomOperations) {
    int most_branches = 0;
    for (; operations_ < 200000; ++operations_) {
        one_operation(operations_);
        ASSERT_FALSE(HasFatalFailure()) << "operation " << operations_;
        if (operations_ % 20000 == 0) {
            check_whole();
            most_branches = std::max(most_branches, read().blocks[2]);
        }
    }
    check_whole();
    EXPECT_GT(most_branches, 2);  // splits at both levels have happened
    while (!map_.empty()) {       // and all goes again
        erase_one(map_.begin()->first);
    }
    EXPECT_EQ(read().blocks[2], 0);
}

}  // namespace
}  // namespace MXLIBRERIA
