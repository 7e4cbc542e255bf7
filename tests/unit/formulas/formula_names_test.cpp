#include "formulas/formula_names.h"

#include <gtest/gtest.h>

#include <vector>

#include "records/dictionary/FOTX.h"
#include "tests/support/dictionary_archive.h"

namespace {

using MXREPOSITORY::name_beyond_dictionary;
using test_support::dictionary_record;

/// A dictionary of P that ends with P100; those of the other letters are whole.
class FormulaNames : public testing::Test {
  protected:
    FormulaNames() { archive.add(11, dictionary_record("P100", 1, 10, '2')); }

    /// An item with these cells; the cell after the last ends the formula.
    static std::string item(const std::vector<std::string>& cells) {
        std::string record(1500, ' ');
        std::size_t position = static_cast<std::size_t>(MXREPOSITORY::Z051.offset);
        for (const std::string& cell : cells) {
            test_support::put(record, position, cell);
            position += 11;
        }
        test_support::put(record, position, ".");
        return record;
    }
    static std::string beyond(const std::vector<std::string>& cells,
                              std::string_view letters = "PQTF") {
        return name_beyond_dictionary(item(cells), letters);
    }
    test_support::DictionaryArchive archive;
};

TEST_F(FormulaNames, FieldsOfTheFileAreThere) {
    EXPECT_EQ(beyond({".P100", "*Q164", "%F433", "=T001", "=CU"}), "");
}

TEST_F(FormulaNames, AFieldBehindTheEndIsNamed) {
    EXPECT_EQ(beyond({".P100", "+P209", "=CU"}), "P209");
    EXPECT_EQ(beyond({".1", "=PB05"}), "PB05");
}

TEST_F(FormulaNames, RegistersNumbersAndUnknownNamesAreNone) {
    EXPECT_EQ(beyond({".MEM1", "+TMP2", "*26", "=IM", "=TMP0"}), "");
    EXPECT_EQ(beyond({".PZZZ", "=XYZ"}), "");
    EXPECT_EQ(beyond({".T205"}), "");  // read as a number: no field
}

TEST_F(FormulaNames, LettersThatAreNotLookedAtAreNone) {
    EXPECT_EQ(beyond({".P209"}, "QTF"), "");
}

TEST_F(FormulaNames, CellsBehindTheEndOfTheFormulaDoNotCount) {
    EXPECT_EQ(beyond({".1", ".", ".P209"}), "");
}

}  // namespace
