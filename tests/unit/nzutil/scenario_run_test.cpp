// The runner says what differs: a scenario that cannot fail would prove nothing.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "nzutil/process.h"
#include "nzutil/scenario.h"
#include "tests/support/temp_directory.h"

namespace {

using nzutil::Difference;

class ScenarioRunTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::vector<Difference> run(const std::string& text) const {
        const std::string head = "titolo: prova\nperiodo: {data: \"31052024\", tipo: \"4\"}\n";
        return nzutil::run_scenario(
            nzutil::read_scenario(nzutil::Document("prova.yaml", head + text)),
            {VELMOR_PROGRAM, "", {}}, directory.path());
    }
    /// The only difference is at this place.
    static void expect_only(const std::vector<Difference>& found, const std::string& place,
                            const std::string& expected, const std::string& came) {
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].place, place);
        EXPECT_EQ(found[0].expected, expected);
        EXPECT_EQ(found[0].found, came);
    }

    test_support::TempDirectory directory;
};

TEST_F(ScenarioRunTest, NothingDiffersWhenAllIsAsExpected) {
    // 26 days of 1908.75 a month; to the unit of euro.
    EXPECT_TRUE(run("attesi: {P240: 1909, P002: ROSSI}\n").empty());
}

TEST_F(ScenarioRunTest, FieldIsNamedWithBothValues) {
    expect_only(run("attesi: {P240: 1910}\n"), "P240", "1910.00", "1909.00");
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run("attesi: {P002: VERDI}\n"), "P002", "VERDI", "ROSSI");
}

TEST_F(ScenarioRunTest, MeaningStandsBesideADifferingField) {
    const std::vector<Difference> found = run("attesi: {P240: 1910, P215: 30}\n");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(nzutil::in_words(found[0]),
              "    P240 (imponibile contributivo del mese): atteso 1910.00, trovato 1909.00");
    // May has 31 days.
    EXPECT_EQ(nzutil::in_words(found[1]),
              "    P215 (giorni di detrazione del mese): atteso 30, trovato 31");
    EXPECT_EQ(nzutil::in_words({"riga 1, valore", "1", "2"}),
              "    riga 1, valore: atteso 1, trovato 2");
}

TEST_F(ScenarioRunTest, NumbersCompareWithTheDecimalsOfTheField) {
    EXPECT_TRUE(run("attesi: {P240: 1909.001}\n").empty());
}

TEST_F(ScenarioRunTest, LineOfTheSlipIsNamed) {
    const std::vector<Difference> found =
        run("attesi_righe: {1: {quantita: 25, valore: 73.41346}}\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NE(found[0].place.find("quantita"), std::string::npos);
}

TEST_F(ScenarioRunTest, CertificateIsCompared) {
    const std::string with_one =
        "dipendente:\n"
        "  certificazione: {X050: 1000}\n"
        "  righe: [{voce: 2, quantita: 26}]\n";
    EXPECT_TRUE(run(with_one + "attesi_certificazione: {X050: 1000, X054: 0}\n").empty());
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run(with_one + "attesi_certificazione: {X050: 999}\n"), "X050", "999.00",
                "1000.00");
    std::filesystem::remove_all(directory.file("installazione"));
    EXPECT_EQ(run("attesi_certificazione: {X050: 1000}\n").size(), 1U);  // there is none
}

TEST_F(ScenarioRunTest, RecordsOfOtherArchivesAreCompared) {
    const std::string two = "tabelle: {387: [\"  UNO\", DUE]}\n";
    EXPECT_TRUE(run(two + "attesi_tabelle: {387: [\"  UNO\", DUE, \"\"]}\n").empty());
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run(two + "attesi_tabelle: {387: [\"  UNO\", TRE]}\n"), "archivio 387, record 2",
                "TRE", "DUE");
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run(two + "attesi_tabelle: {387: [\"  UNO\", DUE, TRE]}\n"),
                "archivio 387, record 3", "TRE", "niente");
}

TEST_F(ScenarioRunTest, ListLinesAreComparedOneByOneAndInNumber) {
    EXPECT_EQ(run("attesi_lista: []\n").size(), 1U);
    std::filesystem::remove_all(directory.file("installazione"));
    EXPECT_EQ(run("attesi_lista: [\"001-000-0001 ROSSI MARIA                             "
                  ":elaborato\", \"altro\"]\n")
                  .size(),
              1U);
}

TEST_F(ScenarioRunTest, BoxThatNobodyAnnouncedDiffers) {
    const std::string deleted = "dipendente: {campi: {P331: 50, P332: 1}}\n";
    EXPECT_EQ(run(deleted).size(), 1U);
    std::filesystem::remove_all(directory.file("installazione"));
    EXPECT_TRUE(run(deleted + "attesi_riquadri: [\"CODICE CONTRATTO NON TROVATO\"]\n").empty());
}

