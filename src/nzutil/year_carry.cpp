#include "nzutil/year_carry.h"

#include <algorithm>
#include <array>

#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/revaluation.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

/// An advance on the severance fund: amount, its tax, the month in which it was paid.
struct Advance {
    Descriptor amount;
    Descriptor tax;
    Descriptor month;
};
constexpr std::array<Advance, 4> kAdvances{
    {{Q046, Q047, Q185}, {Q252, Q253, Q254}, {Q256, Q257, Q258}, {Q978, Q987, Q977}}};

/// Index of a month of the closed year; month 0 is its start.
double price_index(double month, double base_index) {
    const bool in_year = month >= 1 && month <= 12;
    return in_year ? num(dopo(F023, static_cast<int>(month) - 1)) : base_index;
}

/// Revaluation of the fund by December's index, and its substitute tax (art. 2120 c.c., c. 4;
/// D.Lgs. 47/2000, art. 11). An advance takes its part off from the month in which it was paid.
void revalue_fund(int closed_year) {
    const double base_index = ModSwCalm2::base_index_of_year(closed_year, num(F021));
    scrivi(Q267, ModSwCalm2::CalcolaCoefRivalTFR(num(F034), base_index, num(Q136)));
    const double elsewhere = num(T587) == 1 ? num(Q699) + num(Q896) + num(Q698) : 0;
    double revaluation = (num(Q039) - elsewhere) * num(Q267) / 100;
    for (const Advance& advance : kAdvances) {
        const double month = num(advance.month);
        const double coefficient =
            ModSwCalm2::CalcolaCoefRivalTFR(num(F034), price_index(month, base_index), 12 - month);
        revaluation -= num(advance.amount) * coefficient / 100;
    }
    scrivi(Q270, std::max(0.0, revaluation));
    scrivi(Q121, num(P031) == 0 ? 0 : num(F322) * num(Q270) / 100);
}

/// The year's accrual, less contribution and advances.
void close_accrual() {
    constexpr double kUsualDivisor = 13.5;  // art. 2120 c.c., c. 1
    scrivi(Q041, num(Q037) / (num(P467) != 0 ? num(P467) : kUsualDivisor));
    scrivi(Q264, num(Q041) - num(Q038));
    double advances = 0;
    for (const Advance& advance : kAdvances) {
        advances += num(advance.amount);
    }
    scrivi(Q265, advances);
}

}  // namespace

void carry_income() {
    scrivi(Q032, num(Q031));
    scrivi(Q031, num(Q013) + num(Q514));
}

void carry_surtaxes(bool left) {
    const double advance_returned = num(Q674) == 0 ? num(Q678) + num(Q675) : 0;
    scrivi(Q317, left ? 0 : num(Q342));
    scrivi(Q235, left ? 0 : num(Q343) - advance_returned);
}

void carry_fund(int closed_year) {
    close_accrual();
    revalue_fund(closed_year);
    const double net_revaluation = num(Q270) - num(Q121);
    aggiungi(Q039, num(Q264) - num(Q265) - num(Q236) + net_revaluation);
    aggiungi(Q056, net_revaluation);
    aggiungi(Q042, num(Q136));
    aggiungi(Q043, num(Q265));
    for (const Advance& advance : kAdvances) {
        aggiungi(Q044, num(advance.tax));
        azzera({advance.amount, advance.tax, advance.month});
    }
    azzera({Q136, Q037, Q038, Q041, Q236});
}

}  // namespace nzutil
