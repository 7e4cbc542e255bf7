#pragma once
// Field descriptors: 23 characters that say which area, where, how long and of what type a field
// is.
//
//   positions  column       form
//   1-5        area tag     four characters and '$'
//   7-11       offset       1-based position of the first character, five digits
//   13-14      length       width in characters, 01 to 99
//   16         type         N whole, A text, D date or digits, 0 digits, 2-6 so many decimals
//   18         flag         0 or 1, carried and not read
//   20-23      code         short name of the field, as P017 or PA48
//
// The constants (one per field, under its code) are generated from the data files in
// records/dictionary/ and cut at compile time.

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace MXREPOSITORY {

/// Record areas, in the order in which a descriptor's tag is compared.
enum class Area : std::uint8_t {
    DITX,
    DIPX,
    FISX,
    SETX,
    FOTX,
    DICX,
    DI2X,
    CONX,
    CUDX,
    PROX,
    STUX,
    ARTX,
    FOPX,
    F24X,
    PARX,
    PERX,
    COCX,
    STOX,
    SCRX,
    SCRY,
    GLAX,
    GLCX,
    M77X,
    SCRU,
    unknown
};
inline constexpr std::size_t kAreaCount = 24;

/// The 5-character tag of an area, "DITX$".
inline constexpr std::array<std::string_view, kAreaCount> kAreaTags{
    "DITX$", "DIPX$", "FISX$", "SETX$", "FOTX$", "DICX$", "DI2X$", "CONX$",
    "CUDX$", "PROX$", "STUX$", "ARTX$", "FOPX$", "F24X$", "PARX$", "PERX$",
    "COCX$", "STOX$", "SCRX$", "SCRY$", "GLAX$", "GLCX$", "M77X$", "SCRU$"};

/// Area of a tag; Area::unknown if there is none.
[[nodiscard]] constexpr Area area_of_tag(std::string_view tag) {
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        if (kAreaTags[i] == tag) {
            return static_cast<Area>(i);
        }
    }
    return Area::unknown;
}

inline constexpr std::size_t kDescriptorLength = 23;

/// A descriptor cut into its columns.
struct Descriptor {
    Area area = Area::unknown;
    std::int16_t offset = 0;  ///< 1-based
    std::int16_t length = 0;
    char type = 'A';
    char flag = '0';
    std::array<char, 4> code{};

    /// Implied decimals: the numeric value of the type, 0 for letters.
    [[nodiscard]] constexpr int decimals() const {
        return type >= '0' && type <= '9' ? type - '0' : 0;
    }
    /// The short name, "P017".
    [[nodiscard]] constexpr std::string_view name() const { return {code.data(), code.size()}; }
    /// The 23 characters.
    [[nodiscard]] std::string text() const;

    friend constexpr bool operator==(const Descriptor&, const Descriptor&) = default;
};

/// Cuts a descriptor text at compile time; a text that is none does not compile.
consteval Descriptor cut(std::string_view text) {
    const auto digits = [text](std::size_t position, std::size_t count) {
        int value = 0;
        for (std::size_t i = position - 1; i < position - 1 + count; ++i) {
            if (text[i] < '0' || text[i] > '9') {
                throw "a digit is missing in a descriptor";
            }
            value = value * 10 + (text[i] - '0');
        }
        return static_cast<std::int16_t>(value);
    };
    if (text.size() != kDescriptorLength || text[5] != ',' || text[11] != ',' || text[14] != ',' ||
        text[16] != ',' || text[18] != ',') {
        throw "not the form of a descriptor";
    }
    Descriptor d;
    d.area = area_of_tag(text.substr(0, 5));
    if (d.area == Area::unknown) {
        throw "unknown area tag";
    }
    d.offset = digits(7, 5);
    d.length = digits(13, 2);
    d.type = text[15];
    d.flag = text[17];
    for (std::size_t i = 0; i < 4; ++i) {
        d.code[i] = text[19 + i];
    }
    return d;
}

/// All fields of an area at compile time, where the area's header is included.
template <Area which>
inline constexpr std::span<const Descriptor> kFieldsOf{};

/// All fields of an area in the order of its data file; empty for the areas without data here.
[[nodiscard]] std::span<const Descriptor> fields_of(Area area);

/// Those of them that the calculation names; the meanings of the data file tell which.
[[nodiscard]] std::span<const Descriptor> used_fields_of(Area area);

/// The field of a short name ("P017"), or nullptr.
[[nodiscard]] const Descriptor* find_field(std::string_view code);

/// The last position that the fields of an area use; 0 for an area without fields here.
[[nodiscard]] std::int16_t last_position(Area area);

/// The area of a code letter ('T' DITX, 'P' and 'Q' DIPX, ...); unknown for C and D. 'O' gives
/// GLAX.
[[nodiscard]] Area area_of_letter(char letter);

}  // namespace MXREPOSITORY
