#include "run/main_run.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>

#include "context/period.h"
#include "context/trace.h"
#include "files/file_numbers.h"
#include "history/quadri.h"
#include "history/slip_images.h"
#include "platform/database.h"
#include "platform/failure.h"
#include "platform/registry.h"
#include "records/dictionary/FISX.h"
#include "records/numbers.h"
#include "run/form.h"
#include "run/load_environment.h"
#include "slip/slip.h"
#include "tax/municipal_table.h"
#include "tests/support/scripted_window.h"
#include "tests/unit/run/payroll_files.h"
#include "texts/texts.h"

namespace {

using namespace MXLIBRERIA::file_numbers;

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using namespace run_tests;
using platform::Control;

using test_support::ScriptedWindow;
using test_support::TempDirectory;

/// A registry with the two directories.
class Directories : public platform::Registry {
  public:
    std::string archives;
    std::string programs;

    [[nodiscard]] bool has_key(const std::string& key) override {
        return key == "SOFTWARE\\TRAMONTIVAL\\SOLMAREL";
    }
    [[nodiscard]] std::optional<platform::RegistryValue> value(const std::string& /*key*/,
                                                               const std::string& name) override {
        const std::string& text = name == "PERCORSOARCHIVI" ? archives : programs;
        return text.empty() ? std::nullopt : std::optional(platform::RegistryValue{1, text});
    }
};

/// How a run ended: the exit status, or the number of the failure that would reach the handler.
struct Ending {
    std::optional<int> status;
    std::optional<int> failure;
};

class StartUp : public ::testing::Test {
  protected:
    void SetUp() override {
        define_payroll(installation);
        installation.define(kTaxBrackets, 100);
        installation.define(kFixedData, kYearlyLength);
        installation.define(kInstallation, 100);
        installation.define(kYearTables, 100);
        installation.define(kSeveranceBrackets, 100);
        installation.define(kCertificates, 6100);
        installation.define(kCertificateIndex, (kKeyWidth + 7) * 128);
        installation.define(kUser, 100);
        installation.define(kPayItems, 1500);
        installation.define(kRegions, 100);
        set_yearly(Record(Area::FISX, kYearlyLength));
        installation.put(kTaxBrackets, 1, "999999.99230");
        installation.put(kPayItems, 1, Record(Area::FOTX, 1500).text());
        installation.put(kInstallation, 1, std::string(34, 'x') + "001234");
        installation.put(kUser, 1, a_sinistra("Studio Perci\xF2 & Figli", 30) + "90000000066");
        set_period("310520244");
        installation.put(kSelection, 1, entry("001", "0001") + kEnd);
        registry.archives = installation.directory().path();
        registry.programs = registry.archives;
        platform::set_registry(&registry);
        environment = {};
        ModSWCALM::run_tables = {};
        period = {};
        unsetenv("VELMOR_TASK");
        unsetenv("PRIMULAX");
    }
    void TearDown() override {
        window.verify();
        platform::set_registry(nullptr);
        ModSWCALM::instance_lock = {};
        ModSWCALM::run_tables = {};
        NZCedLibPaga::slip_images = {};
        NZRetMesINPDAP::quadri = {};
        period = {};
        clear_areas();
        unsetenv("VELMOR_TASK");
        unsetenv("PRIMULAX");
    }

    void set_yearly(const Record& record) { installation.put(kFixedData, 1, record.text()); }
    void set_period(const std::string& record) { installation.put(kPeriod, 1, record); }

    Ending run() {
        Ending ending;
        try {
            ModSWCALM::MAIN();
        } catch (const platform::EndOfProgram& end) {
            ending.status = end.status;
        } catch (const platform::Failure& failure) {
            ending.failure = failure.number();
        }
        CHIUDI(0);
        return ending;
    }
    /// A run up to the walk, in which nothing goes wrong.
    void run_to_walk() {
        window.failure_at_walk = 63;
        EXPECT_EQ(run().failure, 63);
        window.failure_at_walk = 0;
    }

    [[nodiscard]] double yearly(const Descriptor& field) const {
        return value_of(field, installation.get(kFixedData, 1));
    }

