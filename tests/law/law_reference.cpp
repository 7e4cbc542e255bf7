// The year of an ordinary employee of the private sector by the law alone: contributions, taxable
// income, income tax, employment deduction, net. It knows nothing of the program under src/ and is
// held against it.
//
//   law_reference YEAR MONTHLY [PAYMENTS]   one year, as a person reads it
//   law_reference --grid [PAYMENTS]         salaries 500 to 12000 in steps of 250, 2014 to 2026,
//   CSV law_reference --check FILE              compares with the cases of a file
//
// What it holds: a whole year at work (365 days), first insured after 1995, no other income, no
// dependants, 12 payments a year unless told; the bonus, the further deduction and the integrative
// sum with it. What it leaves out: contribution cuts of 2022 to 2024, surtaxes.
//
// Amounts are whole cents; tax and deduction are exact in ten-thousandths of a cent and are rounded
// to the cent once, at the end.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Cents = std::int64_t;
using Fine = std::int64_t;  ///< ten-thousandths of a cent

constexpr Fine kFine = 10000;
constexpr Cents euro(std::int64_t whole) {
    return whole * 100;
}

constexpr Cents kNoLimit = euro(1'000'000'000);
constexpr int kFirstYear = 2007;
constexpr int kLastYear = 2026;

// ---- Income tax, art. 11 TUIR ----

struct Bracket {
    int from_year;
    int to_year;
    Cents up_to;
    int percent;
};

constexpr std::array kBrackets{
    // L. 296/2006, art. 1, c. 6
    Bracket{2007, 2021, euro(15000), 23},
    Bracket{2007, 2021, euro(28000), 27},
    Bracket{2007, 2021, euro(55000), 38},
    Bracket{2007, 2021, euro(75000), 41},
    Bracket{2007, 2021, kNoLimit, 43},
    // L. 234/2021, art. 1, c. 2
    Bracket{2022, 2023, euro(15000), 23},
    Bracket{2022, 2023, euro(28000), 25},
    Bracket{2022, 2023, euro(50000), 35},
    Bracket{2022, 2023, kNoLimit, 43},
    // D.Lgs. 216/2023, art. 1; L. 207/2024, art. 1, c. 2
    Bracket{2024, 2025, euro(28000), 23},
    Bracket{2024, 2025, euro(50000), 35},
    Bracket{2024, 2025, kNoLimit, 43},
    // L. 199/2025, art. 1, c. 3
    Bracket{2026, 2026, euro(28000), 23},
    Bracket{2026, 2026, euro(50000), 33},
    Bracket{2026, 2026, kNoLimit, 43},
};

Fine gross_tax(int year, Cents income) {
    Fine tax = 0;
    Cents from = 0;
    for (const Bracket& bracket : kBrackets) {
        if (year >= bracket.from_year && year <= bracket.to_year && income > from) {
            tax += (std::min(income, bracket.up_to) - from) * bracket.percent * (kFine / 100);
            from = bracket.up_to;
        }
    }
    return tax;
}

// ---- Employment deduction, art. 13, c. 1 TUIR ----

/// For over < R <= up_to: fixed + variable x (top - R) / width. Art. 13 cuts the quotient at four
/// decimals.
struct FallingRange {
    int from_year;
    int to_year;
    Cents over;
    Cents up_to;
    Cents fixed;
    Cents variable;
    Cents top;
    Cents width;
};

constexpr std::array kDeduction{
    // L. 296/2006, art. 1, c. 6
    FallingRange{2007, 2013, -1, euro(8000), euro(1840), 0, 0, 1},
    FallingRange{2007, 2013, euro(8000), euro(15000), euro(1338), euro(502), euro(15000),
                 euro(7000)},
    FallingRange{2007, 2013, euro(15000), euro(55000), 0, euro(1338), euro(55000), euro(40000)},
    // L. 147/2013, art. 1, c. 127
    FallingRange{2014, 2021, -1, euro(8000), euro(1880), 0, 0, 1},
    FallingRange{2014, 2021, euro(8000), euro(28000), euro(978), euro(902), euro(28000),
                 euro(20000)},
    FallingRange{2014, 2021, euro(28000), euro(55000), 0, euro(978), euro(55000), euro(27000)},
    // L. 234/2021, art. 1, c. 2
    FallingRange{2022, 2023, -1, euro(15000), euro(1880), 0, 0, 1},
    // D.Lgs. 216/2023, art. 1, c. 2; L. 207/2024, art. 1, c. 2
    FallingRange{2024, 2026, -1, euro(15000), euro(1955), 0, 0, 1},
    FallingRange{2022, 2026, euro(15000), euro(28000), euro(1910), euro(1190), euro(28000),
                 euro(13000)},
    FallingRange{2022, 2026, euro(28000), euro(50000), 0, euro(1910), euro(50000), euro(22000)},
};

/// Amounts added to the deduction for over < R <= up_to.
struct Increase {
    int from_year;
    int to_year;
    Cents over;
    Cents up_to;
    Cents amount;
};

constexpr std::array kIncreases{
    // art. 13, c. 2 TUIR until 2013
    Increase{2007, 2013, euro(23000), euro(24000), euro(10)},
    Increase{2007, 2013, euro(24000), euro(25000), euro(20)},
    Increase{2007, 2013, euro(25000), euro(26000), euro(30)},
    Increase{2007, 2013, euro(26000), euro(27700), euro(40)},
    Increase{2007, 2013, euro(27700), euro(28000), euro(25)},
    // art. 13, c. 1.1 TUIR
    Increase{2022, 2026, euro(25000), euro(35000), euro(65)},
};

template <class Row>
bool takes(const Row& row, int year, Cents income) {
    return year >= row.from_year && year <= row.to_year && income > row.over && income <= row.up_to;
}

Fine employment_deduction(int year, Cents income) {
    Fine deduction = 0;
    for (const FallingRange& row : kDeduction) {
        if (takes(row, year, income)) {
            const std::int64_t quotient = (row.top - income) * kFine / row.width;  // four decimals
            deduction = row.fixed * kFine + row.variable * quotient;
        }
    }
    for (const Increase& row : kIncreases) {
        if (takes(row, year, income)) {
            deduction += row.amount * kFine;
        }
    }
    return deduction;
}

// ---- Further deduction ----

/// The whole of each for a whole year.
constexpr std::array kFurther{
    // D.L. 3/2020, art. 2, c. 1, for the half year from July 2020
    FallingRange{2020, 2020, euro(28000), euro(35000), euro(480), euro(120), euro(35000),
                 euro(7000)},
    FallingRange{2020, 2020, euro(35000), euro(40000), 0, euro(480), euro(40000), euro(5000)},
    // L. 178/2020, art. 1, c. 8
    FallingRange{2021, 2021, euro(28000), euro(35000), euro(960), euro(240), euro(35000),
                 euro(7000)},
    FallingRange{2021, 2021, euro(35000), euro(40000), 0, euro(960), euro(40000), euro(5000)},
    // L. 207/2024, art. 1, c. 6
    FallingRange{2025, 2026, euro(20000), euro(32000), euro(1000), 0, 0, 1},
    FallingRange{2025, 2026, euro(32000), euro(40000), 0, euro(1000), euro(40000), euro(8000)},
};

Fine further_deduction(int year, Cents income) {
    for (const FallingRange& row : kFurther) {
        if (takes(row, year, income)) {
            return row.fixed * kFine + row.variable * kFine * (row.top - income) / row.width;
        }
    }
    return 0;
}

// ---- Bonus and integrative sum: paid beside the wage, not taxed ----

/// A credit up to an income, from there falling to nothing over 2000 euro.
struct Credit {
    int from_year;
    int to_year;
    Cents amount;
    Cents whole_up_to;
    bool falls;
};

constexpr std::array kCredits{
    Credit{2014, 2014, euro(640), euro(24000), true},    // D.L. 66/2014, art. 1
    Credit{2015, 2017, euro(960), euro(24000), true},    // L. 190/2014, art. 1, c. 12
    Credit{2018, 2019, euro(960), euro(24600), true},    // L. 205/2017, art. 1, c. 132
    Credit{2020, 2020, euro(480), euro(24600), true},    // the same, January to June
    Credit{2020, 2020, euro(600), euro(28000), false},   // D.L. 3/2020, art. 1, from July
    Credit{2021, 2021, euro(1200), euro(28000), false},  // the same
    Credit{2022, 2026, euro(1200), euro(15000), false},  // L. 234/2021, art. 1, c. 3
};

/// From 2022, above 15000 and up to 28000: what the tax leaves of the deductions, at most 1200.
Fine untaken(int year, Cents income, Fine tax, Fine deduction) {
    const bool in_band = year >= 2022 && income > euro(15000) && income <= euro(28000);
    return in_band ? std::clamp<Fine>(deduction - tax, 0, euro(1200) * kFine) : 0;
}

/// A credit is due only where the tax is above the employment deduction, which from 2024 counts 75
/// less (D.Lgs. 216/2023, art. 1, c. 3).
Fine bonus_of(int year, Cents income, Fine tax, Fine deduction) {
    const Fine lowered = year >= 2024 && income <= euro(15000) ? euro(75) * kFine : 0;
    Fine bonus = untaken(year, income, tax, deduction);
    if (tax <= deduction - lowered) {
        return bonus;
    }
    for (const Credit& credit : kCredits) {
        if (year < credit.from_year || year > credit.to_year) {
            continue;
        }
        const Cents above = income - credit.whole_up_to;
        const Cents left = credit.falls ? euro(2000) - above : 0;
        bonus += above <= 0 ? credit.amount * kFine
                            : credit.amount * kFine * std::max<Cents>(left, 0) / euro(2000);
    }
    return bonus;
}

/// L. 207/2024, art. 1, c. 4: percent of the income, in tenths.
Fine integrative_sum(int year, Cents income) {
    if (year < 2025 || income > euro(20000)) {
        return 0;
    }
    const std::int64_t tenths = income <= euro(8500) ? 71 : income <= euro(15000) ? 53 : 48;
    return income * tenths * (kFine / 1000);
}

// ---- Contributions ----

constexpr std::int64_t kRate = 919;              ///< hundredths of a percent
constexpr std::int64_t kRateAboveBracket = 100;  ///< D.L. 384/1992, art. 3-ter

/// First bracket of pensionable pay, and the yearly ceiling of those first insured after 1995
/// (L. 335/1995, art. 2, c. 18). Rows of 2007 to 2019, 2023 and the bracket of 2025 are from
/// memory.
struct PensionLimits {
    int year;
    Cents first_bracket;
    Cents ceiling;
};

constexpr std::array kPensionLimits{
    PensionLimits{2007, euro(40083), euro(87187)},  PensionLimits{2008, euro(40765), euro(88669)},
    PensionLimits{2009, euro(42069), euro(91507)},  PensionLimits{2010, euro(42364), euro(92147)},
    PensionLimits{2011, euro(43042), euro(93622)},  PensionLimits{2012, euro(44204), euro(96149)},
    PensionLimits{2013, euro(45530), euro(99034)},  PensionLimits{2014, euro(46031), euro(100123)},
    PensionLimits{2015, euro(46123), euro(100324)}, PensionLimits{2016, euro(46123), euro(100324)},
    PensionLimits{2017, euro(46123), euro(100324)}, PensionLimits{2018, euro(46630), euro(101427)},
    PensionLimits{2019, euro(47143), euro(102543)}, PensionLimits{2020, euro(47379), euro(103055)},
    PensionLimits{2021, euro(47379), euro(103055)}, PensionLimits{2022, euro(48279), euro(105014)},
    PensionLimits{2023, euro(52190), euro(113520)}, PensionLimits{2024, euro(55008), euro(119650)},
    PensionLimits{2025, euro(55448), euro(120607)}, PensionLimits{2026, euro(56224), euro(122295)},
};

Cents rounded(Fine amount) {
    return (amount + kFine / 2) / kFine;
}

/// `rate` in hundredths of a percent.
Cents share(Cents base, std::int64_t rate) {
    return rounded(base * rate);
}

struct Contributions {
    Cents base = 0;           ///< pensionable pay of the year
    Cents ordinary = 0;       ///< 9.19 %, payment by payment
    Cents above_bracket = 0;  ///< 1 % above the first bracket, on the year
    [[nodiscard]] Cents total() const { return ordinary + above_bracket; }
};

/// Each payment's base is rounded to the euro; above the ceiling nothing more is owed.
Contributions contributions_of(const PensionLimits& limits, Cents monthly, int payments) {
    Contributions result;
    for (int payment = 0; payment < payments; ++payment) {
        const Cents whole_euros = (monthly + 50) / 100 * 100;
        const Cents base = std::min(whole_euros, limits.ceiling - result.base);
        result.base += base;
        result.ordinary += share(base, kRate);
    }
    result.above_bracket =
        share(std::max<Cents>(result.base - limits.first_bracket, 0), kRateAboveBracket);
    return result;
}

// ---- The year ----

struct Year {
    Cents gross = 0;
    Contributions contributions;
    Cents taxable = 0;
    Cents gross_tax = 0;
    Cents deduction = 0;
    Cents further = 0;  ///< further deduction
    Cents tax = 0;
    Cents bonus = 0;
    Cents integrative = 0;  ///< integrative sum
    Cents net = 0;
};

std::optional<Year> year_of(int year, Cents monthly, int payments) {
    const auto* const limits =
        std::find_if(kPensionLimits.begin(), kPensionLimits.end(),
                     [year](const PensionLimits& row) { return row.year == year; });
    if (limits == kPensionLimits.end() || monthly < 0 || payments < 1 || payments > 15) {
        return std::nullopt;
    }
    Year result;
    result.gross = monthly * payments;
    result.contributions = contributions_of(*limits, monthly, payments);
    result.taxable = result.gross - result.contributions.total();
    const Fine tax = gross_tax(year, result.taxable);
    const Fine deduction = employment_deduction(year, result.taxable);
    result.gross_tax = rounded(tax);
    result.deduction = rounded(deduction);
    const Fine further = further_deduction(year, result.taxable);
    result.further = rounded(further);
    result.tax = rounded(std::max<Fine>(tax - deduction - further, 0));
    result.bonus = rounded(bonus_of(year, result.taxable, tax, deduction));
    result.integrative = rounded(integrative_sum(year, result.taxable));
    result.net = result.taxable - result.tax + result.bonus + result.integrative;
    return result;
}

// ---- Reading and showing ----

std::string text(Cents amount) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%lld.%02lld", static_cast<long long>(amount / 100),
                  static_cast<long long>(amount % 100));
    return buffer.data();
}

