// anno: the opening of a year.

#include <iostream>
#include <optional>

#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/killed_run.h"
#include "nzutil/write_lock.h"
#include "nzutil/year_opening.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

struct Options {
    bool dry_run = false;         ///< --prova
    bool without_asking = false;  ///< --si
};

Options read_options(const Arguments& arguments) {
    Options options;
    for (std::size_t i = 2; i < arguments.size(); ++i) {
        if (arguments[i] == "--prova") {
            options.dry_run = true;
        } else if (arguments[i] == "--si") {
            options.without_asking = true;
        } else {
            throw ToolError(texts::kToolUsage, {texts::kToolUsageYear.utf8});
        }
    }
    return options;
}

std::string amount(double value) {
    return MXREPOSITORY::arrotondato_testo(value, 2);
}

void show(const OpenedEmployee& employee) {
    std::cout << fill(texts::kToolYearEmployee,
                      {employee.code, employee.name, amount(employee.income)});
    if (employee.left) {
        std::cout << texts::kToolYearLeft.utf8 << '\n';
        return;
    }
    std::cout << fill(texts::kToolYearCarried,
                      {amount(employee.regional), amount(employee.municipal),
                       amount(employee.severance), amount(employee.revaluation)})
              << '\n';
}

void show_opening(const Installation& installation, const YearOpening& opening) {
    for (const int record : opening.to_open) {
        show(work_out_opening(installation, record, opening.year));
    }
    for (const std::string& code : opening.begun) {
        std::cout << fill(texts::kToolYearHasSlip, {code, std::to_string(opening.year)}) << '\n';
    }
    std::cout << fill(texts::kToolYearSum,
                      {std::to_string(opening.to_open.size()), std::to_string(opening.passed_over),
                       std::to_string(opening.begun.size())})
              << '\n';
}

/// Anything but si, sì and s is a no; so is the end of the input.
bool confirmed(int year) {
    std::cout << fill(texts::kToolYearQuestion, {std::to_string(year)}) << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "si" || answer == "sì" || answer == "s";
}

}  // namespace

int command_year(const Arguments& arguments) {
    const Options options = read_options(arguments);
    Installation installation = open_installation(arguments[0]);
    const int year = whole_argument(arguments[1], kFirstOpenedYear, kLastOpenedYear);
    std::optional<WriteLock> lock;
    if (!options.dry_run) {
        lock.emplace(installation, "anno");
    }
    const YearOpening opening = prepare_year_opening(installation, year);
    show_opening(installation, opening);
    if (options.dry_run) {
        std::cout << texts::kToolYearTrial.utf8 << '\n';
        return 0;
    }
    if (!options.without_asking && !confirmed(year)) {
        std::cout << texts::kToolYearLeftAlone.utf8 << '\n';
        return 1;
    }
    write_year_opening(installation, opening);
    std::cout << fill(texts::kToolYearOpened,
                      {std::to_string(year), std::to_string(opening.to_open.size())})
              << '\n';
    return 0;
}

}  // namespace nzutil
