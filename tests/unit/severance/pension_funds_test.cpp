// Pension funds on a record made by hand: May 2024, severance wage 1908.75, contributing wage 1909.
// Fund 1: employee 0.55 %, employer 1.55 %, the whole accrual.

#include "severance/pension_funds.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "contributions/contributions.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/fund_formula.h"
#include "severance/tfr.h"
#include "slip/slip.h"
#include "tests/support/logical_files.h"
#include "tests/unit/contributions/slip_fixture.h"

namespace {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA::file_numbers;
using namespace ModSwCalm2;
using test_support::ScriptedWindow;

using Values = std::vector<std::pair<Descriptor, double>>;

class PensionFunds : public test_support::SlipFixture {
  protected:
    static constexpr std::size_t kFundLength = 700;

    PensionFunds() {
        files_.define(kPensionFunds, kFundLength);
        put_fund(1);
        INIZIALIZZAFP();
        scrivi(P401, "1");
        scrivi(P050, 1);
        scrivi(P260, 1908.75);
        scrivi(P240, 1909);
    }
    ~PensionFunds() override {
        window_.verify();
        MXLIBRERIA::CHIUDI(0);
        funds_of_run = {};
    }

    /// Fund `number` with what differs from fund 1.
    void put_fund(int number, const Values& further = {}) {
        std::string fund = test_support::empty_record(Area::FOPX, kFundLength);
        for (const auto& [field, value] :
             Values{{R003, 1.55}, {R004, 0.55}, {R005, 100}, {R051, 1}}) {
            SCRIVICAMPONUM(field, value, 0, fund);
        }
        for (const auto& [field, value] : further) {
            SCRIVICAMPONUM(field, value, 0, fund);
        }
        files_.put(kPensionFunds, static_cast<std::size_t>(number), fund);
    }
    double months_of(int number) {
        return LEGGICAMPONUM(R052, 0, files_.get(kPensionFunds, static_cast<std::size_t>(number)));
    }
    static void met(const char* code) {
        scrivi(P401, code);
        AZZERACONTRIBUTOFP(5);
        INCREMENTAMESIFP();
    }

