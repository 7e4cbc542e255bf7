// The pay elements of a grade in the employee's record, and their conversion to the hour.

#include "slip/contract_parts.h"

#include <string>
#include <utility>

#include "files/file_numbers.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/numbers.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

// ---- Conversion of monthly amounts to the hour ----

/// Hours divisor of the company P175 that the pay comes from; 0 if there is no such company.
double source_company_divisor() {
    const bool opened_here = !file_is_open(kCompanies);
    if (opened_here) {
        FAIOPEN(kCompanies);
    }
    std::string loaded_buffer = record_buffer(kCompanies);
    const bool found = LEGGIREC(kCompanies, copy_num(P175)) != 1;
    std::string source = std::exchange(record_buffer(kCompanies), std::move(loaded_buffer));
    double divisor = 0;
    if (found && LEGGICAMPONUM(T261, 0, source) != 99) {
        std::swap(area(Area::DITX), source);
        divisor = hours_divisor();
        std::swap(area(Area::DITX), source);
    }
    if (opened_here) {
        CHIUDI(kCompanies);
    }
    return divisor;
}

/// The amount, brought to the hour where P334 and P175 ask for it.
double converted(double amount) {
    const double factor = copy_num(P334);
    if (factor == 0 || amount == 0 || copy_num(P175) == 0) {
        return amount;
    }
    const double divisor = source_company_divisor();
    if (divisor == 0) {
        return amount;
    }
    copy_write(P050, 0);
    return arrotonda(amount * factor / divisor, 5);
}

// ---- The scale ----

struct ScaleElement {
    Descriptor contract;
    Descriptor employee;
    bool converts;
};
constexpr std::array<ScaleElement, 8> kScale{{
    {G022, P058, true},
    {G023, P069, false},
    {G024, P062, true},
    {G025, P063, true},
    {G026, P064, true},
    {G027, P065, true},
    {G028, P066, true},
    {G029, P067, true},
}};
constexpr std::array<ScaleElement, 3> kFurtherElements{
    {{G246, P353, false}, {G247, P354, false}, {G248, P355, false}}};

}  // namespace

void copy_scale(std::int16_t grade) {
    for (const ScaleElement& element : kScale) {
        const double amount = num(element.contract, grade);
        if (amount != 0) {
            copy_write(element.employee, element.converts ? converted(amount) : amount);
        }
    }
    for (const ScaleElement& element : kFurtherElements) {
        copy_write(element.employee, num(element.contract, grade));
    }
}

}  // namespace ModSWCALM
