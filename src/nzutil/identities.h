#pragma once
// Accounting identities that hold for every calculated slip, checked after each run of a scenario.

#include <map>
#include <string>
#include <vector>

#include "nzutil/scenario.h"

namespace nzutil {

/// A calculated slip: the employee's record before and after the run, and the run's period.
struct CalculatedSlip {
    const Installation* installation;
    int record;  ///< of the employee
    std::string before;
    std::string after;
    PeriodEntry period;
};

/// One identity: its name, and what is wrong with the slip ("" when it holds).
struct Identity {
    const char* name;
    std::string (*check)(const CalculatedSlip& slip);
};

/// Checks all identities but those that the scenario switches off with a reason.
[[nodiscard]] std::vector<Difference> check_identities(
    const CalculatedSlip& slip, const std::map<std::string, std::string>& switched_off);

/// Is there an identity of this name?
[[nodiscard]] bool is_identity(const std::string& name);

}  // namespace nzutil
