#include "tax/income_tax.h"

#include "platform/failure.h"
#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;
using ModSWCALM::slip;

class IncomeTax : public TaxTest {
  protected:
    /// Gross tax of a base, nothing counted.
    static double gross(double base) {
        tax_state.PrimaPassata = 0;
        tax_state.ImponibileCorrente = base;
        CALCIMPOSTA();
        return tax_state.ImpostaLorda;
    }
};

TEST_F(IncomeTax, ABaseInTheFirstBracketIsTaxedAtTheFirstRate) {
    // 20799.72 x 23 % = 4783.9356, a month 4783.9356 / 12 = 398.6613
    EXPECT_DOUBLE_EQ(gross(20799.72), 4783.9356);
    EXPECT_EQ(tax_state.AliquotaMarginale, 23);
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 23);
    EXPECT_DOUBLE_EQ(tax_state.ResiduoScaglione, 20799.72);
}

TEST_F(IncomeTax, ABaseEqualToALimitGoesOnToTheNextBracketWithoutResidue) {
    EXPECT_DOUBLE_EQ(gross(28000), 6440);  // 28000 x 23 %
    EXPECT_EQ(tax_state.ResiduoScaglione, 0);
    EXPECT_EQ(tax_state.AliquotaMarginale, 35);
    EXPECT_EQ(tax_state.IndiceScaglione, 3);
    EXPECT_DOUBLE_EQ(gross(27999.99), 6439.9977);
    EXPECT_EQ(tax_state.AliquotaMarginale, 23);
}

TEST_F(IncomeTax, EachBracketTaxesItsOwnPart) {
    // 28000 x 23 % + 22000 x 35 % + 10000 x 43 % = 6440 + 7700 + 4300
    EXPECT_DOUBLE_EQ(gross(60000), 18440);
    EXPECT_EQ(tax_state.AliquotaMarginale, 43);
    EXPECT_EQ(tax_state.ResiduoScaglione, 10000);
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 23);
}

TEST_F(IncomeTax, NothingIsRounded) {
    EXPECT_DOUBLE_EQ(gross(0.01), 0.0023);
}

TEST_F(IncomeTax, ANegativeBaseIsTaxedAsNothingButStaysTheBaseOfTheSurtaxes) {
    EXPECT_EQ(gross(-500), 0);
    EXPECT_EQ(tax_state.ImponibileCorrente, 0);
    EXPECT_EQ(tax_state.ImponibileAddizionali, -500);
}

TEST_F(IncomeTax, AZeroRateIsLegal) {
    set_brackets(slip.TABIRP, 1, {8000, 0, 999999.99, 23});
    EXPECT_EQ(gross(8000), 0);
    EXPECT_DOUBLE_EQ(gross(9000), 230);  // 1000 x 23 %
}

TEST_F(IncomeTax, TenBracketsFillATable) {
    set_brackets(slip.TABIRP, 1, {1000, 1, 2000, 2, 3000, 3, 4000, 4, 5000,      5,
                                  6000, 6, 7000, 7, 8000, 8, 9000, 9, 999999.99, 10});
    // 1000 x (1 + 2 + ... + 9) % + 1000 x 10 %
    EXPECT_DOUBLE_EQ(gross(10000), 550);
}

TEST_F(IncomeTax, ATableThatNoLimitClosesFails) {
    slip.TABIRP = ModSWCALM::BracketTable{};
    try {
        gross(1000);
        FAIL() << "an empty table was walked to an end";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), 9);
    }
}

TEST_F(IncomeTax, ATableWithoutClosingLimitDoesNotRunOnIntoTheAlternateOne) {
    slip.TABIRP = ModSWCALM::BracketTable{};
    set_brackets(slip.TABIRP, 1, {1000, 23, 2000, 35});
    set_brackets(slip.TABIRP, 21, {10000, 10, 999999.99, 20});
    EXPECT_DOUBLE_EQ(gross(1500), 405);  // 1000 x 23 % + 500 x 35 %
    EXPECT_THROW(gross(2000), platform::Failure);
}

TEST_F(IncomeTax, AnEmptyTableFailsForABaseOfNothingToo) {
    slip.TABIRP = ModSWCALM::BracketTable{};
    EXPECT_THROW(gross(0), platform::Failure);
}

