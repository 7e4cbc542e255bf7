#include "slip/line_accumulators.h"

#include <array>
#include <string>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

/// How Z021 lets an amount join one of the three totals.
struct TotalRow {
    double kind;
    std::size_t total;
    double sign;
};
constexpr std::array<TotalRow, 4> kTotals{{{2, 2, 1}, {3, 2, -1}, {4, 3, 1}, {5, 2, 1}}};

/// Severance base P260: with its share of the base elements, in months that count.
void add_to_severance_base(double kind, double value) {
    if (kind == 3) {
        aggiungi(P260, value);
        return;
    }
    if (kind != 2) {
        value *= slip.QUOTABASE;
    }
    if (month_counts(num(T073))) {
        aggiungi(P260, value);
    }
}

}  // namespace

void add_to_totals(double amount) {
    const double kind = num(Z021);
    if (kind == 1) {
        if (num(Z011) == 0) {
            slip.totals_Z021[1] += amount;
        } else if (num(Z011) == 1) {
            slip.totals_Z021[1] -= amount;
        }
        return;
    }
    for (const TotalRow& row : kTotals) {
        if (row.kind == kind) {
            slip.totals_Z021[row.total] += row.sign * amount;
        }
    }
}

void add_to_severance(double amount) {
    constexpr double kBuckets = 5;
    const double declared = num(Z020);
    const double kind = declared == 7 && num(P055) != 0 ? 4 : declared;
    if (kind == 1 || kind == 3 || kind == 4) {
        add_to_severance_base(kind, num(Z011) == 1 ? -amount : amount);
    } else if (kind == 2 || kind == 5) {
        add_to_severance_base(kind, -amount);
    } else if (kind == 8 || kind == 9) {
        slip.severance_buckets[static_cast<std::size_t>(kind)] += amount;
    } else if (const double bucket = num(Z045); bucket >= 1 && bucket <= kBuckets) {
        slip.severance_buckets[static_cast<std::size_t>(bucket)] += amount;
    }
}

bool month_counts(double minimum_days) {
    const double length = month_length(period.month());
    const std::string start = num(P014) != 0 ? testo(P014) : testo(P013);
    double days = length;
    if (ritaglia(start, 3, 6) == period.month_year()) {
        days += 1 - valore(ritaglia(start, 1, 2));
    }
    if (num(P017) != 0) {
        days -= length - valore(ritaglia(testo(P017), 1, 2));
    }
    return days >= minimum_days;
}

}  // namespace ModSWCALM
