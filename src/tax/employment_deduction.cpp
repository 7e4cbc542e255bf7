// Employment deduction by income, art. 13 TUIR in its form since 2022.

#include <algorithm>
#include <array>

#include "context/trace.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/deductions.h"
#include "tax/income_ranges.h"
#include "tax/income_tax.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;

namespace {

// Workers, art. 13, c. 1 and 1.1 TUIR (L. 234/2021). An income that no range takes keeps the first
// amount: 15000.01 does.
constexpr double kWorkerFirstAmount = 1880;
constexpr std::array kWorkerRanges{
    IncomeRange{15000.02, 24999.99, 1910, 1190, 28000, 13000, 0, 3100},
    IncomeRange{25000, 28000, 1910, 1190, 28000, 13000, 65, 3100},
    IncomeRange{28000.01, 35000, 0, 1910, 50000, 22000, 65, 3100},
    IncomeRange{35000.01, 50000, 0, 1910, 50000, 22000, 0, 3100},
    IncomeRange{50000.01, kUnlimited, 0, 0, 0, 1, 0, 0},
};

// Pensioners, art. 13, c. 3 TUIR (L. 234/2021). Above 50000 there is nothing.
constexpr std::array kPensionerRanges{
    IncomeRange{-kUnlimited, 8500, 1955, 0, 0, 1, 0, kUnlimited},
    IncomeRange{8500.01, 28000, 700, 1255, 28000, 19500, 0, kUnlimited},
    IncomeRange{28000.01, 50000, 0, 700, 50000, 22000, 0, kUnlimited},
};

bool other_income() {
    return num(P583) == 2;
}
bool worker() {
    return !other_income() && num(P348) == 0;
}
bool pensioner() {
    return !other_income() && num(P348) == 1;
}

/// Customer whose pensioners get 50 more, in the yearly amount.
double pensioner_amount(double income) {
    const double amount = amount_by_income(kPensionerRanges, income, 0);
    return amount > 0 && ModSWCALM::company_is("90000000088") ? amount + 50 : amount;
}

/// A day's share for each day of the month; without days one instalment of the year.
void take_month_share(double yearly) {
    const double days = deduction_days();
    const double share =
        days != 0 ? yearly / deduction_days_of_year() * days : dividi(yearly, deduction_periods());
    scrivi(Q657, share);
    aggiungi(Q656, num(Q657));
}

/// Least deduction of the lowest incomes, however short the work: 690, and 1380 for a fixed term
/// (art. 13, c. 1, lett. a TUIR); 713 for pensioners (c. 3, lett. a). 0 where there is none.
double least_amount(double income) {
    struct Minimum {
        char contract;  ///< P412
        double amount;
    };
    constexpr std::array kMinima{Minimum{'I', 690},  Minimum{'1', 690},  Minimum{'D', 1380},
                                 Minimum{'S', 1380}, Minimum{'T', 1380}, Minimum{'G', 1380},
                                 Minimum{'2', 1380}};
    if (pensioner()) {
        return income <= 8500 ? 713 : 0;
    }
    const std::string contract = rifilato(P412);
    if (worker() && income <= 15000 && contract.size() == 1) {
        for (const Minimum& minimum : kMinima) {
            if (minimum.contract == contract[0]) {
                return minimum.amount;
            }
        }
    }
    return 0;
}

/// The year's deduction for the days worked, the days with another employer (Q518) included.
void settle_year(double yearly, double income) {
    constexpr double kDaysOfYear = 365;
    if (num(Q659) > kDaysOfYear) {
        scrivi(Q659, kDaysOfYear);
    }
    const double days = std::min(num(Q659) + num(Q518), kDaysOfYear);
    const double due = std::max(yearly * days / kDaysOfYear, least_amount(income));
    scrivi(Q656, due);
    scrivi(Q657, due);
}

}  // namespace

double employment_deduction_of_year(double income) {
    if (other_income()) {
        return deduction_quotient(55000 - income, 50200) * 1104;  // art. 13, c. 5 TUIR
    }
    if (worker()) {
        return amount_by_income(kWorkerRanges, income, kWorkerFirstAmount);
    }
    return pensioner() ? pensioner_amount(income) : 0;
}

void CALCOLADETRAZIONIREDDITO_2022() {
    MXLIBRERIA::TRACCIA("CALCOLADETRAZIONIREDDITO_2022");
    const double income = deduction_income();
    const double yearly = employment_deduction_of_year(income);
    if (tax_state.ConguaglioAnnuale) {
        settle_year(yearly, income);
    } else {
        take_month_share(yearly);
    }
}

}  // namespace ModSWCALB
