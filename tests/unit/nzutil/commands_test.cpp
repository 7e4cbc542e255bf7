#include "nzutil/commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/database.h"
#include "records/dictionary/DIPX.h"
#include "tests/support/temp_directory.h"

namespace {

namespace fs = std::filesystem;

/// One demo installation for all tests; a test that writes takes its own copy.
class CommandsTest : public ::testing::Test {
  protected:
    struct Outcome {
        int status;
        std::string output;
        std::string errors;
    };
    static Outcome run(const nzutil::Arguments& arguments) {
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        const int status = nzutil::run_tool(arguments);
        return {status, ::testing::internal::GetCapturedStdout(),
                ::testing::internal::GetCapturedStderr()};
    }
    /// The command is refused with one sentence, and the file keeps every byte.
    void refused(const nzutil::Arguments& arguments, const std::string& file = "DIPEND.DAT") {
        const std::string before = bytes(file);
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1) << arguments[0];
        EXPECT_EQ(outcome.output, "");
        EXPECT_FALSE(outcome.errors.empty());
        EXPECT_EQ(bytes(file), before);
    }
    [[nodiscard]] std::string bytes(const std::string& file) const {
        std::ifstream in(demo + "/archivi/" + file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    void SetUp() override { ASSERT_EQ(run({"demo", demo}).status, 0); }

    test_support::TempDirectory directory;
    std::string demo = directory.file("demo");
};

TEST_F(CommandsTest, TheDemoHasTheMunicipalitiesOfTheSurtax) {
    const auto archive =
        platform::open_database(demo + "/archivi/TABCOM.MDB", platform::DatabaseMode::read_only);
    const auto rows = archive->query("select count(*) as QUANTI from CATASTO", {});
    EXPECT_GE(rows->field("QUANTI").number(), 30);
    const auto town = archive->query("select * from CATASTO where CHIAVE = ?", {"H501"});
    EXPECT_EQ(town->field("ESENZIONE").number(), 12000);
    EXPECT_EQ(town->field("aliquota").number(), 0.9);
}

TEST_F(CommandsTest, EmptyArchivesAreMadeOnceAndNeverOverwritten) {
    const std::string place = directory.file("modelli");
    const Outcome made = run({"modelli", place});
    EXPECT_EQ(made.status, 0) << made.errors;
    for (const char* name :
         {"NZRETXXX.MDB", "NZRETXX3.MDB", "NZCUXXXX.MDB", "NZINPDXX.MDB", "TABCOMXX.MDB"}) {
        EXPECT_TRUE(fs::exists(fs::path(place) / name)) << name;
    }
    const auto archive =
        platform::open_database(place + "/NZRETXXX.MDB", platform::DatabaseMode::read_write);
    EXPECT_EQ(archive->query("select * from RELEASE", {})->field("RELEASE").number(), 1);
    const auto rows = archive->open_table("DIPRETMEN");
    for (const char* column : {"KSEQ", "CODAZI", "dip_239"}) {
        EXPECT_TRUE(rows->has_field(column)) << column;
    }
    for (int number = 1; number <= 239; ++number) {
        EXPECT_TRUE(rows->has_field("DIP_" + std::to_string(number))) << number;
    }
    EXPECT_FALSE(rows->has_field("DIP_240"));
    EXPECT_TRUE(archive->open_table("DIPRETMEN2")->has_field("DIP2_238"));
    rows->add();
    rows->update();
    const Outcome again = run({"modelli", place});
    EXPECT_EQ(again.status, 0);
    rows->move_first();
    EXPECT_FALSE(rows->end());
    const auto third =
        platform::open_database(place + "/NZRETXX3.MDB", platform::DatabaseMode::read_only);
    const auto third_rows = third->open_table("DIPRETMEN3");
    for (int number = 1; number <= 77; ++number) {
        EXPECT_TRUE(third_rows->has_field("DIP3_" + std::to_string(number))) << number;
    }
    const auto images =
        platform::open_database(place + "/NZCUXXXX.MDB", platform::DatabaseMode::read_only);
    EXPECT_TRUE(images->open_table("CEDSTORICO")->has_field("CED_DIPE"));
    const auto quadri =
        platform::open_database(place + "/NZINPDXX.MDB", platform::DatabaseMode::read_only);
    for (const char* table :
         {"QUADROD0", "QUADROE0", "QUADROE1", "QUADROV1", "QUADROF1", "QUADROZ2"}) {
        EXPECT_TRUE(quadri->open_table(table)->has_field("KTIPOELAB")) << table;
    }
    EXPECT_EQ(run({"modelli", ""}).status, 1);
}

TEST_F(CommandsTest, EmptyArchivesOfAnInstallationStandBesideItsFiles) {
    EXPECT_EQ(run({"modelli", demo}).status, 0);
    EXPECT_TRUE(fs::exists(demo + "/archivi/TABCOMXX.MDB"));
}

TEST_F(CommandsTest, MunicipalitiesComeFromACsvAndReplaceThoseOfTheSameCode) {
    directory.write("comuni.csv",
                    "\xef\xbb\xbf"
                    "chiave;comune;esenzione;fascia;aliquota;tipocalcolo\r\n"
                    "H501;Roma;14000;999999,99;0,95;F\r\n"
                    "\r\n"
                    "Z001;\"Forl\xc3\xac; \"\"nuova\"\"\";;999999.99;0.5;\r\n");
    const Outcome loaded = run({"comuni", directory.file("comuni.csv"), demo});
    EXPECT_EQ(loaded.status, 0) << loaded.errors;
    EXPECT_NE(loaded.output.find("2"), std::string::npos);
    const auto archive =
        platform::open_database(demo + "/archivi/TABCOM.MDB", platform::DatabaseMode::read_only);
    const auto rome = archive->query("select * from CATASTO where CHIAVE = 'H501'", {});
    EXPECT_EQ(rome->field("ESENZIONE").number(), 14000);
    EXPECT_EQ(rome->field("aliquota").number(), 0.95);
    rome->move_next();
    EXPECT_TRUE(rome->end());
    const auto other = archive->query("select * from CATASTO where CHIAVE = 'Z001'", {});
    EXPECT_EQ(other->field("COMUNE").text(), "Forl\xec; \"nuova\"");
    EXPECT_TRUE(other->field("ESENZIONE").is_null());
    EXPECT_TRUE(other->field("FASCIA_2").is_null());
}

TEST_F(CommandsTest, ACsvThatCannotBeTakenNamesItsLineAndWritesNothing) {
    const std::string csv = directory.file("comuni.csv");
    const auto refusal = [&](const std::string& text) {
        directory.write("comuni.csv", text);
        const std::string before = bytes("TABCOM.MDB");
        const Outcome outcome = run({"comuni", csv, demo});
        EXPECT_EQ(outcome.status, 1) << text;
        EXPECT_EQ(bytes("TABCOM.MDB"), before);
        return outcome.errors;
    };
    EXPECT_NE(refusal("CHIAVE,COLORE\nH501,blu\n").find(csv + ":1: "), std::string::npos);
    EXPECT_NE(refusal("COMUNE,aliquota\nRoma,0.9\n").find(csv + ":1: "), std::string::npos);
    EXPECT_NE(refusal("CHIAVE,FASCIA,aliquota\nH501,999999.99,0.9\nF205,999999.99,molto\n")
                  .find(csv + ":3: "),
              std::string::npos);
    EXPECT_NE(refusal("CHIAVE,aliquota\nH501,-0.9\n").find(csv + ":2: "), std::string::npos);
    EXPECT_NE(refusal("CHIAVE,aliquota\nH501\n").find(csv + ":2: "), std::string::npos);
    EXPECT_NE(refusal("CHIAVE,aliquota\nH50,0.9\n").find(csv + ":2: "), std::string::npos);
    EXPECT_NE(refusal("CHIAVE,FASCIA,aliquota\nH501,9999,0.9\nH501,9999,0.8\n").find(csv + ":3: "),
              std::string::npos);
    EXPECT_NE(refusal(""), "");
    fs::remove(csv);
    EXPECT_EQ(run({"comuni", csv, demo}).status, 1);
}

TEST_F(CommandsTest, HelpNamesEveryCommand) {
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const nzutil::Command& command : nzutil::commands()) {
        EXPECT_NE(help.output.find("nzutil " + std::string(command.usage.utf8)), std::string::npos);
    }
    EXPECT_EQ(run({}).status, 1);
    EXPECT_EQ(run({"altro"}).status, 1);
    EXPECT_EQ(run({"leggi", demo}).status, 1);
}

TEST_F(CommandsTest, FieldIsShownWithDescriptorMeaningPlaceAndUsers) {
    const std::string shown = run({"campi", "Q190"}).output;
    EXPECT_TRUE(
        shown.starts_with("DIPX$,01477,08,2,0,Q190\n"
                          "Q190: massimale della cassa integrazione del mese\n"
                          "dipendente (DIPX$), posizioni da 1477 a 1484, caratteri 8, "
                          "numero con 2 decimali\n"
                          "Letto da:\n"))
        << shown;
    EXPECT_NE(shown.find("Scritto da:\n    CALCOLACIG ("), std::string::npos) << shown;
    EXPECT_EQ(run({"campi", "q190"}).output, shown);
    EXPECT_NE(run({"campi", "P017"}).output.find("data ggmmaaaa"), std::string::npos);
}

TEST_F(CommandsTest, FieldThatNoRuleUsesSaysSo) {
    const std::string shown = run({"campi", "P123"}).output;
    EXPECT_NE(shown.find("P123: nessuna regola del calcolo lo usa\n"), std::string::npos) << shown;
}

TEST_F(CommandsTest, AreaIsListedWithTheMeanings) {
    const std::string list = run({"campi", "conx"}).output;
    EXPECT_TRUE(
        list.starts_with("CONX$,00003,03,N,0,G001  numero del contratto\n"
                         "CONX$,00006,25,A,0,G002\n"));
    EXPECT_EQ(run({"campi", "CONX$"}).output, list);
    EXPECT_EQ(run({"campi", "ZZZZ"}).status, 1);
    EXPECT_EQ(run({"campi", "PROX$"}).status, 1);
}

TEST_F(CommandsTest, FieldsAreFoundByTheWordsOfTheirMeaning) {
    const std::string found = run({"campi", "detrazione", "coniuge"}).output;
    EXPECT_NE(found.find("Q649  detrazione per il coniuge del cedolino\n"), std::string::npos);
    // The plural of another field's meaning; children without the spouse are left out.
    EXPECT_NE(found.find("Q647  totale detrazioni"), std::string::npos);
    EXPECT_EQ(found.find("Q650 "), std::string::npos);
    EXPECT_EQ(run({"campi", "detrazione coniuge"}).output, found);
    EXPECT_EQ(run({"campi", "CONIUGE", "Detrazioni"}).output, found);
}

TEST_F(CommandsTest, AccentsAndPunctuationMakeNoDifferenceToASearch) {
    const std::string found = run({"campi", "anzianità"}).output;
    EXPECT_NE(found.find("P026  importo di uno scatto di anzianità\n"), std::string::npos);
    EXPECT_EQ(run({"campi", "anzianita'"}).output, found);
    EXPECT_EQ(run({"campi", "ANZIANITÀ"}).output, found);
    // A word is looked for from its beginning.
    EXPECT_EQ(run({"campi", "nzianit"}).status, 1);
    EXPECT_EQ(run({"campi", "coniuge", "mulino"}).status, 1);
    EXPECT_EQ(run({"campi", ""}).status, 1);
}

TEST_F(CommandsTest, WrittenFieldIsReadBack) {
    EXPECT_EQ(run({"scrivi", demo, "2", "1", "P058", "2000.5"}).status, 0);
    EXPECT_EQ(run({"leggi", demo, "2", "1", "P058"}).output, "2000.50000\n");
    EXPECT_EQ(run({"scrivi", demo, "97", "1", "J001", "-7.25", "12"}).status, 0);
    EXPECT_EQ(run({"leggi", demo, "97", "1", "J001", "12"}).output, "-7.25\n");
    EXPECT_EQ(run({"leggi", demo, "97", "1", "J001", "11"}).output, "0.00\n");
    EXPECT_EQ(run({"scrivi", demo, "2", "1", "P002", "D'AMICÒ"}).status, 0);
    EXPECT_EQ(run({"leggi", demo, "2", "1", "P002"}).output, "D'AMICÒ\n");
}

TEST_F(CommandsTest, WritingLeavesTheRestOfTheFile) {
    const std::string before = bytes("DIPEND.DAT");
    ASSERT_EQ(run({"scrivi", demo, "2", "2", "P002", "VERDI"}).status, 0);
    const std::string after = bytes("DIPEND.DAT");
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        // P002 of the second employee: positions 9515 to 9544 of record 2.
        const bool in_field = i >= 16600 + 9514 && i < 16600 + 9544;
        ASSERT_TRUE(in_field || before[i] == after[i]) << i;
    }
}

