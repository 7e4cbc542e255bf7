// Numbers and texts: whole part, leading value, decimal text, exponent form, formats.

#include "records/numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "platform/failure.h"

namespace {

using namespace MXREPOSITORY;

int failure_of(double (*operation)()) {
    try {
        (void)operation();
    } catch (const platform::Failure& failure) {
        return failure.number();
    }
    return 0;
}

TEST(Numbers, WholePartIsNotAboveTheNumber) {
    EXPECT_EQ(Int(2.7), 2);
    EXPECT_EQ(Int(-2.1), -3);
    EXPECT_EQ(Fix(-2.7), -2);
    EXPECT_EQ(unita(10.4), 10);
    EXPECT_EQ(unita(10.5), 11);
    EXPECT_EQ(unita(-10.5), -10);
}

TEST(Numbers, LeadingValueStopsWhereTheNumberEnds) {
    EXPECT_EQ(valore("12.50EUR"), 12.5);
    EXPECT_EQ(valore("  -3"), -3);
    EXPECT_EQ(valore("+4."), 4);
    EXPECT_EQ(valore(".5"), 0.5);
    EXPECT_EQ(valore("-.5"), -0.5);
    EXPECT_EQ(valore("1,5"), 1);
    EXPECT_EQ(valore("1 2"), 1);
    EXPECT_EQ(valore("1.2.3"), 1.2);
    EXPECT_EQ(valore("1E3"), 1000);
    EXPECT_EQ(valore("1.5E-05"), 0.000015);
    EXPECT_EQ(valore("1E"), 1);
    EXPECT_EQ(valore("2E+"), 2);
    for (const char* none : {"", " ", ".", "-", "+", "-.", "E5", "x1", "--1"}) {
        EXPECT_EQ(valore(none), 0) << none;
    }
    EXPECT_EQ(failure_of([] { return valore("1E999"); }), platform::kOverflow);
    EXPECT_EQ(valore("1E-999"), 0);
}

TEST(Numbers, LeadingValueIsTheNearestDouble) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 200'000; ++i) {
        std::string text = std::to_string(random() % (i % 2 == 0 ? 1'000'000'000ULL : ~0ULL));
        text.insert(random() % (text.size() + 1), 1, '.');
        if (random() % 4 == 0) {
            text.insert(0, 1, '-');
        }
        ASSERT_EQ(valore(text), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(Numbers, DecimalTextHasNoZeroBeforeThePoint) {
    EXPECT_EQ(testo_numero(0), "0");
    EXPECT_EQ(testo_numero(-0.0), "0");
    EXPECT_EQ(testo_numero(0.5), ".5");
    EXPECT_EQ(testo_numero(-0.5), "-.5");
    EXPECT_EQ(testo_numero(12), "12");
    EXPECT_EQ(testo_numero(1200), "1200");
    EXPECT_EQ(testo_numero(0.1 + 0.2), ".3");
    EXPECT_EQ(testo_numero(1234567.891), "1234567.891");
    EXPECT_EQ(testo_numero(999999999999999), "999999999999999");
    EXPECT_EQ(testo_numero(1.0 / 3), ".333333333333333");
    EXPECT_EQ(testo_numero(2.0 / 3), ".666666666666667");
}

TEST(Numbers, AnExponentStandsOnlyWhereFifteenDigitsCannotShowTheNumber) {
    EXPECT_EQ(testo_numero(1e15), "1E+15");
    EXPECT_EQ(testo_numero(1.5e-17), "1.5E-17");
    EXPECT_EQ(testo_numero(1e-15), ".000000000000001");
    EXPECT_EQ(testo_numero(1e-16), "1E-16");
    EXPECT_EQ(testo_numero(0.01 / 3), "3.33333333333333E-03");
    EXPECT_EQ(testo_numero(-1e300), "-1E+300");
    EXPECT_EQ(failure_of([] {
                  return static_cast<double>(
                      testo_numero(std::numeric_limits<double>::infinity()).size());
              }),
              platform::kOverflow);
}

TEST(Numbers, DecimalTextIsTheFifteenDigitsOfPrintf) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 60'000; ++i) {
        std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (i % 2 == 0 || !std::isfinite(value)) {
            value = static_cast<double>(random() % 1'000'000'000'000) /
                    std::pow(10.0, static_cast<double>(random() % 10));
        }
        std::array<char, 40> expected{};
        std::snprintf(expected.data(), expected.size(), "%.15g", value);
        std::string text = testo_numero(value);
        ASSERT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(expected.data(), nullptr))
            << text;
        NORMALIZZAESPONENTE(text);
        ASSERT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
        ASSERT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(expected.data(), nullptr))
            << text;
    }
}

