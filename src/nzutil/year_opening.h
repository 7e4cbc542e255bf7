#pragma once
// The opening of a year: what December leaves is carried to the new year, and the sums of the year
// start again. It stands between the last slip of December and the first one of January.

#include <string>
#include <vector>

#include "installation/installation.h"

namespace nzutil {

/// Years that can be opened.
inline constexpr int kFirstOpenedYear = 2005;
inline constexpr int kLastOpenedYear = 2099;

/// An employee whose year is opened, and what is carried.
struct OpenedEmployee {
    int record = 0;
    std::string code;  ///< 001-000-0001
    std::string name;
    bool left = false;       ///< left before the year: neither fund nor surtaxes are carried
    double income = 0;       ///< of the closed year (Q031)
    double regional = 0;     ///< balance of the regional surtax (Q317)
    double municipal = 0;    ///< balance of the municipal surtax (Q235)
    double severance = 0;    ///< severance fund at 31 December (Q039)
    double revaluation = 0;  ///< of the closed year (Q270)
    std::string bytes;       ///< the record as the opening leaves it
};

/// The year for one employee: the record as the opening leaves it. `fixed` are the tables of the
/// closed year, `company` the record of the employee's company.
[[nodiscard]] OpenedEmployee open_year_of(const std::string& employee, const std::string& company,
                                          const std::string& fixed, int year);

/// Who takes part in the opening of a year.
struct YearOpening {
    int year = 0;
    std::vector<int> to_open;        ///< record numbers
    int passed_over = 0;             ///< no slip yet, or opened already
    std::vector<std::string> begun;  ///< codes of those who have a slip of the year
};

/// Finds who is to be opened. ToolError where the year is open already or has begun, the former one
/// is not closed or not there, or an index of the revaluation is missing; nothing is written.
[[nodiscard]] YearOpening prepare_year_opening(const Installation& installation, int year);

/// One employee of the opening, worked out and not written.
[[nodiscard]] OpenedEmployee work_out_opening(const Installation& installation, int record,
                                              int year);

/// Opens the year for all of the opening's employees and writes them. One that was interrupted goes
/// on with those who are left when it is started again.
void write_year_opening(Installation& installation, const YearOpening& opening);

}  // namespace nzutil
