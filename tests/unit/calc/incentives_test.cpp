#include "calc/incentives.h"

#include <vector>

#include "tests/unit/calc/incentives_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

// ---- A third of the wage, and the fixed amount ----

TEST_F(Incentives, AThirdOfTheWageUpToTheLimit) {
    scrivi(F432, 650);
    wage(1500);
    CALCOLA_INCENTIVO_DL76();
    EXPECT_EQ(num(P889), 500);
    wage(2000);
    CALCOLA_INCENTIVO_DL76();
    EXPECT_EQ(num(P889), 650);  // 666.67
    wage(1000);
    slip.former_P268 = 500;
    CALCOLA_INCENTIVO_DL76();
    EXPECT_EQ(num(P889), 333.33);  // the earlier slip is replaced
    exemption.other_slip = true;
    CALCOLA_INCENTIVO_DL76();
    EXPECT_EQ(num(P889), 500);
}

TEST_F(Incentives, OnAnAdditionalSlipOnlyTheEarlierWageCounts) {
    scrivi(F432, 650);
    at("310520240");
    CALCOLA_INCENTIVO_DL76();
    EXPECT_EQ(num(P889), 0);
    slip.former_P268 = 1200;
    exemption.other_slip = true;
    CALCOLA_INCENTIVO_DL76();
    EXPECT_EQ(num(P889), 400);
}

TEST_F(Incentives, TheMonthOfHiringCountsByDays) {
    scrivi(F432, 650);
    scrivi(F435, 190);
    wage(3000);
    const auto both = [](const char* hired) {
        scrivi(P013, hired);
        CALCOLA_INCENTIVO_DL76();
        CALCOLA_INCENTIVO_LICE();
        return std::pair{num(P889), num(P901)};
    };
    EXPECT_EQ(both("01052024"), (std::pair{671.67, 196.33}));  // 31 days: 650 / 30 x 31
    EXPECT_EQ(both("22052024"), (std::pair{216.67, 63.33}));   // 10 days
    EXPECT_EQ(both("01052023"), (std::pair{650.0, 190.0}));
    EXPECT_EQ(both("01042024"), (std::pair{650.0, 190.0}));
    at("290220244");
    EXPECT_EQ(both("01022024"), (std::pair{628.33, 183.67}));  // 29 days
    at("280220234");
    EXPECT_EQ(both("15022023"), (std::pair{303.33, 88.67}));  // 14 days
}

TEST_F(Incentives, AnImpossibleHiringIsNoMonthOfHiring) {
    scrivi(F432, 650);
    scrivi(F435, 190);
    at("280220234");
    for (const char* hired : {"31022023", "29022023", "00022023"}) {
        scrivi(P013, hired);
        CALCOLA_INCENTIVO_DL76();
        CALCOLA_INCENTIVO_LICE();
        EXPECT_EQ(num(P889), 650) << hired;
        EXPECT_EQ(num(P901), 190) << hired;
    }
}

// ---- Relief by territory ----

class TerritoryRelief : public Incentives {
  protected:
    static double in(const std::string& month, int relief_class) {
        at("01" + month + "4");
        scrivi(P219, relief_class);
        geographical_relief();
        return num(P220);
    }
};

TEST_F(TerritoryRelief, TakesThirtyPercentFromOctober2020To2025) {
    // 2000 x 30.81 % = 616.20; x 30 % = 184.86
    EXPECT_EQ(in("092020", 1), 0);
    EXPECT_EQ(in("102020", 1), 184.86);
    EXPECT_EQ(in("122025", 1), 184.86);
    EXPECT_EQ(in("012026", 1), 0);
}

TEST_F(TerritoryRelief, ClassTwoNeedsAHiringFromJuly2022) {
    scrivi(P013, "30062022");
    EXPECT_EQ(in("052024", 2), 0);
    scrivi(P013, "01072022");
    EXPECT_EQ(in("052024", 2), 184.86);
    EXPECT_EQ(in("012026", 2), 0);
    for (const char* none : {"31022023", "00000000", "99999999"}) {
        scrivi(P013, none);
        EXPECT_EQ(in("052024", 2), 0) << none;
    }
}

