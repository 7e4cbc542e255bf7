#pragma once
// Where an employee stands towards a year that is to be opened.

#include <string>

#include "records/descriptor.h"

namespace nzutil {

/// Where an employee stands towards the year to be opened.
enum class Standing {
    no_record,         ///< nobody stands in the record
    no_slip,           ///< nothing calculated yet: nothing to open
    to_open,           ///< the slips of the former year are closed
    opened,            ///< the sums of the year are empty: opened already
    begun,             ///< a slip of the year to be opened, or of a later one
    december_missing,  ///< in service, and without December's ordinary slip
    earlier_year,      ///< in service, with the sums of a year before the former one
};

/// The standing of an employee, from the record alone, for the opening of `year`.
[[nodiscard]] Standing standing_of(const std::string& employee, int year);

/// The same of the employee in the area.
[[nodiscard]] Standing standing_in_area(int year);

/// Did the employee leave before the year? A leaving before the start belongs to another
/// employment.
[[nodiscard]] bool left_before(int year);

/// Year of a date ddmmyyyy; 0 where there is none.
[[nodiscard]] int year_of(const MXREPOSITORY::Descriptor& date);

}  // namespace nzutil
