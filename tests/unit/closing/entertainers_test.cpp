#include "closing/entertainers.h"

#include <gtest/gtest.h>

#include <string>

#include "closing/state.h"
#include "context/period.h"
#include "contributions/contributions.h"
#include "contributions/pension_paid.h"
#include "files/file_numbers.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "tax/income_tax.h"
#include "tests/support/archive_directory.h"
#include "tests/unit/contributions/slip_fixture.h"

namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALB::tax_state;
using ModSWCALM::run_tables;
using ModSWCALM::slip;

/// A worker of class 1 with 26 days.
class EntertainersTest : public test_support::SlipFixture {
  protected:
    EntertainersTest() {
        closing = {};
        tax_state = {};
        archive_.define(kDailyWages, "GIORNATE.TXT", 80);
        scrivi(P168, 2);
        scrivi(P094, 1);
        scrivi(P201, 26);
        scrivi(PB05, 1);
        wage(2600);
    }
    static void wage(double amount) {
        scrivi(P240, amount);
        scrivi(P250, amount);
    }
    /// One line of the table of daily wages.
    static std::string row(const std::string& from, const std::string& to,
                           const std::string& credited) {
        std::string line = from;
        line.resize(10, ' ');
        line += to;
        line.resize(20, ' ');
        line += credited;
        line.resize(30, ' ');
        return line + "\r\n";
    }
    void table(const std::string& rows) const { archive_.write("GIORNATE.TXT", rows); }

    test_support::ArchiveDirectory archive_;
};

// ---- The four amounts: columns 1, 11, 21, 29 ----

TEST_F(EntertainersTest, WithoutLimitsTheWholeWageContributes) {
    EXPECT_EQ(FAI_ENPALS(),
              "0000260000"
              "0000000000"
              "00260000"
              "00000000");
}

TEST_F(EntertainersTest, TheDailyLimitHoldsWithP324Zero) {
    scrivi(F143, 100);
    wage(3900);  // 150 a day
    EXPECT_EQ(FAI_ENPALS(),
              "0000260000"
              "0000130000"
              "00260000"
              "00000000");
    scrivi(P324, 1);
    EXPECT_EQ(FAI_ENPALS().substr(0, 20),
              "0000390000"
              "0000000000");
    scrivi(P324, 0);
    wage(2600);  // 100 a day: not above
    EXPECT_EQ(FAI_ENPALS().substr(0, 20),
              "0000260000"
              "0000000000");
}

TEST_F(EntertainersTest, Classes3And4HaveADailyMinimum) {
    scrivi(F166, 110);
    struct Row {
        int kind;
        const char* contributing;
    };
    for (const Row& row : {Row{1, "0000260000"}, Row{2, "0000260000"}, Row{3, "0000286000"},
                           Row{4, "0000286000"}}) {  // 110 x 26
        scrivi(P094, row.kind);
        EXPECT_EQ(FAI_ENPALS().substr(0, 10), row.contributing) << row.kind;
    }
    wage(0);
    EXPECT_EQ(FAI_ENPALS().substr(0, 10), "0000000000");  // no wage, no minimum
}

TEST_F(EntertainersTest, TheYearlyCeilingStopsTheWage) {
    scrivi(F198, 119650);
    scrivi(Q003, 118000);
    EXPECT_EQ(FAI_ENPALS(),
              "0000165000"
              "0000095000"
              "00165000"
              "00000000");
    scrivi(Q003, 120000);
    EXPECT_EQ(FAI_ENPALS().substr(0, 20),
              "0000000000"
              "0000260000");
    scrivi(Q003, 100000);
    EXPECT_EQ(FAI_ENPALS(),
              "0000260000"
              "0000000000"
              "00260000"
              "01705000");  // 119650 - 100000 - 2600
}

TEST_F(EntertainersTest, TheTableGivesTheCreditedWage) {
    table(row("50.00", "99.99", "75.00") + row("100.00", "150.00", "120.00"));
    EXPECT_EQ(FAI_ENPALS().substr(20, 8), "00312000");  // 120 x 26, the lower limit included
    wage(3900);
    EXPECT_EQ(FAI_ENPALS().substr(20, 8), "00312000");  // the upper limit too
    wage(2599.74);
    EXPECT_EQ(FAI_ENPALS().substr(20, 8), "00195000");  // 75 x 26
    wage(4000);
    EXPECT_EQ(FAI_ENPALS().substr(20, 8), "00400000");  // no bracket
}

