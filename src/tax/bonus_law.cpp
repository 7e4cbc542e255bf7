#include "tax/bonus_law.h"

#include <algorithm>
#include <array>
#include <span>

#include "tax/income_ranges.h"

namespace ModSWCALB {

namespace {

constexpr int kFirstMonth = 0;
constexpr int kLastMonth = 999999;

// ---- Bonus ----

/// How much of the year's sum an income gets.
enum class Share {
    none,
    whole,
    falling,   ///< in a straight line to 0 at the upper limit
    shortfall  ///< what the deductions are above the gross tax
};

/// For over < R <= up_to.
struct BonusBand {
    double over;
    double up_to;
    Share share;
};

struct BonusLaw {
    int from;  ///< yyyymm
    int to;
    bool tax_above_deduction;  ///< the gross tax has to exceed the employment deduction
    std::array<BonusBand, 2> bands;
};

/// Up to here tax and deduction of the law of 2020 are the same: there is nothing to give.
constexpr double kUntaxed = 8174;

constexpr std::array kBonusLaws{
    // D.L. 66/2014, art. 1; L. 190/2014, art. 1, c. 12
    BonusLaw{kFirstMonth,
             201712,
             true,
             {{{-kUnlimited, 24000, Share::whole}, {24000, 26000, Share::falling}}}},
    // L. 205/2017, art. 1, c. 132
    BonusLaw{201801,
             202006,
             true,
             {{{-kUnlimited, 24600, Share::whole}, {24600, 26600, Share::falling}}}},
    // D.L. 3/2020, art. 1
    BonusLaw{
        202007, 202112, false, {{{kUntaxed, 15000, Share::whole}, {15000, 28000, Share::whole}}}},
    // L. 234/2021, art. 1, c. 3
    BonusLaw{202201,
             kLastMonth,
             false,
             {{{kUntaxed, 15000, Share::whole}, {15000, 28000, Share::shortfall}}}},
};

/// Deductions that exceed the tax by more than this leave no bonus at all.
constexpr double kLargestShortfall = 1200;

// Employment deduction that the bonus of 2014 is tested against, workers and pensioners.
constexpr std::array kWorkerBeforeBonus{
    IncomeRange{-kUnlimited, 15000, 1880, 0, 0, 1, 0, kUnlimited},
    IncomeRange{15000.01, 24999.99, 1910, 1910, 28000, 13000, 0, 3100},
    IncomeRange{25000, 28000, 1910, 1910, 28000, 13000, 65, 3165},
    IncomeRange{28000.01, 35000, 0, 1910, 50000, 22000, 65, kUnlimited},
    IncomeRange{35000.01, 50000, 0, 1910, 50000, 22000, 0, kUnlimited},
};
constexpr std::array kPensionerBeforeBonus{
    IncomeRange{-kUnlimited, 15000, 1725, 0, 0, 1, 0, kUnlimited},
    IncomeRange{15000.01, 28000, 1255, 470, 28000, 20000, 0, kUnlimited},
    IncomeRange{28000.01, 55000, 0, 1255, 55000, 27000, 0, kUnlimited},
};

const BonusLaw& bonus_law(int yyyymm) {
    return *std::ranges::find_if(kBonusLaws,
                                 [yyyymm](const BonusLaw& law) { return yyyymm <= law.to; });
}

BonusBand band_of(const BonusLaw& law, double income) {
    for (const BonusBand& band : law.bands) {
        if (income > band.over && income <= band.up_to) {
            return band;
        }
    }
    return {0, 0, Share::none};
}

/// Nothing where the tax takes all deductions, or lacks too much.
double shortfall_of(const BonusTest& test) {
    const double shortfall = test.deductions - test.gross_tax;
    return shortfall > kLargestShortfall ? 0 : std::max(0.0, shortfall);
}

// ---- Further deduction ----

struct FurtherDeductionLaw {
    int from;  ///< yyyymm
    int to;
    std::array<IncomeRange, 2> ranges;
};

constexpr std::array kFurtherDeductionLaws{
    // D.L. 3/2020, art. 2, c. 1: the six months from July ...
    FurtherDeductionLaw{202007,
                        202012,
                        {{{28000.01, 35000, 480, 120, 35000, 7000, 0, kUnlimited},
                          {35000.01, 40000, 0, 480, 40000, 5000, 0, kUnlimited}}}},
    // ... and 2021 (L. 178/2020, art. 1, c. 8)
    FurtherDeductionLaw{202101,
                        202112,
                        {{{28000.01, 35000, 960, 240, 35000, 7000, 0, kUnlimited},
                          {35000.01, 40000, 0, 960, 40000, 5000, 0, kUnlimited}}}},
    // L. 207/2024, art. 1, c. 6
    FurtherDeductionLaw{202501,
                        kLastMonth,
                        {{{20000.01, 32000, 1000, 0, 0, 1, 0, kUnlimited},
                          {32000.01, 40000, 0, 1000, 40000, 8000, 0, kUnlimited}}}},
};

// ---- Integrative sum ----

struct PercentBand {
    double up_to;
    double percent;
};
constexpr std::array kIntegrativeBands{PercentBand{8500, 7.1}, PercentBand{15000, 5.3},
                                       PercentBand{20000, 4.8}};

template <class Laws>
int laws_of(const Laws& laws, int yyyymm) {
    return static_cast<int>(std::ranges::count_if(
        laws, [yyyymm](const auto& law) { return yyyymm >= law.from && yyyymm <= law.to; }));
}

}  // namespace

double deduction_before_the_bonus(double income, bool pensioner) {
    return pensioner ? amount_by_income(kPensionerBeforeBonus, income, 0)
                     : amount_by_income(kWorkerBeforeBonus, income, 0);
}

YearlyBonus yearly_bonus(int yyyymm, const BonusTest& test) {
    const BonusLaw& law = bonus_law(yyyymm);
    if (law.tax_above_deduction &&
        test.gross_tax <= deduction_before_the_bonus(test.income, test.pensioner)) {
        return {};
    }
    const BonusBand band = band_of(law, test.income);
    switch (band.share) {
        case Share::whole:
            return {test.year_sum, test.year_sum};
        case Share::falling: {
            const double left =
                test.year_sum * (band.up_to - test.income) / (band.up_to - band.over);
            return {left, left};
        }
        case Share::shortfall:
            return {test.year_sum, std::min(test.year_sum, shortfall_of(test))};
        case Share::none:
            break;
    }
    return {};
}

int bonus_laws_of(int yyyymm) {
    return laws_of(kBonusLaws, yyyymm);
}

double yearly_further_deduction(int yyyymm, double income) {
    for (const FurtherDeductionLaw& law : kFurtherDeductionLaws) {
        if (yyyymm >= law.from && yyyymm <= law.to) {
            return amount_by_income(law.ranges, income, 0);
        }
    }
    return 0;
}

int further_deduction_laws_of(int yyyymm) {
    return laws_of(kFurtherDeductionLaws, yyyymm);
}

double integrative_percent(double income_of_a_year) {
    for (const PercentBand& band : kIntegrativeBands) {
        if (income_of_a_year <= band.up_to) {
            return band.percent;
        }
    }
    return 0;
}

}  // namespace ModSWCALB