TEST_F(TerritoryRelief, ClassThreeFallsFromYearToYear) {
    // 616.20: 25 % = 154.05, 20 % = 123.24, 15 % = 92.43
    EXPECT_EQ(in("012025", 3), 145);
    EXPECT_EQ(in("122025", 3), 145);
    EXPECT_EQ(in("012026", 3), 123.24);
    EXPECT_EQ(in("122027", 3), 123.24);
    EXPECT_EQ(in("012028", 3), 100);
    EXPECT_EQ(in("012029", 3), 75);
    wage(900);  // 277.29
    EXPECT_EQ(in("052025", 3), 69.32);
    EXPECT_EQ(in("052028", 3), 55.46);
    EXPECT_EQ(in("052029", 3), 41.59);
    wage(2100);  // 647.01 x 20 % = 129.402
    EXPECT_EQ(in("052026", 3), 125);
}

TEST_F(TerritoryRelief, ClassThreeGivesTheWholeInTheOtherYears) {
    EXPECT_EQ(in("092020", 3), 0);
    EXPECT_EQ(in("122024", 3), 616.20);
    EXPECT_EQ(in("012030", 3), 616.20);
}

TEST_F(TerritoryRelief, AddsUpWhatItStores) {
    wage(2001);  // 2001 x 30.81 % x 30 % = 184.95243
    in("052024", 1);
    in("062024", 1);
    EXPECT_EQ(num(Q845), 369.90);
    at("300620240");
    geographical_relief();
    EXPECT_EQ(num(P220), 0);  // not on an additional slip
    EXPECT_EQ(num(Q845), 369.90);
    EXPECT_EQ(in("072024", 0), 0);
    EXPECT_EQ(in("072024", 4), 0);
    EXPECT_EQ(num(Q845), 369.90);
}

TEST_F(TerritoryRelief, EachMonthFrom2004To2030HasOneBranch) {
    int classes_one = 0;
    int classes_three = 0;
    for (int year = 2004; year <= 2030; ++year) {
        for (int month = 1; month <= 12; ++month) {
            char text[8];
            std::snprintf(text, sizeof text, "%02d%04d", month, year);
            classes_one += in(text, 1) != 0 ? 1 : 0;
            classes_three += in(text, 3) != 0 ? 1 : 0;
        }
    }
    EXPECT_EQ(classes_one, 63);     // 3 of 2020, five years
    EXPECT_EQ(classes_three, 123);  // 3 of 2020, ten years
}

TEST_F(TerritoryRelief, IsOnTheWageOfTheSlipWithinTheLimitOfTheMonth) {
    slip.former_P268 = 1000;
    EXPECT_EQ(in("052024", 1), 184.86);  // 2000 alone: a replaced slip is no wage
    exemption.other_slip = true;
    exemption.other_slip_P220 = 92.43;  // of 1000
    EXPECT_EQ(in("052024", 1), 184.86);
    EXPECT_EQ(in("052025", 3), 52.57);  // 145 - 92.43
    exemption.other_slip_P220 = 150;
    EXPECT_EQ(in("052025", 3), 0);
}

// ---- A twelfth of a yearly amount ----

class YearlyShare : public Incentives {
  protected:
    /// The shares of the months of a year.
    static std::vector<double> year_of(double yearly, int months) {
        scrivi(P955, yearly);
        std::vector<double> shares;
        for (int month = 0; month < months; ++month) {
            exemption = ExemptionState{};
            yearly_exemption_share();
            shares.push_back(num(P917));
        }
        return shares;
    }
};

TEST_F(YearlyShare, LeavesTheRestOfTheYearInTheTwelfthMonth) {
    std::vector<double> shares = year_of(8060, 12);
    for (int month = 0; month < 11; ++month) {
        EXPECT_EQ(shares[static_cast<std::size_t>(month)], 671.66);
    }
    EXPECT_EQ(shares[11], 671.58);  // 671.66 less 8060 - 12 x 671.66
    EXPECT_EQ(num(Q974), 8059.84);  // 11 x 671.66 + 671.58
}

TEST_F(YearlyShare, AThirteenthShareTakesWhatIsLeft) {
    EXPECT_EQ(year_of(8060, 14),
              (std::vector<double>{671.66, 671.66, 671.66, 671.66, 671.66, 671.66, 671.66, 671.66,
                                   671.66, 671.66, 671.66, 671.58, 0.16, 0}));
    EXPECT_EQ(num(Q974), 8060);
}

TEST_F(YearlyShare, OtherAmounts) {
    EXPECT_EQ(year_of(3250, 12).back(), 270.79);  // 270.83 - 0.04
    scrivi(Q974, 0);
    EXPECT_EQ(year_of(3000, 12).back(), 250);
    EXPECT_EQ(num(Q974), 3000);
}

