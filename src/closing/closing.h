#pragma once
// The closing of the month: pass, net pay, year-to-date, repeat guard, year-end adjustment.
//
//   P241 gross              P259 deductions          P256 taxable        P257 gross tax
//   P258 tax on the slip    Q173 net paid            Q163 rounding out   Q162 rounding in
//   Q013 taxable to date    Q014 tax to date         Q515 tax withheld elsewhere
//   Q021 tax due            Q022 tax refunded, at the adjustment

namespace ModSwCalm2 {

/// Closing of the slip; sets ABORTODIP when the month is already calculated.
void CALCOLACHIUSURA();

// ---- Its blocks, each in a file of its own ----

/// Net pay block: flat tax at source, bonus, fixed net, advance on the net, net and rounding.
void net_pay_block();
/// Does the slip have income tax, and with it bonuses?
[[nodiscard]] bool slip_is_taxed();
/// Net = P241 - P259, its rounding into Q173 and Q163. Rounding by tens of a net above 32767 is
/// failure 6.
void net_and_rounding();
/// Tax of the whole year to date by the company's cumulative method (T184 = 1).
void cumulative_method();
/// Year-to-date fields, and at their end the repeat guard.
void year_to_date_block();
/// Year-end adjustment: the scale applied once to the year's base, settlement of the difference.
void year_end_block();

}  // namespace ModSwCalm2
