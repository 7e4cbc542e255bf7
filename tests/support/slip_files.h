#pragma once
// Files of a slip for tests and benchmarks: an archive directory of its own with pay items, the
// dictionary that formulas use, and whatever record files are asked for; lines of the slip.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip_table.h"
#include "tests/support/archive_directory.h"
#include "tests/support/record_areas.h"

namespace test_support {

using namespace MXLIBRERIA::file_numbers;

using FieldValues = std::vector<std::pair<MXREPOSITORY::Descriptor, double>>;

/// A record of an area with the fields given.
inline std::string record_with(MXREPOSITORY::Area area, std::size_t length,
                               const FieldValues& fields) {
    std::string record = empty_record(area, length);
    for (const auto& [field, value] : fields) {
        MXREPOSITORY::SCRIVICAMPONUM(field, value, 1, record);
    }
    return record;
}

inline void put_text(std::string& record, const MXREPOSITORY::Descriptor& field, std::string text,
                     std::int16_t occurrence = 1) {
    MXREPOSITORY::SCRIVICAMPO(field, text, occurrence, record);
}

class SlipFiles {
  public:
    static constexpr std::size_t kItemLength = 1500;

    /// Makes a logical file with the records given and opens it.
    void file(int n, std::size_t length, const std::vector<std::string>& records) {
        define(n, length);
        std::string content;
        for (const std::string& record : records) {
            std::string padded = record;
            padded.resize(length, ' ');
            content += padded;
        }
        archive_.write(name_of(n), content);
        MXLIBRERIA::file_table.entries.at(static_cast<std::size_t>(n)).table.reset();
    }
    void open_file(int n, std::size_t length, const std::vector<std::string>& records) {
        file(n, length, records);
        MXLIBRERIA::FAIOPEN(n);
    }

    /// Defines item `code`: fields, formula cells, marks of two letters (Z156).
    void item(int code, const FieldValues& fields, const std::vector<std::string>& formula = {},
              const std::string& mark = {}) {
        std::string record = record_with(MXREPOSITORY::Area::FOTX, kItemLength, fields);
        for (std::size_t cell = 0; cell < 100; ++cell) {
            const std::string text = cell < formula.size() ? formula[cell] : ".";
            put_text(record, MXREPOSITORY::dopo(MXREPOSITORY::Z051, static_cast<int>(cell)), text);
        }
        put_text(record, MXREPOSITORY::Z156, mark);
        items_.resize(std::max(items_.size(), static_cast<std::size_t>(code) * kItemLength), ' ');
        items_.replace((static_cast<std::size_t>(code) - 1) * kItemLength, kItemLength, record);
        define(401, kItemLength);
        archive_.write(name_of(kPayItems), items_);
        MXLIBRERIA::FAIOPEN(kPayItems);
    }

    /// A line as the operator's program prepares it: quantity with two decimals, rate with five.
    static std::string line_of(int code, double quantity, double rate) {
        return "*" + digits(code, 3) + digits(quantity * 100, 13) + digits(rate * 100000, 13) +
               "ABCDE";
    }
    /// Puts lines into the slip from line 1, and the end of the table after them.
    static void lines(const std::vector<std::string>& all) {
        int number = 0;
        for (const std::string& line : all) {
            ModSWCALM::set_slip_line(++number, line);
        }
        if (number < 100) {
            ModSWCALM::set_slip_line(number + 1, " 999");
        }
    }
    /// The dictionary files of the letters that formulas read (P, Q, F, T).
    void dictionary() {
        for (const auto& [letter, n] :
             {std::pair{'P', 11}, std::pair{'Q', 33}, std::pair{'F', 9}, std::pair{'T', 13}}) {
            constexpr std::size_t kLength = 80;
            define(n, kLength);
            std::string content;
            for (const MXREPOSITORY::Descriptor& field :
                 MXREPOSITORY::fields_of(MXREPOSITORY::area_of_letter(letter))) {
                if (field.code[0] == letter) {
                    std::string text(kLength, ' ');
                    text.replace(29, 2,
                                 MXREPOSITORY::zeri_a_sinistra(std::to_string(field.length), 2));
                    text[31] = field.type;
                    text.replace(49, 5,
                                 MXREPOSITORY::zeri_a_sinistra(std::to_string(field.offset), 5));
                    text[64] = field.flag;
                    text.replace(68, 4, field.name());
                    content += text;
                }
            }
            archive_.write(name_of(n), content);
        }
    }

    void define(int n, std::size_t length) {
        archive_.define(static_cast<std::size_t>(n), name_of(n), static_cast<int>(length));
    }
    static std::string name_of(int n) { return "NZ" + std::to_string(n) + ".DAT"; }

    test_support::ArchiveDirectory archive_;

  private:
    static std::string digits(double value, std::size_t width) {
        return MXREPOSITORY::zeri_a_sinistra(MXREPOSITORY::testo_numero(MXREPOSITORY::unita(value)),
                                             width);
    }

    std::string items_;
};

}  // namespace test_support
