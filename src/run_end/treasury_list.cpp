#include <array>
#include <string>
#include <vector>

#include "context/environment.h"
#include "context/failure_handler.h"
#include "context/messages.h"
#include "platform/window.h"
#include "records/numbers.h"
#include "run_end/control_lists.h"
#include "slip/slip.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using platform::window;

namespace {

/// Installations that check by hand whether a month's contributions can bear the severance pay
/// advanced for the treasury fund.
constexpr std::array<std::string_view, 4> kInstallations{"11111111111", "90000000134",
                                                         "90000000112", "90000000123"};
constexpr std::size_t kNameWidth = 40;
constexpr std::size_t kColumnWidth = 16;

bool installation_checks_treasury() {
    for (const std::string_view tax_code : kInstallations) {
        if (environment.installation_tax_code == tax_code) {
            return true;
        }
    }
    return false;
}

/// The four amounts of a line, or of a company's total.
struct Amounts {
    double contributions = 0;  ///< contributions of the month with CF01
    double benefit = 0;        ///< severance pay recovered from the treasury fund
    double cf01 = 0;           ///< contribution of the month to the treasury fund
    double q896 = 0;           ///< what the treasury has to pay itself
};

/// A benefit above the contributions cannot be set off: all of it is paid by the treasury.
Amounts amounts_of(const TreasuryRow& row) {
    const bool beyond_contributions = row.benefit > row.contributions;
    return {row.contributions, row.benefit, row.cf01, beyond_contributions ? row.benefit : 0};
}

std::string right_aligned(const std::string& text) {
    const std::size_t width = std::max(kColumnWidth, text.size() + 1);
    return std::string(width - text.size(), ' ') + text;
}

void print_line(const std::string& name, const std::array<std::string, 4>& columns) {
    std::string line = a_sinistra(name, kNameWidth);
    for (const std::string& column : columns) {
        line += right_aligned(column);
    }
    stampa_riga(line);
}

void print_amounts(const std::string& name, const Amounts& amounts) {
    print_line(name, {formato_importo(amounts.contributions), formato_importo(amounts.benefit),
                      formato_importo(amounts.cf01), formato_importo(amounts.q896)});
}

void print_table() {
    const std::vector<TreasuryRow>& rows = run_tables.treasury_rows;
    print_line("", {texts::kTreasuryContributions.bytes(), texts::kTreasuryBenefit.bytes(),
                    texts::kTreasuryCF01.bytes(), texts::kTreasuryQ896.bytes()});
    Amounts total;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Amounts amounts = amounts_of(rows[i]);
        print_amounts(rows[i].employee, amounts);
        total.contributions += amounts.contributions;
        total.benefit += amounts.benefit;
        total.cf01 += amounts.cf01;
        total.q896 += amounts.q896;
        if (i + 1 == rows.size() || rows[i + 1].company != rows[i].company) {
            print_amounts(texts::kTreasuryTotal.bytes() + rows[i].company, total);
            total = {};
        }
    }
}

}  // namespace

void offer_treasury_list() {
    if (run_tables.treasury_rows.empty() || !installation_checks_treasury()) {
        return;
    }
    const bool still_to_fill = window().ask(period_label(), texts::kTreasuryListQuestion.bytes(),
                                            platform::Icon::question);
    print_document([still_to_fill] {
        print_table();
        const auto print_note = [](const auto& note) {
            for (const texts::Text& line : note) {
                stampa_riga(line.bytes());
            }
        };
        if (still_to_fill) {
            print_note(texts::kTreasuryNoteToFill);
        } else {
            print_note(texts::kTreasuryNoteFilled);
        }
    });
}

}  // namespace ModSWCALM
