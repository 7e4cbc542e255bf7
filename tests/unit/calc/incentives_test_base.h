#pragma once
// An employee for whom the employer pays 30.81 percent, on a wage of 2000.

#include "calc/incentives.h"
#include "calc/remaining.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {

/// Employer's contributions of 30.81 percent: 40 less 9.19.
class Incentives : public SlipTest {
  protected:
    Incentives() {
        exemption = ExemptionState{};
        employer_percentages = EmployerPercentages{.PCTDATORE = 30.81};
        MXREPOSITORY::scrivi(MXREPOSITORY::P412, "I");
        MXREPOSITORY::scrivi(MXREPOSITORY::P013, "01012020");
        wage(2000);
    }
    static void wage(double amount) {
        MXREPOSITORY::scrivi(MXREPOSITORY::P240, amount);
        MXREPOSITORY::scrivi(MXREPOSITORY::P250, amount);
    }
};

}  // namespace ModSWCALM
