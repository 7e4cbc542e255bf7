#include "closing/closing.h"

#include <span>
#include <string>

#include "closing/entertainers.h"
#include "closing/state.h"
#include "closing/tax_pass.h"
#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "contributions/allowances.h"
#include "contributions/contributions.h"
#include "history/slip_images.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/one_off_2022.h"
#include "slip/slip.h"
#include "tax/bonus_restitution.h"
#include "tax/income_tax.h"
#include "tax/surtaxes.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::tax_state;
using ModSWCALM::company_is;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

ClosingState closing;

namespace {

/// Everything that belongs to this closing starts anew; the slip may count months once.
void open_closing() {
    closing = {};
    closing.ceiling_lines_before = ModSWCALM::run_tables.list_9999_count;
    closing.municipal_lines_before = ModSWCALM::run_tables.list_1000_count;
    contributions = {};
    tax_state = {};
    tax_state.PrimaPassata = 1;
    ModSWCALB::open_restitutions();
}

void totals_to_record() {
    if (!company_is("90000000066") && slip.IMPFISCALE < 0) {
        slip.IMPFISCALE = 0;
    }
    scrivi(P256, slip.IMPFISCALE);
    scrivi(P241, slip.TOTCOMPETENZE);
    scrivi(P259, slip.TOTTRATTENUTE);
}

void rounding_brought_in() {
    aggiungi(P259, num(Q163));
    scrivi(Q162, num(Q163));
}

void surtax_instalments() {
    if (!ModSWCALB::adjustment_only()) {
        closing.surtax_instalments = ModSWCALB::RATAADDIZIONALI();
        aggiungi(P259, closing.surtax_instalments);
    }
    scrivi(Q163, 0);
}

void no_income_tax() {
    if (num(P031) == 0) {
        svuota({P256, P244, P245, P248, P559});
    }
}

// ---- Family allowances ----

/// The income limit of the household table: F084 or F408 by its letter; other letters keep it.
void read_family_income_limit() {
    const std::string letter = rifilato(P158);
    if (letter == "0" || letter == "1") {
        ModSWCALM::run_tables.family_income_limit = num(F084);
    } else if (letter == "3" || letter == "4" || letter == "6" || letter == "7") {
        ModSWCALM::run_tables.family_income_limit = num(F408);
    }
}

constexpr double kWholeMonthDays = 26;

/// Daily values set by the operator: 26 days take the whole-month value where there is one.
void direct_family_allowances() {
    const double days = num(P227);
    const bool whole_month = days == kWholeMonthDays;
    struct Allowance {
        Descriptor result;
        double amount;
    };
    for (const Allowance& allowance :
         {Allowance{Q139, whole_month ? num(P178) : days * num(P179)},
          Allowance{Q140, num(P226) * num(P179)},
          Allowance{Q130, whole_month ? num(P264) : days * num(P265)}}) {
        aggiungi(allowance.result, allowance.amount);
        aggiungi(P241, arrotonda(allowance.amount));
    }
}

void family_allowances() {
    tax_state.tax_credit = 0;
    if (period.additional() || num(P038) == 9) {
        return;
    }
    read_family_income_limit();
    if (period.yyyymm() >= 201907 && num(T428) == 0) {
        direct_family_allowances();
    } else {
        ASSEGNIFAM();
    }
}

void set_period_factor() {
    closing.period_factor = 1;
    if (num(P447) != 1) {
        return;
    }
    const double instalments = num(P090);
    if (instalments <= 0 || instalments > 12) {
        closing.period_factor = 12;
    } else if (instalments < 12) {
        closing.period_factor = Int(12 / instalments);
    }
}

void contribution_and_tax_pass() {
    if (num(P168) == 0) {
        TFRETASSAZIONESEPARATA();
        return;
    }
    // Entertainers: the adjustment is decided here, before their pass asks for it. As for all
    // others the additional slip of the month adjusts nothing.
    const bool leaves_now = MXLIBRERIA::yyyymm_of(testo(P017)) == period.yyyymm();
    tax_state.ConguaglioAnnuale = period.ordinary() && (leaves_now || period.month() == 12);
    CSOCTASSEPENPALS();
}

/// One-off payments at the end of 2022 (D.L. 144/2022, art. 18).
void one_off_payments_2022() {
    const double month = period.yyyymm();
    if ((month == 202211 || month == 202212) && num(PB24) == 0) {
        ModSWCALM::one_off_2022();
    }
}

void slip_image_steps() {
    if (num(Q970) != 0) {
        NZCedLibPaga::closing_step_Q970();
    }
    if (num(Q274) != 0) {
        NZCedLibPaga::closing_step_Q274();
    }
}

/// Takes the lines behind the first `count` off a list.
void cut_list(std::span<std::string> lines, double& count, double count_before) {
    for (; count > count_before; count -= 1) {
        lines[static_cast<std::size_t>(count)].clear();
    }
}

/// A dropped slip leaves no line on the control lists of those above a ceiling and of the municipal
/// surtax.
void take_back_control_lines() {
    auto& tables = ModSWCALM::run_tables;
    cut_list(tables.list_9999, tables.list_9999_count, closing.ceiling_lines_before);
    cut_list(tables.list_1000, tables.list_1000_count, closing.municipal_lines_before);
}

}  // namespace

void CALCOLACHIUSURA() {
    TRACCIA("CALCOLACHIUSURA");
    open_closing();
    totals_to_record();
    rounding_brought_in();
    surtax_instalments();
    no_income_tax();
    family_allowances();
    set_period_factor();
    contribution_and_tax_pass();
    one_off_payments_2022();
    slip_image_steps();
    cumulative_method();
    net_pay_block();
    year_to_date_block();
    if (tax_state.ConguaglioAnnuale) {
        year_end_block();
    }
    ModSWCALB::instalments_of_next_year();
    // The settlement and what a leaver gets still moved gross and deductions: the net is taken
    // again.
    net_and_rounding();
    if (ModSWCALM::ABORTODIP != 0) {
        take_back_control_lines();
    }
}

}  // namespace ModSwCalm2
