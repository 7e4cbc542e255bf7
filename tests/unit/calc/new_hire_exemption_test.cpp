// The general exemption of new hires, code by code.

#include "files/file_numbers.h"
#include "records/dictionary/FOTX.h"
#include "tests/support/logical_files.h"
#include "tests/unit/calc/incentives_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;

class NewHireExemption : public Incentives {
  protected:
    NewHireExemption() {
        for (const auto& [cap, amount] : {std::pair{F437, 8060.0},
                                          {F438, 3250.0},
                                          {F439, 4030.0},
                                          {F440, 8060.0},
                                          {F441, 3000.0},
                                          {F450, 6000.0},
                                          {F452, 8000.0},
                                          {F454, 500.0},
                                          {F455, 650.0},
                                          {F456, 650.0}}) {
            scrivi(cap, amount);
        }
        files.define(kPayItems, 1500);
        MXLIBRERIA::FAIOPEN(kPayItems);
        set_lines({});
        scrivi(P013, "01092023");
        scrivi(P916, "L");
    }
    static double exempted() {
        exemption.added_to_Q974 = 0;
        azzera({P917, P918, P919, P940, P967, PC36});
        ERR_CALCOLA_ESONERO_NUOVI_ASS();
        return num(P917);
    }
    test_support::LogicalFiles files;
};

TEST_F(NewHireExemption, IsTheEmployersContributionsUpToTheMonth) {
    EXPECT_EQ(exempted(), 616.20);
    EXPECT_EQ(num(Q974), 616.20);
    EXPECT_EQ(exemption.added_to_Q974, 616.20);
    wage(2500);
    EXPECT_EQ(exempted(), 666.66);
    EXPECT_EQ(num(Q974), 1282.86);
    EXPECT_EQ(num(P919), 0);  // above the month: lost and not shown
}

TEST_F(NewHireExemption, WithoutACapGivesNothing) {
    scrivi(F452, 0);
    scrivi(P955, 5000);
    scrivi(P959, 300);
    EXPECT_EQ(exempted(), 0);
    EXPECT_EQ(num(Q974), 0);
}

TEST_F(NewHireExemption, DFAndGTakeTheEmployeesOwnAmounts) {
    scrivi(F437, 0);
    for (const auto& [code, hired, period] : {std::tuple{"D", "01092020", "310520214"},
                                              {"F", "01092020", "301120204"},
                                              {"G", "01092020", "301120204"}}) {
        at(period);
        scrivi(P916, code);
        scrivi(P013, hired);
        scrivi(P955, 3250);
        EXPECT_EQ(exempted(), 270.83) << code;
        scrivi(P959, 100);
        EXPECT_EQ(exempted(), 100) << code;
        scrivi(P955, 0);
        EXPECT_EQ(exempted(), 100) << code;
        scrivi(P959, 0);
        EXPECT_EQ(exempted(), 0) << code;
    }
    scrivi(P916, "E");
    scrivi(P955, 3250);
    EXPECT_EQ(exempted(), 0);
}

TEST_F(NewHireExemption, TheEmployersCapHoldsToo) {
    scrivi(P959, 300);
    EXPECT_EQ(exempted(), 300);
    scrivi(P959, 700);
    EXPECT_EQ(exempted(), 616.20);
}

TEST_F(NewHireExemption, TheYearCutsWhatIsAboveIt) {
    scrivi(Q974, 7700);
    EXPECT_EQ(exempted(), 300);
    EXPECT_EQ(num(P919), 316.20);
    EXPECT_EQ(num(Q974), 8000);
    EXPECT_EQ(exempted(), 0);
    EXPECT_EQ(num(P919), 616.20);
    scrivi(Q974, 8100);  // more than the year has
    EXPECT_EQ(exempted(), 0);
    EXPECT_EQ(num(Q974), 8100);
}

TEST_F(NewHireExemption, TheOtherSlipOfTheMonthHasUsedTheLimit) {
    exemption.other_slip_P917 = 616.20;
    EXPECT_EQ(exempted(), 50.46);  // 666.66 - 616.20
    exemption.other_slip_P917 = 700;
    EXPECT_EQ(exempted(), 0);
}

TEST_F(NewHireExemption, ShowsTheLimitOfCodesRAndS) {
    at("310520254");
    scrivi(P013, "31012025");
    scrivi(P916, "R");
    EXPECT_EQ(exempted(), 500);
    EXPECT_EQ(num(PC36), 500);
    scrivi(P916, "S");
    scrivi(P959, 610);
    EXPECT_EQ(exempted(), 610);
    EXPECT_EQ(num(PC36), 610);
    exemption.other_slip_P917 = 500;
    EXPECT_EQ(exempted(), 110);
    EXPECT_EQ(num(PC36), 610);  // the limit of the month, both slips
    exemption.other_slip_P917 = 0;
    scrivi(P916, "T");
    EXPECT_EQ(exempted(), 610);
    EXPECT_EQ(num(PC36), 0);
}

