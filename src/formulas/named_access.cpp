#include "formulas/named_access.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "files/logical_files.h"
#include "platform/failure.h"
#include "platform/window.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace MXREPOSITORY {

using platform::Failure;

Repository repository;

namespace {

/// Dictionary files of a code letter; 0 where there are fewer than three.
struct DictionaryFiles {
    char letter;
    std::array<int, 3> logical_files;
};
constexpr std::array<DictionaryFiles, 24> kDictionaryFiles{{
    {'A', {359, 0, 0}},   {'B', {47, 0, 0}},  {'E', {25, 0, 0}},  {'F', {9, 0, 0}},
    {'G', {70, 0, 0}},    {'H', {73, 74, 0}}, {'I', {17, 0, 0}},  {'J', {99, 100, 103}},
    {'K', {412, 0, 0}},   {'L', {415, 0, 0}}, {'M', {62, 0, 0}},  {'N', {64, 0, 0}},
    {'O', {383, 384, 0}}, {'P', {11, 0, 0}},  {'Q', {33, 0, 0}},  {'R', {404, 0, 0}},
    {'S', {10, 0, 0}},    {'T', {13, 0, 0}},  {'U', {421, 0, 0}}, {'V', {386, 0, 0}},
    {'W', {163, 0, 0}},   {'X', {353, 0, 0}}, {'Y', {21, 0, 0}},  {'Z', {402, 0, 0}},
}};

constexpr double kLastDictionaryRecord = 10000;
constexpr double kHighestSlot = 4099;
constexpr const char* kEmptyIndex = "00000";

/// Slots of the names with two letters: PA12 is 2012, TB03 is 3003.
struct SecondLetter {
    char letter;
    double slots;
};
constexpr std::array<SecondLetter, 3> kSecondLetters{{{'A', 2000}, {'B', 3000}, {'C', 4000}}};

/// Whole number of a text of digits; any other text as its leading value.
double number_of(std::string_view digits) {
    int number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') {
            return valore(digits);
        }
        number = number * 10 + (c - '0');
    }
    return number;
}

double slot_of(std::string_view code) {
    if (code.size() == 4 && (code[0] == 'P' || code[0] == 'Q' || code[0] == 'T')) {
        for (const SecondLetter& row : kSecondLetters) {
            if (code[1] == row.letter) {
                return row.slots + number_of(destra(code, 2));
            }
        }
    }
    return number_of(destra(code, 3));
}

/// Base of a letter in the table; -1 for a letter that is not loaded.
std::int32_t base_of(char letter) {
    const bool in_range = letter >= 'A' && letter <= 'Z' && !repository.INDICELETTERE.empty();
    return in_range ? repository.letter_bases.at(static_cast<std::size_t>(letter - 'A')).base : -1;
}

std::int32_t highest_index() {
    return static_cast<std::int32_t>(repository.TABELLACAMPI.size()) - 1;
}

// ---- Loading ----

/// Base of a letter; a letter that is not loaded begins after the last entry.
std::int32_t begin_letter(char letter) {
    Repository::LetterBase& entry =
        repository.letter_bases.at(static_cast<std::size_t>(letter - 'A'));
    if (entry.base < 0) {
        entry.base = highest_index();
        repository.INDICELETTERE += letter;
        repository.INDICELETTERE += "0000";
    }
    return entry.base;
}

/// Puts the field of a dictionary record into the table. A record without length, or with a code
/// that holds no number, describes no field.
void store_entry(std::string_view record, std::int32_t base) {
    const std::string_view length = ritaglia(record, 30, 2);
    if (valore(length) == 0) {
        return;
    }
    const double slot = slot_of(ritaglia(record, 69, 4));
    if (!(slot >= 1 && slot <= kHighestSlot)) {
        return;
    }
    const std::size_t index = static_cast<std::size_t>(base) + static_cast<std::size_t>(slot);
    if (index >= repository.TABELLACAMPI.size()) {
        repository.TABELLACAMPI.resize(index + 1);
        repository.fields.resize(index + 1);
    }
    std::string& entry = repository.TABELLACAMPI[index];
    entry = a_sinistra(ritaglia(record, 50, 5), 5);
    entry += a_sinistra(length, 2);
    entry += a_sinistra(ritaglia(record, 32, 1), 1);
    entry += a_sinistra(ritaglia(record, 65, 1), 1);
    const double offset = valore(ritaglia(record, 50, 5));
    const double width = valore(length);
    const bool sound = offset >= 1 && offset <= INT16_MAX && width >= 1;
    repository.fields[index] = sound ? Repository::Field{static_cast<std::int16_t>(offset),
                                                         static_cast<std::int16_t>(width)}
                                     : Repository::Field{};
}