/// An amount with at most two decimals, not negative.
std::optional<Cents> amount_of(std::string_view digits) {
    const std::size_t point = digits.find('.');
    std::string cents(digits.substr(0, point));
    std::string decimals(point == std::string_view::npos ? "" : digits.substr(point + 1));
    if (decimals.size() > 2) {
        return std::nullopt;
    }
    decimals.resize(2, '0');
    cents += decimals;
    Cents value = 0;
    const auto [end, error] = std::from_chars(cents.data(), cents.data() + cents.size(), value);
    if (error != std::errc() || end != cents.data() + cents.size() || value < 0) {
        return std::nullopt;
    }
    return value;
}

int whole(std::string_view digits) {
    int value = -1;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return error == std::errc() && end == digits.data() + digits.size() ? value : -1;
}

constexpr std::string_view kColumns =
    "year,monthly,payments,gross,contributions,taxable,gross_tax,deduction,further,tax,"
    "bonus,integrative,net";

std::string row_of(int year, Cents monthly, int payments, const Year& result) {
    std::ostringstream row;
    row << year << ',' << text(monthly) << ',' << payments << ',' << text(result.gross) << ','
        << text(result.contributions.total()) << ',' << text(result.taxable) << ','
        << text(result.gross_tax) << ',' << text(result.deduction) << ',' << text(result.further)
        << ',' << text(result.tax) << ',' << text(result.bonus) << ',' << text(result.integrative)
        << ',' << text(result.net);
    return row.str();
}

