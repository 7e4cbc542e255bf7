// Walks over the lines for one purpose each.

#include <array>

#include "slip_fixture.h"

namespace slip_tests {
namespace {

class Walks : public SlipTest {};

TEST_F(Walks, LinesOfItemsOnFileInTheirOrder) {
    item(1, {});
    item(2, {{Z049, 99}});
    item(3, {});
    lines({line_of(1, 1, 1), line_of(0, 0, 0), "   ", line_of(2, 1, 1), line_of(9, 1, 1),
           line_of(3, 1, 1)});
    std::vector<std::pair<int, int>> seen;
    walk_lines([&](int number, int code, const std::string&) {
        seen.emplace_back(number, code);
        return true;
    });
    const std::vector<std::pair<int, int>> expected{{1, 1}, {6, 3}};
    EXPECT_EQ(seen, expected);
}

TEST_F(Walks, TheVisitorEndsTheWalk) {
    item(1, {});
    lines(std::vector<std::string>(5, line_of(1, 1, 1)));
    int calls = 0;
    walk_lines([&](int, int, const std::string&) { return ++calls < 2; });
    EXPECT_EQ(calls, 2);
}

// ---- Operator's wage for the declaration ----

class OperatorWage : public Walks {
  protected:
    void SetUp() override {
        Walks::SetUp();
        scrivi(T063, 173);
        scrivi(P013, "01012020");
        item(1, {});
        item(2, {});
        item(10, {}, {}, "RT");
        item(11, {{Z011, 1}}, {}, "RT");
        item(12, {{Z011, 2}}, {}, "RT");
        item(13, {});
        lines({line_of(10, 2, 10.5), line_of(11, 1, 3), line_of(12, 1, 50), line_of(13, 1, 70)});
        scrivi(P050, 1);
        scrivi(P058, 1500);
        scrivi(P069, 100);
        scrivi(P061, 20);
        scrivi(P354, 5);
    }
    static double wage() {
        CREA_OPERATORE_RETR_EMENS();
        return num(P071);
    }
};

TEST_F(OperatorWage, NoneWhereItIsNotAsked) {
    scrivi(P757, 3);
    scrivi(P071, 9);
    EXPECT_DOUBLE_EQ(wage(), 0);
}

TEST_F(OperatorWage, MarkedLines) {
    scrivi(P757, 2);
    EXPECT_DOUBLE_EQ(wage(), 24);  // 2 x 10.50 + 3, the item that is neither left out
}

TEST_F(OperatorWage, MonthlyPay) {
    scrivi(P757, 1);
    EXPECT_DOUBLE_EQ(wage(), 1625);  // 1500 + 100 + 20 + 5
}

TEST_F(OperatorWage, PayAndMarkedLines) {
    EXPECT_DOUBLE_EQ(wage(), 1649);  // 1625 + 24
}

TEST_F(OperatorWage, MonthlyPayHasEachElementOnce) {
    scrivi(P757, 1);
    double amount = 1;
    for (const Descriptor& element :
         {P058, P060, P061, P062, P063, P064, P065, P066, P067, P069, P353, P354, P355}) {
        scrivi(element, amount);
        amount *= 2;
    }
    EXPECT_DOUBLE_EQ(wage(), 8191);  // 1 + 2 + 4 + ... + 4096
}

TEST_F(OperatorWage, MonthlyPayOfAPartTimer) {
    scrivi(P757, 1);
    scrivi(P019, 1);
    scrivi(P020, 86.5);
    EXPECT_DOUBLE_EQ(wage(), 812.5);  // 1625 / 173 x 86.5
}

TEST_F(OperatorWage, PayByTheHour) {
    scrivi(P757, 1);
    scrivi(P050, 0.0);
    scrivi(P058, 10);
    scrivi(P061, 0.0);
    scrivi(P354, 0.0);
    scrivi(P069, 346);
    EXPECT_DOUBLE_EQ(wage(), 2076);  // (10 + 346 / 173) x 173
    scrivi(P019, 1);
    scrivi(P020, 80);
    EXPECT_DOUBLE_EQ(wage(), 960);  // 12 x 80
}

TEST_F(OperatorWage, TheEmployeesOwnDivisorAndTheUsualOne) {
    scrivi(P757, 1);
    scrivi(P050, 0.0);
    scrivi(P058, 10);
    scrivi(P061, 0.0);
    scrivi(P354, 0.0);
    scrivi(P069, 0.0);
    scrivi(P891, 160);
    EXPECT_DOUBLE_EQ(wage(), 1600);
    scrivi(P891, 0.0);
    scrivi(T063, 0.0);
    EXPECT_DOUBLE_EQ(wage(), 1730);
}

TEST_F(OperatorWage, AFormulaGivesTheRateAndChangesNoField) {
    dictionary();
    scrivi(P757, 2);
    item(10, {}, {".12", "=CU", "=P123", "=OG"}, "RT");
    lines({line_of(10, 2, 1)});
    EXPECT_DOUBLE_EQ(wage(), 24);  // 2 x 12
    EXPECT_DOUBLE_EQ(num(*find_field("P123")), 0);
    EXPECT_EQ(slip_line(1), line_of(10, 2, 1));
}

TEST_F(OperatorWage, AMonthOfHiringTakesTheOrdinaryPayLine) {
    scrivi(P757, 1);
    scrivi(P013, "16052024");
    lines({line_of(1, 80, 10), line_of(2, 12, 60)});
    EXPECT_DOUBLE_EQ(wage(), 720);  // monthly pay: item 2
    scrivi(P050, 0.0);
    EXPECT_DOUBLE_EQ(wage(), 800);  // pay by the hour: item 1
    lines({line_of(2, 12, 60)});
    EXPECT_DOUBLE_EQ(wage(), 720);  // without it, item 2
}

TEST_F(OperatorWage, AMonthOfLeavingWithoutThatLineGoesByDays) {
    scrivi(P757, 1);
    set_period("290220244");
    scrivi(P017, "10022024");
    scrivi(P058, 1325);             // 1450 in all
    EXPECT_DOUBLE_EQ(wage(), 500);  // 1450 x 10 / 29
    scrivi(P014, "05022024");
    EXPECT_DOUBLE_EQ(wage(), 300);  // 1450 x 6 / 29
}

// ---- Sums for the contribution cut ----

class CutSums : public Walks {
  protected:
    void SetUp() override {
        Walks::SetUp();
        item(1, {{Z014, 1}});
        item(59, {{Z014, 1}});
        item(60, {{Z014, 1}});
        item(74, {{Z014, 1}, {Z011, 1}});
        item(80, {{Z014, 1}}, {".P208", "*Q164", "=CU"});
        item(81, {{Z014, 1}}, {".Q165", "=CU"});
        item(82, {}, {".Q164"});
        item(83, {{Z014, 1}}, {".5", "=Q164"});
        lines({line_of(1, 1, 1500), line_of(59, 2, 100), line_of(60, 1, 50.55), line_of(74, 1, 30),
               line_of(80, 1, 1200), line_of(81, 1, 800), line_of(82, 1, 9), line_of(83, 1, 9)});
        scrivi(P240, 3729);
    }
};

TEST_F(CutSums, WagesThatAreToldApart) {
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(slip.items_59_60_74, 220.55);  // 200 + 50.55 - 30
    EXPECT_DOUBLE_EQ(slip.thirteenth_wage, 1200);   // not the item of no social class, nor the one
                                                    // that stores the months
    EXPECT_DOUBLE_EQ(slip.fourteenth_wage, 800);
    EXPECT_DOUBLE_EQ(slip.extra_month_wage, 2000);
    EXPECT_DOUBLE_EQ(num(PB11), 220.55);
}

TEST_F(CutSums, AnyClassCountsButNotWhatIsNeitherEarningNorDeduction) {
    item(59, {{Z014, 3}});
    item(60, {{Z014, 1}, {Z011, 2}});
    item(74, {{Z014, 0}, {Z011, 1}});
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(slip.items_59_60_74, 200);  // item 59 alone: 2 x 100
}

TEST_F(CutSums, From2023TheFormulaTellsAnExtraMonthWhateverItsCode) {
    item(59, {{Z014, 1}}, {".Q164", "=OG"});
    item(60, {{Z014, 1}}, {".Q165", "=OG"});
    set_period("311220234");
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(slip.thirteenth_wage, 1400);    // 1200 + 200 of item 59
    EXPECT_DOUBLE_EQ(slip.fourteenth_wage, 850.55);  // 800 + 50.55 of item 60
    EXPECT_DOUBLE_EQ(slip.items_59_60_74, -30);
}

TEST_F(CutSums, In2022TheCodeTellsItems59And60And74) {
    item(59, {{Z014, 1}}, {".Q164", "=OG"});
    item(60, {{Z014, 1}}, {".Q165", "=OG"});
    set_period("311220224");
    sum_reduction_items();
    EXPECT_DOUBLE_EQ(num(PB11), 220.55);  // 200 + 50.55 - 30
    EXPECT_DOUBLE_EQ(num(PB09), 2000);    // items 80 and 81
}

// ---- The wage of the month beside them ----

class CutWage : public CutSums {
  protected:
    /// The lines let 1500.30 into the wage in cents, of which 13th and 14th 1000.30 and items 59,
    /// 60, 74 100.
    void SetUp() override {
        CutSums::SetUp();
        slip.wage_in_cents = 1500.30;
        slip.wage_of_lines = 1500;
        slip.extra_month_wage = 1000.30;
        slip.items_59_60_74 = 100;
        scrivi(P240, 1500);
    }
};

TEST_F(CutWage, IsFormedInCentsAndThenRounded) {
    set_period("311220244");
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 500);  // 1500.30 - 1000.30; from P240 it is 499.70
    EXPECT_DOUBLE_EQ(own_wage_of_the_cut(), 400);     // less the 100 of the items
    slip.extra_month_wage = 1000.79;                  // 499.51
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 500);
    slip.extra_month_wage = 1000.81;  // 499.49
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 499);
}

