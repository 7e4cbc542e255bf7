#include "run_end/control_lists.h"

#include <span>
#include <string>
#include <vector>

#include "context/failure_handler.h"
#include "context/messages.h"
#include "platform/code_page.h"
#include "platform/printer.h"
#include "platform/window.h"
#include "slip/slip.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using platform::window;

namespace {

/// A list that the calculation has filled: question, header, lines, and what closes it.
struct ControlList {
    texts::Text question;
    texts::Text header;
    std::span<const std::string> lines;
    std::vector<texts::Text> closing;
};

/// The lines of a table, which begins at index 1, up to the first empty one.
std::span<const std::string> lines_of(std::span<const std::string> table) {
    std::size_t count = 0;
    while (count < table.size() && !table[count].empty()) {
        ++count;
    }
    return table.first(count);
}

std::vector<ControlList> control_lists() {
    const auto table = [](const auto& lines) { return lines_of(std::span(lines).subspan(1)); };
    return {
        {texts::kBonusListQuestion, texts::kBonusListHeader, lines_of(run_tables.bonus_list), {}},
        {texts::kIntegrativeListQuestion,
         texts::kIntegrativeListHeader,
         table(run_tables.list_999),
         {}},
        {texts::kCeilingListQuestion,
         texts::kCeilingListHeader,
         table(run_tables.list_9999),
         {texts::kCeilingListEnd}},
        {texts::kMunicipalListQuestion,
         texts::kMunicipalListHeader,
         table(run_tables.list_1000),
         {texts::kMunicipalListEnd, texts::kMunicipalListNote}},
    };
}

void print_list(const ControlList& list) {
    print_document([&list] {
        stampa_riga(list.header.bytes());
        for (const std::string& line : list.lines) {
            stampa_riga(line);
        }
        for (const texts::Text& line : list.closing) {
            stampa_riga(line.bytes());
        }
    });
}

}  // namespace

void offer_control_lists() {
    for (const ControlList& list : control_lists()) {
        if (!list.lines.empty() &&
            window().ask(period_label(), list.question.bytes(), platform::Icon::question)) {
            print_list(list);
        }
    }
    offer_treasury_list();
}

void print_document(const std::function<void()>& lines) {
    constexpr int kFontSize = 9;
    con_stampante([] { platform::printer().begin("Courier New", kFontSize); });
    lines();
    con_stampante([] { platform::printer().end(); });
    const std::string place = platform::printer().place();
    if (!place.empty()) {
        window().remark(texts::kListPrinted.bytes() + platform::from_utf8(place) + ".");
    }
}

}  // namespace ModSWCALM
