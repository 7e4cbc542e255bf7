#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

class OlderDeduction : public TaxTest {
  protected:
    OlderDeduction() {
        scrivi(P034, 2);
        scrivi(P583, 1);
        scrivi(P256, 2000);  // R 24000
        scrivi(F400, 40000);
        scrivi(F403, 800);
        scrivi(F404, 100);
        scrivi(F405, 300);
        scrivi(F406, 200);
        scrivi(F407, 40);
    }
};

TEST_F(OlderDeduction, AMonthTakesATwelfthOfTheSumsByTheQuotient) {
    DetrLavoro();
    EXPECT_EQ(num(Q660), 1);
    EXPECT_EQ(num(Q670), 0.4);  // (40000 - 24000) / 40000
    EXPECT_EQ(num(Q648), 40);   // (800 + 100 + 300) x .4 / 12
    EXPECT_EQ(num(Q641), 40);
    EXPECT_EQ(num(Q651), 8);  // (200 + 40) x .4 / 12
    EXPECT_EQ(num(Q644), 8);
    DetrLavoro();
    EXPECT_EQ(num(Q641), 80);
    EXPECT_EQ(num(Q648), 40);
}

TEST_F(OlderDeduction, AboveTheIncomeLimitThereIsNothing) {
    scrivi(P256, 4000);
    DetrLavoro();
    EXPECT_EQ(num(Q670), 0);
    EXPECT_EQ(num(Q648), 0);
}

TEST_F(OlderDeduction, TheYearGoesByTheMonthsCounted) {
    tax_state.ConguaglioAnnuale = true;
    tax_state.ImponibileCorrente = 24000;
    scrivi(Q660, 8);
    scrivi(Q641, 999);
    DetrLavoro();
    EXPECT_EQ(num(Q660), 9);
    EXPECT_EQ(num(Q641), 360);  // 1200 x .4 / 12 x 9
    EXPECT_EQ(num(Q648), 360);
    EXPECT_EQ(num(Q644), 72);  // 240 x .4 / 12 x 9
}

TEST_F(OlderDeduction, SumsOfTheMonthAreTakenWhole) {
    scrivi(P585, 1);
    DetrLavoro();
    EXPECT_EQ(num(Q648), 480);  // 1200 x .4
}

TEST_F(OlderDeduction, InstalmentsCountTheirMonths) {
    scrivi(P034, 3);
    scrivi(P090, 4);
    DetrLavoro();
    EXPECT_EQ(num(Q660), 3);
    EXPECT_EQ(num(Q648), 120);  // 1200 x .4 / 4: four such instalments are the year
    EXPECT_EQ(num(Q651), 24);   // 240 x .4 / 4
    for (const double monthly : {0, 12, 13, 14}) {
        scrivi(Q660, 3);
        scrivi(P090, monthly);
        DetrLavoro();
        EXPECT_EQ(num(Q660), 4) << monthly;
        EXPECT_EQ(num(Q648), 40) << monthly;  // 1200 x .4 / 12
    }
    scrivi(P034, 1);
    scrivi(P447, 1);
    scrivi(P090, 6);
    DetrLavoro();
    EXPECT_EQ(num(Q660), 6);
}

TEST_F(OlderDeduction, Mode1CountsFromTheFirstMonthOfEmploymentInTheYear) {
    scrivi(P034, 1);
    DetrLavoro();
    EXPECT_EQ(num(Q660), 5);  // January to May
    DetrLavoro();
    EXPECT_EQ(num(Q660), 5);
    scrivi(P013, "16032024");
    DetrLavoro();
    EXPECT_EQ(num(Q660), 3);  // March to May
    year_of(24000);
    DetrLavoro();
    EXPECT_EQ(num(Q660), 10);
    EXPECT_EQ(num(Q648), 400);  // 1200 x .4 / 12 x 10
}

TEST_F(OlderDeduction, ALeaverOfAnotherMonthCountsNoMonth) {
    scrivi(P017, "30042024");
    DetrLavoro();
    EXPECT_EQ(num(Q660), 0);
    scrivi(P017, "31052024");
    DetrLavoro();
    EXPECT_EQ(num(Q660), 1);
}

TEST_F(OlderDeduction, AnOnlyDependantTakesTheSpousesPlace) {
    scrivi(P035, 1);
    scrivi(P462, 1);
    dependant(0, "F", "15062000");
    scrivi(P256, 2000);
    DetrLavoro();
    EXPECT_TRUE(deduction_state.household.only_first);
    EXPECT_EQ(deduction_state.household.second, 1);
    DetrFamiliari();
    EXPECT_EQ(num(Q649), 57.50);  // 690 / 12
    EXPECT_EQ(num(Q650), 0);
    scrivi(P035, 2);
    DetrLavoro();
    EXPECT_FALSE(deduction_state.household.only_first);
}

TEST_F(OlderDeduction, ItRunsByItsModeOrAtTheYearEndWithMonthsCounted) {
    month_of(2000);
    scrivi(P034, 0);
    scrivi(Q660, 4);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q648), 0);
    year_of(24000);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q648), 200);  // 1200 x .4 / 12 x 5
    scrivi(Q660, 0);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q648), 0);
    tax_state.ConguaglioAnnuale = false;
    month_of(2000);
    scrivi(P034, 1);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q648), 40);
}

}  // namespace
