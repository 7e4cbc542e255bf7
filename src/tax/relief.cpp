#include "tax/relief.h"

#include <algorithm>
#include <utility>

#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/premium_ceiling.h"
#include "slip/slip.h"
#include "tax/income_tax.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

// Cells of slip.ceiling_totals
constexpr std::size_t kPayToldAsPremium = 1;
constexpr std::size_t kPremiums = 2;
constexpr std::size_t kTips = 4;

constexpr double kNetOfContributions = 2;  // F415
constexpr double kMonths = 12;

// ---- Premiums under the flat tax ----

/// What of the premium lies above the yearly ceiling; excluded amounts (Q808) fill it too.
double above_ceiling(double premium, double percent) {
    const double ceiling = num(F415) != 0 ? num(F413) : ModSWCALM::ceiling_limit(percent);
    const double excess = arrotonda(premium + num(Q776) + num(Q808) - ceiling);
    return std::clamp(excess, 0.0, std::max(0.0, premium));
}

/// Gross, contributions and net of the relieved premium.
void write_premium(double relieved, double percent) {
    scrivi(P759, relieved);
    if (num(F415) == kNetOfContributions) {
        scrivi(P760, num(P759) * percent / 100);
    }
    scrivi(P761, num(P759) - num(P760));
}

void add_premium_to_date(const Descriptor& tax) {
    aggiungi(Q776, num(P759));
    aggiungi(Q777, num(P760));
    aggiungi(Q778, num(P761));
    aggiungi(Q779, num(tax));
}

/// The closing has emptied the taxable amount of who has no income tax: nothing joins it any more.
void join_taxable(double amount) {
    if (num(P031) != 0) {
        aggiungi(P256, amount);
    }
}

// ---- Premiums that give a tax credit ----

/// Only where the month's tax is withheld on an ordinary slip.
bool credit_is_given() {
    return !tax_state.ConguaglioAnnuale && num(P038) != 9 && period.ordinary() && num(P031) != 0;
}

/// Marginal percent of the income without the premium: of the month brought to the year, or of the
/// year so far once the premiums to date have come up to F433.
double marginal_percent_without(double premium) {
    const bool year_so_far = num(Q110) >= num(F433);
    const double income = num(P256) + (year_so_far ? num(Q013) : 0);
    tax_state.ImponibileCorrente =
        (income - std::min(premium, num(F433))) * (year_so_far ? 1 : kMonths);
    const double pass = std::exchange(tax_state.PrimaPassata, 0);
    CALCIMPOSTA();
    tax_state.PrimaPassata = pass;
    return tax_state.AliquotaMarginale;
}

}  // namespace

void DETASSAZIONE() {
    TRACCIA("DETASSAZIONE");
    const double premium = arrotonda(slip.ceiling_totals[kPremiums]);
    const double percent = ModSWCALM::own_contribution_percent();
    const double held_back = above_ceiling(premium, percent);
    write_premium(premium - held_back, percent);
    const Descriptor& tax = period.additional() ? P764 : P762;
    scrivi(tax, num(F414) * num(P761) / 100);
    add_premium_to_date(tax);
    const double told_as_premium =
        tax_state.ConguaglioAnnuale ? 0 : slip.ceiling_totals[kPayToldAsPremium];
    join_taxable(held_back + num(P759) - num(P761) - told_as_premium);
    aggiungi(P259, num(tax));
}

void TASSAZIONE_MANCE() {
    TRACCIA("TASSAZIONE_MANCE");
    scrivi(PB55, slip.ceiling_totals[kTips]);
    scrivi(PB56, num(F453) * num(PB55) / 100);
    aggiungi(QA27, num(PB55));
    aggiungi(QA28, num(PB56));
    aggiungi(P259, num(PB56));
}

void DETRPREMI() {
    TRACCIA("DETRPREMI");
    const double premium = arrotonda(num(Q110) - slip.former_Q110);
    if (num(P040) == 0 && num(P025) == 1) {
        join_taxable(premium);
        aggiungi(Q005, -premium);
    }
    tax_state.tax_credit = 0;
    tax_state.AliquotaMarginale = 0;
    if (!credit_is_given() || premium <= 0) {
        return;
    }
    const double credit = arrotonda(marginal_percent_without(premium) * num(F433) / 100);
    aggiungi(Q174, credit);
    tax_state.tax_credit += credit;
}

}  // namespace ModSWCALB
