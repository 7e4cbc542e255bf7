#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/failure.h"
#include "platform/terminal_texts.h"
#include "platform/window.h"
#include "tests/support/temp_directory.h"

namespace platform {
namespace {

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

/// Does `work` raise a failure?
template <typename Work>
bool throws_failure(Work work) {
    try {
        work();
    } catch (const Failure&) {
        return true;
    }
    return false;
}

/// A terminal window without an operator: standard input is empty.
class Terminal : public ::testing::Test {
  protected:
    void SetUp() override {
        saved_input_ = ::dup(STDIN_FILENO);
        const int nothing = ::open("/dev/null", O_RDONLY);
        ::dup2(nothing, STDIN_FILENO);
        ::close(nothing);
        ::unsetenv("VELMOR_RISPOSTE");
        CaptureStdout();
        CaptureStderr();
        window_ = make_terminal_window();
    }
    void TearDown() override {
        if (!taken_) {
            static_cast<void>(shown());
        }
        ::dup2(saved_input_, STDIN_FILENO);
        ::close(saved_input_);
        ::unsetenv("VELMOR_RISPOSTE");
    }
    std::string shown() {
        taken_ = true;
        errors_ = GetCapturedStderr();
        return GetCapturedStdout();
    }
    std::string errors_;
    std::unique_ptr<Window> window_;

