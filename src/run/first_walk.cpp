#include "run/first_walk.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "calc/selection.h"
#include "context/messages.h"
#include "context/period.h"
#include "context/run_course.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "history/year_totals.h"
#include "platform/failure.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOPX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/pension_funds.h"
#include "slip/slip.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr double kNone = -1;

// ---- Loading company and employee ----

/// Company of the entry; false if it is missing or deleted.
bool load_company(double company_number, double& last_company) {
    constexpr double kDeleted = 99;
    if (company_number == last_company) {
        return true;
    }
    last_company = kNone;
    if (LEGGIREC(kCompanies, company_number) == 1) {
        return false;
    }
    area(Area::DITX) = record_buffer(kCompanies);
    if (num(T261) == kDeleted) {
        return false;
    }
    last_company = company_number;
    return true;
}

/// Sector of the company; without one the area is empty, and not that of the company before.
void load_sector() {
    const double sector = num(T067);
    if (sector != 0 && read_table(kSectors, sector) != 1) {
        area(Area::SETX) = record_buffer(kSectors);
    } else {
        area(Area::SETX).clear();
    }
}

void load_employee(double employee) {
    if (LEGGIREC(kEmployees, employee) == 1) {
        platform::Failure failure(platform::kBadRecordNumber);
        failure.culprit = testo_numero(kEmployees) + "-" + testo_numero(employee);
        throw failure;
    }
    area(Area::DIPX) = record_buffer(kEmployees);
    run_course.employee_record = employee;
    run_course.employee_file = kEmployees;
}

/// An agency worker who left in an earlier month is paid no more (P054 = 2). The leaving date goes
/// through a number, so a day below 10 has lost its zero and the digits cut from it always give an
/// earlier month.
void mark_earlier_leaver() {
    if (num(P768) != 1 || num(P017) == 0) {
        return;
    }
    const std::string date = testo_numero(num(P017));
    if (yyyymm_of(date) < period.yyyymm()) {
        scrivi(P054, 2);
    }
}

void set_monthly_payments() {
    constexpr double kMonthsOfCollaborator = 12;
    constexpr double kUsualPayments = 13.5;
    if (num(P447) == 1 && num(P090) <= 0) {
        scrivi(P090, kMonthsOfCollaborator);
    }
    slip.severance_divisor = num(P467) != 0 ? num(P467) : kUsualPayments;
}

void set_sector_rate() {
    constexpr double kReduction = 50;
    slip.sector_rate = num(S004);
    if ((num(P045) == 4 || num(P045) == 5) && num(P188) == 1) {
        slip.sector_rate -= kReduction;
    }
}

// ---- Skip test ----

/// Has the slip of the run been calculated already?
bool already_calculated() {
    constexpr double kDecember = 12;
    if (period.additional()) {
        return num(Q172) == 1;
    }
    const double last_month = num(Q171);
    const bool new_year = period.month() == 1 && last_month == kDecember;
    return period.month() <= last_month && !new_year && num(P116) != 1;
}

// ---- Clearing of the month ----

/// Rows of the twelve-month table that a new month clears; one row every 12 codes.
constexpr int kMonthsOfRow = 12;
constexpr std::array<std::span<const Descriptor>, 3> kRowsOfMonth{elenco<J001, J301, kMonthsOfRow>,
                                                                  elenco<J351, J519, kMonthsOfRow>,
                                                                  elenco<J551, J767, kMonthsOfRow>};

void clear_month_cells(double employee) {
    if (LEGGIREC(kTwelveMonths, employee) == 1) {
        return;
    }
    area(Area::DICX) = record_buffer(kTwelveMonths);
    for (const std::span<const Descriptor> rows : kRowsOfMonth) {
        for (const Descriptor& row : rows) {
            scrivi(row, "0", period.month());
        }
    }
    write_record(kTwelveMonths, employee, area(Area::DICX));
    area(Area::DICX).clear();
}

/// January: the sums of the year start again.
void clear_year_sums() {
    if (period.month() == 1) {
        azzera(elenco<Q641, Q657>);
        azzera({Q276, Q277});
        azzera(elenco<Q658, Q668>);
        azzera({Q670});
    }
}

/// So do the yearly totals, unless this month's slip of an entertainment worker has moved them
/// already.
void open_yearly_totals() {
    if (period.month() != 1) {
        return;
    }
    const double payment_month = valore(ritaglia(testo(Q179), 3, 2));
    const bool repeated_slip = payment_month == period.month() && num(P168) > 1;
    if (!repeated_slip && num(P119) != 1) {
        ModElaboraStorico::AZZERA_CUD();
    }
}

// ---- Fund deduction ----

/// Months in which a new period of the fund's contribution starts, by its frequency.
struct FundPeriods {
    double R051;
    std::string_view months;  ///< two digits each
};
constexpr std::array<FundPeriods, 5> kFundPeriods{{
    {1, "010203040506070809101112"},
    {2, "0305070911"},
    {3, "040710"},
    {4, "0509"},
    {6, "07"},
}};

