#include "context/messages.h"

#include <gtest/gtest.h>

#include "context/environment.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using platform::Control;
using test_support::ScriptedWindow;

class Messages : public ::testing::Test {
  protected:
    void SetUp() override {
        test_support::fill_areas();
        scrivi(T001, 1);
        scrivi(T002, "ROSSI SRL");
        scrivi(T003, "MILANO");
        scrivi(P001, "0010020003");
        scrivi(P002, "DE ROSSI");
        scrivi(P003, "MARIA");
    }
    void TearDown() override {
        clear_areas();
        window.verify();
    }
    ScriptedWindow& window = ScriptedWindow::install();
};

TEST_F(Messages, ShowCompanyAndEmployeeAndAddALine) {
    MSG("prima riga");
    MSG("seconda riga");
    EXPECT_EQ(window.text(Control::Label3, 2), "001-ROSSI SRL MILANO");
    EXPECT_EQ(window.text(Control::Label3, 6), "001-002-0003 - DE ROSSI MARIA");
    EXPECT_EQ(window.lines, (std::vector<std::string>{"prima riga", "seconda riga"}));
}

TEST_F(Messages, ListLineFillsTheNameToForty) {
    // "DE ROSSI MARIA" has 14 characters, so 26 blanks follow.
    EXPECT_EQ(list_line(":elaborato"),
              "001-002-0003 DE ROSSI MARIA" + std::string(26, ' ') + ":elaborato");
}

TEST_F(Messages, ListLineCutsALongNameAtForty) {
    scrivi(P002, std::string(30, 'A'));
    scrivi(P003, std::string(30, 'B'));
    EXPECT_EQ(list_line(":x"),
              "001-002-0003 " + std::string(30, 'A') + " " + std::string(9, 'B') + ":x");
}

TEST_F(Messages, StatusByKindOfWorker) {
    EXPECT_EQ(calculated_status(0, false), ":elaborato");
    EXPECT_EQ(calculated_status(0, true), ":elaborato e aggiornato archivio retrib. mese INPS");
    EXPECT_EQ(calculated_status(9, false), ":elaborato");
    EXPECT_EQ(calculated_status(1, true),
              ":LAV.INTERINALE  elaborato solo per 'Libro Unico del Lavoro'");
    // Without the archive the agency worker's text has no colon.
    EXPECT_EQ(calculated_status(1, false),
              "LAV.INTERINALE  elaborato solo per 'Libro Unico del Lavoro'");
    EXPECT_EQ(calculated_status(2, false), calculated_status(2, true));
    EXPECT_EQ(calculated_status(3, false),
              ":ALTRE TIPOLOGIE elaborato solo per 'Libro Unico del Lavoro'");
}

TEST_F(Messages, AlreadyCalculatedInCodePage1252) {
    EXPECT_EQ(already_calculated_status(0), ":gi\xE0 elaborato");
    EXPECT_EQ(already_calculated_status(1),
              ":LAV.INTERINALE  gi\xE0 elaborato solo per 'Libro Unico del Lavoro'");
    EXPECT_EQ(already_calculated_status(2),
              ":AS.IN PART.A.M. gi\xE0 elaborato solo per 'Libro Unico del Lavoro'");
    EXPECT_EQ(already_calculated_status(3),
              ":ALTRE TIPOLOGIE gi\xE0 elaborato solo per 'Libro Unico del Lavoro'");
}

TEST_F(Messages, MonthlyArchiveIsLookedForInTheArchiveDirectory) {
    const test_support::TempDirectory directory;
    environment.archive_directory = directory.path();
    EXPECT_FALSE(monthly_archive_exists());
    directory.write("NZRETMEN.MDB", "x");
    EXPECT_TRUE(monthly_archive_exists());
    environment = {};
}

TEST_F(Messages, PlainBoxShowsTextAndWhatFollows) {
    window.expect_box("MANCA DITTA 7");
    plain_box(texts::kMissingCompany, "7");
    EXPECT_EQ(window.boxes[0].icon, platform::Icon::none);
}

}  // namespace
