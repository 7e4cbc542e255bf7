#pragma once
// The slip table: 100 lines of 35 characters in Q401 to Q500.
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
inline constexpr std::string_view kEndOfTable = "999";

/// Line 1 to 100 of the slip table (RIGHECEDOLINO), and its replacement.
[[nodiscard]] std::string slip_line(int number);
void set_slip_line(int number, std::string_view line);

/// Item code of a line; 0 where there is none.
[[nodiscard]] int line_code(std::string_view line);
/// Quantity as it stands in the line, and rate in euro. A character that is no digit ends the
/// number.
[[nodiscard]] double line_quantity(std::string_view line);
[[nodiscard]] double line_rate(std::string_view line);
/// Quantity by rate as the line holds them, in cents.
[[nodiscard]] double line_amount(const std::string& line);

/// Quantity and rate of the line into Z151 and Z152 of the item; with Z016 = 7 the plain quantity
/// and no rate.
void load_line_into_item(const std::string& line);
/// The line with the quantity and the rate of the item in FOTX$.
[[nodiscard]] std::string line_from_item(std::string line);

/// Reads Q401 to Q500 into RIGHECEDOLINO, and writes them back.
void load_slip_table();
void store_slip_table();

/// Reads item `code` from file 401 into FOTX$; false if it is missing or deleted (Z049 = 99).
[[nodiscard]] bool read_item(double code);

// ---- Position of the evaluation (slip.piece, slip.position) ----

/// The line at the position.
[[nodiscard]] std::string_view current_line();
/// The line at the position takes the quantity and the rate of the item in FOTX$.
void write_line_back(std::string line);
/// The next line; after the 25th of a piece the first of the next.
void advance();
/// Tells whether the line now to be evaluated is the last: the next one ends the table.
void look_ahead();

/// Walks the lines of the slip from the first until 999, blanks and 000 passed over, items missing
/// or deleted too; calls the visitor with line number, code and line, the item being in FOTX$.
/// The visitor returns false to end the walk.
using LineVisitor = std::function<bool(int number, int code, const std::string& line)>;
void walk_lines(const LineVisitor& visitor);

}  // namespace ModSWCALM
