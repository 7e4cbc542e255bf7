#include "tax/income_tax.h"

#include <algorithm>
#include <string>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "platform/failure.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/bonus.h"
#include "tax/deductions.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using ModSWCALM::BracketTable;
using ModSWCALM::slip;

TaxState tax_state;

namespace {

constexpr double kClosingLimit = 999999.99;  ///< limit of the last bracket, compared exactly
constexpr double kFirstTable = 1;            ///< cell of the first limit
constexpr double kAlternateTable = 21;
constexpr double kTableCells = 20;

/// Where a walk stands: `full_brackets` is the tax of the brackets passed, `residue` the base above
/// the last limit passed, `index` the cell of the limit not reached.
struct Walk {
    double full_brackets = 0;
    double residue = 0;
    double index = 0;
};

/// A base equal to a limit goes on to the next bracket with residue 0. A table that its closing
/// limit does not end is failure 9: the first one does not run on into the alternate one.
Walk walk_brackets(const BracketTable& table, double start, double base) {
    Walk walk{0, base, start};
    double span = table.at(start);
    const double end = start + kTableCells;
    while (table.at(walk.index) != kClosingLimit && base >= table.at(walk.index)) {
        const double limit = table.at(walk.index);
        walk.full_brackets += span * table.at(walk.index + 1) / 100;
        walk.residue = base - limit;
        walk.index += 2;
        if (walk.index >= end) {
            throw platform::Failure(platform::kSubscriptOutOfRange);
        }
        span = table.at(walk.index) - limit;
    }
    return walk;
}

/// Tax of a base on one table. The flat regime (P031 = 2) taxes all of it at the first rate.
double tax_on(const BracketTable& table, double start, double base, bool flat) {
    tax_state.AliquotaPrimoScaglione = table.at(start + 1);
    if (base == 0) {
        return 0;
    }
    const Walk walk = flat ? Walk{0, base, start} : walk_brackets(table, start, base);
    return walk.full_brackets + walk.residue * table.at(walk.index + 1) / 100;
}

bool flat_regime() {
    return num(P031) == 2;
}

bool leaves_on_new_years_eve_2006() {
    const std::string leaving_date = testo(P017);
    return destra(leaving_date, 4) == "2006" && leaving_date.substr(0, 4) == "3112";
}

// ---- Phases of CALCIMPOSTA ----

void clear_deductions() {
    book_further_deduction_on_plan();
    for (const Descriptor& field : kDeductionFields) {
        scrivi(field, 0);
    }
    azzera({QA10, QA11, Q654, Q661, Q662, Q663, Q670, Q772});
    deduction_state.household = {};
    deduction_state.family_of_a_year = 0;
}

/// Months (Q658) and days (Q659) that carry deductions. The slip that adjusts still needs the days
/// without bonus (Q991).
void count_period() {
    if (adjustment_only()) {
        return;
    }
    if (num(P447) == 1) {
        const double instalments = num(P090);
        aggiungi(Q659, num(P449));
        aggiungi(Q658, instalments == 0 ? 1 : Int(12 / instalments));
    } else if (month_counts_for_deductions()) {
        aggiungi(Q659, num(P215));
        if (!tax_state.ConguaglioAnnuale) {
            scrivi(Q991, 0);
        }
        aggiungi(Q658, 1);
    }
}

bool deduction_table_filled_in() {
    constexpr std::array kTable{F400, F401, F402, F403, F404, F405, F406, F407};
    return std::none_of(kTable.begin(), kTable.end(),
                        [](const Descriptor& field) { return num(field) == 0; });
}

/// Zeros that stand for "nothing" in two text fields.
void clean_text_fields() {
    if (rifilato(P722) == std::string(16, '0')) {
        scrivi(P722, "");
    }
    const std::string mark = rifilato(P723);
    if (mark.size() == 1 && mark[0] >= '0' && mark[0] <= '9') {
        scrivi(P723, "");
    }
}

void older_and_family_deductions() {
    const bool year_end = tax_state.ConguaglioAnnuale;
    if (num(P034) != 0 || (num(Q660) > 0 && year_end)) {
        DetrLavoro();
    }
    const double family_mode = num(P586);  // 0 every month, 1 at the year-end only
    if (family_mode == 0 || (family_mode == 1 && year_end)) {
        DetrFamiliari();
    }
    if (year_end) {
        scrivi(Q666, sum_of_deductions());
    } else {
        aggiungi(Q666, sum_of_deductions());
    }
}

void run_deductions() {
    count_period();
    const double formula_mode = num(P583);
    if (formula_mode == 0 || formula_mode == 2) {
        CALCOLADETRAZIONIREDDITO_2022();
    }
    if (MXLIBRERIA::period.yyyymm() >= 202007) {  // D.L. 3/2020, art. 2
        CALCOLA_ULT_DET();
        CALCOLA_ULT_DET_2025();
    }
    if (deduction_table_filled_in()) {
        clean_text_fields();
        older_and_family_deductions();
    }
}

/// Bases of the tax and of the surtaxes; only the first is kept from falling below 0.
void settle_bases() {
    double& base = tax_state.ImponibileCorrente;
    if (tax_state.ConguaglioAnnuale) {
        const double from_elsewhere = num(Q514) + num(Q898);
        tax_state.ImponibileAddizionali = base + from_elsewhere - num(Q509);
        base += from_elsewhere;
    } else {
        tax_state.ImponibileAddizionali = base;
    }
    if (base < 0) {
        base = 0;
    }
}

void apply_scale() {
    const BracketTable& table = slip.TABIRP;
    const double start = tax_state.TabellaAlternativa == 1 ? kAlternateTable : kFirstTable;
    const double base = tax_state.ImponibileCorrente;
    tax_state.AliquotaPrimoScaglione = table.at(start + 1);
    const Walk walk = flat_regime() ? Walk{0, base, start} : walk_brackets(table, start, base);
    tax_state.ResiduoScaglione = walk.residue;
    tax_state.IndiceScaglione = walk.index;
    tax_state.AliquotaMarginale = table.at(walk.index + 1);
    tax_state.ImpostaLorda = tax_state.AliquotaMarginale * walk.residue / 100 + walk.full_brackets;
}

}  // namespace

