#include "run_end/end_of_run.h"

#include "archive/monthly_archive.h"
#include "context/environment.h"
#include "context/failure_handler.h"
#include "context/messages.h"
#include "context/run_course.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "history/quadri.h"
#include "history/slip_images.h"
#include "platform/failure.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "run_end/control_lists.h"
#include "tax/municipal_table.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using platform::Control;
using platform::window;
using namespace MXLIBRERIA::file_numbers;

namespace {

[[noreturn]] void end_program() {
    constexpr int kFellShort = 1;
    close_all_files();
    throw platform::EndOfProgram(run_fell_short() ? kFellShort : 0);
}

void hide_progress_labels() {
    constexpr int kEmployeeElement = 6;
    window().set_visible(Control::Label4, 0, false);
    for (const int element : {2, 3, 5, kEmployeeElement}) {
        window().set_visible(Control::Label3, element, false);
    }
    window().set_busy(false);
    window().refresh();
}

void close_archives() {
    window().set_text(Control::Label2, 0, texts::kReorganising.bytes());
    window().set_visible(Control::Label2, 0, true);
    window().refresh();
    if (monthly_archive_exists()) {
        NZRetMes::close_archive();
    }
    if (NZRetMesINPDAP::archive_exists()) {
        NZRetMesINPDAP::close_archive();
    }
    if (NZCedLibPaga::archive_exists()) {
        NZCedLibPaga::close_archive();
    }
    if (ESISTEFILE(archive_path("\\TABCOM.MDB")) == kTrue) {
        ModSWCALB::close_TABCOM();
    }
    window().set_visible(Control::Label2, 0, false);
    window().refresh();
}

void show_final_message() {
    const texts::Text& message =
        monthly_archive_exists() ? texts::kFinishedWithArchive : texts::kFinished;
    std::string rest = texts::kPeriodOfRun.bytes() + period_label();
    const std::size_t left = run_course.not_calculated();
    if (platform::stop_requested()) {
        rest += "\r\r" + texts::kInterrupted.bytes();
    }
    if (platform::stop_requested() || left > 0) {
        rest += "\r\r" + texts::kNotCalculated.bytes() + std::to_string(left);
    }
    plain_box(message, rest);
}

}  // namespace

void FINEPROG() {
    TRACCIA("FINEPROG");
    sync_files();
    if (window().line_count() == 0 && !run_fell_short()) {
        end_program();
    }
    hide_progress_labels();
    close_archives();
    show_final_message();
    offer_control_lists();
    window().show_modal();
    end_program();
}

}  // namespace ModSWCALM
