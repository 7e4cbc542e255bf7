#include "contributions/contributions.h"

#include <gtest/gtest.h>

#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "tests/unit/contributions/slip_fixture.h"

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALM::run_tables;
using ModSWCALM::slip;

namespace {

class ContributionsTest : public test_support::SlipFixture {
  protected:
    /// A worker with the pension item alone: 9.19 percent.
    ContributionsTest() {
        scrivi(P181, 1);
        slip.PCTCONTR[1] = 9.19;
        scrivi(S003, 9.19);
        scrivi(PB05, 1);  // no cut, unless a test wants it
    }

    static void wage(double amount) {
        scrivi(P240, amount);
        scrivi(P250, amount);
    }
    static void run_general() {
        item_bases_before_fund();
        item_bases_after_fund();
        employee_amounts();
    }
};

// ---- Item arrays ----

TEST_F(ContributionsTest, AnItemOutsideItsBoundsIsASubscriptFailure) {
    item_cell(contributions.bases, 8) = 5;
    EXPECT_EQ(contributions.bases[8], 5);
    item_cell(contributions.amounts, 10) = 6;
    EXPECT_EQ(contributions.amounts[10], 6);
    for (const double item : {9.0, -1.0, 1e9}) {
        try {
            item_cell(contributions.bases, item) = 1;
            FAIL() << "no failure for item " << item;
        } catch (const platform::Failure& failure) {
            EXPECT_EQ(failure.number(), 9);
        }
    }
    EXPECT_THROW(item_cell(contributions.amounts, 11) = 1, platform::Failure);
}

// ---- Amounts ----

TEST_F(ContributionsTest, ThePensionItemIsRoundedToTheCent) {
    wage(1909);
    run_general();
    EXPECT_EQ(num(Q224), 175.44);  // 1909 x 9.19 / 100 = 175.4371
    EXPECT_EQ(num(Q225), 175.44);
    EXPECT_EQ(contributions.amounts[1], 175.44);
    EXPECT_EQ(contributions.switches[1], 1);
}

TEST_F(ContributionsTest, EachItemIsRoundedByItself) {
    scrivi(P183, 1);
    scrivi(P188, 1);
    slip.PCTCONTR[3] = 0.30;
    slip.PCTCONTR[8] = 0.30;
    wage(1815);
    run_general();
    // 1815 x 9.19 % = 166.7985 -> 166.80; 1815 x 0.30 % = 5.445 -> 5.45, twice: 177.70.
    // Rounded once, 166.7985 + 5.445 + 5.445 = 177.6885 would be 177.69.
    EXPECT_EQ(num(Q224), 177.70);
}

TEST_F(ContributionsTest, EveryItemTakesItsSwitchItsWageAndItsRate) {
    azzera({P181});
    for (const auto& field : serie(P182, P188)) {
        scrivi(field, 1);
    }
    for (std::size_t k = 1; k <= 8; ++k) {
        slip.PCTCONTR[k] = static_cast<double>(k);
    }
    scrivi(P040, 1);  // no limits of the month
    scrivi(P240, 1000);
    scrivi(P250, 999.60);
    scrivi(P252, 400);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 1000);  // by P185
    EXPECT_EQ(contributions.bases[2], 400);
    EXPECT_EQ(contributions.bases[3], 1000);
    EXPECT_EQ(contributions.bases[4], 600);  // 1000 - the 400 of item 2
    EXPECT_EQ(contributions.bases[5], 1000);
    EXPECT_EQ(contributions.bases[6], 1000);
    EXPECT_EQ(contributions.bases[7], 1000);
    EXPECT_EQ(contributions.bases[8], 1000);
    item_bases_after_fund();
    employee_amounts();
    // 10 + 8 + 30 + 24 + 50 + 60 + 70 + 80
    EXPECT_EQ(num(Q224), 332);
    EXPECT_EQ(num(Q226), 70);
    EXPECT_EQ(num(Q227), 0);
}

