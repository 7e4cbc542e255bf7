#include "nzutil/field_users/roles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <compare>
#include <cstdint>
#include <tuple>
#include <utility>

namespace field_users {

namespace {

using Role = std::uint8_t;
constexpr Role kReads = 1;
constexpr Role kWrites = 2;

struct Accessor {
    std::string_view name;
    Role role;
};
/// The accessors; the field is their first argument, or they take a list of fields.
constexpr std::array<Accessor, 10> kAccessors{{
    {"num", kReads},
    {"testo", kReads},
    {"rifilato", kReads},
    {"LEGGICAMPO", kReads},
    {"LEGGICAMPONUM", kReads},
    {"scrivi", kWrites},
    {"SCRIVICAMPO", kWrites},
    {"SCRIVICAMPONUM", kWrites},
    {"azzera", kWrites},
    {"svuota", kWrites},
}};
constexpr std::string_view kAdd = "aggiungi";  // field += amount

Role role_of_accessor(const std::string& name) {
    for (const Accessor& accessor : kAccessors) {
        if (accessor.name == name) {
            return accessor.role;
        }
    }
    return name == kAdd ? kWrites : 0;
}

/// The code of a series, the number of which is `distance` above that of `first`: Q205 and 2, Q207.
std::string code_after(const std::string& first, int distance) {
    const std::size_t letters = first[1] >= '0' && first[1] <= '9' ? 1 : 2;
    int number = 0;
    std::from_chars(first.data() + letters, first.data() + first.size(), number);
    std::string digits = std::to_string(number + distance);
    digits.insert(0, std::max<std::size_t>(first.size() - letters, digits.size()) - digits.size(),
                  '0');
    return first.substr(0, letters) + digits;
}

/// A place in the sources: a file, and a unit of it.
struct At {
    std::size_t file;
    std::size_t unit;
    auto operator<=>(const At&) const = default;
};

/// The names that a file gives and the names that it may take from others.
class Names {
  public:
    explicit Names(const std::vector<SourceFile>& files) {
        for (std::size_t file = 0; file < files.size(); ++file) {
            for (std::size_t unit = 0; unit < files[file].units.size(); ++unit) {
                add(files[file], {file, unit});
            }
            if (files[file].is_header()) {
                add_promises(files[file].tokens);
            }
        }
    }

    /// The units that a name means in a file: its own ones, else those that others show.
    [[nodiscard]] std::vector<At> units(std::size_t file, const std::string& name) const {
        std::vector<At> own;
        std::vector<At> shown;
        const auto [first, last] = units_.equal_range(name);
        for (auto entry = first; entry != last; ++entry) {
            (entry->second.at.file == file ? own : shown).push_back(entry->second.at);
        }
        if (!own.empty()) {
            return own;
        }
        const bool promised = promised_.contains(name);
        if (first != last && !first->second.procedure && !first->second.header && !promised) {
            return {};
        }
        return shown;
    }

  private:
    struct Entry {
        At at;
        bool procedure;
        bool header;
    };

    void add(const SourceFile& file, At at) {
        const Unit& unit = file.units[at.unit];
        units_.emplace(unit.name, Entry{at, unit.procedure, file.is_header()});
    }

    /// Constants that a header declares and a source file defines.
    void add_promises(const Tokens& tokens) {
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            if (tokens[i].text != "extern") {
                continue;
            }
            while (i + 1 < tokens.size() && !tokens[i + 1].is(";")) {
                ++i;
            }
            promised_.insert(tokens[i].text);
        }
    }

    std::multimap<std::string, Entry> units_;
    std::set<std::string> promised_;
};

class Index {
  public:
    Index(const std::vector<SourceFile>& files, const std::set<std::string>& codes)
        : files_(files), codes_(codes), names_(files) {
        Structs structs;
        for (const SourceFile& file : files) {
            collect_structs(file, structs);
            collect_ranges(file.tokens);
        }
        for (const SourceFile& file : files) {
            uses_.push_back(uses_of(file, structs, codes));
        }
    }

