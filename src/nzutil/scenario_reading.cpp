// From a scenario's document to what is to be run and expected.

#include <algorithm>
#include <filesystem>

#include "nzutil/identities.h"
#include "nzutil/scenario.h"
#include "nzutil/year_opening.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Area;

/// What an employee's map may hold beside the employee, and what only that of the first run may.
const Keys kExpectedKeys{"attesi", "attesi_righe", "attesi_mesi", "attesi_certificazione",
                         "attesi_archivio"};
const Keys kExpectedOfAllRuns{"attesi_somma"};
/// What a run may hold beside the installation and the expectations of its employee.
const Keys kRunKeys{"risposte",     "uscita",       "attesi_lista",   "attesi_riquadri",
                    "attesi_fissi", "attesi_ditta", "attesi_tabelle", "comuni"};
const Keys kScenarioKeys{"titolo", "archivi", "danni", "corse", "senza_identita"};

Keys joined(std::initializer_list<Keys> lists) {
    Keys all;
    for (const Keys& list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

std::vector<ExpectedLine> read_expected_lines(const Document& document, const YAML::Node& node) {
    std::vector<ExpectedLine> lines;
    document.each(node,
                  [&](const std::string& key, const YAML::Node& key_node, const YAML::Node& value) {
                      document.expect_keys(value, {"quantita", "valore"});
                      ExpectedLine line;
                      line.number = document.whole_key(key, key_node, 1, 100);
                      if (value["quantita"]) {
                          line.quantity = document.number(value["quantita"], 2);
                      }
                      if (value["valore"]) {
                          line.rate = document.number(value["valore"], 5);
                      }
                      lines.push_back(std::move(line));
                  });
    return lines;
}

/// Sums take fields that hold numbers.
FieldValues read_sums(const Document& document, const YAML::Node& node) {
    FieldValues sums = document.expected_fields(node, Area::DIPX);
    for (const FieldValue& sum : sums) {
        if (sum.field.type == 'A' || sum.field.type == 'D' || sum.field.type == '0') {
            throw DocumentError(document.file(), sum.line,
                                fill(texts::kToolExpectedNumberField, {sum.field.name()}));
        }
    }
    return sums;
}

/// The keys of kExpectedKeys and of kExpectedOfAllRuns, in the document or in an employee's map.
ExpectedEmployee read_expected(const Document& document, const YAML::Node& node) {
    ExpectedEmployee expected;
    if (node["attesi"]) {
        expected.fields = document.expected_fields(node["attesi"], Area::DIPX);
    }
    if (node["attesi_mesi"]) {
        expected.months = document.expected_fields(node["attesi_mesi"], Area::DICX);
    }
    if (node["attesi_certificazione"]) {
        expected.certificate = document.expected_fields(node["attesi_certificazione"], Area::CUDX);
    }
    if (node["attesi_righe"]) {
        expected.lines = read_expected_lines(document, node["attesi_righe"]);
    }
    if (node["attesi_somma"]) {
        expected.sums = read_sums(document, node["attesi_somma"]);
    }
    if (node["attesi_archivio"]) {
        document.each(node["attesi_archivio"],
                      [&](const std::string& column, const YAML::Node&, const YAML::Node& value) {
                          expected.archive[column] = document.utf8(value);
                      });
    }
    return expected;
}

bool has_expectations(const YAML::Node& node) {
    return std::ranges::any_of(
        joined({kExpectedKeys, kExpectedOfAllRuns}),
        [&](std::string_view key) { return static_cast<bool>(node[std::string(key)]); });
}

std::vector<bool> read_answers(const Document& document, const YAML::Node& node) {
    std::vector<bool> answers;
    for (const std::string& answer : document.list_of_texts(node)) {
        if (answer != "si" && answer != "no") {
            document.fail(node, texts::kToolExpectedAnswer, {answer});
        }
        answers.push_back(answer == "si");
    }
    return answers;
}

std::vector<Damage> read_damages(const Document& document, const YAML::Node& node) {
    std::vector<Damage> damages;
    document.each_of(node, [&](const YAML::Node& element) {
        document.expect_keys(element, {"archivio", "nome", "elimina", "lunghezza", "posizione",
                                       "byte", "istruzione"});
        Damage damage;
        if (element["archivio"]) {
            damage.file = document.whole(element["archivio"], 1, 600);
        }
        if (element["nome"]) {
            damage.name = document.utf8(element["nome"]);
        }
        damage.remove = element["elimina"] && document.utf8(element["elimina"]) == "si";
        if (element["lunghezza"]) {
            damage.length = document.whole(element["lunghezza"], 0, 100'000'000);
        }
        if (element["posizione"]) {
            damage.position = document.whole(element["posizione"], 1, 100'000'000);
        }
        if (element["byte"]) {
            damage.bytes = document.text(element["byte"]);
        }
        if (element["istruzione"]) {
            damage.statement = document.text(element["istruzione"]);
        }
        const bool has_place = (damage.file != 0) != !damage.name.empty();
        const int kinds = (damage.remove ? 1 : 0) + (damage.length ? 1 : 0) +
                          (damage.position && !damage.bytes.empty() ? 1 : 0) +
                          (damage.statement.empty() || damage.name.empty() ? 0 : 1);
        if (!has_place || kinds != 1) {
            document.fail(element, texts::kToolExpectedDamage);
        }
        damages.push_back(std::move(damage));
    });
    return damages;
}

/// Rows of the table of municipalities: code, and the columns of the row.
std::vector<Municipality> read_municipalities(const Document& document, const YAML::Node& node) {
    std::vector<Municipality> municipalities;
    document.each(node, [&](const std::string& code, const YAML::Node& /*key_node*/,
                            const YAML::Node& columns) {
        Municipality& row = municipalities.emplace_back();
        row.columns.emplace_back("CHIAVE", platform::from_utf8(code));
        document.each(columns, [&](const std::string& name, const YAML::Node& key_node,
                                   const YAML::Node& value) {
            const std::string column = municipal_column(name);
            if (column.empty()) {
                document.fail(key_node, texts::kToolCsvColumn, {name});
            }
            row.columns.emplace_back(column, municipal_value(column, document.utf8(value)));
        });
    });
    return municipalities;
}

/// What a run expects beside its employees.
void read_run(const Document& document, const YAML::Node& node, ScenarioRun& run) {
    if (node["attesi_lista"]) {
        run.expected_list = std::vector<std::string>();
        for (const std::string& line : document.list_of_texts(node["attesi_lista"])) {
            run.expected_list->push_back(platform::to_utf8(line));
        }
    }
    if (node["attesi_riquadri"]) {
        for (const std::string& text : document.list_of_texts(node["attesi_riquadri"])) {
            run.expected_boxes.push_back(platform::to_utf8(text));
        }
    }
    if (node["attesi_fissi"]) {
        run.expected_fixed = document.expected_fields(node["attesi_fissi"], Area::FISX);
    }
    if (node["attesi_ditta"]) {
        run.expected_company = document.expected_fields(node["attesi_ditta"], Area::DITX);
    }
    if (node["comuni"]) {
        run.municipalities = read_municipalities(document, node["comuni"]);
    }
    if (node["attesi_tabelle"]) {
        run.expected_tables = read_tables(document, node["attesi_tabelle"]);
    }
    if (node["risposte"]) {
        run.answers = read_answers(document, node["risposte"]);
    }
    if (node["uscita"]) {
        run.exit_status = document.whole(node["uscita"], 0, 255);
    }
}

/// Gives each employee of the list a record number: the one it names, else its place in the list.
void number_employees(const Document& document, Description& description) {
    std::vector<int> used;
    for (EmployeeEntry& employee : description.employees) {
        if (employee.record == 0) {
            employee.record = static_cast<int>(used.size()) + 1;
        }
        if (std::ranges::find(used, employee.record) != used.end()) {
            throw DocumentError(
                document.file(), employee.line,
                fill(texts::kToolDuplicateRecord, {std::to_string(employee.record)}));
        }
        used.push_back(employee.record);
    }
}

/// The expectations of the document as a whole belong to its only employee.
int only_employee(const Document& document, const YAML::Node& node,
                  const std::vector<EmployeeEntry>& employees) {
    if (employees.size() != 1) {
        document.fail(node, texts::kToolExpectedOneEmployee, {std::to_string(employees.size())});
    }
    return employees.front().record;
}

ScenarioRun read_first_run(const Document& document, Description& description) {
    const YAML::Node& root = document.root();
    ScenarioRun run;
    run.period = *description.period;
    std::vector<ExpectedEmployee> expected;
    if (const YAML::Node employees = root["dipendente"]) {
        document.each_of(employees, [&](const YAML::Node& element) {
            description.employees.push_back(
                read_employee(document, element, joined({kExpectedKeys, kExpectedOfAllRuns})));
            expected.push_back(read_expected(document, element));
        });
    } else {
        description.employees.emplace_back();
        expected.emplace_back();
    }
    number_employees(document, description);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        run.expected[description.employees[i].record] = std::move(expected[i]);
    }
    if (has_expectations(root)) {
        const int record = only_employee(document, root, description.employees);
        run.expected[record] = read_expected(document, root);
    }
    read_run(document, root, run);
    return run;
}

ScenarioRun read_later_run(const Document& document, const YAML::Node& node,
                           const Description& description) {
    document.expect_keys(node, joined({kDescriptionKeys, kRunKeys, kExpectedKeys, {"apri_anno"}}));
    ScenarioRun run;
    if (!node["periodo"]) {
        document.fail(node, texts::kToolExpectedTitle, {"periodo"});
    }
    run.tables = read_description(document, node);
    run.period = *run.tables.period;
    if (node["apri_anno"]) {
        run.opens_year = document.whole(node["apri_anno"], kFirstOpenedYear, kLastOpenedYear);
    }
    if (const YAML::Node employees = node["dipendente"]) {
        document.each_of(employees, [&](const YAML::Node& element) {
            EmployeeEntry change = read_employee(document, element, kExpectedKeys);
            if (change.record == 0) {
                change.record = only_employee(document, element, description.employees);
            }
            if (std::ranges::find(description.employees, change.record, &EmployeeEntry::record) ==
                description.employees.end()) {
                document.fail(element, texts::kToolExpectedRunEmployee,
                              {std::to_string(change.record)});
            }
            run.expected[change.record] = read_expected(document, element);
            run.changes[change.record] = std::move(change);
        });
    }
    if (has_expectations(node)) {
        run.expected[only_employee(document, node, description.employees)] =
            read_expected(document, node);
    }
    read_run(document, node, run);
    return run;
}

std::map<std::string, std::string> read_without_identity(const Document& document,
                                                         const YAML::Node& node) {
    std::map<std::string, std::string> reasons;
    document.each(
        node, [&](const std::string& name, const YAML::Node& key_node, const YAML::Node& reason) {
            if (!is_identity(name) || document.utf8(reason).empty()) {
                document.fail(key_node, texts::kToolExpectedReason);
            }
            reasons[name] = document.utf8(reason);
        });
    return reasons;
}

}  // namespace

