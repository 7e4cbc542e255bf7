#include "tax/surtaxes.h"

#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

class Surtaxes : public TaxTest {};

TEST_F(Surtaxes, P938KeepsThemAsTheyStandOnATermination) {
    EXPECT_TRUE(surtaxes_are_recomputed());
    scrivi(P017, "31052024");
    EXPECT_TRUE(surtaxes_are_recomputed());
    scrivi(P938, 1);
    EXPECT_FALSE(surtaxes_are_recomputed());
    scrivi(P017, "");  // December of somebody who stays
    EXPECT_TRUE(surtaxes_are_recomputed());
}

}  // namespace
