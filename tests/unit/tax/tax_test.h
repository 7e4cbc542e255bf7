#pragma once
// Common ground of the tax tests: an ordinary employee of May 2024, the scale of 2024, the yearly
// table filled in.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "tax/deductions.h"
#include "tax/income_tax.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace tax_test {

using namespace MXREPOSITORY;
using namespace ModSWCALB;

/// Limit and rate, one after the other.
inline void set_brackets(ModSWCALM::BracketTable& table, int start,
                         std::initializer_list<double> cells) {
    int index = start;
    for (const double cell : cells) {
        table.set(index++, cell);
    }
}

inline void set_period(const std::string& ddmmyyyy, char kind = '4') {
    MXLIBRERIA::period.set(ddmmyyyy + kind);
}

class TaxTest : public ::testing::Test {
  protected:
    TaxTest() : window(test_support::ScriptedWindow::install()) {
        test_support::fill_areas();
        tax_state = TaxState{};
        deduction_state = DeductionState{};
        ModSWCALM::slip = ModSWCALM::Slip{};
        ModSWCALM::ABORTODIP = 0;
        set_period("31052024");
        set_brackets(ModSWCALM::slip.TABIRP, 1, {28000, 23, 50000, 35, 999999.99, 43});
        for (const Descriptor& field : serie(F400, F407)) {
            scrivi(field, 1);
        }
        scrivi(F169, 1);
        scrivi(P031, 1);
        scrivi(P215, 31);
        tax_state.PrimaPassata = 1;
    }

    /// The month's taxable P256 and twelve times it as the base to tax.
    static void month_of(double taxable) {
        scrivi(P256, taxable);
        tax_state.ImponibileCorrente = taxable * 12;
    }
    /// The year-end adjustment on this base.
    static void year_of(double taxable) {
        set_period("31122024");
        tax_state.ConguaglioAnnuale = true;
        tax_state.ImponibileCorrente = taxable;
    }
    /// A dependant in a place (0 the first): kind, birth, share, tax code.
    static void dependant(std::size_t place, const char* kind, const char* birth,
                          double share = 100) {
        const DependantSlot& slot = kDependantSlots.at(place);
        scrivi(slot.tax_code, "RSSMRA80A01H501U");
        scrivi(slot.kind, kind);
        scrivi(slot.birth_date, birth);
        scrivi(slot.share, share);
    }

    test_support::ScriptedWindow& window;
};

}  // namespace tax_test
