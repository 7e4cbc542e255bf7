#include "installation/demo.h"

#include <array>
#include <filesystem>

#include "installation/description.h"

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
    installation.close();
    return installation;
}

}  // namespace nzutil
