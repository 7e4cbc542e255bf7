// The runner says what differs: a scenario that cannot fail would prove nothing.

#include <gtest/gtest.h>

#include <algorithm>

#include "nzutil/process.h"
#include "nzutil/scenario.h"
#include "tests/support/temp_directory.h"

namespace {

using nzutil::Difference;

class ScenarioRunTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::vector<Difference> run(const std::string& text) const {
        const std::string head = "titolo: prova\nperiodo: {data: \"31052024\", tipo: \"4\"}\n";
        return nzutil::run_scenario(
            nzutil::read_scenario(nzutil::Document("prova.yaml", head + text)),
            {VELMOR_PROGRAM, ""}, directory.path());
    }
    /// The only difference is at this place.
    static void expect_only(const std::vector<Difference>& found, const std::string& place,
                            const std::string& expected, const std::string& came) {
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].place, place);
        EXPECT_EQ(found[0].expected, expected);
        EXPECT_EQ(found[0].found, came);
    }

    test_support::TempDirectory directory;
};

TEST_F(ScenarioRunTest, NothingDiffersWhenAllIsAsExpected) {
    // 26 days of 1908.75 a month; to the unit of euro.
    EXPECT_TRUE(run("attesi: {P240: 1909, P002: ROSSI}\n").empty());
}

TEST_F(ScenarioRunTest, FieldIsNamedWithBothValues) {
    expect_only(run("attesi: {P240: 1910}\n"), "P240", "1910.00", "1909.00");
    std::filesystem::remove_all(directory.file("installazione"));
    expect_only(run("attesi: {P002: VERDI}\n"), "P002", "VERDI", "ROSSI");
}

TEST_F(ScenarioRunTest, NumbersCompareWithTheDecimalsOfTheField) {
    EXPECT_TRUE(run("attesi: {P240: 1909.001}\n").empty());
}

TEST_F(ScenarioRunTest, LineOfTheSlipIsNamed) {
    const std::vector<Difference> found =
        run("attesi_righe: {1: {quantita: 25, valore: 73.41346}}\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NE(found[0].place.find("quantita"), std::string::npos);
}

TEST_F(ScenarioRunTest, ListLinesAreComparedOneByOneAndInNumber) {
    EXPECT_EQ(run("attesi_lista: []\n").size(), 1U);
    std::filesystem::remove_all(directory.file("installazione"));
    EXPECT_EQ(run("attesi_lista: [\"001-000-0001 ROSSI MARIA                             "
                  ":elaborato\", \"altro\"]\n")
                  .size(),
              1U);
}

TEST_F(ScenarioRunTest, BoxThatNobodyAnnouncedDiffers) {
    const std::string deleted = "dipendente: {campi: {P331: 50, P332: 1}}\n";
    EXPECT_EQ(run(deleted).size(), 1U);
    std::filesystem::remove_all(directory.file("installazione"));
    EXPECT_TRUE(run(deleted + "attesi_riquadri: [\"CODICE CONTRATTO NON TROVATO\"]\n").empty());
}

TEST_F(ScenarioRunTest, AnnouncedBoxThatDoesNotComeDiffers) {
    EXPECT_EQ(run("attesi_riquadri: [\"CODICE CONTRATTO NON TROVATO\"]\n").size(), 1U);
}

TEST_F(ScenarioRunTest, ExitStatusIsCompared) {
    const std::vector<Difference> found = run("uscita: 1\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].expected, "1");
    EXPECT_EQ(found[0].found, "0");
}

TEST_F(ScenarioRunTest, LaterRunFindsWhatTheFormerLeft) {
    EXPECT_TRUE(run("attesi: {Q171: 5}\n"
                    "corse:\n"
                    "  - periodo: {data: \"30062024\", tipo: \"4\"}\n"
                    "    attesi: {Q171: 6, Q001: 3818}\n")  // 1909 + 1909
                    .empty());
}

TEST_F(ScenarioRunTest, ArchivesThatCannotBeComparedAreADifference) {
    EXPECT_EQ(run("archivi: [NZRETMEN]\n").size(), 1U);
    EXPECT_EQ(run("attesi_archivio: {DIP_12: 1833}\n").size(), 1U);
}

TEST_F(ScenarioRunTest, ProcessThatDoesNotEndIsStopped) {
    nzutil::ProcessCall call;
    call.program = "/bin/sleep";
    call.arguments = {"60"};
    call.directory = directory.path();
    call.seconds = 1;
    const nzutil::ProcessResult result = nzutil::run_process(call);
    EXPECT_TRUE(result.too_long);
    EXPECT_NE(result.status, 0);
}

TEST_F(ScenarioRunTest, ProcessThatCannotStartIsSaid) {
    nzutil::ProcessCall call;
    call.program = directory.file("nessuno");
    call.directory = directory.path();
    EXPECT_THROW(static_cast<void>(nzutil::run_process(call)), nzutil::ToolError);
}

}  // namespace