TEST_F(NewHireExemption, NineAndAShowTheHalf) {
    at("310520194");
    scrivi(P013, "01092018");
    for (const char* code : {"9", "A"}) {
        scrivi(P916, code);
        wage(1000);
        EXPECT_EQ(exempted(), 308.10);
        EXPECT_EQ(num(P967), 154.05);
        wage(2000);
        EXPECT_EQ(exempted(), 616.20);
        EXPECT_EQ(num(P967), 250);
        wage(2500);
        EXPECT_EQ(exempted(), 671.66);
        EXPECT_EQ(num(P967), 250);
        exemption.other_slip_P967 = 200;
        EXPECT_EQ(exempted(), 671.66);
        EXPECT_EQ(num(P967), 50);
        exemption.other_slip_P967 = 0;
        scrivi(Q974, 8000);
        EXPECT_EQ(exempted(), 60);
        EXPECT_EQ(num(P967), 60);  // a part of P917
        scrivi(Q974, 0);
    }
}

TEST_F(NewHireExemption, TakesThePercentageOfGroupAndClass) {
    scrivi(S268, 20);
    scrivi(S270, 22);
    scrivi(S333, 10);
    scrivi(S335, 12);
    scrivi(S304, 1);
    scrivi(S340, 0.5);
    scrivi(S332, 0.33);
    const auto of = [](const char* group, int rate_class) {
        scrivi(P594, group);
        scrivi(P593, rate_class);
        return exempted();
    };
    EXPECT_EQ(of("37", 2), 430);  // 2000 x (20 + 1 + 0.5) %
    EXPECT_EQ(of("37", 4), 470);
    EXPECT_EQ(of("38", 2), 230);
    EXPECT_EQ(of("38", 4), 270);
    EXPECT_EQ(of("38", 5), 616.20);  // no cell: the ordinary percentage
    EXPECT_EQ(of("39", 2), 616.20);
    scrivi(T714, 1);
    EXPECT_EQ(of("39", 2), 622.80);  // 2000 x 31.14 %
    EXPECT_EQ(of("37", 2), 436.60);
}

TEST_F(NewHireExemption, ScalesEveryLimitForAPartTimer) {
    scrivi(P019, 1);
    scrivi(P755, 50);
    EXPECT_EQ(exempted(), 333.33);
    scrivi(Q974, 3900);
    EXPECT_EQ(exempted(), 100);  // 4000 a year
    scrivi(P019, 0);
    scrivi(Q974, 3900);
    EXPECT_EQ(exempted(), 616.20);
}

TEST_F(NewHireExemption, FormsThePartTimePercentOnlyWhereThereIsNone) {
    const auto percent = [](double week, double hours) {
        scrivi(P019, 1);
        scrivi(P755, 0);
        scrivi(P441, week);
        scrivi(P020, hours);
        (void)exempted();
        return num(P755);
    };
    EXPECT_EQ(percent(40, 20), 50);
    EXPECT_EQ(percent(0, 20), 50);   // a week of 40 hours
    EXPECT_EQ(percent(38, 25), 66);  // 65.789
    EXPECT_EQ(percent(40, 40), 100);
    slip.DIVISOREORE = 168;
    EXPECT_EQ(percent(40, 126), 75);  // of the month
    EXPECT_EQ(percent(40, 200), 100);
    EXPECT_EQ(percent(40, 0), 0);
    EXPECT_EQ(num(P917), 0);  // nobody knows his time
    scrivi(P755, 60);
    scrivi(P020, 20);
    (void)exempted();
    EXPECT_EQ(num(P755), 60);
}

TEST_F(NewHireExemption, TakesTheHoursOfItem300First) {
    std::string record = test_support::empty_record(Area::FOTX, 1500);
    files.put(kPayItems, 2, record);
    files.put(kPayItems, 300, record);
    set_lines({line(2, 2600), line(300, 3000)});
    scrivi(P019, 1);
    scrivi(P020, 20);
    (void)exempted();
    EXPECT_EQ(num(P755), 75);  // 30 of 40
    set_lines({line(2, 2600), line(300, 0)});
    scrivi(P755, 0);
    (void)exempted();
    EXPECT_EQ(num(P755), 50);
}

