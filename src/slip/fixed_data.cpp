#include "slip/fixed_data.h"

#include <algorithm>
#include <string>

#include "context/trace.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using MXLIBRERIA::FAIOPEN;
using MXLIBRERIA::LEGGIREC;
using MXLIBRERIA::record_buffer;
using MXLIBRERIA::TRACCIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

// ---- Fixed data ----

/// How a cell of TABFISSO is made from the fields of its row.
enum class Cell {
    number,      ///< the field as a number
    joined,      ///< the number that the texts of the fields form one after the other
    left_five,   ///< the first five of the ten digits that the record holds
    right_five,  ///< the last five
};

struct CellRow {
    std::size_t index;
    Cell how;
    Descriptor first;
    Descriptor second = {};
    Descriptor third = {};
};

constexpr std::array<CellRow, 46> kCells{{
    {1, Cell::number, F307},        {2, Cell::number, F001},
    {3, Cell::joined, F308, F042},  {4, Cell::joined, F043, F163, F309},
    {5, Cell::number, F006},        {6, Cell::number, F007},
    {7, Cell::number, F008},        {8, Cell::left_five, F162},
    {9, Cell::right_five, F162},    {10, Cell::number, F010},
    {11, Cell::number, F011},       {12, Cell::number, F012},
    {13, Cell::number, F013},       {14, Cell::number, F310},
    {15, Cell::number, F311},       {16, Cell::number, F312},
    {17, Cell::number, F313},       {18, Cell::number, F314},
    {19, Cell::left_five, F143},    {20, Cell::right_five, F143},
    {21, Cell::number, F003},       {22, Cell::number, F141},
    {23, Cell::number, F315},       {24, Cell::number, F316},
    {25, Cell::number, F317},       {26, Cell::number, F142},
    {27, Cell::number, F144},       {28, Cell::number, F145},
    {29, Cell::number, F146},       {30, Cell::number, F152},
    {31, Cell::left_five, F140},    {32, Cell::right_five, F140},
    {33, Cell::number, F020},       {34, Cell::number, F048},
    {35, Cell::number, F049},       {36, Cell::number, F039},
    {37, Cell::number, F035},       {38, Cell::number, F036},
    {39, Cell::number, F037},       {40, Cell::number, F038},
    {41, Cell::number, F039},       {42, Cell::number, F040},
    {53, Cell::joined, F161, F318}, {54, Cell::number, F002},
    {55, Cell::number, F004},       {56, Cell::number, F005},
}};
constexpr std::size_t kSeveranceContributionCell = 33;
constexpr std::size_t kHalf = 5;

/// Text of a field that a row may leave out.
std::string text_if_named(const Descriptor& field) {
    return field.area == Area::unknown ? std::string() : testo(field);
}

/// Five of the ten digits of a field that holds two numbers, without the point of an amount.
double half_of(const Descriptor& field, std::size_t start) {
    return valore(
        ritaglia(area(Area::FISX), static_cast<std::size_t>(field.offset) + start, kHalf));
}

double cell_value(const CellRow& row) {
    switch (row.how) {
        case Cell::joined:
            return valore(testo(row.first) + text_if_named(row.second) + text_if_named(row.third));
        case Cell::left_five:
            return half_of(row.first, 0);
        case Cell::right_five:
            return half_of(row.first, kHalf);
        case Cell::number:
            break;
    }
    return num(row.first);
}

// ---- Tax brackets ----

constexpr int kBrackets = 10;
constexpr int kFirstCell = 1;
constexpr int kFirstAlternateCell = 21;
// A record of a bracket file: limit in positions 1 to 9, with its point; rate in tenths of a
// percent in positions 10 to 12.
constexpr std::size_t kLimitWidth = 9;
constexpr std::size_t kRateWidth = 3;

/// Fills the cells from the first one on; returns how many rows the file holds.
int load_brackets(BracketTable& table, double file, int first_cell) {
    for (int k = 0; k < kBrackets; ++k) {
        if (LEGGIREC(file, k + 1) == 1) {
            return k;
        }
        const std::string& record = record_buffer(file);
        table.set(first_cell + 2 * k, valore(ritaglia(record, 1, kLimitWidth)));
        table.set(first_cell + 2 * k + 1,
                  valore(ritaglia(record, kLimitWidth + 1, kRateWidth)) / 10);
    }
    return kBrackets;
}

