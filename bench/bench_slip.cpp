// The slips of a payroll in this process, from the first walk to the net: the demo's employees over
// and over in file order, without archives; against the records and index blocks that a month
// cannot do without, with bare calls. Prints the ratio.

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/bare_traffic.h"
#include "bench/payroll.h"
#include "bench/ratio_reporter.h"
#include "calc/phases.h"
#include "context/environment.h"
#include "context/period.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "installation/file_layout.h"
#include "platform/silent_window.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "run/first_walk.h"
#include "slip/fixed_data.h"
#include "slip/slip.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

constexpr int kPayroll = 280;  // the demo's fourteen, twenty times

/// A message is no part of a slip that is measured.
class BenchWindow final : public platform::SilentWindow {
  public:
    void box(const std::string&, const std::string& text, platform::Icon) override {
        throw std::runtime_error("a box: " + text);
    }
};

/// A payroll and copies of it as it stands before its month.
class Stage {
  public:
    Stage() {
        platform::set_window(std::make_unique<BenchWindow>());
        static_cast<void>(bench::make_payroll(directory_.file("payroll"), kPayroll));
    }

    [[nodiscard]] nzutil::Installation fresh() const {
        CHIUDI(0);
        std::filesystem::remove_all(directory_.file("run"));
        return nzutil::copy_installation(directory_.file("payroll"), directory_.file("run"));
    }

    /// A fresh copy with its files open, as the run has them before its first walk.
    void open() const {
        environment.archive_directory = fresh().archive_directory();
        recovery_slot.in_use = true;
        ModSWCALM::run_tables = {};
        ModSWCALM::TUTTELEOP();
        FAIOPEN(nzutil::kBeforeImages);
        FAIOPEN(nzutil::kBeforeImageIndex);
        load(nzutil::kFixedData, 1, Area::FISX);
        load(nzutil::kCompanies, 1, Area::DITX);
        load(nzutil::kSectors, 1, Area::SETX);
        period.set("310520244");
        ModSWCALM::run_tables.days_of_year = 365;
        ModSWCALM::CARICAFISSO(ModSWCALM::run_tables.TABFISSO);
    }

  private:
    static void load(int file, double record, Area where) {
        if (LEGGIREC(file, record) == 1) {
            throw std::runtime_error("a table of the installation is missing");
        }
        area(where) = record_buffer(file);
    }

    test_support::TempDirectory directory_;
};

void calculate(int employee) {
    ModSWCALM::open_slip(employee);
    const bool already = bench::already_calculated(area(Area::DIPX));
    ModSWCALM::leaver_scan();
    ModSWCALM::take_off_days_outside_service();
    ModSWCALM::RESTOCALCOLI();
    if (!already && (ModSWCALM::ABORTODIP != 0 || num(Q173) <= 0)) {
        throw std::runtime_error("a slip gave no net pay");
    }
}

void whole_slip(benchmark::State& state) {
    const Stage stage;
    for (auto _ : state) {
        state.PauseTiming();
        stage.open();
        state.ResumeTiming();
        ModSWCALM::first_walk();
        for (int employee = 1; employee <= kPayroll; ++employee) {
            calculate(employee);
        }
    }
    CHIUDI(0);
    state.SetItemsProcessed(state.iterations() * kPayroll);
}

void bare_record_traffic(benchmark::State& state) {
    const Stage stage;
    for (auto _ : state) {
        state.PauseTiming();
        bench::BareTraffic traffic(stage.fresh());
        state.ResumeTiming();
        traffic.first_walk(kPayroll);
        traffic.second_walk(kPayroll);
    }
    state.SetItemsProcessed(state.iterations() * kPayroll);
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
