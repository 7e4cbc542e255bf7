// Blocks of the closing, each on a record made by hand. Amounts in euro.

#include "closing/closing.h"

#include <gtest/gtest.h>

#include "closing/state.h"
#include "context/period.h"
#include "contributions/contributions.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/income_tax.h"
#include "tests/support/certificates.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace {

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALM::ABORTODIP;
using ModSWCALM::slip;

class ClosingTest : public testing::Test {
  protected:
    void SetUp() override {
        test_support::ScriptedWindow::install();
        test_support::fill_areas();
        slip = {};
        closing = {};
        contributions = {};
        ModSWCALB::tax_state = {};
        ModSWCALM::run_tables = {};
        ABORTODIP = 0;
        MXLIBRERIA::period.set("310520244");
        scrivi(P031, 1);
    }

    /// Brackets of 2024: 23 % up to 28000, 35 % up to 50000, 43 % above (D.Lgs. 216/2023, art. 1).
    static void brackets_2024() {
        const double cells[] = {28000, 23, 50000, 35, 999999.99, 43};
        for (int i = 0; i < 6; ++i) {
            slip.TABIRP.set(i + 1, cells[i]);
        }
    }
    /// 8000 euro and their tax at 23 % before, 2000 in the month.
    static void fifth_month_by_the_cumulative_method() {
        brackets_2024();
        scrivi(T184, 1);
        scrivi(P031, 2);
        scrivi(P256, 2000);
        scrivi(Q013, 8000);
        scrivi(Q014, 1840);
    }
    static void pays(double gross, double deductions) {
        scrivi(P241, gross);
        scrivi(P259, deductions);
        net_and_rounding();
    }

  private:
    const test_support::Certificates certificates_;
};

// ---- Net and rounding ----

TEST_F(ClosingTest, NetIsRoundedUpToTheEuroAndTheRestCarried) {
    pays(1734.01, 500);  // 1234.01 -> 1235, 0.99 paid ahead
    EXPECT_EQ(num(Q173), 1235);
    EXPECT_EQ(num(Q163), 0.99);
}

TEST_F(ClosingTest, WholeNetStaysWhole) {
    pays(1734, 500);
    EXPECT_EQ(num(Q173), 1234);
    EXPECT_EQ(num(Q163), 0);
}

TEST_F(ClosingTest, NetOfZeroPaysNothingUnderBothRules) {
    pays(500, 500);
    EXPECT_EQ(num(Q173), 0);
    EXPECT_EQ(num(Q163), 0);
    scrivi(TA43, 1);
    pays(500, 500);
    EXPECT_EQ(num(Q173), 0);
    EXPECT_EQ(num(Q163), 0);
}

TEST_F(ClosingTest, NegativeNetIsCarriedToTheNextSlip) {
    pays(100, 350.40);
    EXPECT_EQ(num(Q173), 0);
    EXPECT_EQ(num(Q163), 250.40);
}

TEST_F(ClosingTest, RoundingByTensKeepsFiveAndMovesTheOtherDigits) {
    scrivi(TA43, 1);
    struct Case {
        double net;
        double paid;
    };
    for (const Case& c : {Case{1234.60, 1230}, Case{1235.40, 1235}, Case{1236.10, 1240},
                          Case{1230.00, 1230}, Case{1239.99, 1240}}) {
        pays(c.net, 0);
        EXPECT_EQ(num(Q173), c.paid) << c.net;
        EXPECT_NEAR(num(Q163), c.paid - c.net, 0.0001) << c.net;
    }
}

TEST_F(ClosingTest, RoundingByTensLooksAtTheNetInCents) {
    scrivi(TA43, 1);
    pays(3245.39, 1900.39);  // 1345, as doubles 1344.9999999999998
    EXPECT_EQ(num(Q173), 1345);
    EXPECT_EQ(num(Q163), 0);
}

TEST_F(ClosingTest, RoundingByTensOverflowsAbove32767) {
    scrivi(TA43, 1);
    pays(32767.50, 0);
    EXPECT_EQ(num(Q173), 32770);
    scrivi(P241, 32768);
    try {
        net_and_rounding();
        FAIL() << "no overflow";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), 6);
    }
}

TEST_F(ClosingTest, TheCumulativeMethodPaysTheCents) {
    scrivi(T184, 1);
    pays(1000.55, 0);
    EXPECT_EQ(num(Q173), 1000.55);
    EXPECT_EQ(num(Q163), 0);
}

TEST_F(ClosingTest, DismissalInTheMonthPaysTheCents) {
    scrivi(P054, 1);
    pays(1000.55, 0);
    EXPECT_EQ(num(Q173), 1000.55);
    EXPECT_EQ(num(Q163), 0);
}

