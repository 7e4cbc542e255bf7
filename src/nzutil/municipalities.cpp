#include "nzutil/municipalities.h"

#include <algorithm>
#include <set>

#include "installation/demo.h"
#include "installation/tool_error.h"
#include "platform/code_page.h"
#include "platform/disk_names.h"
#include "platform/file_system.h"
#include "records/numbers.h"
#include "tax/municipal_table.h"

namespace nzutil {

namespace {

constexpr const char* kKey = "CHIAVE";
constexpr std::size_t kCodeWidth = 4;

bool same_name(std::string_view a, std::string_view b) {
    return std::ranges::equal(
        a, b, [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

/// The cells of a line; one in quotation marks may hold the separator, and two marks stand for one.
std::vector<std::string> cells_of(const std::string& line, char separator) {
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            const bool doubled = quoted && i + 1 < line.size() && line[i + 1] == '"';
            if (doubled) {
                cells.back() += line[++i];
            } else {
                quoted = !quoted;
            }
        } else if (line[i] == separator && !quoted) {
            cells.emplace_back();
        } else {
            cells.back() += line[i];
        }
    }
    return cells;
}

class CsvError : public ToolError {
  public:
    CsvError(const std::string& file, std::size_t line, const std::string& text)
        : ToolError(file + ":" + std::to_string(line) + ": " + text) {}
};

std::vector<std::string> columns_of(const std::string& file,
                                    const std::vector<std::string>& names) {
    std::vector<std::string> columns;
    for (const std::string& name : names) {
        columns.push_back(municipal_column(MXREPOSITORY::rifila(name)));
        if (columns.back().empty()) {
            throw CsvError(file, 1, fill(texts::kToolCsvColumn, {name}));
        }
    }
    if (std::ranges::find(columns, kKey) == columns.end()) {
        throw CsvError(file, 1, fill(texts::kToolCsvNoKey, {kKey}));
    }
    return columns;
}

double amount_in(const Municipality& row, std::string_view column) {
    const auto found =
        std::ranges::find(row.columns, column, [](const auto& entry) { return entry.first; });
    return found == row.columns.end() ? 0 : found->second.number();
}

/// A rate without a limit would never be applied, and limits that do not rise leave bands out.
void refuse_wrong_bands(const Municipality& row) {
    double former = 0;
    bool ended = false;
    for (std::size_t i = 0; i < ModSWCALB::kMunicipalBands; ++i) {
        const std::string limit_column = ModSWCALB::kLimitColumns[i];
        const double limit = amount_in(row, limit_column);
        if (limit == 0) {
            if (amount_in(row, ModSWCALB::kRateColumns[i]) != 0) {
                throw ToolError(texts::kToolCsvNoLimit, {ModSWCALB::kRateColumns[i], limit_column});
            }
            ended = true;
            continue;
        }
        if (ended || limit <= former) {
            throw ToolError(texts::kToolCsvLimits, {limit_column});
        }
        former = limit;
    }
}

Municipality municipality_of(const std::vector<std::string>& columns,
                             const std::vector<std::string>& cells) {
    if (cells.size() != columns.size()) {
        throw ToolError(texts::kToolCsvCells,
                        {std::to_string(columns.size()), std::to_string(cells.size())});
    }
    Municipality row;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        row.columns.emplace_back(columns[i], municipal_value(columns[i], cells[i]));
    }
    if (row.code().size() != kCodeWidth) {
        throw ToolError(texts::kToolCsvCode, {row.code()});
    }
    refuse_wrong_bands(row);
    return row;
}

}  // namespace

std::string Municipality::code() const {
    const auto key =
        std::ranges::find(columns, kKey, [](const auto& entry) { return entry.first; });
    return key == columns.end() ? std::string() : key->second.text();
}

std::string municipal_column(std::string_view name) {
    for (const platform::Column& column : ModSWCALB::municipal_schema().columns) {
        if (same_name(column.name, name)) {
            return column.name;
        }
    }
    return {};
}

platform::Value municipal_value(const std::string& column, const std::string& typed) {
    const std::string text = MXREPOSITORY::rifila(typed);
    if (text.empty()) {
        return {};
    }
    const platform::Table schema = ModSWCALB::municipal_schema();
    const auto found = std::ranges::find(schema.columns, column, &platform::Column::name);
    if (found == schema.columns.end() || found->type != platform::ColumnType::amount) {
        return platform::from_utf8(text);
    }
    std::string number = text;
    std::ranges::replace(number, ',', '.');
    const bool digits = number.find_first_not_of("0123456789.") == std::string::npos;
    if (!digits || std::ranges::count(number, '.') > 1) {
        throw ToolError(texts::kToolCsvNumber, {column, text});
    }
    return MXREPOSITORY::valore(number);
}

std::vector<Municipality> read_municipalities(const std::string& csv) {
    std::vector<std::string> lines;
    try {
        lines = platform::read_lines(csv);
    } catch (const std::exception&) {
        throw ToolError(texts::kToolCannotRead, {csv});
    }
    if (lines.empty()) {
        throw CsvError(csv, 1, fill(texts::kToolCsvNoKey, {kKey}));
    }
    constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
    if (lines.front().starts_with(kByteOrderMark)) {
        lines.front().erase(0, kByteOrderMark.size());
    }
    const char separator = lines.front().find(';') != std::string::npos ? ';' : ',';
    const std::vector<std::string> columns = columns_of(csv, cells_of(lines.front(), separator));
    std::vector<Municipality> rows;
    std::set<std::string> codes;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (MXREPOSITORY::rifila(lines[i]).empty()) {
            continue;
        }
        try {
            rows.push_back(municipality_of(columns, cells_of(lines[i], separator)));
        } catch (const ToolError& error) {
            throw CsvError(csv, i + 1, error.what());
        }
        if (!codes.insert(rows.back().code()).second) {
            throw CsvError(csv, i + 1, fill(texts::kToolCsvTwice, {rows.back().code()}));
        }
    }
    return rows;
}

void write_municipalities(const std::string& archive_directory,
                          const std::vector<Municipality>& municipalities) {
    const std::string path = archive_directory + "/TABCOM.MDB";
    const platform::Table schema = ModSWCALB::municipal_schema();
    if (!platform::files().exists(path)) {
        platform::create_database(path, {&schema, 1});
    }
    const auto archive = platform::open_database(path, platform::DatabaseMode::read_write);
    const auto rows = archive->open_table(schema.name);
    rows->set_index(schema.index);
    platform::Transaction transaction(*archive);
    for (const Municipality& municipality : municipalities) {
        rows->seek({municipality.code()});
        if (!rows->no_match()) {
            rows->remove();
        }
        rows->add();
        for (const auto& [column, value] : municipality.columns) {
            rows->set_field(column, value);
        }
        rows->update();
    }
    transaction.commit();
}

std::vector<Municipality> demo_municipalities() {
    return read_municipalities(demo_directory() + "/comuni.csv");
}

}  // namespace nzutil
