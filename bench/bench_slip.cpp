// A whole slip without archives: the employee's record read, the slip calculated from the opening
// to the net, the record written with its list line; against the bare reading and writing of the
// record that a slip cannot do without (read twice, written twice). Prints the ratio.

#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "bench/ratio_reporter.h"
#include "calc/phases.h"
#include "context/environment.h"
#include "context/period.h"
#include "files/logical_files.h"
#include "installation/demo.h"
#include "installation/file_layout.h"
#include "platform/silent_window.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "slip/fixed_data.h"
#include "slip/slip.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

constexpr double kRecord = 1;

/// A message is no part of a slip that is measured.
class BenchWindow final : public platform::SilentWindow {
  public:
    void box(const std::string&, const std::string& text, platform::Icon) override {
        throw std::runtime_error("a box: " + text);
    }
};

/// The base installation with its ordinary employee, opened as the second walk opens it.
class Stage {
  public:
    Stage() {
        platform::set_window(std::make_unique<BenchWindow>());
        {
            const nzutil::Installation installation =
                nzutil::make_base_installation(directory_.file("base"));
            environment.archive_directory = installation.archive_directory();
            path_ = installation.path(nzutil::kEmployees);
            installation.close();
        }
        ModSWCALM::TUTTELEOP();
        load(nzutil::kFixedData, 1, Area::FISX);
        load(nzutil::kCompanies, 1, Area::DITX);
        load(nzutil::kSectors, 1, Area::SETX);
        period.set("310520244");
        ModSWCALM::run_tables = {};
        ModSWCALM::run_tables.days_of_year = 365;
        ModSWCALM::CARICAFISSO(ModSWCALM::run_tables.TABFISSO);
        LEGGIREC(nzutil::kEmployees, kRecord);
        record_ = record_buffer(nzutil::kEmployees);
    }
    ~Stage() { CHIUDI(0); }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    Stage(Stage&&) = delete;
    Stage& operator=(Stage&&) = delete;

    [[nodiscard]] const std::string& record() const { return record_; }
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    static void load(int file, double record, Area where) {
        if (LEGGIREC(file, record) == 1) {
            throw std::runtime_error("a table of the installation is missing");
        }
        area(where) = record_buffer(file);
    }

    test_support::TempDirectory directory_;
    std::string path_;
    std::string record_;
};

void whole_slip(benchmark::State& state) {
    const Stage stage;
    for (auto _ : state) {
        SCRIVIREC(nzutil::kEmployees, kRecord, stage.record());
        ModSWCALM::open_slip(kRecord);
        ModSWCALM::RESTOCALCOLI();
        if (ModSWCALM::ABORTODIP != 0 || num(Q173) <= 0) {
            throw std::runtime_error("the slip gave no net pay");
        }
    }
    state.SetItemsProcessed(state.iterations());
}

void bare_record_traffic(benchmark::State& state) {
    const Stage stage;
    const int file = ::open(stage.path().c_str(), O_RDWR);
    std::string record = stage.record();
    for (auto _ : state) {
        for (int pass = 0; pass < 2; ++pass) {
            if (::pread(file, record.data(), record.size(), 0) <= 0 ||
                ::pwrite(file, record.data(), record.size(), 0) <= 0) {
                throw std::runtime_error("the record could not be read or written");
            }
        }
    }
    ::close(file);
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(whole_slip)->Repetitions(3)->Unit(benchmark::kMicrosecond);
BENCHMARK(bare_record_traffic)->Repetitions(3)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratio("whole_slip", "bare_record_traffic");
    return 0;
}
