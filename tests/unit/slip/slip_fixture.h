#pragma once
// A slip under calculation for tests: empty record areas, default state, period of May 2024, an
// archive directory with the files that a test fills.

#include <gtest/gtest.h>

#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "calc/slip.h"
#include "calc/slip_lines.h"
#include "calc/taxable_bases.h"
#include "files/logical_files.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/formula.h"
#include "records/named_access.h"
#include "records/numbers.h"
#include "run/period.h"
#include "tests/support/archive_directory.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace slip_tests {

using namespace MXREPOSITORY;
using namespace ModSWCALM;

using FieldValues = std::vector<std::pair<Descriptor, double>>;

/// A record of an area with the fields given.
inline std::string record_with(Area area, std::size_t length, const FieldValues& fields) {
    std::string record = test_support::empty_record(area, length);
    for (const auto& [field, value] : fields) {
        SCRIVICAMPONUM(field, value, 1, record);
    }
    return record;
}

inline void put_text(std::string& record, const Descriptor& field, std::string text,
                     std::int16_t occurrence = 1) {
    SCRIVICAMPO(field, text, occurrence, record);
}

class SlipTest : public ::testing::Test {
  protected:
    static constexpr std::size_t kItemLength = 1500;

    void SetUp() override {
        MXLIBRERIA::file_table = {};
        MXLIBRERIA::environment.archive_directory = archive_.path();
        slip = Slip{};
        run_tables = RunTables{};
        company = CompanyState{};
        classification = Classification{};
        formula_registers = FormulaRegisters{};
        repository = Repository{};
        test_support::fill_areas();
        set_period("310520244");
    }

    static void set_period(const std::string& record) { MXLIBRERIA::period.set(record); }

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
    }
    void open_file(int n, std::size_t length, const std::vector<std::string>& records) {
        file(n, length, records);
        MXLIBRERIA::FAIOPEN(n);
    }

    /// Defines item `code`: fields, formula cells, marks of two letters (Z156).
    void item(int code, const FieldValues& fields, const std::vector<std::string>& formula = {},
              const std::string& mark = {}) {
        std::string record = record_with(Area::FOTX, kItemLength, fields);
        for (std::size_t cell = 0; cell < 100; ++cell) {
            const std::string text = cell < formula.size() ? formula[cell] : ".";
            put_text(record, dopo(Z051, static_cast<int>(cell)), text);
        }
        put_text(record, Z156, mark);
        items_.resize(std::max(items_.size(), static_cast<std::size_t>(code) * kItemLength), ' ');
        items_.replace((static_cast<std::size_t>(code) - 1) * kItemLength, kItemLength, record);
        define(401, kItemLength);
        archive_.write(name_of(401), items_);
        MXLIBRERIA::FAIOPEN(401);
    }

    /// A line as the operator's program prepares it: quantity with two decimals, rate with five.
    static std::string line_of(int code, double quantity, double rate) {
        char text[64];
        std::snprintf(text, sizeof text, "*%03d%013.0f%013.0fABCDE", code, quantity * 100,
                      rate * 100000);
        return text;
    }
    /// Puts lines into the slip from line 1, and the end of the table after them.
    static void lines(const std::vector<std::string>& all) {
        int number = 0;
        for (const std::string& line : all) {
            set_slip_line(++number, line);
        }
        if (number < 100) {
            set_slip_line(number + 1, " 999");
        }
    }
    static void evaluate(const std::vector<std::string>& all) {
        lines(all);
        evaluate_lines();
    }
    static double quantity_in(int number) { return line_quantity(slip_line(number)) / 100; }
    static double rate_in(int number) { return line_rate(slip_line(number)); }

    /// The dictionary files of the letters that formulas read (P, Q, F, T).
    void dictionary() {
        for (const auto& [letter, n] :
             {std::pair{'P', 11}, std::pair{'Q', 33}, std::pair{'F', 9}, std::pair{'T', 13}}) {
            constexpr std::size_t kLength = 80;
            define(n, kLength);
            std::string content;
            for (const Descriptor& field : fields_of(area_of_letter(letter))) {
                if (field.code[0] == letter) {
                    std::string text(kLength, ' ');
                    text.replace(29, 2, zeri_a_sinistra(std::to_string(field.length), 2));
                    text[31] = field.type;
                    text.replace(49, 5, zeri_a_sinistra(std::to_string(field.offset), 5));
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
    test_support::ScriptedWindow& window_ = test_support::ScriptedWindow::install();

  private:
    std::string items_;
};

}  // namespace slip_tests
