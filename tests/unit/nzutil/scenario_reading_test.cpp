#include <gtest/gtest.h>

#include "nzutil/scenario.h"

namespace {

using nzutil::Document;
using nzutil::read_scenario;
using nzutil::Scenario;

Scenario read(const std::string& text) {
    return read_scenario(Document("caso.yaml", text));
}

/// Message of the error that reading the text ends in.
std::string error_of(const std::string& text) {
    try {
        static_cast<void>(read(text));
    } catch (const nzutil::ToolError& error) {
        return error.what();
    }
    return "nessun errore";
}

const std::string kHead = "titolo: prova\nperiodo: {data: \"31052024\", tipo: \"4\"}\n";

TEST(ScenarioReading, TitleAndPeriodAreEnough) {
    const Scenario scenario = read(kHead);
    EXPECT_EQ(scenario.title, "prova");
    ASSERT_EQ(scenario.runs.size(), 1U);
    EXPECT_EQ(scenario.runs[0].period.date, "31052024");
    EXPECT_EQ(scenario.runs[0].period.kind, '4');
    ASSERT_EQ(scenario.description.employees.size(), 1U);
    EXPECT_EQ(scenario.description.employees[0].record, 1);
}

TEST(ScenarioReading, ErrorsNameFileAndLine) {
    EXPECT_TRUE(error_of(kHead + "fissi: {P017: 1}\n").starts_with("caso.yaml:3: "));
    EXPECT_TRUE(error_of(kHead + "fissi: {F999: 1}\n").starts_with("caso.yaml:3: "));
    EXPECT_TRUE(error_of(kHead + "\naltro: 1\n").starts_with("caso.yaml:4: "));
    EXPECT_TRUE(error_of(kHead + "fissi:\n  F433: molti\n").starts_with("caso.yaml:4: "));
    EXPECT_TRUE(error_of(kHead + "fissi: {F433: [1, 2\n").starts_with("caso.yaml:"));
    EXPECT_TRUE(
        error_of("titolo: prova\nperiodo: {data: \"3105\"}\n").starts_with("caso.yaml:2: "));
    EXPECT_TRUE(error_of("- 1\n").starts_with("caso.yaml:1: "));
}

TEST(ScenarioReading, ErrorSaysWhatWasExpected) {
    EXPECT_NE(error_of("titolo: prova\n").find("periodo"), std::string::npos);
    EXPECT_NE(error_of(kHead + "fissi: {P017: 1}\n").find("FISX$"), std::string::npos);
    EXPECT_NE(error_of(kHead + "scaglioni: [28000, 23]\n").find("coppie"), std::string::npos);
    EXPECT_NE(error_of(kHead + "dipendente: {righe: [{quantita: 1}]}\n").find("voce"),
              std::string::npos);
    EXPECT_NE(error_of(kHead + "voci: {1: {formula: [\"+123456789012\"]}}\n").find("cella"),
              std::string::npos);
    EXPECT_NE(error_of(kHead + "dipendente: {righe: [{voce: 1, quantita: 1.234}]}\n").find("2"),
              std::string::npos);
}

TEST(ScenarioReading, KeyGivenTwiceIsAnError) {
    EXPECT_TRUE(error_of(kHead + "attesi:\n  P240: 1\n  P240: 2\n").starts_with("caso.yaml:5: "));
}

TEST(ScenarioReading, SeveralEmployeesHaveTheirOwnExpectations) {
    const Scenario scenario = read(kHead +
                                   "dipendente:\n"
                                   "  - {campi: {P002: ROSSI}, attesi: {P240: 1}}\n"
                                   "  - {record: 5, campi: {P002: VERDI}, attesi: {P240: 2}}\n");
    EXPECT_EQ(scenario.description.employees[1].record, 5);
    EXPECT_EQ(scenario.runs[0].expected.at(1).fields.at(0).value, "1");
    EXPECT_EQ(scenario.runs[0].expected.at(5).fields.at(0).value, "2");
    EXPECT_TRUE(
        error_of(kHead + "dipendente: [{record: 1}, {record: 1}]\n").starts_with("caso.yaml:3: "));
    EXPECT_TRUE(error_of(kHead + "dipendente: [{record: 1}, {record: 2}]\nattesi: {P240: 1}\n")
                    .starts_with("caso.yaml:"));
}

TEST(ScenarioReading, FieldOfAGroupNamesItsOccurrence) {
    const Scenario scenario = read(kHead + "mesi: {J001: {5: 10}}\n");
    ASSERT_EQ(scenario.description.months.size(), 1U);
    EXPECT_EQ(scenario.description.months[0].occurrence, 5);
    EXPECT_EQ(scenario.description.months[0].value, "10");
}

TEST(ScenarioReading, FurtherRunsChangeTheirEmployee) {
    const Scenario scenario = read(kHead +
                                   "corse:\n"
                                   "  - periodo: {data: \"30062024\", tipo: \"4\"}\n"
                                   "    dipendente: {campi: {P058: 2000}}\n"
                                   "    attesi: {P240: 2000}\n");
    ASSERT_EQ(scenario.runs.size(), 2U);
    EXPECT_EQ(scenario.runs[1].period.date, "30062024");
    EXPECT_EQ(scenario.runs[1].changes.at(1).fields.at(0).value, "2000");
    EXPECT_EQ(scenario.runs[1].expected.at(1).fields.at(0).value, "2000");
}

TEST(ScenarioReading, FurtherRunsChangeEveryTable) {
    const Scenario scenario = read(kHead +
                                   "corse:\n"
                                   "  - periodo: {data: \"31012025\", tipo: \"4\"}\n"
                                   "    anno: 2025\n"
                                   "    fissi: {F433: 1}\n"
                                   "    ditta: {T188: 1}\n"
                                   "    settore: {S003: 1}\n"
                                   "    contratto: {record: 1, livello: 1, campi: {G022: 1}}\n"
                                   "    voci: {4: {Z011: 1}}\n"
                                   "    fondo: {record: 1, campi: {R004: 1}}\n"
                                   "    scaglioni: [[999999.99, 1]]\n"
                                   "    scaglioni_tfr: [[999999.99, 1]]\n"
                                   "    regioni: {\"01\": [[999999.99, 1]]}\n"
                                   "    mesi: {J001: {1: 1}}\n"
                                   "    tabelle: {232: [\"A\"]}\n"
                                   "    utente: {nome: \"A\"}\n");
    const nzutil::Description& tables = scenario.runs.at(1).tables;
    EXPECT_EQ(tables.year, 2025);
    EXPECT_EQ(tables.fixed.size(), 1U);
    EXPECT_EQ(tables.companies.size(), 1U);
    EXPECT_EQ(tables.sectors.size(), 1U);
    EXPECT_EQ(tables.contracts.size(), 1U);
    EXPECT_EQ(tables.items.size(), 1U);
    EXPECT_EQ(tables.funds.size(), 1U);
    EXPECT_EQ(tables.brackets->size(), 1U);
    EXPECT_EQ(tables.severance_brackets->size(), 1U);
    EXPECT_EQ(tables.regions->size(), 1U);
    EXPECT_EQ(tables.months.size(), 1U);
    EXPECT_EQ(tables.tables.size(), 1U);
    EXPECT_EQ(tables.installation_name, "A");
}

TEST(ScenarioReading, SumsTakeNumbersAndStandInTheFirstRun) {
    EXPECT_EQ(read(kHead + "attesi_somma: {Q173: 10}\n").runs[0].expected.at(1).sums.size(), 1U);
    EXPECT_TRUE(error_of(kHead + "attesi_somma: {P002: ROSSI}\n").starts_with("caso.yaml:3: "));
    EXPECT_TRUE(error_of(kHead + "corse:\n  - periodo: {data: \"30062024\"}\n"
                                 "    attesi_somma: {Q173: 10}\n")
                    .starts_with("caso.yaml:5: "));
}

TEST(ScenarioReading, DamageNeedsAPlaceAndOneKind) {
    EXPECT_EQ(read(kHead + "danni: [{archivio: 18, lunghezza: 30}]\n").damages.at(0).length, 30);
    EXPECT_NE(error_of(kHead + "danni: [{lunghezza: 30}]\n"), "nessun errore");
    EXPECT_NE(error_of(kHead + "danni: [{archivio: 18}]\n"), "nessun errore");
    EXPECT_NE(error_of(kHead + "danni: [{archivio: 18, elimina: si, lunghezza: 3}]\n"),
              "nessun errore");
}

TEST(ScenarioReading, IdentityIsSwitchedOffOnlyWithAReason) {
    EXPECT_EQ(read(kHead + "senza_identita: {gross: \"anticipo\"}\n").without_identity.size(), 1U);
    EXPECT_NE(error_of(kHead + "senza_identita: {gross: \"\"}\n"), "nessun errore");
    EXPECT_NE(error_of(kHead + "senza_identita: {lordo: \"perché\"}\n"), "nessun errore");
}

TEST(ScenarioReading, TextOutsideTheCodePageIsRefused) {
    EXPECT_TRUE(
        error_of(kHead + "dipendente:\n  campi: {P002: \"中村\"}\n").starts_with("caso.yaml:4: "));
    EXPECT_EQ(read(kHead + "dipendente: {campi: {P002: \"NICCOLÒ\"}}\n")
                  .description.employees[0]
                  .fields[0]
                  .value,
              "NICCOL\xD2");
}

}  // namespace