    ScriptedWindow& window = ScriptedWindow::install();
    LogicalFiles installation;
    Directories registry;
};

// ---- Environment ----

TEST_F(StartUp, EnvironmentFromRegistryAndInstallationRecords) {
    run_to_walk();
    EXPECT_EQ(environment.archive_directory, registry.archives);
    EXPECT_EQ(environment.programs_directory, registry.programs);
    EXPECT_EQ(environment.task, "01");
    EXPECT_EQ(environment.installation_name, "STUDIO PERCI\xD2 & FIGLI");
    EXPECT_EQ(environment.installation_tax_code, "90000000066");
    EXPECT_EQ(ModSWCALM::run_tables.agreement_number, 1234);
}

TEST_F(StartUp, TaskNumberFromTheVariable) {
    setenv("VELMOR_TASK", "07", 1);
    run_to_walk();
    EXPECT_EQ(environment.task, "07");
}

TEST_F(StartUp, MissingRegistryValueLeadsToThePathFiles) {
    registry.programs.clear();
    const TempDirectory primulax;
    primulax.write("NZPERARK.NZP", "  " + registry.archives + "  \r\naltro\r\n");
    primulax.write("NZPERPRO.NZP", registry.archives + "\r\n");
    setenv("PRIMULAX", primulax.path().c_str(), 1);
    run_to_walk();
    EXPECT_EQ(environment.archive_directory, registry.archives);
    EXPECT_EQ(environment.installation_tax_code, "90000000066");
}

TEST_F(StartUp, DirectoryThatDoesNotExistLeadsToThePathFiles) {
    registry.programs = registry.archives + "/assente";
    const TempDirectory primulax;
    setenv("PRIMULAX", primulax.path().c_str(), 1);
    window.expect_box(std::string(texts::kConfigurationError.utf8));
    EXPECT_EQ(run().status, 2);
    EXPECT_EQ(window.boxes[0].title, "Solmarel");
    EXPECT_EQ(window.boxes[0].icon, platform::Icon::critical);
}

TEST_F(StartUp, BlankPathFileIsAConfigurationError) {
    registry.programs.clear();
    const TempDirectory primulax;
    primulax.write("NZPERARK.NZP", registry.archives + "\r\n");
    primulax.write("NZPERPRO.NZP", "   \r\n" + registry.archives + "\r\n");
    setenv("PRIMULAX", primulax.path().c_str(), 1);
    window.expect_box(std::string(texts::kConfigurationError.utf8));
    EXPECT_EQ(run().status, 2);
}

TEST_F(StartUp, LockOfTheInstallationIsHeldAfterTheLoader) {
    run_to_walk();
    ASSERT_NE(ModSWCALM::instance_lock.lock, nullptr);
    EXPECT_EQ(platform::try_directory_lock(registry.archives, "prova").lock, nullptr);
}

TEST_F(StartUp, OtherInstanceOnTheSameArchiveEndsTheSecondWithoutAMessage) {
    run_to_walk();
    ModSWCALM::instance_lock = {};
    const auto other = platform::try_directory_lock(registry.archives, "prova");
    ASSERT_NE(other.lock, nullptr);
    EXPECT_EQ(run().status, 3);
    EXPECT_TRUE(window.boxes.empty());
}

TEST_F(StartUp, TheSecondLoaderLocksTheArchiveThatItNames) {
    const std::string archives = registry.archives;
    registry.archives.clear();
    const TempDirectory primulax;
    primulax.write("NZPERARK.NZP", archives + "\r\n");
    primulax.write("NZPERPRO.NZP", archives + "\r\n");
    setenv("PRIMULAX", primulax.path().c_str(), 1);
    const auto other = platform::try_directory_lock(archives, "prova");
    ASSERT_NE(other.lock, nullptr);
    EXPECT_EQ(run().status, 3);
}

// ---- Regional table ----

TEST_F(StartUp, RegionalTableKeepsFiftyLines) {
    std::string lines;
    for (int i = 1; i <= 52; ++i) {
        lines += "riga " + std::to_string(i) + "\r\n";
    }
    installation.directory().write(name_of(kRegions), lines);
    run_to_walk();
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[1], "riga 1");
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[50], "riga 50");
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[0], "");
}

TEST_F(StartUp, ShortRegionalTableLeavesTheRestEmpty) {
    installation.directory().write(name_of(kRegions), "03 uno\n\n05 tre");
    ModSWCALM::run_tables.PARAMETRI.fill("di prima");
    run_to_walk();
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[1], "03 uno");
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[2], "");
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[3], "05 tre");
    EXPECT_EQ(ModSWCALM::run_tables.PARAMETRI[4], "");
}

// ---- Window ----