TEST_F(ScenarioRunTest, AnnouncedBoxThatDoesNotComeDiffers) {
    EXPECT_EQ(run("attesi_riquadri: [\"CODICE CONTRATTO NON TROVATO\"]\n").size(), 1U);
}

TEST_F(ScenarioRunTest, ExitStatusIsCompared) {
    const std::vector<Difference> found = run("uscita: 1\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].expected, "1");
    EXPECT_EQ(found[0].found, "0");
}

TEST_F(ScenarioRunTest, LaterRunFindsWhatTheFormerLeft) {
    EXPECT_TRUE(run("attesi: {Q171: 5}\n"
                    "corse:\n"
                    "  - periodo: {data: \"30062024\", tipo: \"4\"}\n"
                    "    attesi: {Q171: 6, Q001: 3818}\n")  // 1909 + 1909
                    .empty());
}

TEST_F(ScenarioRunTest, ToleranceIsAsWideAsItSays) {
    // P240 is 1909.00.
    EXPECT_TRUE(run("attesi: {P240: {valore: 1908.50, tolleranza: 0.50}}\n").empty());
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run("attesi: {P240: {valore: 1909.51, tolleranza: 0.50}}\n"), "P240",
                "1909.51 (tolleranza 0.50)", "1909.00");
}

const std::string kThreeRuns =
    "corse:\n"
    "  - periodo: {data: \"30062024\", tipo: \"4\"}\n"
    "    dipendente: {campi: {P058: 2000.00}}\n"
    // The third run finds June calculated and leaves the slip alone.
    "  - periodo: {data: \"30062024\", tipo: \"4\"}\n";

TEST_F(ScenarioRunTest, SumIsThatOfTheCalculatedSlips) {
    // 1908.75 and 2000.00 to the unit of euro: 1909 + 2000 = 3909.
    EXPECT_TRUE(run("attesi_somma: {P240: 3909}\n" + kThreeRuns).empty());
    std::filesystem::remove_all(directory.file("installazione"));
    EXPECT_TRUE(run("attesi_somma: {P240: {valore: 3910, tolleranza: 1}}\n" + kThreeRuns).empty());
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run("attesi_somma: {P240: 3910}\n" + kThreeRuns), "somma P240", "3910.00",
                "3909.00");
}

TEST_F(ScenarioRunTest, LaterRunMayChangeEveryTable) {
    // The fund's joining shows in P401, the contract's in P331 and P332; the month's pay is then
    // the grade's 1500.00, in contributions 5 percent of it and the fund's 0.55. F433 and T188
    // stand in their records.
    EXPECT_TRUE(run("corse:\n"
                    "  - periodo: {data: \"30062024\", tipo: \"4\"}\n"
                    "    fissi: {F433: 631}\n"
                    "    ditta: {T002: ALTRA}\n"
                    "    settore: {S003: 5.00}\n"
                    "    contratto: {record: 9, livello: 2, campi: {G022: 1500.00}}\n"
                    "    fondo: {record: 3, campi: {R004: 0.55}}\n"
                    "    mesi: {J001: {1: 7}}\n"
                    "    scaglioni: [[999999.99, 10]]\n"
                    "    voci: {2: {Z002: \"PAGA\"}}\n"
                    "    dipendente: {campi: {PB05: 1}}\n"
                    // 1500 x 5 % = 75 and 8.25; 1500 - 83.25 = 1416.75; 10 % = 141.675
                    "    attesi: {P331: 9, P332: 2, P401: 3, P240: 1500, Q224: 83.25,\n"
                    "             P256: 1416.75, P257: 141.68}\n"
                    "    attesi_mesi: {J001: {1: 7}}\n"
                    "    attesi_fissi: {F433: 631}\n"
                    "    attesi_ditta: {T002: ALTRA}\n")
                    .empty());
}

TEST_F(ScenarioRunTest, OwnContractIsKeptWhenALaterRunBringsAnother) {
    EXPECT_TRUE(run("dipendente: {campi: {P331: 0}}\n"
                    "corse:\n"
                    "  - periodo: {data: \"30062024\", tipo: \"4\"}\n"
                    "    contratto: {record: 9, livello: 2, campi: {G022: 1500.00}}\n"
                    "    attesi: {P331: 0, P240: 1909}\n")
                    .empty());
}

TEST_F(ScenarioRunTest, EachRunIsShownToWhoAsks) {
    std::vector<std::string> seen;
    const nzutil::ScenarioTools tools{
        VELMOR_PROGRAM, "",
        [&](int number, const nzutil::ScenarioRun& one, const nzutil::Installation& found) {
            seen.push_back(std::to_string(number) + " " + one.period.date + " " +
                           std::to_string(found.read_selection().size()));
        }};
    static_cast<void>(nzutil::run_scenario(
        nzutil::read_scenario(nzutil::Document(
            "prova.yaml", "titolo: prova\nperiodo: {data: \"31052024\"}\n" + kThreeRuns)),
        tools, directory.path()));
    EXPECT_EQ(seen, (std::vector<std::string>{"1 31052024 1", "2 30062024 1", "3 30062024 1"}));
}

