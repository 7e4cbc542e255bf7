// The contribution and tax pass as a whole, on a record made by hand. Amounts in euro.

#include "closing/tax_pass.h"

#include <gtest/gtest.h>

#include "closing/closing.h"
#include "closing/state.h"
#include "closing/withholding.h"
#include "contributions/contributions.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "slip/slip.h"
#include "tax/deductions.h"
#include "tax/income_tax.h"
#include "tests/support/certificates.h"
#include "tests/unit/contributions/slip_fixture.h"

namespace {

using namespace MXREPOSITORY;
using namespace ModSwCalm2;
using ModSWCALB::tax_state;
using ModSWCALM::slip;

/// An employee of May 2024 under item 1 at 9.19 percent, with the brackets of 2024 (D.Lgs.
/// 216/2023, art. 1) and a yearly table that carries the employment deduction alone.
class TaxPassTest : public test_support::SlipFixture {
  protected:
    TaxPassTest() {
        closing = {};
        tax_state = {};
        tax_state.PrimaPassata = 1;
        ModSWCALB::deduction_state = {};
        ModSWCALM::ABORTODIP = 0;
        const double cells[] = {28000, 23, 50000, 35, 999999.99, 43};
        for (int i = 0; i < 6; ++i) {
            slip.TABIRP.set(i + 1, cells[i]);
            slip.TABIRPAC.set(i + 1, cells[i]);
        }
        slip.PCTCONTR[1] = 9.19;
        scrivi(F169, 1);
        scrivi(P031, 1);
        scrivi(P181, 1);
        scrivi(P215, 31);
        scrivi(PB05, 1);
    }
    static void wage(double taxable, double contributing) {
        scrivi(P256, taxable);
        scrivi(P240, contributing);
        scrivi(P250, taxable);
    }

  private:
    const test_support::Certificates certificates_;
};

// ---- The month ----

TEST_F(TaxPassTest, AMonthGoesFromTheWageToTheTaxWithheld) {
    wage(1908.75, 1909);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q224), 175.44);   // 1909 x 9.19 % = 175.4371
    EXPECT_EQ(num(P256), 1733.31);  // 1908.75 - 175.44
    EXPECT_EQ(num(P257), 398.66);   // 1733.31 x 12 = 20799.72 x 23 % = 4783.9356; / 12 = 398.6613
    EXPECT_EQ(num(Q657), 218.20);   // 2569.1026 / 365 x 31
    EXPECT_EQ(num(Q137), 180.46);   // 398.66 - 218.20
    EXPECT_EQ(num(P258), 180.46);
    EXPECT_EQ(num(P259), 355.90);  // 175.44 + 180.46
    EXPECT_EQ(num(Q659), 31);
    EXPECT_EQ(num(Q658), 1);
    EXPECT_EQ(tax_state.PrimaPassata, 0);
}

TEST_F(TaxPassTest, FourInstalmentsOfACollaboratorAreAYear) {
    scrivi(P447, 1);
    scrivi(P090, 4);
    scrivi(P181, 0);
    scrivi(P583, 1);  // no employment deduction
    wage(2000, 2000);
    TFRETASSAZIONESEPARATA();
    // 2000 x 4 = 8000, 1840 a year at 23 %, a fourth of it: 460
    EXPECT_EQ(num(Q137), 460);
}

TEST_F(TaxPassTest, TheTenPercentRuleTaxesATenthOfTheWage) {
    scrivi(P921, 1);
    for (const char* rule : {"", "0"}) {
        scrivi(P943, rule);
        scrivi(P256, 1500);
        taxable_of_the_month();
        EXPECT_EQ(num(P256), 1500) << rule;
        EXPECT_EQ(num(QA21), 0) << rule;
    }
    scrivi(P943, "1");
    scrivi(QA21, 100);
    taxable_of_the_month();
    EXPECT_EQ(num(P256), 150);   // 1500 x 10 %
    EXPECT_EQ(num(QA21), 1450);  // 100 + 1500 x 90 %
    scrivi(P921, 0);
    taxable_of_the_month();
    EXPECT_EQ(num(P256), 150);
}

TEST_F(TaxPassTest, SuspendedTaxIsNotWithheld) {
    wage(1908.75, 1909);
    scrivi(P792, 1);
    scrivi(Q801, 100);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(P793), 180.46);
    EXPECT_EQ(num(Q801), 280.46);
    EXPECT_EQ(num(Q137), 0);
    EXPECT_EQ(num(P258), 0);
    EXPECT_EQ(num(P259), 175.44);
}

