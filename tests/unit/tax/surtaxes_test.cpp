#include "tax/surtaxes.h"

#include <array>
#include <utility>

#include "records/dictionary/DITX.h"
#include "records/numbers.h"
#include "tax/municipal_table.h"
#include "tax/surtaxes_parts.h"
#include "tests/support/temp_directory.h"
#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

// ---- Instalments ----

class SurtaxInstalments : public TaxTest {
  protected:
    /// Instalments of the months first to last, each slip after the other.
    static double withheld(const Descriptor& instalment, int first, int last) {
        double sum = 0;
        for (int month = first; month <= last; ++month) {
            slip_of(month);
            sum += num(instalment);
        }
        return sum;
    }
    static double slip_of(int month, char kind = '4') {
        set_period("28" + zeri_a_sinistra(testo_numero(month), 2) + "2024", kind);
        return RATAADDIZIONALI();
    }
};

TEST_F(SurtaxInstalments, ElevenInstalmentsLoseNoCentAndDecemberHasNone) {
    scrivi(Q317, 100);
    scrivi(Q318, 11);
    EXPECT_NEAR(slip_of(1), 9.09, 1e-9);  // 100 / 11 = 9.0909
    EXPECT_NEAR(num(Q340), 9.09, 1e-9);
    EXPECT_NEAR(withheld(Q340, 2, 10), 81.81, 1e-9);  // 9 x 9.09
    EXPECT_NEAR(slip_of(11), 9.10, 1e-9);             // 100 - 10 x 9.09
    EXPECT_EQ(slip_of(12), 0);
    EXPECT_EQ(num(Q339), 100);
    EXPECT_EQ(num(Q340), 0);
}

TEST_F(SurtaxInstalments, TheLastInstalmentIsSmallerWhereTheOthersAreRoundedUp) {
    scrivi(Q317, 200.06);
    scrivi(Q318, 11);
    // 200.06 / 11 = 18.1873, rounded 18.19; the rest 200.06 - 181.90
    EXPECT_NEAR(withheld(Q340, 1, 10), 181.90, 1e-9);
    EXPECT_NEAR(slip_of(11), 18.16, 1e-9);
}

TEST_F(SurtaxInstalments, LessThanACentAMonthIsWithheldAtTheEnd) {
    scrivi(Q235, 0.04);
    scrivi(Q315, 11);
    EXPECT_EQ(withheld(Q320, 1, 10), 0);
    EXPECT_NEAR(slip_of(11), 0.04, 1e-9);
}

TEST_F(SurtaxInstalments, OneInstalmentTakesTheBalanceInJanuaryAndNoneTakesNothing) {
    scrivi(Q317, 77.77);
    scrivi(Q318, 1);
    EXPECT_NEAR(slip_of(1), 77.77, 1e-9);
    EXPECT_EQ(slip_of(2), 0);
    EXPECT_NEAR(num(Q339), 77.77, 1e-9);
    scrivi(Q235, 50);
    scrivi(Q315, 0);
    EXPECT_EQ(slip_of(3), 0);
    EXPECT_EQ(num(Q316), 0);
}

TEST_F(SurtaxInstalments, TheWindowEndsWithTheNumberOfInstalments) {
    scrivi(Q317, 100);
    scrivi(Q318, 4);
    EXPECT_EQ(slip_of(5), 0);  // nothing was withheld in its months, and they are over
    EXPECT_EQ(slip_of(4), 100);
}

TEST_F(SurtaxInstalments, TheAdvanceFallsFromMarchToNovemberOnOrdinarySlips) {
    scrivi(Q674, 100);
    scrivi(Q673, 9);
    EXPECT_EQ(withheld(Q675, 1, 2), 0);
    EXPECT_NEAR(withheld(Q675, 3, 10), 88.88, 1e-9);  // 8 x 11.11
    EXPECT_NEAR(slip_of(11), 11.12, 1e-9);
    EXPECT_EQ(slip_of(12), 0);
    EXPECT_EQ(num(Q678), 100);
}

TEST_F(SurtaxInstalments, AnAdditionalSlipLeavesTheAdvanceAloneAndDecembersBooksOnly) {
    scrivi(Q674, 90);
    scrivi(Q673, 9);
    scrivi(Q317, 110);
    scrivi(Q318, 11);
    slip_of(6);
    EXPECT_EQ(slip_of(6, '0'), 10);  // the balance is withheld on the 14th too
    EXPECT_EQ(num(Q339), 10);
    EXPECT_EQ(num(Q675), 10);
    EXPECT_EQ(num(Q678), 0);
    slip_of(7);
    EXPECT_EQ(num(Q678), 10);
    EXPECT_EQ(num(Q339), 20);
    slip_of(11);
    EXPECT_EQ(num(Q340), 80);  // 110 - 10 of June - 10 of the 14th - 10 of July
    EXPECT_EQ(slip_of(12, '0'), 0);
    EXPECT_EQ(num(Q339), 110);
    EXPECT_EQ(num(Q340), 0);
}

TEST_F(SurtaxInstalments, AnExtraSlipNeverTakesMoreThanTheRest) {
    scrivi(Q317, 110);
    scrivi(Q318, 11);
    scrivi(Q339, 105);
    EXPECT_EQ(slip_of(5), 5);
}

