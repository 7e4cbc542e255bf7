#pragma once
// The tables that no slip can do without, looked at before anything is written.

namespace ModSWCALM {

/// The yearly tables into their area: failure 62 with file, record and what to do where the file is
/// empty or ends within them.
void read_yearly_tables();

/// Period, selection, yearly tables, sectors of the selected companies, bracket tables, pay items
/// and the dictionary files of the formulas. The first finding is a platform::Failure with file,
/// record and what to do: 62 an empty file, 59 a record cut short, 13 letters where a number is
/// read or a date that is not in the calendar, 63 an entry of the selection beyond the employees, 9
/// a bracket table that nothing closes, 53 a file that is missing. Without a period nothing is
/// looked at, since nothing will be calculated. What the walks have a rule for (a missing company,
/// sector or item) is theirs. Expects the files of the run's start to be open.
void check_tables();

}  // namespace ModSWCALM
