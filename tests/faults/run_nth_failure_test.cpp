// A whole run of one employee in which the Nth file operation fails, for every N: the run ends with
// that failure, and the records of everybody else keep every byte.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>

#include "context/environment.h"
#include "context/period.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "installation/demo.h"
#include "installation/installation.h"
#include "platform/failure.h"
#include "platform/silent_window.h"
#include "platform/window.h"
#include "records/fields.h"
#include "run/load_environment.h"
#include "run/main_run.h"
#include "slip/slip.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/run_in_process.h"
#include "tests/support/temp_directory.h"
#include "texts/texts.h"

namespace {

namespace fs = std::filesystem;
using nzutil::Installation;
using test_support::FaultFileSystem;
using test_support::FaultPlan;
using test_support::TempDirectory;
using namespace MXLIBRERIA::file_numbers;

constexpr int kSelected = 3;

class RunUnderFaults : public ::testing::Test {
  protected:
    void SetUp() override {
        nzutil::make_demo_installation(directory.file("demo")).close();
        {
            Installation demo = Installation::open(directory.file("demo"));
            demo.write_selection({{1, kSelected}});
            employees = demo.path(kEmployees);
            employee_length = static_cast<std::size_t>(demo.record_length(kEmployees));
            months = demo.path(kTwelveMonths);
            months_length = static_cast<std::size_t>(demo.record_length(kTwelveMonths));
            demo.close();
        }
        ::setenv("SOLMAREL_REGISTRO", directory.file("demo/registro.ini").c_str(), 1);
        fs::copy(directory.file("demo/archivi"), directory.file("before"));
        platform::set_window(std::make_unique<platform::SilentWindow>());
    }
    void TearDown() override {
        test_support::forget_run();
        ::unsetenv("SOLMAREL_REGISTRO");
    }

    /// Puts the archive back as it was before the first run, and the program's state too.
    void restore() const {
        test_support::forget_run();
        fs::copy(directory.file("before"), directory.file("demo/archivi"),
                 fs::copy_options::overwrite_existing);
    }

    /// The number of the failure that the run would bring to the handler; nothing if it ended well.
    std::optional<int> run() {
        std::optional<int> number;
        try {
            ModSWCALM::MAIN();
        } catch (const platform::EndOfProgram& end) {
            status = end.status;
        } catch (const platform::Failure& failure) {
            number = failure.number();
        }
        platform::set_files(nullptr);
        MXLIBRERIA::CHIUDI(0);
        return number;
    }

    /// A file with the record of the selected employee taken out.
    static std::string others(const std::string& file, std::size_t length) {
        std::string bytes = platform::read_whole_file(file);
        bytes.erase((kSelected - 1) * length, length);
        return bytes;
    }

    TempDirectory directory;
    int status = 0;  ///< of the last run that ended without a failure
    std::string employees;
    std::string months;
    std::size_t employee_length = 0;
    std::size_t months_length = 0;
};

TEST_F(RunUnderFaults, EveryFailingOperationEndsTheRunAndHarmsNobodyElse) {
    const std::string other_employees = others(employees, employee_length);
    const std::string other_months = others(months, months_length);
    std::uint64_t failed = 0;
    for (std::uint64_t operation = 1;; ++operation) {
        restore();
        const std::shared_ptr<FaultPlan> plan = FaultFileSystem::install();
        plan->fail_at = operation;
        const std::optional<int> number = run();
        if (plan->operations < operation) {
            EXPECT_EQ(number, std::nullopt) << "a run without fault";
            EXPECT_EQ(status, 0);
            break;
        }
        // A test for the existence of an archive takes any refusal for "not there"; a refusal of
        // the contract is shown, and the run ends in order without the slip.
        if (number) {
            ++failed;
            EXPECT_EQ(*number, platform::kDeviceIo) << "operation " << operation;
        }
        ASSERT_EQ(others(employees, employee_length), other_employees) << "operation " << operation;
        ASSERT_EQ(others(months, months_length), other_months) << "operation " << operation;
    }
    EXPECT_GT(failed, 50U);
}

TEST_F(RunUnderFaults, RunAfterAFailedOneCalculatesTheSameSlip) {
    restore();
    ASSERT_EQ(run(), std::nullopt);
    const std::string calculated = platform::read_whole_file(employees);
    restore();
    const std::shared_ptr<FaultPlan> counting = FaultFileSystem::install();
    ASSERT_EQ(run(), std::nullopt);
    const std::uint64_t operations = counting->operations;
    ASSERT_GT(operations, 100U);
    for (const std::uint64_t operation : {operations / 4, operations / 2, operations * 3 / 4}) {
        restore();
        FaultFileSystem::install()->fail_at = operation;
        EXPECT_EQ(run(), platform::kDeviceIo) << "operation " << operation;
        EXPECT_EQ(run(), std::nullopt);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(platform::read_whole_file(employees), calculated) << "operation " << operation;
    }
}

}  // namespace
