#pragma once
// Numbers and text, in one place: whole part, leading value of a text, number to text, rounding,
// division. A number in memory is a double; a number in a record is zero-filled text with implied
// decimals. No infinity, no NaN and no exponent ever reaches a record.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace MXREPOSITORY {

/// Largest whole number not above x.
[[nodiscard]] double Int(double x);
/// Whole part toward zero.
[[nodiscard]] double Fix(double x);

/// Leading numeric value of a text: blanks in front are skipped, then sign, digits, point, digits
/// and an exponent (E); reading stops at the first character that cannot go on. No number gives 0.
[[nodiscard]] double valore(std::string_view text);

/// Shortest decimal text of at most 15 significant digits: no leading zero before the point
/// (".5", "-.5"), no blank for the sign; an exponent ("1.5E-17", "1E+15") only for what 15 digits
/// before or after the point cannot show.
[[nodiscard]] std::string testo_numero(double value);

/// Rounds half away from zero on a decimal text and keeps trailing zeros: value +/- 0.00...5, as
/// text, cut. `decimals` 0 becomes 2, in the caller's variable too. "-.50" keeps its form.
[[nodiscard]] std::string ARROTONDATESTO(double value, std::int16_t& decimals);
/// The same with a fixed number of decimals.
[[nodiscard]] std::string arrotondato_testo(double value, int decimals);
/// The rounded value as a number (2 decimals: cents).
[[nodiscard]] double arrotonda(double value, int decimals = 2);
/// The digits of ARROTONDATESTO for a magnitude of 0 or above, point removed, wherever no later
/// step of the decimal rounding can change them: below 10^11 units and not close to half a unit.
/// Nothing else; then the decimal text decides.
[[nodiscard]] std::optional<std::uint64_t> plain_units(double magnitude, int decimals);
/// Rounds to the whole unit: Int(x + 0.5).
[[nodiscard]] double unita(double x);

/// Rewrites an exponent form ("1.5E-05") as plain decimal text, in place; other texts stay. An
/// exponent that no number has is failure 6.
void NORMALIZZAESPONENTE(std::string& text);

/// Division; a divisor of 0 is failure 11.
[[nodiscard]] double dividi(double dividend, double divisor);
/// The value as a 16-bit whole number, rounded half to even; outside the range failure 6.
[[nodiscard]] std::int16_t intero16(double value);

/// The last `width` characters of `width` zeros followed by the text.
[[nodiscard]] std::string zeri_a_sinistra(std::string_view text, std::size_t width);
/// The text cut or blank-filled to the width.
[[nodiscard]] std::string a_sinistra(std::string_view text, std::size_t width);
/// Without blanks at both ends, at the left, at the right.
[[nodiscard]] std::string rifila(std::string_view text);
[[nodiscard]] std::string rifila_destra(std::string_view text);
/// `length` characters from the 1-based `position`; shorter or empty where the text ends.
[[nodiscard]] std::string_view ritaglia(std::string_view text, std::size_t position,
                                        std::size_t length);
/// Last `length` characters.
[[nodiscard]] std::string_view destra(std::string_view text, std::size_t length);

/// Format "###########0.#0": at least one digit before the point and two after it, rounded half
/// away from zero on the 15-digit decimal text. 12 gives "12.00", -0.125 "-0.13".
[[nodiscard]] std::string formato_importo(double value);
/// The number that formato_importo shows: sums of the control totals are kept in this form.
[[nodiscard]] double importo(double value);

}  // namespace MXREPOSITORY
