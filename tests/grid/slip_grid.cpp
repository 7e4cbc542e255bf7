// The grid: salaries from 500 to 12000 in steps of 250, kinds of employee, years 2014 to 2026,
// twelve months each through the whole program, and the figures of the year after December.
//
//   slip_grid check VELMOR YEARS FIGURES LAW LEDGER
//       runs the grid; compares it with the kept figures, and its ordinary employees with the
//       figures of the law
//   slip_grid figures VELMOR YEARS
//       runs the grid and prints the figures
//
// Tables of law come from demo/anni, of the years before those files from the directory YEARS.
// FIGURES guards against change and is no evidence that a figure is right: a change in any of them
// shows in the diff and has to be explained. LAW is what law_reference --grid prints. Each
// difference from it must fall under a row of LEDGER, which gives the reason; a row that serves no
// more must go.

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "context/utilities.h"
#include "installation/demo.h"
#include "installation/description.h"
#include "installation/document.h"
#include "installation/file_layout.h"
#include "installation/years.h"
#include "nzutil/process.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXREPOSITORY;

constexpr int kFirstYear = 2014;
constexpr int kLastYear = 2026;
constexpr int kLowestSalary = 500;
constexpr int kHighestSalary = 12000;
constexpr int kStep = 250;

/// Kinds of employee: fields over the ordinary employee's, and the lines of the slip. "SALARY"
/// stands for the monthly salary.
struct Kind {
    const char* name;
    const char* fields;
    const char* lines;
};
constexpr const char* kMonthlyLine = "[{voce: 2, quantita: 26}]";
constexpr std::array kKinds{
    Kind{"ordinario", "P058: SALARY, PB05: 1", kMonthlyLine},
    Kind{"taglio", "P058: SALARY", kMonthlyLine},
    Kind{"apprendista", "P058: SALARY, PB05: 1, P045: 5, P181: 0, P188: 1", kMonthlyLine},
    Kind{"famiglia",
         "P058: SALARY, PB05: 1, P035: 2, P404: 1, P634: \"NRERRT73A11H294M\", P635: \"11011973\", "
         "P636: 100, P637: \"C\", P638: \"NREMRA99A01H294Z\", P639: \"01011999\", P640: 50",
         kMonthlyLine},
    Kind{"collaboratore", "P058: 0, P181: 0, P447: 1, P449: 30",
         "[{voce: 500, quantita: 1, valore: SALARY}, {voce: 501}, {voce: 502}]"},
};

std::string with_salary(std::string text, int salary) {
    constexpr std::string_view kMark = "SALARY";
    for (std::size_t at = text.find(kMark); at != std::string::npos; at = text.find(kMark)) {
        text.replace(at, kMark.size(), std::to_string(salary));
    }
    return text;
}

/// The employees of a year, as a document of the support tool. No minimum daily wage: the low
/// salaries of the grid stand for themselves.
std::string document_of_employees() {
    std::ostringstream text;
    text << "settore: {record: 1, campi: {S046: 0}}\ndipendente:\n";
    int record = 0;
    for (const Kind& kind : kKinds) {
        for (int salary = kLowestSalary; salary <= kHighestSalary; salary += kStep) {
            ++record;
            text << "  - record: " << record << "\n    campi: {P001: \"001"
                 << zeri_a_sinistra(std::to_string(record), 7) << "\", P090: 12, P885: 1, "
                 << "P013: \"01012010\", Q171: 12, " << with_salary(kind.fields, salary)
                 << "}\n    righe: " << with_salary(kind.lines, salary) << '\n';
        }
    }
    return text.str();
}

/// The year's own tables: those that the demo brings, and before them the grid's own file.
nzutil::Description tables_of(int year, const std::string& older_years) {
    if (std::ranges::binary_search(nzutil::years_with_tables(), year)) {
        return nzutil::year_tables(year);
    }
    return nzutil::read_description(
        nzutil::Document(older_years + "/" + std::to_string(year) + ".yaml"));
}

double field(const nzutil::Installation& installation, int record, const Descriptor& descriptor) {
    return LEGGICAMPONUM(descriptor, 0,
                         installation.read(nzutil::kEmployees, record).value_or(" "));
}

int employees_of_a_year() {
    return static_cast<int>(kKinds.size()) * ((kHighestSalary - kLowestSalary) / kStep + 1);
}

