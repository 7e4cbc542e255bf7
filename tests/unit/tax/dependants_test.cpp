#include <set>

#include "tests/unit/tax/tax_test.h"

namespace {

using namespace tax_test;

class Dependants : public TaxTest {};

// ---- The places ----

TEST_F(Dependants, EachPlaceIsFourFieldsInARow) {
    std::set<int> offsets;
    for (const DependantSlot& slot : kDependantSlots) {
        const auto name = slot.tax_code.name();
        EXPECT_EQ(slot.tax_code.length, 16) << name;
        EXPECT_EQ(slot.birth_date.offset, slot.tax_code.offset + 16) << name;
        EXPECT_EQ(slot.share.offset, slot.tax_code.offset + 24) << name;
        EXPECT_EQ(slot.share.decimals(), 2) << name;
        EXPECT_EQ(slot.kind.offset, slot.tax_code.offset + 29) << name;
        EXPECT_EQ(slot.kind.length, 1) << name;
        EXPECT_EQ(slot.months.length, 2) << name;
        EXPECT_EQ(slot.last_used.length, 1) << name;
        offsets.insert({slot.tax_code.offset, slot.months.offset, slot.last_used.offset});
    }
    EXPECT_EQ(offsets.size(), 3 * kSlotCount);  // no field serves twice
}

TEST_F(Dependants, ThePlacesStandInTheirOrder) {
    const char* const codes[] = {"P634", "P638", "P642", "P646", "P650", "P654", "P658", "PA55",
                                 "P662", "P666", "P670", "P674", "P678", "P682", "P686", "P690",
                                 "P694", "P698", "P702", "P706", "P710", "P714", "P718", "PA60"};
    for (std::size_t i = 0; i < kSlotCount; ++i) {
        EXPECT_EQ(kDependantSlots[i].tax_code.name(), codes[i]);
    }
}

TEST_F(Dependants, EachOfThe24PlacesIsRead) {
    scrivi(P256, 2500);
    for (std::size_t place = 0; place < kSlotCount; ++place) {
        test_support::fill_areas();
        scrivi(P035, static_cast<double>(place + 1));
        scrivi(P256, 2500);
        dependant(place, "A", "01011950");
        DetrFamiliari();
        EXPECT_EQ(num(Q646), 62.50) << place;  // 750 / 12
        EXPECT_EQ(num(kDependantSlots[place].last_used), 1);
        scrivi(P035, static_cast<double>(place));  // one fewer: the place is past the count
        azzera({Q646});
        DetrFamiliari();
        EXPECT_EQ(num(Q646), 0) << place;
    }
}

// ---- A month's slip; P256 2500 makes R 30000 ----

TEST_F(Dependants, ASpouseIsTakenWithTheQuotientInTheAmount) {
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    DetrFamiliari();
    // (690 + 20) / 12 = 59.1667
    EXPECT_EQ(num(Q642), 59.17);
    EXPECT_EQ(num(Q649), 59.17);
    EXPECT_EQ(num(Q647), 59.17);
    EXPECT_EQ(num(Q654), 59.17);
    EXPECT_EQ(num(P597), 0);
}

TEST_F(Dependants, ASpouseBesideChildrenIsNotLoweredByTheirQuotient) {
    scrivi(P256, 2500);
    scrivi(P035, 3);
    dependant(0, "C", "01011980");
    dependant(1, "F", "15062000", 50);
    dependant(2, "F", "15062002", 50);
    DetrFamiliari();
    EXPECT_EQ(num(Q649), 59.17);
    // Limit 95000 + 15000 for the second child; 80000 / 110000 = .72727...
    EXPECT_EQ(num(P597), 1);
    EXPECT_EQ(num(Q661), 110000);
    EXPECT_EQ(num(Q662), 0.7272);
    // 950 / 12 x 50 % = 39.5833, twice 39.58; 79.16 x .7272 = 57.5652
    EXPECT_EQ(num(Q643), 79.16);
    EXPECT_EQ(num(Q650), 57.57);
    EXPECT_EQ(num(Q647), 138.33);  // 59.17 + 79.16
    EXPECT_EQ(num(Q654), 116.74);  // 59.17 + 57.57
}

TEST_F(Dependants, OtherDependantsHaveTheirOwnQuotient) {
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, "A", "01011950", 50);
    DetrFamiliari();
    EXPECT_EQ(num(Q663), 0.625);  // (80000 - 30000) / 80000
    EXPECT_EQ(num(Q646), 31.25);  // 750 / 12 x 50 %
    EXPECT_EQ(num(Q653), 19.53);  // 31.25 x .625 = 19.53125
    EXPECT_EQ(num(Q647), 0);      // not a part of the total for spouse and children
}