  private:
    int saved_input_ = -1;
    bool taken_ = false;
};

TEST_F(Terminal, AListLineIsALineOfOutputInUtf8) {
    window_->add_line("001-000-0001 ROSSI MARIA:gi\xE0 elaborato");
    window_->add_line("a\r\nb");
    EXPECT_EQ(window_->line_count(), 2U);
    EXPECT_EQ(shown(), "001-000-0001 ROSSI MARIA:già elaborato\na b\n");
    EXPECT_EQ(errors_, "");
}

TEST_F(Terminal, ClearingTheListStartsTheCountAnew) {
    window_->add_line("a");
    window_->clear_list();
    EXPECT_EQ(window_->line_count(), 0U);
}

TEST_F(Terminal, ABoxShowsTitleAndTextWithItsLines) {
    window_->box("Solmarel", "prima\rseconda\r\nterza\r\rquinta", Icon::critical);
    EXPECT_EQ(shown(), "[Solmarel] prima\nseconda\nterza\n\nquinta\n");
}

TEST_F(Terminal, AQuestionWithNobodyToAskIsNo) {
    EXPECT_FALSE(window_->ask("Solmarel", "Si vuole ?", Icon::question));
    EXPECT_EQ(shown(), "[Solmarel] Si vuole ?\nRisposta: no\n");
}

TEST_F(Terminal, OneAnswerForAllQuestions) {
    ::setenv("VELMOR_RISPOSTE", "si", 1);
    EXPECT_TRUE(window_->ask("T", "a", Icon::question));
    EXPECT_TRUE(window_->ask("T", "b", Icon::question));
    EXPECT_EQ(shown(), "[T] a\nRisposta: si\n[T] b\nRisposta: si\n");
}

TEST_F(Terminal, AFileOfAnswersGoesOnWithNo) {
    const test_support::TempDirectory directory;
    directory.write("r.txt", "si\r\n\nno\nS\xC3\xAC\nforse\n");
    ::setenv("VELMOR_RISPOSTE", directory.file("r.txt").c_str(), 1);
    std::vector<bool> answers;
    answers.reserve(6);
    for (int i = 0; i < 6; ++i) {
        answers.push_back(window_->ask("T", "?", Icon::question));
    }
    EXPECT_EQ(answers, (std::vector<bool>{true, false, true, false, false, false}));
}

TEST_F(Terminal, AFileOfAnswersThatIsMissingIsAFailure) {
    ::setenv("VELMOR_RISPOSTE", "/non/esiste.txt", 1);
    EXPECT_THROW(static_cast<void>(window_->ask("T", "?", Icon::question)), Failure);
}

TEST_F(Terminal, AFileOfAnswersIsLookedForAtTheStart) {
    const test_support::TempDirectory directory;
    check_answers();
    for (const char* given : {"si", "NO", "", "/non/esiste.txt"}) {
        ::setenv("VELMOR_RISPOSTE", given, 1);
        EXPECT_EQ(given[0] == '/', throws_failure([] { check_answers(); })) << given;
    }
    directory.write("r.txt", "");
    ::setenv("VELMOR_RISPOSTE", directory.file("r.txt").c_str(), 1);
    check_answers();
}

TEST_F(Terminal, TheSameTrialTakesThreeYesThatStandReady) {
    ::setenv("VELMOR_RISPOSTE", "si", 1);
    for (int times_before = 0; times_before < 5; ++times_before) {
        EXPECT_EQ(window_->ask_again("T", "?", Icon::critical, times_before), times_before < 3);
    }
    EXPECT_TRUE(window_->ask("T", "un'altra", Icon::question));
}

TEST_F(Terminal, ARemarkIsNoLineOfTheOutput) {
    window_->remark("si aspetta: perch\xE9");
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(errors_, "si aspetta: perché\n");
    EXPECT_FALSE(window_->output_failed());
}

TEST_F(Terminal, ControlCharactersOfNamesAreNotObeyed) {
    window_->add_line("ROSSI\x1B]0;x\x07 MARIA");
    window_->box("T\x1B", "a\x1B[2J\r\nb\x9D", Icon::none);
    window_->remark("c\x1B");
    EXPECT_EQ(shown(), "ROSSI?]0;x? MARIA\n[T?] a?[2J\nb?\n");
    EXPECT_EQ(errors_, "c?\n");
}

TEST_F(Terminal, ProgressNamesItsWalkAndRunsOnceTo100) {
    window_->begin_walk("Preparazione", 0, 20);
    window_->progress(1, 2);
    window_->progress(2, 2);
    window_->begin_walk("Calcolo", 20, 100);
    window_->progress(1, 2);
    window_->progress(2, 2);
    static_cast<void>(shown());
    EXPECT_EQ(errors_,
              "Preparazione 1/2 (10%)\nPreparazione 2/2 (20%)\nCalcolo 1/2 (60%)\n"
              "Calcolo 2/2 (100%)\n");
}

TEST_F(Terminal, ProgressNamesTheEntriesOfTheSelection) {
    window_->progress(3, 12);
    window_->progress(12, 12);
    window_->progress(0, 0);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(errors_,
              "Avanzamento 3/12 (25%)\nAvanzamento 12/12 (100%)\nAvanzamento 0/0 (100%)\n");
}

TEST_F(Terminal, ProgressOfALongSelectionIsALineEachPercent) {
    for (std::size_t done = 1; done <= 1000; ++done) {
        window_->progress(done, 1000);
    }
    static_cast<void>(shown());
    EXPECT_EQ(std::count(errors_.begin(), errors_.end(), '\n'), 100);  // 1% to 100%
}

TEST_F(Terminal, NothingWaitsWithoutATerminal) {
    window_->show_modal();
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(errors_, "");
}

TEST_F(Terminal, LabelsKeepTheirText) {
    window_->set_text(Control::Label3, 4, "MM normale");
    EXPECT_EQ(window_->text(Control::Label3, 4), "MM normale");
    EXPECT_EQ(window_->text(Control::Label3, 1), "");
}

TEST_F(Terminal, TheWindowThatIsAskedForAndCannotBeIsNamed) {
    ::setenv("VELMOR_INTERFACCIA", "finestra", 1);
    make_window_from_environment()->add_line("x");
    ::setenv("VELMOR_INTERFACCIA", "console", 1);
    make_window_from_environment()->add_line("y");
    ::unsetenv("VELMOR_INTERFACCIA");
    EXPECT_EQ(shown(), "x\ny\n");
    EXPECT_EQ(errors_, std::string(terminal_texts::kNoGraphicWindow) + "\n");
}

}  // namespace
}  // namespace platform
