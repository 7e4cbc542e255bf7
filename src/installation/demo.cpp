#include "installation/demo.h"

#include <array>
#include <filesystem>

#include "files/isam.h"
#include "installation/description.h"
#include "installation/field_value.h"
#include "installation/file_layout.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;

constexpr std::array kTableDocuments{"base.yaml", "contratti.yaml", "voci.yaml"};
constexpr const char* kOrdinaryEmployee = "ordinario.yaml";
constexpr const char* kEmployeesOfDemo = "dipendenti.yaml";

Description description_with_employees(const Document& document) {
    document.expect_keys(document.root(), kDescriptionKeys);
    Description description = read_description(document);
    if (const YAML::Node employees = document.root()["dipendente"]) {
        document.each_of(employees, [&](const YAML::Node& element) {
            description.employees.push_back(read_employee(document, element, {}));
        });
    }
    return description;
}

void apply_document(Installation& installation, const char* name, const EmployeeModel& model) {
    const Document document((fs::path(demo_directory()) / name).string());
    apply(installation, description_with_employees(document), model);
}

/// An employee who is already calculated has the before-image that his calculation left.
void keep_before_image(Installation& installation, int record) {
    const std::string employee = installation.read(kEmployees, record).value_or("");
    const std::string period = installation.read(kPeriod, 1).value_or("");
    const double month = MXREPOSITORY::valore(MXREPOSITORY::ritaglia(period, 3, 2));
    if (MXREPOSITORY::LEGGICAMPONUM(MXREPOSITORY::Q171, 0, employee) < month) {
        return;
    }
    const int image = installation.record_count(kBeforeImages) + 1;
    installation.write(kBeforeImages, image, employee);
    // The index works on an open file.
    static_cast<void>(installation.record_count(kBeforeImageIndex));
    MXLIBRERIA::ISAM(kBeforeImageIndex, MXREPOSITORY::LEGGICAMPO(MXREPOSITORY::P001, 0, employee),
                     MXLIBRERIA::kIsamInsert, image);
}

}  // namespace

std::string program_directory() {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed);
    return failed ? fs::current_path().string() : program.parent_path().string();
}

std::string demo_directory() {
    const fs::path program(program_directory());
    for (const fs::path& candidate :
         {program / "demo", program.parent_path() / "demo", fs::path(VELMOR_DEMO_DIRECTORY)}) {
        if (fs::exists(candidate / kTableDocuments.front())) {
            return candidate.string();
        }
    }
    throw ToolError(texts::kToolNoDemoData, {VELMOR_DEMO_DIRECTORY});
}

Installation make_base_installation(const std::string& directory) {
    Installation installation = Installation::create(directory);
    for (const char* name : kTableDocuments) {
        apply_document(installation, name, {});
    }
    apply_document(installation, kOrdinaryEmployee, model_employee(installation));
    return installation;
}

Installation make_demo_installation(const std::string& directory) {
    Installation installation = make_base_installation(directory);
    apply_document(installation, kEmployeesOfDemo, model_employee(installation));
    for (const auto& [company, record] : installation.read_selection()) {
        keep_before_image(installation, record);
    }
    installation.close();
    return installation;
}

}  // namespace nzutil
