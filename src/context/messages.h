#pragma once
// What the run says to the operator.

#include <string>

#include "platform/directory_lock.h"
#include "texts/texts.h"

namespace MXLIBRERIA {

/// One progress line: company and employee on the labels, the line at the end of LIST1.
void MSG(const std::string& text);

/// A plain box: the text (with what follows it) and one button; the run goes on.
void plain_box(const texts::Text& text, const std::string& rest = {});

/// Company of the loaded record ("001-ROSSI SRL MILANO") and employee ("001-000-0001 - ROSSI
/// MARIA").
[[nodiscard]] std::string company_label();
[[nodiscard]] std::string employee_label();

/// Run kind and date as the window shows them: "MM normale 31/05/2024".
[[nodiscard]] std::string period_label();

/// List line: P001 as 3-3-4, surname and name cut or filled to 40, then the status text.
[[nodiscard]] std::string list_line(const std::string& status);

/// Status of an employee whose month has been calculated before, by the kind `P768`.
[[nodiscard]] std::string already_calculated_status(double P768);
/// Status after the calculation; `archive_exists`: the monthly archive has been updated too.
[[nodiscard]] std::string calculated_status(double P768, bool archive_exists);

/// Who works on the archive: program, process, since when, on which machine.
[[nodiscard]] std::string archive_in_use(const platform::LockHolder& holder);

/// Has the monthly archive NZRETMEN.MDB in the archive directory?
[[nodiscard]] bool monthly_archive_exists();

}  // namespace MXLIBRERIA
