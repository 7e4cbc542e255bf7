#include "calc/exemption_codes.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "calc/incentives.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

Date day(int yyyymmdd) {
    return {yyyymmdd % 100, yyyymmdd / 100 % 100, yyyymmdd / 10000};
}
/// What the law says of a code, written out by hand. A row of the program is held against it.
struct Law {
    char code;
    int before;      ///< last day on which a hiring is too early; 0: there is none
    int first;       ///< first and last day of hiring
    int last;        ///< 0: the law has no end
    int after;       ///< first day on which it is too late
    int open_ended;  ///< months
    int others;      ///< months
    int last_period;
};
constexpr std::array kLaws{
    Law{'1', 20161231, 20170101, 20171231, 20180101, 12, 12, 201902},
    Law{'2', 20161231, 20170101, 20171231, 20180101, 12, 12, 201902},
    Law{'3', 20161231, 20170101, 20171231, 20180101, 36, 36, 0},
    Law{'4', 20171231, 20180101, 0, 0, 36, 36, 0},
    Law{'5', 0, 20150101, 0, 0, 12, 12, 0},
    Law{'6', 20171231, 20180101, 0, 0, 36, 36, 0},
    Law{'7', 20171231, 20180101, 20181231, 20190101, 12, 12, 202001},
    Law{'8', 20171231, 20180101, 20181231, 20190101, 12, 12, 0},
    Law{'9', 20171231, 20180101, 20181231, 20190101, 12, 12, 0},
    Law{'A', 20171231, 20180101, 20181231, 20190101, 12, 12, 0},
    Law{'B', 20190430, 20190501, 20191231, 20200101, 12, 12, 202102},
    Law{'C', 20191231, 20200101, 20201231, 20210101, 36, 36, 0},
    Law{'D', 20191231, 20200101, 20201231, 20210101, 12, 12, 202202},
    Law{'E', 20200814, 20200815, 20201231, 20210101, 6, 3, 0},
    Law{'F', 20200814, 20200815, 20201231, 20210101, 6, 3, 0},
    Law{'G', 20200814, 20200815, 20201231, 20210101, 6, 3, 0},
    Law{'H', 20201231, 20210101, 20221231, 20230101, 36, 36, 0},
    Law{'I', 20201231, 20210101, 20221231, 20230101, 48, 48, 0},
    Law{'J', 20201231, 20210101, 20221231, 20230101, 18, 12, 0},
    Law{'L', 20221231, 20230101, 20231231, 20240101, 36, 36, 0},
    Law{'M', 20221231, 20230101, 20231231, 20240101, 48, 48, 0},
    Law{'N', 20221231, 20230101, 20231231, 20240101, 18, 12, 0},
    Law{'P', 20230531, 20230601, 20231231, 20240101, 36, 36, 0},
    Law{'Q', 20221231, 20230101, 20231231, 20240101, 12, 12, 0},
    Law{'R', 20240831, 20240901, 20251231, 20260101, 24, 24, 0},
    Law{'S', 20250130, 20250131, 20251231, 20260101, 24, 24, 0},
    Law{'T', 20240831, 20240901, 20251231, 20260101, 24, 24, 0},
    Law{'U', 20240831, 20240901, 20251231, 20260101, 24, 24, 0},
};
const Law* law_of(char code) {
    const auto* law = std::ranges::find(kLaws, code, &Law::code);
    return law == kLaws.end() ? nullptr : law;
}
/// The first of the month from the first hiring of the law on.
Date first_whole_month(const Law& law) {
    const Date first = day(law.first);
    return first.day == 1 ? first : months_after({1, first.month, first.year}, 1);
}

class ExemptionCodes : public SlipTest {
  protected:
    static void at_month(int yyyymm) {
        char text[16];
        std::snprintf(text, sizeof text, "01%02d%04d4", yyyymm % 100, yyyymm / 100);
        at(text);
    }
    /// Months from 2004 to 2030 with a day of the exemption.
    static int months_with_days(const Date& start, const Date& end) {
        int months = 0;
        for (int year = 2004; year <= 2030; ++year) {
            for (int month = 1; month <= 12; ++month) {
                at_month(year * 100 + month);
                months += days_of_exemption(start, end) > 0 ? 1 : 0;
            }
        }
        return months;
    }
};

