#include "installation/field_value.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "context/utilities.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/meanings.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Descriptor;

constexpr int kDateDigits = 8;
constexpr int kMonthDigits = 6;

bool all_digits(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

std::size_t width_of(const Descriptor& field) {
    return static_cast<std::size_t>(field.length);
}

/// A typed number cut into sign, whole part and decimals; nothing if it is none.
struct TypedNumber {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
};

std::optional<TypedNumber> cut_number(std::string_view text) {
    TypedNumber number;
    if (text.starts_with('-') || text.starts_with('+')) {
        number.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const std::size_t point = text.find_first_of(".,");
    number.whole = text.substr(0, point);
    if (point != std::string_view::npos) {
        number.fraction = text.substr(point + 1);
    }
    if (number.whole.empty() && number.fraction.empty()) {
        return std::nullopt;
    }
    if (!all_digits(number.whole) || !all_digits(number.fraction)) {
        return std::nullopt;
    }
    return number;
}

std::optional<Objection> number_objection(const Descriptor& field, std::string_view value,
                                          Decimals decimals) {
    const std::optional<TypedNumber> number = cut_number(value);
    if (!number) {
        return Objection{&texts::kToolExpectedNumber, {}};
    }
    const auto places = static_cast<std::size_t>(field.decimals());
    std::string_view fraction = number->fraction;
    while (fraction.ends_with('0')) {
        fraction.remove_suffix(1);
    }
    if (fraction.size() > places && (decimals == Decimals::exact || places == 0)) {
        return Objection{&texts::kToolExpectedDecimals, std::to_string(places)};
    }
    std::string_view whole = number->whole;
    while (whole.starts_with('0')) {
        whole.remove_prefix(1);
    }
    const std::size_t room = width_of(field) - (number->negative ? 1 : 0);
    if (whole.size() + places > room) {
        return Objection{&texts::kToolExpectedWidth, std::to_string(field.length)};
    }
    return std::nullopt;
}

/// What the digits of a date field are, as the field's meaning says, and what else is refused.
struct DateForm {
    std::string_view in_meaning;
    bool (*exists)(std::string_view digits);
    const texts::Text* expected;
};
bool is_month_and_year(std::string_view mmyyyy) {
    return is_date("01" + std::string(mmyyyy));
}
bool is_year_and_month(std::string_view yyyymm) {
    return is_month_and_year(std::string(yyyymm.substr(4)) + std::string(yyyymm.substr(0, 4)));
}
constexpr DateForm kDay{"", is_date, &texts::kToolExpectedRealDate};
constexpr std::array kMonthForms{
    DateForm{"mmaaaa", is_month_and_year, &texts::kToolExpectedMonthYear},
    DateForm{"aaaamm", is_year_and_month, &texts::kToolExpectedYearMonth}};

/// Eight digits are a day; six a month and a year in the order that the meaning gives. Nothing
/// where neither is known.
const DateForm* date_form(const Descriptor& field) {
    if (field.type == 'D' && field.length == kDateDigits) {
        return &kDay;
    }
    if (field.type != 'D' || field.length != kMonthDigits) {
        return nullptr;
    }
    const std::string_view meaning = MXREPOSITORY::meaning_of(field.name());
    const auto* form = std::ranges::find_if(kMonthForms, [&](const DateForm& candidate) {
        return meaning.find(candidate.in_meaning) != std::string_view::npos;
    });
    return form == kMonthForms.end() ? nullptr : form;
}

std::optional<Objection> digits_objection(const Descriptor& field, std::string_view value) {
    if (value.size() > width_of(field) || !all_digits(value)) {
        return Objection{&texts::kToolExpectedDigits, std::to_string(field.length)};
    }
    const bool none = value.find_first_not_of('0') == std::string_view::npos;
    const DateForm* form = none ? nullptr : date_form(field);
    if (form != nullptr && !form->exists(MXREPOSITORY::zeri_a_sinistra(value, width_of(field)))) {
        return Objection{form->expected, std::string(value)};
    }
    return std::nullopt;
}

}  // namespace

std::string in_capitals(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return text;
}

const Descriptor* find_typed_field(std::string_view code) {
    return MXREPOSITORY::find_field(in_capitals(std::string(code)));
}

std::string plain_code(std::string typed) {
    std::erase(typed, '-');
    return typed;
}

std::string typed_value(const Descriptor& field, std::string typed) {
    return field == MXREPOSITORY::P001 ? plain_code(std::move(typed)) : typed;
}

bool is_date(std::string_view ddmmyyyy) {
    if (ddmmyyyy.size() != kDateDigits || !all_digits(ddmmyyyy)) {
        return false;
    }
    const auto number = [&](std::size_t at, std::size_t digits) {
        return static_cast<int>(MXREPOSITORY::valore(ddmmyyyy.substr(at, digits)));
    };
    const int day = number(0, 2);
    const int month = number(2, 2);
    const int year = number(4, 4);
    return year >= 1900 && month >= 1 && month <= 12 && day >= 1 &&
           day <= MXLIBRERIA::days_of_month(month, year);
}

std::optional<Objection> objection(const Descriptor& field, std::string_view value,
                                   Decimals decimals) {
    if (field.type == 'A') {
        if (value.size() > width_of(field)) {
            return Objection{&texts::kToolExpectedLength, std::to_string(field.length)};
        }
        return std::nullopt;
    }
    if (value.empty()) {
        return std::nullopt;
    }
    if (field.type == 'D' || field.type == '0') {
        return digits_objection(field, value);
    }
    return number_objection(field, value, decimals);
}

void store(const Descriptor& field, int occurrence, std::string_view value, std::string& record) {
    std::string text(value);
    MXREPOSITORY::SCRIVICAMPO(field, text, static_cast<std::int16_t>(occurrence), record);
}

std::string shown(const Descriptor& field, int occurrence, const std::string& record) {
    std::string text =
        MXREPOSITORY::LEGGICAMPO(field, static_cast<std::int16_t>(occurrence), record);
    if (field.type == 'A') {
        return MXREPOSITORY::rifila_destra(text);
    }
    if (field.type == 'D' || field.type == '0') {
        return text;
    }
    const bool negative = text.starts_with('-');
    std::string digits = negative ? text.substr(1) : text;
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::size_t leading = 0;
    while (leading + 1 < point && digits[leading] == '0') {
        ++leading;
    }
    digits.erase(0, leading);
    return negative ? "-" + digits : digits;
}

std::string as_stored(const Descriptor& field, std::string_view value) {
    Descriptor alone = field;
    alone.offset = 1;
    alone.area = MXREPOSITORY::Area::DITX;  // an area without repeating groups
    std::string record(width_of(field), ' ');
    store(alone, 0, value, record);
    return shown(alone, 0, record);
}

bool has_content(const Descriptor& field, int occurrence, const std::string& record) {
    const std::string text =
        MXREPOSITORY::LEGGICAMPO(field, static_cast<std::int16_t>(occurrence), record);
    const std::string_view nothing = field.type == 'A' ? " " : " 0.";
    return text.find_first_not_of(nothing) != std::string::npos;
}

int occurrences(const Descriptor& field, std::size_t record_length) {
    const int step = MXREPOSITORY::SPOSTAMENTOOCCORRENZA(field, 2);
    if (step == 0) {
        return 1;
    }
    const int room = static_cast<int>(record_length) - (field.offset + field.length - 1);
    const int fitting = room / step + 1;
    // A row of the twelve-month table ends with December, whatever follows it in the record.
    return field.area == MXREPOSITORY::Area::DICX ? std::min(fitting, 12) : fitting;
}

}  // namespace nzutil
