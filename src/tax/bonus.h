#pragma once
// Bonus, integrative sum and further deduction.
//
// Each pays by the month, and the slip that adjusts the year holds what was paid against what is
// due: the rest is paid, an excess is taken back (tax/bonus_restitution.h).
//
//   bonus               P022 of the month  Q279 to date  Q280 still due   Q281 excess
//   further deduction   Q277               Q276          in Q277          QA10
//   integrative sum     PC33               QA34          QA41             QA42

namespace ModSWCALB {

/// Everything that the slip pays and takes back, in order. On the slip that adjusts it runs behind
/// the year's tax, whose days, deductions and income it is measured on.
void bonus_steps();

/// Bonus from July 2020; not on additional slips, and not with P084.
void CALCOLO_BONUS_DL032020();
/// Further deduction of 2020 and 2021. It runs with the deductions, before the tax.
void CALCOLA_ULT_DET();
/// Further deduction from 2025.
void CALCOLA_ULT_DET_2025();
/// Integrative sum from 2025; not with PC32.
void CALCOLA_SOMMA_INTEGRATIVA();

/// Income of the tests, in cents: the month's taxable amount times P090 (12 when 0), other income
/// with it; on the slip that adjusts the year's own, Q013 and the income added to it.
[[nodiscard]] double bonus_income(double taxable_of_the_month);

/// Before Q277 is cleared: what stood in it above Q276 is an excess that its plan takes back, so
/// the year's tax holds it as withheld and does not charge it again.
void book_further_deduction_on_plan();

}  // namespace ModSWCALB
