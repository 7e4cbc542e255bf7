// leggi, scrivi, scheda: descriptors, fields and records.

#include <algorithm>
#include <array>
#include <iostream>
#include <optional>

#include "files/isam.h"
#include "installation/field_value.h"
#include "installation/installation.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/index_check.h"
#include "nzutil/killed_run.h"
#include "nzutil/pay_slip.h"
#include "nzutil/write_lock.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/meanings.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Area;
using MXREPOSITORY::Descriptor;

constexpr int kLargestRecord = 999'999;
constexpr int kLargestOccurrence = 99;

std::string_view tag_of(Area area) {
    return MXREPOSITORY::kAreaTags[static_cast<std::size_t>(area)];
}

/// A field of a record of an installation, as the arguments name it.
struct FieldPlace {
    int file;
    int record;
    Descriptor field;
    int occurrence;
};

/// Files of an employee's records that an index leads to.
struct IndexedFile {
    int file;
    int index;
};
constexpr std::array kIndexedFiles{IndexedFile{kBeforeImages, kBeforeImageIndex},
                                   IndexedFile{kCertificates, kCertificateIndex},
                                   IndexedFile{kFormerCertificates, kFormerCertificateIndex}};

/// The record that the index of a file has for an employee's code.
int indexed_record(const Installation& installation, int index, const std::string& code) {
    if (index_key_length(installation, index) != kEmployeeKey) {
        throw ToolError(texts::kToolNoIndex, {std::to_string(index)});
    }
    const double record = MXLIBRERIA::ISAM(index, plain_code(code), MXLIBRERIA::kIsamSearch, 0);
    if (record <= 0) {
        throw ToolError(texts::kToolNoCodeInIndex, {code, std::to_string(index)});
    }
    return static_cast<int>(record);
}

/// A record by its number; where a record is one employee's, also by his code.
int record_argument(const Installation& installation, int file, const std::string& text) {
    if (static_cast<int>(plain_code(text).size()) == kEmployeeKey) {
        if (file == kEmployees || file == kTwelveMonths) {
            return employee_record(installation, text);
        }
        const auto* indexed = std::ranges::find(kIndexedFiles, file, &IndexedFile::file);
        if (indexed != kIndexedFiles.end()) {
            return indexed_record(installation, indexed->index, text);
        }
    }
    return whole_argument(text, 1, kLargestRecord);
}

FieldPlace field_place(const Installation& installation, const Arguments& arguments,
                       const std::string* occurrence) {
    const int file = whole_argument(arguments[1], 1, 600);
    const int record = record_argument(installation, file, arguments[2]);
    const Area area = Installation::area_of(file);
    if (area == Area::unknown) {
        throw ToolError(texts::kToolNoArea, {arguments[1]});
    }
    const Descriptor* field = find_typed_field(arguments[3]);
    if (field == nullptr) {
        throw ToolError(texts::kToolNoField, {arguments[3]});
    }
    if (field->area != area) {
        throw ToolError(texts::kToolFieldOfOtherArea,
                        {arguments[3], tag_of(field->area), arguments[1], tag_of(area)});
    }
    int number = 0;
    if (occurrence != nullptr) {
        number = whole_argument(*occurrence, 1, kLargestOccurrence);
        const auto length = static_cast<std::size_t>(installation.record_length(file));
        if (number > occurrences(*field, length)) {
            throw ToolError(texts::kToolOccurrence, {arguments[3], *occurrence});
        }
    }
    return {file, record, *field, number};
}

std::string read_record(const Installation& installation, int file, int record) {
    std::optional<std::string> bytes = installation.read(file, record);
    if (!bytes) {
        throw ToolError(texts::kToolNoRecord, {std::to_string(file), std::to_string(record),
                                               std::to_string(installation.record_count(file))});
    }
    return *std::move(bytes);
}

bool is_slip_line(const Descriptor& field) {
    return field.area == Area::DIPX && field.name() >= "Q401" && field.name() <= "Q500";
}

/// A field of the card: code, meaning and value.
struct CardLine {
    std::string code;
    std::string_view meaning;  ///< code page 1252, as long as it looks
    std::string value;
};

/// The fields of a record that hold something, each occurrence of its own; no lines of the slip.
std::vector<CardLine> card_of(Area area, const std::string& record) {
    std::vector<CardLine> card;
    for (const Descriptor& field : MXREPOSITORY::fields_of(area)) {
        const int last = is_slip_line(field) ? 0 : occurrences(field, record.size());
        for (int occurrence = 1; occurrence <= last; ++occurrence) {
            const int place = last == 1 ? 0 : occurrence;
            if (has_content(field, place, record)) {
                const std::string code(field.name());
                card.push_back({place == 0 ? code : code + "(" + std::to_string(place) + ")",
                                MXREPOSITORY::meaning_of(field.name()),
                                platform::to_terminal(shown(field, place, record))});
            }
        }
    }
    return card;
}