TEST_F(Dependants, ChildrenGoToTheirClasses) {
    set_period("31052015");
    scrivi(P256, 2500);
    scrivi(P035, 3);
    dependant(0, "F", "01012005");
    dependant(1, "F", "01012014");
    dependant(2, "D", "01012004");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 79.17);   // 950 / 12
    EXPECT_EQ(num(Q645), 101.67);  // 1220 / 12
    EXPECT_EQ(num(Q667), 112.50);  // 1350 / 12
    EXPECT_EQ(num(Q661), 125000);
    EXPECT_EQ(num(Q662), 0.76);   // 95000 / 125000
    EXPECT_EQ(num(Q650), 60.17);  // 79.17 x .76 = 60.1692
    EXPECT_EQ(num(Q652), 77.27);  // 101.67 x .76 = 77.2692
    EXPECT_EQ(num(Q668), 85.50);  // 112.50 x .76
    EXPECT_EQ(num(Q655), 3);
}

TEST_F(Dependants, TheFourthChildStandsApartAndRaisesAll) {
    set_period("31052015");
    scrivi(P256, 2500);
    scrivi(P035, 4);
    for (std::size_t place = 0; place < 4; ++place) {
        dependant(place, "F", "01012005");
    }
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 287.49);  // 3 x (950 + 200) / 12 = 3 x 95.83
    EXPECT_EQ(num(Q664), 95.83);
    EXPECT_EQ(num(Q662), 0.7857);  // (140000 - 30000) / 140000 = .78571...
    EXPECT_EQ(num(Q665), 75.29);   // 95.83 x .7857 = 75.2936
}

TEST_F(Dependants, AQuotientOfOneOrNothingGivesNothing) {
    scrivi(P035, 2);
    dependant(0, "F", "15062000");
    dependant(1, "A", "01011950");
    scrivi(P256, 0);  // R 0, quotients 1
    DetrFamiliari();
    EXPECT_EQ(num(Q662), 1);
    EXPECT_EQ(num(Q663), 1);
    EXPECT_EQ(num(Q650), 0);
    EXPECT_EQ(num(Q653), 0);
    scrivi(P256, 7916.67);  // R 95000.04, quotient below 0 is stored as 0
    DetrFamiliari();
    EXPECT_EQ(num(Q662), 0);
    EXPECT_EQ(num(Q650), 0);
}

TEST_F(Dependants, ThoseOfAnotherParentAreNotCounted) {
    scrivi(P256, 2500);
    scrivi(P035, 2);
    scrivi(P595, 1);
    dependant(0, "F", "15062000");
    dependant(1, "F", "15062001");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 79.17);
    EXPECT_EQ(num(P597), 0);
    scrivi(P595, 2);
    azzera({Q643});
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 0);
}

TEST_F(Dependants, AShareOfNothingGivesNothing) {
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, "F", "15062000", 0);
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 0);
    EXPECT_EQ(num(P725), 0);
}

TEST_F(Dependants, TheFirstPlaceWithoutLetterGoesByTheHousehold) {
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, " ", "01011980");
    scrivi(P404, 1);
    DetrFamiliari();
    EXPECT_EQ(num(Q642), 59.17);
    scrivi(P404, 0);
    scrivi(P588, 1);
    DetrFamiliari();
    EXPECT_EQ(num(Q646), 62.50);
    scrivi(P588, 0);
    scrivi(P462, 1);
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 79.17);
}