TEST_F(StartUp, WindowShowsPeriodAndRunKind) {
    run_to_walk();
    EXPECT_EQ(window.caption, "Solmarel * VELMOR - Calcolo cedolino - ");
    EXPECT_EQ(window.text(Control::Label3, 1), "31/05/2024");
    EXPECT_EQ(window.text(Control::Label3, 4), "MM normale");
    EXPECT_EQ(window.text(Control::Label2, 0), "Attendere prego .....elaborazione in corso");
    EXPECT_EQ(window.text(Control::Label4, 0), std::string(texts::kLabel4.utf8));
    EXPECT_EQ(window.text(Control::Label3, 2), "");
    EXPECT_EQ(window.text(Control::Label3, 6), "");
}

TEST_F(StartUp, AdditionalRunAndMonthlyArchiveAreAnnounced) {
    set_period("310520240");
    installation.directory().write("NZRETMEN.MDB", "");
    run_to_walk();
    EXPECT_EQ(window.text(Control::Label3, 4), "MM aggiuntiva");
    EXPECT_EQ(window.text(Control::Label4, 0), std::string(texts::kLabel4WithArchive.utf8));
    EXPECT_TRUE(period.additional());
}

TEST_F(StartUp, NoPeriodRecordEndsTheRunWithoutAMessage) {
    installation.directory().write(name_of(kPeriod), "");
    set_yearly(Record(Area::FISX, kYearlyLength).set(F403, 123));
    EXPECT_EQ(run().status, 0);
    EXPECT_EQ(window.text(Control::Label3, 1), "Non trovato");
    EXPECT_EQ(window.text(Control::Label3, 4), "Non trovato");
    EXPECT_TRUE(window.boxes.empty());
    EXPECT_EQ(window.modal_shows, 0);
    EXPECT_EQ(yearly(F403), 123);  // nothing is corrected for a period that is not known
}

// ---- Yearly table ----

TEST_F(StartUp, ChildDeductionsFollowTheYear) {
    set_period("311220124");
    set_yearly(Record(Area::FISX, kYearlyLength).set(F403, 800).set(F404, 270).set(F021, 97.5));
    run_to_walk();
    EXPECT_EQ(yearly(F403), 950);
    EXPECT_EQ(yearly(F404), 270);
    EXPECT_EQ(yearly(F405), 400);
    EXPECT_EQ(yearly(F021), 97.5);
    EXPECT_EQ(num(F403), 950);
    set_period("310120134");
    run_to_walk();
    EXPECT_EQ(yearly(F403), 800);
    EXPECT_EQ(yearly(F404), 100);
    EXPECT_EQ(yearly(F405), 220);
}

TEST_F(StartUp, MissingYearlyTableIsAFailureBeforeAnybodyIsTouched) {
    installation.directory().write(name_of(kFixedData), "");
    EXPECT_EQ(run().failure, 62);
    EXPECT_EQ(installation.directory().read(name_of(kFixedData)), "");
}

struct RevaluationCase {
    const char* period;
    double F021;
    double revaluation;
};
class Revaluation : public StartUp, public ::testing::WithParamInterface<RevaluationCase> {};

TEST_P(Revaluation, IsCorrectedForThePeriod) {
    const RevaluationCase& c = GetParam();
    set_period(c.period);
    set_yearly(Record(Area::FISX, kYearlyLength).set(F021, c.F021).set(F022, 3.25));
    run_to_walk();
    EXPECT_EQ(ModSWCALM::run_tables.revaluation, c.revaluation);
    EXPECT_EQ(ModSWCALM::run_tables.revaluation2, 3.25);
    EXPECT_EQ(yearly(F021), c.F021);
}

INSTANTIATE_TEST_SUITE_P(Periods, Revaluation,
                         ::testing::Values(RevaluationCase{"310520114", 3.88, 3.88 + 0.001165331},
                                           RevaluationCase{"300620164", 99.9, 99.906629},
                                           RevaluationCase{"300620164", 107.2, 107.2 + 0.006629},
                                           RevaluationCase{"310120164", 107.2, 107.2 + 0.006629},
                                           RevaluationCase{"310720164", 99.9, 99.9},
                                           RevaluationCase{"311220164", 107.2, 107.2},
                                           RevaluationCase{"310520154", 107.2, 107.2},
                                           RevaluationCase{"310520244", 119.1, 119.1}));

// ---- March question ----

