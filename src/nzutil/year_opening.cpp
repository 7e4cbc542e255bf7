#include "nzutil/year_opening.h"

#include <algorithm>

#include "installation/tool_error.h"
#include "nzutil/year_carry.h"
#include "nzutil/year_standing.h"
#include "nzutil/year_sums.h"
#include "platform/code_page.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace nzutil {

using namespace MXREPOSITORY;

namespace {

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
    set_period_to_december(year - 1);
    const double december = ModSwCalm2::INDICEISTAT(12, true);
    const double base = ModSwCalm2::base_index_of(end_of_year(year - 1));
    area(Area::FISX).clear();
    if (december == 0) {
        throw ToolError(texts::kToolNoDecemberIndex, {std::to_string(year - 1)});
    }
    if (base == 0) {
        throw ToolError(texts::kToolNoBaseIndex, {std::to_string(year - 2)});
    }
}

}  // namespace

OpenedEmployee open_year_of(const std::string& employee, const std::string& company,
                            const std::string& fixed, int year) {
    area(Area::DIPX) = employee;
    area(Area::DITX) = company;
    area(Area::FISX) = fixed;
    set_period_to_december(year - 1);
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
    restart_sums();
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