TEST_F(TaxPassTest, ACollaboratorsContributionJoinsTheTaxableWhereItIsAskedFor) {
    struct Case {
        double collaborator;
        double asked;
        double taxable;
    };
    for (const Case& c : {Case{0, 0, 1000}, Case{1, 0, 1000}, Case{0, 1, 1000}, Case{1, 1, 1080}}) {
        scrivi(P447, c.collaborator);
        scrivi(P957, c.asked);
        scrivi(P451, 80);
        scrivi(P256, 1000);
        taxable_of_the_month();
        EXPECT_EQ(num(P256), c.taxable) << c.collaborator << c.asked;
    }
}

TEST_F(TaxPassTest, OneCompanyAddsTheContributionsOnBackPayToTheTaxable) {
    scrivi(P118, 1);
    tax_state.ConguaglioAnnuale = true;  // nothing is withheld here
    scrivi(P212, 30);
    for (const bool that_company : {false, true}) {
        scrivi(T013, that_company ? "90000000066" : "90000000055");
        scrivi(P256, 1000);
        tax_of_the_month();
        EXPECT_EQ(num(P256), that_company ? 1030 : 1000);
    }
}

// ---- Contributions of the slip ----

TEST_F(TaxPassTest, InDecemberWhatItem3HasPaidInTheYearComesOff) {
    scrivi(P183, 1);
    slip.PCTCONTR[3] = 0.30;
    struct Case {
        int yyyymm;
        char kind;
        double contributions;
    };
    // 1909 x 9.19 % = 175.44 and 1909 x 0.30 % = 5.73
    for (const Case& c :
         {Case{202405, '4', 181.17}, Case{202412, '0', 181.17}, Case{202412, '4', 121.17}}) {
        set_period(c.yyyymm, c.kind);
        scrivi(Q010, 60);
        svuota({Q224});
        wage(1908.75, 1909);
        TFRETASSAZIONESEPARATA();
        EXPECT_EQ(num(Q224), c.contributions) << c.yyyymm << c.kind;
    }
    azzera({P183, Q224});  // without item 3 nothing comes off
    wage(1908.75, 1909);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q224), 175.44);
}

TEST_F(TaxPassTest, TheSlipShowsThePensionContributionWithoutTheMinorItemsAndTheOtherSums) {
    scrivi(P187, 1);
    scrivi(P040, 1);  // no limits of the month
    scrivi(P450, 10);
    slip.PCTCONTR[7] = 0.50;
    wage(2000, 2000);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(P254), 10);      // 2000 x 0.50 %
    EXPECT_EQ(num(P255), 10);      // P450
    EXPECT_EQ(num(P253), 183.80);  // 2000 x 9.19 %
}

TEST_F(TaxPassTest, TheReliefT187LowersContributionsAndNeverRaisesThem) {
    scrivi(T187, 1);
    scrivi(P189, 1);
    slip.PCTCONTR[9] = 10;
    wage(2000, 2000);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q224), 165.42);  // 183.80 - 10 %
    svuota({Q224});
    wage(-1000, -1000);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q224), -91.90);  // a tenth of less than nothing is no relief
}

// ---- Year-end decision ----

TEST_F(TaxPassTest, WhoAdjustsTheYear) {
    struct Case {
        int yyyymm;
        char kind;
        const char* leaving;
        double P169_value;
        double P118_value;
        bool adjusts;
    };
    for (const Case& c : {
             Case{202405, '4', "00000000", 0, 0, false},
             Case{202412, '4', "00000000", 0, 0, true},
             Case{202412, '4', "00000000", 1, 0, false},
             Case{202405, '4', "20052024", 1, 0, true},
             Case{202405, '4', "00000000", 0, 1, true},
             Case{202412, '0', "00000000", 0, 0, false},
             Case{202405, '0', "20052024", 0, 0, false},
             Case{202405, '0', "00000000", 0, 1, false},
         }) {
        set_period(c.yyyymm, c.kind);
        scrivi(P017, c.leaving);
        scrivi(P169, c.P169_value);
        scrivi(P118, c.P118_value);
        TFRETASSAZIONESEPARATA();
        EXPECT_EQ(tax_state.ConguaglioAnnuale, c.adjusts) << c.yyyymm << c.kind << c.leaving;
    }
}