TEST_F(StartUp, MarchWithoutTheAdvanceAnsweredNoTouchesNobody) {
    set_period("310320244");
    installation.put(kSelection, 1, entry("001", "0001") + kEnd);
    const std::string before = installation.get(kEmployees, 1);
    window.expect_question("ACCONTO ADDIZIONALE COMUNALE 2024'", false);
    EXPECT_EQ(run().status, 0);
    EXPECT_EQ(installation.get(kEmployees, 1), before);
    ASSERT_EQ(window.boxes.size(), 1U);
    EXPECT_EQ(window.boxes[0].title, "Controllo calcolo acconto comunale 2024");
    EXPECT_EQ(window.boxes[0].icon, platform::Icon::information);
    EXPECT_EQ(window.boxes[0].text,
              "Attenzione il programma 'CALCOLO ACCONTO ADDIZIONALE COMUNALE 2024' non e' stato "
              "eseguito.\r\rRispondendo si il calcolo del cedolino non gestira' la trattenuta "
              "'ACCONTO ADDIZIONALE COMUNALE'.\r\rRispondendo No il calcolo dell'ACCONTO "
              "ADDIZIONALE COMUNALE potra' essere effettuato nel seguente modo:\r\rDA MENU "
              "'ELABORAZIONI ANNUALI' \rESEGUIRE LA SCELTA 'Calcolo e stampa addizionale acconto "
              "comunale'\rIL PROGRAMMA PRENDE IN ESAME TUTTI I DIPENDENTI IN FORZA IN "
              "ANNO\rCORRENTE E CALCOLA L'ACCONTO COMUNALE");
}

TEST_F(StartUp, MarchAnsweredYesGoesOn) {
    set_period("310320244");
    window.expect_question("non e' stato eseguito", true);
    run_to_walk();
}

TEST_F(StartUp, MarchWithTheFileOfTheYearAsksNothing) {
    set_period("310320244");
    installation.directory().write("acom2024.txt", "");
    run_to_walk();
    EXPECT_TRUE(window.boxes.empty());
}

// ---- Archives ----

TEST_F(StartUp, MunicipalTableIsMadeFromTheEmptyOne) {
    run_to_walk();
    EXPECT_EQ(std::filesystem::exists(installation.directory().file("TABCOM.MDB")), false);
    platform::create_database(installation.directory().file("TABCOMXX.MDB"),
                              std::array{ModSWCALB::municipal_schema()});
    const std::string empty = installation.directory().read("TABCOMXX.MDB");
    run_to_walk();
    EXPECT_TRUE(installation.directory().read("TABCOM.MDB") == empty);
    platform::open_database(installation.directory().file("TABCOM.MDB"),
                            platform::DatabaseMode::read_write)
        ->execute("insert into " + ModSWCALB::municipal_schema().name + " (CHIAVE) values (?)",
                  {std::string("H294")});
    const std::string filled = installation.directory().read("TABCOM.MDB");
    EXPECT_FALSE(filled == empty);
    run_to_walk();
    EXPECT_TRUE(installation.directory().read("TABCOM.MDB") == filled);
}

TEST_F(StartUp, ArchivesOfThePeriodHaveTheirNames) {
    run_to_walk();
    EXPECT_EQ(NZCedLibPaga::slip_images.path, registry.archives + "\\NZ202405.MDB");
    EXPECT_EQ(NZRetMesINPDAP::quadri.path, registry.archives + "\\NZINPD2024.MDB");
    EXPECT_FALSE(NZCedLibPaga::archive_exists());
    EXPECT_FALSE(NZRetMesINPDAP::archive_exists());
    installation.directory().write("nz202405.mdb", "");
    installation.directory().write("nzinpd2024.mdb", "");
    EXPECT_TRUE(NZCedLibPaga::archive_exists());
    EXPECT_TRUE(NZRetMesINPDAP::archive_exists());
    environment.archive_directory = "X:";
    EXPECT_EQ(NZCedLibPaga::archive_name("2008", "05"), "X:\\NZCU2008.MDB");
    environment = {};
}

TEST_F(StartUp, ControlListsStartEmpty) {
    ModSWCALM::run_tables.list_9999[1] = "di prima";
    ModSWCALM::run_tables.list_999[1] = "di prima";
    ModSWCALM::run_tables.list_1000[1] = "di prima";
    ModSWCALM::run_tables.bonus_list = {"di prima"};
    // The walk clears nothing, so what is empty then was cleared before it.
    run_to_walk();
    EXPECT_EQ(ModSWCALM::run_tables.list_9999[1], "");
    EXPECT_EQ(ModSWCALM::run_tables.list_999[1], "");
    EXPECT_EQ(ModSWCALM::run_tables.list_1000[1], "");
    EXPECT_TRUE(ModSWCALM::run_tables.bonus_list.empty());
}

TEST_F(StartUp, MissingLogicalFileIsAFailure) {
    std::filesystem::remove(installation.directory().file(name_of(kPayItems)));
    EXPECT_EQ(run().failure, 53);
}

}  // namespace
