#include "tax/surtaxes.h"

#include <algorithm>
#include <array>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "tax/surtaxes_parts.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

/// A sum that is withheld by instalments.
struct Instalments {
    Descriptor total;
    Descriptor paid;
    Descriptor of_the_month;
    Descriptor number;
    int months_later;  ///< than January the first instalment falls
};
constexpr Instalments kRegionalBalance{Q317, Q339, Q340, Q318, 0};
constexpr Instalments kMunicipalBalance{Q235, Q316, Q320, Q315, 0};
constexpr Instalments kMunicipalAdvance{Q674, Q678, Q675, Q673, 2};

/// Last month's instalment joins what is paid, and this month has none yet.
void book(const Instalments& sum) {
    aggiungi(sum.paid, num(sum.of_the_month));
    azzera({sum.of_the_month});
}

/// Who leaves owes the rest in the month of the termination; one company goes on by instalments.
bool owes_the_rest() {
    return MXLIBRERIA::yyyymm_of(testo(P017)) == period.yyyymm() &&
           !ModSWCALM::company_is("90000000033");
}

/// The month's instalment: the last one takes what the rounding has left.
double instalment(const Instalments& sum) {
    const double rest = arrotonda(num(sum.total) - num(sum.paid));
    if (rest <= 0 || period.month() <= sum.months_later) {
        return 0;
    }
    if (owes_the_rest()) {
        return rest;
    }
    const double number = num(sum.number);
    const double last_month = number + sum.months_later;
    if (number == 0 || period.month() > last_month) {
        return 0;
    }
    return period.month() == last_month ? rest : std::min(rest, num(sum.total) / number);
}

double withhold(const Instalments& sum) {
    scrivi(sum.of_the_month, instalment(sum));
    return num(sum.of_the_month);
}

/// A municipal balance below 0 is the advance that the year did not owe: January pays it.
void pay_out_municipal_balance() {
    constexpr int kJanuary = 1;
    const bool due = num(Q235) < 0 && num(Q316) == 0;
    if (due && period.month() == kJanuary && period.ordinary()) {
        aggiungi(P241, -num(Q235));
        scrivi(Q316, num(Q235));
    }
}

/// yyyymmdd of a date ddmmyyyy; 0 where there is none.
double day_of(const Descriptor& date) {
    const std::string text = testo(date);
    return MXLIBRERIA::yyyymm_of(text) * 100 + valore(ritaglia(text, 1, 2));
}

}  // namespace

double RATAADDIZIONALI() {
    TRACCIA("RATAADDIZIONALI");
    constexpr int kDecember = 12;
    book(kRegionalBalance);
    book(kMunicipalBalance);
    if (period.ordinary()) {
        book(kMunicipalAdvance);
    }
    if (period.additional() && period.month() == kDecember) {
        return 0;
    }
    const double advance = period.ordinary() ? withhold(kMunicipalAdvance) : 0;
    pay_out_municipal_balance();
    return withhold(kRegionalBalance) + advance + withhold(kMunicipalBalance);
}

bool leaves() {
    return num(P017) > 0 && day_of(P017) >= day_of(num(P014) != 0 ? P014 : P013);
}

bool surtaxes_are_recomputed() {
    constexpr int kDecember = 12;
    if (leaves()) {
        return num(P938) != 1;
    }
    const bool left_earlier_employment = num(P017) > 0;
    return !left_earlier_employment || period.month() == kDecember;
}

bool surtaxes_are_charged_at_once() {
    return leaves() && surtaxes_are_recomputed();
}

void surtaxes_of_the_year() {
    if (surtaxes_are_recomputed()) {
        regional_surtax();
        municipal_surtax();
    }
}

void instalments_of_next_year() {
    constexpr int kDecember = 12;
    if (period.month() == kDecember && period.ordinary()) {
        const char* const number = num(T183) == 0 ? "11" : "10";
        scrivi(Q318, number);
        scrivi(Q315, number);
    }
}

}  // namespace ModSWCALB