Scenario read_scenario(const std::string& file) {
    return read_scenario(Document(file));
}

Scenario read_scenario(const Document& document) {
    const YAML::Node& root = document.root();
    document.expect_keys(root, joined({kScenarioKeys, kDescriptionKeys, kRunKeys, kExpectedKeys,
                                       kExpectedOfAllRuns}));
    for (const char* needed : {"titolo", "periodo"}) {
        if (!root[needed]) {
            document.fail(root, texts::kToolExpectedTitle, {needed});
        }
    }
    Scenario scenario;
    scenario.file = document.file();
    scenario.title = document.utf8(root["titolo"]);
    scenario.description = read_description(document);
    if (root["archivi"]) {
        scenario.archives = document.list_of_texts(root["archivi"]);
    }
    if (root["danni"]) {
        scenario.damages = read_damages(document, root["danni"]);
    }
    if (root["senza_identita"]) {
        scenario.without_identity = read_without_identity(document, root["senza_identita"]);
    }
    scenario.runs.push_back(read_first_run(document, scenario.description));
    if (const YAML::Node later = root["corse"]) {
        document.each_of(later, [&](const YAML::Node& element) {
            scenario.runs.push_back(read_later_run(document, element, scenario.description));
        });
    }
    return scenario;
}

}  // namespace nzutil
