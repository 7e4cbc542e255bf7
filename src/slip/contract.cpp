#include "slip/contract.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/logical_files.h"
#include "platform/failure.h"
#include "platform/window.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

constexpr double kCompanyFile = 1;
constexpr double kPeriodFile = 6;
constexpr double kContractFile = 71;

// ---- The copy of the employee's record ----

double copy_num(const Descriptor& field) {
    return LEGGICAMPONUM(field, 0, slip.record_copy);
}

std::string copy_text(const Descriptor& field) {
    return LEGGICAMPO(field, 0, slip.record_copy);
}

void copy_write(const Descriptor& field, double value) {
    SCRIVICAMPONUM(field, value, 0, slip.record_copy);
}

bool file_is_open(double n) {
    return file_table.entries.at(static_cast<std::size_t>(n)).CANALI != 0;
}

/// ddmmyyyy to yyyymmdd.
std::string yyyymmdd(const std::string& date) {
    return date.substr(4, 4) + date.substr(2, 2) + date.substr(0, 2);
}

/// Date of the run as yyyymmdd; the period record is read where the run has not got it open.
std::string period_date() {
    std::string record = period.PERIODO;
    if (!file_is_open(kPeriodFile)) {
        FAIOPEN(kPeriodFile);
        LEGGIREC(kPeriodFile, 1);
        record = record_buffer(kPeriodFile);
        CHIUDI(kPeriodFile);
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
    if (LEGGIREC(kContractFile, number) != 1) {
        area(Area::CONX) = record_buffer(kContractFile);
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

constexpr std::array<Descriptor, 8> kPayElements{G022, G023, G024, G025, G026, G027, G028, G029};

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

// ---- Seniority ----

constexpr double kSeniorityNone = 0;
constexpr double kSeniorityByTable = 2;

/// Has the employee's rule (P335) its turn in this month?
bool seniority_applies() {
    const double rule = copy_num(P335);
    const std::string last_step = copy_text(P027);  // mmyyyy
    if (rule == 1) {
        return last_step == period.month_year();
    }
    if (rule == 2) {
        return last_step.starts_with("01");
    }
    return rule != 3;
}

/// Fixed amount of the contract; for pay by the hour its hourly share on top of P061.
double fixed_seniority(std::int16_t grade) {
    const double amount = num(G012, grade);
    const double divisor = hours_divisor();
    if (copy_num(P050) != 0 || divisor == 0) {
        return amount;
    }
    return copy_num(P061) + amount / divisor;
}

/// One token of G014: "Pn" is the n-th of the employee's amounts Q096 to Q105 ("P0" the tenth), a
/// digit n the n-th pay element of the grade. Anything else is 0.
double token_value(const std::string& token, std::int16_t grade) {
    const std::string trimmed = rifila(token);
    if (trimmed.starts_with('P')) {
        const std::string_view digit = ritaglia(trimmed, 2, 1);
        if (digit.empty() || digit[0] < '0' || digit[0] > '9') {
            return 0;
        }
        const int n = digit == "0" ? 10 : digit[0] - '0';
        return copy_num(dopo(Q096, n - 1));
    }
    const double n = valore(trimmed);
    return n >= 1 && n <= 8 ? num(kPayElements.at(static_cast<std::size_t>(n) - 1), grade) : 0;
}

/// Percentage G012 of the amounts that G014 names.
double seniority_by_table(std::int16_t grade) {
    const std::string tokens = testo(G014, grade);
    double base = 0;
    for (std::size_t position = 1; position <= tokens.size(); position += 2) {
        base += token_value(std::string(ritaglia(tokens, position, 2)), grade);
    }
    return base * num(G012, grade) / 100;
}

/// P026, the amount of one step, and P061, the seniority pay.
void set_seniority(std::int16_t grade) {
    const double rule = num(G011, grade);
    if (rule != kSeniorityNone && seniority_applies()) {
        if (rule != kSeniorityByTable) {
            copy_write(P026, fixed_seniority(grade));
        } else if (num(G012, grade) != 0) {
            copy_write(P026, seniority_by_table(grade));
        }
    }
    if (num(G010, grade) != 1) {
        copy_write(P061, copy_num(P026) * copy_num(P029));
    }
}

// ---- Conversion of monthly amounts to the hour ----

/// Hours divisor of the company P175 that the pay comes from; 0 if there is no such company.
double source_company_divisor() {
    const bool opened_here = !file_is_open(kCompanyFile);
    if (opened_here) {
        FAIOPEN(kCompanyFile);
    }
    std::string loaded_buffer = record_buffer(kCompanyFile);
    const bool found = LEGGIREC(kCompanyFile, copy_num(P175)) != 1;
    std::string source = std::exchange(record_buffer(kCompanyFile), std::move(loaded_buffer));
    double divisor = 0;
    if (found && LEGGICAMPONUM(T261, 0, source) != 99) {
        std::swap(area(Area::DITX), source);
        divisor = hours_divisor();
        std::swap(area(Area::DITX), source);
    }
    if (opened_here) {
        CHIUDI(kCompanyFile);
    }
    return divisor;
}

/// The amount, brought to the hour where P334 and P175 ask for it.
double converted(double amount) {
    const double factor = copy_num(P334);
    if (factor == 0 || amount == 0 || copy_num(P175) == 0) {
        return amount;
    }
    const double divisor = source_company_divisor();
    if (divisor == 0) {
        return amount;
    }
    copy_write(P050, 0);
    return arrotonda(amount * factor / divisor, 5);
}

// ---- The scale ----

struct ScaleElement {
    Descriptor contract;
    Descriptor employee;
    bool converts;
};
constexpr std::array<ScaleElement, 8> kScale{{
    {G022, P058, true},
    {G023, P069, false},
    {G024, P062, true},
    {G025, P063, true},
    {G026, P064, true},
    {G027, P065, true},
    {G028, P066, true},
    {G029, P067, true},
}};
constexpr std::array<ScaleElement, 3> kFurtherElements{
    {{G246, P353, false}, {G247, P354, false}, {G248, P355, false}}};

void copy_scale(std::int16_t grade) {
    for (const ScaleElement& element : kScale) {
        const double amount = num(element.contract, grade);
        if (amount != 0) {
            copy_write(element.employee, element.converts ? converted(amount) : amount);
        }
    }
    for (const ScaleElement& element : kFurtherElements) {
        copy_write(element.employee, num(element.contract, grade));
    }
}

void copy_contract_of_employee() {
    const std::string today = period_date();
    FAIOPEN(kContractFile);
    const double number = copy_num(P331);
    const auto grade = static_cast<std::int16_t>(copy_num(P332) == 0 ? 1 : copy_num(P332));
    const std::string percentage = copy_text(P333);
    if (number != 0 && read_contract(number)) {
        apply_dated_rises(grade, today);
        reduce_contract(grade, percentage);
        set_seniority(grade);
        copy_scale(grade);
    }
    CHIUDI(kContractFile);
}

}  // namespace

void PASSQUAL() {
    TRACCIA("PASSQUAL");
    try {
        copy_contract_of_employee();
    } catch (const platform::Failure& failure) {
        platform::window().box(texts::kErrorMessageTitle.bytes(),
                               std::to_string(failure.number()) + " " + failure.description(),
                               platform::Icon::critical);
        CHIUDI(kContractFile);
        throw EndRun{};
    }
}

}  // namespace ModSWCALM
