#include "run/main_run.h"

#include <algorithm>
#include <array>

#include "archive/monthly_archive.h"
#include "calc/calc.h"
#include "context/environment.h"
#include "context/messages.h"
#include "context/period.h"
#include "context/run_course.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "history/quadri.h"
#include "history/slip_images.h"
#include "platform/disk_names.h"
#include "platform/failure.h"
#include "platform/stop_request.h"
#include "platform/window.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "run/first_walk.h"
#include "run/form.h"
#include "run/killed_run.h"
#include "run/load_environment.h"
#include "run/table_checks.h"
#include "run_end/end_of_run.h"
#include "severance/pension_funds.h"
#include "slip/slip.h"
#include "tax/municipal_table.h"
#include "texts/texts.h"

namespace ModSWCALM {

using namespace MXLIBRERIA;
using namespace MXREPOSITORY;
using platform::window;
using namespace MXLIBRERIA::file_numbers;

namespace {

// ---- What the run reads before the walk ----

/// The period record; false if the menu has written none.
bool read_period() {
    if (LEGGIREC(kPeriod, 1) == 1) {
        return false;
    }
    period.set(record_buffer(kPeriod));
    return true;
}

void load_regional_table() {
    FAIOPENIO(kRegions, 0);
    run_tables.PARAMETRI.fill({});
    for (std::size_t i = 1; i < run_tables.PARAMETRI.size(); ++i) {
        if (!LEGGIRIGA(kRegions, run_tables.PARAMETRI[i])) {
            break;
        }
    }
    CHIUDI(kRegions);
}

void read_installation() {
    constexpr std::size_t kAgreementStart = 35;
    constexpr std::size_t kAgreementWidth = 6;
    run_tables.agreement_number =
        valore(ritaglia(environment.installation_record, kAgreementStart, kAgreementWidth));
    run_tables.list_1000.fill({});
    run_tables.list_1000_count = 0;
    run_tables.bonus_list.clear();
    run_tables.treasury_rows.clear();
}

void open_files() {
    for (const int n : {kPeriod, kSelection, kTwelveMonths, kCompanies, kEmployees,
                        kCertificateIndex, kCertificates, kFixedData, kSectors, kPayItems}) {
        FAIOPEN(n);
    }
}

// ---- Corrections and questions by the period ----

/// What three parameters of the yearly table must hold before 2013 and from 2013 on.
struct DatedParameter {
    Descriptor field;
    double before_2013;
    double from_2013;
};
// L. 228/2012, art. 1, c. 483: deductions for children from 1 January 2013
constexpr std::array<DatedParameter, 3> kDatedParameters{{
    {F403, 950, 800},
    {F404, 270, 100},
    {F405, 400, 220},
}};

void correct_yearly_tables() {
    correct_dated_parameters();
    write_whole_record(kFixedData, 1, area(Area::FISX));
    read_yearly_tables();
}

/// In March, without the file that the year's advance has left: does the operator go on?
bool goes_on_without_advance() {
    const std::string year = period.year_text();
    if (period.month_text() != "03" ||
        ESISTEFILE(archive_path("\\ACOM" + year + ".TXT")) == kTrue) {
        return true;
    }
    return window().ask(
        texts::kAdvanceTitle.bytes() + year,
        texts::kAdvanceQuestion.bytes() + year + texts::kAdvanceQuestionRest.bytes(),
        platform::Icon::information);
}

void prepare_by_period() {
    const bool period_known = read_period();
    if (period_known) {
        correct_yearly_tables();
        if (!goes_on_without_advance()) {
            FINEPROG();
        }
    }
    run_tables.revaluation = num(F021);
    run_tables.revaluation2 = num(F022);
    FAIOPEN(kBeforeImages);
    FAIOPEN(kBeforeImageIndex);
    if (!read_period()) {
        FINEPROG();
    }
    run_tables.revaluation = revaluation_of_period(run_tables.revaluation);
}

// ---- Archives ----

void open_municipal_table() {
    const std::string table = archive_path("\\TABCOM.MDB");
    const std::string empty_table = archive_path("\\TABCOMXX.MDB");
    if (ESISTEFILE(table) != kTrue && ESISTEFILE(empty_table) == kTrue) {
        COPIAFILE(empty_table, table);
    }
    if (ESISTEFILE(table) == kTrue) {
        ModSWCALB::TABCOM();
    }
}

void open_archives() {
    NZRetMes::prepare_tables();
    if (monthly_archive_exists()) {
        NZRetMes::open_archive();
    }
    NZRetMesINPDAP::prepare_name();
    if (NZRetMesINPDAP::archive_exists()) {
        NZRetMesINPDAP::open_archive();
    }
    if (file_table.entries[static_cast<std::size_t>(kPeriod)].CANALI == 0) {
        FAIOPEN(kPeriod);
        read_period();
    }
    NZCedLibPaga::prepare_name();
    if (NZCedLibPaga::archive_exists()) {
        NZCedLibPaga::open_archive();
    }
    open_municipal_table();
}

void clear_control_lists() {
    std::fill(run_tables.list_9999.begin(), run_tables.list_9999.end(), std::string());
    run_tables.list_9999_count = 0;
    std::fill(run_tables.list_999.begin(), run_tables.list_999.end(), std::string());
    run_tables.list_999_count = 0;
}

}  // namespace

void correct_dated_parameters() {
    for (const DatedParameter& row : kDatedParameters) {
        const double right = period.year() < 2013 ? row.before_2013 : row.from_2013;
        if (num(row.field) != right) {
            scrivi(row.field, right);
        }
    }
}

double revaluation_of_period(double F021) {
    constexpr double kFirstUntouchedMonth2016 = 72016;
    if (period.year() == 2011) {
        return F021 + 0.001165331;
    }
    if (period.year() == 2016 && valore(period.month_year()) < kFirstUntouchedMonth2016) {
        return F021 == 99.9 ? 99.906629 : F021 + 0.006629;
    }
    return F021;
}

void MAIN() {
    TRACCIA("MAIN");
    run_course = {};
    CARICAAMBIENTE();
    if (environment.archive_directory.empty()) {
        load_from_path_files();
    }
    load_regional_table();
    read_installation();
    show_window();
    const platform::KeptListings listings;  // the run lists the archive directory once
    finish_killed_run();
    open_files();
    read_yearly_tables();
    check_tables();
    prepare_by_period();
    ModSwCalm2::INIZIALIZZAFP();
    open_archives();
    clear_control_lists();
    try {
        first_walk();
    } catch (const platform::StopRequested&) {
        FINEPROG();
    }
    for (const int n : {kTaxBrackets, kYearTables, kSeveranceBrackets}) {
        FAIOPEN(n);
    }
    CALC();
}

}  // namespace ModSWCALM
