// Rounding against exact arithmetic: every double is a whole number over a power of two, so what
// the rounding rule gives can be worked out in whole numbers, and so can the plain rounding half
// away from zero of the double. Where the two differ, the double lies so close to a half that
// fifteen digits cannot tell it from one.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "records/numbers.h"

namespace {

using namespace MXREPOSITORY;

__extension__ typedef unsigned __int128 Wide;

Wide power(int exponent) {
    Wide value = 1;
    for (; exponent > 0; --exponent) {
        value *= 10;
    }
    return value;
}

/// The exact value of a double: numerator / 2^bits.
struct Exact {
    Wide numerator = 0;
    int bits = 1;

    explicit Exact(double magnitude) {
        int exponent = 0;
        numerator = static_cast<Wide>(std::ldexp(std::frexp(magnitude, &exponent), 53));
        bits = numerator == 0 ? 1 : 53 - exponent;
    }
};

/// numerator / denominator to the nearest whole number, exact halves to the even one.
Wide nearest(Wide numerator, Wide denominator) {
    const Wide whole = numerator / denominator;
    const Wide twice_rest = numerator % denominator * 2;
    const bool up = twice_rest > denominator || (twice_rest == denominator && whole % 2 == 1);
    return whole + (up ? 1 : 0);
}

/// The rule: the double sum of the value and half a unit, on fifteen significant digits, cut. In
/// units of the last decimal.
Wide by_the_rule(double magnitude, int decimals) {
    const std::string half = "0." + std::string(static_cast<std::size_t>(decimals), '0') + "5";
    const double sum = magnitude + std::strtod(half.c_str(), nullptr);
    const Exact value(sum);
    // `places` decimals make fifteen digits; a sum that rounds up to the next power of ten has its
    // sixteenth digit a 0, which changes nothing.
    int places = 14;
    for (double size = sum; size >= 10; size /= 10) {
        --places;
    }
    for (double size = sum; size < 1; size *= 10) {
        ++places;
    }
    const Wide one = Wide{1} << static_cast<unsigned>(value.bits);
    while (places > 0 && nearest(value.numerator * power(places), one) >= power(15)) {
        --places;
    }
    while (nearest(value.numerator * power(places), one) < power(14)) {
        ++places;
    }
    const Wide digits = nearest(value.numerator * power(places), one * power(-places));
    return places >= decimals ? digits / power(places - decimals)
                              : digits * power(decimals - places);
}

/// The exact value of the double rounded half away from zero, in units of the last decimal.
Wide exactly_rounded(double magnitude, int decimals) {
    const Exact value(magnitude);
    const Wide half = Wide{1} << static_cast<unsigned>(value.bits - 1);
    return (value.numerator * power(decimals) + half) >> static_cast<unsigned>(value.bits);
}

/// Distance of the double from the nearest half unit, in units.
double distance_from_half(double magnitude, int decimals) {
    const Exact value(magnitude);
    const Wide one = Wide{1} << static_cast<unsigned>(value.bits);
    const Wide rest = value.numerator * power(decimals) % one;
    const Wide half = one / 2;
    const Wide distance = rest > half ? rest - half : half - rest;
    return static_cast<double>(distance) / static_cast<double>(one);
}

/// A rounded text in units of its last decimal; all ones if it has not that many decimals.
Wide units_of(const std::string& text, int decimals) {
    const std::size_t point = text.find('.');
    if (point == std::string::npos ||
        text.size() - point - 1 != static_cast<std::size_t>(decimals)) {
        return ~Wide{0};
    }
    Wide units = 0;
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            units = units * 10 + static_cast<Wide>(c - '0');
        }
    }
    return units;
}

