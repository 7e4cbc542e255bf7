#include "nzutil/year_standing.h"

#include "nzutil/year_sums.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/surtaxes.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

/// December's ordinary slip, as the last one: the additional one alone leaves Q171 at November.
bool december_calculated() {
    constexpr double kDecember = 12;
    return num(Q171) == kDecember && valore(ritaglia(testo(Q179), 3, 2)) == kDecember;
}

}  // namespace

int year_of(const Descriptor& date) {
    return static_cast<int>(valore(ritaglia(testo(date), 5, 4)));
}

bool left_before(int year) {
    return ModSWCALB::leaves() && year_of(P017) < year;
}

Standing standing_in_area(int year) {
    if (valore(testo(P001)) == 0) {
        return Standing::no_record;
    }
    const int last_slip = year_of(Q179);
    if (last_slip == 0) {
        return Standing::no_slip;
    }
    if (last_slip >= year) {
        return Standing::begun;
    }
    if (!has_sums()) {
        return Standing::opened;
    }
    if (left_before(year)) {
        return Standing::to_open;
    }
    if (last_slip < year - 1) {
        return Standing::earlier_year;
    }
    return december_calculated() ? Standing::to_open : Standing::december_missing;
}

Standing standing_of(const std::string& employee, int year) {
    area(Area::DIPX) = employee;
    const Standing standing = standing_in_area(year);
    area(Area::DIPX).clear();
    return standing;
}

}  // namespace nzutil