TEST_F(Dependants, AChildUnder21HasNoDeductionSinceMarch2022) {
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, "F", "15062012");
    set_period("28022022");
    DetrFamiliari();
    EXPECT_EQ(num(Q650), 54.17);  // 79.17 x .6842, (95000 - 30000) / 95000
    EXPECT_EQ(num(P725), 1);
    azzera({Q650});
    set_period("31032022");
    DetrFamiliari();
    EXPECT_EQ(num(Q650), 0);
    EXPECT_EQ(num(Q643), 79.17);
}

TEST_F(Dependants, ACollaboratorTakesAnInstalmentsPart) {
    scrivi(P447, 1);
    scrivi(P090, 4);
    scrivi(P256, 7500);
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    DetrFamiliari();
    EXPECT_EQ(num(Q649), 177.50);  // 710 / 4
}

TEST_F(Dependants, ALeaverOfAnotherMonthTakesNoMonth) {
    scrivi(P256, 2500);
    scrivi(P017, "30042024");
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    DetrFamiliari();
    EXPECT_EQ(num(Q649), 0);
    EXPECT_EQ(num(Q642), 0);
}

TEST_F(Dependants, MonthsAddUp) {
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    DetrFamiliari();
    DetrFamiliari();
    EXPECT_EQ(num(Q642), 118.34);
    EXPECT_EQ(num(Q649), 59.17);
}

// ---- The year ----

TEST_F(Dependants, TheYearIsBuiltAnew) {
    year_of(30000);
    scrivi(P035, 2);
    scrivi(Q642, 650.87);
    scrivi(Q643, 870.87);
    dependant(0, "C", "01011980");
    dependant(1, "F", "15062000");
    DetrFamiliari();
    EXPECT_EQ(num(Q642), 710);
    EXPECT_EQ(num(Q649), 710);
    EXPECT_EQ(num(Q643), 950);
    EXPECT_EQ(num(Q650), 649.99);  // 950 x .6842
    EXPECT_EQ(num(Q655), 24);
}

TEST_F(Dependants, MonthsOnThePlaceAreTheMonthsGranted) {
    year_of(30000);
    scrivi(P035, 1);
    dependant(0, "F", "15062000");
    scrivi(Q714, 5);
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 395.83);  // 950 / 12 x 5
    EXPECT_EQ(num(Q714), 5);
}

TEST_F(Dependants, ThirteenMonthsAreStoredBackAsTwelve) {
    year_of(30000);
    scrivi(P035, 1);
    dependant(0, "F", "15062000");
    for (const DependantSlot& slot : kDependantSlots) {
        scrivi(slot.months, 13);
    }
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 950);
    for (const DependantSlot& slot : kDependantSlots) {
        EXPECT_EQ(num(slot.months), 12) << slot.months.name();
    }
}

TEST_F(Dependants, WithoutMonthsThoseOfTheEmploymentAreGranted) {
    year_of(30000);
    scrivi(P035, 1);
    dependant(0, "F", "15062000");
    scrivi(P013, "10072024");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 475);  // 950 / 12 x 6, July to December
    scrivi(P013, "10072020");
    scrivi(P017, "20052024");
    set_period("31052024");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 395.83);  // January to May
    set_period("31082024");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 395.83);  // a later slip of the leaver grants no more
    scrivi(P017, "20122023");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 0);
}

TEST_F(Dependants, AMonthOfTheYearGoesByItsOwnLaw) {
    year_of(30000);
    scrivi(P035, 1);
    dependant(0, "F", "15062012");
    set_period("31122022");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 158.33);  // January and February 2022: 950 / 12 x 2
    dependant(0, "F", "15062001");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 712.50);  // and June to December, from the month of 21: x 9
    dependant(0, "F", "15041995");
    set_period("31122025");
    DetrFamiliari();
    EXPECT_EQ(num(Q643), 316.67);  // January to April 2025, the month of 30
}

