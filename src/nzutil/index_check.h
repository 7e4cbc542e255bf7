#pragma once
// Is an index sound? Reads the blocks themselves, not through the operation that made them.

#include <string>

#include "installation/installation.h"

namespace nzutil {

struct IndexCheck {
    std::string damage;  ///< the first thing found wrong, UTF-8; empty: sound
    int keys = 0;
    int blocks = 0;  ///< of the file, the emptied ones included
};

/// Length of the keys of an index; ToolError if the file is none by its record length.
[[nodiscard]] int index_key_length(const Installation& installation, int file);

[[nodiscard]] IndexCheck check_index(const Installation& installation, int file);

}  // namespace nzutil
