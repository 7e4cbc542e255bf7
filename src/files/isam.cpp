#include "files/isam.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

#include "context/messages.h"
#include "context/trace.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "platform/failure.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace MXLIBRERIA {

using MXREPOSITORY::testo_numero;
using platform::Failure;

IsamState isam_state;

namespace {

constexpr double kNotFound = -1;
constexpr std::size_t kPointerWidth = 6;
constexpr double kLastPointer = 999999;
constexpr int kRoot = 1;
constexpr int kBranch = 2;
constexpr int kLeaf = 3;

IsamLevel& level(int number) {
    return isam_state.levels[static_cast<std::size_t>(number)];
}

std::size_t entry_width() {
    return isam_state.key_length + kIsamEntryTail;
}

std::string_view key_at(const IsamLevel& l, std::size_t index) {
    return {l.block.data() + index * entry_width(), isam_state.key_length};
}

bool is_free(const IsamLevel& l, std::size_t index) {
    return key_at(l, index) == isam_state.high_key;
}

/// Less than, equal to or above 0, by character code.
int compare(std::string_view a, const std::string& b) {
    return std::memcmp(a.data(), b.data(), b.size());
}

/// The number in the pointer of an entry.
double pointer_at(const IsamLevel& l, std::size_t index) {
    const std::string_view digits(
        l.block.data() + index * entry_width() + isam_state.key_length + 1, kPointerWidth);
    int number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') {
            return MXREPOSITORY::valore(digits);
        }
        number = number * 10 + (c - '0');
    }
    return number;
}

/// Free entries come last: the first of them is how many are in use.
std::size_t count_used(const IsamLevel& l) {
    std::size_t lowest = 0;
    std::size_t highest = kIsamEntries;
    while (lowest < highest) {
        const std::size_t middle = (lowest + highest) / 2;
        if (is_free(l, middle)) {
            highest = middle;
        } else {
            lowest = middle + 1;
        }
    }
    return lowest;
}

/// The last entry whose key is not above `key`, or the first entry if all are above it.
std::size_t find_position(const IsamLevel& l, const std::string& key) {
    std::size_t not_above = 0;
    std::size_t above = l.used;
    while (above > not_above + 1) {
        const std::size_t middle = (not_above + above) / 2;
        const int order = compare(key_at(l, middle), key);
        if (order == 0) {
            return middle;
        }
        (order > 0 ? above : not_above) = middle;
    }
    return not_above;
}

/// Reads a block; false if the file ends before it.
bool load_block(double n, int number, double block) {
    IsamLevel& l = level(number);
    if (LEGGIREC(n, block) != 0) {
        return false;
    }
    l.block.swap(record_buffer(n));
    record_buffer(n).resize(l.block.size());
    l.number = block;
    l.position = 0;
    l.used = count_used(l);
    return true;
}

[[noreturn]] void fail_beyond_end(double n, double block) {
    Failure failure(platform::kInputPastEnd);
    failure.culprit = testo_numero(n) + "-" + testo_numero(block);
    throw failure;
}

/// A block that an entry points to and that the file lacks: the index is damaged.
void read_block(double n, int number, double block) {
    if (!load_block(n, number, block)) {
        fail_beyond_end(n, block);
    }
}

void write_block(double n, double block, const std::string& text) {
    SCRIVIREC(n, block, text);
}

void write_level(double n, int number) {
    write_block(n, level(number).number, level(number).block);
}

std::string make_entry(std::string_view key, int number, double pointer) {
    if (pointer > kLastPointer || pointer < 1 || pointer != std::floor(pointer)) {
        throw Failure(platform::kBadRecordNumber);
    }
    std::string entry(key);
    entry += static_cast<char>('0' + number);
    entry += MXREPOSITORY::zeri_a_sinistra(testo_numero(pointer), kPointerWidth);
    return entry;
}

std::string free_entry(int number) {
    return isam_state.high_key + static_cast<char>('0' + number) + "000000";
}

/// A block of free entries.
std::string free_block(int number) {
    const std::string entry = free_entry(number);
    std::string block;
    block.reserve(entry.size() * kIsamEntries);
    for (std::size_t i = 0; i < kIsamEntries; ++i) {
        block += entry;
    }
    return block;
}

/// Reads the root. False if the file is empty, and so no index yet.
bool read_root(double n) {
    if (load_block(n, kRoot, 1)) {
        return true;
    }
    if (file_length(n) == 0) {
        return false;
    }
    fail_beyond_end(n, 1);
}

/// Walks from the root, which has been read, to the place of the key. False if the index is empty.
bool descend(double n, const std::string& key) {
    if (level(kRoot).used == 0) {
        return false;
    }
    for (int number = kRoot; number < kLeaf; ++number) {
        IsamLevel& l = level(number);
        l.position = find_position(l, key);
        read_block(n, number + 1, pointer_at(l, l.position));
    }
    level(kLeaf).position = find_position(level(kLeaf), key);
    return true;
}

