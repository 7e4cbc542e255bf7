#include "nzutil/scenario_comparison.h"

#include <algorithm>

#include "installation/field_value.h"
#include "nzutil/calculated_slip.h"
#include "nzutil/expected_value.h"
#include "nzutil/identities.h"
#include "nzutil/run_output.h"
#include "platform/code_page.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

using Differences = std::vector<Difference>;

/// In front of a place: the run, where there are several, and the employee, where there are
/// several.
struct Prefix {
    std::string run;
    std::string employee;
    [[nodiscard]] std::string operator()(const std::string& place) const {
        return run + employee + place;
    }
};

std::string nothing_or(const std::string& text) {
    return text.empty() ? std::string(texts::kToolNothing.utf8) : text;
}

void compare_fields(const FieldValues& expected, const std::string& record, const Prefix& prefix,
                    Differences& differences) {
    for (const FieldValue& value : expected) {
        if (std::optional<Difference> difference = compare_value(value, record)) {
            difference->place = prefix(difference->place);
            differences.push_back(*std::move(difference));
        }
    }
}

void compare_lines(const Installation& installation, const std::vector<ExpectedLine>& expected,
                   const std::string& record, const Prefix& prefix, Differences& differences) {
    const auto compare = [&](int line, const char* column, std::string_view wanted,
                             std::string_view found) {
        if (wanted != found) {
            differences.push_back(
                {prefix(fill(texts::kToolPlaceLine, {std::to_string(line), column})),
                 std::string(wanted), std::string(found)});
        }
    };
    for (const ExpectedLine& line : expected) {
        const std::string found = MXREPOSITORY::LEGGICAMPO(
            MXREPOSITORY::dopo(MXREPOSITORY::Q401, line.number - 1), 0, record);
        SlipLineEntry wanted;
        wanted.item = static_cast<int>(MXREPOSITORY::valore(found.substr(1, 3)));
        wanted.quantity = line.quantity.empty() ? "0" : line.quantity;
        wanted.rate = line.rate.empty() ? "0" : line.rate;
        const std::string text = slip_line_text(installation, wanted);
        if (!line.quantity.empty()) {
            compare(line.number, "quantita", text.substr(4, 13), found.substr(4, 13));
        }
        if (!line.rate.empty()) {
            compare(line.number, "valore", text.substr(17, 13), found.substr(17, 13));
        }
    }
}

/// The first records of other files, without the blanks behind them; one that is not there is
/// empty.
void compare_tables(const Installation& installation, const ScenarioRun& run, const Prefix& prefix,
                    Differences& differences) {
    for (const auto& [file, records] : run.expected_tables) {
        for (std::size_t index = 0; index < records.size(); ++index) {
            const int number = static_cast<int>(index) + 1;
            const std::string found =
                MXREPOSITORY::rifila_destra(installation.read(file, number).value_or(""));
            if (found != records[index]) {
                differences.push_back({prefix(fill(texts::kToolPlaceRecord,
                                                   {std::to_string(file), std::to_string(number)})),
                                       nothing_or(platform::to_utf8(records[index])),
                                       nothing_or(platform::to_utf8(found))});
            }
        }
    }
}

void compare_employee(const Installation& installation, int record,
                      const ExpectedEmployee& expected, const Prefix& prefix,
                      Differences& differences) {
    const std::string employee = installation.read(kEmployees, record).value_or("");
    compare_fields(expected.fields, employee, prefix, differences);
    compare_lines(installation, expected.lines, employee, prefix, differences);
    if (!expected.months.empty()) {
        compare_fields(expected.months, installation.read(kTwelveMonths, record).value_or(""),
                       prefix, differences);
    }
    if (!expected.certificate.empty()) {
        const std::string code = MXREPOSITORY::LEGGICAMPO(MXREPOSITORY::P001, 0, employee);
        const std::string certificate = certificate_of(installation, code);
        compare_fields(expected.certificate, certificate.empty() ? " " : certificate, prefix,
                       differences);
    }
    for (const auto& [column, value] : expected.archive) {
        differences.push_back({prefix(fill(texts::kToolPlaceArchive, {column})), value,
                               std::string(texts::kToolNothing.utf8)});
    }
}

void compare_list(const std::vector<std::string>& expected, const std::vector<std::string>& found,
                  const Prefix& prefix, Differences& differences) {
    for (std::size_t i = 0; i < std::max(expected.size(), found.size()); ++i) {
        const std::string wanted = i < expected.size() ? expected[i] : std::string();
        const std::string shown_line = i < found.size() ? found[i] : std::string();
        if (wanted != shown_line || i >= expected.size() || i >= found.size()) {
            differences.push_back({prefix(fill(texts::kToolPlaceListLine, {std::to_string(i + 1)})),
                                   nothing_or(wanted), nothing_or(shown_line)});
        }
    }
}

std::string on_one_line(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// Every box must be announced, and every announced box must come. Questions that the scenario
/// answers, and the closing message of a run in order, need no announcement.
void compare_boxes(const ScenarioRun& run, const std::vector<ShownBox>& boxes, const Prefix& prefix,
                   Differences& differences) {
    std::size_t announced = 0;
    std::size_t questions = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const ShownBox& box = boxes[i];
        if (announced < run.expected_boxes.size() &&
            box.text.find(run.expected_boxes[announced]) != std::string::npos) {
            ++announced;
            continue;
        }
        const bool answered = box.answer && questions++ < run.answers.size();
        if (!answered && !is_closing_message(box)) {
            differences.push_back({prefix(fill(texts::kToolPlaceBox, {std::to_string(i + 1)})),
                                   std::string(texts::kToolNothing.utf8), on_one_line(box.text)});
        }
    }
    for (; announced < run.expected_boxes.size(); ++announced) {
        differences.push_back({prefix(fill(texts::kToolPlaceBox, {std::to_string(announced + 1)})),
                               run.expected_boxes[announced],
                               std::string(texts::kToolNothing.utf8)});
    }
}

