#include "formulas/formula_names.h"

#include "formulas/formula_cells.h"
#include "formulas/loaded_letters.h"
#include "formulas/named_access.h"
#include "records/descriptor.h"

namespace MXREPOSITORY {

namespace {

constexpr std::size_t kNameLength = 4;
constexpr std::string_view kReadLetters = "PQF";
constexpr std::string_view kWrittenLetters = "PQT";

/// The field that a cell reads or writes; empty for numbers and registers.
std::string_view name_in(std::string_view cell) {
    const std::string_view letters = cell.front() == '=' ? kWrittenLetters : kReadLetters;
    const std::string_view name = cell.substr(1, kNameLength);
    const bool named = letters.find(name.front()) != std::string_view::npos;
    return named && find_field(name) != nullptr ? name : std::string_view();
}

bool beyond_dictionary(std::string_view name) {
    const char letter = name.front();
    if (base_of(letter) < 0) {
        INIZIALIZZAREPOSITORY(letter);
    }
    return base_of(letter) + slot_of(name) > last_index_of(letter);
}

}  // namespace

std::string name_beyond_dictionary(const std::string& item, std::string_view letters) {
    std::string found;
    for_each_cell(item, [&found, letters](std::string_view cell) {
        const std::string_view name = name_in(cell);
        const bool looked_at =
            !name.empty() && letters.find(name.front()) != std::string_view::npos;
        if (found.empty() && looked_at && beyond_dictionary(name)) {
            found = name;
        }
    });
    return found;
}

}  // namespace MXREPOSITORY
