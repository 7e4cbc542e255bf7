#include "context/utilities.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "platform/failure.h"
#include "platform/file_system.h"
#include "platform/registry.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXLIBRERIA;
using test_support::TempDirectory;

TEST(BISESTILE, FollowsTheGregorianRule) {
    EXPECT_EQ(BISESTILE(1900), 0);
    EXPECT_EQ(BISESTILE(2000), -1);
    EXPECT_EQ(BISESTILE(2024), -1);
    EXPECT_EQ(BISESTILE(2023), 0);
    EXPECT_EQ(BISESTILE(2100), 0);
}

TEST(TRONCA, TakesBinaryNoiseForTheWholeNumber) {
    EXPECT_EQ(TRONCA(2.9999999), 3);  // 2.9999999 + 0.000001 is above 3
    EXPECT_EQ(TRONCA(2.99), 2);
    EXPECT_EQ(TRONCA(3), 3);
    EXPECT_EQ(TRONCA(-2.5), -2);  // toward zero
}

TEST(INTEROTESTO, LeansAwayFromZeroByATenth) {
    EXPECT_EQ(INTEROTESTO(2.95), "3");
    EXPECT_EQ(INTEROTESTO(-2.95), "-3");
    EXPECT_EQ(INTEROTESTO(2.85), "2");
    EXPECT_EQ(INTEROTESTO(-0.05), "0");
    EXPECT_EQ(INTEROTESTO(0), "0");
}

TEST(ESISTEFILE, IsTrueForAFileThatCanBeRead) {
    const TempDirectory directory;
    directory.write("PRESENTE.DAT", "x");
    EXPECT_EQ(ESISTEFILE(directory.file("PRESENTE.DAT")), -1);
    EXPECT_EQ(ESISTEFILE(directory.path() + "\\presente.dat"), -1);
    EXPECT_EQ(ESISTEFILE(directory.file("ASSENTE.DAT")), 0);
    EXPECT_EQ(ESISTEFILE(directory.path()), 0);
    EXPECT_EQ(ESISTEFILE(""), 0);
}

TEST(ESISTEFILE, IsFalseForAFileLockedAgainstReading) {
    const TempDirectory directory;
    directory.write("OCCUPATO.DAT", "x");
    const auto holder =
        platform::files().open(directory.file("OCCUPATO.DAT"), platform::OpenMode::exclusive);
    EXPECT_EQ(ESISTEFILE(directory.file("OCCUPATO.DAT")), 0);
}

TEST(COPIAFILE, ReplacesTheTarget) {
    const TempDirectory directory;
    directory.write("NUOVO.DAT", "nuovo");
    directory.write("VECCHIO.DAT", "testo vecchio e piu' lungo");
    COPIAFILE(directory.file("NUOVO.DAT"), directory.file("VECCHIO.DAT"));
    EXPECT_EQ(directory.read("VECCHIO.DAT"), "nuovo");
    EXPECT_EQ(directory.read("NUOVO.DAT"), "nuovo");
}

TEST(COPIAFILE, MakesATargetThatDidNotExist) {
    const TempDirectory directory;
    directory.write("NUOVO.DAT", "nuovo");
    COPIAFILE(directory.file("NUOVO.DAT"), directory.file("ALTRO.DAT"));
    EXPECT_EQ(directory.read("ALTRO.DAT"), "nuovo");
}

TEST(COPIAFILE, MissingSourceIsAFailure) {
    const TempDirectory directory;
    EXPECT_THROW(COPIAFILE(directory.file("ASSENTE.DAT"), directory.file("ALTRO.DAT")),
                 platform::Failure);
}

/// A registry with one key.
class OneKey : public platform::Registry {
  public:
    std::map<std::string, platform::RegistryValue> values;

    [[nodiscard]] bool has_key(const std::string& key) override { return key == "SOFTWARE\\PROVA"; }
    [[nodiscard]] std::optional<platform::RegistryValue> value(const std::string& key,
                                                               const std::string& name) override {
        const auto found = values.find(name);
        return !has_key(key) || found == values.end() ? std::nullopt : std::optional(found->second);
    }
};

class RegistryReading : public ::testing::Test {
  protected:
    void SetUp() override { platform::set_registry(&registry); }
    void TearDown() override { platform::set_registry(nullptr); }
    [[nodiscard]] static std::string read(const std::string& value) {
        return LEGGIREGISTRO("HKEY_CURRENT_USER", "SOFTWARE\\PROVA", value);
    }
    OneKey registry;
};

TEST_F(RegistryReading, TextEndsAtTheFirstZeroCharacter) {
    registry.values["TESTO"] = {1, std::string("C:\\PAGHE\0resto", 14)};
    EXPECT_EQ(read("TESTO"), "C:\\PAGHE");
}

TEST_F(RegistryReading, NumberIsReadAsText) {
    registry.values["NUMERO"] = {4, "42"};
    EXPECT_EQ(read("NUMERO"), "42");
}

TEST_F(RegistryReading, OtherTypesAndMissingValuesAreEmpty) {
    registry.values["BINARIO"] = {3, "x"};
    EXPECT_EQ(read("BINARIO"), "");
    EXPECT_EQ(read("ASSENTE"), "");
    EXPECT_EQ(LEGGIREGISTRO("HKEY_CURRENT_USER", "SOFTWARE\\ALTRA", "TESTO"), "");
    EXPECT_EQ(LEGGIREGISTRO("HKEY_LOCAL_MACHINE", "SOFTWARE\\PROVA", "TESTO"), "");
}

TEST(Dates, MonthOfADateText) {
    EXPECT_EQ(yyyymm_of("31052024"), 202405);
    EXPECT_EQ(yyyymm_of("00000000"), 0);
    EXPECT_EQ(yyyymm_of(""), 0);
    // The 5th of March 2024 read as a number: "5032024", digits cut one place too far right.
    EXPECT_EQ(yyyymm_of("5032024"), 24 * 100 + 32);
}

TEST(Dates, DaysOfEachMonth) {
    EXPECT_EQ(days_of_month(2, 2024), 29);
    EXPECT_EQ(days_of_month(2, 2023), 28);
    int year = 0;
    for (int month = 1; month <= 12; ++month) {
        year += days_of_month(month, 2023);
    }
    EXPECT_EQ(year, 365);
    EXPECT_EQ(days_of_month(4, 2023), 30);
    EXPECT_EQ(days_of_month(12, 2023), 31);
}

}  // namespace
