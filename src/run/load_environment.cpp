#include "run/load_environment.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iomanip>
#include <sstream>

#include "context/environment.h"
#include "context/failure_handler.h"
#include "context/trace.h"
#include "context/utilities.h"
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

// ---- One instance for each installation ----

/// A short name for a directory, the same in every process (FNV-1a over its characters).
std::string digest(const std::string& text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    std::ostringstream name;
    name << std::hex << std::setw(16) << std::setfill('0') << hash;
    return name.str();
}

/// The lock belongs to the archive that the run would work on, so that two installations on one
/// machine do not stop each other. It lies in the machine's directory of temporary files, since
/// the archive may refuse writing.
std::string lock_name() {
    std::string archive = from_registry("PERCORSOARCHIVI");
    if (archive.empty()) {
        archive = from_path_file("NZPERARK.NZP");
    }
    std::string directory = platform::path_on_disk(archive);
    while (directory.size() > 1 && directory.back() == '/') {
        directory.pop_back();
    }
    return (std::filesystem::temp_directory_path() / ("velmor-" + digest(directory))).string();
}

void end_if_other_instance_runs() {
    const std::string name = lock_name();
    if (instance_lock.lock != nullptr && instance_lock.name == name) {
        return;
    }
    instance_lock = {name, platform::try_named_lock(name)};
    if (instance_lock.lock == nullptr) {
        throw platform::EndOfProgram(kOtherInstanceStatus);
    }
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
    const std::string record =
        missing ? std::string(static_cast<std::size_t>(length), ' ') : record_buffer(n);
    CHIUDI(n);
    return record;
}

void load_installation_data() {
    platform::set_print_archive_directory(environment.archive_directory);
    environment.installation_record = only_record(55);
    const std::string installation = only_record(395);
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
    end_if_other_instance_runs();
    take_task_number();
    const std::string programs = from_registry("PERCORSOPROGRAMMI");
    const std::string archives = from_registry("PERCORSOARCHIVI");
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
    end_if_other_instance_runs();
    const std::string archives = from_path_file("NZPERARK.NZP");
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
