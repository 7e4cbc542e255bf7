#include "formulas/formula.h"

#include <cmath>
#include <cstddef>
#include <string_view>

#include "context/trace.h"
#include "formulas/formula_cells.h"
#include "formulas/named_access.h"
#include "platform/failure.h"
#include "platform/window.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "texts/texts.h"

namespace MXREPOSITORY {

using MXLIBRERIA::TRACCIA;

FormulaRegisters formula_registers;

namespace {

constexpr std::int16_t kPostEverything = -1;
constexpr std::size_t kItemWidth = 13;   ///< quantity, unit value and amount of the item
constexpr std::size_t kFieldWidth = 14;  ///< registers and fields
constexpr double kMonthlyHours = 173;    ///< divisors where the employee has none
constexpr double kMonthlyDays = 26;

bool begins(std::string_view text, std::string_view with) {
    return text.substr(0, with.size()) == with;
}

/// Right-aligned in zeros; a minus stands at the first of the characters.
std::string aligned(const std::string& text, std::size_t width) {
    if (begins(text, "-")) {
        return "-" + zeri_a_sinistra(std::string_view(text).substr(1), width - 1);
    }
    return zeri_a_sinistra(text, width);
}

/// Entry of a register: the digit at the fourth character plus 1; no digit counts as 0.
std::size_t register_entry(std::string_view operand) {
    const char digit = operand.size() > 3 ? operand[3] : '0';
    return digit >= '0' && digit <= '9' ? static_cast<std::size_t>(digit - '0') + 1 : 1;
}

/// Amount of the item, in whole units where the item asks for it.
double item_amount() {
    const double amount = num(Z152) * num(Z151);
    return num(Z029) == 1 ? Int((amount + 0.5) * 100 / 100) : amount;
}

double named_value(std::string_view operand) {
    return valore(XREPOR(operand.substr(0, 4), 0, {}));
}

/// Values of the operands #1 to #4: the pay and its parts; any other sign is 0.
double pay_value(std::string_view operand) {
    const double pay = num(P210);
    const auto by = [pay](double divisor, double usual) {
        return arrotonda(pay / (divisor == 0 ? usual : divisor), 2);
    };
    switch (operand.size() > 1 ? operand[1] : ' ') {
        case '1':
            return pay;
        case '2':
            return pay + num(P073) * kMonthlyDays;
        case '3':
            return by(num(P214), kMonthlyHours);
        case '4':
            return by(num(P427), kMonthlyDays);
        default:
            return 0;
    }
}

double operand_value(std::string_view operand) {
    if (begins(operand, "MEM")) {
        return valore(formula_registers.MEM[register_entry(operand)]);
    }
    if (begins(operand, "TMP")) {
        return valore(formula_registers.TMP[register_entry(operand)]);
    }
    if (begins(operand, "P") || begins(operand, "Q") || begins(operand, "F")) {
        return named_value(operand);
    }
    if (begins(operand, "#")) {
        return pay_value(operand);
    }
    if (begins(operand, "CU")) {
        return num(Z152);
    }
    if (begins(operand, "OG")) {
        return num(Z151);
    }
    if (begins(operand, "IM")) {
        return arrotonda(item_amount(), 2);
    }
    return valore(operand);
}

double applied(char operation, double accumulator, double v) {
    switch (operation) {
        case '.':
            return v;
        case '+':
            return accumulator + v;
        case '-':
            return accumulator + -v;
        case '*':
            return accumulator * v;
        case '%':
            return accumulator * v / 100;
        case '<':
            return v < accumulator ? v : accumulator;
        case '>':
            return v > accumulator ? v : accumulator;
        default:
            return v == 0 ? accumulator : accumulator / v;
    }
}

/// The text that the item and the registers hold.
std::string posted(double accumulator, int decimals, std::size_t width) {
    return aligned(arrotondato_testo(accumulator, decimals), width);
}

void store(const std::string& target, double accumulator, std::int16_t write) {
    if (target == "CU") {
        scrivi(Z152, posted(accumulator, 5, kItemWidth));
    } else if (target == "OG") {
        if (write == kPostEverything) {
            scrivi(Z151, posted(accumulator, 2, kItemWidth));
        }
    } else if (target == "IM") {
        scrivi(Z153, posted(accumulator, 2, kItemWidth));
    } else if (begins(target, "MEM")) {
        formula_registers.MEM[register_entry(target)] = posted(accumulator, 5, kFieldWidth);
    } else if (begins(target, "TMP")) {
        formula_registers.TMP[register_entry(target)] = posted(accumulator, 5, kFieldWidth);
    } else if (begins(target, "P") || begins(target, "Q") || begins(target, "T")) {
        if (write != 0) {
            XREPOW(std::string_view(target).substr(0, 4), 0,
                   zeri_a_sinistra(arrotondato_testo(accumulator, 5), kFieldWidth));
        }
    } else {
        platform::window().box(texts::kPlainBoxTitle.bytes(),
                               texts::kFormulaUnknownTarget.bytes() + target, platform::Icon::none);
    }
}

/// Evaluates one cell; returns the accumulator after it.
double evaluate_cell(std::string_view cell, double accumulator, std::int16_t write) {
    const std::string operand = rifila(cell.substr(1));
    if (cell.front() == '=') {
        store(operand, accumulator, write);
        return accumulator;
    }
    const double result = applied(cell.front(), accumulator, operand_value(operand));
    if (!std::isfinite(result)) {
        throw platform::Failure(platform::kOverflow);
    }
    return result;
}

/// The item's amount: quantity times unit value, whatever the formula wrote there.
void post_amount(std::int16_t write) {
    const double amount = item_amount();
    if (num(Z026) == 1 && write != 0) {
        scrivi(Q100, arrotondato_testo(num(Q100) + amount, 2));
    }
    scrivi(Z153, posted(amount, 2, kItemWidth));
}

}  // namespace

void DECFORM(std::int16_t write) {
    TRACCIA("DECFORM");
    double accumulator = 0;
    for_each_cell(area(Area::FOTX), [&accumulator, write](std::string_view cell) {
        accumulator = evaluate_cell(cell, accumulator, write);
    });
    post_amount(write);
}

}  // namespace MXREPOSITORY
