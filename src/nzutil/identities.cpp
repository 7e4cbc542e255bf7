#include "nzutil/identities.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "installation/tool_error.h"
#include "nzutil/bonus_due.h"
#include "nzutil/slip_law.h"
#include "nzutil/slip_reliefs.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

using Outcome = std::optional<Mismatch>;

constexpr double kAdjustmentOnly = 2;  // P118
constexpr double kFlatTax = 2;         // P031

std::string shown_as(std::string_view what, double amount) {
    return std::string(what) + " " + arrotondato_testo(amount, 2);
}

/// Both amounts in cents must be the same.
Outcome equal(std::string_view what, double expected, double found) {
    if (std::llround(expected * 100) == std::llround(found * 100)) {
        return std::nullopt;
    }
    return Mismatch{shown_as(what, expected), shown_as(what, found)};
}

Outcome first_of(std::initializer_list<Outcome> outcomes) {
    for (const Outcome& outcome : outcomes) {
        if (outcome) {
            return outcome;
        }
    }
    return std::nullopt;
}

Outcome broken(std::string_view what, double expected, double found) {
    return Mismatch{shown_as(what, expected), shown_as(what, found)};
}

double lines_of_kind(const CalculatedSlip& slip, double kind) {
    double sum = 0;
    for (const SlipLine& line : slip.lines()) {
        sum += line.of_item(Z011) == kind ? line.amount : 0;
    }
    return sum;
}

// ---- Gross, deductions, net ----

/// The one-off of 2022 is of the slip that marks its month in PB25 (D.L. 144/2022, art. 18).
double one_off_2022(const CalculatedSlip& slip) {
    return slip.year() == 2022 && slip.now(PB25) == slip.month() ? slip.now(QA24) : 0;
}

/// Company 11 moves the gross by Q090, so that the net comes to Q089, or down to Q088.
double fixed_net_move(const CalculatedSlip& slip) {
    if (!slip.company_is("90000000011") || slip.additional()) {
        return 0;
    }
    const double moved = slip.now(Q090);
    const double net = slip.now(P241) - slip.now(P259);
    return slip.now(Q089) != 0 && net - moved < slip.now(Q089) ? moved : -moved;
}

/// The ordinary slip of the leaving month pays the severance.
bool pays_severance(const CalculatedSlip& slip) {
    return !slip.additional() && slip.now(P017) > 0 &&
           slip.text(P017).substr(2) == slip.text(Q179).substr(2);
}

/// An advance on the severance fund: asked for on the slip, and its tax.
struct AdvanceFields {
    Descriptor request;
    Descriptor tax;
};
constexpr std::array<AdvanceFields, 4> kAdvanceFields{
    {{P454, Q047}, {P455, Q253}, {P456, Q257}, {P956, Q987}}};

double tax_on_advances_of_the_slip(const CalculatedSlip& slip) {
    double sum = 0;
    for (const AdvanceFields& advance : kAdvanceFields) {
        sum += slip.now(advance.request) != 0 ? slip.now(advance.tax) : 0;
    }
    return sum;
}

/// Fund and revaluation; taxes on advances come back unless they are more than the whole tax.
double severance_paid(const CalculatedSlip& slip) {
    if (!pays_severance(slip)) {
        return 0;
    }
    const double advance_taxes = slip.sum({Q044, Q047, Q253, Q257, Q987});
    const bool come_back = slip.now(Q969) == 0 && slip.now(P031) != 0;
    return slip.sum({Q264, Q038, Q270, Q039}) - slip.now(Q236) + (come_back ? advance_taxes : 0);
}

double severance_taken_off(const CalculatedSlip& slip) {
    return pays_severance(slip) ? slip.sum({Q129, Q038, Q373, Q046, Q252, Q256, Q978}) : 0;
}

// ---- Surtaxes ----

