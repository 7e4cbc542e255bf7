#include "history/year_totals.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

#include "context/trace.h"
#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "records/dictionary/CUDX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"

namespace ModElaboraStorico {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

/// Income that gives a right to the deduction, in the order in which it is added up.
constexpr std::array kDeductibleIncome{X050, X424, X051, X425, X020, X021, X022, X052,
                                       X023, X426, X025, X026, X427, X024, X347};
constexpr std::array kFurtherAmounts{X054, X053, X055, X428, X429, X430, X431, X028,
                                     X029, X030, X019, X032, X027, X064, X348, X349};

double sum_of(std::span<const Descriptor> fields) {
    return std::accumulate(fields.begin(), fields.end(), 0.0,
                           [](double sum, const Descriptor& field) { return sum + num(field); });
}

/// Brings the employee's certificate into its area, which is empty without one; its record number,
/// or 0. The refusal of an index that holds nothing (0) has been shown.
double read_certificate() {
    area(Area::CUDX).clear();
    const double number = ISAM(kCertificateIndex, testo(P001), kIsamSearch, 0);
    if (number <= 0 || LEGGIREC(kCertificates, number) == 1) {
        return 0;
    }
    area(Area::CUDX) = record_buffer(kCertificates);
    return number;
}

/// The employee's code and the parts of it that fields of their own show.
bool is_key(const Descriptor& field) {
    return field.offset >= X001.offset && field.offset < X001.offset + X001.length;
}

}  // namespace

void DETRCUD(double& first, double& second) {
    TRACCIA("DETRCUD");
    first = 0;
    second = 0;
    if (read_certificate() == 0) {
        return;
    }
    first = sum_of(kDeductibleIncome) * num(F197) / 100;
    second = sum_of(kFurtherAmounts);
}

void AZZERA_CUD() {
    TRACCIA("AZZERA_CUD");
    const double number = read_certificate();
    if (number == 0) {
        return;
    }
    for (const Descriptor& field : kFieldsOf<Area::CUDX>) {
        if (!is_key(field)) {
            svuota(field);
        }
    }
    write_whole_record(kCertificates, number, area(Area::CUDX));
}

}  // namespace ModElaboraStorico
