#include "context/failure_handler.h"

#include "context/failure_advice.h"
#include "context/run_course.h"
#include "context/trace.h"
#include "platform/printer.h"
#include "platform/window.h"
#include "texts/texts.h"

namespace MXLIBRERIA {

using platform::Icon;
using platform::window;

namespace {

std::function<void()> close_all_files_action;  // process-wide: set by the floor of the files

void show_failure(const platform::Failure& failure) {
    std::string text = texts::kFailure.bytes() + std::to_string(failure.number()) + " " +
                       failure.description() + "\r\n" + trace_listing();
    if (!failure.culprit.empty()) {
        text += texts::kFailureCulprit.bytes() + failure.culprit + "\r\n";
    }
    text += failure_advice(failure);
    const std::string program = texts::kSuiteTitle.bytes() + " " + texts::kProgram.bytes();
    window().box(program, text, Icon::critical);
    std::string last = texts::kRestoreTask.bytes();
    if (const std::size_t left = run_course.not_calculated(); left > 0) {
        last += "\r\n" + texts::kNotCalculated.bytes() + std::to_string(left);
    }
    window().box(texts::kSuiteTitle.bytes(), last, Icon::information);
}

enum class PrinterAnswer { retry, skip };

/// What the operator wants after a refusal of the printer; closing the program does not return.
PrinterAnswer ask_about_printer(int retries) {
    const std::string title = texts::kSuiteTitle.bytes();
    if (window().ask_again(title, texts::kPrinterRetry.bytes(), Icon::critical, retries)) {
        return PrinterAnswer::retry;
    }
    if (window().ask(title, texts::kPrinterClose.bytes(), Icon::exclamation)) {
        close_all_files();
        throw platform::EndOfProgram(1);
    }
    return PrinterAnswer::skip;
}

}  // namespace

int GESTIONEERRORE(const platform::Failure& failure) {
    constexpr int kFailed = 1;
    try {
        if (!failure.pseudo_name.empty()) {
            TRACCIA(failure.pseudo_name);
        }
        show_failure(failure);
        close_all_files();
    } catch (const std::exception&) {
        return kFailed;  // The last line of defence: nobody is left to pass this one to.
    }
    return kFailed;
}

void con_stampante(const std::function<void()>& statement) {
    for (int retries = 0;; ++retries) {
        try {
            statement();
            return;
        } catch (const platform::Failure& failure) {
            if (failure.number() != platform::kPrinter) {
                throw;
            }
        }
        if (ask_about_printer(retries) == PrinterAnswer::skip) {
            return;
        }
    }
}

void stampa_riga(const std::string& line) {
    con_stampante([&line] { platform::printer().line(line); });
}

void set_close_all_files(std::function<void()> close_all) {
    close_all_files_action = std::move(close_all);
}

void close_all_files() {
    if (close_all_files_action) {
        close_all_files_action();
    }
}

}  // namespace MXLIBRERIA
