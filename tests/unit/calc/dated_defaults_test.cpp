#include "calc/dated_defaults.h"

#include "files/file_numbers.h"
#include "tests/support/logical_files.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;

struct BonusCase {
    int yyyymm;
    double stored;
    double expected;
};

class DatedDefaults : public SlipTest {
  protected:
    DatedDefaults() {
        files.define(kFixedData, 3100);
        files.put(kFixedData, 1, area(Area::FISX));
        MXLIBRERIA::FAIOPEN(kFixedData);
        scrivi(F433, 1);
        scrivi(F434, 1);
    }
    test_support::LogicalFiles files;
};

TEST_F(DatedDefaults, FillTheTwoFiguresThatAreEmptyInAnyMonth) {
    azzera({F433, F434});
    apply_dated_defaults(200501);
    EXPECT_EQ(num(F433), 530);
    EXPECT_EQ(num(F434), 630);
}

TEST_F(DatedDefaults, LeaveFiguresThatTheOperatorTyped) {
    scrivi(F433, 531);
    scrivi(F434, 629);
    apply_dated_defaults(202405);
    EXPECT_EQ(num(F433), 531);
    EXPECT_EQ(num(F434), 629);
}

TEST_F(DatedDefaults, GiveTheBonusOfTheYear) {
    // 80 euro a month: 8 months of 2014 are 640, 12 months 960; 100 euro for six months of 2020
    // are 600, for twelve 1200.
    const BonusCase cases[] = {
        {201312, 0, 0},     {201401, 0, 640},    {201412, 0, 640},     {201405, 500, 500},
        {201501, 640, 960}, {201512, 640, 960},  {201501, 0, 0},       {201601, 640, 640},
        {201912, 0, 0},     {202001, 0, 960},    {202006, 600, 960},   {202007, 960, 600},
        {202012, 0, 600},   {202101, 960, 1200}, {202101, 1200, 1200}, {202605, 0, 1200},
    };
    for (const BonusCase& c : cases) {
        scrivi(F436, c.stored);
        apply_dated_defaults(c.yyyymm);
        EXPECT_EQ(num(F436), c.expected) << c.yyyymm << " from " << c.stored;
    }
}

TEST_F(DatedDefaults, GiveTheIndexOfDecember2015InTheSecondHalfOf2016Only) {
    for (const auto& [yyyymm, expected] :
         {std::pair{201606, 107.0}, {201607, 99.9}, {201612, 99.9}, {201701, 107.0}}) {
        scrivi(F021, 107.0);
        apply_dated_defaults(yyyymm);
        EXPECT_EQ(num(F021), expected) << yyyymm;
    }
}

TEST_F(DatedDefaults, RewriteTheRecordOnFile) {
    scrivi(F436, 960);
    apply_dated_defaults(202101);
    EXPECT_EQ(LEGGICAMPONUM(F436, 0, files.get(kFixedData, 1)), 1200);
}

TEST_F(DatedDefaults, WriteNothingWhereNothingChanges) {
    scrivi(F436, 1200);
    const std::string before = files.get(kFixedData, 1);
    apply_dated_defaults(202405);
    EXPECT_TRUE(files.get(kFixedData, 1) == before);
}

}  // namespace
}  // namespace ModSWCALM
