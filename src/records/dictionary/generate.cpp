// Makes the field constants from the data files: one header per area, with one constant per field
// under its code, and one table of all areas.
//
//   generate_dictionary OUTPUT_DIRECTORY AREA.campi...
//
// A data file: '#' starts a comment; a row is a code, a blank and "offset,length,type,flag".

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Row {
    std::string code;
    std::string columns;
};

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
        if (line.size() != 17 || line[4] != ' ' || line[10] != ',' || line[13] != ',' ||
            line[15] != ',') {
            throw std::runtime_error(file.string() + ":" + std::to_string(number) +
                                     ": not a row 'CODE 00000,00,T,0': " + line);
        }
        rows.push_back({line.substr(0, 4), line.substr(5)});
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
            << row.columns << ',' << row.code << "\");\n";
    }
    out << "\n}  // namespace MXREPOSITORY\n";
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
        out << "constexpr std::array<Descriptor, " << rows[i].size() << "> k" << areas[i] << "{";
        for (const Row& row : rows[i]) {
            out << row.code << ",\n";
        }
        out << "};\n";
    }
    out << "\n}  // namespace\n\nstd::span<const Descriptor> fields_of(Area area) {\n"
        << "    switch (area) {\n";
    for (const std::string& area : areas) {
        out << "        case Area::" << area << ": return k" << area << ";\n";
    }
    out << "        default: return {};\n    }\n}\n\n}  // namespace MXREPOSITORY\n";
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
        return EXIT_SUCCESS;
    } catch (const std::exception& e) {
        std::cerr << "generate_dictionary: " << e.what() << '\n';
        return EXIT_FAILURE;
    }
}
