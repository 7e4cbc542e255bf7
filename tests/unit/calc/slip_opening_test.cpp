#include "files/file_numbers.h"
#include "slip/fixed_data.h"
#include "slip/premium_ceiling.h"
#include "tests/support/logical_files.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;

int days(const std::string& start, const std::string& leaving, int length = 31,
         int yyyymm = 202405) {
    return days_in_service(length, yyyymm, Date::of(start), Date::of(leaving));
}

TEST(DaysInService, AreTheWholeMonthWithoutDatesInIt) {
    EXPECT_EQ(days("00000000", "00000000"), 31);
    EXPECT_EQ(days("01012020", "31122024"), 31);
    EXPECT_EQ(days("01052024", "31052024"), 31);
}

TEST(DaysInService, RunFromTheHiringAndToTheLeaving) {
    EXPECT_EQ(days("10052024", "00000000"), 22);  // 10 to 31 May
    EXPECT_EQ(days("01012020", "20052024"), 20);
    EXPECT_EQ(days("10052024", "20052024"), 11);
    EXPECT_EQ(days("31052024", "31052024"), 1);
}

TEST(DaysInService, AreNoneOutsideTheEmployment) {
    EXPECT_EQ(days("01062024", "00000000"), 0);
    EXPECT_EQ(days("01012020", "30042024"), 0);
}

TEST(DaysInService, PassOverALeavingBeforeTheStart) {
    EXPECT_EQ(days("10052024", "30042024"), 22);
}

TEST(DaysInService, OfThe29thOfFebruaryCountADayWhereTheMonthHas28) {
    EXPECT_EQ(days("29022024", "00000000", 28, 202402), 1);
    EXPECT_EQ(days("01012020", "29022024", 28, 202402), 28);
}

class CeilingLimit : public SlipTest {};

TEST_F(CeilingLimit, IsRaisedByTheOwnContributions) {
    scrivi(F413, 10000);
    EXPECT_EQ(ceiling_limit(0), 10000);
    EXPECT_EQ(ceiling_limit(9.19), 11012);  // 10000 / 90.81 x 100 = 11012.0030...
}

TEST_F(CeilingLimit, StandsAsItIsWithRulesOneAndTwo) {
    scrivi(F413, 10000);
    for (const double rule : {1, 2}) {
        scrivi(F415, rule);
        EXPECT_EQ(ceiling_limit(9.19), 10000);
    }
}

class OpenSlip : public SlipTest {
  protected:
    OpenSlip() {
        files.define(kEmployees, 16600);
        files.define(kSectors, 1400);
        files.define(kTaxBrackets, 20);
        files.define(kSeveranceBrackets, 20);
        files.define(kPeriod, 20);
        files.define(kContracts, 6000);
        for (const int n : {2, 8, 18, 276}) {
            MXLIBRERIA::FAIOPEN(n);
        }
        files.put(kPeriod, 1, MXLIBRERIA::period.PERIODO);
        files.put(kTaxBrackets, 1, "028000.00230");
        files.put(kTaxBrackets, 2, "999999.99430");
        files.put(kSeveranceBrackets, 1, "999999.99230");
        scrivi(T067, 1);
        employee = test_support::empty_record(Area::DIPX, 16600);
        sector = test_support::empty_record(Area::SETX, 1400);
        field(P047, "0");
        field(Q401, line(999, 0));
    }

    void field(const Descriptor& descriptor, std::string value) {
        SCRIVICAMPO(descriptor, value, 0, descriptor.area == Area::SETX ? sector : employee);
    }
    void open(const std::string& period_record = "310520244") {
        at(period_record);
        files.put(kPeriod, 1, period_record);
        files.put(kEmployees, 3, employee);
        files.put(kSectors, 1, sector);
        open_slip(3);
    }

    std::string employee;
    std::string sector;
    test_support::LogicalFiles files;
};

TEST_F(OpenSlip, GivesTheDaysOfTheMonth) {
    open();
    EXPECT_EQ(num(P215), 31);
    EXPECT_EQ(num(P216), 31);
    EXPECT_EQ(num(Q187), 30);
    EXPECT_EQ(slip.GGLAVORABILI, 31);
}

