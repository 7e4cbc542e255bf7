#include "records/descriptor.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>

namespace MXREPOSITORY {

namespace {

constexpr std::uint32_t key_of(std::string_view code) {
    std::uint32_t key = 0;
    for (const char c : code) {
        key = (key << 8U) | static_cast<unsigned char>(c);
    }
    return key;
}

std::unordered_map<std::uint32_t, const Descriptor*> index_all_fields() {
    std::unordered_map<std::uint32_t, const Descriptor*> index;
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        for (const Descriptor& field : fields_of(static_cast<Area>(i))) {
            index.emplace(key_of(field.name()), &field);
        }
    }
    return index;
}

const std::unordered_map<std::uint32_t, const Descriptor*> kFieldIndex = index_all_fields();

struct LetterArea {
    char letter;
    Area area;
};
constexpr std::array<LetterArea, 24> kLetterAreas{{
    {'A', Area::F24X}, {'B', Area::PROX}, {'E', Area::STUX}, {'F', Area::FISX}, {'G', Area::CONX},
    {'H', Area::M77X}, {'I', Area::DI2X}, {'J', Area::DICX}, {'K', Area::SCRX}, {'L', Area::SCRY},
    {'M', Area::PERX}, {'N', Area::PARX}, {'O', Area::GLAX}, {'P', Area::DIPX}, {'Q', Area::DIPX},
    {'R', Area::FOPX}, {'S', Area::SETX}, {'T', Area::DITX}, {'U', Area::SCRU}, {'V', Area::STOX},
    {'W', Area::COCX}, {'X', Area::CUDX}, {'Y', Area::ARTX}, {'Z', Area::FOTX},
}};

}  // namespace

std::string Descriptor::text() const {
    if (area == Area::unknown) {
        return {};
    }
    std::array<char, 32> columns{};
    std::snprintf(columns.data(), columns.size(), ",%05d,%02d,%c,%c,", offset, length, type, flag);
    return std::string(kAreaTags[static_cast<std::size_t>(area)]) + columns.data() +
           std::string(name());
}

const Descriptor* find_field(std::string_view code) {
    if (code.size() != 4) {
        return nullptr;
    }
    const auto found = kFieldIndex.find(key_of(code));
    return found == kFieldIndex.end() ? nullptr : found->second;
}

std::int16_t last_position(Area area) {
    int last = 0;
    for (const Descriptor& field : fields_of(area)) {
        last = std::max(last, field.offset + field.length - 1);
    }
    return static_cast<std::int16_t>(last);
}

Area area_of_letter(char letter) {
    const auto* found =
        std::find_if(kLetterAreas.begin(), kLetterAreas.end(),
                     [letter](const LetterArea& row) { return row.letter == letter; });
    return found == kLetterAreas.end() ? Area::unknown : found->area;
}

}  // namespace MXREPOSITORY
