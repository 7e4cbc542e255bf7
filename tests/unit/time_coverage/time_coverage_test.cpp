// Every rule that depends on the date is walked through every month from January 2004 to December
// 2030: exactly one branch takes the month, and nothing fails. No figures are asserted here.
//
// A new rule of that kind joins as a row of kRules: its name, and a function that puts the question
// for the month of `period` (its areas are empty records) and returns how many branches took it, or
// calls the rule and returns 1 where one can only see that nothing fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "calc/dated_defaults.h"
#include "calc/exemption_terms.h"
#include "calc/extra_payments.h"
#include "calc/phases.h"
#include "calc/remaining.h"
#include "context/period.h"
#include "context/utilities.h"
#include "contributions/contribution_cuts.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"
#include "run/main_run.h"
#include "severance/revaluation.h"
#include "severance/tfr.h"
#include "slip/seniority.h"
#include "slip/slip.h"
#include "tax/bonus_law.h"
#include "tax/deductions.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"

namespace {

using namespace MXREPOSITORY;
using namespace ModSWCALM;
using MXLIBRERIA::period;

constexpr int kFirstYear = 2004;
constexpr int kLastYear = 2030;

int yyyymm() {
    return static_cast<int>(period.yyyymm());
}

/// Rules of a field that cover the month; a month without one counts as the branch "no change".
int most_defaults_of_a_field() {
    int most = 1;
    for (const DatedDefault& rule : dated_defaults()) {
        const auto same_field_covers = [&](const DatedDefault& other) {
            return other.field == rule.field && other.covers(yyyymm());
        };
        const auto covering =
            std::count_if(dated_defaults().begin(), dated_defaults().end(), same_field_covers);
        most = std::max(most, static_cast<int>(covering));
    }
    return most;
}

/// After its change no rule wants another one: the record is not rewritten again and again.
int defaults_come_to_rest() {
    for (const DatedDefault& rule : dated_defaults()) {
        for (const double start : {0., 99.9, 600., 640., 960., 1200.}) {
            const double once = rule.applies(yyyymm(), start) ? rule.value : start;
            if (rule.applies(yyyymm(), once)) {
                return 0;
            }
        }
    }
    return 1;
}

int month_has_one_length() {
    const Slip saved = slip;
    slip = Slip{};
    if (MXLIBRERIA::BISESTILE(period.year()) == MXLIBRERIA::kTrue) {
        slip.GIORNIMESE = "31312931303130313130313031";
    }
    const bool same =
        month_length(period.month()) == MXLIBRERIA::days_of_month(period.month(), period.year());
    slip = saved;
    return same ? 1 : 0;
}

/// Exactly one of the two sets of deductions for children stands in the table.
int children_deductions_of_one_law() {
    correct_dated_parameters();
    const auto stands = [](double F403_of_law, double F404_of_law, double F405_of_law) {
        return num(F403) == F403_of_law && num(F404) == F404_of_law && num(F405) == F405_of_law;
    };
    return (stands(950, 270, 400) ? 1 : 0) + (stands(800, 100, 220) ? 1 : 0);
}

int revaluation_is_a_number() {
    for (const double index : {0., 99.9, 107.0}) {
        const double percentage = revaluation_of_period(index);
        // The corrections are below a hundredth of a point.
        if (!std::isfinite(percentage) || std::abs(percentage - index) >= 0.01) {
            return 0;
        }
    }
    return 1;
}

/// Each exemption code gives a hiring of the month an expiry after it, or none at all.
int exemption_expires_once() {
    const std::string month = std::to_string(yyyymm());
    for (const char code : std::string("123456789ABCDEFGHIJLMNOPQRSTU")) {
        const std::string expiry = exemption_expiry(code, Date::of(period.date()));
        if (expiry.size() != 6 || (expiry != "000000" && expiry <= month)) {
            return 0;
        }
    }
    return 1;
}

int exemption_months_stay_in_bounds() {
    scrivi(P013, "01012004");
    const int months = months_of_exemption();
    return months >= 1 && months <= 36 ? 1 : 0;
}

int whole_month_is_in_service() {
    const int length = MXLIBRERIA::days_of_month(period.month(), period.year());
    return days_in_service(length, yyyymm(), Date{}, Date{}) == length ? 1 : 0;
}

int extra_month_counts_whole() {
    const Date first{1, 1, period.year()};
    return extra_month_counts(first, Date{}, Date::of(period.date()), 15) ? 1 : 0;
}

int seniority_step_falls_due() {
    scrivi(P027, period.month_year());
    scrivi(P028, 24);
    scrivi(P030, 5);
    SCATTI(period.date(), "026");
    return num(P029) == 1 ? 1 : 0;
}

int one_contribution_cut() {
    return ModSwCalm2::cut_periods_of(period.yyyymm());
}

int employment_deduction_runs() {
    scrivi(F169, 1);
    scrivi(P215, 30);
    scrivi(P256, 1700);
    ModSWCALB::CALCOLADETRAZIONIREDDITO_2022();
    return 1;
}

int dependants_deduction_runs() {
    scrivi(F169, 1);
    scrivi(P215, 30);
    scrivi(P256, 1700);
    ModSWCALB::DetrFamiliari();
    return 1;
}

/// The employer's relief on severance pay starts in 2008 and has one percentage a year.
int severance_relief_has_its_percentage() {
    slip = Slip{};
    scrivi(P260, 2700);
    scrivi(P240, 2000);
    severance_fund_relief();
    return (num(P749) > 0) == (period.year() >= 2008) ? 1 : 0;
}

// ---- Severance ----

/// An employer under half a relief takes half of the contribution off the accrual, from 2015 on.
int severance_contribution_by_date() {
    scrivi(P240, 1000);
    scrivi(P620, 0.5);
    scrivi(P101, 2);
    const double taken = ModSwCalm2::contribution_of_slip();
    return taken == (yyyymm() < 201501 ? 5 : 2.5) ? 1 : 0;
}

/// The index of the year end stands as published, or takes one of the two corrections.
int year_end_index_is_mended_once() {
    constexpr double kPublished = 99.9;
    const double mended = ModSwCalm2::mended_base_index(yyyymm(), kPublished);
    const bool change_of_base_2010 = period.year() == 2011;
    const bool change_of_base_2015 = yyyymm() >= 201607 && yyyymm() <= 201612;
    const double expected = kPublished + (change_of_base_2010   ? 0.001165331
                                          : change_of_base_2015 ? 0.006629
                                                                : 0);
    return std::abs(mended - expected) < 1e-9 ? 1 : 0;
}

/// After a change of base the year end stands in the other series.
int year_end_stands_in_one_series() {
    scrivi(F021, 101);
    scrivi(F294, 102);
    const bool other = yyyymm() == 201201 || period.year() == 2017;
    return ModSwCalm2::INDICEISTAT(ModSwCalm2::kYearEndIndex, true) == (other ? 102 : 101) ? 1 : 0;
}

/// The deduction on the payment is for terminations from 31 March 2008.
int deduction_on_severance_by_leaving() {
    slip.TABIRPAC.set(1, 999999.99);
    slip.TABIRPAC.set(2, 23);
    slip.TABIRP = slip.TABIRPAC;
    scrivi(P031, 1);
    scrivi(P754, 1);
    scrivi(P017, period.date());
    scrivi(F411, 70);
    ModSwCalm2::ElaboraTFR();
    return num(Q774) == (yyyymm() < 200803 ? 0 : 70) ? 1 : 0;
}

struct DatedRule {
    const char* name;
    std::function<int()> branches_taken;
};

int one_law_of_the_bonus() {
    return ModSWCALB::bonus_laws_of(yyyymm());
}

/// A month without one counts as the branch "none".
int one_further_deduction_at_most() {
    return std::max(1, ModSWCALB::further_deduction_laws_of(yyyymm()));
}

const std::vector<DatedRule> kRules{
    {"dated defaults of the fixed data", most_defaults_of_a_field},
    {"dated defaults come to rest", defaults_come_to_rest},
    {"length of the month", month_has_one_length},
    {"deductions for children in the yearly table", children_deductions_of_one_law},
    {"revaluation percentage", revaluation_is_a_number},
    {"expiry of the exemptions", exemption_expires_once},
    {"months of exemption", exemption_months_stay_in_bounds},
    {"days in service", whole_month_is_in_service},
    {"month of the extra payments", extra_month_counts_whole},
    {"seniority step", seniority_step_falls_due},
    {"cut of the employee's contributions", one_contribution_cut},
    {"employment deduction", employment_deduction_runs},
    {"deductions for dependants", dependants_deduction_runs},
    {"relief on severance pay", severance_relief_has_its_percentage},
    {"contribution of the severance accrual", severance_contribution_by_date},
    {"correction of the year-end index", year_end_index_is_mended_once},
    {"series of the year-end index", year_end_stands_in_one_series},
    {"deduction on severance pay", deduction_on_severance_by_leaving},
    {"bonus", one_law_of_the_bonus},
    {"further deduction", one_further_deduction_at_most},
};

void set_period(int year, int month) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%02d%02d%04d4", MXLIBRERIA::days_of_month(month, year),
                  month, year);
    period.set(text.data());
}

TEST(TimeCoverage, EveryMonthIsTakenByOneBranchOfEveryRule) {
    test_support::ScriptedWindow::install();
    for (const DatedRule& rule : kRules) {
        for (int year = kFirstYear; year <= kLastYear; ++year) {
            for (int month = 1; month <= 12; ++month) {
                SCOPED_TRACE(std::string(rule.name) + ", " + std::to_string(month) + "/" +
                             std::to_string(year));
                test_support::fill_areas();
                slip = Slip{};
                set_period(year, month);
                int taken = 0;
                EXPECT_NO_THROW(taken = rule.branches_taken());
                EXPECT_EQ(taken, 1);
            }
        }
    }
}

}  // namespace
