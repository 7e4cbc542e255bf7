#include "archive/store_tables.h"

#include <array>
#include <charconv>
#include <map>
#include <string>

namespace NZRetMes {

namespace {

constexpr std::array kFirst{
    EmptyColumns{ColumnKind::text, "",
                 "1-6, 8, 10, 11, 17, 22, 23, 25, 26, 28, 29, 31, 32, 34, 35, 37-39, 48, 49, 64, "
                 "66, 67, 69, 70, 72, 73, 75, 76, 78, 79, 81-83, 85-88, 91, 95, 96, 139, 142, 145, "
                 "148, 151, 154, 157, 160, 161, 164, 167, 170, 173, 176, 179, 181, 207, 209-211, "
                 "213, 214, 217, 228, 233, 239"},
    EmptyColumns{
        ColumnKind::number, "",
        "7, 9, 12-16, 18-21, 24, 27, 30, 33, 36, 40-42, 45, 46, 50, 51, 54, 55, 58, 59, 61-63, 65, "
        "68, 71, 74, 77, 80, 84, 89, 90, 94, 97-118, 133, 134, 137, 138, 140, 141, 143, 144, 146, "
        "147, 149, 150, 152, 153, 155, 156, 158, 159, 162, 163, 165, 166, 168, 169, 171, 172, 174, "
        "175, 177, 178, 189, 190, 194, 196-206, 215, 216, 218-227, 229-232, 234-238"},
    EmptyColumns{ColumnKind::text, "0", "180, 182-184"},
    EmptyColumns{ColumnKind::text, "00", "186, 187, 192, 193"},
    EmptyColumns{ColumnKind::text, "0000", "185, 188, 191, 195"},
    EmptyColumns{ColumnKind::text, "000000", "47"},
    EmptyColumns{ColumnKind::text, "00000000",
                 "43, 44, 52, 53, 56, 57, 60, 92, 93, 119-132, 135, 136, 208, 212"},
};

constexpr std::array kSecond{
    EmptyColumns{ColumnKind::text, "",
                 "1, 8, 9, 12, 15, 18, 21, 24, 27, 30, 33, 36, 44, 45, 47, 48, 50, 111-128, 130, "
                 "131, 136-141, 148-168, 185, 192, 193, 205-208, 212, 214, 215, 218, 220, 222, "
                 "224, 226, 227, 229-231, 237, 238"},
    EmptyColumns{
        ColumnKind::number, "",
        "2-7, 10, 11, 13, 14, 16, 17, 19, 20, 22, 23, 25, 26, 28, 29, 31, 32, 34, 35, 37-39, 42, "
        "43, 46, 51-110, 129, 132-135, 142, 143, 146, 147, 169-180, 183, 184, 186, 187, 190, 191, "
        "194-196, 198, 199, 201, 203, 204, 209-211, 213, 216, 217, 219, 221, 223, 225, 232-236"},
    EmptyColumns{ColumnKind::text, "000000", "49, 197, 200, 202"},
    EmptyColumns{ColumnKind::text, "00000000", "40, 41, 144, 145, 181, 182, 188, 189, 228"},
};

constexpr std::array kThird{
    EmptyColumns{ColumnKind::text, "", "50, 51, 57, 59, 61, 63, 65"},
    EmptyColumns{ColumnKind::number, "", "2, 4, 6, 8, 10, 12, 16-45, 48, 49, 54, 56"},
    EmptyColumns{ColumnKind::text, "000000",
                 "1, 3, 5, 7, 9, 11, 13-15, 46, 47, 52, 53, 55, 58, 60, 62, 64, 66"},
    // Not written when a row is made.
    EmptyColumns{ColumnKind::text, "", "67, 68, 71-74"},
    EmptyColumns{ColumnKind::number, "", "69, 70, 75-77"},
};

constexpr std::array kStoreTables{
    StoreTable{"DIPRETMEN", "DIP_", kFirst},
    StoreTable{"DIPRETMEN2", "DIP2_", kSecond},
    StoreTable{"DIPRETMEN3", "DIP3_", kThird},
};

}  // namespace

std::span<const StoreTable> store_tables() {
    return kStoreTables;
}

std::vector<int> column_numbers(std::string_view list) {
    std::vector<int> numbers;
    const char* at = list.data();
    const char* const end = at + list.size();
    bool range = false;
    while (at != end) {
        unsigned number = 0;  // a minus is no part of it
        const auto [rest, failure] = std::from_chars(at, end, number);
        if (failure != std::errc{}) {
            range = range || *at == '-';
            ++at;
            continue;
        }
        const int last = static_cast<int>(number);
        for (int next = range ? numbers.back() + 1 : last; next <= last; ++next) {
            numbers.push_back(next);
        }
        range = false;
        at = rest;
    }
    return numbers;
}

platform::Table store_schema(const StoreTable& table) {
    using platform::ColumnType;
    const bool numbered = table.name == kStoreTables.front().name;
    platform::Table schema{std::string(table.name),
                           {{"KDIPENDENTE", ColumnType::key},
                            {"KPERIODO", ColumnType::key},
                            {"KTIPOELAB", ColumnType::key},
                            {"KSEQ", numbered ? ColumnType::sequence : ColumnType::whole}},
                           {"CHIAVE", {"KDIPENDENTE", "KPERIODO", "KTIPOELAB", "KSEQ"}, false}};
    if (numbered) {
        for (const char* column : {"CODAZI", "CFAZI", "POSINPSAZI"}) {
            schema.columns.push_back({column, ColumnType::text});
        }
    }
    std::map<int, ColumnType> columns;
    for (const EmptyColumns& row : table.empty) {
        for (const int number : column_numbers(row.columns)) {
            columns[number] =
                row.kind == ColumnKind::number ? ColumnType::amount : ColumnType::text;
        }
    }
    for (const auto& [number, type] : columns) {
        schema.columns.push_back({std::string(table.prefix) + std::to_string(number), type});
    }
    return schema;
}

platform::Table release_schema() {
    return {"RELEASE", {{"RELEASE", platform::ColumnType::amount}}, {}};
}

}  // namespace NZRetMes