    std::map<std::string, Users> run() {
        do {
            changed_ = false;
            each_use([this](At at, const Use& use) { spread(at, use); });
        } while (changed_);
        each_use([this](At at, const Use& use) { credit(at, use); });
        return std::move(users_);
    }

  private:
    struct Access {
        bool named = false;
        Role role = 0;
    };

    /// serie(row.first, row.last): the two members are the ends of a series.
    void collect_ranges(const Tokens& tokens) {
        for (std::size_t i = 0; i + 8 < tokens.size(); ++i) {
            if (tokens[i].text == "serie" && tokens[i + 3].is(".") && tokens[i + 5].is(",") &&
                tokens[i + 7].is(".")) {
                ranges_.emplace(tokens[i + 4].text, tokens[i + 8].text);
            }
        }
    }

    template <typename Action>
    void each_use(Action action) {
        for (std::size_t file = 0; file < files_.size(); ++file) {
            for (const Use& use : uses_[file]) {
                action(At{file, use.unit}, use);
            }
        }
    }

    [[nodiscard]] const Unit& unit(At at) const { return files_[at.file].units[at.unit]; }

    void join(Role& role, Role more) {
        changed_ = changed_ || (role | more) != role;
        role = static_cast<Role>(role | more);
    }

    template <typename Map, typename Key>
    [[nodiscard]] static auto found(const Map& map, const Key& key) {
        const auto place = map.find(key);
        return place == map.end() ? typename Map::mapped_type{} : place->second;
    }

    /// What is known to happen to the subject of a use.
    [[nodiscard]] Role role_of(At at, const Use& use) const {
        switch (use.how) {
            case Use::How::argument:
                return role_of_argument(at, use);
            case Use::How::bound:
                return found(locals_, std::pair{at, use.target});
            case Use::How::column:
                return role_of_member(at.file, use.target);
            case Use::How::undecided:
                break;
        }
        return 0;
    }

    [[nodiscard]] Role role_of_argument(At at, const Use& use) const {
        if (const Role role = role_of_accessor(use.target); role != 0) {
            const bool list = use.target == "azzera" || use.target == "svuota";
            return use.index == 0 || list ? role : Role{0};
        }
        Role role = 0;
        for (const At procedure : names_.units(at.file, use.target)) {
            role = static_cast<Role>(role | found(arguments_, std::pair{procedure, use.index}));
        }
        const bool stands_for_fields = use.subject.kind != Subject::Kind::member;
        return role == 0 && stands_for_fields ? found(lambdas_, at) : role;
    }

    /// What the procedures of a file do with a member.
    [[nodiscard]] Role role_of_member(std::size_t file, const std::string& member) const {
        Role role = 0;
        for (const auto& [place, access] : members_) {
            if (place.first.file == file && place.second == member) {
                role = static_cast<Role>(role | access.role);
            }
        }
        return role;
    }

    /// Carries what happens to a name or a member on to what stands for it.
    void spread(At at, const Use& use) {
        const Role role = role_of(at, use);
        const std::string& name = use.subject.text;
        if (use.subject.kind == Subject::Kind::member) {
            Access& access = members_[{at, name}];
            access.named = true;
            join(access.role, role);
        } else if (use.subject.kind == Subject::Kind::name) {
            spread_name(at, use, role);
        }
    }

    void spread_name(At at, const Use& use, Role role) {
        const std::string& name = use.subject.text;
        const std::vector<At> tables = names_.units(at.file, name);
        for (const At table : tables) {
            if (!unit(table).procedure && table != at) {
                mentions_[table].insert(at);
                join(rows_[{table, at, use.how == Use::How::bound ? use.index : 0}], role);
            }
        }
        if (role == 0) {
            return;
        }
        const std::vector<std::string>& parameters = unit(at).parameters;
        const auto place = std::ranges::find(parameters, name);
        if (place != parameters.end()) {
            join(arguments_[{at, static_cast<std::size_t>(place - parameters.begin())}], role);
        } else if (tables.empty() && use.how == Use::How::argument &&
                   role_of_accessor(use.target) != 0) {
            join(lambdas_[at], role);
        }
        join(locals_[{at, name}], role);
    }

