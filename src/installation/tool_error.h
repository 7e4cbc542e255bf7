#pragma once
// What the support tool says when it cannot go on: an Italian sentence, and exit status 1.

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

#include "texts/tool_texts.h"

namespace nzutil {

/// A text of the catalogue with its values: each "{}" takes the next one (all UTF-8). What comes
/// from a record, a path or the command line may hold anything: control characters become '?'.
[[nodiscard]] std::string fill(const texts::Text& text,
                               std::initializer_list<std::string_view> values);

/// Ends a command; the text goes to standard error, its control characters as '?'.
class ToolError : public std::runtime_error {
  public:
    explicit ToolError(const std::string& text) : std::runtime_error(text) {}
    ToolError(const texts::Text& text, std::initializer_list<std::string_view> values)
        : std::runtime_error(fill(text, values)) {}
};

}  // namespace nzutil
