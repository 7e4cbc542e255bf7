#include "installation/description.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "files/isam.h"
#include "installation/field_value.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Area;
using MXREPOSITORY::Descriptor;

constexpr int kSlipLines = 100;
constexpr int kFormulaCells = 100;
constexpr std::size_t kCellWidth = 11;
constexpr std::size_t kLineWidth = 35;
constexpr int kLargestItem = 998;
constexpr int kBracketRecords = 10;
constexpr std::string_view kNoMoreLines = " 999";

// ---- Reading ----

std::vector<BracketEntry> read_brackets(const Document& document, const YAML::Node& node) {
    if (!node.IsSequence()) {
        document.fail(node, texts::kToolExpectedBrackets);
    }
    std::vector<BracketEntry> brackets;
    for (const YAML::Node& pair : node) {
        if (!pair.IsSequence() || pair.size() != 2) {
            document.fail(pair, texts::kToolExpectedBrackets);
        }
        brackets.push_back({document.number(pair[0], 2), document.number(pair[1], 2)});
    }
    return brackets;
}

std::vector<RegionEntry> read_regions(const Document& document, const YAML::Node& node) {
    std::vector<RegionEntry> regions;
    document.each(
        node, [&](const std::string& code, const YAML::Node& key_node, const YAML::Node& brackets) {
            if (code.size() != 2) {
                document.fail(key_node, texts::kToolExpectedRegion, {code});
            }
            regions.push_back({code, read_brackets(document, brackets)});
            if (regions.back().brackets.size() > 5) {
                document.fail(brackets, texts::kToolExpectedFiveBrackets);
            }
        });
    return regions;
}

/// A record with its fields: {record: n, campi: {...}}, or the fields alone.
RecordEntry read_record(const Document& document, const YAML::Node& node, Area area) {
    RecordEntry entry;
    if (node.IsMap() && (node["campi"] || node["record"])) {
        document.expect_keys(node, {"record", "campi"});
        if (const YAML::Node record = node["record"]) {
            entry.record = document.whole(record, 1, 999);
        }
        if (const YAML::Node fields = node["campi"]) {
            entry.fields = document.fields(fields, area);
        }
        return entry;
    }
    entry.fields = document.fields(node, area);
    return entry;
}

bool belongs_to_grade(const Descriptor& field) {
    return MXREPOSITORY::SPOSTAMENTOOCCORRENZA(field, 2) != 0;
}

GradeEntry read_contract(const Document& document, const YAML::Node& node) {
    document.expect_keys(node, {"record", "livello", "campi", "livelli"});
    GradeEntry entry;
    entry.record = node["record"] ? document.whole(node["record"], 1, 999) : 1;
    const int grade = node["livello"] ? document.whole(node["livello"], 1, kGrades) : 1;
    if (const YAML::Node fields = node["campi"]) {
        for (FieldValue& value : document.fields(fields, Area::CONX)) {
            if (belongs_to_grade(value.field)) {
                entry.employee_grade = grade;
                entry.grades[value.occurrence != 0 ? value.occurrence : grade].push_back(value);
            } else {
                entry.header.push_back(value);
            }
        }
    }
    if (const YAML::Node grades = node["livelli"]) {
        document.each(grades, [&](const std::string& key, const YAML::Node& key_node,
                                  const YAML::Node& fields) {
            FieldValues& values = entry.grades[document.whole_key(key, key_node, 1, kGrades)];
            for (const FieldValue& value : document.fields(fields, Area::CONX)) {
                values.push_back(value);
            }
        });
    }
    return entry;
}

std::vector<std::string> read_formula(const Document& document, const YAML::Node& node) {
    const std::vector<std::string> cells = document.list_of_texts(node);
    if (cells.size() > kFormulaCells) {
        document.fail(node, texts::kToolExpectedCells);
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].empty() || cells[i].size() > kCellWidth) {
            document.fail(node[i], texts::kToolExpectedCell);
        }
    }
    return cells;
}

