#pragma once
// Revaluation of the severance fund: 1.5 percent a year and three quarters of the rise of the
// consumer price index (art. 2120 c.c., c. 4).

namespace ModSwCalm2 {

/// Coefficient in percent, six decimals, for whole months of the year. A fall of the index counts
/// as none; an index or a number of months of 0 gives 0.
[[nodiscard]] double CalcolaCoefRivalTFR(double current_index, double base_index, double months);

constexpr int kYearEndIndex = 13;  ///< month of INDICEISTAT that stands for 31 December before

/// Consumer price index of a month, 13 for 31 December before: with `series` those of the year of
/// the tables (F023 to F034, F021), else those of the other series, the year before (F295 to F306,
/// F294). Any other month gives 0. In January 2012 and in 2017 the year end is F294 in both.
[[nodiscard]] double INDICEISTAT(int month, bool series);

/// The published index at 31 December before a month (yyyymm), mended where it was rounded too far
/// to give the coefficient of the law.
[[nodiscard]] double mended_base_index(int yyyymm, double published);

/// Up to when a fund is revalued.
struct RevaluationTerm {
    int yyyymm = 0;        ///< last month that counts; month 0 is the year end before
    double months = 0;     ///< months of service in the year
    bool series = true;    ///< the year of the tables; else the year before
    bool settles = false;  ///< the figure is paid or carried: a missing index is told

    [[nodiscard]] int month() const { return yyyymm % 100; }
};

/// The index at 31 December before the term, mended; 0 where the tables lack it.
[[nodiscard]] double base_index_of(const RevaluationTerm& term);

/// Revaluation of `fund` in euro, not below 0, the part of this year's advances taken off; writes
/// the coefficient Q267. Tells the operator of an index that is missing where the fund needs it.
[[nodiscard]] double revaluation_of(double fund, const RevaluationTerm& term);

/// Share of the fund that is revalued elsewhere: under T587 what the treasury fund and the reliefs
/// hold of it (Q699, Q896, Q698), else 0.
[[nodiscard]] double revalued_elsewhere();

/// Substitute tax F322 on a revaluation; 0 where there is no income tax (D.Lgs. 47/2000, art. 11).
[[nodiscard]] double substitute_tax(double revaluation);

}  // namespace ModSwCalm2
