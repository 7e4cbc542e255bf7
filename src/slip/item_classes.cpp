#include "slip/item_classes.h"

#include <string>

#include "context/period.h"
#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

// ---- Classes that only set amounts aside ----

/// Classes 6, 8 and 9 are told apart for the yearly ceiling; class 6 under it (the ceiling flag),
/// and 8 and 9 always, leave the base. A deduction of these classes adds its amount as well.
void set_aside_by_class() {
    slip.class8_seen = slip.class8_seen || num(Z013) == 8;
    set_aside(num(Z153));
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

// ---- Classes that count in part ----

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

/// What a class lets into the first total of the signed amount `whole`.
double counted_part(const ItemClass& item, double whole) {
    switch (static_cast<int>(item.number)) {
        case 3:
            return whole / 2;
        case 4:
        case 5:
            return with_sign(excess(item.limit));
        case 6:
        case 7:
            return with_sign(excess(item.limit)) / 2;
        case 0:
        case 8:
        case 9:
            return 0;
        default:
            return whole;
    }
}

/// The signed amount of the line joins the totals as its class lets it in.
void count_by_class(const ItemClass& item, double whole) {
    const double counted = counted_part(item, whole);
    switch (static_cast<int>(item.number)) {
        case 3:
            class_3(whole, item.limit);
            return;
        case 4:
            class_4(whole, counted);
            break;
        case 5:
        case 6:
            CALCTRASFERTA(counted, item.limit);
            break;
        case 7:
            classification.third += counted;
            break;
        case 8:
            class_8_or_9(whole);
            return;
        case 9:
            class_8_or_9(-whole);
            return;
        default:
            break;
    }
    add_to_base(counted);
}

}  // namespace

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

double with_sign(double value) {
    return num(Z011) == 1 ? -value : value;
}

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

void set_aside(double amount) {
    const double declared = num(Z013);
    if (declared == 9) {
        slip.ceiling_totals[4] += amount;
    } else if (declared == 6 && !slip.ceiling_flag) {
        slip.ceiling_totals[3] += amount;
    } else if (declared == 6) {
        slip.ceiling_totals[1] += num(Z011) == 2 && num(Z014) == 0 ? amount : 0;
        slip.ceiling_totals[2] += amount;
    }
}

ItemClass class_in_taxable() {
    const double declared = num(Z013);
    if (declared == 6) {
        return slip.ceiling_flag ? ItemClass{} : ItemClass{1, num(Z006)};
    }
    if (declared >= 7) {
        return {};
    }
    const bool second_form = declared == 5 && num(Z006) == 0 && num(Z008) != 0;
    return {declared, num(second_form ? Z008 : Z006)};
}

ItemClass fiscal_class() {
    set_aside_by_class();
    return class_in_taxable();
}

double employee_taxable_part() {
    const ItemClass item = class_in_taxable();
    return counted_part(item, signed_amount(item.number));
}

ItemClass social_class() {
    collect_january_difference();
    const bool second_form = num(Z014) == 4 && num(Z007) == 0 && num(Z009) != 0;
    return {num(Z014), num(second_form ? Z009 : Z007)};
}

double signed_amount(double item_class) {
    constexpr double kTakenOff = 2;
    const double amount = num(Z153);
    return item_class == kTakenOff ? -amount : with_sign(amount);
}

void add_whole_amount(double x) {
    classification.second += x;
    if (classification.mode == kSocial) {
        slip.IMPMINIMALE += x;
    }
}

void class_4(double whole, double above) {
    if (classification.mode == kSocial) {
        slip.IMPMINIMALE += above - whole;
    }
    slip.ESENTEA += above;
}

void add_to_base(double x) {
    classification.first += x;
    classification.third += x;
}

void NONSOCHECALCOLI() {
    TRACCIA("NONSOCHECALCOLI");
    date_the_mark_Q788();
    const ItemClass item = classification.mode == kFiscal ? fiscal_class() : social_class();
    if (item.number == 0) {
        return;
    }
    const double whole = signed_amount(item.number);
    add_whole_amount(whole);
    count_by_class(item, whole);
}

void CALCTRASFERTA(double excess_of_line, double limit) {
    TRACCIA("CALCTRASFERTA");
    slip.travel_excess += excess_of_line;
    double exempt = with_sign(num(Z151) * num(Z152));
    if (excess_of_line != 0) {
        aggiungi(Q027, excess_of_line);
        exempt = with_sign(num(Z016) == 0 ? limit : limit * num(Z151));
    }
    aggiungi(Q028, exempt);
    scrivi(P468, exempt);
}

}  // namespace ModSWCALM
