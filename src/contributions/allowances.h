#pragma once
// Family allowances and the wages by insured risk of the year.
//
// Family-allowance tables, logical files 232 to 252, one record an income bracket, ascending:
//   positions        width  content
//   1-8              8      income limit of the bracket, or with "*" in position 6:
//   7-11, 1-2        5, 2     euro and cents of a limit above 100000
//   9 + 7 x (m - 1)  7      monthly sum for a household of m members, 1 to 7

namespace ModSwCalm2 {

/// Family allowance of the household (P021 members, P023 income, table P158); adds to Q139 (whole
/// month, item 109) or Q140 (by days, item 110), Q130 (temporary increase), Q030 and P241.
/// D.P.R. 797/1955; D.L. 69/1988, art. 2; D.L. 79/2021, art. 5.
void ASSEGNIFAM();

/// Monthly sum of the household table: n members, income, table character (as P158); 0 above the
/// last bracket and for a character without a table.
[[nodiscard]] double ALTRIANF(short members, double income, char table);

/// Adds an amount and its days to the year's pair of a number 1 to 10 (Q204 and Q214 to Q213 and
/// Q223), for P040 not 0 and an amount above a twelfth of F341. Number 1 starts the year anew; a
/// number outside has no pair.
void ASSEGNAINAIL(double month, double amount, double days);

}  // namespace ModSwCalm2