/// A balance or an advance that is withheld by instalments.
struct InstalmentFields {
    Descriptor total;
    Descriptor paid;
    Descriptor of_the_month;
    Descriptor number;
    int months_later;
    bool ordinary_only;  ///< formed and booked on ordinary slips alone
};
constexpr std::array<InstalmentFields, 3> kInstalments{{{Q317, Q339, Q340, Q318, 0, false},
                                                        {Q235, Q316, Q320, Q315, 0, false},
                                                        {Q674, Q678, Q675, Q673, 2, true}}};

/// A slip of adjustment only forms none, and leaves those of the month before as they stand.
bool forms_instalments(const CalculatedSlip& slip, const InstalmentFields& fields) {
    return slip.now(P118) != kAdjustmentOnly && !(fields.ordinary_only && slip.additional());
}

double instalments_of_the_slip(const CalculatedSlip& slip) {
    double sum = 0;
    for (const InstalmentFields& fields : kInstalments) {
        sum += forms_instalments(slip, fields) ? slip.now(fields.of_the_month) : 0;
    }
    return sum;
}

/// ddmmyyyy as yyyymmdd, blank where there is none.
std::string day_of(const CalculatedSlip& slip, const Descriptor& date) {
    const std::string text = slip.text(date);
    return slip.now(date) == 0 ? "" : text.substr(4, 4) + text.substr(2, 2) + text.substr(0, 2);
}

/// A leaving date before the start is of an earlier employment.
bool settles_leaver(const CalculatedSlip& slip) {
    return slip.settles_year() && slip.now(P017) > 0 &&
           day_of(slip, P017) >= day_of(slip, slip.now(P014) != 0 ? P014 : P013);
}

/// Who leaves is charged with the year's surtaxes, or gets the advance back, on the slip itself.
bool settles_surtaxes_of_leaver(const CalculatedSlip& slip) {
    return settles_leaver(slip) && slip.now(P938) != 1;
}

double surtaxes_charged(const CalculatedSlip& slip) {
    if (!settles_surtaxes_of_leaver(slip)) {
        return 0;
    }
    const double regional = slip.moved(Q342) != 0 ? slip.now(Q342) : 0;
    return regional + std::max(0.0, slip.now(Q343));
}

/// January's ordinary slip pays a municipal balance below 0; a leaver's slip pays a surtax below 0,
/// and the advance that was more than the whole surtax.
double surtaxes_paid_out(const CalculatedSlip& slip) {
    double sum = 0;
    if (slip.month() == 1 && forms_instalments(slip, kInstalments[2]) && slip.now(Q235) < 0 &&
        slip.was(Q316) == 0) {
        sum -= slip.now(Q235);
    }
    if (settles_surtaxes_of_leaver(slip)) {
        sum += std::max(0.0, -slip.now(Q343));
        const bool given_up = slip.was(Q674) > 0 && slip.now(Q674) == 0 && slip.now(Q343) >= 0;
        sum += given_up ? slip.sum({Q678, Q675}) : 0;
    }
    return sum;
}

/// What has been withheld with the month's instalment: nothing is withheld twice or beyond the
/// total, and the last month leaves no cent.
Outcome withheld_of(const CalculatedSlip& slip, const InstalmentFields& fields) {
    if (!forms_instalments(slip, fields)) {
        return std::nullopt;
    }
    const double month = slip.now(fields.of_the_month);
    const double total = slip.was(fields.total);
    const double withheld = slip.now(fields.paid) + month;
    const bool pays_out = total < 0;
    const Outcome booked =
        pays_out ? std::nullopt
                 : equal(fields.paid.name(), slip.was(fields.paid) + slip.was(fields.of_the_month),
                         slip.now(fields.paid));
    const bool too_much = month > 0 && withheld > total + 0.005;
    const bool last = slip.now(P118) != 2 && slip.was(fields.number) > 0 && total > 0 &&
                      slip.month() == slip.was(fields.number) + fields.months_later;
    const bool december = slip.month() == 12 && slip.now(P017) == 0 &&
                          slip.was(fields.number) + fields.months_later < 12;
    return first_of(
        {booked, too_much ? broken(fields.of_the_month.name(), total, withheld) : std::nullopt,
         last ? equal(fields.total.name(), std::max(total, slip.now(fields.paid)), withheld)
              : std::nullopt,
         december ? equal(fields.of_the_month.name(), 0, month) : std::nullopt});
}

