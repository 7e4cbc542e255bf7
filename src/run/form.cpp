#include "run/form.h"

#include <array>
#include <string>

#include "context/messages.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "platform/window.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using platform::Control;
using platform::window;
using namespace MXLIBRERIA::file_numbers;

namespace {

/// Captions of the controls as the window is drawn.
struct Caption {
    Control control;
    int element;
    texts::Text text;
};
constexpr std::array<Caption, 7> kCaptions{{
    {Control::Label3, 0, texts::kPeriodCaption},
    {Control::Label3, 3, texts::kCompanyCaption},
    {Control::Label3, 2, texts::kCompanyNameCaption},
    {Control::Label3, 5, texts::kEmployeeCaption},
    {Control::Label3, 6, texts::kEmployeeNameCaption},
    {Control::Label7, 0, texts::kListCaption},
    {Control::Comando1, 0, texts::kExit},
}};
constexpr int kPeriodElement = 1;
constexpr int kRunKindElement = 4;

void show_period(const std::string& kind, const std::string& date) {
    window().set_text(Control::Label3, kRunKindElement, kind);
    window().set_text(Control::Label3, kPeriodElement, date);
    window().refresh();
}

/// Date of the period record as dd/mm/yyyy.
std::string slashed_date(const std::string& record) {
    return std::string(ritaglia(record, 1, 2)) + "/" + std::string(ritaglia(record, 3, 2)) + "/" +
           std::string(ritaglia(record, 5, 4));
}

}  // namespace

void load_form() {
    for (const Caption& caption : kCaptions) {
        window().set_text(caption.control, caption.element, caption.text.bytes());
    }
    const texts::Text& announcement =
        monthly_archive_exists() ? texts::kLabel4WithArchive : texts::kLabel4;
    window().set_text(Control::Label4, 0, announcement.bytes());
    window().set_caption(texts::kCaption.bytes());
    FAIOPEN(kPeriod);
    if (LEGGIREC(kPeriod, 1) == 1) {
        show_period(texts::kNotFound.bytes(), texts::kNotFound.bytes());
        return;
    }
    const std::string& record = record_buffer(kPeriod);
    const bool additional = ritaglia(record, 9, 1) == "0";
    show_period((additional ? texts::kAdditionalRun : texts::kNormalRun).bytes(),
                slashed_date(record));
}

void show_window() {
    load_form();
    window().set_visible(Control::FrameGesCalcolo, 0, true);
    window().set_visible(Control::Label4, 0, true);
    window().refresh();
    window().set_text(Control::Label2, 0, texts::kPleaseWait.bytes());
    window().set_visible(Control::Label2, 0, true);
    window().refresh();
    for (const int element : {3, 2, 5, 6}) {
        window().set_visible(Control::Label3, element, true);
    }
    for (const int blanked : {2, 6}) {
        window().set_text(Control::Label3, blanked, "");
    }
    window().clear_list();
    window().set_busy(true);
    window().refresh();
}

}  // namespace ModSWCALM
