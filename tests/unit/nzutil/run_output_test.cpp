#include "nzutil/run_output.h"

#include <gtest/gtest.h>

#include "texts/texts.h"

namespace {

using nzutil::read_run_output;

const std::string kClosing =
    "[Solmarel] " + std::string(texts::kFinished.utf8) + "\n\nPeriodo di elaborazione 31/05/2024\n";

TEST(RunOutput, LinesOfTheListStandBesideBoxes) {
    const nzutil::RunOutput output = read_run_output(
        "001-000-0001 A:elaborato\n[VELMOR] MANCA DITTA  3\n001-000-0002 B:elaborato\n" + kClosing);
    EXPECT_EQ(output.list,
              (std::vector<std::string>{"001-000-0001 A:elaborato", "001-000-0002 B:elaborato"}));
    ASSERT_EQ(output.boxes.size(), 2U);
    EXPECT_EQ(output.boxes[0].title, "VELMOR");
    EXPECT_EQ(output.boxes[0].text, "MANCA DITTA  3");
    EXPECT_FALSE(output.boxes[0].answer.has_value());
}

TEST(RunOutput, ClosingMessageTakesItsFurtherLines) {
    const nzutil::RunOutput output = read_run_output(kClosing);
    EXPECT_TRUE(output.list.empty());
    ASSERT_EQ(output.boxes.size(), 1U);
    EXPECT_TRUE(nzutil::is_closing_message(output.boxes[0]));
    EXPECT_NE(output.boxes[0].text.find("31/05/2024"), std::string::npos);
}

TEST(RunOutput, QuestionGoesOnToItsAnswer) {
    const nzutil::RunOutput output =
        read_run_output("[Titolo] Prima riga\nseconda riga\nRisposta: si\nriga della lista\n");
    ASSERT_EQ(output.boxes.size(), 1U);
    EXPECT_EQ(output.boxes[0].text, "Prima riga\nseconda riga");
    EXPECT_EQ(output.boxes[0].answer, true);
    EXPECT_EQ(output.list, std::vector<std::string>{"riga della lista"});
}

TEST(RunOutput, PlainBoxBeforeAQuestionKeepsToItsLine) {
    const nzutil::RunOutput output =
        read_run_output("[VELMOR] avviso\nriga\n[Titolo] domanda\nRisposta: no\n");
    ASSERT_EQ(output.boxes.size(), 2U);
    EXPECT_EQ(output.boxes[0].text, "avviso");
    EXPECT_EQ(output.boxes[1].answer, false);
    EXPECT_EQ(output.list, std::vector<std::string>{"riga"});
}

}  // namespace
