// The statements of the older engine.

#include <algorithm>
#include <cctype>
#include <string_view>

#include "platform/database_engine.h"

namespace platform {

namespace {

bool is_word(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool same_word(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) {
        return std::toupper(static_cast<unsigned char>(x)) ==
               std::toupper(static_cast<unsigned char>(y));
    });
}

/// The next piece of a statement: a text in quotes, a word, a run of blanks, or one character.
std::string_view next_piece(std::string_view rest) {
    const char first = rest.front();
    if (first == '\'' || first == '"') {
        const std::size_t closing = rest.find(first, 1);
        return rest.substr(0, closing == std::string_view::npos ? rest.size() : closing + 1);
    }
    std::size_t length = 1;
    if (is_word(first)) {
        while (length < rest.size() && is_word(rest[length])) {
            ++length;
        }
    }
    return rest.substr(0, length);
}

/// Is the piece the older engine's function, with its bracket behind it?
bool is_mid(std::string_view piece, std::string_view rest) {
    const std::size_t bracket = rest.find_first_not_of(' ');
    return same_word(piece, "mid") && bracket != std::string_view::npos && rest[bracket] == '(';
}

}  // namespace

std::string from_older_dialect(const std::string& statement) {
    std::string result;
    std::string_view rest = statement;
    std::string_view last_word;
    while (!rest.empty()) {
        const std::string_view piece = next_piece(rest);
        rest.remove_prefix(piece.size());
        if (piece == "*" && same_word(last_word, "delete")) {
            continue;
        }
        result += is_mid(piece, rest) ? std::string_view("substr") : piece;
        if (piece != " ") {
            last_word = piece;
        }
    }
    return result;
}

}  // namespace platform
