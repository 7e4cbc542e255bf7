#include "platform/printer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

#include "platform/failure.h"
#include "tests/support/temp_directory.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

class PrintedList : public ::testing::Test {
  protected:
    void SetUp() override {
        ::unsetenv("VELMOR_STAMPE");
        ::unsetenv("VELMOR_STAMPANTE");
        set_print_archive_directory(directory_.path());
    }
    void TearDown() override { SetUp(); }

    static void print(const std::vector<std::string>& lines) {
        printer().begin("Courier New", 9);
        for (const std::string& line : lines) {
            printer().line(line);
        }
        printer().end();
    }
    /// The PDF documents of a directory.
    std::vector<std::string> documents(const std::string& name) const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(directory_.file(name))) {
            found.push_back(directory_.read(name + "/" + entry.path().filename().string()));
        }
        return found;
    }
    static std::size_t count(const std::string& text, const std::string& part) {
        std::size_t times = 0;
        for (std::size_t at = text.find(part); at != std::string::npos;
             at = text.find(part, at + part.size())) {
            ++times;
        }
        return times;
    }
    test_support::TempDirectory directory_;
};

TEST_F(PrintedList, IsAPdfUnderTheArchiveDirectory) {
    print({"LISTA DIPENDENTE", "001-000-0001 ROSSI (MARIA)"});
    const auto found = documents("STAMPE");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].substr(0, 5), "%PDF-");
    EXPECT_EQ(count(found[0], "/BaseFont /Courier"), 1U);
    EXPECT_EQ(count(found[0], "/WinAnsiEncoding"), 1U);
    EXPECT_EQ(count(found[0], "(LISTA DIPENDENTE)"), 1U);
    EXPECT_EQ(count(found[0], "ROSSI \\050MARIA\\051"), 1U);
    EXPECT_EQ(count(found[0], "/Type /Page\n"), 1U);
}

TEST_F(PrintedList, SaysWhereItWent) {
    print({"uno"});
    const std::string place = printer().place();
    EXPECT_TRUE(place.starts_with(directory_.path() + "/STAMPE/LISTA_")) << place;
    EXPECT_TRUE(fs::exists(place));
    printer().begin("Courier New", 9);
    EXPECT_EQ(printer().place(), "");
}

TEST_F(PrintedList, EachListIsADocumentOfItsOwn) {
    print({"uno"});
    print({"due"});
    EXPECT_EQ(documents("STAMPE").size(), 2U);
}

TEST_F(PrintedList, GoesWhereTheVariableSays) {
    ::setenv("VELMOR_STAMPE", directory_.file("altrove/liste").c_str(), 1);
    print({"uno"});
    EXPECT_EQ(documents("altrove/liste").size(), 1U);
    EXPECT_FALSE(fs::exists(directory_.file("STAMPE")));
}

TEST_F(PrintedList, TurnsThePageWhenItIsFull) {
    // A4 upright, size 9, lines of 10.8 points between margins of 28: 72 lines a page.
    print(std::vector<std::string>(73, "riga"));
    const auto found = documents("STAMPE");
    EXPECT_EQ(count(found[0], "(riga)"), 73U);
    EXPECT_EQ(count(found[0], "/Type /Page\n"), 2U);
}

TEST_F(PrintedList, WideLinesGoAcrossAndWiderOnesGoOnInTheNextLine) {
    // Characters of 5.4 points: 99 in an upright page, 145 across.
    print({std::string(99, 'a')});
    print({std::string(100, 'b'), std::string(145, 'c') + "rest"});
    std::string all;
    for (const std::string& document : documents("STAMPE")) {
        all += document;
    }
    EXPECT_EQ(count(all, "(" + std::string(99, 'a') + ")"), 1U);
    EXPECT_EQ(count(all, "(" + std::string(100, 'b') + ")"), 1U);
    EXPECT_EQ(count(all, "(" + std::string(145, 'c') + ")"), 1U);
    EXPECT_EQ(count(all, "(rest)"), 1U);
}

TEST_F(PrintedList, AListWithoutLinesLeavesNoDocument) {
    print({});
    EXPECT_FALSE(fs::exists(directory_.file("STAMPE")));
}

TEST_F(PrintedList, ADirectoryThatRefusesIsAPrinterFailureAtTheLine) {
    directory_.write("STAMPE", "a file in the way");
    printer().begin("Courier New", 9);
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            printer().line("uno");
            FAIL();
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), 482);
            EXPECT_EQ(failure.description(), "Printer error");
        }
    }
    fs::remove(directory_.file("STAMPE"));
    printer().line("uno");  // the operator has put it right: the retry succeeds
    printer().end();
    EXPECT_EQ(documents("STAMPE").size(), 1U);
}

/// A spooler for the test, found first in the path: it notes its arguments and ends as told.
class Spooler : public PrintedList {
  protected:
    void install(int status) {
        const std::string script = "#!/bin/sh\necho \"$@\" > " + directory_.file("called") +
                                   "\nexit " + std::to_string(status) + "\n";
        directory_.write("lp", script);
        fs::permissions(directory_.file("lp"), fs::perms(0755));
        old_path_ = std::getenv("PATH");
        ::setenv("PATH", (directory_.path() + ":" + old_path_).c_str(), 1);
        ::setenv("VELMOR_STAMPANTE", "ufficio paghe", 1);
    }
    void TearDown() override {
        ::setenv("PATH", old_path_.c_str(), 1);
        PrintedList::TearDown();
    }
    std::string old_path_;
};

TEST_F(Spooler, GetsTheDocument) {
    install(0);
    print({"uno"});
    const std::string called = directory_.read("called");
    EXPECT_EQ(called.rfind("-d ufficio paghe -- " + directory_.file("STAMPE/LISTA_"), 0), 0U)
        << called;
}

TEST_F(Spooler, ItsRefusalIsAPrinterFailure) {
    install(1);
    try {
        print({"uno"});
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 482);
        EXPECT_EQ(failure.culprit, "ufficio paghe");
    }
    EXPECT_EQ(documents("STAMPE").size(), 1U);  // the list itself is not lost
}

}  // namespace
}  // namespace platform
