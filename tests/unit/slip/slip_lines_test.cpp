// The walk of the slip's lines: table, evaluation, write-back, accumulators, year-end carry.

#include "slip_fixture.h"

namespace slip_tests {
namespace {

class Lines : public SlipTest {};

// ---- The table ----

TEST_F(Lines, TwentyFiveLinesAPiece) {
    set_slip_line(1, "*001");
    set_slip_line(25, "*025");
    set_slip_line(26, "*026");
    set_slip_line(100, "*100");
    EXPECT_EQ(slip.RIGHECEDOLINO[0].substr(0, 4), "*001");
    EXPECT_EQ(slip.RIGHECEDOLINO[0].substr(840, 4), "*025");
    EXPECT_EQ(slip.RIGHECEDOLINO[1].substr(0, 4), "*026");
    EXPECT_EQ(slip.RIGHECEDOLINO[3].substr(840, 4), "*100");
    EXPECT_EQ(slip_line(26).substr(0, 4), "*026");
    EXPECT_EQ(slip.RIGHECEDOLINO[0].size(), 875U);
}

TEST_F(Lines, TheTableComesFromTheRecordAndGoesBack) {
    dictionary();
    scrivi(Q401, line_of(1, 26, 70.5));
    scrivi(Q500, line_of(7, 1, 2));
    load_slip_table();
    EXPECT_EQ(slip_line(1), line_of(1, 26, 70.5));
    EXPECT_EQ(slip_line(100), line_of(7, 1, 2));
    set_slip_line(2, line_of(3, 4, 5));
    store_slip_table();
    EXPECT_EQ(testo(dopo(Q401, 1)), line_of(3, 4, 5));
    EXPECT_EQ(testo(Q500), line_of(7, 1, 2));
}

TEST_F(Lines, NumbersOfALine) {
    EXPECT_EQ(line_code("*012"), 12);
    EXPECT_EQ(line_code("* 12"), 12);
    EXPECT_EQ(line_code("*   "), 0);
    EXPECT_EQ(line_code("*A12"), 0);
    EXPECT_EQ(line_code("*1E2"), 1);
    const std::string line = line_of(1, 12.5, 3.14159);
    EXPECT_DOUBLE_EQ(line_quantity(line), 1250);
    EXPECT_DOUBLE_EQ(line_rate(line), 3.14159);
    EXPECT_DOUBLE_EQ(line_quantity("*0010000000001X34"), 1);  // ends at the first character
    EXPECT_DOUBLE_EQ(line_quantity("*0010000000001.50"), 1);
    EXPECT_DOUBLE_EQ(line_quantity("*001-000000001250"), -1250);
    EXPECT_DOUBLE_EQ(line_quantity("*001ABCDEFGHIJKLM"), 0);
}

// ---- Evaluation ----

TEST_F(Lines, QuantityByRate) {
    item(1, {{Z013, 1}, {Z014, 1}});
    evaluate({line_of(1, 26, 70.5)});
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, 1833);  // 26 x 70.50
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 1833);
    EXPECT_DOUBLE_EQ(num(P240), 1833);
    EXPECT_EQ(slip_line(1), line_of(1, 26, 70.5));  // mark and last five characters stay
}

TEST_F(Lines, AFormulaSetsTheRate) {
    dictionary();
    scrivi(P208, 10.12345);
    item(2, {}, {".P208", "*1.15", "=CU"});
    evaluate({line_of(2, 8, 99)});
    // 10.12345 x 1.15 = 11.6419675: 11.64197; 8 x 11.64197 = 93.13576
    EXPECT_DOUBLE_EQ(rate_in(1), 11.64197);
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, 93.14);
    EXPECT_EQ(slip_line(1), "*00200000000008000000001164197ABCDE");
}

TEST_F(Lines, AFormulaSetsTheQuantity) {
    item(2, {}, {".12.5", "=OG", ".-3", "=CU"});
    evaluate({line_of(2, 0, 0)});
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, -37.5);                       // 12.5 x -3
    EXPECT_EQ(slip_line(1), "*0020000000001250-000000300000ABCDE");  // the sign in front
}

TEST_F(Lines, APlainQuantityStaysAsItStands) {
    item(3, {{Z016, 7}}, {".OG", "=MEM0"});
    lines({"*0030000000001234" + std::string(13, '9') + "     "});
    evaluate_lines();
    EXPECT_DOUBLE_EQ(valore(formula_registers.MEM[1]), 1234);
    EXPECT_EQ(slip_line(1).substr(4, 13), "0000000001234");
    EXPECT_EQ(slip_line(1).substr(17, 13), "0000000000000");  // no rate
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, 0);
}