TEST_F(SurtaxInstalments, WhoLeavesOwesTheRestOfAllThreeInThatMonth) {
    scrivi(P017, "20052024");
    for (const auto& [total, number] : {std::pair{Q317, Q318}, {Q235, Q315}, {Q674, Q673}}) {
        scrivi(total, 90);
        scrivi(number, 9);
    }
    EXPECT_EQ(slip_of(4), 30);   // the leaving date lies ahead: instalments go on
    EXPECT_EQ(slip_of(5), 240);  // 3 x 90 - 30
    EXPECT_EQ(slip_of(6), 0);
}

TEST_F(SurtaxInstalments, WhoLeavesInDecemberOwesTheRestBehindTheWindow) {
    scrivi(P017, "31122024");
    scrivi(Q317, 110);
    scrivi(Q318, 11);
    EXPECT_EQ(slip_of(12), 110);
}

TEST_F(SurtaxInstalments, WhoLeavesBeforeMarchIsNotAskedForTheAdvance) {
    scrivi(P017, "28022024");
    scrivi(Q674, 54);
    scrivi(Q673, 9);
    scrivi(Q317, 110);
    scrivi(Q318, 11);
    EXPECT_EQ(slip_of(1), 10);
    EXPECT_EQ(slip_of(2), 100);  // the rest of the balance alone
    EXPECT_EQ(num(Q675), 0);
}

TEST_F(SurtaxInstalments, OneCompanyGoesOnByInstalments) {
    scrivi(T013, "90000000033");
    scrivi(P017, "20052024");
    scrivi(Q317, 110);
    scrivi(Q318, 11);
    EXPECT_EQ(slip_of(5), 10);
}

TEST_F(SurtaxInstalments, JanuaryPaysABalanceBelowZeroOnce) {
    scrivi(Q235, -48.5);
    scrivi(Q315, 11);
    scrivi(P241, 1000);
    EXPECT_EQ(slip_of(1, '0'), 0);
    EXPECT_EQ(num(P241), 1000);
    EXPECT_EQ(slip_of(1), 0);
    EXPECT_EQ(num(P241), 1048.5);
    EXPECT_EQ(num(Q316), -48.5);
    EXPECT_EQ(slip_of(1), 0);
    EXPECT_EQ(num(P241), 1048.5);
    EXPECT_EQ(slip_of(2), 0);
    EXPECT_EQ(num(P241), 1048.5);
}

TEST_F(SurtaxInstalments, DecembersOrdinarySlipWritesTheNumberOfNextYear) {
    set_period("30112024");
    instalments_of_next_year();
    EXPECT_EQ(num(Q318), 0);
    set_period("31122024", '0');
    instalments_of_next_year();
    EXPECT_EQ(num(Q318), 0);
    set_period("31122024");
    instalments_of_next_year();
    EXPECT_EQ(testo(Q318), "11");
    EXPECT_EQ(testo(Q315), "11");
    scrivi(T183, 1);
    instalments_of_next_year();
    EXPECT_EQ(testo(Q318), "10");
    EXPECT_EQ(testo(Q315), "10");
}

// ---- Regional ----

/// A line of the table: region, then limit in eleven characters and rate in five.
std::string line(const std::string& region, std::initializer_list<const char*> columns) {
    std::string text = region;
    bool limit = true;
    for (const char* column : columns) {
        text += zeri_a_sinistra(column, limit ? 11 : 5);
        limit = !limit;
    }
    return text;
}

class RegionalSurtax : public TaxTest {
  protected:
    RegionalSurtax() { ModSWCALM::run_tables.PARAMETRI.fill({}); }
    ~RegionalSurtax() override { ModSWCALM::run_tables.PARAMETRI.fill({}); }
    RegionalSurtax(const RegionalSurtax&) = delete;
    RegionalSurtax& operator=(const RegionalSurtax&) = delete;
    RegionalSurtax(RegionalSurtax&&) = delete;
    RegionalSurtax& operator=(RegionalSurtax&&) = delete;

    static void region(const std::string& code, const std::string& table_line) {
        ModSWCALM::run_tables.PARAMETRI[1] = table_line;
        scrivi(P592, code);
    }
    static double on(double base) { return arrotonda(regional_surtax_on(base)); }
    static void year(int year) { set_period("3112" + testo_numero(year)); }
    /// The year's base and net tax, as the adjustment leaves them.
    static void adjusted(double base, double net_tax) {
        tax_state.ImponibileAddizionali = base;
        tax_state.ImpostaLorda = net_tax;
    }
};

TEST_F(RegionalSurtax, BracketsTaxEachPartAtItsRate) {
    // Emilia-Romagna 2024: 1.33, 1.93, 2.03, 2.27 per cent
    region("06", line("06", {"15000.00", "1.33", "28000.00", "1.93", "50000.00", "2.03",
                             "999999.99", "2.27"}));
    EXPECT_EQ(on(15000), 199.50);     // 15000 x 1.33 %
    EXPECT_EQ(on(15000.01), 199.50);  // a cent at 1.93 %
    EXPECT_EQ(on(15001), 199.52);     // 199.50 + 0.0193
    EXPECT_EQ(on(28000), 450.40);     // 199.50 + 13000 x 1.93 % = 250.90
    EXPECT_EQ(on(28001), 450.42);     // + 0.0203
    EXPECT_EQ(on(50000), 897.00);     // + 22000 x 2.03 % = 446.60
    EXPECT_EQ(on(60000), 1124.00);    // + 10000 x 2.27 %
}

