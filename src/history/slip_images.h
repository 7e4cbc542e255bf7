#pragma once
// The pay-slip image archive NZ<yyyy><mm>.MDB; for 2008 one file for the year, NZCU2008.MDB.

#include <string>

#include "platform/database.h"

namespace NZCedLibPaga {

/// The archive of the run's own month: lives from start-up to the end of the run.
struct SlipImages {
    std::string path;  ///< empty until the name has been prepared
};
extern SlipImages slip_images;

/// Table CEDSTORICO: the employee's record of each slip, by employee, period and kind.
[[nodiscard]] platform::Table slip_image_schema();
/// Name of the archive of a month ("2024", "05"), with its path.
[[nodiscard]] std::string archive_name(const std::string& year, const std::string& month);
/// Name of the archive of the period.
void prepare_name();
/// Does the archive whose name has been prepared exist?
[[nodiscard]] bool archive_exists();
void open_archive();
void close_archive();
void prepare_slip();
void update_slip();
void closing_step_Q970();
void closing_step_Q274();
void closing_step_net();
/// Is the employee's slip of the month (kind "1") in the archive?
[[nodiscard]] bool slip_on_file(const std::string& employee, const std::string& yyyymm);

}  // namespace NZCedLibPaga
