#include "run/load_environment.h"

#include <cstdlib>
#include <utility>

#include "context/environment.h"
#include "context/failure_handler.h"
#include "context/messages.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "platform/file_system.h"
#include "platform/printer.h"
#include "platform/window.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;

InstanceLock instance_lock;

namespace {

constexpr const char* kTraceName = "CARICAINST";
constexpr const char* kRegistryRoot = "HKEY_CURRENT_USER";
constexpr const char* kRegistryKey = "SOFTWARE\\TRAMONTIVAL\\SOLMAREL";
constexpr int kOtherInstanceStatus = 3;
constexpr int kConfigurationStatus = 2;

/// A variable of the process, empty if it is not set.
std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

// ---- Where the directories are told ----

std::string from_registry(const char* value) {
    return LEGGIREGISTRO(kRegistryRoot, kRegistryKey, value);
}

/// The directory of the path files, which on Windows is C:\PRIMULAX\.
std::string path_file(const std::string& name) {
    const std::string directory = variable("PRIMULAX");
    return (directory.empty() ? "/opt/primulax" : directory) + "\\" + name;
}

/// The trimmed first line of a path file; empty if there is no such file.
std::string from_path_file(const std::string& name) {
    const std::string path = path_file(name);
    if (ESISTEFILE(path) != kTrue) {
        return {};
    }
    const std::vector<std::string> lines = platform::read_lines(path);
    return lines.empty() ? std::string() : rifila(lines.front());
}

// ---- One run on each archive ----

/// Two installations on one machine do not stop each other: the lock belongs to the archive. What
/// is no directory is no archive either, and its configuration error comes later.
void end_if_other_instance_runs(const std::string& archive) {
    const std::string directory = platform::canonical_directory(archive);
    if (directory.empty() ||
        (instance_lock.lock != nullptr && instance_lock.directory == directory)) {
        return;
    }
    instance_lock = {};
    platform::LockAttempt attempt =
        platform::try_directory_lock(directory, texts::kProgramFile.utf8);
    if (attempt.lock == nullptr) {
        platform::window().remark(archive_in_use(attempt.holder));
        throw platform::EndOfProgram(kOtherInstanceStatus);
    }
    instance_lock = {directory, std::move(attempt.lock)};
}

// ---- Installation data ----

/// Upper case of code page 1252.
std::string upper_case(std::string text) {
    constexpr unsigned char kDivisionSign = 0xF7;  // stands among the letters, has no upper case
    for (char& c : text) {
        const auto code = static_cast<unsigned char>(c);
        if ((code >= 'a' && code <= 'z') ||
            (code >= 0xE0 && code <= 0xFE && code != kDivisionSign)) {
            c = static_cast<char>(code - 0x20);
        } else if (code == 0x9A || code == 0x9C || code == 0x9E) {
            c = static_cast<char>(code - 0x10);
        } else if (code == 0xFF) {
            c = static_cast<char>(0x9F);
        }
    }
    return text;
}

/// Record 1 of a logical file that is open for this reading only; blanks if it has none.
std::string only_record(double n) {
    const double length = FAIOPEN(n);
    const bool missing = LEGGIREC(n, 1) == 1;
    std::string record =
        missing ? std::string(static_cast<std::size_t>(length), ' ') : record_buffer(n);
    CHIUDI(n);
    return record;
}

void load_installation_data() {
    platform::set_print_archive_directory(environment.archive_directory);
    environment.installation_record = only_record(file_numbers::kInstallation);
    const std::string installation = only_record(file_numbers::kUser);
    environment.installation_name = rifila(upper_case(std::string(ritaglia(installation, 1, 30))));
    environment.installation_tax_code =
        rifila(upper_case(std::string(ritaglia(installation, 31, 11))));
}

void take_task_number() {
    constexpr std::size_t kTaskWidth = 2;
    const std::string task = rifila(variable("VELMOR_TASK"));
    environment.task = task.empty() ? "01" : zeri_a_sinistra(task, kTaskWidth);
}

}  // namespace

void CARICAAMBIENTE() {
    TRACCIA(kTraceName);
    const std::string programs = from_registry("PERCORSOPROGRAMMI");
    const std::string archives = from_registry("PERCORSOARCHIVI");
    end_if_other_instance_runs(archives);
    take_task_number();
    environment.archive_directory.clear();
    if (platform::files().directory_exists(programs) &&
        platform::files().directory_exists(archives)) {
        environment.programs_directory = programs;
        environment.archive_directory = archives;
        load_installation_data();
    }
}

void load_from_path_files() {
    TRACCIA(kTraceName);
    const std::string archives = from_path_file("NZPERARK.NZP");
    end_if_other_instance_runs(archives);
    const std::string programs = from_path_file("NZPERPRO.NZP");
    if (archives.empty() || programs.empty()) {
        platform::window().box(texts::kSuiteTitle.bytes(), texts::kConfigurationError.bytes(),
                               platform::Icon::critical);
        close_all_files();
        throw platform::EndOfProgram(kConfigurationStatus);
    }
    environment.archive_directory = archives;
    environment.programs_directory = programs;
    load_installation_data();
}

}  // namespace ModSWCALM
