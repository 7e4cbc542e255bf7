#include "nzutil/field_users/uses.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace field_users {

namespace {

/// Procedures that give back the field that they are given, or one of its series.
constexpr std::array<std::string_view, 3> kTransparent{"dopo", "serie", "vector"};
constexpr std::array<std::string_view, 5> kNoProcedure{"if", "while", "switch", "return", "for"};

template <std::size_t size>
bool one_of(const std::array<std::string_view, size>& words, const std::string& word) {
    return std::ranges::find(words, word) != words.end();
}

/// A bracket that is open at the place of the walk.
struct Frame {
    enum class Kind { round, values, block };
    Kind kind;
    std::string name;        ///< of a round one the procedure; of values their struct or variable
    std::size_t index = 0;   ///< commas so far
    std::string designated;  ///< the member in front of the value: ".first = "
    std::vector<std::string> bound;  ///< what the statement or the loop gives a value to
    std::size_t start = 0;           ///< of the statement, in a block
};

class Walk {
  public:
    Walk(const SourceFile& file, std::size_t unit, const Structs& structs,
         const std::set<std::string>& codes)
        : tokens_(file.tokens),
          unit_(file.units[unit]),
          number_(unit),
          structs_(structs),
          codes_(codes) {}

    std::vector<Use> run() {
        frames_.push_back({Frame::Kind::block, "", 0, "", {}, unit_.begin});
        for (at_ = unit_.begin; at_ < unit_.end; ++at_) {
            step(tokens_[at_]);
        }
        return std::move(uses_);
    }

  private:
    [[nodiscard]] const Token& before(std::size_t distance = 1) const {
        return at_ >= unit_.begin + distance ? tokens_[at_ - distance] : nothing_;
    }
    [[nodiscard]] const Token& after(std::size_t distance = 1) const {
        return at_ + distance < tokens_.size() ? tokens_[at_ + distance] : nothing_;
    }
    Frame& top() { return frames_.back(); }

    void step(const Token& token) {
        if (token.is_name()) {
            name(token.text);
        } else if (token.is("(")) {
            frames_.push_back(
                {Frame::Kind::round, before().is_name() ? before().text : "", 0, "", {}, at_ + 1});
        } else if (token.is("{")) {
            open_brace();
        } else if ((token.is(")") || token.is("}")) && frames_.size() > 1) {
            frames_.pop_back();
            end_of_block(token);
        } else if (token.is(",")) {
            ++top().index;
            top().designated.clear();
        } else if (token.is(";")) {
            top().bound.clear();
            top().start = at_ + 1;
        } else if (token.is("=")) {
            equals();
        } else if (token.is(":") && top().name == "for" && top().bound.empty()) {
            top().bound = names_before();
        }
    }

    void end_of_block(const Token& token) {
        if (token.is("}") && top().kind == Frame::Kind::block && top().bound.empty()) {
            top().start = at_ + 1;
        }
    }

    void equals() {
        if (top().kind == Frame::Kind::values && before(2).is(".")) {
            top().designated = before().text;
        } else if (top().kind == Frame::Kind::block && top().bound.empty()) {
            top().bound = names_before();
        }
    }

    /// The name in front of a value or a range, or the names of "[first, second]".
    [[nodiscard]] std::vector<std::string> names_before() const {
        std::vector<std::string> names;
        if (before().is_name()) {
            names.push_back(before().text);
        } else if (before().is("]")) {
            for (std::size_t i = at_ - 2; i > unit_.begin && !tokens_[i].is("["); --i) {
                if (tokens_[i].is_name()) {
                    names.insert(names.begin(), tokens_[i].text);
                }
            }
        }
        return names;
    }

    /// A block of statements, or a list of values behind a name, a mark or another list.
    [[nodiscard]] bool opens_values() const {
        if (before().is("{")) {
            return frames_.back().kind == Frame::Kind::values;
        }
        if (before().is_name()) {
            return before(2).text != "struct" && before().text != "else" &&
                   before().text != "const" && before().text != "do" && !before(2).is("->");
        }
        return before().is("=") || before().is(",") || before().is("(") || before().is(">") ||
               before().is("?") || before().is(":");
    }

    void open_brace() {
        if (!opens_values()) {
            frames_.push_back({Frame::Kind::block, "", 0, "", {}, at_ + 1});
            return;
        }
        if (top().kind == Frame::Kind::block && top().bound.empty() && before().is_name() &&
            before().text != "return") {
            top().bound = {before().text};
        }
        frames_.push_back({Frame::Kind::values, struct_of_values(), 0, "", {}, at_ + 1});
    }

    /// The struct whose values follow: named in front of the bracket, in the declaration, or by the
    /// list around it.
    [[nodiscard]] std::string struct_of_values() const {
        if (before().is_name() && structs_.contains(before().text)) {
            return before().text;
        }
        const Frame& around = frames_.back();
        if (around.kind == Frame::Kind::values) {
            return around.name;
        }
        if (around.kind == Frame::Kind::round) {
            return struct_of_parameter(around.name);
        }
        return first_struct(around.start, at_);
    }