const LoadedBrackets& brackets_of_run() {
    if (!run_tables.brackets) {
        LoadedBrackets read;
        read.rows = load_brackets(read.table, kTaxBrackets, kFirstCell);
        read.alternate_rows = load_brackets(read.table, kSeveranceBrackets, kFirstAlternateCell);
        run_tables.brackets = read;
    }
    return *run_tables.brackets;
}

/// Copies rows of a limit and a rate.
void copy_rows(const BracketTable& from, BracketTable& to, int first_cell, int rows) {
    const auto* first = from.cells.begin() + first_cell;
    std::copy_n(first, 2 * rows, to.cells.begin() + first_cell);
}

struct Bracket {
    double limit;
    double rate;
};
constexpr double kClosingLimit = 999999.99;
/// L. 234/2021, art. 1, c. 2: the four brackets of 2022 and 2023.
constexpr std::array<Bracket, 5> kBracketsOf2023{
    {{15000, 23}, {28000, 25}, {50000, 35}, {75000, 43}, {kClosingLimit, 43}}};

void fill_with_2023(BracketTable& table) {
    for (int k = 0; k < kBrackets; ++k) {
        const auto row = std::min(static_cast<std::size_t>(k), kBracketsOf2023.size() - 1);
        table.set(kFirstCell + 2 * k, kBracketsOf2023[row].limit);
        table.set(kFirstCell + 2 * k + 1, kBracketsOf2023[row].rate);
    }
}

// ---- Contribution percentages ----

/// Pension rate of the employee for the company that splits it by P410.
void first_rate_by_P410() {
    const double kind = num(P410);
    if (kind == 1) {
        slip.PCTCONTR[1] = num(S003);
    } else if (kind == 2) {
        slip.PCTCONTR[1] = num(S003) + num(S004);
    }
}

/// The full rate S003 or the reduced rate S007; where no switch decides, the rate stays as it is.
void first_rate() {
    const double full_rate = num(S003);
    const double reduced_rate = num(S007);
    if (num(P040) == 0 && num(P187) == 0) {
        slip.PCTCONTR[1] =
            reduced_rate != full_rate && reduced_rate != 0 ? reduced_rate : full_rate;
        return;
    }
    if (num(P185) != 0 && num(P181) == 0) {
        slip.PCTCONTR[1] = reduced_rate;
    } else if (num(P185) == 0 && num(P181) != 0) {
        slip.PCTCONTR[1] = full_rate;
    }
}

}  // namespace

void TUTTELEOP() {
    TRACCIA("TUTTELEOP");
    run_tables.brackets.reset();
    for (const int file : {kPeriod, kSelection, kTwelveMonths, kCompanies, kEmployees, kFixedData,
                           kSectors, kPayItems, kTaxBrackets, kYearTables, kSeveranceBrackets,
                           kCertificates, kCertificateIndex}) {
        FAIOPEN(file);
    }
}

void CARICAFISSO(std::array<double, 57>& table) {
    TRACCIA("CARICAFISSO");
    for (const CellRow& row : kCells) {
        table[row.index] = cell_value(row);
    }
    if (num(P620) != 0) {
        table[kSeveranceContributionCell] = num(P620);
    }
}

void INTATABIRP(BracketTable& table) {
    TRACCIA("INTATABIRP");
    const LoadedBrackets& brackets = brackets_of_run();
    copy_rows(brackets.table, table, kFirstCell, brackets.rows);
    copy_rows(brackets.table, table, kFirstAlternateCell, brackets.alternate_rows);
}

void brackets_of_2023() {
    fill_with_2023(slip.TABIRP);
    fill_with_2023(slip.TABIRPAC);
}

void load_contribution_percentages() {
    if (num(P447) == 1) {
        slip.PCTCONTR.fill(0);
        return;
    }
    if (company_is("90000000055")) {
        first_rate_by_P410();
    } else {
        first_rate();
    }
    if (num(T633) == 1) {
        slip.PCTCONTR[1] = num(S305);
    }
    const std::array<double, 9> sector_rates{num(S004), num(S005), num(S006), 0,        num(S008),
                                             num(S009), num(S010), num(S011), num(S012)};
    for (std::size_t item = 2; item <= 10; ++item) {
        slip.PCTCONTR[item] = sector_rates[item - 2];
    }
    if (num(S209) != 0 && num(P100) == 1) {
        slip.PCTCONTR[8] = num(S209);
    }
}

}  // namespace ModSWCALM
