#pragma once
// A source file as the index of field users reads it: names, numbers, texts and marks, without
// comments and preprocessor lines.

#include <string>
#include <string_view>
#include <vector>

namespace field_users {

struct Token {
    enum class Kind { name, number, text, mark };
    Kind kind;
    std::string text;  ///< of a text what stands between the quotes; a mark is a character, or one
                       ///< of "::" and "->"
    [[nodiscard]] bool is(std::string_view mark) const {
        return kind == Kind::mark && text == mark;
    }
    [[nodiscard]] bool is_name() const { return kind == Kind::name; }
};

using Tokens = std::vector<Token>;

[[nodiscard]] Tokens tokens_of(std::string_view source);

/// The place of the bracket that closes the one at `open`; the end when there is none.
[[nodiscard]] std::size_t closing_of(const Tokens& tokens, std::size_t open);

}  // namespace field_users
