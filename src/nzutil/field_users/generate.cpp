// Makes the index of who reads and who writes each field, from the dictionary and the sources of
// the calculation:
//
//   generate_field_users OUTPUT.cpp SOURCE_DIRECTORY FILE...
//
// A file AREA.campi adds the fields of an area, any other one is a source. The output keeps its
// date when nothing has changed.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "nzutil/field_users/roles.h"

namespace {

namespace fs = std::filesystem;

std::string content_of(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void add_codes(const fs::path& file, std::set<std::string>& codes) {
    std::istringstream in(content_of(file));
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.front() != '#') {
            codes.insert(line.substr(0, 4));
        }
    }
}

std::string joined(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

std::string table_of(const std::map<std::string, field_users::Users>& users) {
    std::ostringstream out;
    out << "// Generated from the sources of the calculation.\n\n#include <array>\n\n"
        << "#include \"nzutil/field_users.h\"\n\nnamespace nzutil {\n\nnamespace {\n\n"
        << "constexpr std::array<FieldUsers, " << users.size() << "> kFieldUsers{{\n";
    for (const auto& [code, of_field] : users) {
        out << "{\"" << code << "\", \"" << joined(of_field.readers) << "\", \""
            << joined(of_field.writers) << "\"},\n";
    }
    out << "}};\n\n}  // namespace\n\nstd::span<const FieldUsers> all_field_users() {\n"
        << "    return kFieldUsers;\n}\n\n}  // namespace nzutil\n";
    return out.str();
}

void write_if_new(const fs::path& file, const std::string& text) {
    if (fs::exists(file) && content_of(file) == text) {
        return;
    }
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc < 4) {
            throw std::runtime_error("usage: generate_field_users OUTPUT.cpp DIRECTORY FILE...");
        }
        std::set<std::string> codes;
        std::vector<field_users::SourceFile> files;
        for (int i = 3; i < argc; ++i) {
            const fs::path file = argv[i];
            if (file.extension() == ".campi") {
                add_codes(file, codes);
            } else {
                const std::string name = fs::relative(file, argv[2]).generic_string();
                files.push_back(field_users::read_source(name, content_of(file)));
            }
        }
        write_if_new(argv[1], table_of(field_users::users_of_fields(files, codes)));
        return EXIT_SUCCESS;
    } catch (const std::exception& e) {
        std::cerr << "generate_field_users: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
