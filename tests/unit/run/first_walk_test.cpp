#include "run/first_walk.h"

#include <gtest/gtest.h>

#include "context/period.h"
#include "context/trace.h"
#include "files/file_numbers.h"
#include "platform/failure.h"
#include "records/dictionary/CUDX.h"
#include "slip/slip.h"
#include "tests/support/scripted_window.h"
#include "tests/unit/run/payroll_files.h"

namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using namespace run_tests;

using test_support::ScriptedWindow;

class FirstWalk : public ::testing::Test {
  protected:
    void SetUp() override {
        trace_ring = {};
        clear_areas();
        ModSWCALM::slip = {};
        define_payroll(installation);
        select({entry("001", "0001"), kEnd});
    }
    void TearDown() override {
        window.verify();
        clear_areas();
        period = {};
        ModSWCALM::slip = {};
        ModSWCALM::ABORTODIP = 0;
    }

    void select(const std::vector<std::string>& entries) {
        constexpr std::size_t kEntriesOfRecord = 20;
        for (std::size_t i = 0; i < entries.size(); i += kEntriesOfRecord) {
            std::string record;
            for (std::size_t j = i; j < std::min(entries.size(), i + kEntriesOfRecord); ++j) {
                record += entries[j];
            }
            installation.put(kSelection, i / kEntriesOfRecord + 1, record);
        }
    }

    void walk(const std::string& period_record) {
        period.set(period_record);
        for (const double n : {1., 2., 5., 8., 35., 36., 97., 354., 356.}) {
            FAIOPEN(n);
        }
        ModSWCALM::first_walk();
        CHIUDI(0);
    }

    /// What the index of before-images knows of an employee.
    [[nodiscard]] static double before_image_number(const std::string& key) {
        FAIOPEN(kBeforeImageIndex);
        const double number = ISAM(kBeforeImageIndex, key, kIsamSearch, 0);
        CHIUDI(kBeforeImageIndex);
        return number;
    }

    ScriptedWindow& window = ScriptedWindow::install();
    LogicalFiles installation;
};

constexpr const char* kMay = "310520244";
constexpr const char* kJanuary = "310120244";
constexpr const char* kFebruary = "290220244";
constexpr const char* kMayAdditional = "310520240";
const std::string kAlreadyLine =
    "001-001-0001 ROSSI MARIA" + std::string(29, ' ') + ":gi\xE0 elaborato";

// ---- Selection ----

TEST_F(FirstWalk, EndMarkInTheFirstEntryTouchesNobody) {
    select({kEnd});
    const std::string before = installation.get(kEmployees, 1);
    walk(kMay);
    EXPECT_EQ(installation.get(kEmployees, 1), before);
    EXPECT_EQ(records(installation, kBeforeImages), 0U);
    EXPECT_TRUE(window.lines.empty());
}

TEST_F(FirstWalk, FullRecordIsFollowedByTheNextAndEndOfFileEnds) {
    // 21 entries: twenty of the first record (a multiple of employee 1) and one of the second.
    std::vector<std::string> entries(20, entry("001", "0001"));
    entries.push_back(entry("001", "0002"));
    entries.push_back(kEnd);
    entries.push_back(entry("009", "0009"));
    select(entries);
    walk(kMay);
    EXPECT_EQ(window.last_progress, (std::pair<std::size_t, std::size_t>{21, 21}));
    EXPECT_EQ(window.walks, std::vector<std::string>{"Preparazione dei dipendenti 0-20"});
    EXPECT_EQ(before_image_number("0010010002"), 2);
}

TEST_F(FirstWalk, EndOfFileEndsASelectionWithoutMark) {
    select(std::vector<std::string>(20, entry("001", "0001")));
    walk(kMay);
    EXPECT_EQ(window.last_progress, (std::pair<std::size_t, std::size_t>{20, 20}));
}

TEST_F(FirstWalk, MissingCompanyIsShownAndPassedOver) {
    select({entry("007", "0001"), entry("001", "0002"), kEnd});
    const std::string first = installation.get(kEmployees, 1);
    window.expect_box("MANCA DITTA 7");
    walk(kMay);
    EXPECT_EQ(installation.get(kEmployees, 1), first);
    EXPECT_EQ(before_image_number("0010010001"), -1);
    EXPECT_EQ(before_image_number("0010010002"), 1);
}

