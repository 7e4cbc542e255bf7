#include "tax/deductions.h"

#include "context/period.h"
#include "context/utilities.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tax/income_tax.h"

namespace ModSWCALB {

using namespace MXREPOSITORY;

DeductionState deduction_state;

double deduction_periods() {
    const bool collaborator = num(P447) == 1;
    const double instalments = num(P090);
    return collaborator && instalments != 0 ? instalments : 12;
}

double deduction_income() {
    const double income = tax_state.ConguaglioAnnuale
                              ? tax_state.ImponibileCorrente + num(Q514) + num(Q898)
                              : num(P256) * deduction_periods();
    return arrotonda(num(Q669) + income);  // in cents, as the limits of the law are
}

double deduction_days() {
    return num(P447) == 1 ? num(P449) : num(P215);
}

double deduction_days_of_year() {
    const bool leap_year = MXLIBRERIA::BISESTILE(MXLIBRERIA::period.year()) != 0;
    return leap_year && num(F169) == 0 ? 366 : 365;
}

double deduction_quotient(double dividend, double divisor) {
    // Eight decimals tell two quotients of amounts in cents apart and hide the noise of the double.
    const std::string text = arrotondato_testo(dividi(dividend, divisor), 8);
    const double quotient = valore(text.substr(0, text.find('.') + 5));
    return quotient < 0 ? 0 : quotient;
}

}  // namespace ModSWCALB
