#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

class Divisors : public SlipTest {};

TEST_F(Divisors, OfTheCompanyAreChosenByTheEmployee) {
    const Descriptor hours[] = {T063, T064, T065, T066, T368, T623, T657, T658, T659, T660};
    const Descriptor days[] = {T059, T060, T061, T062, T367, T622};
    for (int i = 0; i < 10; ++i) {
        scrivi(hours[i], 160 + i);
    }
    for (int i = 0; i < 6; ++i) {
        scrivi(days[i], 20 + i);
    }
    for (int i = 0; i < 10; ++i) {
        scrivi(P047, i);
        EXPECT_EQ(hours_divisor(), 160 + i);
        scrivi(P048, i);
        EXPECT_EQ(days_divisor(), i < 6 ? 20 + i : 0);
    }
}

TEST_F(Divisors, OfTheEmployeeReplacesTheCompanys) {
    scrivi(T063, 173);
    scrivi(P891, 168);
    EXPECT_EQ(hours_divisor(), 168);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P214), 168);
}

TEST_F(Divisors, AreTheUsualOnesWhereTheCompanyHasNone) {
    divisors_and_hourly_values();
    EXPECT_EQ(slip.DIVISOREORE, 173);
    EXPECT_EQ(slip.DIVISOREGG, 26);
    EXPECT_EQ(num(P214), 0);  // the record shows what the company holds
    EXPECT_EQ(num(P427), 0);
}

TEST_F(Divisors, StandInTheRecordInTheirOwnWidth) {
    scrivi(T063, 173.33);
    scrivi(T059, 26);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P214), 173.33);
    EXPECT_EQ(num(P427), 26);
}

TEST_F(Divisors, MonthlyElementsGiveMonthDayAndHour) {
    scrivi(P050, 1);
    scrivi(T063, 168);
    scrivi(P069, 1500);
    scrivi(P058, 100);
    scrivi(P353, 80);
    divisors_and_hourly_values();
    EXPECT_EQ(slip.PAGAORARIA, 1680);  // 1500 + 100 + 80
    EXPECT_EQ(num(P198), 1500);
    EXPECT_EQ(num(P209), 1680);
    EXPECT_EQ(num(P210), 1680);
    EXPECT_EQ(num(P208), 10);        // 1680 / 168
    EXPECT_EQ(num(P251), 64.61538);  // 1680 / 26 = 64.615384...
}

TEST_F(Divisors, HourlyElementsGiveHourMonthAndDay) {
    scrivi(T063, 160);
    scrivi(P069, 1600);
    scrivi(P058, 2.5);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P198), 10);  // 1600 / 160
    EXPECT_EQ(num(P211), 10);
    EXPECT_EQ(num(P208), 12.5);
    EXPECT_EQ(num(P209), 2000);      // 12.5 x 160
    EXPECT_EQ(num(P251), 76.92308);  // 2000 / 26 = 76.923076...
}

TEST_F(Divisors, ThePayBaseIsRoundedToFiveDecimals) {
    scrivi(P069, 1000);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P198), 5.78035);  // 1000 / 173 = 5.780346...
}

TEST_F(Divisors, FormerValuesStayWhereTheRecordHasThem) {
    scrivi(P050, 1);
    scrivi(P069, 1500);
    scrivi(P198, 1400);
    scrivi(P209, 1450);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P198), 1500);
    EXPECT_EQ(num(P211), 1400);
    EXPECT_EQ(num(P209), 1500);
    EXPECT_EQ(num(P210), 1450);
}

TEST_F(Divisors, ElementsApartLowerTheShareOfTheBase) {
    scrivi(P050, 1);
    scrivi(P069, 1000);
    scrivi(P059, 100);
    scrivi(P068, 50);
    scrivi(P070, 50);
    divisors_and_hourly_values();
    EXPECT_EQ(slip.ELEMENTINONBASE, 200);
    EXPECT_EQ(slip.QUOTABASE, 0.8);  // (100 - 200 x 100 / 1000) / 100
}

TEST_F(Divisors, TheSeparateElementGoesByTheHourWithHourlyElements) {
    scrivi(T063, 100);
    scrivi(P070, 50);
    divisors_and_hourly_values();
    EXPECT_EQ(slip.ELEMENTINONBASE, 0.5);
}

TEST_F(Divisors, WithoutPayTheWholeIsBase) {
    divisors_and_hourly_values();
    EXPECT_EQ(slip.QUOTABASE, 1);
}

TEST_F(Divisors, TheBaseOfTheClosingAddsTheDailyPartForTheDays) {
    scrivi(P050, 1);
    scrivi(P069, 1500);
    scrivi(P073, 2);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P213), 1552);  // 2 x 26 + 1500
    EXPECT_EQ(slip.base_value, 1552);
    EXPECT_EQ(num(P212), 0);
}

TEST_F(Divisors, PaymentsBeyondTheTwelfthAreSharedByTheMonth) {
    scrivi(P050, 1);
    scrivi(P069, 1200);
    scrivi(P756, 14);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P854), 200);  // 1200 / 12 x 2
    scrivi(P756, 12);
    scrivi(P854, 0);
    divisors_and_hourly_values();
    EXPECT_EQ(num(P854), 0);
}

TEST_F(Divisors, TheReferenceValueStandsWholeByTheHourAndByTheDay) {
    scrivi(P050, 1);
    scrivi(T063, 100);
    scrivi(T059, 25);
    scrivi(T052, 500);
    divisors_and_hourly_values();
    EXPECT_EQ(slip.reference_values, " 500.00000   5.00000  20.00000   0.00000");
    scrivi(T230, 1);
    scrivi(P067, 100);
    divisors_and_hourly_values();
    EXPECT_EQ(slip.reference_values.substr(0, 10), " 100.00000");
}

}  // namespace
}  // namespace ModSWCALM