TEST_F(ContributionsTest, EntertainersBearItem5OnTheWageWithItsCents) {
    scrivi(P185, 1);
    scrivi(P168, 1);
    scrivi(P240, 1000);
    scrivi(P250, 999.60);
    item_bases_before_fund(Pass::entertainers);
    EXPECT_EQ(contributions.bases[5], 999.60);
}

TEST_F(ContributionsTest, Item1FollowsP185WhenBothSwitchesAreSet) {
    scrivi(P185, 2);
    wage(1000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.switches[1], 2);
    EXPECT_EQ(contributions.bases[1], 2000);
}

TEST_F(ContributionsTest, WithoutASwitchNothingIsOwed) {
    azzera({P181});
    wage(1909);
    run_general();
    EXPECT_EQ(num(Q224), 0);
}

TEST_F(ContributionsTest, TheWageOfItem2IsWrittenWhole) {
    scrivi(P182, 1);
    scrivi(P252, 400.50);
    wage(1000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[2], 401);
    EXPECT_EQ(num(P252), 401);
}

TEST_F(ContributionsTest, WithoutItem2TheWageOfTheLinesStaysInP252) {
    scrivi(P252, 400.50);
    wage(1000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[2], 0);
    EXPECT_EQ(num(P252), 400.50);
    scrivi(P160, 1);  // the calendar of 26 days: 650 / 26 x 20 = 500
    scrivi(P163, 650);
    scrivi(P201, 20);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[2], 0);
    EXPECT_EQ(num(P252), 400.50);
    scrivi(P182, 1);
    item_bases_before_fund();
    EXPECT_EQ(num(P252), 500);
}

// ---- Yearly ceiling of item 4 ----

TEST_F(ContributionsTest, Item4StopsAtTheRestOfItsYearlyCeiling) {
    scrivi(P184, 1);
    scrivi(P040, 1);
    run_tables.TABFISSO[41] = 20658.27;
    scrivi(Q002, 81000);
    wage(3000);
    item_bases_before_fund();
    // 82215.39 - 0 - 81000 = 1215.39
    EXPECT_NEAR(contributions.residue_item4, 1215.39, 1e-9);
    EXPECT_NEAR(contributions.bases[4], 1215.39, 1e-9);
}

TEST_F(ContributionsTest, TheWageToDateCountsOnlyWithTheLimitOnFileOrAnEarlierEmployer) {
    scrivi(Q002, 81000);
    wage(3000);
    // W = 0: 82215.39 - 20658.27
    item_bases_before_fund();
    EXPECT_NEAR(contributions.residue_item4, 61557.12, 1e-9);
    run_tables.TABFISSO[41] = 20658.26;
    item_bases_before_fund();
    EXPECT_NEAR(contributions.residue_item4, 61557.12, 1e-9);
    // An earlier employer's wage: W = 81000 + 500, 82215.39 - 81500
    scrivi(P111, 500);
    item_bases_before_fund();
    EXPECT_NEAR(contributions.residue_item4, 715.39, 1e-9);
    // W below the first bracket: 82215.39 - (20658.27 - 10500) - 10500 = 61557.12
    scrivi(Q002, 10000);
    item_bases_before_fund();
    EXPECT_NEAR(contributions.residue_item4, 61557.12, 1e-9);
}

TEST_F(ContributionsTest, TheRestOfTheCeilingIsNotBelowZero) {
    scrivi(P184, 1);
    run_tables.TABFISSO[41] = 20658.27;
    scrivi(Q002, 90000);
    wage(3000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.residue_item4, 0);
    EXPECT_EQ(contributions.bases[4], 0);
}

TEST_F(ContributionsTest, Item4NotInForceBearsNothingBesideItem2) {
    scrivi(P182, 1);
    scrivi(P040, 1);  // no limits of the month, which would empty it
    slip.PCTCONTR[4] = 4;
    scrivi(P252, 600);
    wage(1000);
    run_general();
    EXPECT_EQ(contributions.bases[4], 0);
    EXPECT_EQ(num(Q224), 91.90);  // item 1 alone: item 2 has no rate
}