TEST_F(FirstWalk, DeletedCompanyCountsAsMissingForEachOfItsEntries) {
    installation.put(kCompanies, 2, company(2).set(T261, 99).text());
    select({entry("001", "0001"), entry("002", "0002"), entry("002", "0002"), entry("001", "0001"),
            kEnd});
    window.expect_box("MANCA DITTA 2");
    window.expect_box("MANCA DITTA 2");
    walk(kMay);
    EXPECT_EQ(num(T001), 1);  // the last entry's company has been loaded again
    EXPECT_EQ(before_image_number("0010010002"), -1);
}

TEST_F(FirstWalk, EntryWithoutEmployeeIsAFailureAndLeavesTheFileAlone) {
    select({entry("001", "0001"), entry("001", "0003"), kEnd});
    try {
        walk(kMay);
        FAIL() << "an employee that does not exist was prepared";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), 63);
        EXPECT_EQ(failure.culprit, "2-3");
    }
    EXPECT_EQ(records(installation, kEmployees), 2U);
}

// ---- Skip test ----

struct SkipCase {
    const char* period;
    double Q171;
    double Q172;
    double P116;
    bool skipped;
};

class SkipTest : public FirstWalk, public ::testing::WithParamInterface<SkipCase> {};

TEST_P(SkipTest, ComparesTheMonthWithTheLastCalculated) {
    const SkipCase& c = GetParam();
    installation.put(kEmployees, 1,
                     employee(1).set(Q171, c.Q171).set(Q172, c.Q172).set(P116, c.P116).text());
    const std::string before = installation.get(kEmployees, 1);
    walk(c.period);
    EXPECT_EQ(ModSWCALM::ABORTODIP, c.skipped ? -1 : 0);
    EXPECT_EQ(window.lines,
              c.skipped ? std::vector<std::string>{kAlreadyLine} : std::vector<std::string>{});
    EXPECT_EQ(records(installation, kBeforeImages), c.skipped ? 0U : 1U);
    if (c.skipped) {
        EXPECT_EQ(installation.get(kEmployees, 1), before);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Months, SkipTest,
    ::testing::Values(SkipCase{kJanuary, 12, 0, 0, false},       // last slip in December
                      SkipCase{kJanuary, 1, 0, 0, true},         //
                      SkipCase{kFebruary, 2, 0, 0, true},        //
                      SkipCase{kFebruary, 1, 0, 0, false},       //
                      SkipCase{kFebruary, 12, 0, 0, true},       // only January may follow December
                      SkipCase{kFebruary, 2, 0, 1, false},       // P116 lets a month be repeated
                      SkipCase{kMayAdditional, 5, 0, 0, false},  // the month does not count
                      SkipCase{kMayAdditional, 4, 1, 0, true},   //
                      SkipCase{kMayAdditional, 4, 1, 1, true},   //
                      SkipCase{kMay, 4, 1, 0, false}));

TEST_F(FirstWalk, SkippedEmployeeIsShownByKind) {
    installation.put(kEmployees, 1, employee(1).set(Q171, 5).set(P768, 2).text());
    walk(kMay);
    ASSERT_EQ(window.lines.size(), 1U);
    EXPECT_TRUE(window.lines[0].ends_with(
        ":AS.IN PART.A.M. gi\xE0 elaborato solo per 'Libro Unico del Lavoro'"));
}

// ---- Opening values ----

TEST_F(FirstWalk, AgencyWorkerWhoLeftEarlierIsMarked) {
    const auto mark = [this](const std::string& leaving, double kind) {
        installation.put(kEmployees, 1, employee(1).set(P768, kind).set(P017, leaving).text());
        walk(kMay);
        return value_of(P054, installation.get(kEmployees, 1));
    };
    EXPECT_EQ(mark("15042024", 1), 2);
    EXPECT_EQ(mark("15052024", 1), 0);
    EXPECT_EQ(mark("15042024", 0), 0);
    EXPECT_EQ(mark("00000000", 1), 0);
    // The 5th loses its zero on the way through a number: 5062024 reads as month 62 of year 024.
    EXPECT_EQ(mark("05062024", 1), 2);
}

TEST_F(FirstWalk, CollaboratorWithoutMonthlyPaymentsTakesTwelve) {
    installation.put(kEmployees, 1, employee(1).set(P447, 1).text());
    installation.put(kEmployees, 2, employee(2).set(P447, 1).set(P090, 14).text());
    select({entry("001", "0001"), entry("001", "0002"), kEnd});
    walk(kMay);
    EXPECT_EQ(value_of(P090, installation.get(kEmployees, 1)), 12);
    EXPECT_EQ(value_of(P090, installation.get(kEmployees, 2)), 14);
    // The mark is set before the image is taken.
    EXPECT_EQ(value_of(P090, installation.get(kBeforeImages, 1)), 12);
}

TEST_F(FirstWalk, MonthlyPaymentsOfTheFund) {
    walk(kMay);
    EXPECT_EQ(ModSWCALM::slip.severance_divisor, 13.5);
    installation.put(kEmployees, 1, employee(1).set(P467, 14).text());
    walk(kMay);
    EXPECT_EQ(ModSWCALM::slip.severance_divisor, 14);
}

TEST_F(FirstWalk, SectorValueIsReducedForSomeEmployees) {
    installation.put(kSectors, 1, Record(Area::SETX, kSectorLength).set(S004, 0.30).text());
    walk(kMay);
    const double whole = ModSWCALM::slip.sector_rate;
    EXPECT_EQ(whole, 0.30);
    installation.put(kEmployees, 1, employee(1).set(P045, 4).set(P188, 1).text());
    walk(kMay);
    EXPECT_EQ(ModSWCALM::slip.sector_rate, whole - 50);
    installation.put(kEmployees, 1, employee(1).set(P045, 3).set(P188, 1).text());
    walk(kMay);
    EXPECT_EQ(ModSWCALM::slip.sector_rate, whole);
}

TEST_F(FirstWalk, CompanyWithoutSectorHasNoRateOfTheCompanyBefore) {
    installation.put(kSectors, 1, Record(Area::SETX, kSectorLength).set(S004, 0.30).text());
    installation.put(kCompanies, 2, company(2).set(T067, 0).text());
    installation.put(kCompanies, 3, company(3).set(T067, 9).text());  // no such sector
    for (const char* other : {"002", "003"}) {
        select({entry("001", "0001"), entry(other, "0002"), kEnd});
        walk(kMay);
        EXPECT_EQ(ModSWCALM::slip.sector_rate, 0);
    }
}

// ---- Clearing of the month ----

TEST_F(FirstWalk, MonthIsClearedInAllRowsButTheLastTwo) {
    Record months(Area::DICX, kMonthsLength);
    const std::vector<Descriptor> all_rows = [] {
        std::vector<Descriptor> rows = serie(J001, J301, 12);
        for (const auto& group : {serie(J351, J519, 12), serie(J551, J791, 12)}) {
            rows.insert(rows.end(), group.begin(), group.end());
        }
        return rows;
    }();
    ASSERT_EQ(all_rows.size(), 26U + 15U + 21U);
    for (const Descriptor& row : all_rows) {
        months.set(row, 4, 4).set(row, 5, 5).set(row, 6, 6);
    }
    installation.put(kTwelveMonths, 1, months.text());
    walk(kMay);
    const std::string after = installation.get(kTwelveMonths, 1);
    for (const Descriptor& row : all_rows) {
        const bool kept = row == J779 || row == J791;
        EXPECT_EQ(value_of(row, after, 4), 4) << row.text();
        EXPECT_EQ(value_of(row, after, 5), kept ? 5 : 0) << row.text();
        EXPECT_EQ(value_of(row, after, 6), 6) << row.text();
    }
    EXPECT_TRUE(area(Area::DICX).empty());
}

TEST_F(FirstWalk, EmployeeWithoutMonthsTableIsPreparedAllTheSame) {
    installation.put(kEmployees, 3, employee(3).text());
    select({entry("001", "0003"), kEnd});
    walk(kMay);
    EXPECT_EQ(before_image_number("0010010003"), 1);
    EXPECT_EQ(records(installation, kTwelveMonths), 2U);
}

TEST_F(FirstWalk, JanuaryStartsTheYearsSumsAgain) {
    Record record = employee(1);
    record.set(Q171, 12).set(Q641, 10).set(Q657, 11).set(Q276, 1).set(Q277, 2).set(Q658, 3);
    record.set(Q668, 4).set(Q669, 5).set(Q670, 6).set(Q314, 7);
    installation.put(kEmployees, 1, record.text());
    walk(kJanuary);
    const std::string after = installation.get(kEmployees, 1);
    for (const Descriptor& field : {Q641, Q657, Q276, Q277, Q658, Q668, Q670, Q314}) {
        EXPECT_EQ(value_of(field, after), 0) << field.text();
    }
    EXPECT_EQ(value_of(Q669, after), 5);
    EXPECT_EQ(installation.get(kBeforeImages, 1), record.text());  // the record as it stood before
}

TEST_F(FirstWalk, OtherMonthsKeepTheYearsSums) {
    installation.put(kEmployees, 1, employee(1).set(Q641, 10).set(Q276, 1).set(Q314, 7).text());
    walk(kFebruary);
    const std::string after = installation.get(kEmployees, 1);
    EXPECT_EQ(value_of(Q641, after), 10);
    EXPECT_EQ(value_of(Q276, after), 1);
    EXPECT_EQ(value_of(Q314, after), 7);
}

TEST_F(FirstWalk, JanuaryEmptiesTheCertificateUnlessRepeatedOrExcluded) {
    FAIOPEN(kCertificateIndex);
    ISAM(kCertificateIndex, "0010010001", kIsamInsert, 1);
    CHIUDI(0);
    const auto emptied = [this](Record record, const char* period_record) {
        const double before = 1000;
        Record certificate(Area::CUDX, run_tests::kCertificateLength);
        installation.put(kCertificates, 1, certificate.set(X050, before).text());
        installation.put(kEmployees, 1, record.text());
        walk(period_record);
        return value_of(X050, installation.get(kCertificates, 1)) != before;
    };
    const auto of_december = [] { return employee(1).set(Q171, 12); };
    EXPECT_TRUE(emptied(of_december(), kJanuary));
    EXPECT_TRUE(emptied(of_december(), "310120240"));
    EXPECT_FALSE(emptied(employee(1), kFebruary));
    EXPECT_FALSE(emptied(of_december().set(P119, 1), kJanuary));
    EXPECT_FALSE(emptied(employee(1).set(Q171, 1), kJanuary));
    EXPECT_FALSE(emptied(of_december().set(P168, 2).set(Q179, "10012024"), kJanuary));
    EXPECT_TRUE(emptied(of_december().set(P168, 1).set(Q179, "10012024"), kJanuary));
    EXPECT_TRUE(emptied(of_december().set(P168, 2).set(Q179, "10122023"), kJanuary));
}

// ---- Before-image ----

TEST_F(FirstWalk, EachEmployeeHasOneBeforeImageOfTheLatestRun) {
    select({entry("001", "0001"), entry("001", "0002"), entry("001", "0001"), kEnd});
    walk(kMay);
    EXPECT_EQ(records(installation, kBeforeImages), 2U);
    EXPECT_EQ(before_image_number("0010010001"), 1);
    EXPECT_EQ(before_image_number("0010010002"), 2);
    const std::string later = employee(1).set(P002, "VERDI").set(Q171, 5).text();
    installation.put(kEmployees, 1, later);
    walk("300620244");
    EXPECT_EQ(records(installation, kBeforeImages), 2U);
    EXPECT_EQ(installation.get(kBeforeImages, 1), later);
}

TEST_F(FirstWalk, RefusedIndexOperationWritesNoBeforeImage) {
    installation.define(kBeforeImageIndex, (kKeyWidth + 7) * 128);
    window.expect_box("ERRORE ISAM - FILE VUOTO 36");
    installation.put(kEmployees, 1, employee(1).set(P447, 1).text());
    walk(kMay);
    EXPECT_EQ(records(installation, kBeforeImages), 0U);
    EXPECT_EQ(value_of(P090, installation.get(kEmployees, 1)),
              12);  // the employee is prepared all the same
}

// ---- Fund deduction ----

TEST_F(FirstWalk, DeductionIsEmptiedOnRequest) {
    installation.put(kEmployees, 1, employee(1).set(P281, 1).set(P268, 99.5).text());
    installation.put(kEmployees, 2, employee(2).set(P268, 99.5).text());
    select({entry("001", "0001"), entry("001", "0002"), kEnd});
    walk(kMay);
    EXPECT_EQ(value_of(P268, installation.get(kEmployees, 1)), 0);
    EXPECT_EQ(value_of(P268, installation.get(kEmployees, 2)), 99.5);
}

TEST(FundPeriods, StartByFrequency) {
    const auto months = [](double frequency) {
        std::string found;
        for (int month = 2; month <= 12; ++month) {
            if (ModSWCALM::fund_period_starts(frequency, month)) {
                found += std::to_string(month) + " ";
            }
        }
        return found;
    };
    EXPECT_EQ(months(1), "2 3 4 5 6 7 8 9 10 11 12 ");
    EXPECT_EQ(months(2), "3 5 7 9 11 ");
    EXPECT_EQ(months(3), "4 7 10 ");
    EXPECT_EQ(months(4), "5 9 ");
    EXPECT_EQ(months(6), "7 ");
    EXPECT_EQ(months(0), "");
    EXPECT_EQ(months(5), "");
    EXPECT_EQ(months(12), "");
}

}  // namespace
