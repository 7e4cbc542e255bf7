#pragma once
// Contribution and tax pass of workers in entertainment (P168 not 0).

#include <string>

namespace ModSwCalm2 {

void CSOCTASSEPENPALS();
/// Four amounts as text, columns 1, 11, 21, 29 (widths 10, 10, 8, 8).
[[nodiscard]] std::string FAI_ENPALS();
/// Solidarity on the wage above the yearly ceiling: P282 to P285, Q009.
void CONGSOLIDENPALS();

}  // namespace ModSwCalm2
