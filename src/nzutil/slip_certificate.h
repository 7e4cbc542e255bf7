#pragma once
// What the certificate of the year brings into the adjustment of a calculated slip.

#include "nzutil/calculated_slip.h"

namespace nzutil {

/// In euro, not rounded.
struct CertificateAmounts {
    double off_base = 0;  ///< F197 percent of the incomes; 0 where more than the year's income
    double off_tax = 0;   ///< the same whole, and the further amounts
};
[[nodiscard]] CertificateAmounts certificate_amounts(const CalculatedSlip& slip);

}  // namespace nzutil