void load_file(int logical_file, char letter) {
    const std::int32_t base = begin_letter(letter);
    const double n = logical_file;
    const bool opened_here =
        MXLIBRERIA::file_table.entries.at(static_cast<std::size_t>(logical_file)).CANALI == 0;
    if (opened_here) {
        MXLIBRERIA::FAIOPEN(n);
    }
    for (double record = 1; record <= kLastDictionaryRecord; ++record) {
        if (MXLIBRERIA::LEGGIREC(n, record) == 1) {
            break;
        }
        store_entry(MXLIBRERIA::record_buffer(n), base);
    }
    std::string& index = repository.INDICELETTERE;
    index.replace(index.size() - 4, 4, zeri_a_sinistra(std::to_string(highest_index()), 4));
    if (opened_here) {
        MXLIBRERIA::CHIUDI(n);
    }
}

// ---- Looking up ----

void show(const texts::Text& text, std::string_view name) {
    platform::window().box(texts::kPlainBoxTitle.bytes(), text.bytes() + std::string(name),
                           platform::Icon::none);
}

/// A field as the dictionary describes it.
struct NamedField {
    int offset = 0;
    int length = 0;
    char type = ' ';
    Area area = Area::unknown;

    [[nodiscard]] int decimals() const { return type >= '0' && type <= '9' ? type - '0' : 0; }
};

/// The areas of letter O go by number.
Area area_of(char letter, double slot) {
    if (letter != 'O') {
        return area_of_letter(letter);
    }
    if ((slot >= 1 && slot <= 4) || slot == 16) {
        return Area::GLAX;
    }
    return slot >= 5 && slot <= 15 ? Area::GLCX : Area::unknown;
}

bool letter_known(std::string_view name) {
    if (!name.empty()) {
        if (base_of(name.front()) < 0) {
            INIZIALIZZAREPOSITORY(name.front());
        }
        if (base_of(name.front()) >= 0) {
            return true;
        }
    }
    show(texts::kRepositoryLetterNotFound, name);
    return false;
}

bool name_length_allowed(std::string_view name) {
    if (name.size() == 4 || name.size() == 1) {
        return true;
    }
    show(texts::kRepositoryNameLength, name);
    return false;
}

/// Slot of a name and a displacement, from the base of its letter on.
double slot_with_displacement(std::string_view name, double spostamento) {
    return std::nearbyint(spostamento + (name.size() == 4 ? slot_of(name) : 0));
}

bool above_table(std::string_view name, double slot) {
    return base_of(name.front()) + slot > highest_index();
}

/// The entry of a slot, or the box that tells that the name does not exist.
std::optional<NamedField> field_at(std::string_view name, double spostamento, double slot) {
    const auto index =
        slot < 1 ? std::size_t{0} : static_cast<std::size_t>(base_of(name.front()) + slot);
    const std::string& entry = repository.TABELLACAMPI[index];  // the first is always empty
    if (entry.empty()) {
        repository.type.clear();
        show(texts::kRepositoryNoSuchName, std::string(name) + " " + testo_numero(spostamento));
        return std::nullopt;
    }
    repository.type.assign(1, entry[7]);
    const Repository::Field& columns = repository.fields[index];
    if (columns.offset < 1) {
        throw Failure(platform::kInvalidCall);  // a damaged dictionary record
    }
    NamedField field;
    field.offset = columns.offset;
    field.length = columns.length;
    field.type = entry[7];
    field.area = area_of(name.front(), slot);
    return field;
}

// ---- Encoding ----

/// Digits before the point, right-aligned in the width; what follows the point is dropped.
std::string whole_number(const std::string& value, std::size_t width) {
    return zeri_a_sinistra(std::string_view(value).substr(0, value.find('.')), width);
}

/// Digits with `decimals` implied decimals, cut and not rounded.
std::string implied_decimals(std::string value, std::size_t decimals, std::size_t width) {
    std::size_t point = value.find('.');
    if (point == std::string::npos) {
        point = value.size();
        value += '.';
    }
    value.append(decimals, '0');
    return zeri_a_sinistra(value.substr(0, point) + value.substr(point + 1, decimals), width);
}

std::string encode(const NamedField& field, std::string value) {
    const auto width = static_cast<std::size_t>(field.length);
    if (field.type == 'A') {
        return a_sinistra(value, width);
    }
    NORMALIZZAESPONENTE(value);
    if (field.type == '0' || field.type == 'N' || field.type == 'D') {
        return whole_number(value, width);
    }
    if (field.decimals() > 0) {
        return implied_decimals(value, static_cast<std::size_t>(field.decimals()), width);
    }
    return zeri_a_sinistra(value, width);
}

void overwrite(std::string& target, const NamedField& field, const std::string& characters) {
    const auto start = static_cast<std::size_t>(field.offset - 1);
    if (start + characters.size() > target.size()) {
        throw Failure(platform::kSubscriptOutOfRange);
    }
    target.replace(start, characters.size(), characters);
}

