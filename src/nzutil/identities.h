#pragma once
// Accounting identities that hold for every calculated slip, to the cent, checked after each run of
// a scenario. What an identity cannot tell from the records (a fund with formulas, an entertainer's
// bases) it does not judge.
//
//   gross             what is paid: items, allowances, bonuses, refunds
//   deductions        what is taken: items, rounding brought in, contributions, taxes
//   net               gross less deductions, its rounding and the rounding carried on
//   carry             the rounding of a slip enters the next one
//   contributions     item by item, cuts taken off, and their sums to date
//   taxable           lines less contributions, separate amounts back in, and its sum to date
//   reliefs           premiums and tips under the flat tax, and their sums to date
//   ceiling           wage above the yearly ceiling
//   tax               tax of the slip and to date
//   adjustment        the year's tax by the scale, less the certificate, against what was withheld
//   deduction_months  employment deduction, its days, and both to date
//   bonus             bonus paid, due, taken back
//   further_deduction the same of the further deduction, and
//   integrative_sum   of the integrative sum
//   restitution       what is taken back by instalments never exceeds its total
//   severance         accrual of the year, what is left of the fund, what a leaver is paid of it
//   pension_fund      what goes to the fund, its sums; of who gives all his accrual nothing is left
//   drop              a slip that is not calculated leaves the record as it was

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "nzutil/calculated_slip.h"
#include "nzutil/scenario.h"

namespace nzutil {

/// What an identity gives and what the record holds.
struct Mismatch {
    std::string expected;
    std::string found;
};

/// One identity: its name, and what is wrong with the slip (nothing when it holds).
struct Identity {
    const char* name;
    std::optional<Mismatch> (*check)(const CalculatedSlip& slip);
};

/// Checks all identities but those that the scenario switches off with a reason. Of a slip that was
/// dropped only `drop` is checked.
[[nodiscard]] std::vector<Difference> check_identities(
    const CalculatedSlip& slip, bool calculated,
    const std::map<std::string, std::string>& switched_off);

/// Is there an identity of this name?
[[nodiscard]] bool is_identity(const std::string& name);

}  // namespace nzutil
