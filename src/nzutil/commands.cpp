#include "nzutil/commands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <memory>

#include "context/failure_advice.h"
#include "installation/tool_error.h"
#include "platform/code_page.h"
#include "platform/failure.h"
#include "platform/silent_window.h"
#include "platform/window.h"

namespace nzutil {

namespace {

constexpr std::array kCommands{
    Command{"demo", texts::kToolUsageDemo, texts::kToolHelpDemo, 1, 1, command_demo},
    Command{"periodo", texts::kToolUsagePeriod, texts::kToolHelpPeriod, 3, 3, command_period},
    Command{"anno", texts::kToolUsageYear, texts::kToolHelpYear, 2, 4, command_year},
    Command{"campi", texts::kToolUsageFields, texts::kToolHelpFields, 1, kAnyNumber,
            command_fields},
    Command{"leggi", texts::kToolUsageRead, texts::kToolHelpRead, 4, 5, command_read},
    Command{"scrivi", texts::kToolUsageWrite, texts::kToolHelpWrite, 5, 6, command_write},
    Command{"scheda", texts::kToolUsageCard, texts::kToolHelpCard, 3, 3, command_card},
    Command{"cedolino", texts::kToolUsageSlip, texts::kToolHelpSlip, 2, 4, command_slip},
    Command{"isam", texts::kToolUsageIndex, texts::kToolHelpIndex, 3, 4, command_index},
    Command{"scenario", texts::kToolUsageScenario, texts::kToolHelpScenario, 1, kAnyNumber,
            command_scenarios},
    Command{"modelli", texts::kToolUsageTemplates, texts::kToolHelpTemplates, 1, 1,
            command_templates},
    Command{"comuni", texts::kToolUsageMunicipalities, texts::kToolHelpMunicipalities, 2, 2,
            command_municipalities},
    Command{"installa", texts::kToolUsageInstall, texts::kToolHelpInstall, 2, 2, command_install},
};

/// The window of the tool: a refusal of the file operations ends the command with its text.
class ToolWindow final : public platform::SilentWindow {
  public:
    void box(const std::string&, const std::string& text, platform::Icon) override {
        throw ToolError(texts::kToolRefused, {platform::to_terminal(text)});
    }
};

int help() {
    std::cout << texts::kToolHelp.utf8;
    std::size_t width = 0;
    for (const Command& command : kCommands) {
        width = std::max(width, command.usage.utf8.size());
    }
    for (const Command& command : kCommands) {
        std::cout << "  nzutil " << command.usage.utf8
                  << std::string(width - command.usage.utf8.size() + 2, ' ') << command.what.utf8
                  << '\n';
    }
    return 0;
}

void show_failure(const platform::Failure& failure) {
    std::cerr << fill(texts::kToolFailure,
                      {std::to_string(failure.number()), failure.description()})
              << '\n';
    if (!failure.culprit.empty()) {
        std::cerr << texts::kFailureCulprit.utf8 << platform::utf8_to_terminal(failure.culprit)
                  << '\n';
    }
    std::string advice = MXLIBRERIA::failure_advice(failure);
    std::erase(advice, '\r');
    std::cerr << platform::utf8_lines_to_terminal(platform::to_utf8(advice));
}

int run_command(const Arguments& arguments) {
    if (arguments.empty() || arguments.front() == "--help" || arguments.front() == "-h") {
        help();
        return arguments.empty() ? 1 : 0;
    }
    if (arguments.front() == "--version") {
        std::cout << texts::kToolVersion.utf8 << VELMOR_VERSION << '\n';
        return 0;
    }
    const auto command = std::ranges::find(kCommands, arguments.front(), &Command::name);
    if (command == kCommands.end()) {
        throw ToolError(texts::kToolUnknownCommand, {arguments.front()});
    }
    const Arguments rest(arguments.begin() + 1, arguments.end());
    if (rest.size() < command->fewest || rest.size() > command->most) {
        throw ToolError(texts::kToolUsage, {command->usage.utf8});
    }
    return command->run(rest);
}

}  // namespace

std::span<const Command> commands() {
    return kCommands;
}

int run_tool(const Arguments& arguments) {
    platform::set_window(std::make_unique<ToolWindow>());
    try {
        return run_command(arguments);
    } catch (const ToolError& error) {
        std::cerr << platform::utf8_lines_to_terminal(error.what()) << '\n';
    } catch (const std::exception& other) {
        show_failure(platform::failure_of(other));
    }
    return 1;
}

int whole_argument(const std::string& text, int lowest, int highest) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc{} || rest != end || value < lowest || value > highest) {
        throw ToolError(texts::kToolWhole, {text, std::to_string(lowest), std::to_string(highest)});
    }
    return value;
}

}  // namespace nzutil