Outcome surtax(const CalculatedSlip& slip) {
    for (const InstalmentFields& fields : kInstalments) {
        if (const Outcome wrong = withheld_of(slip, fields)) {
            return wrong;
        }
    }
    return std::nullopt;
}

Outcome gross(const CalculatedSlip& slip) {
    const double ordinary_or_additional =
        slip.additional() ? slip.now(PA50) + slip.now(P924) : slip.now(PA49) + slip.now(P922);
    const double expected = lines_of_kind(slip, 0) +
                            slip.sum({Q139, Q140, Q130, P022, Q280, PC33, QA41, Q772, Q022}) +
                            one_off_2022(slip) + ordinary_or_additional + fixed_net_move(slip) +
                            severance_paid(slip) + surtaxes_paid_out(slip);
    return equal("P241", expected, slip.now(P241));
}

Outcome deductions(const CalculatedSlip& slip) {
    const double ordinary_or_additional =
        slip.additional() ? slip.now(P764) + slip.now(PA53) : slip.now(P762) + slip.now(PA52);
    const double expected = lines_of_kind(slip, 1) +
                            slip.sum({Q162, Q224, Q137, P535, PB56, Q138, Q973, Q021}) +
                            ordinary_or_additional + tax_on_advances_of_the_slip(slip) +
                            severance_taken_off(slip) + instalments_of_the_slip(slip) +
                            surtaxes_charged(slip) + slip.sum({Q285, Q288, QA08, QA11, QA38});
    return equal("P259", expected, slip.now(P259));
}

bool paid_without_rounding(const CalculatedSlip& slip) {
    const bool dismissed = slip.now(P054) == 1 && !slip.company_is("90000000011");
    return dismissed || slip.company(T184) == 1;
}

/// What the rounding may have added: nothing, up to the euro, or to the ten (TA43).
Outcome rounding_in_bounds(const CalculatedSlip& slip) {
    const double carried = slip.now(Q163);
    if (paid_without_rounding(slip)) {
        return equal("Q163", 0, carried);
    }
    if (slip.company(TA43) == 1) {
        const bool last_digit = std::fmod(slip.now(Q173), 5) == 0;
        return carried > -5 && carried <= 4 && last_digit ? std::nullopt
                                                          : broken("Q163", 0, carried);
    }
    const bool whole = slip.now(Q173) == Int(slip.now(Q173));
    return carried >= 0 && carried < 1 && whole ? std::nullopt : broken("Q163", 0, carried);
}

Outcome net(const CalculatedSlip& slip) {
    const double net = arrotonda(slip.now(P241) - slip.now(P259));
    if (net < 0) {
        return first_of({equal("Q173", 0, slip.now(Q173)), equal("Q163", -net, slip.now(Q163))});
    }
    return first_of(
        {equal("Q173", net + slip.now(Q163), slip.now(Q173)), rounding_in_bounds(slip)});
}

Outcome carry(const CalculatedSlip& slip) {
    const double brought_in = slip.company(T184) == 1 ? 0 : slip.was(Q163);
    return equal("Q162", brought_in, slip.now(Q162));
}

// ---- Contributions ----

