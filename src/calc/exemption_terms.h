#pragma once
// Terms of the employer's exemption for new hires (P916): when it ends, how many months it has run,
// and the yearly caps that items carry.

#include <string>

#include "calc/dates.h"

namespace ModSWCALM {

/// Start of the exemption: P939 where it is given, else the hiring P013.
[[nodiscard]] Date exemption_start();

/// Month (yyyymm) in which the exemption of code P916 ends for a hiring on `start`; "000000" where
/// the code gives nothing to so early a hiring.
[[nodiscard]] std::string exemption_expiry(char code, const Date& start);

/// Has the employee's exemption ended with the period? False without an exemption.
[[nodiscard]] bool exemption_is_over();

/// Calendar months from start to end, the first and the last counted: a start after the 15th and an
/// end before the 15th take one off each; at most 36. Dates that are none give 0.
[[nodiscard]] int exemption_months(const Date& start, const Date& end);
/// The same for the employee (P871): from the hiring to the slip, or to the leaving of its year.
[[nodiscard]] int months_of_exemption();

/// P855, P953, P954: the quantity of the first line whose item names the field as its target.
void take_caps_from_items();

}  // namespace ModSWCALM
