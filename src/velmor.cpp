// main(): the batch. No argument changes a run.

#include <exception>
#include <iostream>
#include <span>
#include <string_view>

#include "context/failure_handler.h"
#include "platform/code_page.h"
#include "platform/failure.h"
#include "platform/standard_streams.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "run/load_environment.h"
#include "run/main_run.h"
#include "texts/texts.h"

namespace {

using platform::Failure;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

/// The answer to the arguments; without any the run follows.
int answer_arguments(std::span<const char* const> arguments) {
    const std::string_view first = arguments.front();
    if (first == "--help") {
        std::cout << texts::kHelp.utf8;
        return 0;
    }
    if (first == "--version") {
        std::cout << texts::kVersion.utf8 << VELMOR_VERSION << "\n";
        return 0;
    }
    std::cerr << texts::kUnknownArgument.utf8 << platform::utf8_to_terminal(first) << "\n";
    return kWrongUse;
}

/// The run under the one handler of failures; returns the exit status.
int run() {
    platform::set_window(platform::make_window_from_environment());
    try {
        platform::check_answers();
        ModSWCALM::MAIN();
        return 0;
    } catch (const platform::EndOfProgram& end) {
        return end.status;
    } catch (const std::exception& other) {
        return MXLIBRERIA::GESTIONEERRORE(platform::failure_of(other));
    }
}

}  // namespace

int main(int argc, char** argv) {
    platform::open_standard_streams();
    platform::listen_to_stop_requests();
    try {
        const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
        const int status = argc > 1 ? answer_arguments(arguments.subspan(1)) : run();
        ModSWCALM::instance_lock = {};
        return status;
    } catch (const std::exception& other) {
        const Failure failure = platform::failure_of(other);
        std::cerr << texts::kFailure.utf8 << failure.number() << " " << failure.description()
                  << "\n";
        return kFailed;
    }
}
