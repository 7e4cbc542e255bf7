// Deductions for spouse, children and other dependants (art. 12 TUIR), and the large-family sum.

#include <algorithm>
#include <array>

#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/deductions.h"
#include "tax/family.h"
#include "tax/income_tax.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;

namespace {

/// The deductions that are kept apart, in the order of kClassFields.
enum class Class : std::size_t { spouse, child, under_three, disabled, over_three, other };
constexpr std::size_t kClassCount = 6;
using Amounts = std::array<double, kClassCount>;

/// Quotient of income that lowers a class on the slip; the spouse's is in the amount already.
enum class Quotient { none, children, others };

struct ClassFields {
    Descriptor to_date;  ///< before the quotient
    Descriptor on_the_slip;
    Quotient quotient;
};
constexpr std::array<ClassFields, kClassCount> kClassFields{{
    {Q642, Q649, Quotient::none},
    {Q643, Q650, Quotient::children},
    {Q645, Q652, Quotient::children},
    {Q667, Q668, Quotient::children},
    {Q664, Q665, Quotient::children},
    {Q646, Q653, Quotient::others},
}};

constexpr int kChildrenOfTheOrdinaryAmount = 3;  ///< more make a large family
constexpr double kChildrenIncome = 95000;
constexpr double kFurtherChildIncome = 15000;
constexpr double kOthersIncome = 80000;

double& at(Amounts& amounts, Class which) {
    return amounts[static_cast<std::size_t>(which)];
}

bool takes_the_spouses_place(const FamilyMember& member) {
    return deduction_state.household.only_first && member.slot == 0;
}

bool is_child(const FamilyMember& member) {
    return member.rank > 0;
}

/// Family and income of the employee, as all amounts need them.
struct Family {
    std::vector<FamilyMember> members = family_members();
    double income = deduction_income();
    bool many_children =
        std::count_if(members.begin(), members.end(), is_child) > kChildrenOfTheOrdinaryAmount;
};

double amount_in_month(const Family& family, const FamilyMember& member, int yyyymm) {
    if (member.kind == Dependant::spouse || takes_the_spouses_place(member)) {
        return spouse_amount(yyyymm, family.income);
    }
    if (!is_child(member)) {
        return other_amount(yyyymm);
    }
    return deduction_state.household.only_first
               ? 0
               : child_amount(yyyymm, member.birth, member.kind == Dependant::disabled_child,
                              family.many_children);
}

Class class_in_month(const FamilyMember& member, int yyyymm) {
    if (member.kind == Dependant::spouse || takes_the_spouses_place(member)) {
        return Class::spouse;
    }
    if (!is_child(member)) {
        return Class::other;
    }
    if (member.rank > kChildrenOfTheOrdinaryAmount) {
        return Class::over_three;
    }
    if (member.kind == Dependant::disabled_child) {
        return Class::disabled;
    }
    return under_three(yyyymm, member.birth) ? Class::under_three : Class::child;
}

// ---- Phases of DetrFamiliari ----

void cap_months() {
    for (const DependantSlot& slot : kDependantSlots) {
        if (num(slot.months) > 12) {
            scrivi(slot.months, 12);
        }
    }
}

/// Sum for families of four and more children (art. 12, c. 1-bis TUIR), until the data end it.
void large_family() {
    const double household = num(P747);
    const bool due = (household == 3 || household == 4) && dependants_counted() > 3;
    if (!due) {
        return;
    }
    aggiungi(Q740, month_counts_for_deductions() ? 1 : 0);
    if (tax_state.ConguaglioAnnuale) {
        scrivi(Q741, num(F410) / 12 * num(Q740) - num(Q742));
        aggiungi(Q742, num(Q741) - num(Q773));
        // The year's tax takes the whole sum but for what was paid out on the slips.
        scrivi(Q741, num(Q742));
    } else {
        scrivi(Q741, unita(num(F410) / 12 * 100) / 100);
        aggiungi(Q742, num(Q741));
    }
}

/// The month's share of each dependant; returns what stands on the slip before the quotients.
Amounts take_month(const Family& family) {
    Amounts on_the_slip{};
    if (!month_counts_for_deductions()) {
        return on_the_slip;
    }
    const int month = static_cast<int>(MXLIBRERIA::period.yyyymm());
    for (const FamilyMember& member : family.members) {
        const double amount = amount_in_month(family, member, month);
        if (amount > 0) {
            const Class which = class_in_month(member, month);
            const double share = arrotonda(amount / deduction_periods() * member.share / 100);
            aggiungi(kClassFields[static_cast<std::size_t>(which)].to_date, share);
            at(on_the_slip, which) += share;
            aggiungi(Q655, 1);
            scrivi(kDependantSlots[member.slot].last_used, 1);
        }
    }
    return on_the_slip;
}

/// A dependant's shares of the year by class: a twelfth for each month granted, by that month's
/// law.
Amounts shares_of_the_year(const Family& family, const FamilyMember& member) {
    const MonthSpan span = months_granted(member.slot);
    const int year = MXLIBRERIA::period.year();
    Amounts sums{};
    for (int month = span.first; month <= span.last; ++month) {
        const int yyyymm = year * 100 + month;
        const double amount = amount_in_month(family, member, yyyymm);
        if (amount > 0) {
            at(sums, class_in_month(member, yyyymm)) += amount;
            aggiungi(Q655, 1);
            scrivi(kDependantSlots[member.slot].last_used, 1);
        }
    }
    for (double& sum : sums) {
        sum = arrotonda(sum / 12 * member.share / 100);
    }
    return sums;
}

/// The year's deductions, built anew in the fields to date.
Amounts take_year(const Family& family) {
    Amounts year{};
    scrivi(Q655, 0);
    for (const FamilyMember& member : family.members) {
        const Amounts shares = shares_of_the_year(family, member);
        for (std::size_t i = 0; i < kClassCount; ++i) {
            year[i] += shares[i];
        }
    }
    for (std::size_t i = 0; i < kClassCount; ++i) {
        scrivi(kClassFields[i].to_date, year[i]);
    }
    return year;
}

/// Dependants that raise the income limit of the children's quotient by one step each (P597): those
/// counted, without spouse, others and children for whom the law gives nothing, less the first.
int further_children(const Family& family) {
    const auto no_child = [](const FamilyMember& member) {
        return !is_child(member) || !counts_in_the_year(member.slot);
    };
    const auto others = std::count_if(family.members.begin(), family.members.end(), no_child);
    return std::max(dependants_counted() - 1 - static_cast<int>(others), 0);
}

void quotients(const Family& family) {
    const double further = further_children(family);
    const double base = kChildrenIncome + kFurtherChildIncome * further;
    scrivi(P597, further);
    scrivi(Q661, base);
    scrivi(Q662, deduction_quotient(base - family.income, base));
    scrivi(Q663, deduction_quotient(kOthersIncome - family.income, kOthersIncome));
}

/// What is left of a class by income. A quotient of 0 or 1 gives nothing (art. 12, c. 4 TUIR).
double share_by_income(const ClassFields& fields) {
    if (fields.quotient == Quotient::none) {
        return 1;
    }
    const double quotient = num(fields.quotient == Quotient::children ? Q662 : Q663);
    return quotient > 0 && quotient < 1 ? quotient : 0;
}

void apply_quotients(const Amounts& amounts) {
    for (std::size_t i = 0; i < kClassCount; ++i) {
        scrivi(kClassFields[i].on_the_slip, amounts[i] * share_by_income(kClassFields[i]));
    }
}

/// What twelve months like this one would give; the bonus of the month is measured on it.
double deductions_of_a_year_like_this_month(const Family& family) {
    const int month = static_cast<int>(MXLIBRERIA::period.yyyymm());
    double sum = num(Q741) * 12;
    for (const FamilyMember& member : family.members) {
        const double amount = amount_in_month(family, member, month);
        if (amount > 0) {
            const auto which = static_cast<std::size_t>(class_in_month(member, month));
            sum += arrotonda(amount * member.share / 100) * share_by_income(kClassFields[which]);
        }
    }
    return sum;
}

double sum_of(std::initializer_list<Descriptor> fields) {
    double sum = 0;
    for (const Descriptor& field : fields) {
        sum += num(field);
    }
    return sum;
}

void total_on_the_slip() {
    scrivi(Q654, sum_of({Q649, Q650, Q652, Q665, Q668, Q741}));
}

void totals() {
    scrivi(Q647, sum_of({Q642, Q643, Q645, Q664, Q667, Q742}));
    total_on_the_slip();
}

}  // namespace

