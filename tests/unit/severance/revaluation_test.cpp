#include "severance/revaluation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/unit/contributions/slip_fixture.h"
#include "tests/unit/severance/published_coefficients.h"

namespace {

using namespace MXREPOSITORY;
using ModSwCalm2::CalcolaCoefRivalTFR;
using ModSwCalm2::INDICEISTAT;
using ModSwCalm2::mended_base_index;
using ModSwCalm2::revaluation_of;
using ModSwCalm2::RevaluationTerm;

// ---- Coefficient ----

/// Ten published coefficients are 0.000001 away: the rule rounds the rise to six decimals before it
/// takes three quarters of it.
const std::set<int> kOffByTheLastDigit{201607, 201609, 201610, 201611, 201708,
                                       201808, 201910, 202001, 202101, 202301};

TEST(Revaluation, PublishedCoefficientsMonthByMonth) {
    for (const published::Coefficient& row : published::kCoefficients) {
        const double base = mended_base_index(row.yyyymm, row.base_index);
        const double percent = CalcolaCoefRivalTFR(row.index, base, row.yyyymm % 100);
        const double millionths = std::round(std::abs(percent - row.percent) * 1000000);
        EXPECT_EQ(millionths, kOffByTheLastDigit.contains(row.yyyymm) ? 1 : 0)
            << row.yyyymm << " " << percent;
    }
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

TEST(Revaluation, BaseIndexIsMendedInItsMonthsOnly) {
    EXPECT_DOUBLE_EQ(mended_base_index(201105, 100), 100.001165331);
    EXPECT_DOUBLE_EQ(mended_base_index(201112, 100), 100.001165331);
    EXPECT_DOUBLE_EQ(mended_base_index(201201, 100), 100);
    EXPECT_DOUBLE_EQ(mended_base_index(201606, 99.9), 99.9);
    EXPECT_DOUBLE_EQ(mended_base_index(201607, 99.9), 99.906629);
    EXPECT_DOUBLE_EQ(mended_base_index(201612, 99.9), 99.906629);
    EXPECT_DOUBLE_EQ(mended_base_index(201612, 100.1), 100.1);
    EXPECT_DOUBLE_EQ(mended_base_index(202405, 99.9), 99.9);
    EXPECT_EQ(mended_base_index(201105, 0), 0);  // a missing index stays missing
}

// ---- Indexes ----

/// Both series of the tables: 118.9 and 119.1 to 120.2 for the year, 118.2 and 118.3 to 119.4 for
/// the year before.
class PriceIndexTest : public test_support::SlipFixture {
  protected:
    PriceIndexTest() {
        scrivi(F021, 118.9);
        scrivi(F294, 118.2);
        for (int month = 1; month <= 12; ++month) {
            scrivi(dopo(F023, month - 1), 119 + month / 10.0);
            scrivi(dopo(F295, month - 1), 118.2 + month / 10.0);
        }
    }
    static RevaluationTerm up_to(int yyyymm) {
        return {.yyyymm = yyyymm,
                .months = static_cast<double>(yyyymm % 100),
                .series = true,
                .settles = true};
    }
    test_support::ScriptedWindow& window = test_support::ScriptedWindow::install();
};

TEST_F(PriceIndexTest, MonthsAndYearEndOfEitherSeries) {
    for (int month = 1; month <= 12; ++month) {
        EXPECT_DOUBLE_EQ(INDICEISTAT(month, true), 119 + month / 10.0);
        EXPECT_DOUBLE_EQ(INDICEISTAT(month, false), 118.2 + month / 10.0);
    }
    EXPECT_DOUBLE_EQ(INDICEISTAT(13, true), 118.9);
    EXPECT_DOUBLE_EQ(INDICEISTAT(13, false), 118.2);
    EXPECT_EQ(INDICEISTAT(0, true), 0);
    EXPECT_EQ(INDICEISTAT(14, false), 0);
}

TEST_F(PriceIndexTest, YearEndStandsInTheOtherSeriesAfterAChangeOfBase) {
    for (const int month : {201201, 201701, 201705, 201712}) {
        set_period(month);
        EXPECT_DOUBLE_EQ(INDICEISTAT(13, true), 118.2) << month;
        EXPECT_DOUBLE_EQ(INDICEISTAT(1, true), 119.1) << month;
    }
    for (const int month : {201112, 201202, 201612, 201801}) {
        set_period(month);
        EXPECT_DOUBLE_EQ(INDICEISTAT(13, true), 118.9) << month;
    }
}

// ---- Messages ----

using Lines = std::vector<std::string>;

TEST_F(PriceIndexTest, MissingYearEndIsToldWhereThereIsAFund) {
    scrivi(F021, 0);
    EXPECT_EQ(revaluation_of(0, up_to(202405)), 0);
    EXPECT_EQ(window.lines, Lines{});
    EXPECT_EQ(revaluation_of(10000, up_to(202405)), 0);
    EXPECT_EQ(window.lines, Lines{"Errore negli indici ISTAT: valore 31.12  a zero"});
}

TEST_F(PriceIndexTest, MissingIndexOfTheMonthIsToldWhereItSettles) {
    scrivi(F034, 0);
    RevaluationTerm december = up_to(202412);
    december.settles = false;  // the index of a month comes out after its slips
    EXPECT_EQ(revaluation_of(10000, december), 0);
    EXPECT_EQ(window.lines, Lines{});
    december.settles = true;
    EXPECT_EQ(revaluation_of(10000, december), 0);
    EXPECT_EQ(window.lines, Lines{"Errore negli indici ISTAT: valore mese dicembre a zero"});
}

TEST_F(PriceIndexTest, WrongMonthOfAnAdvanceIsToldWithItsNumber) {
    scrivi(F025, 0);
    for (const Descriptor& amount : {Q046, Q252, Q256, Q978}) {
        scrivi(amount, 10);
    }
    scrivi(Q185, 3);   // no index
    scrivi(Q254, 13);  // no month
    scrivi(Q258, 99);
    scrivi(Q977, 3);
    // None of them takes anything off.
    EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, up_to(202405))), 100.35);
    EXPECT_EQ(window.lines, (Lines{"Errore negli indici ISTAT: valore mese Acconto 1 errato",
                                   "Errore negli indici ISTAT: valore mese Acconto 2 errato",
                                   "Errore negli indici ISTAT: valore mese Acconto 3 errato",
                                   "Errore negli indici ISTAT: valore mese Acconto 4 errato"}));
}

