#include "contributions/contribution_cuts.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/numbers.h"
#include "tests/support/archive_directory.h"
#include "tests/unit/contributions/slip_fixture.h"

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALM::slip;

namespace {

using namespace MXLIBRERIA::file_numbers;

/// A worker with the pension item of 9.19 percent.
class ContributionCutsTest : public test_support::SlipFixture {
  protected:
    ContributionCutsTest() {
        scrivi(P181, 1);
        scrivi(S003, 9.19);
        scrivi(S010, 5.84);
        slip.PCTCONTR[1] = 9.19;
    }

    static void run(int yyyymm, double wage) {
        set_period(yyyymm);
        run_slip(wage);
    }
    static void run_slip(double wage) {
        svuota({Q224, Q225});
        scrivi(P240, wage);
        scrivi(P250, wage);
        item_bases_before_fund();
        employee_amounts();
    }
};

// ---- The table of the years ----

TEST_F(ContributionCutsTest, BeforeAndAfterTheLawNothingIsCut) {
    for (const int month : {202112, 202206, 202501}) {
        run(month, 1909);
        EXPECT_EQ(num(Q224), 175.44) << month;  // 1909 x 9.19 %
        EXPECT_EQ(contributions.reductions, 0) << month;
    }
}

struct Cut {
    int month;
    double wage;
    Descriptor field;
    double cut;
};

TEST_F(ContributionCutsTest, EachPeriodCutsByItsPercentInItsField) {
    const std::array<Cut, 17> rows{{
        {202201, 2000, PB06, 16},      // 0.8 %
        {202205, 2000, PB06, 16},      //
        {202207, 2000, PB06, 16},      //
        {202209, 2000, PB06, 16},      //
        {202210, 2000, PB14, 20},      // 1 %
        {202212, 2000, PB14, 20},      //
        {202301, 1923, PB26, 57.69},   // 3 %: the limit of 1923 is included
        {202301, 1924, PB14, 38.48},   // 2 %
        {202306, 1900, PB26, 57},      // 3 %
        {202306, 2500, PB14, 50},      // 2 %
        {202307, 1900, PB26, 133},     // 7 %
        {202307, 2500, PB14, 150},     // 6 %
        {202312, 1900, PB26, 133},     //
        {202401, 1900, PB26, 133},     //
        {202401, 2500, PB14, 150},     //
        {202412, 1923, PB26, 134.61},  // 7 %
        {202412, 2691, PB14, 161.46},  // 6 %
    }};
    for (const Cut& row : rows) {
        run(row.month, row.wage);
        EXPECT_EQ(num(row.field), row.cut) << row.month << " wage " << row.wage;
        EXPECT_EQ(contributions.reductions, row.cut) << row.month << " wage " << row.wage;
        const double due = arrotonda(row.wage * 9.19 / 100);
        EXPECT_NEAR(num(Q224), due - row.cut, 1e-9) << row.month << " wage " << row.wage;
        EXPECT_NEAR(num(Q225), due, 1e-9) << row.month << " wage " << row.wage;
    }
}

TEST_F(ContributionCutsTest, OnlyTheFieldOfTheSlipsOwnBandHoldsACut) {
    scrivi(PB59, 30);  // from the archive: none of the month's
    for (const Descriptor& field : {PB06, PB10, PB14, PB15, PB26, PB29}) {
        scrivi(field, 12);
    }
    run(202405, 2500);
    EXPECT_EQ(num(PB14), 150);  // 2500 x 6 %
    for (const Descriptor& field : {PB06, PB10, PB15, PB26, PB29}) {
        EXPECT_EQ(num(field), 0) << field.name();
    }
    EXPECT_EQ(num(PB59), 30);
}

TEST_F(ContributionCutsTest, AWageOf2692HasNoCut) {
    for (const int month : {202203, 202211, 202303, 202403}) {
        run(month, 2692);
        EXPECT_EQ(contributions.reductions, 0) << month;
        EXPECT_EQ(num(Q224), 247.39) << month;  // 2692 x 9.19 % = 247.3948
    }
}

TEST_F(ContributionCutsTest, TheWorkedExampleOfMay2024) {
    run(202405, 1909);
    EXPECT_EQ(num(PB26), 133.63);
    EXPECT_EQ(num(Q224), 41.81);  // 175.44 - 133.63
    EXPECT_EQ(num(Q225), 175.44);
}

TEST_F(ContributionCutsTest, WithPB05TheEmployeeHasNoCut) {
    scrivi(PB05, 1);
    run(202405, 1909);
    EXPECT_EQ(num(Q224), 175.44);
    EXPECT_EQ(num(PB26), 0);
}

TEST_F(ContributionCutsTest, TheCutIsAtMostThePensionContributionDue) {
    slip.PCTCONTR[1] = 5.84;
    run(202405, 1000);
    // 7 % of 1000 is 70, the contribution 58.40
    EXPECT_EQ(num(PB26), 58.40);
    EXPECT_EQ(num(Q224), 0);
    EXPECT_EQ(contributions.reductions, 58.40);
}

TEST_F(ContributionCutsTest, AnApprenticeIsCutOnItem8) {
    azzera({P181});
    scrivi(P188, 1);
    slip.PCTCONTR[8] = 5.84;
    run(202305, 1000);
    EXPECT_EQ(num(Q224), 28.40);  // 58.40 - 3 %
}

TEST_F(ContributionCutsTest, ANegativeContributionIsNotCut) {
    scrivi(S088, 300);
    run(202405, 100);
    EXPECT_EQ(num(Q224), -18.38);  // (100 - 300) x 9.19 %
    EXPECT_EQ(contributions.reductions, 0);
}

// ---- The earlier slip of the month ----

TEST_F(ContributionCutsTest, TheWageOfAnEarlierSlipOfTheMonthJoinsTheTest) {
    scrivi(P268, 1500);
    run(202403, 1500);
    EXPECT_EQ(num(PB26), 105);  // another month's wage: 1500 x 7 %
    slip.earlier_slip_this_month = true;
    run(202403, 1500);
    EXPECT_EQ(contributions.reductions, 0);  // 3000 together
    scrivi(P268, 500);
    run(202403, 1500);
    EXPECT_EQ(num(PB14), 90);  // 2000 together: 6 % of this slip's wage
}

// ---- Wages told apart ----

TEST_F(ContributionCutsTest, TheWageOfTheItemsApartIsShownByItself) {
    slip.items_59_60_74 = 100;
    run(202405, 1909);
    EXPECT_EQ(num(PB26), 126.63);  // (1909 - 100) x 7 %
    EXPECT_EQ(num(PB29), 7);
    EXPECT_EQ(num(Q224), 41.81);
    slip.items_59_60_74 = 100;
    run(202405, 2000);
    EXPECT_EQ(num(PB14), 114);  // 1900 x 6 %
    EXPECT_EQ(num(PB15), 6);
    slip.items_59_60_74 = 100;
    run(202203, 2000);
    EXPECT_EQ(num(PB06), 15.20);
    EXPECT_EQ(num(PB10), 0.80);
    slip.items_59_60_74 = 100;
    run(202211, 2000);
    EXPECT_EQ(num(PB14), 19);
    EXPECT_EQ(num(PB15), 1);
}

TEST_F(ContributionCutsTest, The13thPaymentHasItsOwnPartAndLeavesTheTest) {
    slip.extra_month_wage = 1800;
    scrivi(PB28, 54);           // 1800 x 3 %, from the lines
    run(202312, 3600);          // 1800 of the month and 1800 of the 13th
    EXPECT_EQ(num(PB26), 126);  // 1800 x 7 %
    EXPECT_EQ(contributions.reductions, 180);
    azzera({PB28});
    scrivi(PB16, 40);  // 2000 x 2 %
    slip.extra_month_wage = 2000;
    run(202306, 4500);
    EXPECT_EQ(num(PB14), 50);  // 2500 x 2 %
    EXPECT_EQ(contributions.reductions, 90);
    run(202306, 5000);  // a month above the limit, a 13th below it
    EXPECT_EQ(num(PB14), 0);
    EXPECT_EQ(contributions.reductions, 40);
}

TEST_F(ContributionCutsTest, In2022The13thIsCutOnTheSecondSlipOfTheMonthOnly) {
    slip.extra_month_wage = 1500;
    scrivi(PB16, 15);  // 1 %, from the lines
    run(202212, 1500);
    EXPECT_EQ(contributions.reductions, 0);
    slip.earlier_slip_this_month = true;
    scrivi(P268, 2000);
    scrivi(PB16, 15);
    run(202212, 1500);
    EXPECT_EQ(contributions.reductions, 15);
    azzera({PB16});
    scrivi(PB07, 12);  // 0.8 %
    run(202203, 1500);
    EXPECT_EQ(contributions.reductions, 12);
    scrivi(P268, 2692);
    run(202203, 1500);
    EXPECT_EQ(contributions.reductions, 0);
}

TEST_F(ContributionCutsTest, TheCutOfAllPaymentsIsAtMostTheContributionDue) {
    slip.PCTCONTR[1] = 5.84;
    slip.items_59_60_74 = 100;
    slip.extra_month_wage = 1000;
    scrivi(PB28, 30);
    run(202312, 2000);
    // 7 % of 900 = 63, of 100 = 7, 3 % of 1000 = 30: 100; due 116.80
    EXPECT_EQ(contributions.reductions, 100);
    slip.PCTCONTR[1] = 3.40;
    run(202312, 2000);  // due 68: 63 and 5
    EXPECT_EQ(num(PB26), 63);
    EXPECT_EQ(num(PB29), 5);
    EXPECT_EQ(num(PB28), 0);
    EXPECT_EQ(num(Q224), 0);
}

// ---- Wages told apart, from the lines of the slip ----

class SlipLinesApartTest : public ContributionCutsTest {
  protected:
    SlipLinesApartTest() {
        archive_.define(kPayItems, "VOCI.DAT", 1500);
        write_items();
        MXLIBRERIA::FAIOPEN(kPayItems);
    }

