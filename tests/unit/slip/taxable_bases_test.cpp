// Taxable bases: classes, limits, minimum base, travel pay, collaborators.

#include "slip_fixture.h"

namespace slip_tests {
namespace {

/// The item area with an amount of quantity x rate and the fields given.
class Bases : public SlipTest {
  protected:
    static void item_area(double quantity, double rate, const FieldValues& fields) {
        area(Area::FOTX) = record_with(Area::FOTX, kItemLength, fields);
        scrivi(Z151, quantity);
        scrivi(Z152, rate);
        scrivi(Z153, quantity * rate);
    }
    /// One line of an amount, through the bases.
    static void line(double amount, const FieldValues& fields) {
        item_area(1, amount, fields);
        AGGIMPFISCSOC();
    }
};

TEST_F(Bases, AnOrdinaryEarningCountsForBoth) {
    line(1500.40, {{Z013, 1}, {Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 1500.40);
    EXPECT_DOUBLE_EQ(num(P256), 1500.40);
    EXPECT_DOUBLE_EQ(num(P240), 1500);  // whole euro
    EXPECT_DOUBLE_EQ(num(P250), 1500.40);
    EXPECT_DOUBLE_EQ(num(P252), 1500);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 1500.40);
}

TEST_F(Bases, ADeductionTakesOff) {
    line(1500, {{Z013, 1}, {Z014, 1}});
    line(200, {{Z011, 1}, {Z013, 1}, {Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.TOTTRATTENUTE, 200);
    EXPECT_DOUBLE_EQ(num(P256), 1300);
    EXPECT_DOUBLE_EQ(num(P240), 1300);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 1300);
}

TEST_F(Bases, NeitherEarningNorDeductionMovesNoTotal) {
    line(300, {{Z011, 2}, {Z013, 1}, {Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 0);
    EXPECT_DOUBLE_EQ(slip.TOTTRATTENUTE, 0);
    EXPECT_DOUBLE_EQ(num(P256), 300);
}

TEST_F(Bases, ClassZeroMovesNoBase) {
    line(300, {});
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 300);
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_DOUBLE_EQ(num(P240), 0);
    EXPECT_DOUBLE_EQ(num(P250), 0);
}

TEST_F(Bases, ClassTwoIsAlwaysTakenOff) {
    line(1000, {{Z013, 1}, {Z014, 1}});
    line(100, {{Z013, 2}, {Z014, 2}});
    line(50, {{Z011, 1}, {Z013, 2}, {Z014, 2}});
    EXPECT_DOUBLE_EQ(num(P256), 850);  // 1000 - 100 - 50
    EXPECT_DOUBLE_EQ(num(P240), 850);
    EXPECT_DOUBLE_EQ(num(P250), 850);
}

// ---- The part above the limit ----

TEST_F(Bases, ALimitOnTheAmount) {
    line(100, {{Z014, 4}, {Z007, 30}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 70);  // 100 - 30, then whole euro
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 70);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 100);  // the second total takes the whole amount
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 70);
    EXPECT_DOUBLE_EQ(slip.ESENTEA, 70);
}

TEST_F(Bases, AnAmountBelowItsLimitIsExempt) {
    line(29.99, {{Z014, 4}, {Z007, 30}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 0);
}

TEST_F(Bases, AnAmountAtItsLimitIsExempt) {
    line(30, {{Z014, 4}, {Z007, 30}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);
}

TEST_F(Bases, ALimitOnTheRate) {
    // 20 meals at 8.00, exempt up to 5.00 each: 20 x 3.00
    item_area(20, 8, {{Z014, 4}, {Z007, 5}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 60);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 60);
}

TEST_F(Bases, ARateBelowItsLimitIsExempt) {
    item_area(20, 4.99, {{Z014, 4}, {Z007, 5}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);
}

TEST_F(Bases, WithoutALimitTheWholeAmountIsAboveIt) {
    line(80, {{Z014, 4}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 80);
    item_area(2, 10, {{Z014, 4}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 100);
}

TEST_F(Bases, TheSecondFormOfTheSocialLimit) {
    line(100, {{Z014, 4}, {Z009, 40}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 60);  // 100 - 40
    line(100, {{Z014, 4}, {Z007, 30}, {Z009, 40}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 130);  // the first form rules: + 70
}

TEST_F(Bases, TheSecondFormOfTheFiscalLimit) {
    line(100, {{Z013, 5}, {Z008, 46.48}});
    EXPECT_DOUBLE_EQ(num(P256), 53.52);  // 100 - 46.48
}

TEST_F(Bases, ADeductionAboveItsLimitTakesOffTheBase) {
    line(100, {{Z014, 4}, {Z007, 30}});
    line(100, {{Z011, 1}, {Z014, 4}, {Z007, 30}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);  // 70 - 70
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 0);
}

TEST_F(Bases, FiscalClassFourLeavesTheMinimumAlone) {
    line(100, {{Z013, 4}, {Z006, 30}, {Z014, 1}});
    EXPECT_DOUBLE_EQ(num(P256), 70);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 100);
}

// ---- Class 3 ----

TEST_F(Bases, ClassThreeWithALimit) {
    // Fiscal: half of 100 in the base; 100 - 40 = 60 above the limit in the third total and
    // ESENTEB.
    line(100, {{Z013, 3}, {Z006, 40}});
    EXPECT_DOUBLE_EQ(num(P256), 50);
    EXPECT_DOUBLE_EQ(slip.ESENTEA, 50);
    EXPECT_DOUBLE_EQ(slip.ESENTEB, 60);
    EXPECT_DOUBLE_EQ(num(Q027), 0);
}

TEST_F(Bases, ClassThreeWithoutALimitSetsTheExemptTotals) {
    slip.IMPFISCALE = 30;
    line(100, {{Z013, 3}});
    EXPECT_DOUBLE_EQ(num(P256), 80);  // 30 + 100 / 2
    EXPECT_DOUBLE_EQ(slip.ESENTEA, 80);
    EXPECT_DOUBLE_EQ(slip.ESENTEB, 80);
}

TEST_F(Bases, SocialClassThreeWithoutALimitKeepsTheTravelFigures) {
    line(100, {{Z014, 3}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 50);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 100);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 50);  // set to the first total
    EXPECT_DOUBLE_EQ(num(Q027), 100);
    EXPECT_DOUBLE_EQ(num(Q028), 100);
    EXPECT_DOUBLE_EQ(num(P468), 100);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 100);
}

TEST_F(Bases, SocialClassThreeWithALimit) {
    line(100, {{Z014, 3}, {Z007, 40}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 50);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 60);  // 100 - 40
    EXPECT_DOUBLE_EQ(num(Q027), 0);
}

TEST_F(Bases, F009LeavesHalfOfClassThreeForTheMinimum) {
    scrivi(F009, 1);
    line(100, {{Z014, 3}});
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 50);
}

// ---- Classes 5 to 9 ----

TEST_F(Bases, TravelPayAboveItsLimit) {
    // Two days at 60.00, exempt up to 46.48 each: 2 x 13.52 taxed, 2 x 46.48 free.
    item_area(2, 60, {{Z013, 5}, {Z006, 46.48}, {Z016, 1}});
    scrivi(Q027, 10);
    scrivi(Q028, 20);
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(num(P256), 27.04);
    EXPECT_DOUBLE_EQ(slip.travel_excess, 27.04);
    EXPECT_DOUBLE_EQ(num(Q027), 37.04);   // 10 + 27.04
    EXPECT_DOUBLE_EQ(num(Q028), 112.96);  // 20 + 92.96
    EXPECT_DOUBLE_EQ(num(P468), 92.96);
    EXPECT_EQ(area(Area::DIPX).substr(static_cast<std::size_t>(Q028.offset - 1), 8), "00011296");
}

TEST_F(Bases, TravelPayAboveALimitOnTheAmount) {
    line(60, {{Z013, 5}, {Z006, 46.48}});
    EXPECT_DOUBLE_EQ(num(P256), 13.52);
    EXPECT_DOUBLE_EQ(num(P468), 46.48);  // the limit itself
}

TEST_F(Bases, TravelPayBelowItsLimitIsFree) {
    item_area(3, 40, {{Z013, 5}, {Z006, 46.48}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_DOUBLE_EQ(num(Q027), 0);
    EXPECT_DOUBLE_EQ(num(Q028), 120);  // 3 x 40
    EXPECT_DOUBLE_EQ(num(P468), 120);
}

TEST_F(Bases, TravelPayTakenBackTakesBackItsFreePart) {
    scrivi(Q027, 50);
    scrivi(Q028, 200);
    item_area(2, 60, {{Z011, 1}, {Z013, 5}, {Z006, 46.48}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(num(Q027), 22.96);   // 50 - 2 x 13.52
    EXPECT_DOUBLE_EQ(num(Q028), 107.04);  // 200 - 2 x 46.48
    EXPECT_DOUBLE_EQ(num(P468), -92.96);
    item_area(1, 40, {{Z011, 1}, {Z013, 5}, {Z006, 46.48}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(num(Q028), 67.04);  // below the limit: the whole 40
    EXPECT_DOUBLE_EQ(num(P468), -40);
}

TEST_F(Bases, SocialClassSixHalvesTheExcess) {
    line(100, {{Z014, 6}, {Z007, 40}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 30);  // (100 - 40) / 2
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 30);
    EXPECT_DOUBLE_EQ(num(Q027), 30);
    EXPECT_DOUBLE_EQ(num(Q028), 40);  // the limit
}

TEST_F(Bases, SocialClassSevenJoinsTheThirdTotalTwice) {
    line(100, {{Z014, 7}, {Z007, 40}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 30);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 60);
    EXPECT_DOUBLE_EQ(num(Q027), 0);
}

TEST_F(Bases, SocialClassEightJoinsTheSecondTotalTwice) {
    line(100, {{Z014, 8}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 200);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 100);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 200);
}

TEST_F(Bases, SocialClassNineLeavesTheThirdTotal) {
    line(500, {{Z014, 1}});
    line(100, {{Z014, 9}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 500);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 500);  // + 100 - 100
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 400);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 500);
}

TEST_F(Bases, FiscalClassSevenIsFree) {
    line(100, {{Z013, 7}});
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_FALSE(slip.class8_seen);
}

TEST_F(Bases, FiscalClassEightIsFreeAndRemembered) {
    line(100, {{Z013, 8}});
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_TRUE(slip.class8_seen);
}

TEST_F(Bases, FiscalClassNineGoesToItsTotal) {
    line(100, {{Z013, 9}});
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[4], 100);
}

TEST_F(Bases, FiscalClassSixWithoutTheCeilingIsTaxed) {
    line(100, {{Z013, 6}});
    EXPECT_DOUBLE_EQ(num(P256), 100);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[3], 100);
}

TEST_F(Bases, FiscalClassSixUnderTheCeilingGoesToItsTotals) {
    slip.ceiling_flag = true;
    line(100, {{Z013, 6}, {Z014, 1}});
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[1], 0);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[2], 100);
    line(40, {{Z011, 2}, {Z013, 6}});
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[1], 40);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[2], 140);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[3], 0);
}

TEST_F(Bases, ADeductionOfAPremiumOrATipAddsToItsTotalAsWell) {
    slip.ceiling_flag = true;
    line(100, {{Z011, 1}, {Z013, 6}, {Z014, 1}});
    line(30, {{Z011, 1}, {Z013, 9}});
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[1], 0);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[2], 100);
    EXPECT_DOUBLE_EQ(slip.ceiling_totals[4], 30);
    EXPECT_DOUBLE_EQ(num(P256), 0);
}

