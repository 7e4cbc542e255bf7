#include "severance/tfr.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/advances.h"
#include "severance/revaluation.h"
#include "severance/yearly_table.h"
#include "slip/slip.h"
#include "tax/income_tax.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

// ---- Who leaves ----

int month_of_leaving() {
    return num(P017) == 0 ? 0 : static_cast<int>(MXLIBRERIA::yyyymm_of(testo(P017)));
}

bool has_left_by_now() {
    return month_of_leaving() != 0 && month_of_leaving() <= period.yyyymm();
}

/// The slip that pays the severance: the ordinary one of the leaving month.
bool pays_severance() {
    return period.ordinary() && month_of_leaving() == period.yyyymm();
}

bool closes_the_year() {
    return period.month() == 12 && period.ordinary() && !ModSWCALB::adjustment_only() &&
           !has_left_by_now();
}

// ---- Accrual ----

/// The wage of the month joins the year's; what lines have moved to a fund already comes off.
void accrue() {
    constexpr std::size_t kMovedToFund = 8;
    const double rule = num(P159);
    if (rule == 0 || rule == 4) {
        aggiungi(P260, -slip.severance_buckets[kMovedToFund]);
    }
    if (severance_in_the_packet()) {
        return;
    }
    aggiungi(Q037, num(P260));
    if (month_of_leaving() == 0 || month_of_leaving() / 100 >= period.year()) {
        TFRZERO50();
    }
}

/// Under T587 what the treasury fund holds (Q896) is no part of what the employer pays. Returns
/// what came off the fund, in euro.
double take_off_treasury_part() {
    if (num(T587) != 1 || num(Q896) == 0) {
        return 0;
    }
    const double fund = num(Q039);
    scrivi(Q896, std::min(num(Q896), fund));
    scrivi(Q039, fund - num(Q896));
    return num(Q896);
}

void sum_up_fund() {
    scrivi(Q041, num(Q037) / slip.severance_divisor);
    scrivi(Q264, num(Q041) - num(Q038));
    scrivi(Q265, advances_of_the_year());
    scrivi(Q055, num(Q264) + num(Q039) + num(Q043) + num(Q262) - num(Q372) + num(Q376));
}

// ---- Revaluation ----

/// Months up to the run's, or to the leaving; a leaving before the 15th does not count its month.
/// Who left in an earlier year is revalued by the indexes of the year before.
RevaluationTerm term_of_slip() {
    constexpr double kDaysOfAMonth = 15;
    RevaluationTerm term{static_cast<int>(period.yyyymm()), num(Q136), true,
                         pays_severance() || closes_the_year()};
    if (has_left_by_now()) {
        const bool month_lost = valore(ritaglia(testo(P017), 1, 2)) < kDaysOfAMonth;
        term.yyyymm = month_of_leaving() - (month_lost ? 1 : 0);
        term.series = term.yyyymm / 100 == period.year();
    }
    return term;
}

/// The part at the treasury fund: its revaluation joins what it held, and so does the tax on it.
void revalue_treasury_part() {
    scrivi(Q695, num(Q693) + num(Q692) - num(Q701));
    scrivi(Q697, num(Q267) * num(Q695) / 100);
    scrivi(Q700, num(F322) * num(Q697) / 100);
    scrivi(Q692, num(Q695) - num(Q693) + num(Q701));
    aggiungi(Q693, num(Q697));
    aggiungi(Q701, num(Q700));
}

// ---- Tax at termination ----

/// Deduction on the payment, for a termination from 31 March 2008 (D.M. 20 March 2008). F411 0 is
/// the deduction of the decree.
double deduction_on_payment() {
    constexpr double kLastDayWithout = 20080330;
    constexpr double kOfTheDecree = 70;
    const std::string leaving = testo(P017);
    const double day = month_of_leaving() * 100.0 + valore(ritaglia(leaving, 1, 2));
    if (day <= kLastDayWithout || num(P754) != 1 || num(P447) == 1) {
        return 0;
    }
    if (num(F411) == 0) {
        write_yearly(F411, kOfTheDecree);
    }
    const double income = num(Q122);
    const double months = num(Q136) + num(Q042);
    if (income <= 7500) {
        return num(F411);
    }
    return income <= 28000 ? months * 20 + 50 : income <= 30000 ? months * 50 : 0;
}

/// Average rate of the severance scale on the reference income, percent.
double rate_of_table(bool alternate) {
    double income = num(Q122);
    std::int16_t flag = alternate ? MXLIBRERIA::kTrue : 0;
    const double tax = ModSWCALB::CalcolaImpostaTFR(income, flag);
    return income == 0 ? 0 : tax / income * 100;
}

/// The lower of this year's scale and that of 2006, which T502 switches on (L. 296/2006, art. 1,
/// c. 9). For a collaborator it is the other one. An empty scale of 2006 is none.
double severance_rate() {
    constexpr double kFirstLimitOf2006 = 21;
    const bool both = num(T502) == 1 && slip.TABIRPAC.at(kFirstLimitOf2006) != 0;
    const double of_the_year = rate_of_table(false);
    const double of_2006 = rate_of_table(both);
    return num(P447) == 1 ? std::max(of_the_year, of_2006) : std::min(of_the_year, of_2006);
}

