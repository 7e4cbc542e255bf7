// The program stopped from outside, or with nobody to read what it says: Ctrl-C, a closed terminal,
// a pipe without reader, a full device, a limit on the size of files, closed standard streams. No
// wage is half written, the archive can be calculated to the end afterwards, and the status tells.

#include <stdlib.h>

#include <array>
#include <optional>

#include "files/file_numbers.h"
#include "nzutil/scenario.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "tests/support/child_process.h"
#include "tests/support/demo_run.h"
#include "texts/texts.h"

namespace {

using test_support::ChildProcess;
using test_support::OutputFile;
using test_support::TestDescriptor;
using test_support::wait_until;
using namespace MXLIBRERIA::file_numbers;

constexpr const char* kDone = ":elaborato\n";

std::size_t count(const std::string& text, std::string_view part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

std::string not_calculated(std::size_t employees) {
    return std::string(texts::kNotCalculated.utf8) + std::to_string(employees);
}

/// A pipe of the smallest size.
struct Pipe {
    static std::array<int, 2> make() {
        std::array<int, 2> ends{-1, -1};
        if (::pipe(ends.data()) != 0) {
            throw std::runtime_error("no pipe");
        }
        return ends;
    }
    explicit Pipe(std::array<int, 2> ends = make())
        : reader(ends[0]), writer(ends[1]), capacity(::fcntl(ends[1], F_SETPIPE_SZ, 1)) {}

    /// Fills the pipe up to `room` bytes.
    void leave_room_for(int room) const {
        const std::string filling(static_cast<std::size_t>(capacity - room), '\n');
        ASSERT_EQ(::write(writer.get(), filling.data(), filling.size()), capacity - room);
    }
    [[nodiscard]] int room() const { return capacity - reader.waiting(); }

    TestDescriptor reader;
    TestDescriptor writer;
    int capacity;
};

class StopRequests : public test_support::DemoRun {
  protected:
    void SetUp() override {
        DemoRun::SetUp();
        // Employee 12 has been calculated already and would write a line in the first walk.
        std::vector<std::pair<int, int>> selection = installation().read_selection();
        std::erase_if(selection, [](const auto& entry) { return entry.second == 12; });
        selected = selection.size();
        installation().write_selection(selection);
        fresh = snapshot();
    }

    [[nodiscard]] ChildProcess::Start start() const {
        return {{VELMOR_PROGRAM}, call().environment, ChildProcess::kNull,
                output.get(),     errors.get(),       false};
    }
    /// The shell's words in front of the program: limits, closed streams.
    [[nodiscard]] ChildProcess::Start start_by_shell(const std::string& words) const {
        ChildProcess::Start by_shell = start();
        by_shell.command = {"/bin/sh", "-c", words, VELMOR_PROGRAM};
        return by_shell;
    }
    [[nodiscard]] bool run_has_the_archive() const {
        std::ifstream lock(archive() + "/VELMOR.LCK");
        return lock.peek() != std::ifstream::traits_type::eof();
    }
    [[nodiscard]] std::unique_ptr<platform::Channel> hold_semaphore() const {
        return platform::files().open(path(kSemaphore), platform::OpenMode::exclusive);
    }

    /// What an undisturbed run makes of the archive.
    [[nodiscard]] std::map<std::string, std::string> calculated() const {
        const std::string other = directory.file("altra");
        std::filesystem::remove_all(other);
        nzutil::copy_installation(demo->file("demo"), other).close();
        nzutil::Installation::open(other).write_selection(installation().read_selection());
        ChildProcess::Start undisturbed = start();
        undisturbed.environment.front().second = other + "/registro.ini";
        undisturbed.output = ChildProcess::kNull;
        undisturbed.errors = ChildProcess::kNull;
        EXPECT_EQ(ChildProcess(undisturbed).wait(), 0);
        return snapshot_of(other + "/archivi");
    }
    /// The run after a stopped one calculates who is left, and everybody has his wages once.
    void expect_the_rest_can_be_calculated() const {
        EXPECT_EQ(run().status, 0);
        const auto wanted = calculated();
        for (const int file : {kEmployees, kTwelveMonths}) {
            const std::string name = std::filesystem::path(path(file)).filename().string();
            EXPECT_EQ(snapshot().at(name), wanted.at(name)) << name;
        }
    }
    void expect_nobody_calculated() const {
        for (std::size_t record = 1; record <= selected + 1; ++record) {
            const auto month = [&](const std::string& employees) {
                const std::size_t length = employees.size() / (selected + 1);
                return MXREPOSITORY::LEGGICAMPO(MXREPOSITORY::Q171, 0,
                                                employees.substr((record - 1) * length, length));
            };
            const std::string name = std::filesystem::path(path(kEmployees)).filename().string();
            EXPECT_EQ(month(bytes(path(kEmployees))), month(fresh.at(name))) << record;
        }
    }

    std::size_t selected = 0;
    std::map<std::string, std::string> fresh;
    OutputFile output{directory.file("uscita.txt")};
    OutputFile errors{directory.file("errori.txt")};
};

// ---- Requests to stop ----

TEST_F(StopRequests, InTheFirstWalkNobodyIsCalculatedAndTheRunEndsInOrder) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto held = hold_semaphore();
        ChildProcess waiting(start());
        ASSERT_TRUE(wait_until([this] { return run_has_the_archive(); }));
        waiting.signal(signal);
        EXPECT_EQ(waiting.wait(), 1) << "signal " << signal;
        EXPECT_TRUE(output.holds(std::string(texts::kInterrupted.utf8))) << output.content();
        EXPECT_TRUE(output.holds(not_calculated(selected))) << output.content();
        EXPECT_FALSE(std::filesystem::exists(archive() + "/VELMOR.LCK"));
        expect_nobody_calculated();
    }
    expect_the_rest_can_be_calculated();
}

