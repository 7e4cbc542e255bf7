#include "calc/calc.h"

#include "files/file_numbers.h"
#include "files/isam.h"
#include "platform/failure.h"
#include "records/numbers.h"
#include "tests/support/logical_files.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;

constexpr const char* kEnd = "9999999999";

/// Companies 1 and 2 of sector 1, an employee in record 1 of each, no slip lines.
class CalcTest : public SlipTest {
  protected:
    CalcTest() {
        const std::pair<int, std::size_t> lengths[] = {
            {1, 6600},  {2, 16600}, {5, 200},  {6, 20},   {8, 1400},   {18, 20},    {19, 3100},
            {71, 6000}, {97, 7800}, {276, 20}, {278, 20}, {354, 6100}, {356, 2000}, {401, 1500}};
        for (const auto& [n, length] : lengths) {
            files.define(n, length);
        }
        files.put(kPeriod, 1, "310520244");
        files.put(kTaxBrackets, 1, "999999.99230");
        files.put(kSeveranceBrackets, 1, "999999.99230");
        fixed = area(Area::FISX);
        sector = area(Area::SETX);
        for (const Descriptor& amount : {F400, F401, F402, F403, F404, F405, F406, F407}) {
            put_field(fixed, amount, "100");
        }
        put_field(fixed, F169, "1");
        files.put(kFixedData, 1, fixed);
        files.put(kSectors, 1, sector);
        for (const int number : {1, 2}) {
            put_company(number, 1);
            put_employee(number);
        }
    }

    static void put_field(std::string& record, const Descriptor& field, std::string value) {
        SCRIVICAMPO(field, value, 0, record);
    }
    void put_company(int number, int sector_number) {
        std::string record = test_support::empty_record(Area::DITX, 6600);
        put_field(record, T001, std::to_string(number));
        put_field(record, T067, std::to_string(sector_number));
        files.put(kCompanies, static_cast<std::size_t>(number), record);
    }
    void put_employee(int number) {
        employee = test_support::empty_record(Area::DIPX, 16600);
        put_field(employee, P001, "001000000" + std::to_string(number));
        put_field(employee, P002, "ROSSI");
        put_field(employee, P003, "MARIA");
        put_field(employee, P013, "01012020");
        put_field(employee, P916, "0");
        put_field(employee, Q171, "4");
        put_field(employee, Q401, line(999, 0));
        files.put(kEmployees, static_cast<std::size_t>(number), employee);
    }
    void select(const std::string& entries) { files.put(kSelection, 1, entries); }
    /// Runs to the end of the run and returns the lines of the list.
    std::vector<std::string> run() {
        EXPECT_THROW(CALC(), platform::EndOfProgram);
        return window.lines;
    }
    void expect_finished() { window.expect_box("Calcolo cedolino terminato"); }
    [[nodiscard]] double on_file(int n, std::size_t record, const Descriptor& field) const {
        return LEGGICAMPONUM(field, 0, files.get(n, record));
    }

    std::string fixed;
    std::string sector;
    std::string employee;
    test_support::LogicalFiles files;
};

TEST_F(CalcTest, AnEmptySelectionEndsTheRunAndWritesNoCompany) {
    const std::string before = files.get(kCompanies, 1);
    EXPECT_TRUE(run().empty());
    EXPECT_TRUE(files.get(kCompanies, 1) == before);
}

TEST_F(CalcTest, ASelectionThatEndsAtOnceTouchesNothing) {
    select(kEnd);
    const std::string before = files.get(kEmployees, 1);
    EXPECT_TRUE(run().empty());
    EXPECT_TRUE(files.get(kEmployees, 1) == before);
}

TEST_F(CalcTest, WithoutPeriodTheRunEnds) {
    files.define(kPeriod, 20);
    select("0010000001" + std::string(kEnd));
    EXPECT_TRUE(run().empty());
}

TEST_F(CalcTest, WithoutFixedDataTheRunEndsWithItsMessage) {
    files.define(kFixedData, 3100);
    select("0010000001" + std::string(kEnd));
    expect_finished();
    EXPECT_EQ(run(), std::vector<std::string>{"MANCA DATI FISSI !"});
}

