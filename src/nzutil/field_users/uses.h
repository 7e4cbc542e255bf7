#pragma once
// Where the procedures and tables of a file name fields, and what happens to what they name.

#include <set>
#include <string>
#include <vector>

#include "nzutil/field_users/declarations.h"

namespace field_users {

/// What is named: a field by its code, a name that may stand for one (a parameter, a local, a
/// table), or a member of a struct.
struct Subject {
    enum class Kind { field, name, member };
    Kind kind;
    std::string text;
    std::string last = {};  ///< of a series of fields its last one
    int step = 1;           ///< of a series
};

/// What happens to it.
struct Use {
    enum class How {
        argument,   ///< it is handed to the procedure `target` in the place `index`
        bound,      ///< the local or constant `target` stands for it
        column,     ///< it is the member `target` of a struct
        undecided,  ///< anything else
    };
    Subject subject;
    How how = How::undecided;
    std::string target;
    std::size_t index = 0;  ///< bound, column: the place in the row from 1, 0 for the row itself
    std::size_t unit = 0;   ///< of the file
    std::string row = {};   ///< column: the struct of the row
    std::string next = {};  ///< column: the field in the next place of the row,
    std::string next_member = {};  ///< and the member that it is
};

[[nodiscard]] std::vector<Use> uses_of(const SourceFile& file, const Structs& structs,
                                       const std::set<std::string>& codes);

}  // namespace field_users
