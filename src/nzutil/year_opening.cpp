#include "nzutil/year_opening.h"

#include <algorithm>
#include <array>
#include <span>

#include "installation/tool_error.h"
#include "platform/code_page.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "records/numbers.h"
#include "severance/revaluation.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

// ---- What starts again ----

/// Contributions, and the wage that they and the accident insurance are on: the ceilings of these
/// sums are yearly. With them what was above a ceiling, and the reliefs with a yearly limit.
constexpr std::array kContributionSums{Q001, Q002, Q003, Q004, Q005, Q007, Q009, Q010, Q063,
                                       Q094, Q168, Q170, Q926, Q927, Q974, Q845, P919};

/// Income, tax, and what came off it: the tax is the year's (TUIR, art. 7).
constexpr std::array kTaxSums{Q013, Q014, Q021, Q022, Q174, Q276, Q278, Q279, Q666,
                              Q740, Q742, Q773, Q801, Q804, Q314, QA34, Q956};

/// Premiums, tips and sports pay: their favours have a limit a year.
constexpr std::array kFavouredSums{Q110, Q776, Q777, Q778, Q779, Q808, QA27, QA28, QA32, QA33};

/// Pay, tax and days that another employer had in the year: declared for one year.
constexpr std::array kOtherEmployments{Q509, Q514, Q515, Q518, Q898, Q953};

/// Pay of collaborators, whole and month by month.
constexpr std::array kCollaboratorSums{Q520, Q521, Q522, Q523, Q524, Q525, Q526, Q527, Q528,
                                       Q529, Q530, Q531, Q532, Q533, Q534, Q680, Q782, Q847};

/// Year totals of the reliefs on the severance fund. The treasury fund beside them (Q692 to Q701)
/// runs through the years.
constexpr std::array kSeveranceReliefs{Q687, Q688, Q689, Q690, Q691, Q744};

/// Surtaxes: instalments paid, the closed year's amounts and its advance. The numbers of
/// instalments stay (Q315, Q318, Q673), and the advance of the new year comes in March.
constexpr std::array kSurtaxes{Q316, Q320, Q339, Q340, Q342, Q343, Q674, Q675, Q678};

/// Counters of days, hours, weeks and months: of deductions, of work, of the events of the month,
/// of the accident insurance. Twelfths of the 13th (Q164); those of the 14th (Q165) run from July.
constexpr std::array kCounters{Q062, Q069, Q070, Q071, Q074, Q075, Q079, Q080, Q081,
                               Q131, Q134, Q164, Q191, Q214, Q215, Q216, Q217, Q218,
                               Q219, Q220, Q221, Q222, Q223, Q658, Q659, Q660};

/// Other sums that their rules read as the year's: accident insurance by month beside its days,
/// travel pay, exempt amounts, family allowances, typed lines, and items settled with December.
constexpr std::array kOtherSums{Q027, Q028, Q030, Q066, Q068, Q078, Q109, Q204,
                                Q205, Q206, Q207, Q208, Q209, Q210, Q211, Q212,
                                Q213, Q357, Q358, Q359, Q360, Q361, Q362, Q363};

/// Back pay of earlier years: its sums are the year's.
constexpr std::array kBackPay{Q033, Q034, Q035};

/// January's difference of wage: declared once.
constexpr std::array kJanuaryDifference{Q780, Q781};

using FieldList = std::span<const Descriptor>;
constexpr std::array<FieldList, 11> kStartAgain{
    kContributionSums, kTaxSums,          kFavouredSums,     kOtherEmployments,
    kCollaboratorSums, kSeveranceReliefs, kSurtaxes,         kCounters,
    kOtherSums,        kBackPay,          kJanuaryDifference};

/// Every slip leaves something in one of these, nobody types them ahead, and the opening empties
/// all of them: they tell the sums of a closed year from those of an opened one.
constexpr std::array kMovedBySlips{Q001, Q003, Q005, Q013, Q014, Q062, Q063, Q094, Q658, Q659};

void start_again(FieldList fields) {
    for (const Descriptor& field : fields) {
        scrivi(field, 0);
    }
}

// ---- What is carried ----

/// Income of the last two years, for the rate of back pay (TUIR, art. 21).
void carry_income() {
    scrivi(Q032, num(Q031));
    scrivi(Q031, num(Q013) + num(Q514));
}

/// Surtaxes of the closed year, withheld in instalments of the new one (D.Lgs. 446/1997, art. 50;
/// D.Lgs. 360/1998, art. 1). An advance that the settlement has given up comes off the balance.
/// Those who left have settled theirs on the last slip.
void carry_surtaxes(bool left) {
    const double advance_returned = num(Q674) == 0 ? num(Q678) + num(Q675) : 0;
    scrivi(Q317, left ? 0 : num(Q342));
    scrivi(Q235, left ? 0 : num(Q343) - advance_returned);
}

/// An advance on the severance fund: amount, its tax, the month in which it was paid.
struct Advance {
    Descriptor amount;
    Descriptor tax;
    Descriptor month;
};
constexpr std::array<Advance, 4> kAdvances{
    {{Q046, Q047, Q185}, {Q252, Q253, Q254}, {Q256, Q257, Q258}, {Q978, Q987, Q977}}};

