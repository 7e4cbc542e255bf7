#include "platform/file_system.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>

#include "platform/failure.h"
#include "tests/support/other_process.h"
#include "tests/support/temp_directory.h"

namespace platform {
namespace {

using test_support::become_ordinary_user;
using test_support::in_other_process;
using test_support::TempDirectory;

/// Number of the failure that `work` raises; 0 if it raises none.
template <typename Work>
int failure_of(Work work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure.number();
    }
    return 0;
}

int opening_failure(const std::string& path, OpenMode mode) {
    return failure_of([&] { static_cast<void>(files().open(path, mode)); });
}

TEST(Paths, NamesAreFoundWhateverTheirCase) {
    const TempDirectory directory;
    std::filesystem::create_directory(directory.file("Archivi"));
    directory.write("Archivi/Nz001.Dat", "x");
    EXPECT_EQ(path_on_disk(directory.path() + "\\ARCHIVI\\NZ001.DAT"),
              directory.file("Archivi/Nz001.Dat"));
    EXPECT_TRUE(files().exists(directory.path() + "\\archivi\\nz001.dat"));
    EXPECT_EQ(read_whole_file(directory.path() + "\\ARCHIVI\\nz001.DAT"), "x");
}

TEST(Paths, TheNameInItsOwnCaseComesFirst) {
    const TempDirectory directory;
    directory.write("NZ.DAT", "upper");
    directory.write("nz.dat", "lower");
    EXPECT_EQ(read_whole_file(directory.file("nz.dat")), "lower");
    EXPECT_EQ(read_whole_file(directory.file("NZ.DAT")), "upper");
    EXPECT_EQ(read_whole_file(directory.file("Nz.Dat")), "upper");  // the first in byte order
}

TEST(Paths, NamesThatDoNotExistStayAsGiven) {
    const TempDirectory directory;
    std::filesystem::create_directory(directory.file("Archivi"));
    EXPECT_EQ(path_on_disk(directory.path() + "\\ARCHIVI\\Nuovo.Dat"),
              directory.file("Archivi/Nuovo.Dat"));
    EXPECT_EQ(path_on_disk("C:\\NON\\C'E'"), "C:/NON/C'E'");
}

TEST(Opening, AMissingFileIs53AndAMissingDirectory76) {
    const TempDirectory directory;
    EXPECT_EQ(opening_failure(directory.file("A.DAT"), OpenMode::read_only), 53);
    EXPECT_EQ(opening_failure(directory.file("A.DAT"), OpenMode::existing), 53);
    EXPECT_EQ(opening_failure(directory.file("B/A.DAT"), OpenMode::existing), 76);
    EXPECT_EQ(opening_failure(directory.file("B/A.DAT"), OpenMode::shared), 76);
    EXPECT_FALSE(files().exists(directory.file("A.DAT")));
}

TEST(Opening, ADirectoryIs75) {
    const TempDirectory directory;
    for (const OpenMode mode : {OpenMode::read_only, OpenMode::existing, OpenMode::shared,
                                OpenMode::exclusive, OpenMode::truncate}) {
        EXPECT_EQ(opening_failure(directory.path(), mode), 75);
    }
}

TEST(Opening, TheFailureNamesTheFile) {
    const TempDirectory directory;
    try {
        static_cast<void>(files().open(directory.file("A.DAT"), OpenMode::existing));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.description(), "File not found");
        EXPECT_EQ(failure.culprit, directory.file("A.DAT"));
    }
}

TEST(Opening, SharedMakesTheFileAndKeepsWhatIsThere) {
    const TempDirectory directory;
    files().open(directory.file("A.DAT"), OpenMode::shared)->write_at(0, "abc");
    files().open(directory.file("A.DAT"), OpenMode::shared)->write_at(1, "X");
    EXPECT_EQ(directory.read("A.DAT"), "aXc");
    EXPECT_EQ(files().open(directory.file("A.DAT"), OpenMode::truncate)->length(), 0U);
}

TEST(Opening, ExclusiveShutsEveryOtherOpeningOut) {
    const TempDirectory directory;
    const std::string path = directory.file("NZSEMA.DAT");
    const auto holder = files().open(path, OpenMode::exclusive);
    EXPECT_EQ(opening_failure(path, OpenMode::exclusive), 70);
    EXPECT_EQ(in_other_process([&] { return opening_failure(path, OpenMode::exclusive); }), 70);
    EXPECT_EQ(in_other_process([&] { return opening_failure(path, OpenMode::existing); }), 70);
    EXPECT_EQ(in_other_process([&] { return opening_failure(path, OpenMode::truncate); }), 70);
}

TEST(Opening, ExclusiveIsRefusedWhileAnotherHasTheFileOpen) {
    const TempDirectory directory;
    const std::string path = directory.file("A.DAT");
    auto holder = files().open(path, OpenMode::shared);
    EXPECT_EQ(opening_failure(path, OpenMode::shared), 0);
    EXPECT_EQ(opening_failure(path, OpenMode::exclusive), 70);
    holder.reset();
    EXPECT_EQ(opening_failure(path, OpenMode::exclusive), 0);
}