TEST_F(IncomeTax, TheFlatRegimeTaxesAllAtTheFirstRateAndCountsNothing) {
    scrivi(P031, 2);
    tax_state.ImponibileCorrente = 60000;
    CALCIMPOSTA();
    EXPECT_DOUBLE_EQ(tax_state.ImpostaLorda, 13800);  // 60000 x 23 %
    EXPECT_EQ(tax_state.AliquotaMarginale, 23);
    EXPECT_EQ(num(Q658), 0);
    EXPECT_EQ(num(Q659), 0);
    EXPECT_EQ(sum_of_deductions(), 0);
}

TEST_F(IncomeTax, TheAlternateTableStartsAtCell21) {
    set_brackets(slip.TABIRP, 21, {10000, 10, 999999.99, 20});
    tax_state.TabellaAlternativa = 1;
    EXPECT_DOUBLE_EQ(gross(15000), 2000);  // 10000 x 10 % + 5000 x 20 %
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 10);
}

TEST_F(IncomeTax, TheYearsBaseTakesInIncomeFromElsewhere) {
    year_of(20000);
    tax_state.PrimaPassata = 0;
    scrivi(Q514, 1000);
    scrivi(Q898, 500);
    scrivi(Q509, 300);
    CALCIMPOSTA();
    EXPECT_DOUBLE_EQ(tax_state.ImponibileCorrente, 21500);
    EXPECT_DOUBLE_EQ(tax_state.ImponibileAddizionali, 21200);  // without the part of Q509
    EXPECT_DOUBLE_EQ(tax_state.ImpostaLorda, 4945);            // 21500 x 23 %
}

TEST_F(IncomeTax, TheMonthLeavesIncomeFromElsewhereOut) {
    scrivi(Q514, 1000);
    EXPECT_DOUBLE_EQ(gross(20000), 4600);
    EXPECT_EQ(tax_state.ImponibileAddizionali, 20000);
}

// ---- What the slip counts ----

TEST_F(IncomeTax, AMonthCountsItsDaysAndItself) {
    scrivi(Q991, 12);
    month_of(1733.31);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q659), 31);
    EXPECT_EQ(num(Q658), 1);
    EXPECT_EQ(num(Q991), 0);
    // 1910 + 1190 x (28000 - 20799.72) / 13000 = 2569.1026; / 365 x 31 = 218.1978
    EXPECT_EQ(num(Q657), 218.20);
    EXPECT_EQ(num(Q666), 218.20);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q659), 62);
    EXPECT_EQ(num(Q666), 436.40);
}

TEST_F(IncomeTax, OnlyTheCallThatWithholdsCounts) {
    tax_state.PrimaPassata = 0;
    month_of(1733.31);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q659), 0);
    EXPECT_EQ(num(Q658), 0);
    EXPECT_EQ(num(Q657), 0);
    EXPECT_DOUBLE_EQ(tax_state.ImpostaLorda, 4783.9356);
}

TEST_F(IncomeTax, AnAdditionalPaymentCountsNothing) {
    set_period("31052024", '0');
    month_of(1733.31);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q658), 0);
    EXPECT_EQ(num(Q657), 0);
    EXPECT_DOUBLE_EQ(tax_state.ImpostaLorda, 4783.9356);
}

TEST_F(IncomeTax, ALeaverCountsTheMonthOfLeavingOnly) {
    month_of(1000);
    scrivi(P017, "20052024");
    CALCIMPOSTA();
    EXPECT_EQ(num(Q658), 1);
    scrivi(P017, "20042024");
    CALCIMPOSTA();
    EXPECT_EQ(num(Q658), 1);
    EXPECT_EQ(num(Q659), 31);
}

