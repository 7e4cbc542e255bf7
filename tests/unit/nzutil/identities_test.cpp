// Each identity holds for a slip that is right, and fails by its name on a record that is not.

#include "nzutil/identities.h"

#include <gtest/gtest.h>

#include <memory>

#include "installation/demo.h"
#include "installation/field_value.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "tests/support/temp_directory.h"

namespace nzutil {
namespace {

using namespace MXREPOSITORY;

struct Value {
    Descriptor field;
    const char* value;
};
using Values = std::vector<Value>;

/// A clerk of 1908.75 a month in May 2024: 1909 x 9.19 % = 175.44; 1908.75 - 175.44 = 1733.31;
/// 20799.72 x 23 % / 12 = 398.66; (1910 + 1190 x 7200.28 / 13000) / 365 x 31 = 218.20; 180.46;
/// 1552.85 paid 1553.
class Identities : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        directory_ = std::make_unique<test_support::TempDirectory>();
        installation_ =
            std::make_unique<Installation>(make_base_installation(directory_->path() + "/base"));
    }
    static void TearDownTestSuite() {
        installation_.reset();
        directory_.reset();
    }

    void SetUp() override {
        installation_->write_selection({{1, 1}});
        company_ = *installation_->read(kCompanies, 1);
        before_ = model_employee(*installation_).record;
        before_set({{P001, "0010000001"},
                    {PB05, "1"},
                    {Q013, "6933.24"},
                    {Q014, "721.84"},
                    {Q001, "7636"},
                    {Q003, "7635"},
                    {Q005, "701.76"},
                    {Q656, "872.80"},
                    {Q659, "120"},
                    {Q171, "4"}});
        after_ = before_;
        lines({{.item = 2, .quantity = "26", .rate = "73.41346", .raw = ""}});
        set({{Q179, "31052024"}, {P215, "31"},      {P240, "1909"},   {P250, "1908.75"},
             {P241, "1908.75"},  {Q224, "175.44"},  {Q225, "175.44"}, {P253, "175.44"},
             {P256, "1733.31"},  {P257, "398.66"},  {Q657, "218.20"}, {Q137, "180.46"},
             {P258, "180.46"},   {P259, "355.90"},  {Q173, "1553"},   {Q163, "0.15"},
             {Q013, "8666.55"},  {Q014, "902.30"},  {Q001, "9545"},   {Q003, "9543.75"},
             {Q005, "877.20"},   {Q656, "1091.00"}, {Q659, "151"},    {Q171, "5"}});
    }
    void TearDown() override { installation_->write(kCompanies, 1, company_); }

    void set(const Values& values) { store_in(after_, values); }
    void before_set(const Values& values) { store_in(before_, values); }
    /// The same in the record before the run and after it.
    void both(const Values& values) {
        set(values);
        before_set(values);
    }
    void company(const Values& values) {
        std::string record = company_;
        store_in(record, values);
        installation_->write(kCompanies, 1, record);
    }
    void lines(const std::vector<SlipLineEntry>& entries) {
        for (int i = 0; i < 100; ++i) {
            const auto line = static_cast<std::size_t>(i);
            const std::string text = line < entries.size()
                                         ? slip_line_text(*installation_, entries[line])
                                         : std::string(" 999");
            store(dopo(Q401, i), 0, text, after_);
        }
    }

    /// Names of the identities that fail, in their order.
    std::string failing(bool calculated = true) {
        std::string names;
        const CalculatedSlip slip(*installation_, 1, before_, after_, period_);
        for (const Difference& difference : check_identities(slip, calculated, {})) {
            names += (names.empty() ? "" : " ") +
                     difference.place.substr(difference.place.find(' ') + 1);
        }
        return names;
    }

    static std::unique_ptr<test_support::TempDirectory> directory_;
    static std::unique_ptr<Installation> installation_;
    std::string company_;
    std::string before_;
    std::string after_;
    PeriodEntry period_{"31052024", '4'};

  private:
    static void store_in(std::string& record, const Values& values) {
        for (const Value& value : values) {
            store(value.field, 0, value.value, record);
        }
    }
};
std::unique_ptr<test_support::TempDirectory> Identities::directory_;
std::unique_ptr<Installation> Identities::installation_;

