#include <gtest/gtest.h>

#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "tests/unit/contributions/slip_fixture.h"

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALM::run_tables;
using ModSWCALM::slip;

namespace {

/// The ceiling of 2024 is 119650 euro; 2 percent remain due above it.
class YearlyCeilingTest : public test_support::SlipFixture {
  protected:
    YearlyCeilingTest() {
        scrivi(F427, 119650);
        scrivi(S309, 2);
        scrivi(P001, "0010000001");
        scrivi(P002, "ROSSI");
        scrivi(P003, "MARIA");
    }
    static void wage(double to_date, double amount) {
        scrivi(Q001, to_date);
        scrivi(Q003, to_date);
        scrivi(P240, amount);
        scrivi(P250, amount);
    }
};

TEST_F(YearlyCeilingTest, AWageUpToTheCeilingStays) {
    wage(110000, 9650);  // reaches it exactly
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 9650);
    EXPECT_EQ(num(P881), 0);
    EXPECT_EQ(num(Q926), 0);
    EXPECT_EQ(run_tables.list_9999_count, 0);
}

TEST_F(YearlyCeilingTest, TheWageAboveTheCeilingIsBookedApart) {
    wage(110000, 10000);
    scrivi(P250, 9999.60);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 9650);
    EXPECT_EQ(num(P250), 9650);  // 9999.60 - (110000 + 9999.60 - 119650)
    EXPECT_EQ(num(P881), 350);
    EXPECT_EQ(num(P882), 7);  // 350 x 2 %
    EXPECT_EQ(num(Q926), 350);
    EXPECT_EQ(num(Q927), 7);
}

TEST_F(YearlyCeilingTest, ACeilingReachedTakesTheWholeWage) {
    wage(119650, 8000);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 0);
    EXPECT_EQ(num(P250), 0);
    EXPECT_EQ(num(P881), 8000);
    EXPECT_EQ(num(P882), 160);
    wage(120000, 1000);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 0);
    EXPECT_EQ(num(Q926), 9000);
    EXPECT_EQ(num(Q927), 180);
}

TEST_F(YearlyCeilingTest, TheWageWithItsCentsStaysWhenItIsNotAbove) {
    wage(110000, 10000);
    scrivi(Q003, 105000);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 9650);
    EXPECT_EQ(num(P250), 10000);  // 105000 + 10000 is below the ceiling
}

TEST_F(YearlyCeilingTest, CentsAboveTheCeilingAreTakenOffTheWageWithItsCents) {
    wage(110000, 9651);  // 9650.60 in whole euro
    scrivi(P250, 9650.60);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 9650);
    EXPECT_EQ(num(P250), 9650);  // 9650.60 - 0.60
}

TEST_F(YearlyCeilingTest, AnAdditionalSlipHasItsOwnFields) {
    set_additional(202412);
    wage(115000, 6000);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(num(P240), 4650);
    EXPECT_EQ(num(P883), 1350);
    EXPECT_EQ(num(P884), 27);
    EXPECT_EQ(num(P881), 0);
    EXPECT_EQ(num(Q926), 1350);
}

TEST_F(YearlyCeilingTest, WhoIsNotUnderTheCeilingKeepsTheWage) {
    const auto untouched = [] {
        wage(119650, 8000);
        GESTIONE_MASSIMALE_CONTRIBUTIVO();
        return num(P240) == 8000 && num(P881) == 0;
    };
    scrivi(P040, 3);
    EXPECT_TRUE(untouched());
    scrivi(P512, 1);
    EXPECT_TRUE(untouched());
    scrivi(P511, 1);
    EXPECT_FALSE(untouched());
    azzera({P040, P511, P512, P881});
    azzera({S309});
    EXPECT_TRUE(untouched());
    scrivi(S309, 2);
    azzera({F427});
    EXPECT_TRUE(untouched());
}

TEST_F(YearlyCeilingTest, WhoPassesTheCeilingIsListed) {
    wage(110000, 10000);
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(run_tables.list_9999_count, 1);
    EXPECT_EQ(run_tables.list_9999[1],
              "0010000001-ROSSI MARIA HA SUPERATO IL MASSIMALE DI E.119650.00");
    wage(119650, 0);  // a month without wage
    GESTIONE_MASSIMALE_CONTRIBUTIVO();
    EXPECT_EQ(run_tables.list_9999_count, 1);
}

TEST_F(YearlyCeilingTest, AFullListIsASubscriptFailure) {
    run_tables.list_9999_count = 9998;
    list_above_ceiling(1);
    EXPECT_EQ(run_tables.list_9999_count, 9999);
    try {
        list_above_ceiling(1);
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), 9);
    }
}

TEST_F(YearlyCeilingTest, ThePassLimitsTheWageOfMarkedEmployeesOnly) {
    scrivi(P181, 1);
    scrivi(PB05, 1);
    slip.PCTCONTR[1] = 9.19;
    wage(119650, 8000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 8000);
    scrivi(P885, 1);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 0);
    EXPECT_EQ(num(P881), 8000);
}

// ---- Conventional wages abroad ----

class ConventionalWageTest : public test_support::SlipFixture {
  protected:
    ConventionalWageTest() {
        scrivi(P090, 13);
        scrivi(P240, 5000);
        scrivi(P250, 5000.20);
    }
};

TEST_F(ConventionalWageTest, TheFirstFilledWageOfNineHolds) {
    scrivi(P040, 1);
    scrivi(S323, 2345.50);
    scrivi(S324, 9999);
    GESTIONE_RETR_CONVENZ_ESTERO();
    EXPECT_EQ(num(P250), 2345.50);
    EXPECT_EQ(num(P240), 2346);
    EXPECT_EQ(slip.IMPSOCIALE2, 2345.50);
}

TEST_F(ConventionalWageTest, TheNinthIsTheLastOne) {
    scrivi(P040, 1);
    scrivi(S320, 1);
    scrivi(S330, 1);
    GESTIONE_RETR_CONVENZ_ESTERO();
    EXPECT_EQ(num(P240), 5000);
    scrivi(S329, 3000.49);
    GESTIONE_RETR_CONVENZ_ESTERO();
    EXPECT_EQ(num(P240), 3000);
}

TEST_F(ConventionalWageTest, TheOtherTableHasSeven) {
    scrivi(P040, 3);
    scrivi(S320, 1);
    scrivi(S321, 1);
    GESTIONE_RETR_CONVENZ_ESTERO();
    EXPECT_EQ(num(P240), 5000);
    scrivi(S319, 4100);
    GESTIONE_RETR_CONVENZ_ESTERO();
    EXPECT_EQ(num(P240), 4100);
}

TEST_F(ConventionalWageTest, OtherQualificationsAndEmployeesWithoutInstalmentsKeepTheWage) {
    scrivi(S321, 2000);
    scrivi(S313, 2000);
    for (const int qualification : {0, 2}) {
        scrivi(P040, qualification);
        GESTIONE_RETR_CONVENZ_ESTERO();
        EXPECT_EQ(num(P240), 5000);
    }
    scrivi(P040, 1);
    azzera({P090});
    GESTIONE_RETR_CONVENZ_ESTERO();
    EXPECT_EQ(num(P240), 5000);
}

TEST_F(ConventionalWageTest, ThePassUsesItForMarkedEmployees) {
    scrivi(P181, 1);
    scrivi(P040, 1);
    scrivi(S321, 2000);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 5000);
    scrivi(P886, 1);
    item_bases_before_fund();
    EXPECT_EQ(contributions.bases[1], 2000);
}

}  // namespace
