// Formulas of pay items: operators, operands, targets, registers, and the amount at the end.

#include "formulas/formula.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "context/trace.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/support/dictionary_archive.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace {

using namespace MXREPOSITORY;
using test_support::ScriptedWindow;

class Formula : public testing::Test {
  protected:
    void SetUp() override {
        window = &ScriptedWindow::install();
        test_support::fill_areas();
        formula_registers = {};
    }
    void TearDown() override {
        window->verify();
        clear_areas();
    }

    /// Puts cells into the item; the cell after the last ends the formula.
    static void set(const std::vector<std::string>& cells) {
        std::string formula;
        for (const std::string& cell : cells) {
            formula += a_sinistra(cell, 11);
        }
        formula += a_sinistra(".", 11);
        area(Area::FOTX).replace(256, 1100, a_sinistra(formula, 1100));
    }
    static void run(const std::vector<std::string>& cells, std::int16_t write = -1) {
        set(cells);
        DECFORM(write);
    }
    /// The accumulator after the cells, to five decimals: what register 9 then holds.
    static double result(std::vector<std::string> cells, std::int16_t write = -1) {
        cells.emplace_back("=TMP9");
        run(cells, write);
        return valore(formula_registers.TMP[10]);
    }

    test_support::DictionaryArchive archive;
    ScriptedWindow* window = nullptr;
};

// ---- Operators ----

TEST_F(Formula, APercentageOfTwoFieldsBecomesTheUnitValue) {
    scrivi(P196, 100);
    scrivi(P197, 50);
    run({".P196", "+P197", "*5", "%20", "=CU"});
    EXPECT_EQ(num(Z152), 150);  // (100 + 50) x 5 x 20 / 100
}

TEST_F(Formula, PointBeginsAnew) {
    EXPECT_EQ(result({"+100", ".7"}), 7);
    EXPECT_EQ(result({"+100", ".7", "+1"}), 8);
    EXPECT_EQ(result({"+5", ".-3"}), -3);
}

TEST_F(Formula, PlusAndMinus) {
    EXPECT_EQ(result({"+100", "+20.5"}), 120.5);
    EXPECT_EQ(result({"+100", "-20.5"}), 79.5);
    EXPECT_EQ(result({"-20.5"}), -20.5);
    EXPECT_EQ(result({"+1", "--2"}), 3);  // the operand itself may be negative
}

TEST_F(Formula, TimesAndPercent) {
    EXPECT_EQ(result({"+12", "*3"}), 36);
    EXPECT_EQ(result({"+1500", "%9.19"}), 137.85);  // 1500 x 9.19 / 100
    EXPECT_EQ(result({"+12", "*0"}), 0);
}

TEST_F(Formula, SmallerAndGreater) {
    EXPECT_EQ(result({"+10", "<8"}), 8);
    EXPECT_EQ(result({"+10", "<10"}), 10);
    EXPECT_EQ(result({"+10", "<12"}), 10);
    EXPECT_EQ(result({"+10", ">8"}), 10);
    EXPECT_EQ(result({"+10", ">10"}), 10);
    EXPECT_EQ(result({"+10", ">12"}), 12);
    EXPECT_EQ(result({"-10", ">0"}), 0);
}

TEST_F(Formula, AnyOtherOperatorDivides) {
    EXPECT_EQ(result({"+10", "/4"}), 2.5);
    EXPECT_EQ(result({"+10", ":4"}), 2.5);
    EXPECT_EQ(result({"+10", "x4"}), 2.5);
    EXPECT_EQ(result({"+10", " 4"}), 2.5);
}

TEST_F(Formula, ADivisionByZeroHasNoEffect) {
    EXPECT_EQ(result({"+10", "/0"}), 10);
    EXPECT_EQ(result({"+10", "/"}), 10);
    EXPECT_EQ(result({"+10", "/MEM3", "+1"}), 11);
    EXPECT_EQ(result({"+10", "           ", "*2"}), 20);  // a blank cell
}

TEST_F(Formula, StoringKeepsTheAccumulator) {
    run({"+10", "=CU", "*2", "=OG"});
    EXPECT_EQ(num(Z152), 10);
    EXPECT_EQ(num(Z151), 20);
}