    void credit(At at, const Use& use) {
        if (use.subject.kind != Subject::Kind::field) {
            return;
        }
        if (unit(at).procedure) {
            note(use, at, role_of(at, use));
            return;
        }
        std::set<At> procedures;
        std::set<At> seen;
        collect_mentions(at, procedures, seen);
        if (use.how == Use::How::column && credit_members(at, use, procedures)) {
            return;
        }
        for (const At procedure : procedures) {
            Role role = found(rows_, std::tuple{at, procedure, std::size_t{0}});
            if (use.how == Use::How::column) {
                role = static_cast<Role>(role_of_member(procedure.file, use.target) |
                                         found(rows_, std::tuple{at, procedure, use.index}));
            }
            note(use, procedure, role);
        }
    }

    /// The procedures that name a table, or a table that holds it.
    void collect_mentions(At table, std::set<At>& procedures, std::set<At>& seen) {
        if (!seen.insert(table).second) {
            return;
        }
        for (const At other : mentions_[table]) {
            if (unit(other).procedure) {
                procedures.insert(other);
            } else {
                collect_mentions(other, procedures, seen);
            }
        }
    }

    /// The procedures that name the member, and the table or the struct of its rows: do any?
    bool credit_members(At table, const Use& use, const std::set<At>& procedures) {
        bool any = false;
        for (const auto& [place, access] : members_) {
            const At at = place.first;
            if (!access.named || place.second != use.target || !unit(at).procedure) {
                continue;
            }
            if (procedures.contains(at) || names_struct(at, use.row)) {
                note(use, at,
                     static_cast<Role>(access.role |
                                       found(rows_, std::tuple{table, at, use.index})));
                any = true;
            }
        }
        return any;
    }

    [[nodiscard]] bool names_struct(At at, const std::string& name) const {
        const Tokens& tokens = files_[at.file].tokens;
        for (std::size_t i = unit(at).head; i < unit(at).end; ++i) {
            if (tokens[i].is_name() && tokens[i].text == name) {
                return true;
            }
        }
        return false;
    }

    /// The last field of what a use names: a series goes on to it.
    [[nodiscard]] std::string last_of(const Use& use) const {
        if (!use.subject.last.empty()) {
            return use.subject.last;
        }
        return ranges_.contains({use.target, use.next_member}) ? use.next : use.subject.text;
    }

    /// A field of which nothing is known but that it is named is read.
    void note(const Use& use, At at, Role role) {
        const std::string procedure = unit(at).name + " (" + unit(at).file + ")";
        const std::string last = last_of(use);
        const int step = std::max(1, use.subject.step);
        std::string code = use.subject.text;
        for (int distance = step; code.size() == last.size() && code <= last; distance += step) {
            if (codes_.contains(code)) {
                Users& users = users_[code];
                if (role != kWrites) {
                    users.readers.insert(procedure);
                }
                if ((role & kWrites) != 0) {
                    users.writers.insert(procedure);
                }
            }
            code = code_after(use.subject.text, distance);
        }
    }

    const std::vector<SourceFile>& files_;
    const std::set<std::string>& codes_;
    Names names_;
    std::vector<std::vector<Use>> uses_;                    ///< by file
    std::set<std::pair<std::string, std::string>> ranges_;  ///< members that are ends of a series
    std::map<std::pair<At, std::size_t>, Role> arguments_;  ///< of a procedure, by place
    std::map<std::pair<At, std::string>, Role> locals_;
    std::map<std::pair<At, std::string>, Access> members_;
    std::map<At, Role> lambdas_;  ///< what a unit's nameless procedures do
    std::map<std::tuple<At, At, std::size_t>, Role> rows_;  ///< table, user, place in the row
    std::map<At, std::set<At>> mentions_;                   ///< table, who names it
    std::map<std::string, Users> users_;
    bool changed_ = false;
};

}  // namespace

std::map<std::string, Users> users_of_fields(const std::vector<SourceFile>& files,
                                             const std::set<std::string>& codes) {
    return Index(files, codes).run();
}

}  // namespace field_users
