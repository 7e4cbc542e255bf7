// Names on disk while a run keeps the lists of its directories.

#include "platform/disk_names.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/file_system.h"
#include "tests/support/temp_directory.h"

namespace platform {
namespace {

using test_support::TempDirectory;

void make_empty(const std::string& path) {
    static_cast<void>(files().open(path, OpenMode::shared));
}

TEST(KeptListings, ADirectoryIsListedOnce) {
    const TempDirectory directory;
    directory.write("NZRETMEN.MDB", "x");
    const KeptListings listings;
    EXPECT_FALSE(files().exists(directory.file("NZINPD24.MDB")));
    directory.write("NZINPD24.MDB", "x");  // by another program
    EXPECT_FALSE(files().exists(directory.file("NZINPD24.MDB")));
    EXPECT_TRUE(files().exists(directory.file("nzretmen.mdb")));
}

TEST(KeptListings, AFileThatAnotherProgramDeletedIsGone) {
    const TempDirectory directory;
    directory.write("NZRETMEN.MDB", "x");
    const KeptListings listings;
    EXPECT_TRUE(files().exists(directory.file("NZRETMEN.MDB")));
    std::filesystem::remove(directory.file("NZRETMEN.MDB"));
    EXPECT_FALSE(files().exists(directory.file("NZRETMEN.MDB")));
}

TEST(KeptListings, AFileOfAnotherProgramIsOpenedAllTheSame) {
    const TempDirectory directory;
    const KeptListings listings;
    EXPECT_FALSE(files().exists(directory.file("NZ001.DAT")));
    directory.write("NZ001.DAT", "x");
    EXPECT_EQ(read_whole_file(directory.file("NZ001.DAT")), "x");
}

TEST(KeptListings, WhatTheRunMakesOrDeletesIsSeen) {
    const TempDirectory directory;
    const KeptListings listings;
    EXPECT_FALSE(files().exists(directory.file("Tabcom.Mdb")));
    make_empty(directory.file("Tabcom.Mdb"));
    EXPECT_TRUE(files().exists(directory.file("TABCOM.MDB")));
    EXPECT_EQ(path_on_disk(directory.path() + "\\TABCOM.MDB"), directory.file("Tabcom.Mdb"));
    files().remove(directory.file("TABCOM.MDB"));
    EXPECT_FALSE(files().exists(directory.file("Tabcom.Mdb")));
    EXPECT_EQ(path_on_disk(directory.file("TABCOM.MDB")), directory.file("TABCOM.MDB"));
}

TEST(KeptListings, TheNameInItsOwnCaseComesFirst) {
    const TempDirectory directory;
    directory.write("NZ.DAT", "upper");
    directory.write("nz.dat", "lower");
    const KeptListings listings;
    EXPECT_EQ(read_whole_file(directory.file("nz.dat")), "lower");
    EXPECT_EQ(read_whole_file(directory.file("NZ.DAT")), "upper");
    EXPECT_EQ(read_whole_file(directory.file("Nz.Dat")), "upper");  // the first in byte order
}

TEST(KeptListings, DirectoriesTooAreFoundWhateverTheirCase) {
    const TempDirectory directory;
    std::filesystem::create_directory(directory.file("Archivi"));
    directory.write("Archivi/Nz001.Dat", "x");
    const KeptListings listings;
    EXPECT_EQ(path_on_disk(directory.path() + "\\ARCHIVI\\NZ001.DAT"),
              directory.file("Archivi/Nz001.Dat"));
    EXPECT_EQ(path_on_disk(directory.path() + "\\STAMPE\\A.PDF"), directory.file("STAMPE/A.PDF"));
    EXPECT_TRUE(files().directory_exists(directory.path() + "\\ARCHIVI"));
}

TEST(KeptListings, TheListsGoWithTheRun) {
    const TempDirectory directory;
    {
        const KeptListings listings;
        EXPECT_FALSE(files().exists(directory.file("NZ001.DAT")));
        directory.write("NZ001.DAT", "x");
    }
    EXPECT_TRUE(files().exists(directory.file("NZ001.DAT")));
}

}  // namespace
}  // namespace platform