// ---- Marks and differences ----

TEST_F(Bases, AnItemThatStoresQ788IsDated) {
    item_area(1, 10, {});
    scrivi(dopo(Z051, 3), "=Q788");
    AGGIMPFISCSOC();
    EXPECT_EQ(testo(Q789), "052024");
}

TEST_F(Bases, TheMarkMustBeTheWholeCell) {
    item_area(1, 10, {});
    scrivi(dopo(Z051, 3), "=Q7881");
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(num(Q789), 0);
}

struct JanuaryRow {
    double social_class;
    double sign;
    double difference;
};
class January : public Bases, public ::testing::WithParamInterface<JanuaryRow> {};

TEST_P(January, AmountsOfTheDifference) {
    set_period("310120244");
    line(100, {{Z014, GetParam().social_class}, {Z011, GetParam().sign}, {Z157, 1}});
    EXPECT_DOUBLE_EQ(slip.RETRIBUZIONEDIFF, GetParam().difference);
}

INSTANTIATE_TEST_SUITE_P(Classes, January,
                         ::testing::Values(JanuaryRow{1, 0, 100}, JanuaryRow{1, 1, -100},
                                           JanuaryRow{1, 2, 100}, JanuaryRow{3, 0, 100},
                                           JanuaryRow{4, 1, -100}, JanuaryRow{2, 2, -100},
                                           JanuaryRow{2, 0, 0}, JanuaryRow{2, 1, 0},
                                           JanuaryRow{0, 0, 0}, JanuaryRow{5, 0, 0}));

