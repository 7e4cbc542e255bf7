#pragma once
// Scenarios: a YAML file that states one run, or a chain of runs, and what must come out of it.
// Each runs in a directory of its own through the whole program. The syntax: docs/manuale.md.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "installation/description.h"
#include "nzutil/municipalities.h"

namespace nzutil {

/// Quantity and rate that a slip line has after the run; an empty one is not compared.
struct ExpectedLine {
    int number = 0;  ///< 1 to 100
    std::string quantity;
    std::string rate;
};

/// What must stand in the records of one employee after the run.
struct ExpectedEmployee {
    FieldValues fields;
    FieldValues months;
    FieldValues certificate;
    std::vector<ExpectedLine> lines;
    std::map<std::string, std::string> archive;  ///< columns of the monthly archive
    FieldValues sums;  ///< of the slips that all runs calculated; in the first run only
};

/// A file to be spoilt before the run.
struct Damage {
    int file = 0;      ///< logical number, or
    std::string name;  ///< name in the archive directory
    bool remove = false;
    std::optional<int> length;    ///< cut to, or lengthened with blanks to
    std::optional<int> position;  ///< 1-based place of `bytes`
    std::string bytes;
    std::string statement;  ///< to run in an archive with tables, of that name
};

/// One start of the program.
struct ScenarioRun {
    PeriodEntry period;
    int opens_year = 0;                        ///< opened before anything else of this run; 0: none
    std::vector<Municipality> municipalities;  ///< to be written to TABCOM.MDB before the run
    Description tables;                        ///< what changes before this run, but for employees
    std::map<int, EmployeeEntry> changes;      ///< by record: what changes before this run
    std::map<int, ExpectedEmployee> expected;  ///< by record
    FieldValues expected_fixed;
    FieldValues expected_company;
    std::map<int, std::vector<std::string>> expected_tables;  ///< by file: its first records
    std::optional<std::vector<std::string>> expected_list;
    std::vector<std::string> expected_boxes;  ///< each a part of the text of a box, in order
    std::vector<bool> answers;
    int exit_status = 0;
};

struct Scenario {
    std::string file;
    std::string title;
    Description description;
    std::vector<std::string> archives;
    std::vector<Damage> damages;
    std::map<std::string, std::string> without_identity;  ///< identity and why it does not hold
    std::vector<ScenarioRun> runs;
};

/// Reads a scenario; DocumentError names file, line and what was expected there.
[[nodiscard]] Scenario read_scenario(const std::string& file);
[[nodiscard]] Scenario read_scenario(const Document& document);

/// Makes the installation that the scenario's first run finds.
[[nodiscard]] Installation install_scenario(const Scenario& scenario, const std::string& directory);

/// Something that came out otherwise than expected.
struct Difference {
    std::string place;  ///< "P240", "lista, riga 1"
    std::string expected;
    std::string found;
    std::string meaning = {};  ///< of a field, UTF-8; empty elsewhere
};

/// The difference as a line of the report: a field with its meaning.
[[nodiscard]] std::string in_words(const Difference& difference);

/// Where the program and a ready base installation stand, and who looks at each run.
struct ScenarioTools {
    std::string program;         ///< path of the batch
    std::string base_directory;  ///< installation that is copied; empty: one is made
    /// Called after each run, with its number from 1.
    std::function<void(int, const ScenarioRun&, const Installation&)> after_run;
};

/// Runs the scenario in `directory`, which it fills; the differences, none when all is as expected.
[[nodiscard]] std::vector<Difference> run_scenario(const Scenario& scenario,
                                                   const ScenarioTools& tools,
                                                   const std::string& directory);

}  // namespace nzutil
