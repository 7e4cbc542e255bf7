#pragma once
// The fields that a formula names, against the dictionary files that it will find them in.

#include <string>
#include <string_view>

namespace MXREPOSITORY {

/// The first field that the item's formula names, and the suite has, behind the end of its letter's
/// dictionary: the file has been cut short. Reading it would give nothing, or another letter's
/// field, without a word. Empty if there is none. Looks at the names of `letters` only, whose
/// dictionary is there.
[[nodiscard]] std::string name_beyond_dictionary(const std::string& item, std::string_view letters);

}  // namespace MXREPOSITORY
