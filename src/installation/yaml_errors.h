#pragma once
// What is wrong with a text that is no YAML, in Italian: the reader's library says it in English.

#include <string>

namespace nzutil {

/// Sentence for a message of the YAML library; one of its general texts for a message unknown here.
[[nodiscard]] std::string yaml_error_text(const std::string& message);

}  // namespace nzutil