TEST_F(CommandsTest, BadInputIsRefusedAndChangesNothing) {
    refused({"scrivi", demo, "2", "1", "P058", "abc"});
    refused({"scrivi", demo, "2", "1", "P209", "1000000"});
    refused({"scrivi", demo, "2", "1", "P209", "1.234"});
    refused({"scrivi", demo, "2", "1", "P013", "1/1/2024"});
    refused({"scrivi", demo, "2", "1", "P002", std::string(31, 'X')});
    refused({"scrivi", demo, "2", "1", "P002", "中村"});
    refused({"scrivi", demo, "2", "99", "P002", "X"});
    refused({"scrivi", demo, "2", "0", "P002", "X"});
    refused({"scrivi", demo, "2", "1", "T002", "X"});
    refused({"scrivi", demo, "601", "1", "P002", "X"});
    refused({"scrivi", demo, "18", "1", "P002", "X"}, "SCAGLIRP.DAT");
    refused({"scrivi", demo, "97", "1", "J001", "1", "13"}, "DIPMESI.DAT");
    refused({"leggi", demo, "2", "uno", "P002"});
    refused({"leggi", demo + "/altrove", "2", "1", "P002"});
    refused({"scheda", demo, "2", "15"});
    refused({"demo", demo});
    EXPECT_FALSE(fs::exists(demo + "/archivi/NZ0099.DAT"));
    refused({"scheda", demo, "99", "1"});
}

