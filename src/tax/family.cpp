#include "tax/family.h"

#include <algorithm>

#include "context/period.h"
#include "context/utilities.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/deductions.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;

namespace {

int month_of(const Descriptor& date) {
    return static_cast<int>(MXLIBRERIA::yyyymm_of(testo(date)));
}

Dependant kind_of_first() {
    if (num(P404) == 1) {
        return Dependant::spouse;
    }
    return num(P588) == 1 ? Dependant::other : Dependant::child;
}

bool is_child(Dependant kind) {
    return kind == Dependant::child || kind == Dependant::disabled_child;
}

}  // namespace

MonthSpan employment_months() {
    const int year = MXLIBRERIA::period.year();
    const int hired = month_of(num(P014) != 0 ? P014 : P013);
    const int left = num(P017) != 0 ? month_of(P017) : 0;
    MonthSpan span{1, MXLIBRERIA::period.month()};
    if (hired / 100 == year) {
        span.first = hired % 100;
    }
    if (left != 0 && left / 100 < year) {
        return {};
    }
    if (left / 100 == year) {
        span.last = std::min(span.last, left % 100);
    }
    return span;
}

int dependants_counted() {
    return static_cast<int>(num(P035) - num(P595));
}

Dependant kind_in_slot(std::size_t slot) {
    const std::string letter = rifilato(kDependantSlots[slot].kind);
    if (letter.empty()) {
        return slot == 0 ? kind_of_first() : Dependant::child;
    }
    switch (letter[0]) {
        case 'C':
            return Dependant::spouse;
        case 'D':
            return Dependant::disabled_child;
        case 'A':
            return Dependant::other;
        default:
            return Dependant::child;
    }
}

bool child_in_slot(std::size_t slot) {
    return is_child(kind_in_slot(slot));
}

int birth_in_slot(std::size_t slot) {
    return month_of(kDependantSlots[slot].birth_date);
}

std::vector<FamilyMember> family_members() {
    std::vector<FamilyMember> members;
    const auto places =
        static_cast<std::size_t>(std::clamp(dependants_counted(), 0, static_cast<int>(kSlotCount)));
    int children = 0;
    for (std::size_t slot = 0; slot < places; ++slot) {
        const double share = num(kDependantSlots[slot].share);
        if (share <= 0) {
            continue;
        }
        const Dependant kind = kind_in_slot(slot);
        members.push_back(
            {slot, kind, share, birth_in_slot(slot), is_child(kind) ? ++children : 0});
    }
    return members;
}

bool counts_in_the_year(std::size_t slot) {
    const Dependant kind = kind_in_slot(slot);
    const int january = MXLIBRERIA::period.year() * 100 + 1;
    if (!is_child(kind)) {
        return dependant_law(january).in_force;
    }
    for (int month = january; month < january + 12; ++month) {
        if (child_amount(month, birth_in_slot(slot), kind == Dependant::disabled_child, false) >
            0) {
            return true;
        }
    }
    return false;
}

MonthSpan months_granted(std::size_t slot) {
    const MonthSpan employment = employment_months();
    const int months = static_cast<int>(num(kDependantSlots[slot].months));
    if (months == 0) {
        return employment;
    }
    const int last = std::max(employment.last, months);
    return {last - months + 1, last};
}

}  // namespace ModSWCALB
