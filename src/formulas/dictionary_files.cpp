// Loading of the dictionary files, one code letter at a time.

#include <array>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "formulas/loaded_letters.h"
#include "formulas/named_access.h"
#include "records/numbers.h"

namespace MXREPOSITORY {

Repository repository;

namespace {

constexpr double kLastDictionaryRecord = 10000;
constexpr double kHighestSlot = 4099;
constexpr const char* kEmptyIndex = "00000";

/// Slots of the names with two letters: PA48 is 2048, TB03 is 3003.
struct SecondLetter {
    char letter;
    double slots;
};
constexpr std::array<SecondLetter, 3> kSecondLetters{{{'A', 2000}, {'B', 3000}, {'C', 4000}}};

/// Whole number of a text of digits; any other text as its leading value.
double number_of(std::string_view digits) {
    int number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') {
            return valore(digits);
        }
        number = number * 10 + (c - '0');
    }
    return number;
}

Repository::LetterBase& entry_of(char letter) {
    return repository.letter_bases.at(static_cast<std::size_t>(letter - 'A'));
}

/// Base of a letter; a letter that is not loaded begins after the last entry.
std::int32_t begin_letter(char letter) {
    Repository::LetterBase& entry = entry_of(letter);
    if (entry.base < 0) {
        entry.base = highest_index();
        repository.INDICELETTERE += letter;
        repository.INDICELETTERE += "0000";
    }
    return entry.base;
}

/// Puts the field of a dictionary record into the table. A record without length, or with a code
/// that holds no number, describes no field.
void store_entry(std::string_view record, std::int32_t base) {
    const std::string_view length = ritaglia(record, 30, 2);
    if (valore(length) == 0) {
        return;
    }
    const double slot = slot_of(ritaglia(record, 69, 4));
    if (!(slot >= 1 && slot <= kHighestSlot)) {
        return;
    }
    const std::size_t index = static_cast<std::size_t>(base) + static_cast<std::size_t>(slot);
    if (index >= repository.TABELLACAMPI.size()) {
        repository.TABELLACAMPI.resize(index + 1);
        repository.fields.resize(index + 1);
    }
    std::string& entry = repository.TABELLACAMPI[index];
    entry = a_sinistra(ritaglia(record, 50, 5), 5);
    entry += a_sinistra(length, 2);
    entry += a_sinistra(ritaglia(record, 32, 1), 1);
    entry += a_sinistra(ritaglia(record, 65, 1), 1);
    const double offset = valore(ritaglia(record, 50, 5));
    const double width = valore(length);
    const bool sound = offset >= 1 && offset <= INT16_MAX && width >= 1;
    repository.fields[index] = sound ? Repository::Field{static_cast<std::int16_t>(offset),
                                                         static_cast<std::int16_t>(width)}
                                     : Repository::Field{};
}

void load_file(int logical_file, char letter) {
    const std::int32_t base = begin_letter(letter);
    const double n = logical_file;
    for (double record = 1; record <= kLastDictionaryRecord; ++record) {
        if (MXLIBRERIA::read_table(n, record) == 1) {
            break;
        }
        store_entry(MXLIBRERIA::record_buffer(n), base);
    }
    entry_of(letter).last = highest_index();
    std::string& index = repository.INDICELETTERE;
    index.replace(index.size() - 4, 4, zeri_a_sinistra(std::to_string(highest_index()), 4));
}

}  // namespace

double slot_of(std::string_view code) {
    if (code.size() == 4 && (code[0] == 'P' || code[0] == 'Q' || code[0] == 'T')) {
        for (const SecondLetter& row : kSecondLetters) {
            if (code[1] == row.letter) {
                return row.slots + number_of(destra(code, 2));
            }
        }
    }
    return number_of(destra(code, 3));
}

std::int32_t base_of(char letter) {
    const bool in_range = letter >= 'A' && letter <= 'Z' && !repository.INDICELETTERE.empty();
    return in_range ? entry_of(letter).base : -1;
}

std::int32_t last_index_of(char letter) {
    return entry_of(letter).last;
}

std::int32_t highest_index() {
    return static_cast<std::int32_t>(repository.TABELLACAMPI.size()) - 1;
}

void INIZIALIZZAREPOSITORY(char letter) {
    if (repository.INDICELETTERE.empty()) {
        repository.TABELLACAMPI.assign(1, {});
        repository.fields.assign(1, {});
        repository.letter_bases = {};
        repository.INDICELETTERE = kEmptyIndex;
    }
    for (const int logical_file : MXLIBRERIA::file_numbers::dictionary_files(letter)) {
        if (logical_file != 0) {
            load_file(logical_file, letter);
        }
    }
}

}  // namespace MXREPOSITORY