int show(int year, Cents monthly, int payments) {
    const std::optional<Year> result = year_of(year, monthly, payments);
    if (!result) {
        std::cerr << "No such year or salary: years " << kFirstYear << " to " << kLastYear
                  << ", 1 to 15 payments.\n";
        return 2;
    }
    std::cout << "Gross          " << text(result->gross) << '\n'
              << "Contributions  " << text(result->contributions.total()) << "  (9.19 % "
              << text(result->contributions.ordinary) << ", 1 % above the first bracket "
              << text(result->contributions.above_bracket) << ")\n"
              << "Taxable        " << text(result->taxable) << '\n'
              << "Gross tax      " << text(result->gross_tax) << '\n'
              << "Deduction      " << text(result->deduction) << '\n'
              << "Further        " << text(result->further) << '\n'
              << "Tax            " << text(result->tax) << '\n'
              << "Bonus          " << text(result->bonus) << '\n'
              << "Integrative    " << text(result->integrative) << '\n'
              << "Net            " << text(result->net) << '\n';
    return 0;
}

int grid(int payments) {
    std::cout << kColumns << '\n';
    for (int year = 2014; year <= kLastYear; ++year) {
        for (Cents monthly = euro(500); monthly <= euro(12000); monthly += euro(250)) {
            const std::optional<Year> result = year_of(year, monthly, payments);
            if (!result) {
                std::cerr << "The number of payments is 1 to 15.\n";
                return 2;
            }
            std::cout << row_of(year, monthly, payments, *result) << '\n';
        }
    }
    return 0;
}

