#include "files/logical_files.h"

#include <algorithm>
#include <bitset>
#include <charconv>
#include <chrono>
#include <cmath>
#include <string_view>
#include <thread>
#include <utility>

#include "context/environment.h"
#include "context/failure_handler.h"
#include "context/messages.h"
#include "context/trace.h"
#include "files/file_numbers.h"
#include "files/recovery_slot.h"
#include "platform/failure.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace MXLIBRERIA {

using MXREPOSITORY::destra;
using MXREPOSITORY::rifila;
using MXREPOSITORY::rifila_destra;
using MXREPOSITORY::ritaglia;
using MXREPOSITORY::testo_numero;
using MXREPOSITORY::valore;
using platform::Failure;
using platform::files;
using platform::OpenMode;
using namespace MXLIBRERIA::file_numbers;

FileTable file_table;

namespace {

constexpr std::size_t kLineLength = 79;
constexpr std::size_t kNamePosition = 4;
constexpr std::size_t kNameWidth = 29;
constexpr std::size_t kLengthPosition = 33;
constexpr std::size_t kLengthWidth = 5;
/// The rest of a line is not used: the last line of the file may end here.
constexpr std::size_t kUsedLength = kLengthPosition + kLengthWidth - 1;
static_assert(kNamePosition + kNameWidth == kLengthPosition && kUsedLength == 37);

constexpr std::size_t kSemaphoreLength = 2000;
/// Channel numbers that a program has for its files.
constexpr std::size_t kChannels = 511;
/// Above this a double no longer tells two neighbouring bytes apart.
constexpr double kLastPosition = 9007199254740992.0;

[[noreturn]] void fail(int number, double n) {
    Failure failure(number);
    failure.culprit = testo_numero(n);
    throw failure;
}

FileTable::Entry& entry(double n) {
    const std::int16_t index = MXREPOSITORY::intero16(n);
    if (index < 1 || index > kLogicalFiles) {
        fail(platform::kSubscriptOutOfRange, n);
    }
    return file_table.entries[static_cast<std::size_t>(index)];
}

/// The lowest channel number that no file holds.
std::int16_t free_channel() {
    std::bitset<kChannels + 1> taken;
    for (const FileTable::Entry& file : file_table.entries) {
        taken.set(static_cast<std::size_t>(file.CANALI));
    }
    for (std::size_t number = 1; number <= kChannels; ++number) {
        if (!taken.test(number)) {
            return static_cast<std::int16_t>(number);
        }
    }
    throw Failure(platform::kTooManyFiles);
}

void close(FileTable::Entry& file) {
    file.channel.reset();
    file.CANALI = 0;
    file.text.clear();
    file.text_position = 0;
}

/// Opens a path as the channel of an entry; the entry stays closed if that fails.
void open_channel(FileTable::Entry& file, const std::string& path, OpenMode mode) {
    close(file);
    set_close_all_files([] { CHIUDI(0); });
    const std::int16_t number = free_channel();
    file.channel = files().open(path, mode);
    file.CANALI = number;
}

platform::Channel& open_channel_of(double n) {
    FileTable::Entry& file = entry(n);
    if (file.channel == nullptr) {
        fail(platform::kBadFileNameOrNumber, n);
    }
    return *file.channel;
}

/// The line of NZBASE.DAT for a logical number.
std::string base_line(double n) {
    const std::size_t position =
        static_cast<std::size_t>(MXREPOSITORY::intero16(n)) * kLineLength - kLineLength;
    const auto channel = files().open(archive_path("\\NZBASE.DAT"), OpenMode::read_only);
    std::string line(kLineLength, ' ');
    if (channel->read_at(position, line.data(), line.size()) < kUsedLength) {
        fail(platform::kInputPastEnd, n);
    }
    return line;
}

/// The record length of a line; 0 where it is not a whole number.
double record_length(std::string_view column) {
    const std::string digits = rifila(column);
    const bool number = digits.find_first_not_of("0123456789") == std::string::npos;
    return number ? valore(digits) : 0;
}

[[noreturn]] void end_for_missing(const texts::Text& text, const std::string& rest = {}) {
    plain_box(text, rest);
    throw platform::EndOfProgram(2);
}

/// Overwrites each occurrence of a placeholder by a value of the same width.
void substitute(std::string& name, std::string_view placeholder, const std::string& value) {
    for (std::size_t at = name.find(placeholder); at != std::string::npos;
         at = name.find(placeholder, at + placeholder.size())) {
        name.replace(at, placeholder.size(), value);
    }
}

bool holds(const std::string& name, std::string_view placeholder) {
    return name.find(placeholder) != std::string::npos;
}

/// The number in the width of its placeholder, cut on the left.
std::string in_width(double number, std::size_t width) {
    return std::string(destra(std::string(width, '0') + testo_numero(number), width));
}

/// "!:\": the letter of a diskette replaces the mark; anything else stands in front of the rest.
void substitute_disk(std::string& name, std::int16_t& relative) {
    if (!holds(name, "!:\\")) {
        return;
    }
    const std::string disk = std::exchange(file_table.disk, {});
    if (disk.starts_with('A') || disk.starts_with('B')) {
        name.replace(name.find("!:\\"), 1, 1, disk.front());
    } else {
        name = disk + std::string(ritaglia(name, 3, name.size()));
    }
    relative = 0;
}

void substitute_company(std::string& name, double n) {
    if (!holds(name, "###")) {
        return;
    }
    const std::string company = in_width(std::exchange(file_table.DITTAOPEN, 0), 3);
    if (valore(company) <= 0) {
        end_for_missing(texts::kMissingCompanyOfFile, testo_numero(n));
    }
    substitute(name, "###", company);
}

/// The year is tested as it was given: 2000 is a year though its two digits are 00.
void substitute_year(std::string& name) {
    if (!holds(name, "**")) {
        return;
    }
    const double year = std::exchange(file_table.year, 0);
    if (year <= 0) {
        end_for_missing(texts::kMissingYearOfFile);
    }
    substitute(name, "**", in_width(year, 2));
}

void substitute_region(std::string& name) {
    if (!holds(name, "@@")) {
        return;
    }
    const std::string region = in_width(std::exchange(file_table.region, 0), 2);
    if (valore(region) <= 0) {
        end_for_missing(texts::kMissingRegionOfFile);
    }
    substitute(name, "@@", region);
}

void substitute_province(std::string& name) {
    if (!holds(name, "%%")) {
        return;
    }
    const std::string province = std::exchange(file_table.province, {});
    if (province.size() != 2) {
        end_for_missing(texts::kMissingProvinceOfFile);
    }
    substitute(name, "%%", province);
}

/// Path of a logical file that is to be opened: without a name there is nothing to open.
std::string path_to_open(double n) {
    std::int16_t relative = -1;
    std::string path = DAMMIFILE(n, relative);
    if (path.ends_with('\\')) {
        fail(platform::kBadFileNameOrNumber, n);
    }
    return path;
}

double open_records(double n, OpenMode mode) {
    TRACCIA("FAIOPEN");
    if (n <= 0) {
        return 0;
    }
    FileTable::Entry& file = entry(n);
    close(file);
    file.table.reset();
    const std::string path = path_to_open(n);
    const double length = file_table.last_length;
    if (length <= 0) {
        fail(platform::kBadRecordLength, n);
    }
    open_channel(file, path, mode);
    file.RECORD.assign(static_cast<std::size_t>(length), ' ');
    file.LUNGHEZZE = length;
    file_table.last_open = length;
    return length;
}

/// Records "PROCEDURE (n-record)" in the trace. Each record read or written passes here, so whole
/// numbers are put together in place.
void trace_record(std::string_view procedure, double n, double record) {
    constexpr double kWhole = 1e15;
    if (n != std::floor(n) || record != std::floor(record) || std::abs(record) >= kWhole) {
        TRACCIA(std::string(procedure) + testo_numero(n) + "-" + testo_numero(record) + ")");
        return;
    }
    std::array<char, 64> name{};
    char* end = std::copy(procedure.begin(), procedure.end(), name.data());
    char* const limit = name.data() + name.size() - 1;
    end = std::to_chars(end, limit, static_cast<std::int64_t>(n)).ptr;
    *end++ = '-';
    end = std::to_chars(end, limit, static_cast<std::int64_t>(record)).ptr;
    *end++ = ')';
    TRACCIA({name.data(), static_cast<std::size_t>(end - name.data())});
}

/// The 0-based position of a record in its file.
std::uint64_t record_position(double n, double record) {
    const double length = entry(n).LUNGHEZZE;
    const double position = std::nearbyint(length * record - length);
    if (!(position >= 0 && position <= kLastPosition)) {
        fail(platform::kBadRecordNumber, n);
    }
    return static_cast<std::uint64_t>(position);
}

/// What reading and writing a record have in common; returns its position.
std::uint64_t begin_record(double n, double record, std::string_view procedure) {
    FileTable::Entry& file = entry(n);
    file.ULTIMOREC = record;
    trace_record(procedure, n, record);
    if (static_cast<double>(file.RECORD.size()) != file.LUNGHEZZE) {
        fail(platform::kBadRecordLength, n);
    }
    return record_position(n, record);
}

void write_at(double n, std::uint64_t position, std::string_view bytes) {
    open_channel_of(n).write_at(position, bytes);
    FileTable::Entry& file = entry(n);
    file.unsynced = true;
    file.table.reset();
}

constexpr std::string_view kReading = "LEGGIREC (";

/// What the file did not give is blanks; 1 where it ended, else 0.
double end_reading(std::string& buffer, std::size_t got) {
    std::fill(buffer.begin() + static_cast<std::ptrdiff_t>(got), buffer.end(), ' ');
    file_table.last_read = got < buffer.size() ? 1 : 0;
    return file_table.last_read;
}

}  // namespace