TEST_F(EntertainersTest, TheTableHasAtMost128Lines) {
    std::string rows;
    for (int i = 1; i <= 127; ++i) {
        rows += row("1.00", "2.00", "1.00");
    }
    table(rows + row("100.00", "100.00", "77.00"));
    EXPECT_EQ(FAI_ENPALS().substr(20, 8), "00200200");  // line 128
    table(rows + row("1.00", "2.00", "1.00") + row("100.00", "100.00", "77.00"));
    EXPECT_EQ(FAI_ENPALS().substr(20, 8), "00260000");
}

TEST_F(EntertainersTest, APaymentWithoutDaysHasNoDailyLimits) {
    scrivi(F143, 100);
    scrivi(F166, 90);
    scrivi(P094, 3);
    scrivi(P201, 0);
    wage(5000);
    EXPECT_EQ(FAI_ENPALS().substr(0, 20),
              "0000500000"
              "0000000000");
}

TEST_F(EntertainersTest, OtherClassesHaveNoLimits) {
    scrivi(F143, 10);
    scrivi(F198, 100);
    for (const int kind : {0, 5, 9}) {
        scrivi(P094, kind);
        EXPECT_EQ(FAI_ENPALS().substr(0, 20),
                  "0000260000"
                  "0000000000")
            << kind;
    }
}

// ---- The pass ----

class EntertainersPassTest : public EntertainersTest {
  protected:
    /// Pension item at 9.19 percent, income tax by the first rate alone.
    EntertainersPassTest() {
        scrivi(P181, 1);
        slip.PCTCONTR[1] = 9.19;
        scrivi(P031, 2);
        slip.TABIRP.set(1, 28000);
        slip.TABIRP.set(2, 23);
        slip.TABIRP.set(3, 999999.99);
        slip.TABIRP.set(4, 43);
        tax_state.PrimaPassata = 1;
        scrivi(P256, 2600);
    }
};

TEST_F(EntertainersPassTest, ContributionsAndTaxReachTheDeductionsOnce) {
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(Q224), 238.94);   // 2600 x 9.19 %
    EXPECT_EQ(num(P256), 2361.06);  // 2600 - 238.94
    EXPECT_EQ(num(Q137), 543.04);   // 2361.06 x 23 % = 543.0438
    EXPECT_EQ(num(P259), 781.98);   // 238.94 + 543.04
    EXPECT_EQ(num(Q225), 238.94);
    EXPECT_EQ(num(Q168), 2600);
}

TEST_F(EntertainersPassTest, TheFirstKindCarriesNoSumOfTheMonth) {
    scrivi(P168, 1);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(Q168), 0);
    EXPECT_EQ(num(Q224), 238.94);
}

TEST_F(EntertainersPassTest, TheWageAboveTheLimitsIsBookedApart) {
    scrivi(F198, 119650);
    scrivi(Q003, 118000.40);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P250), 1649.60);
    EXPECT_EQ(num(P240), 1650);
    EXPECT_EQ(num(P881), 950);  // with P240 the wage before it
    EXPECT_EQ(num(Q926), 950);
    EXPECT_EQ(num(Q224), 151.64);  // 1650 x 9.19 % = 151.635
}

TEST_F(EntertainersPassTest, AnAdditionalSlipBooksTheExcessInItsOwnField) {
    set_additional(202412);
    scrivi(P201, 0);
    scrivi(F198, 119650);
    scrivi(Q003, 119650);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P240), 0);
    EXPECT_EQ(num(P883), 2600);
    EXPECT_EQ(num(P881), 0);
}

TEST_F(EntertainersPassTest, TheMinimumRaisesTheWage) {
    scrivi(P094, 4);
    scrivi(F166, 110);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P240), 2860);
    EXPECT_EQ(num(Q224), 262.83);  // 2860 x 9.19 % = 262.834
    EXPECT_EQ(num(P881), 0);
}

TEST_F(EntertainersPassTest, Q170TakesTheSumsToDateOfItem5) {
    scrivi(Q010, 12.50);
    scrivi(Q170, 100);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(Q170), 112.50);
    EXPECT_EQ(num(Q010), 12.50);  // item 5 has no rate
}

