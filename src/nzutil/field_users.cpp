#include "nzutil/field_users.h"

#include <algorithm>

namespace nzutil {

FieldUsers users_of(std::string_view code) {
    const std::span<const FieldUsers> users = all_field_users();
    const auto found = std::ranges::lower_bound(users, code, {}, &FieldUsers::code);
    return found == users.end() || found->code != code ? FieldUsers{code, "", ""} : *found;
}

}  // namespace nzutil
