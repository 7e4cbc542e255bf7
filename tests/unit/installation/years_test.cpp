// The tables of law of each year, demo/anni/YEAR.yaml.

#include "installation/years.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "installation/demo.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXREPOSITORY;
using nzutil::year_tables;

constexpr int kFirstYear = 2018;
constexpr int kLastYear = 2026;

std::string path_of(int year) {
    return nzutil::demo_directory() + "/anni/" + std::to_string(year) + ".yaml";
}

double fixed(int year, const Descriptor& field) {
    for (const nzutil::FieldValue& value : year_tables(year).fixed) {
        if (value.field == field) {
            return valore(value.value);
        }
    }
    throw std::runtime_error("no such field in the year");
}

/// Everything that a year's file names.
std::set<std::string> names_of(int year) {
    const nzutil::Description tables = year_tables(year);
    std::set<std::string> names;
    for (const nzutil::FieldValue& value : tables.fixed) {
        names.insert(std::string(value.field.name()));
    }
    for (const nzutil::FieldValue& value : tables.sectors.at(0).fields) {
        names.insert(std::string(value.field.name()));
    }
    for (const nzutil::ItemEntry& item : tables.items) {
        names.insert("voce " + std::to_string(item.code));
    }
    names.insert(tables.brackets ? "scaglioni" : "");
    return names;
}

TEST(Years, NineYearsHaveTheirTables) {
    std::vector<int> years;
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        years.push_back(year);
    }
    EXPECT_EQ(nzutil::years_with_tables(), years);
}

TEST(Years, AYearLeavesNothingOfAnotherBehind) {
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        EXPECT_EQ(names_of(year), names_of(2024)) << year;
    }
}

TEST(Years, DecembersIndexIsTheNextYearsBase) {
    for (int year = kFirstYear; year < 2025; ++year) {
        EXPECT_EQ(fixed(year, F034), fixed(year + 1, F021)) << year;
    }
    // From 2026 the base is 2025 and the link is 1.214.
    EXPECT_EQ(fixed(2026, F021), std::round(fixed(2025, F034) / 1.214 * 100) / 100);
}

TEST(Years, FirstBracketIsKeptByTheMonth) {
    // Yearly first bracket of pensionable pay, less 2065.83, in twelfths.
    const std::map<int, double> yearly{{2018, 46630}, {2019, 47143}, {2020, 47379},
                                       {2021, 47379}, {2022, 48279}, {2023, 52190},
                                       {2024, 55008}, {2025, 55448}, {2026, 56224}};
    for (const auto& [year, bracket] : yearly) {
        EXPECT_NEAR(fixed(year, F152) * 12 + 2065.83, bracket, 0.06) << year;
    }
}

TEST(Years, CeilingRulesForAllFunds) {
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        EXPECT_EQ(fixed(year, F198), fixed(year, F427)) << year;
        EXPECT_GE(fixed(year, F427), fixed(std::max(year - 1, kFirstYear), F427)) << year;
    }
}

/// A pension ceiling is no limit of the accident insurance, and without a figure there is none.
TEST(Years, CollaboratorsAccidentInsuranceHasNoLimits) {
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        EXPECT_EQ(fixed(year, F345), 0) << year;
        EXPECT_EQ(fixed(year, F346), 0) << year;
    }
}

/// Each figure says where it comes from, and each source that it names stands at the head.
TEST(Years, EveryFigureHasItsSource) {
    const std::regex figure(R"(^\s+[FS]\d{3}: [-\d.]+\s*(#.*)?$)");
    const std::regex origin(R"(\[\d+\]|a memoria|non ancora pubblicato|non disponibile)");
    const std::regex mark(R"(\[(\d+)\])");
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        std::ifstream in(path_of(year));
        std::set<std::string> known;
        int figures = 0;
        for (std::string line; std::getline(in, line);) {
            std::smatch head;
            if (std::regex_search(line, head, std::regex(R"(^#   \[(\d+)\] http)"))) {
                known.insert(head[1]);
                continue;
            }
            const bool is_figure = std::regex_match(line, figure);
            figures += is_figure ? 1 : 0;
            EXPECT_TRUE(!is_figure || std::regex_search(line, origin)) << year << ": " << line;
            const std::string comment = line.substr(std::min(line.find('#'), line.size()));
            for (std::sregex_iterator it(comment.begin(), comment.end(), mark), end; it != end;
                 ++it) {
                EXPECT_TRUE(known.contains((*it)[1])) << year << ": " << line;
            }
        }
        EXPECT_EQ(figures, 35) << year;
    }
}

TEST(Years, YearComesBeforeWhatTheDocumentNames) {
    const test_support::TempDirectory directory;
    nzutil::Installation made = nzutil::make_base_installation(directory.file("made"));
    const nzutil::Document document("prova.yaml", "anno: 2021\nfissi: {F427: 90000}\n");
    nzutil::apply(made, nzutil::read_description(document), {});
    const std::string record = made.read(nzutil::kFixedData, 1).value();
    EXPECT_EQ(LEGGICAMPONUM(F427, 0, record), 90000);
    EXPECT_EQ(LEGGICAMPONUM(F198, 0, record), 103055);
    EXPECT_EQ(LEGGICAMPONUM(S046, 0, made.read(nzutil::kSectors, 1).value()), 48.98);
    EXPECT_EQ(made.read(nzutil::kTaxBrackets, 2).value().substr(0, 12), "028000.00270");
    // What is no table of a year stays.
    EXPECT_EQ(LEGGICAMPONUM(S043, 0, made.read(nzutil::kSectors, 1).value()), 38.17);
}

TEST(Years, YearWithoutTablesIsRefusedWithItsLine) {
    const nzutil::Document document("prova.yaml", "fissi: {F427: 90000}\nanno: 2031\n");
    try {
        static_cast<void>(nzutil::read_description(document));
        FAIL();
    } catch (const nzutil::DocumentError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("prova.yaml:2: "));
        EXPECT_NE(std::string(error.what()).find("2025, 2026"), std::string::npos);
    }
}

}  // namespace
