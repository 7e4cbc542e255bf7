#include "nzutil/scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "installation/demo.h"
#include "nzutil/process.h"
#include "nzutil/scenario_comparison.h"
#include "nzutil/year_opening.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;

void spoil(const Installation& installation, const Damage& damage) {
    const std::string path = damage.file != 0
                                 ? installation.path(damage.file)
                                 : installation.archive_directory() + "/" + damage.name;
    installation.close();
    if (!damage.statement.empty()) {
        platform::open_database(path, platform::DatabaseMode::read_write)
            ->execute(damage.statement, {});
    } else if (damage.remove) {
        fs::remove(path);
    } else if (damage.length) {
        std::error_code failed;
        const auto present = fs::file_size(path, failed);
        const auto wanted = static_cast<std::uintmax_t>(*damage.length);
        if (!failed && wanted > present) {
            std::ofstream(path, std::ios::binary | std::ios::app)
                << std::string(wanted - present, ' ');
        } else {
            fs::resize_file(path, wanted);
        }
    } else {
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(*damage.position - 1);
        file << damage.bytes;
    }
}

/// Fields that the scenario has given an employee, up to and with a run.
FieldValues named_fields(const Scenario& scenario, std::size_t last_run, int record) {
    const std::vector<EmployeeEntry>& employees = scenario.description.employees;
    FieldValues named = std::ranges::find(employees, record, &EmployeeEntry::record)->fields;
    for (std::size_t i = 0; i <= last_run; ++i) {
        const auto change = scenario.runs[i].changes.find(record);
        if (change != scenario.runs[i].changes.end()) {
            named.insert(named.end(), change->second.fields.begin(), change->second.fields.end());
        }
    }
    return named;
}

/// What changes before a later run.
void prepare_run(Installation& installation, const Scenario& scenario, std::size_t number) {
    const ScenarioRun& run = scenario.runs[number];
    if (run.opens_year != 0) {
        write_year_opening(installation, prepare_year_opening(installation, run.opens_year));
    }
    apply(installation, run.tables, {});
    if (!run.municipalities.empty()) {
        write_municipalities(installation.archive_directory(), run.municipalities);
    }
    for (const EmployeeEntry& employee : scenario.description.employees) {
        const auto change = run.changes.find(employee.record);
        change_employee(installation, run.tables, employee.record,
                        change != run.changes.end() ? change->second : EmployeeEntry(),
                        named_fields(scenario, number, employee.record));
    }
}

void write_answers(const std::vector<bool>& answers, const std::string& path) {
    std::ofstream out(path);
    for (const bool yes : answers) {
        out << (yes ? "si" : "no") << '\n';
    }
}

ProcessResult run_batch(const ScenarioTools& tools, const ScenarioRun& run,
                        const Installation& installation, const std::string& directory) {
    const std::string answers = directory + "/risposte.txt";
    write_answers(run.answers, answers);
    ProcessCall call;
    call.program = tools.program;
    call.directory = directory;
    call.environment = {{"SOLMAREL_REGISTRO", installation.registry_file()},
                        {"VELMOR_INTERFACCIA", "console"},
                        {"VELMOR_RISPOSTE", answers},
                        {"VELMOR_STAMPE", directory + "/stampe"},
                        {"VELMOR_STAMPANTE", ""},
                        {"VELMOR_TASK", ""}};
    return run_process(call);
}

std::map<int, std::string> employee_records(const Installation& installation,
                                            const Scenario& scenario) {
    std::map<int, std::string> records;
    for (const EmployeeEntry& employee : scenario.description.employees) {
        records[employee.record] = installation.read(kEmployees, employee.record).value_or("");
    }
    return records;
}

constexpr const char* kMunicipalArchive = "TABCOM";

/// The archives that a scenario names and that no run makes yet.
std::string archives_not_made(const Scenario& scenario) {
    std::string names;
    for (const std::string& name : scenario.archives) {
        if (name != kMunicipalArchive) {
            names += (names.empty() ? "" : ", ") + name;
        }
    }
    return names;
}

/// The municipalities of the demo, where the scenario asks for the archive, and its own.
void write_municipal_table(const Installation& installation, const Scenario& scenario) {
    const std::vector<Municipality>& own = scenario.runs.front().municipalities;
    if (std::ranges::find(scenario.archives, kMunicipalArchive) != scenario.archives.end()) {
        write_municipalities(installation.archive_directory(), demo_municipalities());
    }
    if (!own.empty()) {
        write_municipalities(installation.archive_directory(), own);
    }
}

Installation install(const Scenario& scenario, const ScenarioTools& tools,
                     const std::string& directory) {
    Installation installation = tools.base_directory.empty()
                                    ? make_base_installation(directory)
                                    : copy_installation(tools.base_directory, directory);
    apply(installation, scenario.description, model_employee(installation));
    installation.write_period(scenario.runs.front().period.date, scenario.runs.front().period.kind);
    write_municipal_table(installation, scenario);
    for (const Damage& damage : scenario.damages) {
        spoil(installation, damage);
    }
    installation.close();
    return installation;
}

}  // namespace

std::string in_words(const Difference& difference) {
    if (difference.meaning.empty()) {
        return fill(texts::kToolDifference,
                    {difference.place, difference.expected, difference.found});
    }
    return fill(texts::kToolDifferenceOfField,
                {difference.place, difference.meaning, difference.expected, difference.found});
}

Installation install_scenario(const Scenario& scenario, const std::string& directory) {
    return install(scenario, {}, directory);
}

std::vector<Difference> run_scenario(const Scenario& scenario, const ScenarioTools& tools,
                                     const std::string& directory) {
    std::vector<Difference> differences;
    if (const std::string names = archives_not_made(scenario); !names.empty()) {
        differences.push_back({"archivi", names, fill(texts::kToolNoArchives, {names})});
        return differences;
    }
    Installation installation = install(scenario, tools, directory + "/installazione");
    Sums sums;
    for (std::size_t i = 0; i < scenario.runs.size(); ++i) {
        if (i > 0) {
            prepare_run(installation, scenario, i);
        }
        // Where files are spoilt, the run alone reads them.
        const std::map<int, std::string> before = scenario.damages.empty()
                                                      ? employee_records(installation, scenario)
                                                      : std::map<int, std::string>();
        installation.close();
        const ProcessResult result = run_batch(tools, scenario.runs[i], installation, directory);
        compare_run(installation, scenario, i, result, before, differences);
        add_to_sums(installation, scenario, i, result, sums);
        if (tools.after_run) {
            tools.after_run(static_cast<int>(i) + 1, scenario.runs[i], installation);
        }
    }
    compare_sums(scenario, sums, differences);
    return differences;
}

}  // namespace nzutil
