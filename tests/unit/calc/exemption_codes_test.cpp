#include "calc/exemption_codes.h"

#include <set>

#include "calc/incentives.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

Date day(int yyyymmdd) {
    return {yyyymmdd % 100, yyyymmdd / 100 % 100, yyyymmdd / 10000};
}
Date day_after(int yyyymmdd) {
    Date next = day(yyyymmdd);
    next.day += 1;
    return next.exists() ? next : months_after({1, next.month, next.year}, 1);
}
/// The first of the month from the first hiring of the law on; code "5" knows no first one.
Date first_whole_month(const ExemptionCode& code) {
    const Date first = day(code.first_hire == 0 ? 20180101 : code.first_hire);
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

TEST_F(ExemptionCodes, EachRunsAsManyMonthsAsItsLawSays) {
    std::set<char> seen;
    for (const ExemptionCode& code : exemption_codes()) {
        const Date start = first_whole_month(code);
        ASSERT_TRUE(code.covers(start, start)) << code.code;
        EXPECT_EQ(months_with_days(start, code.end(start, "I")), code.months.open_ended)
            << code.code;
        EXPECT_EQ(months_with_days(start, code.end(start, "D")), code.months.others) << code.code;
        seen.insert(code.code);
    }
    EXPECT_EQ(std::string(seen.begin(), seen.end()), "123456789ABCDEFGHIJLMNPQRSTU");
}

TEST_F(ExemptionCodes, AdmitHiringsFromTheFirstToTheLastDay) {
    for (const ExemptionCode& code : exemption_codes()) {
        const Date first = day(code.first_hire);
        const Date last = day(code.last_hire);
        if (code.first_hire != 0) {
            const Date before = first.day > 1 ? Date{first.day - 1, first.month, first.year}
                                              : Date{28, first.month > 1 ? first.month - 1 : 12,
                                                     first.month > 1 ? first.year : first.year - 1};
            EXPECT_TRUE(code.covers(first, first)) << code.code;
            EXPECT_FALSE(code.covers(before, before)) << code.code;
        }
        if (last.exists()) {
            const Date after = day_after(code.last_hire);
            EXPECT_TRUE(code.covers(last, last)) << code.code;
            EXPECT_FALSE(code.covers(after, after)) << code.code;
        } else {
            EXPECT_TRUE(code.covers({1, 1, 2030}, {})) << code.code;  // no end in the law
        }
    }
}

TEST_F(ExemptionCodes, ADateThatIsNoneIsNoStart) {
    for (const ExemptionCode& code : exemption_codes()) {
        for (const Date& none :
             {Date{}, Date{31, 2, 2023}, Date{29, 2, 2019}, Date{0, 6, 2020}, Date{1, 13, 2017}}) {
            EXPECT_FALSE(code.covers(none, none)) << code.code;
        }
    }
    EXPECT_TRUE(exemption_code("4", "I")->covers({29, 2, 2020}, {}));
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

TEST_F(ExemptionCodes, AStartMovedByASuspensionKeepsTheHiring) {
    // Codes whose months may be made up until a last period: the hiring is in the year of the law.
    EXPECT_TRUE(exemption_code("1", "I")->covers({15, 3, 2018}, {15, 12, 2017}));
    EXPECT_FALSE(exemption_code("1", "I")->covers({15, 3, 2018}, {15, 12, 2016}));
    EXPECT_FALSE(exemption_code("1", "I")->covers({15, 3, 2015}, {15, 12, 2017}));
    EXPECT_FALSE(exemption_code("3", "I")->covers({15, 3, 2018}, {15, 12, 2017}));
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

TEST_F(DaysOfExemption, StopWithTheLeaving) {
    const Date start{15, 8, 2020};
    const Date end{15, 2, 2021};
    scrivi(P017, "10112020");
    at("301120204");
    EXPECT_EQ(days_of_exemption(start, end), 10);
    at("311220204");
    EXPECT_EQ(days_of_exemption(start, end), 0);
    scrivi(P017, "20022021");  // after the end
    at("280220214");
    EXPECT_EQ(days_of_exemption(start, end), 14);
    scrivi(P017, "31012020");  // of an earlier employment
    EXPECT_EQ(days_of_exemption(start, end), 14);
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
