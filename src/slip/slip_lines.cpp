#include "slip/slip_lines.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "context/period.h"
#include "context/trace.h"
#include "context/utilities.h"
#include "files/logical_files.h"
#include "formulas/formula.h"
#include "formulas/named_access.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "slip/slip.h"
#include "slip/taxable_bases.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

constexpr double kItemFile = 401;
constexpr std::size_t kPieceWidth = std::size_t{kLineWidth} * kLinesInPiece;
constexpr int kLastPosition = (kLinesInPiece - 1) * kLineWidth + 1;  // of a line in its piece
constexpr std::string_view kEndOfTable = "999";

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

// ---- Position in the table ----

std::string_view current_line() {
    return ritaglia(piece_text(slip.piece), static_cast<std::size_t>(slip.position), kLineWidth);
}

/// The next line; after the 25th of a piece the first of the next.
void advance() {
    slip.position += kLineWidth;
    if (slip.position > kLastPosition) {
        slip.position = 1;
        ++slip.piece;
    }
}

/// Tells whether the line now to be evaluated is the last: the next one ends the table.
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

// ---- Evaluation of one line ----

bool mentions(const std::string& item, std::string_view text) {
    return item.find(text) != std::string::npos;
}

/// A yearly limit that an item may draw on: without it the item does not run, save the item that
/// sets it.
struct LimitedItem {
    Descriptor limit;
    std::string_view mention;
    std::string_view target;
};
constexpr std::array<LimitedItem, 3> kLimitedItems{
    {{P855, "P855", "=P855"}, {P953, "P953", "=P953"}, {P954, "P954", "=P954"}}};

bool waits_for_its_limit(const std::string& item) {
    return std::any_of(kLimitedItems.begin(), kLimitedItems.end(), [&](const LimitedItem& row) {
        return mentions(item, row.mention) && num(row.limit) <= 0 && !mentions(item, row.target);
    });
}

/// Z154 as the preparation of the item area gives it; 0 when the formula rules.
double evaluation_mode() {
    scrivi(Z154, 0.0);
    if (slip.line_mode > 0) {
        scrivi(Z154, slip.line_mode);
    }
    return num(Z154);
}

/// Amount of a line whose quantity and rate were worked out before: no formula.
void preset_amount(double mode) {
    scrivi(Z153, num(Z151) * num(Z152));
    if (mode == 1) {
        aggiungi(P242, num(Z153));
        return;
    }
    aggiungi(P243, num(Z153));
    if (mode == 2) {
        aggiungi(P238, num(Z151));
    } else if (mode == 3) {
        scrivi(P239, num(P233) + num(Z151));
    }
}

/// Items that date a yearly figure, or that set the social base outright.
void follow_formula_marks(const std::string& item) {
    constexpr std::array<std::string_view, 3> kDatedTargets{"=Q711", "=Q712", "=Q713"};
    if (std::any_of(kDatedTargets.begin(), kDatedTargets.end(),
                    [&](std::string_view target) { return mentions(item, target); })) {
        scrivi(Q743, period.month_year());
    }
    if (mentions(item, "=P240")) {
        slip.IMPSOCIALE1 = slip.IMPSOCIALE2 = slip.IMPSOCIALE3 = num(Z153);
        scrivi(P240, slip.IMPSOCIALE1);
    }
}

void write_line_back(std::string line) {
    piece_text(slip.piece)
        .replace(static_cast<std::size_t>(slip.position - 1), kLineWidth,
                 line_from_item(std::move(line)));
}

// ---- Year-end carry of items that are settled on the last slip (class Z050 = 1) ----

/// Q359, the yearly base of the settlement; once a slip, at the first item of the class.
void open_carry() {
    if (num(T176) != 1 || slip.carry_opened || num(Z050) != 1) {
        return;
    }
    slip.carry_opened = true;
    const double of_this_line = num(Z014) == 1 ? num(Z153) : 0;
    scrivi(Q359, num(Q003) + slip.IMPSOCIALE1 + of_this_line - num(Q363) + num(Q358));
}

/// On the slips of the year: splits the amount into its exempt and its taxed part.
void split_carried_item() {
    const bool has_own_divisor = !rifilato(T019).empty();
    double wage = has_own_divisor ? slip.PAGAORARIA : slip.PAGAORARIA * num(P090);
    if (has_own_divisor && num(P050) == 0) {
        wage = num(P240);
    }
    scrivi(Q357, wage);
    const double amount = num(Z153);
    double share = 0;
    if (company.DIVISOREANNO != 0) {
        const double yearly = has_own_divisor ? num(Q357) : num(Q357) + num(Q358) + amount;
        share = yearly / company.DIVISOREANNO * -1;
    }
    const double exempt = std::min(share, amount);
    const double taxed = amount - exempt;
    aggiungi(Q363, taxed);
    aggiungi(Q360, exempt);
    aggiungi(Q358, amount);
    scrivi(P458, exempt);
    scrivi(P459, taxed);
}

