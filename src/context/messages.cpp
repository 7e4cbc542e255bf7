#include "context/messages.h"

#include <array>

#include "context/environment.h"
#include "context/utilities.h"
#include "platform/window.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace MXLIBRERIA {

using namespace MXREPOSITORY;
using platform::Control;
using platform::window;

namespace {

constexpr int kPeriodElement = 1;
constexpr int kRunKindElement = 4;
constexpr int kCompanyElement = 2;
constexpr int kEmployeeElement = 6;
constexpr std::size_t kNameWidth = 40;

/// The employee's code as "001-000-0001".
std::string split_code() {
    const std::string code = testo(P001);
    return std::string(ritaglia(code, 1, 3)) + "-" + std::string(ritaglia(code, 4, 3)) + "-" +
           std::string(ritaglia(code, 7, 4));
}

std::string surname_and_name() {
    return rifilato(P002) + " " + rifilato(P003);
}

/// Status texts of the kinds of worker that go to the wage register only; other kinds follow.
struct StatusTexts {
    double kind;  ///< P768
    texts::Text already;
    texts::Text with_archive;
    texts::Text without_archive;
};
constexpr std::array<StatusTexts, 3> kRegisterOnly{{
    // The agency worker's text without the archive has no colon in front.
    {1, texts::kAgencyAlready, texts::kAgencyDone, texts::kAgencyDoneNoArchive},
    {2, texts::kPartnerAlready, texts::kPartnerDone, texts::kPartnerDone},
    {3, texts::kOtherKindAlready, texts::kOtherKindDone, texts::kOtherKindDone},
}};
constexpr StatusTexts kEmployee{0, texts::kAlready, texts::kDoneWithArchive, texts::kDone};

const StatusTexts& status_texts(double kind) {
    for (const StatusTexts& row : kRegisterOnly) {
        if (row.kind == kind) {
            return row;
        }
    }
    return kEmployee;
}

}  // namespace

void MSG(const std::string& text) {
    window().set_text(Control::Label3, kCompanyElement, company_label());
    window().set_text(Control::Label3, kEmployeeElement, employee_label());
    window().refresh();
    window().add_line(text);
}

void plain_box(const texts::Text& text, const std::string& rest) {
    window().box(texts::kPlainBoxTitle.bytes(), text.bytes() + rest, platform::Icon::none);
}

std::string company_label() {
    return testo(T001) + "-" + rifilato(T002) + " " + rifilato(T003);
}

std::string employee_label() {
    return split_code() + " - " + surname_and_name();
}

std::string period_label() {
    return window().text(Control::Label3, kRunKindElement) + " " +
           window().text(Control::Label3, kPeriodElement);
}

std::string list_line(const std::string& status) {
    return split_code() + " " + a_sinistra(surname_and_name(), kNameWidth) + status;
}

std::string already_calculated_status(double P768) {
    return status_texts(P768).already.bytes();
}

std::string calculated_status(double P768, bool archive_exists) {
    const StatusTexts& row = status_texts(P768);
    return (archive_exists ? row.with_archive : row.without_archive).bytes();
}

std::string archive_in_use(const platform::LockHolder& holder) {
    const auto piece = [](const texts::Text& text, const std::string& value) {
        return value.empty() ? std::string() : text.bytes() + value;
    };
    const std::string program =
        holder.program.empty() ? texts::kOtherProgram.bytes() : holder.program;
    return texts::kArchiveInUse.bytes() + program +
           piece(texts::kArchiveInUseProcess, holder.process) +
           piece(texts::kArchiveInUseSince, holder.since) +
           piece(texts::kArchiveInUseMachine, holder.machine) + ".";
}

bool monthly_archive_exists() {
    return ESISTEFILE(archive_path("\\NZRETMEN.MDB")) == kTrue;
}

}  // namespace MXLIBRERIA
