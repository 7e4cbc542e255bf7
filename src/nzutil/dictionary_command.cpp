// campi: what a field is, the fields of an area, the fields whose meaning holds some words.

#include <algorithm>
#include <array>
#include <iostream>

#include "installation/field_value.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/field_users.h"
#include "records/descriptor.h"
#include "records/meanings.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Area;
using MXREPOSITORY::Descriptor;

/// The areas with fields, as a person calls their records.
struct AreaName {
    Area area;
    const texts::Text& text;
};
constexpr std::array<AreaName, 9> kAreaNames{{
    {Area::DITX, texts::kToolAreaCompany},
    {Area::DIPX, texts::kToolAreaEmployee},
    {Area::CUDX, texts::kToolAreaCertificate},
    {Area::DICX, texts::kToolAreaMonths},
    {Area::CONX, texts::kToolAreaContract},
    {Area::FISX, texts::kToolAreaFixed},
    {Area::FOTX, texts::kToolAreaItem},
    {Area::SETX, texts::kToolAreaSector},
    {Area::FOPX, texts::kToolAreaFund},
}};
constexpr int kDateLength = 8;

std::string_view tag_of(Area area) {
    return MXREPOSITORY::kAreaTags[static_cast<std::size_t>(area)];
}

/// An area by its tag, with or without the '$', in any case.
Area area_by_name(const std::string& name) {
    return MXREPOSITORY::area_of_tag(in_capitals(name.ends_with('$') ? name : name + '$'));
}

std::string areas_with_fields() {
    std::string list;
    for (const AreaName& row : kAreaNames) {
        list += (list.empty() ? "" : ", ") + std::string(tag_of(row.area));
    }
    return list;
}

// ---- One field ----

std::string type_in_words(const Descriptor& field) {
    switch (field.type) {
        case 'A':
            return std::string(texts::kToolTypeText.utf8);
        case 'D':
            return std::string(field.length == kDateLength ? texts::kToolTypeDate.utf8
                                                           : texts::kToolTypeDigits.utf8);
        case 'N':
            return std::string(texts::kToolTypeWhole.utf8);
        case '0':
            return std::string(texts::kToolTypeDigits.utf8);
        default:
            return fill(texts::kToolTypeDecimals, {std::to_string(field.decimals())});
    }
}

std::string_view area_in_words(Area area) {
    const auto* const found = std::ranges::find(kAreaNames, area, &AreaName::area);
    return found == kAreaNames.end() ? std::string_view() : found->text.utf8;
}

/// A list of procedures, one to a line under its heading.
void show_users(const texts::Text& heading, std::string_view users) {
    std::cout << heading.utf8 << '\n';
    if (users.empty()) {
        std::cout << "    " << texts::kToolNoProcedure.utf8 << '\n';
        return;
    }
    constexpr std::string_view kDivider = ", ";
    for (std::size_t start = 0; start < users.size();) {
        const std::size_t end = std::min(users.find(kDivider, start), users.size());
        std::cout << "    " << users.substr(start, end - start) << '\n';
        start = end + kDivider.size();
    }
}

std::string meaning_in_words(const Descriptor& field) {
    const std::string_view meaning = MXREPOSITORY::meaning_of(field.name());
    return meaning.empty() ? std::string(texts::kToolNoMeaning.utf8) : platform::to_utf8(meaning);
}

void show_one(const Descriptor& field) {
    std::cout << field.text() << '\n'
              << fill(texts::kToolFieldMeaning, {field.name(), meaning_in_words(field)}) << '\n'
              << fill(texts::kToolFieldPlace,
                      {area_in_words(field.area), tag_of(field.area), std::to_string(field.offset),
                       std::to_string(field.offset + field.length - 1),
                       std::to_string(field.length), type_in_words(field)})
              << '\n';
    const FieldUsers users = users_of(field.name());
    show_users(texts::kToolReadBy, users.readers);
    show_users(texts::kToolWrittenBy, users.writers);
}

// ---- Many fields ----

void show_line(const Descriptor& field) {
    const std::string_view meaning = MXREPOSITORY::meaning_of(field.name());
    std::cout << field.text() << (meaning.empty() ? "" : "  ") << platform::to_utf8(meaning)
              << '\n';
}

/// A letter of code page 1252 in small and without its accent.
char plain_letter(char c) {
    constexpr std::string_view kPlain =
        "aaaaaaaceeeeiiiidnooooo*ouuuuy  aaaaaaaceeeeiiiidnooooo/ouuuuy y";
    const auto code = static_cast<unsigned char>(c);
    constexpr unsigned char kFirstAccent = 0xC0;
    if (code >= kFirstAccent) {
        return kPlain[code - kFirstAccent];
    }
    const bool sign = !(c >= 'a' && c <= 'z') && !(c >= 'A' && c <= 'Z') && !(c >= '0' && c <= '9');
    return sign ? ' ' : static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
}

/// The words of a text (code page 1252) in small letters without accents, divided and led by a
/// blank.
std::string plain_words(std::string_view text) {
    std::string words = " ";
    for (const char c : text) {
        const char plain = plain_letter(c);
        if (plain != ' ' || words.back() != ' ') {
            words += plain;
        }
    }
    return words;
}

/// The beginnings to look for, each led by a blank. A word loses its last vowel, so that singular
/// and plural find each other ("detrazione", "detrazioni").
std::vector<std::string> beginnings(const Arguments& arguments) {
    constexpr std::size_t kShortest = 4;
    std::vector<std::string> found;
    for (const std::string& argument : arguments) {
        const std::string words = plain_words(platform::from_utf8(argument)) + " ";
        for (std::size_t start = 0; start + 1 < words.size();) {
            const std::size_t end = words.find(' ', start + 1);
            std::string word = words.substr(start, end - start);
            if (word.size() > kShortest &&
                std::string_view("aeiou").find(word.back()) != std::string_view::npos) {
                word.pop_back();
            }
            if (word.size() > 1) {
                found.push_back(std::move(word));
            }
            start = end;
        }
    }
    return found;
}

int find_by_words(const Arguments& arguments) {
    const std::vector<std::string> wanted = beginnings(arguments);
    int count = 0;
    for (const MXREPOSITORY::Meaning& meaning : MXREPOSITORY::all_meanings()) {
        const std::string words = plain_words(meaning.text);
        const bool all = std::ranges::all_of(
            wanted, [&](const std::string& word) { return words.find(word) != std::string::npos; });
        if (all && !wanted.empty()) {
            std::cout << meaning.code << "  " << platform::to_utf8(meaning.text) << '\n';
            ++count;
        }
    }
    return count;
}

}  // namespace

int command_fields(const Arguments& arguments) {
    if (arguments.size() == 1) {
        if (const Descriptor* field = find_typed_field(arguments[0])) {
            show_one(*field);
            return 0;
        }
        const Area area = area_by_name(arguments[0]);
        if (area != Area::unknown && !MXREPOSITORY::fields_of(area).empty()) {
            std::ranges::for_each(MXREPOSITORY::fields_of(area), show_line);
            return 0;
        }
    }
    if (find_by_words(arguments) == 0) {
        std::string words;
        for (const std::string& argument : arguments) {
            words += (words.empty() ? "" : " ") + argument;
        }
        throw ToolError(texts::kToolNoAreaOrField, {words, areas_with_fields()});
    }
    return 0;
}

}  // namespace nzutil
