#include "tax/bonus_law.h"

#include <gtest/gtest.h>

namespace {

using namespace ModSWCALB;

/// A worker's test: income, tax by 23 % up to 15000 (all that matters below the limits), F436.
BonusTest worker(double income, double year_sum) {
    return {income, income * 0.23, 0, year_sum, false};
}

double by_days(int yyyymm, const BonusTest& test) {
    return yearly_bonus(yyyymm, test).by_days;
}

// ---- D.L. 66/2014 ----

TEST(BonusLaw, TheCreditIsDueFromTheCentAtWhichTheTaxExceedsTheDeduction) {
    // 8173.91 x 23 % = 1879.9993, 8173.92 x 23 % = 1880.0016
    EXPECT_EQ(by_days(201405, worker(8173.91, 640)), 0);
    EXPECT_EQ(by_days(201405, worker(8173.92, 640)), 640);
}

TEST(BonusLaw, ThePensionersDeductionOfTheCreditIs1725) {
    // 7500 x 23 % = 1725
    BonusTest test = worker(7500, 960);
    test.pensioner = true;
    EXPECT_EQ(by_days(201506, test), 0);
    test.income = 7500.01;
    test.gross_tax = 1725.0023;
    EXPECT_EQ(by_days(201506, test), 960);
}

TEST(BonusLaw, TheCreditFallsOverTwoThousandEuro) {
    EXPECT_EQ(by_days(201405, worker(24000, 640)), 640);
    // 640 x (26000 - 24000.01) / 2000
    EXPECT_DOUBLE_EQ(by_days(201405, worker(24000.01, 640)), 639.9968);
    EXPECT_DOUBLE_EQ(by_days(201405, worker(25000, 640)), 320);
    EXPECT_EQ(by_days(201405, worker(26000, 640)), 0);
    EXPECT_EQ(by_days(201405, worker(26000.01, 640)), 0);
}

TEST(BonusLaw, From2018TheLimitsAre600Higher) {
    EXPECT_DOUBLE_EQ(by_days(201712, worker(24600, 960)), 672);  // 960 x 1400 / 2000
    EXPECT_EQ(by_days(201801, worker(24600, 960)), 960);
    EXPECT_NEAR(by_days(201801, worker(24600.01, 960)), 959.9952, 0.00001);
    EXPECT_EQ(by_days(202006, worker(26600, 960)), 0);
}

TEST(BonusLaw, DeductionsBeforeTheCreditByIncome) {
    EXPECT_EQ(deduction_before_the_bonus(15000, false), 1880);
    EXPECT_EQ(deduction_before_the_bonus(15000.01, false), 3100);  // 3819.99 is limited
    // 1910 + 4000 / 13000 x 1910 = 2497.6923
    EXPECT_NEAR(deduction_before_the_bonus(24000, false), 2497.6923, 0.0001);
    // 1910 + 3000.01 / 13000 x 1910, 1910 + 3000 / 13000 x 1910 + 65
    EXPECT_NEAR(deduction_before_the_bonus(24999.99, false), 2350.7707, 0.0001);
    EXPECT_NEAR(deduction_before_the_bonus(25000, false), 2415.7692, 0.0001);
    EXPECT_EQ(deduction_before_the_bonus(28000, false), 1975);
    // 21999.99 / 22000 x 1910 + 65, 15000 / 22000 x 1910 + 65, without 65, nothing
    EXPECT_NEAR(deduction_before_the_bonus(28000.01, false), 1974.9991, 0.0001);
    EXPECT_NEAR(deduction_before_the_bonus(35000, false), 1367.2727, 0.0001);
    EXPECT_NEAR(deduction_before_the_bonus(35000.01, false), 1302.2719, 0.0001);
    EXPECT_EQ(deduction_before_the_bonus(50000, false), 0);
    EXPECT_EQ(deduction_before_the_bonus(50000.01, false), 0);
    EXPECT_EQ(deduction_before_the_bonus(15000, true), 1725);
    EXPECT_NEAR(deduction_before_the_bonus(15000.01, true), 1560.4998, 0.0001);
    EXPECT_EQ(deduction_before_the_bonus(28000, true), 1255);
    EXPECT_NEAR(deduction_before_the_bonus(28000.01, true), 1254.9995, 0.0001);
    EXPECT_EQ(deduction_before_the_bonus(55000, true), 0);
}

// ---- D.L. 3/2020 ----

TEST(BonusLaw, TheTreatmentBeginsAbove8174InEveryYear) {
    for (const int month : {202007, 202112, 202201, 202405, 202612}) {
        EXPECT_EQ(by_days(month, worker(8174, 1200)), 0) << month;
        EXPECT_EQ(by_days(month, worker(8174.01, 1200)), 1200) << month;
        EXPECT_EQ(by_days(month, worker(15000, 1200)), 1200) << month;
    }
}

TEST(BonusLaw, Until2021TheTreatmentIsWholeUpTo28000) {
    for (const int month : {202007, 202112}) {
        EXPECT_EQ(yearly_bonus(month, worker(28000, 600)).most, 600) << month;
        EXPECT_EQ(yearly_bonus(month, worker(28000.01, 600)).most, 0) << month;
    }
}

TEST(BonusLaw, From2022MiddleIncomesGetWhatTheTaxLeavesOfTheirDeductions) {
    const auto most = [](double income, double deductions) {
        return yearly_bonus(202405, {income, 4000, deductions, 1200, false}).most;
    };
    EXPECT_EQ(most(15000, 0), 1200);
    EXPECT_EQ(most(15000.01, 4000), 0);
    EXPECT_EQ(most(15000.01, 3999), 0);
    EXPECT_EQ(most(15000.01, 4000.5), 0.5);
    EXPECT_EQ(most(28000, 5200), 1200);
    EXPECT_EQ(most(28000, 5200.01), 0);  // too much is lacking
    EXPECT_EQ(most(28000.01, 4500), 0);
}

TEST(BonusLaw, TheYearsSumBoundsWhatTheTaxLeaves) {
    EXPECT_EQ(yearly_bonus(202405, {20000, 4000, 5000, 600, false}).most, 600);
}

// ---- Further deduction ----

TEST(FurtherDeductionLaw, HalfYearOf2020) {
    EXPECT_EQ(yearly_further_deduction(202006, 30000), 0);
    EXPECT_EQ(yearly_further_deduction(202007, 28000), 0);
    // 480 + 120 x 6999.99 / 7000
    EXPECT_NEAR(yearly_further_deduction(202007, 28000.01), 599.9998, 0.0001);
    EXPECT_EQ(yearly_further_deduction(202012, 35000), 480);
    EXPECT_NEAR(yearly_further_deduction(202012, 35000.01), 479.999, 0.0001);  // 480 x 4999.99/5000
    EXPECT_EQ(yearly_further_deduction(202012, 40000), 0);
    EXPECT_EQ(yearly_further_deduction(202012, 40000.01), 0);
}

TEST(FurtherDeductionLaw, TheYear2021IsTwiceTheHalfYear) {
    EXPECT_EQ(yearly_further_deduction(202101, 28000), 0);
    EXPECT_NEAR(yearly_further_deduction(202101, 28000.01), 1199.9997, 0.0001);
    EXPECT_EQ(yearly_further_deduction(202112, 35000), 960);
    EXPECT_EQ(yearly_further_deduction(202112, 37500), 480);
    EXPECT_EQ(yearly_further_deduction(202201, 30000), 0);
    EXPECT_EQ(yearly_further_deduction(202412, 30000), 0);
}

TEST(FurtherDeductionLaw, From2025AThousandEuroUpTo32000) {
    EXPECT_EQ(yearly_further_deduction(202501, 20000), 0);
    EXPECT_EQ(yearly_further_deduction(202501, 20000.01), 1000);
    EXPECT_EQ(yearly_further_deduction(202501, 32000), 1000);
    EXPECT_NEAR(yearly_further_deduction(202501, 32000.01), 999.99875, 0.00001);
    EXPECT_EQ(yearly_further_deduction(202612, 36000), 500);
    EXPECT_EQ(yearly_further_deduction(202612, 40000), 0);
    EXPECT_EQ(yearly_further_deduction(202612, 40000.01), 0);
}

// ---- Integrative sum ----

TEST(IntegrativeSumLaw, ThePercentageFallsAtEachLimit) {
    EXPECT_EQ(integrative_percent(8500), 7.1);
    EXPECT_EQ(integrative_percent(8500.01), 5.3);
    EXPECT_EQ(integrative_percent(15000), 5.3);
    EXPECT_EQ(integrative_percent(15000.01), 4.8);
    EXPECT_EQ(integrative_percent(20000), 4.8);
    EXPECT_EQ(integrative_percent(20000.01), 0);
}

}  // namespace