TEST_F(Bases, TheDifferenceIsOfJanuaryOnly) {
    line(100, {{Z014, 1}, {Z157, 1}});
    EXPECT_DOUBLE_EQ(slip.RETRIBUZIONEDIFF, 0);
    set_period("310120244");
    scrivi(T463, 1);
    line(100, {{Z014, 1}, {Z157, 1}});
    EXPECT_DOUBLE_EQ(slip.RETRIBUZIONEDIFF, 0);
}

TEST_F(Bases, AnAmountFreeOnTheLineLeavesAllSocialBases) {
    slip.FRANCHIGIALINEA = 25;
    line(100, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 75);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 75);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 75);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 75);
    EXPECT_DOUBLE_EQ(slip.FRANCHIGIALINEA, 0);
}

// ---- Minimum base ----

class MinimumBase : public Bases {
  protected:
    void SetUp() override {
        Bases::SetUp();
        scrivi(S046, 56.87);
        scrivi(P201, 26);
    }
    static void small_line() { line(1000, {{Z014, 1}}); }
};

TEST_F(MinimumBase, TheWageIsRaisedToTheDaysMinimum) {
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 1478.62);  // 56.87 x 26
    EXPECT_DOUBLE_EQ(num(P240), 1479);
    EXPECT_DOUBLE_EQ(num(P252), 1479);
    EXPECT_DOUBLE_EQ(num(P250), 1000);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 1479);  // raised and rounded itself
}

