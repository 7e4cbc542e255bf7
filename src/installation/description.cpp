// From what a document says to the records of an installation.

#include "installation/description.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "files/isam.h"
#include "installation/field_value.h"
#include "installation/years.h"
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

constexpr std::string_view kNoMoreLines = " 999";

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

/// Companies take the number that T001 gives them, else that of the selection's first; what they
/// leave open is as in company 1.
std::vector<int> apply_companies(Installation& installation, const Description& description) {
    const std::vector<std::pair<int, int>> selection = installation.read_selection();
    std::vector<int> numbers;
    for (const RecordEntry& company : description.companies) {
        int number = company.record;
        if (const FieldValue* given = value_of(company.fields, MXREPOSITORY::T001)) {
            number = static_cast<int>(MXREPOSITORY::valore(given->value));
        } else if (number == 0 && !selection.empty()) {
            number = selection.front().first;
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

/// Employees who name no contract or fund of their own (`named`) are under the one that the
/// document names, a fund only where there is one employee.
void join_contract_and_fund(const Description& description, const FieldValues& named, bool alone,
                            std::string& record) {
    if (!description.contracts.empty() && description.contracts.back().employee_grade != 0 &&
        value_of(named, MXREPOSITORY::P331) == nullptr) {
        const GradeEntry& contract = description.contracts.back();
        store(MXREPOSITORY::P331, 0, std::to_string(contract.record), record);
        if (value_of(named, MXREPOSITORY::P332) == nullptr) {
            store(MXREPOSITORY::P332, 0, std::to_string(contract.employee_grade), record);
        }
    }
    if (!description.funds.empty() && !description.funds.back().fields.empty() && alone &&
        value_of(named, MXREPOSITORY::P401) == nullptr) {
        store(MXREPOSITORY::P401, 0, std::to_string(std::max(description.funds.back().record, 1)),
              record);
    }
}

/// P001 of an employee who names none: company in 3 digits, record number in 7.
std::string default_code(const Placement& place) {
    return MXREPOSITORY::zeri_a_sinistra(std::to_string(place.company), 3) +
           MXREPOSITORY::zeri_a_sinistra(std::to_string(place.record), 7);
}

/// Writes the employee over `record` and `months`, with what else the document says of him.
void write_employee_files(Installation& installation, const Description& description,
                          const EmployeeEntry& employee, int number, std::string record,
                          std::string months) {
    store_all(employee.fields, record);
    if (employee.lines) {
        store_slip_lines(installation, *employee.lines, record);
    }
    installation.write(kEmployees, number, record);

    store_all(description.months, months);
    store_all(employee.months, months);
    installation.write(kTwelveMonths, number, months);

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

void write_employee(Installation& installation, const Description& description,
                    const EmployeeEntry& employee, const Placement& place,
                    const EmployeeModel& model) {
    std::string record = model.record;
    store(MXREPOSITORY::P001, 0, default_code(place), record);
    join_contract_and_fund(description, employee.fields, description.employees.size() == 1, record);
    write_employee_files(installation, description, employee, place.record, std::move(record),
                         model.months);
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
    if (description.year) {
        apply(installation, year_tables(*description.year), model);
    }
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

void change_employee(Installation& installation, const Description& description, int record,
                     const EmployeeEntry& change, const FieldValues& named) {
    std::string fields = record_or_empty(installation, kEmployees, record);
    join_contract_and_fund(description, named, installation.read_selection().size() == 1, fields);
    write_employee_files(installation, description, change, record, std::move(fields),
                         record_or_empty(installation, kTwelveMonths, record));
}

std::string certificate_of(const Installation& installation, const std::string& code) {
    if (installation.record_count(kCertificateIndex) == 0) {
        return {};
    }
    const double number = MXLIBRERIA::ISAM(kCertificateIndex, code, MXLIBRERIA::kIsamSearch, 0);
    return number > 0 ? installation.read(kCertificates, static_cast<int>(number)).value_or("")
                      : std::string();
}

}  // namespace nzutil