TEST_F(EntertainersPassTest, TheFirstSlipOfTheMonthOpensP204) {
    scrivi(P204, "15042024");
    slip.earlier_slip_this_month = true;
    CSOCTASSEPENPALS();
    EXPECT_EQ(testo(P204), "15042024");
    slip.earlier_slip_this_month = false;
    tax_state.PrimaPassata = 1;
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P204), 0);
}

TEST_F(EntertainersPassTest, OfTheFirstKindP204Stays) {
    scrivi(P168, 1);
    scrivi(P204, "15042024");
    slip.earlier_slip_this_month = false;
    CSOCTASSEPENPALS();
    EXPECT_EQ(testo(P204), "15042024");
}

TEST_F(EntertainersPassTest, TheVoluntarySumOfNonMembersIsOwed) {
    scrivi(P450, 10);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(Q224), 248.94);
}

TEST_F(EntertainersPassTest, NoAdditionalPercentIsTaken) {
    run_tables.TABFISSO[30] = 1000;
    run_tables.TABFISSO[34] = 1;
    scrivi(P221, 5);
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P221), 0);
    EXPECT_EQ(num(Q224), 238.94);
}

// ---- Settlement of the year ----

class YearSettlementTest : public EntertainersTest {
  protected:
    /// 4000 a month: 52000 a year; 9.19 percent up to it, 10.19 above.
    YearSettlementTest() {
        run_tables.TABFISSO[30] = 4000;
        run_tables.TABFISSO[31] = 919;
        run_tables.TABFISSO[32] = 1019;
        scrivi(P182, 1);
        scrivi(Q002, 50000);
        scrivi(P252, 4000);
        scrivi(Q007, 4500);
        scrivi(Q009, 100);
        scrivi(Q224, 367.60);
        contributions.amounts[1] = 367.60;
    }
};

TEST_F(YearSettlementTest, AWageAboveTheCeilingIsSettledInTwoParts) {
    CONGSOLIDENPALS();
    EXPECT_EQ(num(P282), 4778.80);  // 52000 x 9.19 %
    EXPECT_EQ(num(P283), 203.80);   // 2000 x 10.19 %
    EXPECT_EQ(num(P284), -88.80);   // 4778.80 - 4500 - 367.60
    EXPECT_EQ(num(P285), 103.80);   // 203.80 - 100
    EXPECT_EQ(num(Q009), 203.80);
    EXPECT_EQ(num(Q224), 382.60);  // 367.60 - 88.80 + 103.80
}

TEST_F(YearSettlementTest, AWageUpToTheCeilingHasOnePart) {
    scrivi(Q002, 48000);  // 52000 with this month
    scrivi(Q009, 0);
    CONGSOLIDENPALS();
    EXPECT_EQ(num(P282), 4778.80);
    EXPECT_EQ(num(P283), 0);
    EXPECT_EQ(num(P285), 0);
    EXPECT_EQ(num(Q224), 278.80);  // 367.60 - 88.80
}

TEST_F(YearSettlementTest, AnEvenYearOwesNothingAndNotMinusNothing) {
    scrivi(Q002, 36000);
    scrivi(Q007, 3308.40);  // 40000 x 9.19 % = 3676 - 367.60
    scrivi(Q009, 0);
    CONGSOLIDENPALS();
    EXPECT_EQ(testo(P284), "0000.00");
    EXPECT_EQ(num(Q224), 367.60);
}

TEST_F(YearSettlementTest, OnlyThePensionItemsAreHeldAgainstTheYear) {
    scrivi(Q002, 36000);
    scrivi(Q007, 3308.40);  // 40000 x 9.19 % = 3676 - 367.60
    scrivi(Q009, 0);
    contributions.amounts[3] = 12;
    contributions.amounts[6] = 40;
    CONGSOLIDENPALS();
    EXPECT_EQ(num(P284), 0);
    EXPECT_EQ(num(Q224), 367.60);
    EXPECT_EQ(num(Q007), 3308.40);
}