TEST_F(MinimumBase, AFurtherLineAddsToTheRaisedBase) {
    line(500, {{Z014, 1}});
    line(1000, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(num(P240), 2479);  // 1479 + 1000
}

TEST_F(MinimumBase, WithF041TheBaseItselfStays) {
    run_tables.F041 = 1;
    line(500.30, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(num(P240), 1479);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 500.30);
    line(1000.40, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 1500.70);
    EXPECT_DOUBLE_EQ(slip.rounded_base, 1501);
    EXPECT_DOUBLE_EQ(num(P240), 1501);
    EXPECT_DOUBLE_EQ(num(P252), 1501);
    EXPECT_DOUBLE_EQ(num(P250), 1500.70);
}

TEST_F(MinimumBase, P169KeepsTheCents) {
    scrivi(P169, 1);
    line(1500.40, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(num(P240), 1500.40);
    EXPECT_DOUBLE_EQ(num(P252), 1500);
}

struct DailyRow {
    double kind;
    Descriptor minimum;
};

TEST_F(MinimumBase, TheDaysMinimumByKindOfInsurance) {
    for (const DailyRow& row :
         {DailyRow{0, S046}, DailyRow{1, S028}, DailyRow{2, S039}, DailyRow{3, S017}}) {
        scrivi(row.minimum, 60 + row.kind);
        scrivi(P040, row.kind);
        small_line();
        EXPECT_DOUBLE_EQ(slip.minimum_base, (60 + row.kind) * 26) << row.kind;
    }
    scrivi(P040, 4);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 0);
}

TEST_F(MinimumBase, TheFirstKindOfEntertainersHasTheDaysMinimum) {
    scrivi(P168, 1);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 1478.62);  // 56.87 x 26
}