/// The record number of the key after `descend`, or -1.
double number_of(const std::string& key) {
    const IsamLevel& leaf = level(kLeaf);
    if (leaf.used == 0 || compare(key_at(leaf, leaf.position), key) != 0) {
        return kNotFound;
    }
    return pointer_at(leaf, leaf.position);
}

/// Puts an entry at the chosen position, or behind it if the entry there is not above the new one.
void insert_in_block(int number, const std::string& entry) {
    IsamLevel& l = level(number);
    if (l.used == kIsamEntries) {
        throw Failure(platform::kSubscriptOutOfRange);
    }
    const std::size_t width = entry_width();
    const bool above =
        std::memcmp(l.block.data() + l.position * width, entry.data(), isam_state.key_length) > 0;
    const std::size_t place = l.position + (above ? 0U : 1U);
    char* at = l.block.data() + place * width;
    std::memmove(at + width, at, (l.used - place) * width);
    std::memcpy(at, entry.data(), width);
    ++l.used;
}

/// Takes the chosen entry out of a block.
void remove_from_block(int number) {
    IsamLevel& l = level(number);
    const std::size_t width = entry_width();
    char* at = l.block.data() + l.position * width;
    std::memmove(at, at + width, (l.used - l.position - 1) * width);
    --l.used;
    std::memcpy(l.block.data() + l.used * width, free_entry(number).data(), width);
}

/// Cuts a full block: the lower half stays in it, the upper half is left in `isam_state.split`.
void cut_block(int number) {
    IsamLevel& l = level(number);
    const std::size_t half = kIsamKept * entry_width();
    isam_state.split = free_block(number);
    isam_state.split.replace(0, half, l.block, half, half);
    const std::string free_half = isam_state.split.substr(half);
    l.block.replace(half, half, free_half);
    l.used = kIsamKept;
}

/// Splits a full block. The upper half goes to a new block at the end of the file, which is
/// written; its entry goes into the block above, in memory.
void split_block(double n, int number) {
    const double block_length = static_cast<double>(level(number).block.size());
    const double new_block = std::floor(file_length(n) / block_length) + 1;
    cut_block(number);
    write_block(n, new_block, isam_state.split);
    insert_in_block(number - 1,
                    make_entry(std::string_view(isam_state.split).substr(0, isam_state.key_length),
                               number - 1, new_block));
}

/// Carries the first key of the block at `number` up to the entries that point to it, in memory.
/// Returns the highest level that changed, or `number` if none did.
int carry_first_key(int number) {
    int changed = number;
    for (int child = number; child > kRoot; --child) {
        IsamLevel& parent = level(child - 1);
        char* parent_key = parent.block.data() + parent.position * entry_width();
        const std::string_view first = key_at(level(child), 0);
        if (std::memcmp(parent_key, first.data(), first.size()) == 0) {
            break;
        }
        std::memcpy(parent_key, first.data(), first.size());
        changed = child - 1;
        if (parent.position != 0) {
            break;
        }
    }
    return changed;
}

/// First key of an empty index: root, branch and leaf in blocks 1, 2 and 3, the root last.
void insert_first(double n, const std::string& key, double record) {
    const std::string leaf_entry = make_entry(key, kLeaf, record);
    for (int number = kLeaf; number >= kRoot; --number) {
        std::string block = free_block(number);
        block.replace(0, entry_width(),
                      number == kLeaf ? leaf_entry : make_entry(key, number, number + 1));
        write_block(n, number, block);
    }
}

/// Would the split of the leaf go up to a root without a free entry? Asked before anything is
/// written, so that a full index stays sound.
bool overflows_root() {
    return level(kLeaf).used == kIsamEntries - 1 && level(kBranch).used == kIsamEntries - 1 &&
           level(kRoot).used == kIsamEntries;
}

/// Insertion. New blocks are written first, then what points to them from above downwards: at each
/// moment the old keys are found.
double insert(double n, const std::string& key, double record) {
    if (record == 0) {
        plain_box(texts::kIndexNoRecord);
        return 0;
    }
    if (!descend(n, key)) {
        insert_first(n, key, record);
        return 0;
    }
    if (const double present = number_of(key); present != kNotFound) {
        return present;
    }
    if (overflows_root()) {
        throw Failure(platform::kSubscriptOutOfRange);
    }
    insert_in_block(kLeaf, make_entry(key, kLeaf, record));
    int highest_changed = carry_first_key(kLeaf);
    for (int number = kLeaf; number > kRoot && level(number).used == kIsamEntries; --number) {
        split_block(n, number);
        highest_changed = std::min(highest_changed, number - 1);
    }
    for (int number = highest_changed; number <= kLeaf; ++number) {
        write_level(n, number);
    }
    return 0;
}