PlaceholderValues& placeholders() {
    return file_table;
}

std::string& record_buffer(double n) {
    return entry(n).RECORD;
}

std::string DAMMIFILE(double n, std::int16_t& relative) {
    TRACCIA("DAMMIFILE$ (" + testo_numero(n) + ")");
    entry(n);  // an n outside the table has no line
    const std::string line = base_line(n);
    file_table.last_length = record_length(ritaglia(line, kLengthPosition, kLengthWidth));
    std::string name = rifila_destra(ritaglia(line, kNamePosition, kNameWidth));
    substitute_disk(name, relative);
    substitute_company(name, n);
    substitute(name, "$$", MXREPOSITORY::a_sinistra(environment.task, 2));
    substitute_year(name);
    substitute_region(name);
    substitute_province(name);
    return relative == -1 ? archive_path("\\" + name) : name;
}

double FAIOPEN(double n) {
    return open_records(n, OpenMode::existing);
}

void FAIOPENIO(double n, std::int16_t mode) {
    TRACCIA("FAIOPENIO");
    FileTable::Entry& file = entry(n);
    close(file);
    const std::string path = path_to_open(n);
    if (mode == 0) {
        open_channel(file, path, OpenMode::read_only);
        file.text.resize(file.channel->length());
        file.text.resize(file.channel->read_at(0, file.text.data(), file.text.size()));
        return;
    }
    if (files().exists(path)) {
        files().remove(path);
    }
    open_channel(file, path, OpenMode::truncate);
}

