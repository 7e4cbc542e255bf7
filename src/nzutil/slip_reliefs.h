#pragma once
// Premiums and tips of a calculated slip under the flat tax, worked out again from its lines and
// its records. Amounts in euro.

#include <optional>

#include "nzutil/calculated_slip.h"

namespace nzutil {

/// Z013 of premiums.
inline constexpr double kPremiumClass = 6;

/// May the premiums of the slip leave ordinary tax? Nothing where the employee's own percentage is
/// not known.
[[nodiscard]] std::optional<bool> premiums_are_relieved(const CalculatedSlip& slip);

struct RelievedPremium {
    double gross = 0;          ///< up to the yearly ceiling
    double contributions = 0;  ///< on it, with F415 = 2
};
[[nodiscard]] std::optional<RelievedPremium> relieved_premium(const CalculatedSlip& slip);

/// What the premiums bring into the taxable: what lies above the ceiling, and the contributions
/// that the relieved part has borne; ordinary pay told as premium (Z011 2, Z014 0) leaves it, where
/// the slip does not adjust.
[[nodiscard]] double premiums_in_taxable(const CalculatedSlip& slip);

/// Premium that the lines wrote into Q110, put back into the taxable with P025 = 1.
[[nodiscard]] double premium_into_taxable(const CalculatedSlip& slip);

/// Lines of fiscal class 9.
[[nodiscard]] double tips_of_lines(const CalculatedSlip& slip);

}  // namespace nzutil
