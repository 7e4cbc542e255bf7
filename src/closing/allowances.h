#pragma once
// Family allowances and the accident-insurance allowance.

namespace ModSwCalm2 {

/// Family allowance of the household by its table; adds to Q139, Q140, Q130 and P241.
void ASSEGNIFAM();
/// Monthly sum of the household table: n members, income, table character (as P158).
[[nodiscard]] double ALTRIANF(short members, double income, char table);
/// Accident-insurance wage of the month (month number, amount, days).
void ASSEGNAINAIL(double month, double amount, double days);

}  // namespace ModSwCalm2
