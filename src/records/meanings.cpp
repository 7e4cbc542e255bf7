#include "records/meanings.h"

#include <algorithm>

namespace MXREPOSITORY {

std::string_view meaning_of(std::string_view code) {
    const std::span<const Meaning> meanings = all_meanings();
    const auto found = std::ranges::lower_bound(meanings, code, {}, &Meaning::code);
    return found == meanings.end() || found->code != code ? std::string_view() : found->text;
}

}  // namespace MXREPOSITORY
