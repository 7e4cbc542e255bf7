#include "run/killed_run.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "context/messages.h"
#include "files/file_numbers.h"
#include "files/recovery_slot.h"
#include "platform/window.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using namespace MXLIBRERIA::file_numbers;

namespace {

/// The list's line of an employee whose record is not the one in the area.
std::string line_of_employee(const std::string& record) {
    const std::string present = std::exchange(area(Area::DIPX), record);
    std::string line = list_line(texts::kFinishedStep.bytes());
    area(Area::DIPX) = present;
    return line;
}

/// An employee by code and name; any other record by its file and number.
std::string line_of_step(const std::vector<FinishedRecord>& records) {
    const auto employee = std::ranges::find(records, kEmployees, &FinishedRecord::file);
    if (employee != records.end()) {
        return line_of_employee(employee->bytes);
    }
    return texts::kFinishedFile.bytes() + testo_numero(records.front().file) +
           texts::kFinishedRecord.bytes() + testo_numero(records.front().record) +
           texts::kFinishedStep.bytes();
}

}  // namespace

void finish_killed_run() {
    const std::vector<FinishedRecord> records = finish_killed_step();
    if (!records.empty()) {
        platform::window().add_line(line_of_step(records));
    }
    recovery_slot.in_use = true;
}

}  // namespace ModSWCALM