TEST_F(CommandsTest, MissingFileIsSaidAndNotMade) {
    fs::remove(demo + "/archivi/DIPMESI.DAT");
    EXPECT_EQ(run({"leggi", demo, "97", "1", "J001"}).status, 1);
    EXPECT_FALSE(fs::exists(demo + "/archivi/DIPMESI.DAT"));
}

TEST_F(CommandsTest, PeriodTakesDaysOfTheCalendar) {
    EXPECT_EQ(run({"periodo", demo, "29022024", "4"}).status, 0);
    EXPECT_EQ(bytes("PERIODO.DAT").substr(0, 9), "290220244");
    refused({"periodo", demo, "29022023", "4"}, "PERIODO.DAT");
    refused({"periodo", demo, "31042024", "4"}, "PERIODO.DAT");
    refused({"periodo", demo, "2024", "4"}, "PERIODO.DAT");
    refused({"periodo", demo, "31052024", "40"}, "PERIODO.DAT");
}

TEST_F(CommandsTest, IndexIsSearchedListedAndChecked) {
    EXPECT_EQ(run({"isam", demo, "36", "verifica"}).status, 0);
    // One employee of the demo has been calculated already.
    EXPECT_EQ(run({"isam", demo, "36", "elenca"}).output, "0010000012 record 1\n");
    EXPECT_EQ(run({"isam", demo, "36", "cerca", "0010000001"}).status, 1);
    EXPECT_EQ(run({"isam", demo, "36", "cerca", "1"}).status, 1);
    EXPECT_EQ(run({"isam", demo, "2", "verifica"}).status, 1);
    EXPECT_EQ(run({"isam", demo, "36", "altro"}).status, 1);
    std::ofstream(demo + "/archivi/DIPPRIMA.IDX", std::ios::trunc).flush();
    EXPECT_EQ(run({"isam", demo, "36", "elenca"}).status, 1);
    EXPECT_EQ(run({"isam", demo, "36", "verifica"}).status, 1);
}