TEST_F(TaxPassTest, OnlyTheSlipThatAdjustsTakesFormerlySuspendedTaxAsPaid) {
    scrivi(Q801, 2000);
    set_additional(202412);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q014), 0);
    EXPECT_FALSE(slip.suspended_tax_joined);
    set_period(202412);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q014), 2000);
    EXPECT_TRUE(slip.suspended_tax_joined);
}

// ---- Separate taxation ----

TEST_F(TaxPassTest, ContributionsOnSeparateAmountsLeaveTheTaxableOnce) {
    scrivi(P583, 1);
    wage(2000, 2500);  // 500 of the contributing wage are the separate amount
    scrivi(P244, 500);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q224), 229.75);  // 2500 x 9.19 %
    EXPECT_EQ(num(P244), 454.05);  // 500 - 45.95
    // The wage: 2000 - (229.75 - 45.95) = 1816.20; with the net separate amount 2270.25, which is
    // 2500 - 229.75.
    EXPECT_EQ(num(P256), 2270.25);
    // 1816.20 x 23 % = 417.726 and 454.05 x 23 % = 104.4315, each rounded as it joins
    EXPECT_EQ(num(P257), 522.16);
}

TEST_F(TaxPassTest, AnAdditionalSlipTakesItem5AndTheAdditionalPercentOffOnceToo) {
    set_additional(202406);
    scrivi(P583, 1);
    scrivi(P185, 1);  // items 1 and 5
    slip.PCTCONTR[5] = 1;
    wage(2000, 2500);
    scrivi(P244, 500);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q224), 254.75);   // 229.75 + 2500 x 1 %
    EXPECT_EQ(num(P244), 429.05);   // 500 - 45.95 - 25
    EXPECT_EQ(num(P256), 2245.25);  // 2500 - 254.75
}

// ---- Slips of adjustment only ----

TEST_F(TaxPassTest, ASlipOfAdjustmentOnlyTaxesItsAmountsWithoutDeductions) {
    scrivi(P118, 2);
    scrivi(P181, 0);
    wage(1000, 0);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q137), 230);  // 1000 x 23 %
    EXPECT_EQ(num(Q657), 0);
    EXPECT_EQ(num(Q656), 0);
    EXPECT_EQ(num(Q659), 0);
    EXPECT_EQ(num(Q658), 0);
}

TEST_F(TaxPassTest, ASlipOfAdjustmentOnlyLosesItsContributionsOnce) {
    scrivi(P118, 2);
    wage(1000, 1000);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(P256), 908.10);  // 1000 - 91.90
    wage(1000, 1500);
    scrivi(P244, 500);
    svuota({Q224});
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(P256), 1362.15);  // 1500 - 137.85
}

// ---- Termination ----

TEST_F(TaxPassTest, ALeaverWithoutAccrualLosesTheMonthOnce) {
    scrivi(T745, 1);
    scrivi(Q136, 8);
    scrivi(P017, "20052024");
    scrivi(P260, 100);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q136), 8);  // an accrual arose
    scrivi(P260, 0);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q136), 7);
    scrivi(P447, 1);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q136), 7);  // collaborators have no severance pay
}

TEST_F(TaxPassTest, AnEmptySeverancePayClearsItsFields) {
    scrivi(Q128, 10);
    scrivi(Q054, 20);
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q128), 10);  // Q055 holds zeros: it is not empty
    area(Area::DIPX).replace(static_cast<std::size_t>(Q055.offset) - 1, 10, 10, ' ');
    TFRETASSAZIONESEPARATA();
    EXPECT_EQ(num(Q128), 0);
    EXPECT_EQ(num(Q054), 0);
    EXPECT_EQ(testo(Q055), "00000000.00");
}

// ---- Entertainers ----

TEST_F(TaxPassTest, TheAdditionalSlipOfAnEntertainerWhoLeavesAdjustsNothing) {
    scrivi(P168, 1);
    scrivi(P017, "20052024");
    scrivi(P118, 2);  // no bonus, no surtaxes
    scrivi(P038, 9);
    scrivi(Q172, 0);
    set_additional(202405);
    CALCOLACHIUSURA();
    EXPECT_FALSE(tax_state.ConguaglioAnnuale);
    set_period(202405);
    CALCOLACHIUSURA();
    EXPECT_TRUE(tax_state.ConguaglioAnnuale);
    set_period(202505);
    CALCOLACHIUSURA();
    EXPECT_FALSE(tax_state.ConguaglioAnnuale);  // the same month of another year
}

}  // namespace