/// Index of a month of the closed year; month 0 is its start.
double price_index(double month, double base_index) {
    const bool in_year = month >= 1 && month <= 12;
    return in_year ? num(dopo(F023, static_cast<int>(month) - 1)) : base_index;
}

/// Revaluation of the fund by December's index, and its substitute tax (art. 2120 c.c., c. 4;
/// D.Lgs. 47/2000, art. 11). An advance takes its part off from the month in which it was paid.
void revalue_fund(int closed_year) {
    const double base_index = ModSwCalm2::base_index_of_year(closed_year, num(F021));
    scrivi(Q267, ModSwCalm2::CalcolaCoefRivalTFR(num(F034), base_index, num(Q136)));
    const double elsewhere = num(T587) == 1 ? num(Q699) + num(Q896) + num(Q698) : 0;
    double revaluation = (num(Q039) - elsewhere) * num(Q267) / 100;
    for (const Advance& advance : kAdvances) {
        const double month = num(advance.month);
        const double coefficient =
            ModSwCalm2::CalcolaCoefRivalTFR(num(F034), price_index(month, base_index), 12 - month);
        revaluation -= num(advance.amount) * coefficient / 100;
    }
    scrivi(Q270, std::max(0.0, revaluation));
    scrivi(Q121, num(P031) == 0 ? 0 : num(F322) * num(Q270) / 100);
}

/// The year's accrual, less contribution and advances.
void close_accrual() {
    constexpr double kUsualDivisor = 13.5;  // art. 2120 c.c., c. 1
    scrivi(Q041, num(Q037) / (num(P467) != 0 ? num(P467) : kUsualDivisor));
    scrivi(Q264, num(Q041) - num(Q038));
    double advances = 0;
    for (const Advance& advance : kAdvances) {
        advances += num(advance.amount);
    }
    scrivi(Q265, advances);
}

/// The fund at 31 December. Its revaluation has borne its own tax, so that it is none of what the
/// termination taxes (TUIR, art. 19, c. 1): Q056. Advances become those of earlier years.
void carry_fund(int closed_year) {
    close_accrual();
    revalue_fund(closed_year);
    const double net_revaluation = num(Q270) - num(Q121);
    aggiungi(Q039, num(Q264) - num(Q265) - num(Q236) + net_revaluation);
    aggiungi(Q056, net_revaluation);
    aggiungi(Q042, num(Q136));
    aggiungi(Q043, num(Q265));
    for (const Advance& advance : kAdvances) {
        aggiungi(Q044, num(advance.tax));
        azzera({advance.amount, advance.tax, advance.month});
    }
    azzera({Q136, Q037, Q038, Q041, Q236});
}

// ---- Who ----

int year_of(const Descriptor& date) {
    return static_cast<int>(valore(ritaglia(testo(date), 5, 4)));
}

/// yyyymmdd of a date ddmmyyyy; 0 where there is none.
double day_of(const Descriptor& date) {
    const std::string text = testo(date);
    return valore(ritaglia(text, 5, 4)) * 10000 + valore(ritaglia(text, 3, 2)) * 100 +
           valore(ritaglia(text, 1, 2));
}

/// Did the employee leave before the year? A leaving before the start belongs to another
/// employment.
bool left_before(int year) {
    const double start = day_of(num(P014) != 0 ? P014 : P013);
    const double leaving = day_of(P017);
    return leaving != 0 && leaving >= start && year_of(P017) < year;
}

bool has_sums() {
    return std::ranges::any_of(kMovedBySlips,
                               [](const Descriptor& field) { return num(field) != 0; });
}

/// December's ordinary slip, as the last one: the additional one alone leaves Q171 at November.
bool december_calculated() {
    constexpr double kDecember = 12;
    return num(Q171) == kDecember && valore(ritaglia(testo(Q179), 3, 2)) == kDecember;
}

Standing standing_in_area(int year) {
    if (valore(testo(P001)) == 0) {
        return Standing::no_record;
    }
    const int last_slip = year_of(Q179);
    if (last_slip == 0) {
        return Standing::no_slip;
    }
    if (last_slip >= year) {
        return Standing::begun;
    }
    if (!has_sums()) {
        return Standing::opened;
    }
    if (left_before(year)) {
        return Standing::to_open;
    }
    if (last_slip < year - 1) {
        return Standing::earlier_year;
    }
    return december_calculated() ? Standing::to_open : Standing::december_missing;
}

std::string shown_code() {
    const std::string code = testo(P001);
    return code.substr(0, 3) + "-" + code.substr(3, 3) + "-" + code.substr(6);
}

// ---- Refusals ----

/// The first few codes of a list, and how many more there are.
std::string first_of(const std::vector<std::string>& codes) {
    constexpr std::size_t kShown = 5;
    std::string text;
    for (std::size_t i = 0; i < std::min(codes.size(), kShown); ++i) {
        text += (i == 0 ? "" : ", ") + codes[i];
    }
    return codes.size() <= kShown
               ? text
               : fill(texts::kToolAndMore, {text, std::to_string(codes.size() - kShown)});
}

