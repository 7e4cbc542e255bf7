#pragma once
// The commands of the support tool. Each takes its arguments without its name, writes what it shows
// to standard output in UTF-8, and returns the exit status; what it cannot do is a ToolError.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "texts/tool_texts.h"

namespace nzutil {

using Arguments = std::vector<std::string>;

struct Command {
    std::string_view name;
    texts::Text usage;   ///< name and arguments
    texts::Text what;    ///< one line of help
    std::size_t fewest;  ///< arguments
    std::size_t most;
    int (*run)(const Arguments&);
};

inline constexpr std::size_t kAnyNumber = 1'000'000;

/// All commands, in the order of the help.
[[nodiscard]] std::span<const Command> commands();

/// Runs the tool: arguments as main() has them, without the program. The exit status: 0, or 1 with
/// a sentence on standard error.
int run_tool(const Arguments& arguments);

int command_fields(const Arguments& arguments);          // campi AREA|CODE
int command_read(const Arguments& arguments);            // leggi DIR FILE RECORD CODE [OCC]
int command_write(const Arguments& arguments);           // scrivi DIR FILE RECORD CODE VALUE [OCC]
int command_card(const Arguments& arguments);            // scheda DIR FILE RECORD
int command_index(const Arguments& arguments);           // isam DIR FILE cerca KEY|elenca|verifica
int command_demo(const Arguments& arguments);            // demo DIR
int command_period(const Arguments& arguments);          // periodo DIR ddmmyyyy KIND
int command_year(const Arguments& arguments);            // anno DIR YEAR [--prova] [--si]
int command_templates(const Arguments& arguments);       // modelli DIR
int command_municipalities(const Arguments& arguments);  // comuni CSV DIR
int command_install(const Arguments& arguments);         // installa FILE DIR
int command_slip(const Arguments& arguments);            // cedolino DIR CODE [--pdf FILE]
int command_scenarios(const Arguments& arguments);       // scenario FILE...

/// A whole number from an argument; ToolError outside the range.
[[nodiscard]] int whole_argument(const std::string& text, int lowest, int highest);

}  // namespace nzutil
