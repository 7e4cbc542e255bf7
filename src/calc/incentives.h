#pragma once
// Employer incentives and exemptions: amounts that come off the employer's contributions, or that
// the State gives back. Euro, rounded to the cent.

#include "calc/dates.h"

namespace ModSWCALM {

/// What the slip's exemptions need beside the record; put back when each slip opens.
struct ExemptionState {
    bool other_slip = false;     ///< the month has an earlier slip that this one does not replace
    double other_slip_P917 = 0;  ///< its exemption
    double other_slip_P967 = 0;  ///< the part of it under the second cap
    double other_slip_PB51 = 0;  ///< its share of the wage
    double other_slip_P220 = 0;  ///< its relief by territory
    double added_to_Q974 = 0;    ///< what the general exemption of this slip added to the year
};
extern ExemptionState exemption;

/// Before the switches of the slip are set and the month is cleared: the limits are the month's,
/// and an ordinary slip and an additional one share them, as the slips of entertainers who carry
/// the month do. Each slip is exempted on its own wage; a slip of the same kind takes the place of
/// the earlier one.
void keep_exemption_of_other_slip();

/// Days of the period's month from the start on, before the day `end` comes; in the month of the
/// leaving up to it.
[[nodiscard]] int days_of_exemption(const Date& start, const Date& end);

/// A twelfth without the fractions of a cent: 671.66 of 8060.
[[nodiscard]] double twelfth(double yearly);

/// P889: a third of the wage, at most F432; in the month of hiring by days.
void CALCOLA_INCENTIVO_DL76();
/// P901: F435; in the month of hiring by days.
void CALCOLA_INCENTIVO_LICE();
/// P917, P919, P967, PC36: the exemption of the code P916 for the days of the month within its
/// term, up to its limits, and Q974 for the year. No row, no term, no cap: no exemption.
void ERR_CALCOLA_ESONERO_NUOVI_ASS();
/// Codes "O" (P917) and "P" (PB51): a share of the wage given back.
void share_of_wage();
/// P917: a twelfth of the yearly amount P955, within the year (Q974). It takes the place of the
/// general exemption, P967 and PC36 with it.
void yearly_exemption_share();
/// P220 by class P219, and Q845: a part of the employer's contributions by territory.
void geographical_relief();

}  // namespace ModSWCALM
