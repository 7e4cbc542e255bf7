#pragma once
// The lines of the slip: 100 lines of 35 characters in Q401 to Q500.
//   positions  content
//   1          mark, kept as it is
//   2-4        item code; 999 ends the table, 000 or blank is empty
//   5-17       quantity x 100, zero-filled (the plain value when Z016 = 7)
//   18-30      rate x 100000, zero-filled
//   31-35      kept as they are

#include <functional>
#include <string>
#include <string_view>

namespace ModSWCALM {

inline constexpr int kLineWidth = 35;
inline constexpr int kLinesInPiece = 25;
inline constexpr int kFirstPiece = 2;
inline constexpr int kLastPiece = 5;
inline constexpr int kLineNumberWidth = 13;
inline constexpr double kQuantityUnits = 100;
inline constexpr double kRateUnits = 100000;

/// Line 1 to 100 of the slip table (RIGHECEDOLINO), and its replacement.
[[nodiscard]] std::string slip_line(int number);
void set_slip_line(int number, std::string_view line);

/// Item code of a line; 0 where there is none.
[[nodiscard]] int line_code(std::string_view line);
/// Quantity as it stands in the line, and rate in euro. A character that is no digit ends the
/// number.
[[nodiscard]] double line_quantity(std::string_view line);
[[nodiscard]] double line_rate(std::string_view line);

/// Quantity and rate of the line into Z151 and Z152 of the item; with Z016 = 7 the plain quantity
/// and no rate.
void load_line_into_item(const std::string& line);
/// The line with the quantity and the rate of the item in FOTX$.
[[nodiscard]] std::string line_from_item(std::string line);

/// Reads Q401 to Q500 into RIGHECEDOLINO, and writes them back.
void load_slip_table();
void store_slip_table();

/// Evaluates all lines in order, with bases and accumulators.
void evaluate_lines();

/// P071, the operator's wage for the declaration, from the lines.
void CREA_OPERATORE_RETR_EMENS();

/// Reads item `code` from file 401 into FOTX$; false if it is missing or deleted (Z049 = 99).
[[nodiscard]] bool read_item(double code);

/// Walks the lines of the slip from the first until 999, blanks and 000 passed over, items missing
/// or deleted too; calls the visitor with line number, code and line, the item being in FOTX$.
/// The visitor returns false to end the walk.
using LineVisitor = std::function<bool(int number, int code, const std::string& line)>;
void walk_lines(const LineVisitor& visitor);

/// Result of the month-counted test of T073: does the month count for this employee?
[[nodiscard]] bool month_counts(double minimum_days);

// ---- Walks used by the closing; they read the lines as the walk has left them ----

/// Contribution cut of 2022: wage of the lines 59, 60, 74 (PB11) and of the extra months (PB09)
/// with its percentage (PB10, PB07; from October 2022 PB15, PB16). Leaves the wages in the slip,
/// too. L. 234/2021, art. 1, c. 121
void sum_reduction_items();
/// Contribution cut from 2023: the same wages, and what the extra months are due (PB16, PB17, PB27,
/// PB28, in 2023 only). PB26 of those whose contributions are halved (PB05 not 0). L. 197/2022,
/// art. 1, c. 281; L. 234/2021, art. 1, c. 137
void sum_extra_month_items();
/// Items that are a percentage on the base (".P240", "%", "=OG"): recomputed with their lines on
/// the final P240; P256 follows.
void recompute_percentage_items();
/// The one-off of 150 euro at the end of 2022 (QA24, PB25). D.L. 144/2022, art. 18
void one_off_2022();

}  // namespace ModSWCALM
