#include "tax/bonus.h"

#include <algorithm>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/bonus_law.h"
#include "tax/bonus_restitution.h"
#include "tax/deductions.h"
#include "tax/income_tax.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

constexpr double kDaysOfYear = 365;

int month_of_the_run() {
    return static_cast<int>(period.yyyymm());
}

/// The month's taxable amount without what is taxed apart and what severance has joined.
double ordinary_taxable() {
    return num(P256) - num(P244) - num(P245) - num(P922);
}

/// Days of the year in service, those with another employer included.
double days_in_service() {
    return std::min(num(Q659) + num(Q518), kDaysOfYear);
}

// ---- Bonus ----

/// Deductions for employment and family: on the slip that adjusts those of the year, otherwise
/// those of a year of twelve such months.
double deductions_at(double income) {
    if (tax_state.ConguaglioAnnuale) {
        return sum_of_deductions() - num(Q277);
    }
    const bool by_income = num(P583) == 0 || num(P583) == 2;
    return (by_income ? employment_deduction_of_year(income) : 0) +
           (num(Q648) + num(Q651)) * deduction_periods() + deduction_state.family_of_a_year;
}

YearlyBonus bonus_of_the_employee() {
    double income = bonus_income(ordinary_taxable());
    std::int16_t alternate = 0;
    const double gross_tax = CalcolaImposta(income, alternate);
    return yearly_bonus(month_of_the_run(),
                        {income, gross_tax, deductions_at(income), num(F436), num(P348) == 1});
}

/// Without P906 the month pays nothing, and the year-end pays the whole.
void pay_month(const YearlyBonus& bonus) {
    if (num(P906) == 0) {
        return;
    }
    scrivi(P022, std::min(bonus.by_days, bonus.most) / kDaysOfYear * deduction_days());
    aggiungi(Q279, num(P022));
    aggiungi(P241, num(P022));
}

/// What the days of the year bring, without those that carry no bonus (Q991).
double due_of_the_year(const YearlyBonus& bonus) {
    const double days = std::max(0.0, days_in_service() - num(Q991));
    return arrotonda(std::min(days * bonus.by_days / kDaysOfYear, bonus.most));
}

/// With P904 = 1 what stands in Q279 was not to be paid: all of it comes back, and the year is paid
/// here.
void settle_year(const YearlyBonus& bonus) {
    const bool only_at_year_end = num(P904) == 1;
    const double paid = num(Q278) + (only_at_year_end ? 0 : num(Q279));
    const double due = due_of_the_year(bonus);
    const double excess = std::max(0.0, paid - due);
    scrivi(Q280, std::max(0.0, due - paid));
    scrivi(QA15, excess);
    scrivi(Q281, excess + (only_at_year_end ? num(Q279) : 0));
    scrivi(Q279, due - num(Q278));
    aggiungi(P241, num(Q280));
}

/// The bonus of the slip, by the law of its month.
void bonus_of_the_slip() {
    if (num(P084) != 0 || period.additional()) {
        return;
    }
    const YearlyBonus bonus = bonus_of_the_employee();
    if (tax_state.ConguaglioAnnuale) {
        settle_year(bonus);
    } else if (num(P904) == 0) {
        pay_month(bonus);
    }
}

void bonus() {
    if (num(T662) == 0) {
        azzera({P905, Q938, Q939, P022, Q280, Q281});
    }
    if (month_of_the_run() >= 202007) {  // D.L. 3/2020, art. 1
        CALCOLO_BONUS_DL032020();
    } else {
        bonus_of_the_slip();
    }
}

// ---- Integrative sum ----

/// The percentage goes by the income of a whole year; the sum is of the income itself.
void settle_integrative_sum() {
    const double income = bonus_income(0);
    const double days = days_in_service();
    const double of_a_year = days > 0 ? arrotonda(income / days * kDaysOfYear) : income;
    const double due = std::max(0.0, arrotonda(income * integrative_percent(of_a_year) / 100));
    scrivi(QA41, std::max(0.0, due - num(QA34)));
    scrivi(QA42, std::max(0.0, num(QA34) - due));
    scrivi(QA34, due);
    aggiungi(P241, num(QA41));
}