TEST_F(StopRequests, InTheSecondWalkTheEmployeeUnderCalculationIsFinished) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        restore();
        Pipe pipe;
        pipe.leave_room_for(100);  // one line of the list, and no second one
        ChildProcess::Start narrow = start();
        narrow.output = pipe.writer.get();
        ChildProcess stopped(narrow);
        pipe.writer.close();
        ASSERT_TRUE(wait_until([&] { return pipe.room() < 100; }));
        stopped.signal(signal);
        const std::string shown = pipe.reader.rest();
        EXPECT_EQ(stopped.wait(), 1) << "signal " << signal;
        // The request comes before the second employee begins, or while he is in hand.
        const std::size_t done = count(shown, kDone);
        EXPECT_GE(done, 1U) << shown;
        EXPECT_LE(done, 2U) << shown;
        EXPECT_NE(shown.find(texts::kInterrupted.utf8), std::string::npos) << shown;
        EXPECT_NE(shown.find(not_calculated(selected - done)), std::string::npos) << shown;
        expect_the_rest_can_be_calculated();
    }
}

TEST_F(StopRequests, ASecondInterruptionEndsTheRunAtOnce) {
    Pipe pipe;
    pipe.leave_room_for(100);
    ChildProcess::Start narrow = start();
    narrow.output = pipe.writer.get();
    ChildProcess stuck(narrow);
    ASSERT_TRUE(wait_until([&] { return pipe.room() < 100; }));
    // Nobody reads the pipe: only the second signal can end the run. Two that come together are
    // one.
    EXPECT_TRUE(wait_until([&] {
        stuck.signal(SIGINT);
        return stuck.ended();
    }));
    EXPECT_EQ(stuck.wait(), 1);
    expect_the_rest_can_be_calculated();
}

TEST_F(StopRequests, AnIgnoredHangUpStaysIgnored) {
    auto held = hold_semaphore();
    ChildProcess waiting(start_by_shell("trap '' HUP; exec \"$0\""));
    ASSERT_TRUE(wait_until([this] { return run_has_the_archive(); }));
    waiting.signal(SIGHUP);
    held.reset();
    EXPECT_EQ(waiting.wait(), 0) << output.content() << errors.content();
    EXPECT_EQ(count(output.content(), kDone), selected);
}

// ---- A terminal ----

