#include "contributions/pension_paid.h"

#include <algorithm>
#include <cmath>

#include "contributions/contribution_items.h"
#include "contributions/contributions.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::slip;

namespace {

constexpr double kTenThousand = 10000;

/// Ten thousands that bring what the field shows nearest to an amount.
double ten_thousands(double shown, double amount) {
    return std::max(0.0, Int((amount - shown) / kTenThousand + 0.5)) * kTenThousand;
}

/// What the wage to date owes at the rates of the pension items in force.
double owed_by_wage() {
    double percent = 0;
    for (const int item : {1, 2, 8}) {
        percent += item_cell(slip.PCTCONTR, item) * switch_of(item);
    }
    return num(Q001) * percent / 100;
}

}  // namespace

double pension_paid() {
    const double shown = num(Q007);
    return shown + std::min(ten_thousands(shown, num(Q005) - num(Q009)),
                            ten_thousands(shown, owed_by_wage()));
}

void write_pension_paid(double sum) {
    scrivi(Q007, std::fmod(sum, kTenThousand));
}

}  // namespace ModSwCalm2
