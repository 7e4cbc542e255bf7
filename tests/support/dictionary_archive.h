#pragma once
// An archive directory for tests with NZBASE.DAT and the dictionary files of the suite, made from
// our own dictionary. The directory becomes that of the run.

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "context/environment.h"
#include "files/logical_files.h"
#include "formulas/named_access.h"
#include "records/descriptor.h"
#include "tests/support/temp_directory.h"

namespace test_support {

/// Puts `text` at a 1-based position of a record.
inline void put(std::string& record, std::size_t position, const std::string& text) {
    record.replace(position - 1, text.size(), text);
}

/// A record of a dictionary file: length at 30, type at 32, offset at 50, flag at 65, code at 69.
inline std::string dictionary_record(const std::string& code, int offset, int length, char type) {
    std::string record(80, ' ');
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%02d", length);
    put(record, 30, digits.data());
    put(record, 32, std::string(1, type));
    std::snprintf(digits.data(), digits.size(), "%05d", offset);
    put(record, 50, digits.data());
    put(record, 65, "0");
    put(record, 69, code);
    return record;
}

/// The dictionary records of all fields whose code begins with a letter.
inline std::string dictionary_of(char letter) {
    std::string records;
    for (const MXREPOSITORY::Descriptor& field :
         MXREPOSITORY::fields_of(MXREPOSITORY::area_of_letter(letter))) {
        if (field.code[0] == letter) {
            records += dictionary_record(std::string(field.name()), field.offset, field.length,
                                         field.type);
        }
    }
    return records;
}

class DictionaryArchive {
  public:
    /// Makes the directory and the dictionary of the nine areas; the three files of the letter J
    /// share its fields.
    DictionaryArchive() : lines_(600, std::string(79, ' ')) {
        MXLIBRERIA::CHIUDI(0);
        MXLIBRERIA::environment = {};
        MXLIBRERIA::environment.archive_directory = directory_.path();
        MXREPOSITORY::repository = {};
        for (const auto& [letter, logical_file] : {std::pair{'P', 11},
                                                   {'Q', 33},
                                                   {'T', 13},
                                                   {'F', 9},
                                                   {'S', 10},
                                                   {'Z', 402},
                                                   {'G', 70},
                                                   {'R', 404},
                                                   {'X', 353}}) {
            add(logical_file, dictionary_of(letter));
        }
        const std::string months = dictionary_of('J');
        const std::size_t third = months.size() / 80 / 3 * 80;
        add(99, months.substr(0, third));
        add(100, months.substr(third, third));
        add(103, months.substr(2 * third));
    }
    ~DictionaryArchive() {
        MXLIBRERIA::CHIUDI(0);
        MXREPOSITORY::repository = {};
    }
    DictionaryArchive(const DictionaryArchive&) = delete;
    DictionaryArchive& operator=(const DictionaryArchive&) = delete;
    DictionaryArchive(DictionaryArchive&&) = delete;
    DictionaryArchive& operator=(DictionaryArchive&&) = delete;

    /// A logical file with records of `length` characters, and its line in NZBASE.DAT.
    void add(int logical_file, const std::string& content, int length = 80) {
        std::string& line = lines_[static_cast<std::size_t>(logical_file - 1)];
        std::array<char, 16> digits{};
        put(line, 4, name_of(logical_file));
        std::snprintf(digits.data(), digits.size(), "%05d", length);
        put(line, 33, digits.data());
        std::string base;
        for (const std::string& each : lines_) {
            base += each;
        }
        directory_.write("NZBASE.DAT", base);
        directory_.write(name_of(logical_file), content);
        MXLIBRERIA::file_table.entries.at(static_cast<std::size_t>(logical_file)).table.reset();
    }

    [[nodiscard]] static std::string name_of(int logical_file) {
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "NZ%03d.DAT", logical_file);
        return name.data();
    }
    [[nodiscard]] const TempDirectory& directory() const { return directory_; }

  private:
    TempDirectory directory_;
    std::vector<std::string> lines_;
};

}  // namespace test_support
