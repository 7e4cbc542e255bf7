#include "installation/description.h"

#include <gtest/gtest.h>

#include "installation/demo.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXREPOSITORY;
using nzutil::Document;
using nzutil::Installation;

class DescriptionTest : public ::testing::Test {
  protected:
    /// Applies a document, with its employees, over the installation.
    void apply(const std::string& text) {
        const Document document("prova.yaml", text);
        nzutil::Description description = nzutil::read_description(document);
        if (const YAML::Node employees = document.root()["dipendente"]) {
            document.each_of(employees, [&](const YAML::Node& element) {
                description.employees.push_back(nzutil::read_employee(document, element, {}));
            });
        }
        nzutil::apply(made, description, nzutil::model_employee(made));
    }
    [[nodiscard]] double number(int file, int record, const Descriptor& field,
                                int occurrence = 0) const {
        return LEGGICAMPONUM(field, static_cast<std::int16_t>(occurrence),
                             made.read(file, record).value());
    }

    test_support::TempDirectory directory;
    Installation made = Installation::create(directory.file("made"));
};

TEST_F(DescriptionTest, CompanyTakesTheNumberOfItsCode) {
    apply("ditta: {T001: 3, T067: 2}\nsettore: {S003: 9.19}\n");
    EXPECT_EQ(number(nzutil::kCompanies, 3, T001), 3);
    EXPECT_EQ(number(nzutil::kSectors, 2, S003), 9.19);
}

TEST_F(DescriptionTest, FormulaEndsWithThePointAndReplacesAllCells) {
    apply("voci: {5: {Z011: 0, formula: [\".P208\", \"*26\", \"=CU\"]}}\n");
    apply("voci: {5: {formula: [\".1\"]}}\n");
    const std::string item = made.read(nzutil::kPayItems, 5).value();
    EXPECT_EQ(LEGGICAMPO(Z051, 0, item), ".1         ");
    EXPECT_EQ(LEGGICAMPO(dopo(Z051, 1), 0, item), ".          ");
    EXPECT_EQ(LEGGICAMPO(dopo(Z051, 2), 0, item), "           ");
}

TEST_F(DescriptionTest, FieldsOfAGradeStandInTheirGroup) {
    apply("contratto: {record: 2, livello: 3, campi: {G002: PROVA, G022: 1500}}\n");
    EXPECT_EQ(number(nzutil::kContracts, 2, G022, 3), 1500);
    EXPECT_EQ(number(nzutil::kContracts, 2, G022, 1), 0);
    EXPECT_EQ(number(nzutil::kContracts, 1, G500), 99);  // left out before it
}

TEST_F(DescriptionTest, EmployeeWhoNamesNoContractIsUnderTheOneOfTheDocument) {
    apply(
        "contratto: {record: 2, livello: 3, campi: {G022: 1500}}\n"
        "dipendente: [{campi: {P002: A}}, {campi: {P331: 0}}]\n");
    EXPECT_EQ(number(nzutil::kEmployees, 1, P331), 2);
    EXPECT_EQ(number(nzutil::kEmployees, 1, P332), 3);
    EXPECT_EQ(number(nzutil::kEmployees, 2, P331), 0);
}

TEST_F(DescriptionTest, SlipLinesHoldHundredthsAndHundredThousandths) {
    apply(
        "voci: {7: {Z016: 0}, 8: {Z016: 7}}\n"
        "dipendente:\n"
        "  righe:\n"
        "    - {voce: 7, quantita: 26.5, valore: 70.12345}\n"
        "    - {voce: 7, quantita: -2}\n"
        "    - {voce: 8, quantita: 20052024}\n");
    const std::string employee = made.read(nzutil::kEmployees, 1).value();
    EXPECT_EQ(LEGGICAMPO(Q401, 0, employee), " 00700000000026500000007012345     ");
    EXPECT_EQ(LEGGICAMPO(dopo(Q401, 1), 0, employee), " 007-0000000002000000000000000     ");
    EXPECT_EQ(LEGGICAMPO(dopo(Q401, 2), 0, employee), " 00800000200520240000000000000     ");
    EXPECT_EQ(LEGGICAMPO(dopo(Q401, 3), 0, employee).substr(0, 4), " 999");
}

TEST_F(DescriptionTest, BracketsFillTenRecordsWithTheLastOne) {
    apply("scaglioni: [[28000, 23], [50000, 35], [999999.99, 43.5]]\n");
    EXPECT_EQ(made.record_count(nzutil::kTaxBrackets), 10);
    EXPECT_EQ(made.read(nzutil::kTaxBrackets, 1).value().substr(0, 12), "028000.00230");
    EXPECT_EQ(made.read(nzutil::kTaxBrackets, 10).value().substr(0, 12), "999999.99435");
}

