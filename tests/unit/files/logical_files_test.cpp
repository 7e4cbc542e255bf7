#include "files/logical_files.h"

#include <gtest/gtest.h>

#include "context/failure_handler.h"
#include "context/trace.h"
#include "platform/failure.h"
#include "tests/support/archive_directory.h"
#include "tests/support/scripted_window.h"

namespace MXLIBRERIA {
namespace {

using platform::Failure;
using test_support::ArchiveDirectory;
using test_support::ScriptedWindow;

template <typename Work>
int failure_of(Work work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure.number();
    }
    return 0;
}

class LogicalFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        trace_ring = {};
        file_table.last_read = 0;
    }
    void TearDown() override { window_.verify(); }

    /// Path of a logical file, relative to the archive directory where it lies there.
    std::string path_of(double n) {
        relative_ = -1;
        const std::string path = DAMMIFILE(n, relative_);
        const std::string front = archive_.path() + "\\";
        return path.rfind(front, 0) == 0 ? path.substr(front.size()) : path;
    }
    /// Exit status of the program that an opening ends; 0 if it goes on.
    int ends_with(double n) {
        try {
            path_of(n);
        } catch (const platform::EndOfProgram& end) {
            return end.status;
        }
        return 0;
    }

    ArchiveDirectory archive_;
    ScriptedWindow& window_ = ScriptedWindow::install();
    std::int16_t relative_ = -1;
};

// --- NZBASE.DAT and the placeholders

TEST_F(LogicalFiles, APathIsTheArchiveDirectoryAndTheName) {
    archive_.define(2, "NZDIPEND.DAT", 16500);
    std::int16_t relative = -1;
    EXPECT_EQ(DAMMIFILE(2, relative), archive_.path() + "\\NZDIPEND.DAT");
    EXPECT_EQ(relative, -1);
    EXPECT_EQ(file_table.last_length, 16500);
    EXPECT_EQ(trace_ring.slots[1], "DAMMIFILE$ (2)");
}

TEST_F(LogicalFiles, CompanySevenIsThreeDigits) {
    archive_.define(10, "AR###.DAT", 100);
    file_table.DITTAOPEN = 7;
    EXPECT_EQ(path_of(10), "AR007.DAT");
    EXPECT_EQ(file_table.DITTAOPEN, 0);  // used up
}

TEST_F(LogicalFiles, ValuesAreUsedUpByTheFileThatNeedsThem) {
    archive_.define(9, "PLAIN.DAT", 100);
    archive_.define(10, "AR###.DAT", 100);
    file_table.DITTAOPEN = 12;
    file_table.year = 2024;
    EXPECT_EQ(path_of(9), "PLAIN.DAT");
    EXPECT_EQ(path_of(10), "AR012.DAT");
    EXPECT_EQ(file_table.year, 2024);  // no file has asked for it
}

TEST_F(LogicalFiles, ATemplateHoldsSeveralPlaceholders) {
    archive_.define(10, "D###\\A$$**@@%%.###", 100);
    environment.task = "03";
    file_table.DITTAOPEN = 123;
    file_table.year = 2009;
    file_table.region = 8;
    file_table.province = "TO";
    EXPECT_EQ(path_of(10), "D123\\A030908TO.123");
    EXPECT_EQ(environment.task, "03");  // the task stays
    EXPECT_EQ(file_table.province, "");
    EXPECT_EQ(file_table.region, 0);
}

TEST_F(LogicalFiles, TheYearIsTestedBeforeItIsCut) {
    archive_.define(10, "A**.DAT", 100);
    file_table.year = 2000;
    EXPECT_EQ(path_of(10), "A00.DAT");
}

TEST_F(LogicalFiles, CompanyAndRegionAreTestedInTheirWidth) {
    archive_.define(10, "A###.DAT", 100);
    archive_.define(11, "A@@.DAT", 100);
    file_table.DITTAOPEN = 1000;  // 000 in three digits
    window_.expect_box("ERRORE OPEN FILE - MANCA DITTAOPEN 10");
    EXPECT_EQ(ends_with(10), 2);
    file_table.region = 100;  // 00 in two
    window_.expect_box("ERRORE OPEN - MANCA REGIONE - CSTR(NUMEROBASE)");
    EXPECT_EQ(ends_with(11), 2);
}