    test_support::LogicalFiles files_;
    ScriptedWindow& window_ = ScriptedWindow::install();
};

// ---- The run ----

TEST_F(PensionFunds, AFundCountsItsMonthOnceARun) {
    put_fund(2, {{R052, 7}});
    met("1");
    met("2");
    met("1");
    EXPECT_EQ(months_of(1), 1);
    EXPECT_EQ(months_of(2), 8);
    INIZIALIZZAFP();
    met("2");
    EXPECT_EQ(months_of(1), 1);
    EXPECT_EQ(months_of(2), 9);
}

TEST_F(PensionFunds, TheFundOfTheEmployeeStaysInItsArea) {
    put_fund(2, {{R051, 3}});
    scrivi(P401, "2");
    AZZERACONTRIBUTOFP(5);
    EXPECT_EQ(num(R051), 3);
    INCREMENTAMESIFP();
    EXPECT_EQ(num(R051), 3);
    EXPECT_EQ(num(R052), 0);  // as it was read
}

TEST_F(PensionFunds, WhoIsInNoFundOrHasItem7IsPassedOver) {
    met("");
    met("0");
    scrivi(P187, 1);
    met("1");
    met("9");
    EXPECT_EQ(months_of(1), 0);
    EXPECT_TRUE(funds_of_run.codes.empty());
    EXPECT_EQ(window_.lines.size(), 0U);
}

TEST_F(PensionFunds, AMissingFundIsTold) {
    met("9");
    met("ABC");
    ASSERT_EQ(window_.lines.size(), 1U);
    EXPECT_EQ(window_.lines.front(), "Errore: Fondo pensione cod.9 non trovato in archivio");
    EXPECT_TRUE(funds_of_run.codes.empty());
    FONDOPENSIONE();
    EXPECT_EQ(num(Q224), 0);
}

TEST_F(PensionFunds, AnArchiveWithoutFundsHasNone) {
    MXLIBRERIA::CHIUDI(kPensionFunds);
    files_.directory().write(test_support::DictionaryArchive::name_of(kPensionFunds), "");
    INIZIALIZZAFP();
    met("1");
    ASSERT_EQ(window_.lines.size(), 1U);
    EXPECT_EQ(window_.lines.front(), "Errore: Fondo pensione cod.1 non trovato in archivio");
    FONDOPENSIONE();
    EXPECT_EQ(num(P407), 0);
}

// ---- The slip ----

TEST_F(PensionFunds, EmployeeEmployerAndAccrualPay) {
    FONDOPENSIONE();
    EXPECT_EQ(num(Q224), 10.50);  // 1908.75 x 0.55 % = 10.498
    EXPECT_EQ(num(P407), 29.59);  // x 1.55 % = 29.5856
    EXPECT_EQ(num(Q314), 29.59);
    EXPECT_EQ(num(Q201), 131.84);  // 141.39 - 9.55
    EXPECT_EQ(num(Q236), 131.84);
    EXPECT_NEAR(contributions.fund_share, 10.50, 1e-9);
    EXPECT_FALSE(contributions.item7_in_units);
}

TEST_F(PensionFunds, ASlipOfAdjustmentOnlyPaysNothing) {
    scrivi(P118, 2);
    scrivi(P184, 1);
    FONDOPENSIONE();
    FONDOPREV();
    EXPECT_EQ(num(Q224) + num(P407) + num(Q201) + num(Q236), 0);
}

TEST_F(PensionFunds, SharesOfAYearAddUpToItsAccrual) {
    double wages = 0;
    for (int month = 1; month <= 12; ++month) {
        const double wage = 1000.37 + month * 77.13;
        scrivi(P260, wage);
        scrivi(P240, unita(wage));
        FONDOPENSIONE();
        wages += unita(wage);
        aggiungi(Q037, wage);
        scrivi(Q001, wages);
        const double accrual = arrotonda(num(Q037) / 13.5);
        EXPECT_NEAR(num(Q236), accrual - arrotonda(wages * 0.5 / 100), 1e-6) << month;
    }
}

TEST_F(PensionFunds, AWageTakenBackTakesItsContributionsBack) {
    scrivi(Q037, 5000);
    scrivi(P260, -1000);
    FONDOPENSIONE();
    EXPECT_EQ(num(Q224), -5.50);
    EXPECT_EQ(num(P407), -15.50);
    EXPECT_EQ(num(Q201), 0);
    // across the limit of 4500: 500 of the 1000 had borne nothing
    put_fund(1, {{R007, 4500}});
    scrivi(Q224, 0);
    FONDOPENSIONE();
    EXPECT_EQ(num(Q224), -2.75);
    EXPECT_EQ(num(P407), -7.75);
}

TEST_F(PensionFunds, UnitsAreRoundedByTheHalf) {
    // Employer 1.55 % of 1000 is 15.50: 16; of 999.99 15.499845 is 15.50 in the field and 16 too
    put_fund(1, {{R061, 1}});
    for (const double wage : {1000.0, 999.99}) {
        scrivi(P260, wage);
        FONDOPENSIONE();
        EXPECT_EQ(num(P407), 16) << wage;
        EXPECT_TRUE(contributions.item7_in_units);
    }
    EXPECT_EQ(num(Q314), 31);  // the cents: 15.50 twice
}

TEST_F(PensionFunds, ItemSevenIsRoundedWithTheFund) {
    contributions.bases[7] = 1909;
    ModSWCALM::slip.PCTCONTR[7] = 1.2;
    for (const auto& [units, expected] : {std::pair{false, 22.91}, std::pair{true, 23.0}}) {
        contributions.item7_in_units = units;
        employee_amounts();
        EXPECT_EQ(num(Q226), expected);
    }
}

// ---- Formulas ----

TEST_F(PensionFunds, AFormulaEndsAtThePointOrAtItsLastCell) {
    area(Area::FOPX) = test_support::empty_record(Area::FOPX, kFundLength);
    constexpr auto& cells = elenco<R010, R022>;
    for (const Descriptor& cell : cells) {
        scrivi(cell, "+10");
    }
    EXPECT_EQ(fund_formula(cells), 130);
    scrivi(R015, ".");
    EXPECT_EQ(fund_formula(cells), 50);
    scrivi(R010, ".");
    EXPECT_EQ(fund_formula(cells), 0);
}

TEST_F(PensionFunds, AFormulaReadsNothingOfTheItemBefore) {
    scrivi(Z151, 26);
    scrivi(Z152, 73.41);
    scrivi(Z026, 1);  // an item that adds its amount to Q100
    area(Area::FOPX) = test_support::empty_record(Area::FOPX, kFundLength);
    scrivi(R010, ".OG");
    scrivi(R011, "+CU");
    scrivi(R012, "+5");
    EXPECT_EQ(fund_formula(elenco<R010, R022>), 5);
    EXPECT_EQ(num(Q100), 0);
}

// ---- Older fund ----

TEST_F(PensionFunds, TheOlderFundLeavesNothingToTheOther) {
    scrivi(P184, 1);
    FONDOPREV();
    FONDOPENSIONE();
    EXPECT_EQ(num(Q201), 131.84);
    EXPECT_EQ(num(Q236), 131.84);
    // a worker in entertainment has item 4 of his own, and no older fund
    scrivi(P168, 1);
    FONDOPENSIONE();
    EXPECT_EQ(num(Q236), 263.68);
}

// ---- Deductible contributions ----

class Deductibility : public PensionFunds {
  protected:
    static constexpr std::size_t kMonthsLength = 7800;
    static constexpr double kLimit = 5164.57;