Outcome contributions(const CalculatedSlip& slip) {
    const double further = slip.now(P849) == 1 ? std::max(0.0, slip.now(P852)) : 0;
    const double above_bracket = slip.now(Q167) == 1 ? -slip.now(P221) : slip.now(P221);
    const Outcome to_date = first_of({
        equal("Q224", slip.sum({P253, P254, P255}), slip.now(Q224)),
        equal("Q005", slip.was(Q005) + slip.now(Q224) + further - premium_into_taxable(slip),
              slip.now(Q005)),
        equal("Q004", slip.was(Q004) + above_bracket, slip.now(Q004)),
    });
    const std::optional<EmployeeContributions> law = employee_contributions(slip);
    if (to_date || !law) {
        return to_date;
    }
    return first_of(
        {equal("Q224", law->owed, slip.now(Q224)),
         equal("Q225", slip.now(Q224) + law->reductions - law->to_fund, slip.now(Q225))});
}

// ---- Taxable ----

/// The part of the taxable that the lines give, with the contributions taken off.
double taxable_of_lines(const CalculatedSlip& slip, double lines, double separate) {
    const double with_premiums = lines + premium_into_taxable(slip) + premiums_in_taxable(slip);
    double taxable = slip.now(P031) == 0 ? 0 : with_premiums;
    if (slip.collaborator() && slip.now(P957) == 1) {
        taxable += slip.now(P451);
    }
    const bool employer_pays = slip.now(PB20) != 0 && slip.now(PB20) != 2;
    taxable += employer_pays ? 0 : slip.sum({P212, Q053});
    taxable += slip.now(P794);
    if (slip.now(P118) != kAdjustmentOnly) {
        taxable += separate - slip.now(Q224);
    }
    return std::max(0.0, taxable);
}

Outcome taxable(const CalculatedSlip& slip) {
    const double counted = slip.now(P031) != 0 ? slip.now(P256) : slip.now(P256) - slip.now(Q224);
    const double wage = slip.now(P528) > 0 ? unita(slip.now(P250)) : slip.now(P240);
    const Outcome to_date = first_of({
        equal("Q013", slip.was(Q013) + counted, slip.now(Q013)),
        equal("Q001", slip.was(Q001) + wage, slip.now(Q001)),
        equal("Q003", slip.was(Q003) + slip.now(P250), slip.now(Q003)),
    });
    const std::optional<double> lines = fiscal_base(slip);
    const std::optional<double> separate = contributions_on_separate_amounts(slip);
    if (to_date || !lines || !separate) {
        return to_date;
    }
    double expected = taxable_of_lines(slip, *lines, *separate) + slip.sum({P244, P245});
    if (slip.now(P118) == kAdjustmentOnly) {
        expected = std::max(0.0, expected + *separate - slip.now(Q224));
    }
    return equal("P256", expected, slip.now(P256));
}

// ---- Reliefs ----

Outcome premiums(const CalculatedSlip& slip) {
    const double tax = slip.now(slip.additional() ? P764 : P762);
    const Outcome sums = first_of({
        equal("P761", slip.now(P759) - slip.now(P760), slip.now(P761)),
        equal("P762/P764", arrotonda(slip.yearly(F414) * slip.now(P761) / 100), tax),
        equal("Q776", slip.was(Q776) + slip.now(P759), slip.now(Q776)),
        equal("Q777", slip.was(Q777) + slip.now(P760), slip.now(Q777)),
        equal("Q778", slip.was(Q778) + slip.now(P761), slip.now(Q778)),
        equal("Q779", slip.was(Q779) + tax, slip.now(Q779)),
    });
    const std::optional<RelievedPremium> law = relieved_premium(slip);
    if (sums || !law) {
        return sums;
    }
    return first_of({equal("P759", law->gross, slip.now(P759)),
                     equal("P760", law->contributions, slip.now(P760))});
}

Outcome tips(const CalculatedSlip& slip) {
    return first_of({
        equal("PB56", arrotonda(slip.yearly(F453) * slip.now(PB55) / 100), slip.now(PB56)),
        equal("PB55", slip.now(PC23) != 0 ? slip.now(PB55) : tips_of_lines(slip), slip.now(PB55)),
        equal("QA27", slip.was(QA27) + slip.now(PB55), slip.now(QA27)),
        equal("QA28", slip.was(QA28) + slip.now(PB56), slip.now(QA28)),
    });
}