TEST_F(Formula, AResultThatNoNumberHoldsIsAnOverflow) {
    scrivi(Z153, 7);
    set({"+1E300", "*1E300", "=CU"});
    try {
        DECFORM(-1);
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), platform::kOverflow);
    }
    EXPECT_EQ(num(Z153), 7);
}

// ---- Operands ----

TEST_F(Formula, RegistersAreReadByTheirDigit) {
    formula_registers.MEM[1] = "11";
    formula_registers.MEM[4] = "0000000044.50000";
    formula_registers.MEM[10] = "99";
    formula_registers.TMP[1] = "12";
    formula_registers.TMP[6] = "-0000000.50000";
    EXPECT_EQ(result({"+MEM0"}), 11);
    EXPECT_EQ(result({"+MEM3"}), 44.5);
    EXPECT_EQ(result({"+MEM9"}), 99);
    EXPECT_EQ(result({"+MEM37"}), 44.5);  // only the digit after the name counts
    EXPECT_EQ(result({"+TMP0"}), 12);
    EXPECT_EQ(result({"+TMP5"}), -0.5);
    EXPECT_EQ(result({"+TMP2"}), 0);  // nothing stored yet
}

TEST_F(Formula, ARegisterWithoutDigitIsTheFirst) {
    formula_registers.MEM[1] = "11";
    formula_registers.TMP[1] = "12";
    EXPECT_EQ(result({"+MEM"}), 11);
    EXPECT_EQ(result({"+MEMX"}), 11);
    EXPECT_EQ(result({"+MEM-1"}), 11);
    EXPECT_EQ(result({"+TMP /"}), 12);
    run({"+5", "=MEM", "+1", "=TMPA"});
    EXPECT_EQ(formula_registers.MEM[1], "00000005.00000");
    EXPECT_EQ(formula_registers.TMP[1], "00000006.00000");
}

TEST_F(Formula, FieldsOfEmployeeAndYearlyTablesAreReadByName) {
    scrivi(P210, 1500.25);
    scrivi(Q100, -3.5);
    scrivi(F020, 0.5);
    scrivi(PA12, 3);
    EXPECT_EQ(result({"+P210"}), num(P210));
    EXPECT_EQ(result({"+Q100"}), -3.5);
    EXPECT_EQ(result({"+F020"}), 0.5);
    EXPECT_EQ(result({"+P210XYZ"}), num(P210));  // four characters name the field
    EXPECT_EQ(result({"+PA12"}), num(PA12));
}

TEST_F(Formula, OperandsAreTrimmed) {
    scrivi(P210, 1500);
    EXPECT_EQ(result({"+  P210"}), 1500);
    EXPECT_EQ(result({"+  100  "}), 100);
}

TEST_F(Formula, AFieldThatDoesNotExistShowsItsMessageAndCountsZero) {
    window->expect_box("ERRORE REPOSITORY: nome inesistente P999 0");
    EXPECT_EQ(result({"+5", "+P999"}), 5);
    window->expect_box("ERRORE REPOSITORY: lunghezza nomebreve Q1");
    EXPECT_EQ(result({"+5", "+Q1"}), 5);
}

TEST_F(Formula, PayAndItsParts) {
    scrivi(P210, 60);
    scrivi(P073, 1.5);
    EXPECT_EQ(result({"+#1"}), num(P210));
    EXPECT_EQ(result({"+#2"}), num(P210) + num(P073) * 26);
    EXPECT_EQ(result({"+#5"}), 0);
    EXPECT_EQ(result({"+#"}), 0);
    EXPECT_EQ(result({"+#1 anything"}), num(P210));
}

TEST_F(Formula, HourlyAndDailyPayAreRoundedToCents) {
    scrivi(P210, 1500);
    scrivi(P214, 160);
    scrivi(P427, 22);
    EXPECT_EQ(result({"+#3"}), 9.38);   // 1500 / 160 = 9.375
    EXPECT_EQ(result({"+#4"}), 68.18);  // 1500 / 22 = 68.1818...
    scrivi(P214, 0);
    scrivi(P427, 0);
    EXPECT_EQ(result({"+#3"}), 8.67);   // 1500 / 173 = 8.6705...
    EXPECT_EQ(result({"+#4"}), 57.69);  // 1500 / 26 = 57.6923...
}

