#include "formulas/named_access.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "formulas/loaded_letters.h"
#include "platform/failure.h"
#include "platform/window.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace MXREPOSITORY {

using platform::Failure;

namespace {

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

/// Index of a slot in the table. A slot above the highest of its own letter, where the next letter
/// may stand, is the one entry that is always empty.
std::size_t index_of(char letter, double slot) {
    const std::int32_t base = base_of(letter);
    return slot < 1 || base + slot > last_index_of(letter) ? 0
                                                           : static_cast<std::size_t>(base + slot);
}

/// The entry of a slot, or the box that tells that the name does not exist.
std::optional<NamedField> field_at(std::string_view name, double spostamento, double slot) {
    const std::size_t index = index_of(name.front(), slot);
    const std::string& entry = repository.TABELLACAMPI[index];
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

constexpr int kFirstLineSlot = 401;
constexpr int kLastLineSlot = 500;
constexpr std::size_t kLineWidth = 35;
constexpr std::size_t kBlockWidth = (kLastLineSlot - kFirstLineSlot + 1) * kLineWidth;

/// Where the block of lines begins in the record, 0-based, where the dictionary has the slots as
/// texts of 35 characters one behind the other: it is then one piece of the record. Nothing where
/// it has them otherwise, or where the record ends before the block.
std::optional<std::size_t> start_of_block() {
    const std::int32_t base = base_of('Q');
    if (base < 0 || base + kLastLineSlot > highest_index()) {
        return std::nullopt;
    }
    const auto first = static_cast<std::size_t>(base) + kFirstLineSlot;
    const int start = repository.fields[first].offset;
    for (std::size_t line = 0; line * kLineWidth < kBlockWidth; ++line) {
        const Repository::Field& field = repository.fields[first + line];
        const std::string& entry = repository.TABELLACAMPI[first + line];
        if (field.offset != start + static_cast<int>(line * kLineWidth) ||
            field.length != static_cast<int>(kLineWidth) || entry[7] != 'A') {
            return std::nullopt;
        }
    }
    const auto begin = static_cast<std::size_t>(start) - 1;
    const bool whole = begin + kBlockWidth <= area(area_of_letter('Q')).size();
    return whole ? std::optional(begin) : std::nullopt;
}

}  // namespace

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
    const std::optional<NamedField> field = target_field(name, spostamento);
    if (!field) {
        return;
    }
    std::string copy = value;
    const std::size_t comma = copy.find(',');
    if (comma != std::string::npos) {
        copy[comma] = '.';
    }
    if (!buffer.empty()) {
        overwrite(buffer, *field, encode(*field, copy));
    } else if (field->area != Area::unknown) {
        overwrite(area(field->area), *field, encode(*field, copy));
    }
}

void XREPOW(std::string_view name, double spostamento, const std::string& value) {
    std::string area_itself;
    XREPOW(name, spostamento, value, area_itself);
}

std::string leggi_blocco_righe() {
    if (const std::optional<std::size_t> start = start_of_block()) {
        repository.type = "A";
        return area(area_of_letter('Q')).substr(*start, kBlockWidth);
    }
    std::string lines;
    lines.reserve(kBlockWidth);
    for (int slot = kFirstLineSlot; slot <= kLastLineSlot; ++slot) {
        lines += XREPOR("Q", slot, {});
    }
    return lines;
}

void scrivi_blocco_righe(const std::string& lines) {
    // A comma in a line is written as a point, line by line.
    const bool plain = lines.find(',') == std::string::npos;
    if (const std::optional<std::size_t> start = plain ? start_of_block() : std::nullopt) {
        area(area_of_letter('Q')).replace(*start, kBlockWidth, a_sinistra(lines, kBlockWidth));
        return;
    }
    std::size_t position = 1;
    for (int slot = kFirstLineSlot; slot <= kLastLineSlot; ++slot) {
        XREPOW("Q", slot, std::string(ritaglia(lines, position, kLineWidth)));
        position += kLineWidth;
    }
}

}  // namespace MXREPOSITORY