TEST_F(CutWage, StaysInCentsWhereP240Does) {
    set_period("311220244");
    scrivi(P169, 1);
    slip.extra_month_wage = 1000.79;
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 499.51);
}

TEST_F(CutWage, In2022LeavesTheItemsOut) {
    set_period("311220224");
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 400);  // 1500.30 - 1000.30 - 100
    EXPECT_DOUBLE_EQ(own_wage_of_the_cut(), 400);
}

TEST_F(CutWage, IsP240WhereACeilingHasReplacedTheWageOfTheLines) {
    set_period("311220244");
    scrivi(P240, 1200);
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 200);  // 1200 - 1000.30 = 199.70
    slip.extra_month_wage = 0;
    EXPECT_DOUBLE_EQ(tested_wage_of_the_cut(), 1200);
}

TEST_F(CutSums, OfTheYear2022) {
    set_period("310520224");
    sum_reduction_items();
    EXPECT_DOUBLE_EQ(num(PB11), 220.55);
    EXPECT_DOUBLE_EQ(num(PB10), 1.76);  // 220.55 x 0.8 % = 1.7644
    EXPECT_DOUBLE_EQ(num(PB09), 2000);
    EXPECT_DOUBLE_EQ(num(PB07), 16);  // 2000 x 0.8 %
    EXPECT_DOUBLE_EQ(num(PB15), 0);
}

