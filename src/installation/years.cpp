#include "installation/years.h"

#include <algorithm>
#include <filesystem>

#include "installation/demo.h"
#include "installation/document.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;

/// What a year brings: tables, and items whose formula has a rate of law.
const Keys kYearKeys{"fissi", "settore", "scaglioni", "voci"};

fs::path directory_of_years() {
    return fs::path(demo_directory()) / "anni";
}

}  // namespace

std::vector<int> years_with_tables() {
    std::vector<int> years;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory_of_years(), none)) {
        if (entry.path().extension() == ".yaml") {
            years.push_back(static_cast<int>(MXREPOSITORY::valore(entry.path().stem().string())));
        }
    }
    std::ranges::sort(years);
    return years;
}

Description year_tables(int year) {
    const Document document((directory_of_years() / (std::to_string(year) + ".yaml")).string());
    document.expect_keys(document.root(), kYearKeys);
    return read_description(document);
}

}  // namespace nzutil
