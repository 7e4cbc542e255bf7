#include "records/fields.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>

#include "platform/failure.h"
#include "platform/window.h"
#include "records/numbers.h"
#include "records/repository_errors.h"
#include "texts/texts.h"

namespace MXREPOSITORY {

using platform::Failure;

namespace {

std::array<std::string, kAreaCount> areas;  // process-wide: one buffer for each tag

const std::string kAreaItself;  // no buffer: the area of the descriptor

constexpr const char* kReadName = "RepoR";
constexpr const char* kWriteName = "RepoW";

/// A failure inside an accessor carries the accessor's pseudo name to the handler. To be called in
/// the catch block.
[[noreturn]] void rethrow_named(Failure& failure, const char* name) {
    failure.pseudo_name = name;
    throw;
}

/// A descriptor text made at run time, cut by position; an unknown tag stays Area::unknown.
Descriptor cut_at_run_time(const std::string& text) {
    Descriptor d;
    d.area = area_of_tag(ritaglia(text, 1, 5));
    d.offset = intero16(valore(ritaglia(text, 7, 5)));
    d.length = intero16(valore(ritaglia(text, 13, 2)));
    if (d.length < 0) {
        throw Failure(platform::kInvalidCall);
    }
    const std::string_view type = ritaglia(text, 16, 1);
    d.type = type.empty() ? ' ' : type.front();
    const std::string_view flag = ritaglia(text, 18, 1);
    d.flag = flag.empty() ? ' ' : flag.front();
    // In the second employee record the group's number follows the first I at or after the fourth
    // position, wherever that stands.
    const std::size_t letter = text.find('I', 3);
    std::string_view code = ritaglia(text, 20, 4);
    if (d.area == Area::DI2X) {
        code = letter == std::string::npos ? std::string_view() : ritaglia(text, letter + 1, 4);
    }
    std::copy(code.begin(), code.end(), d.code.begin());
    return d;
}

std::string* area_or_message(Area which) {
    if (which == Area::unknown) {
        show_repository_error(texts::kRepositoryUnknownTag);
        return nullptr;
    }
    return &areas[static_cast<std::size_t>(which)];
}

/// 0-based position of an occurrence's first character.
std::size_t start_of(const Descriptor& d, std::int16_t occurrence) {
    const bool first = occurrence == 0 && d.area != Area::DI2X;  // where no group is looked up
    const int position =
        first ? d.offset : checked16(d.offset + SPOSTAMENTOOCCORRENZA(d, occurrence));
    if (position < 1) {
        throw Failure(platform::kInvalidCall);
    }
    return static_cast<std::size_t>(position - 1);
}

std::string_view slice(const std::string& source, std::size_t start, const Descriptor& d) {
    if (start >= source.size()) {
        return {};
    }
    return std::string_view(source).substr(start, static_cast<std::size_t>(d.length));
}

bool raw_type(const Descriptor& d) {
    return d.type != 'N' && d.decimals() == 0;
}

/// Digits in front of the point; a damaged descriptor may claim more decimals than characters.
std::size_t whole_digits(const Descriptor& d) {
    return static_cast<std::size_t>(std::max(0, d.length - d.decimals()));
}

/// Sign in front and point inserted: the form in which a numeric field is read.
std::string decode(std::string_view raw, const Descriptor& d) {
    if (raw_type(d)) {
        return std::string(raw);
    }
    std::string value;
    value.reserve(raw.size() + 2);
    const std::size_t minus = raw.find('-');
    if (minus != std::string_view::npos) {
        value += '-';
    }
    const std::size_t first = value.size();
    value += raw;
    if (minus != std::string_view::npos) {
        value[first + minus] = '0';
    }
    if (d.decimals() > 0) {
        value.insert(first + std::min(whole_digits(d), raw.size()), 1, '.');
    }
    return value;
}

constexpr std::array<double, 10> kUnits{1, 10, 100, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
constexpr std::int16_t kExactDigits = 15;  ///< a double holds every number of so many digits

/// Eight digits in one word as the machine reads them, the first in its lowest byte: neighbours are
/// joined to pairs, pairs to fours, fours to eight. False if one of them is no digit.
bool eight_digits(std::uint64_t word, std::uint64_t& value) {
    constexpr std::uint64_t kHigh = 0xF0F0F0F0F0F0F0F0U;
    const std::uint64_t beyond_nine = ((word + 0x0606060606060606U) & kHigh) >> 4U;
    if (((word & kHigh) | beyond_nine) != 0x3333333333333333U) {
        return false;
    }
    word = ((word & 0x0F0F0F0F0F0F0F0FU) * 2561) >> 8U;
    word = ((word & 0x00FF00FF00FF00FFU) * 6553601) >> 16U;
    value = ((word & 0x0000FFFF0000FFFFU) * 42949672960001U) >> 32U;
    return true;
}

constexpr std::size_t kAtOnce = 8;
constexpr std::uint64_t kEightUnits = 100000000;

/// Up to seven digits, where eight characters can be read: zeros take the place in front of them.
bool few_digits(const char* text, std::size_t count, std::uint64_t& value) {
    constexpr std::uint64_t kZeros = 0x3030303030303030U;
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    const std::size_t bits = count * 8;
    return eight_digits((word << (64 - bits)) | (kZeros >> bits), value);
}

/// The same without the word.
bool digit_by_digit(std::string_view digits, std::uint64_t& value) {
    value = 0;
    for (const char c : digits) {
        const auto digit = static_cast<std::uint64_t>(static_cast<unsigned char>(c)) - '0';
        if (digit > 9) {
            return false;
        }
        value = value * 10 + digit;
    }
    return true;
}

/// The whole number of a text of digits and nothing else; `digits` at most 15, and characters that
/// can be read up to `end`.
bool whole_number(std::string_view digits, const char* end, std::uint64_t& value) {
    if constexpr (std::endian::native != std::endian::little) {
        return digit_by_digit(digits, value);
    }
    const char* const text = digits.data();
    if (digits.size() < kAtOnce) {
        return !digits.empty() && end - text >= static_cast<std::ptrdiff_t>(kAtOnce)
                   ? few_digits(text, digits.size(), value)
                   : digit_by_digit(digits, value);
    }
    const std::size_t first = digits.size() - kAtOnce;
    std::uint64_t leading = 0;
    std::uint64_t word = 0;
    std::memcpy(&word, text + first, sizeof word);
    if ((first > 0 && !few_digits(text, first, leading)) || !eight_digits(word, value)) {
        return false;
    }
    value += leading * kEightUnits;
    return true;
}

/// `end`: where the source ends.
double decode_number(std::string_view raw, const char* end, const Descriptor& d) {
    // The ordinary field: digits only, perhaps a minus in front, that a double holds exactly. The
    // quotient by the power of ten is then the nearest double of the decimal text.
    if (d.length <= kExactDigits && d.decimals() <= d.length && !raw.empty() &&
        raw.size() == static_cast<std::size_t>(d.length)) {
        const bool negative = raw.front() == '-' && !raw_type(d);
        std::uint64_t units = 0;
        if (whole_number(raw.substr(negative ? 1 : 0), end, units)) {
            const double value =
                static_cast<double>(units) / kUnits[static_cast<std::size_t>(d.decimals())];
            return negative ? -value : value;
        }
    }
    return valore(decode(raw, d));
}

// ---- Writing ----

/// Where the characters of a field go.
struct Target {
    std::string* buffer;
    std::size_t start;
};

/// Right-aligned digits in zeros; excess digits are lost on the left, and a minus takes the first
/// position.
void put_digits(char* field, std::size_t length, std::string_view digits, bool negative) {
    if (length == 0) {
        return;
    }
    digits = destra(digits, length);
    const std::size_t zeros = length - digits.size();
    std::fill_n(field, zeros, '0');
    std::copy(digits.begin(), digits.end(), field + zeros);
    if (negative) {
        *field = '-';
    }
}

/// Left-aligned text in blanks.
void put_text(char* field, std::size_t length, std::string_view text) {
    text = text.substr(0, length);
    std::copy(text.begin(), text.end(), field);
    std::fill_n(field + text.size(), length - text.size(), ' ');
}

bool plain_digits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Digits of a number without its sign, the decimals of the field implied.
std::string implied_digits(std::string_view number, const Descriptor& d) {
    std::string v(number);
    const auto decimals = static_cast<std::size_t>(d.decimals());
    // A whole number needs no rounding while its half unit stands within fifteen digits.
    if (number.size() + decimals < kExactDigits && plain_digits(number)) {
        return v.append(decimals, '0');
    }
    if (decimals > 0) {
        v = arrotondato_testo(valore(v), d.decimals());
    }
    NORMALIZZAESPONENTE(v);
    if (decimals == 0) {
        return v;
    }
    std::size_t point = v.find(',');
    if (point == std::string::npos) {
        point = v.find('.');
    }
    v.append(decimals, '0');
    if (point == std::string::npos) {
        return v;
    }
    return v.substr(0, point) + v.substr(point + 1, decimals);
}

/// The place of `length` characters in the target.
char* place(const Target& target, std::size_t length) {
    if (target.start + length > target.buffer->size()) {
        throw Failure(platform::kSubscriptOutOfRange);
    }
    return target.buffer->data() + target.start;
}

std::string read_field(const Descriptor& d, std::int16_t occurrence, const std::string& buffer) {
    const std::string* source = buffer.empty() ? area_or_message(d.area) : &buffer;
    return decode(
        source == nullptr ? std::string_view() : slice(*source, start_of(d, occurrence), d), d);
}

double read_number(const Descriptor& d, std::int16_t occurrence, const std::string& buffer) {
    const std::string* source = buffer.empty() ? area_or_message(d.area) : &buffer;
    if (source == nullptr) {
        return 0;
    }
    return decode_number(slice(*source, start_of(d, occurrence), d),
                         source->data() + source->size(), d);
}

/// An empty text: blanks, or zeros in a numeric field.
void write_nothing(const Descriptor& d, const Target& target) {
    const auto length = static_cast<std::size_t>(d.length);
    std::fill_n(place(target, length), length, d.type == 'A' ? ' ' : '0');
}

/// Stores a text whose comma is already a point.
void write_characters(const Descriptor& d, std::string_view value, const Target& target) {
    const auto length = static_cast<std::size_t>(d.length);
    if (value.empty()) {
        write_nothing(d, target);
        return;
    }
    if (d.type == 'A') {
        put_text(place(target, length), length, value);
        return;
    }
    const bool negative = !value.empty() && value.front() == '-';
    const std::string_view magnitude = value.substr(negative ? 1 : 0);
    if (d.decimals() == 0 && plain_digits(magnitude)) {
        put_digits(place(target, length), length, magnitude, negative);
        return;
    }
    const std::string digits = implied_digits(magnitude, d);
    put_digits(place(target, length), length, digits, negative);
}

/// The buffer, or else the area, from the field's position on; without a buffer for a tag that is
/// none.
Target target_of(const Descriptor& d, std::int16_t occurrence, std::string& buffer) {
    std::string* record = buffer.empty() ? area_or_message(d.area) : &buffer;
    return {record, record == nullptr ? 0 : start_of(d, occurrence)};
}

void write_field(const Descriptor& d, std::string& value, std::int16_t occurrence,
                 std::string& buffer) {
    const std::size_t comma = value.find(',');
    if (comma != std::string::npos) {
        value[comma] = '.';
    }
    const Target target = target_of(d, occurrence, buffer);
    if (target.buffer != nullptr) {
        write_characters(d, value, target);
    }
}

/// Units of the field's last decimal, where they come out the same without the decimal text.
std::optional<std::uint64_t> units_of(const Descriptor& d, double magnitude) {
    constexpr double kWholeLimit = 1e15;
    if (d.type == 'A') {
        return std::nullopt;
    }
    if (d.decimals() > 0) {
        return plain_units(magnitude, d.decimals());
    }
    if (magnitude < kWholeLimit && magnitude == Int(magnitude)) {
        return static_cast<std::uint64_t>(magnitude);
    }
    return std::nullopt;
}

void write_number(const Descriptor& d, double value, std::int16_t occurrence, std::string& buffer) {
    const Target target = target_of(d, occurrence, buffer);
    if (target.buffer == nullptr) {
        return;
    }
    const auto units = units_of(d, std::abs(value));
    if (!units) {
        write_characters(d, testo_numero(value), target);
        return;
    }
    std::array<char, 20> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), *units);
    const auto length = static_cast<std::size_t>(d.length);
    put_digits(place(target, length), length,
               {digits.data(), static_cast<std::size_t>(written.ptr - digits.data())}, value < 0);
}

}  // namespace

