#include "installation/installation.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "context/environment.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "installation/tool_error.h"
#include "platform/file_system.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;
using MXREPOSITORY::Area;
using MXREPOSITORY::Descriptor;

constexpr std::size_t kBaseLine = 79;  // a line of NZBASE.DAT
constexpr std::size_t kSelectionEntries = 20;
constexpr std::string_view kEndOfSelection = "9999999999";

std::string zero_filled(int number, std::size_t width) {
    return MXREPOSITORY::zeri_a_sinistra(std::to_string(number), width);
}

std::string blank_filled(std::string_view text, std::size_t width) {
    return MXREPOSITORY::a_sinistra(text, width);
}

void write_file(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    out.flush();
    if (!out) {
        throw ToolError(texts::kToolCannotWrite, {path.string()});
    }
}

/// NZBASE.DAT: 600 lines of 79 characters, name in 4-32 and record length in 33-37.
std::string file_table_bytes() {
    std::string bytes;
    for (int number = 1; number <= MXLIBRERIA::kLogicalFiles; ++number) {
        const FileLayout* layout = find_layout(number);
        const std::string name =
            layout != nullptr ? std::string(layout->name) : "NZ" + zero_filled(number, 4) + ".DAT";
        const int length = layout != nullptr ? layout->length : 128;
        std::string line = zero_filled(number, 3) + blank_filled(name, 29) + zero_filled(length, 5);
        bytes += blank_filled(line, kBaseLine);
    }
    return bytes;
}

/// A row of a dictionary file: length in 30-31, type 32, offset 50-54, flag 65, code 69-72.
std::string dictionary_row(const Descriptor& field) {
    std::string row(80, ' ');
    row.replace(29, 2, zero_filled(field.length, 2));
    row[31] = field.type;
    row.replace(49, 5, zero_filled(field.offset, 5));
    row[64] = field.flag;
    row.replace(68, 4, field.name());
    return row;
}

std::string dictionary_bytes(char letter) {
    std::string bytes;
    for (const Descriptor& field : MXREPOSITORY::fields_of(MXREPOSITORY::area_of_letter(letter))) {
        if (field.name().front() == letter) {
            bytes += dictionary_row(field);
        }
    }
    return bytes;
}

/// What a file holds when the installation is new.
std::string first_content(const FileLayout& layout) {
    if (layout.content == Content::lock) {
        return std::string(static_cast<std::size_t>(layout.length), ' ');
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if (dictionary_files(letter).front() == layout.number) {
            return dictionary_bytes(letter);
        }
    }
    return {};
}

void write_registry(const fs::path& directory) {
    const fs::path root = fs::absolute(directory).lexically_normal();
    write_file(directory / "registro.ini",
               "[SOFTWARE\\TRAMONTIVAL\\SOLMAREL]\n"
               "PERCORSOARCHIVI=" +
                   (root / "archivi").string() + "\n" +
                   "PERCORSOPROGRAMMI=" + (root / "programmi").string() + "\n");
}

/// The archive directory that a registry file names; empty if it names none.
std::string archive_directory_of(const std::string& registry_file) {
    constexpr std::string_view key = "PERCORSOARCHIVI=";
    for (const std::string& line : platform::read_lines(registry_file)) {
        if (line.starts_with(key)) {
            return platform::path_on_disk(line.substr(key.size()));
        }
    }
    return {};
}

/// The record that stands for a number that nobody has given: a deleted pay item or contract, so
/// that the calculation passes it over, and an empty record elsewhere.
std::string record_left_out(int file, std::size_t length) {
    std::string record = empty_record(Installation::area_of(file), length);
    std::string deleted = "99";
    if (file == kPayItems) {
        MXREPOSITORY::SCRIVICAMPO(MXREPOSITORY::Z049, deleted, 0, record);
    } else if (file == kContracts) {
        MXREPOSITORY::SCRIVICAMPO(MXREPOSITORY::G500, deleted, 0, record);
    }
    return record;
}

void expect_directory(const std::string& directory) {
    if (directory.empty()) {
        throw ToolError(texts::kToolNoDirectory, {});
    }
}

void make_directory(const fs::path& directory) {
    std::error_code failed;
    fs::create_directories(directory, failed);
    if (failed) {
        throw ToolError(texts::kToolCannotWrite, {directory.string()});
    }
}

}  // namespace

std::string make_archive_directory(const std::string& directory) {
    expect_directory(directory);
    const fs::path archive = fs::path(directory) / "archivi";
    make_directory(archive);
    return fs::absolute(archive).lexically_normal().string();
}

Installation::Installation(std::string archive_directory, std::string registry_file)
    : archive_directory_(std::move(archive_directory)), registry_file_(std::move(registry_file)) {}

Installation::~Installation() {
    try {
        close();
    } catch (const std::exception&) {  // closing a file that is gone harms nobody
    }
}

Installation Installation::create(const std::string& directory) {
    expect_directory(directory);
    const fs::path root(directory);
    if (platform::files().exists((root / "archivi" / "NZBASE.DAT").string())) {
        throw ToolError(texts::kToolInstallationExists, {directory});
    }
    const fs::path archive = make_archive_directory(directory);
    make_directory(root / "programmi");
    write_registry(root);
    write_file(archive / "NZBASE.DAT", file_table_bytes());
    for (const FileLayout& layout : file_layouts()) {
        write_file(archive / layout.name, first_content(layout));
    }
    Installation made(archive.string(), (root / "registro.ini").string());
    made.attach();
    for (const FileLayout& layout : file_layouts()) {
        if (layout.content == Content::index) {
            MXLIBRERIA::ISAM(layout.number, "", MXLIBRERIA::kIsamEmpty, 0);
        }
    }
    made.write_selection({});
    return made;
}

