#pragma once
// What a run showed on the terminal, taken apart again: lines of the list, boxes and questions.

#include <optional>
#include <string>
#include <vector>

namespace nzutil {

struct ShownBox {
    std::string title;
    std::string text;
    std::optional<bool> answer;  ///< of a question
};

struct RunOutput {
    std::vector<std::string> list;  ///< lines of LIST1
    std::vector<ShownBox> boxes;
};

/// A box is a line "[title] text"; the text of a question goes on until the answer, that of the
/// closing message and of a failure until the next box or the end.
[[nodiscard]] RunOutput read_run_output(const std::string& standard_output);

/// Is this the message that ends every run in order?
[[nodiscard]] bool is_closing_message(const ShownBox& box);

}  // namespace nzutil
