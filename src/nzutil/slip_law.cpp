#include "nzutil/slip_law.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "nzutil/slip_certificate.h"
#include "nzutil/slip_reliefs.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/dictionary/FOPX.h"
#include "records/dictionary/FOTX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

bool any(const CalculatedSlip& slip, const std::vector<Descriptor>& fields) {
    return std::ranges::any_of(fields,
                               [&](const Descriptor& field) { return slip.now(field) != 0; });
}

// ---- Contributions ----

/// Full rate S003 or reduced rate S007; nothing where no mark decides.
std::optional<double> pension_rate(const CalculatedSlip& slip) {
    if (slip.now(P040) == 0 && slip.now(P187) == 0) {
        return slip.sector(S007) != 0 ? slip.sector(S007) : slip.sector(S003);
    }
    if (slip.now(P181) != 0 && slip.now(P185) == 0) {
        return slip.sector(S003);
    }
    return slip.now(P181) == 0 ? std::optional(0.0) : std::nullopt;
}

/// Percentages of the employee's items 1, 3 and 8; nothing where other items are in force too, or
/// a company has rates of its own.
struct Rates {
    double pension;
    double item3;
    double apprentice;
};

std::optional<Rates> rates_of(const CalculatedSlip& slip) {
    if (slip.collaborator()) {
        return Rates{0, 0, 0};
    }
    const bool own_rates = slip.company_is("90000000055") || slip.company(T633) == 1;
    const std::optional<double> pension = pension_rate(slip);
    if (slip.entertainer() || own_rates || !pension ||
        any(slip, {P182, P184, P185, P186, P187, P160, P886})) {
        return std::nullopt;
    }
    const bool second_rate = slip.sector(S209) != 0 && slip.now(P100) == 1;
    return Rates{slip.now(P181) == 1 ? *pension : 0, slip.now(P183) == 1 ? slip.sector(S005) : 0,
                 slip.now(P188) == 1 ? slip.sector(second_rate ? S209 : S010) : 0};
}

/// Contributions on an amount, item by item in cents.
double contributions_on(double amount, const Rates& rates) {
    return arrotonda(amount * rates.pension / 100) + arrotonda(amount * rates.item3 / 100) +
           arrotonda(amount * rates.apprentice / 100);
}

/// The wage that has borne the contributions: without what the closing raised to the minimum.
double contribution_wage(const CalculatedSlip& slip) {
    const double wage = slip.now(P240);
    const bool raised = slip.now(P169) == 0 && wage != Int(wage);
    return raised ? wage - slip.now(P249) : wage;
}

// ---- Bases ----

/// How an item enters one of the bases.
struct BaseFields {
    Descriptor item_class;
    Descriptor limit;
    Descriptor second_limit;
    double class_of_second_limit;
};
constexpr BaseFields kFiscal{Z013, Z006, Z008, 5};
constexpr BaseFields kSocial{Z014, Z007, Z009, 4};

double above_limit(const SlipLine& line, const BaseFields& fields) {
    double limit = line.of_item(fields.limit);
    if (limit == 0 && line.of_item(fields.item_class) == fields.class_of_second_limit) {
        limit = line.of_item(fields.second_limit);
    }
    if (limit == 0) {
        return line.amount;
    }
    return line.of_item(Z016) == 0 ? std::max(0.0, line.amount - limit)
                                   : std::max(0.0, line.rate - limit) * line.quantity;
}

/// Part of the line in the base; nothing for a class that depends on more than the line.
std::optional<double> part_in_base(const SlipLine& line, const BaseFields& fields) {
    const double sign = line.deduction() ? -1 : 1;
    switch (static_cast<int>(line.of_item(fields.item_class))) {
        case 0:
            return 0;
        case 1:
            return sign * line.amount;
        case 2:
            return -line.amount;
        case 3:
            return sign * line.amount / 2;
        case 4:
        case 5:
            return sign * above_limit(line, fields);
        case 7:
        case 8:
        case 9:
            return fields.item_class == Z013 ? std::optional(0.0) : std::nullopt;
        default:
            return std::nullopt;
    }
}

/// A premium (fiscal class 6) leaves the taxable where it may bear the flat tax; else it counts
/// above its limit.
std::optional<double> part_in_taxable(const CalculatedSlip& slip, const SlipLine& line) {
    if (line.of_item(Z013) != kPremiumClass) {
        return part_in_base(line, kFiscal);
    }
    const std::optional<bool> relieved = premiums_are_relieved(slip);
    if (!relieved) {
        return std::nullopt;
    }
    const double sign = line.deduction() ? -1 : 1;
    return *relieved ? 0 : sign * line.amount;
}

template <class Part>
std::optional<double> sum_of_lines(const CalculatedSlip& slip, const Part& part_of) {
    if (slip.now(PC23) != 0) {
        return std::nullopt;
    }
    double sum = 0;
    for (const SlipLine& line : slip.lines()) {
        const std::optional<double> part = part_of(line);
        if (!part) {
            return std::nullopt;
        }
        sum += *part;
    }
    return std::max(0.0, sum);
}

