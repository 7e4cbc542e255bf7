#include "calc/calc.h"

#include <string>

#include "calc/dated_defaults.h"
#include "calc/phases.h"
#include "calc/selection.h"
#include "context/messages.h"
#include "context/period.h"
#include "context/run_course.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "history/stored_history.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "run_end/end_of_run.h"
#include "slip/fixed_data.h"
#include "slip/slip.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr double kNoCompany = -1;
constexpr double kDeleted = 99;
/// A fall of the current costs the slips of so many entries at most.
constexpr std::size_t kEntriesBetweenSyncs = 200;

[[noreturn]] void end_run_with(const std::string& message) {
    MSG(message);
    FINEPROG();
}

// ---- Set-up of the run ----

void read_period() {
    if (LEGGIREC(kPeriod, 1) == 1) {
        FINEPROG();
    }
    period.set(record_buffer(kPeriod));
}

/// Fixed data of the installation, brought up to the law of the period.
void read_fixed_data() {
    if (LEGGIREC(kFixedData, 1) == 1) {
        end_run_with(texts::kMissingFixedData.bytes());
    }
    area(Area::FISX) = record_buffer(kFixedData);
    apply_dated_defaults(static_cast<int>(period.yyyymm()));
}

/// The figures of the fixed data that the whole run uses.
void keep_fixed_figures() {
    run_tables.F197 = num(F197);
    run_tables.F199 = num(F199);
    run_tables.F162 = num(F162);
    run_tables.F152 = num(F152);
    run_tables.F041 = num(F041);
    run_tables.F153 = num(F153);
    // The letter of the household table is the one of whatever employee the area still holds.
    const std::string table_letter = testo(P158);
    const bool disabled_household =
        table_letter.size() == 1 && std::string("3467").find(table_letter) != std::string::npos;
    run_tables.family_income_limit = disabled_household ? num(F408) : num(F084);
    run_tables.days_of_year = num(F169) == 1 ? 365 : 366;
    CARICAFISSO(run_tables.TABFISSO);
}

void set_up_run() {
    company = CompanyState{};
    TUTTELEOP();
    read_period();
    INTATABIRP(slip.TABIRP);
    INTATABIRP(slip.TABIRPAC);
    ModElaboraStorico::PREPARAELABSTORICO();
    read_fixed_data();
    keep_fixed_figures();
}

// ---- Companies ----

/// Writes the loaded company back; a text of thirty zeros in its four notes is none.
void write_back_company() {
    if (company.DITTACORRENTE == kNoCompany) {
        return;
    }
    blank_all_zero({T488, T489, T490, T491});
    write_whole_record(kCompanies, company.DITTACORRENTE, area(Area::DITX));
}

[[noreturn]] void end_run_without_sector(double number) {
    end_run_with(texts::kMissingSector.bytes() + testo_numero(number) +
                 texts::kMissingSectorRest.bytes());
}

/// Reads sector T067; in 2014 a company with T714 = 1 gives an empty S332 its 0.33 percent.
bool read_sector() {
    const double sector = num(T067);
    if (read_table(kSectors, sector) == 1) {
        return false;
    }
    area(Area::SETX) = record_buffer(kSectors);
    if (num(T714) == 1 && num(S332) == 0 && period.year() == 2014) {
        scrivi(S332, 0.33);
        write_whole_record(kSectors, sector, area(Area::SETX));
        read_table(kSectors, sector);
        area(Area::SETX) = record_buffer(kSectors);
    }
    return ritaglia(testo(S001), 1, 2) != "99";
}

/// Writes the loaded company back and loads another with its sector. A company or a sector that is
/// missing ends the run for all companies after it.
void change_company(double number) {
    write_back_company();
    if (LEGGIREC(kCompanies, number) == 1 ||
        LEGGICAMPONUM(T261, 0, record_buffer(kCompanies)) == kDeleted) {
        end_run_with(texts::kMissingCompanyLine.bytes() + (number > 0 ? " " : "") +
                     testo_numero(number));
    }
    area(Area::DITX) = record_buffer(kCompanies);
    company.DITTACORRENTE = number;
    company.DIVISOREANNO = num(T291);
    if (num(T067) == 0 || !read_sector()) {
        end_run_without_sector(number);
    }
}

// ---- The walk ----

/// One slip from the opening to the history; the record is written by RESTOCALCOLI.
void calculate_entry(const SelectionEntry& entry) {
    open_slip(entry.employee_record);
    if (num(P054) == 0) {
        leaver_scan();
        take_off_days_outside_service();
        RESTOCALCOLI();
    }
    if (ABORTODIP != kTrue) {
        ModElaboraStorico::ELABORASTORICO();
    }
}

void walk_selection() {
    const std::size_t total = Selection::count();
    platform::window().begin_walk(texts::kSecondWalk.bytes(), texts::kFirstWalkPercent, 100);
    Selection selection;
    while (const std::optional<SelectionEntry> entry = selection.next()) {
        if (platform::stop_requested()) {
            throw platform::StopRequested();
        }
        if (entry->company != company.DITTACORRENTE) {
            change_company(entry->company);
        }
        run_course.employee_record = entry->employee_record;
        run_course.employee_file = kEmployees;
        calculate_entry(*entry);
        run_course.employee_record = 0;
        if (++run_course.finished % kEntriesBetweenSyncs == 0) {
            sync_file(kEmployees);
        }
        platform::window().progress(run_course.finished, total);
    }
    write_back_company();
}

}  // namespace

void CALC() {
    TRACCIA("CALC");
    try {
        set_up_run();
        walk_selection();
    } catch (const EndRun&) {
        // The pay scale could not be copied: the message has been shown, no more slips follow.
    } catch (const platform::StopRequested&) {
        // Between two employees, or while waiting: FINEPROG tells what is left to do.
        write_back_company();
    }
    FINEPROG();
}

}  // namespace ModSWCALM