TEST_F(Identities, HoldForARightSlip) {
    EXPECT_EQ(failing(), "");
}

TEST_F(Identities, GrossIsTheSumOfWhatIsPaid) {
    // A refund that has not reached the net: 1908.75 + 10.00 in gross and deductions.
    set({{P241, "1918.75"}, {P259, "365.90"}});
    EXPECT_EQ(failing(), "gross deductions");
    set({{P259, "355.90"}, {Q173, "1563"}});
    EXPECT_EQ(failing(), "gross");
}

TEST_F(Identities, ReliefsHoldForAPremiumAndTips) {
    // A premium of 1000 with method 2: 91.90 of contributions; tips of 100, flat tax 5 % of each.
    // 2909 x 9.19 % = 267.34; 1908.75 + 91.90 - 267.34 = 1733.31; net 3008.75 - 498.21 = 2510.54.
    const std::string yearly = *installation_->read(kFixedData, 1);
    std::string with_rates = yearly;
    store(F415, 0, "2", with_rates);
    installation_->write(kFixedData, 1, with_rates);
    const auto item = [](int fiscal, int social) {
        std::string record(1430, ' ');
        store(Z011, 0, "0", record);
        store(Z013, 0, std::to_string(fiscal), record);
        store(Z014, 0, std::to_string(social), record);
        return record;
    };
    installation_->write(kPayItems, 195, item(6, 1));
    installation_->write(kPayItems, 199, item(9, 0));
    before_set({{Q775, "24000"}});
    lines({{.item = 2, .quantity = "26", .rate = "73.41346", .raw = ""},
           {.item = 195, .quantity = "1", .rate = "1000", .raw = ""},
           {.item = 199, .quantity = "1", .rate = "100", .raw = ""}});
    set({{Q775, "24000"},  {P240, "2909"},   {P250, "2908.75"}, {P241, "3008.75"},
         {Q224, "267.34"}, {Q225, "267.34"}, {P253, "267.34"},  {P259, "498.21"},
         {Q173, "2511"},   {Q163, "0.46"},   {Q001, "10545"},   {Q003, "10543.75"},
         {Q005, "969.10"}, {P759, "1000"},   {P760, "91.90"},   {P761, "908.10"},
         {P762, "45.41"},  {Q776, "1000"},   {Q777, "91.90"},   {Q778, "908.10"},
         {Q779, "45.41"},  {PB55, "100"},    {PB56, "5"},       {QA27, "100"},
         {QA28, "5"}});
    EXPECT_EQ(failing(), "");
    for (const Value& wrong : {Value{Q776, "999"}, Value{Q777, "91"}, Value{Q778, "900"},
                               Value{Q779, "45"}, Value{QA27, "99"}, Value{QA28, "4"}}) {
        const std::string kept = after_;
        set({wrong});
        EXPECT_EQ(failing(), "reliefs") << wrong.value;
        after_ = kept;
    }
    // 1 of the premium is told as ordinary income without need: relief and taxable say so.
    set({{P759, "999"}, {Q776, "999"}});
    EXPECT_EQ(failing(), "taxable reliefs");
    installation_->write(kFixedData, 1, yearly);
}

TEST_F(Identities, GrossTakesAllowancesAndRefunds) {
    set({{Q139, "30.00"}, {Q772, "12.50"}, {P241, "1951.25"}, {Q173, "1596"}, {Q163, "0.65"}});
    EXPECT_EQ(failing(), "");
    set({{Q139, "30.01"}});
    EXPECT_EQ(failing(), "gross");
}

TEST_F(Identities, ALineThatIsNeitherEarningNorDeductionCountsNowhere) {
    // Item 320 holds a date; item 81 is an advance of 200 already paid.
    lines({{.item = 2, .quantity = "26", .rate = "73.41346", .raw = ""},
           {.item = 81, .quantity = "1", .rate = "200", .raw = ""},
           {.item = 502, .quantity = "1", .rate = "77", .raw = ""}});
    set({{P259, "555.90"}, {Q173, "1353"}});
    EXPECT_EQ(failing(), "");
    set({{P241, "1985.75"}, {P259, "632.90"}});
    EXPECT_EQ(failing(), "gross deductions");
}

