#include "nzutil/year_opening.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <variant>

#include "installation/demo.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/year_standing.h"
#include "platform/directory_lock.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXREPOSITORY;
using nzutil::OpenedEmployee;
using nzutil::Standing;

struct Entry {
    Descriptor field;
    std::variant<double, std::string> value;
};
using Entries = std::vector<Entry>;

constexpr std::size_t kEmployeeLength = 16600;
constexpr std::size_t kOtherLength = 9000;

std::string record_of(Area area, std::size_t length, const Entries& entries) {
    std::string record = nzutil::empty_record(area, length);
    for (const Entry& entry : entries) {
        if (const double* number = std::get_if<double>(&entry.value)) {
            SCRIVICAMPONUM(entry.field, *number, 0, record);
        } else {
            std::string text = std::get<std::string>(entry.value);
            SCRIVICAMPO(entry.field, text, 0, record);
        }
    }
    return record;
}

std::string employee(Entries entries) {
    const Entries usual{{P001, "0010000001"}, {P002, "ROSSI"}, {P003, "MARIA"},
                        {P013, "01032018"},   {P031, 1.0},     {Q171, 12.0},
                        {Q179, "31122024"},   {Q013, 20000.0}};
    entries.insert(entries.begin(), usual.begin(), usual.end());
    return record_of(Area::DIPX, kEmployeeLength, entries);
}

/// Tables of 2024: indexes of December 2023 and 2024, substitute tax 17 percent.
const Entries kTablesOf2024{
    {F021, 118.9}, {F024, 119.3}, {F028, 119.5}, {F034, 120.2}, {F322, 17.0}};

double opened_value(const Descriptor& field, const Entries& entries, const Entries& company = {}) {
    const OpenedEmployee opened =
        nzutil::open_year_of(employee(entries), record_of(Area::DITX, kOtherLength, company),
                             record_of(Area::FISX, kOtherLength, kTablesOf2024), 2025);
    return LEGGICAMPONUM(field, 0, opened.bytes);
}

// ---- What is carried ----

TEST(YearOpening, SurtaxesBecomeTheBalancesOfTheYear) {
    const Entries closed{{Q342, 330.0}, {Q343, 96.5},  {Q318, 11.0}, {Q315, 11.0},
                         {Q673, 9.0},   {Q339, 250.0}, {Q340, 25.0}, {Q316, 80.0},
                         {Q320, 8.0},   {Q674, 60.0},  {Q678, 54.0}, {Q675, 6.0}};
    EXPECT_DOUBLE_EQ(opened_value(Q317, closed), 330);
    EXPECT_DOUBLE_EQ(opened_value(Q235, closed), 96.5);
    for (const Descriptor& field : {Q342, Q343, Q339, Q340, Q316, Q320, Q674, Q675, Q678}) {
        EXPECT_EQ(opened_value(field, closed), 0) << field.name();
    }
    // The numbers of instalments stand for the new year already.
    EXPECT_EQ(opened_value(Q318, closed), 11);
    EXPECT_EQ(opened_value(Q315, closed), 11);
    EXPECT_EQ(opened_value(Q673, closed), 9);
}

TEST(YearOpening, AdvanceThatWasTooHighComesOffTheBalance) {
    // The settlement gave up the advance (Q674 0) of which 100 had been withheld: 80 - 100.
    EXPECT_DOUBLE_EQ(opened_value(Q235, {{Q343, 80.0}, {Q678, 90.0}, {Q675, 10.0}}), -20);
}

TEST(YearOpening, AdvanceThatComesBackAsANegativeSurtaxComesOffOnce) {
    EXPECT_DOUBLE_EQ(opened_value(Q235, {{Q343, -20.0}, {Q678, 20.0}}), -20);
}

TEST(YearOpening, SurtaxesThatASlipWithALeavingDateAheadHasChargedAreNotCarried) {
    const Entries charged{{P017, "15012025"}, {Q342, 311.4}, {Q343, 144.0},
                          {Q317, 99.0},       {Q235, 44.0},  {Q037, 13500.0}};
    EXPECT_EQ(opened_value(Q317, charged), 0);
    EXPECT_EQ(opened_value(Q235, charged), 0);
    EXPECT_DOUBLE_EQ(opened_value(Q039, charged), 1000);  // the employment goes on: 13500 / 13.5
    Entries not_charged = charged;
    not_charged.push_back({P938, 1.0});
    EXPECT_DOUBLE_EQ(opened_value(Q317, not_charged), 311.4);
    EXPECT_DOUBLE_EQ(opened_value(Q235, not_charged), 144);
    Entries earlier_employment = charged;
    earlier_employment.front() = {P017, "31012018"};
    EXPECT_DOUBLE_EQ(opened_value(Q317, earlier_employment), 311.4);
}