TEST_F(IncomeTax, ASlipOfAdjustmentOnlyCountsNothingAndTakesTheYearsDeduction) {
    year_of(20000);
    scrivi(P118, 2);
    scrivi(P034, 1);
    scrivi(Q658, 6);
    scrivi(Q659, 184);
    scrivi(Q660, 6);
    for (const double collaborator : {0, 1}) {
        tax_state.ImponibileCorrente = 20000;
        scrivi(P447, collaborator);
        scrivi(P449, 31);
        CALCIMPOSTA();
        EXPECT_EQ(num(Q658), 6);
        EXPECT_EQ(num(Q659), 184);
        EXPECT_EQ(num(Q660), 6);
        // 1910 + 1190 x 8000 / 13000 = 2642.3077; x 184 / 365 = 1332.0126
        EXPECT_EQ(num(Q657), 1332.01);
    }
}

TEST_F(IncomeTax, ACollaboratorCountsTheMonthsOfAnInstalment) {
    struct Case {
        double instalments;
        double months;
    };
    scrivi(P447, 1);
    scrivi(P449, 90);
    month_of(1000);
    for (const Case row : {Case{0, 1}, Case{12, 1}, Case{4, 3}, Case{5, 2}, Case{1, 12}}) {
        azzera({Q658, Q659});
        scrivi(P090, row.instalments);
        CALCIMPOSTA();
        EXPECT_EQ(num(Q658), row.months) << row.instalments << " instalments";
        EXPECT_EQ(num(Q659), 90);
    }
}

TEST_F(IncomeTax, EachCallClearsTheDeductionsOfTheSlip) {
    for (const Descriptor& field : kDeductionFields) {
        scrivi(field, 10);
    }
    EXPECT_EQ(sum_of_deductions(), 110);
    for (const Descriptor& field : {QA10, QA11, Q654, Q661, Q662, Q663, Q670, Q772}) {
        scrivi(field, 1);
    }
    gross(1000);
    EXPECT_EQ(sum_of_deductions(), 0);
    for (const Descriptor& field : {QA10, QA11, Q654, Q661, Q662, Q663, Q670, Q772}) {
        EXPECT_EQ(num(field), 0) << field.name();
    }
}

TEST_F(IncomeTax, AYearlyTableNotFilledInStopsTheFamilyDeductionsAndNotTheTax) {
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    month_of(1733.31);
    for (const Descriptor& field : serie(F400, F407)) {
        scrivi(field, 0);
        CALCIMPOSTA();
        EXPECT_EQ(num(Q649), 0) << field.name();
        EXPECT_EQ(num(Q666), 0) << field.name();
        EXPECT_EQ(num(Q657), 218.20) << field.name();
        EXPECT_DOUBLE_EQ(tax_state.ImpostaLorda, 4783.9356);
        scrivi(field, 1);
    }
    CALCIMPOSTA();
    // Spouse at R 20799.72: 690 / 12 = 57.50
    EXPECT_EQ(num(Q649), 57.50);
}

TEST_F(IncomeTax, ZerosThatStandForNothingLeaveTwoTextFields) {
    month_of(1000);
    scrivi(P722, "0000000000000000");
    scrivi(P723, "7");
    CALCIMPOSTA();
    EXPECT_EQ(rifilato(P722), "");
    EXPECT_EQ(rifilato(P723), "");
    scrivi(P722, "RSSMRA80A01H501U");
    scrivi(P723, "X");
    CALCIMPOSTA();
    EXPECT_EQ(rifilato(P722), "RSSMRA80A01H501U");
    EXPECT_EQ(rifilato(P723), "X");
}

TEST_F(IncomeTax, TheModeOfTheIncomeDeductionSwitchesIt) {
    month_of(1733.31);
    scrivi(P583, 1);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q657), 0);
    scrivi(P583, 2);
    CALCIMPOSTA();
    // (55000 - 20799.72) / 50200 = .68128..., .6812 x 1104 = 752.0448; / 365 x 31 = 63.8723
    EXPECT_EQ(num(Q657), 63.87);
}

TEST_F(IncomeTax, FamilyDeductionsCanWaitForTheYearEnd) {
    scrivi(P586, 1);
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    month_of(1733.31);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q649), 0);
    year_of(20799.72);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q649), 690);
    scrivi(P586, 2);
    CALCIMPOSTA();
    EXPECT_EQ(num(Q649), 0);
}

