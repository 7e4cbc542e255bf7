#pragma once
// A slip under calculation for tests: empty record areas, default state, period of May 2024, an
// archive directory with the files that a test fills.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "context/period.h"
#include "files/logical_files.h"
#include "formulas/formula.h"
#include "formulas/named_access.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/cut_lines.h"
#include "slip/line_accumulators.h"
#include "slip/one_off_2022.h"
#include "slip/operator_wage.h"
#include "slip/percentage_items.h"
#include "slip/slip.h"
#include "slip/slip_lines.h"
#include "slip/slip_table.h"
#include "slip/taxable_bases.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"
#include "tests/support/slip_files.h"

namespace slip_tests {

using namespace MXREPOSITORY;
using namespace ModSWCALM;

using test_support::FieldValues;
using test_support::put_text;
using test_support::record_with;

class SlipTest : public ::testing::Test, protected test_support::SlipFiles {
  protected:
    void SetUp() override {
        MXLIBRERIA::file_table = {};
        MXLIBRERIA::environment.archive_directory = archive_.path();
        slip = Slip{};
        run_tables = RunTables{};
        company = CompanyState{};
        classification = Classification{};
        formula_registers = FormulaRegisters{};
        repository = Repository{};
        test_support::fill_areas();
        set_period("310520244");
    }

    static void set_period(const std::string& record) { MXLIBRERIA::period.set(record); }

    static void evaluate(const std::vector<std::string>& all) {
        lines(all);
        evaluate_lines();
    }
    static double quantity_in(int number) { return line_quantity(slip_line(number)) / 100; }
    static double rate_in(int number) { return line_rate(slip_line(number)); }

    test_support::ScriptedWindow& window_ = test_support::ScriptedWindow::install();
};

}  // namespace slip_tests