TEST_F(ClosingTest, CompanyWithFixedNetRoundsADismissalToo) {
    scrivi(P054, 1);
    scrivi(T013, "90000000011");
    pays(1000.55, 0);
    EXPECT_EQ(num(Q173), 1001);
}

TEST_F(ClosingTest, FixedNetMovesTheGrossUpAndDown) {
    scrivi(T013, "90000000011");
    scrivi(P241, 1000);
    scrivi(Q089, 1200);
    net_pay_block();
    EXPECT_EQ(num(Q090), 200);  // 1200 - 1000
    EXPECT_EQ(num(Q173), 1200);

    scrivi(Q089, 0);
    scrivi(Q088, 900);
    scrivi(P241, 1000);
    net_pay_block();
    EXPECT_EQ(num(Q090), 100);  // 1000 - 900
    EXPECT_EQ(num(Q173), 900);
}

TEST_F(ClosingTest, FixedNetIsHeldAgainstTheNetInCentsUnderTheCumulativeMethod) {
    scrivi(T013, "90000000011");
    scrivi(Q089, 1200);
    scrivi(P241, 1000.40);
    net_pay_block();
    EXPECT_EQ(num(Q090), 199);  // 1200 - 1001

    scrivi(TA43, 1);  // rounding by tens changes nothing of it
    scrivi(P241, 1000.40);
    net_pay_block();
    EXPECT_EQ(num(Q090), 199);

    scrivi(T184, 1);
    scrivi(P241, 1000.40);
    net_pay_block();
    EXPECT_EQ(num(Q090), 199.60);  // 1200 - 1000.40
}

TEST_F(ClosingTest, WithoutIncomeTaxTwoMarksAreEmptied) {
    scrivi(Q274, 1);
    for (const double tax : {1, 0}) {
        scrivi(P031, tax);
        scrivi(P186, 1);
        scrivi(Q244, 5);
        net_pay_block();
        EXPECT_EQ(num(P186), tax);
        EXPECT_EQ(num(Q244), 5 * tax);
    }
}

TEST_F(ClosingTest, FlatTaxAtSourceIsWithheldAtTheEmployeesRate) {
    brackets_2024();
    scrivi(P056, 3);
    scrivi(P077, 20);
    scrivi(P256, 1500);
    scrivi(P241, 1500);
    net_pay_block();
    EXPECT_EQ(num(P535), 300);  // 1500 x 20 %
    EXPECT_EQ(num(P259), 300);
    EXPECT_EQ(num(Q173), 1200);
}

TEST_F(ClosingTest, FlatTaxAtSourceComesBeforeTheFixedNet) {
    brackets_2024();
    scrivi(T013, "90000000011");
    scrivi(P056, 3);
    scrivi(P077, 20);
    scrivi(P256, 1000);
    scrivi(P241, 1000);
    scrivi(Q089, 1200);
    net_pay_block();
    EXPECT_EQ(num(P535), 200);
    EXPECT_EQ(num(Q090), 400);  // 1200 - (1000 - 200)
    EXPECT_EQ(num(Q173), 1200);
}

TEST_F(ClosingTest, FlatTaxAtSourceTakesTheLinesWhereThereIsNoIncomeTax) {
    scrivi(P031, 0);
    scrivi(P056, 3);
    scrivi(P077, 20);
    slip.IMPFISCALE = 1000;
    scrivi(P241, 1000);
    net_pay_block();
    EXPECT_EQ(num(P535), 200);
    EXPECT_EQ(num(Q173), 800);
}

// ---- Year-to-date and repeat guard ----

TEST_F(ClosingTest, YearToDateAddsTheMonth) {
    scrivi(P256, 1733.31);
    scrivi(Q137, 180.46);
    scrivi(P240, 1909);
    scrivi(P250, 1908.75);
    scrivi(P252, 1908.75);
    scrivi(Q224, 175.44);
    scrivi(P201, 26);
    year_to_date_block();
    EXPECT_EQ(num(Q013), 1733.31);
    EXPECT_EQ(num(Q014), 180.46);
    EXPECT_EQ(num(Q001), 1909);
    EXPECT_EQ(num(Q003), 1908.75);
    EXPECT_EQ(num(Q005), 175.44);
    EXPECT_EQ(num(Q063), 26);
    EXPECT_EQ(num(Q171), 5);
    EXPECT_EQ(num(Q172), 0);
    EXPECT_EQ(ABORTODIP, 0);
}

