// What a run keeps in memory, it keeps for speed alone. Six pay runs of two companies are
// calculated with all employees in one run; with one employee a run, so that nothing of one
// employee can reach the slip of another; and with every kept table, directory and dictionary
// forgotten between two employees, so that nothing kept can be older than the files. The archives
// are the same to the byte, and so are the lines of the lists.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "formulas/named_access.h"
#include "nzutil/run_output.h"
#include "platform/code_page.h"
#include "platform/disk_names.h"
#include "platform/silent_window.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "tests/support/demo_run.h"
#include "tests/support/run_in_process.h"

namespace {

using namespace MXLIBRERIA::file_numbers;
using nzutil::Installation;

using Selection = std::vector<std::pair<int, int>>;

/// One pay run of the whole payroll.
struct PayRun {
    const char* date;
    char kind;
};
/// Ordinary months, both additional payments, and the settlement of the year.
constexpr std::array kPayRuns{PayRun{"31052024", '4'}, PayRun{"30062024", '4'},
                              PayRun{"30062024", '0'}, PayRun{"30112024", '4'},
                              PayRun{"31122024", '0'}, PayRun{"31122024", '4'}};

/// Answers No, and forgets what the run has kept whenever an employee is done.
class ForgetfulWindow final : public platform::SilentWindow {
  public:
    explicit ForgetfulWindow(std::string archive) : archive_(std::move(archive)) {}
    void progress(std::size_t /*done*/, std::size_t /*total*/) override {
        for (MXLIBRERIA::FileTable::Entry& file : MXLIBRERIA::file_table.entries) {
            file.table.reset();
        }
        platform::deleted_on_disk(archive_ + "/NESSUNO.DAT");  // the directory is listed anew
        MXREPOSITORY::repository = {};
    }

  private:
    std::string archive_;
};

class SameBytes : public test_support::DemoRun {
  protected:
    void SetUp() override {
        DemoRun::SetUp();
        Installation payroll = installation();
        add_second_company(payroll);
        // The companies take turns, so that each employee follows one of the other company.
        for (int employee = 1; employee <= payroll.record_count(kEmployees); ++employee) {
            everybody.emplace_back(1 + employee % 2, employee);
        }
        payroll.write_selection(everybody);
        payroll.close();
        std::filesystem::copy(root(), directory.file("before"),
                              std::filesystem::copy_options::recursive);
    }
    void TearDown() override {
        test_support::forget_run();
        ::unsetenv("SOLMAREL_REGISTRO");
    }

    /// Company 2 is of a sector with other rates.
    static void add_second_company(Installation& payroll) {
        std::string company = *payroll.read(kCompanies, 1);
        MXREPOSITORY::SCRIVICAMPONUM(MXREPOSITORY::T001, 2, 0, company);
        MXREPOSITORY::SCRIVICAMPONUM(MXREPOSITORY::T067, 2, 0, company);
        payroll.write(kCompanies, 2, company);
        std::string sector = *payroll.read(kSectors, 1);
        MXREPOSITORY::SCRIVICAMPONUM(MXREPOSITORY::S003, 8.84, 0, sector);
        payroll.write(kSectors, 2, sector);
    }

    void start_again() const {
        std::filesystem::remove_all(root());
        std::filesystem::copy(directory.file("before"), root(),
                              std::filesystem::copy_options::recursive);
    }

    using Lines = std::vector<std::string>;
    /// The lines of a list that name an employee, with the pay run that they belong to.
    static void add_lines(const PayRun& pay_run, const Lines& list, Lines& lines) {
        for (const std::string& line : list) {
            lines.push_back(pay_run.date + std::string(1, pay_run.kind) + " " + line);
        }
    }

    void run_process(const PayRun& pay_run, Lines& lines) const {
        const nzutil::ProcessResult result = run();
        EXPECT_EQ(result.status, 0) << result.output << result.errors;
        add_lines(pay_run, nzutil::read_run_output(result.output).list, lines);
    }

    /// Archive and lists after all pay runs, each of them done by `pay`.
    struct Outcome {
        std::map<std::string, std::string> files;
        Lines lines;
    };
    template <class Pay>
    Outcome pay_all(const Pay& pay) {
        start_again();
        Outcome outcome;
        for (const PayRun& pay_run : kPayRuns) {
            installation().write_period(pay_run.date, pay_run.kind);
            pay(pay_run, outcome.lines);
        }
        installation().write_selection(everybody);
        installation().close();
        outcome.files = snapshot();
        std::ranges::sort(outcome.lines);
        return outcome;
    }

    Outcome in_one_run() {
        return pay_all(
            [this](const PayRun& pay_run, Lines& lines) { run_process(pay_run, lines); });
    }

    static void expect_same(const Outcome& found, const Outcome& expected) {
        EXPECT_EQ(found.lines, expected.lines);
        ASSERT_EQ(found.files.size(), expected.files.size());
        for (const auto& [name, bytes] : expected.files) {
            const std::string& other = found.files.at(name);
            const auto differs = std::ranges::mismatch(bytes, other);
            EXPECT_TRUE(bytes == other) << name << " from byte " << differs.in1 - bytes.begin();
        }
    }

    Selection everybody;
};

TEST_F(SameBytes, WithOneEmployeeARun) {
    const Outcome together = in_one_run();
    // Nobody is left out: six lines each, one of them of the month that employee 12 has already.
    ASSERT_EQ(together.lines.size(), kPayRuns.size() * everybody.size());
    const Outcome one_by_one = pay_all([this](const PayRun& pay_run, Lines& lines) {
        for (const auto& entry : everybody) {
            installation().write_selection({entry});
            run_process(pay_run, lines);
        }
    });
    expect_same(one_by_one, together);
}

TEST_F(SameBytes, WithEverythingForgottenBetweenTwoEmployees) {
    const Outcome kept = in_one_run();
    ::setenv("SOLMAREL_REGISTRO", (root() + "/registro.ini").c_str(), 1);
    const Outcome forgotten = pay_all([this](const PayRun& pay_run, Lines& lines) {
        installation().close();
        test_support::forget_run();
        auto window = std::make_unique<ForgetfulWindow>(archive());
        const ForgetfulWindow& list = *window;
        EXPECT_EQ(test_support::run_here(std::move(window)), 0);
        Lines shown;
        for (const std::string& line : list.lines) {
            shown.push_back(platform::to_terminal(line));
        }
        add_lines(pay_run, shown, lines);
        test_support::forget_run();
    });
    expect_same(forgotten, kept);
}

}  // namespace
