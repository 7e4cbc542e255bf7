#include <set>
#include <sstream>

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

/// The fields of a list of codes and of ranges of codes ("P759-P762").
std::set<std::string> fields_named(const std::string& list) {
    std::set<std::string> names;
    std::istringstream words(list);
    for (std::string word; words >> word;) {
        const std::size_t dash = word.find('-');
        const Descriptor& first = *find_field(word.substr(0, dash));
        const Descriptor& last =
            dash == std::string::npos ? first : *find_field(word.substr(dash + 1));
        for (const Descriptor& field : serie(first, last)) {
            names.emplace(field.name());
        }
    }
    return names;
}

std::set<std::string> without(std::set<std::string> names, const std::set<std::string>& others) {
    for (const std::string& name : others) {
        names.erase(name);
    }
    return names;
}

/// The fields that the clearing changes in a record whose every character is a 7.
class ClearedFields : public SlipTest {
  protected:
    std::set<std::string> changed() {
        const std::string before = area(Area::DIPX);
        clear_month_results({"026.00", "000.00", "000.00"});
        std::set<std::string> names;
        for (const Descriptor& field : fields_of(Area::DIPX)) {
            if (testo(field) != LEGGICAMPO(field, 0, before)) {
                names.emplace(field.name());
            }
        }
        return names;
    }
    void SetUp() override {
        area(Area::DIPX).assign(area(Area::DIPX).size(), '7');
        scrivi(T184, 1);
    }

    const std::set<std::string> saved = fields_named(
        "P268-P281 PB03 P604-P606 Q881 P918 P924 P926 P928 P930 P749 P724 P764 P851 P883 P884 PA50 "
        "PA53");
    // PB07 and PB09 go with the month in any case; Q263 lies on the bytes of P202.
    const std::set<std::string> of_the_month = fields_named(
        "P468 Q201 Q189 P633 Q710 P759-P762 PB55 PB56 P812 P820 PB06 PB08 PB10 PB11 PB14 PB15 PB09 "
        "PB07 PB18 PB25 PB26 PB29 PB02 "
        "P202 Q263 P322 P207 Q173 P224 P225 P227 P226 P228-P237 P444 P238 P239 Q179 "
        "P240 P241 P242-P248 P081 P082 P559 P291 P292 P193-P195 Q052 P250-P260 Q137 P196 P793 P794 "
        "Q225 Q226 P407 Q227 Q228 Q139 Q140 Q130 Q138 Q224 P289 Q021 Q022 Q036 Q162 Q163 "
        "P454-P456 P956 P458 P459 P451 P452 P499 P500 P765 P782 P535 P543 P546-P555 P561 P562 P813 "
        "P814 P878 P879 P902 P903 P911 P912 PA25-PA32 "
        "P905 Q938 Q939 P022 Q280 Q281 PC33 QA41 QA42 P907 P908 P920 P917 P940 P922 P925 P927 P929 "
        "PA49 PA52 Q621 Q623 Q625 Q627 Q629 Q631 Q633 Q970 Q973 P850 P852 P880 P889 P901 P220 "
        "P868-P870 P881 P882 PC29 PC30");
};

TEST_F(ClearedFields, AreThoseOfTheMonthAndOfASavedSlipThatIsNotValid) {
    std::set<std::string> expected = of_the_month;
    expected.insert(saved.begin(), saved.end());
    EXPECT_EQ(changed(), expected);
}

TEST_F(ClearedFields, LeaveAValidSavedSlip) {
    scrivi(P281, 1);
    EXPECT_EQ(changed(), of_the_month);
}

TEST_F(ClearedFields, LeaveTheRoundingsAndTheSeparateContributionWhereTheyAreKept) {
    scrivi(P281, 1);
    scrivi(T184, 0);  // no cumulative method
    scrivi(P118, 2);  // settlement only
    EXPECT_EQ(changed(), without(of_the_month, fields_named("Q162 Q163 Q052")));
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

TEST_F(Blanking, TakesEveryTextThatStandsInFrontOfADate) {
    for (const Descriptor& text :
         {P051, PA46, P977, P966, P180, P962, P963, P961, P867, P536, P805, P816, P819, P946,
          P951, P795, P835, P839, P898, P899, P824, P769, P770, P789, P790, P784, P785, P931,
          P933, P796, P815, P942, P779, PA55, PA60, Q843, PA88, PA90, PA92, PA94}) {
        scrivi(text, std::string(static_cast<std::size_t>(text.length), '0'));
        clear_all_zero_texts();
        EXPECT_EQ(rifilato(text), "") << text.name();
    }
}

TEST_F(Blanking, LeavesTheTextsThatStandInFrontOfNoDate) {
    for (const Descriptor& text : {P722, P018}) {
        const std::string zeros(static_cast<std::size_t>(text.length), '0');
        scrivi(text, zeros);
        clear_all_zero_texts();
        EXPECT_EQ(testo(text), zeros) << text.name();
    }
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