void DetrFamiliari() {
    MXLIBRERIA::TRACCIA("DetrFamiliari");
    const bool codes_required = num(P586) == 0 && MXLIBRERIA::period.year() >= 2008;
    if (codes_required && !ControllaCodFiscFamiliari()) {
        return;
    }
    VerificaFamiliari();
    cap_months();
    large_family();
    const Family family;
    const Amounts amounts = tax_state.ConguaglioAnnuale ? take_year(family) : take_month(family);
    quotients(family);
    apply_quotients(amounts);
    deduction_state.family_of_a_year = deductions_of_a_year_like_this_month(family);
    totals();
}

void refund_unused_large_family(double& net_tax) {
    const double large_family_sum = num(Q741);
    if (net_tax >= 0 || large_family_sum <= 0) {
        return;
    }
    scrivi(Q772, std::min(-net_tax, large_family_sum));
    const double paid = num(Q772);
    if (tax_state.ConguaglioAnnuale) {
        aggiungi(Q742, -paid);
        scrivi(Q741, num(Q742));
        aggiungi(Q666, -paid);
    } else {
        aggiungi(Q742, -large_family_sum);
        aggiungi(Q666, -large_family_sum);
        scrivi(Q741, large_family_sum - paid);
    }
    aggiungi(Q773, paid);
    total_on_the_slip();
    aggiungi(P241, paid);
    net_tax += paid;
}

}  // namespace ModSWCALB
