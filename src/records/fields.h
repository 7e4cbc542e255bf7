#pragma once
// Record areas and the four accessors, the only way to a value in a record, with short forms of
// them for formulas.

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/descriptor.h"

namespace MXREPOSITORY {

/// The text buffer of an area: as long as its record, empty until a record is copied in.
[[nodiscard]] std::string& area(Area which);
/// Empties all areas.
void clear_areas();

/// Field as text. `buffer` empty: the area; otherwise the buffer is read instead. Types A, D, 0:
/// the raw characters; N and decimals: sign in front, leading zeros kept, a point before the
/// decimals. A source that is too short gives a shorter or empty text.
[[nodiscard]] std::string LEGGICAMPO(const Descriptor& descriptor, std::int16_t occurrence,
                                     const std::string& buffer);
/// The same from a descriptor text made at run time; an unknown tag shows
/// "ERRORE REPOSITORY - STRCOSTANTE" and reads empty.
[[nodiscard]] std::string LEGGICAMPO(const std::string& descriptor, std::int16_t occurrence,
                                     const std::string& buffer);

/// Leading numeric value of LEGGICAMPO.
[[nodiscard]] double LEGGICAMPONUM(const Descriptor& descriptor, std::int16_t occurrence,
                                   const std::string& buffer);
[[nodiscard]] double LEGGICAMPONUM(const std::string& descriptor, std::int16_t occurrence,
                                   const std::string& buffer);

/// Stores a text in the area, or in `buffer` if that is not empty. The first comma of the caller's
/// `value` becomes a point. Text is cut or blank-filled; a number is rounded to the field's
/// decimals, right-aligned in zeros, its excess digits lost on the left, its minus in the first
/// position. A target beyond the buffer is failure 9 ("RepoW").
void SCRIVICAMPO(const Descriptor& descriptor, std::string& value, std::int16_t occurrence,
                 std::string& buffer);
void SCRIVICAMPO(const std::string& descriptor, std::string& value, std::int16_t occurrence,
                 std::string& buffer);

/// Stores a number: its decimal text of up to 15 digits through SCRIVICAMPO.
void SCRIVICAMPONUM(const Descriptor& descriptor, double value, std::int16_t occurrence,
                    std::string& buffer);
void SCRIVICAMPONUM(const std::string& descriptor, double value, std::int16_t occurrence,
                    std::string& buffer);

/// Displacement of an occurrence inside a repeating group, in characters. Failure 6 beyond 16 bits.
[[nodiscard]] std::int16_t SPOSTAMENTOOCCORRENZA(const Descriptor& descriptor,
                                                 std::int16_t occurrence);
[[nodiscard]] std::int16_t SPOSTAMENTOOCCORRENZA(const std::string& descriptor,
                                                 std::int16_t occurrence);

// ---- Short forms, so that a formula reads as one. All work on the area of the descriptor. ----

/// Number in the field.
[[nodiscard]] double num(const Descriptor& field, int occurrence = 0);
/// Text of the field as LEGGICAMPO gives it; rifilato() without blanks at both ends.
[[nodiscard]] std::string testo(const Descriptor& field, int occurrence = 0);
[[nodiscard]] std::string rifilato(const Descriptor& field, int occurrence = 0);
/// Stores a number, or a text.
void scrivi(const Descriptor& field, double value, int occurrence = 0);
void scrivi(const Descriptor& field, std::string_view value, int occurrence = 0);
inline void scrivi(const Descriptor& field, const char* value, int occurrence = 0) {
    scrivi(field, std::string_view(value), occurrence);
}
/// A whole number, so that a literal reads as one: scrivi(P026, 0).
template <std::integral Whole>
void scrivi(const Descriptor& field, Whole value, int occurrence = 0) {
    scrivi(field, static_cast<double>(value), occurrence);
}
/// field += amount, and what then stands in the field (rounded to its decimals).
double aggiungi(const Descriptor& field, double amount, int occurrence = 0);

/// Writes an empty text to the field (blanks in a text field, zeros in a numeric one).
void svuota(const Descriptor& field);
/// Does the field hold text or digits, and nothing but zeros?
[[nodiscard]] bool tutto_zero(const Descriptor& field);

/// Writes the number 0 to each field.
void azzera(std::initializer_list<Descriptor> fields);
/// Writes an empty text to each field.
void svuota(std::initializer_list<Descriptor> fields);

void azzera(std::span<const Descriptor> fields);
void svuota(std::span<const Descriptor> fields);

/// The letters of a code, and where its number starts: "P" and 1, "QA" and 2.
[[nodiscard]] constexpr std::size_t letters_of(std::string_view code) {
    return code[1] >= '0' && code[1] <= '9' ? 1 : 2;
}
/// The number of a code in its series: 205 of "Q205", 5 of "QA05".
[[nodiscard]] constexpr int number_in_series(std::string_view code) {
    int number = 0;
    for (const char c : code.substr(letters_of(code))) {
        number = number * 10 + (c - '0');
    }
    return number;
}

/// Is the code one of every step-th number from `first` to `last`?
[[nodiscard]] constexpr bool in_series(std::string_view code, std::string_view first,
                                       std::string_view last, int step) {
    const std::size_t letters = letters_of(first);
    if (letters_of(code) != letters || code.substr(0, letters) != first.substr(0, letters)) {
        return false;
    }
    const int distance = number_in_series(code) - number_in_series(first);
    return distance >= 0 && distance % step == 0 &&
           number_in_series(code) <= number_in_series(last);
}

/// The table behind `elenco`.
template <Descriptor first, Descriptor last, int step>
consteval auto make_elenco() {
    constexpr auto belongs = [](const Descriptor& field) {
        return in_series(field.name(), first.name(), last.name(), step);
    };
    constexpr std::span<const Descriptor> all = kFieldsOf<first.area>;
    std::array<Descriptor, static_cast<std::size_t>(std::ranges::count_if(all, belongs))> fields{};
    static_assert(!fields.empty());
    std::ranges::copy_if(all, fields.begin(), belongs);
    std::ranges::sort(fields, {},
                      [](const Descriptor& field) { return number_in_series(field.name()); });
    return fields;
}
/// The fields from `first` to `last` of one series, elenco<Q205, Q213>: the codes that exist
/// between the two numbers under the same letters, in ascending order; with a step, every step-th
/// number. One table, made at compile time.
template <Descriptor first, Descriptor last, int step = 1>
inline constexpr auto elenco = make_elenco<first, last, step>();
/// The same for codes that are known only when the program runs.
[[nodiscard]] std::vector<Descriptor> serie(const Descriptor& first, const Descriptor& last,
                                            int step = 1);

/// field number + distance in the same series: dopo(J001, 12) is J013. Failure 9 if there is none.
[[nodiscard]] const Descriptor& dopo(const Descriptor& field, int distance);

}  // namespace MXREPOSITORY