void show_card(const std::vector<CardLine>& card) {
    std::size_t code_width = 0;
    std::size_t meaning_width = 0;
    for (const CardLine& line : card) {
        code_width = std::max(code_width, line.code.size());
        meaning_width = std::max(meaning_width, line.meaning.size());
    }
    for (const CardLine& line : card) {
        std::cout << line.code << std::string(code_width - line.code.size() + 2, ' ')
                  << platform::to_utf8(line.meaning)
                  << std::string(meaning_width - line.meaning.size() + 2, ' ') << line.value
                  << '\n';
    }
}

/// The slip's lines as a person reads them: item, its name, quantity, rate and their product.
void show_slip_lines(const Installation& installation, const std::string& record) {
    for (int i = 0; i < 100; ++i) {
        const std::string line =
            MXREPOSITORY::LEGGICAMPO(MXREPOSITORY::dopo(MXREPOSITORY::Q401, i), 0, record);
        const int code = static_cast<int>(MXREPOSITORY::valore(line.substr(1, 3)));
        if (code == 999) {
            return;
        }
        if (code == 0) {
            continue;
        }
        const std::optional<std::string> item =
            installation.exists(kPayItems) ? installation.read(kPayItems, code) : std::nullopt;
        const bool plain = item && MXREPOSITORY::LEGGICAMPONUM(MXREPOSITORY::Z016, 0, *item) == 7;
        const double quantity = MXREPOSITORY::valore(line.substr(4, 13)) / (plain ? 1.0 : 100.0);
        const double rate = MXREPOSITORY::valore(line.substr(17, 13)) / 100000;
        const std::string name =
            item ? MXREPOSITORY::LEGGICAMPO(MXREPOSITORY::Z002, 0, *item) : std::string(18, ' ');
        std::cout << "Q" << 401 + i << " voce "
                  << MXREPOSITORY::zeri_a_sinistra(std::to_string(code), 3) << ' '
                  << platform::to_terminal(name) << "  "
                  << MXREPOSITORY::arrotondato_testo(quantity, 2) << " x "
                  << MXREPOSITORY::arrotondato_testo(rate, 5) << " = "
                  << MXREPOSITORY::arrotondato_testo(quantity * rate, 2) << '\n';
    }
}

}  // namespace

int command_read(const Arguments& arguments) {
    const Installation installation = open_installation(arguments[0]);
    const FieldPlace place =
        field_place(installation, arguments, arguments.size() > 4 ? &arguments[4] : nullptr);
    const std::string record = read_record(installation, place.file, place.record);
    std::cout << platform::to_terminal(shown(place.field, place.occurrence, record)) << '\n';
    return 0;
}

int command_write(const Arguments& arguments) {
    Installation installation = open_installation(arguments[0]);
    const FieldPlace place =
        field_place(installation, arguments, arguments.size() > 5 ? &arguments[5] : nullptr);
    const std::string typed = platform::from_utf8(arguments[4]);
    const std::string value = typed_value(place.field, typed);
    std::optional<Objection> found = objection(place.field, value, Decimals::exact);
    if (!found && platform::to_utf8(typed) != arguments[4]) {
        found = Objection{&texts::kToolExpectedCodePage, {}};
    }
    if (found) {
        throw ToolError(texts::kToolValueRefused,
                        {arguments[3], arguments[4], fill(*found->text, {found->value})});
    }
    const WriteLock lock(installation, "scrivi");
    std::string record = read_record(installation, place.file, place.record);
    store(place.field, place.occurrence, value, record);
    installation.write(place.file, place.record, record);
    return 0;
}

int command_card(const Arguments& arguments) {
    const Installation installation = open_installation(arguments[0]);
    const int file = whole_argument(arguments[1], 1, 600);
    const Area area = Installation::area_of(file);
    if (area == Area::unknown) {
        throw ToolError(texts::kToolNoArea, {arguments[1]});
    }
    const std::string record =
        read_record(installation, file, record_argument(installation, file, arguments[2]));
    show_card(card_of(area, record));
    if (area == Area::DIPX) {
        show_slip_lines(installation, record);
    }
    return 0;
}

}  // namespace nzutil
