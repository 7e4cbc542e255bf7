#include "calc/selection.h"

#include <string>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/numbers.h"

namespace ModSWCALM {

using MXREPOSITORY::ritaglia;
using MXREPOSITORY::valore;
using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr std::size_t kEntryWidth = 10;
constexpr std::size_t kEntriesInRecord = 20;
constexpr const char* kEndOfSelection = "9999999999";

}  // namespace

std::optional<SelectionEntry> Selection::next() {
    if (position_ == 0 || position_ > kEntryWidth * kEntriesInRecord) {
        ++record_;
        position_ = 1;
        if (MXLIBRERIA::LEGGIREC(kSelection, record_) == 1) {
            return std::nullopt;
        }
    }
    const std::string entry(
        ritaglia(MXLIBRERIA::record_buffer(kSelection), position_, kEntryWidth));
    if (entry == kEndOfSelection) {
        return std::nullopt;
    }
    position_ += kEntryWidth;
    return SelectionEntry{valore(ritaglia(entry, 1, 3)), valore(ritaglia(entry, 7, 4))};
}

std::size_t Selection::count() {
    Selection selection;
    std::size_t entries = 0;
    while (selection.next()) {
        ++entries;
    }
    return entries;
}

}  // namespace ModSWCALM
