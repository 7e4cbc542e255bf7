#include "slip/contract.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "context/messages.h"
#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "platform/failure.h"
#include "platform/window.h"
#include "records/dictionary/DIPX.h"
#include "records/numbers.h"
#include "slip/contract_parts.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

/// ddmmyyyy to yyyymmdd.
std::string yyyymmdd(const std::string& date) {
    return date.substr(4, 4) + date.substr(2, 2) + date.substr(0, 2);
}

/// Date of the run as yyyymmdd; the period record is read where the run has not got it open.
std::string period_date() {
    std::string record = period.PERIODO;
    if (!file_is_open(kPeriod)) {
        FAIOPEN(kPeriod);
        LEGGIREC(kPeriod, 1);
        record = record_buffer(kPeriod);
        CHIUDI(kPeriod);
    }
    return yyyymmdd(a_sinistra(record, 8));
}

/// Is the text ddmmyyyy a day of the calendar?
bool is_date(const std::string& date) {
    if (date.size() != 8 || date.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    const double day = valore(date.substr(0, 2));
    const double month = valore(date.substr(2, 2));
    const double year = valore(date.substr(4, 4));
    return year >= 100 && month >= 1 && month <= 12 && day >= 1 &&
           day <= days_of_month(static_cast<int>(month), static_cast<int>(year));
}

/// Is the text a number and nothing else?
bool is_number(const std::string& text) {
    const std::string trimmed = rifila(text);
    const std::size_t first = trimmed.starts_with('-') ? 1 : 0;
    const std::string digits = trimmed.substr(std::min(first, trimmed.size()));
    return digits.find_first_of("0123456789") != std::string::npos &&
           digits.find_first_not_of("0123456789.") == std::string::npos &&
           digits.find('.') == digits.rfind('.');
}

// ---- The contract in memory ----

/// Reads the contract into CONX$; false, with a message, if it is missing or deleted.
bool read_contract(double number) {
    if (read_table(kContracts, number) != 1) {
        area(Area::CONX) = record_buffer(kContracts);
        if (rifilato(G500) != "99") {
            return true;
        }
    }
    platform::window().box(texts::kErrorMessageTitle.bytes(), texts::kContractNotFound.bytes(),
                           platform::Icon::exclamation);
    return false;
}

struct Rise {
    Descriptor date;
    Descriptor amount;
};
constexpr std::array<Rise, 3> kRises{{{G003, G019}, {G004, G020}, {G005, G021}}};

/// Adds the rises that are dated on the day of the slip to the minimum pay G022.
void apply_dated_rises(std::int16_t grade, const std::string& today) {
    double rise = 0;
    for (const Rise& row : kRises) {
        const std::string date = testo(row.date, grade);
        if (is_date(date) && yyyymmdd(date) == today) {
            rise += num(row.amount, grade);
        }
    }
    if (rise != 0) {
        aggiungi(G022, rise, grade);
    }
}

/// A contract paid at P333 percent: its marks, and its pay elements at that percentage.
void reduce_contract(std::int16_t grade, const std::string& percentage) {
    if (!is_number(percentage) || valore(percentage) == 0) {
        return;
    }
    scrivi(G010, 1, grade);
    scrivi(G011, 0.0, grade);
    scrivi(G016, 5, grade);
    scrivi(G017, 101000100, grade);
    for (const Descriptor& element : kPayElements) {
        if (num(element, grade) != 0) {
            scrivi(element, num(element, grade) * valore(percentage) / 100, grade);
        }
    }
}

void copy_contract_of_employee() {
    const std::string today = period_date();
    load_table(kContracts);
    const double number = copy_num(P331);
    const auto grade = static_cast<std::int16_t>(copy_num(P332) == 0 ? 1 : copy_num(P332));
    const std::string percentage = copy_text(P333);
    if (number != 0 && read_contract(number)) {
        apply_dated_rises(grade, today);
        reduce_contract(grade, percentage);
        set_contract_seniority(grade);
        copy_scale(grade);
    }
}

}  // namespace

void PASSQUAL() {
    TRACCIA("PASSQUAL");
    try {
        copy_contract_of_employee();
    } catch (const platform::Failure& failure) {
        platform::window().box(texts::kErrorMessageTitle.bytes(),
                               std::to_string(failure.number()) + " " + failure.description() +
                                   "\r\n" + employee_label() + "\r\n" +
                                   texts::kCheckContract.bytes(),
                               platform::Icon::critical);
        CHIUDI(kContracts);
        throw EndRun{};
    }
}

}  // namespace ModSWCALM
