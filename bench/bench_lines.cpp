// The walk of a slip of 20 lines with formulas as payrolls have them, against the bare reading of
// the 20 item records that it needs. Prints lines a second and the ratio.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "slip/slip.h"
#include "slip/slip_lines.h"
#include "tests/support/slip_files.h"

namespace {

using namespace MXREPOSITORY;
using namespace ModSWCALM;
using test_support::FieldValues;

constexpr int kLines = 20;

/// Items as a payroll has them: pay, overtime, meals, travel, premiums, dues, sickness.
struct Item {
    FieldValues fields;
    std::vector<std::string> formula;
    double quantity;
    double rate;
};
const std::vector<Item> kItems{
    {{{Z013, 1}, {Z014, 1}, {Z020, 1}}, {".P208", "*173", "/26", "=CU"}, 26, 0},
    {{{Z013, 1}, {Z014, 1}, {Z017, 1}}, {".P208", "*1.15", "=CU"}, 8, 0},
    {{{Z013, 1}, {Z014, 1}, {Z017, 1}}, {".P208", "*1.20", "=CU"}, 4, 0},
    {{{Z013, 1}, {Z014, 1}, {Z017, 1}}, {".P208", "*1.30", "=CU"}, 2, 0},
    {{{Z013, 4}, {Z014, 4}, {Z006, 4}, {Z007, 4}, {Z016, 1}}, {".6.50", "=CU"}, 20, 0},
    {{{Z013, 5}, {Z014, 4}, {Z006, 46.48}, {Z007, 46.48}, {Z016, 1}}, {}, 3, 60},
    {{{Z013, 1}, {Z014, 1}, {Z020, 1}}, {".P058", "+P061", "*5", "%20", "=CU", ".1", "=OG"}, 0, 0},
    {{{Z011, 1}}, {".P209", "%1", "=CU", ".1", "=OG"}, 0, 0},
    {{{Z013, 1}, {Z014, 1}}, {".P208", "*8", "=MEM1", ".MEM1", "%50", "=CU"}, 3, 0},
    {{{Z011, 1}, {Z013, 1}, {Z014, 1}}, {".P208", "=CU"}, 8, 0},
};

/// The employee, his sector, his 20 lines and the items on file.
class Stage : public test_support::SlipFiles {
  public:
    Stage() {
        test_support::fill_areas();
        MXLIBRERIA::period.set("310520244");
        scrivi(P208, 11.56069);
        scrivi(P209, 2000);
        scrivi(P058, 1800);
        scrivi(P061, 60);
        scrivi(P201, 26);
        scrivi(S046, 56.87);
        dictionary();
        for (int code = 1; code <= kLines; ++code) {
            const Item& row = kItems[static_cast<std::size_t>(code) % kItems.size()];
            item(code, row.fields, row.formula);
            prepared_.push_back(line_of(code, row.quantity, row.rate));
        }
    }
    void prepare() const {
        slip = Slip{};
        lines(prepared_);
    }
    [[nodiscard]] std::string item_path() const { return archive_.file(name_of(401)); }

  private:
    std::vector<std::string> prepared_;
};

void slip_of_20_lines(benchmark::State& state) {
    const Stage stage;
    for (auto _ : state) {
        stage.prepare();
        evaluate_lines();
        // A copy: what keeps a value from being optimized away may write to it as well.
        const double pay = slip.TOTCOMPETENZE;
        benchmark::DoNotOptimize(pay);
        if (pay <= 0) {
            throw std::runtime_error("the lines gave no pay");
        }
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}

void bare_reading_of_20_records(benchmark::State& state) {
    const Stage stage;
    const int file = ::open(stage.item_path().c_str(), O_RDONLY);
    std::array<char, test_support::SlipFiles::kItemLength> record{};
    for (auto _ : state) {
        for (int code = 1; code <= kLines; ++code) {
            const auto position = static_cast<off_t>(record.size()) * (code - 1);
            if (::pread(file, record.data(), record.size(), position) <= 0) {
                throw std::runtime_error("an item record could not be read");
            }
            benchmark::DoNotOptimize(record);
        }
    }
    ::close(file);
    state.SetItemsProcessed(state.iterations() * kLines);
}

BENCHMARK(slip_of_20_lines)->Repetitions(3)->Unit(benchmark::kMicrosecond);
BENCHMARK(bare_reading_of_20_records)->Repetitions(3)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratio("slip_of_20_lines", "bare_reading_of_20_records");
    return 0;
}