Outcome reliefs(const CalculatedSlip& slip) {
    return first_of({premiums(slip), tips(slip)});
}

// ---- Yearly ceiling ----

Outcome ceiling(const CalculatedSlip& slip) {
    const double excess = slip.additional() ? slip.now(P883) : slip.now(P881);
    if (excess == 0 || slip.entertainer()) {
        return std::nullopt;
    }
    const Outcome kept = first_of(
        {equal("Q926", slip.was(Q926) + excess, slip.now(Q926)),
         slip.now(P240) > 0 ? equal("Q001", slip.yearly(F427), slip.now(Q001)) : std::nullopt});
    const std::optional<double> wage = social_base(slip);
    if (kept || !wage) {
        return kept;
    }
    return equal("P240", unita(*wage) - excess, slip.now(P240));
}

// ---- Tax ----

/// An excess of the further deduction that the last slip has put on a plan counts as withheld.
double further_deduction_on_plan(const CalculatedSlip& slip) {
    return slip.month() == 1 ? 0 : std::max(0.0, slip.was(Q277) - slip.was(Q276));
}

Outcome tax(const CalculatedSlip& slip) {
    const double settled = slip.now(Q021) - slip.now(Q022);
    return first_of({
        equal("Q014", slip.was(Q014) + slip.now(Q137) + settled + further_deduction_on_plan(slip),
              slip.now(Q014)),
        equal("P258",
              slip.sum({Q137, Q138}) + tax_on_advances_of_the_slip(slip) +
                  (pays_severance(slip) ? slip.now(Q129) : 0),
              slip.now(P258)),
        equal("Q801", slip.was(Q801) + slip.now(P793), slip.now(Q801)),
    });
}

Outcome adjustment(const CalculatedSlip& slip) {
    const std::optional<double> due = tax_of_the_year(slip);
    if (!slip.settles_year() || !due) {
        return std::nullopt;
    }
    const bool suspended = slip.now(P792) == 1;
    const bool taken_as_paid = !suspended && slip.month() == 12 && !slip.entertainer();
    const double withheld = slip.was(Q014) + further_deduction_on_plan(slip) + slip.now(Q515) +
                            (suspended || taken_as_paid ? slip.was(Q801) : 0);
    const double refund = arrotonda(std::max(0.0, withheld - *due));
    const double charge = arrotonda(std::max(0.0, *due - withheld));
    return first_of({
        equal("Q022", refund, slip.now(Q022)),
        equal("Q021", suspended ? 0 : charge, slip.now(Q021)),
        equal("P793", suspended ? charge : 0, slip.now(P793)),
    });
}

// ---- Employment deduction ----

/// Does the slip take employment deductions, and count its days?
bool takes_deductions(const CalculatedSlip& slip) {
    const bool taxed_now = slip.settles_year() || slip.now(P118) != kAdjustmentOnly;
    return !slip.additional() && slip.now(P031) != kFlatTax && taxed_now;
}

double days_counted(const CalculatedSlip& slip) {
    if (slip.now(P118) == kAdjustmentOnly) {
        return 0;
    }
    if (slip.collaborator()) {
        return slip.now(P449);
    }
    const bool in_service =
        slip.now(P017) == 0 || valore(slip.text(P017).substr(2, 2)) == slip.month();
    return in_service ? slip.now(P215) : 0;
}

