#include "severance/back_pay.h"

#include <gtest/gtest.h>

#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "tests/unit/contributions/slip_fixture.h"

namespace {

using namespace MXREPOSITORY;
using ModSWCALM::slip;

class BackPayTest : public test_support::SlipFixture {
  protected:
    BackPayTest() {
        const double cells[] = {28000, 23, 50000, 35, 999999.99, 43};
        for (int i = 0; i < 6; ++i) {
            slip.TABIRP.set(i + 1, cells[i]);
        }
        scrivi(P031, 1);
    }
};

TEST_F(BackPayTest, BothWaysOfEnteringItAreTaxedTogether) {
    scrivi(P195, 600);
    scrivi(P248, 400);
    scrivi(P212, 90);
    ModSwCalm2::ElaboraArretratiAP();
    EXPECT_EQ(num(P248), 1000);
    EXPECT_EQ(num(P289), 910);
    EXPECT_EQ(num(Q138), 209.3);  // 910 x 23 %
    EXPECT_EQ(num(P258), 209.3);
    EXPECT_EQ(num(P259), 209.3);
}

TEST_F(BackPayTest, WithoutBackPayContributionsAreNotRefunded) {
    scrivi(P212, 90);
    scrivi(Q034, 5);
    ModSwCalm2::ElaboraArretratiAP();
    EXPECT_EQ(num(P289), 0);
    EXPECT_EQ(num(Q138), 0);
    EXPECT_EQ(num(Q034), 5);
}

}  // namespace