/// The near end of a terminal of its own.
class Terminal {
  public:
    Terminal() : near_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        if (::grantpt(near_.get()) != 0 || ::unlockpt(near_.get()) != 0) {
            throw std::runtime_error("no terminal");
        }
        const char* name = ::ptsname(near_.get());
        far_.emplace(::open(name, O_RDWR | O_NOCTTY));
    }
    [[nodiscard]] int far() const { return far_->get(); }
    void forget_far() { far_.reset(); }
    void close() { near_.close(); }
    void type(const std::string& text) const {
        ASSERT_EQ(::write(near_.get(), text.data(), text.size()),
                  static_cast<ssize_t>(text.size()));
    }
    /// What has been shown since the last call, as far as it has come; does not wait long.
    [[nodiscard]] std::string shown() const {
        std::string all;
        pollfd waiting{near_.get(), POLLIN, 0};
        std::string piece(4096, '\0');
        while (::poll(&waiting, 1, 0) > 0) {
            const ssize_t got = ::read(near_.get(), piece.data(), piece.size());
            if (got <= 0) {
                break;
            }
            all.append(piece, 0, static_cast<std::size_t>(got));
        }
        return all;
    }

  private:
    TestDescriptor near_;
    std::optional<TestDescriptor> far_;
};

TEST_F(StopRequests, AClosedTerminalEndsTheRunInOrder) {
    const auto held = hold_semaphore();
    Terminal terminal;
    ChildProcess::Start on_terminal = start();
    on_terminal.terminal = true;
    on_terminal.input = terminal.far();
    on_terminal.output = terminal.far();
    ChildProcess waiting(on_terminal);
    terminal.forget_far();
    ASSERT_TRUE(wait_until([this] { return run_has_the_archive(); }));
    terminal.close();
    EXPECT_EQ(waiting.wait(), 1);
    EXPECT_FALSE(std::filesystem::exists(archive() + "/VELMOR.LCK"));
    expect_nobody_calculated();
}

TEST_F(StopRequests, CtrlCAtAQuestionIsNoAnswer) {
    // In March the run asks about the municipal advance before anybody is calculated.
    installation().write_period("31032024", '4');
    fresh = snapshot();
    Terminal terminal;
    ChildProcess::Start asked = start();
    asked.terminal = true;
    asked.input = terminal.far();
    asked.output = terminal.far();
    for (auto& [name, value] : asked.environment) {
        value = name == "VELMOR_RISPOSTE" ? "" : value;
    }
    ChildProcess waiting(asked);
    std::string shown;
    ASSERT_TRUE(wait_until([&] {
        shown += terminal.shown();
        return shown.find(texts::kTerminalAsk.utf8) != std::string::npos;
    })) << shown;
    terminal.type("\x03");
    ASSERT_TRUE(wait_until([&] {
        shown += terminal.shown();
        return waiting.ended();
    })) << shown;
    EXPECT_EQ(waiting.wait(), 1);
    EXPECT_NE((shown + terminal.shown()).find(texts::kInterrupted.utf8), std::string::npos);
    expect_nobody_calculated();
}

// ---- A list that nobody reads ----

TEST_F(StopRequests, AReaderThatHasGoneCostsTheListAndNoWages) {
    Pipe pipe;
    ChildProcess::Start unread = start();
    unread.output = pipe.writer.get();
    pipe.reader.close();
    EXPECT_EQ(ChildProcess(unread).wait(), 1);
    EXPECT_TRUE(errors.holds(std::string(texts::kTerminalListNotWritten.utf8)));
    EXPECT_EQ(snapshot(), calculated());
}

TEST_F(StopRequests, AFullDeviceCostsTheListAndNoWages) {
    const TestDescriptor full(::open("/dev/full", O_WRONLY));
    ChildProcess::Start unread = start();
    unread.output = full.get();
    EXPECT_EQ(ChildProcess(unread).wait(), 1);
    EXPECT_TRUE(errors.holds(std::string(texts::kTerminalListNotWritten.utf8)));
    EXPECT_EQ(snapshot(), calculated());
}

