#include "nzutil/year_sums.h"

#include <algorithm>
#include <array>
#include <span>

#include "records/dictionary/DIPX.h"
#include "records/fields.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

/// Contributions, and the wage that they and the accident insurance are on: the ceilings of these
/// sums are yearly. With them what was above a ceiling, and the reliefs with a yearly limit.
constexpr std::array kContributionSums{Q001, Q002, Q003, Q004, Q005, Q007, Q009, Q010, Q063, Q094,
                                       Q168, Q170, Q926, Q927, Q974, Q845, P919, QA16, QA29};

/// Income, tax, and what came off it: the tax is the year's (TUIR, art. 7). So are the bonuses;
/// what of them is given back by instalments runs on.
constexpr std::array kTaxSums{Q013, Q014, Q021, Q022, Q174, Q276, Q277, Q278, Q279, Q666,
                              Q740, Q742, Q773, Q801, Q804, Q314, QA15, QA21, QA34, Q261};

/// Premiums, tips and sports pay: their favours have a limit a year.
constexpr std::array kFavouredSums{Q110, Q776, Q777, Q778, Q779, Q808, QA27, QA28, QA32, QA33};

/// Pay, tax and days that another employer had in the year, the wage that counts in its ceilings
/// (P111) and the sports pay that counts in its limits (QA44): declared for one year.
constexpr std::array kOtherEmployments{Q509, Q514, Q515, Q518, Q898, Q953, P111, QA44};

/// Pay of collaborators, whole and month by month.
constexpr std::array kCollaboratorSums{Q520, Q521, Q522, Q523, Q524, Q525, Q526, Q527, Q528,
                                       Q529, Q530, Q531, Q532, Q533, Q534, Q680, Q782, Q847};

/// Severance paid with the month's wage: its base, what it came to, its tax and the contribution
/// given back.
constexpr std::array kSeveranceWithWages{Q954, Q955, Q956, Q962, QA01, QA02, QA03, QA04};

/// Year totals of the reliefs on the severance fund. The treasury fund beside them (Q692 to Q701)
/// runs through the years.
constexpr std::array kSeveranceReliefs{Q687, Q688, Q689, Q690, Q691, Q744};

/// Surtaxes: instalments paid, the closed year's amounts and its advance. The numbers of
/// instalments stay (Q315, Q318, Q673), and the advance of the new year comes in March.
constexpr std::array kSurtaxes{Q316, Q320, Q339, Q340, Q342, Q343, Q674, Q675, Q678};

/// Counters of days, hours, weeks and months: of deductions, of work, of the events of the month,
/// of the accident insurance, without bonus. Twelfths of the 13th (Q164); those of the 14th (Q165)
/// run from July.
constexpr std::array kCounters{Q061, Q062, Q069, Q070, Q071, Q074, Q075, Q079, Q080, Q081,
                               Q131, Q134, Q164, Q191, Q214, Q215, Q216, Q217, Q218, Q219,
                               Q220, Q221, Q222, Q223, Q658, Q659, Q660, Q805, Q991};

/// Other sums of lines and slips: accident insurance by month beside its days, travel pay, exempt
/// amounts, family allowances, typed lines, the adjustments that others have worked out (Q067), pay
/// of an earlier period (Q615), and items settled with December.
constexpr std::array kOtherSums{Q027, Q028, Q030, Q066, Q067, Q615, Q068, Q078, Q109,
                                Q204, Q205, Q206, Q207, Q208, Q209, Q210, Q211, Q212,
                                Q213, Q357, Q358, Q359, Q360, Q361, Q362, Q363};

/// Back pay of earlier years: its sums are the year's.
constexpr std::array kBackPay{Q033, Q034, Q035};

/// January's difference of wage: declared once.
constexpr std::array kJanuaryDifference{Q780, Q781};

using FieldList = std::span<const Descriptor>;
constexpr std::array<FieldList, 12> kStartAgain{
    kContributionSums, kTaxSums,          kFavouredSums,
    kOtherEmployments, kCollaboratorSums, kSeveranceWithWages,
    kSeveranceReliefs, kSurtaxes,         kCounters,
    kOtherSums,        kBackPay,          kJanuaryDifference};

/// Every slip leaves something in one of these, nobody types them ahead, and the opening empties
/// all of them: they tell the sums of a closed year from those of an opened one.
constexpr std::array kMovedBySlips{Q001, Q003, Q005, Q013, Q014, Q062, Q063, Q094, Q658, Q659};

}  // namespace

void restart_sums() {
    for (const FieldList& fields : kStartAgain) {
        for (const Descriptor& field : fields) {
            scrivi(field, 0);
        }
    }
}

bool has_sums() {
    return std::ranges::any_of(kMovedBySlips,
                               [](const Descriptor& field) { return num(field) != 0; });
}

}  // namespace nzutil