void clear_fund_deduction() {
    if (period.month() == 1) {
        svuota({Q314});
        return;
    }
    if (num(P281) == 1) {
        svuota({P268});
    }
    if (fund_period_starts(num(R051), period.month()) && num(P268) <= 0) {
        svuota({Q314});
    }
}

// ---- Before-image ----

/// The semaphore stays taken until the employee's step is in the files.
void append_before_image(const std::string& key, const std::string& before_image) {
    APRISEMA();
    const double number =
        TRONCA(file_length(kBeforeImages) / static_cast<double>(before_image.size())) + 1;
    SCRIVIREC(kBeforeImages, number, before_image);
    ISAM(kBeforeImageIndex, key, kIsamInsert, number);
}

/// Has the image on file been kept by a run that was killed after it had prepared the employee?
/// Then nothing is left to be cleared, and clearing that image gives the record as it stands: it is
/// the one from before the calculation, and stays.
bool image_of_begun_calculation(double number, const std::string& before_image) {
    const std::string prepared = area(Area::DIPX);
    if (prepared != before_image || LEGGIREC(kBeforeImages, number) == 1) {
        return false;
    }
    area(Area::DIPX) = record_buffer(kBeforeImages);
    clear_year_sums();
    clear_fund_deduction();
    const std::string from_image = std::exchange(area(Area::DIPX), prepared);
    return from_image == prepared;
}

/// Keeps the employee's record as it stood before the run; the area holds the prepared one. A
/// refusal of the index (0) has been shown and is neither a find nor a miss: nothing is kept then.
/// True where a killed run has prepared the employee before.
bool keep_before_image(const std::string& before_image) {
    constexpr double kMissing = -1;
    const std::string key = testo(P001);
    const double number = ISAM(kBeforeImageIndex, key, kIsamSearch, 0);
    if (number == kMissing) {
        append_before_image(key, before_image);
    } else if (number > 0) {
        if (image_of_begun_calculation(number, before_image)) {
            return true;
        }
        SCRIVIREC(kBeforeImages, number, before_image);
    }
    return false;
}

// ---- One entry ----

/// Brings the employee's record to where the calculation of the month starts from. Before-image,
/// its index entry, the month of a fund that he is the first to bring, and the record are one step:
/// an employee is prepared whole or not at all. A killed run that has prepared him has counted the
/// month of his fund.
void prepare_employee(const SelectionEntry& entry, const std::string& before_image) {
    clear_month_cells(entry.employee_record);
    clear_year_sums();
    open_yearly_totals();
    area(Area::FOPX).clear();
    ModSwCalm2::AZZERACONTRIBUTOFP(period.month());
    clear_fund_deduction();
    SlotStep step;
    if (keep_before_image(before_image)) {
        ModSwCalm2::months_of_funds_are_counted();
    }
    ModSwCalm2::INCREMENTAMESIFP();
    write_record(kEmployees, entry.employee_record, area(Area::DIPX));
    step.commit();
    CHIUDISEMA();
}

void walk_entry(const SelectionEntry& entry, std::size_t position, double& last_company) {
    if (!load_company(entry.company, last_company)) {
        plain_box(texts::kMissingCompany, testo_numero(entry.company));
        return;
    }
    load_employee(entry.employee_record);
    mark_earlier_leaver();
    load_sector();
    set_monthly_payments();
    const std::string before_image = area(Area::DIPX);
    ABORTODIP = 0;
    set_sector_rate();
    if (already_calculated()) {
        ABORTODIP = kTrue;
        MSG(list_line(already_calculated_status(num(P768))));
        run_course.calculated_before[position] = true;
        return;
    }
    prepare_employee(entry, before_image);
}

}  // namespace

bool fund_period_starts(double frequency, int month) {
    const auto* row =
        std::find_if(kFundPeriods.begin(), kFundPeriods.end(),
                     [frequency](const FundPeriods& periods) { return periods.R051 == frequency; });
    if (row == kFundPeriods.end()) {
        return false;
    }
    for (std::size_t position = 1; position < row->months.size(); position += 2) {
        if (valore(ritaglia(row->months, position, 2)) == month) {
            return true;
        }
    }
    return false;
}

void first_walk() {
    const std::size_t total = Selection::count();
    run_course = {};
    run_course.calculated_before.resize(total);
    platform::window().begin_walk(texts::kFirstWalk.bytes(), 0, texts::kFirstWalkPercent);
    std::size_t done = 0;
    double last_company = kNone;
    Selection selection;
    while (const std::optional<SelectionEntry> entry = selection.next()) {
        if (platform::stop_requested()) {
            throw platform::StopRequested();
        }
        walk_entry(*entry, done, last_company);
        run_course.employee_record = 0;
        platform::window().progress(++done, total);
    }
    sync_recovery_slot();
    sync_file(kBeforeImages);
    sync_file(kBeforeImageIndex);
}

}  // namespace ModSWCALM
