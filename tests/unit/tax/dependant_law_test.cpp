#include "tax/dependant_law.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/failure.h"

namespace {

using namespace ModSWCALB;

TEST(DependantLaw, EachMonthIsTakenByOneRow) {
    for (int year = 2004; year <= 2030; ++year) {
        for (int month = year * 100 + 1; month <= year * 100 + 12; ++month) {
            const auto rows = dependant_laws();
            EXPECT_EQ(std::count_if(rows.begin(), rows.end(),
                                    [month](const DependantLaw& row) {
                                        return month >= row.from && month <= row.to;
                                    }),
                      1)
                << month;
            EXPECT_NO_THROW(static_cast<void>(dependant_law(month))) << month;
            for (const bool disabled : {false, true}) {
                for (const int birth : {0, 199001, 200001, 202001, 203501}) {
                    EXPECT_GE(child_amount(month, birth, disabled, true), 0) << month;
                }
            }
        }
    }
}

TEST(DependantLaw, AMonthBeyondTheTableFails) {
    EXPECT_THROW(static_cast<void>(dependant_law(1000001)), platform::Failure);
}

TEST(DependantLaw, ChildrenByDateOfLaw) {
    struct Case {
        int month;
        int birth;
        bool disabled;
        bool many;
        double amount;
    };
    for (const Case& row : {
             Case{200612, 200001, false, false, 0},
             Case{200701, 200001, false, false, 800},
             Case{201212, 200001, false, false, 800},
             Case{201212, 201001, false, false, 900},  // 35 months of age
             Case{201212, 200001, true, false, 800 + 220.0},
             Case{201212, 201101, true, true, 900 + 220 + 200.0},
             Case{201301, 200001, false, false, 950},
             Case{201301, 201201, false, false, 1220},
             Case{201301, 200001, true, false, 950 + 400.0},
             Case{202202, 202001, true, true, 1220 + 400 + 200.0},
             Case{202202, 199501, false, true, 950 + 200.0},
             Case{202203, 202001, true, true, 0},  // the universal allowance instead
             Case{202203, 199501, true, true, 950},
             Case{202412, 198001, false, false, 950},
             Case{202501, 198001, false, false, 0},
             Case{202501, 198001, true, false, 950},
             Case{202501, 200001, false, false, 950},
         }) {
        EXPECT_EQ(child_amount(row.month, row.birth, row.disabled, row.many), row.amount)
            << row.month << " born " << row.birth;
    }
}

TEST(DependantLaw, TheMonthOfABirthdayCountsToBothSides) {
    EXPECT_EQ(child_amount(201504, 201204, false, false), 1220);  // third birthday
    EXPECT_EQ(child_amount(201505, 201204, false, false), 950);
    EXPECT_TRUE(under_three(201504, 201204));
    EXPECT_FALSE(under_three(201505, 201204));
    EXPECT_EQ(child_amount(202305, 200206, false, false), 0);  // twenty-first
    EXPECT_EQ(child_amount(202306, 200206, false, false), 950);
    EXPECT_EQ(child_amount(202506, 199506, false, false), 950);  // thirtieth
    EXPECT_EQ(child_amount(202507, 199506, false, false), 0);
    EXPECT_EQ(child_amount(202507, 199506, true, false), 950);
}

TEST(DependantLaw, AChildIsNoneBeforeItsBirth) {
    EXPECT_EQ(child_amount(201005, 201006, false, false), 0);
    EXPECT_EQ(child_amount(201006, 201006, false, false), 900);
    EXPECT_EQ(age_in_months(200911, 201002), 3);
}

TEST(DependantLaw, AChildOfUnknownAgeCountsWhereNoAgeIsAsked) {
    EXPECT_EQ(child_amount(202202, 0, false, false), 950);
    EXPECT_FALSE(under_three(202202, 0));
    EXPECT_EQ(child_amount(202203, 0, false, false), 0);
}

TEST(DependantLaw, SpouseAtBothSidesOfEachLimit) {
    struct Case {
        double income;
        double amount;
    };
    for (const Case& row : {
             Case{0, 0},
             Case{1500, 789},                // 800 - 110 x .1
             Case{10000, 800 - 73.326},      // quotient .6666 x 110 = 73.326
             Case{14999.99, 800 - 109.989},  // quotient .9999 x 110 = 109.989
             Case{15000, 690},
             Case{15000.01, 690},
             Case{29000, 690},
             Case{29000.01, 700},
             Case{29200, 700},
             Case{29200.01, 710},
             Case{34700, 710},
             Case{34700.01, 720},
             Case{35000, 720},
             Case{35000.01, 710},
             Case{35100, 710},
             Case{35100.01, 700},
             Case{35200, 700},
             Case{35200.01, 690},
             Case{40000, 690},
             Case{40000.01, 689.931},  // quotient .99999... cut at .9999; 690 x .9999
             Case{60000, 345},
             Case{79999, 0},  // quotient .000025 cut at .0000
             Case{80000, 0},
             Case{90000, 0},
         }) {
        EXPECT_NEAR(spouse_amount(202405, row.income), row.amount, 1e-9) << row.income;
    }
    EXPECT_EQ(spouse_amount(200612, 20000), 0);
}

TEST(DependantLaw, OtherDependants) {
    EXPECT_EQ(other_amount(200612), 0);
    EXPECT_EQ(other_amount(200701), 750);
    EXPECT_EQ(other_amount(202612), 750);
}

}  // namespace