/// Does the list tell that the employee's slip has been calculated?
bool was_calculated(const CalculatedSlip& slip, const std::vector<std::string>& list) {
    const std::string code = slip.text(MXREPOSITORY::P001);
    const std::string start =
        code.substr(0, 3) + "-" + code.substr(3, 3) + "-" + code.substr(6) + " ";
    return std::ranges::any_of(list, [&](const std::string& line) {
        return line.starts_with(start) &&
               line.find(texts::kWordCalculated.utf8) != std::string::npos &&
               line.find(texts::kWordAlready.utf8) == std::string::npos;
    });
}

/// Identities hold for every slip of the run; of one that it did not calculate, that nothing of it
/// has been written.
void compare_identities(const Installation& installation, const Scenario& scenario,
                        const ScenarioRun& run, const std::map<int, std::string>& before,
                        const std::vector<std::string>& list, const Prefix& prefix,
                        Differences& differences) {
    for (const auto& [record, former] : before) {
        const CalculatedSlip slip(installation, record, former,
                                  installation.read(kEmployees, record).value_or(""), run.period);
        const bool calculated = was_calculated(slip, list);
        for (Difference& difference :
             check_identities(slip, calculated, scenario.without_identity)) {
            difference.place = prefix(difference.place);
            differences.push_back(std::move(difference));
        }
    }
}

void compare_expectations(const Installation& installation, const ScenarioRun& run,
                          const ProcessResult& result, Prefix prefix, Differences& differences) {
    if (result.too_long) {
        differences.push_back({prefix(std::string(texts::kToolPlaceStatus.utf8)),
                               std::to_string(run.exit_status),
                               std::string(texts::kToolTooLong.utf8)});
        return;
    }
    if (result.status != run.exit_status) {
        differences.push_back({prefix(std::string(texts::kToolPlaceStatus.utf8)),
                               std::to_string(run.exit_status), std::to_string(result.status)});
    }
    const RunOutput output = read_run_output(result.output);
    compare_boxes(run, output.boxes, prefix, differences);
    if (run.expected_list) {
        compare_list(*run.expected_list, output.list, prefix, differences);
    }
    if (!run.expected_fixed.empty()) {
        compare_fields(run.expected_fixed, installation.read(kFixedData, 1).value_or(""), prefix,
                       differences);
    }
    if (!run.expected_company.empty()) {
        const int company = installation.read_selection().front().first;
        compare_fields(run.expected_company, installation.read(kCompanies, company).value_or(""),
                       prefix, differences);
    }
    compare_tables(installation, run, prefix, differences);
    for (const auto& [record, expected] : run.expected) {
        if (run.expected.size() > 1) {
            prefix.employee = fill(texts::kToolPlaceEmployee, {std::to_string(record)});
        }
        compare_employee(installation, record, expected, prefix, differences);
    }
}

}  // namespace

void compare_run(const Installation& installation, const Scenario& scenario, std::size_t number,
                 const ProcessResult& result, const std::map<int, std::string>& before,
                 Differences& differences) {
    const ScenarioRun& run = scenario.runs[number];
    Prefix prefix;
    if (scenario.runs.size() > 1) {
        prefix.run = fill(texts::kToolPlaceRun, {std::to_string(number + 1)});
    }
    compare_expectations(installation, run, result, prefix, differences);
    compare_identities(installation, scenario, run, before, read_run_output(result.output).list,
                       prefix, differences);
}

void add_to_sums(const Installation& installation, const Scenario& scenario, std::size_t number,
                 const ProcessResult& result, Sums& sums) {
    const std::vector<std::string> list = read_run_output(result.output).list;
    const PeriodEntry& period = scenario.runs[number].period;
    for (const auto& [record, expected] : scenario.runs.front().expected) {
        const std::string employee = installation.read(kEmployees, record).value_or("");
        if (expected.sums.empty() ||
            !was_calculated(CalculatedSlip(installation, record, employee, employee, period),
                            list)) {
            continue;
        }
        std::vector<double>& of_employee = sums[record];
        of_employee.resize(expected.sums.size());
        for (std::size_t i = 0; i < expected.sums.size(); ++i) {
            of_employee[i] += MXREPOSITORY::LEGGICAMPONUM(expected.sums[i].field, 0, employee);
        }
    }
}

void compare_sums(const Scenario& scenario, const Sums& sums, Differences& differences) {
    for (const auto& [record, expected] : scenario.runs.front().expected) {
        const auto found = sums.find(record);
        for (std::size_t i = 0; i < expected.sums.size(); ++i) {
            const double sum = found != sums.end() ? found->second[i] : 0;
            if (std::optional<Difference> difference = compare_sum(expected.sums[i], sum)) {
                if (scenario.description.employees.size() > 1) {
                    difference->place = fill(texts::kToolPlaceEmployee, {std::to_string(record)}) +
                                        difference->place;
                }
                differences.push_back(*std::move(difference));
            }
        }
    }
}

}  // namespace nzutil
