#include "tax/bonus_restitution.h"

#include "records/numbers.h"
#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;
using ModSWCALM::run_tables;

const Restitution& kBonus = kRestitutions[0];
const Restitution& kFurther = kRestitutions[1];
const Restitution& kIntegrative = kRestitutions[2];

class BonusRestitution : public TaxTest {
  protected:
    BonusRestitution() {
        run_tables = {};
        scrivi(P001, "0010000001");
        scrivi(P002, "ROSSI");
        scrivi(P003, "MARIA");
    }
    ~BonusRestitution() override { run_tables = {}; }

    /// December 2024 with this excess of the sum.
    static void december(const Restitution& sum, double excess) {
        set_period("31122024");
        tax_state.ConguaglioAnnuale = true;
        scrivi(sum.excess, excess);
    }
    static void slip() {
        open_restitutions();
        take_back();
    }
    /// A month of an ordinary slip.
    static void month(const std::string& date) {
        set_period(date);
        tax_state.ConguaglioAnnuale = false;
        slip();
    }
    static void running_plan(const Restitution& sum, double total, double count, double done,
                             double paid) {
        scrivi(sum.total, total);
        scrivi(sum.count, count);
        scrivi(sum.done, done);
        scrivi(sum.paid, paid);
    }
    /// Count, done, total, instalment, paid of a sum.
    static std::vector<double> plan(const Restitution& sum) {
        return {num(sum.count), num(sum.done), num(sum.total), num(sum.instalment), num(sum.paid)};
    }
    using Plan = std::vector<double>;
};

TEST_F(BonusRestitution, LessThanTenCentsAreNotAskedBack) {
    for (const Restitution& sum : kRestitutions) {
        december(sum, 0.09);
        slip();
        EXPECT_EQ(plan(sum), (Plan{0, 0, 0, 0, 0}));
        EXPECT_EQ(restitution_note(sum), nullptr);
    }
    EXPECT_EQ(num(P259), 0);
}

TEST_F(BonusRestitution, UpTo60EuroComeBackAtOnce) {
    for (const double excess : {0.10, 60.00}) {
        for (const Restitution& sum : kRestitutions) {
            svuota({P259, sum.count, sum.done, sum.total, sum.paid});
            december(sum, excess);
            slip();
            EXPECT_EQ(plan(sum), (Plan{1, 1, excess, excess, excess}));
            EXPECT_EQ(num(P259), excess);
            EXPECT_EQ(restitution_note(sum), sum.at_once);
            scrivi(sum.excess, 0);
        }
    }
}

TEST_F(BonusRestitution, From60EuroAndACentByInstalments) {
    december(kBonus, 60.01);
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{8, 1, 60.01, 7.50, 7.50}));  // 60.01 / 8 = 7.50125
    EXPECT_EQ(num(P259), 7.50);
    EXPECT_EQ(restitution_note(kBonus), kBonus.by_instalments);
}

TEST_F(BonusRestitution, TheUsualCountIsThatOfTheLaw) {
    december(kFurther, 100);
    slip();
    EXPECT_EQ(plan(kFurther), (Plan{8, 1, 100, 12.50, 12.50}));
    running_plan(kFurther, 0, 0, 0, 0);
    december(kFurther, 100);
    set_period("31012025");
    slip();
    EXPECT_EQ(plan(kFurther), (Plan{10, 1, 100, 10, 10}));
    december(kIntegrative, 100);
    slip();
    EXPECT_EQ(plan(kIntegrative), (Plan{10, 1, 100, 10, 10}));
}

TEST_F(BonusRestitution, ACountSetBeforehandIsKeptUpToTheUsualOne) {
    for (const auto& [set, kept] : {std::pair{1., 1.}, {7., 7.}, {8., 8.}, {9., 8.}}) {
        running_plan(kBonus, 0, set, 0, 0);
        december(kBonus, 100);
        slip();
        EXPECT_EQ(num(Q282), kept);
    }
    running_plan(kIntegrative, 0, 11, 0, 0);
    december(kIntegrative, 100);
    slip();
    EXPECT_EQ(num(QA35), 10);
    running_plan(kFurther, 0, 12, 0, 0);
    december(kFurther, 120);
    slip();
    EXPECT_EQ(plan(kFurther), (Plan{12, 1, 120, 10, 10}));
}

