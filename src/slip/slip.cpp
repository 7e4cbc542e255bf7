#include "slip/slip.h"

#include <array>

#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

RunTables run_tables;
CompanyState company;
Slip slip;
std::int16_t ABORTODIP = 0;

namespace {

/// The company's divisors of the monthly pay, one for each value of the employee's P047 and P048.
constexpr std::array kHoursDivisors{T063, T064, T065, T066, T368, T623, T657, T658, T659, T660};
constexpr std::array kDaysDivisors{T059, T060, T061, T062, T367, T622};

/// Company value that an employee's selector picks; 0 where the company keeps none for it.
template <std::size_t size>
double picked(const std::array<Descriptor, size>& values, double selector) {
    if (selector < 0 || selector >= static_cast<double>(size)) {
        return 0;
    }
    return num(values[static_cast<std::size_t>(selector)]);
}

std::size_t checked_cell(double index) {
    constexpr double kLastCell = 40;
    if (index < 0 || index > kLastCell) {
        throw platform::Failure(platform::kSubscriptOutOfRange);
    }
    return static_cast<std::size_t>(intero16(index));
}

}  // namespace

double BracketTable::at(double index) const {
    return cells.at(checked_cell(index));
}

void BracketTable::set(double index, double value) {
    cells.at(checked_cell(index)) = value;
}

bool company_is(std::string_view tax_code) {
    return rifilato(T013) == tax_code;
}

double hours_divisor() {
    const double own_divisor = num(P891);
    return own_divisor != 0 ? own_divisor : picked(kHoursDivisors, num(P047));
}

double days_divisor() {
    return picked(kDaysDivisors, num(P048));
}

int month_length(int month) {
    if (month < 0 || month > 12) {
        throw platform::Failure(platform::kSubscriptOutOfRange);
    }
    const std::size_t position = static_cast<std::size_t>(month) * 2 + 1;
    return static_cast<int>(valore(ritaglia(slip.GIORNIMESE, position, 2)));
}

}  // namespace ModSWCALM