TEST(YearOpening, IncomeOfTwoYearsMovesOn) {
    const Entries closed{{Q031, 18000.0}, {Q032, 17000.0}, {Q514, 1500.5},
                         {Q033, 10.0},    {Q034, 20.0},    {Q035, 30.0}};
    EXPECT_DOUBLE_EQ(opened_value(Q032, closed), 18000);
    EXPECT_DOUBLE_EQ(opened_value(Q031, closed), 21500.5);  // 20000 + 1500.50
    EXPECT_EQ(opened_value(Q033, closed), 0);
    EXPECT_EQ(opened_value(Q034, closed), 0);
    EXPECT_EQ(opened_value(Q035, closed), 0);
}

TEST(YearOpening, ThirteenthRestartsAndFourteenthRunsOn) {
    EXPECT_EQ(opened_value(Q164, {{Q164, 12.0}, {Q165, 6.0}}), 0);
    EXPECT_EQ(opened_value(Q165, {{Q164, 12.0}, {Q165, 6.0}}), 6);
    EXPECT_EQ(opened_value(Q171, {}), 12);
}

TEST(YearOpening, SumsOfTheYearAreEmptied) {
    for (const Descriptor& field :
         {Q001, Q002, Q003, Q004, Q005, Q007, Q009, Q010, Q013, Q014, Q021, Q022, Q063, Q094,
          Q168, Q170, Q174, Q276, Q277, Q278, Q279, Q314, Q514, Q515, Q518, Q666, Q740, Q742,
          Q773, Q776, Q777, Q778, Q779, Q801, Q804, Q808, QA34, Q131, Q134, Q658, Q659, Q660,
          Q780, Q781, Q110, Q509, Q898, Q953, Q956, Q926, Q927, Q974, Q845, Q782, Q847, Q520,
          Q523, Q529, Q534, Q680, QA27, QA28, QA32, QA33, P919, Q687, Q688, Q689, Q690, Q691,
          Q744, Q062, Q205, Q215, Q358, Q360, Q363, Q061, Q067, Q805, Q615, QA16, QA29, Q954,
          Q955, Q962, QA01, QA02, QA03, QA04, QA15, QA21, Q261, Q991, P111, QA44}) {
        EXPECT_EQ(opened_value(field, {{field, 5.0}}), 0) << field.name();
    }
}

TEST(YearOpening, WhatIsNoSumOfTheYearStays) {
    for (const Descriptor& field :
         {Q163, Q692, Q693, Q695, Q697, Q700, Q701, Q165, Q089, Q283, Q286, QA09, QA36}) {
        EXPECT_EQ(opened_value(field, {{field, 5.0}}), 5) << field.name();
    }
}

// ---- Severance fund ----

TEST(YearOpening, FundTakesAccrualAndNetRevaluation) {
    // Accrual 27000 / 13.5 = 2000, less the contribution of 135: 1865. Revaluation 10000 x 2.320017
    // % = 232.00, its tax 17 % = 39.44, net 192.56.
    const Entries closed{{Q037, 27000.0}, {Q038, 135.0}, {Q039, 10000.0},
                         {Q136, 12.0},    {Q042, 60.0},  {Q056, 500.0}};
    EXPECT_DOUBLE_EQ(opened_value(Q267, closed), 2.320017);
    EXPECT_DOUBLE_EQ(opened_value(Q270, closed), 232.00);
    EXPECT_DOUBLE_EQ(opened_value(Q121, closed), 39.44);
    EXPECT_DOUBLE_EQ(opened_value(Q264, closed), 1865);
    EXPECT_DOUBLE_EQ(opened_value(Q039, closed), 12057.56);  // 10000 + 1865 + 192.56
    EXPECT_DOUBLE_EQ(opened_value(Q056, closed), 692.56);    // 500 + 192.56
    EXPECT_EQ(opened_value(Q042, closed), 72);
    for (const Descriptor& field : {Q136, Q037, Q038, Q041, Q236}) {
        EXPECT_EQ(opened_value(field, closed), 0) << field.name();
    }
}

