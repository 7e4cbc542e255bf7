#include "files/recovery_slot.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "context/environment.h"
#include "files/logical_files.h"
#include "platform/failure.h"

namespace MXLIBRERIA {

using platform::Failure;
using platform::files;
using platform::OpenMode;

RecoverySlot recovery_slot;

namespace {

/// A column of the slot; digits stand in it with leading zeros.
struct Column {
    std::size_t offset;
    std::size_t width;
};

constexpr std::string_view kMark = "VELMORR1";
constexpr Column kState{8, 1};
constexpr Column kTask{9, 2};
constexpr Column kCount{11, 5};
constexpr Column kLength{16, 12};
constexpr Column kChecksum{32, 16};
constexpr std::size_t kHeader = 48;

constexpr Column kFile{0, 3};
constexpr Column kRecord{3, 12};
constexpr Column kRecordLength{15, 8};
constexpr std::size_t kRecordHeader = 24;

constexpr char kPending = '1';
constexpr char kPendingAnew = '2';
constexpr char kNothing = '0';

std::string slot_path() {
    return archive_path("\\VELMOR.RIP");
}

// ---- Columns ----

void put_digits(char* row, const Column& column, std::uint64_t number, int base = 10) {
    std::array<char, 24> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number, base).ptr;
    const auto length = static_cast<std::size_t>(end - digits.data());
    if (length > column.width) {
        throw Failure(platform::kOverflow);
    }
    std::fill_n(row + column.offset, column.width - length, '0');
    std::copy(digits.data(), end, row + column.offset + column.width - length);
}

/// The number in a column; nothing where it holds anything but digits.
std::optional<std::uint64_t> digits_at(std::string_view row, const Column& column) {
    const std::string_view digits = row.substr(column.offset, column.width);
    std::uint64_t number = 0;
    const auto [end, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (failure != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return number;
}

// ---- Checksum ----

constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
constexpr std::size_t kSums = 4;
constexpr std::size_t kGroup = kSums * sizeof(std::uint64_t);

void take_up(std::uint64_t& sum, std::uint64_t word) {
    constexpr int kTurn = 29;
    sum = std::rotl(sum ^ word, kTurn) * kFactor;
}

void take_up_group(std::array<std::uint64_t, kSums>& sums, const char* bytes) {
    static_assert(std::endian::native == std::endian::little);
    std::array<std::uint64_t, kSums> words{};
    std::memcpy(words.data(), bytes, kGroup);
    for (std::size_t i = 0; i < kSums; ++i) {
        take_up(sums[i], words[i]);
    }
}

std::uint64_t checksum(std::string_view bytes) {
    std::array<std::uint64_t, kSums> sums{1, 2, 3, 4};
    const std::size_t whole_groups = bytes.size() / kGroup * kGroup;
    for (std::size_t at = 0; at < whole_groups; at += kGroup) {
        take_up_group(sums, bytes.data() + at);
    }
    std::array<char, kGroup> rest{};
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(whole_groups), bytes.end(), rest.begin());
    take_up_group(sums, rest.data());
    std::uint64_t whole = 0;
    for (const std::uint64_t sum : sums) {
        take_up(whole, sum);
    }
    return whole;
}

void put_checksum(std::string& image) {
    constexpr int kHexadecimal = 16;
    std::fill_n(image.data() + kChecksum.offset, kChecksum.width, ' ');
    put_digits(image.data(), kChecksum, checksum(image), kHexadecimal);
}

// ---- A step into the slot ----

void begin_image() {
    recovery_slot.records.clear();
    recovery_slot.image.assign(kHeader, ' ');
}

/// The header in front of the records that have been gathered.
void complete_image(char state) {
    std::string& image = recovery_slot.image;
    std::copy(kMark.begin(), kMark.end(), image.begin());
    image[kState.offset] = state;
    std::copy_n(environment.task.begin(), std::min(environment.task.size(), kTask.width),
                image.begin() + static_cast<std::ptrdiff_t>(kTask.offset));
    put_digits(image.data(), kCount, recovery_slot.records.size());
    put_digits(image.data(), kLength, image.size());
    put_checksum(image);
}

std::string_view bytes_of(const SlotRecord& record) {
    return std::string_view(recovery_slot.image).substr(record.begin, record.length);
}

void mark_empty() {
    recovery_slot.channel->write_at(kState.offset, std::string_view(&kNothing, 1));
    recovery_slot.unfinished = false;
}

/// The records of the slot to their files. Where the first one is refused for want of rights, no
/// file has changed and there is nothing to finish.
void write_records() {
    bool touched = false;
    try {
        for (const SlotRecord& record : recovery_slot.records) {
            write_record_bytes(record.file, record.record, bytes_of(record));
            touched = true;
        }
    } catch (const Failure& failure) {
        if (!touched && failure.number() == platform::kPathFileAccess) {
            mark_empty();
        }
        throw;
    }
}

/// The step into the slot. One that a killed run has left with nothing to finish may be another
/// user's, who alone has the right to write it: it is made anew.
void fill_slot() {
    const auto fill = [] {
        if (recovery_slot.channel == nullptr) {
            recovery_slot.channel = files().open(slot_path(), OpenMode::shared);
        }
        recovery_slot.channel->write_at(0, recovery_slot.image);
    };
    const bool opens = recovery_slot.channel == nullptr;
    try {
        fill();
    } catch (const Failure& failure) {
        if (!opens || failure.number() != platform::kPathFileAccess ||
            !files().exists(slot_path())) {
            throw;
        }
        recovery_slot.channel.reset();
        files().remove(slot_path());
        fill();
    }
}

void write_step() {
    if (recovery_slot.records.empty()) {
        return;
    }
    complete_image(kPending);
    fill_slot();
    recovery_slot.unfinished = true;
    write_records();
    mark_empty();
}

const SlotRecord* find_in_step(double n, double record) {
    const auto found =
        std::find_if(recovery_slot.records.rbegin(), recovery_slot.records.rend(),
                     [&](const SlotRecord& r) { return r.file == n && r.record == record; });
    return found == recovery_slot.records.rend() ? nullptr : &*found;
}

/// A run in order has held its files to the disk before it closes them; one that a failure ends
/// does it here. What the disk refuses now has been told by the failure.
void hold_to_disk() {
    for (std::size_t n = 1; n < file_table.entries.size(); ++n) {
        try {
            sync_file(static_cast<double>(n));
        } catch (const Failure&) {  // the other files are held all the same
        }
    }
}

// ---- What a killed run left ----

/// The complete step of the archive's slot; empty where there is none to finish.
std::string pending_step() {
    const std::string path = slot_path();
    if (!files().exists(path)) {
        return {};
    }
    std::string image = platform::read_whole_file(path);
    if (image.size() < kHeader || !image.starts_with(kMark) ||
        (image[kState.offset] != kPending && image[kState.offset] != kPendingAnew)) {
        return {};
    }
    const std::optional<std::uint64_t> length = digits_at(image, kLength);
    if (!length || *length < kHeader || *length > image.size()) {
        return {};
    }
    image.resize(*length);
    const std::string found = image.substr(kChecksum.offset, kChecksum.width);
    put_checksum(image);
    return image.compare(kChecksum.offset, kChecksum.width, found) == 0 ? image : std::string();
}

/// The records of a step; empty where its parts do not add up to it.
std::vector<FinishedRecord> records_of(std::string_view image) {
    std::vector<FinishedRecord> records;
    std::string_view rest = image.substr(kHeader);
    while (rest.size() > kRecordHeader) {
        const auto file = digits_at(rest, kFile);
        const auto record = digits_at(rest, kRecord);
        const auto length = digits_at(rest, kRecordLength);
        if (!file || !record || !length || *length > rest.size() - kRecordHeader) {
            return {};
        }
        records.push_back({static_cast<double>(*file), static_cast<double>(*record),
                           std::string(rest.substr(kRecordHeader, *length))});
        rest.remove_prefix(kRecordHeader + *length);
    }
    const bool adds_up = rest.empty() && digits_at(image, kCount) == records.size();
    return adds_up ? records : std::vector<FinishedRecord>();
}

/// Opens the files of a step, under the names that they had in the killed run; false if this
/// archive lacks one.
bool open_files_of(const std::vector<FinishedRecord>& records) {
    for (const FinishedRecord& record : records) {
        std::int16_t relative = -1;
        if (!files().exists(DAMMIFILE(record.file, relative))) {
            return false;
        }
        FAIOPEN(record.file);
    }
    return true;
}

/// Do the records fit the files of this archive? A step lengthens a file by its own records at
/// most.
bool fit_their_files(const std::vector<FinishedRecord>& records) {
    return std::ranges::all_of(records, [&](const FinishedRecord& record) {
        const auto length = static_cast<double>(record.bytes.size());
        const auto added =
            static_cast<double>(std::ranges::count(records, record.file, &FinishedRecord::file));
        return record_buffer(record.file).size() == record.bytes.size() && record.record >= 1 &&
               record.record * length <= file_length(record.file) + added * length;
    });
}

void write_finished(const std::vector<FinishedRecord>& records) {
    for (const FinishedRecord& record : records) {
        write_record_bytes(record.file, record.record, record.bytes);
        sync_file(record.file);
    }
}

/// Makes the files of a step anew where this archive gives them the length of its records.
bool make_files_of(const std::vector<FinishedRecord>& records) {
    for (const FinishedRecord& record : records) {
        std::int16_t relative = -1;
        static_cast<void>(DAMMIFILE(record.file, relative));
        if (file_table.last_length != static_cast<double>(record.bytes.size())) {
            return false;
        }
        RICREAFILE(record.file);
    }
    return true;
}

/// Brings the records to their files; false if the slot is another archive's.
bool bring_to_files(const std::vector<FinishedRecord>& records, char state) {
    const bool fits = state == kPendingAnew ? make_files_of(records)
                                            : open_files_of(records) && fit_their_files(records);
    if (fits) {
        write_finished(records);
    }
    for (const FinishedRecord& record : records) {
        CHIUDI(record.file);
    }
    return fits;
}

/// The task of the killed run, for the life of the object.
class TaskOfSlot {
  public:
    explicit TaskOfSlot(std::string_view image)
        : own_(std::exchange(environment.task,
                             std::string(image.substr(kTask.offset, kTask.width)))) {}
    ~TaskOfSlot() { environment.task = own_; }
    TaskOfSlot(const TaskOfSlot&) = delete;
    TaskOfSlot& operator=(const TaskOfSlot&) = delete;
    TaskOfSlot(TaskOfSlot&&) = delete;
    TaskOfSlot& operator=(TaskOfSlot&&) = delete;

  private:
    std::string own_;
};

}  // namespace

SlotStep::SlotStep() : outermost_(recovery_slot.in_use && !recovery_slot.step_open) {
    if (outermost_) {
        recovery_slot.step_open = true;
        begin_image();
    }
}

SlotStep::~SlotStep() {
    if (outermost_) {
        recovery_slot.step_open = false;
    }
}

void SlotStep::commit() {
    if (outermost_) {
        recovery_slot.step_open = false;
        write_step();
    }
}

void write_whole_record(double n, double record, std::string_view text) {
    SlotStep step;
    write_record(n, record, text);
    step.commit();
}

void make_file_of_one_record(double n, std::string_view text) {
    if (!recovery_slot.in_use || recovery_slot.step_open) {
        RICREAFILE(n);
        write_record(n, 1, text);
        return;
    }
    begin_image();
    add_to_step(n, 1, text);
    complete_image(kPendingAnew);
    fill_slot();
    recovery_slot.unfinished = true;
    RICREAFILE(n);
    write_records();
    mark_empty();
}

void add_to_step(double n, double record, std::string_view bytes) {
    std::string& image = recovery_slot.image;
    const std::size_t row = image.size();
    image.append(kRecordHeader, ' ');
    put_digits(image.data() + row, kFile, static_cast<std::uint64_t>(n));
    put_digits(image.data() + row, kRecord, static_cast<std::uint64_t>(record));
    put_digits(image.data() + row, kRecordLength, bytes.size());
    recovery_slot.records.push_back({n, record, image.size(), bytes.size()});
    image += bytes;
}

bool read_from_step(double n, double record, std::string& bytes) {
    const SlotRecord* found = recovery_slot.step_open ? find_in_step(n, record) : nullptr;
    if (found == nullptr) {
        return false;
    }
    bytes = bytes_of(*found);
    return true;
}

double end_in_step(double n) {
    double end = 0;
    if (recovery_slot.step_open) {
        for (const SlotRecord& record : recovery_slot.records) {
            if (record.file == n) {
                end = std::max(end, record.record * static_cast<double>(record.length));
            }
        }
    }
    return end;
}

void sync_recovery_slot() {
    if (recovery_slot.channel != nullptr) {
        recovery_slot.channel->sync();
    }
}

bool step_waits_in_slot() {
    return !pending_step().empty();
}

std::vector<FinishedRecord> finish_killed_step() {
    const std::string image = pending_step();
    std::vector<FinishedRecord> records =
        image.empty() ? std::vector<FinishedRecord>() : records_of(image);
    if (records.empty()) {
        return {};
    }
    const TaskOfSlot task(image);
    if (!bring_to_files(records, image[kState.offset])) {
        return {};
    }
    files().remove(slot_path());
    return records;
}

void close_recovery_slot() {
    recovery_slot.step_open = false;
    recovery_slot.in_use = false;
    if (recovery_slot.channel == nullptr) {
        return;
    }
    try {
        if (recovery_slot.unfinished) {
            write_records();
            mark_empty();
        }
        hold_to_disk();
        recovery_slot.channel.reset();
        files().remove(slot_path());
    } catch (const Failure&) {
        hold_to_disk();
        recovery_slot.channel.reset();  // The next start finishes the step.
    }
    recovery_slot.unfinished = false;
}

}  // namespace MXLIBRERIA