void run_month(const std::string& velmor, nzutil::Installation& installation, int year, int month) {
    const std::string date = zeri_a_sinistra(
        std::to_string(MXLIBRERIA::days_of_month(month, year) * 1000000 + month * 10000 + year), 8);
    installation.write_period(date, '4');
    installation.close();
    nzutil::ProcessCall call;
    call.program = velmor;
    call.environment = {{"SOLMAREL_REGISTRO", installation.registry_file()},
                        {"VELMOR_INTERFACCIA", "console"},
                        {"VELMOR_RISPOSTE", "si"},
                        {"VELMOR_STAMPE", installation.archive_directory() + "/stampe"}};
    call.directory = installation.archive_directory();
    const nzutil::ProcessResult result = nzutil::run_process(call);
    if (result.status != 0) {
        throw std::runtime_error("run of " + date + " ended with status " +
                                 std::to_string(result.status) + ": " + result.output);
    }
}

/// Twelve months of a year. The answer is always yes: the March question is answered, and the
/// control lists are printed into the installation, which goes with the directory.
std::string figures_of(const std::string& velmor, int year, const std::string& older_years) {
    const test_support::TempDirectory directory;
    nzutil::Installation installation = nzutil::make_base_installation(directory.file("grid"));
    nzutil::apply(installation, tables_of(year, older_years), {});
    const nzutil::Document document("grid", document_of_employees());
    nzutil::Description description = nzutil::read_description(document);
    document.each_of(document.root()["dipendente"], [&](const YAML::Node& employee) {
        description.employees.push_back(nzutil::read_employee(document, employee, {}));
    });
    nzutil::apply(installation, description, nzutil::model_employee(installation));
    const int employees = employees_of_a_year();
    std::vector<double> paid(static_cast<std::size_t>(employees) + 1, 0);
    for (int month = 1; month <= 12; ++month) {
        run_month(velmor, installation, year, month);
        for (int record = 1; record <= employees; ++record) {
            paid[static_cast<std::size_t>(record)] += field(installation, record, Q173);
        }
    }
    std::ostringstream out;
    int record = 0;
    for (const Kind& kind : kKinds) {
        for (int salary = kLowestSalary; salary <= kHighestSalary; salary += kStep) {
            ++record;
            // What was paid, less the rounding that the next slip takes back (or owes).
            const double carried = field(installation, record, Q163);
            const double net = paid[static_cast<std::size_t>(record)] - carried;
            out << kind.name << ',' << year << ',' << salary << ','
                << formato_importo(field(installation, record, Q005)) << ','
                << formato_importo(field(installation, record, Q013)) << ','
                << formato_importo(field(installation, record, Q656)) << ','
                << formato_importo(field(installation, record, Q014)) << ',' << formato_importo(net)
                << ','
                << formato_importo(field(installation, record, Q021) -
                                   field(installation, record, Q022))
                << '\n';
        }
    }
    return out.str();
}

constexpr const char* kColumns =
    "kind,year,monthly,contributions,taxable,deduction,tax,net,december_settlement\n";

std::string all_figures(const std::string& velmor, const std::string& older_years) {
    std::string figures = kColumns;
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        figures += figures_of(velmor, year, older_years);
    }
    return figures;
}

std::vector<std::string> cells_of(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, ',');) {
        cells.push_back(cell);
    }
    return cells;
}

std::vector<std::string> lines_of(std::istream& in) {
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] != '#') {
            lines.push_back(line);
        }
    }
    return lines;
}

std::vector<std::string> lines_of_file(const char* path) {
    std::ifstream in(path);
    if (!in) {
        throw std::runtime_error(std::string("cannot read ") + path);
    }
    return lines_of(in);
}

int compare_with_kept(const std::vector<std::string>& found, const std::vector<std::string>& kept) {
    int differences = 0;
    for (std::size_t i = 0; i < std::max(found.size(), kept.size()); ++i) {
        const std::string expected = i < kept.size() ? kept[i] : "(no row)";
        const std::string actual = i < found.size() ? found[i] : "(no row)";
        if (expected != actual && ++differences <= 20) {
            std::cout << "kept  " << expected << "\nfound " << actual << '\n';
        }
    }
    return differences;
}

// ---- The law ----

/// A known difference from the law: figure, years, salaries, and how large it may be.
struct LedgerRow {
    std::string figure;
    int first_year;
    int last_year;
    double lowest;
    double highest;
    double largest;
    std::string reason;
    mutable int served = 0;
};

