// Premiums and tips under the flat tax, premiums that give a credit. Amounts in euro.

#include "tax/relief.h"

#include "records/numbers.h"
#include "slip/premium_ceiling.h"
#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;
using ModSWCALM::slip;

/// An employee at 9.19 percent, flat tax of 5 percent, ceiling of 3000; P256 holds the wage without
/// the premium.
class ReliefTest : public TaxTest {
  protected:
    ReliefTest() {
        scrivi(F413, 3000);
        scrivi(F414, 5);
        scrivi(F415, 2);
        scrivi(F453, 5);
        scrivi(F433, 530);
        scrivi(P181, 1);
        slip.PCTCONTR[1] = 9.19;
        slip.PCTCONTR[3] = 0.30;
        slip.PCTCONTR[8] = 5.84;
        scrivi(P256, 2000);
    }
    static void premium(double amount, double told_as_premium = 0) {
        slip.ceiling_totals[2] = amount;
        slip.ceiling_totals[1] = told_as_premium;
    }
    /// Premium written into Q110 by the lines of the slip.
    static void premium_of_the_lines(double amount) { scrivi(Q110, slip.former_Q110 + amount); }
};

// ---- Premiums under the flat tax ----

TEST_F(ReliefTest, APremiumIsTaxedNetOfItsContributionsWithMethod2) {
    premium(1000);
    DETASSAZIONE();
    EXPECT_EQ(num(P759), 1000);
    EXPECT_EQ(num(P760), 91.90);
    EXPECT_EQ(num(P761), 908.10);
    EXPECT_EQ(num(P762), 45.41);    // 908.10 x 5 % = 45.405
    EXPECT_EQ(num(P256), 2091.90);  // its contributions are no deduction of ordinary income
    EXPECT_EQ(num(P259), 45.41);
    EXPECT_EQ(num(Q776), 1000);
    EXPECT_EQ(num(Q777), 91.90);
    EXPECT_EQ(num(Q778), 908.10);
    EXPECT_EQ(num(Q779), 45.41);
}

TEST_F(ReliefTest, TheOtherMethodsTaxTheGrossPremium) {
    for (const double method : {0, 1}) {
        scrivi(F415, method);
        scrivi(P256, 2000);
        premium(1000);
        DETASSAZIONE();
        EXPECT_EQ(num(P760), 0) << method;
        EXPECT_EQ(num(P761), 1000) << method;
        EXPECT_EQ(num(P762), 50) << method;
        EXPECT_EQ(num(P256), 2000) << method;
    }
}

TEST_F(ReliefTest, TheContributionsAreThoseInForce) {
    struct Case {
        int first, third, eighth;
        double contributions;
    };
    // 9.19, 0.30 and 5.84 percent of 1000
    for (const Case& of : {Case{1, 1, 0, 94.90}, Case{0, 1, 0, 3}, Case{0, 0, 1, 58.40},
                           Case{1, 1, 1, 153.30}, Case{2, 2, 2, 0}}) {
        scrivi(P181, of.first);
        scrivi(P183, of.third);
        scrivi(P188, of.eighth);
        scrivi(P760, 0);
        scrivi(Q776, 0);
        premium(1000);
        DETASSAZIONE();
        EXPECT_EQ(num(P760), of.contributions);
    }
}

TEST_F(ReliefTest, UpToTheCeilingThePremiumIsWholeAndAboveItTheExcessIsOrdinaryIncome) {
    struct Case {
        double to_date, excluded, premium, relieved;
    };
    for (const Case& of :
         {Case{2000, 0, 1000, 1000}, Case{2000, 0, 1000.01, 1000}, Case{0, 0, 3000, 3000},
          Case{0, 500, 3000, 2500}, Case{1500, 500, 1000, 1000}, Case{3000, 0, 200, 0},
          Case{2999.99, 0, 200, 0.01}, Case{2000, 4000, 200, 0}, Case{3500, 0, -100, -100}}) {
        scrivi(F415, 1);
        scrivi(P256, 2000);
        scrivi(Q776, of.to_date);
        scrivi(Q808, of.excluded);
        premium(of.premium);
        DETASSAZIONE();
        EXPECT_EQ(num(P759), of.relieved);
        EXPECT_EQ(num(P256), arrotonda(2000 + of.premium - of.relieved));
        EXPECT_EQ(num(Q776), arrotonda(of.to_date + of.relieved));
    }
}

TEST_F(ReliefTest, WithMethod0TheCeilingIsRaisedByTheContributions) {
    scrivi(F415, 0);
    premium(4000);
    DETASSAZIONE();
    EXPECT_EQ(num(P759), 3303.60);  // 3000 / 90.81 x 100
    EXPECT_EQ(num(P256), 2000 + 696.40);
    EXPECT_EQ(ModSWCALM::ceiling_limit(9.19), 3303.60);
}

TEST_F(ReliefTest, PayToldAsPremiumLeavesOrdinaryIncomeUnlessTheSlipAdjusts) {
    premium(500, 500);
    DETASSAZIONE();
    EXPECT_EQ(num(P256), 1545.95);  // 2000 + 45.95 - 500
    scrivi(P256, 2000);
    tax_state.ConguaglioAnnuale = true;
    DETASSAZIONE();
    EXPECT_EQ(num(P256), 2045.95);
}

TEST_F(ReliefTest, PayToldAsPremiumMayExceedOrdinaryIncome) {
    scrivi(P256, 300);
    premium(500, 500);
    DETASSAZIONE();
    EXPECT_EQ(num(P256), -154.05);  // 300 + 45.95 - 500: the month's taxable stops at 0 later
}

