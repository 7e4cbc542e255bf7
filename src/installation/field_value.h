#pragma once
// Values that a person types, against the field that has to hold them.

#include <optional>
#include <string>
#include <string_view>

#include "records/descriptor.h"
#include "texts/tool_texts.h"

namespace nzutil {

/// The field of a short name as a person types it, in capitals or small letters ("p240"); nullptr
/// if there is none.
[[nodiscard]] const MXREPOSITORY::Descriptor* find_typed_field(std::string_view code);

/// Capitals of the letters a to z.
[[nodiscard]] std::string in_capitals(std::string text);

/// An employee's code as the records hold it, from "0010000005" or "001-000-0005".
[[nodiscard]] std::string plain_code(std::string typed);

/// A typed value as the field is to take it: an employee's code (P001) without its dashes.
[[nodiscard]] std::string typed_value(const MXREPOSITORY::Descriptor& field, std::string typed);

/// Why a field cannot hold a typed value without losing characters.
struct Objection {
    const texts::Text* text;
    std::string value;  ///< what stands in the "{}" of the text
};

/// How much may be lost without an objection.
enum class Decimals {
    exact,    ///< no more decimals than the field has
    rounded,  ///< the field rounds them
};

/// A day of the calendar from 1900 on, ddmmyyyy.
[[nodiscard]] bool is_date(std::string_view ddmmyyyy);

/// Nothing if the field can hold the value (bytes of code page 1252): text not longer than the
/// field, a day of the calendar (or none: blanks, zeros) in date fields of eight digits, a month
/// and a year in those of six whose meaning gives their order, digits in the other date fields, a
/// number whose whole part fits the width.
[[nodiscard]] std::optional<Objection> objection(const MXREPOSITORY::Descriptor& field,
                                                 std::string_view value, Decimals decimals);

/// The value as the field stores it, read back: what two values have to share to be equal in it.
/// Numbers with the field's decimals, text without blanks at the right.
[[nodiscard]] std::string as_stored(const MXREPOSITORY::Descriptor& field, std::string_view value);

/// Content of the field in a record as a person reads it: number without leading zeros, text
/// without blanks at the right.
[[nodiscard]] std::string shown(const MXREPOSITORY::Descriptor& field, int occurrence,
                                const std::string& record);

/// Does the field hold anything (text: not blank; numbers and dates: a digit other than 0)?
[[nodiscard]] bool has_content(const MXREPOSITORY::Descriptor& field, int occurrence,
                               const std::string& record);

/// Stores a value in the record; the record is long enough for the field (else failure 9).
void store(const MXREPOSITORY::Descriptor& field, int occurrence, std::string_view value,
           std::string& record);

/// Highest occurrence of the field that a record of this length holds; 1 outside the groups.
[[nodiscard]] int occurrences(const MXREPOSITORY::Descriptor& field, std::size_t record_length);

}  // namespace nzutil
