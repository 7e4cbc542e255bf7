#pragma once
// Who reads and who writes each field: an index of the calculation's sources that the build makes.
// What the formulas of pay items do with a field is data and stands in the items.

#include <span>
#include <string_view>

namespace nzutil {

/// The procedures of a field, with their files, in the order of their names and divided by ", ":
/// "NETTO (closing/net_pay.cpp), settlement (closing/year_end.cpp)".
struct FieldUsers {
    std::string_view code;
    std::string_view readers;
    std::string_view writers;
};

/// All fields that a procedure names, in the order of their codes.
[[nodiscard]] std::span<const FieldUsers> all_field_users();

/// The users of a field; both empty when no procedure names it.
[[nodiscard]] FieldUsers users_of(std::string_view code);

}  // namespace nzutil