TEST_F(RegionalSurtax, ALineWithFewerColumnsGoesOnWithItsLastRate) {
    region("06", line("06", {"15000.00", "1.33", "28000.00", "1.93"}));
    EXPECT_EQ(on(38000), 643.40);  // 450.40 + 10000 x 1.93 %
    region("06", "0600015000.0");  // no rate at all
    EXPECT_EQ(on(38000), 0);
    region("06", "06");
    EXPECT_EQ(on(38000), 0);
}

TEST_F(RegionalSurtax, AStarForALimitClosesTheTableWithZero) {
    region("06", "06" + std::string("00015000.00") + "01.33" + "*          " + "01.93");
    EXPECT_EQ(on(15000), 199.50);
    EXPECT_EQ(on(15000.01), 0);
}

TEST_F(RegionalSurtax, FiveBracketsReachTheLastColumns) {
    region("13", line("13", {"10000.00", "1.00", "20000.00", "2.00", "30000.00", "3.00", "40000.00",
                             "4.00", "999999.99", "5.00"}));
    EXPECT_EQ(on(50000), 1500);  // 100 + 200 + 300 + 400 + 500
    EXPECT_EQ(ModSWCALM::slip.regional_columns[8], "00999999.99");
    EXPECT_EQ(ModSWCALM::slip.regional_columns[9], "05.00");
}

TEST_F(RegionalSurtax, TheTableEndsAtAStarOrAnEmptyLine) {
    auto& table = ModSWCALM::run_tables.PARAMETRI;
    table[1] = line("01", {"999999.99", "1.73"});
    table[2] = "*";
    table[3] = line("06", {"999999.99", "1.33"});
    scrivi(P592, "06");
    EXPECT_EQ(on(10000), 0);
    EXPECT_EQ(ModSWCALM::slip.regional_columns[0], "");
    table[2] = "";
    EXPECT_EQ(on(10000), 0);
    table[2] = line("02", {"999999.99", "1.23"});
    EXPECT_EQ(on(10000), 133);
    table[3] = "";
    table[50] = line("06", {"999999.99", "1.33"});
    for (std::size_t i = 3; i < 50; ++i) {
        table[i] = line("99", {"999999.99", "9.00"});
    }
    EXPECT_EQ(on(10000), 133);
}

TEST_F(RegionalSurtax, TheRegionOfWorkStandsInForABlankOneAndIsKept) {
    ModSWCALM::run_tables.PARAMETRI[1] = line("06", {"999999.99", "1.33"});
    scrivi(P592, "");
    scrivi(P120, 6);
    EXPECT_EQ(on(10000), 133);
    EXPECT_EQ(testo(P592), "06");
}

TEST_F(RegionalSurtax, FriuliTaxesTheWholeBaseAtTheRateOfItsBand) {
    region("07", line("07", {"15000.00", "0.70", "999999.99", "1.23"}));
    EXPECT_EQ(on(15000), 105.00);     // 0.70 %
    EXPECT_EQ(on(15000.01), 184.50);  // 15000.01 x 1.23 % = 184.5001
    EXPECT_EQ(on(30000), 369.00);
    year(2011);
    EXPECT_EQ(on(30000), 289.50);  // brackets: 105 + 15000 x 1.23 %
}

TEST_F(RegionalSurtax, TrentoExemptsUpToThirtyThousandInItsYears) {
    region("18", line("18", {"50000.00", "1.23", "999999.99", "1.73"}));
    for (const int exempt_year : {2024, 2025}) {
        year(exempt_year);
        EXPECT_EQ(on(30000), 0);
        EXPECT_EQ(on(30000.01), 369.00);  // 30000.01 x 1.23 % = 369.0001
        EXPECT_EQ(on(60000), 788.00);     // 615 + 10000 x 1.73 %
    }
    for (const int other_year : {2023, 2026}) {
        year(other_year);
        EXPECT_EQ(on(30000), 369.00);
    }
}

TEST_F(RegionalSurtax, AostaExemptsUpToFifteenThousand) {
    region("20", line("20", {"999999.99", "1.23"}));
    EXPECT_EQ(on(15000), 0);
    EXPECT_EQ(on(15000.01), 184.50);
    year(2023);
    EXPECT_EQ(on(15000), 184.50);
}

TEST_F(RegionalSurtax, BolzanoTakesAFixedSumAndSumsForChildrenOff) {
    region("03", line("03", {"50000.00", "1.23", "999999.99", "1.73"}));
    EXPECT_EQ(on(35000), 0);          // 35000 x 1.23 % = 430.50, all of it off
    EXPECT_EQ(on(50000), 184.50);     // 615 - 430.50
    EXPECT_EQ(on(50000.01), 490.00);  // 615.0002 - 125
    EXPECT_EQ(on(70000.01), 836.00);  // 615 + 20000.01 x 1.73 % = 961.0002 - 125
    dependant(0, "F", "10032015");
    dependant(1, "A", "10031950");  // no child
    scrivi(kDependantSlots[0].months, 12);
    EXPECT_EQ(on(50001), 238.02);     // 615.0173 - 125 - 252
    EXPECT_EQ(on(70000), 584.00);     // 961 - 125 - 252
    EXPECT_EQ(on(70000.01), 836.00);  // above the limit of the children
    dependant(2, "D", "10032012", 50);
    scrivi(kDependantSlots[2].months, 6);
    EXPECT_EQ(on(70000), 521.00);  // 584 - 252 x 6 / 12 x 50 %
    set_period("31122024");
    dependant(3, "F", "15102024");  // October to December
    EXPECT_EQ(on(70000), 458.00);   // 521 - 252 x 3 / 12
    year(2023);
    EXPECT_EQ(on(50000), 615.00);
}