    Deductibility() {
        files_.define(kTwelveMonths, kMonthsLength);
        std::string months = test_support::empty_record(Area::DICX, kMonthsLength);
        SCRIVICAMPONUM(J363, 3000, 1, months);
        SCRIVICAMPONUM(J563, 2000, 5, months);
        SCRIVICAMPONUM(J563, 700, 6, months);  // last year's
        files_.put(kTwelveMonths, 3, months);
        MXLIBRERIA::FAIOPEN(kTwelveMonths);
        ModSWCALM::slip.employee_record = 3;
        scrivi(F420, kLimit);
    }
};

TEST_F(Deductibility, WhatIsAboveTheLimitIsTaxedOnce) {
    contributions.fund_share = 150;
    scrivi(P407, 100);
    scrivi(P256, 1700);
    DEDUCIBILITA_CTR_FP();
    EXPECT_EQ(num(P794), 85.43);  // 5000 + 150 + 100 - 5164.57
    EXPECT_EQ(num(Q804), 85.43);
    EXPECT_EQ(num(P256), 1785.43);
    DEDUCIBILITA_CTR_FP();
    EXPECT_EQ(num(P794), 0);
    EXPECT_EQ(num(Q804), 85.43);
}

TEST_F(Deductibility, WithoutMonthsTheSlipIsAllThereIs) {
    ModSWCALM::slip.employee_record = 7;
    scrivi(P407, 5164.58);
    DEDUCIBILITA_CTR_FP();
    EXPECT_EQ(num(P794), 0.01);
}

TEST_F(Deductibility, OnlyTheTablesOf2009AreFilled) {
    for (const int yyyymm : {200812, 200901, 200912, 201001}) {
        set_period(yyyymm);
        scrivi(F420, 0);
        DEDUCIBILITA_CTR_FP();
        EXPECT_EQ(num(F420), yyyymm / 100 == 2009 ? kLimit : 0) << yyyymm;
    }
    set_period(200905);
    scrivi(F420, 4000);
    DEDUCIBILITA_CTR_FP();
    EXPECT_EQ(num(F420), 4000);
}

}  // namespace
