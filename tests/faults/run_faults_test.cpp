// The program itself, started on copies of the demo installation that have been damaged.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <thread>

#include "files/file_numbers.h"
#include "installation/demo.h"
#include "installation/installation.h"
#include "nzutil/process.h"
#include "platform/code_page.h"
#include "platform/file_system.h"
#include "tests/support/demo_run.h"
#include "texts/texts.h"

namespace {

namespace fs = std::filesystem;
using nzutil::Installation;
using nzutil::ProcessCall;
using nzutil::ProcessResult;
using namespace MXLIBRERIA::file_numbers;

class RunFaults : public test_support::DemoRun {
  protected:
    /// A run that the failure handler ends: number, description and trace are shown, status 1.
    void expect_failure(const std::string& number_and_description,
                        const std::string& in_trace) const {
        const ProcessResult result = run();
        EXPECT_EQ(result.status, 1) << result.output << result.errors;
        EXPECT_NE(result.output.find("[Solmarel VELMOR] Errore " + number_and_description),
                  std::string::npos)
            << result.output;
        EXPECT_NE(result.output.find(in_trace), std::string::npos) << result.output;
        EXPECT_NE(result.output.find("LANCIARE RIPRISTINO TASK"), std::string::npos);
    }
    /// The same, and no byte of the archive has changed.
    void expect_failure_that_changes_nothing(const std::string& number_and_description,
                                             const std::string& in_trace) const {
        const auto before = snapshot();
        expect_failure(number_and_description, in_trace);
        EXPECT_EQ(snapshot(), before);
    }

    void change_file_table(int file, const std::string& length) const {
        constexpr std::size_t kLine = 79;
        constexpr std::size_t kLengthColumn = 32;
        const std::string table = archive() + "/NZBASE.DAT";
        std::string content = bytes(table);
        content.replace((static_cast<std::size_t>(file) - 1) * kLine + kLengthColumn, 5, length);
        write(table, content);
    }
};

// ---- Registry and configuration ----

TEST_F(RunFaults, RegistryWithoutTheKeyAndNoPathFilesIsAConfigurationError) {
    write(root() + "/registro.ini", "[SOFTWARE\\ALTRO]\nPERCORSOARCHIVI=" + archive() + "\n");
    const auto before = snapshot();
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.output.find(std::string(texts::kConfigurationError.utf8)), std::string::npos);
    EXPECT_EQ(snapshot(), before);
}

TEST_F(RunFaults, ArchiveDirectoryThatDoesNotExistIsAConfigurationError) {
    write(root() + "/registro.ini", "[SOFTWARE\\TRAMONTIVAL\\SOLMAREL]\nPERCORSOARCHIVI=" + root() +
                                        "/assente\nPERCORSOPROGRAMMI=" + root() + "/programmi\n");
    EXPECT_EQ(run().status, 2);
}

TEST_F(RunFaults, PathFilesServeAMachineWithoutRegistry) {
    installation().write_selection({{1, 1}});
    fs::remove(root() + "/registro.ini");
    fs::create_directories(directory.file("primulax"));
    write(directory.file("primulax/NZPERARK.NZP"), archive() + "\r\n");
    write(directory.file("primulax/NZPERPRO.NZP"), root() + "/programmi\r\n");
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(result.output.find(std::string(texts::kDone.utf8)), std::string::npos);
}

// ---- NZBASE.DAT ----

TEST_F(RunFaults, MissingFileTable) {
    fs::remove(archive() + "/NZBASE.DAT");
    expect_failure_that_changes_nothing("53 File not found", "DAMMIFILE$ (55)");
}

TEST_F(RunFaults, ShortFileTable) {
    // The line of file 55 ends after 55 x 79 bytes; this one lacks it.
    fs::resize_file(archive() + "/NZBASE.DAT", 54 * 79);
    expect_failure_that_changes_nothing("62 Input past end of file", "DAMMIFILE$ (55)");
}

TEST_F(RunFaults, RecordLengthOfZeroOrLetters) {
    for (const char* length : {"00000", "12A45", "     "}) {
        change_file_table(kEmployees, length);
        expect_failure_that_changes_nothing("59 Bad record length", "DAMMIFILE$ (2)");
    }
}

// ---- Logical files ----

TEST_F(RunFaults, MissingEmployeesFile) {
    fs::remove(path(kEmployees));
    expect_failure_that_changes_nothing("53 File not found", "DAMMIFILE$ (2)");
}

TEST_F(RunFaults, EmptyEmployeesFile) {
    write(path(kEmployees), "");
    installation().write_selection({{1, 1}});
    expect_failure_that_changes_nothing("63 Bad record number", "l'archivio 2 ha 0 record");
}

