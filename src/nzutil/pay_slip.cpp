#include "nzutil/pay_slip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "context/period.h"
#include "installation/field_value.h"
#include "installation/file_layout.h"
#include "installation/tool_error.h"
#include "platform/code_page.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FOTX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/advances.h"
#include "tax/bonus_restitution.h"
#include "tax/surtaxes.h"
#include "texts/tool_texts.h"

namespace nzutil {

using namespace MXREPOSITORY;
using MXLIBRERIA::period;

namespace {

using Lines = std::vector<std::string>;

/// "1908.75" as "1.908,75".
std::string italian(double value, int decimals = 2) {
    std::string text = arrotondato_testo(std::abs(value), decimals);
    const std::size_t point = text.find('.');
    text[point] = ',';
    for (std::size_t i = point; i > 3; i -= 3) {
        text.insert(i - 3, 1, '.');
    }
    return arrotonda(value, decimals) < 0 ? "-" + text : text;
}

std::string right(std::string_view text, std::size_t width) {
    return text.size() >= width ? std::string(text)
                                : std::string(width - text.size(), ' ').append(text);
}

std::string date(const Descriptor& field) {
    const std::string digits = testo(field);
    if (valore(digits) == 0 || digits.size() != 8) {
        return {};
    }
    return digits.substr(0, 2) + "/" + digits.substr(2, 2) + "/" + digits.substr(4);
}

void rule(Lines& lines) {
    lines.emplace_back(kSlipWidth, '-');
}

/// Text at the left, text at the right end of the same line.
void both_ends(Lines& lines, const std::string& left, const std::string& end) {
    const std::size_t room = kSlipWidth - std::min(kSlipWidth, end.size());
    lines.push_back(a_sinistra(left, room) + end);
}

/// One labelled amount.
struct Figure {
    const texts::Text* label;
    double amount;
};

/// Labelled amounts in two columns; those that are 0 are left out.
void figures(Lines& lines, std::initializer_list<Figure> list) {
    constexpr std::size_t kColumn = kSlipWidth / 2 - 1;
    constexpr std::size_t kAmount = 13;
    std::string line;
    for (const Figure& figure : list) {
        if (figure.amount == 0) {
            continue;
        }
        const std::string cell = a_sinistra(figure.label->bytes(), kColumn - kAmount) +
                                 right(italian(figure.amount), kAmount);
        if (line.empty()) {
            line = cell + "  ";
        } else {
            lines.push_back(line + cell);
            line.clear();
        }
    }
    if (!line.empty()) {
        lines.push_back(rifila_destra(line));
    }
}

// ---- Head ----

std::string period_title() {
    return texts::kMonths.at(static_cast<std::size_t>(period.month() - 1)).bytes() + " " +
           period.year_text() +
           (period.additional() ? " " + texts::kSlipAdditional.bytes() : std::string());
}

std::string employee_code() {
    const std::string code = testo(P001);
    return code.substr(0, 3) + "-" + code.substr(3, 3) + "-" + code.substr(6);
}

std::string agreement() {
    const double record = num(P331);
    if (record == 0) {
        return {};
    }
    return texts::kSlipAgreement.bytes() + testo_numero(record) + texts::kSlipLevel.bytes() +
           testo_numero(num(P332) == 0 ? 1 : num(P332));
}

void head(Lines& lines) {
    both_ends(lines, rifilato(T002) + " " + rifilato(T003),
              texts::kSlipTitle.bytes() + " " + period_title());
    both_ends(lines,
              rifilato(T004) + " " + rifilato(T005) + " " + rifilato(T006) + " " + rifilato(T007),
              texts::kSlipCompanyTaxCode.bytes() + rifilato(T013));
    rule(lines);
    both_ends(lines, employee_code() + "  " + rifilato(P002) + " " + rifilato(P003),
              texts::kSlipTaxCode.bytes() + rifilato(P004));
    std::string service = texts::kSlipHired.bytes() + date(P013);
    if (num(P017) != 0) {
        service += "  " + texts::kSlipLeft.bytes() + date(P017);
    }
    both_ends(lines, service, agreement());
    figures(lines, {{&texts::kSlipMonthlyPay, num(P209)},
                    {&texts::kSlipHourlyPay, num(P208)},
                    {&texts::kSlipDays, num(P201)},
                    {&texts::kSlipTaxDays, num(P215)}});
    rule(lines);
}

// ---- Lines ----

constexpr int kEndOfLines = 999;
constexpr double kDeleted = 99;
constexpr std::size_t kDescriptionWidth = 32;
constexpr std::size_t kQuantityWidth = 11;
constexpr std::size_t kRateWidth = 15;
constexpr std::size_t kAmountWidth = 13;

void line_of(Lines& lines, const std::string& code, const std::string& description,
             const std::string& quantity, const std::string& rate, double earning,
             double deduction) {
    std::string text = code + " " + a_sinistra(description, kDescriptionWidth) +
                       right(quantity, kQuantityWidth) + right(rate, kRateWidth);
    text += right(earning == 0 ? "" : italian(earning), kAmountWidth);
    text += right(deduction == 0 ? "" : italian(deduction), kAmountWidth);
    lines.push_back(rifila_destra(text));
}

/// One line of the slip table; false at the end of the table.
bool item_line(Lines& lines, const Installation& installation, const std::string& line) {
    const int code = static_cast<int>(valore(ritaglia(line, 2, 3)));
    if (code == kEndOfLines) {
        return false;
    }
    const std::optional<std::string> item =
        code == 0 ? std::nullopt : installation.read(kPayItems, code);
    if (!item.has_value() || LEGGICAMPONUM(Z049, 0, *item) == kDeleted) {
        return true;
    }
    area(Area::FOTX) = *item;
    const bool plain = num(Z016) == 7;
    const double quantity = valore(ritaglia(line, 5, 13)) / (plain ? 1 : 100);
    const double rate = plain ? 0 : valore(ritaglia(line, 18, 13)) / 100000;
    const double amount = arrotonda(quantity * rate);
    line_of(lines, zeri_a_sinistra(std::to_string(code), 3), testo(Z002),
            plain ? testo_numero(quantity) : italian(quantity), plain ? "" : italian(rate, 5),
            num(Z011) == 0 ? amount : 0, num(Z011) == 1 ? amount : 0);
    return true;
}

void item_lines(Lines& lines, const Installation& installation) {
    for (const Descriptor& field : elenco<Q401, Q500>) {
        if (!item_line(lines, installation, testo(field))) {
            return;
        }
    }
}

/// What the closing adds to the lines, earnings and deductions, in the order of the slip.
struct ClosingLine {
    const texts::Text* label;
    Descriptor field;
    bool earning;
};

constexpr std::array<ClosingLine, 23> kClosingLines{{
    {&texts::kSlipAllowance, Q139, true},       {&texts::kSlipAllowance, Q140, true},
    {&texts::kSlipAllowance, Q130, true},       {&texts::kSlipBonus, P022, true},
    {&texts::kSlipBonus, Q280, true},           {&texts::kSlipIntegrativeSum, PC33, true},
    {&texts::kSlipOneOff, QA24, true},          {&texts::kSlipLargeFamily, Q772, true},
    {&texts::kSlipRefund, Q022, true},          {&texts::kSlipContributions, Q224, false},
    {&texts::kSlipIncomeTax, Q137, false},      {&texts::kSlipTaxDue, Q021, false},
    {&texts::kSlipFlatTax, P535, false},        {&texts::kSlipReliefTax, P762, false},
    {&texts::kSlipReliefTax, P764, false},      {&texts::kSlipIntegrativeSum, QA41, true},
    {&texts::kSlipRoundingIn, Q162, false},     {&texts::kSlipSeverancePacket, PA49, true},
    {&texts::kSlipSeverancePacket, PA50, true}, {&texts::kSlipPacketTax, PA52, false},
    {&texts::kSlipPacketTax, PA53, false},      {&texts::kSlipBackPayTax, Q138, false},
    {&texts::kSlipTipsTax, PB56, false},
}};

/// What the ordinary slip of the leaving month adds: the fund, and what it has borne.
constexpr std::array<ClosingLine, 7> kSeveranceLines{{
    {&texts::kSlipSeveranceYear, Q041, true},
    {&texts::kSlipSeveranceFund, Q039, true},
    {&texts::kSlipRevaluation, Q040, true},
    {&texts::kSlipSeveranceTax, Q129, false},
    {&texts::kSlipAccrualContribution, Q038, false},
    {&texts::kSlipSubstituteTax, Q373, false},
    {&texts::kSlipAdvances, Q265, false},
}};

void closing_line(Lines& lines, const texts::Text& label, double amount, bool earning) {
    if (amount != 0) {
        line_of(lines, "   ", label.bytes(), "", "", earning ? amount : 0, earning ? 0 : amount);
    }
}

/// Bonuses taken back, each with its note.
void restitution_lines(Lines& lines) {
    for (const ModSWCALB::Restitution& sum : ModSWCALB::kRestitutions) {
        if (const texts::Text* note = ModSWCALB::restitution_note(sum)) {
            closing_line(lines, *note, ModSWCALB::taken_back(sum), false);
        }
    }
}

void advance_lines(Lines& lines) {
    for (const ModSwCalm2::Advance& advance : ModSwCalm2::kAdvances) {
        if (num(advance.request) != 0) {
            closing_line(lines, texts::kSlipAdvanceTax, num(advance.charged), false);
        }
    }
}

bool pays_severance() {
    return period.ordinary() && num(P017) != 0 &&
           ritaglia(testo(P017), 3, 6) == ritaglia(testo(Q179), 3, 6);
}

/// Taxes on advances come back against the tax on the whole fund.
void severance_lines(Lines& lines) {
    for (const ClosingLine& line : kSeveranceLines) {
        closing_line(lines, *line.label, num(line.field), line.earning);
    }
    closing_line(lines, texts::kSlipSeveranceAtFund, -num(Q236), true);
    if (num(Q969) == 0 && num(P031) != 0) {
        const double paid = ModSwCalm2::tax_on_advances_of_the_year() + num(Q044);
        closing_line(lines, texts::kSlipAdvanceTaxBack, paid, true);
    }
}

// ---- Surtaxes ----

constexpr double kAdjustmentOnly = 2;  // P118

/// Instalments of the month; the advance is withheld on ordinary slips alone.
void instalment_lines(Lines& lines) {
    closing_line(lines, texts::kSlipRegional, num(Q340), false);
    closing_line(lines, texts::kSlipMunicipal, num(Q320), false);
    if (period.ordinary()) {
        closing_line(lines, texts::kSlipMunicipalAdvance, num(Q675), false);
    }
    const bool january = period.ordinary() && period.month() == 1;
    if (january && num(Q235) < 0) {
        closing_line(lines, texts::kSlipMunicipalYear, -num(Q235), true);
    }
}

/// Who leaves is charged with the surtaxes of the year, and gets back an advance that is more.
void leavers_surtax_lines(Lines& lines) {
    closing_line(lines, texts::kSlipRegionalYear, num(Q342), false);
    const double municipal = num(Q343);
    closing_line(lines, texts::kSlipMunicipalYear, std::max(0.0, municipal), false);
    const bool given_up = num(Q674) == 0 && municipal >= 0;
    closing_line(lines, texts::kSlipMunicipalYear,
                 given_up ? num(Q678) + num(Q675) : std::max(0.0, -municipal), true);
}

void surtax_lines(Lines& lines) {
    if (num(P118) != kAdjustmentOnly) {
        instalment_lines(lines);
    }
    if (period.ordinary() && ModSWCALB::surtaxes_are_charged_at_once()) {
        leavers_surtax_lines(lines);
    }
}

void closing_lines(Lines& lines) {
    for (const ClosingLine& line : kClosingLines) {
        closing_line(lines, *line.label, num(line.field), line.earning);
    }
    surtax_lines(lines);
    restitution_lines(lines);
    advance_lines(lines);
    if (pays_severance()) {
        severance_lines(lines);
    }
}

void slip_lines(Lines& lines, const Installation& installation) {
    lines.push_back("    " + a_sinistra(texts::kSlipDescription.bytes(), kDescriptionWidth) +
                    right(texts::kSlipQuantity.bytes(), kQuantityWidth) +
                    right(texts::kSlipRate.bytes(), kRateWidth) +
                    right(texts::kSlipEarnings.bytes(), kAmountWidth) +
                    right(texts::kSlipDeductions.bytes(), kAmountWidth));
    item_lines(lines, installation);
    closing_lines(lines);
    rule(lines);
}

// ---- Bases, tax, year ----

void contributions_and_tax(Lines& lines) {
    figures(lines, {{&texts::kSlipWage, num(P240)},
                    {&texts::kSlipContributions, num(Q224)},
                    {&texts::kSlipTaxable, num(P256)},
                    {&texts::kSlipGrossTax, num(P257)},
                    {&texts::kSlipEmploymentDeduction, num(Q657)},
                    {&texts::kSlipFurtherDeduction, num(Q277)},
                    {&texts::kSlipSpouse, num(Q649)},
                    {&texts::kSlipChildren, num(Q650) + num(Q652) + num(Q668) + num(Q665)},
                    {&texts::kSlipOthers, num(Q653)},
                    {&texts::kSlipIncomeTax, num(Q137)},
                    {&texts::kSlipRegionalYear, num(Q342)},
                    {&texts::kSlipMunicipalYear, num(Q343)},
                    {&texts::kSlipSeveranceWage, num(P260)},
                    {&texts::kSlipSeveranceYear, num(Q041)}});
    rule(lines);
}

void year_to_date(Lines& lines) {
    lines.push_back(texts::kSlipYearToDate.bytes());
    figures(lines, {{&texts::kSlipWage, num(Q001)},
                    {&texts::kSlipContributions, num(Q005)},
                    {&texts::kSlipTaxable, num(Q013)},
                    {&texts::kSlipTaxWithheld, num(Q014)},
                    {&texts::kSlipEmploymentDeduction, num(Q656)},
                    {&texts::kSlipTaxDays, num(Q659)}});
    rule(lines);
}

void net(Lines& lines) {
    both_ends(lines, texts::kSlipTotalEarnings.bytes() + italian(num(P241)), "");
    both_ends(lines, texts::kSlipTotalDeductions.bytes() + italian(num(P259)),
              texts::kSlipNet.bytes() + right(italian(num(Q173)), kAmountWidth));
    if (num(Q163) != 0) {
        const bool owed = num(Q173) == 0;
        both_ends(lines, "",
                  (owed ? texts::kSlipNegativeNet : texts::kSlipRoundingOut).bytes() +
                      right(italian(num(Q163)), kAmountWidth));
    }
}

/// Loads company and employee into their areas, and the period.
void load(const Installation& installation, int employee) {
    area(Area::DIPX) = installation.read(kEmployees, employee).value_or("");
    int number = static_cast<int>(valore(testo(P001).substr(0, 3)));
    for (const auto& [company, record] : installation.read_selection()) {
        number = record == employee ? company : number;
    }
    const std::optional<std::string> company = installation.read(kCompanies, number);
    if (!company.has_value()) {
        throw ToolError(texts::kToolNoCompany, {std::to_string(number)});
    }
    area(Area::DITX) = *company;
    period.set(installation.read(kPeriod, 1).value_or(""));
    if (!is_date(period.date())) {
        throw ToolError(texts::kToolNoPeriod, {platform::to_terminal(period.date())});
    }
}

}  // namespace

std::vector<std::string> pay_slip_lines(const Installation& installation, int employee) {
    load(installation, employee);
    Lines lines;
    head(lines);
    slip_lines(lines, installation);
    contributions_and_tax(lines);
    year_to_date(lines);
    net(lines);
    return lines;
}

int employee_record(const Installation& installation, const std::string& code) {
    const std::string plain = plain_code(code);
    for (int record = 1; record <= installation.record_count(kEmployees); ++record) {
        if (LEGGICAMPO(P001, 0, installation.read(kEmployees, record).value_or(" ")) == plain) {
            return record;
        }
    }
    throw ToolError(texts::kToolNoEmployee, {code});
}

}  // namespace nzutil