TEST(Opening, AFileThatMayNotBeWrittenIsOpenedForReading) {
    const TempDirectory directory;
    directory.write("A.DAT", "abc");
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(directory.file("A.DAT"), std::filesystem::perms(0444));
    const int status = in_other_process([&] {
        become_ordinary_user();
        const auto channel = files().open(directory.file("A.DAT"), OpenMode::existing);
        char first = ' ';
        if (channel->read_at(0, &first, 1) != 1 || first != 'a') {
            return 1;
        }
        return failure_of([&] { channel->write_at(0, "X"); });
    });
    EXPECT_EQ(status, 75);
    EXPECT_EQ(directory.read("A.DAT"), "abc");
}

TEST(Opening, AReadOnlyDirectoryTakesNoNewFile) {
    const TempDirectory directory;
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0555));
    const std::string path = directory.file("A.DAT");
    EXPECT_EQ(in_other_process([&] {
                  become_ordinary_user();
                  return opening_failure(path, OpenMode::exclusive);
              }),
              75);
    EXPECT_EQ(in_other_process([&] {
                  become_ordinary_user();
                  return files().permitted(path) ? 1 : 0;
              }),
              0);
    EXPECT_TRUE(real_files().permitted("/tmp/velmor-a-name-that-nobody-uses"));
}

TEST(Opening, TooManyFilesIs67) {
    const TempDirectory directory;
    directory.write("A.DAT", "abc");
    EXPECT_EQ(in_other_process([&] {
                  const rlimit few{3, 3};
                  ::setrlimit(RLIMIT_NOFILE, &few);
                  return opening_failure(directory.file("A.DAT"), OpenMode::existing);
              }),
              67);
}

TEST(Traffic, AReadBeyondTheEndGivesWhatThereIs) {
    const TempDirectory directory;
    directory.write("A.DAT", "abcde");
    const auto channel = files().open(directory.file("A.DAT"), OpenMode::read_only);
    std::string buffer(4, '.');
    EXPECT_EQ(channel->read_at(3, buffer.data(), 4), 2U);
    EXPECT_EQ(buffer, "de..");
    EXPECT_EQ(channel->read_at(9, buffer.data(), 4), 0U);
    EXPECT_EQ(channel->length(), 5U);
}

TEST(Traffic, AWriteBeyondTheEndLetsTheFileGrow) {
    const TempDirectory directory;
    files().open(directory.file("A.DAT"), OpenMode::shared)->write_at(3, "xy");
    EXPECT_EQ(directory.read("A.DAT"), std::string("\0\0\0xy", 5));
}

TEST(Traffic, AFullDiskIs61) {
    const auto channel = files().open("/dev/full", OpenMode::existing);
    EXPECT_EQ(failure_of([&] { channel->write_at(0, "abc"); }), 61);
}

TEST(Traffic, AFileOpenedForReadingTakesNoWrite) {
    const TempDirectory directory;
    directory.write("A.DAT", "abc");
    const auto channel = files().open(directory.file("A.DAT"), OpenMode::read_only);
    EXPECT_EQ(failure_of([&] { channel->write_at(0, "X"); }), 75);
}

TEST(WholeFiles, LinesEndInCrLfOrLf) {
    const TempDirectory directory;
    directory.write("A.TXT", "uno\r\ndue\n\ntre");
    EXPECT_EQ(read_lines(directory.file("A.TXT")),
              (std::vector<std::string>{"uno", "due", "", "tre"}));
}

TEST(WholeFiles, CopyTakesThePlaceOfTheTarget) {
    const TempDirectory directory;
    const std::string large(std::size_t{3} << 20U, 'x');
    directory.write("A", large + "end");
    directory.write("B", std::string(large.size() * 2, 'y'));
    files().copy(directory.file("A"), directory.file("B"));
    EXPECT_EQ(directory.read("B"), large + "end");
    EXPECT_EQ(failure_of([&] { files().copy(directory.file("C"), directory.file("D")); }), 53);
    EXPECT_FALSE(files().exists(directory.file("D")));
}

TEST(WholeFiles, LengthExistenceAndRemoval) {
    const TempDirectory directory;
    directory.write("A.DAT", "abc");
    EXPECT_EQ(files().length(directory.file("a.dat")), 3U);
    EXPECT_FALSE(files().exists(directory.path()));
    EXPECT_TRUE(files().directory_exists(directory.path()));
    EXPECT_FALSE(files().directory_exists(directory.file("A.DAT")));
    files().remove(directory.file("a.dat"));
    EXPECT_FALSE(files().exists(directory.file("A.DAT")));
    EXPECT_EQ(failure_of([&] { files().remove(directory.file("A.DAT")); }), 53);
    EXPECT_EQ(failure_of([&] { static_cast<void>(files().length(directory.file("A.DAT"))); }), 53);
}

}  // namespace
}  // namespace platform