TEST_F(CommandsTest, CardShowsWhatIsNotEmpty) {
    const std::string card = run({"scheda", demo, "2", "1"}).output;
    const std::size_t name = card.find("\nP002  cognome ");
    ASSERT_NE(name, std::string::npos);
    EXPECT_TRUE(card.substr(0, card.find('\n', name + 1)).ends_with("  BIANCHI"));
    EXPECT_NE(card.find("Q401 voce 002"), std::string::npos);
    EXPECT_EQ(card.find("P017"), std::string::npos);
    const std::string contract = run({"scheda", demo, "71", "1"}).output;
    const std::size_t element =
        contract.find("\nG022(3)  elemento di paga 1 del livello, minimo tabellare, va in P058 ");
    ASSERT_NE(element, std::string::npos);
    EXPECT_TRUE(contract.substr(0, contract.find('\n', element + 1)).ends_with("  1378.78000"));
}

TEST_F(CommandsTest, TableWithABadRecordLengthIsSaid) {
    std::fstream table(demo + "/archivi/NZBASE.DAT",
                       std::ios::binary | std::ios::in | std::ios::out);
    table.seekp(79 + 32);  // length of logical file 2
    table << "00000";
    table.close();
    EXPECT_EQ(run({"leggi", demo, "2", "1", "P002"}).status, 1);
    fs::resize_file(demo + "/archivi/NZBASE.DAT", 60);
    EXPECT_EQ(run({"leggi", demo, "2", "1", "P002"}).status, 1);
}

