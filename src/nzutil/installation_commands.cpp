// demo, periodo, installa: installations and their period.

#include <algorithm>
#include <iostream>

#include "installation/demo.h"
#include "installation/description.h"
#include "installation/field_value.h"
#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/killed_run.h"
#include "nzutil/municipalities.h"
#include "nzutil/scenario.h"
#include "nzutil/write_lock.h"

namespace nzutil {

namespace {

void tell_registry(const Installation& installation) {
    std::cout << fill(texts::kToolRegistry, {installation.registry_file()}) << '\n';
}

}  // namespace

int command_demo(const Arguments& arguments) {
    const WriteLock lock = WriteLock::of_directory(make_archive_directory(arguments[0]), "demo");
    const Installation installation = make_demo_installation(arguments[0]);
    write_municipalities(installation.archive_directory(), demo_municipalities());
    std::cout << fill(texts::kToolDemoMade,
                      {arguments[0], std::to_string(installation.read_selection().size()),
                       installation.read(kPeriod, 1).value_or("").substr(0, 8)})
              << '\n';
    tell_registry(installation);
    return 0;
}

int command_period(const Arguments& arguments) {
    Installation installation = open_installation(arguments[0]);
    if (!is_date(arguments[1])) {
        throw ToolError(texts::kToolExpectedRealDate, {arguments[1]});
    }
    if (!is_run_kind(arguments[2])) {
        throw ToolError(texts::kToolExpectedKind, {arguments[2]});
    }
    const WriteLock lock(installation, "periodo");
    installation.write_period(arguments[1], arguments[2].front());
    std::cout << fill(texts::kToolPeriodSet, {arguments[1], arguments[2]}) << '\n';
    return 0;
}

int command_install(const Arguments& arguments) {
    const Scenario scenario = read_scenario(arguments[0]);
    const WriteLock lock =
        WriteLock::of_directory(make_archive_directory(arguments[1]), "installa");
    const Installation installation = install_scenario(scenario, arguments[1]);
    std::cout << fill(texts::kToolInstallationMade, {arguments[1]}) << '\n';
    tell_registry(installation);
    return 0;
}

}  // namespace nzutil
