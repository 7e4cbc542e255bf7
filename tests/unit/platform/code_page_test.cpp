#include "platform/code_page.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(CodePage, EveryByteComesBack) {
    std::string all;
    for (int code = 0; code < 256; ++code) {
        all += static_cast<char>(code);
    }
    EXPECT_EQ(from_utf8(to_utf8(all)), all);
}

TEST(CodePage, LettersWithAccentsAndTheEuroSign) {
    EXPECT_EQ(to_utf8("gi\xE0 elaborato"), "già elaborato");
    EXPECT_EQ(to_utf8("\x80"), "\xE2\x82\xAC");  // U+20AC
    EXPECT_EQ(from_utf8("\xE2\x82\xAC"), "\x80");
    EXPECT_EQ(to_utf8("\x93\x94\x92"), "\u201C\u201D\u2019");
}

TEST(CodePage, UndefinedCodesGoToTheControlOfTheSameNumber) {
    EXPECT_EQ(to_utf8("\x81"), "\xC2\x81");
    EXPECT_EQ(to_utf8("\x8D"), "\xC2\x8D");
    EXPECT_EQ(to_utf8("\x8F"), "\xC2\x8F");
    EXPECT_EQ(to_utf8("\x90"), "\xC2\x90");
    EXPECT_EQ(to_utf8("\x9D"), "\xC2\x9D");
    EXPECT_EQ(from_utf8("\xC2\x81\xC2\x9D"), "\x81\x9D");
}

TEST(CodePage, WhatTheCodePageLacksIsAQuestionMark) {
    EXPECT_EQ(from_utf8("a\xC2\x80z"), "a?z");        // U+0080: its code is the euro sign
    EXPECT_EQ(from_utf8("\xC4\x8D"), "?");            // c with caron
    EXPECT_EQ(from_utf8("\xF0\x9F\x98\x80!"), "?!");  // beyond the basic plane
}

TEST(CodePage, ATerminalGetsNoControlCharacter) {
    EXPECT_EQ(to_terminal("a\x1B[2Jb"), "a?[2Jb");
    EXPECT_EQ(to_terminal(std::string_view("\0\x07\x7F\n", 4)), "????");
    EXPECT_EQ(to_terminal("\x9D\x90"), "??");  // undefined codes go to U+009D and U+0090
    EXPECT_EQ(to_terminal("NICOL\xD2 \x80"), "NICOLÒ €");
}

TEST(CodePage, NorDoesOneThatIsUtf8Already) {
    EXPECT_EQ(utf8_to_terminal("a\x1B[2J\x7F\n"), "a?[2J??");
    EXPECT_EQ(utf8_to_terminal("\xC2\x9B\x9B"), "??");  // the same code, as UTF-8 and raw
    EXPECT_EQ(utf8_to_terminal("NICOLÒ € č 😀"), "NICOLÒ € č 😀");
    EXPECT_EQ(utf8_lines_to_terminal("a\r\n\tb\n"), "a?\n?b\n");
}

TEST(CodePage, DamagedUtf8CostsOneByteEach) {
    EXPECT_EQ(from_utf8("\xE0"), "?");  // an accent typed in code page 1252
    EXPECT_EQ(from_utf8("\xE0zz"), "?zz");
    EXPECT_EQ(from_utf8("\x80x"), "?x");
    EXPECT_EQ(from_utf8("\xC3"), "?");
}

}  // namespace
}  // namespace platform