void CHIUDI(double n) {
    if (n != 0) {
        close(entry(std::abs(n)));
        return;
    }
    close_recovery_slot();
    for (FileTable::Entry& file : file_table.entries) {
        close(file);
        file.table.reset();
        file.unsynced = false;
    }
}

bool LEGGIRIGA(double n, std::string& line) {
    open_channel_of(n);
    FileTable::Entry& file = entry(n);
    if (file.text_position >= file.text.size()) {
        return false;
    }
    const std::size_t end =
        std::min(file.text.find_first_of("\r\n", file.text_position), file.text.size());
    line = file.text.substr(file.text_position, end - file.text_position);
    const bool pair = std::string_view(file.text).substr(end, 2) == "\r\n";
    file.text_position = end + (pair ? 2U : 1U);
    return true;
}

void SCRIVIRIGA(double n, const std::string& line) {
    platform::Channel& channel = open_channel_of(n);
    FileTable::Entry& file = entry(n);
    const std::string bytes = line + "\r\n";
    channel.write_at(file.text_position, bytes);
    file.text_position += bytes.size();
}

double LEGGIREC(double n, double record) {
    const std::uint64_t position = begin_record(n, record, kReading);
    std::string& buffer = record_buffer(n);
    if (read_from_step(n, record, buffer)) {
        file_table.last_read = 0;
        return 0;
    }
    return end_reading(buffer, open_channel_of(n).read_at(position, buffer.data(), buffer.size()));
}

void load_table(double n) {
    FileTable::Entry& file = entry(n);
    if (file.table) {
        return;
    }
    const bool opened_here = file.channel == nullptr;
    if (opened_here) {
        FAIOPEN(n);
    }
    std::string content(file.channel->length(), ' ');
    content.resize(file.channel->read_at(0, content.data(), content.size()));
    file.table = std::move(content);
    if (opened_here) {
        close(file);
    }
}

