#pragma once
// Advances on the severance fund that are asked for and paid while the employment lasts (art. 2120
// c.c., c. 6; TUIR, art. 19, c. 4).

#include <array>

#include "records/dictionary/DIPX.h"
#include "texts/texts.h"

namespace ModSwCalm2 {

/// The fields of one advance of the year. Amounts in euro, the rate in percent.
struct Advance {
    MXREPOSITORY::Descriptor request;    ///< asked for on this slip
    MXREPOSITORY::Descriptor amount;     ///< paid this year
    MXREPOSITORY::Descriptor month;      ///< month in which it was paid, 0 the year end before
    MXREPOSITORY::Descriptor fund;       ///< fund that its rate goes by
    MXREPOSITORY::Descriptor reference;  ///< reference income
    MXREPOSITORY::Descriptor rate;
    MXREPOSITORY::Descriptor paid;       ///< advances paid so far, this one included
    MXREPOSITORY::Descriptor offsets;    ///< part of the fund that is not taxed
    MXREPOSITORY::Descriptor tax;        ///< tax on all that was paid
    MXREPOSITORY::Descriptor prior_tax;  ///< of it paid before, typed by the operator
    MXREPOSITORY::Descriptor due;        ///< the rest
    MXREPOSITORY::Descriptor charged;    ///< tax of this advance, withheld on its slip
    const texts::Text* wrong_month;      ///< message for a month without an index
};

inline constexpr std::array<Advance, 4> kAdvances{{
    {MXREPOSITORY::P454, MXREPOSITORY::Q046, MXREPOSITORY::Q185, MXREPOSITORY::Q377,
     MXREPOSITORY::Q378, MXREPOSITORY::Q379, MXREPOSITORY::Q380, MXREPOSITORY::Q381,
     MXREPOSITORY::Q382, MXREPOSITORY::Q383, MXREPOSITORY::Q384, MXREPOSITORY::Q047,
     &texts::kIndexAdvance1Wrong},
    {MXREPOSITORY::P455, MXREPOSITORY::Q252, MXREPOSITORY::Q254, MXREPOSITORY::Q385,
     MXREPOSITORY::Q386, MXREPOSITORY::Q387, MXREPOSITORY::Q388, MXREPOSITORY::Q389,
     MXREPOSITORY::Q390, MXREPOSITORY::Q391, MXREPOSITORY::Q392, MXREPOSITORY::Q253,
     &texts::kIndexAdvance2Wrong},
    {MXREPOSITORY::P456, MXREPOSITORY::Q256, MXREPOSITORY::Q258, MXREPOSITORY::Q393,
     MXREPOSITORY::Q394, MXREPOSITORY::Q395, MXREPOSITORY::Q396, MXREPOSITORY::Q397,
     MXREPOSITORY::Q398, MXREPOSITORY::Q399, MXREPOSITORY::Q091, MXREPOSITORY::Q257,
     &texts::kIndexAdvance3Wrong},
    {MXREPOSITORY::P956, MXREPOSITORY::Q978, MXREPOSITORY::Q977, MXREPOSITORY::Q979,
     MXREPOSITORY::Q980, MXREPOSITORY::Q981, MXREPOSITORY::Q982, MXREPOSITORY::Q983,
     MXREPOSITORY::Q984, MXREPOSITORY::Q985, MXREPOSITORY::Q986, MXREPOSITORY::Q987,
     &texts::kIndexAdvance4Wrong},
}};

/// Sums of the four advances of the year, in euro: what was paid, and the tax on it.
[[nodiscard]] double advances_of_the_year();
[[nodiscard]] double tax_on_advances_of_the_year();

/// Takes up the advances asked for on this slip and withholds their tax at the average rate of the
/// fund's reference income (P258, P259). PB53 not 0: the tax is the operator's.
void ElaboraAnticipazioni();

}  // namespace ModSwCalm2