/// What leaves `net` of a whole amount, contributions and `further`: the amount is sought around
/// its quotient.
std::optional<double> contributions_behind(double net, const Rates& rates, double further) {
    if (net == 0) {
        return 0;
    }
    const double percent = rates.pension + rates.item3 + rates.apprentice;
    const double about = std::round((net + further) / (1 - percent / 100));
    for (double amount = about - 2; amount <= about + 2; ++amount) {
        const double taken_off = contributions_on(amount, rates) + further;
        if (std::llround((amount - taken_off) * 100) == std::llround(net * 100)) {
            return taken_off;
        }
    }
    return std::nullopt;
}

// ---- Employment deduction ----

/// Art. 13, c. 1, 1.1 and 5 TUIR in the form of L. 234/2021, amounts of a year.
double worker_deduction(double income) {
    if (income <= 15000.01) {
        return 1880;
    }
    const double further = income >= 25000 && income <= 35000 ? 65 : 0;
    if (income <= 28000) {
        return std::min(3100.0, 1910 + 1190 * (28000 - income) / 13000 + further);
    }
    return income <= 50000 ? 1910 * (50000 - income) / 22000 + further : 0;
}

/// Art. 13, c. 3 TUIR.
double pensioner_deduction(double income) {
    if (income <= 8500) {
        return 1955;
    }
    if (income <= 28000) {
        return 700 + 1255 * (28000 - income) / 19500;
    }
    return income <= 50000 ? 700 * (50000 - income) / 22000 : 0;
}

/// The quotient is cut at four decimals.
double other_income_deduction(double income) {
    const double quotient = std::floor((55000 - income) / 50200 * 10000 + 1e-6) / 10000;
    return 1104 * std::max(0.0, quotient);
}

double yearly_deduction(const CalculatedSlip& slip, double income) {
    if (slip.now(P583) == 2) {
        return other_income_deduction(income);
    }
    if (slip.now(P348) == 1) {
        const double amount = pensioner_deduction(income);
        return amount > 0 && slip.company_is("90000000088") ? amount + 50 : amount;
    }
    return slip.now(P348) == 0 ? worker_deduction(income) : 0;
}

/// Least amount of low incomes: 690, for a fixed term 1380, pensioners 713.
double least_deduction(const CalculatedSlip& slip, double income) {
    if (slip.now(P583) == 2) {
        return 0;
    }
    if (slip.now(P348) == 1) {
        return income <= 8500 ? 713 : 0;
    }
    const std::string contract = rifila(slip.text(P412));
    if (income > 15000 || contract.size() != 1) {
        return 0;
    }
    if (std::string("DSTG2").find(contract) != std::string::npos) {
        return 1380;
    }
    return contract == "I" || contract == "1" ? 690 : 0;
}

double instalments_of_year(const CalculatedSlip& slip) {
    return slip.collaborator() && slip.now(P090) != 0 ? slip.now(P090) : 12;
}

}  // namespace

std::optional<double> own_contribution_percent(const CalculatedSlip& slip) {
    const std::optional<Rates> rates = rates_of(slip);
    return rates ? std::optional(rates->pension + rates->item3 + rates->apprentice) : std::nullopt;
}

std::optional<FundShares> fund_shares(const CalculatedSlip& slip) {
    const bool in_packet = slip.now(P921) != 0 || slip.now(PA48) != 0;
    if (!slip.in_a_fund() || slip.now(P118) == 2 || in_packet) {
        return FundShares{slip.now(P401) == 0 ? slip.now(P450) : 0, 0};
    }
    const bool other_rule = slip.fund(R023) != 0 || slip.fund(R037) == 2 || slip.fund(R061) == 1 ||
                            slip.fund(R055) != 0 || slip.fund(R054) != 0 || slip.fund(R056) != 0;
    if (other_rule || moves_accrual(slip)) {
        return std::nullopt;
    }
    const double limit = slip.fund(R007);
    const double wage = slip.now(P260);
    const double left = std::max(0.0, limit - slip.was(Q037));
    const double within = limit == 0 ? wage : std::min(wage, left);
    const double own_above = slip.fund(R062) == 1 ? slip.now(P402) * (wage - within) / 100 : 0;
    return FundShares{arrotonda((slip.fund(R004) + slip.now(P402)) * within / 100) +
                          arrotonda(own_above) + slip.now(P450),
                      arrotonda(slip.fund(R003) * within / 100)};
}

bool moves_accrual(const CalculatedSlip& slip) {
    return std::ranges::any_of(slip.lines(), [](const SlipLine& line) {
        constexpr double kMovedToFund = 8;
        return line.of_item(Z020) == kMovedToFund;
    });
}

