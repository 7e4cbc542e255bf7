#include "installation/installation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "formulas/named_access.h"
#include "installation/tool_error.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXLIBRERIA::file_numbers;

using nzutil::Installation;
namespace fs = std::filesystem;

class InstallationTest : public ::testing::Test {
  protected:
    test_support::TempDirectory directory;
    std::string place = directory.file("made");
};

TEST_F(InstallationTest, FileTableHasALineOf79BytesForEachOf600Numbers) {
    const Installation made = Installation::create(place);
    EXPECT_EQ(fs::file_size(made.archive_directory() + "/NZBASE.DAT"), 600U * 79U);
    EXPECT_EQ(fs::path(made.path(kEmployees)).filename(), "DIPEND.DAT");
    EXPECT_EQ(made.record_length(kEmployees), 16600);
    EXPECT_EQ(made.record_length(kBeforeImageIndex), (10 + 7) * 128);
}

TEST_F(InstallationTest, RecordLengthsHoldTheLastFieldOfTheirArea) {
    for (const nzutil::FileLayout& layout : nzutil::file_layouts()) {
        if (layout.area != MXREPOSITORY::Area::unknown) {
            EXPECT_GE(layout.length, MXREPOSITORY::last_position(layout.area)) << layout.name;
        }
    }
    // December of the last row of the twelve-month table ends at 7780, ten grades of a contract
    // at 335 + 9 x 290.
    EXPECT_GE(nzutil::find_layout(nzutil::kTwelveMonths)->length, 7780);
    EXPECT_GE(nzutil::find_layout(nzutil::kContracts)->length, 335 + 9 * 290);
}

TEST_F(InstallationTest, NamesOfTheFilesAreUniqueAndFitTheTable) {
    std::vector<std::string_view> names;
    for (const nzutil::FileLayout& layout : nzutil::file_layouts()) {
        EXPECT_LE(layout.name.size(), 29U);
        EXPECT_EQ(std::ranges::find(names, layout.name), names.end()) << layout.name;
        names.push_back(layout.name);
    }
}

TEST_F(InstallationTest, SecondInstallationInTheSamePlaceIsRefused) {
    static_cast<void>(Installation::create(place));
    EXPECT_THROW(static_cast<void>(Installation::create(place)), nzutil::ToolError);
}

TEST_F(InstallationTest, OpensByItsDirectoryAndByItsArchiveDirectory) {
    const std::string archive = Installation::create(place).archive_directory();
    EXPECT_EQ(Installation::open(place).archive_directory(), archive);
    EXPECT_EQ(Installation::open(archive).archive_directory(), archive);
    EXPECT_THROW(static_cast<void>(Installation::open(directory.path())), nzutil::ToolError);
}

TEST_F(InstallationTest, RecordsLeftOutArePayItemsThatAreDeleted) {
    Installation made = Installation::create(place);
    made.write(nzutil::kPayItems, 3, nzutil::empty_record(MXREPOSITORY::Area::FOTX, 1500));
    ASSERT_EQ(made.record_count(nzutil::kPayItems), 3);
    const std::string second = made.read(nzutil::kPayItems, 2).value();
    EXPECT_EQ(MXREPOSITORY::LEGGICAMPONUM(MXREPOSITORY::Z049, 0, second), 99);
    const std::string third = made.read(nzutil::kPayItems, 3).value();
    EXPECT_EQ(MXREPOSITORY::LEGGICAMPONUM(MXREPOSITORY::Z049, 0, third), 0);
}

TEST_F(InstallationTest, ReadingPastTheEndGivesNothingAndWritesNothing) {
    const Installation made = Installation::create(place);
    EXPECT_FALSE(made.read(nzutil::kEmployees, 1).has_value());
    EXPECT_EQ(fs::file_size(made.path(nzutil::kEmployees)), 0U);
}

TEST_F(InstallationTest, SelectionOfTwentyEntriesEndsInTheNextRecord) {
    Installation made = Installation::create(place);
    std::vector<std::pair<int, int>> entries;
    for (int i = 1; i <= 20; ++i) {
        entries.emplace_back(7, i);
    }
    made.write_selection(entries);
    EXPECT_EQ(made.record_count(nzutil::kSelection), 2);
    EXPECT_EQ(made.read(nzutil::kSelection, 1).value().substr(0, 10), "0070000001");
    EXPECT_EQ(made.read(nzutil::kSelection, 2).value().substr(0, 10), "9999999999");
    EXPECT_EQ(made.read_selection(), entries);
}

TEST_F(InstallationTest, EmptyIndexTakesAKey) {
    const Installation made = Installation::create(place);
    ASSERT_EQ(made.record_count(nzutil::kBeforeImageIndex), 1);
    EXPECT_EQ(MXLIBRERIA::ISAM(kBeforeImageIndex, "0010000001", MXLIBRERIA::kIsamInsert, 5), 0);
    EXPECT_EQ(MXLIBRERIA::ISAM(kBeforeImageIndex, "0010000001", MXLIBRERIA::kIsamSearch, 0), 5);
}

TEST_F(InstallationTest, CopyNamesItselfInItsRegistry) {
    Installation made = Installation::create(place);
    made.write_period("31052024", '4');
    made.close();
    const Installation copy = nzutil::copy_installation(place, directory.file("copy"));
    EXPECT_EQ(copy.read(nzutil::kPeriod, 1).value().substr(0, 9), "310520244");
    EXPECT_NE(copy.archive_directory(), made.archive_directory());
}

// The dictionary files hold what the descriptors hold: a value written through one way of access
// is read through the other.
TEST_F(InstallationTest, DictionaryFilesAgreeWithTheDescriptorsOfEveryLetter) {
    const Installation made = Installation::create(place);
    static_cast<void>(
        made.record_length(nzutil::kEmployees));  // the installation is the one in hand
    MXREPOSITORY::repository = {};
    for (const char letter : std::string("FGJPQRSTXZ")) {
        const MXREPOSITORY::Area area = MXREPOSITORY::area_of_letter(letter);
        const auto length = static_cast<std::size_t>(MXREPOSITORY::last_position(area));
        // Digits that differ from place to place, so that a wrong offset shows.
        std::string record;
        for (std::size_t i = 0; i < length; ++i) {
            record += static_cast<char>('1' + (i * i + i / 7) % 9);
        }
        MXREPOSITORY::area(area) = record;
        for (const MXREPOSITORY::Descriptor& field : MXREPOSITORY::fields_of(area)) {
            if (field.name().front() != letter) {
                continue;
            }
            EXPECT_EQ(MXREPOSITORY::XREPOR(field.name(), 0, ""),
                      MXREPOSITORY::LEGGICAMPO(field, 0, record))
                << field.name();
        }
    }
    MXREPOSITORY::clear_areas();
    MXREPOSITORY::repository = {};
}

}  // namespace
