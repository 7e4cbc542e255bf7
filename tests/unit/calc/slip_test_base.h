#pragma once
// A slip in preparation: empty areas, an ordinary May 2024, no message expected.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "calc/phases.h"
#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "slip/slip_table.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace ModSWCALM {

class SlipTest : public ::testing::Test {
  protected:
    SlipTest() : window(test_support::ScriptedWindow::install()) {
        test_support::fill_areas();
        slip = Slip{};
        company = CompanyState{};
        run_tables = RunTables{};
        ABORTODIP = 0;
        at("310520244");
    }

    static void at(const std::string& period_record) { MXLIBRERIA::period.set(period_record); }

    /// A slip line: code, quantity and rate in the units of the line.
    static std::string line(int code, long quantity, long rate = 0) {
        char text[64];
        std::snprintf(text, sizeof text, " %03d%013ld%013ld     ", code, quantity, rate);
        return text;
    }

    /// The slip table holds these lines and then 999.
    static void set_lines(std::initializer_list<std::string> lines) {
        int number = 0;
        for (const std::string& text : lines) {
            set_slip_line(++number, text);
        }
        set_slip_line(++number, line(999, 0));
    }

    test_support::ScriptedWindow& window;
};

}  // namespace ModSWCALM