/// The lines of a PDF document, with the characters that it writes in octal.
std::vector<std::string> printed_lines(const std::string& document) {
    std::vector<std::string> lines;
    const std::regex shown(R"(\(([^()\n]*)\) Tj)");
    for (std::sregex_iterator found(document.begin(), document.end(), shown), end; found != end;
         ++found) {
        const std::string text = (*found)[1];
        std::string line;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool octal = text[i] == '\\';
            line +=
                octal ? static_cast<char>(std::stoi(text.substr(i + 1, 3), nullptr, 8)) : text[i];
            i += octal ? 3 : 0;
        }
        lines.push_back(line);
    }
    return lines;
}

TEST_F(ScenarioRunTest, TheControlListOfTheMunicipalSurtaxIsPrintedWhenAskedFor) {
    // Rome has one rate, Turin brackets, Z999 is not in the table. The fourth is below Rome's
    // exemption, the fifth has no tax and a rate of his own.
    const std::string adjustment = "P118: 2, P906: 0, P084: 1, Q171: 11, Q659: 365, P003: ANNA, ";
    std::string text =
        "titolo: lista\nperiodo: {data: \"31122024\", tipo: \"4\"}\n"
        "archivi: [TABCOM]\nrisposte: [\"si\"]\ndipendente:\n";
    for (const char* own :
         {"P002: UNO, Q013: 20000, P591: H501", "P002: DUE, Q013: 20000, P591: L219",
          "P002: TRE, Q013: 20000, P591: Z999", "P002: QUATTRO, Q013: 9000, P591: H501",
          "P002: CINQUE, Q013: 5000, P591: H501, Q901: 1, Q319: 0.8"}) {
        text += "  - campi: {" + adjustment + own + "}\n    righe: [{testo: \" 999\"}]\n";
    }
    static_cast<void>(
        nzutil::run_scenario(nzutil::read_scenario(nzutil::Document("prova.yaml", text)),
                             {VELMOR_PROGRAM, "", {}}, directory.path()));
    std::vector<std::string> lists;
    for (const auto& entry : std::filesystem::directory_iterator(directory.file("stampe"))) {
        lists.push_back(directory.read("stampe/" + entry.path().filename().string()));
    }
    ASSERT_EQ(lists.size(), 1U);
    const std::string type = " ANNA Q901 T.CALC. ";
    EXPECT_EQ(
        printed_lines(lists[0]),
        (std::vector<std::string>{
            "INIZIO LISTA CONTROLLO CALCOLI ADDIZIONALE COMUNALE",
            "0010000001 UNO" + type +
                "0 COD.COM 01/01/AC H501 % ADD.COM IN TAB.Q902 0.90 CALCOLO A FASCIE",
            "0010000002 DUE" + type + "0 COD.COM 01/01/AC L219 % ADD.COM CALCOLO A SCAGLIONI",
            "0010000003 TRE" + type + "0 COD.COM 01/01/AC Z999 ** % ADD.COM CAMPO  Q319 0.00",
            "0010000005 CINQUE" + type + "1 COD.COM 01/01/AC H501 % ADD.COM CAMPO  Q319 0.80",
            "FINE LISTA CONTROLLO CALCOLI ADDIZIONALE COMUNALE",
            "** = LA % IN TABELLA E' INDICATA CON '0*', IN QUESTO CASO VIENE UTILIZZATA LA % DEL "
            "CAMPO Q319"}));
}

TEST_F(ScenarioRunTest, ArchivesThatCannotBeComparedAreADifference) {
    EXPECT_EQ(run("archivi: [NZRETMEN]\n").size(), 1U);
    EXPECT_EQ(run("attesi_archivio: {DIP_12: 1833}\n").size(), 1U);
}

TEST_F(ScenarioRunTest, ProcessThatDoesNotEndIsStopped) {
    nzutil::ProcessCall call;
    call.program = "/bin/sleep";
    call.arguments = {"60"};
    call.directory = directory.path();
    call.seconds = 1;
    const nzutil::ProcessResult result = nzutil::run_process(call);
    EXPECT_TRUE(result.too_long);
    EXPECT_NE(result.status, 0);
}

TEST_F(ScenarioRunTest, ProcessThatCannotStartIsSaid) {
    nzutil::ProcessCall call;
    call.program = directory.file("nessuno");
    call.directory = directory.path();
    EXPECT_THROW(static_cast<void>(nzutil::run_process(call)), nzutil::ToolError);
}

}  // namespace
