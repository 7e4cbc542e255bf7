// Seniority steps, short-time pay, instalments of the year, entertainers' carry.

#include "slip/seniority.h"

#include "slip_fixture.h"

namespace slip_tests {
namespace {

class Seniority : public SlipTest {
  protected:
    /// Seniority pay 40.00 with steps of 20.00 every 24 months, two taken of ten.
    static void employee(const std::string& due) {
        scrivi(P061, 40);
        scrivi(P026, 20);
        scrivi(P028, 24);
        scrivi(P029, 2);
        scrivi(P030, 10);
        scrivi(P027, due);
    }
};

TEST_F(Seniority, AStepThatFallsDueIsTaken) {
    employee("052024");
    SCATTI("31052024", "026");
    EXPECT_DOUBLE_EQ(num(P061), 60);  // 40 + 20
    EXPECT_DOUBLE_EQ(num(P029), 3);
    EXPECT_EQ(testo(P027), "052026");  // 24 months later
}

TEST_F(Seniority, NoStepInAnotherMonth) {
    employee("062024");
    SCATTI("31052024", "026");
    EXPECT_DOUBLE_EQ(num(P061), 40);
    EXPECT_DOUBLE_EQ(num(P029), 2);
    EXPECT_EQ(testo(P027), "062024");
}

TEST_F(Seniority, ABlankDateMeansNoSteps) {
    employee("000000");
    SCATTI("31052024", "026");
    EXPECT_DOUBLE_EQ(num(P061), 40);
    area(Area::DIPX).replace(static_cast<std::size_t>(P027.offset - 1), 6, "      ");
    SCATTI("31052024", "026");
    EXPECT_DOUBLE_EQ(num(P061), 40);
}

TEST_F(Seniority, TwentyFourMonthsFromNovemberLandOnNovember) {
    employee("112024");
    SCATTI("30112024", "026");
    EXPECT_EQ(testo(P027), "112026");
}

TEST_F(Seniority, AnIntervalThatPassesTheYearEnd) {
    employee("112024");
    scrivi(P028, 2);
    SCATTI("30112024", "026");
    EXPECT_EQ(testo(P027), "012025");  // December, January
}

TEST_F(Seniority, TheLastStepKeepsItsDate) {
    employee("052024");
    scrivi(P030, 3);
    SCATTI("31052024", "026");
    EXPECT_DOUBLE_EQ(num(P061), 60);
    EXPECT_DOUBLE_EQ(num(P029), 3);
    EXPECT_EQ(testo(P027), "052024");
}

TEST_F(Seniority, BeyondTheMaximumNothingIsWritten) {
    employee("052024");
    scrivi(P030, 2);  // all steps taken
    SCATTI("31052024", "026");
    EXPECT_DOUBLE_EQ(num(P061), 40);
    EXPECT_DOUBLE_EQ(num(P029), 2);
    EXPECT_EQ(testo(P027), "052024");
}

class ShortTimePay : public SlipTest {
  protected:
    void SetUp() override {
        SlipTest::SetUp();
        scrivi(T203, 1085.57);
        scrivi(T204, 1305.29);
        scrivi(T205, 2348.62);
    }
};

TEST_F(ShortTimePay, LowerCeilingUpToTheReference) {
    scrivi(P090, 12);
    scrivi(P213, 2348.62);  // 12 x 2348.62 / 12: not above
    CALCOLACIG();
    EXPECT_DOUBLE_EQ(num(Q190), 1085.57);
}

TEST_F(ShortTimePay, FourteenInstalmentsRaiseTheReference) {
    scrivi(P090, 14);
    scrivi(P213, 2100);  // 14 x 2100 / 12 = 2450
    CALCOLACIG();
    EXPECT_DOUBLE_EQ(num(Q190), 1305.29);
}

TEST_F(ShortTimePay, FewerThanTwelveInstalmentsCountAsTwelve) {
    scrivi(P090, 6);
    scrivi(P213, 2400);  // 12 x 2400 / 12 = 2400 above 2348.62; with 6 it would be 1200
    CALCOLACIG();
    EXPECT_DOUBLE_EQ(num(Q190), 1305.29);
}

class YearlyInstalments : public SlipTest {};

TEST_F(YearlyInstalments, OnlyForOrdinaryWorkersOfACompanyThatAsksForThem) {
    scrivi(P090, 14);
    EXPECT_DOUBLE_EQ(CALC13(), 0);
    scrivi(T188, 1);
    EXPECT_DOUBLE_EQ(CALC13(), 14);
    scrivi(P168, 2);
    EXPECT_DOUBLE_EQ(CALC13(), 0);
}

class Entertainers : public SlipTest {
  protected:
    void SetUp() override {
        SlipTest::SetUp();
        scrivi(P268, 1000);
        scrivi(P250, 250);
        for (const Descriptor& field : {P604, P605, P606, Q881, P749, P918, P924, P926, P928}) {
            scrivi(field, 7);
        }
        scrivi(P764, 11);
        scrivi(P930, 12);
    }
};

TEST_F(Entertainers, AFirstSlipOfTheMonthStartsAnew) {
    scrivi(Q179, "30042024");
    ENPALSPEC("31052024");
    for (const Descriptor& field : {P268, P604, P605, P606, Q881, P749, P918, P924, P926, P928}) {
        EXPECT_DOUBLE_EQ(num(field), 0) << field.name();
    }
    EXPECT_DOUBLE_EQ(num(P764), 11);
    EXPECT_DOUBLE_EQ(num(P930), 12);
}

TEST_F(Entertainers, ASecondSlipOfTheMonthAddsTheWage) {
    scrivi(Q179, "15052024");
    ENPALSPEC("31052024");
    EXPECT_DOUBLE_EQ(num(P268), 1250);  // 1000 + 250
    EXPECT_DOUBLE_EQ(num(P604), 7);
}

}  // namespace
}  // namespace slip_tests