// ---- Fund ----

TEST_F(PriceIndexTest, FundIsRevaluedByTheMonthsOfServiceAndTheIndexOfTheMonth) {
    // May 119.5: coefficient 1.003470 (above); 10000 x 1.003470 %
    EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, up_to(202405))), 100.35);
    EXPECT_DOUBLE_EQ(num(Q267), 1.003470);
    EXPECT_EQ(revaluation_of(-10000, up_to(202405)), 0);
}

TEST_F(PriceIndexTest, TheOtherSeriesIsThatOfTheYearBefore) {
    // December 119.4 on 118.2: 1.2 / 118.2 = 1.015228 %, x 0.75 = 0.761421; + 1.5 = 2.261421
    const RevaluationTerm december{
        .yyyymm = 202312, .months = 12, .series = false, .settles = true};
    EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, december)), 226.14);
    EXPECT_DOUBLE_EQ(num(Q267), 2.261421);
}

TEST_F(PriceIndexTest, AnAdvanceEarnsNothingFromItsMonthOn) {
    scrivi(Q046, 1000);
    scrivi(Q185, 3);
    // March 119.3 to May 119.5, two months: 0.25 + 0.2 / 119.3 = 0.167645 % x 0.75 = 0.125734
    // (0.12573375 rounded): 0.375734 % of 1000 = 3.76; 100.347 - 3.757 = 96.59
    EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, up_to(202405))), 96.59);
    // Month 0: paid at the year end, the whole coefficient of May: 100.347 - 10.0347
    scrivi(Q185, 0);
    EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, up_to(202405))), 90.31);
    // An advance of the month itself lost nothing.
    scrivi(Q185, 5);
    EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, up_to(202405))), 100.35);
}

TEST_F(PriceIndexTest, EachAdvanceHasItsOwnMonth) {
    // Each alone takes 3.76 off, as above.
    const std::pair<Descriptor, Descriptor> advances[] = {
        {Q046, Q185}, {Q252, Q254}, {Q256, Q258}, {Q978, Q977}};
    for (const auto& [amount, month] : advances) {
        scrivi(amount, 1000);
        scrivi(month, 3);
        EXPECT_DOUBLE_EQ(arrotonda(revaluation_of(10000, up_to(202405))), 96.59) << amount.name();
        scrivi(amount, 0);
    }
}

TEST_F(PriceIndexTest, RevaluationEndsAtZero) {
    scrivi(Q046, 20000);
    EXPECT_EQ(revaluation_of(10000, up_to(202405)), 0);
}

TEST_F(PriceIndexTest, WhatTheTreasuryHoldsIsRevaluedThere) {
    scrivi(Q699, 100);
    scrivi(Q896, 20);
    scrivi(Q698, 3);
    EXPECT_EQ(ModSwCalm2::revalued_elsewhere(), 0);
    scrivi(T587, 1);
    EXPECT_EQ(ModSwCalm2::revalued_elsewhere(), 123);
}

TEST_F(PriceIndexTest, SubstituteTaxOfThoseWithIncomeTax) {
    scrivi(F322, 17);
    scrivi(P031, 1);
    EXPECT_DOUBLE_EQ(ModSwCalm2::substitute_tax(100), 17);
    scrivi(P031, 0);
    EXPECT_EQ(ModSwCalm2::substitute_tax(100), 0);
}

}  // namespace