TEST_F(LogicalFiles, AMissingValueShowsItsMessageAndEndsTheProgram) {
    archive_.define(10, "A###.DAT", 100);
    archive_.define(11, "A**.DAT", 100);
    archive_.define(12, "A@@.DAT", 100);
    archive_.define(13, "A%%.DAT", 100);
    window_.expect_box("ERRORE OPEN FILE - MANCA DITTAOPEN 10");
    window_.expect_box("ERRORE OPEN - MANCA ANNO - CSTR(NUMEROBASE)");
    window_.expect_box("ERRORE OPEN - MANCA REGIONE - CSTR(NUMEROBASE)");
    window_.expect_box("ERRORE OPEN - MANCA PROVINCIA - CSTR(NUMEROBASE)");
    for (const double n : {10, 11, 12, 13}) {
        EXPECT_EQ(ends_with(n), 2);
    }
    EXPECT_EQ(window_.boxes.size(), 4U);
    EXPECT_EQ(window_.boxes[0].text, "ERRORE OPEN FILE - MANCA DITTAOPEN 10");
    EXPECT_EQ(window_.boxes[1].text, "ERRORE OPEN - MANCA ANNO - CSTR(NUMEROBASE)");
}

TEST_F(LogicalFiles, AProvinceIsTwoCharacters) {
    archive_.define(13, "A%%.DAT", 100);
    for (const std::string province : {"T", "TOR"}) {
        file_table.province = province;
        window_.expect_box("MANCA PROVINCIA");
        EXPECT_EQ(ends_with(13), 2);
    }
}

TEST_F(LogicalFiles, ADiskMakesThePathAbsolute) {
    archive_.define(10, "!:\\FLUSSI\\A.DAT", 100);
    file_table.disk = "A:";
    EXPECT_EQ(path_of(10), "A:\\FLUSSI\\A.DAT");
    EXPECT_EQ(relative_, 0);
    EXPECT_EQ(file_table.disk, "");
    file_table.disk = "/media/chiavetta";
    EXPECT_EQ(path_of(10), "/media/chiavetta\\FLUSSI\\A.DAT");
}

TEST_F(LogicalFiles, TheDiskIsOpened) {
    const test_support::TempDirectory disk;
    archive_.define(10, "!:\\A.DAT", 3);
    disk.write("A.DAT", "abc");
    file_table.disk = disk.path();
    FAIOPEN(10);
    EXPECT_EQ(LEGGIREC(10, 1), 0);
    EXPECT_EQ(record_buffer(10), "abc");
}

TEST_F(LogicalFiles, WithoutNzbaseIsFailure53) {
    EXPECT_EQ(failure_of([&] { FAIOPEN(2); }), 53);
    EXPECT_EQ(trace_ring.slots[1], "FAIOPEN");
    EXPECT_EQ(trace_ring.slots[2], "DAMMIFILE$ (2)");
}

TEST_F(LogicalFiles, ALineBeyondTheEndOfNzbaseIsFailure62) {
    archive_.define(2, "A.DAT", 100);
    EXPECT_EQ(failure_of([&] { FAIOPEN(3); }), 62);
    archive_.write("NZBASE.DAT", "");
    EXPECT_EQ(failure_of([&] { FAIOPEN(1); }), 62);
}

TEST_F(LogicalFiles, TheLastLineMayEndBehindTheRecordLength) {
    archive_.define(2, "A.DAT", 5);
    archive_.write("A.DAT", "12345");
    const std::string base = archive_.read("NZBASE.DAT");
    archive_.write("NZBASE.DAT", base.substr(0, 79 + 37));
    EXPECT_EQ(FAIOPEN(2), 5);
    archive_.write("NZBASE.DAT", base.substr(0, 79 + 36));
    EXPECT_EQ(failure_of([&] { FAIOPEN(2); }), 62);
}

