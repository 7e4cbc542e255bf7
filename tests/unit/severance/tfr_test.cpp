// The severance fund of a slip, on a record made by hand: May 2024, fund 10000 at the end of 2023,
// 60 months of service before the year. Amounts in euro.

#include "severance/tfr.h"

#include <gtest/gtest.h>

#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "severance/advances.h"
#include "slip/slip.h"
#include "tests/unit/contributions/slip_fixture.h"

namespace {

using namespace MXREPOSITORY;
using ModSWCALM::slip;
using ModSwCalm2::ElaboraTFR;

class SeveranceTest : public test_support::SlipFixture {
  protected:
    SeveranceTest() {
        set_table(1, {28000, 23, 50000, 35, 999999.99, 43});               // D.Lgs. 216/2023
        set_table(21, {26000, 23, 33500, 33, 100000, 39, 999999.99, 43});  // 31 December 2006
        scrivi(F021, 118.9);
        scrivi(F027, 119.5);
        scrivi(F322, 17);
        scrivi(P031, 1);
        scrivi(P083, 1);  // no contribution off the accrual
        scrivi(Q039, 10000);
        scrivi(Q042, 60);
        scrivi(Q136, 5);
    }
    static void set_table(int start, std::initializer_list<double> cells) {
        int index = start;
        for (const double cell : cells) {
            slip.TABIRPAC.set(index++, cell);
        }
    }
    static void leaving(const char* date) { scrivi(P017, date); }
    /// Twelve months and a fund of as much: a reference income of `income`.
    static void reference(double income) {
        scrivi(Q042, 7);
        scrivi(Q039, income / 12);
    }
};

// ---- Who is paid ----

TEST_F(SeveranceTest, TheOrdinarySlipOfTheLeavingMonthPays) {
    struct Case {
        const char* leaving;
        int yyyymm;
        char kind;
        bool pays;
    };
    for (const Case& c :
         {Case{"31052024", 202405, '4', true}, Case{"31052024", 202405, '0', false},
          Case{"30042024", 202405, '4', false}, Case{"30062024", 202405, '4', false},
          Case{"31052023", 202405, '4', false}, Case{"00000000", 202405, '4', false}}) {
        set_period(c.yyyymm, c.kind);
        leaving(c.leaving);
        scrivi(P241, 0);
        ElaboraTFR();
        EXPECT_EQ(num(P241) != 0, c.pays) << c.leaving << c.kind;
    }
}

TEST_F(SeveranceTest, AnEarlierPaymentIsNoneOfTheNewEmployment) {
    scrivi(Q040, 50);
    scrivi(Q373, 8.5);
    ElaboraTFR();
    EXPECT_EQ(num(Q040), 0);
    EXPECT_EQ(num(Q373), 0);
}

// ---- Accrual ----

TEST_F(SeveranceTest, LinesAlreadyMovedToAFundComeOffTheWage) {
    struct Case {
        double rule;
        double wage;
    };
    for (const Case& c : {Case{0, 900}, Case{4, 900}, Case{1, 1000}, Case{3, 1000}}) {
        slip.severance_buckets[8] = 100;
        scrivi(P159, c.rule);
        scrivi(P260, 1000);
        scrivi(Q037, 0);
        ElaboraTFR();
        EXPECT_EQ(num(P260), c.wage) << c.rule;
        EXPECT_EQ(num(Q037), c.wage) << c.rule;
    }
}

TEST_F(SeveranceTest, NothingAccruesWhereThePacketPaysIt) {
    for (const Descriptor& packet : {P921, PA48}) {
        scrivi(packet, 1);
        scrivi(P260, 1000);
        scrivi(Q038, 3);
        ElaboraTFR();
        EXPECT_EQ(num(Q037), 0) << packet.name();
        EXPECT_EQ(num(Q038), 3) << packet.name();
        scrivi(packet, 0);
    }
}

TEST_F(SeveranceTest, BeforeTwoThousandFifteenTheContributionIsNeverHalved) {
    scrivi(P083, 0);
    scrivi(P101, 2);
    scrivi(P240, 1000);
    scrivi(P260, 1000);
    set_period(201412);
    ElaboraTFR();
    EXPECT_EQ(num(Q038), 5);  // 0.50 % where the tables have none
    set_period(201501);
    scrivi(Q037, 0);
    ElaboraTFR();
    EXPECT_EQ(num(Q038), 2.5);
}

TEST_F(SeveranceTest, TheEmployersReliefTakesHalfOfTheContributionOrNone) {
    scrivi(P083, 0);
    struct Case {
        double first;
        double second;
        double contribution;  ///< of 1000 x 0.50 %
    };
    for (const Case& c :
         {Case{0, 0, 5}, Case{1, 0, 5}, Case{2, 0, 2.5}, Case{3, 0, 2.5}, Case{4, 0, 5},
          Case{0, 1, 5}, Case{0, 2, 2.5}, Case{0, 3, 5}, Case{1, 2, 5}, Case{2, 1, 2.5}}) {
        scrivi(P101, c.first);
        scrivi(P114, c.second);
        scrivi(P240, 1000);
        scrivi(P260, 1000);
        scrivi(Q037, 0);
        ElaboraTFR();
        EXPECT_EQ(num(Q038), c.contribution) << c.first << c.second;
    }
}

TEST_F(SeveranceTest, FundOfTheTerminationTakesWhatCameFromOutside) {
    scrivi(Q043, 400);
    scrivi(Q262, 30);
    scrivi(Q372, 7);
    scrivi(Q376, 2);
    ElaboraTFR();
    EXPECT_EQ(num(Q055), 10425);  // 10000 + 400 + 30 - 7 + 2
    scrivi(Q052, 50);
    scrivi(Q053, 5);
    scrivi(Q054, 20);
    scrivi(Q056, 300);
    scrivi(Q365, 100);
    scrivi(Q236, 60);
    ElaboraTFR();
    // 10000 + 400 - 60 - (300 - 100) + 50 - 5 + 20 - 7 + 2
    EXPECT_EQ(num(Q126), 10200);
}

TEST_F(SeveranceTest, TheTreasuryPartOfAnEmptyFundIsNotRevalued) {
    leaving("31052024");
    scrivi(Q267, 1);
    scrivi(Q693, 1000);
    for (const double fund : {0, 10000}) {
        scrivi(Q039, fund);
        scrivi(Q697, 7);
        ElaboraTFR();
        EXPECT_EQ(num(Q697), fund == 0 ? 7 : 10.03) << fund;  // 1000 x 1.003470 % = 10.0347
    }
}

// ---- Rate ----

TEST_F(SeveranceTest, ReferenceIncomeCountsAtLeastTwelveMonths) {
    EXPECT_DOUBLE_EQ(ModSwCalm2::reference_income(1000, 0), 12000);
    EXPECT_DOUBLE_EQ(ModSwCalm2::reference_income(1000, 11), 12000);
    EXPECT_DOUBLE_EQ(ModSwCalm2::reference_income(1000, 12), 12000);
    EXPECT_DOUBLE_EQ(ModSwCalm2::reference_income(1000, 16), 9000);
}

TEST_F(SeveranceTest, TheLowerOfTheTwoScalesHoldsWhereTheCompanyAsksForBoth) {
    // 28000 in the year's scale 23 %; in that of 2006 26000 x 23 % + 2000 x 33 % = 6640: 23.71 %
    reference(28000);
    scrivi(T502, 1);
    ElaboraTFR();
    EXPECT_EQ(num(Q057), 23);
    // A collaborator takes the other.
    scrivi(P447, 1);
    ElaboraTFR();
    EXPECT_EQ(num(Q057), 23.71);
    // Another scale of the year, 27 %: that of 2006 is the lower one, and T502 0 does not see it.
    scrivi(P447, 0);
    set_table(1, {28000, 27});
    ElaboraTFR();
    EXPECT_EQ(num(Q057), 23.71);
    scrivi(T502, 0);
    ElaboraTFR();
    EXPECT_EQ(num(Q057), 27);
}

TEST_F(SeveranceTest, AnEmptyScaleOfTwoThousandSixIsNone) {
    set_table(21, {0, 0, 0, 0, 0, 0, 0, 0});
    scrivi(T502, 1);
    ElaboraTFR();
    EXPECT_EQ(num(Q057), 23);
}

TEST_F(SeveranceTest, NoFundHasNoRate) {
    scrivi(Q039, 0);
    ElaboraTFR();
    EXPECT_EQ(num(Q122), 0);
    EXPECT_EQ(num(Q057), 0);
}

// ---- Deduction ----

TEST_F(SeveranceTest, DeductionFromTheEndOfMarchTwoThousandEight) {
    reference(7500);
    scrivi(P754, 1);
    scrivi(F411, 70);
    set_period(200803);
    leaving("30032008");
    ElaboraTFR();
    EXPECT_EQ(num(Q774), 0);
    leaving("31032008");
    ElaboraTFR();
    EXPECT_EQ(num(Q774), 70);
    scrivi(P754, 0);
    ElaboraTFR();
    EXPECT_EQ(num(Q774), 0);
    scrivi(P754, 1);
    scrivi(P447, 1);
    ElaboraTFR();
    EXPECT_EQ(num(Q774), 0);
}

TEST_F(SeveranceTest, DeductionOfZeroInTheTablesBecomesSeventyAndStays) {
    reference(6000);
    scrivi(P754, 1);
    leaving("31052024");
    ElaboraTFR();
    EXPECT_EQ(num(Q774), 70);
    EXPECT_EQ(num(F411), 70);
    scrivi(F411, 80);
    ElaboraTFR();
    EXPECT_EQ(num(Q774), 80);
}

TEST_F(SeveranceTest, DeductionByIncomeGoesByTheMonths) {
    scrivi(P754, 1);
    scrivi(F411, 70);
    leaving("31052024");
    struct Case {
        double income;
        double deduction;
    };
    for (const Case& c : {Case{7500, 70}, Case{7500.12, 290}, Case{28000.08, 600},
                          Case{27999.96, 290}, Case{30000, 600}, Case{30000.12, 0}}) {
        reference(c.income);  // 12 months: 12 x 20 + 50 = 290; 12 x 50 = 600
        ElaboraTFR();
        EXPECT_EQ(num(Q774), c.deduction) << c.income;
    }
}

TEST_F(SeveranceTest, TheRateOfAnAdvanceHasTwoDecimals) {
    const double cells[] = {28000, 23, 50000, 35, 999999.99, 43};
    for (int i = 0; i < 6; ++i) {
        slip.TABIRP.set(i + 1, cells[i]);
    }
    scrivi(Q042, 12);
    struct Case {
        double fund;
        double rate;
    };
    // The reference income is twelve times the fund; above 28000 it bears 35 percent, and the whole
    // 23 + 12 x (income - 28000) / income.
    for (const Case& c : {Case{0, 0}, Case{2000, 23}, Case{2334.21, 23},  // 28010.52: 23.0045
                          Case{2334.31, 23.01}}) {                        // 28011.72: 23.0050
        scrivi(Q039, c.fund);
        scrivi(P454, 100);
        ModSwCalm2::ElaboraAnticipazioni();
        EXPECT_EQ(num(Q379), c.rate) << c.fund;
    }
}

// ---- Tax ----

TEST_F(SeveranceTest, TaxLessDeductionsAndTaxOnAdvances) {
    scrivi(Q128, 100);
    scrivi(Q044, 50);
    scrivi(Q047, 40);
    scrivi(Q253, 30);
    scrivi(Q257, 20);
    scrivi(Q987, 10);
    leaving("31052024");
    ElaboraTFR();
    EXPECT_EQ(num(Q127), 2300);  // 10000 x 23 %
    EXPECT_EQ(num(Q129), 2200);
    EXPECT_EQ(num(Q058), 2050);
    EXPECT_EQ(num(Q969), 0);
    EXPECT_EQ(num(P258), 2200);
    // 10000 x 1.003470 % = 100.35; tax on it 17.06; 10000 + 100.35 - 17.06 - 2050
    EXPECT_EQ(num(Q268), 8033.29);
    EXPECT_EQ(num(P241), 10250.35);                     // fund, revaluation, 150 of taxes paid
    EXPECT_NEAR(num(P241) - num(P259), 8033.29, 1e-6);  // what is left is what is paid
}

TEST_F(SeveranceTest, TaxOfTheOperatorStands) {
    scrivi(PB53, 1);
    scrivi(Q126, 9000);
    scrivi(Q129, 1500);
    scrivi(Q058, 1500);
    leaving("31052024");
    ElaboraTFR();
    EXPECT_EQ(num(Q126), 9000);
    EXPECT_EQ(num(P258), 1500);
    EXPECT_EQ(num(Q268), 8583.29);  // 10000 + 100.35 - 17.06 - 1500
}

TEST_F(SeveranceTest, ATaxBelowZeroIsNone) {
    scrivi(Q056, 12000);
    ElaboraTFR();
    EXPECT_EQ(num(Q126), -2000);
    EXPECT_EQ(num(Q127), 0);
    EXPECT_EQ(num(Q129), 0);
}

}  // namespace