/// Removal. Blocks are written from the root down, so that an emptied one is unlinked first.
double remove(double n, const std::string& key, double /*record*/) {
    if (!descend(n, key)) {
        return kNotFound;
    }
    const double record = number_of(key);
    if (record == kNotFound) {
        return kNotFound;
    }
    remove_from_block(kLeaf);
    int number = kLeaf;
    int highest_changed = kLeaf;
    while (number > kRoot && level(number).used == 0) {
        --number;
        remove_from_block(number);
        highest_changed = number;
    }
    if (level(number).used > 0) {
        highest_changed = std::min(highest_changed, carry_first_key(number));
    }
    for (int changed = highest_changed; changed <= kLeaf; ++changed) {
        write_level(n, changed);
    }
    return record;
}

/// Moves the chosen entry one on: in its block, else to the first of the next block. False at the
/// end of the index.
bool step_on(double n, int number) {
    IsamLevel& l = level(number);
    if (l.position + 1 < l.used) {
        ++l.position;
        return true;
    }
    if (number == kRoot || !step_on(n, number - 1)) {
        return false;
    }
    read_block(n, number, pointer_at(level(number - 1), level(number - 1).position));
    return true;
}

double next(double n, const std::string& key, double /*record*/) {
    const IsamLevel& leaf = level(kLeaf);
    const bool filled = descend(n, key);
    if (!filled || (compare(key_at(leaf, leaf.position), key) <= 0 && !step_on(n, kLeaf))) {
        isam_state.last_key = isam_state.high_key;
        return kIsamEnd;
    }
    isam_state.last_key = key_at(leaf, leaf.position);
    return pointer_at(leaf, leaf.position);
}

/// The index stands empty and open: one block of free entries.
double empty(double n) {
    make_file_of_one_record(n, free_block(kRoot));
    return 0;
}

/// Key length and high key from the record length; a length that no key gives is failure 59.
void derive_key(double record_length) {
    const double key_length =
        record_length / static_cast<double>(kIsamEntries) - static_cast<double>(kIsamEntryTail);
    if (key_length < 1 || key_length != std::floor(key_length)) {
        throw Failure(platform::kBadRecordLength);
    }
    isam_state.key_length = static_cast<std::size_t>(key_length);
    isam_state.high_key.assign(isam_state.key_length, kIsamHighCharacter);
}

double find(double n, const std::string& key, double /*record*/) {
    return descend(n, key) ? number_of(key) : kNotFound;
}

struct Operation {
    double code;
    double (*run)(double n, const std::string& key, double record);
};
constexpr std::array<Operation, 4> kOperations{{
    {kIsamInsert, insert},
    {kIsamSearch, find},
    {kIsamNext, next},
    {kIsamDelete, remove},
}};

void show_empty_file(double n) {
    plain_box(texts::kIndexFileEmpty, testo_numero(n));
}

/// Shows why a key is refused, in the order of the checks; false if it is not refused. The length
/// of the file comes first, but is asked for only where something is shown: the root tells it
/// anyway.
bool refused(double n, const std::string& key, double operation) {
    const auto width = static_cast<double>(key.size() + kIsamEntryTail);
    const bool no_key = key.empty();
    const bool other_length =
        width * static_cast<double>(kIsamEntries) != static_cast<double>(record_buffer(n).size());
    const bool blank = operation != kIsamDelete && key.find_first_not_of(' ') == std::string::npos;
    if (!no_key && !other_length && !blank) {
        return false;
    }
    if (file_length(n) == 0) {
        show_empty_file(n);
    } else if (no_key) {
        plain_box(texts::kIndexNoKey);
    } else {
        plain_box(other_length ? texts::kIndexKeyLength : texts::kIndexBlankKey);
    }
    return true;
}

/// Operation 9 asks for nothing but the record length; it takes the file as it finds it.
double empty_index(double n) {
    const PlaceholderValues saved = placeholders();
    std::int16_t relative = -1;
    static_cast<void>(DAMMIFILE(n, relative));
    placeholders() = saved;
    derive_key(file_table.last_length);
    return empty(n);
}

}  // namespace

double ISAM(double n, const std::string& key, double operation, double record) {
    TRACCIA("ISAM");
    if (operation == kIsamEmpty) {
        return empty_index(n);
    }
    if (refused(n, key, operation)) {
        return 0;
    }
    derive_key(static_cast<double>(record_buffer(n).size()));
    const auto* found = std::find_if(kOperations.begin(), kOperations.end(),
                                     [&](const Operation& o) { return o.code == operation; });
    if (found == kOperations.end() || !read_root(n)) {
        if (file_length(n) == 0) {
            show_empty_file(n);
        } else {
            plain_box(texts::kIndexOperation, testo_numero(operation));
        }
        return 0;
    }
    SlotStep blocks;
    const double result = found->run(n, key, record);
    blocks.commit();
    return result;
}

}  // namespace MXLIBRERIA
