#pragma once
// Reductions of the employee's contributions that hold for some years only.

#include <string_view>

namespace ModSwCalm2 {

/// How the cut of a period works.
enum class CutForm {
    none,        ///< no cut
    single,      ///< one percentage below 2692 euro, in PB06, PB10, PB07
    single_new,  ///< the same in PB14, PB15, PB16
    two_bands,   ///< up to 1923 euro in PB26, PB29, PB28; below 2692 in PB14, PB15, PB16
};

/// One period of the cut; percentages of the wage.
struct CutPeriod {
    int from;  ///< year x 100 + month
    int to;
    CutForm form;
    double low;       ///< percent up to 1923 euro
    double high;      ///< percent below 2692 euro
    double half_low;  ///< points off the rate before it is halved for PB20 1 and 2
    double half_high;
};

/// The period that a month (year x 100 + month) lies in; each month lies in exactly one.
[[nodiscard]] const CutPeriod& cut_period(double yyyymm);
/// How many periods of the table a month lies in.
[[nodiscard]] int cut_periods_of(double yyyymm);

/// Works out the cut of the month: writes its fields (PB06 ... PB29) and returns the amount to take
/// off Q224, at most the contribution `due`. The part of the 13th payment stands already in PB07,
/// PB16 or PB28, as the walk of the lines has left it. L. 234/2021, art. 1, c. 121; D.L. 115/2022,
/// art. 20; L. 197/2022, art. 1, c. 281; D.L. 48/2023, art. 39; L. 213/2023, art. 1, c. 15.
[[nodiscard]] double contribution_cut(double due);

/// Is half of the employee's share taken over (PB20 1 or 2)?
[[nodiscard]] bool half_share();
/// PB21 and what the employee still owes instead of the pension item (PB20 1 or 2).
/// L. 234/2021, art. 1, c. 137.
[[nodiscard]] double half_share_amount();

/// Relief of mothers with more children (PB20 = 3) for the companies that recover it: PB21, QA29;
/// off Q224 and Q225. L. 213/2023, art. 1, c. 180-181.
void mothers_relief();

/// Does the relief of this company and period take up the figures of January and February from the
/// archive of slips?
[[nodiscard]] bool archived_relief_wanted();

/// What the archive of slips tells of one month of the year.
struct ArchivedMonth {
    double high_cut = 0;      ///< its PB14
    double low_cut = 0;       ///< its PB26
    double contribution = 0;  ///< contribution due above the relief
};
/// Stores them: January in PB23, PB59, PB60, February in PB88, PB89, PB90.
void store_archived_relief(const ArchivedMonth& january, const ArchivedMonth& february);

}  // namespace ModSwCalm2
