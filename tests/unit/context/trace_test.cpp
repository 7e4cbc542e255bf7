#include "context/trace.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace MXLIBRERIA;

class Trace : public ::testing::Test {
  protected:
    void SetUp() override { trace_ring = {}; }
    void TearDown() override { trace_ring = {}; }
};

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

TEST_F(Trace, ElevenNamesLeaveTheLastTenInOrder) {
    std::string expected;
    for (int i = 1; i <= 11; ++i) {
        TRACCIA("PROC" + std::to_string(i));
        if (i >= 2) {
            expected += "PROC" + std::to_string(i) + "\r\n";
        }
    }
    EXPECT_EQ(trace_listing(), expected);
    EXPECT_EQ(trace_ring.index, 1);  // the eleventh name took the first slot again
}

TEST_F(Trace, SameNameTwiceRunningTakesOneSlot) {
    TRACCIA("MAIN");
    TRACCIA("FAIOPEN");
    TRACCIA("FAIOPEN");
    EXPECT_EQ(trace_ring.index, 2);
    TRACCIA("MAIN");  // not running: a slot of its own
    EXPECT_EQ(trace_ring.index, 3);
}

TEST_F(Trace, UnusedSlotsAreEmptyLinesInFrontOfTheNames) {
    TRACCIA("MAIN");
    TRACCIA("CARICAINST");
    EXPECT_EQ(trace_listing(), repeated("\r\n", 8) + "MAIN\r\nCARICAINST\r\n");
}

TEST_F(Trace, RingNeverUsedIsTenEmptyLines) {
    EXPECT_EQ(trace_listing(), repeated("\r\n", 10));
    EXPECT_EQ(trace_ring.index, 0);
}

TEST_F(Trace, ListingLeavesTheRingWhereItWas) {
    for (int i = 0; i < 14; ++i) {
        TRACCIA("P" + std::to_string(i));
    }
    const auto before = trace_ring.index;
    EXPECT_EQ(before, 4);  // 14 names: ten slots and four more
    EXPECT_TRUE(trace_listing().starts_with("P4\r\n"));
    EXPECT_EQ(trace_ring.index, before);
}

}  // namespace