TEST_F(BonusRestitution, TheCountOfAFinishedPlanIsNoChoice) {
    running_plan(kBonus, 50, 1, 1, 50);
    december(kBonus, 80);
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{8, 1, 80, 10, 10}));
}

TEST_F(BonusRestitution, TheRestOfARunningPlanJoinsTheNewOne) {
    running_plan(kBonus, 400, 5, 2, 160);
    december(kBonus, 30);
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{5, 1, 270, 54, 54}));
    EXPECT_EQ(num(P259), 54);
}

TEST_F(BonusRestitution, PartOfTheFurtherDeductionGivenBackBeforehandLeavesSixInstalments) {
    scrivi(QA14, 40);
    december(kFurther, 160);
    slip();
    EXPECT_EQ(plan(kFurther), (Plan{6, 1, 160, 20, 20}));
    for (const char* date : {"31012025", "28022025", "31032025", "30042025", "31052025"}) {
        month(date);
    }
    EXPECT_EQ(plan(kFurther), (Plan{6, 6, 160, 20, 120}));
    month("30062025");
    EXPECT_EQ(num(QA08), 0);
    december(kFurther, 160);  // what was given back belonged to the plan before
    slip();
    EXPECT_EQ(plan(kFurther), (Plan{8, 1, 160, 20, 20}));
    EXPECT_EQ(num(QA14), 0);
}

TEST_F(BonusRestitution, TheLastInstalmentTakesTheCents) {
    december(kBonus, 100.05);
    slip();
    EXPECT_EQ(num(Q285), 12.51);  // 100.05 / 8 = 12.50625
    for (int number = 2; number <= 7; ++number) {
        month("31012025");
        EXPECT_EQ(num(Q285), 12.51);
        EXPECT_EQ(num(Q283), number);
    }
    month("31072025");
    EXPECT_EQ(num(Q285), 12.48);  // 100.05 - 7 x 12.51
    EXPECT_EQ(num(Q286), 100.05);
    EXPECT_EQ(num(P259), 100.05);
    month("31082025");
    EXPECT_EQ(plan(kBonus), (Plan{8, 8, 100.05, 0, 100.05}));
    EXPECT_EQ(num(P259), 100.05);
}

TEST_F(BonusRestitution, WhatWasGivenBackOtherwiseLeavesTheInstalments) {
    running_plan(kBonus, 800, 8, 3, 300);
    scrivi(QA17, 200);
    scrivi(QA18, 2);
    month("31052025");
    EXPECT_EQ(num(Q285), 100);  // (800 - 200) / (8 - 2)
    month("30062025");
    month("31072025");
    EXPECT_EQ(plan(kBonus), (Plan{8, 6, 800, 100, 600}));
    month("31082025");
    EXPECT_EQ(num(Q285), 0);
    december(kBonus, 80);
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{8, 1, 80, 10, 10}));
    EXPECT_EQ(num(QA17) + num(QA18), 0);
}

TEST_F(BonusRestitution, APlanWithoutCountRests) {
    running_plan(kBonus, 800, 0, 0, 0);
    month("31052025");
    EXPECT_EQ(num(Q285), 0);
}

TEST_F(BonusRestitution, AdditionalSlipsAndThoseOfAdjustmentOnlyTakeNoInstalment) {
    running_plan(kBonus, 80, 8, 1, 10);
    scrivi(Q285, 10);
    set_period("31052025", '0');
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{8, 1, 80, 0, 10}));
    set_period("31052025");
    scrivi(P118, 2);
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{8, 1, 80, 0, 10}));
    december(kBonus, 80);  // its own excess it does take
    slip();
    EXPECT_EQ(plan(kBonus), (Plan{8, 1, 150, 18.75, 18.75}));
}

TEST_F(BonusRestitution, ALeaverGivesBackRestAndExcessAtOnceAndOnlyOnce) {
    scrivi(P017, "15122024");
    for (const Restitution& sum : kRestitutions) {
        running_plan(sum, 400, 8, 2, 100);
        december(sum, 500);
    }
    slip();
    EXPECT_EQ(num(Q285), 500);
    EXPECT_EQ(num(P259), 2400);
    EXPECT_EQ(num(Q288), 300);
    EXPECT_EQ(num(Q287), 300);
    EXPECT_EQ(num(QA08), 0);
    EXPECT_EQ(num(QA11), 800);
    EXPECT_EQ(num(QA38), 800);
    for (const Restitution& sum : kRestitutions) {
        EXPECT_EQ(taken_back(sum), 800);
        EXPECT_EQ(restitution_note(sum), sum.on_leaving);
        EXPECT_EQ(num(sum.paid), num(sum.total));
    }
    // a second slip after leaving, without excess
    for (const Restitution& sum : kRestitutions) {
        scrivi(sum.excess, 0);
    }
    slip();
    EXPECT_EQ(num(Q285) + num(Q288) + num(QA11) + num(QA38), 0);
}

