// The program itself on pay items, lines, contracts and bracket files that are damaged or missing.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "files/file_numbers.h"
#include "installation/installation.h"
#include "nzutil/process.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "tests/support/demo_run.h"

namespace {

namespace fs = std::filesystem;
using namespace MXREPOSITORY;
using nzutil::Installation;
using nzutil::ProcessResult;
using namespace MXLIBRERIA::file_numbers;

constexpr int kDictionaryP = 11;
constexpr int kFreeItem = 300;  ///< a code that the demo does not use

/// The first employee of the demo: 26 days of monthly pay, 1908.75, at 1908.75 / 26 = 73.41346.
class ItemFaults : public test_support::DemoRun {
  protected:
    static constexpr double kPay = 1908.75;

    void SetUp() override {
        DemoRun::SetUp();
        installation().write_selection({{1, 1}});
        slip_of({line("002", "0000000002600")});
    }

    /// A line of an item: 13 characters of quantity, 13 of rate.
    static std::string line(const std::string& code, const std::string& quantity,
                            const std::string& rate = "0000000000000") {
        return " " + code + quantity + rate + "     ";
    }
    /// Gives the employee these lines.
    void slip_of(std::vector<std::string> lines) {
        lines.push_back(line("999", "0000000000000"));
        std::string record = employee();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            record.replace(static_cast<std::size_t>(Q401.offset - 1) + i * 35, 35, lines[i]);
        }
        installation().write(kEmployees, 1, record);
    }
    [[nodiscard]] std::string employee() const { return *installation().read(kEmployees, 1); }
    [[nodiscard]] double field(const Descriptor& descriptor) const {
        return LEGGICAMPONUM(descriptor, 0, employee());
    }
    void change_employee(const Descriptor& descriptor, double value) {
        std::string record = employee();
        SCRIVICAMPONUM(descriptor, value, 0, record);
        installation().write(kEmployees, 1, record);
    }

    /// Makes an item that is an earning and counts for nothing else, with this formula.
    void item(int code, const std::vector<std::string>& formula, int deleted = 0) {
        std::string record = *installation().read(kPayItems, 2);
        SCRIVICAMPONUM(Z049, deleted, 0, record);
        for (const Descriptor& counted : {Z013, Z014, Z020}) {
            SCRIVICAMPONUM(counted, 0, 0, record);
        }
        for (std::size_t cell = 0; cell < 100; ++cell) {
            std::string text = cell < formula.size() ? formula[cell] : ".";
            SCRIVICAMPO(dopo(Z051, static_cast<int>(cell)), text, 0, record);
        }
        installation().write(kPayItems, code, record);
    }

    /// The slip is calculated, with this gross pay.
    ProcessResult expect_gross(double gross) const {
        ProcessResult result = run();
        EXPECT_EQ(result.status, 0) << result.output << result.errors;
        EXPECT_NE(result.output.find(":elaborato"), std::string::npos) << result.output;
        EXPECT_DOUBLE_EQ(field(P241), gross);
        return result;
    }
};

TEST_F(ItemFaults, TheSlipWithoutDamage) {
    expect_gross(kPay);
}

TEST_F(ItemFaults, AnItemThatDoesNotExistIsPassedOver) {
    slip_of({line("998", "0000000000100", "0000010000000"), line("002", "0000000002600")});
    expect_gross(kPay);
}

TEST_F(ItemFaults, ADeletedItemIsPassedOver) {
    item(kFreeItem, {}, 99);
    slip_of({line("300", "0000000000100", "0000010000000"), line("002", "0000000002600")});
    expect_gross(kPay);
}

TEST_F(ItemFaults, LettersInTheQuantityEndTheNumber) {
    item(kFreeItem, {});
    // 3.00 until the letter, by 10.00
    slip_of({line("300", "00000000300AB", "0000001000000"), line("002", "0000000002600")});
    expect_gross(kPay + 30);
}

TEST_F(ItemFaults, AnUnknownTargetIsToldAndTheFormulaGoesOn) {
    item(kFreeItem, {".7", "=XYZ", "=CU", ".1", "=OG"});
    slip_of({line("300", "0000000000000"), line("002", "0000000002600")});
    const ProcessResult result = expect_gross(kPay + 7);
    EXPECT_NE(result.output.find("CAMPO NON DECIFRABILE  XYZ"), std::string::npos);
}

TEST_F(ItemFaults, ADivisionByZeroHasNoEffect) {
    item(kFreeItem, {".7", "/0", "=CU", ".1", "=OG"});
    slip_of({line("300", "0000000000000"), line("002", "0000000002600")});
    expect_gross(kPay + 7);
}

