#include "calc/exemption_codes.h"

#include <algorithm>

#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;

namespace {

constexpr std::string_view kAllClasses;
constexpr std::string_view kOpenEnded = "I";
constexpr std::string_view kEmployees = "IDSTG";
constexpr std::string_view kFixedTerm = "D";

constexpr int kAlways = 99999999;
constexpr int kNoLastPeriod = 0;
constexpr int kMonthsInYear = 12;

constexpr ExemptionMonths for_all(int months) {
    return {months, months};
}
constexpr ExemptionCap of_year(const Descriptor& field) {
    return {.field = field};
}
constexpr ExemptionCap of_month(const Descriptor& field) {
    return {.field = field, .monthly = true};
}
constexpr ExemptionCap of_year_or_own(const Descriptor& field) {
    return {.field = field, .else_own = true};
}

// Code, classes, hirings from and to, months (open-ended, others), last period, percent, cap. A "?"
// stands where the law has been inferred from the year, the cap and the classes of the code.
constexpr std::array kCodes{
    // South, decree of the Ministry of Labour 367/2016; until February 2019 ?
    ExemptionCode{'1', kAllClasses, 20170101, 20171231, for_all(12), 201902, 100, of_year(F437)},
    // Young people, decree 394/2016: half for fixed terms ?
    ExemptionCode{'2', kFixedTerm, 20170101, 20171231, for_all(12), 201902, 50, of_year(F439)},
    ExemptionCode{'2', kAllClasses, 20170101, 20171231, for_all(12), 201902, 100, of_year(F440)},
    // School and work, L. 232/2016, art. 1, c. 308 ?
    ExemptionCode{'3', kAllClasses, 20170101, 20171231, for_all(36), kNoLastPeriod, 100,
                  of_year(F438)},
    // L. 205/2017, art. 1, c. 100
    ExemptionCode{'4', kAllClasses, 20180101, kAlways, for_all(36), kNoLastPeriod, 50,
                  of_year(F441)},
    // The same, c. 106: apprentices kept in service, from the date in P939
    ExemptionCode{'5', kAllClasses, 0, kAlways, for_all(12), kNoLastPeriod, 50, of_year(F441)},
    // The same, c. 108: school and work
    ExemptionCode{'6', kAllClasses, 20180101, kAlways, for_all(36), kNoLastPeriod, 100,
                  of_year(F441)},
    // NEET, decree of ANPAL 3/2018 ?
    ExemptionCode{'7', kAllClasses, 20180101, 20181231, for_all(12), 202001, 100, of_year(F437)},
    // South, decree of ANPAL 2/2018 ?
    ExemptionCode{'8', kAllClasses, 20180101, 20181231, for_all(12), kNoLastPeriod, 100,
                  of_year(F437)},
    // Codes 7 and 8 together with L. 205/2017, art. 1, c. 100 ?
    ExemptionCode{'9', kAllClasses, 20180101, 20181231, for_all(12), kNoLastPeriod, 100,
                  of_year(F437), of_year(F441)},
    ExemptionCode{'A', kAllClasses, 20180101, 20181231, for_all(12), kNoLastPeriod, 100,
                  of_year(F437), of_year(F441)},
    // South, decree of ANPAL 178/2019
    ExemptionCode{'B', kAllClasses, 20190501, 20191231, for_all(12), 202102, 100, of_year(F437),
                  std::nullopt, Particular::not_in_the_north},
    // L. 205/2017, art. 1, c. 100, for 2020 by L. 160/2019, art. 1, c. 10 ?
    ExemptionCode{'C', kAllClasses, 20200101, 20201231, for_all(36), kNoLastPeriod, 50,
                  of_year(F441)},
    // South and others, decree of ANPAL 52/2020 ?
    ExemptionCode{'D', kAllClasses, 20200101, 20201231, for_all(12), 202202, 100,
                  of_year_or_own(F437)},
    // D.L. 104/2020, art. 6: six months, open-ended; art. 7: three, tourism and spas; the split ?
    ExemptionCode{'E', kEmployees, 20200815, 20201231, {6, 3}, kNoLastPeriod, 100, of_year(F437)},
    ExemptionCode{
        'F', kEmployees, 20200815, 20201231, {6, 3}, kNoLastPeriod, 100, of_year_or_own(F437)},
    ExemptionCode{
        'G', kEmployees, 20200815, 20201231, {6, 3}, kNoLastPeriod, 100, of_year_or_own(F437)},
    // L. 178/2020, art. 1, c. 10 ?
    ExemptionCode{'H', kAllClasses, 20210101, 20221231, for_all(36), kNoLastPeriod, 100,
                  of_year(F450)},
    // The same, c. 11, South ?
    ExemptionCode{'I', kAllClasses, 20210101, 20221231, for_all(48), kNoLastPeriod, 100,
                  of_year(F450)},
    // The same, c. 16, women: L. 92/2012, art. 4, cc. 9-11 ?
    ExemptionCode{
        'J', kAllClasses, 20210101, 20221231, {18, 12}, kNoLastPeriod, 100, of_year(F450)},
    // L. 197/2022, art. 1, c. 297 ?
    ExemptionCode{'L', kEmployees, 20230101, 20231231, for_all(36), kNoLastPeriod, 100,
                  of_year(F452)},
    // The same, South ?
    ExemptionCode{'M', kEmployees, 20230101, 20231231, for_all(48), kNoLastPeriod, 100,
                  of_year(F452)},
    // The same, c. 298, women ?
    ExemptionCode{
        'N', kAllClasses, 20230101, 20231231, {18, 12}, kNoLastPeriod, 100, of_year(F452)},
    // The same, c. 297, together with D.L. 48/2023, art. 27, c. 2
    ExemptionCode{'P', kOpenEnded, 20230601, 20231231, for_all(36), kNoLastPeriod, 100,
                  of_year(F452)},
    // The same, c. 294 ?
    ExemptionCode{'Q', kEmployees, 20230101, 20231231, for_all(12), kNoLastPeriod, 100,
                  of_year(F452)},
    // D.L. 60/2024, art. 22: young people; in the special economic zone from the authorisation
    ExemptionCode{'R', kOpenEnded, 20240901, 20251231, for_all(24), kNoLastPeriod, 100,
                  of_month(F454), std::nullopt, Particular::limit_in_PC36},
    ExemptionCode{'S', kOpenEnded, 20250131, 20251231, for_all(24), kNoLastPeriod, 100,
                  of_month(F456), std::nullopt, Particular::limit_in_PC36},
    // The same, art. 23: women; art. 24: special economic zone
    ExemptionCode{'T', kAllClasses, 20240901, 20251231, for_all(24), kNoLastPeriod, 100,
                  of_month(F455)},
    ExemptionCode{'U', kAllClasses, 20240901, 20251231, for_all(24), kNoLastPeriod, 100,
                  of_month(F455)},
};

constexpr std::array kWageIncentives{
    // D.L. 48/2023, art. 27, c. 1: young people out of work and training
    WageIncentive{'O', 20230601, 20231231, 12, 60, P917},
    // The same, c. 2: together with another exemption
    WageIncentive{'P', 20230601, 20231231, 12, 20, PB51},
};

/// Regions of P120, from the first to the last.
struct Regions {
    int first;
    int last;
};
constexpr std::array kNorthernRegions{Regions{3, 3}, Regions{6, 11}, Regions{17, 21}};

/// Starts before 2015 count from there.
constexpr Date kFirstStart{1, 1, 2015};

}  // namespace