/// Compares each row of a file in the form of the grid; lines that begin with # say how a row was
/// worked out.
int check(const char* path) {
    std::ifstream file(path);
    std::string line;
    int rows = 0;
    int wrong = 0;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#' || line == kColumns) {
            continue;
        }
        std::istringstream cells(line);
        std::string year;
        std::string monthly;
        std::string payments;
        std::getline(cells, year, ',');
        std::getline(cells, monthly, ',');
        std::getline(cells, payments, ',');
        const Cents salary = amount_of(monthly).value_or(-1);
        const std::optional<Year> result = year_of(whole(year), salary, whole(payments));
        const std::string found =
            result ? row_of(whole(year), salary, whole(payments), *result) : "no such year";
        ++rows;
        if (found != line) {
            ++wrong;
            std::cerr << "expected " << line << "\nfound    " << found << '\n';
        }
    }
    std::cout << rows << " cases, " << wrong << " different\n";
    return rows > 0 && wrong == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    if (words.size() == 2 && words[0] == "--check") {
        return check(argv[2]);
    }
    if (!words.empty() && words.size() <= 2 && words[0] == "--grid") {
        return grid(words.size() == 2 ? whole(words[1]) : 12);
    }
    if (words.size() == 2 || words.size() == 3) {
        return show(whole(words[0]), amount_of(words[1]).value_or(-1),
                    words.size() == 3 ? whole(words[2]) : 12);
    }
    std::cerr << "law_reference YEAR MONTHLY [PAYMENTS] | --grid [PAYMENTS] | --check FILE\n";
    return 2;
}
