// cedolino: the calculated slip, on the terminal or as PDF.

#include <iostream>

#include "installation/tool_error.h"
#include "nzutil/commands.h"
#include "nzutil/killed_run.h"
#include "nzutil/pay_slip.h"
#include "platform/code_page.h"
#include "platform/printer.h"

namespace nzutil {

namespace {

constexpr int kFontSize = 9;

}  // namespace

int command_slip(const Arguments& arguments) {
    const bool pdf = arguments.size() == 4 && arguments[2] == "--pdf";
    if (arguments.size() != 2 && !pdf) {
        throw ToolError(texts::kToolUsage, {texts::kToolUsageSlip.utf8});
    }
    const Installation installation = open_installation(arguments[0]);
    const int employee = employee_record(installation, arguments[1]);
    const std::vector<std::string> lines = pay_slip_lines(installation, employee);
    if (!pdf) {
        for (const std::string& line : lines) {
            std::cout << platform::to_terminal(line) << '\n';
        }
        return 0;
    }
    platform::write_pdf(arguments[3], lines, kFontSize);
    std::cout << fill(texts::kToolPdfMade, {arguments[3]}) << '\n';
    return 0;
}

}  // namespace nzutil