TEST_F(RegionalSurtax, LiguriaAsksLessOfFamiliesWithOneChildAtMost) {
    region("09", line("09", {"15000.00", "1.23", "28000.00", "1.81", "50000.00", "2.31",
                             "999999.99", "2.33"}));
    EXPECT_EQ(on(15000), 184.50);
    EXPECT_EQ(on(28000), 417.20);  // 184.50 + 13000 x 1.79 %
    EXPECT_EQ(on(50000), 925.40);  // + 22000 x 2.31 %
    dependant(0, "F", "10032015");
    EXPECT_EQ(on(50000), 925.40);
    dependant(1, "C", "10031980");  // no child
    EXPECT_EQ(on(50000), 925.40);
    dependant(2, "D", "10032016", 50);
    EXPECT_EQ(on(50000), 928.00);  // two: 184.50 + 13000 x 1.81 % + 508.20
    dependant(2, "D", "10032016", 0);
    EXPECT_EQ(on(50000), 925.40);
    // A table that asks less of that bracket already.
    region("09", line("09", {"28000.00", "1.23", "50000.00", "3.18", "999999.99", "3.23"}));
    EXPECT_EQ(on(30000), 408.00);  // 344.40 + 2000 x 3.18 %
    region("09", line("09", {"15000.00", "1.23", "28000.00", "1.81", "999999.99", "2.31"}));
    year(2023);
    EXPECT_EQ(on(50000), 928.00);
}

TEST_F(RegionalSurtax, ARegionWithoutALineHasNoRuleEither) {
    region("21", line("20", {"999999.99", "1.23"}));
    scrivi(P469, 1);
    EXPECT_EQ(on(20000), 0);
}

TEST_F(RegionalSurtax, VenetoTaxesDisabledPeopleAtNinePerThousandUpToFiftyThousand) {
    region("21", line("21", {"999999.99", "1.23"}));
    EXPECT_EQ(on(50000), 615.00);
    scrivi(P469, 1);
    EXPECT_EQ(on(50000), 450.00);     // 0.9 %
    EXPECT_EQ(on(50000.01), 615.00);  // 50000.01 x 1.23 %
    year(2021);
    EXPECT_EQ(on(50000), 615.00);
}

TEST_F(RegionalSurtax, LiguriaSoftenedTheStepAtTwentyEightThousandUntil2013) {
    region("09", line("09", {"28000.00", "1.23", "999999.99", "1.73"}));
    year(2012);
    EXPECT_EQ(on(28000), 344.40);     // 28000 x 1.23 %
    EXPECT_EQ(on(28000.01), 344.41);  // 484.4002 - 142.45 x 0.9827 = 139.9856
    EXPECT_EQ(on(28142.46), 486.86);  // 28142.46 x 1.73 % = 486.8646
    EXPECT_EQ(on(28142.47), 486.86);
    EXPECT_EQ(on(40000), 692.00);
    year(2014);
    EXPECT_EQ(on(28100), 346.13);  // brackets: 344.40 + 100 x 1.73 %
}

TEST_F(RegionalSurtax, LazioTakesSixtyEuroOffBetweenTwentyEightAndThirtyFiveThousand) {
    region("08", line("08", {"15000.00", "1.73", "999999.99", "3.33"}));
    EXPECT_EQ(on(27999.99), 692.40);  // 259.50 + 12999.99 x 3.33 % = 432.8997
    EXPECT_EQ(on(28000), 632.40);     // 259.50 + 432.90 - 60
    EXPECT_EQ(on(35000), 865.50);     // 259.50 + 666 - 60
    EXPECT_EQ(on(35000.01), 925.50);
    year(2023);
    EXPECT_EQ(on(28000), 692.40);
}

TEST_F(RegionalSurtax, SardiniaTakesTwoHundredEuroOffADependantByMonthsAndShare) {
    region("15", line("15", {"999999.99", "1.23"}));
    dependant(0, "F", "10032015");
    scrivi(kDependantSlots[0].months, 12);
    EXPECT_EQ(on(50000), 415.00);     // 615 - 200
    EXPECT_EQ(on(50000.01), 615.00);  // above the limit
    scrivi(kDependantSlots[0].months, 3);
    EXPECT_EQ(on(50000), 565.00);  // 200 / 12 x 3
    dependant(1, "F", "10032016", 50);
    scrivi(kDependantSlots[1].months, 12);
    EXPECT_EQ(on(50000), 465.00);   // 50 + 100
    dependant(2, "F", "15062024");  // born in the year of the run
    EXPECT_EQ(on(50000), 465.00);
    EXPECT_EQ(on(10000), 0);  // 123 - 150, not below 0
}

TEST_F(RegionalSurtax, LiguriaTakesAFixedSumOffADependantUpToTwentyEightThousand) {
    region("09", line("09", {"15000.00", "1.23", "28000.00", "1.81", "999999.99", "2.31"}));
    dependant(0, "F", "10032015", 50);
    dependant(3, "F", "10032016");
    EXPECT_EQ(on(28000), 19.80);  // 184.50 + 235.30 - 2 x 200
    EXPECT_EQ(on(28000.01), 419.80);
    EXPECT_EQ(on(15000), 0);
    dependant(4, "F", "10032024");  // born in the year of the run
    EXPECT_EQ(on(28000), 19.80);
}