/// On the last line of the last slip: the year's exempt part against what the slips have exempted.
void settle_carry() {
    if (!slip.last_line || num(T464) == 1 || num(Q358) == 0 || company.DIVISOREANNO == 0) {
        return;
    }
    const double yearly_share = num(Q359) / company.DIVISOREANNO * -1;
    const double target = std::min(yearly_share, num(Q358)) - num(Q360);
    if (target < 0) {
        scrivi(Q361, target);
    } else {
        scrivi(Q362, target);
        scrivi(P458, target);
        scrivi(P459, slip.carried_amount - target);
    }
    aggiungi(Q360, target);
    scrivi(Q363, num(Q358) - num(Q360));
}

void year_end_carry() {
    if (!slip.CEDOLINOFINALE) {
        if (num(Z050) == 1 && num(T176) == 1) {
            split_carried_item();
        }
        return;
    }
    if (num(T464) == 1) {
        scrivi(T176, 0.0);
    }
    open_carry();
    if (num(Z050) == 1) {
        aggiungi(Q358, num(Z153));
        slip.carried_amount = num(Z153);
    }
    settle_carry();
}

// ---- Accumulators of the line ----

/// How Z021 lets an amount join one of the three totals.
struct TotalRow {
    double kind;
    std::size_t total;
    double sign;
};
constexpr std::array<TotalRow, 4> kTotals{{{2, 2, 1}, {3, 2, -1}, {4, 3, 1}, {5, 2, 1}}};

void add_to_totals(double amount) {
    const double kind = num(Z021);
    if (kind == 1) {
        if (num(Z011) == 0) {
            slip.totals_Z021[1] += amount;
        } else if (num(Z011) == 1) {
            slip.totals_Z021[1] -= amount;
        }
        return;
    }
    for (const TotalRow& row : kTotals) {
        if (row.kind == kind) {
            slip.totals_Z021[row.total] += row.sign * amount;
        }
    }
}

/// Severance base P260: with its share of the base elements, in months that count.
void add_to_severance_base(double kind, double value) {
    if (kind == 3) {
        aggiungi(P260, value);
        return;
    }
    if (kind != 2) {
        value *= slip.QUOTABASE;
    }
    if (month_counts(num(T073))) {
        aggiungi(P260, value);
    }
}

/// How the item enters the severance base (Z020).
void add_to_severance(double amount) {
    constexpr double kBuckets = 5;
    const double declared = num(Z020);
    const double kind = declared == 7 && num(P055) != 0 ? 4 : declared;
    if (kind == 1 || kind == 3 || kind == 4) {
        add_to_severance_base(kind, num(Z011) == 1 ? -amount : amount);
    } else if (kind == 2 || kind == 5) {
        add_to_severance_base(kind, -amount);
    } else if (kind == 8 || kind == 9) {
        slip.severance_buckets[static_cast<std::size_t>(kind)] += amount;
    } else if (const double bucket = num(Z045); bucket >= 1 && bucket <= kBuckets) {
        slip.severance_buckets[static_cast<std::size_t>(bucket)] += amount;
    }
}

void evaluate_line(const std::string& line, int code) {
    if (!read_item(code)) {
        return;
    }
    const std::string item = area(Area::FOTX);
    if (waits_for_its_limit(item)) {
        return;
    }
    if (num(Z048) == 1) {
        slip.note_item = zeri_a_sinistra(std::to_string(code), 3);
        return;
    }
    load_line_into_item(line);
    const double mode = evaluation_mode();
    if (mode > 0) {
        preset_amount(mode);
    } else {
        DECFORM(kTrue);
    }
    if (num(Z029) == 1) {
        scrivi(Z152, num(Z151) == 0 ? 0 : num(Z153) / num(Z151));
    }
    follow_formula_marks(item);
    year_end_carry();
    write_line_back(line);
    slip.IMPORTOVOCE = num(Z153);
    AGGIMPFISCSOC();
    add_to_totals(slip.IMPORTOVOCE);
    add_to_severance(slip.IMPORTOVOCE);
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
    if (LEGGIREC(kItemFile, code) == 1) {
        return false;
    }
    area(Area::FOTX) = record_buffer(kItemFile);
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

void evaluate_lines() {
    TRACCIA("evaluate_lines");
    slip.piece = kFirstPiece;
    slip.position = 1;
    slip.last_line = false;
    slip.carry_opened = false;
    while (slip.piece <= kLastPiece) {
        const std::string line(current_line());
        const int code = line_code(line);
        if (code == 0 || ritaglia(line, 2, 3) == kEndOfTable) {
            return;
        }
        evaluate_line(line, code);
        advance();
        look_ahead();
    }
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

bool month_counts(double minimum_days) {
    const double length = month_length(period.month());
    const std::string start = num(P014) != 0 ? testo(P014) : testo(P013);
    double days = length;
    if (ritaglia(start, 3, 6) == period.month_year()) {
        days += 1 - valore(ritaglia(start, 1, 2));
    }
    if (num(P017) != 0) {
        days -= length - valore(ritaglia(testo(P017), 1, 2));
    }
    return days >= minimum_days;
}

}  // namespace ModSWCALM