Installation Installation::open(const std::string& directory) {
    expect_directory(directory);
    const auto has_file_table = [](const std::string& path) {
        return platform::files().exists(path + "/NZBASE.DAT");
    };
    if (has_file_table(directory)) {
        return Installation(fs::absolute(directory).lexically_normal().string(), "");
    }
    const std::string registry_file = directory + "/registro.ini";
    if (platform::files().exists(registry_file)) {
        const std::string archive = archive_directory_of(registry_file);
        if (!archive.empty() && has_file_table(archive)) {
            return Installation(archive, registry_file);
        }
    }
    throw ToolError(texts::kToolNoInstallation, {directory});
}

void Installation::attach() const {
    if (MXLIBRERIA::environment.archive_directory != archive_directory_) {
        MXLIBRERIA::CHIUDI(0);
        MXLIBRERIA::environment.archive_directory = archive_directory_;
    }
}

std::string Installation::path(int file) const {
    if (file < 1 || file > MXLIBRERIA::kLogicalFiles) {
        throw ToolError(texts::kToolFileNumber, {std::to_string(file)});
    }
    attach();
    std::int16_t relative = -1;
    return platform::path_on_disk(MXLIBRERIA::DAMMIFILE(file, relative));
}

bool Installation::exists(int file) const {
    return platform::files().exists(path(file));
}

void Installation::use(int file) const {
    const std::string where = path(file);
    if (!platform::files().exists(where)) {
        throw ToolError(texts::kToolNoFile, {std::to_string(file), where});
    }
    MXLIBRERIA::FileTable::Entry& entry =
        MXLIBRERIA::file_table.entries[static_cast<std::size_t>(file)];
    if (entry.CANALI == 0) {
        MXLIBRERIA::FAIOPEN(file);
    }
    if (entry.LUNGHEZZE <= 0) {
        throw ToolError(texts::kToolRecordLength, {std::to_string(file)});
    }
}

int Installation::record_length(int file) const {
    use(file);
    return static_cast<int>(
        MXLIBRERIA::file_table.entries[static_cast<std::size_t>(file)].LUNGHEZZE);
}

int Installation::record_count(int file) const {
    const int length = record_length(file);
    return static_cast<int>(MXLIBRERIA::file_length(file) / length);
}

std::optional<std::string> Installation::read(int file, int record) const {
    if (record < 1 || record > record_count(file)) {
        return std::nullopt;
    }
    MXLIBRERIA::LEGGIREC(file, record);
    return MXLIBRERIA::record_buffer(file);
}

void Installation::write(int file, int record, const std::string& bytes) {
    if (record < 1) {
        throw ToolError(texts::kToolRecordNumber, {std::to_string(record)});
    }
    const int present = record_count(file);
    const auto length = static_cast<std::size_t>(record_length(file));
    for (int missing = present + 1; missing < record; ++missing) {
        MXLIBRERIA::write_whole_record(file, missing, record_left_out(file, length));
    }
    MXLIBRERIA::write_whole_record(file, record, bytes);
}

void Installation::write_all(int file, const std::vector<std::string>& records) {
    const std::string where = path(file);
    MXLIBRERIA::CHIUDI(file);
    write_file(where, {});
    int number = 0;
    for (const std::string& record : records) {
        write(file, ++number, record);
    }
}

void Installation::write_lines(int file, const std::vector<std::string>& lines) {
    std::string bytes;
    for (const std::string& line : lines) {
        bytes += line + "\r\n";
    }
    write_file(path(file), bytes);
}

Area Installation::area_of(int file) {
    const FileLayout* layout = find_layout(file);
    return layout == nullptr ? Area::unknown : layout->area;
}

void Installation::write_period(std::string_view date, char kind) {
    write(kPeriod, 1, std::string(date) + kind);
}

void Installation::write_selection(const std::vector<std::pair<int, int>>& entries) {
    std::vector<std::string> records;
    std::string record;
    const auto add = [&](std::string_view entry) {
        record += entry;
        if (record.size() == kSelectionEntries * kEndOfSelection.size()) {
            records.push_back(std::exchange(record, {}));
        }
    };
    for (const auto& [company, employee] : entries) {
        add(zero_filled(company, 3) + "000" + zero_filled(employee, 4));
    }
    add(kEndOfSelection);
    if (!record.empty()) {
        records.push_back(record);
    }
    write_all(kSelection, records);
}

std::vector<std::pair<int, int>> Installation::read_selection() const {
    std::vector<std::pair<int, int>> entries;
    for (int number = 1; const std::optional<std::string> record = read(kSelection, number);
         ++number) {
        for (std::size_t i = 0; i < kSelectionEntries; ++i) {
            const std::string_view entry = MXREPOSITORY::ritaglia(*record, i * 10 + 1, 10);
            if (entry == kEndOfSelection) {
                return entries;
            }
            entries.emplace_back(static_cast<int>(MXREPOSITORY::valore(entry.substr(0, 3))),
                                 static_cast<int>(MXREPOSITORY::valore(entry.substr(6, 4))));
        }
    }
    return entries;
}

void Installation::close() const {
    if (MXLIBRERIA::environment.archive_directory == archive_directory_) {
        MXLIBRERIA::CHIUDI(0);
    }
}

Installation copy_installation(const std::string& source, const std::string& target) {
    std::error_code failed;
    fs::create_directories(target, failed);
    if (!failed) {
        fs::copy(source, target, fs::copy_options::recursive, failed);
    }
    if (failed) {
        throw ToolError(texts::kToolCannotWrite, {target});
    }
    write_registry(target);
    return Installation::open(target);
}

}  // namespace nzutil
