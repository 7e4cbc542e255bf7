#include "context/period.h"

#include <gtest/gtest.h>

namespace {

using MXLIBRERIA::Period;

TEST(PeriodRecord, DerivesDateAndRunKind) {
    Period period;
    period.set("310520244 and what follows");
    EXPECT_EQ(period.date(), "31052024");
    EXPECT_EQ(period.day(), 31);
    EXPECT_EQ(period.month(), 5);
    EXPECT_EQ(period.year(), 2024);
    EXPECT_EQ(period.month_text(), "05");
    EXPECT_EQ(period.year_text(), "2024");
    EXPECT_EQ(period.short_year(), "24");
    EXPECT_EQ(period.month_year(), "052024");
    EXPECT_EQ(period.yyyymm(), 202405);
    EXPECT_TRUE(period.ordinary());
    EXPECT_FALSE(period.additional());
}

TEST(PeriodRecord, KindZeroIsAnAdditionalPayment) {
    Period period;
    period.set("310520240");
    EXPECT_EQ(period.MMAGGIUNTIVA, 1);
    EXPECT_TRUE(period.additional());
    period.set("31052024 ");
    EXPECT_EQ(period.MMAGGIUNTIVA, 0);
}

TEST(PeriodRecord, ShortRecordIsANormalMonthWithoutDate) {
    Period period;
    period.set("");
    EXPECT_EQ(period.yyyymm(), 0);
    EXPECT_TRUE(period.ordinary());
}

}  // namespace