TEST_F(BonusRestitution, ALeaverWithoutExcessGivesBackTheRest) {
    scrivi(P017, "15122024");
    running_plan(kBonus, 400, 8, 2, 100);
    running_plan(kFurther, 90, 8, 1, 11.25);
    running_plan(kIntegrative, 90, 10, 1, 9);
    december(kBonus, 0);
    slip();
    EXPECT_EQ(num(Q288), 300);
    EXPECT_EQ(num(Q285), 0);
    EXPECT_EQ(num(QA11), 78.75);
    EXPECT_EQ(num(QA38), 81);
    EXPECT_EQ(num(P259), 459.75);
}

// ---- Control lists ----

TEST_F(BonusRestitution, EveryNewRestitutionGoesToItsList) {
    for (const Restitution& sum : kRestitutions) {
        december(sum, 80);
    }
    slip();
    const std::string who = "0010000001-ROSSI MARIA" + std::string(30, ' ');
    ASSERT_EQ(run_tables.bonus_list.size(), 2U);
    EXPECT_EQ(run_tables.bonus_list[0],
              who + "REST.BONUS RATEALE DL3/2020         80.00 RATE 8 DA 10.00");
    EXPECT_EQ(run_tables.bonus_list[1],
              who + "RESTITUZIONE RATE ULTERIORE DETR.   80.00 RATE 8 DA 10.00");
    EXPECT_EQ(run_tables.list_999_count, 1);
    EXPECT_EQ(run_tables.list_999[1],
              who + "REST.SOMMA INTEGRATIVA RATEALE      80.00 RATE 10 DA 8.00");
}

TEST_F(BonusRestitution, AtOnceAndOnLeavingTheLineHoldsTheSumAlone) {
    december(kBonus, 60);
    slip();
    scrivi(P017, "31122024");
    scrivi(Q281, 700);
    slip();
    ASSERT_EQ(run_tables.bonus_list.size(), 2U);
    EXPECT_TRUE(run_tables.bonus_list[0].ends_with(" REST.BONUS DL3/2020                 60.00"));
    EXPECT_TRUE(run_tables.bonus_list[1].ends_with(" CESS. CON REST.BONUS DL3/2020   700.00"));
}

TEST_F(BonusRestitution, ASmallSumOfALeaverGoesByItsOwnName) {
    december(kBonus, 60);
    scrivi(P017, "31122024");
    slip();
    ASSERT_EQ(run_tables.bonus_list.size(), 1U);
    EXPECT_TRUE(run_tables.bonus_list[0].ends_with(" REST.BONUS DL3/2020                 60.00"));
    EXPECT_EQ(restitution_note(kBonus), kBonus.at_once);
    run_tables.bonus_list.clear();
    scrivi(Q281, 60.01);
    slip();
    ASSERT_EQ(run_tables.bonus_list.size(), 1U);
    EXPECT_EQ(restitution_note(kBonus), kBonus.on_leaving);
}

TEST_F(BonusRestitution, WhatWasGivenBackOtherwiseAboveTheTotalPaysNothingOut) {
    december(kFurther, 100);
    scrivi(QA14, 150);
    slip();
    EXPECT_EQ(num(QA08), 0);
    EXPECT_EQ(num(QA09), 0);
    EXPECT_EQ(num(P259), 0);
}

TEST_F(BonusRestitution, ADroppedSlipAndARunningPlanLeaveNoLine) {
    december(kBonus, 80);
    ModSWCALM::ABORTODIP = -1;
    slip();
    ModSWCALM::ABORTODIP = 0;
    month("31012025");
    EXPECT_TRUE(run_tables.bonus_list.empty());
}

TEST_F(BonusRestitution, TheListOfTheIntegrativeSumGrowsWithThePayroll) {
    run_tables.list_999_count = 999;
    december(kIntegrative, 80);
    slip();
    EXPECT_EQ(run_tables.list_999_count, 1000);
    EXPECT_FALSE(run_tables.list_999.at(1000).empty());
}

}  // namespace
