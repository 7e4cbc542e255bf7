#include "run/table_checks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "context/period.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "formulas/formula_names.h"
#include "formulas/named_access.h"
#include "platform/failure.h"
#include "platform/file_system.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;

namespace {

using namespace MXLIBRERIA::file_numbers;

constexpr double kDeleted = 99;

// ---- Findings ----

/// "18-3 SCAGLIRP.DAT": logical file, record, and the file's name.
std::string place_of(double file, double record) {
    std::int16_t relative = -1;
    const std::string path = DAMMIFILE(file, relative);
    return testo_numero(file) + "-" + testo_numero(record) + " " +
           path.substr(path.find_last_of('\\') + 1);
}

[[noreturn]] void refuse(int number, double file, double record, const std::string& what_to_do) {
    platform::Failure failure(number);
    failure.culprit = place_of(file, record);
    failure.advice = what_to_do;
    throw failure;
}

[[noreturn]] void refuse(int number, double file, double record, const texts::Text& what_to_do) {
    refuse(number, file, record, what_to_do.bytes());
}

// ---- Whole files ----

std::string_view characters(double file, std::size_t position, std::size_t width) {
    return ritaglia(record_buffer(file), position, width);
}

/// An open file holds records, and each of them whole.
void check_whole_records(double file) {
    const double length = file_length(file);
    const auto record = static_cast<double>(record_buffer(file).size());
    if (length == 0) {
        refuse(platform::kInputPastEnd, file, 1, texts::kCheckEmpty);
    }
    if (std::fmod(length, record) != 0) {
        refuse(platform::kBadRecordLength, file, std::floor(length / record) + 1,
               texts::kCheckPartialRecord);
    }
}

/// A record that could not be read stands behind the last whole one and not across the file's end.
void check_record_is_whole(double file, double record) {
    const auto width = static_cast<double>(record_buffer(file).size());
    if (file_length(file) > (record - 1) * width && file_length(file) < record * width) {
        refuse(platform::kBadRecordLength, file, record, texts::kCheckPartialRecord);
    }
}

// ---- Numbers ----

/// Digits, blanks or nothing (zero bytes), with at most one minus: what a field of a number holds.
bool holds_number(std::string_view stored) {
    constexpr std::string_view kAllowed("0123456789 -\0", 13);
    return stored.find_first_not_of(kAllowed) == std::string_view::npos &&
           std::ranges::count(stored, '-') <= 1;
}

bool is_read_as_number(const Descriptor& field) {
    return field.type == 'N' || field.decimals() > 0;
}

/// Each number of the record last read that the calculation reads.
void check_numbers(Area area, double file, double record) {
    for (const Descriptor& field : used_fields_of(area)) {
        const std::string_view stored = characters(file, static_cast<std::size_t>(field.offset),
                                                   static_cast<std::size_t>(field.length));
        if (is_read_as_number(field) && !holds_number(stored)) {
            refuse(platform::kTypeMismatch, file, record,
                   texts::kCheckNoNumber.bytes() + std::string(field.name()) +
                       texts::kCheckNoNumberRest.bytes());
        }
    }
}

// ---- Period and selection ----

void check_period() {
    constexpr int kFirstYear = 1900;
    if (LEGGIREC(kPeriod, 1) == 1) {
        refuse(platform::kBadRecordLength, kPeriod, 1, texts::kCheckPeriodShort);
    }
    Period chosen;
    chosen.set(record_buffer(kPeriod));
    const bool digits = chosen.date().find_first_not_of("0123456789") == std::string::npos;
    const bool in_year = digits && chosen.month() >= 1 && chosen.month() <= 12;
    if (!in_year || chosen.year() < kFirstYear || chosen.day() < 1 ||
        chosen.day() > days_of_month(chosen.month(), chosen.year())) {
        refuse(platform::kTypeMismatch, kPeriod, 1, texts::kCheckPeriodDate);
    }
}

constexpr std::size_t kEntriesOfRecord = 20;

/// An entry of the selection, and where it stands.
struct CheckedEntry {
    std::string company;
    std::string employee;
    double record;
    double place;  ///< in the selection, from 1
};

[[noreturn]] void refuse_entry(int number, const CheckedEntry& entry, const std::string& wrong) {
    refuse(number, kSelection, entry.record,
           texts::kCheckSelectionEntry.bytes() + testo_numero(entry.place) + wrong +
               texts::kCheckSelectionRest.bytes());
}

/// A record number of digits, blanks among them or not, from 1 on.
bool is_record_number(const std::string& text) {
    return text.find_first_not_of("0123456789 ") == std::string::npos && valore(text) >= 1;
}

/// Reads a record of the selection; false behind the last.
bool read_selection(double record) {
    if (LEGGIREC(kSelection, record) != 1) {
        return true;
    }
    const auto width = static_cast<double>(record_buffer(kSelection).size());
    if (file_length(kSelection) > (record - 1) * width) {
        refuse(platform::kBadRecordLength, kSelection, record, texts::kCheckSelectionShort);
    }
    return false;
}

/// The entries of a selection that can be read to its end.
std::vector<CheckedEntry> selected_entries() {
    constexpr std::size_t kEntryWidth = 10;
    constexpr std::string_view kEnd = "9999999999";
    std::vector<CheckedEntry> selected;
    for (double record = 1; read_selection(record); ++record) {
        for (std::size_t i = 0; i < kEntriesOfRecord; ++i) {
            const std::string_view entry = characters(kSelection, i * kEntryWidth + 1, kEntryWidth);
            if (entry == kEnd) {
                return selected;
            }
            selected.push_back({std::string(ritaglia(entry, 1, 3)),
                                std::string(ritaglia(entry, 7, 4)), record,
                                static_cast<double>(selected.size()) + 1});
        }
    }
    return selected;
}

/// Is the company there? Without it the walks tell, and touch none of its employees.
bool read_company(double company) {
    return LEGGIREC(kCompanies, company) != 1 &&
           LEGGICAMPONUM(T261, 0, record_buffer(kCompanies)) != kDeleted;
}

/// Company and employee of an entry are record numbers, and the employee's record is there.
void check_entry(const CheckedEntry& entry, double employees) {
    if (!is_record_number(entry.company) || !is_record_number(entry.employee)) {
        refuse_entry(platform::kTypeMismatch, entry, texts::kCheckSelectionNoNumber.bytes());
    }
    if (valore(entry.employee) > employees && read_company(valore(entry.company))) {
        refuse_entry(platform::kBadRecordNumber, entry,
                     texts::kCheckSelectionBeyond.bytes() + testo_numero(employees) +
                         texts::kCheckSelectionBeyondRest.bytes());
    }
}

/// The companies of a selection whose entries all lead to a record.
std::set<double> selected_companies() {
    const auto width = static_cast<double>(record_buffer(kEmployees).size());
    const double employees = std::floor(file_length(kEmployees) / width);
    std::set<double> companies;
    for (const CheckedEntry& entry : selected_entries()) {
        check_entry(entry, employees);
        companies.insert(valore(entry.company));
    }
    return companies;
}

/// The sector of a selected company; a sector that is missing is the walks'.
void check_sector_of(double company) {
    if (!read_company(company)) {
        return;
    }
    const double sector = LEGGICAMPONUM(T067, 0, record_buffer(kCompanies));
    if (sector >= 1 && LEGGIREC(kSectors, sector) != 1) {
        check_numbers(Area::SETX, kSectors, sector);
    }
}

// ---- Brackets ----

bool is_bracket_number(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos &&
           text.find_first_not_of("0123456789. ") == std::string_view::npos &&
           std::ranges::count(text, '.') <= 1;
}

/// Limits and rates are numbers up to the bracket without limit, which closes the table.
void check_brackets(double file) {
    constexpr double kClosingLimit = 999999.99;
    constexpr int kBracketsOfTable = 10;
    int record = 1;
    for (; record <= kBracketsOfTable && LEGGIREC(file, record) != 1; ++record) {
        const std::string_view limit = characters(file, 1, 9);
        if (!is_bracket_number(limit) || !is_bracket_number(characters(file, 10, 3))) {
            refuse(platform::kTypeMismatch, file, record, texts::kCheckBracketNoNumber);
        }
        if (valore(limit) == kClosingLimit) {
            return;
        }
    }
    check_record_is_whole(file, record);
    refuse(platform::kSubscriptOutOfRange, file, record - 1, texts::kCheckNoClosingBracket);
}

void check_bracket_files() {
    FAIOPEN(kTaxBrackets);
    if (file_length(kTaxBrackets) == 0) {
        refuse(platform::kInputPastEnd, kTaxBrackets, 1, texts::kCheckEmpty);
    }
    check_brackets(kTaxBrackets);
    FAIOPEN(kSeveranceBrackets);
    if (file_length(kSeveranceBrackets) > 0) {  // No ordinary slip needs them.
        check_brackets(kSeveranceBrackets);
    }
}

// ---- Dictionary and items ----

/// The letters that formulas and slip lines name.
constexpr std::string_view kNamedLetters = "PQTF";

/// Those that the lines of any slip and the formula of a monthly pay need.
constexpr std::string_view kAlwaysNeeded = "PQ";

double dictionary_file(char letter) {
    return dictionary_files(letter).front();
}

bool exists(double file) {
    std::int16_t relative = -1;
    return platform::files().exists(DAMMIFILE(file, relative));
}

void check_dictionary_file(double file) {
    constexpr std::size_t kUsedOfRecord = 72;
    FAIOPEN(file);
    if (record_buffer(file).size() < kUsedOfRecord) {
        refuse(platform::kBadRecordLength, file, 1, texts::kCheckShortDictionaryRecord);
    }
    check_whole_records(file);
    CHIUDI(file);
}

/// The letters whose dictionary is there. A missing one that no formula of the month's slips names
/// harms nobody.
std::string check_dictionary_files() {
    std::string letters;
    for (const char letter : kNamedLetters) {
        const bool needed = kAlwaysNeeded.find(letter) != std::string_view::npos;
        if (needed || exists(dictionary_file(letter))) {
            check_dictionary_file(dictionary_file(letter));
            letters += letter;
        }
    }
    return letters;
}

[[noreturn]] void refuse_dictionary(const std::string& name, double item) {
    refuse(platform::kInputPastEnd, dictionary_file(name.front()), 1,
           texts::kCheckDictionaryLacks.bytes() + name + texts::kCheckDictionaryLacksRest.bytes() +
               testo_numero(item) + ".");
}

/// No formula names a field that its dictionary file has lost.
void check_formulas(const std::string& letters) {
    repository = {};  // The dictionary files are held against the formulas as they are now.
    for (double item = 1; LEGGIREC(kPayItems, item) != 1; ++item) {
        const std::string& record = record_buffer(kPayItems);
        if (LEGGICAMPONUM(Z049, 0, record) == kDeleted) {
            continue;
        }
        const std::string name = name_beyond_dictionary(record, letters);
        if (!name.empty()) {
            refuse_dictionary(name, item);
        }
    }
    repository = {};  // The run loads a letter when a formula first names it.
}

}  // namespace

void read_yearly_tables() {
    if (LEGGIREC(kFixedData, 1) == 1) {
        const bool empty = file_length(kFixedData) == 0;
        refuse(platform::kInputPastEnd, kFixedData, 1,
               empty ? texts::kCheckEmpty : texts::kCheckPartialRecord);
    }
    area(Area::FISX) = record_buffer(kFixedData);
}

void check_tables() {
    if (file_length(kPeriod) == 0) {
        return;
    }
    check_period();
    for (const double company : selected_companies()) {
        check_sector_of(company);
    }
    LEGGIREC(kFixedData, 1);
    check_numbers(Area::FISX, kFixedData, 1);
    check_bracket_files();
    check_whole_records(kPayItems);
    check_formulas(check_dictionary_files());
}

}  // namespace ModSWCALM