    static std::string item(double social_class, const std::string& token) {
        area(Area::FOTX) = test_support::empty_record(Area::FOTX, 1500);
        scrivi(Z014, social_class);
        scrivi(Z051, token);
        return area(Area::FOTX);
    }
    /// Items 1 to 80: ordinary ones, 70 a 13th payment, 71 the same outside contributions.
    void write_items() const {
        std::string bytes;
        for (int code = 1; code <= 80; ++code) {
            const bool counted = code == 70 || code == 71;
            bytes += item(code == 71 ? 0 : 1, counted ? ".Q164" : ".P208");
        }
        archive_.write("VOCI.DAT", bytes);
    }
    static void line(std::size_t number, int code, double quantity, double rate) {
        const auto digits = [](double value, std::size_t width) {
            return zeri_a_sinistra(testo_numero(std::round(value)), width);
        };
        const std::string text = " " + digits(code, 3) + digits(quantity * 100, 13) +
                                 digits(rate * 100000, 13) + std::string(5, ' ');
        slip.RIGHECEDOLINO[0].replace((number - 1) * 35, 35, text);
        slip.RIGHECEDOLINO[0].replace(number * 35, 35, " 999" + std::string(31, ' '));
    }

    test_support::ArchiveDirectory archive_;
};

TEST_F(SlipLinesApartTest, TheCutIsTakenFromTheLinesOfTheSlip) {
    line(1, 1, 26, 70);    // 1820 of the month
    line(2, 59, 2, 10.5);  // 29 apart
    line(3, 60, 1, 4);
    line(4, 74, 0.5, 8);
    line(5, 70, 12, 150);  // 1800 of the 13th
    line(6, 71, 12, 33);   // outside contributions
    set_period(202312);
    scrivi(P240, 3649);
    item_bases_before_fund();
    item_bases_after_fund();
    employee_amounts();
    // 13th tested by itself: 1800 x 3 % = 54. Month 3649 - 1800 = 1849, of which 29 apart:
    // 1820 x 7 % = 127.40, 29 x 7 % = 2.03. Due: 3649 x 9.19 % = 335.3431
    EXPECT_EQ(num(PB26), 127.40);
    EXPECT_EQ(num(PB29), 2.03);
    EXPECT_EQ(num(PB28), 54);
    EXPECT_NEAR(contributions.reductions, 183.43, 1e-9);
    EXPECT_EQ(num(Q224), 151.91);  // 335.34 - 183.43
    EXPECT_EQ(num(Q225), 335.34);
}

TEST_F(SlipLinesApartTest, In2024TheExtraMonthsHaveNoCut) {
    line(1, 70, 12, 150);
    set_additional(202412);
    scrivi(P240, 1800);
    item_bases_before_fund();
    item_bases_after_fund();
    employee_amounts();
    EXPECT_EQ(contributions.reductions, 0);
    EXPECT_EQ(num(Q224), 165.42);  // 1800 x 9.19 %
}

TEST_F(SlipLinesApartTest, ASlipOfThe13thAloneIsCutByItsOwnAmountIn2023) {
    line(1, 70, 12, 150);
    set_additional(202312);
    scrivi(P240, 1800);
    item_bases_before_fund();
    item_bases_after_fund();
    employee_amounts();
    EXPECT_EQ(contributions.reductions, 54);  // 3 %
    line(1, 70, 12, 200);
    scrivi(P240, 2400);
    svuota({Q224, Q225});
    item_bases_before_fund();
    item_bases_after_fund();
    employee_amounts();
    EXPECT_EQ(contributions.reductions, 48);  // 2 %
}

// ---- Half of the employee's share ----

TEST_F(ContributionCutsTest, HalfTheShareIsOwedInsteadOfThePensionItem) {
    scrivi(PB05, 1);
    for (const int kind : {1, 2}) {
        scrivi(PB20, kind);
        run(202405, 2000);
        EXPECT_EQ(num(PB21), 91.90);  // 9.19 / 2 % of 2000
        EXPECT_EQ(num(Q224), 91.90);
        EXPECT_EQ(num(Q225), 91.90);
        EXPECT_EQ(contributions.reductions, 0);
    }
}

TEST_F(ContributionCutsTest, OtherItemsStayBesideTheHalfShare) {
    scrivi(PB05, 1);
    scrivi(PB20, 1);
    scrivi(P183, 1);
    slip.PCTCONTR[3] = 0.30;
    run(202405, 2000);
    EXPECT_EQ(num(Q224), 97.90);  // 91.90 + 2000 x 0.30 %
}

TEST_F(ContributionCutsTest, TheHalfShareIsTakenOnTheRateLessTheCut) {
    scrivi(PB20, 1);
    struct Half {
        int month;
        double wage;
        double share;
    };
    const std::array<Half, 8> rows{{
        {202206, 2000, 91.90},   // no cut: 4.595 %
        {202203, 2000, 91.90},   // the form of early 2022 is not taken off
        {202211, 2000, 71.90},   // (9.19 - 2) / 2 = 3.595 %
        {202305, 2500, 89.88},   // 3.595 % = 89.875
        {202305, 1800, 55.71},   // (9.19 - 3) / 2 = 3.095 %
        {202307, 2500, 39.88},   // (9.19 - 6) / 2 = 1.595 % = 39.875
        {202307, 1800, 19.71},   // (9.19 - 7) / 2 = 1.095 %
        {202405, 3000, 137.85},  // no cut above the limits: 4.595 %
    }};
    for (const Half& row : rows) {
        run(row.month, row.wage);
        EXPECT_EQ(num(PB21), row.share) << row.month << " wage " << row.wage;
        EXPECT_EQ(num(Q224), row.share) << row.month << " wage " << row.wage;
    }
}

TEST_F(ContributionCutsTest, TheShareOfTheItemsApartIsAddedToTheHalf) {
    scrivi(PB20, 1);
    slip.items_59_60_74 = 100;
    run(202405, 2000);
    EXPECT_EQ(num(PB15), 6);      // 100 x 6 %
    EXPECT_EQ(num(PB21), 31.90);  // (9.19 - 6) / 2 % of 2000
    EXPECT_EQ(num(Q224), 37.90);
}

TEST_F(ContributionCutsTest, AnApprenticesHalfShareReplacesItem8) {
    scrivi(PB20, 2);
    scrivi(PB05, 1);
    scrivi(P045, 5);
    azzera({P181});
    scrivi(P188, 1);
    slip.PCTCONTR[8] = 5.84;
    run(202405, 1000);
    EXPECT_EQ(num(PB21), 29.20);
    EXPECT_EQ(num(Q224), 29.20);
}

TEST_F(ContributionCutsTest, WhatTheHalvesLeaveOfThePensionItemIsTheCut) {
    scrivi(PB20, 1);
    run(202405, 1800);
    // due 165.42; half of 9.19 - 7 percent is 19.71 for the employee and as much for PB21
    EXPECT_EQ(num(Q224), 19.71);
    EXPECT_NEAR(contributions.reductions, 126, 1e-9);  // 7 % of 1800
    EXPECT_EQ(num(Q225), 145.71);
    scrivi(PB05, 1);
    run(202405, 2692);
    // due 247.39; the halves of 123.6974 are 123.70 each: a cent too much
    EXPECT_EQ(num(Q224), 123.70);
    EXPECT_NEAR(contributions.reductions, -0.01, 1e-9);
}

TEST_F(ContributionCutsTest, ACutLargerThanTheRateLeavesNoHalf) {
    scrivi(PB20, 1);
    scrivi(P045, 5);
    azzera({P181});
    scrivi(P188, 1);
    slip.PCTCONTR[8] = 5.84;
    run(202405, 2000);  // 6 points off 5.84 percent
    EXPECT_EQ(num(PB21), 0);
    EXPECT_EQ(num(Q224), 0);
}

// ---- Relief of mothers ----

class MothersReliefTest : public ContributionCutsTest {
  protected:
    MothersReliefTest() {
        scrivi(PB05, 1);
        scrivi(PB20, 3);
        scrivi(PB85, 3000);
        scrivi(T013, "90000000022");
    }
};

TEST_F(MothersReliefTest, TheWholePensionShareIsTakenOffUpTo250) {
    run(202402, 2000);
    EXPECT_EQ(num(PB21), 183.80);
    EXPECT_EQ(num(QA29), 183.80);
    EXPECT_EQ(num(Q224), 0);
    EXPECT_EQ(num(Q225), 0);
    run(202402, 4000);
    EXPECT_EQ(num(PB21), 250);
    EXPECT_EQ(num(QA29), 433.80);
    EXPECT_EQ(num(Q224), 117.60);  // 367.60 - 250
    EXPECT_EQ(num(Q225), 117.60);
}

TEST_F(MothersReliefTest, ApprenticesAreRelievedAtTheirRate) {
    scrivi(P045, 5);
    run(202401, 1000);
    EXPECT_EQ(num(PB21), 58.40);
}

TEST_F(MothersReliefTest, TheReliefEndsWithItsYearlyAmount) {
    scrivi(QA29, 3000);
    run(202402, 2000);
    EXPECT_EQ(num(PB21), 0);
    EXPECT_EQ(num(Q224), 183.80);
    EXPECT_EQ(num(QA29), 3000);
}

TEST_F(MothersReliefTest, APartOfTheMonthHasItsDaysOf250) {
    scrivi(P013, "16022024");
    run(202402, 4000);
    EXPECT_EQ(num(PB21), 112.90);  // 250 / 31 x 14 = 112.903
    scrivi(P013, "16022020");
    scrivi(P017, "10022024");
    run(202402, 4000);
    EXPECT_EQ(num(PB21), 80.65);  // 250 / 31 x 10 = 80.645
    scrivi(P013, "05022024");
    run(202402, 4000);
    EXPECT_EQ(num(PB21), 48.39);  // 250 / 31 x 6 = 48.387
    scrivi(P014, "01012020");
    run(202402, 4000);
    EXPECT_EQ(num(PB21), 80.65);  // the later start date holds
}

TEST_F(MothersReliefTest, EachCompanyHasItsMonths) {
    struct Window {
        const char* company;
        int last;
    };
    for (const Window& row : {Window{"90000000022", 202402}, Window{"11111111111", 202402},
                              Window{"90000000011", 202402}, Window{"90000000077", 202402},
                              Window{"90000000088", 202402}, Window{"90000000099", 202404}}) {
        scrivi(T013, row.company);
        // Into 2025: month and year are no number of digits, 012025 is none of 012024 to 042024.
        for (int month = 202310; month <= 202506; month = next_month(month)) {
            azzera({PB21, QA29});
            run(month, 2000);
            const bool relieved = month >= 202401 && month <= row.last;
            EXPECT_EQ(num(PB21), relieved ? 183.80 : 0) << row.company << " " << month;
        }
    }
}

TEST_F(MothersReliefTest, OtherCompaniesAndEmployeesHaveNone) {
    scrivi(T013, "12345678901");
    run(202402, 2000);
    EXPECT_EQ(num(PB21), 0);
    scrivi(T013, "90000000022");
    scrivi(PB20, 0);
    run(202402, 2000);
    EXPECT_EQ(num(PB21), 0);
}

TEST_F(MothersReliefTest, TheArchivesFiguresAreWantedInTheWindowAndEmptiedAfterIt) {
    EXPECT_FALSE(archived_relief_wanted());
    scrivi(PC16, 1);
    set_period(202402);
    EXPECT_TRUE(archived_relief_wanted());
    store_archived_relief({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(num(PB23), 1);
    EXPECT_EQ(num(PB59), 2);
    EXPECT_EQ(num(PB60), 3);
    EXPECT_EQ(num(PB88), 4);
    EXPECT_EQ(num(PB89), 5);
    EXPECT_EQ(num(PB90), 6);
    run(202402, 2000);
    EXPECT_EQ(num(PB23), 1);
    run(202403, 2000);
    EXPECT_FALSE(archived_relief_wanted());
    for (const Descriptor& field : {PB23, PB59, PB60, PB88, PB89, PB90}) {
        EXPECT_EQ(num(field), 0);
    }
}

}  // namespace