TEST_F(YearSettlementTest, WhatIsStillOwedCountsAsPaid) {
    scrivi(Q002, 36000);
    scrivi(Q007, 3300);  // 3676 - 367.60 - 3300 = 8.40
    scrivi(Q009, 0);
    CONGSOLIDENPALS();
    EXPECT_EQ(num(P284), 8.40);
    EXPECT_EQ(num(Q007), 3308.40);
}

TEST_F(YearSettlementTest, TenThousandsOfThePensionContributionsCountAsPaid) {
    // 109650 x 9.19 % = 10076.835 to date, of which Q007 shows 76.84. Year 119650: 52000 x 9.19 % =
    // 4778.80, 67650 x 10.19 % = 6893.535.
    scrivi(P252, 10000);
    scrivi(Q001, 109650);
    scrivi(Q002, 109650);
    scrivi(Q005, 10076.84);
    scrivi(Q007, 76.84);
    scrivi(Q009, 0);
    scrivi(P181, 1);
    slip.PCTCONTR[1] = 9.19;
    scrivi(Q224, 919);
    contributions.amounts[1] = 919;
    CONGSOLIDENPALS();
    EXPECT_EQ(num(P282), 4778.80);
    EXPECT_EQ(num(P285), 6893.54);
    EXPECT_EQ(num(Q224), 1595.50);  // 919 + (4778.80 - 10076.84 - 919) + 6893.54
    EXPECT_EQ(num(Q007), 3859.80);  // 4778.80 - 919 of this slip
    // Settled again by another slip of the month: nothing more.
    scrivi(Q001, 119650);
    scrivi(Q002, 119650);
    scrivi(Q005, 11672.34);  // 10076.84 + 1595.50
    scrivi(Q007, 4778.80);
    svuota({P252, Q224});
    contributions.amounts[1] = 0;
    CONGSOLIDENPALS();
    EXPECT_EQ(num(Q224), 0);
}

TEST_F(YearSettlementTest, OtherContributionsOrAWageWithoutThemMakeNoTenThousands) {
    scrivi(P181, 1);
    slip.PCTCONTR[1] = 9.19;
    scrivi(Q001, 50000);
    scrivi(Q005, 10500);  // 4500 and 6000 of a voluntary fund
    EXPECT_EQ(pension_paid(), 4500);
    scrivi(Q001, 119650);  // half of the year was exempt
    scrivi(Q005, 5500);
    EXPECT_EQ(pension_paid(), 4500);
    scrivi(Q005, 10500);
    scrivi(Q007, 900);
    EXPECT_EQ(pension_paid(), 10900);
}

TEST_F(YearSettlementTest, TheSecondItemIsMeasuredOnItsOwnWage) {
    // 176000 x 9.19 % = 16174.40, of which Q007 shows 6174.40; the ceiling has left Q001 at 119650,
    // which would owe 10995.84: nearest without ten thousands.
    scrivi(P181, 0);
    scrivi(P182, 1);
    slip.PCTCONTR[2] = 9.19;
    scrivi(Q001, 119650);
    scrivi(Q002, 176000);
    scrivi(Q005, 16174.40);
    scrivi(Q009, 0);
    scrivi(Q007, 6174.40);
    EXPECT_EQ(pension_paid(), 16174.40);
}

TEST_F(YearSettlementTest, ItNeedsItem2ItsRateAndAnOrdinaryKindOfSlip) {
    const auto settles = [] {
        scrivi(Q224, 367.60);
        CONGSOLIDENPALS();
        return num(Q224) != 367.60;
    };
    scrivi(P118, 2);
    EXPECT_FALSE(settles());
    scrivi(P118, 0);
    scrivi(P182, 0);
    EXPECT_FALSE(settles());
    scrivi(P182, 1);
    run_tables.TABFISSO[31] = 0;
    EXPECT_FALSE(settles());
    run_tables.TABFISSO[31] = 919;
    EXPECT_TRUE(settles());
}

TEST_F(YearSettlementTest, ThePassSettlesOnTheSlipThatAdjusts) {
    scrivi(P031, 2);
    slip.TABIRP.set(1, 999999.99);
    slip.TABIRP.set(2, 23);
    svuota({Q224});
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P282), 0);
    tax_state.ConguaglioAnnuale = true;
    svuota({Q224});
    CSOCTASSEPENPALS();
    EXPECT_EQ(num(P282), 4778.80);
}

}  // namespace