TEST_F(Lines, LettersInTheQuantityEndTheNumber) {
    item(1, {});
    lines({"*00100000000002X0" + std::string("0000001000000") + "     "});
    evaluate_lines();
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, 0.2);  // 2 hundredths by 10
}

TEST_F(Lines, TheRateIsWorkedBackFromARoundedAmount) {
    item(1, {{Z029, 1}});
    evaluate({line_of(1, 3, 3.5)});
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, 11);  // 10.5 in whole euro
    EXPECT_DOUBLE_EQ(rate_in(1), 3.66667);   // 11 / 3
}

TEST_F(Lines, NoQuantityNoRate) {
    item(1, {{Z029, 1}});
    evaluate({line_of(1, 0, 3.5)});
    EXPECT_DOUBLE_EQ(rate_in(1), 0);
}

// ---- The walk ----

TEST_F(Lines, NineHundredNinetyNineInFrontEndsAtOnce) {
    item(1, {});
    lines({});
    set_slip_line(2, line_of(1, 1, 10));
    evaluate_lines();
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 0);
}

TEST_F(Lines, AnEmptyLineEndsTheWalk) {
    item(1, {});
    evaluate({line_of(1, 1, 10), line_of(0, 0, 0), line_of(1, 1, 10)});
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 10);
    EXPECT_EQ(slip.position, 36);
}

TEST_F(Lines, AHundredLinesWithoutAnEndAreAllTaken) {
    item(1, {});
    evaluate(std::vector<std::string>(100, line_of(1, 1, 10)));
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 1000);
    EXPECT_EQ(slip.piece, 6);
    EXPECT_FALSE(slip.last_line);
}

TEST_F(Lines, ItemsThatAreMissingOrDeletedAreSkipped) {
    item(1, {});
    item(2, {{Z049, 99}});
    evaluate({line_of(9, 1, 10), line_of(2, 1, 10), line_of(1, 1, 10)});
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 10);
    EXPECT_EQ(slip_line(2), line_of(2, 1, 10));
}

TEST_F(Lines, ANoteIsRemembered) {
    item(7, {{Z048, 1}});
    evaluate({line_of(7, 1, 10)});
    EXPECT_EQ(slip.note_item, "007");
    EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 0);
}

struct LimitRow {
    Descriptor limit;
    std::string name;
};

TEST_F(Lines, AnItemWaitsForItsLimit) {
    dictionary();
    for (const LimitRow& row :
         {LimitRow{P855, "P855"}, LimitRow{P953, "P953"}, LimitRow{P954, "P954"}}) {
        slip = Slip{};
        item(1, {}, {"." + row.name, "=MEM0"});
        item(2, {}, {".5", "=" + row.name});
        evaluate({line_of(1, 1, 10), line_of(2, 1, 3), line_of(1, 1, 10)});
        // The first line finds no limit; the second sets it; the third runs.
        EXPECT_DOUBLE_EQ(slip.TOTCOMPETENZE, 13) << row.name;
        EXPECT_DOUBLE_EQ(num(row.limit), 5) << row.name;
    }
}

TEST_F(Lines, ItemsThatDateAYearlyFigure) {
    dictionary();
    for (const char* target : {"=Q711", "=Q712", "=Q713"}) {
        scrivi(Q743, "");
        item(1, {}, {".5", target});
        evaluate({line_of(1, 1, 10)});
        EXPECT_EQ(testo(Q743), "052024") << target;
    }
}

TEST_F(Lines, AnItemThatSetsTheBase) {
    dictionary();
    run_tables.F041 = 1;
    item(1, {{Z013, 1}, {Z014, 1}});
    item(2, {}, {".700", "=P240"});
    evaluate({line_of(1, 1, 1000), line_of(2, 1, 500)});
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE1, 500);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE2, 500);
    EXPECT_DOUBLE_EQ(slip.IMPSOCIALE3, 500);
    EXPECT_DOUBLE_EQ(num(P240), 500);
}

// ---- Lines whose amount was prepared ----

TEST_F(Lines, PreparedLinesAreNotRunThroughTheFormula) {
    item(1, {}, {".99", "=CU"});
    slip.line_mode = 1;
    evaluate({line_of(1, 2, 10)});
    EXPECT_DOUBLE_EQ(num(P242), 20);
    EXPECT_DOUBLE_EQ(slip.IMPORTOVOCE, 20);
    slip.line_mode = 2;
    evaluate({line_of(1, 3, 10)});
    EXPECT_DOUBLE_EQ(num(P243), 30);
    EXPECT_DOUBLE_EQ(num(P238), 3);
    slip.line_mode = 3;
    scrivi(P233, 4);
    evaluate({line_of(1, 5, 10)});
    EXPECT_DOUBLE_EQ(num(P243), 80);  // 30 + 50
    EXPECT_DOUBLE_EQ(num(P239), 9);   // 4 + 5
}