/// 64 blocks of 512 bytes: the second record of the employee file ends beyond them.
TEST_F(StopRequests, AFileLimitIsAFailureWithItsMessage) {
    EXPECT_EQ(ChildProcess(start_by_shell("ulimit -f 64; exec \"$0\"")).wait(), 1);
    EXPECT_TRUE(output.holds("Errore 61 Disk full")) << output.content();
    EXPECT_TRUE(output.holds(not_calculated(selected))) << output.content();
    expect_nobody_calculated();
    expect_the_rest_can_be_calculated();
}

/// A limit that comes in the second walk: the slip that no longer fits its file is in the recovery
/// slot, and the next start writes it.
TEST_F(StopRequests, AFileLimitInTheSecondWalkLosesNoSlip) {
    Pipe pipe;
    pipe.leave_room_for(100);  // one line of the list, and no second one
    ChildProcess::Start narrow = start();
    narrow.output = pipe.writer.get();
    ChildProcess limited(narrow);
    pipe.writer.close();
    ASSERT_TRUE(wait_until([&] { return pipe.room() < 100; }));
    const auto record = static_cast<rlim_t>(installation().record_length(kEmployees));
    const rlimit two_records{2 * record, 2 * record};
    ASSERT_EQ(::prlimit(limited.id(), RLIMIT_FSIZE, &two_records, nullptr), 0);
    const std::string shown = pipe.reader.rest();
    EXPECT_EQ(limited.wait(), 1);
    EXPECT_NE(shown.find("Errore 61 Disk full"), std::string::npos) << shown;
    EXPECT_NE(shown.find("nzutil scheda " + archive() + " 2 3"), std::string::npos) << shown;
    EXPECT_EQ(count(shown, kDone), 2U) << shown;
    EXPECT_NE(shown.find(not_calculated(selected - 2)), std::string::npos) << shown;
    EXPECT_EQ(count(run().output, "001-000-0003 ROMANO GIULIA                           " +
                                      std::string(texts::kFinishedStep.utf8)),
              1U);
    expect_the_rest_can_be_calculated();
}

/// The list in a file with a limit: a line that the limit refuses costs no wages.
TEST_F(StopRequests, AFileLimitOnTheListCostsTheListAndNoWages) {
    constexpr std::size_t kLimit = 2048 * 512;
    const std::string list = directory.file("lista.txt");
    write(list, std::string(kLimit - 100, '\n'));
    const TestDescriptor nearly_full(::open(list.c_str(), O_WRONLY | O_APPEND));
    ChildProcess::Start unread = start_by_shell("ulimit -f 2048; exec \"$0\"");
    unread.output = nearly_full.get();
    EXPECT_EQ(ChildProcess(unread).wait(), 1);
    EXPECT_TRUE(errors.holds(std::string(texts::kTerminalListNotWritten.utf8)));
    EXPECT_EQ(count(bytes(list), kDone), 1U);
    EXPECT_EQ(snapshot(), calculated());
}

// ---- Closed standard streams ----

TEST_F(StopRequests, ClosedStandardStreamsAreNoFilesOfTheArchive) {
    ChildProcess::Start closed = start();
    closed.input = closed.output = closed.errors = ChildProcess::kClosed;
    EXPECT_EQ(ChildProcess(closed).wait(), 0);
    EXPECT_EQ(snapshot(), calculated());
}

TEST_F(StopRequests, ClosedStandardStreamsOfTheToolAreNoFilesOfTheArchive) {
    ChildProcess::Start closed = start();
    closed.command = {NZUTIL_PROGRAM, "leggi", archive(), "19", "1", "F403"};
    closed.input = closed.output = closed.errors = ChildProcess::kClosed;
    EXPECT_EQ(ChildProcess(closed).wait(), 0);
    EXPECT_EQ(snapshot(), fresh);
    closed.command = {NZUTIL_PROGRAM, "scrivi", archive(), "19", "1", "F403", "lettere"};
    EXPECT_EQ(ChildProcess(closed).wait(), 1);
    EXPECT_EQ(snapshot(), fresh);
    closed.command.back() = "801";
    EXPECT_EQ(ChildProcess(closed).wait(), 0);
    const auto changed = snapshot();
    const std::string name = std::filesystem::path(path(kFixedData)).filename().string();
    for (const auto& [file, content] : fresh) {
        EXPECT_EQ(changed.at(file) == content, file != name) << file;
    }
}

