// scenario: runs scenarios and prints what differs.

#include <stdlib.h>

#include <filesystem>
#include <iostream>

#include "installation/demo.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/scenario.h"

namespace nzutil {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kRandomCharacters = 6;  ///< replaced by mkdtemp

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

/// Runs one scenario and reports it; true when nothing differs.
bool report(const std::string& file, const ScenarioTools& tools) {
    const Scenario scenario = read_scenario(file);
    const WorkDirectory work;
    const std::vector<Difference> differences = run_scenario(scenario, tools, work.path());
    std::cout << fill(differences.empty() ? texts::kToolScenarioGood : texts::kToolScenarioBad,
                      {file, scenario.title})
              << '\n';
    for (const Difference& difference : differences) {
        std::cout << fill(texts::kToolDifference,
                          {difference.place, difference.expected, difference.found})
                  << '\n';
    }
    return differences.empty();
}

}  // namespace

int command_scenarios(const Arguments& arguments) {
    const WorkDirectory base;
    const ScenarioTools tools{program_directory() + "/velmor", base.path() + "/base"};
    make_base_installation(tools.base_directory).close();
    int bad = 0;
    for (const std::string& file : arguments) {
        try {
            bad += report(file, tools) ? 0 : 1;
        } catch (const ToolError& error) {
            std::cout.flush();
            std::cerr << error.what() << '\n';
            ++bad;
        }
    }
    std::cout << fill(texts::kToolScenarioSum,
                      {std::to_string(arguments.size()), std::to_string(bad)})
              << '\n';
    return bad == 0 ? 0 : 1;
}

}  // namespace nzutil