TEST_F(CalcTest, EachEmployeeHasHisLine) {
    select("0010000001" + std::string("0020000002") + kEnd);
    expect_finished();
    const std::vector<std::string> lines = run();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "001-000-0001 ROSSI MARIA                             :elaborato");
    EXPECT_EQ(lines[1], "001-000-0002 ROSSI MARIA                             :elaborato");
    EXPECT_EQ(window.last_progress, (std::pair<std::size_t, std::size_t>{2, 2}));
}

TEST_F(CalcTest, TheRecordIsWrittenWithTheDateOfTheSlip) {
    select("0010000001" + std::string(kEnd));
    expect_finished();
    run();
    EXPECT_EQ(LEGGICAMPO(Q179, 0, files.get(kEmployees, 1)), "31052024");
    EXPECT_EQ(on_file(2, 1, P215), 31);
    EXPECT_EQ(on_file(2, 1, Q171), 5);
}

TEST_F(CalcTest, AMonthAlreadyCalculatedLeavesTheRecord) {
    put_field(employee, Q171, "5");
    files.put(kEmployees, 1, employee);
    select("0010000001" + std::string(kEnd));
    const std::string before = files.get(kEmployees, 1);
    EXPECT_TRUE(run().empty());
    EXPECT_TRUE(files.get(kEmployees, 1) == before);
}

TEST_F(CalcTest, ADismissedEmployeeIsPassedOver) {
    put_field(employee, P054, "2");
    files.put(kEmployees, 1, employee);
    select("0010000001" + std::string(kEnd));
    const std::string before = files.get(kEmployees, 1);
    EXPECT_TRUE(run().empty());
    EXPECT_TRUE(files.get(kEmployees, 1) == before);
}

TEST_F(CalcTest, AMissingCompanyEndsTheRun) {
    select("0070000001" + std::string("0010000001") + kEnd);
    expect_finished();
    EXPECT_EQ(run(), std::vector<std::string>{"MANCA DITTA  7"});
}

TEST_F(CalcTest, ADeletedCompanyEndsTheRunAfterTheOnesBeforeIt) {
    std::string record = files.get(kCompanies, 2);
    put_field(record, T261, "99");
    files.put(kCompanies, 2, record);
    std::string first = files.get(kCompanies, 1);
    put_field(first, T488, std::string(30, '0'));
    files.put(kCompanies, 1, first);
    select("0010000001" + std::string("0020000002") + kEnd);
    expect_finished();
    const std::vector<std::string> lines = run();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "MANCA DITTA  2");
    EXPECT_EQ(rifila(LEGGICAMPO(T488, 0, files.get(kCompanies, 1))), "");
    EXPECT_TRUE(files.get(kCompanies, 2) == record);
}

TEST_F(CalcTest, ACompanyWithoutSectorEndsTheRunAfterThePreviousIsWritten) {
    put_company(2, 0);
    std::string first = files.get(kCompanies, 1);
    put_field(first, T491, std::string(30, '0'));
    files.put(kCompanies, 1, first);
    select("0010000001" + std::string("0020000002") + kEnd);
    expect_finished();
    const std::vector<std::string> lines = run();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "SETTORE INESISTENTE! PER LA DITTA 2 Cedolini non elaborati");
    EXPECT_EQ(rifila(LEGGICAMPO(T491, 0, files.get(kCompanies, 1))), "");
}

TEST_F(CalcTest, AMissingOrDeletedSectorEndsTheRun) {
    for (const int number : {2, 1}) {
        put_company(1, number);
        put_field(sector, S001, "9900");
        files.put(kSectors, 1, sector);
        select("0010000001" + std::string(kEnd));
        window.lines.clear();
        expect_finished();
        EXPECT_EQ(run(), std::vector<std::string>{
                             "SETTORE INESISTENTE! PER LA DITTA 1 Cedolini non elaborati"});
        MXLIBRERIA::CHIUDI(0);
    }
}

TEST_F(CalcTest, TheSectorOf2014TakesItsPercentage) {
    std::string record = files.get(kCompanies, 1);
    put_field(record, T714, "1");
    files.put(kCompanies, 1, record);
    files.put(kPeriod, 1, "310520134");
    select("0010000001" + std::string(kEnd));
    expect_finished();
    run();
    EXPECT_EQ(on_file(8, 1, S332), 0);
    files.put(kPeriod, 1, "310120144");
    expect_finished();
    run();
    EXPECT_EQ(on_file(8, 1, S332), 0.33);
}