TEST_F(MinimumBase, EntertainersHaveNoneButTheirOwn) {
    scrivi(P168, 2);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 0);
    scrivi(P103, 40);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 1040);  // 40 x 26
}

TEST_F(MinimumBase, NoneOnAnAdditionalPayment) {
    set_period("310520240");
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 0);
    EXPECT_DOUBLE_EQ(num(P240), 1000);
}

TEST_F(MinimumBase, NoneForTheContractsFourAndFive) {
    for (const double kind : {4.0, 5.0}) {
        scrivi(P045, kind);
        scrivi(P188, 1);
        small_line();
        EXPECT_DOUBLE_EQ(slip.minimum_base, 0);
        scrivi(P100, 1);
        small_line();
        EXPECT_DOUBLE_EQ(slip.minimum_base, 1478.62);
        scrivi(P100, 0.0);
    }
    scrivi(P103, 50);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 1300);
}

TEST_F(MinimumBase, PartTimersByTheHour) {
    scrivi(P019, 1);
    scrivi(S072, 6.5);
    scrivi(P207, 80);
    scrivi(P441, 20);
    scrivi(S046, 52);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 640);  // 52 / 6.5 x 80
    scrivi(P441, 0.05);                        // 0.05 / 6 = 0.008: nothing in two decimals
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 1352);  // 52 x 26
}

TEST_F(MinimumBase, PartTimersOfTheCompanyThatLooksAtOvertime) {
    scrivi(T013, "90000000033");
    scrivi(P019, 1);
    scrivi(S072, 6.5);
    scrivi(P207, 80);
    scrivi(S046, 52);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 640);
    scrivi(P242, 10);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 1352);
}

TEST_F(MinimumBase, ANegativeMinimumIsNone) {
    scrivi(P103, -10);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_base, 0);
}

TEST_F(MinimumBase, TheTestValueOfPartTimers) {
    scrivi(P019, 1);
    scrivi(T175, 1);
    small_line();
    EXPECT_DOUBLE_EQ(slip.minimum_test, 1422);  // 56.87 x 25 = 1421.75
    line(900.60, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.minimum_test, 1901);  // 1000 + 900.60
}

TEST_F(MinimumBase, HourlyMinimumOfLaw) {
    scrivi(P019, 1);
    scrivi(P441, 20);
    scrivi(S072, 6.5);
    scrivi(P207, 80);
    scrivi(P050, 1);
    scrivi(P104, 65);
    small_line();
    EXPECT_DOUBLE_EQ(slip.hourly_minimum, 800);  // 65 / 6.5 x 80
}

TEST_F(MinimumBase, HourlyMinimumOfTheContract) {
    scrivi(P019, 1);
    scrivi(P441, 20);
    scrivi(S072, 6.5);
    scrivi(P207, 80.5);
    scrivi(P050, 1);
    scrivi(P058, 1100);
    scrivi(P362, 60);
    small_line();
    // 13 x (1100 - 60) / (20 x 52) = 13 an hour, against 56.87 / 6.5 = 8.75; x 80.5 = 1046.5
    EXPECT_DOUBLE_EQ(slip.hourly_minimum, 1047);
    scrivi(P169, 1);
    small_line();
    EXPECT_DOUBLE_EQ(slip.hourly_minimum, 1046.5);
    scrivi(P090, 14);
    small_line();
    EXPECT_DOUBLE_EQ(slip.hourly_minimum, 1127);  // 14 x 1040 / 1040 x 80.5
}

TEST_F(MinimumBase, HourlyMinimumOfPayByTheHour) {
    scrivi(P019, 1);
    scrivi(P441, 20);
    scrivi(S072, 6.5);
    scrivi(P207, 100);
    scrivi(P169, 1);
    scrivi(P058, 800);
    scrivi(T063, 130);
    small_line();
    // 800 x 130 / 100 = 1040; 13 x 1040 / (20 x 52) = 13; x 100
    EXPECT_DOUBLE_EQ(slip.hourly_minimum, 1300);
}

