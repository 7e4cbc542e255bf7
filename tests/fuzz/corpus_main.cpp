// Runs a fuzz target over its corpus and over random inputs:
//
//   fuzz_TARGET [--seed N] [--inputs N] CORPUS_DIRECTORY...
//
// The seed is printed first, so that a run can be repeated. An input that breaks the program, or
// holds it for more than 20 seconds, is left in the file that the first line names.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/fuzz/fuzz_target.h"

namespace {

namespace fs = std::filesystem;

struct Arguments {
    std::uint64_t seed = std::random_device{}();
    std::uint64_t inputs = 5000;
    std::vector<fs::path> directories;
};

Arguments read_arguments(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--seed" && i + 1 < words.size()) {
            arguments.seed = std::stoull(words[++i]);
        } else if (words[i] == "--inputs" && i + 1 < words.size()) {
            arguments.inputs = std::stoull(words[++i]);
        } else {
            arguments.directories.emplace_back(words[i]);
        }
    }
    return arguments;
}

/// The input under way; a signal that ends the program writes it to `file`.
struct UnderWay {
    std::string file;
    std::vector<std::uint8_t> input;
};
UnderWay under_way;

constexpr unsigned kSecondsForAnInput = 20;

extern "C" void keep_the_input(int /*signal*/) {
    // Only calls that a signal handler may make.
    const int out = ::open(under_way.file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (out >= 0) {
        const ssize_t written = ::write(out, under_way.input.data(), under_way.input.size());
        ::_exit(written < 0 ? 2 : 1);
    }
    ::_exit(2);
}

void run_input(const std::string& input) {
    under_way.input.assign(input.begin(), input.end());
    ::alarm(kSecondsForAnInput);
    LLVMFuzzerTestOneInput(under_way.input.data(), under_way.input.size());
    ::alarm(0);
}

std::vector<fs::path> corpus_files(const std::vector<fs::path>& directories) {
    std::vector<fs::path> files;
    for (const fs::path& directory : directories) {
        for (const auto& entry : fs::directory_iterator(directory)) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

int run(int argc, char** argv) {
    const Arguments arguments = read_arguments({argv + 1, argv + argc});
    under_way.file =
        (fs::temp_directory_path() / ("velmor-fuzz-" + std::to_string(arguments.seed) + ".input"))
            .string();
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGBUS, SIGALRM}) {
        std::signal(signal, keep_the_input);
    }
    std::cout << "seed " << arguments.seed << "; an input that breaks the program goes to "
              << under_way.file << std::endl;
    LLVMFuzzerInitialize(&argc, &argv);
    const std::vector<fs::path> files = corpus_files(arguments.directories);
    for (const fs::path& file : files) {
        std::ifstream in(file, std::ios::binary);
        run_input({std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()});
    }
    std::mt19937_64 random(arguments.seed);
    for (std::uint64_t i = 0; i < arguments.inputs; ++i) {
        run_input(fuzz::random_input(random));
    }
    std::cout << files.size() << " inputs of the corpus, " << arguments.inputs << " random ones\n";
    return files.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "fuzz: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