TEST_F(RunFaults, LastEmployeeCutShortIsNotPrepared) {
    const Installation here = installation();
    const int last = here.record_count(kEmployees);
    const std::string file = here.path(kEmployees);
    installation().write_selection({{1, last}});
    fs::resize_file(file, fs::file_size(file) - 100);
    expect_failure_that_changes_nothing("63 Bad record number",
                                        "l'archivio 2 ha " + std::to_string(last - 1) + " record");
}

TEST_F(RunFaults, EmptyYearlyTables) {
    write(path(kFixedData), "");
    expect_failure_that_changes_nothing("62 Input past end of file", "LEGGIREC (19-1)");
}

TEST_F(RunFaults, EmptyPeriodFileIsNothingToDo) {
    write(path(kPeriod), "");
    const auto before = snapshot();
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(snapshot(), before);
}

TEST_F(RunFaults, EmptySelectionFileIsNothingToDo) {
    write(path(kSelection), "");
    const std::string employees = bytes(path(kEmployees));
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(bytes(path(kEmployees)), employees);
}

// ---- Tables that no slip can do without ----

/// Bytes written at a 0-based position of a file, or the length that is left of it.
struct Damage {
    int file;
    std::size_t position;
    std::string bytes;  ///< empty: the file ends at the position
    std::string in_message;
};

TEST_F(RunFaults, ADamagedTableEndsTheRunBeforeAnythingIsWritten) {
    const std::vector<Damage> damages{
        {kPayItems, 0, "", "Archivio o record: 401-1 VOCI.DAT"},
        {kPayItems, 1501, "", "Archivio o record: 401-2 VOCI.DAT"},
        {kEmployeeFields, 0, "", "Archivio o record: 11-1 CAMPIP.DAT"},
        {33, 100, "", "Archivio o record: 33-2 CAMPIQ.DAT"},
        {9, 80, "", "nel dizionario manca il campo F"},
        {13, 0, "", "Archivio o record: 13-1 CAMPIT.DAT"},
        {kFixedData, 302, "A", "nel campo F021 non c'è un numero"},
        {kSectors, 0, "1X", "nel campo S003 non c'è un numero"},
        {kTaxBrackets, 9, "2O0", "Archivio o record: 18-1 SCAGLIRP.DAT"},
        {kTaxBrackets, 80, "", "nessuno scaglione chiude la tabella"},
        {kSeveranceBrackets, 80, "", "nessuno scaglione chiude la tabella"},
        {kPeriod, 9, "", "il periodo è tronco"},
        {kPeriod, 2, "13", "la data del periodo non è nel calendario"},
        {kPeriod, 0, "00", "la data del periodo non è nel calendario"},
        {kSelection, 10, "", "la selezione è tronca"},
        {kSelection, 7, "O", "nella selezione l'elemento 1 non ha i numeri di ditta"},
        {kSelection, 10, "          ", "nella selezione l'elemento 2 non ha i numeri di ditta"},
        {kSelection, 10, "0010000000", "nella selezione l'elemento 2 non ha i numeri di ditta"},
        {kSelection, 10, "0000000001", "nella selezione l'elemento 2 non ha i numeri di ditta"},
        {kSelection, 10, "001000-001", "nella selezione l'elemento 2 non ha i numeri di ditta"},
        {kSelection, 10, "001   -  2", "Archivio o record: 5-1 SELEZ.DAT"},
        {kSelection, 10, "0010000999", "nella selezione l'elemento 2 è un dipendente che non c'è"},
        {kFixedData, 0, "", "Archivio o record: 19-1 FISSI.DAT"},
        {kFixedData, 3099, "", "Archivio o record: 19-1 FISSI.DAT"},
        {kTaxBrackets, 40, "", "Archivio o record: 18-1 SCAGLIRP.DAT"},
        {kTaxBrackets, 120, "", "Archivio o record: 18-2 SCAGLIRP.DAT"},
    };
    for (const Damage& damage : damages) {
        SCOPED_TRACE(damage.in_message);
        const std::string file = path(damage.file);
        installation().close();
        const std::string sound = bytes(file);
        std::string content = sound.substr(0, damage.position) + damage.bytes;
        if (!damage.bytes.empty()) {
            content += sound.substr(content.size());
        }
        write(file, content);
        const auto before = snapshot();
        const ProcessResult result = run();
        EXPECT_EQ(result.status, 1) << result.output << result.errors;
        EXPECT_NE(result.output.find(damage.in_message), std::string::npos) << result.output;
        EXPECT_NE(result.output.find("Che cosa fare: "), std::string::npos) << result.output;
        EXPECT_EQ(snapshot(), before);
        write(file, sound);
    }
    EXPECT_EQ(run().status, 0);
}