// ---- Nobody there to answer ----

class UnattendedAnswers : public StopRequests {
  protected:
    /// A run that fills a control list, beside a printer that never works.
    void SetUp() override {
        StopRequests::SetUp();
        write(directory.file("lista.yaml"), R"(titolo: Un collaboratore oltre il suo massimale
periodo: {data: "30042024", tipo: "4"}
fissi: {F421: 500}
voci:
  97: {Z002: "COMPENSO", Z011: 0, Z013: 1, Z014: 1, formula: [".IM", "=P500"]}
dipendente:
  campi: {P001: "0010000001", P002: "ROSSI", P003: "MARIA", P906: 0, P058: 0, P090: 12, P181: 0,
          P447: 1, P449: 30, Q523: 1000, Q171: 3}
  righe: [{voce: 97, quantita: 1, valore: 2000}]
)");
        nzutil::install_scenario(nzutil::read_scenario(directory.file("lista.yaml")),
                                 directory.file("lista"))
            .close();
    }
    ChildProcess::Start answering(const std::string& answers) {
        ChildProcess::Start with_answers = start();
        with_answers.environment = {{"SOLMAREL_REGISTRO", directory.file("lista/registro.ini")},
                                    {"VELMOR_INTERFACCIA", "console"},
                                    {"VELMOR_STAMPE", "/dev/null/stampe"},
                                    {"VELMOR_RISPOSTE", answers}};
        return with_answers;
    }
    void expect_three_trials() {
        const std::string shown = output.content();
        EXPECT_EQ(count(shown, texts::kPrinterRetry.utf8), 4U) << shown;
        EXPECT_EQ(count(shown, texts::kPrinterClose.utf8), 1U) << shown;
        EXPECT_EQ(count(shown, kDone), 1U) << shown;
    }
};

/// Three trials again, then no; the program is closed, as the next answer says.
TEST_F(UnattendedAnswers, OneYesForAllTriesThePrinterThreeTimes) {
    EXPECT_EQ(ChildProcess(answering("si")).wait(), 1);
    expect_three_trials();
}

TEST_F(UnattendedAnswers, AFileOfYesTriesThePrinterThreeTimes) {
    std::string yes;
    for (int i = 0; i < 50; ++i) {
        yes += "si\n";
    }
    write(directory.file("risposte.txt"), yes);
    EXPECT_EQ(ChildProcess(answering(directory.file("risposte.txt"))).wait(), 1);
    expect_three_trials();
}

TEST_F(UnattendedAnswers, AMissingFileOfAnswersIsToldBeforeAnythingIsWritten) {
    const auto before = snapshot_of(directory.file("lista/archivi"));
    EXPECT_EQ(ChildProcess(answering(directory.file("mancano.txt"))).wait(), 1);
    EXPECT_TRUE(output.holds("Errore 53 File not found")) << output.content();
    EXPECT_TRUE(output.holds(directory.file("mancano.txt"))) << output.content();
    EXPECT_EQ(snapshot_of(directory.file("lista/archivi")), before);
}

// ---- A held semaphore ----

TEST_F(StopRequests, AHeldSemaphoreIsToldAndCostsNoProcessorTime) {
    auto held = hold_semaphore();
    ChildProcess waiting(start());
    ASSERT_TRUE(wait_until([this] { return errors.holds("NZSEMA.DAT"); }));
    EXPECT_TRUE(errors.holds(std::string(texts::kWaitingForSemaphore.utf8))) << errors.content();
    std::this_thread::sleep_for(std::chrono::seconds(2));
    held.reset();
    EXPECT_EQ(waiting.wait(), 0);
    // Four seconds of waiting; the run itself takes far less than one.
    EXPECT_LT(waiting.processor_seconds(), 2.0);
    EXPECT_EQ(count(errors.content(), texts::kWaitingForSemaphore.utf8), 1U);
    EXPECT_EQ(count(output.content(), kDone), selected);
}

}  // namespace
