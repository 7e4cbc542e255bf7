#pragma once
// An employee, a company and a sector with empty records, and a period; each test fills what it
// needs.

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>

#include "context/period.h"
#include "contributions/contributions.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace test_support {

class SlipFixture : public ::testing::Test {
  protected:
    SlipFixture() {
        ScriptedWindow::install();
        fill_areas();
        ModSWCALM::run_tables = {};
        ModSWCALM::slip = {};
        ModSwCalm2::contributions = {};
        set_period(202405);
        // An empty slip: its first line ends it.
        for (std::string& piece : ModSWCALM::slip.RIGHECEDOLINO) {
            piece.assign(875, ' ');
        }
        ModSWCALM::slip.RIGHECEDOLINO[0].replace(1, 3, "999");
    }

    /// Period of a month (year x 100 + month); the kind "0" is an additional payment.
    static void set_period(int yyyymm, char kind = '4') {
        std::ostringstream text;
        text << "28" << std::setfill('0') << std::setw(2) << yyyymm % 100 << yyyymm / 100 << kind;
        MXLIBRERIA::period.set(text.str());
    }
    static void set_additional(int yyyymm) { set_period(yyyymm, '0'); }

    /// Months from `from` to `to`, both included.
    static int next_month(int yyyymm) {
        return yyyymm % 100 == 12 ? (yyyymm / 100 + 1) * 100 + 1 : yyyymm + 1;
    }
};

}  // namespace test_support