TEST_F(OpenSlip, FebruaryOfALeapYearHas29DaysAnd28WhereTheYearCounts365) {
    open("290220244");
    EXPECT_EQ(num(P215), 29);
    scrivi(F169, 1);
    open("290220244");
    EXPECT_EQ(num(P215), 28);
    open("280220234");
    EXPECT_EQ(num(P215), 28);
}

TEST_F(OpenSlip, CenturiesAreNoLeapYears) {
    open("280221004");
    EXPECT_EQ(num(P215), 28);
    open("290220004");
    EXPECT_EQ(num(P215), 29);
}

TEST_F(OpenSlip, CollaboratorsHaveNoneOfTheSectorsRates) {
    field(S004, "2.5");
    open();
    EXPECT_EQ(slip.PCTCONTR[2], 2.5);
    field(P447, "1");
    open();
    EXPECT_EQ(slip.PCTCONTR[2], 0);
}

TEST_F(OpenSlip, CollaboratorsCountTheirOwnDays) {
    field(P447, "1");
    field(P449, "20");
    open();
    EXPECT_EQ(slip.GGLAVORABILI, 20);
    EXPECT_EQ(num(P215), 0);
    EXPECT_EQ(num(P090), 12);
    take_off_days_outside_service();
    EXPECT_EQ(slip.GGLAVORABILI, 20);
    field(P090, "4");
    open();
    EXPECT_EQ(num(P090), 4);
}

TEST_F(OpenSlip, TheDaysOutsideTheEmploymentAreTakenOff) {
    field(P013, "10052024");
    open();
    take_off_days_outside_service();
    EXPECT_EQ(num(P215), 22);  // 10 to 31 May
    EXPECT_EQ(num(P216), 22);
    EXPECT_EQ(slip.GGLAVORABILI, 22);
    field(P014, "01012020");  // the service counts from before
    field(P017, "20052024");
    open();
    take_off_days_outside_service();
    EXPECT_EQ(num(P215), 20);
    EXPECT_EQ(num(P216), 20);
}

TEST_F(OpenSlip, LeaversOf31December2023KeepTheirBrackets) {
    field(P017, "31122023");
    open();
    EXPECT_EQ(slip.TABIRP.at(1), 15000);
    EXPECT_EQ(slip.TABIRP.at(4), 25);
    field(P017, "30122023");
    open();
    EXPECT_EQ(slip.TABIRP.at(1), 28000);
    EXPECT_EQ(slip.TABIRP.at(2), 23);
    EXPECT_EQ(slip.TABIRP.at(4), 43);
}

TEST_F(OpenSlip, SetsTheSwitchesOfTheSlip) {
    scrivi(T180, 1);
    field(P118, "2");
    field(P281, "1");
    field(P168, "2");
    open("310520240");
    EXPECT_TRUE(slip.calendar_days);
    EXPECT_EQ(testo(P038), "9");
    EXPECT_EQ(num(P281), 0);
    EXPECT_FALSE(slip.ordinary_worker);
    EXPECT_EQ(ABORTODIP, 0);
}

TEST_F(OpenSlip, TheSeveranceDivisorIsThirteenAndAHalfUnlessTheEmployeeHasHis) {
    open();
    EXPECT_EQ(slip.severance_divisor, 13.5);
    field(P467, "14");
    open();
    EXPECT_EQ(slip.severance_divisor, num(P467));
    EXPECT_NE(slip.severance_divisor, 13.5);
}

TEST_F(OpenSlip, TheSectorRateLosesHalfAPointForContractsFourAndFive) {
    field(S004, "2.30");
    field(P188, "1");
    open();
    EXPECT_EQ(slip.PCTCONTR[2], 2.30);
    for (const char* contract : {"4", "5"}) {
        field(P045, contract);
        open();
        EXPECT_DOUBLE_EQ(slip.PCTCONTR[2], 1.80);
    }
    field(S004, "0.30");
    open();
    EXPECT_EQ(slip.PCTCONTR[2], 0);
    field(P188, "0");
    open();
    EXPECT_EQ(slip.PCTCONTR[2], 0.30);
}

