// The dictionary: how many fields each area has, where it ends, and that every descriptor's 23
// characters come out of it whole.

#include "records/descriptor.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <string>

#include "records/dictionary/CONX.h"
#include "records/dictionary/CUDX.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOPX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"

namespace {

using namespace MXREPOSITORY;

/// What the suite's record descriptions say of an area.
struct AreaFacts {
    Area area;
    std::size_t count;
    Descriptor first;
    Descriptor last;
    int last_position;
};
const std::array<AreaFacts, 9> kAreas{{
    {Area::DITX, 815, T001, TA65, 6564},
    {Area::DIPX, 2074, P001, QA44, 16471},
    {Area::CUDX, 654, X001, X990, 6033},
    {Area::DICX, 67, J001, J791, 7670},
    {Area::CONX, 33, G001, G500, 335},
    {Area::FISX, 312, F001, F456, 3058},
    {Area::FOTX, 164, Z001, Z176, 1428},
    {Area::SETX, 267, S001, S353, 1357},
    {Area::FOPX, 62, R001, R062, 602},
}};

TEST(Dictionary, EachAreaHasItsFieldsFromFirstToLast) {
    for (const AreaFacts& facts : kAreas) {
        const auto fields = fields_of(facts.area);
        SCOPED_TRACE(std::string(kAreaTags[static_cast<std::size_t>(facts.area)]));
        ASSERT_EQ(fields.size(), facts.count);
        EXPECT_EQ(fields.front(), facts.first);
        EXPECT_EQ(fields.back(), facts.last);
        EXPECT_EQ(last_position(facts.area), facts.last_position);
    }
}

TEST(Dictionary, OtherAreasHaveNoFieldsHere) {
    std::size_t with_fields = 0;
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        with_fields += fields_of(static_cast<Area>(i)).empty() ? 0U : 1U;
    }
    EXPECT_EQ(with_fields, kAreas.size());
    EXPECT_EQ(last_position(Area::DI2X), 0);
}

TEST(Dictionary, EveryDescriptorTextHas23CharactersAndIsUnique) {
    std::set<std::string> texts;
    std::set<std::string> codes;
    for (const AreaFacts& facts : kAreas) {
        const std::string tag(kAreaTags[static_cast<std::size_t>(facts.area)]);
        for (const Descriptor& field : fields_of(facts.area)) {
            const std::string text = field.text();
            ASSERT_EQ(text.size(), 23U) << text;
            EXPECT_TRUE(texts.insert(text).second) << text;
            EXPECT_TRUE(codes.insert(std::string(field.name())).second) << text;
            // The columns stand where they are cut by position.
            EXPECT_EQ(text.substr(0, 5), tag);
            EXPECT_EQ(std::stoi(text.substr(6, 5)), field.offset) << text;
            EXPECT_EQ(std::stoi(text.substr(12, 2)), field.length) << text;
            EXPECT_EQ(text[15], field.type) << text;
            EXPECT_EQ(text[17], field.flag) << text;
            EXPECT_EQ(text.substr(19, 4), field.name()) << text;
            for (const std::size_t comma : {5U, 11U, 14U, 16U, 18U}) {
                EXPECT_EQ(text[comma], ',') << text;
            }
        }
    }
    EXPECT_EQ(texts.size(), 815U + 2074U + 654U + 67U + 33U + 312U + 164U + 267U + 62U);
}

TEST(Dictionary, ColumnsHoldOnlyWhatTheyMayHold) {
    std::size_t digit_strings = 0;
    for (const AreaFacts& facts : kAreas) {
        for (const Descriptor& field : fields_of(facts.area)) {
            const std::string text = field.text();
            EXPECT_NE(std::string("NAD023456").find(field.type), std::string::npos) << text;
            EXPECT_TRUE(field.flag == '0' || field.flag == '1') << text;
            EXPECT_GE(field.offset, 1) << text;
            EXPECT_GE(field.length, 1) << text;
            EXPECT_GE(field.length, field.decimals()) << text;
            EXPECT_EQ(area_of_letter(field.code[0]), field.area) << text;
            EXPECT_NE(std::isdigit(static_cast<unsigned char>(field.code[2])), 0) << text;
            EXPECT_NE(std::isdigit(static_cast<unsigned char>(field.code[3])), 0) << text;
            digit_strings += field.type == '0' ? 1U : 0U;
        }
    }
    EXPECT_EQ(digit_strings, 1U);  // T481
    EXPECT_EQ(T481.type, '0');
}

TEST(Dictionary, AFieldIsFoundByItsCode) {
    ASSERT_NE(find_field("P017"), nullptr);
    EXPECT_EQ(find_field("P017")->text(), "DIPX$,04225,08,D,0,P017");
    EXPECT_EQ(find_field("P000"), nullptr);
    EXPECT_EQ(find_field("P17"), nullptr);
    EXPECT_EQ(find_field(""), nullptr);
    for (const AreaFacts& facts : kAreas) {
        for (const Descriptor& field : fields_of(facts.area)) {
            ASSERT_EQ(find_field(field.name()), &field);
        }
    }
}

TEST(Dictionary, DescriptorOfTheTerminationDate) {
    EXPECT_EQ(P017.offset, 4225);
    EXPECT_EQ(P017.length, 8);
    EXPECT_EQ(P017.type, 'D');
    EXPECT_EQ(P017.decimals(), 0);
    static_assert(cut("DIPX$,04225,08,D,0,P017") == P017);
}

TEST(Dictionary, TagsAndLettersOfTheAreas) {
    for (std::size_t i = 0; i < kAreaCount; ++i) {
        EXPECT_EQ(area_of_tag(kAreaTags[i]), static_cast<Area>(i));
    }
    EXPECT_EQ(area_of_tag("DIPX"), Area::unknown);
    EXPECT_EQ(area_of_tag("dipx$"), Area::unknown);
    EXPECT_EQ(area_of_letter('P'), Area::DIPX);
    EXPECT_EQ(area_of_letter('Q'), Area::DIPX);
    EXPECT_EQ(area_of_letter('C'), Area::unknown);
    EXPECT_EQ(area_of_letter('D'), Area::unknown);
    EXPECT_EQ(area_of_letter('p'), Area::unknown);
}

}  // namespace