// ---- Accumulators ----

struct TotalRow {
    double kind;
    double sign;
    double first;
    double second;
    double third;
};
class Totals : public Lines, public ::testing::WithParamInterface<TotalRow> {};

TEST_P(Totals, ByZ021) {
    item(1, {{Z021, GetParam().kind}, {Z011, GetParam().sign}});
    evaluate({line_of(1, 1, 10)});
    EXPECT_DOUBLE_EQ(slip.totals_Z021[1], GetParam().first);
    EXPECT_DOUBLE_EQ(slip.totals_Z021[2], GetParam().second);
    EXPECT_DOUBLE_EQ(slip.totals_Z021[3], GetParam().third);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Totals,
                         ::testing::Values(TotalRow{0, 0, 0, 0, 0}, TotalRow{1, 0, 10, 0, 0},
                                           TotalRow{1, 1, -10, 0, 0}, TotalRow{1, 2, 0, 0, 0},
                                           TotalRow{2, 0, 0, 10, 0}, TotalRow{3, 0, 0, -10, 0},
                                           TotalRow{4, 0, 0, 0, 10}, TotalRow{5, 0, 0, 10, 0},
                                           TotalRow{6, 0, 0, 0, 0}));

struct SeveranceRow {
    double kind;
    double sign;
    double base;  ///< of an amount of 100 with a share of the base elements of 0.8
};
class SeveranceBase : public Lines, public ::testing::WithParamInterface<SeveranceRow> {};

TEST_P(SeveranceBase, ByZ020) {
    slip.QUOTABASE = 0.8;
    item(1, {{Z020, GetParam().kind}, {Z011, GetParam().sign}});
    evaluate({line_of(1, 1, 100)});
    EXPECT_DOUBLE_EQ(num(P260), GetParam().base);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SeveranceBase,
                         ::testing::Values(SeveranceRow{0, 0, 0}, SeveranceRow{1, 0, 80},
                                           SeveranceRow{1, 1, -80}, SeveranceRow{1, 2, 80},
                                           SeveranceRow{2, 0, -100}, SeveranceRow{2, 1, -100},
                                           SeveranceRow{3, 0, 100}, SeveranceRow{3, 1, -100},
                                           SeveranceRow{4, 0, 80}, SeveranceRow{4, 1, -80},
                                           SeveranceRow{5, 0, -80}, SeveranceRow{5, 1, -80},
                                           SeveranceRow{6, 0, 0}, SeveranceRow{7, 0, 0},
                                           SeveranceRow{8, 0, 0}, SeveranceRow{9, 0, 0}));

TEST_F(Lines, SeveranceKindSevenCountsWithP055) {
    slip.QUOTABASE = 0.8;
    scrivi(P055, 1);
    item(1, {{Z020, 7}, {Z045, 2}});
    evaluate({line_of(1, 1, 100)});
    EXPECT_DOUBLE_EQ(num(P260), 80);
    scrivi(P055, 0.0);
    evaluate({line_of(1, 1, 100)});
    EXPECT_DOUBLE_EQ(num(P260), 80);
    EXPECT_DOUBLE_EQ(slip.severance_buckets[2], 100);
}

TEST_F(Lines, SeveranceTotalsAndBuckets) {
    item(1, {{Z020, 8}});
    item(2, {{Z020, 9}});
    item(3, {{Z045, 5}});
    item(4, {{Z045, 6}});
    evaluate({line_of(1, 1, 10), line_of(2, 1, 20), line_of(3, 1, 30), line_of(4, 1, 40)});
    EXPECT_DOUBLE_EQ(slip.severance_buckets[8], 10);
    EXPECT_DOUBLE_EQ(slip.severance_buckets[9], 20);
    EXPECT_DOUBLE_EQ(slip.severance_buckets[5], 30);
    EXPECT_DOUBLE_EQ(slip.severance_buckets[6], 0);
}