    [[nodiscard]] std::string first_struct(std::size_t begin, std::size_t end) const {
        for (std::size_t i = begin; i < end; ++i) {
            if (tokens_[i].is_name() && structs_.contains(tokens_[i].text)) {
                return tokens_[i].text;
            }
        }
        return "";
    }

    /// The struct that a procedure local to the unit takes: "store = [](const Fields& fields".
    [[nodiscard]] std::string struct_of_parameter(const std::string& procedure) const {
        for (std::size_t i = unit_.begin; i + 2 < unit_.end; ++i) {
            if (tokens_[i].text == procedure && tokens_[i + 1].is("=") && tokens_[i + 2].is("[")) {
                const std::size_t open = closing_of(tokens_, i + 2) + 1;
                return first_struct(open, closing_of(tokens_, open));
            }
        }
        return "";
    }

    void name(const std::string& text) {
        const bool member = before().is(".") || before().is("->");
        const bool declared = before().is_name() && before().text != "return";
        if (after().is("(") || after().is("::") || declared) {
            return;
        }
        if (member) {
            add({Subject::Kind::member, text});
        } else if (!codes_.contains(text)) {
            add({Subject::Kind::name, text});
        } else if (!series(text)) {
            add({Subject::Kind::field, text});
        }
    }

    /// serie(first, last, step) at its first field; its last one stands for nothing more.
    bool series(const std::string& first) {
        if (top().kind != Frame::Kind::round || top().name != "serie") {
            return false;
        }
        if (top().index == 0 && after().is(",") && codes_.contains(after(2).text)) {
            int step = 1;
            const std::string& text = after(4).text;
            if (after(3).is(",")) {
                std::from_chars(text.data(), text.data() + text.size(), step);
            }
            add({Subject::Kind::field, first, after(2).text, step});
        }
        return true;
    }

    void add(Subject subject) {
        Use use{std::move(subject), Use::How::undecided, "", 0, number_, "", "", ""};
        for (std::size_t i = frames_.size(); i-- > 0;) {
            if (decide(use, frames_[i])) {
                break;
            }
        }
        keep(std::move(use));
    }

    /// A name that stands for its own value says nothing; several names take a row apart.
    void keep(Use use) {
        if (use.how != Use::How::bound) {
            uses_.push_back(std::move(use));
            return;
        }
        const std::vector<std::string> names = std::move(targets_);
        for (std::size_t i = 0; i < names.size(); ++i) {
            use.target = names[i];
            use.index = names.size() > 1 ? i + 1 : 0;
            if (use.target != use.subject.text) {
                uses_.push_back(use);
            }
        }
    }

    /// Whether the bracket says what happens to the subject inside it.
    [[nodiscard]] bool decide(Use& use, const Frame& frame) {
        if (!frame.designated.empty()) {
            use.how = Use::How::column;
            use.target = frame.designated;
            return true;
        }
        if (frame.kind == Frame::Kind::values) {
            return column(use, frame);
        }
        if (!frame.bound.empty()) {
            use.how = Use::How::bound;
            targets_ = frame.bound;
            return true;
        }
        if (frame.kind == Frame::Kind::block) {
            return true;
        }
        if (frame.name.empty() || one_of(kTransparent, frame.name)) {
            return false;
        }
        if (!one_of(kNoProcedure, frame.name)) {
            use.how = Use::How::argument;
            use.target = frame.name;
            use.index = frame.index;
        }
        return true;
    }

    /// The member of the struct, or of a struct in it, that stands in the place of the list.
    [[nodiscard]] bool column(Use& use, const Frame& frame) const {
        const std::string member = member_at(frame.name, frame.index, 0);
        if (member.empty() || use.subject.kind != Subject::Kind::field) {
            return false;
        }
        use.how = Use::How::column;
        use.target = member;
        use.index = frame.index + 1;
        use.row = frame.name;
        if (after().is(",") && codes_.contains(after(2).text)) {
            use.next = after(2).text;
            use.next_member = member_at(frame.name, frame.index + 1, 0);
        }
        return true;
    }

    [[nodiscard]] std::string member_at(const std::string& type, std::size_t index,
                                        int depth) const {
        const auto found = structs_.find(type);
        if (found == structs_.end() || depth > 3) {
            return "";
        }
        if (index < found->second.size() && found->second[index].type == "Descriptor") {
            return found->second[index].name;
        }
        for (const Member& member : found->second) {
            std::string inner = member_at(member.type, index, depth + 1);
            if (!inner.empty()) {
                return inner;
            }
        }
        return "";
    }

    const Tokens& tokens_;
    const Unit& unit_;
    std::size_t number_;
    const Structs& structs_;
    const std::set<std::string>& codes_;
    const Token nothing_{Token::Kind::mark, ""};
    std::size_t at_ = 0;
    std::vector<Frame> frames_;
    std::vector<std::string> targets_;
    std::vector<Use> uses_;
};

}  // namespace

std::vector<Use> uses_of(const SourceFile& file, const Structs& structs,
                         const std::set<std::string>& codes) {
    std::vector<Use> uses;
    for (std::size_t unit = 0; unit < file.units.size(); ++unit) {
        for (Use& use : Walk(file, unit, structs, codes).run()) {
            uses.push_back(std::move(use));
        }
    }
    return uses;
}

}  // namespace field_users