TEST_F(ContributionsTest, ThePensionContributionIsThatOfItems1And2And8BeforeAnyCut) {
    set_period(202405);
    azzera({PB05});
    for (const auto& field : {P182, P183, P188}) {
        scrivi(field, 1);
    }
    slip.PCTCONTR[2] = 1;
    slip.PCTCONTR[3] = 0.30;
    slip.PCTCONTR[8] = 0.50;
    wage(2000);
    scrivi(P252, 2000);
    run_general();
    // 183.80 + 20 + 10; the cut of 6 %, 120, and item 3, 6, stay out of it
    EXPECT_EQ(pension_contribution(), 213.80);
    EXPECT_EQ(num(Q224), 99.80);  // 213.80 + 6 - 120
}

TEST_F(ContributionsTest, TheCutsOfExtraPaymentsAreFormedAnewOnEachSlip) {
    for (const int month : {202105, 202305, 202405}) {
        set_period(month);
        for (const Descriptor& cut : {PB16, PB17, PB27, PB28}) {
            scrivi(cut, 12);
        }
        azzera({PB05});
        item_bases_after_fund();
        for (const Descriptor& cut : {PB16, PB17, PB27, PB28}) {
            EXPECT_EQ(num(cut), 0) << month << cut.name();
        }
    }
}

TEST_F(ContributionsTest, TheYearTellsHowTheLinesOfTheCutAreSummed) {
    struct Case {
        int month;
        double of_2022;
        double half;
    };
    // 2022 writes the wage of the extra months, from 2023 half of the contributions for whom they
    // are halved: 2000 x 9.19 % / 2; before 2022 neither.
    for (const Case& c :
         {Case{202112, 7, 7}, Case{202212, 0, 7}, Case{202305, 7, 91.90}, Case{202405, 7, 91.90}}) {
        set_period(c.month);
        wage(2000);
        scrivi(PB09, 7);
        scrivi(PB26, 7);
        item_bases_after_fund();
        EXPECT_EQ(num(PB09), c.of_2022) << c.month;
        EXPECT_EQ(num(PB26), c.half) << c.month;
    }
}

// ---- Shares beside the items ----

TEST_F(ContributionsTest, TheShareOfS300GoesToTheFieldOfTheSlipKind) {
    scrivi(P849, 1);
    scrivi(S300, 1.50);
    wage(2000);
    item_bases_before_fund();
    EXPECT_EQ(num(P850), 30);  // 2000 x 1.5 %
    EXPECT_EQ(num(P851), 0);
    set_additional(202412);
    azzera({P850});
    item_bases_before_fund();
    EXPECT_EQ(num(P850), 0);
    EXPECT_EQ(num(P851), 30);
}

TEST_F(ContributionsTest, CompaniesWithT633ShowThreeSharesOnTheWageWithItsCents) {
    scrivi(T633, 1);
    scrivi(S305, 1);
    scrivi(S306, 2);
    scrivi(S307, 3);
    scrivi(P240, 1000);
    scrivi(P250, 1000.40);
    item_bases_before_fund();
    EXPECT_EQ(num(P868), 10);     // 10.004
    EXPECT_EQ(num(P869), 20.01);  // 20.008
    EXPECT_EQ(num(P870), 30.01);  // 30.012
}

// ---- Limits of the month ----

class MonthLimitsTest : public ContributionsTest {
  protected:
    MonthLimitsTest() {
        for (const auto& field : {P184, P185, P186, P187}) {
            scrivi(field, 1);
        }
        run_tables.TABFISSO[37] = 12000;  // 1000 a month
        run_tables.TABFISSO[38] = 18000;  // 1500
        run_tables.TABFISSO[39] = 24000;  // 2000
    }
};

TEST_F(MonthLimitsTest, ItemsAboveTheirLimitAreCutToIt) {
    wage(3000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[5], 1000);
    EXPECT_EQ(contributions.bases[6], 1500);
    EXPECT_EQ(contributions.bases[7], 2000);
}

