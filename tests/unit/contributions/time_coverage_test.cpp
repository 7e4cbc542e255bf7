// Every rule of the contributions that depends on the date, through every month from 2004 to 2030.

#include <gtest/gtest.h>

#include "contributions/allowances.h"
#include "contributions/contribution_cuts.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/SETX.h"
#include "tests/unit/contributions/slip_fixture.h"

using namespace MXREPOSITORY;
using namespace ModSwCalm2;

namespace {

class ContributionsThroughTheYears : public test_support::SlipFixture {
  protected:
    static constexpr int kFirst = 200401;
    static constexpr int kLast = 203012;
};

TEST_F(ContributionsThroughTheYears, EachMonthLiesInExactlyOnePeriodOfTheCut) {
    int months = 0;
    for (int month = kFirst; month <= kLast; month = next_month(month)) {
        EXPECT_EQ(cut_periods_of(month), 1) << month;
        EXPECT_NO_THROW((void)cut_period(month)) << month;
        ++months;
    }
    EXPECT_EQ(months, 27 * 12);
}

TEST_F(ContributionsThroughTheYears, NoMonthAndNoKindOfSlipFails) {
    scrivi(P181, 1);
    ModSWCALM::slip.PCTCONTR[1] = 9.19;
    scrivi(S003, 9.19);
    scrivi(P240, 2000);
    scrivi(P250, 2000);
    for (int month = kFirst; month <= kLast; month = next_month(month)) {
        for (const char kind : {'4', '0'}) {
            for (const int share : {0, 1, 3}) {
                set_period(month, kind);
                scrivi(PB20, share);
                svuota({Q224, Q225});
                EXPECT_NO_THROW({
                    item_bases_before_fund();
                    item_bases_after_fund();
                    employee_amounts();
                    back_pay_contribution();
                    solidarity_above_ceiling();
                }) << month;
                EXPECT_GE(num(Q225), 0) << month;
                EXPECT_LE(num(Q224), 183.80) << month;
            }
        }
    }
}

TEST_F(ContributionsThroughTheYears, TheTemporaryIncreaseBeginsInJuly2021) {
    scrivi(P227, 26);
    scrivi(P264, 37.50);
    for (int month = kFirst; month <= kLast; month = next_month(month)) {
        set_period(month);
        svuota({Q130, Q030, P241});
        ASSEGNIFAM();
        EXPECT_EQ(num(Q130), month >= 202107 ? 37.50 : 0) << month;
    }
}

}  // namespace