double read_table(double n, double record) {
    load_table(n);
    const std::uint64_t position = begin_record(n, record, kReading);
    const std::string& content = *entry(n).table;
    std::string& buffer = record_buffer(n);
    const std::size_t start = std::min<std::size_t>(position, content.size());
    return end_reading(buffer, content.copy(buffer.data(), buffer.size(), start));
}

void SCRIVIREC(double n, double record, const std::string& text) {
    const std::uint64_t position = begin_record(n, record, "SCRIVIREC (");
    std::string& buffer = record_buffer(n);
    if (!text.empty()) {
        if (text.size() != buffer.size()) {
            fail(platform::kBadRecordLength, n);
        }
        buffer = text;
    }
    if (!recovery_slot.step_open) {
        write_at(n, position, buffer);
        return;
    }
    open_channel_of(n);  // A closed file is told now, and not at the end of the step.
    add_to_step(n, record, buffer);
}

void write_record_bytes(double n, double record, std::string_view bytes) {
    write_at(n, record_position(n, record), bytes);
}

void sync_file(double n) {
    FileTable::Entry& file = entry(n);
    if (file.unsynced && file.channel != nullptr) {
        file.channel->sync();
        file.unsynced = false;
    }
}

void sync_files() {
    for (std::size_t n = 1; n < file_table.entries.size(); ++n) {
        sync_file(static_cast<double>(n));
    }
}

void write_record(double n, double record, std::string_view text) {
    fill_record(n, text);
    SCRIVIREC(n, record);
}

double VERBASE(double n) {
    if (n <= 0) {
        return 0;
    }
    std::int16_t relative = -1;
    const std::string path = DAMMIFILE(n, relative);
    return files().exists(path) && files().length(path) > 0 ? 1 : 0;
}

void ELIMINA(double n) {
    if (n <= 0) {
        return;
    }
    const PlaceholderValues saved = placeholders();
    close(entry(n));
    entry(n).table.reset();
    if (VERBASE(n) == 0) {
        return;
    }
    placeholders() = saved;
    const std::string path = path_to_open(n);
    const std::uint64_t length = files().open(path, OpenMode::read_only)->length();
    if (length > 0) {
        files().remove(path);
    }
}

void RICREAFILE(double n) {
    const PlaceholderValues saved = placeholders();
    ELIMINA(n);
    placeholders() = saved;
    open_records(n, OpenMode::shared);
}

double file_length(double n) {
    return std::max(static_cast<double>(open_channel_of(n).length()), end_in_step(n));
}

namespace {

/// Between two trials to take the semaphore: leaves the processor to others, and tells the operator
/// what the run waits for where it takes long. A request to stop ends the wait.
class SemaphoreWait {
  public:
    void pause() {
        constexpr auto kLongestPause = std::chrono::milliseconds(20);
        constexpr auto kLong = std::chrono::seconds(2);
        if (platform::stop_requested()) {
            throw platform::StopRequested();
        }
        std::this_thread::sleep_for(pause_);
        pause_ = std::min<std::chrono::milliseconds>(pause_ * 2, kLongestPause);
        if (!told_ && std::chrono::steady_clock::now() - began_ >= kLong) {
            told_ = true;
            platform::window().remark(texts::kWaitingForSemaphore.bytes());
        }
    }

  private:
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
    std::chrono::milliseconds pause_{1};
    bool told_ = false;
};

}  // namespace

void APRISEMA() {
    TRACCIA("APRISEMA");
    FileTable::Entry& semaphore = entry(kSemaphore);
    const std::string path = archive_path("\\NZSEMA.DAT");
    close(semaphore);
    SemaphoreWait wait;
    while (semaphore.channel == nullptr) {
        try {
            open_channel(semaphore, path, OpenMode::exclusive);
        } catch (const Failure& failure) {
            const bool held =
                failure.number() == platform::kPermissionDenied ||
                (failure.number() == platform::kPathFileAccess && files().permitted(path));
            if (!held) {
                throw;
            }
            wait.pause();
        }
    }
    std::array<char, kSemaphoreLength> content{};  // read as the suite reads it; nothing is used
    static_cast<void>(semaphore.channel->read_at(0, content.data(), content.size()));
}

void CHIUDISEMA() {
    CHIUDI(kSemaphore);
}

void fill_record(double n, std::string_view text) {
    FileTable::Entry& file = entry(n);
    const auto length = static_cast<std::size_t>(file.LUNGHEZZE);
    file.RECORD.assign(text.substr(0, length));
    file.RECORD.resize(length, ' ');
}

}  // namespace MXLIBRERIA
