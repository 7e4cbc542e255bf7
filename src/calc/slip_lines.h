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

/// Line 1 to 100 of the slip table (RIGHECEDOLINO), and its replacement.
[[nodiscard]] std::string slip_line(int number);
void set_slip_line(int number, std::string_view line);

/// Reads Q401 to Q500 into RIGHECEDOLINO, and writes them back.
void load_slip_table();
void store_slip_table();

/// Evaluates all lines in order, with bases and accumulators (phase H).
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

// ---- Walks used by the closing ----

/// Sums of items 59, 60, 74 (PB07, PB09, PB10, PB11), on the contribution and tax pass.
void sum_reduction_items();
/// Sums of the thirteenth and fourteenth months (PB16, PB17, PB26, PB27, PB28).
void sum_extra_month_items();
/// Items that are a percentage on the base (".P240", "%", "=OG"): recomputed with their lines.
void recompute_percentage_items();
/// The one-off check of the end of 2022 (QA24, PB25).
void one_off_2022();

}  // namespace ModSWCALM
