#include <array>
#include <span>
#include <string>
#include <utility>

#include "calc/exemption_terms.h"
#include "calc/extra_payments.h"
#include "calc/phases.h"
#include "calc/remaining.h"
#include "closing/closing.h"
#include "context/messages.h"
#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "history/slip_images.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/seniority.h"
#include "slip/slip.h"
#include "slip/slip_lines.h"
#include "slip/slip_table.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

bool collaborator() {
    return num(P447) == 1;
}

bool settlement_only() {
    return num(P118) == 2;
}

// ---- Opening values ----

/// Q060 is a row of twelve marks, each "0" or "1".
void clean_month_marks() {
    std::string marks = testo(Q060);
    for (char& mark : marks) {
        if (mark != '0' && mark != '1') {
            mark = '0';
        }
    }
    scrivi(Q060, marks);
}

std::string three_digit_days() {
    if (settlement_only() || collaborator()) {
        return "000";
    }
    return num(T175) != 0 ? "026" : "000";
}

/// Entertainers carry their figures from slip to slip of a month; a new month starts them again.
void carry_entertainer() {
    if (num(P168) != 2 && num(P168) != 3) {
        return;
    }
    ENPALSPEC(period.date());
    if (slip.earlier_slip_this_month) {
        slip.same_month_repeat = true;
    } else {
        azzera({Q168, Q170});
    }
}

// ---- Preparing the month ----

/// Hours of the month join the hours of the year: P112 to Q131, P113 to Q134.
void add_progressive_hours() {
    if (num(P846) == 1 || period.additional()) {
        return;
    }
    aggiungi(Q131, num(P112));
    aggiungi(Q134, num(P113));
}

void prepare_month() {
    clear_all_zero_texts();
    first_blanking_list();
    second_blanking_list();
    if (num(P440) > 0) {
        azzera({P440});
    }
    if (company_is("90000000011") || company_is("11111111111")) {
        azzera({Q088, Q089, Q090});
    }
    NZCedLibPaga::prepare_slip();
    slip.exemption_over = exemption_is_over();
    scrivi(P871, months_of_exemption());
    take_caps_from_items();
    add_progressive_hours();
}

// ---- Closing ----

using Saved = std::pair<Descriptor, Descriptor>;

/// Saved field and the result that it takes.
constexpr std::array kSavedResults{
    Saved{P268, P250}, Saved{P269, Q225}, Saved{P270, Q226}, Saved{P271, Q227}, Saved{P272, Q228},
    Saved{P273, P256}, Saved{P274, Q137}, Saved{P275, Q173}, Saved{P276, P252}, Saved{P277, P253},
    Saved{P278, P250}, Saved{P279, Q162}, Saved{P280, Q163}};

void write_employee() {
    write_whole_record(kEmployees, slip.employee_record, area(Area::DIPX));
}

}  // namespace

StartingRates starting_rates() {
    const std::string none = "000.00";
    const std::string whole_month = collaborator() ? none : "026.00";
    return {.P224 = whole_month,
            .P225 = num(P079) != 0 ? whole_month : none,
            .P227 = period.month() == 12 ? whole_month : none};
}

void opening_values() {
    clean_month_marks();
    const std::string days = three_digit_days();
    scrivi(P201, period.ordinary() ? days : "");
    SCATTI(period.date(), days);
    if (num(P169) > 0) {
        scrivi(P031, "1");
    }
    carry_entertainer();
    if (company_is("90000000044")) {
        azzera({Q105});
    }
}

void save_results() {
    slip.former_P268 = slip.earlier_slip_this_month ? num(P268) : 0;
    if (period.additional()) {
        scrivi(P281, "0");
    } else {
        for (const auto& [saved, result] : kSavedResults) {
            scrivi(saved, num(result));
        }
        scrivi(P281, "1");
        svuota({P604, P605, P606, Q881, P749});
    }
    if (settlement_only() && num(P054) == 0) {
        svuota({Q040, Q041});
    }
    slip.former_P563 = testo(P563);
    svuota({P563});
}

void RESTOCALCOLI() {
    TRACCIA("RESTOCALCOLI");
    const StartingRates rates = starting_rates();
    opening_values();
    clear_month_results(rates);
    prepare_month();
    divisors_and_hourly_values();
    count_extra_payments();
    CALCOLACIG();
    evaluate_lines();
    ModSwCalm2::CALCOLACHIUSURA();
    if (ABORTODIP == kTrue) {
        return;
    }
    store_slip_table();
    save_results();
    late_calculations();
    write_employee();
    MSG(list_line(calculated_status(num(P768), monthly_archive_exists())));
}

void blank_all_zero(std::span<const Descriptor> fields) {
    for (const Descriptor& field : fields) {
        if (tutto_zero(field)) {
            svuota(field);
        }
    }
}

void blank_all_zero(std::initializer_list<Descriptor> fields) {
    blank_all_zero(std::span(fields.begin(), fields.size()));
}

}  // namespace ModSWCALM