Outcome deduction_months(const CalculatedSlip& slip) {
    const bool new_year = slip.month() == 1;
    const double days_before = new_year ? 0 : slip.was(Q659);
    const double before = new_year ? 0 : slip.was(Q656);
    if (!takes_deductions(slip)) {
        return first_of(
            {equal("Q659", days_before, slip.now(Q659)), equal("Q656", before, slip.now(Q656))});
    }
    constexpr double kDaysOfYear = 365;
    const double days = days_before + days_counted(slip);
    if (slip.now(P583) != 0 && slip.now(P583) != 2) {
        return equal("Q659", days, slip.now(Q659));
    }
    const bool settles = slip.settles_year();
    const double due = settles ? deduction_of_the_year(slip) : deduction_of_the_month(slip);
    const Outcome month_share =
        slip.company(T184) == 1 && !settles ? std::nullopt : equal("Q657", due, slip.now(Q657));
    return first_of({
        equal("Q659", settles ? std::min(kDaysOfYear, days) : days, slip.now(Q659)),
        month_share,
        equal("Q656", settles ? slip.now(Q657) : before + slip.now(Q657), slip.now(Q656)),
    });
}

// ---- Bonuses ----

/// Does the slip pay bonuses? Without income tax it does not.
bool pays_bonuses(const CalculatedSlip& slip) {
    const bool by_date = slip.year() * 100 + slip.month() >= 201405;
    return by_date && slip.now(P118) != kAdjustmentOnly &&
           (slip.now(P031) != 0 || slip.now(Q274) != 0);
}

/// In July 2020, or with the first slip behind it, another sum begins in the fields of the bonus.
double bonus_before(const CalculatedSlip& slip) {
    const bool first = slip.month() == 7 || (slip.month() > 7 && slip.was(Q171) < 7);
    const bool begins = slip.year() == 2020 && first && !slip.additional() && pays_bonuses(slip) &&
                        slip.now(P084) == 0;
    return begins ? 0 : slip.was(Q279);
}

Outcome bonus(const CalculatedSlip& slip) {
    const double paid = slip.sum({P022, Q280}) - slip.now(Q281);
    const Outcome to_date = equal("Q279", bonus_before(slip) + paid, slip.now(Q279));
    const bool judged = pays_bonuses(slip) && !slip.additional() && slip.now(P031) != kFlatTax;
    if (to_date || !judged || slip.now(P084) != 0) {
        return to_date;
    }
    if (slip.settles_year()) {
        return equal("Q279", bonus_due(slip), slip.sum({Q278, Q279}));
    }
    const std::optional<double> month = bonus_of_the_month(slip);
    return month ? equal("P022", *month, slip.now(P022)) : std::nullopt;
}

/// Excess above the year's stays in the year's deductions: its plan takes it back.
Outcome further_deduction(const CalculatedSlip& slip) {
    if (!takes_deductions(slip) || slip.now(P084) != 0) {
        return std::nullopt;
    }
    if (slip.settles_year()) {
        return slip.sum({Q276, Q277, QA10}) == 0
                   ? std::nullopt
                   : first_of({equal("Q276", further_deduction_due(slip), slip.now(Q276)),
                               equal("Q277", slip.sum({Q276, QA10}), slip.now(Q277))});
    }
    const double before = slip.month() == 1 ? 0 : slip.was(Q276);
    return first_of({equal("Q277", further_deduction_of_the_month(slip), slip.now(Q277)),
                     equal("Q276", before + slip.now(Q277), slip.now(Q276))});
}

Outcome integrative_sum(const CalculatedSlip& slip) {
    const Outcome to_date =
        equal("QA34", slip.was(QA34) + slip.sum({PC33, QA41}) - slip.now(QA42), slip.now(QA34));
    if (to_date || slip.year() < 2025 || slip.now(PC32) != 0 || !pays_bonuses(slip)) {
        return to_date;
    }
    return slip.settles_year() ? equal("QA34", integrative_sum_due(slip), slip.now(QA34))
                               : equal("PC33", integrative_sum_of_the_month(slip), slip.now(PC33));
}

/// Total, paid, and what this slip takes, of a sum that is given back.
struct PlanFields {
    Descriptor excess;
    Descriptor total;
    Descriptor paid;
    std::vector<Descriptor> taken;
};

