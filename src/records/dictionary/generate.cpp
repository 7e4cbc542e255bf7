// Makes the field constants from the data files: one header per area, with one constant per field
// under its code and its meaning as the constant's comment; one table of all areas; and one table
// of the meanings, which only the tools look into.
//
//   generate_dictionary OUTPUT_DIRECTORY AREA.campi...
//
// A data file is UTF-8; '#' starts a comment; a row is a code, a blank, "offset,length,type,flag"
// and, where the field has one, two blanks and its meaning.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/code_page.h"

namespace {

struct Row {
    std::string code;
    std::string columns;
    std::string meaning;  ///< UTF-8; empty where the field has none
};

constexpr std::size_t kColumnsEnd = 17;    // "P240 01675,10,2,0"
constexpr std::size_t kMeaningStart = 19;  // behind two blanks
constexpr std::size_t kLongestMeaning = 70;
constexpr unsigned char kFirstPrintable = 0x20;
constexpr unsigned char kDelete = 0x7F;
constexpr std::string_view kUndefinedCodes = "\x81\x8D\x8F\x90\x9D";

/// What is wrong with a meaning; empty when it can stand in a comment and on a slip's screen.
std::string fault_of_meaning(const std::string& meaning) {
    const std::string bytes = platform::from_utf8(meaning);
    if (platform::to_utf8(bytes) != meaning ||
        bytes.find_first_of(kUndefinedCodes) != std::string::npos) {
        return "not UTF-8 of characters of code page 1252";
    }
    if (bytes.size() > kLongestMeaning) {
        return "a meaning of " + std::to_string(bytes.size()) + " characters";
    }
    const auto is_control = [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code < kFirstPrintable || code == kDelete;
    };
    if (std::ranges::any_of(bytes, is_control)) {
        return "a control character in a meaning";
    }
    if (bytes.front() == ' ' || bytes.back() == ' ' || bytes.back() == '\\') {
        return "a meaning that starts with a blank or ends with one or with a backslash";
    }
    return {};
}

/// What is wrong with a row; empty when its columns stand where they belong.
std::string fault_of_row(const std::string& line) {
    if (line.size() < kColumnsEnd || line[4] != ' ' || line[10] != ',' || line[13] != ',' ||
        line[15] != ',') {
        return "not a row 'CODE 00000,00,T,0  meaning'";
    }
    if (line.size() == kColumnsEnd) {
        return {};
    }
    if (line.size() <= kMeaningStart || line.substr(kColumnsEnd, 2) != "  ") {
        return "the meaning does not stand behind two blanks";
    }
    return fault_of_meaning(line.substr(kMeaningStart));
}

std::vector<Row> read_rows(const std::filesystem::path& file) {
    std::ifstream in(file);
    if (!in) {
        throw std::runtime_error("cannot read " + file.string());
    }
    std::vector<Row> rows;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (const std::string fault = fault_of_row(line); !fault.empty()) {
            std::string message = file.string();
            for (const std::string& part : {std::to_string(number), " " + fault, " " + line}) {
                message.append(":").append(part);
            }
            throw std::runtime_error(message);
        }
        rows.push_back({line.substr(0, 4), line.substr(5, kColumnsEnd - 5),
                        line.size() > kMeaningStart ? line.substr(kMeaningStart) : std::string()});
    }
    return rows;
}

void write_header(const std::filesystem::path& directory, const std::string& area,
                  const std::vector<Row>& rows) {
    std::ofstream out(directory / (area + ".h"));
    out << "#pragma once\n// Generated from " << area << ".campi.\n\n"
        << "#include \"records/descriptor.h\"\n\nnamespace MXREPOSITORY {\n\n";
    for (const Row& row : rows) {
        out << "inline constexpr Descriptor " << row.code << " = cut(\"" << area << "$,"
            << row.columns << ',' << row.code << "\");"
            << (row.meaning.empty() ? "" : "  ///< " + row.meaning) << '\n';
    }
    out << "\ninline constexpr std::array<Descriptor, " << rows.size() << "> kAll" << area << "{\n";
    for (const Row& row : rows) {
        out << row.code << ",\n";
    }
    out << "};\ntemplate <>\ninline constexpr std::span<const Descriptor> kFieldsOf<Area::" << area
        << ">{kAll" << area << "};\n\n}  // namespace MXREPOSITORY\n";
}