bool adjustment_only() {
    return num(P118) == 2;
}

bool month_counts_for_deductions() {
    const bool in_service =
        num(P017) == 0 || valore(ritaglia(testo(P017), 3, 2)) == MXLIBRERIA::period.month();
    return in_service && !adjustment_only();
}

double sum_of_deductions() {
    double sum = 0;
    for (const Descriptor& field : kDeductionFields) {
        sum += num(field);
    }
    return sum;
}

void CALCIMPOSTA() {
    MXLIBRERIA::TRACCIA("CALCIMPOSTA");
    clear_deductions();
    if (tax_state.PrimaPassata == 1 && MXLIBRERIA::period.ordinary() && !flat_regime()) {
        run_deductions();
    }
    settle_bases();
    apply_scale();
}

double CalcolaImposta(double& base, std::int16_t& flag) {
    MXLIBRERIA::TRACCIA("CalcolaImposta");
    const bool alternate = leaves_on_new_years_eve_2006();
    flag = alternate ? MXLIBRERIA::kTrue : 0;
    return tax_on(slip.TABIRP, alternate ? kAlternateTable : kFirstTable, base, false);
}

double CalcolaImpostaAP(double& base, std::int16_t& flag) {
    MXLIBRERIA::TRACCIA("CalcolaImpostaAP");
    flag = 0;
    return tax_on(slip.TABIRP, kFirstTable, base, flat_regime());
}

double CalcolaImpostaTFR(double& base, std::int16_t& flag) {
    MXLIBRERIA::TRACCIA("CalcolaImpostaTFR");
    return tax_on(slip.TABIRPAC, flag != 0 ? kAlternateTable : kFirstTable, base, false);
}

}  // namespace ModSWCALB
