#include "contributions/allowances.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "context/period.h"
#include "context/trace.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

// ---- Tables of households ----

constexpr std::string_view kTableLetters = "ABCDEFG";
constexpr int kLetterTableBase = 9;

/// Where a table character leads: its logical file, 0 for none, and its row in the tables below.
struct TableOf {
    int file = 0;
    int base = 0;
};

TableOf table_of(char table) {
    TableOf found;
    if (table >= '0' && table <= '9') {
        found.base = table - '0';
        found.file = kFirstAllowanceTable + found.base;
    } else if (const auto letter = kTableLetters.find(table); letter != std::string_view::npos) {
        const int position = static_cast<int>(letter) + 1;
        found.base = kLetterTableBase + position;
        found.file = kLetterAllowanceTable + position;
    }
    return found.file <= kLastAllowanceTable ? found : TableOf{};
}

/// Members up to whom a household of the table stands as it is; 99: whatever its size.
constexpr std::array<int, 17> kMembersOfTable{2,  1, 0,  2,  1,  0, 2,  1, 0,
                                              99, 1, 99, 99, 99, 2, 99, 99};

/// Large households: percent of the last column for each further member, and the sum taken off for
/// each member above the threshold.
struct LargeHousehold {
    double percent;
    double taken_off;
};
constexpr LargeHousehold kBothParents{15, 43.75};    // parents and minors
constexpr LargeHousehold kOneParent{15, 49.83};      // one parent or none, and minors
constexpr LargeHousehold kDisabledMinor{15, 11};     // with a disabled member, and minors
constexpr LargeHousehold kWithoutMinors{10, 10.42};  // all other tables
constexpr std::array<LargeHousehold, 17> kLargeHouseholds{
    {kBothParents, kOneParent, kOneParent, kDisabledMinor, kDisabledMinor, kDisabledMinor,
     kWithoutMinors, kWithoutMinors, kWithoutMinors, kWithoutMinors, kWithoutMinors, kWithoutMinors,
     kWithoutMinors, kWithoutMinors, kWithoutMinors, kWithoutMinors, kWithoutMinors}};

double bracket_limit(const std::string& record) {
    if (ritaglia(record, 6, 1) == "*") {
        return valore(std::string(ritaglia(record, 7, 5)) + "." +
                      std::string(ritaglia(record, 1, 2))) +
               100000;
    }
    return valore(ritaglia(record, 1, 8));
}

/// The record of the income's bracket; empty when the income is above all of them.
std::string bracket_record(double file, double income) {
    for (double number = 1; MXLIBRERIA::read_table(file, number) != 1; ++number) {
        const std::string& record = MXLIBRERIA::record_buffer(file);
        if (income <= bracket_limit(record)) {
            return record;
        }
    }
    return {};
}

// ---- The household of the employee ----

/// Number of a one-character count: digits, then A 10 to I 18, L 19, M 20; others 0.
int count_of(const std::string& text) {
    constexpr std::string_view kCounts = "0123456789ABCDEFGHILM";
    const auto found = text.empty() ? std::string_view::npos : kCounts.find(text.front());
    return found == std::string_view::npos ? 0 : static_cast<int>(found);
}

constexpr double kWholeMonthDays = 26;
constexpr double kChildStep = 0.83;  // euro a month for each child beyond the first

double monthly_allowance() {
    const std::string table = rifilato(P158);
    const int members = count_of(rifilato(P021));
    const double limit = run_tables.family_income_limit;
    if (members == 0 || table.empty() || (limit != 0 && num(P023) > limit)) {
        return 0;
    }
    const double amount = ALTRIANF(static_cast<short>(members), num(P023), table.front());
    if (amount == 0) {
        return 0;
    }
    return amount + kChildStep * std::max(0, count_of(rifilato(P127)) - 1);
}

/// Books an allowance in its field, in the year's sum and in the gross pay.
void pay(const Descriptor& field, double amount) {
    aggiungi(field, amount);
    aggiungi(Q030, amount);
    aggiungi(P241, amount);
}

void pay_by_days(double monthly) {
    const double month_days = num(P447) == 1 && num(P227) != 0 ? kWholeMonthDays : num(P227);
    const double whole = Int(monthly / kWholeMonthDays * kWholeMonthDays * 100) / 100;
    const double days = num(P226);
    if (month_days == kWholeMonthDays) {
        pay(Q139, whole);
    } else if (days < kWholeMonthDays) {
        pay(Q140, Int(monthly * days / kWholeMonthDays * 100) / 100);
    } else {
        pay(Q140, num(P196) != 0 ? monthly : whole);
    }
}

constexpr int kIncreaseFrom = 202107;
constexpr int kIncreaseTo = 209901;

/// Temporary increase of the allowance: P264 for the whole month, else P265 a day.
void pay_temporary_increase() {
    if (period.yyyymm() < kIncreaseFrom || period.yyyymm() > kIncreaseTo) {
        return;
    }
    const double days = num(P227);
    const double amount = arrotonda(days == kWholeMonthDays ? num(P264) : days * num(P265));
    if (amount != 0) {
        pay(Q130, amount);
    }
}

// ---- Wages by insured risk ----

struct YearPair {
    Descriptor amount;
    Descriptor days;
};
constexpr std::array<YearPair, 10> kYearPairs{{{Q204, Q214},
                                               {Q205, Q215},
                                               {Q206, Q216},
                                               {Q207, Q217},
                                               {Q208, Q218},
                                               {Q209, Q219},
                                               {Q210, Q220},
                                               {Q211, Q221},
                                               {Q212, Q222},
                                               {Q213, Q223}}};

}  // namespace

double ALTRIANF(short members, double income, char table) {
    TRACCIA("ALTRIANF");
    const TableOf place = table_of(table);
    if (place.file == 0) {
        return 0;
    }
    const std::string record = bracket_record(place.file, income);
    if (record.empty()) {
        return 0;
    }
    const int columns = table == '1' ? 6 : 7;
    const int column = std::min<int>(members, columns);
    if (column < 0) {
        throw platform::Failure(platform::kInvalidCall);
    }
    const double amount = valore(ritaglia(record, static_cast<std::size_t>(column) * 7 + 2, 7));
    const int further = members - columns;
    if (further <= 0) {
        return amount;
    }
    const auto row = static_cast<std::size_t>(place.base);
    const LargeHousehold& rule = kLargeHouseholds.at(row);
    const int above = std::max(0, members - kMembersOfTable.at(row) - 1);
    return std::max(0.0, amount + amount * rule.percent / 100 * further - above * rule.taken_off);
}

void ASSEGNIFAM() {
    TRACCIA("ASSEGNIFAM");
    if (num(P038) == 9) {
        return;
    }
    const double monthly = monthly_allowance();
    if (monthly != 0) {
        pay_by_days(monthly);
    }
    pay_temporary_increase();
}

void ASSEGNAINAIL(double month, double amount, double days) {
    TRACCIA("ASSEGNAINAIL");
    if (num(P040) == 0 || amount <= num(F341) / 12) {
        return;
    }
    const auto number = intero16(month);
    if (number < 1 || number > static_cast<int>(kYearPairs.size())) {
        return;
    }
    const YearPair& pair = kYearPairs.at(static_cast<std::size_t>(number) - 1);
    if (number == 1) {
        azzera({pair.amount, pair.days});
    }
    aggiungi(pair.amount, amount);
    aggiungi(pair.days, days);
}

}  // namespace ModSwCalm2