TEST_F(CalcTest, TheCompanysNotesOfZerosAreBlankedAtTheEnd) {
    std::string record = files.get(kCompanies, 1);
    put_field(record, T489, std::string(30, '0'));
    put_field(record, T490, std::string(29, '0'));
    files.put(kCompanies, 1, record);
    select("0010000001" + std::string(kEnd));
    expect_finished();
    run();
    EXPECT_EQ(rifila(LEGGICAMPO(T489, 0, files.get(kCompanies, 1))), "");
    EXPECT_EQ(rifila(LEGGICAMPO(T490, 0, files.get(kCompanies, 1))), std::string(29, '0'));
}

TEST_F(CalcTest, TheFixedDataOf2021AreRewrittenOnFile) {
    put_field(fixed, F436, "960");
    files.put(kFixedData, 1, fixed);
    files.put(kPeriod, 1, "310120214");
    select(kEnd);
    run();
    EXPECT_EQ(on_file(19, 1, F436), 1200);
}

TEST_F(CalcTest, TheYearHas365DaysWithF169) {
    select(kEnd);
    run();
    EXPECT_EQ(run_tables.days_of_year, 365);
    put_field(fixed, F169, "0");
    files.put(kFixedData, 1, fixed);
    run();
    EXPECT_EQ(run_tables.days_of_year, 366);
}

TEST_F(CalcTest, TheFamilyIncomeLimitFollowsTheLetterStillLoaded) {
    put_field(fixed, F084, "1000");
    put_field(fixed, F408, "2000");
    files.put(kFixedData, 1, fixed);
    select(kEnd);
    for (const auto& [letter, limit] : {std::pair{"0", 1000.0},
                                        {"1", 1000.0},
                                        {"3", 2000.0},
                                        {"4", 2000.0},
                                        {"6", 2000.0},
                                        {"7", 2000.0},
                                        {"2", 1000.0},
                                        {"A", 1000.0}}) {
        test_support::fill_areas();
        scrivi(P158, letter);
        run();
        EXPECT_EQ(run_tables.family_income_limit, limit) << letter;
    }
    clear_areas();
    run();
    EXPECT_EQ(run_tables.family_income_limit, 1000);
}

/// A history of one column, the month of the last slip.
class HistoryOfTheRun : public CalcTest {
  protected:
    HistoryOfTheRun() {
        files.define(kHistoryColumns, 80);
        files.define(kHistory, 2500);
        files.define(kHistoryIndex, (20 + 7) * 128);
        MXLIBRERIA::ISAM(kHistoryIndex, "", MXLIBRERIA::kIsamEmpty, 0);
        MXLIBRERIA::CHIUDI(kHistoryIndex);
        std::string column(80, ' ');
        test_support::put(column, 43, "P240");
        test_support::put(column, 47, "2");
        test_support::put(column, 69, "V005");
        files.put(kHistoryColumns, 1, column);
        put_field(employee, P240, "77");
        files.put(kEmployees, 1, employee);
        select("0010000001" + std::string(kEnd));
    }
    [[nodiscard]] std::string row() const {
        return rifila_destra(std::string(ritaglia(files.get(kHistory, 2), 23, 2478)));
    }
};

TEST_F(HistoryOfTheRun, KeepsTheSlipAsItHasBeenCalculated) {
    expect_finished();
    run();
    EXPECT_EQ(row(), "00000000.00");  // no lines, no wage
}

TEST_F(HistoryOfTheRun, KeepsADismissedEmployeeAsHeIs) {
    put_field(employee, P054, "2");
    files.put(kEmployees, 1, employee);
    run();
    EXPECT_EQ(row(), "00000077.00");
}

TEST_F(HistoryOfTheRun, KeepsNoSlipThatIsDropped) {
    put_field(employee, Q171, "5");
    files.put(kEmployees, 1, employee);
    run();
    EXPECT_EQ(files.get(kHistory, 1), "");
}

}  // namespace
}  // namespace ModSWCALM
