#pragma once
// Small utilities of the run.

#include <string>

namespace MXLIBRERIA {

inline constexpr int kTrue = -1;  ///< what a 16-bit flag holds when set

/// -1 if the file can be opened for input, else 0 (a directory, a file locked or refused).
[[nodiscard]] int ESISTEFILE(const std::string& path);
/// Deletes the target if it exists, then copies.
void COPIAFILE(const std::string& source, const std::string& target);
/// -1 for a leap year of the Gregorian calendar, else 0.
[[nodiscard]] int BISESTILE(double year);
/// Whole part toward zero of value + 0.000001.
[[nodiscard]] double TRONCA(double value);
/// Text of the whole part toward zero of value + 0.1 (value - 0.1 below 0).
[[nodiscard]] std::string INTEROTESTO(double value);

/// A registry value as text; empty if there is no key, no value, or another type.
[[nodiscard]] std::string LEGGIREGISTRO(const std::string& root, const std::string& key,
                                        const std::string& value);
[[nodiscard]] std::string LEGGIVALOREREGISTRO(const std::string& open_key,
                                              const std::string& value);

/// Year x 100 + month of a date text ddmmyyyy; 0 if the text holds none.
[[nodiscard]] double yyyymm_of(const std::string& ddmmyyyy);
/// Days of a month; February by the Gregorian rule.
[[nodiscard]] int days_of_month(int month, int year);

}  // namespace MXLIBRERIA