TEST_F(ExemptionCodes, EachLawHasItsCodeAndEachCodeItsLaw) {
    std::set<char> laws;
    for (const Law& law : kLaws) {
        laws.insert(law.code);
    }
    EXPECT_EQ(std::string(laws.begin(), laws.end()), "123456789ABCDEFGHIJLMNPQRSTU");
    std::set<char> rows;
    for (const ExemptionCode& code : exemption_codes()) {
        rows.insert(code.code);
    }
    EXPECT_EQ(rows, laws);
}

TEST_F(ExemptionCodes, EachRunsAsManyMonthsAsItsLawSays) {
    for (const ExemptionCode& code : exemption_codes()) {
        const Law* law = law_of(code.code);
        ASSERT_NE(law, nullptr) << code.code;
        const Date start = first_whole_month(*law);
        EXPECT_EQ(months_with_days(start, code.end(start, "I")), law->open_ended) << code.code;
        for (const char* other : {"D", "S", "T", "G"}) {
            EXPECT_EQ(months_with_days(start, code.end(start, other)), law->others)
                << code.code << other;
        }
        EXPECT_EQ(code.last_period, law->last_period) << code.code;
    }
}

TEST_F(ExemptionCodes, AdmitHiringsFromTheFirstToTheLastDay) {
    for (const ExemptionCode& code : exemption_codes()) {
        const Law* law = law_of(code.code);
        ASSERT_NE(law, nullptr) << code.code;
        EXPECT_TRUE(code.covers(day(law->first))) << code.code;
        if (law->before != 0) {
            EXPECT_FALSE(code.covers(day(law->before))) << code.code;
        } else {
            EXPECT_TRUE(code.covers({10, 3, 2010})) << code.code;
        }
        if (law->last != 0) {
            EXPECT_TRUE(code.covers(day(law->last))) << code.code;
            EXPECT_FALSE(code.covers(day(law->after))) << code.code;
        } else {
            EXPECT_TRUE(code.covers({1, 1, 2030})) << code.code;
        }
    }
}

TEST_F(ExemptionCodes, SharesOfTheWageRunTwelveMonthsForHiringsFromJuneToDecember2023) {
    for (const char* code : {"O", "P"}) {
        const WageIncentive* incentive = wage_incentive(code);
        ASSERT_NE(incentive, nullptr) << code;
        EXPECT_EQ(incentive->first_hire, 20230601) << code;
        EXPECT_EQ(incentive->last_hire, 20231231) << code;
        EXPECT_EQ(incentive->months, 12) << code;
    }
}

TEST_F(ExemptionCodes, ADateThatIsNoneIsNoStart) {
    for (const ExemptionCode& code : exemption_codes()) {
        for (const Date& none :
             {Date{}, Date{31, 2, 2023}, Date{29, 2, 2019}, Date{0, 6, 2020}, Date{1, 13, 2017}}) {
            EXPECT_FALSE(code.covers(none)) << code.code;
        }
    }
    EXPECT_TRUE(exemption_code("4", "I")->covers({29, 2, 2020}));
}

TEST_F(ExemptionCodes, CodesThatDoNotExistHaveNoRow) {
    for (const char* code : {"", "0", "K", "O", "V", "Z", "l", "*", "L2"}) {
        EXPECT_EQ(exemption_code(code, "I"), nullptr) << code;
    }
}

TEST_F(ExemptionCodes, SomeAdmitCertainClassesOnly) {
    for (const char* code : {"E", "F", "G", "L", "M", "Q"}) {
        for (const char* admitted : {"I", "D", "S", "T", "G"}) {
            EXPECT_NE(exemption_code(code, admitted), nullptr) << code << admitted;
        }
        for (const char* other : {"", " ", "A", "ID"}) {
            EXPECT_EQ(exemption_code(code, other), nullptr) << code << other;
        }
    }
    for (const char* code : {"P", "R", "S"}) {
        EXPECT_NE(exemption_code(code, "I"), nullptr) << code;
        EXPECT_EQ(exemption_code(code, "D"), nullptr) << code;
    }
    for (const char* code : {"4", "H", "N", "T", "U"}) {
        EXPECT_NE(exemption_code(code, ""), nullptr) << code;
    }
}