double taxable_severance() {
    return num(Q264) + num(Q039) + num(Q043) - num(Q236) - (num(Q056) - num(Q365)) + num(Q052) -
           num(Q053) + num(Q054) - num(Q372) + num(Q376);
}

/// What is still due after the tax on advances; too much of it paid is left unused (Q969).
void settle_with_tax_on_advances() {
    scrivi(Q127, std::max(0.0, num(Q126) * num(Q057) / 100));
    scrivi(Q129, std::max(0.0, num(Q127) - num(Q128) - num(Q774)));
    const double balance = num(Q129) - num(Q044) - tax_on_advances_of_the_year();
    scrivi(Q058, std::max(0.0, balance));
    scrivi(Q969, std::max(0.0, -balance));
    if (balance < 0) {
        scrivi(Q129, 0);
    }
}

void work_out_tax() {
    const bool by_program = num(PB53) == 0;
    if (by_program) {
        scrivi(Q126, taxable_severance());
    }
    if (num(P031) == 0) {
        azzera({Q121, Q122, Q057, Q127, Q774, Q129, Q969, Q058});
        return;
    }
    scrivi(Q121, substitute_tax(num(Q270)));
    scrivi(Q122, reference_income(num(Q055), num(Q042) + num(Q136)));
    scrivi(Q774, deduction_on_payment());
    scrivi(Q057, severance_rate());
    if (by_program) {
        settle_with_tax_on_advances();
    }
}

// ---- Payment ----

/// The fund in the gross, what it has borne or already paid in the deductions. Taxes on advances
/// come back only against a tax of at least as much.
void pay() {
    scrivi(Q040, num(Q270));
    scrivi(Q373, substitute_tax(num(Q040)));
    aggiungi(P258, num(Q129));
    aggiungi(P259, num(Q129));
    aggiungi(P241, num(Q041) + num(Q040) + num(Q039) - num(Q236));
    if (num(Q969) == 0 && num(P031) != 0) {
        aggiungi(P241, tax_on_advances_of_the_year() + num(Q044));
    }
    aggiungi(P259, num(Q038) + num(Q373) + num(Q265));
}

// ---- Share of the contribution ----

/// From 2015 (L. 190/2014, c. 118) an employer under relief bears half of the contribution, or
/// none, and so takes half of it, or all, off the accrual. P101 comes before P114.
struct ContributionShare {
    Descriptor field;
    double value;
    double share;
};
constexpr std::array<ContributionShare, 5> kContributionShares{
    {{P101, 1, 1}, {P101, 2, 0.5}, {P101, 3, 0.5}, {P114, 1, 1}, {P114, 2, 0.5}}};

double contribution_share() {
    if (period.yyyymm() < 201501) {
        return 1;
    }
    for (const ContributionShare& row : kContributionShares) {
        if (num(row.field) == row.value) {
            return row.share;
        }
    }
    return 1;
}

/// Wage of the slip as the year to date will take it.
double contribution_wage() {
    return num(P528) > 0 ? unita(num(P250)) : num(P240);
}

double contribution_on(double wage) {
    return wage * accrual_contribution_percent() * contribution_share() / 100;
}

}  // namespace

double accrual_contribution_percent() {
    constexpr double kOfTheLaw = 0.5;  // L. 297/1982, art. 3
    if (num(P083) != 0) {
        return 0;
    }
    const double own = num(P620);
    const double usual = num(F020) != 0 ? num(F020) : kOfTheLaw;
    return own != 0 ? own : usual;
}

double contribution_of_slip() {
    return arrotonda(contribution_on(num(Q001) + contribution_wage())) -
           arrotonda(contribution_on(num(Q001)));
}

double accrual_of_slip(double wage) {
    return arrotonda((num(Q037) + wage) / slip.severance_divisor) -
           arrotonda(num(Q037) / slip.severance_divisor);
}

double reference_income(double fund, double months) {
    constexpr double kYearOfMonths = 12;
    return fund * 144 / std::max(kYearOfMonths, months);
}

void TFRZERO50() {
    TRACCIA("TFRZERO50");
    const double left = arrotonda(num(Q037) / slip.severance_divisor) - num(Q236);
    scrivi(Q038, std::min(contribution_on(num(Q001) + contribution_wage()), std::max(0.0, left)));
}

void ElaboraTFR() {
    TRACCIA("ElaboraTFR");
    accrue();
    const double at_treasury = pays_severance() ? take_off_treasury_part() : 0;
    sum_up_fund();
    const RevaluationTerm term = term_of_slip();
    scrivi(Q270, revaluation_of(num(Q039) + at_treasury - revalued_elsewhere(), term));
    if (num(Q055) != 0 && term.settles) {
        revalue_treasury_part();
    }
    work_out_tax();
    scrivi(Q268, num(Q264) + num(Q039) - num(Q265) - num(Q236) + num(Q270) - num(Q121) - num(Q058));
    if (pays_severance()) {
        pay();
    } else if (!has_left_by_now()) {
        azzera({Q040, Q373});  // what an earlier employment was paid
    }
}

}  // namespace ModSwCalm2