TEST_F(LogicalFiles, ARecordLengthThatIsNoNumberAboveZeroIsFailure59) {
    archive_.write("A.DAT", "abc");
    for (const std::string length : {"00000", "     ", "ABCDE", "12X45", "-0100", "10.50"}) {
        archive_.define(2, "A.DAT", length);
        EXPECT_EQ(failure_of([&] { FAIOPEN(2); }), 59) << length;
        EXPECT_EQ(file_table.entries[2].CANALI, 0);
    }
    archive_.define(2, "A.DAT", "    3");
    EXPECT_EQ(FAIOPEN(2), 3);
}

TEST_F(LogicalFiles, AFileWithoutANameIsFailure52) {
    archive_.define(2, "", 100);
    EXPECT_EQ(failure_of([&] { FAIOPEN(2); }), 52);
    EXPECT_EQ(VERBASE(2), 0);
}

TEST_F(LogicalFiles, ALogicalNumberOutsideTheTableIsFailure9) {
    EXPECT_EQ(failure_of([&] { FAIOPEN(601); }), 9);
    EXPECT_EQ(failure_of([&] { LEGGIREC(0, 1); }), 9);
    EXPECT_EQ(failure_of([&] { static_cast<void>(record_buffer(-1)); }), 9);
}

// --- Opening and closing

TEST_F(LogicalFiles, OpeningGivesLengthAndABlankRecord) {
    archive_.define(2, "A.DAT", 5);
    archive_.write("a.dat", "12345");  // whatever the case of its name
    EXPECT_EQ(FAIOPEN(2), 5);
    EXPECT_EQ(record_buffer(2), "     ");
    EXPECT_EQ(file_table.entries[2].LUNGHEZZE, 5);
    EXPECT_EQ(file_table.entries[2].CANALI, 1);
    EXPECT_EQ(file_table.last_open, 5);
    EXPECT_EQ(file_length(2), 5);
}

TEST_F(LogicalFiles, ZeroOrBelowOpensNothing) {
    EXPECT_EQ(FAIOPEN(0), 0);
    EXPECT_EQ(FAIOPEN(-2), 0);
    EXPECT_EQ(VERBASE(0), 0);
    EXPECT_EQ(VERBASE(-1), 0);
}

TEST_F(LogicalFiles, OpeningAgainResetsTheBuffer) {
    archive_.define(2, "A.DAT", 5);
    archive_.write("A.DAT", "12345");
    FAIOPEN(2);
    LEGGIREC(2, 1);
    FAIOPEN(2);
    EXPECT_EQ(record_buffer(2), "     ");
    EXPECT_EQ(file_table.entries[2].CANALI, 1);
}

TEST_F(LogicalFiles, EachFileHasAChannelOfItsOwn) {
    for (const std::size_t n : {1U, 2U, 3U}) {
        archive_.define(n, "A" + std::to_string(n), 5);
        archive_.write("A" + std::to_string(n), "12345");
        FAIOPEN(static_cast<double>(n));
    }
    CHIUDI(-2);
    EXPECT_EQ(file_table.entries[1].CANALI, 1);
    EXPECT_EQ(file_table.entries[2].CANALI, 0);
    EXPECT_EQ(file_table.entries[3].CANALI, 3);
    FAIOPEN(2);
    EXPECT_EQ(file_table.entries[2].CANALI, 2);  // the lowest that is free
}

TEST_F(LogicalFiles, ClosingWithZeroLeavesEveryEntryZero) {
    for (const std::size_t n : {1U, 300U, 600U}) {
        archive_.define(n, "A.DAT", 5);
        archive_.write("A.DAT", "12345");
        FAIOPEN(static_cast<double>(n));
    }
    CHIUDI(0);
    for (const FileTable::Entry& file : file_table.entries) {
        EXPECT_EQ(file.CANALI, 0);
    }
    EXPECT_EQ(failure_of([&] { LEGGIREC(1, 1); }), 52);
}

TEST_F(LogicalFiles, TheHandlerClosesWhatIsOpen) {
    archive_.define(2, "A.DAT", 5);
    archive_.write("A.DAT", "12345");
    FAIOPEN(2);
    close_all_files();
    EXPECT_EQ(file_table.entries[2].CANALI, 0);
}

