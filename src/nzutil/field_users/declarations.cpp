#include "nzutil/field_users/declarations.h"

#include <algorithm>

namespace field_users {

namespace {

bool any_is(const Tokens& tokens, std::size_t begin, std::size_t end, std::string_view text) {
    return std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(begin),
                       tokens.begin() + static_cast<std::ptrdiff_t>(end), [&](const Token& token) {
                           return token.kind != Token::Kind::text && token.text == text;
                       });
}

/// The last name before the value of a declarator: "second" of "Descriptor second = {}".
std::string declared_name(const Tokens& tokens, std::size_t begin, std::size_t end) {
    std::string name;
    for (std::size_t i = begin; i < end; ++i) {
        if (tokens[i].is("=") || tokens[i].is("{") || tokens[i].is("[")) {
            break;
        }
        if (tokens[i].is_name()) {
            name = tokens[i].text;
        }
    }
    return name;
}

/// The names of the parameters between the brackets at `open` and `close`.
std::vector<std::string> parameters_of(const Tokens& tokens, std::size_t open, std::size_t close) {
    std::vector<std::string> names;
    std::size_t begin = open + 1;
    int depth = 0;
    for (std::size_t i = begin; i <= close && i < tokens.size(); ++i) {
        depth += tokens[i].is("<") || tokens[i].is("(") ? 1 : 0;
        depth -= tokens[i].is(">") || (tokens[i].is(")") && i != close) ? 1 : 0;
        if (i == close || (depth == 0 && tokens[i].is(","))) {
            names.push_back(declared_name(tokens, begin, i));
            begin = i + 1;
        }
    }
    return names;
}

/// Walks a file from declaration to declaration, into namespaces and types.
class Walk {
  public:
    explicit Walk(SourceFile& file) : file_(file), tokens_(file.tokens) {}

    void run() {
        for (at_ = 0; at_ < tokens_.size();) {
            if (tokens_[at_].is("{")) {
                brace();
            } else if (tokens_[at_].is(";") || tokens_[at_].is("}")) {
                end_of_declaration();
            } else if (tokens_[at_].is("(")) {
                at_ = closing_of(tokens_, at_) + 1;
            } else {
                ++at_;
            }
        }
    }

  private:
    void brace() {
        const auto has = [&](std::string_view word) { return stands_outside(start_, at_, word); };
        if (has("namespace") || ((has("struct") || has("class") || has("enum")) && !has("("))) {
            start_ = ++at_;
        } else if (has("=") || !has("(")) {
            at_ = closing_of(tokens_, at_) + 1;
        } else {
            procedure();
        }
    }

    /// Does a word or mark of the declaration stand outside its round brackets?
    [[nodiscard]] bool stands_outside(std::size_t begin, std::size_t end,
                                      std::string_view word) const {
        for (std::size_t i = begin; i < end; ++i) {
            if (tokens_[i].text == word && tokens_[i].kind != Token::Kind::text) {
                return true;
            }
            i = tokens_[i].is("(") ? closing_of(tokens_, i) : i;
        }
        return false;
    }

    void procedure() {
        std::size_t open = start_;
        while (!tokens_[open].is("(")) {
            ++open;
        }
        Unit unit{open > 0 ? tokens_[open - 1].text : "", file_.name, true, {}, start_, at_, at_};
        unit.parameters = parameters_of(tokens_, open, closing_of(tokens_, open));
        unit.end = closing_of(tokens_, at_);
        at_ = std::min(unit.end + 1, tokens_.size());
        start_ = at_;
        file_.units.push_back(std::move(unit));
    }

    void end_of_declaration() {
        if (tokens_[at_].is(";") &&
            (any_is(tokens_, start_, at_, "=") || any_is(tokens_, start_, at_, "{"))) {
            file_.units.push_back(
                {declared_name(tokens_, start_, at_), file_.name, false, {}, start_, start_, at_});
        }
        start_ = ++at_;
    }

    SourceFile& file_;
    const Tokens& tokens_;
    std::size_t at_ = 0;
    std::size_t start_ = 0;
};

/// The last name of the type of a member, its own name left out.
std::string type_of(const Tokens& tokens, std::size_t begin, std::size_t end,
                    const std::string& name) {
    std::string type;
    for (std::size_t i = begin; i < end && tokens[i].text != name; ++i) {
        if (tokens[i].text == "Descriptor") {
            return "Descriptor";
        }
        type = tokens[i].is_name() ? tokens[i].text : type;
    }
    return type;
}

std::vector<Member> members_of(const Tokens& tokens, std::size_t open) {
    std::vector<Member> members;
    const std::size_t close = closing_of(tokens, open);
    std::size_t begin = open + 1;
    for (std::size_t i = begin; i < close; ++i) {
        if (tokens[i].is("(") || tokens[i].is("{")) {
            const bool body = tokens[i].is("{") && any_is(tokens, begin, i, "(");
            i = closing_of(tokens, i);
            begin = body ? i + 1 : begin;
        } else if (tokens[i].is(";")) {
            if (!any_is(tokens, begin, i, "(") && begin < i) {
                const std::string name = declared_name(tokens, begin, i);
                members.push_back({name, type_of(tokens, begin, i, name)});
            }
            begin = i + 1;
        }
    }
    return members;
}

}  // namespace

SourceFile read_source(const std::string& name, std::string_view text) {
    SourceFile file{name, tokens_of(text), {}};
    Walk(file).run();
    return file;
}

void collect_structs(const SourceFile& file, Structs& structs) {
    const Tokens& tokens = file.tokens;
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
        if (tokens[i].text == "struct" && tokens[i + 1].is_name() && tokens[i + 2].is("{")) {
            structs[tokens[i + 1].text] = members_of(tokens, i + 2);
        } else if (tokens[i].text == "using" && tokens[i + 2].is("=")) {
            std::size_t end = i;
            while (end < tokens.size() && !tokens[end].is(";")) {
                ++end;
            }
            if (any_is(tokens, i, end, "pair") && any_is(tokens, i, end, "Descriptor")) {
                structs[tokens[i + 1].text] = {{"first", "Descriptor"}, {"second", "Descriptor"}};
            }
        }
    }
}

}  // namespace field_users
