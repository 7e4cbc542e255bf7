#pragma once
// What a fuzz target offers. With libFuzzer (clang) the fuzzer calls the first two; in the ordinary
// build corpus_main.cpp runs the corpus and random inputs through them.

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

/// Called once before the first input.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
/// Runs one input; aborts where the program does what it must not do.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// A random input that gets past the first checks more often than random bytes do.
[[nodiscard]] std::string random_input(std::mt19937_64& random);

}  // namespace fuzz
