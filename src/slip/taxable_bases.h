#pragma once
// What of each slip line counts for income tax and for social contributions.

namespace ModSWCALM {

/// Adds the line in FOTX$ (Z153) to totals and bases; writes P256, P240, P250, P252.
void AGGIMPFISCSOC();

/// Mode and running totals of one classification; AGGIMPFISCSOC loads and reads them.
struct Classification {
    int mode = 0;  ///< 0 fiscal, 1 social
    double first = 0;
    double second = 0;
    double third = 0;
    bool negative = false;  ///< the line is a deduction
};
extern Classification classification;

/// Classifies the line by Z013 (mode 0) or Z014 (mode 1).
void NONSOCHECALCOLI();
/// The same for collaborators and sports collaborators, with the yearly limit.
void NONSOCHECALCOLI_COCOCO_SPORT();
/// What of the amount in FOTX$ (Z151, Z152, Z153) its fiscal class lets into P256; books nothing.
[[nodiscard]] double taxable_part();
/// Adds an amount of the item in FOTX$ to the totals that its fiscal class sets aside: premiums
/// (6), tips (9); nothing for other classes.
void set_aside(double amount);
/// Is the contribution wage (P240) kept in whole euro? In cents only with P169 set and F041 not 1.
[[nodiscard]] bool wage_is_whole();
/// Travel pay: Q027, Q028, P468 from the excess just worked out.
void CALCTRASFERTA(double excess, double limit);

}  // namespace ModSWCALM
