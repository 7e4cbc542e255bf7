// The certificate of the year: its sums for the adjustment, and its emptying in January.

#include "history/year_totals.h"

#include <gtest/gtest.h>

#include <vector>

#include "files/isam.h"
#include "records/dictionary/CUDX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "tests/support/logical_files.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using ModElaboraStorico::AZZERA_CUD;
using ModElaboraStorico::DETRCUD;

constexpr int kCertificates = 354;
constexpr int kIndex = 356;
constexpr std::size_t kLength = 6100;

const std::vector<Descriptor> kIncomes{X050, X424, X051, X425, X020, X021, X022, X052,
                                       X023, X426, X025, X026, X427, X024, X347};
const std::vector<Descriptor> kFurther{X054, X053, X055, X428, X429, X430, X431, X028,
                                       X029, X030, X019, X032, X027, X064, X348, X349};

class Certificate : public ::testing::Test {
  protected:
    Certificate() {
        test_support::fill_areas();
        files.define(kCertificates, kLength);
        files.define(kIndex, (10 + 7) * 128);
        ISAM(kIndex, "0010000001", kIsamEmpty, 0);
        FAIOPEN(kCertificates);
        FAIOPEN(kIndex);
        scrivi(P001, "0010000001");
        scrivi(F197, 19);
    }
    ~Certificate() override { window.verify(); }
    Certificate(const Certificate&) = delete;
    Certificate& operator=(const Certificate&) = delete;
    Certificate(Certificate&&) = delete;
    Certificate& operator=(Certificate&&) = delete;

    /// The certificate of an employee, with one amount in it.
    void put(std::size_t record, const std::string& code, const Descriptor& field, double amount) {
        std::string text = test_support::empty_record(Area::CUDX, kLength);
        SCRIVICAMPONUM(field, amount, 0, text);
        std::string key = code;
        SCRIVICAMPO(X001, key, 0, text);
        files.put(kCertificates, record, text);
        ISAM(kIndex, code, kIsamInsert, static_cast<double>(record));
    }
    struct Sums {
        double first = -1;
        double second = -1;
    };
    static Sums sums() {
        Sums result;
        DETRCUD(result.first, result.second);
        return result;
    }

    test_support::ScriptedWindow& window = test_support::ScriptedWindow::install();
    test_support::LogicalFiles files;
};

TEST_F(Certificate, EachIncomeCountsByTheYearlyPercentageAndNothingElse) {
    for (const Descriptor& field : kIncomes) {
        put(1, "0010000001", field, 1000);
        const Sums found = sums();
        EXPECT_EQ(found.first, 190) << field.name();
        EXPECT_EQ(found.second, 0) << field.name();
    }
}

TEST_F(Certificate, EachFurtherAmountCountsWhole) {
    for (const Descriptor& field : kFurther) {
        put(1, "0010000001", field, 50.25);
        const Sums found = sums();
        EXPECT_EQ(found.first, 0) << field.name();
        EXPECT_EQ(found.second, 50.25) << field.name();
    }
}

TEST_F(Certificate, NoOtherFieldCounts) {
    std::vector<Descriptor> counting = kIncomes;
    counting.insert(counting.end(), kFurther.begin(), kFurther.end());
    for (const Descriptor& field : fields_of(Area::CUDX)) {
        const bool counts = std::ranges::find(counting, field) != counting.end();
        if (field.type != '2' || counts) {
            continue;
        }
        put(1, "0010000001", field, 100);
        const Sums found = sums();
        EXPECT_EQ(found.first + found.second, 0) << field.name();
    }
}

TEST_F(Certificate, WithoutAPercentageTheIncomesCountNothing) {
    scrivi(F197, 0);
    put(1, "0010000001", X050, 1000);
    EXPECT_EQ(sums().first, 0);
}

TEST_F(Certificate, AnEmployeeWithoutOneHasNoSums) {
    put(1, "0010000001", X054, 50);
    EXPECT_EQ(sums().second, 50);
    scrivi(P001, "0010000002");
    EXPECT_EQ(sums().first, 0);
    EXPECT_EQ(sums().second, 0);
    EXPECT_EQ(num(X054), 0);  // nothing of the one before stays in the area
}

TEST_F(Certificate, AnIndexThatLeadsNowhereIsNoCertificate) {
    put(1, "0010000001", X054, 50);
    ISAM(kIndex, "0010000002", kIsamInsert, 9);
    scrivi(P001, "0010000002");
    EXPECT_EQ(sums().second, 0);
    AZZERA_CUD();
    EXPECT_EQ(files.get(kCertificates, 9), "");
}

TEST_F(Certificate, ARefusedSearchIsNoRecord) {
    put(1, "0010000001", X054, 50);
    scrivi(P001, "");
    for (int i = 0; i < 2; ++i) {
        window.expect_box("ERRORE ISAM - K=BLANK");
    }
    EXPECT_EQ(sums().second, 0);
    const std::string before = files.get(kCertificates, 1);
    AZZERA_CUD();
    EXPECT_EQ(files.get(kCertificates, 1), before);
}

TEST_F(Certificate, IsEmptiedButForTheEmployeesCode) {
    std::string text(kLength, '7');
    std::string key = "0010000001";
    SCRIVICAMPO(X001, key, 0, text);
    files.put(kCertificates, 1, std::string(kLength, '5'));
    files.put(kCertificates, 2, text);
    ISAM(kIndex, "0010000001", kIsamInsert, 2);
    AZZERA_CUD();
    const std::string after = files.get(kCertificates, 2);
    for (const Descriptor& field : fields_of(Area::CUDX)) {
        const bool in_key = field.offset >= 3 && field.offset <= 12;
        const std::string expected = field.type == 'A'
                                         ? std::string(static_cast<std::size_t>(field.length), ' ')
                                         : std::string(static_cast<std::size_t>(field.length), '0');
        if (!in_key) {
            EXPECT_EQ(after.substr(static_cast<std::size_t>(field.offset) - 1, expected.size()),
                      expected)
                << field.name();
        }
    }
    EXPECT_EQ(LEGGICAMPO(X001, 0, after), "0010000001");
    EXPECT_EQ(LEGGICAMPO(X399, 0, after), "0001");
    EXPECT_EQ(files.get(kCertificates, 1), std::string(kLength, '5'));
}

TEST_F(Certificate, WithoutOneNothingIsWritten) {
    put(1, "0010000002", X054, 50);
    const std::string before = files.get(kCertificates, 1);
    AZZERA_CUD();
    EXPECT_EQ(files.get(kCertificates, 1), before);
    EXPECT_EQ(files.get(kCertificates, 2), "");
}

}  // namespace