TEST_F(Dependants, AChildTurningThreeStandsInTwoClasses) {
    year_of(30000);
    set_period("31122015");
    scrivi(P035, 1);
    dependant(0, "F", "15042012");
    DetrFamiliari();
    EXPECT_EQ(num(Q645), 406.67);  // 1220 / 12 x 4, January to April
    EXPECT_EQ(num(Q643), 633.33);  // 950 / 12 x 8
}

TEST_F(Dependants, AChildBornInTheYearCountsFromItsMonth) {
    year_of(30000);
    set_period("31122015");
    scrivi(P035, 1);
    dependant(0, "F", "30062015");
    scrivi(Q714, 12);
    DetrFamiliari();
    EXPECT_EQ(num(Q645), 711.67);  // 1220 / 12 x 7
    EXPECT_EQ(num(Q655), 7);
}

// ---- Checks ----

TEST_F(Dependants, ADependantWhomTheYearGivesNothingLosesTheMark) {
    scrivi(P035, 3);
    dependant(0, "F", "15062012");  // 12 years old in 2024
    dependant(1, "F", "15062000");
    dependant(2, "F", "00000000");
    azzera({P256});
    for (const Descriptor& mark : {P725, P726, P727}) {
        scrivi(mark, 1);
    }
    VerificaFamiliari();
    EXPECT_EQ(num(P725), 0);
    EXPECT_EQ(num(P726), 1);
    EXPECT_EQ(num(P727), 1);  // without a date nothing is known
}

TEST_F(Dependants, AShareWithoutTaxCodeDropsTheSlipWithAWarning) {
    scrivi(P001, "0010000001");
    scrivi(P002, "ROSSI");
    scrivi(P003, "MARIA");
    scrivi(P256, 2500);
    scrivi(P035, 1);
    dependant(0, "C", "01011980");
    dependant(7, "F", "15062000");
    scrivi(kDependantSlots[7].tax_code, " ");
    DetrFamiliari();
    EXPECT_EQ(ModSWCALM::ABORTODIP, -1);
    ASSERT_EQ(window.lines.size(), 1U);
    EXPECT_EQ(window.lines[0].substr(0, 26), "001-000-0001 ROSSI MARIA  ");
    EXPECT_EQ(window.lines[0].substr(53), ":INSERIRE CODFISC");
    EXPECT_EQ(deduction_state.slot_marks, "SSSSSSSNSSSSSSSSSSSSSSSS");
    EXPECT_EQ(num(Q649), 0);
    ModSWCALM::ABORTODIP = 0;  // as the repeat guard may leave it
    drop_slip_without_tax_codes();
    EXPECT_EQ(ModSWCALM::ABORTODIP, -1);
}

TEST_F(Dependants, TaxCodesAreAskedForFrom2008WhenDeductionsRunEachMonth) {
    dependant(0, "C", "01011980");
    scrivi(kDependantSlots[0].tax_code, " ");
    scrivi(P035, 1);
    scrivi(P256, 2500);
    set_period("31122007");
    DetrFamiliari();
    EXPECT_EQ(ModSWCALM::ABORTODIP, 0);
    EXPECT_EQ(num(Q649), 59.17);
    set_period("31012008");
    scrivi(P586, 1);
    DetrFamiliari();
    EXPECT_EQ(ModSWCALM::ABORTODIP, 0);
    scrivi(P586, 0);
    DetrFamiliari();
    EXPECT_EQ(ModSWCALM::ABORTODIP, -1);
}

TEST_F(Dependants, ATaxCodeInPlaceDropsNothing) {
    dependant(0, "C", "01011980");
    EXPECT_TRUE(ControllaCodFiscFamiliari());
    drop_slip_without_tax_codes();
    EXPECT_EQ(ModSWCALM::ABORTODIP, 0);
    EXPECT_TRUE(window.lines.empty());
}

}  // namespace