TEST_F(MonthLimitsTest, LowerBasesStayWhileP185IsSet) {
    wage(900);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[5], 900);
    EXPECT_EQ(contributions.bases[6], 900);
    EXPECT_EQ(contributions.bases[7], 900);
}

TEST_F(MonthLimitsTest, WithoutP185Items6And7AreRaisedToTheirLimit) {
    azzera({P185});
    wage(900);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[5], 0);
    EXPECT_EQ(contributions.bases[6], 1500);
    EXPECT_EQ(contributions.bases[7], 2000);
}

TEST_F(MonthLimitsTest, ALimitCountsOnlyForAnItemInForceAndAFilledCell) {
    azzera({P185, P187});
    run_tables.TABFISSO[38] = 0;
    wage(900);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[6], 900);  // no limit on file
    EXPECT_EQ(contributions.bases[7], 0);    // not in force
}

TEST_F(MonthLimitsTest, OtherQualificationsHaveNoLimitInTheGeneralPass) {
    scrivi(P040, 1);
    wage(3000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[5], 3000);
    EXPECT_EQ(contributions.bases[6], 3000);
}

TEST_F(MonthLimitsTest, EntertainersHaveTheLimitsFromTheSecondClass) {
    scrivi(P040, 1);
    wage(3000);
    scrivi(P168, 1);
    item_bases_before_fund(Pass::entertainers);
    EXPECT_EQ(contributions.bases[7], 3000);
    scrivi(P168, 2);
    item_bases_before_fund(Pass::entertainers);
    EXPECT_EQ(contributions.bases[7], 2000);
}

// ---- Calendar of 26 days ----

TEST_F(ContributionsTest, CalendarWorkersBearTheConventionalWagesByDay) {
    scrivi(P160, 1);
    scrivi(P182, 1);
    scrivi(P186, 1);
    scrivi(P201, 20);
    scrivi(P161, 1300);
    scrivi(P162, 1301);
    scrivi(P163, 650);
    scrivi(P040, 1);
    wage(2500);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 1000);  // 1300 / 26 x 20
    EXPECT_EQ(contributions.bases[6], 1001);  // 1301 / 26 x 20 = 1000.77
    EXPECT_EQ(contributions.bases[2], 500);   // 650 / 26 x 20
    EXPECT_EQ(num(P240), 1000);
    EXPECT_EQ(num(Q094), 650);
}

TEST_F(ContributionsTest, CalendarWorkersByTheHourBearHourlyWages) {
    scrivi(P160, 1);
    scrivi(P019, 1);
    scrivi(P186, 1);
    scrivi(P207, 100.5);
    scrivi(P357, 8.12345);
    scrivi(P358, 2);
    scrivi(P040, 1);
    wage(2500);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 816);  // 8.12345 x 100.5 = 816.41
    EXPECT_EQ(contributions.bases[6], 201);
    EXPECT_EQ(num(P240), 816);
}

TEST_F(ContributionsTest, CalendarWagesFollowTheSwitches) {
    scrivi(P160, 1);
    azzera({P181});
    scrivi(P201, 26);
    scrivi(P161, 1300);
    wage(2500);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 0);
    EXPECT_EQ(num(P240), 0);
}

// ---- Deduction from the base ----

TEST_F(ContributionsTest, TheSectorDeductionMovesFromItem1ToItem6) {
    scrivi(S088, 100);
    scrivi(P040, 1);
    slip.PCTCONTR[6] = 2;
    wage(1100);
    run_general();
    EXPECT_EQ(contributions.bases[1], 1000);
    EXPECT_EQ(contributions.bases[6], 100);
    EXPECT_EQ(num(Q224), 93.90);  // 1000 x 9.19 % + 100 x 2 %
}

