#pragma once
// Twelfths of the thirteenth (Q164) and fourteenth (Q165) monthly payment.

#include "calc/dates.h"

namespace ModSWCALM {

/// Counts the month among the twelfths, at most 12, if it has the minimum days T071 of service.
void count_extra_payments();

/// Does the slip's month have `minimum_days` of service? `start` lies in the slip's year, or is the
/// start of the thirteenth; `leaving` may be empty.
[[nodiscard]] bool extra_month_counts(const Date& start, const Date& leaving, const Date& slip_date,
                                      double minimum_days);

/// One twelfth more, at most twelve; with December's additional slip on file only the ordinary slip
/// adds it.
[[nodiscard]] double twelfths_after(double twelfths, bool december_on_file, bool ordinary);

}  // namespace ModSWCALM
