#include "platform/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/support/temp_directory.h"

namespace platform {
namespace {

const std::string kKey = "SOFTWARE\\TRAMONTIVAL\\SOLMAREL";

class RegistryFile : public ::testing::Test {
  protected:
    void SetUp() override { ::setenv("SOLMAREL_REGISTRO", directory_.file("r.ini").c_str(), 1); }
    void TearDown() override { ::unsetenv("SOLMAREL_REGISTRO"); }
    void write(const std::string& text) { directory_.write("r.ini", text); }
    static std::string text_of(const std::string& name) {
        const auto value = registry().value(kKey, name);
        return value ? value->text : "(none)";
    }
    test_support::TempDirectory directory_;
};

TEST_F(RegistryFile, ValuesStandUnderTheirKey) {
    write(
        "[ALTRO]\nPERCORSOARCHIVI=/altro\n\n[SOFTWARE\\TRAMONTIVAL\\SOLMAREL]\r\n"
        "PERCORSOARCHIVI=/srv/paghe/archivi\r\nPERCORSOPROGRAMMI = /srv/paghe/programmi \r\n");
    EXPECT_EQ(text_of("PERCORSOARCHIVI"), "/srv/paghe/archivi");
    EXPECT_EQ(text_of("PERCORSOPROGRAMMI"), "/srv/paghe/programmi");
    EXPECT_EQ(registry().value(kKey, "PERCORSOARCHIVI")->type, 1);
    EXPECT_EQ(registry().value("ALTRO", "PERCORSOARCHIVI")->text, "/altro");
}

TEST_F(RegistryFile, NamesAndKeysAreComparedWithoutCase) {
    write("[software\\tramontival\\Solmarel]\npercorsoArchivi=X\n");
    EXPECT_TRUE(registry().has_key(kKey));
    EXPECT_EQ(text_of("PERCORSOARCHIVI"), "X");
}

TEST_F(RegistryFile, BackslashesAndEqualsSignsOfAValueStay) {
    write("[" + kKey + "]\nPERCORSOARCHIVI=\\\\server\\paghe=2\\archivi\\\n");
    EXPECT_EQ(text_of("PERCORSOARCHIVI"), "\\\\server\\paghe=2\\archivi\\");
}

TEST_F(RegistryFile, ANumberIsTypeFour) {
    write("[" + kKey + "]\nNUMERO=dword:0000001F\nTESTO=dword:XY\n");
    EXPECT_EQ(registry().value(kKey, "NUMERO")->type, 4);
    EXPECT_EQ(text_of("NUMERO"), "31");
    EXPECT_EQ(registry().value(kKey, "TESTO")->type, 1);
}

TEST_F(RegistryFile, CommentsByteOrderMarkAndRootNameAreNoObstacle) {
    write("\xEF\xBB\xBF; nota\n[HKEY_CURRENT_USER\\" + kKey + "]\n# nota\nPERCORSOARCHIVI=X\n");
    EXPECT_TRUE(registry().has_key(kKey));
    EXPECT_EQ(text_of("PERCORSOARCHIVI"), "X");
}

TEST_F(RegistryFile, WhatIsMissingIsNothing) {
    EXPECT_FALSE(registry().has_key(kKey));
    EXPECT_EQ(text_of("PERCORSOARCHIVI"), "(none)");
    write("[" + kKey + "]\n");
    EXPECT_TRUE(registry().has_key(kKey));
    EXPECT_EQ(text_of("PERCORSOARCHIVI"), "(none)");
    EXPECT_EQ(text_of(""), "(none)");
}

TEST_F(RegistryFile, TheConfigurationDirectoryServesWithoutTheVariable) {
    ::unsetenv("SOLMAREL_REGISTRO");
    std::filesystem::create_directories(directory_.file("xdg/solmarel"));
    std::filesystem::create_directories(directory_.file("home/.config/solmarel"));
    directory_.write("xdg/solmarel/registro.ini", "[" + kKey + "]\nN=xdg\n");
    directory_.write("home/.config/solmarel/registro.ini", "[" + kKey + "]\nN=home\n");
    ::setenv("HOME", directory_.file("home").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", directory_.file("xdg").c_str(), 1);
    EXPECT_EQ(text_of("N"), "xdg");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(text_of("N"), "home");
}

}  // namespace
}  // namespace platform