/// What the records say of the year, employee by employee.
struct Survey {
    YearOpening opening;
    int last_year = 0;  ///< of the latest slip
    std::vector<std::string> december_missing;
    std::vector<std::string> earlier_year;
};

Survey survey_employees(const Installation& installation, int year) {
    Survey survey;
    survey.opening.year = year;
    const int records = installation.record_count(kEmployees);
    for (int record = 1; record <= records; ++record) {
        area(Area::DIPX) = installation.read(kEmployees, record).value_or("");
        survey.last_year = std::max(survey.last_year, year_of(Q179));
        switch (standing_in_area(year)) {
            case Standing::no_record:
                break;
            case Standing::no_slip:
            case Standing::opened:
                ++survey.opening.passed_over;
                break;
            case Standing::to_open:
                survey.opening.to_open.push_back(record);
                break;
            case Standing::begun:
                survey.opening.begun.push_back(shown_code());
                break;
            case Standing::december_missing:
                survey.december_missing.push_back(shown_code());
                break;
            case Standing::earlier_year:
                survey.earlier_year.push_back(shown_code());
                break;
        }
    }
    area(Area::DIPX).clear();
    return survey;
}

void refuse_out_of_order(const Survey& survey) {
    const int year = survey.opening.year;
    const std::string opened = std::to_string(year);
    const std::string former = std::to_string(year - 1);
    if (!survey.earlier_year.empty()) {
        throw ToolError(texts::kToolYearSkipped, {former, first_of(survey.earlier_year)});
    }
    if (!survey.december_missing.empty()) {
        throw ToolError(texts::kToolDecemberMissing, {former, first_of(survey.december_missing)});
    }
    if (!survey.opening.to_open.empty()) {
        return;
    }
    if (survey.last_year >= year) {
        throw ToolError(texts::kToolYearBegun, {opened});
    }
    if (survey.last_year == year - 1) {
        throw ToolError(texts::kToolYearOpen, {opened});
    }
    throw ToolError(texts::kToolNoFormerYear, {former, opened});
}

/// The fund cannot be revalued without both indexes, and December's is published in January.
void refuse_without_indexes(const Installation& installation, int year) {
    area(Area::FISX) = installation.read(kFixedData, 1).value_or("");
    const double december = num(F034);
    const double base = num(F021);
    area(Area::FISX).clear();
    if (december == 0) {
        throw ToolError(texts::kToolNoDecemberIndex, {std::to_string(year - 1)});
    }
    if (base == 0) {
        throw ToolError(texts::kToolNoBaseIndex, {std::to_string(year - 2)});
    }
}

}  // namespace

Standing standing_of(const std::string& employee, int year) {
    area(Area::DIPX) = employee;
    const Standing standing = standing_in_area(year);
    area(Area::DIPX).clear();
    return standing;
}

OpenedEmployee open_year_of(const std::string& employee, const std::string& company,
                            const std::string& fixed, int year) {
    area(Area::DIPX) = employee;
    area(Area::DITX) = company;
    area(Area::FISX) = fixed;
    OpenedEmployee opened;
    opened.code = shown_code();
    opened.name = platform::to_terminal(rifilato(P002) + " " + rifilato(P003));
    opened.left = left_before(year);
    carry_income();
    carry_surtaxes(opened.left);
    if (!opened.left) {
        carry_fund(year - 1);
        opened.revaluation = num(Q270);
    }
    for (const FieldList& fields : kStartAgain) {
        start_again(fields);
    }
    opened.income = num(Q031);
    opened.regional = num(Q317);
    opened.municipal = num(Q235);
    opened.severance = num(Q039);
    opened.bytes = area(Area::DIPX);
    for (const Area used : {Area::DIPX, Area::DITX, Area::FISX}) {
        area(used).clear();
    }
    return opened;
}

YearOpening prepare_year_opening(const Installation& installation, int year) {
    Survey survey = survey_employees(installation, year);
    refuse_out_of_order(survey);
    refuse_without_indexes(installation, year);
    return std::move(survey.opening);
}

OpenedEmployee work_out_opening(const Installation& installation, int record, int year) {
    const std::string employee = installation.read(kEmployees, record).value_or("");
    const int company = static_cast<int>(valore(LEGGICAMPO(P001, 0, employee).substr(0, 3)));
    const auto company_length = static_cast<std::size_t>(installation.record_length(kCompanies));
    OpenedEmployee opened = open_year_of(
        employee,
        installation.read(kCompanies, company).value_or(empty_record(Area::DITX, company_length)),
        installation.read(kFixedData, 1).value_or(""), year);
    opened.record = record;
    return opened;
}

void write_year_opening(Installation& installation, const YearOpening& opening) {
    for (const int record : opening.to_open) {
        const OpenedEmployee opened = work_out_opening(installation, record, opening.year);
        installation.write(kEmployees, record, opened.bytes);
    }
}

}  // namespace nzutil