TEST_F(LogicalFiles, AMissingFileIsFailure53AndIsNotMade) {
    archive_.define(5, "NZSELEZ.DAT", 10);
    EXPECT_EQ(failure_of([&] { FAIOPEN(5); }), 53);
    EXPECT_EQ(file_table.entries[5].CANALI, 0);
    EXPECT_FALSE(platform::files().exists(archive_.file("NZSELEZ.DAT")));
}

// --- Records

TEST_F(LogicalFiles, RecordsAreReadUntilTheEnd) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaabbb");
    FAIOPEN(2);
    EXPECT_EQ(LEGGIREC(2, 2), 0);
    EXPECT_EQ(record_buffer(2), "bbb");
    EXPECT_EQ(file_table.last_read, 0);
    EXPECT_EQ(file_table.entries[2].ULTIMOREC, 2);
    EXPECT_EQ(LEGGIREC(2, 3), 1);
    EXPECT_EQ(file_table.last_read, 1);
    EXPECT_EQ(LEGGIREC(2, 1), 0);
    EXPECT_EQ(record_buffer(2), "aaa");
}

TEST_F(LogicalFiles, RecordOneOfAnEmptyFileIsTheEnd) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "");
    FAIOPEN(2);
    EXPECT_EQ(LEGGIREC(2, 1), 1);
    EXPECT_EQ(record_buffer(2), "   ");
}

TEST_F(LogicalFiles, ALastRecordCutShortReadsAsTheEndWithBlanksBehind) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaabb");
    FAIOPEN(2);
    LEGGIREC(2, 1);
    EXPECT_EQ(LEGGIREC(2, 2), 1);
    EXPECT_EQ(record_buffer(2), "bb ");
}

TEST_F(LogicalFiles, TheTraceNamesFileAndRecord) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "");
    FAIOPEN(2);
    LEGGIREC(2, 15);
    SCRIVIREC(2, 1, "abc");
    EXPECT_EQ(trace_ring.slots[3], "LEGGIREC (2-15)");
    EXPECT_EQ(trace_ring.slots[4], "SCRIVIREC (2-1)");
}

TEST_F(LogicalFiles, WritingTextPutsItIntoTheBufferToo) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaabbbccc");
    FAIOPEN(2);
    SCRIVIREC(2, 2, "XYZ");
    EXPECT_EQ(record_buffer(2), "XYZ");
    EXPECT_EQ(archive_.read("A.DAT"), "aaaXYZccc");
}

TEST_F(LogicalFiles, AnEmptyTextWritesTheBufferAsItStands) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaabbb");
    FAIOPEN(2);
    LEGGIREC(2, 1);
    SCRIVIREC(2, 2);
    EXPECT_EQ(archive_.read("A.DAT"), "aaaaaa");
}

TEST_F(LogicalFiles, AFileGrowsByWritingPastItsEnd) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaa");
    FAIOPEN(2);
    SCRIVIREC(2, 2, "bbb");
    SCRIVIREC(2, 4, "ddd");
    EXPECT_EQ(archive_.read("A.DAT"), std::string("aaabbb\0\0\0ddd", 12));
    EXPECT_EQ(file_length(2), 12);
}

TEST_F(LogicalFiles, AWrongLengthIsFailure59) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaa");
    FAIOPEN(2);
    EXPECT_EQ(failure_of([&] { SCRIVIREC(2, 1, "ab"); }), 59);
    EXPECT_EQ(failure_of([&] { SCRIVIREC(2, 1, "abcd"); }), 59);
    record_buffer(2) = "ab";
    EXPECT_EQ(failure_of([&] { LEGGIREC(2, 1); }), 59);
    EXPECT_EQ(failure_of([&] { SCRIVIREC(2, 1, "abc"); }), 59);
    EXPECT_EQ(archive_.read("A.DAT"), "aaa");
}

TEST_F(LogicalFiles, ANumberThatWasNeverOpenedFails) {
    record_buffer(44) = "";
    file_table.entries[44].LUNGHEZZE = 0;
    EXPECT_EQ(failure_of([&] { LEGGIREC(44, 1); }), 52);
    record_buffer(44) = "abc";
    EXPECT_EQ(failure_of([&] { LEGGIREC(44, 1); }), 59);
    record_buffer(44) = "";
}

