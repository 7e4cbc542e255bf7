#pragma once
// A date of a record, ddmmyyyy, in its three numbers; all 0 where the field holds none.

#include <chrono>
#include <string>

#include "records/numbers.h"

namespace ModSWCALM {

struct Date {
    int day = 0;
    int month = 0;
    int year = 0;

    [[nodiscard]] static Date of(const std::string& ddmmyyyy) {
        const auto part = [&](std::size_t position, std::size_t length) {
            return static_cast<int>(
                MXREPOSITORY::valore(MXREPOSITORY::ritaglia(ddmmyyyy, position, length)));
        };
        return {part(1, 2), part(3, 2), part(5, 4)};
    }

    [[nodiscard]] bool given() const { return day != 0 || month != 0 || year != 0; }
    /// Is it a day of the calendar, 29 February in leap years only?
    [[nodiscard]] bool exists() const {
        return day > 0 && month > 0 && year > 0 &&
               std::chrono::year_month_day(std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)))
                   .ok();
    }
    /// Year x 100 + month.
    [[nodiscard]] int yyyymm() const { return year * 100 + month; }
    [[nodiscard]] int yyyymmdd() const { return yyyymm() * 100 + day; }
};

/// Days of a month of the calendar, 29 for February of a leap year.
[[nodiscard]] inline int days_of_month(int year, int month) {
    const std::chrono::year_month_day_last last(
        std::chrono::year(year),
        std::chrono::month_day_last(std::chrono::month(static_cast<unsigned>(month))));
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace ModSWCALM