TEST(YearOpening, WhatTheFundOfTheCategoryTookIsNotCarried) {
    // All of the accrual has gone there: 2000 - 135 - 1865 = 0.
    EXPECT_DOUBLE_EQ(
        opened_value(Q039, {{Q037, 27000.0}, {Q038, 135.0}, {Q236, 1865.0}, {Q136, 12.0}}), 0);
}

TEST(YearOpening, OwnDivisorOfTheAccrual) {
    EXPECT_DOUBLE_EQ(opened_value(Q039, {{Q037, 27000.0}, {P467, 12.0}}), 2250);
}

TEST(YearOpening, AdvanceIsRevaluedUpToItsMonthAndBecomesAnEarlierOne) {
    // Paid in June: (120.2 - 119.5) / 119.5 = 0.585774 %, three quarters 0.439331 with 6 x 0.125 =
    // 1.189331 %. 10000 x 2.320017 % - 4000 x 1.189331 % = 232.0017 - 47.5732 = 184.43; tax 31.35.
    const Entries closed{{Q039, 10000.0}, {Q136, 12.0},   {Q046, 4000.0}, {Q047, 920.0},
                         {Q185, 6.0},     {Q043, 1000.0}, {Q044, 230.0}};
    EXPECT_DOUBLE_EQ(opened_value(Q270, closed), 184.43);
    EXPECT_DOUBLE_EQ(opened_value(Q121, closed), 31.35);
    EXPECT_DOUBLE_EQ(opened_value(Q265, closed), 4000);
    EXPECT_DOUBLE_EQ(opened_value(Q039, closed), 6153.08);  // 10000 - 4000 + 184.43 - 31.35
    EXPECT_DOUBLE_EQ(opened_value(Q043, closed), 5000);
    EXPECT_DOUBLE_EQ(opened_value(Q044, closed), 1150);
    EXPECT_EQ(opened_value(Q046, closed), 0);
    EXPECT_EQ(opened_value(Q047, closed), 0);
    EXPECT_EQ(opened_value(Q185, closed), 0);
}

TEST(YearOpening, TreasuryPartIsNotRevaluedWhereTheCompanyTakesItOff) {
    const Entries closed{
        {Q039, 10000.0}, {Q136, 12.0}, {Q699, 1000.0}, {Q896, 2000.0}, {Q698, 500.0}};
    EXPECT_DOUBLE_EQ(opened_value(Q270, closed), 232.00);
    // (10000 - 3500) x 2.320017 % = 150.80
    EXPECT_DOUBLE_EQ(opened_value(Q270, closed, {{T587, 1.0}}), 150.80);
}

TEST(YearOpening, WithoutIncomeTaxTheRevaluationBearsNone) {
    EXPECT_EQ(opened_value(Q121, {{P031, 0.0}, {Q039, 10000.0}, {Q136, 12.0}}), 0);
}

TEST(YearOpening, WhoLeftCarriesNeitherFundNorSurtaxes) {
    const Entries left{{P017, "30112024"}, {Q342, 330.0}, {Q343, 90.0}, {Q037, 27000.0},
                       {Q039, 10000.0},    {Q136, 11.0},  {Q317, 0.0}};
    EXPECT_EQ(opened_value(Q317, left), 0);
    EXPECT_EQ(opened_value(Q235, left), 0);
    EXPECT_EQ(opened_value(Q342, left), 0);
    EXPECT_DOUBLE_EQ(opened_value(Q039, left), 10000);
    EXPECT_DOUBLE_EQ(opened_value(Q037, left), 27000);
    EXPECT_EQ(opened_value(Q136, left), 11);
    EXPECT_EQ(opened_value(Q013, left), 0);
    EXPECT_DOUBLE_EQ(opened_value(Q031, left), 20000);
}

TEST(YearOpening, LeavingOfAnEarlierEmploymentOrOfTheNewYearIsNone) {
    const Entries accrual{{Q037, 13500.0}};
    Entries hired_again = accrual;
    hired_again.insert(hired_again.end(), {{P017, "31012018"}, {P014, "01032018"}});
    EXPECT_DOUBLE_EQ(opened_value(Q039, hired_again), 1000);
    Entries leaves_later = accrual;
    leaves_later.push_back({P017, "31012025"});
    EXPECT_DOUBLE_EQ(opened_value(Q039, leaves_later), 1000);
}

// ---- Who is opened ----