std::optional<EmployeeContributions> employee_contributions(const CalculatedSlip& slip) {
    const std::optional<Rates> rates = rates_of(slip);
    const std::optional<FundShares> fund = fund_shares(slip);
    const bool half_share = slip.now(PB20) == 1 || slip.now(PB20) == 2;
    if (!rates || half_share || !fund || slip.company(T187) == 1 || slip.sector(S088) != 0) {
        return std::nullopt;
    }
    EmployeeContributions result;
    result.to_fund = slip.in_a_fund() ? fund->employee : 0;
    result.reductions =
        slip.now(PB05) == 0 ? slip.sum({PB06, PB10, PB14, PB15, PB26, PB29, PB07, PB16, PB28}) : 0;
    const double relief = slip.now(PB20) == 3 ? slip.now(PB21) : 0;
    const double above_bracket = slip.now(Q167) == 1 ? -slip.now(P221) : slip.now(P221);
    const bool paid_before = rates->item3 != 0 && slip.month() == 12 && !slip.additional() &&
                             slip.now(P118) != 2 && slip.now(P240) != 0;
    result.owed = contributions_on(contribution_wage(slip), *rates) + slip.now(Q800) +
                  fund->employee + above_bracket - result.reductions - relief -
                  (paid_before ? slip.was(Q010) : 0);
    return result;
}

std::optional<double> fiscal_base(const CalculatedSlip& slip) {
    // Back pay leaves the record with its contributions; the ten percent rule splits the wage.
    if (slip.company_is("90000000066") || slip.now(P921) == 1 || any(slip, {Q800, Q052})) {
        return std::nullopt;
    }
    return sum_of_lines(slip, [&](const SlipLine& line) { return part_in_taxable(slip, line); });
}

std::optional<double> social_base(const CalculatedSlip& slip) {
    if (slip.yearly(F041) != 1) {
        return std::nullopt;
    }
    return sum_of_lines(slip, [](const SlipLine& line) { return part_in_base(line, kSocial); });
}

std::optional<double> contributions_on_separate_amounts(const CalculatedSlip& slip) {
    if (slip.now(P244) == 0 && slip.now(P245) == 0) {
        return 0;
    }
    const std::optional<Rates> rates = rates_of(slip);
    if (!rates || slip.now(P040) != 0) {
        return std::nullopt;
    }
    const double further = slip.additional() ? slip.now(P724) : 0;
    const std::optional<double> first = contributions_behind(slip.now(P244), *rates, further);
    const std::optional<double> second = contributions_behind(slip.now(P245), *rates, further);
    return first && second ? std::optional(*first + *second) : std::nullopt;
}

double tax_by_scale(const CalculatedSlip& slip, double base) {
    double tax = 0;
    double from = 0;
    for (const CalculatedSlip::Bracket& bracket : slip.brackets()) {
        const double to = slip.now(P031) == 2 ? base : std::min(base, bracket.limit);
        if (to <= from) {
            break;
        }
        tax += (to - from) * bracket.percent / 100;
        from = to;
    }
    return tax;
}

std::optional<double> tax_of_the_year(const CalculatedSlip& slip) {
    if (slip.now(P747) != 0) {  // a large family is paid what its tax cannot take
        return std::nullopt;
    }
    const CertificateAmounts certificate = certificate_amounts(slip);
    const double base = std::max(0.0, slip.sum({Q013, Q514, Q898}) - certificate.off_base);
    const bool own_percent = slip.now(P287) != 0 && slip.now(P525) != 0;
    const double gross = own_percent ? base * slip.now(P287) / 100 : tax_by_scale(slip, base);
    return std::max(
        0.0, gross - slip.now(Q174) - certificate.off_tax -
                 slip.sum({Q657, Q277, Q648, Q649, Q650, Q652, Q665, Q651, Q653, Q668, Q741}));
}

double deduction_at_income(const CalculatedSlip& slip, double income) {
    const bool by_income = slip.now(P583) == 0 || slip.now(P583) == 2;
    return by_income ? yearly_deduction(slip, income) : 0;
}

double deduction_of_the_year(const CalculatedSlip& slip) {
    constexpr double kDaysOfYear = 365;
    const double income =
        arrotonda(slip.sum({Q669, Q013, Q514, Q898}) - certificate_amounts(slip).off_base);
    const double days = std::min(slip.now(Q659) + slip.now(Q518), kDaysOfYear);
    return arrotonda(std::max(yearly_deduction(slip, income) * days / kDaysOfYear,
                              least_deduction(slip, income)));
}

double deduction_of_the_month(const CalculatedSlip& slip) {
    const bool leap_year =
        slip.year() % 4 == 0 && (slip.year() % 100 != 0 || slip.year() % 400 == 0);
    const double days_of_year = leap_year && slip.yearly(F169) == 0 ? 366 : 365;
    const double month = slip.now(P256) - slip.now(P244) - slip.now(P245);
    const double income = arrotonda(slip.now(Q669) + month * instalments_of_year(slip));
    const double yearly = yearly_deduction(slip, income);
    const double days = slip.collaborator() ? slip.now(P449) : slip.now(P215);
    return arrotonda(days != 0 ? yearly / days_of_year * days : yearly / instalments_of_year(slip));
}

}  // namespace nzutil