TEST_F(RunFaults, ProgressNamesBothWalksAndComesTo100Once) {
    installation().write_selection({{1, 1}, {1, 2}});
    EXPECT_EQ(run().errors,
              "Preparazione dei dipendenti 1/2 (10%)\nPreparazione dei dipendenti 2/2 (20%)\n"
              "Calcolo dei cedolini 1/2 (60%)\nCalcolo dei cedolini 2/2 (100%)\n");
}

// ---- Selection ----

TEST_F(RunFaults, SelectionOfACompanyThatDoesNotExist) {
    installation().write_selection({{77, 1}, {1, 1}});
    const std::string employees = bytes(path(kEmployees));
    const std::string companies = bytes(path(kCompanies));
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_NE(result.output.find("Dipendenti non elaborati: 2"), std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("MANCA DITTA 77"), std::string::npos) << result.output;
    EXPECT_EQ(bytes(path(kEmployees)), employees);
    EXPECT_EQ(bytes(path(kCompanies)), companies);
}

/// Nobody reads the employee of a company that is not there: the message names the company.
TEST_F(RunFaults, SelectionOfACompanyThatDoesNotExistMayNameAnyEmployee) {
    installation().write_selection({{77, 999}});
    EXPECT_NE(run().output.find("MANCA DITTA 77"), std::string::npos);
}

TEST_F(RunFaults, SelectionOfAnEmployeeThatDoesNotExistLeavesTheOthersAlone) {
    const int beyond = installation().record_count(kEmployees) + 5;
    installation().write_selection({{1, beyond}});
    expect_failure_that_changes_nothing("63 Bad record number", "5-1 SELEZ.DAT");
}

TEST_F(RunFaults, EmptyIndexOfBeforeImagesIsShownAndTheRunGoesOn) {
    write(path(kBeforeImageIndex), "");
    installation().write_selection({{1, 1}});
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(result.output.find("ERRORE ISAM - FILE VUOTO 36"), std::string::npos);
}

// ---- Other programs ----

TEST_F(RunFaults, TwoInstallationsOnOneMachineDoNotStopEachOther) {
    auto holder = platform::files().open(path(kSemaphore), platform::OpenMode::exclusive);
    ProcessResult first;
    std::thread waiting([this, &first] { first = nzutil::run_process(call("first")); });
    nzutil::copy_installation(demo->file("demo"), directory.file("altra")).close();
    ProcessCall other = call("other");
    other.environment.front().second = directory.file("altra") + "/registro.ini";
    EXPECT_EQ(nzutil::run_process(other).status, 0);
    holder.reset();
    waiting.join();
    EXPECT_EQ(first.status, 0);
}

// ---- Rights ----

TEST_F(RunFaults, ReadOnlyArchiveDirectoryChangesNothing) {
    const auto before = snapshot();
    ProcessCall restricted = call();
    if (::geteuid() == 0) {
        // Rights do not hold for root: the run becomes one of nobody's, from a copy it can reach.
        fs::copy_file(VELMOR_PROGRAM, directory.file("velmor"));
        restricted.program = "/usr/bin/setpriv";
        restricted.arguments = {"--reuid=65534", "--regid=65534", "--clear-groups",
                                directory.file("velmor")};
        if (!fs::exists(restricted.program)) {
            GTEST_SKIP() << "no way to give up root's rights";
        }
    }
    fs::permissions(directory.path(), fs::perms(0755));
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root())) {
        fs::permissions(entry.path(), fs::perms(entry.is_directory() ? 0555 : 0444));
    }
    const ProcessResult result = nzutil::run_process(restricted);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root())) {
        fs::permissions(entry.path(), fs::perms(entry.is_directory() ? 0755 : 0644));
    }
    EXPECT_EQ(result.status, 1) << result.output << result.errors;
    EXPECT_NE(result.output.find("Errore 75 Path/File access error"), std::string::npos)
        << result.output;
    EXPECT_EQ(snapshot(), before);
}

// ---- Command line ----

TEST_F(RunFaults, CommandLineKnowsHelpAndVersionOnly) {
    ProcessCall asked = call();
    asked.arguments = {"--help"};
    EXPECT_EQ(nzutil::run_process(asked).status, 0);
    EXPECT_EQ(nzutil::run_process(asked).output, std::string(texts::kHelp.utf8));
    asked.arguments = {"--version"};
    EXPECT_EQ(nzutil::run_process(asked).status, 0);
    EXPECT_TRUE(nzutil::run_process(asked).output.starts_with("VELMOR "));
    asked.arguments = {"--tutti"};
    const auto before = snapshot();
    const ProcessResult refused = nzutil::run_process(asked);
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.errors.find("--tutti"), std::string::npos);
    asked.arguments = {"--\x1B[2J"};
    EXPECT_NE(nzutil::run_process(asked).errors.find("--?[2J"), std::string::npos);
    EXPECT_EQ(snapshot(), before);
}

}  // namespace