TEST_F(ClosingTest, WageInWholeEuroToDateWhenP528IsSet) {
    scrivi(P528, 1);
    scrivi(P240, 1900);
    scrivi(P250, 1908.50);  // Int(1908.50 + 0.5) = 1909
    year_to_date_block();
    EXPECT_EQ(num(Q001), 1909);
}

TEST_F(ClosingTest, TaxableWithoutIncomeTaxLosesTheContributions) {
    scrivi(P031, 0);
    scrivi(Q013, 1000);
    scrivi(P256, 0);
    scrivi(Q224, 100);
    year_to_date_block();
    EXPECT_EQ(num(Q013), 900);
}

TEST_F(ClosingTest, WageBelowTheMinimumIsRaisedUnlessTheCeilingTookIt) {
    slip.minimum_base = 1478;
    scrivi(P240, 1400);
    scrivi(P252, 1400);
    year_to_date_block();
    EXPECT_EQ(num(P240), 1478);
    EXPECT_EQ(num(P252), 1478);
    EXPECT_EQ(num(P249), 78);

    scrivi(P240, 1500);  // above: the difference of the slip before does not stay
    year_to_date_block();
    EXPECT_EQ(num(P249), 0);

    scrivi(P240, 0);
    scrivi(P881, 1400);
    year_to_date_block();
    EXPECT_EQ(num(P240), 0);
    EXPECT_EQ(num(P249), 0);  // nothing is left of the slip before
}

TEST_F(ClosingTest, TheMinimumIsInWholeEuroWhereTheWageIs) {
    slip.minimum_base = 1490.32;
    scrivi(P240, 1490);  // 1490.32 rounded, as the contributions bear it
    scrivi(P252, 1490);
    year_to_date_block();
    EXPECT_EQ(num(P240), 1490);
    EXPECT_EQ(num(P249), 0);
    EXPECT_EQ(num(P252), 1490);
    EXPECT_EQ(num(Q001), 1490);

    scrivi(P169, 1);  // the wage keeps its cents, and so does the minimum
    year_to_date_block();
    EXPECT_EQ(num(P240), 1490.32);
    EXPECT_EQ(num(P249), 0.32);
}

TEST_F(ClosingTest, CollaboratorsSumOfTheMonthStandsInItsMonth) {
    scrivi(P447, 1);
    scrivi(P500, 100);
    scrivi(P765, 50);
    scrivi(P782, 25);
    scrivi(Q523, 300);  // January
    year_to_date_block();
    EXPECT_EQ(num(Q527), 175);  // May: 100 + 50 + 25
    EXPECT_EQ(num(Q680), 475);
    EXPECT_EQ(num(Q782), 50);
    EXPECT_EQ(num(Q847), 25);
}

TEST_F(ClosingTest, WagesAndContributionsOfCollaboratorsToDate) {
    scrivi(P447, 1);
    scrivi(P499, 1000);
    scrivi(P451, 120);
    scrivi(P452, 240);
    scrivi(PC26, 50);
    scrivi(PC27, 6);
    year_to_date_block();
    EXPECT_EQ(num(Q520), 1000);
    EXPECT_EQ(num(Q521), 120);
    EXPECT_EQ(num(Q522), 240);
    scrivi(PC23, 1);  // sports
    year_to_date_block();
    EXPECT_EQ(num(Q520), 2050);  // + 1000 + 50
    EXPECT_EQ(num(Q521), 246);   // + 120 + 6
    EXPECT_EQ(num(Q522), 480);
}

TEST_F(ClosingTest, CollaboratorAboveTheCeilingGoesToTheControlList) {
    scrivi(P447, 1);
    scrivi(P001, "0010000007");
    scrivi(P002, "BIANCHI");
    scrivi(P003, "ANNA");
    scrivi(P500, 600);
    scrivi(F421, 500);
    year_to_date_block();
    EXPECT_EQ(ModSWCALM::run_tables.list_9999_count, 1);
    EXPECT_EQ(ModSWCALM::run_tables.list_9999[1],
              "0010000007-BIANCHI ANNA HA SUPERATO IL MASSIMALE DI E.500.00");
}

TEST_F(ClosingTest, AMonthAlreadyCalculatedIsDropped) {
    scrivi(Q171, 5);
    year_to_date_block();
    EXPECT_EQ(ABORTODIP, -1);
}

TEST_F(ClosingTest, P116LetsTheMonthBeCalculatedAgain) {
    scrivi(Q171, 5);
    scrivi(P116, 1);
    year_to_date_block();
    EXPECT_EQ(ABORTODIP, 0);
}