/// What the slip takes is paid of the total; nobody pays more than that. What a leaver's slip takes
/// of an old plan is not in the new total.
Outcome plan(const CalculatedSlip& slip, const PlanFields& fields) {
    constexpr double kLeast = 0.10;
    const double taken = slip.sum(fields.taken);
    const bool begins = slip.settles_year() && slip.now(fields.excess) >= kLeast;
    const std::string_view paid = fields.paid.name();
    if (slip.now(fields.paid) > slip.now(fields.total)) {
        return broken(paid, slip.now(fields.total), slip.now(fields.paid));
    }
    if (begins && settles_leaver(slip)) {
        return equal(paid, slip.now(fields.excess), slip.now(fields.paid));
    }
    return equal(paid, (begins ? 0 : slip.was(fields.paid)) + taken, slip.now(fields.paid));
}

Outcome restitution(const CalculatedSlip& slip) {
    return first_of({plan(slip, {Q281, Q284, Q286, {Q285, Q288}}),
                     plan(slip, {QA10, QA05, QA09, {QA08, QA11}}),
                     plan(slip, {QA42, QA37, QA39, {QA38}})});
}

// ---- Severance ----

/// A slip of adjustment only, of who is not dismissed, leaves no accrual and no revaluation (Q041,
/// Q040) in the record.
bool leaves_no_severance(const CalculatedSlip& slip) {
    return slip.now(P118) == kAdjustmentOnly && slip.now(P054) == 0;
}

/// Accrual of the year and its contribution.
Outcome severance_accrual(const CalculatedSlip& slip) {
    constexpr double kUsualDivisor = 13.5;
    const double divisor = slip.now(P467) != 0 ? slip.now(P467) : kUsualDivisor;
    const bool in_packet = slip.now(P921) != 0 || slip.now(PA48) != 0;
    const bool emptied = leaves_no_severance(slip);
    return first_of({
        equal("Q037", slip.was(Q037) + (in_packet ? 0 : slip.now(P260)), slip.now(Q037)),
        equal("Q041", emptied ? 0 : slip.now(Q264) + slip.now(Q038), slip.now(Q041)),
        equal("Q264", arrotonda(slip.now(Q037) / divisor) - slip.now(Q038), slip.now(Q264)),
        equal("Q265", slip.sum({Q046, Q252, Q256, Q978}), slip.now(Q265)),
        slip.now(Q264) < 0 && slip.now(Q038) > 0 ? broken("Q264", 0, slip.now(Q264)) : std::nullopt,
    });
}

/// What is left of the fund is what the leaver's slip pays. Where taxes on advances are more than
/// the whole tax nothing is due.
Outcome severance(const CalculatedSlip& slip) {
    const double left = slip.sum({Q264, Q039, Q270}) - slip.sum({Q265, Q236, Q121, Q058});
    const Outcome sums =
        first_of({severance_accrual(slip), equal("Q268", left, slip.now(Q268)),
                  slip.now(Q058) < 0 ? broken("Q058", 0, slip.now(Q058)) : std::nullopt});
    if (sums || !pays_severance(slip)) {
        return sums;
    }
    const bool emptied = leaves_no_severance(slip);
    return first_of({
        equal("Q040", emptied ? 0 : slip.now(Q270), slip.now(Q040)),
        equal("Q373", slip.now(Q121), slip.now(Q373)),
        equal("Q268", severance_paid(slip) - severance_taken_off(slip), slip.now(Q268)),
    });
}

// ---- Pension fund ----

/// Does the fund take all that the slip accrues, and has it done so since the year began?
bool gives_all(const CalculatedSlip& slip) {
    const bool fund_takes_all = slip.fund(R005) == 100 && slip.fund(R009) == 0 &&
                                slip.fund(R060) == 0 && slip.now(P184) == 0;
    const bool new_year = slip.was(Q037) == 0 && slip.was(Q001) == 0 && slip.was(Q236) == 0;
    const double kept_before = slip.was(Q041) - slip.was(Q038) - slip.was(Q236);
    return fund_takes_all && !moves_accrual(slip) &&
           (new_year || (slip.was(Q041) != 0 && std::llround(kept_before * 100) == 0));
}

