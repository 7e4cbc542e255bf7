#pragma once
// Seniority steps and special pay.

#include <string>

namespace ModSWCALM {

/// Advances the seniority step that falls due in the month of `date` (ddmmyyyy).
void SCATTI(const std::string& date, const std::string& three_digits);
/// Ceiling of short-time pay for the month (Q190).
void CALCOLACIG();
/// Number of monthly instalments for the yearly factor; 0 where none is set.
[[nodiscard]] double CALC13();
/// Entertainers' carry from slip to slip of a month.
void ENPALSPEC(const std::string& date);

}  // namespace ModSWCALM
