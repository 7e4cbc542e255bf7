#include "history/stored_history.h"

#include <gtest/gtest.h>

#include "files/file_numbers.h"
#include "files/isam.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/support/logical_files.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace ModElaboraStorico {
namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXREPOSITORY;

constexpr std::size_t kRecord = 2500;
constexpr double kIndex = 389;
constexpr double kData = 387;

class History : public ::testing::Test {
  protected:
    History() : window(test_support::ScriptedWindow::install()) {
        test_support::fill_areas();
        files.define(kHistoryColumns, 80);
        files.define(kHistory, kRecord);
        files.define(kHistoryIndex, (20 + 7) * 128);
        files.define(kSemaphore, 2000);
        MXLIBRERIA::ISAM(kIndex, "", MXLIBRERIA::kIsamEmpty, 0);
        scrivi(P001, "0010000001");
        scrivi(P002, "D'AMICO");
        scrivi(P013, "15032018");
        scrivi(P240, 1908.75);
        scrivi(P090, 14);
    }

    /// A line of the first layout.
    static std::string column(const std::string& code, const std::string& label,
                              const std::string& field, char type, int length = 10) {
        std::string line(80, ' ');
        test_support::put(line, 4, label);
        test_support::put(line, 30, (length < 10 ? "0" : "") + std::to_string(length));
        test_support::put(line, 43, field);
        test_support::put(line, 47, std::string(1, type));
        test_support::put(line, 69, code);
        return line;
    }
    void columns(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            files.put(kHistoryColumns, ++column_count_, line);
        }
    }
    static void calculate() {
        PREPARASTORICO();
        ELABORASTORICO();
    }
    /// What stands under a key, and behind it; empty where there is none.
    [[nodiscard]] std::string stored(const std::string& key) const {
        const double number = MXLIBRERIA::ISAM(kIndex, key, MXLIBRERIA::kIsamSearch, 0);
        return number < 1 ? ""
                          : rifila_destra(
                                files.get(kHistory, static_cast<std::size_t>(number)).substr(22));
    }
    [[nodiscard]] std::string definition() const { return stored(std::string(20, '0')); }
    [[nodiscard]] std::string row() const { return stored("0010000001          "); }

    test_support::ScriptedWindow& window;
    test_support::LogicalFiles files;

  private:
    std::size_t column_count_ = 0;
};

TEST_F(History, WithoutALayoutNothingIsKept) {
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(files.get(kHistory, 1), "");
}

TEST_F(History, WithoutAnIndexNothingIsKept) {
    columns({column("V001", "CODICE", "", 'A')});
    files.define(kHistoryIndex, (20 + 7) * 128);
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(files.get(kHistory, 1), "");
}

TEST_F(History, DefinesAColumnForEachLineByItsType) {
    columns({column("V001", "CODICE DIP.", "", 'A', 10), column("V005", "COGNOME", "P002", 'A', 30),
             column("V006", "Data assunz. (1)", "P013", 'D', 8),
             column("V007", "MENSILITA'", "P090", 'N', 2),
             column("V008", "IMPONIBILE", "P240", '2'), column("V009", "CAP", "P011", '0', 5),
             column("V016", "NOTE", "P002", 'A', 30)});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(definition(),
              "CREATE TABLE Tasd (V001CODICEDIP TEXT (10), V005COGNOME TEXT (30), "
              "V006Dataassunz1 DATETIME, V007MENSILITA LONG, V008IMPONIBILE DOUBLE, "
              "V009CAP LONG, V016NOTE TEXT, PRIMARY KEY (V001CODICEDIP))");
}

TEST_F(History, KeepsTheEmployeesValues) {
    columns({column("V001", "CODICE", "", 'A', 10), column("V005", "NOME", "P002", 'A', 30),
             column("V006", "ASSUNZIONE", "P013", 'D', 8), column("V007", "MENSILITA", "P090", 'N'),
             column("V008", "IMPONIBILE", "P240", '2')});
    PREPARAELABSTORICO();
    calculate();
    // The text in the length of its field, its apostrophe as it is.
    EXPECT_EQ(row(), "'0010000001', 'D'AMICO                       ', #03/15/18#, " + testo(P090) +
                         ", 00001908.75");
    EXPECT_EQ(files.get(kHistory, 2).substr(0, 22), "  0010000001          ");
    EXPECT_EQ(files.get(kHistory, 1).size(), kRecord);
}

TEST_F(History, TheFourKeyColumnsNameTheEmployee) {
    columns({column("V001", "A", "P002", 'A'), column("V002", "B", "P003", 'A'),
             column("V003", "C", "", 'A'), column("V004", "D", "", 'A'),
             column("V005", "E", "P001", 'A')});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(row(), "'0010000001', '0010000001', '0010000001', '0010000001', '0010000001'");
    EXPECT_NE(definition().find("PRIMARY KEY (V001A, V002B, V003C, V004D))"), std::string::npos);
}

TEST_F(History, ACodeThatIsMissingLeavesTheColumnEmpty) {
    columns({column("V005", "A", "P999", 'A'), column("V006", "B", "Q001", 'N'),
             column("V007", "C", "ZZZZ", 'D'), column("V008", "D", "P001", 'A')});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(row(), "'', , #//#, '0010000001'");
}