TEST_F(Formula, TheItemsOwnValues) {
    scrivi(Z151, 3);
    scrivi(Z152, 7.12345);
    EXPECT_EQ(result({"+CU"}), 7.12345);
    EXPECT_EQ(result({"+CUX"}), 7.12345);
    EXPECT_EQ(result({"+OG"}), 3);
    EXPECT_EQ(result({"+OGGI"}), 3);
    EXPECT_EQ(result({"+IM"}), 21.37);  // 21.37035
    EXPECT_EQ(result({"+IMPORTO"}), 21.37);
    scrivi(Z029, 1);
    EXPECT_EQ(result({"+IM"}), 21);
}

TEST_F(Formula, AnythingElseIsANumber) {
    EXPECT_EQ(result({"+100"}), 100);
    EXPECT_EQ(result({"+0.5"}), 0.5);
    EXPECT_EQ(result({"+.5"}), 0.5);
    EXPECT_EQ(result({"+1E2"}), 100);
    EXPECT_EQ(result({"+12ORE"}), 12);
    EXPECT_EQ(result({"+"}), 0);
    EXPECT_EQ(result({"+ABC"}), 0);
    EXPECT_EQ(result({"+T044"}), 0);  // company fields are targets only
}

TEST_F(Formula, TheFirstMatchingOperandCounts) {
    // The order matters for none of these but by their beginning.
    formula_registers.MEM[1] = "1";
    EXPECT_EQ(result({"+MEMP210"}), 1);
    window->expect_box("nome inesistente PCU1 0");
    EXPECT_EQ(result({"+PCU1"}), 0);
}

// ---- Targets ----

TEST_F(Formula, UnitValueHasFiveDecimals) {
    run({"+10", "/3", "=CU"});
    EXPECT_EQ(num(Z152), 3.33333);
    run({"-10", "/3", "=CU"}, 0);  // the unit value is stored whatever the flag
    EXPECT_EQ(num(Z152), -3.33333);
    EXPECT_EQ(testo(Z152).front(), '-');
    EXPECT_EQ(area(Area::FOTX).substr(1369, 13), "-000000333333");
    run({"+20", "/3", "=CU"});
    EXPECT_EQ(num(Z152), 6.66667);  // rounded, not cut
    run({"+.1234546", "=CU"});
    EXPECT_EQ(num(Z152), 0.12345);  // and rounded once: .123455 would be .12346
}

TEST_F(Formula, QuantityHasTwoDecimalsAndNeedsTheFullPosting) {
    run({"+10", "/3", "=OG"});
    EXPECT_EQ(num(Z151), 3.33);
    run({"+50", "=OG"}, 0);
    EXPECT_EQ(num(Z151), 3.33);
    run({"+50", "=OG"}, 1);
    EXPECT_EQ(num(Z151), 3.33);
    run({"-50.5", "=OG"});
    EXPECT_EQ(num(Z151), -50.5);
}

TEST_F(Formula, AmountEndsAsQuantityTimesUnitValue) {
    scrivi(Z151, 2);
    run({"+500", "=IM", "+IM", "=TMP1", ".3", "=CU"});
    EXPECT_EQ(valore(formula_registers.TMP[2]), 500);  // IM was 2 x 0 while it was read
    EXPECT_EQ(num(Z153), 6);
}

TEST_F(Formula, RegistersHoldFourteenCharacters) {
    run({"+12.345678", "=MEM0", "=TMP9", ".-0.25", "=MEM5"});
    EXPECT_EQ(formula_registers.MEM[1], "00000012.34568");
    EXPECT_EQ(formula_registers.TMP[10], "00000012.34568");
    EXPECT_EQ(formula_registers.MEM[6], "-0000000.25000");
    run({"+123456789", "=TMP1"});  // 15 characters: the top digit is lost
    EXPECT_EQ(formula_registers.TMP[2], "23456789.00000");
}