TEST_F(ContributionsTest, ADeductionLargerThanTheBaseGivesANegativeContribution) {
    scrivi(S088, 300);
    scrivi(P040, 1);
    wage(100);
    run_general();
    EXPECT_EQ(contributions.bases[1], -200);
    EXPECT_EQ(contributions.amounts[1], -18.38);  // -200 x 9.19 %
    EXPECT_EQ(num(Q224), -18.38);
}

TEST_F(ContributionsTest, WithoutASectorDeductionItem6KeepsItsWage) {
    scrivi(P186, 1);
    scrivi(P040, 1);
    wage(100);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[6], 100);
}

// ---- Item 7 ----

class Item7Test : public ContributionsTest {
  protected:
    Item7Test() {
        azzera({P181});
        scrivi(P187, 1);
        scrivi(P168, 1);
        slip.PCTCONTR[7] = 2;
        run_tables.TABFISSO[30] = 4000;
        run_tables.TABFISSO[32] = 300;  // 3 percent, in hundredths
        wage(5000);
    }
    static void run_entertainers() {
        item_bases_before_fund(Pass::entertainers);
        item_bases_after_fund();
        employee_amounts(Pass::entertainers);
    }
};

TEST_F(Item7Test, WithT180TheWageAboveTheBracketBearsTheHigherRate) {
    scrivi(T180, 1);
    run_entertainers();
    EXPECT_EQ(num(Q226), 80);  // 4000 x 2 %
    EXPECT_EQ(num(Q227), 30);  // 1000 x 3 %
    EXPECT_EQ(num(Q224), 110);
}

TEST_F(Item7Test, WithoutT180OneRateHolds) {
    run_entertainers();
    EXPECT_EQ(num(Q226), 100);
    EXPECT_EQ(num(Q227), 0);
    EXPECT_EQ(num(Q224), 100);
}

TEST_F(Item7Test, AWageAtTheBracketBearsOneRate) {
    scrivi(T180, 1);
    wage(4000);
    run_entertainers();
    EXPECT_EQ(num(Q224), 80);
    EXPECT_EQ(num(Q227), 0);
}

TEST_F(Item7Test, TheGeneralPassKnowsOneRate) {
    scrivi(T180, 1);
    azzera({P168});
    run_general();
    EXPECT_EQ(num(Q224), 100);
}

// ---- Back pay ----

TEST_F(ContributionsTest, BackPayBearsItems1And3And8) {
    scrivi(P183, 1);
    scrivi(P186, 1);
    slip.PCTCONTR[3] = 0.30;
    slip.PCTCONTR[6] = 5;
    scrivi(Q052, 1000.50);
    back_pay_contribution();
    // 1001 x 9.19 % = 91.9919 -> 91.99; 1001 x 0.30 % = 3.003 -> 3.00
    EXPECT_EQ(num(Q053), 94.99);
    EXPECT_EQ(num(Q224), 0);  // it is deducted from the taxable, not owed twice
    scrivi(P040, 1);
    back_pay_contribution();
    EXPECT_EQ(num(Q053), 145.04);  // + 1001 x 5 % = 50.05
}

TEST_F(ContributionsTest, BackPayItemsNotInForceBearNothing) {
    slip.PCTCONTR[3] = 0.30;
    slip.PCTCONTR[8] = 5.84;
    scrivi(Q052, 1000);
    back_pay_contribution();
    EXPECT_EQ(num(Q053), 91.90);
}

TEST_F(ContributionsTest, TheSumOfQ800IsOwedAndDeducted) {
    scrivi(Q800, 12.34);
    back_pay_contribution();
    EXPECT_EQ(num(Q053), 12.34);
    EXPECT_EQ(num(Q224), 12.34);
    EXPECT_EQ(num(Q225), 12.34);
}

TEST_F(ContributionsTest, ContributionsOnP195JoinP212ForOtherQualifications) {
    scrivi(P195, 1000);
    scrivi(P212, 10);
    back_pay_contribution();
    EXPECT_EQ(num(P212), 10);  // P040 0
    scrivi(P040, 2);
    back_pay_contribution();
    EXPECT_EQ(num(P212), 101.90);  // + 1000 x 9.19 %
    scrivi(T013, "90000000099");
    back_pay_contribution();
    EXPECT_EQ(num(P212), 101.90);
}

