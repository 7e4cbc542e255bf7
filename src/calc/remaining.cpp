#include "calc/remaining.h"

#include "calc/dates.h"
#include "calc/phases.h"
#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

EmployerPercentages employer_percentages;

void clear_all_zero_texts() {
    blank_all_zero({P051, PA46, P977, P966, P180, P962, P963, P961, P867, P536, P805});
    blank_all_zero(elenco<P816, P819>);
    blank_all_zero({P946, P951, P795});
    blank_all_zero(elenco<P835, P839>);
    blank_all_zero(
        {P898, P899, P824, P769, P770, P789, P790, P784, P785, P931, P933, P796, P815, P942, P779});
    // Tax codes of the relatives: one dated block of four fields each.
    blank_all_zero(elenco<P634, P718, 4>);
    blank_all_zero({PA55, PA60});
    // The other texts that stand in front of a date. P722 is cleaned with the deductions.
    blank_all_zero({Q843, PA88, PA90, PA92, PA94});
}

void first_blanking_list() {
    svuota(elenco<Q510, Q513>);
    svuota({Q519, Q191});
    svuota(elenco<Q616, Q633>);
    svuota(elenco<Q559, Q565>);
    svuota({Q579, P496});
    svuota(elenco<P514, P517>);
    svuota({P519, P557, P556});
}

void second_blanking_list() {
    svuota({PA66, PA67, PA70, PA73, PA76, PA79});
    for (const Descriptor& date : {PA68, PA69, PA71, PA72, PA74, PA75, PA77, PA78}) {
        scrivi(date, "00000000");
    }
    azzera({PA96});
}

void year_end_clearing() {
    const Date leaving = Date::of(testo(P017));
    if (!leaving.given() || period.yyyymm() <= leaving.yyyymm() || num(Q055) == 0) {
        return;
    }
    if (leaving.month == 12) {
        azzera(elenco<QA05, QA11>);
    } else if (num(QA06) + num(QA07) == 0 && num(QA10) == num(QA05)) {
        azzera({QA05, QA08});
        scrivi(QA11, num(QA10));
    }
}

}  // namespace ModSWCALM