TEST_F(CommandsTest, ImpossiblePeriodIsRefused) {
    refused({"periodo", demo, "32052024", "4"}, "PERIODO.DAT");
    refused({"periodo", demo, "29022023", "4"}, "PERIODO.DAT");
    refused({"periodo", demo, "31052024", "x"}, "PERIODO.DAT");
    refused({"scrivi", demo, "2", "1", "P013", "31022020"});
}

TEST_F(CommandsTest, SlipOfAPeriodThatIsNoDateIsRefused) {
    std::fstream period(demo + "/archivi/PERIODO.DAT",
                        std::ios::binary | std::ios::in | std::ios::out);
    period << "31992024";
    period.close();
    refused({"cedolino", demo, "0010000001"});
    EXPECT_EQ(run({"cedolino", demo, "0010000001"}).errors,
              "Il periodo degli archivi non è una data (\"31992024\"): scriverlo con nzutil "
              "periodo.\n");
}

TEST_F(CommandsTest, ADirectoryWithoutANameIsRefused) {
    refused({"demo", ""});
    refused({"leggi", "", "2", "1", "P002"});
    EXPECT_EQ(run({"demo", ""}).errors, "Manca il nome della directory: è vuoto.\n");
}

TEST_F(CommandsTest, EachBeforeImageOfTheDemoHasItsKey) {
    constexpr std::size_t kRecord = 16600;
    EXPECT_EQ(run({"isam", demo, "36", "elenca"}).output, "0010000012 record 1\n");
    EXPECT_EQ(bytes("DIPPRIMA.DAT").size(), kRecord);
}

TEST_F(CommandsTest, VersionIsThatOfTheBatch) {
    const Outcome version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.output.starts_with("nzutil 0.")) << version.output;
}

