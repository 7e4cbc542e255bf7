#include "records/meanings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

#include "records/descriptor.h"
#include "tests/support/temp_directory.h"

using namespace MXREPOSITORY;

TEST(Meanings, FieldSaysWhatItIs) {
    EXPECT_EQ(meaning_of("P240"), "imponibile contributivo del mese");
    EXPECT_EQ(meaning_of("Q659"), "giorni di detrazione da inizio anno");
}

TEST(Meanings, AccentsAreBytesOfTheCodePage) {
    // "anzianità": the letter is E0 in code page 1252, two bytes in UTF-8.
    EXPECT_EQ(meaning_of("P026"), "importo di uno scatto di anzianit\xE0");
}

TEST(Meanings, FieldWithoutOneAndUnknownCodeGiveNothing) {
    ASSERT_NE(find_field("P123"), nullptr);
    EXPECT_EQ(meaning_of("P123"), "");
    EXPECT_EQ(meaning_of("P000"), "");
    EXPECT_EQ(meaning_of("ZZZZ"), "");
    EXPECT_EQ(meaning_of(""), "");
}

TEST(Meanings, EveryOneBelongsToAFieldAndStandsInOrder) {
    EXPECT_TRUE(std::ranges::is_sorted(all_meanings(), {}, &Meaning::code));
    for (const Meaning& meaning : all_meanings()) {
        EXPECT_NE(find_field(meaning.code), nullptr) << meaning.code;
        EXPECT_LE(meaning.text.size(), 70U) << meaning.code;
        EXPECT_FALSE(meaning.text.empty()) << meaning.code;
    }
}

namespace {

/// Whether the generator takes a data file of one row.
bool generator_takes(const std::string& row) {
    const test_support::TempDirectory directory;
    const std::string file = directory.path() + "/DIPX.campi";
    std::ofstream(file) << row << '\n';
    const std::string command = std::string("'") + VELMOR_GENERATE_DICTIONARY + "' '" +
                                directory.path() + "' '" + file + "' 2>/dev/null";
    return std::system(command.c_str()) == 0;
}

}  // namespace

TEST(DictionaryGenerator, TakesARowWithAndWithoutAMeaning) {
    EXPECT_TRUE(generator_takes("P240 01675,10,2,0"));
    EXPECT_TRUE(generator_takes("P240 01675,10,2,0  imponibile contributivo del mese"));
    EXPECT_TRUE(generator_takes("P240 01675,10,2,0  et\xC3\xA0 \"in anni\" \xE2\x82\xAC"));
}

TEST(DictionaryGenerator, MeaningHasAtMostSeventyCharacters) {
    // Seventy letters of two bytes each.
    std::string letters;
    for (int i = 0; i < 70; ++i) {
        letters += "\xC3\xA0";
    }
    EXPECT_TRUE(generator_takes("P240 01675,10,2,0  " + letters));
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  " + letters + "a"));
}

TEST(DictionaryGenerator, RefusesTextThatTheCodePageCannotHold) {
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  \xCE\xB1"));      // Greek alpha
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  anzianit\xE0"));  // not UTF-8
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  a\xC2\x81z"));    // undefined code 81
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  due\tcolonne"));  // control character
}

TEST(DictionaryGenerator, RefusesAMeaningOutOfItsColumn) {
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0 imponibile"));
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0   imponibile"));
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  imponibile "));
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0  "));
    EXPECT_FALSE(generator_takes("P240 01675,10,2,0\timponibile"));
    EXPECT_FALSE(generator_takes("P240 01675,10,2"));
}
