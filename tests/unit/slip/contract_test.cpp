// The agreement's pay scale in the employee's record.

#include "slip/contract.h"

#include "files/file_numbers.h"
#include "records/dictionary/CONX.h"
#include "slip_fixture.h"

namespace slip_tests {
namespace {

using namespace MXLIBRERIA::file_numbers;

class Contract : public SlipTest {
  protected:
    static constexpr std::size_t kContractLength = 700;  // two grades
    static constexpr std::size_t kCompanyLength = 6600;

    void SetUp() override {
        SlipTest::SetUp();
        open_file(6, 40, {"310520244"});
        scrivi(T063, 173);
        scrivi(P331, 1);
        scrivi(P050, 1);
        contract_ = test_support::empty_record(Area::CONX, kContractLength);
        // The zeros of the second grade.
        for (const Descriptor& field : fields_of(Area::CONX)) {
            if (field.offset > 100 && field.type != 'A') {
                write(field, 0, 2);
            }
        }
    }

    void write(const Descriptor& field, double value, std::int16_t grade = 1) {
        SCRIVICAMPONUM(field, value, grade, contract_);
    }
    void write_text(const Descriptor& field, const std::string& text, std::int16_t grade = 1) {
        put_text(contract_, field, text, grade);
    }
    /// Puts the contract on file and copies its scale into the employee's record.
    void apply() {
        file(71, kContractLength, {contract_});
        slip.record_copy = area(Area::DIPX);
        PASSQUAL();
    }
    static double employee(const Descriptor& field) {
        return LEGGICAMPONUM(field, 0, slip.record_copy);
    }
    /// Puts company 2 (divisor T063 of 160) on file: the source of a conversion.
    void source_company(const FieldValues& fields) {
        file(1, kCompanyLength,
             {record_with(Area::DITX, kCompanyLength, {}),
              record_with(Area::DITX, kCompanyLength, fields)});
        scrivi(P175, 2);
        scrivi(P334, 1);
    }

    std::string contract_;
};

TEST_F(Contract, NoContractChangesNothing) {
    scrivi(P331, 0.0);
    scrivi(P058, 1000);
    write(G022, 1500);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1000);
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kContracts].CANALI, 0);
}

TEST_F(Contract, AMissingContractIsToldAndTheEmployeesPayStays) {
    scrivi(P331, 2);
    scrivi(P058, 1000);
    window_.expect_box(" CODICE CONTRATTO NON TROVATO ");
    apply();
    window_.verify();
    EXPECT_EQ(window_.boxes.at(0).title, "MESSAGGIO DI ERRORE");
    EXPECT_DOUBLE_EQ(employee(P058), 1000);
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kContracts].CANALI, 0);
}

TEST_F(Contract, ADeletedContractIsToldAndTheEmployeesPayStays) {
    write(G500, 99);
    write(G022, 1500);
    scrivi(P058, 1000);
    window_.expect_box(" CODICE CONTRATTO NON TROVATO ");
    apply();
    window_.verify();
    EXPECT_DOUBLE_EQ(employee(P058), 1000);
}

TEST_F(Contract, ElementsOfTheGradeThatAreNotZeroAreCopied) {
    const std::vector<std::pair<Descriptor, Descriptor>> scale{
        {G022, P058}, {G023, P069}, {G024, P062}, {G025, P063},
        {G026, P064}, {G027, P065}, {G028, P066}, {G029, P067}};
    double amount = 100;
    for (const auto& [contract, own] : scale) {
        write(contract, amount, 2);
        amount += 10;
    }
    write(G027, 0, 2);
    scrivi(P065, 7);
    scrivi(P332, 2);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 100);
    EXPECT_DOUBLE_EQ(employee(P069), 110);
    EXPECT_DOUBLE_EQ(employee(P062), 120);
    EXPECT_DOUBLE_EQ(employee(P063), 130);
    EXPECT_DOUBLE_EQ(employee(P064), 140);
    EXPECT_DOUBLE_EQ(employee(P065), 7);  // 0 in the contract: the employee's own stays
    EXPECT_DOUBLE_EQ(employee(P066), 160);
    EXPECT_DOUBLE_EQ(employee(P067), 170);
}

TEST_F(Contract, GradeZeroIsTheFirst) {
    write(G022, 1500, 1);
    write(G022, 1700, 2);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1500);
}