/// What goes to the fund on the slip, and its sums; what is left of the accrual of who gives all is
/// the contribution that it bears. The employer's sum restarts with each period of the fund.
Outcome pension_fund(const CalculatedSlip& slip) {
    const std::optional<FundShares> due = fund_shares(slip);
    if (!slip.in_a_fund() || slip.fund(R061) == 1) {
        return std::nullopt;
    }
    const double before = slip.now(Q314) - slip.now(P407);
    const bool goes_on = std::llround((before - slip.was(Q314)) * 100) == 0;
    const bool all_given = !leaves_no_severance(slip) && gives_all(slip);
    return first_of({
        due ? equal("P407", due->employer, slip.now(P407)) : std::nullopt,
        equal("Q236", slip.was(Q236) + slip.now(Q201), slip.now(Q236)),
        equal("Q314", goes_on ? slip.was(Q314) + slip.now(P407) : slip.now(P407), slip.now(Q314)),
        all_given ? equal("Q041", slip.now(Q038) + slip.now(Q236), slip.now(Q041)) : std::nullopt,
    });
}

// ---- Dropped slips ----

/// What a slip works out: the record of a dropped one keeps all of it, and its lines.
Outcome drop(const CalculatedSlip& slip) {
    constexpr std::array kResults{P240, P241, P250, P253, P256, P257, P258, P259, Q001,
                                  Q003, Q004, Q005, Q013, Q014, Q021, Q022, Q137, Q162,
                                  Q163, Q171, Q172, Q173, Q224, Q225, Q801, Q926};
    for (const Descriptor& field : kResults) {
        if (const Outcome moved = equal(field.name(), slip.was(field), slip.now(field))) {
            return moved;
        }
    }
    for (const Descriptor& line : elenco<Q401, Q500>) {
        if (slip.text(line) != slip.text_before(line)) {
            return Mismatch{slip.text_before(line), slip.text(line)};
        }
    }
    return std::nullopt;
}

constexpr Identity kDrop{"drop", drop};
constexpr auto kIdentities = std::to_array<Identity>({{"gross", gross},
                                                      {"deductions", deductions},
                                                      {"net", net},
                                                      {"carry", carry},
                                                      {"contributions", contributions},
                                                      {"taxable", taxable},
                                                      {"reliefs", reliefs},
                                                      {"ceiling", ceiling},
                                                      {"tax", tax},
                                                      {"adjustment", adjustment},
                                                      {"deduction_months", deduction_months},
                                                      {"bonus", bonus},
                                                      {"further_deduction", further_deduction},
                                                      {"integrative_sum", integrative_sum},
                                                      {"restitution", restitution},
                                                      {"severance", severance},
                                                      {"pension_fund", pension_fund},
                                                      {"surtax", surtax}});

void check(const Identity& identity, const CalculatedSlip& slip,
           const std::map<std::string, std::string>& switched_off,
           std::vector<Difference>& differences) {
    if (switched_off.contains(identity.name)) {
        return;
    }
    if (const Outcome wrong = identity.check(slip)) {
        differences.push_back(
            {fill(texts::kToolPlaceIdentity, {identity.name}), wrong->expected, wrong->found});
    }
}

}  // namespace

std::vector<Difference> check_identities(const CalculatedSlip& slip, bool calculated,
                                         const std::map<std::string, std::string>& switched_off) {
    std::vector<Difference> differences;
    if (!calculated) {
        check(kDrop, slip, switched_off, differences);
        return differences;
    }
    for (const Identity& identity : kIdentities) {
        check(identity, slip, switched_off, differences);
    }
    return differences;
}

bool is_identity(const std::string& name) {
    return name == kDrop.name || std::ranges::any_of(kIdentities, [&](const Identity& identity) {
               return name == identity.name;
           });
}

}  // namespace nzutil
