#include "contributions/allowances.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/numbers.h"
#include "tests/support/archive_directory.h"
#include "tests/unit/contributions/slip_fixture.h"

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALM::run_tables;

namespace {

using namespace MXLIBRERIA::file_numbers;

constexpr std::size_t kRecord = 64;

/// A record: the eight characters of the limit, then seven monthly sums.
std::string bracket(const std::string& limit, const std::array<const char*, 7>& sums) {
    std::string record = limit;
    record.resize(8, ' ');
    for (const char* sum : sums) {
        record += zeri_a_sinistra(sum, 7);
    }
    record.resize(kRecord, ' ');
    return record;
}

class HouseholdTableTest : public test_support::SlipFixture {
  protected:
    HouseholdTableTest() { table(232, "ANF11.DAT"); }
    /// Two brackets: up to 15000.00 and up to 30000.00.
    void table(std::size_t file, const std::string& name) {
        archive_.define(file, name, static_cast<int>(kRecord));
        archive_.write(
            name,
            bracket("15000.00", {"0", "0", "137.50", "258.33", "375.00", "500.00", "625.00"}) +
                bracket("30000.00", {"0", "0", "100.00", "200.00", "300.00", "400.00", "500.00"}));
    }

    test_support::ArchiveDirectory archive_;
};

TEST_F(HouseholdTableTest, TheBracketIsTheFirstWhoseLimitTheIncomeDoesNotPass) {
    EXPECT_EQ(ALTRIANF(3, 10000, '0'), 137.50);
    EXPECT_EQ(ALTRIANF(3, 15000, '0'), 137.50);
    EXPECT_EQ(ALTRIANF(3, 15000.01, '0'), 100);
    EXPECT_EQ(ALTRIANF(3, 30000.01, '0'), 0);
}

TEST_F(HouseholdTableTest, EachMemberHasAColumn) {
    EXPECT_EQ(ALTRIANF(2, 10000, '0'), 0);
    EXPECT_EQ(ALTRIANF(4, 10000, '0'), 258.33);
    EXPECT_EQ(ALTRIANF(5, 10000, '0'), 375);
    EXPECT_EQ(ALTRIANF(6, 10000, '0'), 500);
    EXPECT_EQ(ALTRIANF(7, 10000, '0'), 625);
}

TEST_F(HouseholdTableTest, TheFileIsClosedAfterEachUse) {
    EXPECT_EQ(ALTRIANF(3, 10000, '0'), 137.50);
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kFirstAllowanceTable].CANALI, 0);
    EXPECT_EQ(ALTRIANF(3, 99999, '0'), 0);
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kFirstAllowanceTable].CANALI, 0);
}

TEST_F(HouseholdTableTest, AStarredLimitStandsAbove100000) {
    // "23   *05123": 05123 euro, 23 cents, plus 100000
    std::string record = bracket("23   *05", {"123", "0", "50.00", "0", "0", "0", "0"});
    record.replace(8, 3, "123");
    archive_.write("ANF11.DAT", record);
    EXPECT_EQ(ALTRIANF(3, 105123.23, '0'), 50);
    EXPECT_EQ(ALTRIANF(3, 105123.24, '0'), 0);
}

TEST_F(HouseholdTableTest, EachCharacterLeadsToItsFile) {
    const std::string characters = "0123456789ABCDEFG";
    const std::array<std::size_t, 17> files{232, 233, 234, 235, 236, 237, 238, 239, 240,
                                            241, 246, 247, 248, 249, 250, 251, 252};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const std::string sum = std::to_string(100 + i);
        archive_.define(files[i], "T.DAT", static_cast<int>(kRecord));
        archive_.write("T.DAT", bracket("99999.99", {"0", "0", sum.c_str(), "0", "0", "0", "0"}));
        EXPECT_EQ(ALTRIANF(3, 10000, characters[i]), static_cast<double>(100 + i)) << characters[i];
    }
}

TEST_F(HouseholdTableTest, OtherCharactersHaveNoTable) {
    for (const char character : {'H', 'Z', ' ', 'a', '/', ':'}) {
        EXPECT_EQ(ALTRIANF(3, 10000, character), 0);
    }
}

