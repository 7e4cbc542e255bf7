// Fixed data as numbers, tax brackets, contribution percentages.

#include "slip/fixed_data.h"

#include "slip_fixture.h"

namespace slip_tests {
namespace {

class FixedData : public SlipTest {
  protected:
    std::array<double, 57> table_{};
};

struct NumberCell {
    std::size_t index;
    Descriptor field;
};
const std::vector<NumberCell> kNumberCells{
    {1, F307},  {2, F001},  {5, F006},  {6, F007},  {7, F008},  {10, F010}, {11, F011}, {12, F012},
    {13, F013}, {14, F310}, {15, F311}, {16, F312}, {17, F313}, {18, F314}, {21, F003}, {22, F141},
    {23, F315}, {24, F316}, {25, F317}, {26, F142}, {27, F144}, {28, F145}, {29, F146}, {30, F152},
    {33, F020}, {34, F048}, {35, F049}, {36, F039}, {37, F035}, {38, F036}, {39, F037}, {40, F038},
    {41, F039}, {42, F040}, {54, F002}, {55, F004}, {56, F005}};

TEST_F(FixedData, EachCellTakesItsField) {
    double value = 1.5;
    for (const NumberCell& cell : kNumberCells) {
        scrivi(cell.field, value);
        value += 1;
    }
    CARICAFISSO(table_);
    for (const NumberCell& cell : kNumberCells) {
        EXPECT_DOUBLE_EQ(table_[cell.index], num(cell.field)) << cell.index;
        EXPECT_GT(table_[cell.index], 0) << cell.index;
    }
    EXPECT_DOUBLE_EQ(table_[1], 1.5);
    EXPECT_DOUBLE_EQ(table_[2], 2.5);
}

TEST_F(FixedData, TextsJoinedToANumber) {
    scrivi(F308, 1234);
    scrivi(F042, 5);
    scrivi(F043, 6);
    scrivi(F163, 7);
    scrivi(F309, 891);
    scrivi(F161, "0123");
    scrivi(F318, 4);
    CARICAFISSO(table_);
    EXPECT_DOUBLE_EQ(table_[3], 12345);
    EXPECT_DOUBLE_EQ(table_[4], 67891);
    EXPECT_DOUBLE_EQ(table_[53], 1234);  // "0123" and "4"
}

TEST_F(FixedData, HalvesOfAFieldOfTenDigits) {
    // The record holds "1234567890": two numbers of five digits.
    for (const Descriptor& field : {F162, F143, F140}) {
        scrivi(field, 12345678.90);
    }
    CARICAFISSO(table_);
    for (const std::size_t left : {8U, 19U, 31U}) {
        EXPECT_DOUBLE_EQ(table_[left], 12345) << left;
        EXPECT_DOUBLE_EQ(table_[left + 1], 67890) << left;
    }
}

TEST_F(FixedData, TheEmployeesOwnPercentageReplacesCell33) {
    scrivi(F020, 0.50);
    scrivi(P620, 0.35);
    CARICAFISSO(table_);
    EXPECT_DOUBLE_EQ(table_[33], 0.35);
}

TEST_F(FixedData, CellsWithoutAFieldStayAsTheyAre) {
    table_.fill(9);
    CARICAFISSO(table_);
    EXPECT_DOUBLE_EQ(table_[0], 9);
    for (std::size_t index = 43; index <= 52; ++index) {
        EXPECT_DOUBLE_EQ(table_[index], 9) << index;
    }
    for (const std::size_t index : {1U, 42U, 53U, 56U}) {
        EXPECT_DOUBLE_EQ(table_[index], 0) << index;
    }
}

TEST_F(FixedData, TheFilesOfTheCalculationAreOpened) {
    const std::vector<int> numbers{6, 5, 97, 1, 2, 19, 8, 401, 18, 278, 276, 354, 356};
    for (const int n : numbers) {
        file(n, 100, {});
    }
    TUTTELEOP();
    for (const int n : numbers) {
        EXPECT_NE(MXLIBRERIA::file_table.entries[static_cast<std::size_t>(n)].CANALI, 0) << n;
    }
}

class Brackets : public SlipTest {
  protected:
    BracketTable table_;
};

TEST_F(Brackets, LimitAndRateInTenths) {
    open_file(18, 20, {"028000.00230 nota", "050000.00350", "999999.99430"});
    open_file(276, 20, {"    26000230", "999999.99435"});
    INTATABIRP(table_);
    EXPECT_DOUBLE_EQ(table_.at(1), 28000);
    EXPECT_DOUBLE_EQ(table_.at(2), 23);  // 230 tenths
    EXPECT_DOUBLE_EQ(table_.at(3), 50000);
    EXPECT_DOUBLE_EQ(table_.at(4), 35);
    EXPECT_DOUBLE_EQ(table_.at(5), 999999.99);
    EXPECT_DOUBLE_EQ(table_.at(6), 43);
    EXPECT_DOUBLE_EQ(table_.at(21), 26000);
    EXPECT_DOUBLE_EQ(table_.at(22), 23);
    EXPECT_DOUBLE_EQ(table_.at(24), 43.5);
}

TEST_F(Brackets, AShortFileLeavesTheRestOfTheTable) {
    for (int cell = 1; cell <= 40; ++cell) {
        table_.set(cell, cell);
    }
    open_file(18, 12, {"028000.00230"});
    open_file(276, 12, {});
    INTATABIRP(table_);
    EXPECT_DOUBLE_EQ(table_.at(1), 28000);
    EXPECT_DOUBLE_EQ(table_.at(2), 23);
    for (int cell = 3; cell <= 40; ++cell) {
        EXPECT_DOUBLE_EQ(table_.at(cell), cell);
    }
}

TEST_F(Brackets, AreReadOnceARun) {
    open_file(18, 12, {"028000.00230"});
    open_file(276, 12, {"026000.00230"});
    INTATABIRP(table_);
    open_file(18, 12, {"030000.00240"});
    BracketTable second;
    INTATABIRP(second);
    EXPECT_DOUBLE_EQ(second.at(1), 28000);
    EXPECT_DOUBLE_EQ(second.at(21), 26000);
    run_tables = RunTables{};
    INTATABIRP(second);
    EXPECT_DOUBLE_EQ(second.at(1), 30000);
    EXPECT_DOUBLE_EQ(second.at(2), 24);
}

TEST_F(Brackets, OnlyTenRecordsAreTaken) {
    std::vector<std::string> records(12, "010000.00100");
    records[10] = "777777.77777";
    open_file(18, 12, records);
    open_file(276, 12, {"000026.00230"});
    INTATABIRP(table_);
    EXPECT_DOUBLE_EQ(table_.at(19), 10000);
    EXPECT_DOUBLE_EQ(table_.at(20), 10);
    EXPECT_DOUBLE_EQ(table_.at(21), 26);
}

TEST_F(Brackets, TheTableOf2023) {
    slip.TABIRP.set(21, 5);
    brackets_of_2023();
    // 23 to 15000, 25 to 28000, 35 to 50000, 43 above
    const std::vector<double> expected{15000, 23, 28000, 25, 50000, 35, 75000, 43};
    for (std::size_t cell = 1; cell <= 8; ++cell) {
        EXPECT_DOUBLE_EQ(slip.TABIRP.at(static_cast<double>(cell)), expected[cell - 1]) << cell;
        EXPECT_DOUBLE_EQ(slip.TABIRPAC.at(static_cast<double>(cell)), expected[cell - 1]) << cell;
    }
    for (int cell = 9; cell <= 20; cell += 2) {
        EXPECT_DOUBLE_EQ(slip.TABIRP.at(cell), 999999.99) << cell;
        EXPECT_DOUBLE_EQ(slip.TABIRP.at(cell + 1), 43) << cell;
    }
    EXPECT_DOUBLE_EQ(slip.TABIRP.at(21), 5);
}

class Percentages : public SlipTest {
  protected:
    void SetUp() override {
        SlipTest::SetUp();
        const std::vector<Descriptor> rates{S003, S004, S005, S006, S007,
                                            S008, S009, S010, S011, S012};
        double rate = 3;
        for (const Descriptor& field : rates) {
            scrivi(field, rate);  // S003 3, S004 4, ... S012 12
            rate += 1;
        }
        slip.PCTCONTR.fill(99);
    }
    static double first() {
        load_contribution_percentages();
        return slip.PCTCONTR[1];
    }
};

TEST_F(Percentages, TheItemsTakeTheSectorsRates) {
    load_contribution_percentages();
    const std::vector<double> expected{7, 4, 5, 6, 0, 8, 9, 10, 11, 12};
    for (std::size_t entry = 1; entry <= 10; ++entry) {
        EXPECT_DOUBLE_EQ(slip.PCTCONTR[entry], expected[entry - 1]) << entry;
    }
}

TEST_F(Percentages, ACollaboratorHasNone) {
    scrivi(P447, 1);
    load_contribution_percentages();
    for (const double rate : slip.PCTCONTR) {
        EXPECT_DOUBLE_EQ(rate, 0);
    }
}

TEST_F(Percentages, WithoutSwitchesTheReducedRateWhereItDiffers) {
    EXPECT_DOUBLE_EQ(first(), 7);
    scrivi(S007, 3);  // equal to S003
    EXPECT_DOUBLE_EQ(first(), 3);
    scrivi(S007, 0.0);
    EXPECT_DOUBLE_EQ(first(), 3);
}

TEST_F(Percentages, WithASwitchTheItemInForceDecides) {
    scrivi(P040, 1);
    scrivi(P185, 1);
    EXPECT_DOUBLE_EQ(first(), 7);
    scrivi(P185, 0.0);
    scrivi(P181, 1);
    EXPECT_DOUBLE_EQ(first(), 3);
    scrivi(P040, 0.0);
    scrivi(P187, 1);  // P187 alone opens the same rule
    EXPECT_DOUBLE_EQ(first(), 3);
}

TEST_F(Percentages, WhereNoSwitchDecidesTheRateStays) {
    scrivi(P040, 1);
    slip.PCTCONTR[1] = 42;
    EXPECT_DOUBLE_EQ(first(), 42);  // neither P181 nor P185
    scrivi(P181, 1);
    scrivi(P185, 1);
    slip.PCTCONTR[1] = 43;
    EXPECT_DOUBLE_EQ(first(), 43);  // both
}

TEST_F(Percentages, TheCompanyThatGoesByP410) {
    scrivi(T013, "90000000055");
    scrivi(P410, "1");
    EXPECT_DOUBLE_EQ(first(), 3);
    scrivi(P410, "2");
    EXPECT_DOUBLE_EQ(first(), 7);  // 3 + 4
    scrivi(P410, " ");
    slip.PCTCONTR[1] = 42;
    EXPECT_DOUBLE_EQ(first(), 42);
}

TEST_F(Percentages, T633TakesTheRateS305) {
    scrivi(T633, 1);
    scrivi(S305, 9.5);
    EXPECT_DOUBLE_EQ(first(), 9.5);
}

TEST_F(Percentages, ApprenticesOfTheSectorTakeS209) {
    scrivi(S209, 5.84);
    load_contribution_percentages();
    EXPECT_DOUBLE_EQ(slip.PCTCONTR[8], 10);
    scrivi(P100, 1);
    load_contribution_percentages();
    EXPECT_DOUBLE_EQ(slip.PCTCONTR[8], 5.84);
}

}  // namespace
}  // namespace slip_tests