std::string& area(Area which) {
    return areas.at(static_cast<std::size_t>(which));
}

void clear_areas() {
    areas.fill({});
}

std::string LEGGICAMPO(const Descriptor& descriptor, std::int16_t occurrence,
                       const std::string& buffer) {
    try {
        return read_field(descriptor, occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kReadName);
    }
}

std::string LEGGICAMPO(const std::string& descriptor, std::int16_t occurrence,
                       const std::string& buffer) {
    try {
        return read_field(cut_at_run_time(descriptor), occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kReadName);
    }
}

double LEGGICAMPONUM(const Descriptor& descriptor, std::int16_t occurrence,
                     const std::string& buffer) {
    try {
        return read_number(descriptor, occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kReadName);
    }
}

double LEGGICAMPONUM(const std::string& descriptor, std::int16_t occurrence,
                     const std::string& buffer) {
    return valore(LEGGICAMPO(descriptor, occurrence, buffer));
}

void SCRIVICAMPO(const Descriptor& descriptor, std::string& value, std::int16_t occurrence,
                 std::string& buffer) {
    try {
        write_field(descriptor, value, occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kWriteName);
    }
}

void SCRIVICAMPO(const std::string& descriptor, std::string& value, std::int16_t occurrence,
                 std::string& buffer) {
    try {
        write_field(cut_at_run_time(descriptor), value, occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kWriteName);
    }
}

