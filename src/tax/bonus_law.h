#pragma once
// What the law gives in the slip of low and middle incomes: the bonus and the integrative sum, and
// the further deduction from tax. Amounts of a whole year, in euro and not rounded; incomes in
// cents. All of it depends on the month of the slip (yyyymm) alone.

namespace ModSWCALB {

/// What the bonus of an income is measured on.
struct BonusTest {
    double income = 0;
    double gross_tax = 0;   ///< by the scale on that income
    double deductions = 0;  ///< for employment and family, of the same year
    double year_sum = 0;    ///< F436
    bool pensioner = false;
};

/// Bonus of a whole year: by days, and never above `most`.
struct YearlyBonus {
    double by_days = 0;
    double most = 0;
};

/// D.L. 66/2014, art. 1; D.L. 3/2020, art. 1; L. 234/2021, art. 1, c. 3.
[[nodiscard]] YearlyBonus yearly_bonus(int yyyymm, const BonusTest& test);
/// Employment deduction that the gross tax has to exceed for the bonus of 2014.
[[nodiscard]] double deduction_before_the_bonus(double income, bool pensioner);
/// How many laws of the bonus hold in the month: one at most.
[[nodiscard]] int bonus_laws_of(int yyyymm);

/// Further deduction of a whole period of work: in 2020 the half year from July. D.L. 3/2020,
/// art. 2; L. 207/2024, art. 1, c. 6.
[[nodiscard]] double yearly_further_deduction(int yyyymm, double income);
/// How many laws of the further deduction hold in the month: one at most.
[[nodiscard]] int further_deduction_laws_of(int yyyymm);

/// Percent of the income that the integrative sum is. L. 207/2024, art. 1, c. 4.
[[nodiscard]] double integrative_percent(double income_of_a_year);

}  // namespace ModSWCALB