TEST_F(CutSums, FromOctober2022) {
    set_period("311020224");
    sum_reduction_items();
    EXPECT_DOUBLE_EQ(num(PB15), 2.21);  // 220.55 x 1 %
    EXPECT_DOUBLE_EQ(num(PB16), 20);    // 2000 x 1 %
    EXPECT_DOUBLE_EQ(num(PB10), 0);
    EXPECT_DOUBLE_EQ(num(PB07), 0);
}

TEST_F(CutSums, ExtraMonthsOf2023) {
    set_period("311220234");
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(num(PB28), 36);  // thirteenth 1200, up to 1923: 3 %
    EXPECT_DOUBLE_EQ(num(PB27), 24);  // fourteenth 800
    EXPECT_DOUBLE_EQ(num(PB16), 0);
    EXPECT_DOUBLE_EQ(num(PB17), 0);
}

struct ThirteenthRow {
    double wage;
    double at_three;
    double at_two;
};

TEST_F(CutSums, LimitsOfTheThirteenthIn2023) {
    set_period("311220234");
    for (const ThirteenthRow& row :
         {ThirteenthRow{1923, 57.69, 0}, ThirteenthRow{1923.01, 0, 38.46},
          ThirteenthRow{2691.99, 0, 53.84}, ThirteenthRow{2692, 0, 0}}) {
        scrivi(PB28, 0.0);
        scrivi(PB16, 0.0);
        lines({line_of(80, 1, row.wage)});
        sum_extra_month_items();
        EXPECT_DOUBLE_EQ(num(PB28), row.at_three) << row.wage;
        EXPECT_DOUBLE_EQ(num(PB16), row.at_two) << row.wage;
    }
}

