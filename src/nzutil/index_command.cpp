// isam: search a key, list the keys, check an index.

#include <iostream>

#include "files/isam.h"
#include "installation/field_value.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/index_check.h"
#include "nzutil/killed_run.h"

namespace nzutil {

namespace {

int search(const Installation& installation, int file, const std::string& typed) {
    const int length = index_key_length(installation, file);
    std::string key = platform::from_utf8(typed);
    if (static_cast<int>(key.size()) != length) {
        key = plain_code(key);
    }
    if (static_cast<int>(key.size()) != length) {
        throw ToolError(texts::kToolKeyLength, {std::to_string(file), std::to_string(length)});
    }
    const double record = MXLIBRERIA::ISAM(file, key, MXLIBRERIA::kIsamSearch, 0);
    if (record <= 0) {
        throw ToolError(texts::kToolKeyMissing, {typed});
    }
    std::cout << fill(texts::kToolKeyFound, {typed, std::to_string(static_cast<int>(record))})
              << '\n';
    return 0;
}

int list(const Installation& installation, int file) {
    const int length = index_key_length(installation, file);
    std::string key(static_cast<std::size_t>(length), '\x01');  // below every key of text
    for (;;) {
        const double record = MXLIBRERIA::ISAM(file, key, MXLIBRERIA::kIsamNext, 0);
        if (record == MXLIBRERIA::kIsamEnd) {
            return 0;
        }
        key = MXLIBRERIA::isam_state.last_key;
        std::cout << fill(texts::kToolKeyFound,
                          {platform::to_terminal(key), std::to_string(static_cast<int>(record))})
                  << '\n';
    }
}

int check(const Installation& installation, int file) {
    const IndexCheck result = check_index(installation, file);
    if (!result.damage.empty()) {
        throw ToolError(texts::kToolIndexDamaged, {std::to_string(file), result.damage});
    }
    std::cout << fill(texts::kToolIndexSound, {std::to_string(file), std::to_string(result.keys),
                                               std::to_string(result.blocks)})
              << '\n';
    return 0;
}

}  // namespace

int command_index(const Arguments& arguments) {
    const Installation installation = open_installation(arguments[0]);
    const int file = whole_argument(arguments[1], 1, 600);
    const std::string& action = arguments[2];
    if (action == "cerca" && arguments.size() == 4) {
        return search(installation, file, arguments[3]);
    }
    if (action == "elenca" && arguments.size() == 3) {
        return list(installation, file);
    }
    if (action == "verifica" && arguments.size() == 3) {
        return check(installation, file);
    }
    throw ToolError(texts::kToolUsage, {texts::kToolUsageIndex.utf8});
}

}  // namespace nzutil
