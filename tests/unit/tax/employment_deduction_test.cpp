#include "records/dictionary/DITX.h"
#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

class EmploymentDeduction : public TaxTest {
  protected:
    /// Deduction of a whole year at an income, as the adjustment stores it.
    static double of_the_year(double income, double days = 365) {
        year_of(income);
        scrivi(Q659, days);
        CALCOLADETRAZIONIREDDITO_2022();
        EXPECT_EQ(num(Q656), num(Q657));
        return num(Q657);
    }
    /// Month's share at a month's taxable.
    static double of_the_month(double taxable) {
        scrivi(P256, taxable);
        CALCOLADETRAZIONIREDDITO_2022();
        return num(Q657);
    }
};

struct Row {
    double income;
    double deduction;
};

TEST_F(EmploymentDeduction, WorkerAtBothSidesOfEachLimit) {
    const Row rows[] = {
        {0, 1880},           {15000, 1880},
        {15000.01, 1880},     // no range takes it, the first amount stays
        {15000.02, 3100.00},  // 1910 + 1190 x 12999.98 / 13000 = 3099.9982
        {21500, 2505.00},     // 1910 + 1190 x 6500 / 13000 = 1910 + 595
        {24999.99, 2184.62},  // 1910 + 1190 x 3000.01 / 13000 = 1910 + 274.6163
        {25000, 2249.62},     // 1910 + 1190 x 3000 / 13000 + 65 = 2184.6154 + 65
        {28000, 1975.00},     // 1910 + 0 + 65
        {28000.01, 1975.00},  // 1910 x 21999.99 / 22000 + 65 = 1909.9991 + 65
        {35000, 1367.27},     // 1910 x 15000 / 22000 + 65 = 1302.2727 + 65
        {35000.01, 1302.27},  // 1910 x 14999.99 / 22000 = 1302.2719
        {49000, 86.82},       // 1910 x 1000 / 22000 = 86.8182
        {50000, 0},          {50000.01, 0},
        {120000, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(of_the_year(row.income), row.deduction) << row.income;
    }
}

TEST_F(EmploymentDeduction, PensionerAtBothSidesOfEachLimit) {
    scrivi(P348, "1");
    const Row rows[] = {
        {0, 1955},          {8500, 1955},
        {8500.01, 1955.00},                      // 700 + 1255 x 19499.99 / 19500 = 1954.9994
        {18250, 1327.50},                        // 700 + 1255 x 9750 / 19500 = 700 + 627.5
        {28000, 700},       {28000.01, 700.00},  // 700 x 21999.99 / 22000 = 699.9997
        {39000, 350},                            // 700 x 11000 / 22000
        {50000, 0},         {50000.01, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(of_the_year(row.income), row.deduction) << row.income;
    }
}

TEST_F(EmploymentDeduction, OtherIncomeGoesByAQuotientOfFourDecimals) {
    scrivi(P583, 2);
    const Row rows[] = {
        {4800, 1104},                 // 50200 / 50200 = 1
        {5000, 1099.58},              // 50000 / 50200 = .99601..., .9960 x 1104 = 1099.584
        {29900, 552},                 // 25100 / 50200 = .5
        {55000, 0},      {60000, 0},  // never a charge
    };
    for (const Row& row : rows) {
        EXPECT_EQ(of_the_year(row.income), row.deduction) << row.income;
    }
}

TEST_F(EmploymentDeduction, TheFifthDecimalIsDropped) {
    EXPECT_EQ(deduction_quotient(0.67899, 1), 0.6789);
    EXPECT_EQ(deduction_quotient(0.678999, 1), 0.6789);
    EXPECT_EQ(deduction_quotient(2, 3), 0.6666);
    EXPECT_EQ(deduction_quotient(66500, 95000), 0.7);  // exact, whatever the double makes of it
    EXPECT_EQ(deduction_quotient(-1, 3), 0);
    EXPECT_EQ(deduction_quotient(0, 3), 0);
    EXPECT_EQ(deduction_quotient(3, 3), 1);
}

TEST_F(EmploymentDeduction, AMonthTakesTheShareOfItsDays) {
    // D at 20799.72: 1910 + 1190 x 7200.28 / 13000 = 2569.1026; / 365 x 31 = 218.1978
    EXPECT_EQ(of_the_month(1733.31), 218.20);
    EXPECT_EQ(num(Q656), 218.20);
    scrivi(P215, 22);
    EXPECT_EQ(of_the_month(1733.31), 154.85);  // 2569.1026 / 365 x 22 = 154.8500
    EXPECT_EQ(num(Q656), 373.05);
}

TEST_F(EmploymentDeduction, ALeapYearHas366DaysWhenTheTableSaysSo) {
    scrivi(F169, 0);
    EXPECT_EQ(of_the_month(1733.31), 217.60);  // 2569.1026 / 366 x 31 = 217.6016
    set_period("31052023");
    EXPECT_EQ(of_the_month(1733.31), 218.20);
}

TEST_F(EmploymentDeduction, WithoutDaysAMonthTakesATwelfth) {
    scrivi(P215, 0);
    EXPECT_EQ(of_the_month(1733.31), 214.09);  // 2569.1026 / 12 = 214.0919
}

TEST_F(EmploymentDeduction, ACollaboratorGoesByInstalmentsAndOwnDays) {
    scrivi(P447, 1);
    scrivi(P090, 4);
    scrivi(P449, 90);
    // R = 5000 x 4 = 20000: 1910 + 1190 x 8000 / 13000 = 2642.3077; / 365 x 90 = 651.5279
    EXPECT_EQ(of_the_month(5000), 651.53);
    scrivi(P449, 0);
    EXPECT_EQ(of_the_month(5000), 660.58);  // 2642.3077 / 4 = 660.5769
    scrivi(P090, 0);
    scrivi(P449, 31);
    EXPECT_EQ(of_the_month(1733.31), 218.20);  // no number of instalments means 12
}

TEST_F(EmploymentDeduction, DeclaredIncomeRaisesR) {
    scrivi(Q669, 200.30);
    scrivi(P256, 1733.31);
    EXPECT_EQ(deduction_income(), 21000.02);  // 200.30 + 20799.72
    scrivi(Q514, 1000);
    EXPECT_EQ(deduction_income(), 21000.02);
    year_of(24266.34);
    scrivi(Q898, 33.33);
    EXPECT_EQ(deduction_income(), 25499.97);  // 200.30 + 24266.34 + 1000 + 33.33
}

TEST_F(EmploymentDeduction, AnInstalmentMoreThanTwelveDoesNotAnnualiseAnEmployee) {
    scrivi(P090, 14);
    scrivi(P256, 1000);
    EXPECT_EQ(deduction_income(), 12000);
    EXPECT_EQ(deduction_periods(), 12);
}

TEST_F(EmploymentDeduction, TheYearGoesByTheDaysAtWorkHereAndElsewhere) {
    EXPECT_EQ(of_the_year(20000, 184), 1332.01);  // 2642.3077 x 184 / 365 = 1332.0126
    scrivi(Q518, 100);
    EXPECT_EQ(of_the_year(20000, 184), 2055.93);  // x 284 / 365 = 2055.9326
    EXPECT_EQ(of_the_year(20000, 300), 2642.31);  // 400 days are cut at 365
    EXPECT_EQ(num(Q659), 300);
}

TEST_F(EmploymentDeduction, DaysAboveTheYearAreStoredBackAs365) {
    EXPECT_EQ(of_the_year(20000, 400), 2642.31);
    EXPECT_EQ(num(Q659), 365);
}

TEST_F(EmploymentDeduction, TheLowestIncomesHaveALeastAmountByContract) {
    struct Case {
        const char* contract;
        double days;
        double deduction;
    };
    // 1880 x 100 / 365 = 515.0685; 1880 x 200 / 365 = 1030.1370; 1880 x 300 / 365 = 1545.2055
    for (const Case& row :
         {Case{"I", 100, 690}, Case{"I", 200, 1030.14}, Case{"D", 100, 1380}, Case{"D", 200, 1380},
          Case{"D", 300, 1545.21}, Case{"S", 100, 1380}, Case{" ", 100, 515.07}}) {
        scrivi(P412, row.contract);
        EXPECT_EQ(of_the_year(15000, row.days), row.deduction) << row.contract << row.days;
    }
    scrivi(P412, "D");
    EXPECT_EQ(of_the_year(15000.01, 100), 515.07);
    EXPECT_EQ(of_the_year(15000.02, 100), 849.31);  // 3099.9982 x 100 / 365 = 849.3146
}

TEST_F(EmploymentDeduction, APensionersLeastAmountIs713) {
    scrivi(P348, "1");
    scrivi(P412, "D");
    EXPECT_EQ(of_the_year(8500, 100), 713);        // 1955 x 100 / 365 = 535.6164
    EXPECT_EQ(of_the_year(8500, 200), 1071.23);    // 1955 x 200 / 365
    EXPECT_EQ(of_the_year(8500.01, 100), 535.62);  // 1954.9994 x 100 / 365 = 535.6163
}

TEST_F(EmploymentDeduction, OneCustomersPensionersGetFiftyMore) {
    scrivi(T013, "90000000088");
    EXPECT_EQ(of_the_year(21500), 2505);  // a worker does not
    scrivi(P348, "1");
    EXPECT_EQ(of_the_year(18250), 1377.50);     // 1327.50 + 50
    EXPECT_EQ(of_the_year(18250, 73), 275.50);  // 1377.50 x 73 / 365: the 50 stand before the days
    EXPECT_EQ(of_the_year(50000), 0);           // nothing to add to
    tax_state.ConguaglioAnnuale = false;
    scrivi(P215, 0);
    // R 18000: 700 + 1255 x 10000 / 19500 + 50 = 1393.5897; / 12 = 116.1325
    EXPECT_EQ(of_the_month(1500), 116.13);
}

}  // namespace