TEST_F(ExemptionCodes, CodeTwoHalvesForFixedTerms) {
    EXPECT_EQ(exemption_code("2", "D")->percent, 50);
    EXPECT_EQ(exemption_code("2", "I")->percent, 100);
    EXPECT_EQ(exemption_code("2", "")->percent, 100);
}

TEST_F(ExemptionCodes, StartsBefore2015CountFromThere) {
    const ExemptionCode& code = *exemption_code("5", "I");
    EXPECT_EQ(code.end({10, 3, 2010}, "I").yyyymmdd(), 20160101);
    EXPECT_EQ(code.end({10, 3, 2015}, "I").yyyymmdd(), 20160310);
}

TEST_F(ExemptionCodes, TheNorthernRegionsAreThese) {
    std::string closed;
    for (int region = 0; region <= 22; ++region) {
        closed += northern_region(region) ? std::to_string(region) + " " : "";
    }
    EXPECT_EQ(closed, "3 6 7 8 9 10 11 17 18 19 20 21 ");
}

TEST(MonthsAfter, GoesOverTheYear) {
    EXPECT_EQ(months_after({15, 8, 2020}, 6).yyyymmdd(), 20210215);
    EXPECT_EQ(months_after({1, 12, 2020}, 12).yyyymmdd(), 20211201);
    EXPECT_EQ(months_after({31, 12, 2020}, 1).yyyymmdd(), 20210131);
}

class DaysOfExemption : public SlipTest {};

TEST_F(DaysOfExemption, AreThoseFromTheStartToTheDayBeforeTheEnd) {
    const Date start{15, 8, 2020};
    const Date end{15, 2, 2021};
    at("310820204");
    EXPECT_EQ(days_of_exemption(start, end), 17);
    at("310720204");
    EXPECT_EQ(days_of_exemption(start, end), 0);
    at("301120204");
    EXPECT_EQ(days_of_exemption(start, end), 30);
    at("280220214");
    EXPECT_EQ(days_of_exemption(start, end), 14);
    at("310320214");
    EXPECT_EQ(days_of_exemption(start, end), 0);
}

TEST_F(DaysOfExemption, StopWithTheLeavingInItsMonthOnly) {
    const Date start{15, 8, 2020};
    const Date end{15, 2, 2021};
    scrivi(P017, "10112020");
    at("301120204");
    EXPECT_EQ(days_of_exemption(start, end), 10);
    scrivi(P017, "20022021");  // after the end
    at("280220214");
    EXPECT_EQ(days_of_exemption(start, end), 14);
    scrivi(P017, "31012020");  // of an earlier employment
    EXPECT_EQ(days_of_exemption(start, end), 14);
    scrivi(P017, "10112020");  // pay that follows the leaving: the term runs on
    EXPECT_EQ(days_of_exemption(start, end), 14);
    at("311220204");
    EXPECT_EQ(days_of_exemption(start, end), 31);
    at("310820204");
    scrivi(P017, "10082020");  // left and hired again on the 15th
    EXPECT_EQ(days_of_exemption(start, end), 17);
}

TEST_F(DaysOfExemption, AnEndThatTheMonthDoesNotHaveLeavesTheWholeMonth) {
    at("280220214");
    EXPECT_EQ(days_of_exemption({31, 8, 2020}, {31, 2, 2021}), 28);
    at("310320214");
    EXPECT_EQ(days_of_exemption({31, 8, 2020}, {31, 2, 2021}), 0);
    at("290220244");
    EXPECT_EQ(days_of_exemption({1, 1, 2024}, {1, 1, 2025}), 29);
}

}  // namespace
}  // namespace ModSWCALM
