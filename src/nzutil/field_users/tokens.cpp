#include "nzutil/field_users/tokens.h"

namespace field_users {

namespace {

bool starts_name(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool goes_on(char c) {
    return starts_name(c) || is_digit(c);
}

class Reader {
  public:
    explicit Reader(std::string_view source) : source_(source) {}

    Tokens read() {
        while (at_ < source_.size()) {
            next();
        }
        return std::move(tokens_);
    }

  private:
    [[nodiscard]] bool here(std::string_view text) const {
        return source_.substr(at_, text.size()) == text;
    }

    /// Goes behind the next `text`, or to the end.
    void skip_to(std::string_view text) {
        const std::size_t found = source_.find(text, at_);
        at_ = found == std::string_view::npos ? source_.size() : found + text.size();
    }

    void skip_directive() {
        do {
            skip_to("\n");
        } while (at_ >= 2 && at_ < source_.size() && source_[at_ - 2] == '\\');
    }

    void quoted(char quote) {
        const std::size_t start = ++at_;
        while (at_ < source_.size() && source_[at_] != quote) {
            at_ += source_[at_] == '\\' ? 2U : 1U;
        }
        add(Token::Kind::text, source_.substr(start, at_ - start));
        ++at_;
    }

    template <typename Belongs>
    void run_of(Token::Kind kind, Belongs belongs) {
        const std::size_t start = at_;
        while (at_ < source_.size() && belongs(source_[at_])) {
            ++at_;
        }
        add(kind, source_.substr(start, at_ - start));
    }

    void mark() {
        const std::size_t length = here("::") || here("->") ? 2 : 1;
        add(Token::Kind::mark, source_.substr(at_, length));
        at_ += length;
    }

    void next() {
        const char c = source_[at_];
        if (c == ' ' || c == '\n' || c == '\t' || c == '\r') {
            ++at_;
        } else if (here("//")) {
            skip_to("\n");
        } else if (here("/*")) {
            skip_to("*/");
        } else if (c == '#') {
            skip_directive();
        } else if (c == '"' || c == '\'') {
            quoted(c);
        } else if (starts_name(c)) {
            run_of(Token::Kind::name, goes_on);
        } else if (is_digit(c)) {
            run_of(Token::Kind::number,
                   [](char other) { return goes_on(other) || other == '\'' || other == '.'; });
        } else {
            mark();
        }
    }

    void add(Token::Kind kind, std::string_view text) {
        tokens_.push_back({kind, std::string(text)});
    }

    std::string_view source_;
    std::size_t at_ = 0;
    Tokens tokens_;
};

}  // namespace

Tokens tokens_of(std::string_view source) {
    return Reader(source).read();
}

std::size_t closing_of(const Tokens& tokens, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < tokens.size(); ++i) {
        if (tokens[i].is("(") || tokens[i].is("{") || tokens[i].is("[")) {
            ++depth;
        } else if (tokens[i].is(")") || tokens[i].is("}") || tokens[i].is("]")) {
            if (--depth == 0) {
                return i;
            }
        }
    }
    return tokens.size();
}

}  // namespace field_users
