#include <algorithm>

#include "context/trace.h"
#include "tests/support/logical_files.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

class SaveResults : public SlipTest {};

TEST_F(SaveResults, KeepsTheSlipForTheNextOneOfTheMonth) {
    scrivi(P250, 1909);
    scrivi(Q225, 175.44);
    scrivi(P256, 1733.31);
    scrivi(Q137, 180.46);
    scrivi(Q173, 1553);
    scrivi(Q163, 0.15);
    save_results();
    EXPECT_EQ(num(P281), 1);
    EXPECT_EQ(num(P268), 1909);
    EXPECT_EQ(num(P278), 1909);
    EXPECT_EQ(num(P269), 175.44);
    EXPECT_EQ(num(P273), 1733.31);
    EXPECT_EQ(num(P274), 180.46);
    EXPECT_EQ(num(P275), 1553);
    EXPECT_EQ(num(P280), 0.15);
}

TEST_F(SaveResults, AnAdditionalSlipSavesNothing) {
    at("310520240");
    scrivi(P250, 1909);
    save_results();
    EXPECT_EQ(num(P281), 0);
    EXPECT_EQ(num(P268), 0);
}

TEST_F(SaveResults, KeepsTheWageOfTheEarlierSlipOfTheMonthAside) {
    scrivi(P268, 1000);
    scrivi(P250, 1909);
    slip.earlier_slip_this_month = true;
    save_results();
    EXPECT_EQ(slip.former_P268, 1000);
    EXPECT_EQ(num(P268), 1909);
}

TEST_F(SaveResults, AWageOfAnotherMonthIsNoEarlierSlip) {
    scrivi(P268, 1000);  // left by December
    slip.earlier_slip_this_month = false;
    save_results();
    EXPECT_EQ(slip.former_P268, 0);
}

TEST_F(SaveResults, TheFormerCodeIsKeptAsideAndBlanked) {
    scrivi(P563, "0010000009");
    save_results();
    EXPECT_EQ(slip.former_P563, "0010000009");
    EXPECT_EQ(rifilato(P563), "");
}

TEST_F(SaveResults, ASettlementSlipPaysNoRevaluation) {
    scrivi(Q040, 5);
    scrivi(Q041, 6);
    save_results();
    EXPECT_EQ(num(Q040), 5);
    scrivi(P118, 2);
    save_results();
    EXPECT_EQ(num(Q040), 0);
    EXPECT_EQ(num(Q041), 0);
}

class LateCalculations : public SlipTest {
    test_support::LogicalFiles files;  // a directory without archives
};

TEST_F(LateCalculations, TheJanuaryDifferenceGoesToItsSide) {
    at("310120244");
    slip.RETRIBUZIONEDIFF = 99.5;
    late_calculations();
    EXPECT_EQ(num(Q780), 100);  // the half rounds up
    EXPECT_EQ(num(Q781), 0);
    slip.RETRIBUZIONEDIFF = -99.6;
    late_calculations();
    EXPECT_EQ(num(Q780), 100);   // stays: only the opening of the year empties it
    EXPECT_EQ(num(Q781), -100);  // Int(-99.6 + 0.5)
}

TEST_F(LateCalculations, ADifferenceInTheRecordStaysInEveryMonth) {
    for (const char* month : {"310520244", "310120244"}) {
        at(month);
        scrivi(Q780, 100);
        scrivi(Q781, -40);
        late_calculations();
        EXPECT_EQ(num(Q780), 100);
        EXPECT_EQ(num(Q781), -40);
    }
}

TEST_F(LateCalculations, TheTaxableGoesToItsClass) {
    scrivi(P938, 1);
    scrivi(P256, 1733.5);
    scrivi(Q094, 1000);
    for (int by_class = 1; by_class <= 9; ++by_class) {
        scrivi(P032, by_class);
        late_calculations();
        EXPECT_EQ(num(dopo(Q205, by_class - 1)), 1733.5) << by_class;
    }
    EXPECT_EQ(num(Q204), 1733.5);
    EXPECT_EQ(num(Q094), 1000 + 9 * 1734);
}

TEST_F(LateCalculations, OnlyP938KeepsTheTaxableByClass) {
    scrivi(P256, 1733.5);
    scrivi(P032, 1);
    late_calculations();
    EXPECT_EQ(num(Q204), 0);
    EXPECT_EQ(num(Q205), 0);
}

TEST_F(LateCalculations, TheContractPayTakesTheBaseByTheHourWithHourlyElements) {
    scrivi(P058, 2);
    scrivi(P355, 1);
    scrivi(P059, 50);  // no element of it
    scrivi(P069, 1730);
    late_calculations();
    EXPECT_EQ(num(P617), 13);  // 2 + 1 + 1730 / 173
    scrivi(P050, 1);
    late_calculations();
    EXPECT_EQ(num(P617), 1733);
}