TEST_F(History, ADateOfZerosIsADate) {
    scrivi(P013, "00000000");
    columns({column("V006", "ASSUNZIONE", "P013", 'D', 8)});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(row(), "#00/00/00#");
}

TEST_F(History, ABlankNumberIsWrittenWithZeros) {
    area(Area::DIPX).replace(P240.offset - 1U, P240.length, std::string(P240.length, ' '));
    columns({column("V008", "IMPONIBILE", "P240", '2')});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(row(), "00000000.00");
    scrivi(P240, -12.5);
    calculate();
    EXPECT_EQ(valore(row()), -12.5);
}

TEST_F(History, FindsFieldsInAnUnsortedLayout) {
    using test_support::dictionary_record;
    files.define(kEmployeeFields, 80);
    files.put(kEmployeeFields, 1, dictionary_record("P500", 31, 10, 'A'));
    files.put(kEmployeeFields, 2, dictionary_record("P003", 21, 5, 'A'));
    files.put(kEmployeeFields, 3,
              dictionary_record("PA01", 0, 5, 'A'));  // without an offset: no line
    files.put(kEmployeeFields, 4, dictionary_record("P240", 11, 7, '2'));
    files.put(kEmployeeFields, 5, dictionary_record("P002", 1, 3, 'A'));
    columns({column("V005", "A", "P002", 'A')});
    PREPARAELABSTORICO();
    EXPECT_EQ(stored_history.fields.size(), 4U);
    for (const char* code : {"P002", "P003", "P240", "P500"}) {
        EXPECT_EQ(ritaglia(CERCACAMPO(code), 69, 4), code);
    }
    EXPECT_EQ(CERCACAMPO("PA01"), "");
    EXPECT_EQ(CERCACAMPO("P001"), "");
    EXPECT_EQ(CERCACAMPO("P999"), "");
    EXPECT_EQ(CERCACAMPO(""), "");
}

TEST_F(History, LengthAndPlaceAreThoseOfTheSecondLayout) {
    // The first says how long the column is, the second where and how long the field.
    columns({column("V005", "COGNOME", "P002", 'A', 5)});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(definition(), "CREATE TABLE Tasd (V005COGNOME TEXT (5))");
    EXPECT_EQ(row(), "'D'AMICO                       '");
}

TEST_F(History, DamagedLinesNameNoColumn) {
    std::string damaged_length = column("V007", "C", "P001", 'A');
    damaged_length.replace(29, 2, "x?");
    columns({std::string(80, ' '), column("X001", "A", "P002", 'A'),
             column("V0A1", "B", "P002", 'A'), column("V00", "B", "P002", 'A'), damaged_length,
             std::string(80, '\xFF'), column("V008", "D", "P001", '?')});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(definition(), "CREATE TABLE Tasd (V007C TEXT (0), V008D TEXT (10))");
    EXPECT_EQ(row(), "'0010000001', '0010000001'");
}

TEST_F(History, AFieldBeyondTheRecordIsEmpty) {
    files.define(kEmployeeFields, 80);
    files.put(kEmployeeFields, 1, test_support::dictionary_record("P002", 99999, 30, 'A'));
    columns({column("V005", "A", "P002", 'A'), column("V006", "B", "P002", 'N')});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(row_of_values(), "'', ");
}

TEST_F(History, TwoHundredAndTwentyThreeColumnsAreCutToTheRecord) {
    for (int number = 1; number <= 223; ++number) {
        const std::string digits = std::to_string(1000 + number).substr(1);
        columns({column("V" + digits, "COLONNA", "P002", 'A', 30)});
    }
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(files.get(kHistory, 1).size(), kRecord);
    EXPECT_EQ(definition().size(), kRecord - 22);
    EXPECT_EQ(definition(), table_definition().substr(0, kRecord - 22));
    EXPECT_EQ(files.get(kHistory, 2).substr(22), row_of_values().substr(0, kRecord - 22));
    EXPECT_EQ(files.get(kHistory, 3), "");
}

TEST_F(History, AnEmployeeHasOneRow) {
    columns({column("V008", "IMPONIBILE", "P240", '2')});
    PREPARAELABSTORICO();
    calculate();
    scrivi(P001, "0010000002");
    scrivi(P240, 2);
    calculate();
    EXPECT_EQ(row(), "00001908.75");
    EXPECT_EQ(stored("0010000002          "), "00000002.00");
    // The next run writes its rows in the place of the former ones, and the definition anew.
    scrivi(P001, "0010000001");
    scrivi(P240, 3);
    columns({column("V009", "MENSILITA", "P090", 'N')});
    PREPARAELABSTORICO();
    calculate();
    EXPECT_EQ(row(), "00000003.00, " + testo(P090));
    EXPECT_EQ(definition(), "CREATE TABLE Tasd (V008IMPONIBILE DOUBLE, V009MENSILITA LONG)");
    EXPECT_EQ(files.get(kHistory, 4), "");
}

}  // namespace
}  // namespace ModElaboraStorico