TEST_F(Lines, AMonthThatDoesNotCountGivesNoSeverance) {
    scrivi(P013, "20052024");  // 12 days of May
    scrivi(T073, 15);
    item(1, {{Z020, 1}});
    item(3, {{Z020, 3}});
    evaluate({line_of(1, 1, 100), line_of(3, 1, 7)});
    EXPECT_DOUBLE_EQ(num(P260), 7);  // kind 3 counts in every month
    scrivi(T073, 12);
    evaluate({line_of(1, 1, 100)});
    EXPECT_DOUBLE_EQ(num(P260), 107);
}

struct ServiceRow {
    std::string hired;
    std::string counted_from;
    std::string left;
    double days;
};
class ServiceDays : public Lines, public ::testing::WithParamInterface<ServiceRow> {};

TEST_P(ServiceDays, OfMay) {
    scrivi(P013, GetParam().hired);
    scrivi(P014, GetParam().counted_from);
    scrivi(P017, GetParam().left);
    EXPECT_TRUE(month_counts(GetParam().days));
    EXPECT_FALSE(month_counts(GetParam().days + 1));
}

INSTANTIATE_TEST_SUITE_P(
    Dates, ServiceDays,
    ::testing::Values(ServiceRow{"01012020", "00000000", "00000000", 31},
                      ServiceRow{"10052024", "00000000", "00000000", 22},    // 31 + 1 - 10
                      ServiceRow{"10052023", "00000000", "00000000", 31},    // another year
                      ServiceRow{"10052024", "01012020", "00000000", 31},    // counted from before
                      ServiceRow{"01012020", "17052024", "00000000", 15},    // 31 + 1 - 17
                      ServiceRow{"01012020", "00000000", "20052024", 20},    // 31 - (31 - 20)
                      ServiceRow{"10052024", "00000000", "20052024", 11}));  // 22 - 11

// ---- Year-end carry ----

class Carry : public Lines {
  protected:
    void SetUp() override {
        Lines::SetUp();
        company.DIVISOREANNO = -12.5;  // the share comes out positive
        scrivi(T176, 1);
        scrivi(P090, 13);
        slip.PAGAORARIA = 100;
        item(1, {{Z050, 1}});
        item(2, {});
        item(3, {{Z014, 1}});
        item(4, {{Z050, 1}, {Z014, 1}});
    }
};

TEST_F(Carry, AnOrdinarySlipSplitsTheAmount) {
    scrivi(Q358, 200);
    scrivi(Q363, 5);
    scrivi(Q360, 6);
    evaluate({line_of(1, 1, 300)});
    // Q357 = 100 x 13; share = (1300 + 200 + 300) / 12.5 = 144, below 300
    EXPECT_DOUBLE_EQ(num(Q357), 1300);
    EXPECT_DOUBLE_EQ(num(P458), 144);
    EXPECT_DOUBLE_EQ(num(P459), 156);
    EXPECT_DOUBLE_EQ(num(Q360), 150);  // 6 + 144
    EXPECT_DOUBLE_EQ(num(Q363), 161);  // 5 + 156
    EXPECT_DOUBLE_EQ(num(Q358), 500);  // 200 + 300
    EXPECT_DOUBLE_EQ(num(Q359), 0);    // formed on the last slip only
}

TEST_F(Carry, TheShareIsAtMostTheAmount) {
    evaluate({line_of(1, 1, 50)});
    // (1300 + 50) / 12.5 = 108: all of the 50 is exempt
    EXPECT_DOUBLE_EQ(num(P458), 50);
    EXPECT_DOUBLE_EQ(num(P459), 0);
}

TEST_F(Carry, ACompanyWithItsOwnDivisor) {
    scrivi(T019, "1");
    evaluate({line_of(1, 1, 300)});
    EXPECT_DOUBLE_EQ(num(Q357), 0);  // pay by the hour: P240
    scrivi(P050, 1);
    evaluate({line_of(1, 1, 300)});
    EXPECT_DOUBLE_EQ(num(Q357), 100);  // PAGAORARIA
    EXPECT_DOUBLE_EQ(num(P458), 8);    // 100 / 12.5
}

TEST_F(Carry, WithoutADivisorAllIsTaxed) {
    company.DIVISOREANNO = 0;
    evaluate({line_of(1, 1, 300)});
    EXPECT_DOUBLE_EQ(num(P458), 0);
    EXPECT_DOUBLE_EQ(num(P459), 300);
}

TEST_F(Carry, NothingWithoutT176) {
    scrivi(T176, 0.0);
    evaluate({line_of(1, 1, 300)});
    EXPECT_DOUBLE_EQ(num(Q358), 0);
    EXPECT_DOUBLE_EQ(num(P458), 0);
}

