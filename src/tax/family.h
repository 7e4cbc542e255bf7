#pragma once
// How a dependant's place on the employee is read: kind, share, birth, months.

#include <cstddef>
#include <vector>

#include "tax/dependant_law.h"

namespace ModSWCALB {

/// A dependant with a share, as this run sees it.
struct FamilyMember {
    std::size_t slot = 0;  ///< index into kDependantSlots
    Dependant kind = Dependant::child;
    double share = 0;  ///< percent
    int birth = 0;     ///< yyyymm, 0 when not known
    int rank = 0;      ///< place among the children with a share, 1 the first; 0 for others
};

/// Number of dependants of whom the employee has a share of the deduction: P035 - P595.
[[nodiscard]] int dependants_counted();
/// The dependants in the first places, as many as are counted; places without a share are left out.
[[nodiscard]] std::vector<FamilyMember> family_members();
/// Kind of the dependant in a place: by its letter, and for the first place without a letter by
/// the household (P404 spouse, P462 child, P588 other).
[[nodiscard]] Dependant kind_in_slot(std::size_t slot);
/// Does the place hold a child, disabled or not?
[[nodiscard]] bool child_in_slot(std::size_t slot);
/// Birth of the dependant in a place as yyyymm, 0 when none is given.
[[nodiscard]] int birth_in_slot(std::size_t slot);
/// Does the law give anything for the dependant in some month of the run's year?
[[nodiscard]] bool counts_in_the_year(std::size_t slot);

/// Months of the year, first to last (1 to 12), that the year-end adjustment grants for a
/// dependant; first > last when there are none.
struct MonthSpan {
    int first = 1;
    int last = 0;
};
/// Months of employment within the run's year, from January or the hiring up to the run or the
/// leaving.
[[nodiscard]] MonthSpan employment_months();
/// The months that stand in the slot's months field are the latest ones of the year; without them
/// those of the employment up to the run.
[[nodiscard]] MonthSpan months_granted(std::size_t slot);

}  // namespace ModSWCALB