TEST_F(ReliefTest, WithoutIncomeTaxNothingJoinsTheTaxable) {
    scrivi(P031, 0);
    scrivi(P256, 0);
    premium(4000, 500);
    DETASSAZIONE();
    EXPECT_EQ(num(P759), 3000);
    EXPECT_EQ(num(P760), 275.70);  // 3000 x 9.19 %
    EXPECT_EQ(num(P762), 136.22);  // 2724.30 x 5 % = 136.215: the flat tax is due
    EXPECT_EQ(num(P256), 0);       // neither the 1000 above the ceiling nor the 275.70
    EXPECT_EQ(num(Q776), 3000);
    scrivi(P025, 1);
    scrivi(Q005, 700);
    premium_of_the_lines(600);
    DETRPREMI();
    EXPECT_EQ(num(P256), 0);
    EXPECT_EQ(num(Q005), 100);
}

TEST_F(ReliefTest, OnAnAdditionalSlipTheTaxHasItsOwnField) {
    set_period("30062024", '0');
    premium(1000);
    DETASSAZIONE();
    EXPECT_EQ(num(P764), 45.41);
    EXPECT_EQ(num(P762), 0);
    EXPECT_EQ(num(P259), 45.41);
    EXPECT_EQ(num(Q779), 45.41);
}

TEST_F(ReliefTest, TheTaxOfTheOtherSlipStays) {
    scrivi(P764, 12.34);
    premium(1000);
    DETASSAZIONE();
    EXPECT_EQ(num(P764), 12.34);
    EXPECT_EQ(num(P762), 45.41);
}

// ---- Tips ----

TEST_F(ReliefTest, TipsBearTheirRate) {
    scrivi(QA27, 100);
    scrivi(QA28, 5);
    scrivi(P259, 300);
    slip.ceiling_totals[4] = 250.10;
    TASSAZIONE_MANCE();
    EXPECT_EQ(num(PB55), 250.10);
    EXPECT_EQ(num(PB56), 12.51);  // 12.505
    EXPECT_EQ(num(QA27), 350.10);
    EXPECT_EQ(num(QA28), 17.51);
    EXPECT_EQ(num(P259), 312.51);
    EXPECT_EQ(num(P256), 2000);
}

TEST_F(ReliefTest, WithoutARateTipsBearNothing) {
    scrivi(F453, 0);
    scrivi(P259, 300);
    slip.ceiling_totals[4] = 250;
    TASSAZIONE_MANCE();
    EXPECT_EQ(num(PB56), 0);
    EXPECT_EQ(num(QA28), 0);
    EXPECT_EQ(num(P259), 300);
}

// ---- Premiums that give a credit ----

TEST_F(ReliefTest, ACreditIsTheMarginalPercentOfTheLimit) {
    premium_of_the_lines(100);
    DETRPREMI();
    // (2000 - 100) x 12 = 22800: 23 % of 530
    EXPECT_EQ(num(Q174), 121.90);
    EXPECT_EQ(tax_state.tax_credit, 121.90);
    EXPECT_EQ(tax_state.PrimaPassata, 1);  // the month is still to be counted
    EXPECT_EQ(num(Q658), 0);
    EXPECT_EQ(num(Q657), 0);
}

TEST_F(ReliefTest, PremiumsUpToTheLimitTakeTheYearSoFar) {
    scrivi(P256, 3000);
    scrivi(Q013, 20000);
    premium_of_the_lines(529.99);  // (3000 - 529.99) x 12 = 29640.12: 35 %
    DETRPREMI();
    EXPECT_EQ(num(Q174), 185.50);
    scrivi(Q174, 0);
    premium_of_the_lines(530);  // 3000 + 20000 - 530 = 22470: 23 %
    DETRPREMI();
    EXPECT_EQ(num(Q174), 121.90);
}

TEST_F(ReliefTest, ThePremiumsOfEarlierSlipsGiveNothing) {
    scrivi(Q110, 600);
    slip.former_Q110 = 600;
    tax_state.tax_credit = 50;
    DETRPREMI();
    EXPECT_EQ(num(Q174), 0);
    EXPECT_EQ(tax_state.tax_credit, 0);
}

TEST_F(ReliefTest, TheFlatRegimeGivesTheFirstRateAtAnyIncome) {
    scrivi(P256, 10000);
    premium_of_the_lines(100);  // (10000 - 100) x 12 = 118800: 43 % by the scale
    scrivi(P031, 2);
    DETRPREMI();
    EXPECT_EQ(num(Q174), 121.90);  // 23 % of 530
}

TEST_F(ReliefTest, NoCreditWhereTheMonthIsNotTaxedByItself) {
    const auto credit = [this] {
        scrivi(Q174, 0);
        premium_of_the_lines(600);
        DETRPREMI();
        return num(Q174);
    };
    EXPECT_EQ(credit(), 121.90);
    tax_state.ConguaglioAnnuale = true;
    EXPECT_EQ(credit(), 0);
    tax_state.ConguaglioAnnuale = false;
    scrivi(P038, 9);
    EXPECT_EQ(credit(), 0);
    scrivi(P038, 0);
    scrivi(P031, 0);
    EXPECT_EQ(credit(), 0);
    scrivi(P031, 1);
    set_period("31052024", '0');
    EXPECT_EQ(credit(), 0);
}

TEST_F(ReliefTest, Class1PutsThePremiumIntoTheTaxable) {
    scrivi(P025, 1);
    scrivi(Q005, 700);
    premium_of_the_lines(600);
    DETRPREMI();
    EXPECT_EQ(num(P256), 2600);
    EXPECT_EQ(num(Q005), 100);
    scrivi(P040, 2);
    DETRPREMI();
    EXPECT_EQ(num(P256), 2600);
    EXPECT_EQ(num(Q005), 100);
}

}  // namespace
