#include "slip/minimum_base.h"

#include <algorithm>
#include <array>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

/// Minimum pay of a day by the kind of insurance (P040).
struct DailyMinimumRow {
    double kind;
    Descriptor minimum;
};
constexpr std::array<DailyMinimumRow, 4> kDailyMinimums{
    {{0, S046}, {1, S028}, {2, S039}, {3, S017}}};

double daily_minimum() {
    if (num(P103) != 0) {
        return num(P103);
    }
    if (num(P168) > 1) {
        return 0;
    }
    const double kind = num(P040);
    for (const DailyMinimumRow& row : kDailyMinimums) {
        if (row.kind == kind) {
            return num(row.minimum);
        }
    }
    return 0;
}

/// Is the minimum of this part-timer counted by the hour?
bool part_time_minimum_applies() {
    if (num(P019) != 1 || num(S072) == 0) {
        return false;
    }
    if (company_is("90000000033")) {
        return num(P242) + num(P243) == 0;
    }
    constexpr double kDaysOfWeek = 6;
    constexpr double kCents = 100;
    return Fix(num(P441) / kDaysOfWeek * kCents) / kCents != 0;
}

/// Apprentices and the like without a minimum of their own.
bool has_no_minimum() {
    const double kind = num(P045);
    return (kind == 4 || kind == 5) && num(P188) != 0 && num(P103) == 0 && num(P100) == 0;
}

double minimum_base(double daily) {
    if (has_no_minimum() || period.additional()) {
        return 0;
    }
    const double base =
        part_time_minimum_applies() ? daily / num(S072) * num(P207) : daily * num(P201);
    return std::max(0.0, base);
}

/// What is held against the minimum: never less than 25 days of a part-timer whose company asks it.
double minimum_test(double daily) {
    constexpr double kDays = 25;
    const double further_base = num(P201) > kDays && num(P019) == 1 ? daily * kDays : 0;
    const bool raised = num(T175) == 1 && num(P168) <= 1 && slip.IMPMINIMALE < further_base;
    return unita(raised ? further_base : slip.IMPMINIMALE);
}

/// Monthly pay that the contract guarantees, less the element P362.
double contractual_monthly_pay() {
    const double element = num(P058);
    const double pay = num(P050) == 0 ? element * hours_divisor() / 100 : element;
    return pay - num(P362);
}

/// Minimum of the hours of a part-timer: the greater of law's and the contract's hour, by P207.
double hourly_minimum(double daily) {
    if (num(P019) != 1 || num(P441) == 0 || num(S072) == 0 || num(P207) == 0) {
        return 0;
    }
    constexpr double kWeeks = 52;
    constexpr double kUsualMonths = 13;
    const double second_daily = num(P104) != 0 ? num(P104) : daily;
    const double months = num(P090) == 0 ? kUsualMonths : num(P090);
    const double contractual = months * contractual_monthly_pay() / (num(P441) * kWeeks);
    const double minimum = std::max(second_daily / num(S072), contractual) * num(P207);
    return num(P169) == 0 ? unita(minimum) : minimum;
}

}  // namespace

void take_minimum_base() {
    const double daily = daily_minimum();
    slip.minimum_base = minimum_base(daily);
    slip.minimum_test = minimum_test(daily);
    slip.hourly_minimum = hourly_minimum(daily);
}

}  // namespace ModSWCALM
