#pragma once
// What a source file declares, as far as fields are concerned: the procedures, the tables at the
// level of the file, and the structs whose members hold fields.

#include <map>
#include <string>
#include <vector>

#include "nzutil/field_users/tokens.h"

namespace field_users {

/// A procedure, or a constant at the level of the file: a stretch of its tokens.
struct Unit {
    std::string name;
    std::string file;
    bool procedure = false;
    std::vector<std::string> parameters;  ///< of a procedure, by place
    std::size_t head = 0;                 ///< where the declaration starts
    std::size_t begin = 0;                ///< of a procedure its body, of a constant all of it
    std::size_t end = 0;
};

struct Member {
    std::string name;
    std::string type;  ///< the last name of the type: "Descriptor" for a field
};

struct SourceFile {
    std::string name;  ///< under src/
    Tokens tokens;
    std::vector<Unit> units;
    [[nodiscard]] bool is_header() const { return name.ends_with(".h"); }
};

/// The structs that hold fields, by name; a pair of fields counts as one.
using Structs = std::map<std::string, std::vector<Member>>;

[[nodiscard]] SourceFile read_source(const std::string& name, std::string_view text);
void collect_structs(const SourceFile& file, Structs& structs);

}  // namespace field_users
