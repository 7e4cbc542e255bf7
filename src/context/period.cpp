#include "context/period.h"

#include "records/numbers.h"

namespace MXLIBRERIA {

using MXREPOSITORY::ritaglia;
using MXREPOSITORY::valore;

Period period;

namespace {
int whole(const std::string& digits) {
    return static_cast<int>(valore(digits));
}
}  // namespace

void Period::set(const std::string& record) {
    PERIODO = record;
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

int Period::day() const {
    return whole(std::string(ritaglia(PERIODO, 1, 2)));
}

int Period::month() const {
    return whole(month_text());
}

int Period::year() const {
    return whole(year_text());
}

double Period::yyyymm() const {
    return valore(year_text()) * 100 + valore(month_text());
}

}  // namespace MXLIBRERIA
