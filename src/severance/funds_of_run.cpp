// What the run keeps of the pension funds: which it has met, and their months.

#include <algorithm>

#include "context/messages.h"
#include "context/trace.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOPX.h"
#include "records/fields.h"
#include "severance/pension_funds.h"
#include "texts/texts.h"

namespace ModSwCalm2 {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

FundsOfRun funds_of_run;

void INIZIALIZZAFP() {
    TRACCIA("INIZIALIZZAFP");
    funds_of_run = {};
    funds_of_run.file_exists = VERBASE(kPensionFunds) != 0;
    if (funds_of_run.file_exists) {
        FAIOPEN(kPensionFunds);
    }
}

void AZZERACONTRIBUTOFP(int /*month*/) {
    TRACCIA("AZZERACONTRIBUTOFP");
    const double code = num(P401);
    if (code == 0 || num(P187) == 1) {
        return;
    }
    if (!funds_of_run.file_exists || code < 1 || LEGGIREC(kPensionFunds, code) == 1) {
        MSG(texts::kMissingFund.bytes() + rifilato(P401) + texts::kMissingFundRest.bytes());
        return;
    }
    area(Area::FOPX) = record_buffer(kPensionFunds);
    if (std::ranges::find(funds_of_run.codes, code) == funds_of_run.codes.end()) {
        funds_of_run.codes.push_back(code);
    }
}

void months_of_funds_are_counted() {
    funds_of_run.counted = funds_of_run.codes.size();
}

void INCREMENTAMESIFP() {
    TRACCIA("INCREMENTAMESIFP");
    std::string in_work = area(Area::FOPX);
    for (; funds_of_run.counted < funds_of_run.codes.size(); ++funds_of_run.counted) {
        const double code = funds_of_run.codes[funds_of_run.counted];
        static_cast<void>(LEGGIREC(kPensionFunds, code));
        area(Area::FOPX) = record_buffer(kPensionFunds);
        aggiungi(R052, 1);
        write_record(kPensionFunds, code, area(Area::FOPX));
    }
    area(Area::FOPX) = std::move(in_work);
}

}  // namespace ModSwCalm2