TEST(Numbers, ExponentFormBecomesPlainDigits) {
    const auto normalised = [](std::string text) {
        NORMALIZZAESPONENTE(text);
        return text;
    };
    EXPECT_EQ(normalised("12.5"), "12.5");
    EXPECT_EQ(normalised("1E5"), "1E5");
    EXPECT_EQ(normalised(""), "");
    // A zero before and after the mantissa, then the digits move across the point.
    EXPECT_EQ(normalised("1.5E-05"), "0.0000150");
    EXPECT_EQ(normalised("1,5E-01"), "0.150");
    EXPECT_EQ(normalised("-1.5E-05"), "-0.0000150");
    EXPECT_EQ(normalised("1.5E+03"), "01500.0");
    EXPECT_EQ(normalised("1E+15"), "01000000000000000.0");
    EXPECT_EQ(normalised("-2E+02"), "-0200.0");
    EXPECT_EQ(normalised("+2E+02"), "+0200.0");  // a sign stays in front, whichever it is
    std::string endless = "1E+999999999";
    EXPECT_THROW(NORMALIZZAESPONENTE(endless), platform::Failure);
    endless = "1E+-99999999";
    EXPECT_THROW(NORMALIZZAESPONENTE(endless), platform::Failure);
}

TEST(Numbers, RoundingKeepsTrailingZeros) {
    EXPECT_EQ(arrotondato_testo(12, 2), "12.00");
    EXPECT_EQ(arrotondato_testo(12.5, 2), "12.50");
    EXPECT_EQ(arrotondato_testo(12.345, 2), "12.35");
    EXPECT_EQ(arrotondato_testo(-12.345, 2), "-12.35");
    EXPECT_EQ(arrotondato_testo(0, 2), "0.00");
    EXPECT_EQ(arrotondato_testo(0.499, 2), "0.50");
    EXPECT_EQ(arrotondato_testo(-0.499, 2), "-.50");  // below 1 a negative has no zero in front
    EXPECT_EQ(arrotondato_testo(1.0 / 3, 5), "0.33333");
    EXPECT_EQ(arrotondato_testo(1e-20, 6), "0.000000");
}

TEST(Numbers, RoundingToNoDecimalsIsRoundingToTwo) {
    std::int16_t decimals = 0;
    EXPECT_EQ(ARROTONDATESTO(1.236, decimals), "1.24");
    EXPECT_EQ(decimals, 2);
    EXPECT_EQ(arrotonda(1.236, 0), 1.24);
}

TEST(Numbers, DivisionAndSixteenBits) {
    EXPECT_EQ(dividi(10, 4), 2.5);
    EXPECT_EQ(failure_of([] { return dividi(10, 0); }), platform::kDivisionByZero);
    EXPECT_EQ(failure_of([] { return dividi(0, -0.0); }), platform::kDivisionByZero);
    EXPECT_EQ(intero16(2.5), 2);  // half to even
    EXPECT_EQ(intero16(3.5), 4);
    EXPECT_EQ(intero16(-32768), -32768);
    EXPECT_EQ(failure_of([] { return 1.0 * intero16(32768); }), platform::kOverflow);
    EXPECT_EQ(failure_of([] { return 1.0 * intero16(std::nan("")); }), platform::kOverflow);
}

TEST(Numbers, PiecesOfTexts) {
    EXPECT_EQ(zeri_a_sinistra("12", 5), "00012");
    EXPECT_EQ(zeri_a_sinistra("123456", 5), "23456");
    EXPECT_EQ(a_sinistra("AB", 4), "AB  ");
    EXPECT_EQ(a_sinistra("ABCDE", 4), "ABCD");
    EXPECT_EQ(rifila("  A B "), "A B");
    EXPECT_EQ(rifila("   "), "");
    EXPECT_EQ(rifila_destra("  A "), "  A");
    EXPECT_EQ(ritaglia("ABCDE", 2, 3), "BCD");
    EXPECT_EQ(ritaglia("ABCDE", 5, 3), "E");
    EXPECT_EQ(ritaglia("ABCDE", 6, 3), "");
    EXPECT_EQ(ritaglia("ABCDE", 0, 3), "");
    EXPECT_EQ(destra("ABCDE", 2), "DE");
    EXPECT_EQ(destra("A", 2), "A");
}

TEST(Numbers, AmountsOfTheListsHaveTwoDecimals) {
    EXPECT_EQ(formato_importo(12), "12.00");
    EXPECT_EQ(formato_importo(0), "0.00");
    EXPECT_EQ(formato_importo(0.5), "0.50");
    EXPECT_EQ(formato_importo(-0.125), "-0.13");
    EXPECT_EQ(formato_importo(999.995), "1000.00");
    EXPECT_EQ(formato_importo(1234567.894), "1234567.89");
    EXPECT_EQ(importo(2.675), 2.68);
}

}  // namespace