void SCRIVICAMPONUM(const Descriptor& descriptor, double value, std::int16_t occurrence,
                    std::string& buffer) {
    try {
        write_number(descriptor, value, occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kWriteName);
    }
}

void SCRIVICAMPONUM(const std::string& descriptor, double value, std::int16_t occurrence,
                    std::string& buffer) {
    try {
        write_number(cut_at_run_time(descriptor), value, occurrence, buffer);
    } catch (Failure& failure) {
        rethrow_named(failure, kWriteName);
    }
}

std::int16_t SPOSTAMENTOOCCORRENZA(const std::string& descriptor, std::int16_t occurrence) {
    return SPOSTAMENTOOCCORRENZA(cut_at_run_time(descriptor), occurrence);
}

double num(const Descriptor& field, int occurrence) {
    return LEGGICAMPONUM(field, static_cast<std::int16_t>(occurrence), kAreaItself);
}

std::string testo(const Descriptor& field, int occurrence) {
    return LEGGICAMPO(field, static_cast<std::int16_t>(occurrence), kAreaItself);
}

std::string rifilato(const Descriptor& field, int occurrence) {
    return rifila(testo(field, occurrence));
}

void scrivi(const Descriptor& field, double value, int occurrence) {
    std::string area_itself;
    SCRIVICAMPONUM(field, value, static_cast<std::int16_t>(occurrence), area_itself);
}