TEST_F(RegionalSurtax, IsLessWhatEarlierSlipsAndAnotherEmployerTook) {
    region("01", line("01", {"999999.99", "1.73"}));
    set_period("31122024");
    adjusted(20000, 1000);
    scrivi(Q505, 46);
    regional_surtax();
    EXPECT_EQ(num(Q342), 300.00);  // 346 - 46
    EXPECT_EQ(num(P259), 0);       // who stays pays it next year
    regional_surtax();
    EXPECT_EQ(num(Q342), 0);  // 346 - 300 - 46
}

TEST_F(RegionalSurtax, IsChargedAtOnceToWhoLeaves) {
    region("01", line("01", {"999999.99", "1.73"}));
    scrivi(P017, "31052024");
    scrivi(P259, 100);
    adjusted(20000, 1000);
    regional_surtax();
    EXPECT_EQ(num(Q342), 346);
    EXPECT_EQ(num(P259), 446);
}

TEST_F(RegionalSurtax, NeedsABaseAndANetTaxAndTheScale) {
    region("01", line("01", {"999999.99", "1.73"}));
    adjusted(20000, 0);
    regional_surtax();
    EXPECT_EQ(num(Q342), 0);
    adjusted(0, 1000);
    regional_surtax();
    EXPECT_EQ(num(Q342), 0);
    adjusted(20000, 1000);
    scrivi(P031, 2);
    regional_surtax();
    EXPECT_EQ(num(Q342), 0);
}

// ---- Municipal ----

class MunicipalSurtax : public TaxTest {
  protected:
    MunicipalSurtax() {
        archive = directory.file("TABCOM.MDB");
        const platform::Table schema = municipal_schema();
        platform::create_database(archive, {&schema, 1});
        municipal_table.archive =
            platform::open_database(archive, platform::DatabaseMode::read_write);
        open_rows();
        tax_state.ImpostaLorda = 1000;
        set_period("31122024");
        scrivi(P591, "H501");
        ModSWCALM::run_tables.list_1000.fill({});
        ModSWCALM::run_tables.list_1000_count = 0;
    }
    ~MunicipalSurtax() override { close_TABCOM(); }
    MunicipalSurtax(const MunicipalSurtax&) = delete;
    MunicipalSurtax& operator=(const MunicipalSurtax&) = delete;
    MunicipalSurtax(MunicipalSurtax&&) = delete;
    MunicipalSurtax& operator=(MunicipalSurtax&&) = delete;

    static void open_rows() {
        municipal_table.rows = municipal_table.archive->open_table("CATASTO");
        municipal_table.rows->set_index(municipal_schema().index);
    }
    using Columns = std::initializer_list<std::pair<const char*, platform::Value>>;
    static void town(const char* code, Columns columns) {
        platform::Recordset& rows = *municipal_table.rows;
        rows.add();
        rows.set_field("CHIAVE", code);
        for (const auto& [column, value] : columns) {
            rows.set_field(column, value);
        }
        rows.update();
    }
    static double on(double base) {
        azzera({Q343});
        tax_state.ImponibileAddizionali = base;
        municipal_surtax();
        return num(Q343);
    }
    static void leaver(const char* date = "31122024") { scrivi(P017, date); }
    static std::string listed() { return ModSWCALM::run_tables.list_1000[1]; }

    test_support::TempDirectory directory;
    std::string archive;
    /// 10000 euro a band, each a tenth of a percent dearer.
    static void town_of_six_bands() {
        town("H501", {{"FASCIA", 10000},
                      {"FASCIA_2", 20000},
                      {"FASCIA_3", 30000},
                      {"FASCIA_4", 40000},
                      {"FASCIA_5", 50000},
                      {"FASCIA_6", 60000},
                      {"aliquota", 0.1},
                      {"aliquota_2", 0.2},
                      {"aliquota_3", 0.3},
                      {"aliquota_4", 0.4},
                      {"aliquota_5", 0.5},
                      {"aliquota_6", 0.6}});
    }
};

constexpr double kNoLimit = 999999.99;

TEST_F(MunicipalSurtax, OneRateOnTheWholeBase) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    EXPECT_EQ(on(24266.34), 218.40);  // 24266.34 x 0.9 % = 218.3971
    EXPECT_EQ(num(Q902), 0.9);
    EXPECT_EQ(num(Q787), 0);
    EXPECT_EQ(num(P259), 0);
}

