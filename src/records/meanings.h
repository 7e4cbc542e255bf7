#pragma once
// What the fields mean: the fourth column of the dictionary's data files, in Italian and in bytes
// of code page 1252. For whoever shows a field to a person; the calculation never asks.

#include <span>
#include <string_view>

namespace MXREPOSITORY {

struct Meaning {
    std::string_view code;  ///< "P240"
    std::string_view text;  ///< "imponibile contributivo del mese"; the unit where it is not euro
};

/// All meanings in the order of their codes; fields without one are left out.
[[nodiscard]] std::span<const Meaning> all_meanings();

/// The meaning of a field by its short name; empty for a field without one.
[[nodiscard]] std::string_view meaning_of(std::string_view code);

}  // namespace MXREPOSITORY