TEST_F(Carry, TheLastSlipFormsTheYearlyBaseOnce) {
    slip.CEDOLINOFINALE = true;
    scrivi(Q003, 20000);
    scrivi(Q363, 100);
    scrivi(Q358, 300);
    evaluate({line_of(3, 1, 1500), line_of(4, 1, 40), line_of(4, 1, 60), line_of(2, 1, 1),
              line_of(2, 1, 1)});
    // At the first item of the class: 20000 + 1500 of line 1 + 40 of its own - 100 + 300
    EXPECT_DOUBLE_EQ(num(Q359), 21740);
    EXPECT_DOUBLE_EQ(num(Q358), 400);  // 300 + 40 + 60
}

TEST_F(Carry, TheLastLineSettlesTheYear) {
    slip.CEDOLINOFINALE = true;
    scrivi(Q003, 5000);
    scrivi(Q360, 150);
    evaluate({line_of(1, 1, 600), line_of(2, 1, 1)});
    // Q359 = 5000; 5000 / 12.5 = 400, at most Q358 600, less 150 exempted before = 250
    EXPECT_DOUBLE_EQ(num(Q359), 5000);
    EXPECT_DOUBLE_EQ(num(Q362), 250);
    EXPECT_DOUBLE_EQ(num(P458), 250);
    EXPECT_DOUBLE_EQ(num(P459), 350);  // the line's 600 - 250
    EXPECT_DOUBLE_EQ(num(Q360), 400);  // 150 + 250
    EXPECT_DOUBLE_EQ(num(Q363), 200);  // 600 - 400
    EXPECT_DOUBLE_EQ(num(Q361), 0);
}

TEST_F(Carry, TooMuchExemptedIsTakenBack) {
    slip.CEDOLINOFINALE = true;
    scrivi(Q003, 5000);
    scrivi(Q360, 450);
    evaluate({line_of(1, 1, 600), line_of(2, 1, 1)});
    EXPECT_DOUBLE_EQ(num(Q361), -50);  // 400 - 450
    EXPECT_DOUBLE_EQ(num(Q362), 0);
    EXPECT_DOUBLE_EQ(num(Q360), 400);
    EXPECT_DOUBLE_EQ(num(Q363), 200);
}

TEST_F(Carry, TheTargetIsAtMostTheYearsAmount) {
    slip.CEDOLINOFINALE = true;
    scrivi(Q003, 50000);
    evaluate({line_of(1, 1, 600), line_of(2, 1, 1)});
    EXPECT_DOUBLE_EQ(num(Q362), 600);  // 50000 / 12.5 = 4000
    EXPECT_DOUBLE_EQ(num(Q363), 0);
}

TEST_F(Carry, T464SwitchesTheSettlementOff) {
    slip.CEDOLINOFINALE = true;
    scrivi(T464, 1);
    scrivi(Q003, 5000);
    evaluate({line_of(1, 1, 600), line_of(2, 1, 1)});
    EXPECT_DOUBLE_EQ(num(T176), 0);
    EXPECT_DOUBLE_EQ(num(Q359), 0);
    EXPECT_DOUBLE_EQ(num(Q358), 600);
    EXPECT_DOUBLE_EQ(num(Q362), 0);
}

TEST_F(Carry, WithoutADivisorNothingIsSettled) {
    slip.CEDOLINOFINALE = true;
    company.DIVISOREANNO = 0;
    scrivi(Q003, 5000);
    evaluate({line_of(1, 1, 600), line_of(2, 1, 1)});
    EXPECT_DOUBLE_EQ(num(Q362), 0);
    EXPECT_DOUBLE_EQ(num(Q360), 0);
}

TEST_F(Carry, TheEndMayStandInTheNextPiece) {
    slip.CEDOLINOFINALE = true;
    scrivi(Q003, 5000);
    std::vector<std::string> all(24, line_of(2, 1, 1));
    all.push_back(line_of(1, 1, 600));
    evaluate(all);
    EXPECT_EQ(slip.piece, 3);
    EXPECT_EQ(slip.position, 1);
    EXPECT_DOUBLE_EQ(num(Q362), 400);  // settled on line 25
}

TEST_F(Carry, TheHundredthLineSettlesNothing) {
    slip.CEDOLINOFINALE = true;
    scrivi(Q003, 5000);
    std::vector<std::string> all(99, line_of(2, 1, 1));
    all.push_back(line_of(1, 1, 600));
    evaluate(all);
    EXPECT_DOUBLE_EQ(num(Q358), 600);
    EXPECT_DOUBLE_EQ(num(Q362), 0);  // no end of the table follows it
}

}  // namespace
}  // namespace slip_tests
