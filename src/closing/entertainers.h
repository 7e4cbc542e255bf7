#pragma once
// Contribution and tax pass of workers in entertainment (P168 not 0).
//
// Table of daily wages, logical file 260, a text file of up to 128 lines, one bracket a line:
//   positions  width  content
//   1-10       10     daily wage from, euro and cents
//   11-20      10     daily wage to, included
//   21-30      10     daily wage credited for the bracket

#include <string>

namespace ModSwCalm2 {

void CSOCTASSEPENPALS();

/// The wage of the slip under the entertainers' limits, by the worker's class P094 (1 to 4): four
/// amounts in cents, filled with zeros, in columns
///   1   10  wage that bears contributions
///   11  10  wage above the ceilings
///   21  8   wage credited by the table of daily wages
///   29  8   what is left of the yearly ceiling
/// D.Lgs. 182/1997, art. 1 and 2.
[[nodiscard]] std::string FAI_ENPALS();

/// Settlement of the year's contributions at the rate up to the first bracket and the rate above
/// it: P282 and P283 what is due of the year, P284 and P285 what is still owed beyond the pension
/// contributions to date (Q007, Q009) and of this slip; Q007, Q009, Q224.
void CONGSOLIDENPALS();

}  // namespace ModSwCalm2
