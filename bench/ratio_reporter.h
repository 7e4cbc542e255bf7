#pragma once
// Runs the benchmarks of a program and prints, at the end, how a piece of ours stands to a floor
// measured in the same run: "ratio NAME 0.85" is 0.85 of the floor's items a second.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// The console's report, and the best rate of each benchmark.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}  // without colours, for a log

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const auto rate = run.counters.find("items_per_second");
            if (run.run_type == Run::RT_Iteration && rate != run.counters.end()) {
                double& best = best_[run.run_name.function_name];
                best = std::max(best, rate->second.value);
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    /// Prints one ratio; says so if one of the two was not run.
    void print_ratio(const std::string& ours, const std::string& floor) const {
        const auto a = best_.find(ours);
        const auto b = best_.find(floor);
        if (a == best_.end() || b == best_.end()) {
            std::printf("ratio %s / %s: not measured\n", ours.c_str(), floor.c_str());
            return;
        }
        std::printf("ratio %s / %s: %.3f  (%.0f/s against %.0f/s)\n", ours.c_str(), floor.c_str(),
                    a->second / b->second, a->second, b->second);
    }

  private:
    std::map<std::string, double> best_;
};

}  // namespace bench