TEST(YearOpening, DecemberClosesTheYear) {
    EXPECT_EQ(nzutil::standing_of(employee({}), 2025), Standing::to_open);
    EXPECT_EQ(nzutil::standing_of(employee({{Q171, 11.0}}), 2025), Standing::december_missing);
    EXPECT_EQ(nzutil::standing_of(employee({{Q171, 11.0}, {Q179, "30112024"}}), 2025),
              Standing::december_missing);
    // Last year's December is no closing of this one.
    EXPECT_EQ(nzutil::standing_of(employee({{Q179, "31012024"}}), 2025),
              Standing::december_missing);
}

TEST(YearOpening, WhoLeftNeedsNoDecember) {
    EXPECT_EQ(
        nzutil::standing_of(employee({{Q171, 5.0}, {Q179, "31052024"}, {P017, "20052024"}}), 2025),
        Standing::to_open);
}

TEST(YearOpening, EmptySumsAreAnOpenedYear) {
    EXPECT_EQ(nzutil::standing_of(employee({{Q013, 0.0}}), 2025), Standing::opened);
    EXPECT_EQ(nzutil::standing_of(employee({{Q013, 0.0}, {Q514, 900.0}}), 2025), Standing::opened);
}

TEST(YearOpening, SlipOfTheYearOrOfALaterOneHasBegunIt) {
    EXPECT_EQ(nzutil::standing_of(employee({{Q179, "31012025"}, {Q171, 1.0}}), 2025),
              Standing::begun);
    EXPECT_EQ(nzutil::standing_of(employee({{Q179, "31012026"}, {Q171, 1.0}}), 2025),
              Standing::begun);
}

TEST(YearOpening, YearIsNotLeftOut) {
    EXPECT_EQ(nzutil::standing_of(employee({}), 2026), Standing::earlier_year);
    EXPECT_EQ(nzutil::standing_of(employee({{P017, "31122024"}}), 2026), Standing::to_open);
}

TEST(YearOpening, NewEmployeeHasNothingToOpen) {
    EXPECT_EQ(nzutil::standing_of(employee({{Q179, "        "}, {Q013, 0.0}}), 2025),
              Standing::no_slip);
    EXPECT_EQ(nzutil::standing_of(nzutil::empty_record(Area::DIPX, kEmployeeLength), 2025),
              Standing::no_record);
}

// ---- The command ----