TEST_F(LateCalculations, SuspendedTaxStaysOutOfTheTaxPaidWhereNoAdjustmentTookIt) {
    slip.ordinary_worker = true;
    scrivi(Q014, 500);
    scrivi(Q801, 200);
    late_calculations();
    EXPECT_EQ(num(Q014), 500);
}

TEST_F(LateCalculations, SuspendedTaxLeavesTheTaxPaidAfterTheAdjustment) {
    slip.ordinary_worker = true;
    slip.suspended_tax_joined = true;
    scrivi(Q014, 500);
    scrivi(Q801, 200);
    scrivi(P792, 1);
    late_calculations();
    EXPECT_EQ(num(Q014), 500);
    scrivi(P792, 0);
    late_calculations();
    EXPECT_EQ(num(Q014), 300);
    scrivi(Q014, 200);  // nothing would be left
    late_calculations();
    EXPECT_EQ(num(Q014), 200);
    slip.ordinary_worker = false;
    scrivi(Q014, 500);
    late_calculations();
    EXPECT_EQ(num(Q014), 500);
}

TEST_F(LateCalculations, AnAdditionalSlipKeepsItsShareOfTheFund) {
    scrivi(Q201, 30);
    late_calculations();
    EXPECT_EQ(num(Q881), 0);
    at("310520240");
    late_calculations();
    EXPECT_EQ(num(Q881), 30);
}

TEST_F(LateCalculations, AWaivedReliefIsCleared) {
    scrivi(P600, 1);
    scrivi(P748, 2);
    scrivi(P921, 1);
    late_calculations();
    EXPECT_EQ(num(P600), 0);
    EXPECT_EQ(num(P748), 0);
}

TEST_F(LateCalculations, TheGeneralExemptionIsWorkedOutByTheCodeOrWhereACapIsSet) {
    const auto worked_out = [](const char* code, double cap) {
        scrivi(P916, code);
        scrivi(F442, cap);
        MXLIBRERIA::trace_ring = {};
        late_calculations();
        const auto& names = MXLIBRERIA::trace_ring.slots;
        return std::find(names.begin(), names.end(), "ERR_CALCOLA_ESONERO_NUOVI_ASS") !=
               names.end();
    };
    for (const char* code : {"D", "F", "G"}) {
        EXPECT_TRUE(worked_out(code, 0)) << code;
    }
    EXPECT_FALSE(worked_out("E", 0));
    EXPECT_TRUE(worked_out("E", 500));
    EXPECT_FALSE(worked_out("0", 500));
}

TEST_F(LateCalculations, TheFlatIncentivesWantTheirSwitchAndTheirAmount) {
    struct Incentive {
        const char* procedure;
        Descriptor switched;
        Descriptor amount;
    };
    for (const Incentive& incentive : {Incentive{"CALCOLA_INCENTIVO_DL76", P888, F432},
                                       Incentive{"CALCOLA_INCENTIVO_LICE", P900, F435}}) {
        const auto worked_out = [&incentive](double switched, double amount) {
            scrivi(incentive.switched, switched);
            scrivi(incentive.amount, amount);
            MXLIBRERIA::trace_ring = {};
            late_calculations();
            const auto& names = MXLIBRERIA::trace_ring.slots;
            return std::find(names.begin(), names.end(), incentive.procedure) != names.end();
        };
        EXPECT_TRUE(worked_out(1, 650)) << incentive.procedure;
        EXPECT_FALSE(worked_out(2, 650)) << incentive.procedure;
        EXPECT_FALSE(worked_out(0, 650)) << incentive.procedure;
        EXPECT_FALSE(worked_out(1, 0)) << incentive.procedure;
    }
}

TEST_F(LateCalculations, TheReliefAskedForStaysWithinTheEmployersContribution) {
    scrivi(P040, 2);
    scrivi(S035, 39.19);  // of which 9.19 the employee's
    scrivi(S003, 9.19);
    scrivi(P240, 2000);
    scrivi(P325, 500);
    late_calculations();
    EXPECT_EQ(num(P326), 500);
    scrivi(P325, 700);
    late_calculations();
    EXPECT_EQ(num(P326), 600);  // 2000 x 30 %
    slip.former_P268 = 100;
    late_calculations();
    EXPECT_EQ(num(P326), 630);  // (100 + 2000) x 30 %
    scrivi(P327, 1);
    late_calculations();
    EXPECT_EQ(num(P326), 0);
    scrivi(P327, 0);
    at("310520240");
    late_calculations();
    EXPECT_EQ(num(P326), 0);  // an additional slip has none
}

TEST_F(LateCalculations, NotesOfZerosAreBlanked) {
    scrivi(P803, std::string(30, '0'));
    late_calculations();
    EXPECT_EQ(rifilato(P803), "");
}

}  // namespace
}  // namespace ModSWCALM