TEST_F(Formula, RegistersAreStoredWhateverTheFlag) {
    run({"+7", "=MEM2", "=TMP2"}, 0);
    EXPECT_EQ(valore(formula_registers.MEM[3]), 7);
    EXPECT_EQ(valore(formula_registers.TMP[3]), 7);
}

TEST_F(Formula, ARegisterServesALaterItem) {
    run({"+7", "=MEM2"});
    run({"+MEM2", "*2", "=CU"});
    EXPECT_EQ(num(Z152), 14);
}

TEST_F(Formula, FieldsOfEmployeeAndCompanyAreStoredByName) {
    run({"+12.345", "=Q100", "=T044", "=P208ABC"});
    EXPECT_EQ(num(Q100), 12.34);  // cut to the cents of the field, not rounded
    EXPECT_EQ(num(T044), 12.34);
    EXPECT_EQ(num(P208), 12.345);
    run({"+1", "=Q100"}, 1);  // any flag but 0
    EXPECT_EQ(num(Q100), 1);
}

TEST_F(Formula, WithoutTheFlagNoFieldOfTheEmployeeChanges) {
    scrivi(Z026, 1);
    scrivi(Z151, 1);
    const std::string employee = area(Area::DIPX);
    const std::string company = area(Area::DITX);
    EXPECT_EQ(result({"+12", "=P210", "=Q101", "=T044", "=CU"}, 0), 12);  // the accumulator stays
    EXPECT_EQ(area(Area::DIPX), employee);
    EXPECT_EQ(area(Area::DITX), company);
    EXPECT_EQ(num(Z153), 12);
}

TEST_F(Formula, ANegativeResultStoredInAFieldLeavesItsMinusAmongTheDigits) {
    const auto characters = [](const Descriptor& field) {
        return area(Area::DIPX)
            .substr(static_cast<std::size_t>(field.offset) - 1,
                    static_cast<std::size_t>(field.length));
    };
    // "00000-12.34000" in eight characters with two decimals, and "000-1234.00000".
    run({"-12.34", "=P023"});
    EXPECT_EQ(characters(P023), "000-1234");
    EXPECT_EQ(num(P023), -12.34);
    run({"-1234", "=P023"});
    EXPECT_EQ(characters(P023), "0-123400");
    EXPECT_EQ(num(P023), -1234);
    // "00000-12.50000" in a field of two decimals: "00000-1250". The field reads -12.50; a formula,
    // which takes the characters as they stand, reads "00000-12.50" and stops at the minus.
    run({"-12.5", "=Q100", ".Q100", "=CU"});
    EXPECT_EQ(num(Q100), -12.5);
    EXPECT_EQ(num(Z152), 0);
}

TEST_F(Formula, YearlyTablesAreNoTarget) {
    const std::string tables = area(Area::FISX);
    window->expect_box("CAMPO NON DECIFRABILE  F020");
    run({"+1", "=F020"});
    EXPECT_EQ(area(Area::FISX), tables);
}

TEST_F(Formula, AnUnknownTargetShowsItsMessageAndTheFormulaGoesOn) {
    window->expect_box("CAMPO NON DECIFRABILE  XYZ");
    run({"+1", "=XYZ", "+1", "=CU"});
    ASSERT_EQ(window->boxes.size(), 1U);
    EXPECT_EQ(window->boxes.front().text, "CAMPO NON DECIFRABILE  XYZ");
    EXPECT_EQ(num(Z152), 2);
    // CU, OG and IM are targets only as whole words.
    for (const char* target : {"CUX", "OGGI", "IMP", "", "123"}) {
        window->expect_box(std::string("CAMPO NON DECIFRABILE  ") + target);
        run({"+1", std::string("=") + target}, 0);
    }
}

TEST_F(Formula, ATargetFieldThatDoesNotExistShowsItsMessage) {
    window->expect_box("ERRORE REPOSITORY: nome inesistente P999 0");
    run({"+1", "=P999", "=CU"});
    EXPECT_EQ(num(Z152), 1);
}