TEST_F(ClosingTest, JanuaryFollowsDecember) {
    MXLIBRERIA::period.set("310120244");
    scrivi(Q171, 12);
    year_to_date_block();
    EXPECT_EQ(ABORTODIP, 0);
    EXPECT_EQ(num(Q171), 1);
}

TEST_F(ClosingTest, SecondAdditionalSlipIsDroppedAndLeavesTheMonth) {
    MXLIBRERIA::period.set("311220240");
    scrivi(Q171, 11);
    year_to_date_block();
    EXPECT_EQ(ABORTODIP, 0);
    EXPECT_EQ(num(Q172), 1);
    EXPECT_EQ(num(Q171), 11);
    year_to_date_block();
    EXPECT_EQ(ABORTODIP, -1);
}

// ---- A month of less than nothing ----

TEST_F(ClosingTest, ANegativeMonthTakesOffTheYear) {
    const std::pair<Descriptor, double> year[] = {{Q013, 10000}, {Q001, 12000}, {Q003, 12000.50},
                                                  {Q005, 1100},  {Q068, 900},   {Q078, 300},
                                                  {Q081, 40},    {Q014, 2000}};
    for (const auto& [field, amount] : year) {
        scrivi(field, amount);
    }
    scrivi(P256, -150.40);
    scrivi(P240, -165);
    scrivi(P250, -165.20);
    scrivi(Q224, -15.16);
    scrivi(P242, -80);
    scrivi(P243, -20);
    scrivi(P239, -4);
    scrivi(Q137, -34.59);
    slip.minimum_base = -165;  // no minimum above the month's wage
    year_to_date_block();
    EXPECT_EQ(num(Q013), 9849.60);   // 10000 - 150.40
    EXPECT_EQ(num(Q001), 11835);     // 12000 - 165
    EXPECT_EQ(num(Q003), 11835.30);  // 12000.50 - 165.20
    EXPECT_EQ(num(Q005), 1084.84);   // 1100 - 15.16
    EXPECT_EQ(num(Q068), 820);
    EXPECT_EQ(num(Q078), 280);
    EXPECT_EQ(num(Q081), 36);
    EXPECT_EQ(num(Q014), 1965.41);  // 2000 - 34.59
}

TEST_F(ClosingTest, ExemptAmountsOfTheYearTakeNoNegativeMonth) {
    scrivi(Q066, 500);
    slip.ESENTEB = -80;
    year_to_date_block();
    EXPECT_EQ(num(Q066), 500);
    scrivi(Q171, 0);
    slip.ESENTEB = 80;
    year_to_date_block();
    EXPECT_EQ(num(Q066), 580);
}

TEST_F(ClosingTest, OnlyAPositiveFurtherSumJoinsTheContributionsOfTheYear) {
    scrivi(P849, 1);
    scrivi(Q005, 100);
    scrivi(P852, -12.50);
    year_to_date_block();
    EXPECT_EQ(num(Q005), 100);
    scrivi(P852, 12.50);
    year_to_date_block();
    EXPECT_EQ(num(Q005), 112.50);
    scrivi(P849, 0);
    year_to_date_block();
    EXPECT_EQ(num(Q005), 112.50);
}

TEST_F(ClosingTest, ANegativeMonthOfACollaboratorStandsInItsMonthAndInTheYear) {
    scrivi(P447, 1);
    scrivi(P090, 12);
    scrivi(Q526, 1000);  // April
    scrivi(P500, -250);
    year_to_date_block();
    EXPECT_EQ(num(Q527), -250);
    EXPECT_EQ(num(Q680), 750);  // 1000 - 250
}

// ---- Year-end ----

TEST_F(ClosingTest, TheAdjustmentAddsTheShareQ260OfThePeriod) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(Q260, 250);
    scrivi(Q261, 10);
    year_end_block();
    EXPECT_EQ(num(Q261), 12.50);  // 10 + 250 x 1 / 100
}

TEST_F(ClosingTest, TheShareQ260CountsTheMonthsOfACollaboratorsInstalment) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    closing.period_factor = 3;  // four instalments a year
    scrivi(Q260, 250);
    year_end_block();
    EXPECT_EQ(num(Q261), 7.50);  // 250 x 3 / 100
}

TEST_F(ClosingTest, AdjustmentChargesTheMissingTax) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(P031, 2);  // first rate on the whole base, no deductions
    scrivi(Q013, 20000);
    scrivi(Q014, 4000);
    year_end_block();
    EXPECT_EQ(num(Q021), 600);  // 20000 x 23 % = 4600, less 4000
    EXPECT_EQ(num(P259), 600);
    EXPECT_EQ(num(Q014), 4600);
    EXPECT_EQ(num(Q022), 0);
}

