// Any 1,100 bytes in the formula of a pay item end in a result or in a message: never in a crash,
// in an endless loop, or in something in a record that is no number.
//
// An input: the formula, then one byte for the flag of the call and the marks of the item.

#include <array>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "formulas/formula.h"
#include "platform/failure.h"
#include "platform/silent_window.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/support/dictionary_archive.h"
#include "tests/support/record_areas.h"

namespace {

using namespace MXREPOSITORY;

constexpr std::size_t kFormulaPosition = 256;
constexpr std::size_t kFormulaWidth = 1100;
constexpr std::size_t kCells = 100;

/// What lives as long as the fuzzing.
struct World {
    test_support::DictionaryArchive archive;
    platform::SilentWindow* window = nullptr;
    std::array<std::string, kAreaCount> records;
};
std::unique_ptr<World> world;

void must(bool condition, const char* what) {
    if (!condition) {
        std::cerr << "formula: " << what << std::endl;
        std::abort();
    }
}

bool is_number(std::string_view text) {
    const std::string_view digits = text.substr(!text.empty() && text.front() == '-' ? 1 : 0);
    return digits.find_first_not_of("0123456789.") == std::string_view::npos;
}

void restore_records() {
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        area(static_cast<Area>(i)) = world->records[i];
    }
}

/// Everything but the three values of the item, and the fields that the flag lets through.
void check_records(const std::string& formula, std::int16_t write) {
    const std::string& item = area(Area::FOTX);
    must(item.substr(kFormulaPosition, kFormulaWidth) == formula, "the formula changed");
    for (const Descriptor& value : {Z151, Z152, Z153}) {
        must(is_number(item.substr(static_cast<std::size_t>(value.offset - 1), 13)),
             "a value of the item is no number");
    }
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        const auto which = static_cast<Area>(i);
        const std::string& record = area(which);
        must(record.size() == world->records[i].size(), "a record changed its length");
        const bool may_change =
            which == Area::FOTX || (write != 0 && (which == Area::DIPX || which == Area::DITX));
        must(may_change || record == world->records[i], "a record changed that must not");
    }
}

void check_registers() {
    for (std::size_t i = 1; i <= 10; ++i) {
        for (const std::string& entry : {formula_registers.MEM[i], formula_registers.TMP[i]}) {
            must(entry.size() <= 14 && is_number(entry), "a register holds no number");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    world = std::make_unique<World>();
    std::atexit([] { world.reset(); });  // while the file table still lives
    auto window = std::make_unique<platform::SilentWindow>();
    world->window = window.get();
    platform::set_window(std::move(window));
    test_support::fill_areas();
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        world->records[i] = area(static_cast<Area>(i));
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::string formula = a_sinistra(input.substr(0, kFormulaWidth), kFormulaWidth);
    const unsigned marks = size > kFormulaWidth ? data[kFormulaWidth] : 0U;
    const auto write = static_cast<std::int16_t>(static_cast<int>(marks & 3U) - 1);

    restore_records();
    formula_registers = {};
    area(Area::FOTX).replace(kFormulaPosition, kFormulaWidth, formula);
    scrivi(Z026, static_cast<int>((marks >> 2U) & 1U));
    scrivi(Z029, static_cast<int>((marks >> 3U) & 1U));
    scrivi(Z151, 12.5);
    scrivi(Z152, 7.25);
    world->window->boxes = 0;
    try {
        DECFORM(write);
    } catch (const platform::Failure& failure) {
        must(failure.number() == platform::kOverflow, "a failure other than an overflow");
    }
    must(world->window->boxes <= kCells, "more boxes than cells");
    check_records(formula, write);
    check_registers();
    return 0;
}

namespace fuzz {

std::string random_input(std::mt19937_64& random) {
    constexpr std::string_view kOperators = ".+-*%<>=/= ";
    constexpr std::array<std::string_view, 24> kOperands{
        "MEM",  "TMP",  "P",    "Q",    "F",     "T",    "#",     "CU",
        "OG",   "IM",   "P210", "P199", "Q100",  "F020", "PA12",  "QC99",
        "MEM9", "TMP0", "T044", "0",    "1E308", "-.5",  "1E-99", "999999999"};
    const std::uint64_t garbage = random() % 4;  // 0: bytes only; 1 to 3: ever fewer of them
    std::string input;
    while (input.size() < kFormulaWidth) {
        std::string cell(11, ' ');
        cell[0] = kOperators[random() % kOperators.size()];
        const std::string_view operand = kOperands[random() % kOperands.size()];
        cell.replace(1, operand.size(), operand);
        if (random() % 3 == 0) {
            cell.replace(1 + operand.size(), 1, 1, static_cast<char>('0' + random() % 10));
            cell.resize(11, ' ');
        }
        if (garbage == 0 || random() % (5 * garbage) == 0) {
            for (char& c : cell) {
                c = garbage == 0 || random() % 4 == 0 ? static_cast<char>(random() % 256) : c;
            }
        }
        input += cell;
    }
    input += static_cast<char>(random() % 256);
    return input;
}

}  // namespace fuzz
