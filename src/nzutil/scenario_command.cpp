// scenario: runs scenarios and prints what differs.

#include <stdlib.h>

#include <filesystem>
#include <iostream>

#include "installation/demo.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/pay_slip.h"
#include "nzutil/scenario.h"
#include "platform/code_page.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kRandomCharacters = 6;  ///< replaced by mkdtemp
constexpr int kMostRuns = 10000;
// Exit status.
constexpr int kDifferentStatus = 1;
constexpr int kNotRunStatus = 2;  ///< a file cannot be read, or is no scenario

/// A directory that goes with its object.
class WorkDirectory {
  public:
    WorkDirectory() {
        std::string pattern =
            (fs::temp_directory_path() / "nzutil-").string() + std::string(kRandomCharacters, 'X');
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw ToolError(texts::kToolCannotWrite, {pattern});
        }
        path_ = pattern;
    }
    ~WorkDirectory() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    WorkDirectory(const WorkDirectory&) = delete;
    WorkDirectory& operator=(const WorkDirectory&) = delete;
    WorkDirectory(WorkDirectory&&) = delete;
    WorkDirectory& operator=(WorkDirectory&&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    std::string path_;
};

/// What the command is asked for.
struct Request {
    std::string shown_employee;  ///< code; empty: no slip is shown
    int shown_run = 0;           ///< 0: each
    std::vector<std::string> files;
};

Request read_request(const Arguments& arguments) {
    Request request;
    std::size_t next = 0;
    const auto option = [&](std::string_view name) {
        const bool given = next + 1 < arguments.size() && arguments[next] == name;
        next += given ? 2 : 0;
        return given;
    };
    if (option("--mostra")) {
        request.shown_employee = arguments[next - 1];
        if (option("--corsa")) {
            request.shown_run = whole_argument(arguments[next - 1], 1, kMostRuns);
        }
    }
    request.files.assign(arguments.begin() + static_cast<std::ptrdiff_t>(next), arguments.end());
    if (request.files.empty() || request.files.front().starts_with("--")) {
        throw ToolError(texts::kToolUsage, {texts::kToolUsageScenario.utf8});
    }
    return request;
}

void show_slip(const Request& request, int number, const ScenarioRun& run,
               const Installation& installation) {
    if (request.shown_run != 0 && request.shown_run != number) {
        return;
    }
    std::cout << fill(texts::kToolShownRun,
                      {std::to_string(number), run.period.date, std::string(1, run.period.kind)})
              << '\n';
    const int employee = employee_record(installation, request.shown_employee);
    for (const std::string& line : pay_slip_lines(installation, employee)) {
        std::cout << platform::to_terminal(line) << '\n';
    }
}

/// Runs one scenario and reports it; true when nothing differs.
bool report(const std::string& file, const Request& request, ScenarioTools tools) {
    const Scenario scenario = read_scenario(file);
    if (request.shown_run > static_cast<int>(scenario.runs.size())) {
        throw ToolError(texts::kToolNoRun, {file, std::to_string(request.shown_run),
                                            std::to_string(scenario.runs.size())});
    }
    if (!request.shown_employee.empty()) {
        tools.after_run = [&](int number, const ScenarioRun& run,
                              const Installation& installation) {
            show_slip(request, number, run, installation);
        };
    }
    const WorkDirectory work;
    const std::vector<Difference> differences = run_scenario(scenario, tools, work.path());
    std::cout << fill(differences.empty() ? texts::kToolScenarioGood : texts::kToolScenarioBad,
                      {file, scenario.title})
              << '\n';
    for (const Difference& difference : differences) {
        std::cout << in_words(difference) << '\n';
    }
    return differences.empty();
}

}  // namespace

int command_scenarios(const Arguments& arguments) {
    const Request request = read_request(arguments);
    const WorkDirectory base;
    const ScenarioTools tools{program_directory() + "/velmor", base.path() + "/base", {}};
    make_base_installation(tools.base_directory).close();
    int different = 0;
    int not_run = 0;
    for (const std::string& file : request.files) {
        try {
            different += report(file, request, tools) ? 0 : 1;
        } catch (const ToolError& error) {
            std::cout.flush();
            std::cerr << platform::utf8_lines_to_terminal(error.what()) << '\n';
            ++not_run;
        }
    }
    std::cout << fill(texts::kToolScenarioSum, {std::to_string(request.files.size()),
                                                std::to_string(different), std::to_string(not_run)})
              << '\n';
    return not_run != 0 ? kNotRunStatus : different != 0 ? kDifferentStatus : 0;
}

}  // namespace nzutil