TEST_F(Contract, FurtherElementsAreCopiedEvenWhenZero) {
    write(G246, 11);
    write(G248, 13);
    scrivi(P354, 99);
    apply();
    EXPECT_DOUBLE_EQ(employee(P353), 11);
    EXPECT_DOUBLE_EQ(employee(P354), 0);
    EXPECT_DOUBLE_EQ(employee(P355), 13);
}

// ---- Dated rises ----

TEST_F(Contract, ARiseDatedOnTheDayOfTheSlipIsAdded) {
    write(G022, 1500);
    write_text(G003, "31052024");
    write(G019, 30);
    write_text(G005, "31052024");
    write(G021, 12.50);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1542.50);  // 1500 + 30 + 12.50
}

TEST_F(Contract, ARiseOfAnotherDayOrNoDayAddsNothing) {
    write(G022, 1500);
    write_text(G003, "01052024");
    write(G019, 30);
    write_text(G004, "31062024");  // June has 30 days
    write(G020, 30);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1500);
}

TEST_F(Contract, TheContractOnFileStaysAsItIs) {
    write(G022, 1500);
    write_text(G003, "31052024");
    write(G019, 30);
    scrivi(P333, 50);
    apply();
    EXPECT_EQ(archive_.read(name_of(kContracts)), contract_);
}

TEST_F(Contract, ThePeriodIsReadWhereTheFileIsNotOpen) {
    MXLIBRERIA::CHIUDI(kPeriod);
    MXLIBRERIA::period.set("010120204");  // not that of the file
    write(G022, 1500);
    write_text(G003, "31052024");
    write(G019, 30);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1530);
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kPeriod].CANALI, 0);
}

// ---- Reduced contracts ----

TEST_F(Contract, AReducedContractScalesItsPay) {
    write(G022, 1500);
    write(G023, 200);
    write(G011, 1);
    write(G012, 25);
    scrivi(P333, 80);
    scrivi(P029, 2);
    scrivi(P026, 5);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1200);  // 1500 x 80 %
    EXPECT_DOUBLE_EQ(employee(P069), 160);   // 200 x 80 %
    // Its marks switch seniority off: no amount of the step, and P061 is left alone.
    EXPECT_DOUBLE_EQ(employee(P026), 5);
    EXPECT_DOUBLE_EQ(employee(P061), 0);
    EXPECT_DOUBLE_EQ(num(G010, 1), 1);
    EXPECT_DOUBLE_EQ(num(G011, 1), 0);
    EXPECT_DOUBLE_EQ(num(G016, 1), 5);
    EXPECT_EQ(testo(G017, 1), "101000100 ");
}

TEST_F(Contract, TheMarksAreSetWhateverThePercentage) {
    write(G022, 1000);
    scrivi(P333, 99.99);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 999.9);  // 1000 x 99.99 %
    EXPECT_DOUBLE_EQ(num(G016, 1), 5);
}

TEST_F(Contract, APercentageThatIsNoNumberReducesNothing) {
    write(G022, 1000);
    area(Area::DIPX).replace(static_cast<std::size_t>(P333.offset - 1), 4, "5O.0");
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1000);
    EXPECT_DOUBLE_EQ(num(G016, 1), 0);
}

// ---- Seniority ----

class ContractSeniority : public Contract {
  protected:
    void SetUp() override {
        Contract::SetUp();
        write(G011, 1);
        write(G012, 34.60);
        scrivi(P026, 5);
        scrivi(P029, 3);
        scrivi(P027, "052024");
    }
};

TEST_F(ContractSeniority, RuleZeroLeavesTheStep) {
    write(G011, 0);
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 5);
    EXPECT_DOUBLE_EQ(employee(P061), 15);  // 5 x 3 steps
}

TEST_F(ContractSeniority, AFixedAmountTimesTheSteps) {
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 34.60);
    EXPECT_DOUBLE_EQ(employee(P061), 103.80);  // 34.60 x 3
}

TEST_F(ContractSeniority, G010KeepsTheSeniorityPay) {
    write(G010, 1);
    scrivi(P061, 50);
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 34.60);
    EXPECT_DOUBLE_EQ(employee(P061), 50);
}

TEST_F(ContractSeniority, PayByTheHourTakesItsShare) {
    scrivi(P050, 0.0);
    write(G010, 1);
    scrivi(P061, 1.5);
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 1.7);  // 1.5 + 34.60 / 173
}

TEST_F(ContractSeniority, TheEmployeesOwnDivisorRules) {
    scrivi(P050, 0.0);
    write(G010, 1);
    scrivi(P891, 100);
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 0.346);  // 34.60 / 100
}

