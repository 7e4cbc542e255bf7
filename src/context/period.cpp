#include "context/period.h"

#include "records/numbers.h"

namespace MXLIBRERIA {

using MXREPOSITORY::ritaglia;
using MXREPOSITORY::valore;

Period period;

namespace {
int whole(std::string_view digits) {
    return static_cast<int>(valore(digits));
}
}  // namespace

void Period::set(std::string_view record) {
    PERIODO = record;
    day_ = whole(ritaglia(PERIODO, 1, 2));
    month_ = whole(ritaglia(PERIODO, 3, 2));
    year_ = whole(ritaglia(PERIODO, 5, 4));
    MMAGGIUNTIVA = ritaglia(PERIODO, 9, 1) == "0" ? 1 : 0;
}

std::string Period::date() const {
    return std::string(ritaglia(PERIODO, 1, 8));
}

std::string Period::month_text() const {
    return std::string(ritaglia(PERIODO, 3, 2));
}

std::string Period::year_text() const {
    return std::string(ritaglia(PERIODO, 5, 4));
}

std::string Period::short_year() const {
    return std::string(ritaglia(PERIODO, 7, 2));
}

std::string Period::month_year() const {
    return std::string(ritaglia(PERIODO, 3, 6));
}

}  // namespace MXLIBRERIA