TEST_F(YearlyShare, TakesThePlaceOfTheGeneralExemption) {
    scrivi(P955, 8060);
    scrivi(Q974, 1616.20);
    scrivi(P917, 616.20);
    scrivi(P919, 5);
    scrivi(P918, 1);
    scrivi(P940, 2);
    exemption.added_to_Q974 = 616.20;
    yearly_exemption_share();
    EXPECT_EQ(num(P917), 671.66);
    EXPECT_EQ(num(Q974), 1671.66);
    EXPECT_EQ(num(P918) + num(P919) + num(P940), 0);
}

TEST_F(YearlyShare, LeavesNothingOfThePartsOfTheGeneralExemption) {
    scrivi(P955, 8060);
    scrivi(Q974, 8060.50);
    scrivi(P917, 0.50);
    scrivi(P967, 0.50);
    scrivi(PC36, 500);
    exemption.added_to_Q974 = 0.50;
    yearly_exemption_share();
    EXPECT_EQ(num(P917), 0);  // 8060 are used up
    EXPECT_EQ(num(P967), 0);
    EXPECT_EQ(num(PC36), 0);
}

TEST_F(YearlyShare, AnAmountLoweredInTheYearIsAskedBackAtOnce) {
    scrivi(P955, 3000);
    scrivi(Q974, 5000);
    yearly_exemption_share();
    EXPECT_EQ(num(P917), -2000);
    EXPECT_EQ(num(Q974), 3000);
}

TEST(Twelfth, IsCutToTheCent) {
    EXPECT_EQ(twelfth(8060), 671.66);
    EXPECT_EQ(twelfth(8000), 666.66);
    EXPECT_EQ(twelfth(3250), 270.83);
    EXPECT_EQ(twelfth(4030), 335.83);
    EXPECT_EQ(twelfth(3000), 250);
    for (int cents = 1; cents <= 10000; ++cents) {  // nothing lost of whole cents
        ASSERT_EQ(twelfth(cents * 12 / 100.0), cents / 100.0);
    }
}

// ---- Shares of the wage ----

class ShareOfWage : public Incentives {
  protected:
    ShareOfWage() { scrivi(P013, "01062023"); }
    static double share(const char* code) {
        scrivi(P916, code);
        azzera({P917, PB51});
        share_of_wage();
        return num(P917) + num(PB51);
    }
};

TEST_F(ShareOfWage, SixtyPercentOrTwenty) {
    EXPECT_EQ(share("O"), 1200);
    EXPECT_EQ(num(P917), 1200);
    EXPECT_EQ(share("P"), 400);
    EXPECT_EQ(num(PB51), 400);
    EXPECT_EQ(share("L"), 0);
    slip.former_P268 = 500;
    EXPECT_EQ(share("O"), 1200);  // of the wage of the slip
    exemption.other_slip = true;
    EXPECT_EQ(share("O"), 1200);
    EXPECT_EQ(num(Q974), 0);  // no contributions: not part of the year's exemption
}

TEST_F(ShareOfWage, TheEmployersCapHoldsBelowTheShare) {
    scrivi(P959, 1000);
    EXPECT_EQ(share("O"), 1000);
    EXPECT_EQ(share("P"), 400);
    scrivi(P959, 1500);
    EXPECT_EQ(share("O"), 1200);
    exemption.other_slip_P917 = 700;
    EXPECT_EQ(share("O"), 800);
    exemption.other_slip_PB51 = 1400;
    EXPECT_EQ(share("P"), 100);
}

TEST_F(ShareOfWage, NeedsAnOpenEndedContractAndAHiringOfTheLaw) {
    const auto hired = [](const char* date) {
        scrivi(P013, date);
        return share("O");
    };
    at("310120244");
    EXPECT_EQ(hired("31052023"), 0);
    EXPECT_EQ(hired("01062023"), 1200);
    EXPECT_EQ(hired("31122023"), 1200);
    EXPECT_EQ(hired("01012024"), 0);
    EXPECT_EQ(hired("31112023"), 0);
    scrivi(P939, "01072023");
    EXPECT_EQ(share("O"), 1200);
    EXPECT_EQ(share("P"), 400);
    scrivi(P939, "31062023");  // no day of the calendar: the hiring does not stand in for it
    scrivi(P013, "01072023");
    EXPECT_EQ(share("O"), 0);
    EXPECT_EQ(share("P"), 0);
    scrivi(P939, "01072023");
    scrivi(P412, "D");
    EXPECT_EQ(share("O"), 0);
}