TEST_F(ContractSeniority, WithoutADivisorTheAmountIsKeptWhole) {
    scrivi(P050, 0.0);
    scrivi(T063, 0.0);
    write(G010, 1);
    scrivi(P061, 1.5);
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 34.60);
}

TEST_F(ContractSeniority, WhenItApplies) {
    scrivi(P335, 1);  // in the month of the last step only
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 34.60);
    scrivi(P027, "042024");
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 5);
    scrivi(P335, 2);  // steps of January only
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 5);
    scrivi(P027, "012020");
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 34.60);
    scrivi(P335, 3);  // never
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 5);
}

TEST_F(ContractSeniority, APercentageOfTheNamedAmounts) {
    write(G011, 2);
    write(G012, 4);
    write(G010, 1);
    write(G022, 1500);
    write(G024, 100);
    write(G026, 60);
    scrivi(Q096, 200);
    scrivi(Q105, 40);
    // P1 and P0 the first and the tenth of the employee's amounts; 1, 3 and 5 of the grade, with
    // the digit right, left and zero-filled.
    write_text(G014, "P1P0 13 05");
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 76);  // (200 + 40 + 1500 + 100 + 60) x 4 %
}

TEST_F(ContractSeniority, TokensThatNameNothing) {
    write(G011, 2);
    write(G012, 10);
    write(G010, 1);
    write(G022, 1500);
    write_text(G014, "XYP 09P 01");
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 150);  // 1500 x 10 %: only "01" names an amount
}

TEST_F(ContractSeniority, APercentageOfZeroLeavesTheStep) {
    write(G011, 2);
    write(G012, 0);
    write(G010, 1);
    apply();
    EXPECT_DOUBLE_EQ(employee(P026), 5);
}

// ---- Conversion ----

TEST_F(Contract, TheScaleOfASourceCompanyIsBroughtToTheHour) {
    source_company({{T063, 160}});
    write(G022, 1600);
    write(G023, 320);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 10);   // 1600 / 160
    EXPECT_DOUBLE_EQ(employee(P069), 320);  // not converted
    EXPECT_DOUBLE_EQ(employee(P050), 0);
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kCompanies].CANALI,
              0);  // closed where it was opened here
}

TEST_F(Contract, TheFactorOfTheConversion) {
    source_company({{T063, 160}});
    scrivi(P334, 2);
    write(G022, 1000);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 12.5);  // 1000 x 2 / 160
}

TEST_F(Contract, TheConversionIsRoundedToFiveDecimals) {
    source_company({{T063, 173}});
    write(G022, 1000);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 5.78035);  // 1000 / 173 = 5.780346...
}

TEST_F(Contract, AnOpenCompanyFileStaysAsItWas) {
    source_company({{T063, 160}});
    MXLIBRERIA::FAIOPEN(kCompanies);
    MXLIBRERIA::LEGGIREC(kCompanies, 1);
    const std::string buffer = MXLIBRERIA::record_buffer(kCompanies);
    write(G022, 1600);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 10);
    EXPECT_NE(MXLIBRERIA::file_table.entries[kCompanies].CANALI, 0);
    EXPECT_EQ(MXLIBRERIA::record_buffer(kCompanies), buffer);
    EXPECT_DOUBLE_EQ(num(T063), 173);  // the loaded company
}

TEST_F(Contract, NoConversionWithoutItsCompanyOrDivisor) {
    write(G022, 1600);
    source_company({{T063, 160}, {T261, 99}});
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1600);  // deleted company
    source_company({});
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1600);  // no divisor
    source_company({{T063, 160}});
    scrivi(P175, 3);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1600);  // no such company
    scrivi(P175, 0.0);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1600);
    scrivi(P175, 2);
    scrivi(P334, 0.0);
    apply();
    EXPECT_DOUBLE_EQ(employee(P058), 1600);
    EXPECT_DOUBLE_EQ(employee(P050), 1);
}

// ---- Failures ----

TEST_F(Contract, AGradeBeyondTheRecordShowsTheFailureAndEndsTheRun) {
    scrivi(P332, 9);
    scrivi(P333, 50);  // writing the marks of grade 9 goes beyond 700 characters
    window_.expect_box("9 Subscript out of range");
    EXPECT_THROW(apply(), EndRun);
    window_.verify();
    EXPECT_EQ(window_.boxes.at(0).title, "MESSAGGIO DI ERRORE");
    EXPECT_EQ(MXLIBRERIA::file_table.entries[kContracts].CANALI, 0);
}

}  // namespace
}  // namespace slip_tests