void svuota(const Descriptor& field) {
    std::string area_itself;
    try {
        const Target target = target_of(field, 0, area_itself);
        if (target.buffer != nullptr) {
            write_nothing(field, target);
        }
    } catch (Failure& failure) {
        rethrow_named(failure, kWriteName);
    }
}

bool tutto_zero(const Descriptor& field) {
    const std::string_view raw = slice(area(field.area), start_of(field, 0), field);
    return raw_type(field) && raw.size() == static_cast<std::size_t>(field.length) &&
           raw.find_first_not_of('0') == std::string_view::npos;
}

void scrivi(const Descriptor& field, std::string_view value, int occurrence) {
    std::string area_itself;
    if (value.find(',') != std::string_view::npos) {
        std::string text(value);
        SCRIVICAMPO(field, text, static_cast<std::int16_t>(occurrence), area_itself);
        return;
    }
    try {
        const Target target = target_of(field, static_cast<std::int16_t>(occurrence), area_itself);
        if (target.buffer != nullptr) {
            write_characters(field, value, target);
        }
    } catch (Failure& failure) {
        rethrow_named(failure, kWriteName);
    }
}

double aggiungi(const Descriptor& field, double amount, int occurrence) {
    scrivi(field, num(field, occurrence) + amount, occurrence);
    return num(field, occurrence);
}

}  // namespace MXREPOSITORY
