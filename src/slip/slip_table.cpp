#include "slip/slip_table.h"

#include <cmath>

#include "context/utilities.h"
#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "formulas/named_access.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr std::size_t kPieceWidth = std::size_t{kLineWidth} * kLinesInPiece;
constexpr int kLastPosition = (kLinesInPiece - 1) * kLineWidth + 1;  // of a line in its piece

std::string& piece_text(int piece) {
    std::string& text = slip.RIGHECEDOLINO.at(static_cast<std::size_t>(piece - kFirstPiece));
    text.resize(kPieceWidth, ' ');
    return text;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// Number at the head of a text: blanks, a sign, digits; it ends at the first other character.
double leading_digits(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ') {
        ++i;
    }
    const bool negative = i < text.size() && text[i] == '-';
    if (negative) {
        ++i;
    }
    double value = 0;
    for (; i < text.size() && is_digit(text[i]); ++i) {
        value = value * 10 + (text[i] - '0');
    }
    return negative ? -value : value;
}

/// The amount as whole digits, right-aligned in zeros, its sign in front.
std::string line_number(double value) {
    const std::string digits =
        zeri_a_sinistra(testo_numero(unita(std::abs(value))), kLineNumberWidth);
    return value < 0 ? "-" + digits.substr(1) : digits;
}

}  // namespace

std::string slip_line(int number) {
    const int piece = kFirstPiece + (number - 1) / kLinesInPiece;
    const int position = (number - 1) % kLinesInPiece * kLineWidth;
    return piece_text(piece).substr(static_cast<std::size_t>(position), kLineWidth);
}

void set_slip_line(int number, std::string_view line) {
    const int piece = kFirstPiece + (number - 1) / kLinesInPiece;
    const int position = (number - 1) % kLinesInPiece * kLineWidth;
    piece_text(piece).replace(static_cast<std::size_t>(position), kLineWidth,
                              a_sinistra(line, kLineWidth));
}

int line_code(std::string_view line) {
    return static_cast<int>(leading_digits(ritaglia(line, 2, 3)));
}

double line_quantity(std::string_view line) {
    return leading_digits(ritaglia(line, 5, kLineNumberWidth));
}

double line_rate(std::string_view line) {
    return leading_digits(ritaglia(line, 18, kLineNumberWidth)) / kRateUnits;
}

double line_amount(const std::string& line) {
    return importo(line_quantity(line) / kQuantityUnits * line_rate(line));
}

void load_slip_table() {
    const std::string lines = a_sinistra(leggi_blocco_righe(), kPieceWidth * 4);
    for (int piece = kFirstPiece; piece <= kLastPiece; ++piece) {
        piece_text(piece) =
            lines.substr(static_cast<std::size_t>(piece - kFirstPiece) * kPieceWidth, kPieceWidth);
    }
    slip.former_PB25 = num(PB25);  // the clearing of the month's results takes it off the record
}

void store_slip_table() {
    std::string lines;
    for (int piece = kFirstPiece; piece <= kLastPiece; ++piece) {
        lines += piece_text(piece);
    }
    scrivi_blocco_righe(lines);
}

bool read_item(double code) {
    if (read_table(kPayItems, code) == 1) {
        return false;
    }
    area(Area::FOTX) = record_buffer(kPayItems);
    return num(Z049) != 99;
}

void load_line_into_item(const std::string& line) {
    const bool plain = num(Z016) == 7;
    scrivi(Z151, plain ? line_quantity(line) : line_quantity(line) / kQuantityUnits);
    scrivi(Z152, plain ? 0 : line_rate(line));
}

std::string line_from_item(std::string line) {
    const double units = num(Z016) == 7 ? 1 : kQuantityUnits;
    line.resize(kLineWidth, ' ');
    line.replace(4, kLineNumberWidth, line_number(num(Z151) * units));
    line.replace(17, kLineNumberWidth, line_number(num(Z152) * kRateUnits));
    return line;
}

std::string_view current_line() {
    return ritaglia(piece_text(slip.piece), static_cast<std::size_t>(slip.position), kLineWidth);
}

void write_line_back(std::string line) {
    piece_text(slip.piece)
        .replace(static_cast<std::size_t>(slip.position - 1), kLineWidth,
                 line_from_item(std::move(line)));
}

void advance() {
    slip.position += kLineWidth;
    if (slip.position > kLastPosition) {
        slip.position = 1;
        ++slip.piece;
    }
}

void look_ahead() {
    slip.last_line = false;
    if (slip.piece > kLastPiece || (slip.piece == kLastPiece && slip.position == kLastPosition)) {
        return;
    }
    const bool next_piece = slip.position == kLastPosition;
    const int piece = next_piece ? slip.piece + 1 : slip.piece;
    const int position = next_piece ? 1 : slip.position + kLineWidth;
    slip.last_line =
        ritaglia(piece_text(piece), static_cast<std::size_t>(position) + 1, 3) == kEndOfTable;
}

void walk_lines(const LineVisitor& visitor) {
    constexpr int kLines = 100;
    for (int number = 1; number <= kLines; ++number) {
        const std::string line = slip_line(number);
        if (ritaglia(line, 2, 3) == kEndOfTable) {
            return;
        }
        const int code = line_code(line);
        if (code != 0 && read_item(code) && !visitor(number, code, line)) {
            return;
        }
    }
}

}  // namespace ModSWCALM