TEST_F(Identities, DeductionsAreTheSumOfWhatIsTaken) {
    // The month's tax left out: 175.44 taken, 1733.31 paid.
    set({{P259, "175.44"}, {Q173, "1734"}, {Q163, "0.69"}});
    EXPECT_EQ(failing(), "deductions");
}

TEST_F(Identities, NetIsGrossLessDeductionsRoundedUpToTheEuro) {
    set({{Q173, "1554"}});
    EXPECT_EQ(failing(), "net");
    set({{Q173, "1552"}, {Q163, "-0.85"}});  // rounded down
    EXPECT_EQ(failing(), "net");
    set({{Q173, "1552.85"}, {Q163, "0"}});  // not rounded
    EXPECT_EQ(failing(), "net");
}

TEST_F(Identities, NetByTensEndsInZeroOrFive) {
    company({{TA43, "1"}});
    EXPECT_EQ(failing(), "net");
    set({{Q173, "1550"}, {Q163, "-2.85"}});
    EXPECT_EQ(failing(), "");
}

TEST_F(Identities, NetOfALeaverInTheMonthIsNotRounded) {
    both({{P054, "1"}});
    EXPECT_EQ(failing(), "net");
    set({{Q173, "1552.85"}, {Q163, "0"}});
    EXPECT_EQ(failing(), "");
}

TEST_F(Identities, ANegativeNetIsCarriedOn) {
    // 1600 of advances: 1552.85 - 1600 = -47.15
    lines({{.item = 2, .quantity = "26", .rate = "73.41346", .raw = ""},
           {.item = 81, .quantity = "1", .rate = "1600", .raw = ""}});
    set({{P259, "1955.90"}, {Q173, "0"}, {Q163, "47.15"}});
    EXPECT_EQ(failing(), "");
    set({{Q163, "0"}});
    EXPECT_EQ(failing(), "net");
}

TEST_F(Identities, TheRoundingOfTheFormerSlipIsTaken) {
    before_set({{Q163, "0.40"}});
    EXPECT_EQ(failing(), "carry");
    set({{Q162, "0.40"}, {P259, "356.30"}, {Q163, "0.55"}});
    EXPECT_EQ(failing(), "");
}

TEST_F(Identities, ContributionsAreThoseOfTheItems) {
    // Ten euro more than 9.19 % of 1909, consistent in all sums: 1723.31 taxable, R 20679.72,
    // (1910 + 1190 x 7320.28 / 13000) / 365 x 31 = 219.13
    set({{Q224, "185.44"},
         {Q225, "185.44"},
         {P253, "185.44"},
         {Q005, "887.20"},
         {P259, "365.90"},
         {P256, "1723.31"},
         {Q013, "8656.55"},
         {Q657, "219.13"},
         {Q656, "1091.93"},
         {Q173, "1543"}});
    EXPECT_EQ(failing(), "contributions");
}

TEST_F(Identities, ContributionsToDateFollowTheSlip) {
    set({{Q005, "877.21"}});
    EXPECT_EQ(failing(), "contributions");
    set({{Q005, "877.20"}, {P254, "1"}});  // parts on the slip
    EXPECT_EQ(failing(), "contributions");
    set({{P254, "0"}, {Q004, "3"}});  // additional percent
    EXPECT_EQ(failing(), "contributions");
}

TEST_F(Identities, TheCutOfTheMonthIsOff) {
    both({{PB05, "0"}});
    set({{PB26, "133.63"}});  // 7 % of 1909, and still 175.44 owed
    EXPECT_EQ(failing(), "contributions");
}

TEST_F(Identities, TaxableIsTheLinesLessContributions) {
    // The contributions have not left the taxable; tax and net as they would then be.
    set({{P256, "1908.75"}, {Q013, "8841.99"}, {Q657, "200.74"}, {Q656, "1073.54"}});
    // R 22905: 1910 + 1190 x 5095 / 13000 = 2376.3885; / 365 x 31 = 201.8303
    EXPECT_EQ(failing(), "taxable deduction_months");
    set({{Q657, "201.83"}, {Q656, "1074.63"}});
    EXPECT_EQ(failing(), "taxable");
}