std::vector<ItemEntry> read_items(const Document& document, const YAML::Node& node) {
    std::vector<ItemEntry> items;
    document.each(node,
                  [&](const std::string& key, const YAML::Node& key_node, const YAML::Node& value) {
                      ItemEntry item;
                      item.code = document.whole_key(key, key_node, 1, kLargestItem);
                      item.fields = document.fields(value, Area::FOTX, {"formula"});
                      if (const YAML::Node formula = value["formula"]) {
                          item.formula = read_formula(document, formula);
                      }
                      items.push_back(std::move(item));
                  });
    return items;
}

std::vector<SlipLineEntry> read_lines(const Document& document, const YAML::Node& node) {
    if (!node.IsSequence()) {
        document.fail(node, texts::kToolExpectedList);
    }
    if (node.size() > kSlipLines) {
        document.fail(node, texts::kToolExpectedLines);
    }
    std::vector<SlipLineEntry> lines;
    for (const YAML::Node& element : node) {
        document.expect_keys(element, {"voce", "quantita", "valore", "testo"});
        SlipLineEntry line;
        if (const YAML::Node raw = element["testo"]) {
            line.raw = document.text(raw);
            if (line.raw.size() > kLineWidth) {
                document.fail(raw, texts::kToolExpectedLength, {std::to_string(kLineWidth)});
            }
        } else if (!element["voce"]) {
            document.fail(element, texts::kToolExpectedItem);
        } else {
            line.item = document.whole(element["voce"], 0, 999);
        }
        if (const YAML::Node quantity = element["quantita"]) {
            line.quantity = document.number(quantity, 2);
        }
        if (const YAML::Node rate = element["valore"]) {
            line.rate = document.number(rate, 5);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::map<int, std::vector<std::string>> read_tables(const Document& document,
                                                    const YAML::Node& node) {
    std::map<int, std::vector<std::string>> tables;
    document.each(node,
                  [&](const std::string& key, const YAML::Node& key_node, const YAML::Node& rows) {
                      const int file = document.whole_key(key, key_node, 1, 600);
                      tables[file] = document.list_of_texts(rows);
                  });
    return tables;
}

// ---- Writing ----

void store_all(const FieldValues& values, std::string& record) {
    for (const FieldValue& value : values) {
        if (value.occurrence > occurrences(value.field, record.size())) {
            throw ToolError(texts::kToolOccurrence,
                            {std::string(value.field.name()), std::to_string(value.occurrence)});
        }
        store(value.field, value.occurrence, value.value, record);
    }
}

std::string record_or_empty(const Installation& installation, int file, int record) {
    if (std::optional<std::string> present = installation.read(file, record)) {
        return *std::move(present);
    }
    return empty_record(Installation::area_of(file),
                        static_cast<std::size_t>(installation.record_length(file)));
}

/// The record of `record`, or a new one made from `origin` if that stands in the file.
std::string record_made_from(const Installation& installation, int file, int record, int origin) {
    if (record <= installation.record_count(file)) {
        return record_or_empty(installation, file, record);
    }
    return record_or_empty(installation, file, origin);
}

double field_number(const Descriptor& field, const std::string& record) {
    return MXREPOSITORY::LEGGICAMPONUM(field, 0, record);
}

const FieldValue* value_of(const FieldValues& values, const Descriptor& field) {
    const auto found = std::ranges::find(values, field, &FieldValue::field);
    return found == values.end() ? nullptr : &*found;
}

/// Companies take the number that T001 gives them; what they leave open is as in company 1.
std::vector<int> apply_companies(Installation& installation, const Description& description) {
    std::vector<int> numbers;
    for (const RecordEntry& company : description.companies) {
        int number = company.record;
        if (const FieldValue* given = value_of(company.fields, MXREPOSITORY::T001)) {
            number = static_cast<int>(MXREPOSITORY::valore(given->value));
        }
        number = std::max(number, 1);
        std::string record = record_made_from(installation, kCompanies, number, 1);
        store(MXREPOSITORY::T001, 0, std::to_string(number), record);
        store_all(company.fields, record);
        installation.write(kCompanies, number, record);
        numbers.push_back(number);
    }
    return numbers;
}

/// A sector without a number is that of the company; what it leaves open is as in sector 1.
void apply_sectors(Installation& installation, const Description& description, int company) {
    const std::string company_record = record_or_empty(installation, kCompanies, company);
    const int of_company = static_cast<int>(field_number(MXREPOSITORY::T067, company_record));
    for (const RecordEntry& sector : description.sectors) {
        const int number = std::max(sector.record != 0 ? sector.record : of_company, 1);
        std::string record = record_made_from(installation, kSectors, number, 1);
        store_all(sector.fields, record);
        installation.write(kSectors, number, record);
    }
    if (of_company > installation.record_count(kSectors) && description.sectors.empty() &&
        !description.companies.empty() && installation.record_count(kSectors) > 0) {
        installation.write(kSectors, of_company, record_or_empty(installation, kSectors, 1));
    }
}

void apply_contracts(Installation& installation, const Description& description) {
    for (const GradeEntry& contract : description.contracts) {
        std::string record = record_or_empty(installation, kContracts, contract.record);
        store(MXREPOSITORY::G500, 0, "0", record);
        store(MXREPOSITORY::G001, 0, std::to_string(contract.record), record);
        store_all(contract.header, record);
        for (const auto& [grade, values] : contract.grades) {
            for (const FieldValue& value : values) {
                store(value.field, grade, value.value, record);
            }
        }
        installation.write(kContracts, contract.record, record);
    }
}

void store_formula(const std::vector<std::string>& cells, std::string& record) {
    for (int i = 0; i < kFormulaCells; ++i) {
        const auto cell = static_cast<std::size_t>(i);
        // The cell after the last one is the end mark.
        const std::string_view text = cell < cells.size()    ? std::string_view(cells[cell])
                                      : cell == cells.size() ? std::string_view(".")
                                                             : std::string_view();
        store(MXREPOSITORY::dopo(MXREPOSITORY::Z051, i), 0, text, record);
    }
}

void apply_items(Installation& installation, const Description& description) {
    for (const ItemEntry& item : description.items) {
        std::string record = record_or_empty(installation, kPayItems, item.code);
        const bool is_new = field_number(MXREPOSITORY::Z049, record) == 99 ||
                            item.code > installation.record_count(kPayItems);
        if (is_new) {
            record = empty_record(Area::FOTX, record.size());
            store_formula({}, record);
        }
        store(MXREPOSITORY::Z001, 0, std::to_string(item.code), record);
        store_all(item.fields, record);
        if (item.formula) {
            store_formula(*item.formula, record);
        }
        installation.write(kPayItems, item.code, record);
    }
}

/// Limit in 9 characters, rate in tenths of a percent in 3; the last bracket fills the table.
std::vector<std::string> bracket_records(const std::vector<BracketEntry>& brackets) {
    std::vector<std::string> records;
    for (std::size_t i = 0; i < kBracketRecords && !brackets.empty(); ++i) {
        const BracketEntry& bracket = brackets[std::min(i, brackets.size() - 1)];
        const double limit = MXREPOSITORY::valore(bracket.limit);
        const double tenths = MXREPOSITORY::valore(bracket.rate) * 10;
        records.push_back(
            MXREPOSITORY::zeri_a_sinistra(MXREPOSITORY::arrotondato_testo(limit, 2), 9) +
            MXREPOSITORY::zeri_a_sinistra(MXREPOSITORY::testo_numero(std::round(tenths)), 3));
    }
    return records;
}

/// A line of the regional table: code, then limit in 11 characters and rate in 5 for each bracket.
std::string region_line(const RegionEntry& region) {
    std::string line = region.code;
    for (const BracketEntry& bracket : region.brackets) {
        const auto decimal = [](const std::string& text, std::size_t width) {
            return MXREPOSITORY::zeri_a_sinistra(
                MXREPOSITORY::arrotondato_testo(MXREPOSITORY::valore(text), 2), width);
        };
        line += decimal(bracket.limit, 11) + decimal(bracket.rate, 5);
    }
    return line;
}

void apply_tables(Installation& installation, const Description& description) {
    if (!description.fixed.empty()) {
        std::string record = record_or_empty(installation, kFixedData, 1);
        store_all(description.fixed, record);
        installation.write(kFixedData, 1, record);
    }
    if (description.brackets) {
        installation.write_all(kTaxBrackets, bracket_records(*description.brackets));
    }
    if (description.severance_brackets) {
        installation.write_all(kSeveranceBrackets,
                               bracket_records(*description.severance_brackets));
    }
    if (description.regions) {
        std::vector<std::string> lines;
        std::ranges::transform(*description.regions, std::back_inserter(lines), region_line);
        installation.write_lines(kRegions, lines);
    }
    for (const auto& [file, rows] : description.tables) {
        const FileLayout* layout = find_layout(file);
        if (layout != nullptr && layout->content == Content::text) {
            installation.write_lines(file, rows);
        } else {
            installation.write_all(file, rows);
        }
    }
}

void apply_funds(Installation& installation, const Description& description) {
    for (const RecordEntry& fund : description.funds) {
        const int number = std::max(fund.record, 1);
        std::string record = record_or_empty(installation, kPensionFunds, number);
        store_all(fund.fields, record);
        installation.write(kPensionFunds, number, record);
    }
}

void apply_user(Installation& installation, const Description& description) {
    if (!description.installation_name && !description.installation_tax_code) {
        return;
    }
    std::string record = record_or_empty(installation, kUser, 1);
    if (description.installation_name) {
        record.replace(0, 30, MXREPOSITORY::a_sinistra(*description.installation_name, 30));
    }
    if (description.installation_tax_code) {
        record.replace(30, 11, MXREPOSITORY::a_sinistra(*description.installation_tax_code, 11));
    }
    installation.write(kUser, 1, record);
    installation.write(kInstallation, 1, record_or_empty(installation, kInstallation, 1));
}

void store_slip_lines(const Installation& installation, const std::vector<SlipLineEntry>& lines,
                      std::string& record) {
    for (int i = 0; i < kSlipLines; ++i) {
        const auto line = static_cast<std::size_t>(i);
        const std::string text = line < lines.size()    ? slip_line_text(installation, lines[line])
                                 : line == lines.size() ? std::string(kNoMoreLines)
                                                        : std::string();
        store(MXREPOSITORY::dopo(MXREPOSITORY::Q401, i), 0, text, record);
    }
}

/// Writes a record that an index reaches by the employee's code: over the one that the code has, or
/// as a new one at the end.
void write_indexed(Installation& installation, int file, int index, const std::string& code,
                   const std::function<void(std::string& record)>& change) {
    // The index works on an open file.
    static_cast<void>(installation.record_count(index));
    const double found = MXLIBRERIA::ISAM(index, code, MXLIBRERIA::kIsamSearch, 0);
    const int number = found > 0 ? static_cast<int>(found) : installation.record_count(file) + 1;
    std::string record = record_or_empty(installation, file, number);
    change(record);
    installation.write(file, number, record);
    if (found <= 0) {
        MXLIBRERIA::ISAM(index, code, MXLIBRERIA::kIsamInsert, number);
    }
}

/// Employees who name no contract or fund of their own are under the one that the document names.
void join_contract_and_fund(const Description& description, const EmployeeEntry& employee,
                            std::string& record) {
    if (!description.contracts.empty() && description.contracts.back().employee_grade != 0 &&
        value_of(employee.fields, MXREPOSITORY::P331) == nullptr) {
        const GradeEntry& contract = description.contracts.back();
        store(MXREPOSITORY::P331, 0, std::to_string(contract.record), record);
        if (value_of(employee.fields, MXREPOSITORY::P332) == nullptr) {
            store(MXREPOSITORY::P332, 0, std::to_string(contract.employee_grade), record);
        }
    }
    if (!description.funds.empty() && !description.funds.back().fields.empty() &&
        description.employees.size() == 1 &&
        value_of(employee.fields, MXREPOSITORY::P401) == nullptr) {
        store(MXREPOSITORY::P401, 0, std::to_string(std::max(description.funds.back().record, 1)),
              record);
    }
}

/// P001 of an employee who names none: company in 3 digits, record number in 7.
std::string default_code(const Placement& place) {
    return MXREPOSITORY::zeri_a_sinistra(std::to_string(place.company), 3) +
           MXREPOSITORY::zeri_a_sinistra(std::to_string(place.record), 7);
}

void write_employee(Installation& installation, const Description& description,
                    const EmployeeEntry& employee, const Placement& place,
                    const EmployeeModel& model) {
    std::string record = model.record;
    store(MXREPOSITORY::P001, 0, default_code(place), record);
    join_contract_and_fund(description, employee, record);
    store_all(employee.fields, record);
    if (employee.lines) {
        store_slip_lines(installation, *employee.lines, record);
    }
    installation.write(kEmployees, place.record, record);

    std::string months = model.months;
    store_all(description.months, months);
    store_all(employee.months, months);
    installation.write(kTwelveMonths, place.record, months);

    const std::string code = MXREPOSITORY::LEGGICAMPO(MXREPOSITORY::P001, 0, record);
    if (!employee.certificate.empty()) {
        write_indexed(installation, kCertificates, kCertificateIndex, code,
                      [&](std::string& kept) { store_all(employee.certificate, kept); });
    }
    if (employee.before) {
        write_indexed(installation, kBeforeImages, kBeforeImageIndex, code, [&](std::string& kept) {
            kept = record;
            store_all(*employee.before, kept);
        });
    }
}

/// Company of the employees that name none: the document's first one, else that of the selection.
int company_of_document(const Installation& installation, const std::vector<int>& companies) {
    if (!companies.empty()) {
        return companies.front();
    }
    const std::vector<std::pair<int, int>> selection = installation.read_selection();
    return selection.empty() ? 1 : selection.front().first;
}

}  // namespace

PeriodEntry read_period(const Document& document, const YAML::Node& node) {
    document.expect_keys(node, {"data", "tipo"});
    PeriodEntry period;
    if (!node["data"]) {
        document.fail(node, texts::kToolExpectedDate, {""});
    }
    period.date = document.text(node["data"]);
    const bool digits =
        std::ranges::all_of(period.date, [](char c) { return c >= '0' && c <= '9'; });
    if (period.date.size() != 8 || !digits) {
        document.fail(node["data"], texts::kToolExpectedDate, {period.date});
    }
    if (const YAML::Node kind = node["tipo"]) {
        const std::string text = document.text(kind);
        if (text.size() != 1) {
            document.fail(kind, texts::kToolExpectedKind, {text});
        }
        period.kind = text.front();
    }
    return period;
}

EmployeeEntry read_employee(const Document& document, const YAML::Node& node,
                            const Keys& other_keys) {
    EmployeeEntry employee;
    employee.line = Document::line(node);
    document.each(
        node, [&](const std::string& key, const YAML::Node& key_node, const YAML::Node& value) {
            if (key == "record") {
                employee.record = document.whole(value, 1, 9999);
            } else if (key == "ditta") {
                employee.company = document.whole(value, 1, 999);
            } else if (key == "campi") {
                employee.fields = document.fields(value, Area::DIPX);
            } else if (key == "righe") {
                employee.lines = read_lines(document, value);
            } else if (key == "mesi") {
                employee.months = document.fields(value, Area::DICX);
            } else if (key == "immagine") {
                employee.before = document.fields(value, Area::DIPX);
            } else if (key == "certificazione") {
                employee.certificate = document.fields(value, Area::CUDX);
            } else if (std::ranges::find(other_keys, key) == other_keys.end()) {
                document.fail(key_node, texts::kToolExpectedKey,
                              {"record, ditta, campi, righe, mesi, certificazione, immagine", key});
            }
        });
    return employee;
}

Description read_description(const Document& document) {
    Description result;
    const YAML::Node& root = document.root();
    const auto section = [&](const char* key, const auto& read) {
        if (const YAML::Node node = root[key]) {
            read(node);
        }
    };
    const auto records = [&](std::vector<RecordEntry>& list, Area area) {
        return [&document, &list, area](const YAML::Node& node) {
            document.each_of(node, [&](const YAML::Node& element) {
                list.push_back(read_record(document, element, area));
            });
        };
    };
    section("periodo", [&](const YAML::Node& n) { result.period = read_period(document, n); });
    section("fissi", [&](const YAML::Node& n) { result.fixed = document.fields(n, Area::FISX); });
    section("ditta", records(result.companies, Area::DITX));
    section("settore", records(result.sectors, Area::SETX));
    section("fondo", records(result.funds, Area::FOPX));
    section("contratto", [&](const YAML::Node& n) {
        document.each_of(n, [&](const YAML::Node& element) {
            result.contracts.push_back(read_contract(document, element));
        });
    });
    section("voci", [&](const YAML::Node& n) { result.items = read_items(document, n); });
    section("scaglioni",
            [&](const YAML::Node& n) { result.brackets = read_brackets(document, n); });
    section("scaglioni_tfr",
            [&](const YAML::Node& n) { result.severance_brackets = read_brackets(document, n); });
    section("regioni", [&](const YAML::Node& n) { result.regions = read_regions(document, n); });
    section("mesi", [&](const YAML::Node& n) { result.months = document.fields(n, Area::DICX); });
    section("tabelle", [&](const YAML::Node& n) { result.tables = read_tables(document, n); });
    section("utente", [&](const YAML::Node& n) {
        document.expect_keys(n, {"nome", "codice_fiscale"});
        if (n["nome"]) {
            result.installation_name = document.text(n["nome"]);
        }
        if (n["codice_fiscale"]) {
            result.installation_tax_code = document.text(n["codice_fiscale"]);
        }
    });
    return result;
}

EmployeeModel model_employee(const Installation& installation) {
    return {record_or_empty(installation, kEmployees, 1),
            record_or_empty(installation, kTwelveMonths, 1)};
}

std::string slip_line_text(const Installation& installation, const SlipLineEntry& line) {
    if (!line.raw.empty()) {
        return line.raw;
    }
    const std::optional<std::string> item =
        line.item == 0 ? std::nullopt : installation.read(kPayItems, line.item);
    // An item of plain quantities holds the number itself, not its hundredths.
    const bool plain = item && field_number(MXREPOSITORY::Z016, *item) == 7;
    const auto scaled = [](const std::string& typed, double scale) {
        const double number = std::round(MXREPOSITORY::valore(typed) * scale);
        std::string digits =
            MXREPOSITORY::zeri_a_sinistra(MXREPOSITORY::testo_numero(std::fabs(number)), 13);
        if (number < 0) {
            digits.front() = '-';
        }
        return digits;
    };
    return " " + MXREPOSITORY::zeri_a_sinistra(std::to_string(line.item), 3) +
           scaled(line.quantity, plain ? 1 : 100) + scaled(line.rate, 100000);
}

std::vector<Placement> apply(Installation& installation, const Description& description,
                             const EmployeeModel& model) {
    apply_user(installation, description);
    apply_tables(installation, description);
    const std::vector<int> companies = apply_companies(installation, description);
    const int company = company_of_document(installation, companies);
    apply_sectors(installation, description, company);
    apply_contracts(installation, description);
    apply_items(installation, description);
    apply_funds(installation, description);

    std::vector<Placement> places;
    std::vector<std::pair<int, int>> selection;
    for (const EmployeeEntry& employee : description.employees) {
        Placement place{
            .company = employee.company != 0 ? employee.company : company,
            .record = employee.record != 0 ? employee.record : static_cast<int>(places.size()) + 1};
        write_employee(installation, description, employee, place, model);
        places.push_back(place);
        selection.emplace_back(place.company, place.record);
    }
    if (!selection.empty()) {
        installation.write_selection(selection);
    }
    if (description.period) {
        installation.write_period(description.period->date, description.period->kind);
    }
    return places;
}

void apply_to_employee(Installation& installation, int record, const EmployeeEntry& employee) {
    std::string fields = record_or_empty(installation, kEmployees, record);
    store_all(employee.fields, fields);
    if (employee.lines) {
        store_slip_lines(installation, *employee.lines, fields);
    }
    installation.write(kEmployees, record, fields);
    if (!employee.months.empty()) {
        std::string months = record_or_empty(installation, kTwelveMonths, record);
        store_all(employee.months, months);
        installation.write(kTwelveMonths, record, months);
    }
}

}  // namespace nzutil
