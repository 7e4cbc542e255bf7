#pragma once
// Tax relief on premiums and tips. All of it is settled on the slip that pays it.

namespace ModSWCALB {

/// Premiums of the slip (items of fiscal class 6 below the ceiling): up to the yearly ceiling they
/// bear the flat tax F414 (P762, on an additional slip P764), the rest joins P256. P759 gross, P760
/// contributions, P761 net; Q776 to Q779 to date. L. 208/2015, art. 1, c. 182
void DETASSAZIONE();

/// Tips of the slip (items of fiscal class 9, PB55) bear the flat tax F453 (PB56); QA27, QA28 to
/// date. L. 197/2022, art. 1, c. 58
void TASSAZIONE_MANCE();

/// Premiums that the slip's lines have added to Q110: with P025 = 1 they join P256 and leave the
/// contributions to date (Q005); the marginal percent of F433 is the month's tax credit, in Q174 to
/// date.
void DETRPREMI();

}  // namespace ModSWCALB