TEST_F(Identities, SumsToDateFollowTheSlip) {
    for (const Value& value : Values{{Q013, "8666.54"}, {Q001, "9545.01"}, {Q003, "9543.76"}}) {
        const std::string kept = after_;
        set({value});
        EXPECT_EQ(failing(), "taxable") << value.field.name();
        after_ = kept;
    }
}

TEST_F(Identities, SeparateAmountsComeBackIntoTheTaxable) {
    // A premium of 1000 under separate taxation: contributions 91.90, 908.10 in P244. The wage is
    // 2909 x 9.19 % = 267.34; 1908.75 + 91.90 - 267.34 = 1733.31, and 908.10 on top.
    lines({{.item = 2, .quantity = "26", .rate = "73.41346", .raw = ""},
           {.item = 71, .quantity = "1", .rate = "1000", .raw = ""}});
    set({{P241, "2908.75"},
         {P240, "2909"},
         {Q001, "10545"},
         {Q224, "267.34"},
         {Q225, "267.34"},
         {P253, "267.34"},
         {Q005, "969.10"},
         {P244, "908.10"},
         {P256, "2641.41"},
         {Q013, "9574.65"},
         {Q137, "419.31"},
         {P258, "419.31"},
         {Q014, "1141.15"},
         {P259, "686.65"},
         {Q173, "2223"},
         {Q163, "0.90"}});
    EXPECT_EQ(failing(), "");
    set({{P256, "2549.51"}, {Q013, "9482.75"}});  // taken off twice
    EXPECT_EQ(failing(), "taxable deduction_months");
}

TEST_F(Identities, TheCeilingTakesWhatLiesAboveIt) {
    // F427 119650: 118000 before, 1650 left of 1909; 1650 x 9.19 % = 151.64
    before_set({{Q001, "118000"}});
    set({{P240, "1650"},
         {Q001, "119650"},
         {P881, "259"},
         {Q926, "259"},
         {Q224, "151.64"},
         {Q225, "151.64"},
         {P253, "151.64"},
         {Q005, "853.40"},
         {P256, "1757.11"},
         {Q013, "8690.35"},
         {Q657, "215.98"},
         {Q656, "1088.78"},
         {Q137, "180.46"},
         {P259, "332.10"},
         {Q173, "1577"},
         {Q163, "0.35"}});
    EXPECT_EQ(failing(), "");
    set({{Q926, "0"}});
    EXPECT_EQ(failing(), "ceiling");
    set({{Q926, "259"}, {P881, "258"}});
    EXPECT_EQ(failing(), "ceiling");
}

TEST_F(Identities, TaxToDateFollowsTheSlip) {
    set({{Q014, "902.31"}});
    EXPECT_EQ(failing(), "tax");
    set({{Q014, "902.30"}, {P258, "0"}});
    EXPECT_EQ(failing(), "tax");
}

/// December: the year is 20799.72, gross 4783.9356, deduction 2569.10, net 2214.84; withheld
/// 1985.06; 229.78 still due. Net 1733.31 - 229.78 = 1503.53.
class YearEndIdentities : public Identities {
  protected:
    void SetUp() override {
        Identities::SetUp();
        period_ = {"31122024", '4'};
        before_set({{Q013, "19066.41"}, {Q014, "1985.06"}, {Q659, "334"}, {Q656, "2350.90"}});
        set({{Q179, "31122024"},
             {Q013, "20799.72"},
             {Q137, "0"},
             {P258, "0"},
             {P257, "0"},
             {Q021, "229.78"},
             {Q014, "2214.84"},
             {Q659, "365"},
             {Q656, "2569.10"},
             {Q657, "2569.10"},
             {P259, "405.22"},
             {Q173, "1504"},
             {Q163, "0.47"}});
    }
};

TEST_F(YearEndIdentities, HoldForARightAdjustment) {
    EXPECT_EQ(failing(), "");
}

TEST_F(YearEndIdentities, TheAdjustmentBringsTheYearToItsTax) {
    set({{Q021, "228.78"}, {Q014, "2213.84"}, {P259, "404.22"}, {Q173, "1505"}});
    EXPECT_EQ(failing(), "adjustment");
}