TEST_F(MunicipalSurtax, ExemptUpToTheLimitAndWholeAboveIt) {
    town("H501", {{"ESENZIONE", 12000}, {"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    EXPECT_EQ(on(12000), 0);
    EXPECT_EQ(num(Q787), 12000);
    EXPECT_EQ(on(12000.01), 108.00);  // 12000.01 x 0.9 % = 108.0001
    EXPECT_EQ(num(Q787), 0);
}

TEST_F(MunicipalSurtax, ExemptWithAnAdvanceGivesItBack) {
    town("H501", {{"ESENZIONE", 12000}, {"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q674, 30);
    scrivi(Q678, 27);
    scrivi(Q675, 3);
    EXPECT_EQ(on(12000), -30);
    EXPECT_EQ(num(P241), 0);  // January pays it to who stays
    EXPECT_EQ(num(Q674), 30);
    leaver();
    EXPECT_EQ(on(12000), -30);
    EXPECT_EQ(num(P241), 30);
    EXPECT_EQ(num(Q674), 0);
    EXPECT_EQ(num(P259), 0);
    EXPECT_EQ(on(12000), 0);  // a further slip gives nothing back twice
    EXPECT_EQ(num(P241), 30);
}

TEST_F(MunicipalSurtax, ABandsLowerLimitStaysFree) {
    town("H501", {{"FASCIA", 15000},
                  {"aliquota", 0.5},
                  {"FASCIA_2", 28000},
                  {"aliquota_2", 0.7},
                  {"FASCIA_3", kNoLimit},
                  {"aliquota_3", 0.8}});
    EXPECT_EQ(on(15000), 75.00);  // 0.5 % of all
    EXPECT_EQ(num(Q787), 0);
    EXPECT_EQ(on(16000), 7.00);  // (16000 - 15000) x 0.7 %
    EXPECT_EQ(num(Q787), 15000);
    EXPECT_EQ(on(28000), 91.00);  // 13000 x 0.7 %
    EXPECT_EQ(on(30000), 16.00);  // 2000 x 0.8 %
    EXPECT_EQ(num(Q902), 0.8);
}

TEST_F(MunicipalSurtax, ALimitOfZeroEndsTheWalkWithTheBandBefore) {
    town("H501", {{"FASCIA", 15000},
                  {"aliquota", 0.5},
                  {"FASCIA_2", 28000},
                  {"aliquota_2", 0.7},
                  {"aliquota_3", 0.8}});
    EXPECT_EQ(on(30000), 105.00);  // (30000 - 15000) x 0.7 %
    EXPECT_EQ(num(Q902), 0.7);
}

TEST_F(MunicipalSurtax, ACentAboveABandsLimitIsInTheNextBand) {
    town_of_six_bands();
    // At the limit of the i-th band 10000 (the whole first band, else what exceeds the lower limit)
    // at i tenths of a percent; a cent more is the only one of the next band.
    for (int band = 1; band <= 6; ++band) {
        EXPECT_EQ(on(10000. * band), 10. * band) << band;
        EXPECT_DOUBLE_EQ(num(Q902), 0.1 * band);
        EXPECT_EQ(num(Q787), 10000. * (band - 1));
        if (band < 6) {
            EXPECT_EQ(on(10000. * band + 0.01), 0) << band;
            EXPECT_DOUBLE_EQ(num(Q902), 0.1 * (band + 1));
            EXPECT_EQ(num(Q787), 10000. * band);
        }
    }
    EXPECT_EQ(on(60000.01), 60);  // 10000.01 x 0.6 %
    EXPECT_EQ(num(Q787), 50000);
}

TEST_F(MunicipalSurtax, SixBandsAreWalkedAndTheLastRateHoldsAboveThem) {
    town_of_six_bands();
    const std::array rates{0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.6};
    for (std::size_t i = 0; i < rates.size(); ++i) {
        on(10000. * static_cast<double>(i) + 5000);
        EXPECT_EQ(num(Q902), rates[i]) << i;
    }
}

TEST_F(MunicipalSurtax, BracketsTaxEachPartAtItsRate) {
    // Arsiero 2024: 0.73, 0.76, 0.78, 0.80 per cent
    town("H501", {{"FASCIA", 15000},
                  {"aliquota", 0.73},
                  {"FASCIA_2", 28000},
                  {"aliquota_2", 0.76},
                  {"FASCIA_3", 50000},
                  {"aliquota_3", 0.78},
                  {"FASCIA_4", kNoLimit},
                  {"aliquota_4", 0.8},
                  {"TIPOCALCOLO", "S"}});
    EXPECT_EQ(on(15000), 109.50);
    EXPECT_EQ(on(15001), 109.51);  // + 0.0076
    EXPECT_EQ(on(28000), 208.30);  // + 13000 x 0.76 % = 98.80
    EXPECT_EQ(on(50000), 379.90);  // + 22000 x 0.78 % = 171.60
    EXPECT_EQ(on(60000), 459.90);  // + 10000 x 0.80 %
    EXPECT_EQ(num(Q902), 0);
    EXPECT_EQ(num(Q787), 0);
}

TEST_F(MunicipalSurtax, BracketsThatEndGoOnWithTheLastRate) {
    town("H501", {{"FASCIA", 15000}, {"aliquota", 0.4}, {"TIPOCALCOLO", "S"}});
    EXPECT_EQ(on(20000), 80.00);
}

TEST_F(MunicipalSurtax, WithoutARateOfItsOwnTheEmployeesRateHolds) {
    town("H501", {{"TIPOCALCOLO", " ** "}});
    scrivi(Q319, 0.6);
    EXPECT_EQ(on(20000), 120.00);
    EXPECT_NE(listed().find(" COD.COM 01/01/AC H501 ** % ADD.COM CAMPO  Q319 0.60"),
              std::string::npos)
        << listed();
}

TEST_F(MunicipalSurtax, ARateOfZeroIsNoSurtax) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0}, {"TIPOCALCOLO", "F"}});
    scrivi(Q319, 0.6);
    EXPECT_EQ(on(20000), 0);
}

TEST_F(MunicipalSurtax, AMunicipalityThatIsNotInTheTableTakesTheEmployeesRateAndIsMarked) {
    scrivi(P001, "0010000001");
    scrivi(P002, "ROSSI");
    scrivi(P003, "MARIA");
    scrivi(Q319, 0.8);
    EXPECT_EQ(on(20000), 160.00);
    EXPECT_EQ(listed(),
              "0010000001 ROSSI MARIA Q901 T.CALC. 0 COD.COM 01/01/AC H501 ** % ADD.COM CAMPO  "
              "Q319 0.80");
}

TEST_F(MunicipalSurtax, WithoutATableTheEmployeesRateHoldsWithoutAMark) {
    close_TABCOM();
    EXPECT_EQ(on(20000), 0);
    EXPECT_EQ(listed(), "");
    scrivi(Q319, 0.8);
    EXPECT_EQ(on(20000), 160.00);
    EXPECT_NE(listed().find(" COD.COM 01/01/AC H501 % ADD.COM CAMPO  Q319 0.80"),
              std::string::npos);
}

TEST_F(MunicipalSurtax, TheListTellsTheFormOfTheTable) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    on(20000);
    EXPECT_TRUE(
        listed().ends_with(" COD.COM 01/01/AC H501 % ADD.COM IN TAB.Q902 0.90 CALCOLO A "
                           "FASCIE"))
        << listed();
    town("F205", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}, {"TIPOCALCOLO", "S"}});
    scrivi(P591, "F205");
    on(20000);
    EXPECT_TRUE(ModSWCALM::run_tables.list_1000[2].ends_with(
        " COD.COM 01/01/AC F205 % ADD.COM CALCOLO A SCAGLIONI"));
    EXPECT_EQ(ModSWCALM::run_tables.list_1000_count, 2);
}

