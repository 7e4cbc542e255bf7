#include "calc/exemption_terms.h"

#include "files/file_numbers.h"
#include "records/dictionary/FOTX.h"
#include "tests/support/logical_files.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;

Date date(const std::string& ddmmyyyy) {
    return Date::of(ddmmyyyy);
}

TEST(ExemptionExpiry, AddsTheYearsOfTheCode) {
    // Hired in March 2022: three years, one year, two years.
    for (const char code : {'3', '4', '6'}) {
        EXPECT_EQ(exemption_expiry(code, date("10032022")), "202503") << code;
    }
    for (const char code : {'5', '8', '9', 'A'}) {
        EXPECT_EQ(exemption_expiry(code, date("10032022")), "202303") << code;
    }
    for (const char code : {'7', 'B', 'C', '1', 'U'}) {
        EXPECT_EQ(exemption_expiry(code, date("10032022")), "202403") << code;
    }
}

TEST(ExemptionExpiry, GivesNothingToHiringsUntil2015) {
    EXPECT_EQ(exemption_expiry('3', date("31122015")), "000000");
    EXPECT_EQ(exemption_expiry('3', date("01012016")), "201901");
}

TEST(ExemptionExpiry, OfCodeBStartsWith2019) {
    EXPECT_EQ(exemption_expiry('B', date("31122018")), "000000");
    EXPECT_EQ(exemption_expiry('B', date("01012019")), "202101");
}

TEST(ExemptionMonths, CountFirstAndLastMonth) {
    // January to March are three months.
    EXPECT_EQ(exemption_months(date("01012024"), date("31032024")), 3);
}

TEST(ExemptionMonths, LoseAMonthForAStartAfterThe15th) {
    EXPECT_EQ(exemption_months(date("15012024"), date("31032024")), 3);
    EXPECT_EQ(exemption_months(date("16012024"), date("31032024")), 2);
}

TEST(ExemptionMonths, LoseAMonthForAnEndBeforeThe15th) {
    EXPECT_EQ(exemption_months(date("01012024"), date("15032024")), 3);
    EXPECT_EQ(exemption_months(date("01012024"), date("14032024")), 2);
}

TEST(ExemptionMonths, LoseTwoFromThe16thToThe14th) {
    // January to June are six months, two less.
    EXPECT_EQ(exemption_months(date("16012024"), date("14062024")), 4);
}

TEST(ExemptionMonths, StopAt36) {
    EXPECT_EQ(exemption_months(date("01012020"), date("31122023")), 36);
    EXPECT_EQ(exemption_months(date("01012021"), date("31122023")), 36);
    EXPECT_EQ(exemption_months(date("01022021"), date("31122023")), 35);
}

TEST(ExemptionMonths, AreNegativeForAnEndBeforeTheStart) {
    // May to March: two months back, less one.
    EXPECT_EQ(exemption_months(date("01052024"), date("31032024")), -3);
}

TEST(ExemptionMonths, AreNoneWithoutTwoDates) {
    EXPECT_EQ(exemption_months(date("00000000"), date("31032024")), 0);
    EXPECT_EQ(exemption_months(date("01012024"), date("31132024")), 0);
}

class Exemption : public SlipTest {};

TEST_F(Exemption, IsOverInTheMonthOfItsExpiry) {
    scrivi(P916, "5");
    scrivi(P013, "10052023");  // one year: until May 2024
    EXPECT_TRUE(exemption_is_over());
    scrivi(P013, "10062023");
    EXPECT_FALSE(exemption_is_over());
}

TEST_F(Exemption, StartsFromP939WhereItIsGiven) {
    scrivi(P916, "5");
    scrivi(P013, "10052020");
    scrivi(P939, "10062023");
    EXPECT_FALSE(exemption_is_over());
}

TEST_F(Exemption, IsNeverOverWithoutACode) {
    scrivi(P916, "0");
    scrivi(P013, "10052010");
    EXPECT_FALSE(exemption_is_over());
}

TEST_F(Exemption, MonthsRunToTheLeavingOfTheYear) {
    scrivi(P013, "01012023");
    EXPECT_EQ(months_of_exemption(), 17);  // to May 2024: 16 between, 1 more
    scrivi(P017, "31032024");
    EXPECT_EQ(months_of_exemption(), 15);
    scrivi(P017, "31032023");  // not of the slip's year
    EXPECT_EQ(months_of_exemption(), 17);
}

TEST_F(Exemption, MonthsAreNoneWithoutHiringDate) {
    EXPECT_EQ(months_of_exemption(), 0);
}

class CapsOfItems : public SlipTest {
  protected:
    CapsOfItems() {
        files.define(kPayItems, 1500);
        MXLIBRERIA::FAIOPEN(kPayItems);
    }
    void item(std::size_t code, const std::string& token, int deleted = 0) const {
        std::string record = test_support::empty_record(Area::FOTX, 1500);
        std::string value = std::to_string(deleted);
        SCRIVICAMPO(Z049, value, 0, record);
        value = token;
        SCRIVICAMPO(Z051, value, 0, record);
        files.put(kPayItems, code, record);
    }
    test_support::LogicalFiles files;
};

TEST_F(CapsOfItems, TakeTheFirstLineThatNamesTheField) {
    item(1, ".P208");
    item(2, "=P855");
    item(3, "=P953");
    item(4, "=P855");
    set_lines({line(1, 2600), line(2, 150), line(3, 250), line(4, 990)});
    scrivi(P854, 7);
    take_caps_from_items();
    EXPECT_EQ(num(P855), 1.5);  // hundredths of the line
    EXPECT_EQ(num(P953), 2.5);
    EXPECT_EQ(num(P954), 0);
    EXPECT_EQ(num(P854), 0);
}

TEST_F(CapsOfItems, PassOverDeletedItemsAndForgetTheFormerCap) {
    item(2, "=P855", 99);
    set_lines({line(2, 150)});
    scrivi(P855, 3);
    take_caps_from_items();
    EXPECT_EQ(num(P855), 0);
}

}  // namespace
}  // namespace ModSWCALM
