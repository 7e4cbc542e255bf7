#include "calc/extra_payments.h"

#include <algorithm>
#include <string>

#include "context/period.h"
#include "history/slip_images.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;

namespace {

constexpr double kTwelfths = 12;

/// Start of the year of the thirteenth: day and month of P015, 1 January where it is empty.
Date thirteenth_start() {
    const std::string day_and_month = rifila(ritaglia(testo(P015), 1, 4));
    const bool none = day_and_month.empty() || day_and_month == "0000";
    Date start = Date::of((none ? "0101" : day_and_month) + period.year_text());
    if (start.month > period.month()) {
        --start.year;
    }
    return start;
}

bool month_is_counted() {
    Date start = Date::of(testo(P013));
    if (start.year != period.year()) {
        start = thirteenth_start();
    }
    return extra_month_counts(start, Date::of(testo(P017)), Date::of(period.date()), num(T071));
}

/// Is December's additional slip already in the archive of the slip images?
bool december_on_file() {
    const std::string yyyymm = period.year_text() + period.month_text();
    return num(P090) >= 12 && NZCedLibPaga::slip_on_file(testo(P001), yyyymm) &&
           period.month() == 12;
}

/// The fourteenth starts again in the month of P016, July where it is empty.
void restart_fourteenth() {
    const std::string start = testo(P016);
    const bool none = valore(start) == 0;
    if (period.month_text() == (none ? "07" : ritaglia(start, 3, 2))) {
        svuota({Q165});
    }
}

}  // namespace

double twelfths_after(double twelfths, bool december_on_file, bool ordinary) {
    const double counted = !december_on_file || ordinary ? 1 : 0;
    return std::min(kTwelfths, twelfths + counted);
}

bool extra_month_counts(const Date& start, const Date& leaving, const Date& slip_date,
                        double minimum_days) {
    const bool starts_this_month = start.yyyymm() == slip_date.yyyymm();
    if (!starts_this_month && !leaving.given()) {
        return true;
    }
    if (leaving.given() && start.yyyymm() == leaving.yyyymm()) {
        return leaving.day - start.day >= minimum_days;
    }
    const int length = month_length(start.month);
    const int days_of_start_month = length - start.day + 1;
    if (starts_this_month) {
        return days_of_start_month >= minimum_days;
    }
    const int days = days_of_start_month < minimum_days
                         ? leaving.day + days_of_start_month
                         : leaving.day - (length - days_of_start_month);
    return days >= minimum_days;
}

void count_extra_payments() {
    const bool counted = month_is_counted();
    const bool on_file = counted && december_on_file();
    const bool additional_in_december = period.additional() && period.month() == 12;
    const bool additional_elsewhere = period.additional() && period.month() != 12;
    const bool takes_part = counted && num(P863) == 0;
    if (takes_part && num(P090) >= 13 && !additional_elsewhere) {
        scrivi(Q164, twelfths_after(num(Q164), on_file, period.ordinary()));
    }
    restart_fourteenth();
    if (takes_part && num(P090) > 13 && !additional_in_december) {
        scrivi(Q165, twelfths_after(num(Q165), on_file, period.ordinary()));
    }
}

}  // namespace ModSWCALM
