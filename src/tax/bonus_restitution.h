#pragma once
// What was paid in excess of a bonus, of the integrative sum, or taken of the further deduction, is
// taken back: at once up to 60 euro, otherwise in instalments, of which the first is on the slip
// that adjusts and the rest on those that follow; from somebody who leaves all of it.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "records/dictionary/DIPX.h"
#include "texts/texts.h"

namespace ModSWCALB {

inline constexpr double kLeastRestitution = 0.10;  ///< euro; less is not asked back

/// Number of instalments where nothing else is set, by the month (yyyymm) in which a plan starts.
struct UsualCount {
    int from;
    int to;
    double count;
};

/// Control list that an employee goes to.
enum class RestitutionList { bonus, integrative_sum };

/// A sum that is taken back: its fields, and what differs from sum to sum.
struct Restitution {
    MXREPOSITORY::Descriptor excess;      ///< as the adjustment has found it
    MXREPOSITORY::Descriptor count;       ///< instalments of the plan; may be set beforehand
    MXREPOSITORY::Descriptor done;        ///< instalments taken
    MXREPOSITORY::Descriptor total;       ///< euro
    MXREPOSITORY::Descriptor instalment;  ///< what the slip takes of the plan
    MXREPOSITORY::Descriptor paid;        ///< euro taken
    MXREPOSITORY::Descriptor rest;        ///< what a leaver's slip takes of a running plan
    MXREPOSITORY::Descriptor leaver;      ///< what a leaver's slip takes of its own excess
    std::optional<MXREPOSITORY::Descriptor> rest_noted;     ///< copy of the rest
    std::optional<MXREPOSITORY::Descriptor> settled_apart;  ///< euro of the total given otherwise
    std::optional<MXREPOSITORY::Descriptor> count_apart;    ///< instalments given otherwise
    std::array<UsualCount, 2> usual;
    double longest;      ///< a count set beforehand may not be above it
    double count_after;  ///< instalments of what is left after settled_apart; 0: the usual ones
    RestitutionList list;
    const texts::Text* at_once;
    const texts::Text* on_leaving;
    const texts::Text* by_instalments;
};

constexpr int kAlways = 999999;

inline constexpr std::array<Restitution, 3> kRestitutions{{
    // D.L. 3/2020, art. 1, c. 4
    {MXREPOSITORY::Q281,
     MXREPOSITORY::Q282,
     MXREPOSITORY::Q283,
     MXREPOSITORY::Q284,
     MXREPOSITORY::Q285,
     MXREPOSITORY::Q286,
     MXREPOSITORY::Q288,
     MXREPOSITORY::Q285,
     MXREPOSITORY::Q287,
     MXREPOSITORY::QA17,
     MXREPOSITORY::QA18,
     {{{0, kAlways, 8}}},
     8,
     0,
     RestitutionList::bonus,
     &texts::kBonusBackAtOnce,
     &texts::kBonusBackOnLeaving,
     &texts::kBonusBackByInstalments},
    // D.L. 3/2020, art. 2, c. 3; L. 207/2024, art. 1, c. 8
    {MXREPOSITORY::QA10,
     MXREPOSITORY::QA06,
     MXREPOSITORY::QA07,
     MXREPOSITORY::QA05,
     MXREPOSITORY::QA08,
     MXREPOSITORY::QA09,
     MXREPOSITORY::QA11,
     MXREPOSITORY::QA11,
     std::nullopt,
     MXREPOSITORY::QA14,
     std::nullopt,
     {{{0, 202412, 8}, {202501, kAlways, 10}}},
     99,
     6,
     RestitutionList::bonus,
     &texts::kFurtherDeductionBack,
     &texts::kFurtherDeductionBack,
     &texts::kFurtherDeductionBackByInstalments},
    // L. 207/2024, art. 1, c. 8
    {MXREPOSITORY::QA42,
     MXREPOSITORY::QA35,
     MXREPOSITORY::QA36,
     MXREPOSITORY::QA37,
     MXREPOSITORY::QA38,
     MXREPOSITORY::QA39,
     MXREPOSITORY::QA38,
     MXREPOSITORY::QA38,
     std::nullopt,
     std::nullopt,
     std::nullopt,
     {{{0, kAlways, 10}}},
     10,
     0,
     RestitutionList::integrative_sum,
     &texts::kIntegrativeBackAtOnce,
     &texts::kIntegrativeBackOnLeaving,
     &texts::kIntegrativeBackByInstalments},
}};

/// Clears what the slip before has taken back (instalments and rests). Every slip starts with it.
void open_restitutions();

/// Takes back of each sum what this slip has to: a new excess, or the instalment of a running plan
/// (RECUPERO). A slip of adjustment only takes no instalment of a running plan.
void take_back();

/// Note of the slip on what it has taken back of a sum; nothing where it has not.
[[nodiscard]] const texts::Text* restitution_note(const Restitution& sum);
/// What the slip has taken back of a sum, in euro.
[[nodiscard]] double taken_back(const Restitution& sum);

}  // namespace ModSWCALB