std::vector<LedgerRow> read_ledger(const char* path) {
    std::vector<LedgerRow> rows;
    for (const std::string& line : lines_of_file(path)) {
        const std::vector<std::string> cells = cells_of(line);
        if (cells.size() != 7) {
            throw std::runtime_error("ledger: seven columns expected: " + line);
        }
        rows.push_back({cells[0], static_cast<int>(valore(cells[1])),
                        static_cast<int>(valore(cells[2])), valore(cells[3]), valore(cells[4]),
                        valore(cells[5]), cells[6]});
    }
    return rows;
}

bool known(const std::vector<LedgerRow>& ledger, const std::string& figure, int year, double salary,
           double difference) {
    for (const LedgerRow& row : ledger) {
        if (row.figure == figure && year >= row.first_year && year <= row.last_year &&
            salary >= row.lowest && salary <= row.highest &&
            std::abs(difference) <= row.largest + 0.0001) {
            ++row.served;
            return true;
        }
    }
    return false;
}

/// Columns of the law's rows:
/// year,monthly,payments,gross,contributions,taxable,gross_tax,deduction,further,tax,bonus,
/// integrative,net. Only the figures that both sides have are compared.
struct Figure {
    const char* name;
    std::size_t ours;
    std::size_t law;
};
constexpr std::array kFigures{Figure{"contributions", 3, 4}, Figure{"taxable", 4, 5},
                              Figure{"tax", 6, 9}, Figure{"net", 7, 12}};

int compare_with_law(const std::vector<std::string>& found, const char* law_file,
                     const std::vector<LedgerRow>& ledger) {
    std::map<std::pair<int, int>, std::vector<std::string>> law;
    for (const std::string& line : lines_of_file(law_file)) {
        std::vector<std::string> cells = cells_of(line);
        if (cells.size() == 13 && cells[0] != "year") {
            const std::pair<int, int> key{static_cast<int>(valore(cells[0])),
                                          static_cast<int>(valore(cells[1]))};
            law[key] = std::move(cells);
        }
    }
    int unknown = 0;
    int compared = 0;
    for (const std::string& line : found) {
        const std::vector<std::string> cells = cells_of(line);
        if (cells[0] != "ordinario") {
            continue;
        }
        const int year = static_cast<int>(valore(cells[1]));
        const int salary = static_cast<int>(valore(cells[2]));
        const std::vector<std::string>& row = law.at({year, salary});
        for (const Figure& figure : kFigures) {
            ++compared;
            const double difference = valore(cells[figure.ours]) - valore(row[figure.law]);
            if (std::abs(difference) > 0.0001 &&
                !known(ledger, figure.name, year, salary, difference) && ++unknown <= 40) {
                std::cout << figure.name << ' ' << year << ' ' << salary << ": program "
                          << cells[figure.ours] << ", law " << row[figure.law] << '\n';
            }
        }
    }
    std::cout << compared << " figures against the law, " << unknown
              << " differences that the ledger does not explain\n";
    return unknown;
}

int rows_without_use(const std::vector<LedgerRow>& ledger) {
    int idle = 0;
    for (const LedgerRow& row : ledger) {
        if (row.served == 0) {
            ++idle;
            std::cout << "the ledger's row serves no more: " << row.figure << ' ' << row.first_year
                      << '-' << row.last_year << ": " << row.reason << '\n';
        }
    }
    return idle;
}

int check(const std::string& velmor, const std::string& older_years, const char* figures,
          const char* law, const char* ledger_file) {
    std::istringstream grid(all_figures(velmor, older_years));
    const std::vector<std::string> found = lines_of(grid);
    const std::vector<LedgerRow> ledger = read_ledger(ledger_file);
    const int changed = compare_with_kept(found, lines_of_file(figures));
    const int unknown = compare_with_law(found, law, ledger);
    const int idle = rows_without_use(ledger);
    std::cout << found.size() - 1 << " rows, " << changed << " changed\n";
    return changed + unknown + idle == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> words(argv + 1, argv + argc);
        if (words.size() == 6 && words[0] == "check") {
            return check(words[1], words[2], argv[4], argv[5], argv[6]);
        }
        if (words.size() == 3 && words[0] == "figures") {
            std::cout << all_figures(words[1], words[2]);
            return 0;
        }
        std::cerr << "slip_grid check VELMOR YEARS FIGURES LAW LEDGER | figures VELMOR YEARS\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
