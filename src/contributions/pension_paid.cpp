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

/// What the wage to date owes at the rates of the pension items in force. Item 2 knows no ceiling:
/// its wage is Q002.
double owed_by_wage() {
    double owed = 0;
    for (const int item : {1, 2, 8}) {
        const double wage = num(item == 2 ? Q002 : Q001);
        owed += wage * item_cell(slip.PCTCONTR, item) * switch_of(item) / 100;
    }
    return owed;
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
