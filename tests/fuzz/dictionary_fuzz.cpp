// Any bytes in a dictionary file: the letter loads, and each name of it reads and writes, or shows
// a message, or ends in one failure.

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "formulas/named_access.h"
#include "platform/failure.h"
#include "platform/silent_window.h"
#include "records/fields.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/support/dictionary_archive.h"
#include "tests/support/record_areas.h"

namespace {

using namespace MXREPOSITORY;

std::unique_ptr<test_support::DictionaryArchive> archive;

void must(bool condition, const char* what) {
    if (!condition) {
        std::cerr << "dictionary: " << what << std::endl;
        std::abort();
    }
}

template <class Access>
void run(Access access) {
    try {
        access();
    } catch (const platform::Failure& failure) {
        must(failure.number() == platform::kInvalidCall ||
                 failure.number() == platform::kSubscriptOutOfRange,
             "a failure that no field has");
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    archive = std::make_unique<test_support::DictionaryArchive>();
    std::atexit([] { archive.reset(); });  // while the file table still lives
    archive->add(25, {});
    platform::set_window(std::make_unique<platform::SilentWindow>());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    archive->directory().write(test_support::DictionaryArchive::name_of(25),
                               std::string(data, data + size));
    repository = {};
    const std::string record(500, '5');
    area(Area::STUX) = record;
    INIZIALIZZAREPOSITORY('E');
    must(repository.TABELLACAMPI.size() <= 4100, "more fields than a letter has slots");
    for (std::size_t slot = 0; slot <= repository.TABELLACAMPI.size(); ++slot) {
        const auto displacement = static_cast<double>(slot);
        run([&] { (void)XREPOR("E", displacement, {}); });
        run([&] { (void)XREPOR("E", displacement, "short"); });
        run([&] { XREPOW("E", displacement, "-12,5"); });
    }
    must(area(Area::STUX).size() == record.size(), "the record changed its length");
    area(Area::STUX).clear();
    return 0;
}

namespace fuzz {

std::string random_input(std::mt19937_64& random) {
    std::string input;
    for (std::uint64_t records = random() % 8; records > 0; --records) {
        input += test_support::dictionary_record(
            "E" + std::to_string(100 + random() % 20), static_cast<int>(random() % 520),
            static_cast<int>(random() % 100), "NAD0123456789 "[random() % 14]);
        for (std::uint64_t changes = random() % 6; changes > 0; --changes) {
            input[input.size() - 1 - random() % 60] = static_cast<char>(random() % 256);
        }
    }
    input.resize(input.size() - std::min<std::size_t>(input.size(), random() % 30));
    return input;
}

}  // namespace fuzz