TEST_F(LogicalFiles, ARecordNumberBelowOneIsFailure63) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaa");
    FAIOPEN(2);
    EXPECT_EQ(failure_of([&] { LEGGIREC(2, 0); }), 63);
    EXPECT_EQ(failure_of([&] { SCRIVIREC(2, -1, "abc"); }), 63);
    EXPECT_EQ(failure_of([&] { LEGGIREC(2, 1e300); }), 63);
}

TEST_F(LogicalFiles, TextIsFittedToTheRecord) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "aaa");
    FAIOPEN(2);
    write_record(2, 1, "x");
    EXPECT_EQ(archive_.read("A.DAT"), "x  ");
    write_record(2, 1, "wxyz");
    EXPECT_EQ(archive_.read("A.DAT"), "wxy");
    write_record(2, 1, "");
    EXPECT_EQ(archive_.read("A.DAT"), "   ");
    fill_record(2, "vw");
    EXPECT_EQ(record_buffer(2), "vw ");
}

// --- Text files

TEST_F(LogicalFiles, ATextFileIsReadLineByLine) {
    archive_.define(430, "NZPARAM.TXT", "00000");  // a text file has no record length
    archive_.write("NZPARAM.TXT", "uno\r\n\r\ndue\ntre\rquattro");
    FAIOPENIO(430, 0);
    EXPECT_NE(file_table.entries[430].CANALI, 0);
    std::vector<std::string> lines;
    for (std::string line; LEGGIRIGA(430, line);) {
        lines.push_back(line);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"uno", "", "due", "tre", "quattro"}));
    CHIUDI(430);
    std::string line;
    EXPECT_EQ(failure_of([&] { static_cast<void>(LEGGIRIGA(430, line)); }), 52);
}

TEST_F(LogicalFiles, ATextFileForOutputTakesThePlaceOfTheOldOne) {
    archive_.define(430, "NZPARAM.TXT", "     ");
    archive_.write("nzparam.txt", "a much longer text than the new one");
    FAIOPENIO(430, 1);
    SCRIVIRIGA(430, "uno");
    SCRIVIRIGA(430, "");
    CHIUDI(430);
    EXPECT_FALSE(std::filesystem::exists(archive_.file("nzparam.txt")));
    EXPECT_EQ(archive_.read("NZPARAM.TXT"), "uno\r\n\r\n");
}

TEST_F(LogicalFiles, AMissingTextFileIsFailure53) {
    archive_.define(430, "NZPARAM.TXT", "     ");
    EXPECT_EQ(failure_of([&] { FAIOPENIO(430, 0); }), 53);
}

// --- Existence, removal, making anew

TEST_F(LogicalFiles, VerbaseTellsAFileWithContent) {
    archive_.define(2, "A.DAT", 3);
    EXPECT_EQ(VERBASE(2), 0);
    archive_.write("A.DAT", "");
    EXPECT_EQ(VERBASE(2), 0);
    archive_.write("A.DAT", "x");
    EXPECT_EQ(VERBASE(2), 1);
}

TEST_F(LogicalFiles, EliminaRemovesAFileWithContentAndLeavesAnEmptyOne) {
    archive_.define(2, "A.DAT", 3);
    archive_.write("A.DAT", "");
    ELIMINA(2);
    EXPECT_TRUE(platform::files().exists(archive_.file("A.DAT")));
    archive_.write("A.DAT", "abc");
    FAIOPEN(2);
    ELIMINA(2);
    EXPECT_FALSE(platform::files().exists(archive_.file("A.DAT")));
    EXPECT_EQ(file_table.entries[2].CANALI, 0);  // it was open
    ELIMINA(2);                                  // nothing there: nothing happens
}

TEST_F(LogicalFiles, ZeroOrBelowIsNeitherRemovedNorMade) {
    archive_.define(1, "A.DAT", 3);
    archive_.write("A.DAT", "abc");
    for (const double n : {0., -1.}) {
        ELIMINA(n);
        RICREAFILE(n);
    }
    EXPECT_EQ(archive_.read("A.DAT"), "abc");
}