TEST_F(NewHireExemption, CountsPartOfAMonthByDays) {
    scrivi(P916, "E");
    scrivi(P013, "15082020");
    at("310820204");
    EXPECT_EQ(exempted(), 368.39);  // 17 x 21.67; 671.66 / 31 = 21.6665
    at("280220214");
    EXPECT_EQ(exempted(), 303.38);  // 14 x 21.67
    scrivi(P017, "30112020");
    at("301120204");
    EXPECT_EQ(exempted(), 616.20);  // a whole month
    wage(3000);
    scrivi(P017, "31122020");
    at("311220204");
    EXPECT_EQ(exempted(), 671.66);
    scrivi(P017, "30122020");
    EXPECT_EQ(exempted(), 650.10);  // 30 x 21.67
    scrivi(P019, 1);
    scrivi(P755, 50);
    EXPECT_EQ(exempted(), 324.90);  // 335.83 / 31 = 10.83; x 30
}

TEST_F(NewHireExemption, StartsTo2016CountTheDayByTheYear) {
    at("311020164");
    scrivi(P916, "5");
    scrivi(P939, "15102016");
    scrivi(F441, 8060);
    wage(3000);
    // half 462.15; 671.66 x 12 / 365 = 22.08; 17 days
    EXPECT_EQ(exempted(), 375.36);
}

TEST_F(NewHireExemption, P939IsTheDateOfTheHiringWhereItIsGiven) {
    struct Case {
        const char* code;
        const char* P013;
        const char* P939;
        const char* period;
        double exempted;
    };
    for (const Case& of :
         {Case{"1", "15122017", "00000000", "310120184", 616.20},
          {"1", "15122017", "15032018", "310320184", 0},  // another year than the law's
          {"1", "15032018", "15122017", "310320184", 616.20},
          {"2", "15122017", "15032018", "310320184", 0},
          {"3", "15122017", "15032018", "310320184", 0},
          {"7", "15122018", "15032019", "310320194", 0},
          {"B", "15122019", "15032020", "310320204", 0},
          {"D", "15122020", "15032021", "310320214", 0},
          {"D", "15032021", "15122020", "310320214", 616.20}}) {
        at(of.period);
        scrivi(P916, of.code);
        scrivi(P013, of.P013);
        scrivi(P939, of.P939);
        scrivi(Q974, 0);
        EXPECT_EQ(exempted(), of.exempted) << of.code << " " << of.P013 << " " << of.P939;
    }
}

TEST_F(NewHireExemption, CodeFiveCountsFromTheHiringWhereP939IsEmpty) {
    scrivi(P916, "5");
    scrivi(P013, "01092023");
    at("310820244");
    EXPECT_EQ(exempted(), 250);  // the half, 308.10, above 3000 / 12
    at("300920244");
    EXPECT_EQ(exempted(), 0);
    scrivi(P939, "01022024");
    EXPECT_EQ(exempted(), 250);
    scrivi(P939, "31022024");  // no day of the calendar
    EXPECT_EQ(exempted(), 0);
}

TEST_F(NewHireExemption, PayAfterTheLeavingHasTheLimitOfAWholeMonth) {
    scrivi(P017, "20052024");
    at("310520244");
    wage(2500);
    EXPECT_EQ(exempted(), 430.20);  // 20 x 21.51
    at("300620244");
    EXPECT_EQ(exempted(), 666.66);
    wage(500);
    EXPECT_EQ(exempted(), 154.05);  // 500 x 30.81 %
}

TEST_F(NewHireExemption, IsOnTheWageOfTheSlip) {
    slip.former_P268 = 2000;
    wage(1000);
    EXPECT_EQ(exempted(), 308.10);
    exemption.other_slip = true;
    exemption.other_slip_P917 = 616.20;
    EXPECT_EQ(exempted(), 50.46);  // what is left of 666.66
}

TEST_F(NewHireExemption, CodeBIsNotForTheNorth) {
    at("310520204");
    scrivi(P916, "B");
    scrivi(P013, "01092019");
    scrivi(P120, 8);
    EXPECT_EQ(exempted(), 0);
    scrivi(P120, 13);
    EXPECT_EQ(exempted(), 616.20);
    scrivi(P916, "H");
    scrivi(P013, "01092021");
    at("310520224");
    scrivi(P120, 8);
    EXPECT_EQ(exempted(), 500);
}

TEST_F(NewHireExemption, ANegativeWageGivesNothingBack) {
    wage(-100);
    EXPECT_EQ(exempted(), 0);
    EXPECT_EQ(num(Q974), 0);
}

TEST_F(NewHireExemption, TheShareOfTheWageIsLeftAsItIs) {
    scrivi(P916, "O");
    scrivi(P917, 1200);
    ERR_CALCOLA_ESONERO_NUOVI_ASS();
    EXPECT_EQ(num(P917), 1200);
    EXPECT_EQ(num(Q974), 0);
}

}  // namespace
}  // namespace ModSWCALM
