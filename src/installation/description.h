#pragma once
// What a document says about an installation: yearly tables, companies, sectors, contracts, pay
// items, employees. The demo's data and the scenarios share this syntax (docs/manuale.md).

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "installation/document.h"
#include "installation/installation.h"

namespace nzutil {

inline constexpr int kSlipLines = 100;       ///< lines of a slip
inline constexpr int kFormulaCells = 100;    ///< cells of an item's formula
inline constexpr int kBracketRecords = 10;   ///< brackets of a table of income tax
inline constexpr int kRegionalBrackets = 5;  ///< brackets of a region
inline constexpr int kLeavingItem = 320;     ///< pay item whose quantity is the leaving date

/// Record 1 of file 6: date ddmmyyyy and run kind.
struct PeriodEntry {
    std::string date;
    char kind = '4';
};

struct RecordEntry {
    int record = 0;  ///< 0: the record that the installation's first company or sector has
    FieldValues fields;
};

struct GradeEntry {
    int record = 0;
    FieldValues header;                 ///< fields of the contract as a whole
    std::map<int, FieldValues> grades;  ///< fields of each grade
    int employee_grade = 0;  ///< grade named by `livello`: the employees' own, unless they name one
};

struct ItemEntry {
    int code = 0;
    FieldValues fields;
    std::optional<std::vector<std::string>> formula;  ///< cells of operator and operand
};

/// One line of a slip, as typed: quantity with two decimals and rate with five.
struct SlipLineEntry {
    int item = 0;
    std::string quantity = "0";
    std::string rate = "0";
    std::string raw;  ///< the 35 characters themselves, for damaged lines
};

struct EmployeeEntry {
    int record = 0;   ///< 0: place in the list
    int company = 0;  ///< 0: the first company of the installation
    int line = 0;
    FieldValues fields;
    std::optional<std::vector<SlipLineEntry>> lines;
    FieldValues months;
    FieldValues certificate;
    std::optional<FieldValues> before;  ///< fields as they stood before a calculation on file
};

/// Limit of the bracket and its rate in percent.
struct BracketEntry {
    std::string limit;
    std::string rate;
};

struct RegionEntry {
    std::string code;
    std::vector<BracketEntry> brackets;
};

struct Description {
    std::optional<PeriodEntry> period;
    std::optional<int> year;  ///< whose own tables come before all that the document names
    FieldValues fixed;
    std::vector<RecordEntry> companies;
    std::vector<RecordEntry> sectors;
    std::vector<RecordEntry> funds;
    std::vector<GradeEntry> contracts;
    std::vector<ItemEntry> items;
    std::optional<std::vector<BracketEntry>> brackets;
    std::optional<std::vector<BracketEntry>> severance_brackets;
    std::optional<std::vector<RegionEntry>> regions;
    std::vector<EmployeeEntry> employees;
    FieldValues months;  ///< of the employees that give none of their own
    std::map<int, std::vector<std::string>> tables;  ///< records or lines of any other file
    std::optional<std::string> installation_name;
    std::optional<std::string> installation_tax_code;
};

// Sections of a document that describe the installation; a scenario adds its own.
inline const Keys kDescriptionKeys{
    "anno",      "periodo",       "fissi",   "ditta", "settore",    "fondo",   "contratto", "voci",
    "scaglioni", "scaglioni_tfr", "regioni", "mesi",  "dipendente", "tabelle", "utente"};

/// Reads the sections of the installation, but for its employees: those of the document, or of a
/// map in it.
[[nodiscard]] Description read_description(const Document& document);
[[nodiscard]] Description read_description(const Document& document, const YAML::Node& node);
/// One section each, for documents that repeat it.
/// Records or lines by logical file.
[[nodiscard]] std::map<int, std::vector<std::string>> read_tables(const Document& document,
                                                                  const YAML::Node& node);
[[nodiscard]] PeriodEntry read_period(const Document& document, const YAML::Node& node);
/// Kind of a run: a digit, 0 for an additional payment.
[[nodiscard]] bool is_run_kind(std::string_view text);
/// `other_keys`: what else may stand in the employee's map.
[[nodiscard]] EmployeeEntry read_employee(const Document& document, const YAML::Node& node,
                                          const Keys& other_keys);

/// Records of an employee that others start from.
struct EmployeeModel {
    std::string record;
    std::string months;
};
[[nodiscard]] EmployeeModel model_employee(const Installation& installation);

/// Where an employee stands in the installation.
struct Placement {
    int company = 0;
    int record = 0;
};

/// Writes everything that the description says over what the installation holds; employees start
/// from `model`. The employees' places, in their order.
std::vector<Placement> apply(Installation& installation, const Description& description,
                             const EmployeeModel& model);
/// A later run of the same installation: what changes for an employee over his present records.
/// `description`: what changes beside the employees (its months, its contract and its fund are
/// theirs too); `named`: the fields that the employee has been given so far.
void change_employee(Installation& installation, const Description& description, int record,
                     const EmployeeEntry& change, const FieldValues& named);

/// The 35 characters of a line: mark, code, quantity, rate.
[[nodiscard]] std::string slip_line_text(const Installation& installation,
                                         const SlipLineEntry& line);

/// The employee's certificate by the index, as his code finds it; empty where there is none.
[[nodiscard]] std::string certificate_of(const Installation& installation, const std::string& code);

}  // namespace nzutil
