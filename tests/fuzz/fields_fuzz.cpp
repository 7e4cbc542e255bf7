// Any descriptor text, occurrence, value and record: reading and writing a field end in a value, in
// a message, or in one failure that carries the accessor's name; the record keeps its length.
//
// An input: 23 bytes of descriptor, 2 of occurrence, 1 for the length of the value, the value, and
// the rest is the record.

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "platform/failure.h"
#include "platform/silent_window.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/support/record_areas.h"

namespace {

using namespace MXREPOSITORY;

void must(bool condition, const char* what) {
    if (!condition) {
        std::cerr << "fields: " << what << std::endl;
        std::abort();
    }
}

/// Runs an accessor; its failures are those of positions and sizes, under its name.
template <class Accessor>
void run(const char* name, Accessor accessor) {
    try {
        accessor();
    } catch (const platform::Failure& failure) {
        must(failure.pseudo_name == name, "a failure without the accessor's name");
        must(failure.number() == platform::kInvalidCall ||
                 failure.number() == platform::kOverflow ||
                 failure.number() == platform::kSubscriptOutOfRange,
             "a failure that no field has");
    }
}

std::size_t length_of_all_areas() {
    std::size_t length = 0;
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        length += area(static_cast<Area>(i)).size();
    }
    return length;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    platform::set_window(std::make_unique<platform::SilentWindow>());
    test_support::fill_areas();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::string descriptor(ritaglia(input, 1, kDescriptorLength));
    const std::string_view numbers = ritaglia(input, 24, 3);
    const auto byte = [numbers](std::size_t i) {
        return i < numbers.size() ? static_cast<unsigned char>(numbers[i]) : 0U;
    };
    const auto occurrence = static_cast<std::int16_t>(byte(0) * 256 + byte(1));
    std::string value(ritaglia(input, 27, byte(2)));
    std::string record(ritaglia(input, 27 + byte(2), std::string::npos));
    const std::size_t record_length = record.size();
    const std::size_t areas_length = length_of_all_areas();

    run("RepoR", [&] { (void)LEGGICAMPO(descriptor, occurrence, record); });
    run("RepoR", [&] { (void)LEGGICAMPO(descriptor, occurrence, {}); });
    run("RepoW", [&] { SCRIVICAMPO(descriptor, value, occurrence, record); });
    must(record.size() == record_length, "a record changed its length");
    std::string area_itself;
    run("RepoW", [&] { SCRIVICAMPO(descriptor, value, occurrence, area_itself); });
    run("RepoW", [&] { SCRIVICAMPONUM(descriptor, byte(0) / 7.0 - byte(1), occurrence, record); });
    must(area_itself.empty(), "the empty buffer was written");
    must(length_of_all_areas() == areas_length, "an area changed its length");
    return 0;
}

namespace fuzz {

std::string random_input(std::mt19937_64& random) {
    const auto& tag = kAreaTags[random() % kAreaCount];
    std::string input = std::string(tag) + ",";
    input += zeri_a_sinistra(std::to_string(random() % 17000), 5) + ",";
    input += zeri_a_sinistra(std::to_string(random() % 100), 2) + ",";
    input +=
        std::string(1, "NAD023456"[random() % 9]) + ",0,I1" + std::to_string(10 + random() % 90);
    input += static_cast<char>(random() % 2);
    input += static_cast<char>(random() % 256);
    input += static_cast<char>(random() % 20);
    const std::size_t rest = random() % 300;
    for (std::size_t i = 0; i < rest; ++i) {
        input += "0123456789-.,E+ x"[random() % 17];
    }
    for (std::uint64_t changes = random() % 4; changes > 0; --changes) {
        input[random() % input.size()] = static_cast<char>(random() % 256);
    }
    return input;
}

}  // namespace fuzz
