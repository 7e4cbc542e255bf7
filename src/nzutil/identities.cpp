#include "nzutil/identities.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "nzutil/tool_error.h"

namespace nzutil {

namespace {

/// All identities, in the order in which they are checked.
std::vector<Identity> identities() {
    return {};
}

/// Their names; a scenario may switch one off before its check is built.
constexpr std::array<std::string_view, 12> kNames{"gross",   "deduct",  "net",    "contr",
                                                  "taxable", "ceiling", "tax",    "december",
                                                  "months",  "bonus",   "surtax", "sever"};

}  // namespace

std::vector<Difference> check_identities(const CalculatedSlip& slip,
                                         const std::map<std::string, std::string>& switched_off) {
    std::vector<Difference> differences;
    for (const Identity& identity : identities()) {
        if (switched_off.contains(identity.name)) {
            continue;
        }
        if (const std::string wrong = identity.check(slip); !wrong.empty()) {
            differences.push_back({fill(texts::kToolPlaceIdentity, {identity.name}),
                                   std::string(texts::kToolNothing.utf8), wrong});
        }
    }
    return differences;
}

bool is_identity(const std::string& name) {
    return std::ranges::find(kNames, name) != kNames.end();
}

}  // namespace nzutil
