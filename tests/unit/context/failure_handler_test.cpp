#include "context/failure_handler.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <vector>

#include "context/environment.h"
#include "context/failure_advice.h"
#include "context/run_course.h"
#include "context/trace.h"
#include "platform/printer.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "tests/support/scripted_window.h"
#include "texts/texts.h"

namespace {

using namespace MXLIBRERIA;
using platform::EndOfProgram;
using platform::Failure;
using test_support::ScriptedWindow;

/// Refuses the lines whose turn stands in `refusals` (counted from 1), prints the others.
class RefusingPrinter : public platform::Printer {
  public:
    std::vector<int> refusals;
    std::vector<std::string> printed;
    int attempts = 0;

    void begin(const std::string& /*font*/, int /*size*/) override {}
    void line(const std::string& text) override {
        ++attempts;
        for (const int refused : refusals) {
            if (refused == attempts) {
                throw Failure(platform::kPrinter);
            }
        }
        printed.push_back(text);
    }
    void end() override {}
};

class Failures : public ::testing::Test {
  protected:
    void SetUp() override {
        trace_ring = {};
        set_close_all_files([this] { ++closings; });
        platform::set_printer(&printer);
    }
    void TearDown() override {
        trace_ring = {};
        set_close_all_files({});
        run_course = {};
        platform::set_printer(nullptr);
        window.verify();
    }
    ScriptedWindow& window = ScriptedWindow::install();
    RefusingPrinter printer;
    int closings = 0;
};

TEST_F(Failures, NumberDescriptionAndTraceThenRestoreOfTheTask) {
    for (int i = 1; i <= 11; ++i) {
        TRACCIA("PROC" + std::to_string(i));
    }
    window.expect_box("Errore 11");
    window.expect_box("LANCIARE RIPRISTINO TASK");
    EXPECT_EQ(GESTIONEERRORE(Failure(platform::kDivisionByZero)), 1);
    ASSERT_EQ(window.boxes.size(), 2U);
    EXPECT_EQ(window.boxes[0].title, "Solmarel VELMOR");
    EXPECT_EQ(window.boxes[0].icon, platform::Icon::critical);
    EXPECT_EQ(window.boxes[0].text,
              "Errore 11 Division by zero\r\nPROC2\r\nPROC3\r\nPROC4\r\nPROC5\r\nPROC6\r\nPROC7\r\n"
              "PROC8\r\nPROC9\r\nPROC10\r\nPROC11\r\n"
              "Che cosa fare: correggere il dato indicato (nzutil scheda lo mostra, nzutil scrivi "
              "lo cambia), poi rilanciare.\r\n");
    EXPECT_EQ(window.boxes[1].title, "Solmarel");
    EXPECT_EQ(window.boxes[1].icon, platform::Icon::information);
    EXPECT_EQ(window.boxes[1].text,
              "CHIUDERE TUTTE LE APPLICAZIONI DELLA TASK\r\nLANCIARE RIPRISTINO TASK");
    EXPECT_EQ(closings, 1);
}

TEST_F(Failures, TheLastMessageCountsTheSlipsThatAreOwed) {
    run_course.calculated_before = {false, true, false};
    window.expect_box("Errore 61");
    window.expect_box("LANCIARE RIPRISTINO TASK");
    EXPECT_EQ(GESTIONEERRORE(Failure(platform::kDiskFull)), 1);
    EXPECT_EQ(window.boxes.back().text,
              "CHIUDERE TUTTE LE APPLICAZIONI DELLA TASK\r\nLANCIARE RIPRISTINO TASK\r\n"
              "Dipendenti non elaborati: 2");
}

TEST_F(Failures, AccessorsNameStandsInTheTraceOnThatPathOnly) {
    TRACCIA("CALC");
    Failure failure(platform::kSubscriptOutOfRange);
    failure.pseudo_name = "RepoW";
    window.expect_box("CALC\r\nRepoW\r\n");
    window.expect_box(std::string(texts::kRestoreTask.utf8));
    GESTIONEERRORE(failure);
}

TEST_F(Failures, FileConcernedIsNamedAfterTheTrace) {
    Failure failure(platform::kFileNotFound);
    failure.culprit = "/archivi/NZBASE.DAT";
    window.expect_box("Errore 53 File not found\r\n");
    window.expect_box(std::string(texts::kRestoreTask.utf8));
    GESTIONEERRORE(failure);
    EXPECT_NE(window.boxes[0].text.find("Archivio o record: /archivi/NZBASE.DAT\r\n"),
              std::string::npos);
    EXPECT_TRUE(window.boxes[0].text.ends_with(
        "\r\nChe cosa fare: rimettere il file che manca da una copia degli archivi, poi "
        "rilanciare.\r\n"));
}

TEST_F(Failures, EveryNumberEndsWithWhatToDo) {
    for (int number = 1; number <= 500; ++number) {
        const std::string advice = failure_advice(Failure(number));
        EXPECT_TRUE(advice.starts_with("Che cosa fare: ")) << number;
        EXPECT_TRUE(advice.ends_with("poi rilanciare.\r\n") ||
                    advice.ends_with("con la stessa selezione.\r\n"))
            << number << advice;
    }
}

TEST_F(Failures, TheEmployeeUnderCalculationIsNamedWithTheCommandThatShowsHim) {
    MXREPOSITORY::area(MXREPOSITORY::Area::DIPX).assign(16600, ' ');
    MXREPOSITORY::scrivi(MXREPOSITORY::P001, "0010000005");
    MXREPOSITORY::scrivi(MXREPOSITORY::P002, "MARTINI");
    MXREPOSITORY::scrivi(MXREPOSITORY::P003, "ELENA");
    environment.archive_directory = "/srv/paghe";
    run_course.employee_record = 5;
    run_course.employee_file = 2;
    Failure failure(platform::kDivisionByZero);
    failure.advice = "fare questo.";
    EXPECT_EQ(failure_advice(failure),
              "Dipendente in elaborazione: 001-000-0005 - MARTINI ELENA\r\n"
              "Il suo record si vede con: nzutil scheda /srv/paghe 2 5\r\n"
              "Che cosa fare: fare questo.\r\n");
    MXREPOSITORY::clear_areas();
    environment = {};
}

/// A text of the C++ library, as one of its exceptions carries it.
TEST_F(Failures, TextsOfTheLibraryStayBehind) {
    const Failure other = platform::failure_of(std::runtime_error("basic_string::_M_create"));
    EXPECT_EQ(other.number(), platform::kInvalidCall);
    EXPECT_EQ(other.description(), "Invalid procedure call or argument");
    EXPECT_EQ(platform::failure_of(std::out_of_range("array::at")).description(),
              "Subscript out of range");
    EXPECT_EQ(platform::failure_of(std::bad_alloc()).number(), platform::kOutOfMemory);
    const Failure refused = platform::failure_of(std::filesystem::filesystem_error(
        "cannot copy", "/srv/paghe", std::make_error_code(std::errc::permission_denied)));
    EXPECT_EQ(refused.number(), platform::kPathFileAccess);
    EXPECT_EQ(refused.culprit, "/srv/paghe");
    Failure own(platform::kDiskFull);
    own.advice = "x";
    EXPECT_EQ(platform::failure_of(own).advice, "x");
}

TEST_F(Failures, FailureInsideTheHandlerEndsTheProcess) {
    set_close_all_files([] { throw Failure(platform::kDeviceIo); });
    window.expect_box("Errore 6 Overflow");
    window.expect_box(std::string(texts::kRestoreTask.utf8));
    EXPECT_EQ(GESTIONEERRORE(Failure(platform::kOverflow)), 1);
}

TEST_F(Failures, PrinterYesYesNoTriesTheLineEachTime) {
    printer.refusals = {1, 2, 3};
    window.expect_question(std::string(texts::kPrinterRetry.utf8), true);
    window.expect_question(std::string(texts::kPrinterRetry.utf8), true);
    window.expect_question(std::string(texts::kPrinterRetry.utf8), false);
    window.expect_question(std::string(texts::kPrinterClose.utf8), false);
    stampa_riga("riga persa");
    stampa_riga("riga seguente");
    EXPECT_EQ(printer.attempts, 4);
    EXPECT_EQ(printer.printed, std::vector<std::string>{"riga seguente"});
    EXPECT_EQ(window.boxes[0].icon, platform::Icon::critical);
    EXPECT_EQ(window.boxes[3].icon, platform::Icon::exclamation);
    EXPECT_EQ(closings, 0);
}

TEST_F(Failures, PrinterThatAnswersAgainPrintsTheLineOnce) {
    printer.refusals = {1};
    window.expect_question(std::string(texts::kPrinterRetry.utf8), true);
    stampa_riga("riga");
    EXPECT_EQ(printer.printed, std::vector<std::string>{"riga"});
}

TEST_F(Failures, PrinterNoThenCloseEndsTheProgram) {
    printer.refusals = {1};
    window.expect_question(std::string(texts::kPrinterRetry.utf8), false);
    window.expect_question(std::string(texts::kPrinterClose.utf8), true);
    try {
        stampa_riga("riga");
        FAIL() << "the program went on";
    } catch (const EndOfProgram& end) {
        EXPECT_EQ(end.status, 1);
    }
    EXPECT_EQ(closings, 1);
}

TEST_F(Failures, OtherFailureWhilePrintingIsNotThePrinters) {
    EXPECT_THROW(con_stampante([] { throw Failure(platform::kDiskFull); }), Failure);
    EXPECT_TRUE(window.boxes.empty());
}

}  // namespace
