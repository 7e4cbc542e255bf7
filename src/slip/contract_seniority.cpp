// Seniority pay by the rule of the contract.

#include "slip/contract_parts.h"

#include <string>
#include <string_view>

#include "context/period.h"
#include "records/dictionary/DIPX.h"
#include "records/numbers.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;

namespace {

constexpr double kSeniorityNone = 0;
constexpr double kSeniorityByTable = 2;

/// Has the employee's rule (P335) its turn in this month?
bool seniority_applies() {
    const double rule = copy_num(P335);
    const std::string last_step = copy_text(P027);  // mmyyyy
    if (rule == 1) {
        return last_step == period.month_year();
    }
    if (rule == 2) {
        return last_step.starts_with("01");
    }
    return rule != 3;
}

/// Fixed amount of the contract; for pay by the hour its hourly share on top of P061.
double fixed_seniority(std::int16_t grade) {
    const double amount = num(G012, grade);
    const double divisor = hours_divisor();
    if (copy_num(P050) != 0 || divisor == 0) {
        return amount;
    }
    return copy_num(P061) + amount / divisor;
}

/// One token of G014: "Pn" is the n-th of the employee's amounts Q096 to Q105 ("P0" the tenth), a
/// digit n the n-th pay element of the grade. Anything else is 0.
double token_value(const std::string& token, std::int16_t grade) {
    const std::string trimmed = rifila(token);
    if (trimmed.starts_with('P')) {
        const std::string_view digit = ritaglia(trimmed, 2, 1);
        if (digit.empty() || digit[0] < '0' || digit[0] > '9') {
            return 0;
        }
        const int n = digit == "0" ? 10 : digit[0] - '0';
        return copy_num(dopo(Q096, n - 1));
    }
    const double n = valore(trimmed);
    return n >= 1 && n <= 8 ? num(kPayElements.at(static_cast<std::size_t>(n) - 1), grade) : 0;
}

/// Percentage G012 of the amounts that G014 names.
double seniority_by_table(std::int16_t grade) {
    const std::string tokens = testo(G014, grade);
    double base = 0;
    for (std::size_t position = 1; position <= tokens.size(); position += 2) {
        base += token_value(std::string(ritaglia(tokens, position, 2)), grade);
    }
    return base * num(G012, grade) / 100;
}

}  // namespace

void set_contract_seniority(std::int16_t grade) {
    const double rule = num(G011, grade);
    if (rule != kSeniorityNone && seniority_applies()) {
        if (rule != kSeniorityByTable) {
            copy_write(P026, fixed_seniority(grade));
        } else if (num(G012, grade) != 0) {
            copy_write(P026, seniority_by_table(grade));
        }
    }
    if (num(G010, grade) != 1) {
        copy_write(P061, copy_num(P026) * copy_num(P029));
    }
}

}  // namespace ModSWCALM
