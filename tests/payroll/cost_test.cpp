// What a run may cost: few operations of the disk an employee, whatever the size of the payroll,
// and one look at the archive directory, whatever else is in it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "bench/payroll.h"
#include "platform/silent_window.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/run_in_process.h"
#include "tests/support/temp_directory.h"
#include "texts/texts.h"

namespace {

using test_support::FaultFileSystem;

class Cost : public ::testing::Test {
  protected:
    void TearDown() override {
        test_support::forget_run();
        ::unsetenv("SOLMAREL_REGISTRO");
    }
    void use(const std::string& root) {
        test_support::forget_run();
        ::setenv("SOLMAREL_REGISTRO", (root + "/registro.ini").c_str(), 1);
    }

    /// Operations of the disk that the first month of a payroll takes.
    double operations(int employees) {
        const std::string root = directory.file(std::to_string(employees));
        bench::make_payroll(root, employees).close();
        use(root);
        const auto plan = FaultFileSystem::install();
        EXPECT_EQ(test_support::run_here(std::make_unique<platform::SilentWindow>()), 0);
        return static_cast<double>(plan->operations);
    }

    test_support::TempDirectory directory;
};

/// An employee reads and writes his record (twice), his months, his before-image and its index
/// entry, through the recovery slot and under the semaphore. Tables, items and dictionaries are
/// read once a run.
TEST_F(Cost, AnEmployeeTakesFewOperationsOfTheDisk) {
    constexpr int kFew = 14;  // the demo's mix once
    constexpr int kMany = 140;
    constexpr double kMost = 25;
    EXPECT_LE((operations(kMany) - operations(kFew)) / (kMany - kFew), kMost);
}

/// Another program's file is there as soon as an employee is done.
class WatchingWindow final : public platform::SilentWindow {
  public:
    WatchingWindow(std::string file, std::string& last_box)
        : file_(std::move(file)), last_box_(last_box) {}
    void progress(std::size_t /*done*/, std::size_t /*total*/) override { std::ofstream{file_}; }
    void box(const std::string& /*title*/, const std::string& text,
             platform::Icon /*icon*/) override {
        last_box_ = text;
    }

  private:
    std::string file_;
    std::string& last_box_;
};

TEST_F(Cost, TheArchiveDirectoryIsListedOnce) {
    const std::string root = directory.file("demo");
    nzutil::make_demo_installation(root).close();
    use(root);
    std::string last_box;
    test_support::run_here(
        std::make_unique<WatchingWindow>(root + "/archivi/NZRETMEN.MDB", last_box));
    // The run ends as it began, without the archive that has come in the meantime.
    EXPECT_TRUE(last_box.starts_with(texts::kFinished.bytes())) << last_box;
}

}  // namespace
