// From a document to what it says of an installation.

#include <algorithm>
#include <functional>

#include "installation/description.h"
#include "installation/field_value.h"
#include "installation/years.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

using MXREPOSITORY::Area;
using MXREPOSITORY::Descriptor;

constexpr std::size_t kCellWidth = 11;
constexpr std::size_t kLineWidth = 35;
constexpr int kLargestItem = 998;

constexpr double kClosingLimit = 999999.99;  ///< of the bracket without a limit
constexpr double kHighestRate = 99.9;        ///< percent

/// How a table holds its brackets.
struct BracketForm {
    int most;
    int rate_decimals;
};
constexpr BracketForm kTaxForm{kBracketRecords, 1};
constexpr BracketForm kRegionForm{kRegionalBrackets, 2};

BracketEntry read_bracket(const Document& document, const YAML::Node& pair,
                          const BracketForm& form) {
    if (!pair.IsSequence() || pair.size() != 2) {
        document.fail(pair, texts::kToolExpectedBrackets);
    }
    BracketEntry bracket{document.number(pair[0], 2), document.number(pair[1], form.rate_decimals)};
    const double rate = MXREPOSITORY::valore(bracket.rate);
    if (rate < 0 || rate > kHighestRate) {
        document.fail(pair[1], texts::kToolExpectedRate, {bracket.rate});
    }
    return bracket;
}

/// Limits rise, and the last bracket has none: the search for a bracket ends there.
std::vector<BracketEntry> read_brackets(const Document& document, const YAML::Node& node,
                                        const BracketForm& form) {
    if (!node.IsSequence()) {
        document.fail(node, texts::kToolExpectedBrackets);
    }
    if (static_cast<int>(node.size()) > form.most) {
        document.fail(node, texts::kToolExpectedFewBrackets, {std::to_string(form.most)});
    }
    std::vector<BracketEntry> brackets;
    double former = 0;
    for (const YAML::Node& pair : node) {
        brackets.push_back(read_bracket(document, pair, form));
        const double limit = MXREPOSITORY::valore(brackets.back().limit);
        if (limit <= former) {
            document.fail(pair, texts::kToolExpectedRising, {brackets.back().limit});
        }
        former = limit;
    }
    if (former != kClosingLimit) {
        document.fail(node, texts::kToolExpectedClosing);
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
            regions.push_back({code, read_brackets(document, brackets, kRegionForm)});
        });
    return regions;
}

int read_year(const Document& document, const YAML::Node& node) {
    const std::vector<int> years = years_with_tables();
    const int year = document.whole(node, 1900, 2999);
    if (std::ranges::find(years, year) == years.end()) {
        std::string list;
        for (const int known : years) {
            list += (list.empty() ? "" : ", ") + std::to_string(known);
        }
        document.fail(node, texts::kToolExpectedYear, {list, std::to_string(year)});
    }
    return year;
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
    std::vector<std::string> cells = document.list_of_texts(node);
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

/// The leaving date stands in the quantity of its item: a day of the calendar, or none.
void check_leaving_date(const Document& document, const YAML::Node& node,
                        const std::string& quantity) {
    const double digits = MXREPOSITORY::valore(quantity);
    if (digits != 0 &&
        !is_date(MXREPOSITORY::zeri_a_sinistra(MXREPOSITORY::testo_numero(digits), 8))) {
        document.fail(node, texts::kToolExpectedRealDate, {quantity});
    }
}

SlipLineEntry read_line(const Document& document, const YAML::Node& node) {
    document.expect_keys(node, {"voce", "quantita", "valore", "testo"});
    SlipLineEntry line;
    if (const YAML::Node raw = node["testo"]) {
        line.raw = document.text(raw);
        if (line.raw.size() > kLineWidth) {
            document.fail(raw, texts::kToolExpectedLength, {std::to_string(kLineWidth)});
        }
    } else if (!node["voce"]) {
        document.fail(node, texts::kToolExpectedItem);
    } else {
        line.item = document.whole(node["voce"], 0, 999);
    }
    if (const YAML::Node quantity = node["quantita"]) {
        line.quantity = document.number(quantity, 2);
        if (line.item == kLeavingItem) {
            check_leaving_date(document, quantity, line.quantity);
        }
    }
    if (const YAML::Node rate = node["valore"]) {
        line.rate = document.number(rate, 5);
    }
    return line;
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
        lines.push_back(read_line(document, element));
    }
    return lines;
}

}  // namespace

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

bool is_run_kind(std::string_view text) {
    return text.size() == 1 && text.front() >= '0' && text.front() <= '9';
}

PeriodEntry read_period(const Document& document, const YAML::Node& node) {
    document.expect_keys(node, {"data", "tipo"});
    PeriodEntry period;
    if (!node["data"]) {
        document.fail(node, texts::kToolExpectedDate, {""});
    }
    period.date = document.text(node["data"]);
    if (period.date.size() != 8 ||
        period.date.find_first_not_of("0123456789") != std::string::npos) {
        document.fail(node["data"], texts::kToolExpectedDate, {period.date});
    }
    if (!is_date(period.date)) {
        document.fail(node["data"], texts::kToolExpectedRealDate, {period.date});
    }
    if (const YAML::Node kind = node["tipo"]) {
        const std::string text = document.text(kind);
        if (!is_run_kind(text)) {
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
                document.fail_unknown_key(
                    node, key_node, "record, ditta, campi, righe, mesi, certificazione, immagine");
            }
        });
    return employee;
}

Description read_description(const Document& document) {
    return read_description(document, document.root());
}

Description read_description(const Document& document, const YAML::Node& map) {
    Description result;
    const auto section = [&](const char* key, const auto& read) {
        if (const YAML::Node node = map[key]) {
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
    section("anno", [&](const YAML::Node& n) { result.year = read_year(document, n); });
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
            [&](const YAML::Node& n) { result.brackets = read_brackets(document, n, kTaxForm); });
    section("scaglioni_tfr", [&](const YAML::Node& n) {
        result.severance_brackets = read_brackets(document, n, kTaxForm);
    });
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

}  // namespace nzutil