TEST_F(IncomeTax, TheYearEndSetsTheDeductionsToDate) {
    scrivi(Q659, 334);
    scrivi(Q666, 2351.55);
    year_of(24266.34);
    CALCIMPOSTA();
    // D = 1910 + 1190 x (28000 - 24266.34) / 13000 = 2251.7735 for 365 days
    EXPECT_EQ(num(Q657), 2251.77);
    EXPECT_EQ(num(Q656), 2251.77);
    EXPECT_EQ(num(Q666), 2251.77);
    // 24266.34 x 23 % = 5581.2582
    EXPECT_DOUBLE_EQ(tax_state.ImpostaLorda, 5581.2582);
}

// ---- The pure functions ----

TEST_F(IncomeTax, TheFunctionTakesNothingFromTheSlip) {
    double base = 60000;
    std::int16_t flag = 5;
    EXPECT_DOUBLE_EQ(CalcolaImposta(base, flag), 18440);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(base, 60000);
    EXPECT_EQ(tax_state.AliquotaMarginale, 0);
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 23);
    scrivi(P031, 2);
    EXPECT_DOUBLE_EQ(CalcolaImposta(base, flag), 18440);
}

TEST_F(IncomeTax, ABaseOfNothingGivesNothingAndTheFirstRate) {
    set_brackets(slip.TABIRPAC, 1, {15000, 27, 999999.99, 30});
    double base = 0;
    std::int16_t flag = 0;
    EXPECT_EQ(CalcolaImposta(base, flag), 0);
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 23);
    EXPECT_EQ(CalcolaImpostaTFR(base, flag), 0);
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 27);
    EXPECT_EQ(CalcolaImpostaAP(base, flag), 0);
    EXPECT_EQ(tax_state.AliquotaPrimoScaglione, 23);
}

TEST_F(IncomeTax, ANegativeBaseOfTheFunctionsFallsInTheFirstBracket) {
    double base = -100;
    std::int16_t flag = 0;
    EXPECT_DOUBLE_EQ(CalcolaImposta(base, flag), -23);
    EXPECT_DOUBLE_EQ(CalcolaImpostaAP(base, flag), -23);
}

TEST_F(IncomeTax, LeavingOnTheLastDayOf2006TakesTheAlternateTable) {
    set_brackets(slip.TABIRP, 21, {10000, 10, 999999.99, 20});
    double base = 15000;
    std::int16_t flag = 0;
    scrivi(P017, "31122006");
    EXPECT_DOUBLE_EQ(CalcolaImposta(base, flag), 2000);
    EXPECT_EQ(flag, -1);
    EXPECT_DOUBLE_EQ(CalcolaImpostaAP(base, flag), 3450);  // first table, 15000 x 23 %
    EXPECT_EQ(flag, 0);
    EXPECT_DOUBLE_EQ(gross(15000), 3450);
    for (const char* date : {"30122006", "31122004", "31122007", "00000000"}) {
        scrivi(P017, date);
        EXPECT_DOUBLE_EQ(CalcolaImposta(base, flag), 3450) << date;
        EXPECT_EQ(flag, 0);
    }
}

TEST_F(IncomeTax, BackPayKnowsTheFlatRegime) {
    double base = 60000;
    std::int16_t flag = -1;
    EXPECT_DOUBLE_EQ(CalcolaImpostaAP(base, flag), 18440);
    EXPECT_EQ(flag, 0);
    scrivi(P031, 2);
    scrivi(P248, 100);
    EXPECT_DOUBLE_EQ(CalcolaImpostaAP(base, flag), 13800);
}

TEST_F(IncomeTax, SeveranceHasItsOwnTablesChosenByTheCaller) {
    set_brackets(slip.TABIRPAC, 1, {15000, 23, 999999.99, 27});
    set_brackets(slip.TABIRPAC, 21, {26000, 23, 999999.99, 33});
    scrivi(P031, 2);  // the flat regime does not reach severance
    double base = 30000;
    std::int16_t flag = 0;
    EXPECT_DOUBLE_EQ(CalcolaImpostaTFR(base, flag), 7500);  // 3450 + 15000 x 27 %
    flag = -1;
    EXPECT_DOUBLE_EQ(CalcolaImpostaTFR(base, flag), 7300);  // 5980 + 4000 x 33 %
    EXPECT_EQ(flag, -1);
}

}  // namespace
