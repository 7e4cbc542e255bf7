#include "history/stored_history.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace ModElaboraStorico {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

StoredHistory stored_history;

namespace {

// ---- Lines of the layouts ----

constexpr std::size_t kCodeWidth = 4;

std::string code_of(std::string_view line) {
    return std::string(ritaglia(line, 69, kCodeWidth));
}
double length_of(std::string_view line) {
    return valore(ritaglia(line, 30, 2));
}
double offset_of(std::string_view line) {
    return valore(ritaglia(line, 50, 5));
}
char type_of(std::string_view line) {
    const std::string_view type = ritaglia(line, 47, 1);
    return type.empty() ? ' ' : type.front();
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// A damaged line may name no column.
bool names_column(const std::string& line) {
    const std::string code = code_of(line);
    return code.size() == kCodeWidth && code.front() == 'V' &&
           std::all_of(code.begin() + 1, code.end(), is_digit);
}

std::vector<std::string> lines_of(int file) {
    std::vector<std::string> lines;
    while (read_table(file, static_cast<double>(lines.size() + 1)) == 0) {
        lines.push_back(record_buffer(file));
    }
    return lines;
}

// ---- Columns ----

/// The first columns identify the employee: the key of the table.
constexpr double kLastKeyColumn = 4;
/// The text without a length.
constexpr double kLongText = 16;

double column_number(const std::string& line) {
    return valore(code_of(line).substr(1));
}
bool is_key(const std::string& line) {
    return column_number(line) >= 1 && column_number(line) <= kLastKeyColumn;
}

/// The column's code, and its label without what is neither letter nor digit.
std::string column_name(const std::string& line) {
    std::string name = code_of(line);
    std::ranges::copy_if(ritaglia(line, 4, 23), std::back_inserter(name), [](char c) {
        return is_digit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    });
    return name;
}

enum class Form { text, long_text, whole, decimal, date };

Form form_of(const std::string& line) {
    const char type = type_of(line);
    if (column_number(line) == kLongText) {
        return Form::long_text;
    }
    if (type == 'D') {
        return Form::date;
    }
    if (type == 'N' || type == '0') {
        return Form::whole;
    }
    return type >= '2' && type <= '6' ? Form::decimal : Form::text;
}

std::string column_type(const std::string& line) {
    switch (form_of(line)) {
        case Form::long_text:
            return "TEXT";
        case Form::whole:
            return "LONG";
        case Form::decimal:
            return "DOUBLE";
        case Form::date:
            return "DATETIME";
        default:
            return "TEXT (" + testo_numero(length_of(line)) + ")";
    }
}

/// The parts with a comma and a blank between them.
std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : ", ") + part;
    }
    return text;
}

// ---- Values ----

/// What the field holds in the employee's record; nothing where no line tells where it stands.
std::string slice(const std::string& field) {
    const std::string line = CERCACAMPO(field);
    const double offset = offset_of(line);
    const double length = length_of(line);
    if (offset < 1 || length < 1) {
        return "";
    }
    return std::string(ritaglia(*stored_history.record, static_cast<std::size_t>(offset),
                                static_cast<std::size_t>(length)));
}

/// The number of the slice in the form of its type, zeros in front.
std::string number_in_form(std::string text, char type) {
    const std::string descriptor =
        "DIPX$,00001," + zeri_a_sinistra(testo_numero(static_cast<double>(text.size())), 2) + "," +
        std::string(1, type) + ",0,P001";
    const double number = LEGGICAMPONUM(descriptor, 0, text);
    SCRIVICAMPONUM(descriptor, number, 0, text);
    return LEGGICAMPO(descriptor, 0, text);
}

/// mm/dd/yy of ddmmyyyy.
std::string month_first(std::string_view date) {
    return std::string(ritaglia(date, 3, 2)) + "/" + std::string(ritaglia(date, 1, 2)) + "/" +
           std::string(ritaglia(date, 7, 2));
}

std::string value_of(const std::string& line) {
    const std::string text =
        is_key(line) ? testo(P001) : slice(std::string(ritaglia(line, 43, kCodeWidth)));
    switch (form_of(line)) {
        case Form::whole:
        case Form::decimal:
            return text.empty() ? "" : number_in_form(text, type_of(line));
        case Form::date:
            return "#" + month_first(text) + "#";
        default:
            return "'" + text + "'";
    }
}

// ---- The history on file ----

constexpr std::size_t kKeyWidth = 20;

/// Adds a record, or writes the one that the key has anew. A refusal of the index (0) has been
/// shown and is no record.
void store(const std::string& key, const std::string& text) {
    constexpr double kMissing = -1;
    const std::string record = "  " + key + text;
    const double number = ISAM(kHistoryIndex, key, kIsamSearch, 0);
    if (number > 0) {
        write_whole_record(kHistory, number, record);
    } else if (number == kMissing) {
        APRISEMA();
        const double length = file_table.entries.at(kHistory).LUNGHEZZE;
        const double added = TRONCA(file_length(kHistory) / length) + 1;
        SlotStep step;
        write_record(kHistory, added, record);
        ISAM(kHistoryIndex, key, kIsamInsert, added);
        step.commit();
        CHIUDISEMA();
    }
}

}  // namespace

void PREPARAELABSTORICO() {
    TRACCIA("PREPARAELABSTORICO");
    stored_history = StoredHistory{};
    if (VERBASE(kHistoryColumns) == 0 || VERBASE(kHistoryIndex) == 0) {
        return;
    }
    stored_history.columns = lines_of(kHistoryColumns);
    std::erase_if(stored_history.columns,
                  [](const std::string& line) { return !names_column(line); });
    stored_history.fields = lines_of(kEmployeeFields);
    std::erase_if(stored_history.fields,
                  [](const std::string& line) { return offset_of(line) == 0; });
    std::ranges::stable_sort(stored_history.fields, {}, code_of);
    FAIOPEN(kHistory);
    FAIOPEN(kHistoryIndex);
}

void PREPARASTORICO() {
    TRACCIA("PREPARASTORICO");
    stored_history.record = &area(Area::DIPX);
}

void ELABORASTORICO() {
    TRACCIA("ELABORASTORICO");
    if (stored_history.columns.empty()) {
        return;
    }
    if (!stored_history.definition_stored) {
        store(std::string(kKeyWidth, '0'), table_definition());
        stored_history.definition_stored = true;
    }
    store(a_sinistra(testo(P001), kKeyWidth), row_of_values());
}

std::string CERCACAMPO(const std::string& code) {
    TRACCIA("CERCACAMPO");
    const auto line = std::ranges::lower_bound(stored_history.fields, code, {}, code_of);
    return line != stored_history.fields.end() && code_of(*line) == code ? *line : "";
}

std::string table_definition() {
    std::vector<std::string> columns;
    std::vector<std::string> key;
    for (const std::string& line : stored_history.columns) {
        columns.push_back(column_name(line) + " " + column_type(line));
        if (is_key(line)) {
            key.push_back(column_name(line));
        }
    }
    if (!key.empty()) {
        columns.push_back("PRIMARY KEY (" + joined(key) + ")");
    }
    return "CREATE TABLE Tasd (" + joined(columns) + ")";
}

std::string row_of_values() {
    std::vector<std::string> values;
    for (const std::string& line : stored_history.columns) {
        values.push_back(value_of(line));
    }
    return joined(values);
}

}  // namespace ModElaboraStorico
