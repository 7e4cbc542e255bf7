#include "calc/extra_payments.h"

#include "tests/support/logical_files.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

class ExtraMonth : public SlipTest {
  protected:
    static bool counts(const std::string& start, const std::string& leaving) {
        return extra_month_counts(Date::of(start), Date::of(leaving), Date::of("31052024"), 15);
    }
};

TEST_F(ExtraMonth, CountsForWhoWasThereBeforeAndStays) {
    EXPECT_TRUE(counts("01012024", "00000000"));
}

TEST_F(ExtraMonth, OfTheHiringWantsTheMinimumDays) {
    // 31 - 17 + 1 = 15 days from the 17th, 14 from the 18th.
    EXPECT_TRUE(counts("17052024", "00000000"));
    EXPECT_FALSE(counts("18052024", "00000000"));
}

TEST_F(ExtraMonth, OfHiringAndLeavingTakesTheDifferenceOfTheDays) {
    EXPECT_TRUE(counts("05052024", "20052024"));   // 20 - 5 = 15
    EXPECT_FALSE(counts("06052024", "20052024"));  // 14
}

TEST_F(ExtraMonth, OfTheLeavingCountsTheDaysLeftOver) {
    // From 1 January: 31 days of January, the month is whole and only the leaving day counts.
    EXPECT_TRUE(counts("01012024", "15052024"));
    EXPECT_FALSE(counts("01012024", "14052024"));
}

TEST_F(ExtraMonth, OfTheLeavingAddsAShortFirstMonth) {
    // From 20 March: 12 days of March, not a month by themselves: 3 + 12 = 15, 2 + 12 = 14.
    EXPECT_TRUE(counts("20032024", "03052024"));
    EXPECT_FALSE(counts("20032024", "02052024"));
}

TEST_F(ExtraMonth, OfTheLeavingTakesOffWhatTheFirstMonthLacked) {
    // From 11 March: 21 days counted as a month, 10 lacking: 25 - 10 = 15, 24 - 10 = 14.
    EXPECT_TRUE(counts("11032024", "25052024"));
    EXPECT_FALSE(counts("11032024", "24052024"));
}

TEST(Twelfths, OfDecemberAreCountedOnce) {
    EXPECT_EQ(twelfths_after(11, false, false), 12);  // the additional slip comes first
    EXPECT_EQ(twelfths_after(10, true, true), 11);    // the ordinary slip adds its own
    EXPECT_EQ(twelfths_after(11, true, false), 11);   // the additional slip done again
    EXPECT_EQ(twelfths_after(12, true, true), 12);
}

class ExtraPayments : public SlipTest {
  protected:
    ExtraPayments() {
        scrivi(P001, "0010000001");
        scrivi(P013, "01012020");
        scrivi(P090, 14);
        scrivi(T071, 15);
        scrivi(Q164, 4);
        scrivi(Q165, 10);
    }
    test_support::LogicalFiles files;  // a directory without slip images
};

TEST_F(ExtraPayments, GetATwelfthEachOnAnOrdinarySlip) {
    count_extra_payments();
    EXPECT_EQ(num(Q164), 5);
    EXPECT_EQ(num(Q165), 11);
}

TEST_F(ExtraPayments, StopAtTwelve) {
    scrivi(Q164, 12);
    scrivi(Q165, 12);
    count_extra_payments();
    EXPECT_EQ(num(Q164), 12);
    EXPECT_EQ(num(Q165), 12);
}

TEST_F(ExtraPayments, ThirteenMonthsHaveNoFourteenth) {
    scrivi(P090, 13);
    count_extra_payments();
    EXPECT_EQ(num(Q164), 5);
    EXPECT_EQ(num(Q165), 10);
}

TEST_F(ExtraPayments, TwelveMonthsHaveNone) {
    scrivi(P090, 12);
    count_extra_payments();
    EXPECT_EQ(num(Q164), 4);
    EXPECT_EQ(num(Q165), 10);
}

TEST_F(ExtraPayments, AreNotCountedWithP863) {
    scrivi(P863, 1);
    count_extra_payments();
    EXPECT_EQ(num(Q164), 4);
    EXPECT_EQ(num(Q165), 10);
}

TEST_F(ExtraPayments, AreNotCountedInAMonthTooShort) {
    scrivi(P013, "20052024");  // 12 days
    count_extra_payments();
    EXPECT_EQ(num(Q164), 4);
    EXPECT_EQ(num(Q165), 10);
}

TEST_F(ExtraPayments, TheFourteenthStartsAgainInJuly) {
    at("310720244");
    count_extra_payments();
    EXPECT_EQ(num(Q165), 1);
}

TEST_F(ExtraPayments, TheFourteenthStartsAgainInItsOwnMonth) {
    scrivi(P016, "01050000");
    count_extra_payments();
    EXPECT_EQ(num(Q165), 1);
    at("310720244");
    count_extra_payments();
    EXPECT_EQ(num(Q165), 2);
}

TEST_F(ExtraPayments, AnAdditionalRunCountsTheThirteenthInDecemberOnly) {
    at("300620240");
    count_extra_payments();
    EXPECT_EQ(num(Q164), 4);
    EXPECT_EQ(num(Q165), 11);
    at("311220240");
    count_extra_payments();
    EXPECT_EQ(num(Q164), 5);
    EXPECT_EQ(num(Q165), 11);
}

}  // namespace
}  // namespace ModSWCALM