/// A function that returns the table of an area; the tables' names begin with `prefix`.
void write_choice(std::ostream& out, const std::string& function, const std::string& prefix,
                  const std::vector<std::string>& areas) {
    out << "std::span<const Descriptor> " << function << "(Area area) {\n    switch (area) {\n";
    for (const std::string& area : areas) {
        out << "        case Area::" << area << ": return " << prefix << area << ";\n";
    }
    out << "        default: return {};\n    }\n}\n\n";
}

void write_tables(const std::filesystem::path& directory, const std::vector<std::string>& areas,
                  const std::vector<std::vector<Row>>& rows) {
    std::ofstream out(directory / "tables.cpp");
    out << "// Generated from the data files of the dictionary.\n\n#include <array>\n#include "
           "<span>\n\n"
        << "#include \"records/descriptor.h\"\n";
    for (const std::string& area : areas) {
        out << "#include \"records/dictionary/" << area << ".h\"\n";
    }
    out << "\nnamespace MXREPOSITORY {\n\nnamespace {\n\n";
    for (std::size_t i = 0; i < areas.size(); ++i) {
        out << "constexpr auto kUsed" << areas[i] << " = std::to_array<Descriptor>({";
        for (const Row& row : rows[i]) {
            out << (row.meaning.empty() ? "" : row.code + ",\n");
        }
        out << "});\n";
    }
    out << "\n}  // namespace\n\n";
    write_choice(out, "fields_of", "kAll", areas);
    write_choice(out, "used_fields_of", "kUsed", areas);
    out << "}  // namespace MXREPOSITORY\n";
}

/// The bytes of a text between the quotes of a literal, all but plain ASCII in octal.
std::string in_quotes(const std::string& bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text += '\\';
        }
        if (code < kDelete) {
            text += c;
        } else {
            text += {'\\', static_cast<char>('0' + code / 64),
                     static_cast<char>('0' + code / 8 % 8), static_cast<char>('0' + code % 8)};
        }
    }
    return text;
}

/// The meanings by code, in the order of the codes and in bytes of code page 1252.
void write_meanings(const std::filesystem::path& directory,
                    const std::vector<std::vector<Row>>& areas) {
    std::vector<Row> rows;
    for (const std::vector<Row>& area : areas) {
        std::ranges::copy_if(area, std::back_inserter(rows),
                             [](const Row& row) { return !row.meaning.empty(); });
    }
    std::ranges::sort(rows, {}, &Row::code);
    std::ofstream out(directory / "meanings.cpp");
    out << "// Generated from the data files of the dictionary.\n\n#include <array>\n\n"
        << "#include \"records/meanings.h\"\n\nnamespace MXREPOSITORY {\n\nnamespace {\n\n"
        << "constexpr std::array<Meaning, " << rows.size() << "> kMeanings{{\n";
    for (const Row& row : rows) {
        out << "{\"" << row.code << "\", \"" << in_quotes(platform::from_utf8(row.meaning))
            << "\"},\n";
    }
    out << "}};\n\n}  // namespace\n\nstd::span<const Meaning> all_meanings() {\n"
        << "    return kMeanings;\n}\n\n}  // namespace MXREPOSITORY\n";
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc < 3) {
            throw std::runtime_error("usage: generate_dictionary DIRECTORY AREA.campi...");
        }
        const std::filesystem::path directory = argv[1];
        std::filesystem::create_directories(directory);
        std::vector<std::string> areas;
        std::vector<std::vector<Row>> rows;
        for (int i = 2; i < argc; ++i) {
            const std::filesystem::path file = argv[i];
            areas.push_back(file.stem().string());
            rows.push_back(read_rows(file));
            write_header(directory, areas.back(), rows.back());
        }
        write_tables(directory, areas, rows);
        write_meanings(directory, rows);
        return EXIT_SUCCESS;
    } catch (const std::exception& e) {
        std::cerr << "generate_dictionary: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
