#include "calc/remaining.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

class Clearing : public SlipTest {
  protected:
    const StartingRates rates{"026.00", "000.00", "000.00"};
};

TEST_F(Clearing, EmptiesTheResultsOfTheMonth) {
    const auto results = {P240, P241, Q173, P256, P259, Q137, Q224, Q225, Q021,
                          P250, P260, Q201, P022, P917, Q938, PB29, P889, Q970};
    for (const Descriptor& field : results) {
        scrivi(field, 1);
    }
    clear_month_results(rates);
    for (const Descriptor& field : results) {
        EXPECT_EQ(num(field), 0) << field.name();
    }
}

TEST_F(Clearing, LeavesTheFiguresOfTheYear) {
    const auto figures = {Q009, Q013, Q014, Q001, Q003, Q131, Q134, Q136, Q163, Q094};
    for (const Descriptor& field : figures) {
        scrivi(field, 12);
    }
    clear_month_results(rates);
    for (const Descriptor& field : figures) {
        EXPECT_EQ(num(field), 12) << field.name();
    }
}

TEST_F(Clearing, KeepsTheSavedSlipWhileItIsValid) {
    scrivi(P281, 1);
    scrivi(P268, 1500);
    scrivi(P604, 10);
    clear_month_results(rates);
    EXPECT_EQ(num(P268), 1500);
    EXPECT_EQ(num(P604), 10);
    scrivi(P281, "0");
    clear_month_results(rates);
    EXPECT_EQ(num(P268), 0);
    EXPECT_EQ(num(P604), 0);
}

TEST_F(Clearing, KeepsTheNetOfTheEarlierSlip) {
    scrivi(Q173, 1553);
    clear_month_results(rates);
    EXPECT_EQ(slip.former_Q173, 1553);
}

TEST_F(Clearing, MarksTheSlipWithItsKindAndDate) {
    clear_month_results(rates);
    EXPECT_EQ(testo(P444), "4");
    EXPECT_EQ(testo(Q179), "31052024");
    scrivi(P118, 2);
    clear_month_results(rates);
    EXPECT_EQ(testo(P444), "0");  // an empty number
}

TEST_F(Clearing, ASettlementSlipKeepsTheSeparateContribution) {
    scrivi(Q052, 10);
    scrivi(P118, 2);
    clear_month_results(rates);
    EXPECT_EQ(num(Q052), 10);
    scrivi(P118, 0);
    clear_month_results(rates);
    EXPECT_EQ(num(Q052), 0);
}

TEST_F(Clearing, TheCumulativeMethodCarriesNoRounding) {
    scrivi(Q163, 0.15);
    scrivi(T184, 1);
    clear_month_results(rates);
    EXPECT_EQ(num(Q163), 0);
}

TEST_F(Clearing, GivesTheDefaultRates) {
    clear_month_results(rates);
    EXPECT_EQ(num(P224), 26);
    EXPECT_EQ(num(P225), 0);
    EXPECT_EQ(num(P227), 0);
}

TEST_F(Clearing, AnEmptyExemptionCodeIsNone) {
    scrivi(P916, "");
    clear_month_results(rates);
    EXPECT_EQ(testo(P916), "0");
    scrivi(P916, "H");
    clear_month_results(rates);
    EXPECT_EQ(testo(P916), "H");
}

class Rates : public SlipTest {};

TEST_F(Rates, AreTheWholeMonthForTheFirstOnly) {
    const StartingRates rates = starting_rates();
    EXPECT_EQ(rates.P224, "026.00");
    EXPECT_EQ(rates.P225, "000.00");
    EXPECT_EQ(rates.P227, "000.00");
}

TEST_F(Rates, FollowP079AndDecember) {
    scrivi(P079, 1);
    at("311220244");
    const StartingRates rates = starting_rates();
    EXPECT_EQ(rates.P225, "026.00");
    EXPECT_EQ(rates.P227, "026.00");
}

TEST_F(Rates, AreNoneForCollaborators) {
    scrivi(P447, 1);
    at("311220244");
    const StartingRates rates = starting_rates();
    EXPECT_EQ(rates.P224, "000.00");
    EXPECT_EQ(rates.P227, "000.00");
}

class OpeningValues : public SlipTest {};

TEST_F(OpeningValues, CleanTheMarksOfTheMonths) {
    scrivi(Q060, "01 2x1110000");
    opening_values();
    EXPECT_EQ(testo(Q060), "010001110000");
}

