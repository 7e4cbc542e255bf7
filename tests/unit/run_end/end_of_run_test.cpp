#include "run_end/end_of_run.h"

#include <gtest/gtest.h>

#include "context/environment.h"
#include "context/failure_handler.h"
#include "context/run_course.h"
#include "platform/failure.h"
#include "platform/printer.h"
#include "platform/stop_request.h"
#include "slip/slip.h"
#include "tests/support/scripted_window.h"
#include "tests/support/temp_directory.h"
#include "texts/texts.h"

namespace {

using platform::Control;
using platform::EndOfProgram;
using test_support::ScriptedWindow;
using test_support::TempDirectory;

/// Keeps documents and lines; refuses the lines that hold `refused`.
class KeepingPrinter : public platform::Printer {
  public:
    std::vector<std::string> events;
    std::string refused;

    void begin(const std::string& font, int size) override {
        events.push_back("begin " + font + " " + std::to_string(size));
    }
    void line(const std::string& text) override {
        if (!refused.empty() && text.find(refused) != std::string::npos) {
            throw platform::Failure(platform::kPrinter);
        }
        events.push_back(text);
    }
    void end() override { events.push_back("end"); }
    [[nodiscard]] std::string place() const override { return printed_in; }
    std::string printed_in;
};

class EndOfRun : public ::testing::Test {
  protected:
    void SetUp() override {
        MXLIBRERIA::environment = {};
        MXLIBRERIA::environment.archive_directory = directory.path();
        ModSWCALM::run_tables = {};
        platform::set_printer(&printer);
        MXLIBRERIA::set_close_all_files([this] { ++closings; });
        window.set_text(Control::Label3, 4, "MM normale");
        window.set_text(Control::Label3, 1, "31/05/2024");
        window.add_line("una riga");
    }
    void TearDown() override {
        window.verify();
        platform::set_printer(nullptr);
        MXLIBRERIA::set_close_all_files({});
        MXLIBRERIA::run_course = {};
        platform::set_stop_requested(false);
        MXLIBRERIA::environment = {};
        ModSWCALM::run_tables = {};
    }
    int end() {
        try {
            ModSWCALM::FINEPROG();
        } catch (const EndOfProgram& ended) {
            return ended.status;
        }
    }
    void expect_final_box() { window.expect_box("Calcolo cedolino terminato"); }