/// Message of the error that applying the text ends in.
std::string error_of(const std::string& text) {
    try {
        const Document document("prova.yaml", text);
        static_cast<void>(nzutil::read_description(document));
        if (const YAML::Node employee = document.root()["dipendente"]) {
            static_cast<void>(nzutil::read_employee(document, employee, {}));
        }
    } catch (const nzutil::ToolError& error) {
        return error.what();
    }
    return "nessun errore";
}

TEST(ImpossibleData, BracketTableEndsWithTheBracketThatHasNoLimit) {
    EXPECT_TRUE(
        error_of("scaglioni:\n  [[28000, 23], [50000, 35]]\n").starts_with("prova.yaml:2: "));
    EXPECT_TRUE(error_of("scaglioni: []\n").starts_with("prova.yaml:1: "));
    EXPECT_TRUE(error_of("\nscaglioni_tfr: [[28000, 23]]\n").starts_with("prova.yaml:2: "));
    EXPECT_TRUE(error_of("regioni:\n  \"05\": [[15000, 1.73]]\n").starts_with("prova.yaml:2: "));
}

TEST(ImpossibleData, BracketsRiseAndHaveARate) {
    EXPECT_NE(error_of("scaglioni: [[28000, 23], [28000, 35], [999999.99, 43]]\n").find("28000"),
              std::string::npos);
    EXPECT_NE(error_of("scaglioni: [[0, 23], [999999.99, 43]]\n").find("crescenti"),
              std::string::npos);
    EXPECT_NE(error_of("scaglioni: [[999999.99, 100]]\n").find("aliquota"), std::string::npos);
    EXPECT_NE(error_of("scaglioni: [[999999.99, -1]]\n").find("aliquota"), std::string::npos);
    // Tenths of a percent is all that the table holds; a region's holds hundredths.
    EXPECT_NE(error_of("scaglioni: [[999999.99, 23.45]]\n").find("decimali"), std::string::npos);
    EXPECT_NE(error_of("scaglioni: [[1,2], [2,2], [3,2], [4,2], [5,2], [6,2], [7,2], [8,2], [9,2], "
                       "[10,2], [999999.99, 3]]\n")
                  .find("10"),
              std::string::npos);
}

TEST(ImpossibleData, LeavingDateStandsInTheQuantityOfItsItem) {
    const auto line = [](const std::string& quantity) {
        return error_of("dipendente:\n  righe:\n    - {voce: 320, quantita: " + quantity + "}\n");
    };
    EXPECT_TRUE(line("15132024").starts_with("prova.yaml:3: "));
    EXPECT_TRUE(line("31042024").starts_with("prova.yaml:3: "));
    EXPECT_EQ(line("30042024"), "nessun errore");
    EXPECT_EQ(line("5042024"), "nessun errore");  // 05042024
}

TEST(ImpossibleData, PeriodIsADayAndAKind) {
    EXPECT_TRUE(error_of("periodo: {data: \"32052024\"}\n").starts_with("prova.yaml:1: "));
    EXPECT_TRUE(error_of("periodo: {data: \"29022023\"}\n").starts_with("prova.yaml:1: "));
    EXPECT_TRUE(
        error_of("periodo:\n  data: \"31052024\"\n  tipo: x\n").starts_with("prova.yaml:3: "));
}

TEST_F(DescriptionTest, OccurrenceBeyondTheGroupIsRefused) {
    EXPECT_THROW(apply("dipendente: {mesi: {J001: {13: 1}}}\n"), nzutil::ToolError);
}

TEST_F(DescriptionTest, EveryEmployeeOfTheDemoHasACompanySectorAndLines) {
    const Installation demo = nzutil::make_demo_installation(directory.file("demo"));
    const std::vector<std::pair<int, int>> selection = demo.read_selection();
    EXPECT_GE(selection.size(), 12U);
    for (const auto& [company, employee] : selection) {
        const std::string record = demo.read(nzutil::kEmployees, employee).value();
        EXPECT_NE(LEGGICAMPO(P001, 0, record).substr(0, 3), "   ");
        EXPECT_NE(LEGGICAMPO(Q401, 0, record).substr(1, 3), "999") << employee;
        EXPECT_TRUE(demo.read(nzutil::kCompanies, company).has_value());
        EXPECT_TRUE(demo.read(nzutil::kTwelveMonths, employee).has_value());
    }
}

}  // namespace
