#include "tax/bonus.h"

#include "records/dictionary/DITX.h"
#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

/// A worker of May 2024 with 12 payments, who is paid the bonus by the month.
class Bonus : public TaxTest {
  protected:
    Bonus() {
        scrivi(P090, 12);
        scrivi(P906, 1);
        scrivi(F436, 1200);
    }
    /// December, with a taxable amount of the year, days counted and bonus paid to date.
    static void december(double year_taxable, double days, double paid) {
        year_of(year_taxable);
        scrivi(Q013, year_taxable);
        scrivi(Q659, days);
        scrivi(Q279, paid);
    }
};

TEST_F(Bonus, TheMonthIsADailyShareOfTheYearAndIsPaid) {
    month_of(1000);
    bonus_steps();
    // 1200 / 365 x 31 = 101.9178
    EXPECT_EQ(num(P022), 101.92);
    EXPECT_EQ(num(Q279), 101.92);
    EXPECT_EQ(num(P241), 101.92);
}

TEST_F(Bonus, ACollaboratorsDaysAreHisOwn) {
    month_of(1000);
    scrivi(P447, 1);
    scrivi(P449, 10);
    bonus_steps();
    EXPECT_EQ(num(P022), 32.88);  // 1200 / 365 x 10 = 32.8767
}

TEST_F(Bonus, ExtraPaymentsAreInTheIncome) {
    month_of(1100);
    scrivi(P090, 14);  // 15400, where the tax takes all deductions
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    scrivi(P090, 0);  // none set: 12, 13200
    bonus_steps();
    EXPECT_EQ(num(P022), 101.92);
}

TEST_F(Bonus, OtherIncomeJoinsAndWhatIsTaxedApartLeavesIt) {
    month_of(1250);
    scrivi(Q669, 0.01);
    EXPECT_EQ(bonus_income(num(P256)), 15000.01);
    scrivi(Q778, 100);
    scrivi(Q953, 10);
    EXPECT_EQ(bonus_income(num(P256)), 15110.01);
    scrivi(P256, 3000);
    scrivi(P244, 1500);
    scrivi(P245, 250);
    scrivi(P922, 50);
    svuota({Q669, Q778, Q953});
    bonus_steps();  // 1200 x 12 = 14400
    EXPECT_EQ(num(P022), 101.92);
}

TEST_F(Bonus, TheYearsIncomeTakesInFiveSumsAndLeavesTheSeveranceInTheWage) {
    december(10000, 365, 0);
    scrivi(Q514, 1);
    scrivi(Q669, 2);
    scrivi(Q898, 4);
    scrivi(Q778, 8);
    scrivi(Q953, 16);
    scrivi(Q956, 32);
    EXPECT_EQ(bonus_income(5), 9999);
}

TEST_F(Bonus, WithoutP906TheMonthPaysNothingAndTheYearEndTheWhole) {
    month_of(1000);
    scrivi(P906, 0);
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    EXPECT_EQ(num(Q279), 0);
    december(12000, 365, 0);
    bonus_steps();
    EXPECT_EQ(num(Q280), 1200);
}

TEST_F(Bonus, P084AndAdditionalSlipsHaveNone) {
    month_of(1000);
    scrivi(P084, 1);
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    scrivi(P084, 0);
    set_period("31052024", '0');
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
}

TEST_F(Bonus, ACompanyWithoutBonusStartsFromClearedFields) {
    month_of(1000);
    scrivi(P084, 1);
    scrivi(P905, 7);
    scrivi(Q938, 7);
    scrivi(Q939, 7);
    bonus_steps();
    EXPECT_EQ(num(P905) + num(Q938) + num(Q939), 0);
    scrivi(T662, 1);
    scrivi(P905, 7);
    bonus_steps();
    EXPECT_EQ(num(P905), 7);
}

TEST_F(Bonus, NothingBeforeMay2014UnlessTheEmploymentEndsAfterIt) {
    set_period("30042014");
    scrivi(F436, 640);
    month_of(1000);
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    scrivi(P017, "31052014");
    bonus_steps();
    EXPECT_EQ(num(P022), 54.36);  // 640 / 365 x 31 = 54.3562
    svuota({P017});
    set_period("31052014");
    bonus_steps();
    EXPECT_EQ(num(P022), 54.36);
}

TEST_F(Bonus, InJuly2020AnotherSumBegins) {
    set_period("31072020");
    scrivi(F436, 600);
    scrivi(Q279, 476.05);
    month_of(1000);
    bonus_steps();
    EXPECT_EQ(num(P022), 50.96);  // 600 / 365 x 31 = 50.9589
    EXPECT_EQ(num(Q279), 50.96);
    set_period("31082020");
    scrivi(Q171, 7);
    bonus_steps();
    EXPECT_EQ(num(Q279), 101.92);
    scrivi(Q171, 6);  // July had no slip
    bonus_steps();
    EXPECT_EQ(num(Q279), 50.96);
}

// ---- Family: what the tax leaves of the deductions ----