TEST_F(OpeningValues, GiveTheDaysOfTheCompany) {
    scrivi(T175, 1);
    opening_values();
    EXPECT_EQ(num(P201), 26);
    scrivi(P118, 2);
    opening_values();
    EXPECT_EQ(num(P201), 0);
    scrivi(P118, 0);
    at("310520240");
    opening_values();
    EXPECT_EQ(num(P201), 0);
}

TEST_F(OpeningValues, P169TurnsTheTaxOn) {
    scrivi(P031, "0");
    scrivi(P169, 1);
    opening_values();
    EXPECT_EQ(num(P031), 1);
}

TEST_F(OpeningValues, AnEntertainersNewMonthStartsAgain) {
    scrivi(P168, 2);
    scrivi(Q168, 5);
    scrivi(Q170, 6);
    scrivi(Q179, "31052024");
    slip.earlier_slip_this_month = true;
    opening_values();
    EXPECT_EQ(num(Q168), 5);
    EXPECT_TRUE(slip.same_month_repeat);
    scrivi(Q179, "30042024");
    slip.earlier_slip_this_month = false;
    opening_values();
    EXPECT_EQ(num(Q168), 0);
    EXPECT_EQ(num(Q170), 0);
}

TEST_F(OpeningValues, OneCompanyStartsQ105Again) {
    scrivi(Q105, 5);
    opening_values();
    EXPECT_EQ(num(Q105), 5);
    scrivi(T013, "90000000044");
    opening_values();
    EXPECT_EQ(num(Q105), 0);
}

class Blanking : public SlipTest {};

TEST_F(Blanking, TakesTextsOfZerosOverTheWholeWidth) {
    scrivi(P634, "0000000000000000");
    scrivi(P638, "000000000000000");  // one short
    scrivi(P718, "0000000000000000");
    scrivi(P817, "000");
    scrivi(P946, "A0000000000000000000");
    clear_all_zero_texts();
    EXPECT_EQ(rifilato(P634), "");
    EXPECT_EQ(rifilato(P638), "000000000000000");
    EXPECT_EQ(rifilato(P718), "");
    EXPECT_EQ(rifilato(P817), "");
    EXPECT_EQ(rifilato(P946), "A0000000000000000000");
}

TEST_F(Blanking, EmptiesTheTwoLists) {
    scrivi(Q512, 5);
    scrivi(Q620, 5);
    scrivi(P516, 5);
    first_blanking_list();
    EXPECT_EQ(num(Q512), 0);
    EXPECT_EQ(num(Q620), 0);
    EXPECT_EQ(num(P516), 0);
    scrivi(PA68, "01012024");
    scrivi(PA96, 3);
    second_blanking_list();
    EXPECT_EQ(testo(PA68), "00000000");
    EXPECT_EQ(num(PA96), 0);
}

class YearEndClearing : public SlipTest {
  protected:
    YearEndClearing() {
        scrivi(Q055, 1000);
        scrivi(QA05, 100);
        scrivi(QA08, 20);
        scrivi(QA10, 100);
    }
};

TEST_F(YearEndClearing, AfterALeavingInDecemberClearsAll) {
    scrivi(P017, "31122023");
    year_end_clearing();
    EXPECT_EQ(num(QA05), 0);
    EXPECT_EQ(num(QA08), 0);
    EXPECT_EQ(num(QA10), 0);
    EXPECT_EQ(num(QA11), 0);
}

TEST_F(YearEndClearing, AfterAnotherMonthClosesWhatIsWhollyRepaid) {
    scrivi(P017, "30042024");
    year_end_clearing();
    EXPECT_EQ(num(QA05), 0);
    EXPECT_EQ(num(QA08), 0);
    EXPECT_EQ(num(QA11), 100);
}

TEST_F(YearEndClearing, LeavesWhatIsStillOpen) {
    scrivi(P017, "30042024");
    scrivi(QA06, 10);
    year_end_clearing();
    EXPECT_EQ(num(QA05), 100);
    scrivi(QA06, 0);
    scrivi(QA10, 90);
    year_end_clearing();
    EXPECT_EQ(num(QA05), 100);
}

TEST_F(YearEndClearing, WaitsForThePeriodAfterTheLeaving) {
    for (const char* leaving : {"31052024", "30062024", "00000000"}) {
        scrivi(P017, leaving);
        year_end_clearing();
        EXPECT_EQ(num(QA05), 100) << leaving;
    }
}

TEST_F(YearEndClearing, WantsAFund) {
    scrivi(P017, "31122023");
    scrivi(Q055, 0);
    year_end_clearing();
    EXPECT_EQ(num(QA05), 100);
}

}  // namespace
}  // namespace ModSWCALM