TEST_F(ClosingTest, TheYearOfWhoLeftAtTheEndOf2004IsTaxedByItsScaleAndNothingElseIs) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    slip.TABIRP.set(21, 26000);
    slip.TABIRP.set(22, 20);
    slip.TABIRP.set(23, 999999.99);
    slip.TABIRP.set(24, 40);
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(P583, 1);  // no employment deduction
    scrivi(P017, "31122004");
    scrivi(Q013, 20000);
    year_end_block();
    EXPECT_EQ(num(Q021), 4000);  // 20000 x 20 %
    EXPECT_EQ(ModSWCALB::tax_state.TabellaAlternativa, 0);
}

TEST_F(ClosingTest, AdjustmentRefundsTheExcess) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(P031, 2);
    scrivi(Q013, 20000);
    scrivi(Q014, 4700);
    scrivi(Q515, 100);
    year_end_block();
    EXPECT_EQ(num(Q022), 200);  // 4700 + 100 - 4600
    EXPECT_EQ(num(P241), 200);
    EXPECT_EQ(num(Q014), 4500);  // with the 100 withheld elsewhere: 4600
    EXPECT_EQ(num(Q021), 0);
}

TEST_F(ClosingTest, SuspendedTaxOfTheYearGoesToTheSuspension) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(P031, 2);
    scrivi(P792, 1);
    scrivi(Q013, 20000);
    scrivi(Q801, 4000);
    year_end_block();
    EXPECT_EQ(num(P793), 600);
    EXPECT_EQ(num(Q801), 4600);
    EXPECT_EQ(num(Q021), 0);
    EXPECT_EQ(num(P259), 0);
}

TEST_F(ClosingTest, AnExcessOfPaidAndSuspendedTaxIsPaidAndComesOffThePaidOne) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(P031, 2);
    scrivi(P792, 1);
    scrivi(Q013, 20000);
    scrivi(Q014, 300);
    scrivi(Q801, 5000);
    year_end_block();
    EXPECT_EQ(num(Q022), 700);  // 300 + 5000 - 4600
    EXPECT_EQ(num(P241), 700);
    EXPECT_EQ(num(Q014), -400);
    EXPECT_EQ(num(Q801), 5000);
    EXPECT_EQ(num(P793), 0);
}

TEST_F(ClosingTest, FlatPercentageOfTheEmployeeRulesTheYear) {
    MXLIBRERIA::period.set("311220244");
    brackets_2024();
    ModSWCALB::tax_state.ConguaglioAnnuale = true;
    scrivi(P583, 1);  // no employment deduction
    scrivi(P287, 30);
    scrivi(P525, 1);
    scrivi(Q013, 10000);
    year_end_block();
    EXPECT_EQ(num(Q014), 3000);  // 10000 x 30 %; no deductions: F400 to F407 are 0, P583 below
}

TEST_F(ClosingTest, CumulativeMethodTaxesTheYearToDate) {
    fifth_month_by_the_cumulative_method();
    cumulative_method();
    EXPECT_EQ(num(Q021), 460);  // 10000 x 23 % - 1840
    EXPECT_EQ(num(Q014), 2300);
    EXPECT_EQ(num(P259), 460);
}

TEST_F(ClosingTest, CumulativeMethodTakesCreditAndDeductionsToDateOff) {
    fifth_month_by_the_cumulative_method();
    scrivi(Q174, 60);
    scrivi(Q666, 300);
    ModSWCALB::tax_state.tax_credit = 20;  // the month's, inside the 60
    cumulative_method();
    EXPECT_EQ(num(Q021), 100);  // 2300 - 60 - 300 - 1840
    EXPECT_EQ(num(Q014), 1940);
}

TEST_F(ClosingTest, CumulativeMethodCountsTaxWithheldElsewhere) {
    fifth_month_by_the_cumulative_method();
    scrivi(Q515, 100);
    cumulative_method();
    EXPECT_EQ(num(Q021), 360);  // 10000 x 23 % - 1840 - 100
}

TEST_F(ClosingTest, CumulativeMethodHoldsTheRefundBack) {
    brackets_2024();
    scrivi(T184, 1);
    scrivi(P031, 2);
    scrivi(P256, 2000);
    scrivi(Q013, 8000);
    scrivi(Q014, 2400);
    scrivi(Q023, 1);
    cumulative_method();
    EXPECT_EQ(num(Q023), 100);  // 2400 - 2300
    EXPECT_EQ(num(Q022), 0);
    EXPECT_EQ(num(P241), 0);
}

}  // namespace
