#pragma once
// The codes of the employer's exemption for new hires (P916): whom each admits, for how long, and
// up to how much. A row of law a code.

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "calc/dates.h"
#include "records/descriptor.h"

namespace ModSWCALM {

/// The cap that the law sets, in a field of the fixed data: a year's amount, of which a month has
/// the twelfth without the fractions of a cent, or a month's, of which a year has twelve.
struct ExemptionCap {
    MXREPOSITORY::Descriptor field;
    bool monthly = false;
    /// Where the field is 0, the employee's own amounts stand for it: P955 a year, else P959 a
    /// month.
    bool else_own = false;
};

/// Months from the start, for open-ended contracts (P412 = I) and for the others.
struct ExemptionMonths {
    int open_ended;
    int others;
};

/// What a code has of its own.
enum class Particular {
    none,
    not_in_the_north,  ///< nothing in some regions of work (P120)
    limit_in_PC36,     ///< the limit of the month is shown in PC36
};

/// A code, or a code for some classes: the first row that admits the class holds.
struct ExemptionCode {
    char code;
    std::string_view classes;  ///< letters of P412 that are admitted; empty: all
    int first_hire;            ///< yyyymmdd
    int last_hire;             ///< yyyymmdd
    ExemptionMonths months;
    int last_period;  ///< yyyymm: nothing after it, whatever the start; 0: none
    int percent;      ///< of the employer's contributions
    ExemptionCap cap;
    /// Half of the contributions, as a part of the exemption, up to this cap (P967).
    std::optional<ExemptionCap> half_within = std::nullopt;
    Particular particular = Particular::none;

    [[nodiscard]] bool admits(std::string_view contract_class) const;
    /// Is the start within the law's dates?
    [[nodiscard]] bool covers(const Date& start) const;
    /// The day after the last one of the exemption. It may lie beyond its month's end: the
    /// exemption then runs to the end of that month.
    [[nodiscard]] Date end(const Date& start, std::string_view contract_class) const;
};

/// All rows, in the order in which they are searched.
[[nodiscard]] std::span<const ExemptionCode> exemption_codes();
/// The row of a code for a class; nullptr where the code does not exist or does not admit it.
[[nodiscard]] const ExemptionCode* exemption_code(std::string_view code,
                                                  std::string_view contract_class);

/// Is the region (P120) one of the north or the centre, which the reliefs of the South leave out?
[[nodiscard]] bool northern_region(int region);

/// A share of the employee's wage that the State gives back, for codes "O" and "P".
struct WageIncentive {
    char code;
    int first_hire;  ///< yyyymmdd
    int last_hire;   ///< yyyymmdd
    int months;
    int percent;                      ///< of the wage
    MXREPOSITORY::Descriptor amount;  ///< field that takes it
};
/// The row of a code; nullptr for the codes that have none.
[[nodiscard]] const WageIncentive* wage_incentive(std::string_view code);

/// Day of the month that lies so many months later.
[[nodiscard]] Date months_after(const Date& start, int months);

}  // namespace ModSWCALM
