// modelli, comuni: archives with tables.

#include <array>
#include <filesystem>
#include <functional>
#include <iostream>

#include "archive/store_tables.h"
#include "history/quadri.h"
#include "history/slip_images.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/killed_run.h"
#include "nzutil/municipalities.h"
#include "nzutil/write_lock.h"
#include "platform/file_system.h"
#include "tax/municipal_table.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;
using Tables = std::vector<platform::Table>;

Tables monthly_tables() {
    const auto tables = NZRetMes::store_tables();
    return {NZRetMes::store_schema(tables[0]), NZRetMes::store_schema(tables[1]),
            NZRetMes::release_schema()};
}

Tables third_monthly_table() {
    return {NZRetMes::store_schema(NZRetMes::store_tables()[2])};
}

Tables image_tables() {
    return {NZCedLibPaga::slip_image_schema()};
}

Tables municipal_tables() {
    return {ModSWCALB::municipal_schema()};
}

/// An empty archive of the suite and its tables.
struct Template {
    const char* name;
    Tables (*tables)();
};
constexpr std::array<Template, 5> kTemplates{{
    {"NZRETXXX.MDB", monthly_tables},
    {"NZRETXX3.MDB", third_monthly_table},
    {"NZCUXXXX.MDB", image_tables},
    {"NZINPDXX.MDB", NZRetMesINPDAP::quadri_schema},
    {"TABCOMXX.MDB", municipal_tables},
}};

/// The table RELEASE has one row, that tells the release of the archive.
void write_release(const std::string& path) {
    constexpr double kRelease = 1;
    const auto archive = platform::open_database(path, platform::DatabaseMode::read_write);
    if (archive->has_table("RELEASE")) {
        archive->execute("insert into RELEASE (RELEASE) values (?)", {kRelease});
    }
}

/// The archive directory of an installation, or the directory itself, made where it is missing.
std::string directory_for_templates(const std::string& directory) {
    if (directory.empty()) {
        throw ToolError(texts::kToolNoDirectory, {});
    }
    const fs::path archives = fs::path(directory) / "archivi";
    if (fs::exists(archives / "NZBASE.DAT")) {
        return archives.string();
    }
    std::error_code failed;
    fs::create_directories(directory, failed);
    if (!fs::is_directory(directory)) {
        throw ToolError(texts::kToolCannotWrite, {directory});
    }
    return directory;
}

}  // namespace

int command_templates(const Arguments& arguments) {
    const std::string directory = directory_for_templates(arguments[0]);
    const WriteLock lock = WriteLock::of_directory(directory, "modelli");
    for (const Template& model : kTemplates) {
        const std::string path = (fs::path(directory) / model.name).string();
        const bool there = platform::files().exists(path);
        if (!there) {
            platform::create_database(path, model.tables());
            write_release(path);
        }
        std::cout << fill(there ? texts::kToolTemplateThere : texts::kToolTemplateMade, {path})
                  << '\n';
    }
    return 0;
}

int command_municipalities(const Arguments& arguments) {
    const std::vector<Municipality> municipalities = read_municipalities(arguments[0]);
    const Installation installation = open_installation(arguments[1]);
    const WriteLock lock(installation, "comuni");
    write_municipalities(installation.archive_directory(), municipalities);
    std::cout << fill(texts::kToolMunicipalitiesWritten, {std::to_string(municipalities.size())})
              << '\n';
    return 0;
}

}  // namespace nzutil
