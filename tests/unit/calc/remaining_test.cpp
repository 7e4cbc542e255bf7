// Employer percentages, relief on the severance pay, and the whole lists of fields that a month
// starts without. Amounts in euro.

#include "calc/remaining.h"

#include <vector>

#include "records/numbers.h"
#include "tests/unit/calc/slip_test_base.h"

namespace ModSWCALM {
namespace {

using namespace MXREPOSITORY;

// ---- Lists ----

class Lists : public SlipTest {
  protected:
    static void fill(const std::vector<Descriptor>& fields) {
        for (const Descriptor& field : fields) {
            scrivi(field, std::string(static_cast<std::size_t>(field.length), '1'));
        }
    }
};

TEST_F(Lists, TheFirstTakesEachOfItsFieldsAndNoNeighbour) {
    std::vector<Descriptor> cleared{Q519, Q191, Q579, P496, P519, P557, P556};
    for (const auto& [first, last] : std::vector<std::pair<Descriptor, Descriptor>>{
             {Q510, Q513}, {Q616, Q633}, {Q559, Q565}, {P514, P517}}) {
        for (const Descriptor& field : serie(first, last)) {
            cleared.push_back(field);
        }
    }
    const std::vector<Descriptor> kept{Q509, Q514, Q518, Q558, Q566, Q578, Q580,
                                       Q634, P497, P513, P518, P558, P579};
    fill(kept);
    fill(cleared);
    std::vector<std::string> before;
    for (const Descriptor& field : kept) {
        before.push_back(testo(field));
    }
    first_blanking_list();
    for (const Descriptor& field : cleared) {
        EXPECT_EQ(valore(testo(field)), 0) << field.name();
    }
    for (std::size_t i = 0; i < kept.size(); ++i) {
        EXPECT_EQ(testo(kept[i]), before[i]) << kept[i].name();
    }
}

TEST_F(Lists, TheSecondBlanksTextsAndSetsDatesToZeros) {
    const std::vector<Descriptor> texts{PA66, PA67, PA70, PA73, PA76, PA79};
    const std::vector<Descriptor> dates{PA68, PA69, PA71, PA72, PA74, PA75, PA77, PA78};
    fill(texts);
    fill(dates);
    fill({PA96, PA65, PA80});
    second_blanking_list();
    for (const Descriptor& field : texts) {
        EXPECT_EQ(rifilato(field), field.type == 'A' ? "" : rifilato(field)) << field.name();
        EXPECT_EQ(valore(testo(field)), 0) << field.name();
    }
    for (const Descriptor& field : dates) {
        EXPECT_EQ(testo(field), "00000000") << field.name();
    }
    EXPECT_EQ(num(PA96), 0);
    EXPECT_NE(valore(testo(PA65)), 0);
    EXPECT_NE(valore(testo(PA80)), 0);
}

// ---- Employer percentage ----

class EmployerPercentage : public SlipTest {
  protected:
    EmployerPercentage() {
        scrivi(S043, 38.17);
        scrivi(S003, 9.19);
        scrivi(S304, 1);
        scrivi(S340, 0.50);
        double rate = 20;
        for (const Descriptor& field :
             {S268, S269, S270, S333, S334, S335, S024, S027, S013, S016, S035}) {
            scrivi(field, rate++);
        }
    }
    static double percentage() {
        employer_percentage();
        return employer_percentages.PCTDATORE;
    }
};

TEST_F(EmployerPercentage, IsTheTotalWithoutTheEmployeesShare) {
    EXPECT_EQ(percentage(), 28.98);
    scrivi(S007, 5.84);
    EXPECT_EQ(percentage(), 32.33);
    scrivi(P187, 1);
    EXPECT_EQ(percentage(), 38.17);
}

TEST_F(EmployerPercentage, OfOtherInsurancesIsThatOfGroupAndClass) {
    struct Case {
        const char* group;
        int employee_class;
        double percentage;
    };
    for (const int insurance : {1, 3}) {
        scrivi(P040, insurance);
        for (const Case& of :
             {Case{"37", 2, 21.50}, Case{"37", 3, 22.50}, Case{"37", 4, 23.50},
              Case{"38", 2, 24.50}, Case{"38", 3, 25.50}, Case{"38", 4, 26.50}, Case{"37", 1, 0},
              Case{"37", 5, 0}, Case{"36", 2, 0}, Case{"", 2, 0}}) {
            scrivi(P594, of.group);
            scrivi(P593, of.employee_class);
            EXPECT_EQ(percentage(), of.percentage) << of.group << of.employee_class;
        }
    }
}

TEST_F(EmployerPercentage, WithP410FiveComesBeforeTheGroups) {
    struct Case {
        int insurance, second;
        double percentage;
    };
    scrivi(P410, "5");
    scrivi(P594, "37");
    scrivi(P593, 2);
    // 26, 27, 28, 29 less 9.19; the groups do not count
    for (const Case& of : {Case{1, 0, 16.81}, Case{1, 1, 17.81}, Case{3, 0, 18.81},
                           Case{3, 1, 19.81}, Case{1, 2, 16.81}, Case{2, 0, 20.81}}) {
        scrivi(P040, of.insurance);
        scrivi(P316, of.second);
        EXPECT_EQ(percentage(), of.percentage) << of.insurance << of.second;
    }
}

TEST_F(EmployerPercentage, IsNoneWhereNoneIsListedOrItWouldBeNegative) {
    scrivi(P040, 4);
    EXPECT_EQ(percentage(), 0);
    scrivi(P040, 2);
    scrivi(S035, 9);
    EXPECT_EQ(percentage(), 0);
    scrivi(P040, 0);
    scrivi(S043, 9.18);
    EXPECT_EQ(percentage(), 0);
}

TEST_F(EmployerPercentage, TheSecondFormIsHalvedForTwoCodes) {
    percentage();
    for (const auto& [code, second] : std::vector<std::pair<const char*, double>>{
             {"55", 14.49}, {"82", 14.49}, {"54", 28.98}, {"", 28.98}}) {
        scrivi(P537, code);
        second_employer_percentage();
        EXPECT_EQ(employer_percentages.PCTDATORE2, second) << code;
        EXPECT_EQ(employer_percentages.PCTDATORE, 28.98) << code;
    }
}

// ---- Severance relief ----

/// 2700 of severance wage: 200 a month; contribution 2110 x 0.50 % = 10.55.
class SeveranceRelief : public SlipTest {
  protected:
    SeveranceRelief() {
        slip.severance_divisor = 13.5;
        scrivi(P260, 2700);
        scrivi(P240, 2110);
        scrivi(P620, 0.50);
    }
    static double severance() {
        severance_fund_relief();
        return num(P604);
    }
};

TEST_F(SeveranceRelief, IsOnWhatStaysInTheCompany) {
    scrivi(Q201, 50);
    severance_fund_relief();
    EXPECT_EQ(num(P604), 139.45);  // 200 - 10.55 - 50
    EXPECT_EQ(num(P605), 3.11);    // 2110 x 0.73608 (139.45 / 189.45) x 0.20 % = 3.1063
    EXPECT_EQ(num(P749), 4.35);    // x 0.28 % = 4.3488
    EXPECT_EQ(num(P606), 2700);
    EXPECT_EQ(num(P748), 0);
    EXPECT_EQ(num(Q687), 139.45);
    EXPECT_EQ(num(Q690), 3.11);
    EXPECT_EQ(num(Q744), 4.35);
}

TEST_F(SeveranceRelief, TheRatioHasFiveDecimals) {
    scrivi(P240, 999999);
    scrivi(P620, 0);
    scrivi(P260, 2699);  // 199.925926 a month
    scrivi(Q201, 50);    // 149.925926 / 199.925926 = 0.749907: 0.74991
    severance_fund_relief();
    EXPECT_EQ(num(P749), 2099.75);  // 999999 x 0.74991 x 0.28 % = 2099.7459; unrounded 2099.7385
}

TEST_F(SeveranceRelief, NeverFallsBelowZero) {
    scrivi(Q201, 300);
    severance_fund_relief();
    EXPECT_EQ(num(P604), 0);
    EXPECT_EQ(num(P605), 0);
    EXPECT_EQ(num(P749), 0);
    scrivi(P260, 0);  // -10.55 - 300
    severance_fund_relief();
    EXPECT_EQ(num(P604), 0);
    EXPECT_EQ(num(P749), 0);
}

TEST_F(SeveranceRelief, FollowsTheYear) {
    struct Case {
        int year;
        double relief;
    };
    // 2110 x 0.19, 0.21, 0.23, 0.25, 0.26, 0.27, 0.28 %
    for (const Case& of : {Case{2006, 0}, Case{2007, 0}, Case{2008, 4.01}, Case{2009, 4.43},
                           Case{2010, 4.85}, Case{2011, 5.28}, Case{2012, 5.49}, Case{2013, 5.70},
                           Case{2014, 5.91}, Case{2024, 5.91}, Case{2030, 5.91}}) {
        at("3105" + std::to_string(of.year) + "4");
        severance_fund_relief();
        EXPECT_EQ(num(P749), of.relief) << of.year;
        EXPECT_EQ(num(P605), 4.22) << of.year;
    }
}

TEST_F(SeveranceRelief, TheContributionGoesWithP083UnlessAnExemptionIsOver) {
    EXPECT_EQ(severance(), 189.45);
    scrivi(P083, 1);
    EXPECT_EQ(severance(), 200);
    slip.exemption_over = true;
    scrivi(P916, "4");
    EXPECT_EQ(severance(), 194.73);  // half of 10.55: 5.275; 194.725
}

TEST_F(SeveranceRelief, AfterAnExemptionFollowsCodeAndRegion) {
    struct Case {
        const char* code;
        int region;
        double kept;
    };
    scrivi(P240, 2109);  // 10.545, in cents 10.55
    const auto kept = [](const Case& of) {
        scrivi(P916, of.code);
        scrivi(P120, of.region);
        return severance();
    };
    slip.exemption_over = true;
    for (const Case& of : {Case{"4", 12, 194.73}, Case{"5", 12, 194.73}, Case{"4", 6, 194.73},
                           Case{"6", 12, 189.45}, Case{"7", 12, 189.45}, Case{"8", 12, 189.45},
                           Case{"9", 12, 189.45}, Case{"A", 12, 189.45}, Case{"B", 12, 189.45},
                           Case{"B", 6, 189.45},  Case{"A", 6, 200},     Case{"6", 3, 200},
                           Case{"6", 2, 189.45},  Case{"6", 4, 189.45},  Case{"6", 5, 189.45},
                           Case{"6", 11, 200},    Case{"6", 16, 189.45}, Case{"6", 17, 200},
                           Case{"6", 21, 200},    Case{"6", 22, 189.45}, Case{"1", 6, 193.67},
                           Case{"3", 6, 193.67},  Case{"C", 6, 193.67},  Case{"U", 6, 193.67}}) {
        EXPECT_EQ(kept(of), of.kept) << of.code << " " << of.region;
    }
    // Not over: the contribution whole, in fractions of a cent: 200 - 10.545 = 189.455
    slip.exemption_over = false;
    EXPECT_EQ(kept({"4", 6, 0}), 189.46);
}

TEST_F(SeveranceRelief, ALeaverOfTheMonthWithoutSeverancePayHasNoContribution) {
    slip.exemption_over = true;
    scrivi(P916, "4");
    scrivi(P017, "20052024");
    scrivi(P260, 0);
    scrivi(Q201, -30);  // 30 come back from the fund
    EXPECT_EQ(severance(), 30);
    scrivi(P017, "20042024");  // left before: 30 - 5.275
    EXPECT_EQ(severance(), 24.73);
}

TEST_F(SeveranceRelief, OfAnApprenticeInASmallCompanyIsOneAmount) {
    scrivi(T404, 1);
    scrivi(P188, 1);
    scrivi(Q201, 50);
    scrivi(Q744, 10);
    severance_fund_relief();
    EXPECT_EQ(num(P748), 4.35);
    EXPECT_EQ(num(Q744), 14.35);
    EXPECT_EQ(num(P604), 0);
    EXPECT_EQ(num(P606), 0);
    EXPECT_EQ(num(Q687), 0);
    // One of the two marks alone is the general way.
    for (const auto& [mark, other] : {std::pair{T404, P188}, std::pair{P188, T404}}) {
        scrivi(mark, 0);
        scrivi(other, 1);
        severance_fund_relief();
        EXPECT_EQ(num(P748), 0);
        EXPECT_EQ(num(P749), 4.35);
    }
}

TEST_F(SeveranceRelief, AnAdditionalSlipJoinsTheYearOnlyInTheMonthOfP599) {
    at("310520240");
    scrivi(Q179, "31052024");
    for (const char* month : {"052023", "042024", ""}) {
        scrivi(P599, month);
        EXPECT_EQ(severance(), 189.45) << month;
        EXPECT_EQ(num(P605), 4.22) << month;
        EXPECT_EQ(num(P749), 5.91) << month;
        EXPECT_EQ(num(Q687), 0) << month;
        EXPECT_EQ(num(Q690), 0) << month;
        EXPECT_EQ(num(Q744), 0) << month;
    }
    scrivi(P599, "052024");
    severance_fund_relief();
    EXPECT_EQ(num(Q687), 189.45);
    EXPECT_EQ(num(Q690), 4.22);
    EXPECT_EQ(num(Q744), 5.91);
}

TEST_F(SeveranceRelief, WithDataInTheDeclarationOnlyTheWageIsKept) {
    scrivi(P598, 1);
    severance_fund_relief();
    EXPECT_EQ(num(P606), 2700);
    EXPECT_EQ(num(P604), 0);
    EXPECT_EQ(num(P749), 0);
    EXPECT_EQ(num(Q687), 0);
    scrivi(P606, 0);
    at("310520240");
    severance_fund_relief();
    EXPECT_EQ(num(P606), 0);
}

TEST_F(SeveranceRelief, EmptiesItsOtherFields) {
    for (const Descriptor& field : {P600, P601, P602, P603, P748}) {
        scrivi(field, 5);
    }
    severance_fund_relief();
    for (const Descriptor& field : {P600, P601, P602, P603, P748}) {
        EXPECT_EQ(num(field), 0) << field.name();
    }
}

}  // namespace
}  // namespace ModSWCALM