TEST_F(MunicipalSurtax, TheListShowsARateWithAllItsDecimals) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.785}});
    EXPECT_EQ(on(20000), 157.00);
    EXPECT_NE(listed().find("IN TAB.Q902 0.785 CALCOLO"), std::string::npos) << listed();
    town("F205", {{"FASCIA", kNoLimit}, {"aliquota", 0.00405}});
    scrivi(P591, "F205");
    on(20000);
    EXPECT_NE(ModSWCALM::run_tables.list_1000[2].find("IN TAB.Q902 0.00405 CALCOLO"),
              std::string::npos);
}

TEST_F(MunicipalSurtax, TheListTellsARateInPlayWhereNothingIsDue) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    EXPECT_EQ(on(0), 0);
    EXPECT_TRUE(listed().ends_with(" H501 % ADD.COM IN TAB.Q902 0.90 CALCOLO A FASCIE"))
        << listed();
    scrivi(P591, "Z999");
    on(0);
    EXPECT_TRUE(ModSWCALM::run_tables.list_1000[2].ends_with(" Z999 ** % ADD.COM CAMPO  Q319 0.00"))
        << ModSWCALM::run_tables.list_1000[2];
    scrivi(Q901, 1);
    on(0);
    EXPECT_TRUE(ModSWCALM::run_tables.list_1000[3].ends_with(
        " Q901 T.CALC. 1 COD.COM 01/01/AC Z999 % ADD.COM CAMPO  Q319 0.00"))
        << ModSWCALM::run_tables.list_1000[3];
    town("F205", {{"ESENZIONE", 12000}, {"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q901, 0);
    scrivi(P591, "F205");
    on(0);
    on(12000);  // exempt: no rate is in play
    EXPECT_EQ(ModSWCALM::run_tables.list_1000_count, 3);
}

TEST_F(MunicipalSurtax, TheListEndsWithItsLastLine) {
    scrivi(Q319, 0.8);
    ModSWCALM::run_tables.list_1000_count = 999;
    EXPECT_EQ(on(20000), 160.00);
    EXPECT_EQ(ModSWCALM::run_tables.list_1000_count, 999);
}

TEST_F(MunicipalSurtax, TheCalculationTypeSkipsTheTable) {
    town("H501", {{"ESENZIONE", 50000}, {"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q319, 0.5);
    scrivi(Q318, 11);
    scrivi(Q901, 1);
    EXPECT_EQ(on(20000), 100.00);
    EXPECT_EQ(num(Q318), 11);
    EXPECT_NE(listed().find(" Q901 T.CALC. 1 COD.COM"), std::string::npos);
    scrivi(Q901, 3);  // back to the table
    EXPECT_EQ(on(20000), 0);
    EXPECT_EQ(num(Q901), 0);
    EXPECT_EQ(num(Q318), 0);
}

TEST_F(MunicipalSurtax, AnotherMunicipalityReplacesThatOfTheFirstOfJanuary) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    town("F205", {{"FASCIA", kNoLimit}, {"aliquota", 0.8}});
    scrivi(P961, "F205");
    EXPECT_EQ(on(20000), 160.00);
    scrivi(P961, "    ");
    EXPECT_EQ(on(20000), 180.00);
}

TEST_F(MunicipalSurtax, NothingIsDueWithoutTaxOrForThoseInTheBooksOnly) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q674, 40);
    scrivi(Q678, 40);
    tax_state.ImpostaLorda = 0;
    EXPECT_EQ(on(20000), -40);
    tax_state.ImpostaLorda = 1000;
    scrivi(P031, 2);
    EXPECT_EQ(on(20000), -40);
    scrivi(P031, 1);
    scrivi(P768, 1);
    EXPECT_EQ(on(20000), -40);
    scrivi(P768, 0);
    EXPECT_EQ(on(0), -40);
    EXPECT_EQ(on(20000), 140.00);  // 180 - 40
    EXPECT_EQ(num(Q674), 40);
}

TEST_F(MunicipalSurtax, TheAdvanceIsSetOffFromMarchOn) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q674, 54);
    scrivi(Q678, 54);
    EXPECT_EQ(on(20000), 126.00);  // 180 - 54
    scrivi(Q674, 180);
    EXPECT_EQ(on(20000), 0);  // as much as the surtax: nothing is given up
    EXPECT_EQ(num(Q674), 180);
    set_period("28022024");
    scrivi(Q674, 0);
    EXPECT_EQ(on(20000), 180.00);
}

