// A whole run that is killed within a write, for every write, and then started again: no record of
// an employee is half written, the index of the before-images is sound, and the archive is byte for
// byte the one of a run that nobody has killed.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "context/environment.h"
#include "context/failure_handler.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "installation/demo.h"
#include "installation/installation.h"
#include "nzutil/index_check.h"
#include "platform/failure.h"
#include "platform/silent_window.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "run/main_run.h"
#include "tests/support/fault_file_system.h"
#include "tests/support/run_in_process.h"
#include "tests/support/temp_directory.h"
#include "texts/texts.h"

namespace {

namespace fs = std::filesystem;
using nzutil::Installation;
using test_support::FaultFileSystem;
using test_support::FaultPlan;
using test_support::Killed;
using test_support::TempDirectory;
using namespace MXLIBRERIA::file_numbers;

using Snapshot = std::map<std::string, std::string>;

class KilledRun : public ::testing::Test {
  protected:
    void SetUp() override {
        nzutil::make_demo_installation(directory.file("demo")).close();
        Installation demo = Installation::open(directory.file("demo"));
        demo.write_selection({{1, 3}, {1, 5}});
        length = static_cast<std::size_t>(demo.record_length(kEmployees));
        employees = demo.path(kEmployees);
        demo.close();
        ::setenv("SOLMAREL_REGISTRO", directory.file("demo/registro.ini").c_str(), 1);
        fs::copy(archive(), directory.file("before"));
        auto list = std::make_unique<platform::SilentWindow>();
        window = list.get();
        platform::set_window(std::move(list));
    }
    void TearDown() override {
        test_support::forget_run();
        ::unsetenv("SOLMAREL_REGISTRO");
    }

    void restore() const {
        test_support::forget_run();
        fs::remove_all(archive());
        fs::copy(directory.file("before"), archive());
    }

    /// A run to its end, or to where it is killed.
    static bool run_ends() {
        try {
            ModSWCALM::MAIN();
        } catch (const platform::EndOfProgram& end) {
            EXPECT_EQ(end.status, 0);
        } catch (const Killed&) {
            return false;
        }
        return true;
    }

    [[nodiscard]] std::string archive() const { return directory.file("demo/archivi"); }
    [[nodiscard]] Snapshot snapshot() const {
        Snapshot files;
        for (const fs::directory_entry& entry : fs::directory_iterator(archive())) {
            if (entry.is_regular_file()) {
                files[entry.path().filename().string()] =
                    platform::read_whole_file(entry.path().string());
            }
        }
        return files;
    }
    [[nodiscard]] static std::string differing(const Snapshot& a, const Snapshot& b) {
        std::string names;
        for (const auto& [name, bytes] : a) {
            if (!b.contains(name) || b.at(name) != bytes) {
                names += name + " ";
            }
        }
        for (const auto& [name, bytes] : b) {
            names += a.contains(name) ? "" : "+" + name + " ";
        }
        return names;
    }

    /// The records of the employee file, with every version that a run gives them.
    using Versions = std::vector<std::set<std::string>>;
    void add_versions(Versions& versions) const {
        const std::string bytes = platform::read_whole_file(employees);
        versions.resize(bytes.size() / length);
        for (std::size_t i = 0; i < versions.size(); ++i) {
            versions[i].insert(bytes.substr(i * length, length));
        }
    }

    /// A whole run; its versions are those before and after each of its writes.
    Snapshot whole_run(Versions& versions, std::uint64_t& changes) {
        restore();
        add_versions(versions);
        const auto plan = FaultFileSystem::install();
        plan->after_change = [&] { add_versions(versions); };
        EXPECT_TRUE(run_ends());
        changes = plan->changes;
        test_support::forget_run();
        add_versions(versions);
        return snapshot();
    }

    void killed_run(std::uint64_t change, double keeps) {
        restore();
        const auto plan = FaultFileSystem::install();
        plan->kill_at = change;
        plan->kill_keeps = keeps;
        ASSERT_FALSE(run_ends());
        test_support::forget_run();
    }

    /// What a start does before it reads a file.
    void start_again() const {
        FaultFileSystem::install();
        MXLIBRERIA::environment.archive_directory = archive();
        static_cast<void>(MXLIBRERIA::finish_killed_step());
        test_support::forget_run();
    }

    void expect_whole_records(const Versions& versions) const {
        const std::string bytes = platform::read_whole_file(employees);
        ASSERT_EQ(bytes.size(), versions.size() * length);
        for (std::size_t i = 0; i < versions.size(); ++i) {
            EXPECT_TRUE(versions[i].contains(bytes.substr(i * length, length)))
                << "employee " << i + 1;
        }
    }
    void expect_sound_index() const {
        const Installation demo = Installation::open(directory.file("demo"));
        EXPECT_EQ(nzutil::check_index(demo, kBeforeImageIndex).damage, "");
    }

    /// Kills the run within every write and starts it again.
    void kill_at_every_write() {
        Versions versions;
        std::uint64_t changes = 0;
        const Snapshot calculated = whole_run(versions, changes);
        ASSERT_GT(changes, 20U);
        for (std::uint64_t change = 1; change <= changes; ++change) {
            for (const double keeps : {0.0, 0.5, 1.0}) {
                SCOPED_TRACE("write " + std::to_string(change) + ", " + std::to_string(keeps));
                killed_run(change, keeps);
                start_again();
                expect_whole_records(versions);
                expect_sound_index();
                test_support::forget_run();
                FaultFileSystem::install();  // without faults, and without waiting for the disk
                ASSERT_TRUE(run_ends());
                test_support::forget_run();
                ASSERT_EQ(differing(snapshot(), calculated), "");
            }
        }
    }