class Rounding : public testing::Test {
  protected:
    void check(double value, int decimals) {
        ++values;
        const double magnitude = std::abs(value);
        const std::string text = arrotondato_testo(value, decimals);
        const Wide rounded = units_of(text, decimals);
        const bool right =
            (text.front() == '-') == (value < 0) && rounded == by_the_rule(magnitude, decimals);
        const double number = arrotonda(value, decimals);
        const double from_text = valore(text);
        const bool same = number == from_text && std::signbit(number) == std::signbit(from_text);
        if (!right || !same) {
            ASSERT_TRUE(right) << testo_numero(value) << ' ' << decimals << ": " << text;
            ASSERT_TRUE(same) << testo_numero(value) << ' ' << decimals << ": " << text;
        }
        if (rounded == exactly_rounded(magnitude, decimals)) {
            return;
        }
        // The difference is one of the fifteen digits: half a unit of the fifteenth digit of the
        // sum, and the rounding of the double sum itself.
        ++differences;
        const double units = (magnitude + 1) * std::pow(10.0, decimals);
        ASSERT_LE(distance_from_half(magnitude, decimals), units * 6e-15)
            << testo_numero(value) << ' ' << decimals;
    }

    void TearDown() override {
        RecordProperty("values", std::to_string(values));
        RecordProperty("differences", std::to_string(differences));
    }

    [[nodiscard]] double whole(std::uint64_t limit) {
        return static_cast<double>(random() % limit);
    }
    [[nodiscard]] double sign() { return (random() & 1U) != 0 ? 1 : -1; }
    [[nodiscard]] int decimals() { return 2 + static_cast<int>(random() % 5); }
    [[nodiscard]] static double over(double dividend, int places) {
        return dividend / static_cast<double>(power(places));
    }

    std::mt19937_64 random{20240531};
    int values = 0;
    int differences = 0;
};

TEST_F(Rounding, HalvesGoAwayFromZero) {
    // Every half cent up to 1,000, and halves of every number of decimals: as decimal texts they
    // are halves, and they all go up, on whichever side of the half the double lies.
    for (int thousandths = 5; thousandths < 1'000'000; thousandths += 10) {
        const double value = thousandths / 1000.0;
        check(value, 2);
        ASSERT_TRUE(units_of(arrotondato_testo(value, 2), 2) ==
                    static_cast<Wide>((thousandths + 5) / 10))
            << thousandths;
    }
    EXPECT_GT(differences, 0);  // 1.005 is below the half, and goes up
    for (int i = 0; i < 150'000; ++i) {
        const int places = decimals();
        check(sign() * over(10 * whole(1'000'000'000) + 5, places + 1), places);
    }
}

TEST_F(Rounding, AmountsOfThePayroll) {
    for (int i = 0; i < 150'000; ++i) {
        check(sign() * whole(1'000'000'000) / 100, decimals());                   // cents
        check(sign() * whole(100'000'000) / 100 / (1 + whole(400)), decimals());  // hourly values
        check(sign() * whole(1'000'000) / 100 * whole(10'000) / 100, 2);          // percentages
    }
}

TEST_F(Rounding, NumbersOfFifteenDigits) {
    for (int i = 0; i < 300'000; ++i) {
        const double digits = 1e14 + whole(900'000'000'000'000);
        check(sign() * over(digits, static_cast<int>(random() % 16)), decimals());
    }
    // So large that the half itself is lost or rounded up with the fifteenth digit.
    EXPECT_GT(differences, 0);
}

TEST_F(Rounding, NeighboursOfHalves) {
    for (int i = 0; i < 50'000; ++i) {
        const int places = decimals();
        const double half = over(10 * whole(1'000'000'000) + 5, places + 1);
        check(std::nextafter(half, 0.0), places);
        check(std::nextafter(half, 1e300), places);
        check(half * (1 + 1e-14), places);
        check(half * (1 - 1e-14), places);
    }
}

TEST_F(Rounding, SmallNumbers) {
    for (int i = 0; i < 50'000; ++i) {
        check(sign() * over(whole(1'000'000), 6 + static_cast<int>(random() % 6)), decimals());
    }
}

TEST_F(Rounding, ADifferenceThatTheDoubleExplains) {
    // 1.005 is 1.00499999999999989...: rounded exactly 1.00, by its fifteen digits 1.01.
    EXPECT_TRUE(exactly_rounded(1.005, 2) == 100);
    EXPECT_TRUE(by_the_rule(1.005, 2) == 101);
    EXPECT_EQ(arrotondato_testo(1.005, 2), "1.01");
    // 1.0049999999 has fewer than fifteen digits and stays below.
    EXPECT_TRUE(by_the_rule(1.0049999999, 2) == 100);
    EXPECT_EQ(arrotondato_testo(1.0049999999, 2), "1.00");
}

}  // namespace