TEST_F(ItemFaults, ARegisterWithoutItsDigitIsTheFirst) {
    item(kFreeItem, {".7", "=MEMx", ".MEM0", "=CU", ".1", "=OG"});
    slip_of({line("300", "0000000000000"), line("002", "0000000002600")});
    expect_gross(kPay + 7);
}

TEST_F(ItemFaults, GarbageInTheFormulaGivesNothing) {
    item(kFreeItem, {"?#!\x80~", "zzzzzzzzzzz", "........", "=", "%-%-%"});
    slip_of({line("300", "0000000000000"), line("002", "0000000002600")});
    const ProcessResult result = expect_gross(kPay);
    EXPECT_NE(result.output.find("CAMPO NON DECIFRABILE"), std::string::npos);
}

TEST_F(ItemFaults, AMissingDictionaryFileEndsTheRun) {
    fs::remove(installation().path(kDictionaryP));
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("Errore 53 File not found"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("DAMMIFILE$ (11)"), std::string::npos) << result.output;
}

TEST_F(ItemFaults, ADamagedDictionaryRecordIsToldAndReadsAsNothing) {
    // The record of P209, on which the monthly pay stands, gets letters for its length.
    const Installation here = installation();
    for (int record = 1; record <= here.record_count(kDictionaryP); ++record) {
        std::string row = *here.read(kDictionaryP, record);
        if (row.substr(68, 4) == "P209") {
            row.replace(29, 2, "XX");
            installation().write(kDictionaryP, record, row);
        }
    }
    const ProcessResult result = expect_gross(0);
    EXPECT_NE(result.output.find("ERRORE REPOSITORY: nome inesistente P209"), std::string::npos)
        << result.output;
}

TEST_F(ItemFaults, AnEmptyBracketFileStopsTheRun) {
    write(installation().path(kTaxBrackets), "");
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_NE(result.output.find("Errore 62 Input past end of file"), std::string::npos)
        << result.output;
}

TEST_F(ItemFaults, ABracketFileOfOneRecordIsEnoughWhereItCloses) {
    const std::string file = installation().path(kTaxBrackets);
    std::string record = *installation().read(kTaxBrackets, 1);
    record.replace(0, 12, "999999.99230");  // 23 percent on everything
    write(file, record);
    expect_gross(kPay);
    // 23 % of a year of 12 months, a twelfth of it: 23 % of the month's taxable
    EXPECT_NEAR(field(P257), field(P256) * 0.23, 0.005);
}

TEST_F(ItemFaults, AMissingContractIsToldAndTheEmployeesPayStays) {
    change_employee(P331, 200);
    change_employee(P058, 1500);
    change_employee(P062, 0);
    change_employee(P063, 0);
    const ProcessResult result = expect_gross(1500);
    EXPECT_NE(result.output.find("[MESSAGGIO DI ERRORE]  CODICE CONTRATTO NON TROVATO"),
              std::string::npos)
        << result.output;
}

TEST_F(ItemFaults, ADeletedContractIsToldToo) {
    std::string contract = *installation().read(kContracts, 1);
    SCRIVICAMPONUM(G500, 99, 0, contract);
    installation().write(kContracts, 1, contract);
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("CODICE CONTRATTO NON TROVATO"), std::string::npos);
}

/// The box names the employee. Two slips are owed: his own and the third's; the twelfth has the
/// month from an earlier run.
TEST_F(ItemFaults, APayScaleBeyondItsRecordEndsTheRunAndTellsWhoIsLeft) {
    installation().write_selection({{1, 2}, {1, 1}, {1, 12}, {1, 3}});
    change_employee(P332, 99);
    change_employee(P333, 50);  // its marks do not fit in the contract's record
    const ProcessResult result = run();
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_NE(result.output.find("FERRARI MARCO                           :elaborato"),
              std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("[MESSAGGIO DI ERRORE] 9 Subscript out of range\n"
                                 "001-000-0001 - BIANCHI LAURA\n"),
              std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("Calcolo cedolino terminato"), std::string::npos) << result.output;
    EXPECT_TRUE(result.output.ends_with("Dipendenti non elaborati: 2\n")) << result.output;
    EXPECT_EQ(result.output.find("BIANCHI LAURA   "), std::string::npos) << result.output;
    EXPECT_EQ(result.output.find("ROMANO"), std::string::npos) << result.output;
}

}  // namespace