void pay_integrative_sum() {
    const double percent = integrative_percent(bonus_income(ordinary_taxable()));
    scrivi(PC33, num(P256) * percent / 100);
    aggiungi(QA34, num(PC33));
    aggiungi(P241, num(PC33));
}

// ---- Further deduction ----

constexpr double kHalfYearOf2020 = 184;  ///< days from July to December

/// Separate amounts join P256 after the month's tax; the cumulative method comes behind them.
double taxable_before_separate_amounts() {
    const bool joined = num(T184) == 1;
    return joined ? ordinary_taxable() : num(P256) - num(P922);
}

/// Days of the year by which the month's share goes; T402 = 1 counts the leap day.
double day_base() {
    return num(T402) == 1 ? deduction_days_of_year() : kDaysOfYear;
}

/// What was taken above the year's is left to its plan, and so stays in the year's deductions.
void settle_further_deduction(double yearly, double days_of_period) {
    const double days = std::min(num(Q659) + num(Q518), days_of_period);
    const double due = arrotonda(yearly / days_of_period * days);
    const double excess = arrotonda(num(Q276) - due);
    scrivi(QA10, excess >= kLeastRestitution ? excess : 0);
    scrivi(Q276, due);
    scrivi(Q277, due + num(QA10));
}

void take_further_deduction() {
    if (num(P084) != 0) {
        return;
    }
    const double income = bonus_income(taxable_before_separate_amounts());
    const double yearly = yearly_further_deduction(month_of_the_run(), income);
    const bool half_year = period.year() == 2020;
    if (tax_state.ConguaglioAnnuale) {
        settle_further_deduction(yearly, half_year ? kHalfYearOf2020 : kDaysOfYear);
        return;
    }
    scrivi(Q277, yearly / (half_year ? kHalfYearOf2020 : day_base()) * deduction_days());
    aggiungi(Q276, num(Q277));
}

/// The first ordinary slip from July 2020 on, in July or behind months without one (Q171).
bool another_sum_begins() {
    constexpr int kJuly = 7;
    const bool first = period.month() == kJuly || num(Q171) < kJuly;
    return period.year() == 2020 && period.month() >= kJuly && first && period.ordinary();
}

}  // namespace

double bonus_income(double taxable_of_the_month) {
    if (tax_state.ConguaglioAnnuale) {
        return arrotonda(num(Q013) + num(Q514) + num(Q669) + num(Q898) + num(Q778) + num(Q953) -
                         num(Q956));
    }
    const double payments = num(P090) == 0 ? 12 : num(P090);
    return arrotonda(taxable_of_the_month * payments + num(Q669) + num(Q778) + num(Q953));
}

void bonus_steps() {
    const bool before_2014 =
        period.yyyymm() < 201405 && MXLIBRERIA::yyyymm_of(testo(P017)) < 201405;
    if (!adjustment_only() && !before_2014) {
        bonus();
        if (month_of_the_run() >= 202501) {  // L. 207/2024, art. 1, c. 4
            CALCOLA_SOMMA_INTEGRATIVA();
        }
    }
    take_back();
}

void CALCOLO_BONUS_DL032020() {
    TRACCIA("CALCOLO_BONUS_DL032020");
    if (another_sum_begins()) {
        scrivi(Q279, 0);  // the credit of before stays what it was
    }
    bonus_of_the_slip();
}

void CALCOLA_ULT_DET() {
    TRACCIA("CALCOLA_ULT_DET");
    if (period.year() > 2021) {
        azzera({QA10, QA11});
        return;
    }
    take_further_deduction();
}

void CALCOLA_ULT_DET_2025() {
    TRACCIA("CALCOLA_ULT_DET_2025");
    if (period.year() >= 2025) {  // L. 207/2024, art. 1, c. 6
        take_further_deduction();
    }
}

void CALCOLA_SOMMA_INTEGRATIVA() {
    TRACCIA("CALCOLA_SOMMA_INTEGRATIVA");
    if (num(PC32) != 0) {
        return;
    }
    if (tax_state.ConguaglioAnnuale) {
        settle_integrative_sum();
    } else {
        pay_integrative_sum();
    }
}

void book_further_deduction_on_plan() {
    const double excess = num(Q277) - num(Q276);
    if (excess > 0) {
        aggiungi(Q014, excess);
    }
}

}  // namespace ModSWCALB