TEST_F(HouseholdTableTest, AnEmptyTableGivesNothing) {
    archive_.write("ANF11.DAT", "");
    EXPECT_EQ(ALTRIANF(3, 10000, '0'), 0);
}

TEST_F(HouseholdTableTest, LargeHouseholdsOfParentsAndMinors) {
    // Column of seven 625.00, one further member 15 %: 93.75; members above the two parents and the
    // first child: 8 - 2 - 1 = 5 x 43.75
    EXPECT_NEAR(ALTRIANF(8, 10000, '0'), 625 + 93.75 - 218.75, 1e-9);
    // two further members: 2 x 93.75; 9 - 2 - 1 = 6 x 43.75
    EXPECT_NEAR(ALTRIANF(9, 10000, '0'), 625 + 187.50 - 262.50, 1e-9);
}

TEST_F(HouseholdTableTest, OneParentHouseholdsEndWithTheSixthColumn) {
    table(233, "ANF12.DAT");
    EXPECT_EQ(ALTRIANF(6, 10000, '1'), 500);
    // one further member: 15 % of 500 = 75; 7 - 1 - 1 = 5 x 49.83
    EXPECT_NEAR(ALTRIANF(7, 10000, '1'), 500 + 75 - 249.15, 1e-9);
}

TEST_F(HouseholdTableTest, LargeHouseholdsOfTheOtherTables) {
    table(235, "ANF14.DAT");
    EXPECT_NEAR(ALTRIANF(8, 10000, '3'), 625 + 93.75 - 55, 1e-9);  // 5 x 11
    table(238, "ANF17.DAT");
    EXPECT_NEAR(ALTRIANF(8, 10000, '6'), 625 + 62.50 - 52.10, 1e-9);  // 10 %, 5 x 10.42
    table(241, "ANF20.DAT");
    EXPECT_NEAR(ALTRIANF(8, 10000, '9'), 687.50, 1e-9);  // 10 %, no member above 99
}

TEST_F(HouseholdTableTest, ALargeHouseholdDoesNotPay) {
    archive_.write("ANF11.DAT", bracket("15000.00", {"0", "0", "0", "0", "0", "0", "100.00"}));
    EXPECT_EQ(ALTRIANF(8, 10000, '0'), 0);  // 100 + 15 - 218.75
}

// ---- The employee's allowance ----

class FamilyAllowanceTest : public HouseholdTableTest {
  protected:
    FamilyAllowanceTest() {
        scrivi(P021, "4");
        scrivi(P023, 10000);
        scrivi(P158, "0");
        scrivi(P226, 26);
        scrivi(P227, 26);
        set_period(202005);
    }
};

TEST_F(FamilyAllowanceTest, AWholeMonthIsPaidInQ139) {
    scrivi(P241, 1000);
    scrivi(Q030, 50);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 258.33);
    EXPECT_EQ(num(Q140), 0);
    EXPECT_EQ(num(Q030), 308.33);
    EXPECT_EQ(num(P241), 1258.33);
}

TEST_F(FamilyAllowanceTest, DaysOfTheMonthArePaidInQ140) {
    azzera({P227});
    scrivi(P226, 10);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 0);
    EXPECT_EQ(num(Q140), 99.35);  // 258.33 x 10 / 26 = 99.3576, cut
    EXPECT_EQ(num(P241), 99.35);
}

TEST_F(FamilyAllowanceTest, TwentySixDaysArePaidWhole) {
    azzera({P227});
    ASSEGNIFAM();
    EXPECT_EQ(num(Q140), 258.33);
    svuota({Q140});
    scrivi(P226, 30);
    scrivi(P196, 110);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q140), 258.33);
}

TEST_F(FamilyAllowanceTest, WithoutDaysNothingIsPaid) {
    azzera({P226, P227});
    ASSEGNIFAM();
    EXPECT_EQ(num(P241), 0);
}

