// One program works on an archive at a time: whatever the spelling of its path, whoever starts it,
// and whether it is the batch or a command of the support tool that writes.

#include "platform/directory_lock.h"

#include <sys/stat.h>

#include "files/file_numbers.h"
#include "platform/failure.h"
#include "tests/support/child_process.h"
#include "tests/support/demo_run.h"
#include "tests/support/other_process.h"
#include "texts/texts.h"

namespace {

using namespace MXLIBRERIA::file_numbers;

namespace fs = std::filesystem;
using platform::try_directory_lock;
using test_support::ChildProcess;
using test_support::in_other_process;
using test_support::OutputFile;
using test_support::wait_until;

constexpr int kSemaphore = 16;
constexpr int kOtherInstance = 3;

class ArchiveLock : public test_support::DemoRun {
  protected:
    void SetUp() override {
        DemoRun::SetUp();
        // Users of the tests other than root come this way.
        fs::permissions(directory.path(), fs::perms(0755));
    }
    void TearDown() override { fs::permissions(archive(), fs::perms(0755)); }

    [[nodiscard]] std::string lock_file() const { return archive() + "/VELMOR.LCK"; }
    /// What the lock in the archive says of its holder; empty without one.
    [[nodiscard]] std::string holder_in_archive() const {
        std::ifstream in(lock_file());
        std::string line;
        std::getline(in, line);
        return line;
    }
    [[nodiscard]] bool archive_locked() const { return !holder_in_archive().empty(); }
    [[nodiscard]] std::unique_ptr<platform::Channel> hold_semaphore() const {
        return platform::files().open(path(kSemaphore), platform::OpenMode::exclusive);
    }
    /// A run on the archive under another spelling of its path.
    [[nodiscard]] ChildProcess::Start start(const std::string& archive_path) {
        const std::string registry =
            directory.file("registro" + std::to_string(++registries) + ".ini");
        write(registry, "[SOFTWARE\\TRAMONTIVAL\\SOLMAREL]\nPERCORSOARCHIVI=" + archive_path +
                            "\nPERCORSOPROGRAMMI=" + root() + "/programmi\n");
        ChildProcess::Start run;
        run.command = {VELMOR_PROGRAM};
        run.environment = call().environment;
        run.environment.front().second = registry;
        run.output = output.get();
        run.errors = errors.get();
        return run;
    }
    /// The same for an ordinary user, who may have no way to the program where it was built.
    [[nodiscard]] ChildProcess::Start start_of_ordinary_user() {
        const std::string program = directory.file("velmor");
        fs::copy_file(VELMOR_PROGRAM, program, fs::copy_options::skip_existing);
        ChildProcess::Start run = start(archive());
        run.command = {program};
        if (::geteuid() == 0) {
            run.command = {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups",
                           program};
        }
        return run;
    }
    /// The rights of everything in the archive, and of its directory.
    void set_rights(unsigned directory_rights, unsigned file_rights) const {
        for (const fs::directory_entry& entry : fs::directory_iterator(archive())) {
            fs::permissions(entry.path(), fs::perms(file_rights));
        }
        fs::permissions(archive(), fs::perms(directory_rights));
    }
    void expect_holder_is_told(pid_t process) const {
        const std::string told = errors.content();
        EXPECT_NE(told.find(texts::kArchiveInUse.utf8), std::string::npos) << told;
        EXPECT_NE(told.find("velmor, processo " + std::to_string(process) + ", dal "),
                  std::string::npos)
            << told;
        EXPECT_EQ(output.content(), "");
    }

