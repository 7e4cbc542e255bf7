#include "nzutil/slip_certificate.h"

#include <initializer_list>

#include "records/dictionary/CUDX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

double sum(const CalculatedSlip& slip, std::initializer_list<Descriptor> fields) {
    double sum = 0;
    for (const Descriptor& field : fields) {
        sum += slip.certificate(field);
    }
    return sum;
}

}  // namespace

CertificateAmounts certificate_amounts(const CalculatedSlip& slip) {
    const double incomes = sum(slip, {X020, X021, X022, X023, X024, X025, X026, X050, X051, X052,
                                      X347, X424, X425, X426, X427});
    const double further = sum(slip, {X019, X027, X028, X029, X030, X032, X053, X054, X055, X064,
                                      X348, X349, X428, X429, X430, X431});
    const double share = incomes * slip.yearly(F197) / 100;
    return {.off_base = share > slip.now(Q013) ? 0 : share, .off_tax = share + further};
}

}  // namespace nzutil