TEST_F(CutSums, NoneOnTheThirteenthFrom2024) {
    set_period("311220244");
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(num(PB28), 0);
    EXPECT_DOUBLE_EQ(num(PB16), 0);
}

TEST_F(CutSums, HalfOfTheContributionsForWhomTheyAreHalved) {
    scrivi(PB05, 1);
    scrivi(P181, 1);
    scrivi(P188, 1);
    slip.PCTCONTR[1] = 9;
    slip.PCTCONTR[3] = 5;  // switch off
    slip.PCTCONTR[8] = 1;
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(num(PB26), 75.42);  // (3729 - 220.55 - 2000) x 10 / 2 % = 75.4225
}

TEST_F(CutSums, TheHalfShareHasTheItemsThatAreTurnedOn) {
    scrivi(PB05, 1);
    slip.PCTCONTR[1] = 9;
    slip.PCTCONTR[3] = 0.3;
    slip.PCTCONTR[8] = 1;
    scrivi(P183, 1);
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(num(PB26), 2.26);  // (3729 - 220.55 - 2000) x 0.3 / 2 % = 2.2627
    scrivi(P183, 2);                    // no switch
    sum_extra_month_items();
    EXPECT_DOUBLE_EQ(num(PB26), 0);
}

// ---- Items that are a percentage on the base ----

class PercentageItems : public Walks {
  protected:
    void SetUp() override {
        Walks::SetUp();
        dictionary();
        scrivi(P240, 2000);
        scrivi(P256, 1000);
        scrivi(P031, 1);
    }
    static FieldValues fields(double fiscal_class) {
        return {{Z011, 2}, {Z017, 1}, {Z013, fiscal_class}};
    }
};

TEST_F(PercentageItems, AreRecomputedOnTheFinalBase) {
    item(30, fields(1), {".P240", "%1.5", "=OG"});
    lines({line_of(30, 15, 1)});  // as it stood on a base of 1000
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(quantity_in(1), 30);  // 2000 x 1.5 %
    EXPECT_DOUBLE_EQ(num(P256), 1015);     // 1000 + 30 - 15
}

