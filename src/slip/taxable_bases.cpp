#include "slip/taxable_bases.h"

#include <algorithm>
#include <array>
#include <string>

#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

Classification classification;

namespace {

constexpr int kFiscal = 0;
constexpr int kSocial = 1;

bool is_collaborator_or_sport() {
    return num(PC23) != 0;
}

// ---- The limit and the part above it ----

/// Class of the line for one base, and its exempt limit; class 0 moves no base.
struct ItemClass {
    double number = 0;
    double limit = 0;
};

/// Part of the line above the limit: of the amount, or of the rate for each unit (Z016 not 0).
double excess(double limit) {
    const double amount = num(Z153);
    if (limit == 0) {
        return amount;
    }
    if (num(Z016) == 0) {
        return amount < limit ? 0 : amount - limit;
    }
    return num(Z152) < limit ? 0 : (num(Z152) - limit) * num(Z151);
}

/// A deduction takes off a base what an earning of its amount would put in.
double with_sign(double value) {
    return classification.negative ? -value : value;
}

/// Month and year of the period where the item's formula stores Q788.
void date_the_mark_Q788() {
    constexpr std::size_t kCellWidth = 11;
    constexpr std::size_t kCells = 100;
    const std::string_view cells =
        ritaglia(area(Area::FOTX), static_cast<std::size_t>(Z051.offset), kCells * kCellWidth);
    if (cells.find("=Q788") == std::string_view::npos) {
        return;
    }
    for (std::size_t position = 1; position <= cells.size(); position += kCellWidth) {
        if (rifila(ritaglia(cells, position, kCellWidth)) == "=Q788") {
            scrivi(Q789, period.month_year());
            return;
        }
    }
}

// ---- Fiscal and social class ----

/// Class 6 under the yearly ceiling leaves the base and goes to the ceiling totals; without the
/// ceiling it is fully taxable.
ItemClass fiscal_class_6() {
    const double amount = num(Z153);
    if (!slip.ceiling_flag) {
        slip.ceiling_totals[3] += amount;
        return {1, num(Z006)};
    }
    if (num(Z011) == 2 && num(Z014) == 0) {
        slip.ceiling_totals[1] += amount;
    }
    slip.ceiling_totals[2] += amount;
    return {};
}

ItemClass fiscal_class() {
    const double declared = num(Z013);
    if (declared == 8) {
        slip.class8_seen = true;
        return {};
    }
    if (declared == 7) {
        return {};
    }
    if (declared == 6) {
        return fiscal_class_6();
    }
    if (declared == 9) {
        slip.ceiling_totals[4] += num(Z153);
        return {};
    }
    const bool second_form = declared == 5 && num(Z006) == 0 && num(Z008) != 0;
    return {declared, num(second_form ? Z008 : Z006)};
}

/// Amounts that make up the difference settled in January (Z157 = 1).
void collect_january_difference() {
    if (num(T463) != 0 || period.month() != 1 || num(Z157) != 1) {
        return;
    }
    const double social = num(Z014);
    const double sign = num(Z011);
    const double amount = num(Z153);
    if (social == 1 || social == 3 || social == 4) {
        slip.RETRIBUZIONEDIFF += sign == 1 ? -amount : amount;
    } else if (social == 2 && sign == 2) {
        slip.RETRIBUZIONEDIFF -= amount;
    }
}

ItemClass social_class() {
    collect_january_difference();
    const bool second_form = num(Z014) == 4 && num(Z007) == 0 && num(Z009) != 0;
    return {num(Z014), num(second_form ? Z009 : Z007)};
}

/// Signed amount of the line: a deduction, and class 2, count against the base.
double signed_amount(double item_class) {
    constexpr double kTakenOff = 2;
    const double amount = num(Z153);
    return item_class == kTakenOff ? -amount : with_sign(amount);
}

/// The whole amount joins the second total and, in the social pass, what is held against the
/// minimum base.
void add_whole_amount(double x) {
    classification.second += x;
    if (classification.mode == kSocial) {
        slip.IMPMINIMALE += x;
    }
}

// ---- Classes ----

/// Class 4: only the part above the limit counts, for the minimum base too.
double class_4(double whole, double above) {
    if (classification.mode == kSocial) {
        slip.IMPMINIMALE += above - whole;
    }
    slip.ESENTEA += above;
    return above;
}

/// Class 3: half of the amount in the first total, the part above the limit in the third.
void class_3(double whole, double limit) {
    const bool social = classification.mode == kSocial;
    classification.first += whole / 2;
    slip.ESENTEA += whole / 2;
    if (limit == 0) {
        slip.ESENTEA = classification.first;
    }
    const double above = with_sign(excess(limit));
    if (social && limit == 0) {
        aggiungi(Q027, above);
        aggiungi(Q028, above);
        scrivi(P468, above);
    }
    classification.third += above;
    slip.ESENTEB += above;
    if (limit == 0) {
        classification.third = classification.first;
        slip.ESENTEB = classification.first;
    }
    if (social && num(F009) == 1) {
        slip.IMPMINIMALE = classification.first;
    }
}

/// Classes 8 and 9: the amount joins, or leaves, the third and second total and the minimum.
void class_8_or_9(double x) {
    classification.third += x;
    classification.second += x;
    slip.IMPMINIMALE += x;
}

/// What a class lets into the first and third total; false when it has seen to them itself.
bool counted_amount(const ItemClass& item, double& x) {
    switch (static_cast<int>(item.number)) {
        case 3:
            class_3(x, item.limit);
            return false;
        case 4:
            x = class_4(x, with_sign(excess(item.limit)));
            return true;
        case 5:
            x = with_sign(excess(item.limit));
            CALCTRASFERTA(x, item.limit);
            return true;
        case 6:
            x = with_sign(excess(item.limit)) / 2;
            CALCTRASFERTA(x, item.limit);
            return true;
        case 7:
            x = with_sign(excess(item.limit)) / 2;
            classification.third += x;
            return true;
        case 8:
            class_8_or_9(x);
            return false;
        case 9:
            class_8_or_9(-x);
            return false;
        default:
            return true;
    }
}

void add_to_base(double x) {
    classification.first += x;
    classification.third += x;
}

// ---- Collaborators: one yearly limit ----

/// The part of the line above the yearly social limit (Z009) goes to P500 and to the year's sum.
void book_above_social_limit(double above) {
    scrivi(P500, above);
    aggiungi(num(QA44) == 0 ? QA33 : Q782, above);
}

/// Class 4: P765 the exempt part, P500 the part above the year's limit.
double yearly_social_excess(double limit) {
    const double amount = num(Z153);
    const double progress = num(Q782) + num(QA44);
    const double room = limit - progress;
    if (progress >= limit) {
        book_above_social_limit(amount);
    } else if (amount <= room) {
        scrivi(P765, amount);
    } else {
        scrivi(P765, room);
        book_above_social_limit(amount - room);
    }
    return excess(limit);
}

/// Class 5: PC29 the exempt part of the line, PC30 the taxed one, QA32 the year's exempt sum.
/// D.Lgs. 36/2021, art. 36, c. 6
double yearly_fiscal_excess(double limit) {
    const double amount = num(Z153);
    const double progress = num(QA32) + num(QA44);
    const double room = limit - progress;
    if (progress >= limit) {
        scrivi(PC30, amount);
        return amount;
    }
    if (amount <= room) {
        scrivi(PC29, amount);
        aggiungi(QA32, amount);
        return amount < limit ? 0 : amount - limit;
    }
    scrivi(PC29, room);
    scrivi(PC30, amount - room);
    scrivi(QA32, limit);
    return amount - room;
}

/// Part of a collaborator's line that counts. The year's limit of contributions is kept by the
/// social pass of class 4, the one of tax by the fiscal pass of class 5; the other pass of the line
/// has no limit and books nothing.
double collaborator_excess(const ItemClass& item) {
    if (num(Z016) == 0) {
        if (item.number == 4 && classification.mode == kSocial) {
            return yearly_social_excess(item.limit);
        }
        if (item.number == 5 && classification.mode == kFiscal) {
            return yearly_fiscal_excess(item.limit);
        }
    }
    return excess(item.limit);
}

/// Class of a collaborator's line: the limit is the yearly one, for fiscal class 5 and social
/// class 4 only.
ItemClass collaborator_class() {
    if (classification.mode == kFiscal) {
        const double number = fiscal_class().number;
        return {number, number == 5 ? num(Z008) : 0};
    }
    const double number = social_class().number;
    return {number, number == 4 ? num(Z009) : 0};
}

// ---- The two passes of a line ----

void classify(int mode, double first, double second, double third) {
    classification.mode = mode;
    classification.first = first;
    classification.second = second;
    classification.third = third;
    if (is_collaborator_or_sport()) {
        NONSOCHECALCOLI_COCOCO_SPORT();
    } else {
        NONSOCHECALCOLI();
    }
}

void add_to_slip_totals() {
    const double amount = num(Z153);
    classification.negative = num(Z011) == 1;
    if (num(Z011) == 0) {
        slip.TOTCOMPETENZE += amount;
    } else if (classification.negative) {
        slip.TOTTRATTENUTE += amount;
    }
}

void fiscal_pass() {
    classify(kFiscal, slip.IMPFISCALE, 0, 0);
    slip.IMPFISCALE = classification.first;
    scrivi(P256, slip.IMPFISCALE);
}

void social_pass() {
    classify(kSocial, slip.IMPSOCIALE1, slip.IMPSOCIALE2, slip.IMPSOCIALE3);
    slip.IMPSOCIALE1 = classification.first - slip.FRANCHIGIALINEA;
    slip.IMPSOCIALE2 = classification.second - slip.FRANCHIGIALINEA;
    slip.IMPSOCIALE3 = classification.third - slip.FRANCHIGIALINEA;
    slip.IMPMINIMALE -= slip.FRANCHIGIALINEA;
    slip.FRANCHIGIALINEA = 0;
}

// ---- Minimum base ----

/// Minimum pay of a day by the kind of insurance (P040).
struct DailyMinimumRow {
    double kind;
    Descriptor minimum;
};
constexpr std::array<DailyMinimumRow, 4> kDailyMinimums{
    {{0, S046}, {1, S028}, {2, S039}, {3, S017}}};

double daily_minimum() {
    if (num(P103) != 0) {
        return num(P103);
    }
    if (num(P168) > 1) {
        return 0;
    }
    const double kind = num(P040);
    for (const DailyMinimumRow& row : kDailyMinimums) {
        if (row.kind == kind) {
            return num(row.minimum);
        }
    }
    return 0;
}

/// Is the minimum of this part-timer counted by the hour?
bool part_time_minimum_applies() {
    if (num(P019) != 1 || num(S072) == 0) {
        return false;
    }
    if (company_is("90000000033")) {
        return num(P242) + num(P243) == 0;
    }
    constexpr double kDaysOfWeek = 6;
    constexpr double kCents = 100;
    return Fix(num(P441) / kDaysOfWeek * kCents) / kCents != 0;
}

/// Apprentices and the like without a minimum of their own.
bool has_no_minimum() {
    const double kind = num(P045);
    return (kind == 4 || kind == 5) && num(P188) != 0 && num(P103) == 0 && num(P100) == 0;
}

double minimum_base(double daily) {
    if (has_no_minimum() || period.additional()) {
        return 0;
    }
    const double base =
        part_time_minimum_applies() ? daily / num(S072) * num(P207) : daily * num(P201);
    return std::max(0.0, base);
}

/// What is held against the minimum: never less than 25 days of a part-timer whose company asks it.
double minimum_test(double daily) {
    constexpr double kDays = 25;
    const double further_base = num(P201) > kDays && num(P019) == 1 ? daily * kDays : 0;
    const bool raised = num(T175) == 1 && num(P168) <= 1 && slip.IMPMINIMALE < further_base;
    return unita(raised ? further_base : slip.IMPMINIMALE);
}

/// Monthly pay that the contract guarantees, less the element P362.
double contractual_monthly_pay() {
    const double element = num(P058);
    const double pay = num(P050) == 0 ? element * hours_divisor() / 100 : element;
    return pay - num(P362);
}

/// Minimum of the hours of a part-timer: the greater of law's and the contract's hour, by P207.
double hourly_minimum(double daily) {
    if (num(P019) != 1 || num(P441) == 0 || num(S072) == 0 || num(P207) == 0) {
        return 0;
    }
    constexpr double kWeeks = 52;
    constexpr double kUsualMonths = 13;
    const double second_daily = num(P104) != 0 ? num(P104) : daily;
    const double months = num(P090) == 0 ? kUsualMonths : num(P090);
    const double contractual = months * contractual_monthly_pay() / (num(P441) * kWeeks);
    const double minimum = std::max(second_daily / num(S072), contractual) * num(P207);
    return num(P169) == 0 ? unita(minimum) : minimum;
}

/// P240: the first social base, not below the minimum. With F041 = 1 the rounding is kept apart and
/// the base goes on as it is.
void write_P240() {
    if (run_tables.F041 == 1) {
        slip.rounded_base = unita(std::max(slip.IMPSOCIALE1, slip.minimum_base));
        scrivi(P240, slip.rounded_base);
        return;
    }
    slip.IMPSOCIALE1 = std::max(slip.IMPSOCIALE1, slip.minimum_base);
    if (num(P169) == 0) {
        slip.IMPSOCIALE1 = unita(slip.IMPSOCIALE1);
    }
    scrivi(P240, slip.IMPSOCIALE1);
}

/// P252: the third social base in the same way, in whole euro always.
void write_P252() {
    const double base = unita(std::max(slip.IMPSOCIALE3, slip.minimum_base));
    if (run_tables.F041 != 1) {
        slip.IMPSOCIALE3 = base;
    }
    scrivi(P252, base);
}

}  // namespace

