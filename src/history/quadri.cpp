#include "history/quadri.h"

#include "context/environment.h"
#include "context/period.h"
#include "context/utilities.h"

namespace NZRetMesINPDAP {

using MXLIBRERIA::ESISTEFILE;
using MXLIBRERIA::kTrue;

Quadri quadri;

namespace {

/// A quadro by employee and period.
platform::Table quadro(const char* name) {
    using platform::ColumnType;
    return {name,
            {{"KDIPENDENTE", ColumnType::key},
             {"KPERIODO", ColumnType::key},
             {"KTIPOELAB", ColumnType::key}},
            {"CHIAVE", {"KDIPENDENTE", "KPERIODO"}, false}};
}

}  // namespace

std::vector<platform::Table> quadri_schema() {
    using platform::ColumnType;
    constexpr int kColumnsOfD0 = 22;
    platform::Table d0 = quadro("QUADROD0");
    for (const char* column : {"CODAZI", "CFAZI", "POSINPSAZI"}) {
        d0.columns.push_back({column, ColumnType::text});
    }
    for (int number = 1; number <= kColumnsOfD0; ++number) {
        d0.columns.push_back({"D0_" + std::to_string(number), ColumnType::text});
    }
    platform::Table company{
        "QUADROZ2",
        {{"KAZI", ColumnType::key}, {"KPERIODO", ColumnType::key}, {"KTIPOELAB", ColumnType::key}},
        {"CHIAVE", {"KAZI", "KPERIODO"}, false}};
    return {d0,     quadro("QUADROE0"), quadro("QUADROE1"), quadro("QUADROV1"), quadro("QUADROF1"),
            company};
}

std::string archive_name(const std::string& year) {
    return MXLIBRERIA::archive_path("\\NZINPD" + year + ".MDB");
}

void prepare_name() {
    quadri.path = archive_name(MXLIBRERIA::period.year_text());
}

bool archive_exists() {
    return !quadri.path.empty() && ESISTEFILE(quadri.path) == kTrue;
}

// Filled when the room of the public-sector quadri is built; each does nothing yet.

void open_archive() {}

void close_archive() {}

void update_declaration() {}

}  // namespace NZRetMesINPDAP