/// The base installation with employees of our own; `answer` is what the operator types.
class YearCommandTest : public ::testing::Test {
  protected:
    struct Outcome {
        int status;
        std::string output;
        std::string errors;
    };
    void SetUp() override { nzutil::make_base_installation(directory).close(); }
    void put(int record, const Entries& entries) const {
        nzutil::Installation installation = nzutil::Installation::open(directory);
        installation.write(nzutil::kEmployees, record, employee(entries));
        installation.close();
    }
    void put_table(const Descriptor& field, double value) const {
        nzutil::Installation installation = nzutil::Installation::open(directory);
        std::string tables = installation.read(nzutil::kFixedData, 1).value();
        SCRIVICAMPONUM(field, value, 0, tables);
        installation.write(nzutil::kFixedData, 1, tables);
        installation.close();
    }
    [[nodiscard]] double value(int record, const Descriptor& field) const {
        const nzutil::Installation installation = nzutil::Installation::open(directory);
        return LEGGICAMPONUM(field, 0, installation.read(nzutil::kEmployees, record).value());
    }
    [[nodiscard]] std::string bytes() const {
        std::ifstream in(directory + "/archivi/DIPEND.DAT", std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    [[nodiscard]] Outcome run(const std::vector<std::string>& more,
                              const std::string& answer) const {
        nzutil::Arguments arguments{"anno", directory};
        arguments.insert(arguments.end(), more.begin(), more.end());
        std::istringstream input(answer);
        std::streambuf* former = std::cin.rdbuf(input.rdbuf());
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        const int status = nzutil::run_tool(arguments);
        std::cin.rdbuf(former);
        std::cin.clear();
        return {status, ::testing::internal::GetCapturedStdout(),
                ::testing::internal::GetCapturedStderr()};
    }
    /// Refused with a sentence that holds this, and nothing written.
    void refused(const std::string& year, const std::string& part) const {
        const std::string before = bytes();
        const Outcome outcome = run({year, "--si"}, "");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find(part), std::string::npos) << outcome.errors;
        EXPECT_EQ(bytes(), before);
    }

    test_support::TempDirectory root;
    std::string directory = root.file("base");
};

TEST_F(YearCommandTest, WritesAfterAYesOnly) {
    put(1, {});
    const std::string before = bytes();
    for (const char* answer : {"", "no\n", "forse\n"}) {
        EXPECT_EQ(run({"2025"}, answer).status, 1) << answer;
        EXPECT_EQ(bytes(), before);
    }
    const Outcome trial = run({"2025", "--prova"}, "si\n");
    EXPECT_EQ(trial.status, 0);
    EXPECT_NE(trial.output.find("001-000-0001 ROSSI MARIA: reddito 20000.00"), std::string::npos);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(run({"2025"}, "si\n").status, 0);
    EXPECT_EQ(value(1, Q013), 0);
    EXPECT_DOUBLE_EQ(value(1, Q031), 20000);
}

TEST_F(YearCommandTest, EveryEmployeeOfTheFileWithoutAQuestion) {
    put(1, {});
    put(2, {{P001, "0010000002"}, {Q013, 15000.0}});
    put(3, {{P001, "0010000003"},
            {Q013, 9000.0},
            {P017, "30062024"},
            {Q171, 6.0},
            {Q179, "30062024"}});
    put(5, {{P001, "0010000005"}, {Q013, 0.0}, {Q179, "        "}});
    const Outcome outcome = run({"2025", "--si"}, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find("Anno 2025 aperto per 3 dipendenti"), std::string::npos);
    EXPECT_DOUBLE_EQ(value(2, Q031), 15000);
    EXPECT_DOUBLE_EQ(value(3, Q031), 9000);
    EXPECT_EQ(value(5, Q031), 0);
}

TEST_F(YearCommandTest, YearIsOpenedOnce) {
    put(1, {{Q342, 330.0}});
    ASSERT_EQ(run({"2025", "--si"}, "").status, 0);
    refused("2025", "è già aperto");
    EXPECT_DOUBLE_EQ(value(1, Q317), 330);
}

TEST_F(YearCommandTest, InterruptedOpeningGoesOnWithTheRest) {
    put(1, {{Q342, 330.0}});
    ASSERT_EQ(run({"2025", "--si"}, "").status, 0);
    put(2, {{P001, "0010000002"}, {Q342, 70.0}});
    EXPECT_EQ(run({"2025", "--si"}, "").status, 0);
    EXPECT_DOUBLE_EQ(value(1, Q317), 330);
    EXPECT_DOUBLE_EQ(value(2, Q317), 70);
}

TEST_F(YearCommandTest, OutOfOrderIsRefused) {
    put(1, {});
    refused("2024", "è già cominciato");
    refused("2026", "aprire prima quell'anno");
    ASSERT_EQ(run({"2025", "--si"}, "").status, 0);
    refused("2026", "Nel 2025 non c'è nessun cedolino");
}

TEST_F(YearCommandTest, MissingDecemberIsNamed) {
    put(1, {});
    put(2, {{P001, "0010000002"}, {Q171, 11.0}, {Q179, "30112024"}});
    refused("2025", "dicembre di 001-000-0002");
}

TEST_F(YearCommandTest, SlipsOfTheYearAreToldAndLeftAlone) {
    put(1, {});
    put(2, {{P001, "0010000002"}, {Q171, 1.0}, {Q179, "31012025"}, {Q013, 1733.31}});
    const Outcome outcome = run({"2025", "--si"}, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find("001-000-0002: ha già un cedolino del 2025"), std::string::npos);
    EXPECT_DOUBLE_EQ(value(2, Q013), 1733.31);
}

TEST_F(YearCommandTest, RevaluationNeedsBothIndexes) {
    put(1, {});
    put_table(F034, 0);
    refused("2025", "dicembre 2024 (F034)");
    put_table(F034, 120.2);
    put_table(F021, 0);
    refused("2025", "31 dicembre 2023 (F021)");
}

TEST_F(YearCommandTest, ArchiveInUseIsReadOnly) {
    put(1, {});
    {
        const platform::LockAttempt running =
            platform::try_directory_lock(directory + "/archivi", "velmor");
        ASSERT_NE(running.lock, nullptr);
        refused("2025", "velmor");
        EXPECT_EQ(run({"2025", "--prova"}, "").status, 0);
    }
    EXPECT_EQ(run({"2025", "--si"}, "").status, 0);
}

TEST_F(YearCommandTest, BadArgumentsAreRefused) {
    put(1, {});
    refused("duemila", "non è un numero intero");
    EXPECT_EQ(run({"2025", "--forse"}, "").status, 1);
}

}  // namespace
