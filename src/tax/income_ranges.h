#pragma once
// Amounts of a year that the law gives by ranges of income, each range with its own formula.

#include <algorithm>
#include <limits>
#include <span>

namespace ModSWCALB {

/// For from <= R <= to: base + slope x (top - R) / divisor + extra, not above `limit`.
struct IncomeRange {
    double from;
    double to;
    double base;
    double slope;
    double top;
    double divisor;
    double extra;
    double limit;
};

inline constexpr double kUnlimited = std::numeric_limits<double>::max();

/// Amount of the range that takes the income; `otherwise` where none does.
[[nodiscard]] constexpr double amount_by_income(std::span<const IncomeRange> ranges, double income,
                                                double otherwise) {
    for (const IncomeRange& range : ranges) {
        if (income >= range.from && income <= range.to) {
            const double amount =
                range.base + range.slope * (range.top - income) / range.divisor + range.extra;
            return std::min(amount, range.limit);
        }
    }
    return otherwise;
}

}  // namespace ModSWCALB