TEST_F(MunicipalSurtax, AnAdvanceAboveTheSurtaxIsGivenUpAndGoesBack) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q674, 200);
    scrivi(Q678, 200);
    EXPECT_EQ(on(20000), 180.00);  // the year's opening takes the 200 withheld off the balance
    EXPECT_EQ(num(Q674), 0);
    EXPECT_EQ(num(P241), 0);
    scrivi(Q674, 200);
    leaver();
    EXPECT_EQ(on(20000), 180.00);
    EXPECT_EQ(num(P241), 200);
    EXPECT_EQ(num(P259), 180);
}

TEST_F(MunicipalSurtax, WhatAnotherEmployerWithheldComesOffOnce) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    scrivi(Q506, 50);
    scrivi(Q674, 54);
    scrivi(Q678, 54);
    EXPECT_EQ(on(20000), 76.00);  // 180 - 50 - 54
    scrivi(Q506, 300);
    scrivi(Q674, 0);
    scrivi(Q678, 0);
    EXPECT_EQ(on(20000), 0);
}

TEST_F(MunicipalSurtax, IsChargedAtOnceToWhoLeaves) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}});
    leaver();
    scrivi(P259, 100);
    EXPECT_EQ(on(20000), 180.00);
    EXPECT_EQ(num(P259), 280.00);
}

TEST_F(MunicipalSurtax, ColumnsThatAreMissingOrNullCountAsZero) {
    town("H501", {{"FASCIA", kNoLimit}, {"aliquota", 0.9}, {"ESENZIONE", 50000}});
    municipal_table.rows.reset();
    municipal_table.archive->execute("alter table CATASTO drop column ESENZIONE", {});
    municipal_table.archive->execute("alter table CATASTO drop column TIPOCALCOLO", {});
    municipal_table.archive->execute("alter table CATASTO drop column aliquota_6", {});
    open_rows();
    EXPECT_EQ(on(20000), 180.00);
    const auto rates = municipal_rates("H501");
    ASSERT_TRUE(rates.has_value());
    EXPECT_EQ(rates->exempt_up_to, 0);
    EXPECT_EQ(rates->bands[1].limit, 0);
    EXPECT_EQ(rates->bands[5].rate, 0);
    EXPECT_EQ(rates->kind, "");
}

// ---- Both ----

class Surtaxes : public RegionalSurtax {};

TEST_F(Surtaxes, ALeavingDateAheadChargesAtOnceAndOneOfAnEarlierEmploymentDoesNot) {
    EXPECT_FALSE(surtaxes_are_charged_at_once());
    scrivi(P013, "01032018");
    scrivi(P017, "15012025");
    EXPECT_TRUE(surtaxes_are_charged_at_once());
    scrivi(P938, 1);
    EXPECT_FALSE(surtaxes_are_charged_at_once());
    scrivi(P938, 0);
    scrivi(P017, "01032018");  // the day of the start
    EXPECT_TRUE(surtaxes_are_charged_at_once());
    scrivi(P017, "28022018");
    EXPECT_FALSE(surtaxes_are_charged_at_once());
    scrivi(P014, "01022018");
    EXPECT_TRUE(surtaxes_are_charged_at_once());
}

TEST_F(Surtaxes, TheDateOfAnEarlierEmploymentLeavesThemToDecember) {
    region("01", line("01", {"999999.99", "1.73"}));
    scrivi(Q319, 0.8);
    scrivi(P013, "01032018");
    scrivi(P017, "28022018");
    adjusted(20000, 1000);
    set_period("30112024");
    surtaxes_of_the_year();
    EXPECT_EQ(num(Q342), 0);
    set_period("31122024");
    surtaxes_of_the_year();
    EXPECT_EQ(num(Q342), 346);  // 20000 x 1.73 %
    EXPECT_EQ(num(Q343), 160);  // 20000 x 0.8 %
    EXPECT_EQ(num(P259), 0);    // he stays: next year's instalments
}

TEST_F(Surtaxes, P938KeepsThemAsTheyStandOnATermination) {
    EXPECT_TRUE(surtaxes_are_recomputed());
    scrivi(P017, "31052024");
    EXPECT_TRUE(surtaxes_are_recomputed());
    scrivi(P938, 1);
    EXPECT_FALSE(surtaxes_are_recomputed());
    scrivi(P017, "");  // December of somebody who stays
    EXPECT_TRUE(surtaxes_are_recomputed());
}

TEST_F(Surtaxes, TheYearsAdjustmentWorksOutBoth) {
    region("01", line("01", {"999999.99", "1.73"}));
    scrivi(Q319, 0.8);
    adjusted(20000, 1000);
    surtaxes_of_the_year();
    EXPECT_EQ(num(Q342), 346);
    EXPECT_EQ(num(Q343), 160);
}

TEST_F(Surtaxes, P938LeavesALeaverNeither) {
    region("01", line("01", {"999999.99", "1.73"}));
    scrivi(Q319, 0.8);
    scrivi(P017, "31052024");
    scrivi(P938, 1);
    adjusted(20000, 1000);
    surtaxes_of_the_year();
    EXPECT_EQ(num(Q342), 0);
    EXPECT_EQ(num(Q343), 0);
    EXPECT_EQ(num(P259), 0);
}

}  // namespace