TEST_F(YearEndIdentities, TaxWithheldElsewhereCounts) {
    both({{Q515, "300"}});
    EXPECT_EQ(failing(), "adjustment");
    // 1985.06 + 300 - 2214.84 = 70.22 back
    set({{Q021, "0"},
         {Q022, "70.22"},
         {Q014, "1914.84"},
         {P241, "1978.97"},
         {P259, "175.44"},
         {Q173, "1804"}});
    EXPECT_EQ(failing(), "");
}

TEST_F(YearEndIdentities, SuspendedTaxIsNotCharged) {
    both({{P792, "1"}});
    EXPECT_EQ(failing(), "adjustment");
    set({{Q021, "0"},
         {P793, "229.78"},
         {Q801, "229.78"},
         {Q014, "1985.06"},
         {P259, "175.44"},
         {Q173, "1734"},
         {Q163, "0.69"}});
    EXPECT_EQ(failing(), "");
    set({{Q801, "0"}});
    EXPECT_EQ(failing(), "tax");
}

TEST_F(YearEndIdentities, DaysOfDeductionStopAtTheYear) {
    before_set({{Q659, "340"}});
    EXPECT_EQ(failing(), "");  // 371 days are 365
    before_set({{Q659, "330"}});
    EXPECT_EQ(failing(), "deduction_months");
}

TEST_F(Identities, DeductionIsThatOfTheIncomeAndTheDays) {
    set({{Q657, "218.21"}, {Q656, "1091.01"}});
    EXPECT_EQ(failing(), "deduction_months");
    set({{Q657, "218.20"}});
    EXPECT_EQ(failing(), "deduction_months");  // Q656 has moved by 218.21
    set({{Q656, "1091.00"}, {Q659, "150"}});
    EXPECT_EQ(failing(), "deduction_months");
}

TEST_F(Identities, AnAdditionalSlipCountsNoDays) {
    period_.kind = '0';
    EXPECT_EQ(failing(), "deduction_months");
}

TEST_F(Identities, ADroppedSlipLeavesTheRecord) {
    EXPECT_EQ(failing(false), "drop");
    after_ = before_;
    EXPECT_EQ(failing(false), "");
    set({{Q171, "5"}});
    EXPECT_EQ(failing(false), "drop");
    after_ = before_;
    lines({{.item = 2, .quantity = "26", .rate = "73.41346", .raw = ""}});
    EXPECT_EQ(failing(false), "drop");
}

TEST_F(Identities, OneIsSwitchedOffByItsName) {
    set({{Q173, "1554"}});
    const CalculatedSlip slip(*installation_, 1, before_, after_, period_);
    EXPECT_EQ(check_identities(slip, true, {}).size(), 1U);
    EXPECT_TRUE(check_identities(slip, true, {{"net", "perché"}}).empty());
    EXPECT_TRUE(is_identity("net"));
    EXPECT_TRUE(is_identity("drop"));
    EXPECT_FALSE(is_identity("lordo"));
}

// ---- Severance ----

/// A leaver with a fund of 8000: accrual 706.94 with 47.73 of contribution, revaluation 80.28 with
/// 13.65 of tax, tax 1991.62: 6734.22 net.
class LeaverIdentities : public Identities {
  protected:
    void SetUp() override {
        Identities::SetUp();
        both({{P017, "31052024"}, {Q039, "8000"}, {P938, "1"}});
        before_set({{Q037, "7635"}});
        set({{P260, "1908.75"},
             {Q037, "9543.75"},
             {Q041, "706.94"},
             {Q038, "47.73"},
             {Q264, "659.21"},
             {Q270, "80.28"},
             {Q040, "80.28"},
             {Q121, "13.65"},
             {Q373, "13.65"},
             {Q129, "1991.62"},
             {Q058, "1991.62"},
             {Q268, "6734.22"}});
    }
    /// Of the failing ones those on severance; the settlement of the year is none of this test.
    bool severance_fails() { return failing().find("severance") != std::string::npos; }
    bool gross_fails() { return failing().find("gross") != std::string::npos; }
    bool deductions_fail() { return failing().find("deductions") != std::string::npos; }
};