TEST_F(ContributionsTest, WithoutP195TheMonthsContributionsStayOutOfP212) {
    scrivi(P040, 2);
    wage(1909);
    run_general();
    back_pay_contribution();
    EXPECT_EQ(num(P212), 0);
}

// ---- Additional percent above the first bracket ----

class AdditionalPercentTest : public ContributionsTest {
  protected:
    /// 55008 euro a year (2024): 4411.85 x 12 + 2065.83 = 55008.03; 4584 a month.
    AdditionalPercentTest() {
        run_tables.TABFISSO[30] = 4411.85;
        run_tables.TABFISSO[34] = 1;
    }
};

TEST_F(AdditionalPercentTest, TheMonthsWageAboveTheBracketBearsOnePercent) {
    wage(6000);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 14.16);  // (6000 - 4584) x 1 %
    EXPECT_EQ(num(Q224), 14.16);
    EXPECT_EQ(num(Q225), 14.16);
    EXPECT_EQ(num(Q004), 14.16);
    EXPECT_EQ(num(Q167), 0);
    EXPECT_EQ(num(P724), 0);
}

TEST_F(AdditionalPercentTest, AWageAtTheBracketBearsNothing) {
    wage(4584);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 0);
    EXPECT_EQ(num(Q004), 0);
}

TEST_F(AdditionalPercentTest, AnAdditionalSlipShowsItInP724Too) {
    set_additional(202412);
    scrivi(Q001, 66000);
    wage(6000);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 14.16);  // by the month: an additional slip settles no year
    EXPECT_EQ(num(P724), 14.16);
}

TEST_F(AdditionalPercentTest, DecemberSettlesTheYear) {
    set_period(202412);
    scrivi(Q001, 60000);
    scrivi(Q004, 50);
    wage(6000);
    solidarity_above_ceiling();
    // 66000 - 55008.03 = 10991.97 x 1 % = 109.9197 - 50
    EXPECT_EQ(num(P221), 59.92);
    EXPECT_EQ(num(Q004), 109.92);
    EXPECT_EQ(num(Q167), 0);
}

TEST_F(AdditionalPercentTest, AnEarlierEmployersWageJoinsTheYear) {
    set_period(202412);
    scrivi(Q001, 50000);
    scrivi(P111, 10000);
    wage(4000);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 89.92);  // 64000 - 55008.03 = 8991.97 x 1 % = 89.9197
}

TEST_F(AdditionalPercentTest, TooMuchWithheldIsGivenBack) {
    set_period(202412);
    scrivi(Q001, 50000);
    scrivi(Q004, 20);
    scrivi(Q224, 500);
    scrivi(Q225, 500);
    wage(4000);
    solidarity_above_ceiling();
    EXPECT_EQ(num(Q167), 1);
    EXPECT_EQ(num(P221), 20);
    EXPECT_EQ(num(Q224), 480);
    EXPECT_EQ(num(Q225), 480);
    EXPECT_EQ(num(Q004), 0);
}

TEST_F(AdditionalPercentTest, ALeaverSettlesTheYear) {
    scrivi(P017, "20052024");
    scrivi(Q001, 54000);
    wage(6000);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 49.92);  // 60000 - 55008.03 = 4991.97 x 1 %
}

TEST_F(AdditionalPercentTest, CollaboratorsAndThoseWithoutPensionItemBearNothing) {
    wage(6000);
    scrivi(P447, 1);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 0);
    azzera({P447, P181});
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 0);
    scrivi(P188, 1);  // an apprentice has one
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 14.16);
}

TEST_F(AdditionalPercentTest, AnUnfilledBracketIsNoBracket) {
    run_tables.TABFISSO[30] = 0;
    wage(6000);
    solidarity_above_ceiling();
    EXPECT_EQ(num(P221), 0);
}

}  // namespace
