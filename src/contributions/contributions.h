#pragma once
// Social contributions of the employee: bases, ceilings, amounts, reductions.
//
//   item  in force by        wage
//   1     P181, or P185      P240: pension and general contributions
//   2     P182               P252, written whole
//   3     P183               P240
//   4     P184               P240, written whole, up to the rest of the yearly ceiling
//   5     P185               P240; P250 for entertainers
//   6     P186               P240
//   7     P187               P240; its amounts are shown in Q226 and Q227
//   8     P188               P240: apprentices
//
// The rate of item k is PCTCONTR(k), in percent. Each item is rounded to the cent by itself.

#include <array>
#include <cstddef>

namespace ModSwCalm2 {

/// The general pass (P168 = 0) or the one of workers in entertainment.
enum class Pass { general, entertainers };

/// Contributions of the slip. Arrays indexed by contribution item, 0 unused.
struct Contributions {
    std::array<double, 9> bases{};     ///< wage subject to each item
    std::array<double, 9> switches{};  ///< 1 if the item is in force for this employee
    std::array<double, 11> amounts{};  ///< employee's share in euro
    double residue_item4 = 0;          ///< what is left of the yearly ceiling of item 4
    double reductions = 0;             ///< contribution cut of the month, taken off Q224
    double fund_share = 0;             ///< employee's share to the pension fund inside Q224
    bool item7_in_units = false;       ///< item 7 is rounded to the euro, as its fund asks (R061)
};
extern Contributions contributions;

/// Cell of an array of items; an item outside its bounds is failure 9.
void require_item(double item, std::size_t size);
template <class Array>
[[nodiscard]] auto& item_cell(Array& array, double item) {
    require_item(item, array.size());
    return array[static_cast<std::size_t>(item)];
}

// ---- Steps of a pass, in this order; FONDOPENSIONE runs between the first two. ----

/// Ceilings, yearly ceilings, conventional wages abroad, and the bases of the items.
void item_bases_before_fund(Pass pass = Pass::general);
/// Wages that the cut of the contributions tells apart (slip lines).
void item_bases_after_fund();
/// Q224 and Q225 from the items; the cuts by year, the shares PB21.
void employee_amounts(Pass pass = Pass::general);
/// Pension contributions of the slip before any cut (items 1, 2, 8): what Q007 sums to date and the
/// year's settlement of entertainers asks for.
[[nodiscard]] double pension_contribution();
/// Contributions on an amount outside the month's wage: items 1, 3, 8, with P040 not 0 also 5,
/// 6, 2.
[[nodiscard]] double contributions_on(double amount);
/// Q053 on the back pay Q052, with Q800; P212 on P195.
void back_pay_contribution();
/// P221, the additional percent on the wage above the first pension bracket, into Q224, Q225, Q004;
/// at the year's end and for leavers the year as a whole. Q167 = 1: given back. D.L. 384/1992,
/// art. 3-ter.
void solidarity_above_ceiling();

// ---- Ceilings and conventional wages ----

/// Yearly ceiling F427 of those first insured after 1995: the wage above it goes to P881, P882 (on
/// an additional slip P883, P884) and Q926, Q927. L. 335/1995, art. 2, c. 18.
void GESTIONE_MASSIMALE_CONTRIBUTIVO();
/// Conventional wage of workers abroad from the sector's table into P250, P240. D.L. 317/1987,
/// art. 4.
void GESTIONE_RETR_CONVENZ_ESTERO();

/// Adds the employee in work to the control list of those above a ceiling of `ceiling` euro.
/// Failure 9 when the list is full.
void list_above_ceiling(double ceiling);

}  // namespace ModSwCalm2