    TempDirectory directory;
    platform::SilentWindow* window = nullptr;
    std::string employees;
    std::size_t length = 0;
};

TEST_F(KilledRun, StartedAgainGivesTheArchiveOfAnUnkilledOne) {
    kill_at_every_write();
}

TEST_F(KilledRun, InTheMonthThatFollowsACalculatedOne) {
    ASSERT_TRUE(run_ends());
    test_support::forget_run();
    {
        Installation demo = Installation::open(directory.file("demo"));
        demo.write_period("30062024", '4');
        demo.close();
    }
    test_support::forget_run();
    fs::remove_all(directory.file("before"));
    fs::copy(archive(), directory.file("before"));
    kill_at_every_write();
}

TEST_F(KilledRun, IsToldInTheFirstLineOfTheList) {
    Versions versions;
    std::uint64_t changes = 0;
    whole_run(versions, changes);
    const std::string name = "001-000-0003 ROMANO GIULIA                           ";
    // From the end: the slot goes, the company's state, record and slot, employee 5's three writes,
    // then those of employee 3: state, record, slot.
    constexpr std::uint64_t kRecordOfFirstSlip = 8;
    killed_run(changes - kRecordOfFirstSlip, 0.5);
    ASSERT_TRUE(run_ends());
    ASSERT_GE(window->lines.size(), 3U);
    EXPECT_EQ(window->lines[0], name + texts::kFinishedStep.bytes());
    EXPECT_EQ(window->lines[1], name + texts::kAlready.bytes());
}

TEST_F(KilledRun, NamesFileAndRecordWhereNoEmployeeIsConcerned) {
    killed_run(2, 0.5);  // the yearly tables: slot, record
    ASSERT_TRUE(run_ends());
    EXPECT_EQ(window->lines[0], "Archivio 19 record 1" + texts::kFinishedStep.bytes());
}

TEST_F(KilledRun, FilesAreHeldToTheDiskAtTheEndOfEachWalk) {
    const auto plan = FaultFileSystem::install();
    ASSERT_TRUE(run_ends());
    // The first walk ends with the slot and the before-images, the run with all that it wrote.
    EXPECT_EQ(plan->synced,
              (std::vector<std::string>{"VELMOR.RIP", "DIPPRIMA.DAT", "DIPPRIMA.IDX", "DITTE.DAT",
                                        "DIPEND.DAT", "FISSI.DAT", "DIPMESI.DAT"}));
}

TEST_F(KilledRun, FilesAreHeldToTheDiskWhereAFailureEndsTheRun) {
    Versions versions;
    std::uint64_t changes = 0;
    whole_run(versions, changes);
    restore();
    const auto plan = FaultFileSystem::install();
    // The slip of employee 3 is in its file; the next operation of the disk fails.
    constexpr std::uint64_t kAfterFirstSlip = 7;
    plan->after_change = [&] {
        if (plan->changes == changes - kAfterFirstSlip) {
            plan->fail_at = plan->operations + 1;
            plan->synced.clear();
        }
    };
    try {
        ModSWCALM::MAIN();
        FAIL() << "the failure has been lost";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(MXLIBRERIA::GESTIONEERRORE(failure), 1);
    }
    EXPECT_EQ(plan->synced, (std::vector<std::string>{"DIPEND.DAT", "FISSI.DAT", "DIPMESI.DAT"}));
}

TEST_F(KilledRun, FilesAreHeldToTheDiskWhereTheFirstWalkIsStopped) {
    const auto plan = FaultFileSystem::install();
    const auto images = [this] { return fs::file_size(archive() + "/DIPPRIMA.DAT") / length; };
    const std::uintmax_t before = images();
    plan->after_change = [&] { platform::set_stop_requested(images() > before); };
    int status = 0;
    try {
        ModSWCALM::MAIN();
    } catch (const platform::EndOfProgram& end) {
        status = end.status;
    }
    platform::set_stop_requested(false);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(plan->synced, (std::vector<std::string>{"DIPEND.DAT", "FISSI.DAT", "DIPPRIMA.DAT",
                                                      "DIPPRIMA.IDX", "DIPMESI.DAT"}));
}

TEST_F(KilledRun, TheEmployeeFileIsHeldToTheDiskEvery200Employees) {
    {
        Installation demo = Installation::open(directory.file("demo"));
        std::string record = *demo.read(kEmployees, 3);
        MXREPOSITORY::SCRIVICAMPONUM(MXREPOSITORY::P116, 1, 0, record);  // calculated each time
        demo.write(kEmployees, 3, record);
        demo.write_selection(std::vector<std::pair<int, int>>(401, {1, 3}));
        demo.close();
    }
    test_support::forget_run();
    const auto plan = FaultFileSystem::install();
    ASSERT_TRUE(run_ends());
    // after 200, after 400, and at the end
    EXPECT_EQ(std::count(plan->synced.begin(), plan->synced.end(), "DIPEND.DAT"), 3);
}

}  // namespace