TEST_F(Formula, TargetsAreTrimmed) {
    run({"+3", "=  CU", "=  OG", "=  Q100"});
    EXPECT_EQ(num(Z152), 3);
    EXPECT_EQ(num(Z151), 3);
    EXPECT_EQ(num(Q100), 3);
}

// ---- The walk over the cells ----

TEST_F(Formula, AHundredCellsWithoutEndAreAllEvaluated) {
    std::string formula;
    for (int i = 0; i < 98; ++i) {
        formula += a_sinistra("+1", 11);
    }
    formula += a_sinistra("=CU", 11) + a_sinistra("=Q100", 11);
    area(Area::FOTX).replace(256, 1100, formula);
    DECFORM(-1);
    EXPECT_EQ(num(Z152), 98);
    EXPECT_EQ(num(Q100), 98);
}

TEST_F(Formula, TheFirstCellIsAlwaysEvaluated) {
    run({".", "+5", "=CU"});
    EXPECT_EQ(num(Z152), 5);
}

TEST_F(Formula, ACellWithAPointAloneEndsTheFormula) {
    run({"+5", "=CU", ".", "+7", "=CU"});
    EXPECT_EQ(num(Z152), 5);
    run({"+5", "=CU", ".0", "+7", "=CU"});  // a point with an operand goes on
    EXPECT_EQ(num(Z152), 7);
}

TEST_F(Formula, TheItemsFormulaStays) {
    set({"+5", "-1", ".2", "=CU"});
    const std::string before = area(Area::FOTX).substr(256, 1100);
    DECFORM(-1);
    EXPECT_EQ(area(Area::FOTX).substr(256, 1100), before);
}

TEST_F(Formula, TheNameIsTraced) {
    MXLIBRERIA::trace_ring = {};
    run({"+1"});
    EXPECT_EQ(MXLIBRERIA::trace_ring.slots[1], "DECFORM");
}

TEST_F(Formula, AnItemThatIsNotLoadedFails) {
    area(Area::FOTX).clear();
    EXPECT_THROW(DECFORM(-1), platform::Failure);
}

// ---- The amount ----

TEST_F(Formula, AmountIsQuantityTimesUnitValueInCents) {
    scrivi(Z151, 26);
    scrivi(Z152, 70.51234);
    run({"."});
    EXPECT_EQ(num(Z153), 1833.32);  // 1833.32084
    scrivi(Z151, -2.5);
    run({"."});
    EXPECT_EQ(num(Z153), -176.28);  // -176.28085
    EXPECT_EQ(area(Area::FOTX).substr(1382, 13), "-000000017628");
}

TEST_F(Formula, AmountInWholeUnits) {
    scrivi(Z029, 1);
    scrivi(Z151, 1);
    scrivi(Z152, 10.4);
    run({"."});
    EXPECT_EQ(num(Z153), 10);
    scrivi(Z152, 10.5);
    run({"."});
    EXPECT_EQ(num(Z153), 11);
    scrivi(Z152, -10.6);
    run({"."});
    EXPECT_EQ(num(Z153), -11);  // the whole part of -10.1
    scrivi(Z029, 2);
    run({"."});
    EXPECT_EQ(num(Z153), -10.6);
}

TEST_F(Formula, AmountsOfMarkedItemsAddUpInQ100) {
    scrivi(Z026, 1);
    scrivi(Z151, 3);
    scrivi(Z152, 7.12345);
    scrivi(Q100, 100);
    run({"."});
    EXPECT_EQ(num(Q100), 121.37);  // 100 + 21.37035
    run({"."}, 1);
    EXPECT_EQ(num(Q100), 142.74);
    scrivi(Z152, -70);
    run({"."});
    EXPECT_EQ(num(Q100), -67.26);  // 142.74 - 210
    scrivi(Z026, 0);
    run({"."});
    EXPECT_EQ(num(Q100), -67.26);
}

TEST_F(Formula, AmountsOfMarkedItemsAddUpInWholeUnitsToo) {
    scrivi(Z026, 1);
    scrivi(Z029, 1);
    scrivi(Z151, 1);
    scrivi(Z152, 10.5);
    run({"."});
    EXPECT_EQ(num(Q100), 11);
}

}  // namespace
