#pragma once
// Ceiling of the premiums that leave ordinary tax (L. 208/2015, art. 1, c. 182).

namespace ModSWCALM {

/// Percentages of the employee's own contributions that his record turns on: P181, P183, P188.
[[nodiscard]] double own_contribution_percent();

/// Yearly ceiling of the relieved premiums in euro: F413, with F415 = 0 raised by the employee's
/// own contributions of `percent`; 0 where F415 is none of 0, 1, 2.
[[nodiscard]] double ceiling_limit(double percent);

/// May the employee's premiums leave ordinary tax? Income of the year before (Q775) up to F412,
/// premiums to date (Q776) below the ceiling, P758 0.
[[nodiscard]] bool below_ceiling();

}  // namespace ModSWCALM