TEST_F(MinimumBase, NoHourlyMinimumWithoutItsFigures) {
    scrivi(P019, 1);
    scrivi(S072, 6.5);
    scrivi(P207, 80);
    small_line();
    EXPECT_DOUBLE_EQ(slip.hourly_minimum, 0);  // no weekly hours
}

// ---- The wage behind P240 in cents ----

TEST_F(Bases, TheWageInCentsIsTheOneBeforeRounding) {
    for (const double rounded_once : {1.0, 0.0}) {
        slip = Slip{};
        run_tables.F041 = rounded_once;
        line(1000.40, {{Z014, 1}});
        line(1000.40, {{Z014, 1}});
        EXPECT_DOUBLE_EQ(slip.wage_in_cents, 2000.80) << rounded_once;
        EXPECT_DOUBLE_EQ(slip.wage_of_lines, rounded_once == 1 ? 2001 : 2000);
    }
}

TEST_F(Bases, TheWageInCentsOfARaisedWageIsTheMinimum) {
    scrivi(S046, 56.87);
    scrivi(P201, 26);
    run_tables.F041 = 1;
    line(500, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.wage_in_cents, 1478.62);  // 56.87 x 26
    line(1000, {{Z014, 1}});
    EXPECT_DOUBLE_EQ(slip.wage_in_cents, 1500);  // the minimum is passed
}

// ---- Collaborators and sports collaborators ----

class Collaborators : public Bases {
  protected:
    void SetUp() override {
        Bases::SetUp();
        scrivi(PC23, 1);
    }
};

TEST_F(Collaborators, AnOrdinaryLineCountsForBoth) {
    line(1000, {{Z013, 1}, {Z014, 1}});
    EXPECT_DOUBLE_EQ(num(P256), 1000);
    EXPECT_DOUBLE_EQ(num(P240), 1000);
}

TEST_F(Collaborators, ClassesOtherThanFourAndFiveHaveNoRuleOfTheirOwn) {
    line(100, {{Z013, 3}, {Z006, 40}, {Z014, 7}, {Z007, 40}});
    EXPECT_DOUBLE_EQ(num(P256), 100);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 100);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 100);
}

TEST_F(Collaborators, FiscalLimitNotReached) {
    scrivi(QA32, 12000);
    scrivi(QA44, 1000);
    line(2000, {{Z013, 5}, {Z008, 15000}});
    EXPECT_DOUBLE_EQ(num(P256), 0);
    EXPECT_DOUBLE_EQ(num(PC29), 2000);
    EXPECT_DOUBLE_EQ(num(QA32), 14000);  // 12000 + 2000: now at the limit with QA44
    EXPECT_DOUBLE_EQ(num(PC30), 0);
}

TEST_F(Collaborators, FiscalLimitReachedWithinTheLine) {
    scrivi(QA32, 14000);
    line(2500, {{Z013, 5}, {Z008, 15000}});
    EXPECT_DOUBLE_EQ(num(PC29), 1000);  // 15000 - 14000
    EXPECT_DOUBLE_EQ(num(PC30), 1500);  // 2500 - 1000
    EXPECT_DOUBLE_EQ(num(P256), 1500);
    EXPECT_DOUBLE_EQ(num(QA32), 15000);
}

TEST_F(Collaborators, FiscalLimitReachedBefore) {
    scrivi(QA32, 15000);
    line(2500, {{Z013, 5}, {Z008, 15000}});
    EXPECT_DOUBLE_EQ(num(PC30), 2500);
    EXPECT_DOUBLE_EQ(num(P256), 2500);
}

TEST_F(Collaborators, WithoutAFiscalLimitAllIsTaxed) {
    line(2500, {{Z013, 5}});
    EXPECT_DOUBLE_EQ(num(P256), 2500);
    EXPECT_DOUBLE_EQ(num(PC30), 2500);
}

TEST_F(Collaborators, SocialLimitNotReached) {
    scrivi(Q782, 3000);
    scrivi(QA44, 500);
    line(1500, {{Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P765), 1500);  // room 5000 - 3500: not above it
    EXPECT_DOUBLE_EQ(num(P500), 0);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 0);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 1500);
}