TEST_F(OpenSlip, TheCeilingTestWantsIncomeWithinBothLimits) {
    scrivi(F412, 30000);
    scrivi(F413, 1000);
    scrivi(F415, 1);
    field(Q775, "30000");
    field(Q776, "999.99");
    open();
    EXPECT_TRUE(slip.ceiling_flag);
    field(Q776, "1000");
    open();
    EXPECT_FALSE(slip.ceiling_flag);
    field(Q776, "0");
    field(Q775, "30000.01");
    open();
    EXPECT_FALSE(slip.ceiling_flag);
    field(Q775, "0");
    open();
    EXPECT_FALSE(slip.ceiling_flag);
    field(Q775, "30000");
    field(P758, "1");
    open();
    EXPECT_FALSE(slip.ceiling_flag);
}

TEST_F(OpenSlip, TheCeilingIsRaisedByTheContributionsThatAreTurnedOn) {
    struct Case {
        const char* first;
        const char* third;
        const char* eighth;
        double percent;
    };
    scrivi(F412, 30000);
    scrivi(F413, 1000);
    scrivi(F415, 0);
    field(S003, "9.19");
    field(S005, "0.30");
    field(S010, "5.84");
    for (const Case& of :
         {Case{"1", "0", "0", 9.19}, Case{"0", "1", "0", 0.30}, Case{"0", "0", "1", 5.84},
          Case{"1", "1", "1", 15.33}, Case{"2", "2", "2", 0}}) {
        field(P181, of.first);
        field(P183, of.third);
        field(P188, of.eighth);
        field(Q775, "30000");
        // What is 1000 without its contributions.
        const double limit = ceiling_limit(of.percent);
        field(Q776, testo_numero(arrotonda(limit - 0.02)));
        open();
        EXPECT_TRUE(slip.ceiling_flag) << of.percent;
        field(Q776, testo_numero(arrotonda(limit + 0.02)));
        open();
        EXPECT_FALSE(slip.ceiling_flag) << of.percent;
    }
}

TEST_F(OpenSlip, TheOrdinaryDecemberSlipClosesTheYear) {
    open("311220244");
    EXPECT_TRUE(slip.CEDOLINOFINALE);
    open("311220240");
    EXPECT_FALSE(slip.CEDOLINOFINALE);
    open("301120244");
    EXPECT_FALSE(slip.CEDOLINOFINALE);
}

TEST_F(OpenSlip, KeepsTheDaysOfThePreviousSlip) {
    field(P215, "30");
    field(P216, "26");
    open();
    EXPECT_EQ(slip.month_days_previous, 3026);
}

TEST_F(OpenSlip, KnowsAnEarlierSlipOfTheSameMonthAndYear) {
    for (const auto& [last_slip, earlier] :
         {std::pair{"15052024", true}, {"30042024", false}, {"31052023", false}, {"0", false}}) {
        field(Q179, last_slip);
        open();
        EXPECT_EQ(slip.earlier_slip_this_month, earlier) << last_slip;
    }
}

TEST_F(OpenSlip, NothingOfThePreviousEmployeeStays) {
    open();
    slip.IMPSOCIALE1 = 5;
    slip.CEDOLINOFINALE = true;
    ABORTODIP = -1;
    open();
    EXPECT_EQ(slip.IMPSOCIALE1, 0);
    EXPECT_FALSE(slip.CEDOLINOFINALE);
    EXPECT_EQ(ABORTODIP, 0);
}

class LeaverScan : public OpenSlip {
  protected:
    LeaverScan() {
        scrivi(T073, 15);
        field(P013, "01012020");
    }
};

TEST_F(LeaverScan, TakesTheLeavingDateFromItem320) {
    field(Q401, line(1, 2600));
    field(Q402, line(320, 5052024));  // 5 May 2024, the leading zero lost
    field(Q403, line(999, 0));
    open();
    leaver_scan();
    EXPECT_EQ(testo(P017), "05052024");
    EXPECT_TRUE(slip.CEDOLINOFINALE);
}