TEST_F(CommandsTest, CodesAreTakenAsPeopleTypeThem) {
    EXPECT_EQ(run({"leggi", demo, "2", "5", "p002"}).output, "MARTINI\n");
    EXPECT_EQ(run({"leggi", demo, "2", "001-000-0005", "P002"}).output, "MARTINI\n");
    EXPECT_EQ(run({"leggi", demo, "2", "0010000005", "P002"}).output, "MARTINI\n");
    EXPECT_EQ(run({"scrivi", demo, "2", "001-000-0005", "p002", "MARTINELLI"}).status, 0);
    EXPECT_EQ(run({"leggi", demo, "2", "5", "P002"}).output, "MARTINELLI\n");
    EXPECT_EQ(
        run({"isam", demo, "36", "cerca", "001-000-0012"}).output,
        run({"isam", demo, "36", "cerca", "0010000012"}).output.replace(0, 10, "001-000-0012"));
    EXPECT_EQ(run({"scheda", demo, "2", "001-000-0005"}).output,
              run({"scheda", demo, "2", "5"}).output);
    EXPECT_EQ(run({"leggi", demo, "2", "001-000-0099", "P002"}).status, 1);
    EXPECT_EQ(run({"leggi", demo, "97", "001-000-0005", "J001", "5"}).status, 0);
    EXPECT_EQ(run({"leggi", demo, "35", "001-000-0012", "P001"}).output, "0010000012\n");
    EXPECT_EQ(run({"leggi", demo, "35", "001-000-0005", "P001"}).errors,
              "Il dipendente 001-000-0005 non è nell'indice 36.\n");
    EXPECT_EQ(run({"leggi", demo, "354", "001-000-0005", "X001"}).errors,
              "Il dipendente 001-000-0005 non è nell'indice 356.\n");
    const std::string scenario = directory.file("minuscole.yaml");
    std::ofstream(scenario) << "titolo: prova\nperiodo: {data: \"31052024\"}\n"
                               "dipendente: {campi: {p001: \"001-000-0077\", p002: \"ROSSO\"}}\n";
    EXPECT_EQ(run({"installa", scenario, directory.file("minuscole")}).status, 0);
    EXPECT_EQ(run({"leggi", directory.file("minuscole"), "2", "1", "p002"}).output, "ROSSO\n");
    EXPECT_EQ(run({"leggi", directory.file("minuscole"), "2", "1", "p001"}).output, "0010000077\n");
    EXPECT_EQ(run({"scrivi", demo, "2", "5", "p001", "001-000-0078"}).status, 0);
    EXPECT_EQ(run({"leggi", demo, "2", "5", "P001"}).output, "0010000078\n");
}

TEST_F(CommandsTest, ControlCharactersOfARecordDoNotReachTheTerminal) {
    std::fstream employees(demo + "/archivi/DIPEND.DAT",
                           std::ios::binary | std::ios::in | std::ios::out);
    employees.seekp(MXREPOSITORY::P002.offset - 1);
    employees << "ROSSI\x1B[2J";
    employees.close();
    EXPECT_EQ(run({"leggi", demo, "2", "1", "P002"}).output.substr(0, 9), "ROSSI?[2J");
    for (const char* command : {"scheda", "cedolino"}) {
        nzutil::Arguments arguments{command, demo, "2", "1"};
        if (arguments[0] == "cedolino") {
            arguments = {command, demo, "0010000001"};
        }
        const std::string shown = run(arguments).output;
        EXPECT_NE(shown.find("ROSSI?[2J"), std::string::npos) << shown;
        EXPECT_EQ(shown.find('\x1B'), std::string::npos);
    }
}

