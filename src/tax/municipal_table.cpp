#include "tax/municipal_table.h"

#include "context/environment.h"
#include "context/trace.h"
#include "records/numbers.h"

namespace ModSWCALB {

MunicipalTable municipal_table;

namespace {

/// Null and a column that the table lacks are empty.
platform::Value column_or_empty(const char* column) {
    platform::Recordset& rows = *municipal_table.rows;
    return rows.has_field(column) ? rows.field(column) : platform::Value();
}

}  // namespace

platform::Table municipal_schema() {
    using platform::ColumnType;
    platform::Table table{"CATASTO",
                          {{"CHIAVE", ColumnType::key},
                           {"COMUNE", ColumnType::text},
                           {"ESENZIONE", ColumnType::amount}},
                          {"CHIAVE", {"CHIAVE"}, true}};
    for (const char* column : kLimitColumns) {
        table.columns.push_back({column, ColumnType::amount});
    }
    for (const char* column : kRateColumns) {
        table.columns.push_back({column, ColumnType::amount});
    }
    table.columns.push_back({"TIPOCALCOLO", ColumnType::text});
    return table;
}

void TABCOM() {
    MXLIBRERIA::TRACCIA("TABCOM");
    close_TABCOM();
    municipal_table.archive = platform::open_database(MXLIBRERIA::archive_path("\\TABCOM.MDB"),
                                                      platform::DatabaseMode::read_only);
    const platform::Table schema = municipal_schema();
    municipal_table.rows = municipal_table.archive->open_table(schema.name);
    municipal_table.rows->set_index(schema.index);
}

void close_TABCOM() {
    municipal_table.rows.reset();
    municipal_table.archive.reset();
}

std::optional<MunicipalRates> municipal_rates(const std::string& code) {
    if (!municipal_table.rows || code.empty()) {
        return std::nullopt;
    }
    municipal_table.rows->seek({platform::Value(code)});
    if (municipal_table.rows->no_match()) {
        return std::nullopt;
    }
    MunicipalRates rates;
    for (std::size_t i = kMunicipalBands; i-- > 0;) {
        rates.bands[i].limit = column_or_empty(kLimitColumns[i]).number();
    }
    for (std::size_t i = kMunicipalBands; i-- > 0;) {
        rates.bands[i].rate = column_or_empty(kRateColumns[i]).number();
    }
    rates.exempt_up_to = column_or_empty("ESENZIONE").number();
    rates.kind = MXREPOSITORY::rifila(column_or_empty("TIPOCALCOLO").text());
    return rates;
}

}  // namespace ModSWCALB
