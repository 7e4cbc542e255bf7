// Lines of collaborators and of sports collaborators: one limit a year, of contributions and of
// tax.

#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/item_classes.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

/// The part of the line above the yearly social limit (Z009) joins P500 and the year's sum.
void book_above_social_limit(double above) {
    aggiungi(P500, above);
    aggiungi(num(QA44) == 0 ? QA33 : Q782, above);
}

/// Class 4: P765 the exempt part, P500 the part above the year's limit, both of all lines of the
/// slip. The exempt part joins the year's sum Q782 at the closing.
double yearly_social_excess(double limit) {
    const double amount = num(Z153);
    const double progress = num(Q782) + num(QA44) + num(P765);
    const double room = limit - progress;
    if (progress >= limit) {
        book_above_social_limit(amount);
    } else if (amount <= room) {
        aggiungi(P765, amount);
    } else {
        aggiungi(P765, room);
        book_above_social_limit(amount - room);
    }
    return excess(limit);
}

/// Class 5: PC29 the exempt part of the slip's lines, PC30 the taxed one, QA32 the year's exempt
/// sum. D.Lgs. 36/2021, art. 36, c. 6
double yearly_fiscal_excess(double limit) {
    const double amount = num(Z153);
    const double progress = num(QA32) + num(QA44);
    const double room = limit - progress;
    if (progress >= limit) {
        aggiungi(PC30, amount);
        return amount;
    }
    if (amount <= room) {
        aggiungi(PC29, amount);
        aggiungi(QA32, amount);
        return amount < limit ? 0 : amount - limit;
    }
    aggiungi(PC29, room);
    aggiungi(PC30, amount - room);
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

}  // namespace

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
        const double above = with_sign(collaborator_excess(item));
        class_4(x, above);
        x = above;
    } else if (item.number == 5) {
        x = with_sign(collaborator_excess(item));
    }
    add_to_base(x);
}

double collaborator_taxable_part() {
    const double number = class_in_taxable().number;
    if (number != 5) {
        return number == 0 ? 0 : signed_amount(number);
    }
    const double limit = num(Z008);
    if (num(Z016) != 0) {
        return with_sign(excess(limit));
    }
    return num(QA32) + num(QA44) >= limit ? signed_amount(number) : 0;
}

}  // namespace ModSWCALM