    int registries = 0;
    OutputFile output{directory.file("uscita.txt")};
    OutputFile errors{directory.file("errori.txt")};
};

/// Has the process a lock in the directories of the machine?
bool machine_lock_of(pid_t process) {
    for (const char* place : {"/run/lock", "/tmp"}) {
        std::error_code refused;
        for (const fs::directory_entry& entry : fs::directory_iterator(place, refused)) {
            const std::string name = entry.path().filename().string();
            std::ifstream in(entry.path());
            std::string holder;
            if (name.starts_with("velmor-") && name.ends_with(".lock") && in >> holder &&
                holder == std::to_string(process)) {
                return true;
            }
        }
    }
    return false;
}

// ---- Two runs ----

TEST_F(ArchiveLock, EverySpellingOfTheArchiveIsTheSameArchive) {
    fs::create_directory_symlink(root(), directory.file("collegata"));
    auto held = hold_semaphore();
    ChildProcess::Start first = start(archive());
    first.output = ChildProcess::kNull;
    ChildProcess holder(first);
    ASSERT_TRUE(wait_until([this] { return archive_locked(); }));
    const std::vector<std::string> spellings{archive(),
                                             archive() + "/",
                                             directory.file("collegata/archivi"),
                                             directory.file("prova/../prova/archivi"),
                                             directory.file("prova/./archivi"),
                                             directory.file("prova//archivi"),
                                             directory.file("prova\\ARCHIVI")};
    for (const std::string& spelling : spellings) {
        EXPECT_EQ(ChildProcess(start(spelling)).wait(), kOtherInstance) << spelling;
    }
    fs::create_directories(directory.file("temporanei"));
    ChildProcess::Start other_temporary = start(archive());
    other_temporary.environment.emplace_back("TMPDIR", directory.file("temporanei"));
    EXPECT_EQ(ChildProcess(other_temporary).wait(), kOtherInstance);
    expect_holder_is_told(holder.id());
    held.reset();
    EXPECT_EQ(holder.wait(), 0);
}

TEST_F(ArchiveLock, NothingOfItIsLeftAfterTheRun) {
    ChildProcess run(start(archive()));
    EXPECT_EQ(run.wait(), 0);
    EXPECT_FALSE(fs::exists(lock_file()));
    EXPECT_FALSE(machine_lock_of(run.id()));
}

TEST_F(ArchiveLock, AKilledRunHoldsNothing) {
    auto held = hold_semaphore();
    {
        ChildProcess killed(start(archive()));
        ASSERT_TRUE(wait_until([this] { return archive_locked(); }));
        killed.signal(SIGKILL);
        EXPECT_EQ(killed.wait(), 128 + SIGKILL);
    }
    EXPECT_TRUE(fs::exists(lock_file()));
    held.reset();
    EXPECT_EQ(ChildProcess(start(archive())).wait(), 0) << errors.content();
    EXPECT_FALSE(fs::exists(lock_file()));
}

TEST_F(ArchiveLock, WhatAnotherUserHasLeftBehindIsTakenOver) {
    set_rights(0777, 0666);
    ASSERT_EQ(::chmod(root().c_str(), 0755), 0);
    auto held = hold_semaphore();
    {
        ChildProcess killed(start(archive()));
        // By then it has made its recovery slot too.
        ASSERT_TRUE(wait_until([this] { return errors.holds("NZSEMA.DAT"); }));
        killed.signal(SIGKILL);
        EXPECT_EQ(killed.wait(), 128 + SIGKILL);
    }
    ChildProcess next(start_of_ordinary_user());
    ASSERT_TRUE(wait_until([&] {
        return holder_in_archive().starts_with(std::to_string(next.id()) + " ");
    })) << errors.content();
    EXPECT_EQ(ChildProcess(start(archive())).wait(), kOtherInstance);
    held.reset();
    EXPECT_EQ(next.wait(), 0) << output.content() << errors.content();
    EXPECT_FALSE(fs::exists(lock_file()));
}

// ---- An archive directory that may not be written ----

TEST_F(ArchiveLock, AReadOnlyDirectoryIsLockedBesideIt) {
    set_rights(0555, 0666);
    const std::string end = directory.file("fine");
    const pid_t holder = test_support::start_process([&] {
        test_support::become_ordinary_user();
        const platform::LockAttempt attempt = try_directory_lock(archive(), "velmor");
        const bool ended = wait_until([&] { return fs::exists(end); });
        return attempt.lock != nullptr && ended ? 0 : 1;
    });
    EXPECT_TRUE(wait_until([&] { return machine_lock_of(holder); }));
    EXPECT_EQ(ChildProcess(start_of_ordinary_user()).wait(), kOtherInstance);
    expect_holder_is_told(holder);
    // Who may write the directory would put the lock there, and still meets the other one.
    set_rights(0755, 0666);
    EXPECT_EQ(ChildProcess(start(archive())).wait(), kOtherInstance);
    EXPECT_FALSE(fs::exists(lock_file()));
    write(end, "");
    EXPECT_EQ(test_support::result_of(holder), 0);
    EXPECT_FALSE(machine_lock_of(holder));
}

TEST_F(ArchiveLock, WhoMayNotWriteTheDirectoryMeetsTheLockInIt) {
    set_rights(0755, 0666);
    auto held = hold_semaphore();
    ChildProcess holder(start(archive()));
    ASSERT_TRUE(wait_until([this] { return archive_locked(); }));
    set_rights(0555, 0666);
    EXPECT_EQ(ChildProcess(start_of_ordinary_user()).wait(), kOtherInstance);
    set_rights(0755, 0666);
    held.reset();
    EXPECT_EQ(holder.wait(), 0);
}

// ---- Races ----

/// Four programs take and release the lock as fast as they can; each makes a file that must not be
/// there yet. A lock file removed under somebody's hands would let two in.
TEST_F(ArchiveLock, RemovalLetsNoTwoIn) {
    constexpr int kPrograms = 4;
    constexpr int kTurns = 150;
    const std::string inside = directory.file("dentro");
    const auto take_turns = [&] {
        for (int turns = 0; turns < kTurns;) {
            const platform::LockAttempt attempt = try_directory_lock(archive(), "prova");
            if (attempt.lock == nullptr) {
                continue;
            }
            const int file = ::open(inside.c_str(), O_CREAT | O_EXCL | O_WRONLY, 0600);
            if (file < 0) {
                return 1;
            }
            ::close(file);
            fs::remove(inside);
            ++turns;
        }
        return 0;
    };
    std::vector<pid_t> programs;
    for (int i = 0; i < kPrograms; ++i) {
        programs.push_back(test_support::start_process(take_turns));
    }
    for (const pid_t program : programs) {
        EXPECT_EQ(test_support::result_of(program), 0);
    }
    EXPECT_FALSE(fs::exists(lock_file()));
}

TEST_F(ArchiveLock, TheHolderIsToldAndADirectoryThatIsMissingIsAFailure) {
    const platform::LockAttempt mine = try_directory_lock(archive(), "nzutil prova");
    ASSERT_NE(mine.lock, nullptr);
    const std::string self = std::to_string(::getpid());
    EXPECT_EQ(in_other_process([&] {
                  const platform::LockAttempt other = try_directory_lock(archive(), "velmor");
                  const bool told =
                      other.holder.program == "nzutil prova" && other.holder.process == self &&
                      other.holder.since.size() == 19 && !other.holder.machine.empty();
                  return other.lock == nullptr && told ? 0 : 1;
              }),
              0);
    EXPECT_THROW(static_cast<void>(try_directory_lock(directory.file("assente"), "velmor")),
                 platform::Failure);
}

// ---- The support tool ----

TEST_F(ArchiveLock, CommandsThatWriteAreRefusedWhileARunGoesOn) {
    auto held = hold_semaphore();
    ChildProcess::Start first = start(archive());
    first.output = ChildProcess::kNull;
    ChildProcess holder(first);
    ASSERT_TRUE(wait_until([this] { return archive_locked(); }));
    const std::vector<std::vector<std::string>> writing{{"periodo", root(), "30062024", "4"},
                                                        {"scrivi", root(), "2", "1", "P116", "1"},
                                                        {"anno", root(), "2025", "--si"}};
    for (const std::vector<std::string>& command : writing) {
        ChildProcess::Start refused = start(archive());
        refused.command = {NZUTIL_PROGRAM};
        refused.command.insert(refused.command.end(), command.begin(), command.end());
        EXPECT_EQ(ChildProcess(refused).wait(), 1) << command.front();
    }
    EXPECT_EQ(bytes(path(kPeriod)).substr(0, 9), "310520244");
    expect_holder_is_told(holder.id());
    // Reading is no harm.
    ChildProcess::Start reading = start(archive());
    reading.command = {NZUTIL_PROGRAM, "leggi", root(), "2", "1", "P116"};
    EXPECT_EQ(ChildProcess(reading).wait(), 0);
    held.reset();
    EXPECT_EQ(holder.wait(), 0);
    ChildProcess::Start accepted = start(archive());
    accepted.command = {NZUTIL_PROGRAM, "periodo", root(), "30062024", "4"};
    EXPECT_EQ(ChildProcess(accepted).wait(), 0);
    EXPECT_EQ(bytes(path(kPeriod)).substr(0, 9), "300620244");
    EXPECT_FALSE(fs::exists(lock_file()));
}

TEST_F(ArchiveLock, TheRunMeetsTheLockOfACommand) {
    const platform::LockAttempt writing = try_directory_lock(archive(), "nzutil scrivi");
    EXPECT_EQ(ChildProcess(start(archive())).wait(), kOtherInstance);
    EXPECT_TRUE(errors.holds("nzutil scrivi, processo " + std::to_string(::getpid())))
        << errors.content();
}

}  // namespace