TEST_F(PercentageItems, EveryLineOfTheCodeFollows) {
    item(30, fields(2), {".P240", "%1.5", "=OG"});
    lines({line_of(30, 15, 1), line_of(30, 10, 2)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(quantity_in(1), 30);
    EXPECT_DOUBLE_EQ(quantity_in(2), 30);
    EXPECT_DOUBLE_EQ(num(P256), 945);  // 1000 - (30 - 15) - (60 - 20)
}

TEST_F(PercentageItems, ACellMayStandBetween) {
    item(30, fields(1), {".P240", "-500", "%1", "=OG"});
    lines({line_of(30, 0, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(quantity_in(1), 15);  // (2000 - 500) x 1 %
}

TEST_F(PercentageItems, OtherItemsStay) {
    item(30, {{Z011, 0}, {Z017, 1}, {Z013, 1}}, {".P240", "%1", "=OG"});
    item(31, {{Z011, 2}, {Z017, 0}, {Z013, 1}}, {".P240", "%1", "=OG"});
    item(32, {{Z011, 2}, {Z017, 1}, {Z013, 1}, {Z016, 1}}, {".P240", "%1", "=OG"});
    item(33, fields(1), {".P240", "*2", "*1", "%1", "=OG"});
    item(34, fields(1), {".P240", "%1", "=CU"});
    item(35, fields(1), {".P250", "%1", "=OG"});
    lines({line_of(30, 1, 1), line_of(31, 1, 1), line_of(32, 1, 1), line_of(33, 1, 1),
           line_of(34, 1, 1), line_of(35, 1, 1)});
    recompute_percentage_items();
    for (int number = 1; number <= 6; ++number) {
        EXPECT_DOUBLE_EQ(quantity_in(number), 1) << number;
    }
    EXPECT_DOUBLE_EQ(num(P256), 1000);
}

TEST_F(PercentageItems, StandBehindItemsThatAreNone) {
    item(31, {{Z011, 0}, {Z017, 1}, {Z013, 1}}, {".P240", "%1", "=OG"});
    FieldValues note = fields(1);
    note.emplace_back(Z048, 1);
    item(32, note, {".P240", "%1", "=OG"});
    item(33, fields(1), {".P240", "%1.5", "=OG"});
    item(34, fields(2), {".P240", "%1", "=OG"});
    lines({line_of(31, 1, 1), line_of(32, 1, 1), line_of(33, 1, 1), line_of(34, 1, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(quantity_in(1), 1);
    EXPECT_DOUBLE_EQ(quantity_in(2), 1);   // a note is never worked out
    EXPECT_DOUBLE_EQ(quantity_in(3), 30);  // 2000 x 1.5 %
    EXPECT_DOUBLE_EQ(quantity_in(4), 20);  // 2000 x 1 %
    EXPECT_DOUBLE_EQ(num(P256), 1010);     // 1000 + (30 - 1) - (20 - 1)
}

TEST_F(PercentageItems, TheSumQ100FollowsTheChange) {
    FieldValues summed = fields(1);
    summed.emplace_back(Z026, 1);
    item(30, summed, {".P240", "%1.5", "=OG"});
    scrivi(Q100, 100);
    lines({line_of(30, 15, 1), line_of(30, 15, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(num(Q100), 130);  // 100 + twice (30 - 15)
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(num(Q100), 130);
}

TEST_F(PercentageItems, OfNoFiscalClassLeaveTheTaxable) {
    item(30, fields(0), {".P240", "%1.5", "=OG"});
    lines({line_of(30, 15, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(quantity_in(1), 30);
    EXPECT_DOUBLE_EQ(num(P256), 1000);
}

TEST_F(PercentageItems, MoveTheTaxableByWhatTheirClassLetsIn) {
    struct Row {
        double fiscal_class;
        double limit;
        double change;
    };
    // The line goes from 15 to 30.
    for (const Row& row :
         {Row{1, 0, 15}, Row{2, 0, -15}, Row{3, 0, 7.5}, Row{4, 20, 10}, Row{5, 20, 10},
          Row{5, 40, 0}, Row{6, 0, 15}, Row{7, 0, 0}, Row{8, 0, 0}, Row{9, 0, 0}}) {
        FieldValues values = fields(row.fiscal_class);
        values.emplace_back(Z006, row.limit);
        item(30, values, {".P240", "%1.5", "=OG"});
        lines({line_of(30, 15, 1)});
        scrivi(P256, 1000);
        recompute_percentage_items();
        EXPECT_DOUBLE_EQ(num(P256), 1000 + row.change)
            << "class " << row.fiscal_class << " limit " << row.limit;
    }
    EXPECT_FALSE(slip.class8_seen);  // nothing is booked a second time
    EXPECT_DOUBLE_EQ(num(Q027), 0);
}

TEST_F(PercentageItems, PremiumsAndTipsFollowTheirLines) {
    struct Row {
        double fiscal_class;
        double social_class;
        bool under_ceiling;
        std::array<double, 5> totals;
    };
    // Two lines of 15 and of 10 go to 30: 35 more. Total 1 has the pay told as premium, 2 the
    // premiums, 3 class 6 as ordinary pay, 4 the tips.
    for (const Row& row : {Row{6, 0, true, {0, 35, 35, 0, 0}}, Row{6, 1, true, {0, 0, 35, 0, 0}},
                           Row{6, 0, false, {0, 0, 0, 35, 0}}, Row{9, 0, true, {0, 0, 0, 0, 35}},
                           Row{8, 0, true, {0, 0, 0, 0, 0}}, Row{1, 0, true, {0, 0, 0, 0, 0}}}) {
        FieldValues values = fields(row.fiscal_class);
        values.emplace_back(Z014, row.social_class);
        item(30, values, {".P240", "%1.5", "=OG"});
        lines({line_of(30, 15, 1), line_of(30, 10, 1)});
        slip.ceiling_flag = row.under_ceiling;
        slip.ceiling_totals = {};
        recompute_percentage_items();
        EXPECT_EQ(slip.ceiling_totals, row.totals)
            << "class " << row.fiscal_class << " social " << row.social_class;
    }
}

TEST_F(PercentageItems, UnderThePremiumCeilingClassSixMovesNothing) {
    slip.ceiling_flag = true;
    item(30, fields(6), {".P240", "%1.5", "=OG"});
    lines({line_of(30, 15, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(num(P256), 1000);
}

TEST_F(PercentageItems, WithoutIncomeTaxNoTaxableIsMoved) {
    scrivi(P031, 0.0);
    scrivi(P256, 0.0);
    item(30, fields(1), {".P240", "%1.5", "=OG"});
    lines({line_of(30, 15, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(quantity_in(1), 30);
    EXPECT_DOUBLE_EQ(num(P256), 0);
}

TEST_F(PercentageItems, OfASportsCollaboratorFollowTheYearlyLimit) {
    scrivi(PC23, 1);
    FieldValues values = fields(5);
    values.emplace_back(Z008, 15000);
    item(30, values, {".P240", "%1.5", "=OG"});
    lines({line_of(30, 15, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(num(P256), 1000);  // all free
    scrivi(QA32, 15000);
    lines({line_of(30, 15, 1)});
    recompute_percentage_items();
    EXPECT_DOUBLE_EQ(num(P256), 1015);  // the limit is used up
}

// ---- The one-off of 2022 ----

class OneOff : public Walks {
  protected:
    void SetUp() override {
        Walks::SetUp();
        set_period("301120224");
        scrivi(P071, 1500);
        scrivi(P240, 1600);
        scrivi(PB11, 62);
        scrivi(P241, 1700);
    }
};

TEST_F(OneOff, UpToTheLimitOfNovember) {
    one_off_2022();  // 1600 - 62 = 1538
    EXPECT_DOUBLE_EQ(num(QA24), 150);
    EXPECT_DOUBLE_EQ(num(PB25), 11);
    EXPECT_DOUBLE_EQ(num(P241), 1850);
}

TEST_F(OneOff, AboveTheLimit) {
    scrivi(PB11, 61);
    scrivi(QA24, 150);
    scrivi(PB25, 11);
    one_off_2022();
    EXPECT_DOUBLE_EQ(num(QA24), 0);
    EXPECT_DOUBLE_EQ(num(PB25), 0);
    EXPECT_DOUBLE_EQ(num(P241), 1700);
}

TEST_F(OneOff, NotWithoutAWageOfTheMonth) {
    scrivi(P071, 0.0);
    one_off_2022();
    EXPECT_DOUBLE_EQ(num(QA24), 0);
}

TEST_F(OneOff, NotForThoseWhoAreLeftOut) {
    scrivi(T246, "1");
    one_off_2022();
    scrivi(T246, "");
    scrivi(PA39, "1");
    one_off_2022();
    scrivi(PA39, "");
    scrivi(P412, "I");
    one_off_2022();
    EXPECT_DOUBLE_EQ(num(QA24), 0);
    EXPECT_DOUBLE_EQ(num(P241), 1700);
}

TEST_F(OneOff, DecemberPaysWhoWasNotPaidInNovember) {
    set_period("311220224");
    one_off_2022();
    EXPECT_DOUBLE_EQ(num(QA24), 150);
    EXPECT_DOUBLE_EQ(num(PB25), 12);
}

TEST_F(OneOff, DecemberDoesNotPayTwice) {
    set_period("311220224");
    slip.former_PB25 = 11;
    scrivi(QA24, 150);
    one_off_2022();
    EXPECT_DOUBLE_EQ(num(QA24), 0);
    EXPECT_DOUBLE_EQ(num(PB25), 11);
    EXPECT_DOUBLE_EQ(num(P241), 1700);
}

TEST_F(OneOff, ARepeatedSlipDoesNotPayItAgain) {
    for (const double paid : {11.0, 12.0}) {
        set_period(paid == 11 ? "301120224" : "311220224");
        slip.former_PB25 = paid;
        scrivi(PB25, 0.0);  // as the clearing of the month leaves it
        scrivi(QA24, 150);
        one_off_2022();
        EXPECT_DOUBLE_EQ(num(QA24), 0) << paid;
        EXPECT_DOUBLE_EQ(num(PB25), paid);
        EXPECT_DOUBLE_EQ(num(P241), 1700) << paid;
    }
}

TEST_F(OneOff, AnAdditionalSlipOfNovemberPaysNothing) {
    set_period("301120220");
    one_off_2022();
    EXPECT_DOUBLE_EQ(num(QA24), 0);
    EXPECT_DOUBLE_EQ(num(PB25), 0);
}

}  // namespace
}  // namespace slip_tests