TEST_F(Bonus, TheMonthMeasuresTheDeductionsOfAWholeYear) {
    month_of(1300);
    deduction_state.family_of_a_year = 1500;
    bonus_steps();
    // R 15600: tax 3588; 1910 + 1190 x 12400 / 13000 = 3045.0769; 3045.0769 + 1500 - 3588 =
    // 957.0769, / 365 x 31 = 81.2860
    EXPECT_EQ(num(P022), 81.29);
    scrivi(P583, 1);  // no deduction by income: 1500 is below the tax
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    scrivi(Q648, 200);
    scrivi(Q651, 50);
    bonus_steps();  // 250 x 12 + 1500 - 3588 = 912, / 365 x 31 = 77.4575
    EXPECT_EQ(num(P022), 77.46);
}

TEST_F(Bonus, TheYearMeasuresTheDeductionsOfTheSlipWithoutTheFurtherOne) {
    december(15600, 365, 0);
    scrivi(Q657, 3045.08);
    scrivi(Q649, 690);
    scrivi(Q277, 500);
    bonus_steps();
    EXPECT_EQ(num(Q280), 147.08);  // 3735.08 - 3588
}

TEST_F(Bonus, PartOfAYearIsBoundByItsOwnDeductions) {
    december(15600, 73, 0);
    scrivi(Q657, 609.02);
    scrivi(Q649, 3100);
    bonus_steps();
    EXPECT_EQ(num(Q280), 121.02);  // 3709.02 - 3588, below 1200 x 73 / 365 = 240
}

// ---- Year-end ----

TEST_F(Bonus, TheYearPaysWhatIsMissing) {
    december(12000, 365, 1098.09);
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    EXPECT_EQ(num(Q280), 101.91);
    EXPECT_EQ(num(Q281), 0);
    EXPECT_EQ(num(Q279), 1200);
    EXPECT_EQ(num(P241), 101.91);
}

TEST_F(Bonus, DaysAreThoseOfBothEmployersUpTo365WithoutThoseThatCarryNone) {
    december(12000, 200, 0);
    scrivi(Q518, 100);
    bonus_steps();
    EXPECT_EQ(num(Q280), 986.30);  // 300 x 1200 / 365 = 986.3014
    december(12000, 300, 0);       // 400 days
    scrivi(Q991, 20);
    bonus_steps();
    EXPECT_EQ(num(Q280), 1134.25);  // 345 x 1200 / 365 = 1134.2466
}

TEST_F(Bonus, WhatAnotherEmployerPaidCountsAsPaid) {
    december(12000, 365, 500);
    scrivi(Q278, 600);
    bonus_steps();
    EXPECT_EQ(num(Q280), 100);
    EXPECT_EQ(num(Q279), 600);
}

TEST_F(Bonus, WhatWasPaidTooMuchIsFoundAndShownTwice) {
    december(12000, 182, 700);
    bonus_steps();
    EXPECT_EQ(num(Q281), 101.64);  // 700 - 182 x 1200 / 365 = 700 - 598.3562
    EXPECT_EQ(num(QA15), 101.64);
    EXPECT_EQ(num(Q280), 0);
    EXPECT_EQ(num(Q279), 598.36);
}

TEST_F(Bonus, PaidOnlyAtTheYearEndWhatStandsInTheRecordComesBack) {
    month_of(1000);
    scrivi(P904, 1);
    bonus_steps();
    EXPECT_EQ(num(P022), 0);
    december(12000, 365, 55);
    scrivi(Q278, 200);
    bonus_steps();
    EXPECT_EQ(num(Q281), 55);
    EXPECT_EQ(num(Q280), 1000);
    EXPECT_EQ(num(Q279), 1000);
}

TEST_F(Bonus, OnTheSlipThatAdjustsTheDaysWithoutBonusStayUntilTheNextMonth) {
    scrivi(Q991, 12);
    year_of(12000);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q991), 12);
    tax_state.ConguaglioAnnuale = false;
    set_period("31012025");
    CALCIMPOSTA();
    EXPECT_EQ(num(Q991), 0);
}

// ---- Further deduction ----

TEST_F(Bonus, TheFurtherDeductionOf2020GoesBy184Days) {
    set_period("31072020");
    month_of(2500);
    CALCOLA_ULT_DET();
    // R 30000: 480 + 120 x 5000 / 7000 = 565.7143; / 184 x 31 = 95.3106
    EXPECT_EQ(num(Q277), 95.31);
    EXPECT_EQ(num(Q276), 95.31);
}

TEST_F(Bonus, T402CountsTheLeapDayInTheShareOfTheMonth) {
    set_period("31012028");
    month_of(2500);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q277), 84.93);  // 1000 / 365 x 31 = 84.9315
    scrivi(T402, 1);
    scrivi(F169, 0);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q277), 84.70);  // 1000 / 366 x 31 = 84.6995
}

TEST_F(Bonus, From2022To2024TheFurtherDeductionRests) {
    for (const char* date : {"31012022", "31122024"}) {
        set_period(date);
        month_of(2500);
        scrivi(QA10, 5);
        scrivi(QA11, 5);
        CALCOLA_ULT_DET();
        CALCOLA_ULT_DET_2025();
        EXPECT_EQ(num(Q277), 0) << date;
        EXPECT_EQ(num(QA10) + num(QA11), 0) << date;
    }
}