TEST_F(LogicalFiles, EliminaKeepsTheValuesForItsSecondLook) {
    archive_.define(2, "A###@@%%**.DAT", 3);
    archive_.write("A00708TO24.DAT", "abc");
    file_table.DITTAOPEN = 7;
    file_table.region = 8;
    file_table.province = "TO";
    file_table.year = 2024;
    ELIMINA(2);
    EXPECT_FALSE(platform::files().exists(archive_.file("A00708TO24.DAT")));
    EXPECT_EQ(file_table.DITTAOPEN, 0);
}

TEST_F(LogicalFiles, RicreafileLeavesAnEmptyOpenFile) {
    archive_.define(2, "A###.DAT", 3);
    archive_.write("A007.DAT", "abc");
    file_table.DITTAOPEN = 7;
    RICREAFILE(2);
    EXPECT_EQ(file_length(2), 0);
    EXPECT_NE(file_table.entries[2].CANALI, 0);
    SCRIVIREC(2, 1, "xyz");
    EXPECT_EQ(archive_.read("A007.DAT"), "xyz");
}

TEST_F(LogicalFiles, RicreafileMakesAMissingFile) {
    archive_.define(2, "A.DAT", 3);
    RICREAFILE(2);
    EXPECT_EQ(file_length(2), 0);
}

TEST_F(LogicalFiles, RicreafileWorksOnADisk) {
    const test_support::TempDirectory disk;
    archive_.define(2, "!:\\A.DAT", 3);
    disk.write("A.DAT", "abc");
    file_table.disk = disk.path();
    RICREAFILE(2);
    EXPECT_EQ(disk.read("A.DAT"), "");
    EXPECT_NE(file_table.entries[2].CANALI, 0);
}

// --- Tables that the run does not change

class Tables : public LogicalFiles {
  protected:
    void SetUp() override {
        LogicalFiles::SetUp();
        archive_.define(8, "SECTORS.DAT", 4);
        archive_.write("SECTORS.DAT", "aaaabbbbcc");
    }
    /// Record 1 as the run sees it.
    static std::string first_record() {
        read_table(8, 1);
        return record_buffer(8);
    }
};

TEST_F(Tables, ARecordIsReadAsFromTheFile) {
    FAIOPEN(8);
    EXPECT_EQ(read_table(8, 2), 0);
    EXPECT_EQ(record_buffer(8), "bbbb");
    EXPECT_EQ(file_table.entries[8].ULTIMOREC, 2);
    EXPECT_EQ(trace_ring.slots.at(static_cast<std::size_t>(trace_ring.index)), "LEGGIREC (8-2)");
    EXPECT_EQ(read_table(8, 3), 1);  // cut short
    EXPECT_EQ(record_buffer(8), "cc  ");
    EXPECT_EQ(read_table(8, 4), 1);  // beyond the end
    EXPECT_EQ(record_buffer(8), "    ");
    EXPECT_EQ(file_table.last_read, 1);
    EXPECT_EQ(failure_of([] { read_table(8, 0); }), platform::kBadRecordNumber);
}

TEST_F(Tables, TheFileIsReadOnce) {
    FAIOPEN(8);
    EXPECT_EQ(first_record(), "aaaa");
    archive_.write("SECTORS.DAT", "xxxxyyyy");
    EXPECT_EQ(first_record(), "aaaa");
    FAIOPEN(8);
    EXPECT_EQ(first_record(), "xxxx");
}

TEST_F(Tables, WhatTheRunWritesIsReadAnew) {
    FAIOPEN(8);
    EXPECT_EQ(first_record(), "aaaa");
    SCRIVIREC(8, 1, "zzzz");
    EXPECT_EQ(first_record(), "zzzz");
}

TEST_F(Tables, AClosedTableIsOpenedForItsReadingAlone) {
    EXPECT_EQ(first_record(), "aaaa");
    EXPECT_EQ(file_table.entries[8].CANALI, 0);
    archive_.write("SECTORS.DAT", "xxxx");
    EXPECT_EQ(first_record(), "aaaa");
    CHIUDI(0);
    EXPECT_EQ(first_record(), "xxxx");
}

TEST_F(Tables, AMissingTableIs53) {
    archive_.define(8, "NONE.DAT", 4);
    EXPECT_EQ(failure_of([] { load_table(8); }), platform::kFileNotFound);
}

}  // namespace
}  // namespace MXLIBRERIA