/// Arguments, names in NZBASE.DAT, blocks of an index and paths of failures may hold anything.
TEST_F(CommandsTest, ControlCharactersOfAMessageDoNotReachTheTerminal) {
    const std::string clear = "\x1B[2J\x7F\xC2\x9B\x9B\n";  // escape, delete, C1 twice, line feed
    const std::string shown = "?[2J????";
    const auto expect_shown = [&](const nzutil::Arguments& arguments) {
        const Outcome outcome = run(arguments);
        const std::string all = outcome.output + outcome.errors;
        EXPECT_NE(all.find(shown), std::string::npos) << all;
        EXPECT_EQ(all.find_first_of("\x1B\x7F\x9B"), std::string::npos) << all;
    };
    expect_shown({clear});
    expect_shown({"leggi", demo, "2", "1", clear});
    expect_shown({"leggi", clear, "2", "1", "P002"});
    expect_shown({"scrivi", demo, "2", "1", "P058", clear});
    expect_shown({"isam", demo, "36", "cerca", clear + "12"});
    expect_shown({"periodo", demo, clear, "4"});
    expect_shown({"cedolino", demo, clear});
    expect_shown({"scenario", directory.file(clear)});
    expect_shown({"demo", "/dev/null/" + clear});

    const std::string there = directory.file(clear);
    ASSERT_EQ(run({"demo", there}).status, 0);
    fs::create_directory(there + "/archivi/VELMOR.RIP");  // the slot cannot be written
    expect_shown({"scrivi", there, "2", "1", "P058", "1950"});
}

TEST_F(CommandsTest, ControlCharactersOfADamagedFileDoNotReachTheTerminal) {
    constexpr std::size_t kLine = 79;
    const auto damage = [this](const std::string& file, std::size_t position) {
        std::fstream out(demo + "/archivi/" + file,
                         std::ios::binary | std::ios::in | std::ios::out);
        out.seekp(static_cast<std::streamoff>(position));
        out << '\x1B';
    };
    damage("DIPPRIMA.IDX", 10);  // the level of the first entry, behind its key
    EXPECT_EQ(run({"isam", demo, "36", "verifica"}).errors,
              "Indice 36 danneggiato: nel blocco 1 una voce porta il livello ? invece di 1.\n");
    damage("NZBASE.DAT", kLine + 4);  // the name of the employee file
    const std::string errors = run({"leggi", demo, "2", "1", "P002"}).errors;
    EXPECT_NE(errors.find("D?PEND.DAT"), std::string::npos) << errors;
    EXPECT_EQ(errors.find('\x1B'), std::string::npos);
}

TEST_F(CommandsTest, FailureOfAFileNamesItAndEndsWithWhatToDo) {
    fs::resize_file(demo + "/archivi/NZBASE.DAT", 60);
    const std::string errors = run({"leggi", demo, "2", "1", "P002"}).errors;
    EXPECT_EQ(errors,
              "Errore 62: Input past end of file.\nArchivio o record: 2\nChe cosa fare: il file è "
              "vuoto o tronco: rimetterlo da una copia degli archivi, poi rilanciare.\n");
}

TEST_F(CommandsTest, ScenarioThatCannotBeReadIsNoDifference) {
    const std::string wrong = directory.file("sbagliato.yaml");
    std::ofstream(wrong) << "titolo: prova\nperiodo: {data: \"32052024\"}\n";
    const Outcome outcome = run({"scenario", directory.file("manca.yaml"), wrong});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "Scenari: 2, con differenze: 0, non eseguiti: 2\n");
    EXPECT_NE(outcome.errors.find("Impossibile leggere"), std::string::npos);
    EXPECT_NE(outcome.errors.find("sbagliato.yaml:2: "), std::string::npos);
    const std::string nowhere = directory.file("nuova");
    EXPECT_EQ(run({"installa", wrong, nowhere}).status, 1);
    EXPECT_FALSE(fs::exists(nowhere));
}

TEST_F(CommandsTest, ShownSlipNeedsAScenarioAndOneOfItsRuns) {
    EXPECT_EQ(run({"scenario", "--mostra", "0010000001"}).status, 1);
    EXPECT_EQ(run({"scenario", "--mostra"}).status, 1);
    const std::string one = directory.file("una.yaml");
    std::ofstream(one) << "titolo: prova\nperiodo: {data: \"31052024\"}\n";
    const Outcome outcome = run({"scenario", "--mostra", "0010000001", "--corsa", "2", one});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("corsa 2"), std::string::npos);
}

}  // namespace
