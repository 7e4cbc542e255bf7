#include "severance/revaluation.h"

#include <gtest/gtest.h>

namespace {

using ModSwCalm2::base_index_of_year;
using ModSwCalm2::CalcolaCoefRivalTFR;

/// Coefficients of December as the statistics office's index made them law's.
TEST(Revaluation, PublishedCoefficientsOfDecember) {
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(118.2, 106.2, 12), 9.974576);  // 2022
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(120.2, 118.9, 12), 2.320017);  // 2024
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(101.1, 100.3, 12), 2.098205);  // 2017
    // 2016, whose base 99.9 was published with one decimal
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(100.3, base_index_of_year(2016, 99.9), 12), 1.795304);
}

TEST(Revaluation, PartOfTheYearTakesItsTwelfthsOfTheFixedPart) {
    // 1.5 / 12 x 5 = 0.625; 0.6 / 118.9 = 0.504626 percent, three quarters 0.3784695
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(119.5, 118.9, 5), 1.003470);
}

TEST(Revaluation, FallOfTheIndexLeavesTheFixedPart) {
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(118.8, 118.9, 12), 1.5);
    EXPECT_DOUBLE_EQ(CalcolaCoefRivalTFR(118.8, 118.9, 3), 0.375);
}

TEST(Revaluation, MissingFigureGivesNothingAtAll) {
    EXPECT_EQ(CalcolaCoefRivalTFR(0, 118.9, 12), 0);
    EXPECT_EQ(CalcolaCoefRivalTFR(118.9, 0, 12), 0);
    EXPECT_EQ(CalcolaCoefRivalTFR(120.2, 118.9, 0), 0);
}

TEST(Revaluation, BaseIndexIsMendedInItsYearsOnly) {
    EXPECT_DOUBLE_EQ(base_index_of_year(2011, 100), 100.001165331);
    EXPECT_DOUBLE_EQ(base_index_of_year(2016, 100.1), 100.1);
    EXPECT_DOUBLE_EQ(base_index_of_year(2024, 99.9), 99.9);
}

}  // namespace
