#pragma once
// The phases of one employee's slip, in the order in which CALC and RESTOCALCOLI run them.

#include <initializer_list>
#include <span>
#include <string>

#include "calc/dates.h"
#include "records/descriptor.h"

namespace ModSWCALM {

// ---- Opening (slip_opening.cpp) ----

/// Reads the employee and his sector, and puts the state of the slip back to its start: tax
/// brackets, percentages, ceiling test, pay scale, slip table, days of the month.
void open_slip(double employee_record);

/// Takes the leaving date from item 320 and counts the month of service (Q136, P197).
void leaver_scan();

/// Takes the days before the hiring and after the leaving off P215, P216 and GGLAVORABILI.
void take_off_days_outside_service();
/// Days in service of a month of `length` days; dates that are not given bound nothing.
[[nodiscard]] int days_in_service(int length, int yyyymm, const Date& start, const Date& leaving);

// ---- The slip (calc_employee.cpp) ----

/// Calculates, saves and writes one employee's slip; leaves at once when the closing has set
/// ABORTODIP.
void RESTOCALCOLI();

/// Default rates of P224, P225 and P227, as texts.
struct StartingRates {
    std::string P224;
    std::string P225;
    std::string P227;
};
[[nodiscard]] StartingRates starting_rates();

/// Seniority step, entertainers' carry, three-digit days: what comes before the clearing.
void opening_values();

/// Clears what an earlier calculation of the month left in the record (calc_clearing.cpp).
void clear_month_results(const StartingRates& rates);

/// Keeps the slip's results for the next slip of the month (P268 to P280).
void save_results();

// ---- Divisors and hourly values (calc_divisors.cpp) ----

void divisors_and_hourly_values();
/// Sum of the pay elements P058, P060 to P067, P353 to P355.
[[nodiscard]] double pay_elements();

// ---- Late calculations (late_calculations.cpp) ----

/// Relief, incentives, exemptions, archives and the last figures of the record.
void late_calculations();

// ---- Shared ----

/// Blanks each text field that holds only zeros over its whole length.
void blank_all_zero(std::initializer_list<MXREPOSITORY::Descriptor> fields);
void blank_all_zero(std::span<const MXREPOSITORY::Descriptor> fields);

}  // namespace ModSWCALM
