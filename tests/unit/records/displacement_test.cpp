// Repeating groups: by how many characters an occurrence moves a field.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"
#include "texts/texts.h"

namespace {

using namespace MXREPOSITORY;
using test_support::ScriptedWindow;

std::string descriptor(const std::string& tag, int offset, const std::string& code) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%s,%05d,02,N,0,%s", tag.c_str(), offset, code.c_str());
    return text.data();
}

/// A range of offsets that moves by `width` from one occurrence to the next (0: does not move).
struct Range {
    const char* tag;
    int first;
    int last;
    int width;
};

class Displacement : public testing::Test {
  protected:
    void SetUp() override { window = &ScriptedWindow::install(); }
    void TearDown() override { window->verify(); }

    /// The displacement of occurrence 3, two widths, from the text and from the cut descriptor.
    static int third(const std::string& tag, int offset) {
        const int from_text = SPOSTAMENTOOCCORRENZA(descriptor(tag, offset, "A001"), 3);
        Descriptor d;
        d.area = area_of_tag(tag);
        d.offset = static_cast<std::int16_t>(offset);
        d.length = 2;
        d.type = 'N';
        d.code = {'A', '0', '0', '1'};
        EXPECT_EQ(SPOSTAMENTOOCCORRENZA(d, 3), from_text) << tag << offset;
        return from_text;
    }

    ScriptedWindow* window = nullptr;
};

TEST_F(Displacement, FixedRangesMoveByTheirWidthAndTheirNeighboursDoNot) {
    const std::vector<Range> ranges{
        {"DICX$", 101, 7661, 10},   {"CONX$", 101, 390, 290},  {"M77X$", 256, 510, 255},
        {"M77X$", 3316, 3570, 255}, {"F24X$", 42, 66, 36},     {"F24X$", 762, 813, 63},
        {"F24X$", 4359, 4398, 51},  {"F24X$", 4824, 4867, 55}, {"F24X$", 5000, 5000, 4},
        {"F24X$", 5483, 5483, 2},
    };
    for (const Range& range : ranges) {
        SCOPED_TRACE(std::string(range.tag) + std::to_string(range.first));
        EXPECT_EQ(third(range.tag, range.first), 2 * range.width);
        EXPECT_EQ(third(range.tag, range.last), 2 * range.width);
        EXPECT_EQ(third(range.tag, range.first - 1), 0);
        if (std::string(range.tag) != "DICX$") {  // the twelve-month table goes on to its end
            EXPECT_EQ(third(range.tag, range.last + 1), 0);
        }
    }
}

TEST_F(Displacement, TaxFormHas21RangesOf24PositionsAndTheir21SingleFields) {
    for (int i = 0; i < 21; ++i) {
        const int first = 1077 + 152 * i;  // 1077, 1229, 1381 ... 4117
        EXPECT_EQ(third("F24X$", first - 1), 0);
        EXPECT_EQ(third("F24X$", first), 70);
        EXPECT_EQ(third("F24X$", first + 23), 70);
        EXPECT_EQ(third("F24X$", first + 24), 0);
        const int single = 5094 + 16 * i;  // 5094, 5110 ... 5414
        EXPECT_EQ(third("F24X$", single - 1), 0);
        EXPECT_EQ(third("F24X$", single), 8);
        EXPECT_EQ(third("F24X$", single + 1), 0);
    }
    EXPECT_EQ(third("F24X$", 4117 + 152), 0);
    EXPECT_EQ(third("F24X$", 5414 + 16), 0);
    EXPECT_EQ(third("F24X$", 1077 - 152), 0);
    EXPECT_EQ(third("F24X$", 5094 - 16), 0);
}

TEST_F(Displacement, OtherAreasDoNotMove) {
    for (const char* tag :
         {"DITX$", "DIPX$", "FISX$", "SETX$", "FOTX$", "CUDX$", "FOPX$", "ARTX$"}) {
        for (const int offset : {1, 101, 256, 4117, 6000}) {
            EXPECT_EQ(third(tag, offset), 0) << tag << offset;
        }
    }
}

TEST_F(Displacement, SecondEmployeeRecordMovesByGroupNumber) {
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(descriptor("DI2X$", 200, "I100"), 3), 1428);  // 2 x 714
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(descriptor("DI2X$", 200, "I984"), 2), 714);
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(descriptor("DI2X$", 200, "I099"), 3), 0);
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(descriptor("DI2X$", 200, "I100"), 0), 0);
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(descriptor("DI2X$", 200, "I100"), 1), 0);
}

TEST_F(Displacement, SecondEmployeeRecordIsReadByTheGroupNumberBehindTheFirstLetterI) {
    // Group 120 stands behind the I; the second occurrence lies 714 characters further on.
    std::string copy(720, ' ');
    copy.replace(1, 2, "aa");
    copy.replace(715, 2, "bb");
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA("DI2X$,00002,02,A,0,XI120", 2), 714);
    EXPECT_EQ(LEGGICAMPO("DI2X$,00002,02,A,0,XI120", 2, copy), "bb");
    EXPECT_EQ(LEGGICAMPO("DI2X$,00002,02,A,0,XI020", 2, copy), "aa");
    window->expect_box(texts::kRepositoryUnknownLetter.bytes());
    EXPECT_EQ(LEGGICAMPO("DI2X$,00002,02,A,0,P120", 2, copy), "aa");
}

TEST_F(Displacement, SecondEmployeeRecordWithoutItsLetterShowsTheMessage) {
    window->expect_box(texts::kRepositoryUnknownLetter.bytes());
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(descriptor("DI2X$", 200, "P100"), 3), 0);
    ASSERT_EQ(window->boxes.size(), 1U);
    EXPECT_EQ(window->boxes.front().text, "ERRORE REPOSITORY - LETTERA SCONOSCIUTA");
    EXPECT_EQ(window->boxes.front().icon, platform::Icon::none);
}

TEST_F(Displacement, OccurrencesZeroAndOneAreTheFirst) {
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(J001, 0), 0);
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(J001, 1), 0);
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(J001, 2), 10);
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(J001, 12), 110);
}

TEST_F(Displacement, SixteenBitsAreTheLimit) {
    // 3276 x 10 = 32760 still fits, 3277 x 10 = 32770 does not.
    EXPECT_EQ(SPOSTAMENTOOCCORRENZA(J001, 3277), 32760);
    try {
        (void)SPOSTAMENTOOCCORRENZA(J001, 3278);
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), platform::kOverflow);
    }
}

TEST_F(Displacement, ReadingAMonthOfTheTwelveMonthTable) {
    test_support::fill_areas();
    std::string& table = area(Area::DICX);
    table.replace(100, 10, "0000000111");  // January: position 101
    table.replace(210, 10, "0000001212");  // December: 101 + 11 x 10
    EXPECT_EQ(LEGGICAMPO(J001, 0, ""), "00000001.11");
    EXPECT_EQ(LEGGICAMPO(J001, 1, ""), "00000001.11");
    EXPECT_EQ(LEGGICAMPO(J001, 12, ""), "00000012.12");
    scrivi(J001, 7.5, 11);
    EXPECT_EQ(table.substr(200, 10), "0000000750");
    EXPECT_EQ(table.substr(190, 10), std::string(10, ' '));  // October
    EXPECT_EQ(table.substr(210, 10), "0000001212");          // December
}

}  // namespace