TEST_F(Collaborators, SocialLimitReachedWithinTheLine) {
    scrivi(Q782, 4000);
    line(1500, {{Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P765), 1000);
    EXPECT_DOUBLE_EQ(num(P500), 500);
    EXPECT_DOUBLE_EQ(num(QA33), 500);  // QA44 is 0
    EXPECT_DOUBLE_EQ(num(Q782), 4000);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 0);  // a line below the limit
}

TEST_F(Collaborators, TwoLinesShareWhatIsLeftOfTheSocialLimit) {
    scrivi(Q782, 3000);
    line(1500, {{Z014, 4}, {Z009, 5000}});
    line(1500, {{Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P765), 2000);  // 1500, then 5000 - 3000 - 1500
    EXPECT_DOUBLE_EQ(num(P500), 1000);
    EXPECT_DOUBLE_EQ(num(QA33), 1000);
    EXPECT_DOUBLE_EQ(num(Q782), 3000);  // the closing adds P765
    line(400, {{Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P765), 2000);
    EXPECT_DOUBLE_EQ(num(P500), 1400);
}

TEST_F(Collaborators, TwoLinesAddUpTheirFreeAndTheirTaxedPart) {
    scrivi(QA32, 12500);
    line(1500, {{Z013, 5}, {Z008, 15000}});
    line(1500, {{Z013, 5}, {Z008, 15000}});
    line(400, {{Z013, 5}, {Z008, 15000}});
    EXPECT_DOUBLE_EQ(num(PC29), 2500);  // 1500 + 1000
    EXPECT_DOUBLE_EQ(num(PC30), 900);   // 500 + 400
    EXPECT_DOUBLE_EQ(num(QA32), 15000);
    EXPECT_DOUBLE_EQ(num(P256), 900);
}

TEST_F(Collaborators, SocialLimitReachedBeforeWithIncomeFromElsewhere) {
    scrivi(Q782, 4000);
    scrivi(QA44, 1000);
    line(1500, {{Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P500), 1500);
    EXPECT_DOUBLE_EQ(num(QA33), 0);
    EXPECT_DOUBLE_EQ(num(Q782), 5500);  // 4000 + 1500
}

TEST_F(Collaborators, ALineAboveTheSocialLimit) {
    line(6000, {{Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P765), 5000);
    EXPECT_DOUBLE_EQ(num(P500), 1000);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 1000);  // 6000 - 5000
    EXPECT_DOUBLE_EQ(slip.IMPMINIMALE, 1000);
    EXPECT_DOUBLE_EQ(slip.ESENTEA, 1000);
}

TEST_F(Collaborators, WithoutASocialLimitAllCounts) {
    line(1500, {{Z014, 4}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 1500);
    EXPECT_DOUBLE_EQ(num(P500), 1500);
}

TEST_F(Collaborators, EachLimitIsBookedByItsOwnPassOnly) {
    line(1000, {{Z013, 4}, {Z014, 4}, {Z009, 5000}});
    EXPECT_DOUBLE_EQ(num(P256), 1000);  // class 4 has no yearly limit of tax
    EXPECT_DOUBLE_EQ(num(P765), 1000);
    EXPECT_DOUBLE_EQ(num(P500), 0);
    EXPECT_DOUBLE_EQ(num(QA33), 0);
    line(1000, {{Z013, 5}, {Z008, 15000}, {Z014, 5}});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 1000);  // class 5 has no yearly limit of contributions
    EXPECT_DOUBLE_EQ(num(PC29), 1000);
    EXPECT_DOUBLE_EQ(num(PC30), 0);
}

TEST_F(Collaborators, ALimitOnTheRate) {
    item_area(10, 30, {{Z013, 5}, {Z008, 20}, {Z014, 4}, {Z009, 25}, {Z016, 1}});
    AGGIMPFISCSOC();
    EXPECT_DOUBLE_EQ(num(P256), 100);        // 10 x (30 - 20)
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 50);  // 10 x (30 - 25)
    EXPECT_DOUBLE_EQ(num(QA32), 0);
}

}  // namespace
}  // namespace slip_tests