void AGGIMPFISCSOC() {
    TRACCIA("AGGIMPFISCSOC");
    add_to_slip_totals();
    fiscal_pass();
    social_pass();
    const double daily = daily_minimum();
    slip.minimum_base = minimum_base(daily);
    slip.minimum_test = minimum_test(daily);
    slip.hourly_minimum = hourly_minimum(daily);
    write_P240();
    write_P252();
    scrivi(P250, slip.IMPSOCIALE2);
}

void NONSOCHECALCOLI() {
    TRACCIA("NONSOCHECALCOLI");
    date_the_mark_Q788();
    const ItemClass item = classification.mode == kFiscal ? fiscal_class() : social_class();
    if (item.number == 0) {
        return;
    }
    double x = signed_amount(item.number);
    add_whole_amount(x);
    if (counted_amount(item, x)) {
        add_to_base(x);
    }
}

void NONSOCHECALCOLI_COCOCO_SPORT() {
    TRACCIA("NONSOCHECALCOLI_COCOCO_SPORT");
    date_the_mark_Q788();
    const ItemClass item = collaborator_class();
    if (item.number == 0) {
        return;
    }
    double x = signed_amount(item.number);
    add_whole_amount(x);
    if (item.number == 4) {
        x = class_4(x, with_sign(collaborator_excess(item)));
    } else if (item.number == 5) {
        x = with_sign(collaborator_excess(item));
    }
    add_to_base(x);
}

void CALCTRASFERTA(double excess_of_line, double limit) {
    TRACCIA("CALCTRASFERTA");
    slip.travel_excess += excess_of_line;
    double exempt = num(Z151) * num(Z152);
    if (excess_of_line != 0) {
        aggiungi(Q027, excess_of_line);
        exempt = num(Z016) == 0 ? limit : limit * num(Z151);
    }
    aggiungi(Q028, exempt);
    scrivi(P468, exempt);
}

}  // namespace ModSWCALM