TEST_F(LeaverScan, EndsAtTheEndOfTheTable) {
    field(Q401, line(999, 0));
    field(Q402, line(320, 5052024));
    open();
    leaver_scan();
    EXPECT_EQ(num(P017), 0);
    EXPECT_FALSE(slip.CEDOLINOFINALE);
}

TEST_F(LeaverScan, ReadsAllHundredLinesOfATableWithoutEnd) {
    for (const Descriptor& slot : serie(Q401, Q499)) {
        field(slot, line(1, 2600));
    }
    field(Q500, line(320, 5052024));
    open();
    leaver_scan();
    EXPECT_EQ(testo(P017), "05052024");
}

TEST_F(LeaverScan, DoesNothingOnASlipOfSettlementOnly) {
    field(P118, "2");
    field(Q401, line(320, 5052024));
    open();
    leaver_scan();
    EXPECT_EQ(num(P017), 0);
    EXPECT_EQ(num(Q136), 0);
}

TEST_F(LeaverScan, CountsAMonthOfServiceWithTheMinimumDays) {
    field(P013, "17052024");  // 31 + 1 - 17 = 15 days
    open();
    leaver_scan();
    EXPECT_EQ(num(Q136), 1);
    EXPECT_TRUE(slip.month_counted);
    EXPECT_EQ(testo(P197).substr(0, 1), "1");
}

TEST_F(LeaverScan, DoesNotCountAMonthTooShort) {
    field(P013, "18052024");
    field(P197, "10");
    field(Q179, "30042024");
    open();
    leaver_scan();
    EXPECT_EQ(num(Q136), 0);
    EXPECT_FALSE(slip.month_counted);
    EXPECT_EQ(testo(P197), "01");  // the mark of this month, then the former one
}

TEST_F(LeaverScan, DoesNotCountAMonthTwice) {
    field(Q136, "5");
    field(P197, "10");
    field(Q179, "31052024");
    open();
    leaver_scan();
    EXPECT_EQ(num(Q136), 5);
}

TEST_F(LeaverScan, CountsEachNewMonth) {
    field(Q136, "4");
    field(P197, "10");
    field(Q179, "30042024");
    open();
    leaver_scan();
    EXPECT_EQ(num(Q136), 5);
    EXPECT_EQ(testo(P197), "11");
}

TEST_F(LeaverScan, DoesNotCountOnAnAdditionalRun) {
    open("310520240");
    leaver_scan();
    EXPECT_EQ(num(Q136), 0);
}

// April counted; then a slip of May that counts no month; then the ordinary slip of May, which
// counts it.
TEST_F(LeaverScan, CountsTheMonthAfterAnAdditionalOrASettlementSlip) {
    for (const auto& [kind, settlement] : {std::pair{"0", "0"}, {"4", "2"}}) {
        field(Q136, "4");
        field(P197, "10");
        field(Q179, "30042024");
        field(P118, settlement);
        open(std::string("31052024") + kind);
        leaver_scan();
        EXPECT_EQ(num(Q136), 4) << settlement;
        EXPECT_EQ(testo(P197), "01") << settlement;
        field(P197, testo(P197));
        field(Q179, "31052024");
        field(P118, "0");
        open();
        leaver_scan();
        EXPECT_EQ(num(Q136), 5) << settlement;
        EXPECT_EQ(testo(P197), "10") << settlement;
    }
}

TEST_F(LeaverScan, AnAdditionalSlipKeepsTheMarkOfItsOwnMonth) {
    field(P197, "10");
    field(Q179, "31052024");
    open("310520240");
    leaver_scan();
    EXPECT_EQ(testo(P197), "10");
}

TEST_F(LeaverScan, TakesTheDaysAfterTheLeavingOff) {
    field(Q401, line(320, 20052024));
    field(Q402, line(999, 0));
    open();
    leaver_scan();
    take_off_days_outside_service();
    EXPECT_EQ(num(P215), 20);
    EXPECT_EQ(num(P216), 20);
    EXPECT_EQ(slip.GGLAVORABILI, 20);
}

}  // namespace
}  // namespace ModSWCALM
