#pragma once
// Figures of the fixed data that the law of the period fixes, whatever the operator has typed.

#include <span>

#include "records/descriptor.h"

namespace ModSWCALM {

/// In the months from `first` to `last` (yyyymm) the field becomes `value` if it equals, or differs
/// from, `compared`.
struct DatedDefault {
    enum class Test { equals, differs };
    MXREPOSITORY::Descriptor field;
    Test test;
    double compared;
    int first;
    int last;
    double value;

    [[nodiscard]] constexpr bool covers(int yyyymm) const {
        return yyyymm >= first && yyyymm <= last;
    }
    [[nodiscard]] constexpr bool applies(int yyyymm, double current) const {
        return covers(yyyymm) && (test == Test::equals) == (current == compared);
    }
};

/// All rules, in the order in which they are applied.
[[nodiscard]] std::span<const DatedDefault> dated_defaults();

/// Applies the rules to the fixed data loaded; after each change record 1 of file 19 is written and
/// read again.
void apply_dated_defaults(int yyyymm);

}  // namespace ModSWCALM
