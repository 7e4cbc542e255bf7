#include "nzutil/bonus_due.h"

#include <algorithm>

#include "nzutil/slip_law.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

int yyyymm(const CalculatedSlip& slip) {
    return slip.year() * 100 + slip.month();
}

double payments(const CalculatedSlip& slip) {
    return slip.now(P090) == 0 ? 12 : slip.now(P090);
}

double income_of_the_year(const CalculatedSlip& slip) {
    return arrotonda(slip.sum({Q013, Q514, Q669, Q898, Q778, Q953}) - slip.now(Q956));
}

double income_by_the_month(const CalculatedSlip& slip, double taxable) {
    return arrotonda(taxable * payments(slip) + slip.sum({Q669, Q778, Q953}));
}

double ordinary_taxable(const CalculatedSlip& slip) {
    return slip.now(P256) - slip.sum({P244, P245, P922});
}

double days_of_the_month(const CalculatedSlip& slip) {
    return slip.collaborator() ? slip.now(P449) : slip.now(P215);
}

double days_of_the_year(const CalculatedSlip& slip) {
    return std::min(365.0, slip.now(Q659) + slip.now(Q518));
}

// ---- Bonus ----

/// The credit of 80 euro a month, D.L. 66/2014: only where tax is left after the deduction.
double credit(const CalculatedSlip& slip, double income) {
    if (income <= 15000) {
        const double deduction = slip.now(P348) == 1 ? 1725 : 1880;
        if (tax_by_scale(slip, income) <= deduction) {
            return 0;
        }
    }
    const double limit = yyyymm(slip) < 201801 ? 24000 : 24600;
    const double part = std::clamp((limit + 2000 - income) / 2000, 0.0, 1.0);
    return slip.yearly(F436) * part;
}

/// What the tax of middle incomes leaves of their deductions, D.L. 3/2020 in the form of 2022.
double untaken_deductions(const CalculatedSlip& slip, double income, double deductions) {
    const double untaken = deductions - tax_by_scale(slip, income);
    return untaken > 1200 ? 0 : std::max(0.0, untaken);
}

struct Bonus {
    double whole = 0;  ///< of a year of 365 days
    double cap = 0;
};

Bonus bonus_of(const CalculatedSlip& slip, double income, double deductions) {
    if (yyyymm(slip) < 202007) {
        const double amount = credit(slip, income);
        return {amount, amount};
    }
    if (income <= 8174 || income > 28000) {
        return {};
    }
    const double whole = slip.yearly(F436);
    if (yyyymm(slip) < 202201 || income <= 15000) {
        return {whole, whole};
    }
    return {whole, std::min(whole, untaken_deductions(slip, income, deductions))};
}

/// Employment and family, without the further deduction.
double deductions_of_the_slip(const CalculatedSlip& slip) {
    return slip.sum({Q657, Q648, Q649, Q650, Q652, Q665, Q651, Q653, Q668, Q741});
}

// ---- Further deduction ----

double further_deduction(const CalculatedSlip& slip, double income) {
    if (slip.now(P084) != 0) {
        return 0;
    }
    if (slip.year() >= 2025) {
        return income <= 20000 ? 0 : 1000 * std::clamp((40000 - income) / 8000, 0.0, 1.0);
    }
    if (yyyymm(slip) < 202007 || yyyymm(slip) > 202112 || income <= 28000 || income > 40000) {
        return 0;
    }
    const double half_years = slip.year() == 2020 ? 1 : 2;
    return income <= 35000 ? half_years * (480 + 120 * (35000 - income) / 7000)
                           : half_years * 480 * (40000 - income) / 5000;
}

double days_of_the_deduction(const CalculatedSlip& slip) {
    return slip.year() == 2020 ? 184 : 365;
}

// ---- Integrative sum ----

double integrative_rate(double income) {
    return income <= 8500 ? 0.071 : income <= 15000 ? 0.053 : income <= 20000 ? 0.048 : 0;
}

}  // namespace

double bonus_due(const CalculatedSlip& slip) {
    const Bonus bonus = bonus_of(slip, income_of_the_year(slip), deductions_of_the_slip(slip));
    const double days = std::max(0.0, days_of_the_year(slip) - slip.now(Q991));
    return arrotonda(std::min(bonus.whole * days / 365, bonus.cap));
}

std::optional<double> bonus_of_the_month(const CalculatedSlip& slip) {
    if (slip.now(P906) == 0 || slip.now(P904) != 0) {
        return 0;
    }
    if (slip.sum({Q648, Q649, Q650, Q651, Q652, Q653, Q665, Q668, Q741}) != 0) {
        return std::nullopt;
    }
    const double income = income_by_the_month(slip, ordinary_taxable(slip));
    const Bonus bonus = bonus_of(slip, income, deduction_at_income(slip, income));
    return arrotonda(std::min(bonus.whole, bonus.cap) / 365 * days_of_the_month(slip));
}

double further_deduction_due(const CalculatedSlip& slip) {
    const double base = days_of_the_deduction(slip);
    const double days = std::min(base, slip.now(Q659) + slip.now(Q518));
    return arrotonda(further_deduction(slip, income_of_the_year(slip)) * days / base);
}

double further_deduction_of_the_month(const CalculatedSlip& slip) {
    const double income = income_by_the_month(slip, ordinary_taxable(slip));
    return arrotonda(further_deduction(slip, income) / days_of_the_deduction(slip) *
                     days_of_the_month(slip));
}

double integrative_sum_due(const CalculatedSlip& slip) {
    const double income = income_of_the_year(slip);
    const double days = days_of_the_year(slip);
    const double whole_year = days > 0 ? arrotonda(income * 365 / days) : income;
    return std::max(0.0, arrotonda(income * integrative_rate(whole_year)));
}

double integrative_sum_of_the_month(const CalculatedSlip& slip) {
    const double income = income_by_the_month(slip, ordinary_taxable(slip));
    return arrotonda(slip.now(P256) * integrative_rate(income));
}

}  // namespace nzutil