TEST_F(ShareOfWage, RunsTwelveMonths) {
    at("310520244");
    EXPECT_EQ(share("O"), 1200);
    at("300620244");
    EXPECT_EQ(share("O"), 0);
}

TEST_F(ShareOfWage, TheMonthOfTheEndCountsByDays) {
    scrivi(P013, "16062023");
    at("300620244");
    EXPECT_EQ(share("O"), 600);  // 15 of 30 days
    scrivi(P017, "20062024");
    EXPECT_EQ(share("O"), 900);  // 15 of the 20 in service
    scrivi(P017, "10062024");
    EXPECT_EQ(share("O"), 1200);  // all 10
    scrivi(P017, "20052024");
    EXPECT_EQ(share("O"), 600);  // pay after the leaving: 15 of 30 days
    at("310520244");
    EXPECT_EQ(share("O"), 1200);
    at("300620244");
    scrivi(P017, "00000000");
    at("300620234");
    EXPECT_EQ(share("O"), 1200);  // the wage of the month of hiring is that of its days
}

// ---- The earlier slip of the month ----

class OtherSlip : public Incentives {
  protected:
    OtherSlip() {
        scrivi(P917, 616.20);
        scrivi(P967, 250);
        scrivi(PB51, 400);
        scrivi(P220, 92.43);
        slip.earlier_slip_this_month = true;
    }
};

TEST_F(OtherSlip, OfTheOtherKindHasTakenItsPart) {
    scrivi(P444, 0);
    keep_exemption_of_other_slip();
    EXPECT_EQ(exemption.other_slip_P917, 616.20);
    EXPECT_EQ(exemption.other_slip_P967, 250);
    EXPECT_EQ(exemption.other_slip_PB51, 400);
    EXPECT_EQ(exemption.other_slip_P220, 92.43);
    EXPECT_TRUE(exemption.other_slip);
    at("310520240");
    scrivi(P444, 4);
    keep_exemption_of_other_slip();
    EXPECT_EQ(exemption.other_slip_P917, 616.20);
}

TEST_F(OtherSlip, WithoutAKindIsOrdinaryWhereP281SaysSo) {
    struct Case {
        int P281;
        const char* period;
        double taken;
    };
    svuota(P444);
    for (const Case& of : {Case{1, "310520244", 0}, Case{1, "310520240", 616.20},
                           Case{0, "310520244", 616.20}, Case{0, "310520240", 0}}) {
        at(of.period);
        scrivi(P281, of.P281);
        keep_exemption_of_other_slip();
        EXPECT_EQ(exemption.other_slip_P917, of.taken) << of.P281 << of.period;
    }
}

TEST_F(OtherSlip, OfAnEntertainerWhoCarriesTheMonthCountsWhateverItsKind) {
    scrivi(P444, 4);
    for (const auto& [kind, taken] : {std::pair{0, 0.0}, {1, 0.0}, {2, 616.20}, {3, 616.20}}) {
        scrivi(P168, kind);
        keep_exemption_of_other_slip();
        EXPECT_EQ(exemption.other_slip_P917, taken) << kind;
    }
}

TEST_F(OtherSlip, OfTheSameKindIsReplaced) {
    scrivi(P444, 4);
    keep_exemption_of_other_slip();
    EXPECT_EQ(exemption.other_slip_P917, 0);
    at("310520240");
    scrivi(P444, 0);
    keep_exemption_of_other_slip();
    EXPECT_EQ(exemption.other_slip_P917, 0);
}

TEST_F(OtherSlip, OfAnotherMonthCountsNotAndTheStateStartsAgain) {
    scrivi(P444, 0);
    slip.earlier_slip_this_month = false;
    exemption = {true, 1, 2, 3, 4, 5};
    keep_exemption_of_other_slip();
    EXPECT_FALSE(exemption.other_slip);
    EXPECT_EQ(exemption.other_slip_P917, 0);
    EXPECT_EQ(exemption.other_slip_P967, 0);
    EXPECT_EQ(exemption.other_slip_PB51, 0);
    EXPECT_EQ(exemption.other_slip_P220, 0);
    EXPECT_EQ(exemption.added_to_Q974, 0);
}

}  // namespace
}  // namespace ModSWCALM