/// Where XREPOW writes, or nothing after a box.
std::optional<NamedField> target_field(std::string_view name, double spostamento) {
    if (!letter_known(name)) {
        return std::nullopt;
    }
    if (name.size() == 1 && spostamento == 0) {
        show(texts::kRepositoryNameLength, name);
        return std::nullopt;
    }
    if (!name_length_allowed(name)) {
        return std::nullopt;
    }
    const double slot = slot_with_displacement(name, spostamento);
    if (above_table(name, slot)) {
        show(texts::kRepositoryDisplacement, testo_numero(spostamento));
        return std::nullopt;
    }
    const std::string type_of_last_reading = repository.type;
    std::optional<NamedField> field = field_at(name, spostamento, slot);
    repository.type = type_of_last_reading;
    return field;
}

void write_field(const NamedField& field, const std::string& value, std::string& buffer) {
    std::string copy = value;
    const std::size_t comma = copy.find(',');
    if (comma != std::string::npos) {
        copy[comma] = '.';
    }
    if (!buffer.empty()) {
        overwrite(buffer, field, encode(field, copy));
    } else if (field.area != Area::unknown) {
        overwrite(area(field.area), field, encode(field, copy));
    }
}

constexpr double kFirstLineSlot = 401;
constexpr double kLastLineSlot = 500;
constexpr std::size_t kLineWidth = 35;

}  // namespace

void INIZIALIZZAREPOSITORY(char letter) {
    if (repository.INDICELETTERE.empty()) {
        repository.TABELLACAMPI.assign(1, {});
        repository.fields.assign(1, {});
        repository.letter_bases = {};
        repository.INDICELETTERE = kEmptyIndex;
    }
    const auto* row =
        std::find_if(kDictionaryFiles.begin(), kDictionaryFiles.end(),
                     [letter](const DictionaryFiles& files) { return files.letter == letter; });
    if (row == kDictionaryFiles.end()) {
        return;
    }
    for (const int logical_file : row->logical_files) {
        if (logical_file != 0) {
            load_file(logical_file, letter);
        }
    }
}

std::string XREPOR(std::string_view name, double spostamento, const std::string& buffer) {
    if (!letter_known(name) || !name_length_allowed(name)) {
        return {};
    }
    const double slot = slot_with_displacement(name, spostamento);
    if (above_table(name, slot)) {
        return {};
    }
    const std::optional<NamedField> field = field_at(name, spostamento, slot);
    if (!field || (buffer.empty() && field->area == Area::unknown)) {
        return {};
    }
    const std::string& source = buffer.empty() ? area(field->area) : buffer;
    std::string value(ritaglia(source, static_cast<std::size_t>(field->offset),
                               static_cast<std::size_t>(field->length)));
    if (field->decimals() > 0) {
        const auto whole = static_cast<std::size_t>(std::max(0, field->length - field->decimals()));
        value.insert(std::min(whole, value.size()), 1, '.');
    }
    return value;
}

void XREPOW(std::string_view name, double spostamento, const std::string& value,
            std::string& buffer) {
    if (const std::optional<NamedField> field = target_field(name, spostamento)) {
        write_field(*field, value, buffer);
    }
}

void XREPOW(std::string_view name, double spostamento, const std::string& value) {
    std::string area_itself;
    XREPOW(name, spostamento, value, area_itself);
}

void scrivi_con_segno(std::string_view name, const std::string& value) {
    const std::optional<NamedField> field = target_field(name, 0);
    if (!field) {
        return;
    }
    std::string text = value;
    if (!text.empty() && text.front() == '-' && field->type != 'A') {
        // The whole digits fill the field but for its first position, which is the minus.
        NORMALIZZAESPONENTE(text);
        const auto width =
            static_cast<std::size_t>(std::max(1, field->length - field->decimals())) - 1;
        const std::size_t point = std::min(text.find('.'), text.size());
        text = "-" + zeri_a_sinistra(text.substr(1, point - 1), width) + text.substr(point);
    }
    std::string area_itself;
    write_field(*field, text, area_itself);
}

std::string leggi_blocco_righe() {
    std::string lines;
    lines.reserve(static_cast<std::size_t>(kLastLineSlot - kFirstLineSlot + 1) * kLineWidth);
    for (double slot = kFirstLineSlot; slot <= kLastLineSlot; ++slot) {
        lines += XREPOR("Q", slot, {});
    }
    return lines;
}

void scrivi_blocco_righe(const std::string& lines) {
    std::size_t position = 1;
    for (double slot = kFirstLineSlot; slot <= kLastLineSlot; ++slot) {
        XREPOW("Q", slot, std::string(ritaglia(lines, position, kLineWidth)));
        position += kLineWidth;
    }
}

}  // namespace MXREPOSITORY