bool ExemptionCode::admits(std::string_view contract_class) const {
    return classes.empty() ||
           (contract_class.size() == 1 && classes.find(contract_class) != std::string_view::npos);
}

bool ExemptionCode::covers(const Date& start) const {
    return start.exists() && start.yyyymmdd() >= first_hire && start.yyyymmdd() <= last_hire;
}

Date ExemptionCode::end(const Date& start, std::string_view contract_class) const {
    const Date counted = start.yyyymmdd() < kFirstStart.yyyymmdd() ? kFirstStart : start;
    return months_after(counted, contract_class == kOpenEnded ? months.open_ended : months.others);
}

std::span<const ExemptionCode> exemption_codes() {
    return kCodes;
}

const ExemptionCode* exemption_code(std::string_view code, std::string_view contract_class) {
    const auto row = std::ranges::find_if(kCodes, [&](const ExemptionCode& candidate) {
        return code == std::string_view(&candidate.code, 1) && candidate.admits(contract_class);
    });
    return row == kCodes.end() ? nullptr : &*row;
}

bool northern_region(int region) {
    return std::ranges::any_of(kNorthernRegions, [region](const Regions& closed) {
        return region >= closed.first && region <= closed.last;
    });
}

const WageIncentive* wage_incentive(std::string_view code) {
    const auto row = std::ranges::find_if(kWageIncentives, [code](const WageIncentive& candidate) {
        return code == std::string_view(&candidate.code, 1);
    });
    return row == kWageIncentives.end() ? nullptr : &*row;
}

Date months_after(const Date& start, int months) {
    const int month = start.month - 1 + months;
    return {start.day, month % kMonthsInYear + 1, start.year + month / kMonthsInYear};
}

}  // namespace ModSWCALM
