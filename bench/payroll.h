#pragma once
// A payroll for the benchmarks: the demo's employees over and over, each with a code of his own, in
// file order. None of them has a before-image yet, as in a first month.

#include <string>
#include <utility>
#include <vector>

#include "files/isam.h"
#include "installation/demo.h"
#include "installation/file_layout.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace bench {

/// Records of an employee in the two files that hold one for each of them.
struct EmployeeRecords {
    std::string employee;
    std::string months;
};

inline std::vector<EmployeeRecords> employees_of_demo(const nzutil::Installation& installation) {
    std::vector<EmployeeRecords> found;
    for (int number = 1; number <= installation.record_count(nzutil::kEmployees); ++number) {
        found.push_back({*installation.read(nzutil::kEmployees, number),
                         *installation.read(nzutil::kTwelveMonths, number)});
    }
    return found;
}

/// Makes the installation and closes it. At most 9,999 employees: the selection has four digits.
inline nzutil::Installation make_payroll(const std::string& directory, int employees) {
    nzutil::Installation installation = nzutil::make_demo_installation(directory);
    const std::vector<EmployeeRecords> mix = employees_of_demo(installation);
    std::vector<std::string> records;
    std::vector<std::string> months;
    std::vector<std::pair<int, int>> selection;
    for (int number = 1; number <= employees; ++number) {
        const EmployeeRecords& model = mix[static_cast<std::size_t>(number - 1) % mix.size()];
        std::string record = model.employee;
        std::string code = "001000" + MXREPOSITORY::zeri_a_sinistra(std::to_string(number), 4);
        MXREPOSITORY::SCRIVICAMPO(MXREPOSITORY::P001, code, 0, record);
        records.push_back(std::move(record));
        months.push_back(model.months);
        selection.emplace_back(1, number);
    }
    installation.write_all(nzutil::kEmployees, records);
    installation.write_all(nzutil::kTwelveMonths, months);
    installation.write_all(nzutil::kBeforeImages, {});
    MXLIBRERIA::ISAM(nzutil::kBeforeImageIndex, "", MXLIBRERIA::kIsamEmpty, 0);
    installation.write_selection(selection);
    installation.close();
    return installation;
}

/// Has the demo's mix calculated this employee already? One in fourteen: the twelfth.
inline bool already_calculated(const std::string& record) {
    constexpr double kMonthOfDemo = 5;
    return MXREPOSITORY::LEGGICAMPONUM(MXREPOSITORY::Q171, 0, record) >= kMonthOfDemo;
}

}  // namespace bench
