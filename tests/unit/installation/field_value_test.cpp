#include "installation/field_value.h"

#include <gtest/gtest.h>

#include "installation/file_layout.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"

namespace {

using namespace MXREPOSITORY;
using nzutil::Decimals;
using nzutil::objection;

bool accepted(const Descriptor& field, std::string_view value,
              Decimals decimals = Decimals::exact) {
    return !objection(field, value, decimals).has_value();
}

TEST(FieldValue, TextMustNotBeLongerThanItsField) {
    EXPECT_TRUE(accepted(P001, "0010000001"));
    EXPECT_FALSE(accepted(P001, "00100000012"));
}

TEST(FieldValue, DateTakesDigitsOnly) {
    EXPECT_TRUE(accepted(P013, "01032018"));
    EXPECT_TRUE(accepted(P013, ""));
    EXPECT_FALSE(accepted(P013, "1/3/2018"));
    EXPECT_FALSE(accepted(P013, "010320180"));
}

TEST(FieldValue, DateIsADayOfTheCalendarOrNone) {
    EXPECT_TRUE(accepted(P013, "29022024"));
    EXPECT_FALSE(accepted(P013, "29022023"));
    EXPECT_FALSE(accepted(P013, "31022020"));
    EXPECT_FALSE(accepted(P017, "15132024"));
    EXPECT_FALSE(accepted(P017, "00052024"));
    EXPECT_FALSE(accepted(P017, "99999999"));
    EXPECT_TRUE(accepted(P017, "00000000"));
    EXPECT_TRUE(accepted(P013, "1032018"));  // zero-filled: 01032018
    EXPECT_TRUE(accepted(P027, "052024"));   // month and year
    EXPECT_FALSE(accepted(P013, "41032018"));
}

TEST(FieldValue, SixDigitsAreAMonthAndAYearInTheOrderOfTheMeaning) {
    EXPECT_TRUE(accepted(P541, "122024"));
    EXPECT_TRUE(accepted(P541, "52024"));  // zero-filled: 052024
    EXPECT_TRUE(accepted(P541, "000000"));
    EXPECT_FALSE(accepted(P027, "139999"));
    EXPECT_FALSE(accepted(P541, "002024"));
    EXPECT_FALSE(accepted(P541, "202405"));
    EXPECT_TRUE(accepted(PB04, "202405"));
    EXPECT_FALSE(accepted(PB04, "052024"));
    EXPECT_FALSE(accepted(PB04, "202413"));
    EXPECT_TRUE(accepted(P494, "139999"));  // nobody has told what it holds
}

TEST(FieldValue, WholeNumberTakesNoDecimalsAndNoLetters) {
    EXPECT_TRUE(accepted(P090, "14"));
    EXPECT_TRUE(accepted(P090, "14.00"));
    EXPECT_FALSE(accepted(P090, "13.5"));
    EXPECT_FALSE(accepted(P090, "13.5", Decimals::rounded));
    EXPECT_FALSE(accepted(P090, "quattordici"));
    EXPECT_FALSE(accepted(P090, "-"));
}

TEST(FieldValue, NumberMustFitItsDigits) {
    // P209: 8 characters with two decimals, so six digits before the point, five after a minus.
    EXPECT_TRUE(accepted(P209, "999999.99"));
    EXPECT_FALSE(accepted(P209, "1000000"));
    EXPECT_TRUE(accepted(P209, "-99999.99"));
    EXPECT_FALSE(accepted(P209, "-100000"));
    EXPECT_TRUE(accepted(P209, "000000001.50"));
}

TEST(FieldValue, DecimalsBeyondTheFieldAreRefusedOrRounded) {
    EXPECT_FALSE(accepted(P209, "10.125"));
    EXPECT_TRUE(accepted(P209, "10.125", Decimals::rounded));
    EXPECT_TRUE(accepted(P209, "10.1200"));
    EXPECT_TRUE(accepted(P209, "10,12"));
}

TEST(FieldValue, ShownNumberHasNoLeadingZerosAndKeepsItsSign) {
    std::string record = nzutil::empty_record(Area::DIPX, 16600);
    nzutil::store(P209, 0, "-12.5", record);
    EXPECT_EQ(nzutil::shown(P209, 0, record), "-12.50");
    nzutil::store(P209, 0, "0.05", record);
    EXPECT_EQ(nzutil::shown(P209, 0, record), "0.05");
    nzutil::store(P090, 0, "14", record);
    EXPECT_EQ(nzutil::shown(P090, 0, record), "14");
    nzutil::store(P002, 0, "ROSSI", record);
    EXPECT_EQ(nzutil::shown(P002, 0, record), "ROSSI");
    nzutil::store(P013, 0, "01032018", record);
    EXPECT_EQ(nzutil::shown(P013, 0, record), "01032018");
}

TEST(FieldValue, StoredFormMakesEqualValuesEqual) {
    EXPECT_EQ(nzutil::as_stored(P209, "1500"), nzutil::as_stored(P209, "1500.00"));
    EXPECT_EQ(nzutil::as_stored(P209, "1500.004"), nzutil::as_stored(P209, "1500"));
    EXPECT_EQ(nzutil::as_stored(P002, "ROSSI  "), nzutil::as_stored(P002, "ROSSI"));
    EXPECT_NE(nzutil::as_stored(P209, "1500"), nzutil::as_stored(P209, "1500.01"));
}

TEST(FieldValue, ZerosAndBlanksAreNoContent) {
    std::string record = nzutil::empty_record(Area::DIPX, 16600);
    EXPECT_FALSE(nzutil::has_content(P209, 0, record));
    EXPECT_FALSE(nzutil::has_content(P002, 0, record));
    nzutil::store(P209, 0, "0.01", record);
    EXPECT_TRUE(nzutil::has_content(P209, 0, record));
}

TEST(FieldValue, OccurrencesOfGroupsEndWithTheirRecord) {
    EXPECT_EQ(nzutil::occurrences(P209, 16600), 1);
    EXPECT_EQ(nzutil::occurrences(J001, 7800), 12);
    // G022 ends at 205; each further grade takes 290: (6000 - 205) / 290 = 19 more.
    EXPECT_EQ(nzutil::occurrences(G022, 6000), 20);
    EXPECT_EQ(nzutil::occurrences(G002, 6000), 1);
}

}  // namespace
