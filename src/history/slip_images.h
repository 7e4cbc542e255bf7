#pragma once
// The pay-slip image archive NZ<yyyy><mm>.MDB.

#include <string>

namespace NZCedLibPaga {

/// Name of the archive of a month, with its path.
[[nodiscard]] std::string archive_name(const std::string& year, const std::string& month);
void prepare_name();
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
