// Rounding against exact decimal arithmetic: every double is a finite decimal, so what the rounding
// rule gives can be worked out digit by digit, and so can the plain rounding half away from zero of
// the double. Where the two differ, the double lies so close to a half that fifteen digits cannot
// tell it from one.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "records/numbers.h"

namespace {

using namespace MXREPOSITORY;

/// A decimal number of 0 or above, all digits written out: digits[0] .. digits[point-1] are whole.
struct Decimal {
    std::string digits;
    std::size_t point = 0;

    [[nodiscard]] std::size_t first_digit() const {
        return std::min(digits.find_first_not_of('0'), digits.size());
    }
};

/// The exact value of a double: as many decimals as its lowest bit has.
Decimal exact(double magnitude) {
    int exponent = 0;
    std::frexp(magnitude, &exponent);
    std::array<char, 160> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%.*f", std::max(53 - exponent, 7), magnitude);
    Decimal value;
    value.digits.assign(text.data(), static_cast<std::size_t>(length));
    value.point = value.digits.find('.');
    value.digits.erase(value.point, 1);
    return value;
}

/// Adds one unit to the last digit.
void increment(Decimal& value) {
    for (std::size_t i = value.digits.size(); i-- > 0;) {
        if (value.digits[i] != '9') {
            ++value.digits[i];
            return;
        }
        value.digits[i] = '0';
    }
    value.digits.insert(0, 1, '1');
    ++value.point;
}

/// Keeps `kept` digits of the text, rounded to the nearest (exact halves to the even digit).
Decimal nearest(Decimal value, std::size_t kept) {
    if (kept >= value.digits.size()) {
        return value;
    }
    const std::string rest = value.digits.substr(kept);
    const std::size_t zeros_lost = value.point > kept ? value.point - kept : 0;
    value.digits.resize(kept);
    std::string half(rest.size(), '0');
    half.front() = '5';
    const bool even = kept == 0 || (value.digits.back() - '0') % 2 == 0;
    if (rest > half || (rest == half && !even)) {
        increment(value);
    }
    value.digits.append(zeros_lost, '0');
    return value;
}

/// Whole digits, point and `decimals` digits, what follows cut; no zeros in front but one.
std::string cut(Decimal value, std::size_t decimals) {
    value.digits.append(decimals, '0');
    value.digits.resize(value.point + decimals);
    std::string text = value.digits.substr(0, value.point) + "." + value.digits.substr(value.point);
    const std::size_t first = std::min(text.find_first_not_of('0'), text.find('.'));
    text.erase(0, first);
    return text.front() == '.' ? "0" + text : text;
}

/// The rule: the double sum of the value and half a unit, on fifteen significant digits, cut.
std::string by_the_rule(double magnitude, int decimals) {
    const double half = std::strtod(
        ("0." + std::string(static_cast<std::size_t>(decimals), '0') + "5").c_str(), nullptr);
    const Decimal sum = exact(magnitude + half);
    return cut(nearest(sum, sum.first_digit() + 15), static_cast<std::size_t>(decimals));
}

/// The exact value of the double rounded half away from zero.
std::string exactly_rounded(double magnitude, int decimals) {
    Decimal value = exact(magnitude);
    const std::size_t kept = value.point + static_cast<std::size_t>(decimals);
    const bool up = value.digits[kept] >= '5';
    value.digits.resize(kept);
    if (up) {
        increment(value);
    }
    return cut(value, static_cast<std::size_t>(decimals));
}

/// Distance of the double from the nearest half unit, in units.
double distance_from_half(double magnitude, int decimals) {
    const Decimal value = exact(magnitude);
    const std::string fraction =
        "0." + value.digits.substr(value.point + static_cast<std::size_t>(decimals));
    return std::abs(static_cast<double>(std::strtold(fraction.c_str(), nullptr) - 0.5L));
}

/// The text without sign, the form "-.50" with its zero.
std::string unsigned_text(std::string text) {
    if (!text.empty() && text.front() == '-') {
        text.erase(0, 1);
    }
    return text.front() == '.' ? "0" + text : text;
}

class Rounding : public testing::Test {
  protected:
    void check(double value, int decimals) {
        ++values;
        const double magnitude = std::abs(value);
        const std::string text = arrotondato_testo(value, decimals);
        const std::string rounded = unsigned_text(text);
        ASSERT_EQ(text.front() == '-', value < 0) << text;
        ASSERT_EQ(rounded, by_the_rule(magnitude, decimals))
            << testo_numero(value) << ' ' << decimals;
        ASSERT_EQ(arrotonda(value, decimals), valore(text))
            << testo_numero(value) << ' ' << decimals;
        ASSERT_EQ(std::signbit(arrotonda(value, decimals)), std::signbit(valore(text)));
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

    std::mt19937_64 random{20240531};
    int values = 0;
    int differences = 0;
};

double power(int exponent) {
    return std::pow(10.0, exponent);
}

TEST_F(Rounding, HalvesGoAwayFromZero) {
    // Every half cent up to 1,000, and halves of every number of decimals: as decimal texts they
    // are halves, and they all go up, on whichever side of the half the double lies.
    for (int thousandths = 5; thousandths < 1'000'000; thousandths += 10) {
        const double value = thousandths / 1000.0;
        check(value, 2);
        std::array<char, 20> expected{};
        const int cents = (thousandths + 5) / 10;
        std::snprintf(expected.data(), expected.size(), "%d.%02d", cents / 100, cents % 100);
        ASSERT_EQ(arrotondato_testo(value, 2), expected.data());
    }
    EXPECT_GT(differences, 0);  // 1.005 is below the half, and goes up
    for (int i = 0; i < 150'000; ++i) {
        const int places = decimals();
        check(sign() * (10 * whole(1'000'000'000) + 5) / power(places + 1), places);
    }
}

TEST_F(Rounding, AmountsOfThePayroll) {
    for (int i = 0; i < 150'000; ++i) {
        check(sign() * whole(1'000'000'000) / 100, decimals());                   // cents
        check(sign() * whole(100'000'000) / 100 / (1 + whole(400)), decimals());  // hourly values
        check(sign() * whole(1'000'000) / 100 * whole(10'000) / 100, 2);          // percentages
    }
    EXPECT_GE(values, 450'000);
}

TEST_F(Rounding, NumbersOfFifteenDigits) {
    for (int i = 0; i < 300'000; ++i) {
        const double digits = 1e14 + whole(900'000'000'000'000);
        check(sign() * digits / power(static_cast<int>(random() % 16)), decimals());
    }
    // So large that the half itself is lost or rounded up with the fifteenth digit.
    EXPECT_GT(differences, 0);
}

TEST_F(Rounding, NeighboursOfHalves) {
    for (int i = 0; i < 50'000; ++i) {
        const int places = decimals();
        const double half = (10 * whole(1'000'000'000) + 5) / power(places + 1);
        check(std::nextafter(half, 0.0), places);
        check(std::nextafter(half, 1e300), places);
        check(half * (1 + 1e-14), places);
        check(half * (1 - 1e-14), places);
    }
}

TEST_F(Rounding, SmallNumbers) {
    for (int i = 0; i < 50'000; ++i) {
        check(sign() * whole(1'000'000) / power(6 + static_cast<int>(random() % 6)), decimals());
    }
}

}  // namespace