TEST_F(FamilyAllowanceTest, CollaboratorsWithADayCountArePaidTheWholeMonth) {
    scrivi(P447, 1);
    scrivi(P227, 5);
    scrivi(P226, 10);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 258.33);
    svuota({Q139, Q140});
    azzera({P227});
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 0);
    EXPECT_EQ(num(Q140), 99.35);
}

TEST_F(FamilyAllowanceTest, ChildrenBeyondTheFirstAdd83Cents) {
    scrivi(P127, "3");
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 259.99);  // 258.33 + 2 x 0.83
}

TEST_F(FamilyAllowanceTest, HouseholdsAreCountedByDigitsAndLetters) {
    scrivi(P021, "A");  // 10 members
    ASSEGNIFAM();
    // 625 + 3 x 93.75 - 7 x 43.75 = 600
    EXPECT_EQ(num(Q139), 600);
    svuota({Q139});
    scrivi(P021, "L");  // 19: 625 + 12 x 93.75 - 16 x 43.75 = 1050
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 1050);
    for (const char* none : {"0", " ", "J", "K", "N"}) {
        svuota({Q139});
        scrivi(P021, none);
        ASSEGNIFAM();
        EXPECT_EQ(num(Q139), 0) << none;
    }
}

TEST_F(FamilyAllowanceTest, TheIncomeLimitOfTheTableBlocksIt) {
    run_tables.family_income_limit = 9999.99;
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 0);
    run_tables.family_income_limit = 10000;
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 258.33);
}

TEST_F(FamilyAllowanceTest, P038BlocksIt) {
    scrivi(P038, 9);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q139), 0);
    EXPECT_EQ(num(P241), 0);
}

TEST_F(FamilyAllowanceTest, TheTemporaryIncreaseIsPaidInQ130) {
    scrivi(P264, 75);
    scrivi(P265, 3);
    set_period(202106);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q130), 0);
    svuota({Q139, Q030, P241});
    set_period(202107);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q130), 75);
    EXPECT_EQ(num(P241), 333.33);
    EXPECT_EQ(num(Q030), 333.33);
    svuota({Q130});
    scrivi(P227, 10);
    ASSEGNIFAM();
    EXPECT_EQ(num(Q130), 30);  // 10 days of 3.00
}

// ---- Wages by insured risk ----

class InsuredWageTest : public test_support::SlipFixture {
  protected:
    InsuredWageTest() {
        scrivi(P040, 1);
        scrivi(F341, 12000);  // 1000 a month
    }
};

TEST_F(InsuredWageTest, EachNumberHasItsPair) {
    const auto amounts = serie(Q204, Q213);
    const auto days = serie(Q214, Q223);
    ASSERT_EQ(amounts.size(), 10U);
    ASSERT_EQ(days.size(), 10U);
    for (std::size_t i = 0; i < 10; ++i) {
        ASSEGNAINAIL(static_cast<double>(i + 1), 1000.01, 26);
        ASSEGNAINAIL(static_cast<double>(i + 1), 2000, 10);
        // The first number starts anew, the others add up.
        EXPECT_EQ(num(amounts[i]), i == 0 ? 2000 : 3000.01) << i;
        EXPECT_EQ(num(days[i]), i == 0 ? 10 : 36) << i;
    }
}

TEST_F(InsuredWageTest, AnAmountUpToTheMonthlyCeilingIsLeftOut) {
    ASSEGNAINAIL(2, 1000, 26);
    EXPECT_EQ(num(Q205), 0);
    EXPECT_EQ(num(Q215), 0);
}

TEST_F(InsuredWageTest, WithoutQualificationNothingIsKept) {
    azzera({P040});
    ASSEGNAINAIL(2, 2000, 26);
    EXPECT_EQ(num(Q205), 0);
}

TEST_F(InsuredWageTest, NumbersWithoutAPairKeepNothing) {
    for (const double number : {0.0, 11.0, 12.0}) {
        ASSEGNAINAIL(number, 2000, 26);
    }
    for (const auto& field : serie(Q204, Q223)) {
        EXPECT_EQ(num(field), 0);
    }
}

}  // namespace
