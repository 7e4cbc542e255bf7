#pragma once
// What a run of a scenario gave against what the scenario expects of it.

#include <map>
#include <string>
#include <vector>

#include "nzutil/process.h"
#include "nzutil/scenario.h"

namespace nzutil {

/// By the employee's record: sum of each field that is expected of him over all runs.
using Sums = std::map<int, std::vector<double>>;

/// Adds what differs after run `number` (from 0): exit, boxes, list, records, and the identities of
/// every slip. `before`: the employees' records as they stood, by number; empty: no identities.
void compare_run(const Installation& installation, const Scenario& scenario, std::size_t number,
                 const ProcessResult& result, const std::map<int, std::string>& before,
                 std::vector<Difference>& differences);

/// Adds the slips that run `number` has calculated to the sums that the scenario expects.
void add_to_sums(const Installation& installation, const Scenario& scenario, std::size_t number,
                 const ProcessResult& result, Sums& sums);

/// Adds the sums that came out otherwise.
void compare_sums(const Scenario& scenario, const Sums& sums, std::vector<Difference>& differences);

}  // namespace nzutil