TEST_F(Bonus, P084TakesTheFurtherDeductionToo) {
    set_period("31012025");
    month_of(2500);
    scrivi(P084, 1);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q277), 0);
}

TEST_F(Bonus, SeparateAmountsAreNotInTheTaxableOfTheMonthYet) {
    set_period("31012025");
    month_of(1700);
    scrivi(P244, 100);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q277), 84.93);  // 20400
    scrivi(T184, 1);              // the cumulative method comes behind them: 19200
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q277), 0);
}

TEST_F(Bonus, TheYearTakesTheFurtherDeductionByDaysOnce) {
    december(30000, 200, 0);
    set_period("31122025");
    scrivi(Q518, 100);
    scrivi(Q276, 800);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q276), 821.92);  // 1000 / 365 x 300 = 821.9178
    EXPECT_EQ(num(Q277), 821.92);
    EXPECT_EQ(num(QA10), 0);
    scrivi(Q518, 300);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(Q276), 1000);
}

TEST_F(Bonus, TheHalfYearOf2020Has184DaysForTheYearToo) {
    december(30000, 365, 0);
    set_period("31122020");
    CALCOLA_ULT_DET();
    EXPECT_EQ(num(Q276), 565.71);
}

TEST_F(Bonus, AnExcessOfTheFurtherDeductionStaysInTheYearsDeductions) {
    december(45000, 365, 0);
    set_period("31122025");
    scrivi(Q276, 916.44);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(QA10), 916.44);
    EXPECT_EQ(num(Q276), 0);
    EXPECT_EQ(num(Q277), 916.44);
}

TEST_F(Bonus, LessThanTenCentsAreSettledWithTheTax) {
    december(45000, 365, 0);
    set_period("31122025");
    scrivi(Q276, 0.09);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(QA10), 0);
    EXPECT_EQ(num(Q277), 0);
    scrivi(Q276, 0.10);
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(QA10), 0.10);
    EXPECT_EQ(num(Q277), 0.10);
}

TEST_F(Bonus, TenCentsAboveADeductionOfTheYearAreAnExcess) {
    december(30000, 100, 0);
    set_period("31122025");
    scrivi(Q276, 274.07);  // 1000 / 365 x 100 = 273.97; as doubles 0.0999... above it
    CALCOLA_ULT_DET_2025();
    EXPECT_EQ(num(QA10), 0.10);
    EXPECT_EQ(num(Q277), 274.07);
}

TEST_F(Bonus, TheNextSlipHoldsAnExcessOnAPlanAsWithheld) {
    scrivi(Q276, 100);
    scrivi(Q277, 340);
    scrivi(Q014, 1000);
    month_of(1000);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q014), 1240);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q014), 1240);
}

// ---- Integrative sum ----

TEST_F(Bonus, TheIntegrativeSumIsPaidFromJanuary2025OnEverySlip) {
    set_period("31122024");
    month_of(1000);
    bonus_steps();
    EXPECT_EQ(num(PC33), 0);
    set_period("31012025");
    bonus_steps();
    EXPECT_EQ(num(PC33), 53);  // 1000 x 5.3 %
    EXPECT_EQ(num(QA34), 53);
    EXPECT_EQ(num(P241), 256.84);  // 101.92 x 2 + 53
    set_period("30062025", '0');
    bonus_steps();
    EXPECT_EQ(num(QA34), 106);
}

TEST_F(Bonus, PC32SwitchesTheIntegrativeSumOff) {
    set_period("31012025");
    month_of(1000);
    scrivi(PC32, 1);
    bonus_steps();
    EXPECT_EQ(num(PC33), 0);
}

TEST_F(Bonus, TheIncomeOfAWholeYearSetsThePercentageOfThePartWorked) {
    december(8000, 200, 0);
    set_period("31122025");
    scrivi(QA34, 300);
    bonus_steps();
    // 8000 / 200 x 365 = 14600: 5.3 % of 8000 = 424
    EXPECT_EQ(num(QA41), 124);
    EXPECT_EQ(num(QA34), 424);
    scrivi(Q518, 165);  // a whole year: 8000, 7.1 % = 568
    bonus_steps();
    EXPECT_EQ(num(QA41), 144);
}

TEST_F(Bonus, TooMuchIntegrativeSumIsFound) {
    december(20000.01, 365, 0);
    set_period("31122025");
    scrivi(QA34, 880);
    scrivi(P022, 0);
    bonus_steps();
    EXPECT_EQ(num(QA42), 880);
    EXPECT_EQ(num(QA41), 0);
    EXPECT_EQ(num(QA34), 0);
}

TEST_F(Bonus, WithoutDaysTheIncomeItselfSetsThePercentage) {
    december(8000, 0, 0);
    set_period("31122025");
    bonus_steps();
    EXPECT_EQ(num(QA41), 568);
}

}  // namespace