    ScriptedWindow& window = ScriptedWindow::install();
    TempDirectory directory;
    KeepingPrinter printer;
    int closings = 0;
};

TEST_F(EndOfRun, WithoutALineTheProgramEndsSilently) {
    window.clear_list();
    EXPECT_EQ(end(), 0);
    EXPECT_TRUE(window.boxes.empty());
    EXPECT_EQ(window.modal_shows, 0);
    EXPECT_EQ(closings, 1);
}

TEST_F(EndOfRun, FinalMessageNamesThePeriodAndTheWindowStays) {
    expect_final_box();
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(window.boxes[0].text,
              "Calcolo cedolino terminato\r\rPeriodo di elaborazione MM normale 31/05/2024");
    EXPECT_EQ(window.modal_shows, 1);
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE((window.visible[{Control::Label4, 0}]));
    EXPECT_FALSE((window.visible[{Control::Label2, 0}]));
}

/// Five entries: the second walk has finished two; of the other three one had its month before.
TEST_F(EndOfRun, FinalMessageCountsTheSlipsThatAreOwed) {
    MXLIBRERIA::run_course.calculated_before = {true, false, false, true, false};
    MXLIBRERIA::run_course.finished = 2;
    expect_final_box();
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(window.boxes[0].text,
              "Calcolo cedolino terminato\r\rPeriodo di elaborazione MM normale 31/05/2024\r\r"
              "Dipendenti non elaborati: 2");
}

TEST_F(EndOfRun, ARequestToStopIsToldWhereNobodyHasALineToo) {
    window.clear_list();
    MXLIBRERIA::run_course.calculated_before = {false, false};
    platform::set_stop_requested(true);
    expect_final_box();
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(window.boxes[0].text,
              "Calcolo cedolino terminato\r\rPeriodo di elaborazione MM normale 31/05/2024\r\r"
              "Elaborazione interrotta su richiesta.\r\rDipendenti non elaborati: 2");
}

TEST_F(EndOfRun, FinalMessageWithTheMonthlyArchive) {
    directory.write("NZRETMEN.MDB", "");
    window.expect_box(
        "Calcolo cedolino e aggiornamento archivio dati retribuzione mese per INPS "
        "terminato\r\rPeriodo di elaborazione MM normale 31/05/2024");
    EXPECT_EQ(end(), 0);
}

TEST_F(EndOfRun, ListsAreOfferedInOrderAndPrintedToTheFirstEmptyLine) {
    ModSWCALM::run_tables.bonus_list = {"bonus 1", "bonus 2"};
    ModSWCALM::run_tables.list_999[1] = "somma 1";
    ModSWCALM::run_tables.list_999[2] = "somma 2";
    ModSWCALM::run_tables.list_999[4] = "dopo il vuoto";
    ModSWCALM::run_tables.list_9999[1] = "cococo 1";
    ModSWCALM::run_tables.list_1000[0] = "indice zero";
    ModSWCALM::run_tables.list_1000[1] = "comune 1";
    expect_final_box();
    window.expect_question("BONUS DL3/2020", true);
    window.expect_question("SOMMA INTEGRATIVA", true);
    window.expect_question("co.co.co.", true);
    window.expect_question("add.comunale", true);
    EXPECT_EQ(end(), 0);
    const std::vector<std::string> expected{
        "begin Courier New 9",
        "LISTA DIPENDENTE CON RESTITUZIONE BONUS DL3/2020 E ULTERIORE DETRAZIONE DL3/2020",
        "bonus 1",
        "bonus 2",
        "end",
        "begin Courier New 9",
        "LISTA DIPENDENTE CON RESTITUZIONE SOMMA INTEGRATIVA",
        "somma 1",
        "somma 2",
        "end",
        "begin Courier New 9",
        "LISTA CO.CO.CO. che hanno superato il massimale specificato nel campo F421 dei dati fissi",
        "cococo 1",
        "FINE LISTA CONTROLLO CO.CO.CO.",
        "end",
        "begin Courier New 9",
        "INIZIO LISTA CONTROLLO CALCOLI ADDIZIONALE COMUNALE",
        "comune 1",
        "FINE LISTA CONTROLLO CALCOLI ADDIZIONALE COMUNALE",
        "** = LA % IN TABELLA E' INDICATA CON '0*', IN QUESTO CASO VIENE UTILIZZATA LA % DEL CAMPO "
        "Q319",
        "end"};
    EXPECT_EQ(printer.events, expected);
    ASSERT_EQ(window.boxes.size(), 5U);
    for (std::size_t i = 1; i < window.boxes.size(); ++i) {
        EXPECT_EQ(window.boxes[i].icon, platform::Icon::question);
        EXPECT_EQ(window.boxes[i].title, "MM normale 31/05/2024");
    }
}

TEST_F(EndOfRun, APrintedListIsSaidToStandWhereItWent) {
    ModSWCALM::run_tables.bonus_list = {"bonus 1"};
    printer.printed_in = "/stampe/perché.pdf";
    expect_final_box();
    window.expect_question("BONUS DL3/2020", true);
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(window.remarks, std::vector<std::string>{"Lista stampata in /stampe/perch\xE9.pdf."});
}

TEST_F(EndOfRun, NoToEveryListPrintsNothingAndTheWindowStays) {
    ModSWCALM::run_tables.bonus_list = {"bonus 1"};
    ModSWCALM::run_tables.list_1000[1] = "comune 1";
    expect_final_box();
    window.expect_question("BONUS DL3/2020", false);
    window.expect_question("add.comunale", false);
    EXPECT_EQ(end(), 0);
    EXPECT_TRUE(printer.events.empty());
    EXPECT_EQ(window.modal_shows, 1);
}

TEST_F(EndOfRun, FullTableIsPrintedToItsLastLine) {
    std::fill(ModSWCALM::run_tables.list_999.begin() + 1, ModSWCALM::run_tables.list_999.end(),
              "x");
    expect_final_box();
    window.expect_question("SOMMA INTEGRATIVA", true);
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(printer.events.size(), 999U + 3U);  // begin, header, 999 lines, end
}

TEST_F(EndOfRun, LineThatThePrinterLosesLeavesTheRestOfTheList) {
    ModSWCALM::run_tables.bonus_list = {"prima", "persa", "ultima"};
    printer.refused = "persa";
    expect_final_box();
    window.expect_question("BONUS DL3/2020", true);
    window.expect_question(std::string(texts::kPrinterRetry.utf8), false);
    window.expect_question(std::string(texts::kPrinterClose.utf8), false);
    EXPECT_EQ(end(), 0);
    ASSERT_EQ(printer.events.size(), 5U);
    EXPECT_EQ(printer.events[2], "prima");
    EXPECT_EQ(printer.events[3], "ultima");
}

// ---- Treasury fund ----

class TreasuryList : public EndOfRun {
  protected:
    void SetUp() override {
        EndOfRun::SetUp();
        MXLIBRERIA::environment.installation_tax_code = "90000000112";
        // The first benefit exceeds the contributions, so the treasury pays all of it.
        ModSWCALM::run_tables.treasury_rows = {
            {"1 DITTA UNO", "001-001-0001 ROSSI", 1000, 5000.5, 30},
            {"1 DITTA UNO", "001-001-0002 BIANCHI", 2000, 1500, 40},
            {"2 DITTA DUE", "002-001-0001 VERDI", 0.5, 0.5, 0}};
    }
    static std::string row(const std::string& name, const std::string& a, const std::string& b,
                           const std::string& c, const std::string& d) {
        std::string line = name + std::string(40 - name.size(), ' ');
        for (const std::string& column : {a, b, c, d}) {
            line += std::string(16 - column.size(), ' ') + column;
        }
        return line;
    }
};

TEST_F(TreasuryList, TableTotalsAndTheNoteToFillTheField) {
    expect_final_box();
    window.expect_question("verifica capienza fondo tesoreria", true);
    EXPECT_EQ(end(), 0);
    ASSERT_EQ(printer.events.size(), 1U + 1U + 5U + 10U + 1U);
    EXPECT_EQ(printer.events[1], row("", "CTR DM + CF01", "R.PREST.F.TES.", "CF01", "CAMPO Q896"));
    EXPECT_EQ(printer.events[2],
              row("001-001-0001 ROSSI", "1000.00", "5000.50", "30.00", "5000.50"));
    EXPECT_EQ(printer.events[3],
              row("001-001-0002 BIANCHI", "2000.00", "1500.00", "40.00", "0.00"));
    // 1000 + 2000, 5000.50 + 1500, 30 + 40, 5000.50 + 0
    EXPECT_EQ(printer.events[4],
              row("Totale ditta 1 DITTA UNO", "3000.00", "6500.50", "70.00", "5000.50"));
    EXPECT_EQ(printer.events[5], row("002-001-0001 VERDI", "0.50", "0.50", "0.00", "0.00"));
    EXPECT_EQ(printer.events[6], row("Totale ditta 2 DITTA DUE", "0.50", "0.50", "0.00", "0.00"));
    EXPECT_EQ(printer.events[7],
              "N.B. IL VALORE INDICATO NELLA COLONNA 'CAMPO Q896 E' DATO DALLA COLONNA ");
    EXPECT_EQ(printer.events[16], "     VOCE *** REC.PREST.TFR F.T.C/INPS (DI CUI)");
}

TEST_F(TreasuryList, AnswerNoMeansTheFieldHasBeenFilled) {
    expect_final_box();
    window.expect_question("Rispondere NO se  si e' compilato il campo Q896PROGRESSIVOCINPS",
                           false);
    EXPECT_EQ(end(), 0);
    ASSERT_EQ(printer.events.size(), 1U + 1U + 5U + 2U + 1U);
    EXPECT_EQ(printer.events[7], "N.B. NESSUN VALORE DA INSERIRE NEL CAMPO Q896PROGRESSIVOCINPS");
    EXPECT_EQ(printer.events[8], "     PER RETTIFICA RECUPERO DM10 'R.PREST.F.TES.'");
}

TEST_F(TreasuryList, OtherInstallationsHaveNone) {
    MXLIBRERIA::environment.installation_tax_code = "90000000066";
    expect_final_box();
    EXPECT_EQ(end(), 0);
    EXPECT_TRUE(printer.events.empty());
}

}  // namespace
