#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "context/period.h"
#include "context/trace.h"
#include "contributions/contributions.h"
#include "platform/failure.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "texts/texts.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using ModSWCALM::run_tables;
using ModSWCALM::slip;
using MXLIBRERIA::period;
using MXLIBRERIA::TRACCIA;

namespace {

/// Who is under the ceiling: workers and clerks, and others when both marks are set.
bool under_yearly_ceiling() {
    const bool marked = num(P512) == 1 && num(P511) == 1;
    return num(F427) > 0 && num(S309) > 0 && (num(P040) == 0 || marked);
}

/// Wage above the ceiling and the contribution that remains on it; the employee goes on the list.
void book_excess(double excess) {
    const bool additional = period.additional();
    const Descriptor& wage = additional ? P883 : P881;
    const Descriptor& amount = additional ? P884 : P882;
    if (excess <= 0) {
        return;
    }
    scrivi(wage, excess);
    scrivi(amount, num(wage) * num(S309) / 100);
    aggiungi(Q926, num(wage));
    aggiungi(Q927, num(amount));
    list_above_ceiling(num(F427));
}

/// First of the fields that is not 0; 0 if there is none.
double first_filled(std::span<const Descriptor> fields) {
    for (const Descriptor& field : fields) {
        if (num(field) != 0) {
            return num(field);
        }
    }
    return 0;
}

constexpr double kQualificationNine = 1;   // P040 with nine conventional wages
constexpr double kQualificationSeven = 3;  // P040 with seven

}  // namespace

void list_above_ceiling(double ceiling) {
    const auto next = static_cast<std::size_t>(run_tables.list_9999_count + 1);
    if (next >= run_tables.list_9999.size()) {
        throw platform::Failure(platform::kSubscriptOutOfRange);
    }
    run_tables.list_9999_count += 1;
    run_tables.list_9999[next] = testo(P001) + "-" + rifilato(P002) + " " + rifilato(P003) +
                                 texts::kOverCeiling.bytes() + formato_importo(ceiling);
}

void GESTIONE_MASSIMALE_CONTRIBUTIVO() {
    TRACCIA("GESTIONE_MASSIMALE_CONTRIBUTIVO");
    if (!under_yearly_ceiling()) {
        return;
    }
    const double ceiling = num(F427);
    if (num(Q001) >= ceiling) {
        book_excess(num(P240));
        azzera({P240, P250});
    } else if (num(Q001) + num(P240) > ceiling) {
        const double excess = num(Q001) + num(P240) - ceiling;
        const double excess_decimals = num(Q003) + num(P250) - ceiling;
        book_excess(excess);
        aggiungi(P240, -excess);
        if (excess_decimals > 0) {
            aggiungi(P250, -excess_decimals);
        }
    }
}

void GESTIONE_RETR_CONVENZ_ESTERO() {
    TRACCIA("GESTIONE_RETR_CONVENZ_ESTERO");
    if (num(P090) <= 0) {
        return;
    }
    double wage = 0;
    if (num(P040) == kQualificationNine) {
        wage = first_filled(elenco<S321, S329>);
    } else if (num(P040) == kQualificationSeven) {
        wage = first_filled(elenco<S313, S319>);
    }
    if (wage == 0) {
        return;
    }
    scrivi(P250, wage);
    scrivi(P240, unita(num(P250)));
    slip.IMPSOCIALE2 = num(P250);
}

}  // namespace ModSwCalm2
