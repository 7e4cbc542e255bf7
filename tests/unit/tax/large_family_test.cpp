#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

class LargeFamily : public TaxTest {
  protected:
    LargeFamily() {
        scrivi(P035, 4);
        scrivi(P747, 3);
        scrivi(F410, 1200);
        scrivi(P256, 2500);
    }
};

TEST_F(LargeFamily, AMonthTakesATwelfth) {
    DetrFamiliari();
    EXPECT_EQ(num(Q740), 1);
    EXPECT_EQ(num(Q741), 100);
    EXPECT_EQ(num(Q742), 100);
    EXPECT_EQ(num(Q647), 100);
    EXPECT_EQ(num(Q654), 100);
    scrivi(F410, 1000);
    DetrFamiliari();
    EXPECT_EQ(num(Q740), 2);
    EXPECT_EQ(num(Q741), 83.33);  // 1000 / 12 = 83.3333
    EXPECT_EQ(num(Q742), 183.33);
}

TEST_F(LargeFamily, OnlyHouseholdsOfTheTwoKindsWithMoreThanThree) {
    struct Case {
        double household;
        double dependants;
        double of_another;
        double sum;
    };
    for (const Case& row :
         {Case{3, 4, 0, 100}, Case{4, 4, 0, 100}, Case{2, 4, 0, 0}, Case{0, 4, 0, 0},
          Case{3, 3, 0, 0}, Case{3, 4, 1, 0}, Case{4, 6, 2, 100}}) {
        azzera({Q740, Q741, Q742});
        scrivi(P747, row.household);
        scrivi(P035, row.dependants);
        scrivi(P595, row.of_another);
        DetrFamiliari();
        EXPECT_EQ(num(Q741), row.sum) << row.household << row.dependants << row.of_another;
    }
}

TEST_F(LargeFamily, TheYearTakesAllMonthsLessWhatWasPaidOut) {
    year_of(30000);
    scrivi(Q740, 11);
    scrivi(Q742, 500);
    scrivi(Q773, 600);
    DetrFamiliari();
    EXPECT_EQ(num(Q740), 12);
    EXPECT_EQ(num(Q742), 600);  // 1200 - 600
    EXPECT_EQ(num(Q741), 600);
}

TEST_F(LargeFamily, WhatTheTaxTakesIsNotPaid) {
    scrivi(Q741, 100);
    double net_tax = 0;
    refund_unused_large_family(net_tax);
    EXPECT_EQ(net_tax, 0);
    EXPECT_EQ(num(Q772), 0);
    EXPECT_EQ(num(Q741), 100);
    EXPECT_EQ(num(P241), 0);
}

TEST_F(LargeFamily, WhatTheTaxCannotTakeIsPaidOnTheSlip) {
    scrivi(P241, 1500);
    scrivi(Q649, 30);
    scrivi(Q741, 100);
    scrivi(Q742, 300);
    scrivi(Q773, 20);
    scrivi(Q666, 500);
    // Gross tax 70, deductions 30 + 100: 60 are not used.
    double net_tax = 70 - 130;
    refund_unused_large_family(net_tax);
    EXPECT_EQ(net_tax, 0);
    EXPECT_EQ(num(Q772), 60);
    EXPECT_EQ(num(Q741), 40);
    EXPECT_EQ(num(Q742), 200);
    EXPECT_EQ(num(Q773), 80);
    EXPECT_EQ(num(Q666), 400);
    EXPECT_EQ(num(Q654), 70);  // 30 + 40
    EXPECT_EQ(num(P241), 1560);
}

TEST_F(LargeFamily, NoMoreThanTheSumItselfIsPaid) {
    scrivi(Q741, 100);
    scrivi(Q657, 250);
    // Gross tax 100, deductions 250 + 100: the employment deduction is not paid out.
    double net_tax = 100.0 - 350;
    refund_unused_large_family(net_tax);
    EXPECT_EQ(num(Q772), 100);
    EXPECT_EQ(num(Q741), 0);
    EXPECT_EQ(net_tax, -150);
}

TEST_F(LargeFamily, WithoutTheSumNothingIsPaid) {
    scrivi(Q657, 250);
    double net_tax = -150;
    refund_unused_large_family(net_tax);
    EXPECT_EQ(net_tax, -150);
    EXPECT_EQ(num(P241), 0);
}

TEST_F(LargeFamily, AYearOfMonthsPaidOutComesToTheYearsFigure) {
    // Gross tax 50 a month, sum 100: each month pays 50. Year: 600 - 1200 = -600, 600 paid in all.
    for (int month = 1; month <= 11; ++month) {
        azzera({Q741, Q772});
        DetrFamiliari();
        double net_tax = 50 - num(Q741);
        refund_unused_large_family(net_tax);
        EXPECT_EQ(net_tax, 0);
    }
    EXPECT_EQ(num(Q773), 550);
    year_of(30000);
    azzera({Q741, Q772});
    DetrFamiliari();
    EXPECT_EQ(num(Q741), 650);  // 1200 - 550
    double net_tax = 600 - num(Q741);
    refund_unused_large_family(net_tax);
    EXPECT_EQ(net_tax, 0);
    EXPECT_EQ(num(Q772), 50);
    EXPECT_EQ(num(Q773), 600);
    EXPECT_EQ(num(Q741), 600);  // what the year's tax has taken
    EXPECT_EQ(num(P241), 600);
}

}  // namespace
