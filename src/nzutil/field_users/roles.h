#pragma once
// Who reads and who writes each field: what happens to a field where a procedure names it, followed
// through parameters, locals, tables and members until nothing new is found.

#include <map>
#include <set>
#include <string>
#include <vector>

#include "nzutil/field_users/uses.h"

namespace field_users {

/// The procedures that use a field, each with its file: "NETTO (closing/net_pay.cpp)".
struct Users {
    std::set<std::string> readers;
    std::set<std::string> writers;
};

[[nodiscard]] std::map<std::string, Users> users_of_fields(const std::vector<SourceFile>& files,
                                                           const std::set<std::string>& codes);

}  // namespace field_users
