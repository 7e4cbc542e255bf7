#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform {

namespace {

/// Characters of the codes 80 to 9F; all other codes are the characters of the same number.
constexpr std::array<char16_t, 32> kUpperControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr std::uint32_t kFirstUpperControl = 0x80;
constexpr std::uint32_t kFirstLatin = 0xA0;
constexpr std::uint32_t kInvalid = 0xFFFFFFFF;

constexpr char byte_of(std::uint32_t value) {
    return static_cast<char>(static_cast<unsigned char>(value));
}

std::uint32_t character_of(unsigned char code) {
    return code >= kFirstUpperControl && code < kFirstLatin
               ? kUpperControls[code - kFirstUpperControl]
               : code;
}

void append_utf8(std::string& out, std::uint32_t character) {
    if (character < 0x80) {
        out += byte_of(character);
    } else if (character < 0x800) {
        out += byte_of(0xC0 | (character >> 6));
        out += byte_of(0x80 | (character & 0x3F));
    } else {
        out += byte_of(0xE0 | (character >> 12));
        out += byte_of(0x80 | ((character >> 6) & 0x3F));
        out += byte_of(0x80 | (character & 0x3F));
    }
}

/// Bytes of the sequence that starts with `lead`; 0 for a byte that cannot start one.
std::size_t sequence_length(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// The character at `position`, which moves behind it; a damaged sequence costs one byte.
std::uint32_t next_character(std::string_view utf8, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(utf8[position]);
    const std::size_t length = sequence_length(lead);
    if (length == 0 || position + length > utf8.size()) {
        ++position;
        return kInvalid;
    }
    constexpr std::array<std::uint32_t, 5> kLeadMask{0, 0x7F, 0x1F, 0x0F, 0x07};
    std::uint32_t character = lead & kLeadMask[length];
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(utf8[position + i]);
        if ((next & 0xC0) != 0x80) {
            ++position;
            return kInvalid;
        }
        character = (character << 6) | (next & 0x3FU);
    }
    position += length;
    return character;
}

/// A terminal obeys it instead of showing it.
bool is_control(std::uint32_t character) {
    constexpr std::uint32_t kFirstPrintable = 0x20;
    constexpr std::uint32_t kDelete = 0x7F;
    return character < kFirstPrintable || (character >= kDelete && character < kFirstLatin);
}

std::string utf8_without_controls(std::string_view utf8, bool keeps_line_feeds) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();) {
        const std::size_t start = position;
        const std::uint32_t character = next_character(utf8, position);
        const bool line_feed = keeps_line_feeds && character == '\n';
        if (character == kInvalid || (is_control(character) && !line_feed)) {
            out += '?';
        } else {
            out += utf8.substr(start, position - start);
        }
    }
    return out;
}

char code_of(std::uint32_t character) {
    if (character < kFirstUpperControl || (character >= kFirstLatin && character <= 0xFF)) {
        return byte_of(character);
    }
    const auto* found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    return found == kUpperControls.end()
               ? '?'
               : byte_of(kFirstUpperControl +
                         static_cast<std::uint32_t>(found - kUpperControls.begin()));
}

}  // namespace

std::string to_utf8(std::string_view bytes_1252) {
    std::string out;
    out.reserve(bytes_1252.size());
    for (const char byte : bytes_1252) {
        append_utf8(out, character_of(static_cast<unsigned char>(byte)));
    }
    return out;
}

std::string to_terminal(std::string_view bytes_1252) {
    std::string out;
    out.reserve(bytes_1252.size());
    for (const char byte : bytes_1252) {
        const std::uint32_t character = character_of(static_cast<unsigned char>(byte));
        append_utf8(out, is_control(character) ? '?' : character);
    }
    return out;
}

std::string utf8_to_terminal(std::string_view utf8) {
    return utf8_without_controls(utf8, false);
}

std::string utf8_lines_to_terminal(std::string_view utf8) {
    return utf8_without_controls(utf8, true);
}

std::string from_utf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();) {
        out += code_of(next_character(utf8, position));
    }
    return out;
}

}  // namespace platform
