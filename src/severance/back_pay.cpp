#include "severance/back_pay.h"

#include <algorithm>
#include <cstdint>

#include "context/trace.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "tax/income_tax.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALB::CalcolaImpostaAP;
using ModSWCALB::tax_state;
using MXLIBRERIA::TRACCIA;

namespace {

/// Percent that the scale takes of the average income of two years, at least the first bracket's.
double rate_of_two_years(double taxable) {
    std::int16_t first_table = 0;
    double average = (num(Q032) + num(Q031)) / 2;
    // The walk leaves the first bracket's rate, whatever the base.
    static_cast<void>(CalcolaImpostaAP(taxable, first_table));
    const double first_bracket = tax_state.AliquotaPrimoScaglione;
    if (average == 0) {
        return first_bracket;
    }
    return std::max(first_bracket, CalcolaImpostaAP(average, first_table) / average * 100);
}

}  // namespace

void ElaboraArretratiAP() {
    TRACCIA("ElaboraArretratiAP");
    if (num(P195) == 0 && num(P248) == 0) {
        return;
    }
    aggiungi(P248, num(P195));
    scrivi(P289, num(P248) - num(P212));
    scrivi(P559, num(P031) == 0 ? 0 : rate_of_two_years(num(P289)));
    scrivi(Q138, num(P559) * num(P289) / 100);
    aggiungi(Q033, num(P289));
    aggiungi(Q034, num(P212));
    aggiungi(Q035, num(Q138));
    aggiungi(P258, num(Q138));
    aggiungi(P259, num(Q138));
}

}  // namespace ModSwCalm2