TEST_F(LeaverIdentities, FundAndWhatItBearsAreOnTheSlip) {
    EXPECT_TRUE(gross_fails());
    EXPECT_TRUE(deductions_fail());
    // 1908.75 + 706.94 + 8000 + 80.28; 355.90 + 1991.62 + 47.73 + 13.65
    set({{P241, "10695.97"}, {P259, "2408.90"}});
    EXPECT_FALSE(gross_fails());
    EXPECT_FALSE(deductions_fail());
    EXPECT_FALSE(severance_fails());
}

TEST_F(LeaverIdentities, EachFigureOfTheFundIsHeld) {
    const Values wrong{{Q037, "9543.74"}, {Q041, "706.95"}, {Q264, "659.20"}, {Q265, "1"},
                       {Q268, "6734.21"}, {Q040, "80.27"},  {Q373, "13.64"},  {Q129, "1991.61"}};
    for (const Value& value : wrong) {
        const std::string right = after_;
        set({value});
        EXPECT_TRUE(severance_fails()) << value.field.name();
        after_ = right;
    }
}

TEST_F(LeaverIdentities, TaxOnAdvancesComesBackUnlessItIsTooMuch) {
    both({{Q044, "100"}});
    set({{Q058, "1891.62"}, {Q268, "6834.22"}, {P241, "10795.97"}, {P259, "2408.90"}});
    EXPECT_FALSE(severance_fails());
    EXPECT_FALSE(gross_fails());
    set({{Q969, "1"}});
    EXPECT_TRUE(severance_fails());
    EXPECT_TRUE(gross_fails());
}

TEST_F(Identities, TaxOnAnAdvanceIsOfTheSlipThatPaysIt) {
    both({{Q047, "100"}});
    EXPECT_EQ(failing(), "");
    set({{P454, "500"}});
    EXPECT_EQ(failing(), "deductions tax");
}

// ---- Pension fund ----

/// A member of the demo's fund (0.55 and 1.55 percent, the whole accrual), first slip of a year:
/// 1908.75 / 13.5 = 141.39 less 9.55; 10.50 and 29.59 of 1908.75.
class MemberIdentities : public Identities {
  protected:
    void SetUp() override {
        Identities::SetUp();
        both({{P401, "1"}});
        before_set({{Q001, "0"}});
        set({{P260, "1908.75"},
             {P407, "29.59"},
             {Q314, "29.59"},
             {Q201, "131.84"},
             {Q236, "131.84"},
             {Q041, "141.39"},
             {Q038, "9.55"}});
    }
    bool fund_fails() { return failing().find("pension_fund") != std::string::npos; }
};

TEST_F(MemberIdentities, WhatGoesToTheFundIsHeld) {
    EXPECT_FALSE(fund_fails());
    const Values wrong{{P407, "29.58"},  {Q314, "29.60"},  {Q201, "131.83"},
                       {Q236, "131.85"}, {Q041, "141.40"}, {Q038, "9.54"}};
    for (const Value& value : wrong) {
        const std::string right = after_;
        set({value});
        EXPECT_TRUE(fund_fails()) << value.field.name();
        after_ = right;
    }
}

TEST_F(MemberIdentities, TheEmployersSumGoesOnOrStartsAgain) {
    before_set({{Q314, "100"}});
    EXPECT_FALSE(fund_fails());
    set({{Q314, "129.59"}});
    EXPECT_FALSE(fund_fails());
    set({{Q314, "100"}});
    EXPECT_TRUE(fund_fails());
}

TEST_F(MemberIdentities, NothingIsLeftOnlyOfWhoHasGivenAllSinceTheYearBegan) {
    set({{Q041, "150.00"}});
    EXPECT_TRUE(fund_fails());
    before_set({{Q037, "1000"}, {Q041, "74.07"}, {Q038, "5"}});  // a member since this month
    EXPECT_FALSE(fund_fails());
}

TEST_F(MemberIdentities, TheFundIsNoPartOfTheDeclaredContributions) {
    // 175.44 + 10.50; the declaration has 175.44
    set({{Q224, "185.94"}, {Q225, "175.44"}, {P253, "185.94"}});
    before_set({{Q005, "691.26"}});
    EXPECT_EQ(failing().find("contributions"), std::string::npos);
    set({{Q225, "185.94"}});
    EXPECT_NE(failing().find("contributions"), std::string::npos);
}

}  // namespace
}  // namespace nzutil
