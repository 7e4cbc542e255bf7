#include "tax/dependant_law.h"

#include <array>

#include "platform/failure.h"
#include "tax/deductions.h"

namespace ModSWCALB {

namespace {

constexpr int kAnyAge = 999 * 12;

constexpr std::array kLaws{
    // Up to 2006: a family lowers the income (L. 311/2004) or the tax in a form without quotient.
    DependantLaw{0, 200612, false, 0, 0, 0, 0, 0, kAnyAge},
    // From 1 January 2007: L. 296/2006, art. 1, c. 6.
    DependantLaw{200701, 201212, true, 800, 900, 220, 200, 0, kAnyAge},
    // From 1 January 2013: L. 228/2012, art. 1, c. 483.
    DependantLaw{201301, 202202, true, 950, 1220, 400, 200, 0, kAnyAge},
    // From 1 March 2022: children from 21 only, all others have the universal allowance
    // (D.Lgs. 230/2021, art. 10, c. 4).
    DependantLaw{202203, 202412, true, 950, 950, 0, 0, 21 * 12, kAnyAge},
    // From 1 January 2025: children up to 30, without limit if disabled (L. 207/2024, art. 1, c.
    // 11).
    DependantLaw{202501, 999912, true, 950, 950, 0, 0, 21 * 12, 30 * 12},
};

constexpr double kOtherDependant = 750;
constexpr int kThreeYears = 3 * 12;

/// Small additions to the spouse's 690 (art. 12, c. 1, lett. b TUIR), for over < R <= up_to.
double spouse_increase(double income) {
    struct Increase {
        double over;
        double up_to;
        double amount;
    };
    constexpr std::array kIncreases{Increase{29000, 29200, 10}, Increase{29200, 34700, 20},
                                    Increase{34700, 35000, 30}, Increase{35000, 35100, 20},
                                    Increase{35100, 35200, 10}};
    for (const Increase& row : kIncreases) {
        if (income > row.over && income <= row.up_to) {
            return row.amount;
        }
    }
    return 0;
}

}  // namespace

std::span<const DependantLaw> dependant_laws() {
    return kLaws;
}

const DependantLaw& dependant_law(int yyyymm) {
    for (const DependantLaw& law : kLaws) {
        if (yyyymm >= law.from && yyyymm <= law.to) {
            return law;
        }
    }
    throw platform::Failure(platform::kSubscriptOutOfRange);
}

int age_in_months(int birth, int month) {
    return (month / 100 - birth / 100) * 12 + month % 100 - birth % 100;
}

bool under_three(int month, int birth) {
    return birth != 0 && age_in_months(birth, month) <= kThreeYears;
}

double child_amount(int month, int birth, bool disabled, bool many_children) {
    const DependantLaw& law = dependant_law(month);
    const int age = birth == 0 ? kThreeYears + 1 : age_in_months(birth, month);
    const bool too_old = age > law.oldest && !disabled;
    if (!law.in_force || age < law.youngest || age < 0 || too_old) {
        return 0;
    }
    return (age <= kThreeYears ? law.child_under_three : law.child) +
           (disabled ? law.disabled_increase : 0) + (many_children ? law.many_children : 0);
}

double spouse_amount(int month, double income) {
    if (!dependant_law(month).in_force || income <= 0) {
        return 0;
    }
    if (income == 15000) {
        return 690;  // a quotient of 1 (art. 12, c. 4 TUIR)
    }
    if (income < 15000) {
        return 800 - 110 * deduction_quotient(income, 15000);
    }
    if (income <= 40000) {
        return 690 + spouse_increase(income);
    }
    return 690 * deduction_quotient(80000 - income, 40000);
}

double other_amount(int month) {
    return dependant_law(month).in_force ? kOtherDependant : 0;
}

}  // namespace ModSWCALB
