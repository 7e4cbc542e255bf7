// How a value is read from a record and written into it.

#include "records/fields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <random>
#include <string>

#include "platform/failure.h"
#include "records/dictionary/CONX.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/numbers.h"
#include "tests/support/record_areas.h"
#include "tests/support/scripted_window.h"
#include "texts/texts.h"

namespace {

using namespace MXREPOSITORY;
using test_support::ScriptedWindow;

/// A field at position 4 of a record.
Descriptor field(char type, int length, int offset = 4) {
    Descriptor d;
    d.area = Area::DIPX;
    d.offset = static_cast<std::int16_t>(offset);
    d.length = static_cast<std::int16_t>(length);
    d.type = type;
    d.code = {'P', '9', '9', '8'};
    return d;
}

/// A record of stars around `content` at position 4.
std::string record(const std::string& content) {
    return "***" + content + "***";
}

std::string read(char type, const std::string& content) {
    return LEGGICAMPO(field(type, static_cast<int>(content.size())), 0, record(content));
}

double read_number(char type, const std::string& content) {
    return LEGGICAMPONUM(field(type, static_cast<int>(content.size())), 0, record(content));
}

/// What a field of `length` characters holds after the writing of a text; its neighbours must stay.
std::string written(char type, int length, const std::string& value) {
    std::string buffer = record(std::string(static_cast<std::size_t>(length), '#'));
    std::string text = value;
    SCRIVICAMPO(field(type, length), text, 0, buffer);
    EXPECT_EQ(buffer.substr(0, 3), "***");
    EXPECT_EQ(buffer.substr(3 + static_cast<std::size_t>(length)), "***");
    return buffer.substr(3, static_cast<std::size_t>(length));
}

std::string written(char type, int length, double value) {
    std::string buffer = record(std::string(static_cast<std::size_t>(length), '#'));
    SCRIVICAMPONUM(field(type, length), value, 0, buffer);
    EXPECT_EQ(buffer.substr(0, 3), "***");
    EXPECT_EQ(buffer.substr(3 + static_cast<std::size_t>(length)), "***");
    return buffer.substr(3, static_cast<std::size_t>(length));
}

class Fields : public testing::Test {
  protected:
    void SetUp() override {
        window = &ScriptedWindow::install();
        test_support::fill_areas();
    }
    void TearDown() override { window->verify(); }
    ScriptedWindow* window = nullptr;
};

TEST_F(Fields, AMinusInAWholeNumberMayStandAnywhere) {
    EXPECT_EQ(read('N', "00-12"), "-00012");
    EXPECT_EQ(read_number('N', "00-12"), -12);
    EXPECT_EQ(read('N', "-0012"), "-00012");
    EXPECT_EQ(read('N', "0012-"), "-00120");  // the minus' own place counts as a zero
}

TEST_F(Fields, DecimalsAreReadWithSignPointAndLeadingZeros) {
    EXPECT_EQ(read('2', "-000123"), "-00001.23");
    EXPECT_EQ(read('2', "0001234"), "00012.34");
    EXPECT_EQ(read('5', "1234567"), "12.34567");
    EXPECT_EQ(read('6', "123456"), ".123456");
    EXPECT_EQ(read_number('6', "123456"), 0.123456);
    EXPECT_EQ(read_number('3', "0001005"), 1.005);
}

TEST_F(Fields, TextDatesAndDigitStringsAreReadAsTheyStand) {
    EXPECT_EQ(read('A', " RO-SI "), " RO-SI ");
    EXPECT_EQ(read('D', "01032016"), "01032016");
    EXPECT_EQ(read('D', "-1032016"), "-1032016");
    EXPECT_EQ(read('0', "-12"), "-12");
}

TEST_F(Fields, ADateReadAsANumberLosesItsLeadingZero) {
    EXPECT_EQ(read_number('D', "01032016"), 1032016);
    EXPECT_EQ(read_number('D', "00000000"), 0);
}

TEST_F(Fields, ASourceThatIsTooShortGivesLess) {
    EXPECT_EQ(LEGGICAMPO(field('A', 5), 0, "***RO"), "RO");
    EXPECT_EQ(LEGGICAMPO(field('A', 5), 0, "***"), "");
    EXPECT_EQ(LEGGICAMPO(field('2', 5), 0, "***"), ".");
    EXPECT_EQ(LEGGICAMPONUM(field('2', 5), 0, "***"), 0);
    EXPECT_EQ(LEGGICAMPO(field('2', 5), 0, "***12"), "12.");
    EXPECT_EQ(LEGGICAMPO(field('N', 5), 0, "***"), "");
    clear_areas();  // nothing loaded yet
    EXPECT_EQ(testo(P002), "");
    EXPECT_EQ(num(P210), 0);
}

TEST_F(Fields, LettersInANumericFieldStopTheNumber) {
    EXPECT_EQ(read_number('N', "12A45"), 12);
    EXPECT_EQ(read_number('N', "     "), 0);
    EXPECT_EQ(read_number('2', "  123"), 1.23);
    EXPECT_EQ(read_number('A', " 12.5 x"), 12.5);
}

TEST_F(Fields, ANegativeAmountHasItsMinusInTheFirstPosition) {
    EXPECT_EQ(written('2', 8, -12.5), "-0001250");
    EXPECT_EQ(read('2', "-0001250"), "-000012.50");
    EXPECT_EQ(read_number('2', "-0001250"), -12.5);
    EXPECT_EQ(written('N', 5, -12.0), "-0012");
}

TEST_F(Fields, ANegativeAmountThatFillsTheFieldLosesItsTopDigit) {
    EXPECT_EQ(written('2', 5, -123.45), "-2345");
}

TEST_F(Fields, DigitsThatDoNotFitAreLostOnTheLeft) {
    // 1234567.891 rounds to 1234567.89: nine digits for eight places.
    EXPECT_EQ(written('2', 8, 1234567.891), "23456789");
    EXPECT_EQ(written('N', 3, 12345.0), "345");
}

TEST_F(Fields, TheFirstCommaBecomesAPointInTheCallersVariable) {
    std::string buffer = record("########");
    std::string value = "12,5";
    SCRIVICAMPO(field('2', 8), value, 0, buffer);
    EXPECT_EQ(value, "12.5");
    EXPECT_EQ(buffer, record("00001250"));

    value = "VIA ROMA, 5, PARMA";
    buffer = record("####################");
    SCRIVICAMPO(field('A', 20), value, 0, buffer);
    EXPECT_EQ(value, "VIA ROMA. 5, PARMA");
    EXPECT_EQ(buffer, record("VIA ROMA. 5, PARMA  "));
}

TEST_F(Fields, HalfACentFollowsTheDouble) {
    // The double of 1.005 lies below it, 1.005 + 0.005 shows as 1.01: one cent up.
    EXPECT_EQ(written('2', 5, 1.005), "00101");
    EXPECT_EQ(written('2', 5, 1.0049), "00100");
    EXPECT_EQ(written('2', 5, 2.675), "00268");
    EXPECT_EQ(written('2', 5, "0.994"), "00099");
    EXPECT_EQ(written('2', 5, "0.995"), "00100");
}

TEST_F(Fields, TextIsCutOrFilledWithBlanks) {
    EXPECT_EQ(written('A', 5, "ROSSI MARIA"), "ROSSI");
    EXPECT_EQ(written('A', 8, "ROSSI"), "ROSSI   ");
    EXPECT_EQ(written('A', 3, ""), "   ");
    EXPECT_EQ(written('A', 6, 12.5), "12.5  ");
    EXPECT_EQ(written('A', 6, -0.5), "-.5   ");
}

TEST_F(Fields, AnEmptyDateIsEightZeros) {
    EXPECT_EQ(written('D', 8, "0"), "00000000");
    EXPECT_EQ(written('D', 8, ""), "00000000");
    EXPECT_EQ(written('D', 8, 0.0), "00000000");
    EXPECT_EQ(read_number('D', "00000000"), 0);
}

TEST_F(Fields, DatesAndDigitStringsAreRightAlignedAndNotRounded) {
    EXPECT_EQ(written('D', 8, "1032016"), "01032016");
    EXPECT_EQ(written('D', 8, 31052024.0), "31052024");
    EXPECT_EQ(written('0', 3, "7"), "007");
    EXPECT_EQ(written('0', 3, "-7"), "-07");
    EXPECT_EQ(written('N', 4, "12.7"), "12.7");  // no rounding without decimals
}

TEST_F(Fields, TextsOfNumbersAreTakenAsNumbers) {
    EXPECT_EQ(written('2', 8, "12.345"), "00001235");
    EXPECT_EQ(written('2', 8, "-.5"), "-0000050");
    EXPECT_EQ(written('2', 8, ""), "00000000");
    EXPECT_EQ(written('2', 8, "garbage"), "00000000");
    EXPECT_EQ(written('3', 8, "1E-02"), "00000010");
    EXPECT_EQ(written('N', 8, "1.5E+02"), "000150.0");  // 150 in plain digits
    EXPECT_EQ(written('2', 8, 1e-20), "00000000");
    EXPECT_EQ(written('2', 8, -1e-20), "-0000000");  // the sign of the text stays
    EXPECT_EQ(written('2', 15, 1e11), "010000000000000");
    // Fifteen digits show 10^12 + 0.005 as 1000000000000.01: from there on the half cent counts.
    EXPECT_EQ(written('2', 15, 1e12), "100000000000001");
}

TEST_F(Fields, NoInfinityAndNoNaNReachesARecord) {
    std::string buffer = record("########");
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double bad : {kInfinity, -kInfinity, std::nan("")}) {
        EXPECT_THROW(SCRIVICAMPONUM(field('2', 8), bad, 0, buffer), platform::Failure);
        EXPECT_THROW(SCRIVICAMPONUM(field('N', 8), bad, 0, buffer), platform::Failure);
        EXPECT_THROW(SCRIVICAMPONUM(field('A', 8), bad, 0, buffer), platform::Failure);
    }
    EXPECT_EQ(buffer, record("########"));
}

TEST_F(Fields, AnUnknownTagShowsItsMessageAndTheRunGoesOn) {
    const std::string unknown = "ABCD$,00004,05,2,0,P001";
    window->expect_box(texts::kRepositoryUnknownTag.bytes());
    EXPECT_EQ(LEGGICAMPO(unknown, 0, ""), ".");
    window->expect_box(texts::kRepositoryUnknownTag.bytes());
    EXPECT_EQ(LEGGICAMPONUM(unknown, 0, ""), 0);

    const std::string before = area(Area::DIPX);
    std::string value = "12,5";
    std::string area_itself;
    window->expect_box(texts::kRepositoryUnknownTag.bytes());
    SCRIVICAMPO(unknown, value, 0, area_itself);
    EXPECT_EQ(value, "12.5");
    window->expect_box(texts::kRepositoryUnknownTag.bytes());
    SCRIVICAMPONUM(unknown, 3, 0, area_itself);
    EXPECT_EQ(area(Area::DIPX), before);
    ASSERT_EQ(window->boxes.size(), 4U);
    EXPECT_EQ(window->boxes.front().text, "ERRORE REPOSITORY - STRCOSTANTE");
}

TEST_F(Fields, ADescriptorThatHoldsNothingShowsTheMessageOfAnUnknownTag) {
    // No tag comes before no position: the run goes on with an empty value.
    std::string area_itself;
    for (const char* damaged : {"", "DIPX", "ABCD$,?????,08,A,0,P001"}) {
        window->expect_box(texts::kRepositoryUnknownTag.bytes());
        EXPECT_EQ(LEGGICAMPO(damaged, 0, ""), "");
        window->expect_box(texts::kRepositoryUnknownTag.bytes());
        EXPECT_EQ(LEGGICAMPONUM(damaged, 0, ""), 0);
        std::string value = "12";
        window->expect_box(texts::kRepositoryUnknownTag.bytes());
        SCRIVICAMPO(damaged, value, 0, area_itself);
    }
    // With a tag that is known there is a record, but no position in it.
    EXPECT_THROW((void)LEGGICAMPO("DIPX$,?????,08,A,0,P001", 0, ""), platform::Failure);
}

TEST_F(Fields, WithABufferTheTagDoesNotMatter) {
    EXPECT_EQ(LEGGICAMPO("ABCD$,00004,05,2,0,P001", 0, record("12345")), "123.45");
}

TEST_F(Fields, ADescriptorMadeAtRunTimeWorksLikeItsConstant) {
    scrivi(P017, "31052024");
    EXPECT_EQ(LEGGICAMPO(P017.text(), 0, ""), "31052024");
    EXPECT_EQ(LEGGICAMPONUM(P017.text(), 0, ""), 31052024);
    std::string area_itself;
    std::string value = "01012025";
    SCRIVICAMPO(P017.text(), value, 0, area_itself);
    EXPECT_EQ(testo(P017), "01012025");
    SCRIVICAMPONUM(P210.text(), 1234.5, 0, area_itself);
    EXPECT_EQ(num(P210), 1234.5);
}

TEST_F(Fields, AreasWithoutDataReadEmpty) {
    EXPECT_EQ(LEGGICAMPO("PARX$,00004,05,A,0,N001", 0, ""), "");
    EXPECT_EQ(LEGGICAMPO("PARX$,00004,05,2,0,N001", 0, ""), ".");
    EXPECT_EQ(LEGGICAMPONUM("SCRU$,00004,05,N,0,U001", 0, ""), 0);
}

TEST_F(Fields, ATargetBeyondTheBufferIsAFailureWithThePseudoName) {
    std::string buffer = "short";
    const std::string before = buffer;
    try {
        SCRIVICAMPONUM(field('2', 8, 100), 1, 0, buffer);
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), platform::kSubscriptOutOfRange);
        EXPECT_EQ(failure.pseudo_name, "RepoW");
    }
    try {
        std::string text = "a";
        SCRIVICAMPO(field('A', 8, 3), text, 0, buffer);  // begins inside, ends outside
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.pseudo_name, "RepoW");
    }
    EXPECT_EQ(buffer, before);
}

TEST_F(Fields, AnOverflowOfThePositionIsAFailureWithThePseudoName) {
    try {
        (void)LEGGICAMPO(J791, 3000, "");  // 7661 + 29990 is beyond 16 bits
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), platform::kOverflow);
        EXPECT_EQ(failure.pseudo_name, "RepoR");
    }
    try {
        (void)LEGGICAMPO("DIPX$,99999,02,N,0,P001", 0, "");
        FAIL() << "no failure";
    } catch (const platform::Failure& failure) {
        EXPECT_EQ(failure.number(), platform::kOverflow);
        EXPECT_EQ(failure.pseudo_name, "RepoR");
    }
}

TEST_F(Fields, ADescriptorTextWithANegativeLengthIsAFailure) {
    std::string buffer = "short";
    std::string value = "1";
    for (const char* text : {"DIPX$,00001,-1,A,0,P001", "DIPX$,00001,-9,2,0,P001"}) {
        EXPECT_THROW((void)LEGGICAMPO(text, 0, buffer), platform::Failure);
        EXPECT_THROW(SCRIVICAMPO(text, value, 0, buffer), platform::Failure);
    }
    EXPECT_EQ(buffer, "short");
}

TEST_F(Fields, TheRestOfTheRecordStays) {
    std::string& employee = area(Area::DIPX);
    const std::size_t length = employee.size();
    std::string expected = employee;
    scrivi(Q100, -3.25);
    expected.replace(static_cast<std::size_t>(Q100.offset - 1), 10, "-000000325");
    EXPECT_EQ(employee, expected);
    scrivi(P002, "ROSSI");
    expected.replace(static_cast<std::size_t>(P002.offset - 1), 30,
                     "ROSSI                         ");
    EXPECT_EQ(employee, expected);
    EXPECT_EQ(employee.size(), length);
}

TEST_F(Fields, ShortFormsWorkOnTheAreaOfTheField) {
    scrivi(P002, "  ROSSI");
    EXPECT_EQ(testo(P002).size(), 30U);
    EXPECT_EQ(rifilato(P002), "ROSSI");
    scrivi(P002, "VIA A, B");
    EXPECT_EQ(rifilato(P002), "VIA A. B");
    scrivi(Q100, 10.005);
    EXPECT_EQ(num(Q100), 10.01);
    EXPECT_EQ(aggiungi(Q100, 0.004), 10.01);  // what stands in the field, in cents
    EXPECT_EQ(aggiungi(Q100, -20.0), -9.99);
    azzera({Q100, P002});
    EXPECT_EQ(testo(Q100), "00000000.00");
    EXPECT_EQ(rifilato(P002), "0");
    svuota({Q100, P002, P017});
    EXPECT_EQ(testo(Q100), "00000000.00");
    EXPECT_EQ(testo(P002), std::string(30, ' '));
    EXPECT_EQ(testo(P017), "00000000");
}

TEST_F(Fields, ASeriesHoldsTheFieldsThatExist) {
    const auto quarter = serie(J001, J025, 12);
    ASSERT_EQ(quarter.size(), 3U);
    EXPECT_EQ(quarter[1].name(), "J013");
    for (const Descriptor& d : serie(Q205, Q213)) {
        EXPECT_EQ(d.name().substr(0, 2), "Q2");
    }
    EXPECT_EQ(serie(Q401, Q500).size(), 100U);
    EXPECT_EQ(dopo(J001, 12), J013);
    EXPECT_EQ(dopo(TA01, 1), TA02);
    EXPECT_THROW((void)dopo(J001, 1), platform::Failure);
}

/// A table of compile time and the series of the same ends hold the same fields.
template <Descriptor first, Descriptor last, int step = 1>
void expect_same_series() {
    const std::vector<Descriptor> series = serie(first, last, step);
    const auto& table = elenco<first, last, step>;
    EXPECT_TRUE(std::equal(table.begin(), table.end(), series.begin(), series.end()))
        << first.name() << " to " << last.name();
}

TEST_F(Fields, ATableOfCompileTimeIsTheSeries) {
    expect_same_series<J001, J767, 12>();  // rows of twelve months
    expect_same_series<P634, P718, 4>();
    expect_same_series<Q205, Q213>();
    expect_same_series<Q401, Q500>();
    expect_same_series<PA25, PA32>();  // two letters: P025 to P032 are none of them
    expect_same_series<P017, P017>();
    svuota(elenco<P240, P248>);
    for (const Descriptor& field : elenco<P240, P248>) {
        EXPECT_EQ(num(field), 0) << field.name();
    }
}

TEST_F(Fields, AFieldOfNothingButZeros) {
    scrivi(P002, std::string(30, '0'));
    EXPECT_TRUE(tutto_zero(P002));
    scrivi(P002, std::string(29, '0'));  // a blank behind them
    EXPECT_FALSE(tutto_zero(P002));
    svuota(P002);
    EXPECT_FALSE(tutto_zero(P002));
    svuota(P017);  // a date
    EXPECT_TRUE(tutto_zero(P017));
    svuota(Q100);  // an amount is no row of digits
    EXPECT_FALSE(tutto_zero(Q100));
}

// ---- Properties over many values ----

std::string digits_of(std::uint64_t units, int length) {
    std::string text = std::to_string(units);
    text.insert(0, static_cast<std::size_t>(std::max(0, length - static_cast<int>(text.size()))),
                '0');
    return text;
}

std::uint64_t power(int exponent) {
    std::uint64_t value = 1;
    for (; exponent > 0; --exponent) {
        value *= 10;
    }
    return value;
}

TEST_F(Fields, WriteThenReadGivesTheRoundedNumberForEveryTypeLengthAndSign) {
    std::mt19937_64 random(19970301);
    for (const char type : std::string("N23456D0")) {
        const int decimals = type >= '2' && type <= '6' ? type - '0' : 0;
        // A double tells thousandths of a unit apart up to 12 digits.
        for (int length = std::max(decimals, 2); length <= 12; ++length) {
            for (int i = 0; i < 1500; ++i) {
                const bool negative = (i & 1) != 0 && type != 'D' && type != '0';
                const std::uint64_t units = random() % power(length - 1);
                // Thousandths of the last unit, away from the half: the nearest unit is certain.
                int thousandths = decimals == 0 ? 0 : static_cast<int>(random() % 999);
                if (thousandths > 495 && thousandths < 505) {
                    thousandths = 0;
                }
                const std::uint64_t rounded = units + (thousandths > 500 ? 1U : 0U);
                const double magnitude = (static_cast<double>(units) + thousandths / 1000.0) /
                                         static_cast<double>(power(decimals));
                const double value = negative ? -magnitude : magnitude;

                std::string expected = digits_of(rounded, length);
                if (negative && value < 0) {
                    expected.front() = '-';
                }
                const std::string stored = written(type, length, value);
                ASSERT_EQ(stored, expected) << type << length << ' ' << value;
                const double back =
                    static_cast<double>(rounded) / static_cast<double>(power(decimals));
                // A minus in front of the full width hides the top digit, which is 0 here, unless
                // the rounding carried into it.
                if (!negative || rounded < power(length - 1)) {
                    ASSERT_EQ(read_number(type, stored), negative ? -back : back)
                        << type << length << ' ' << value;
                }
            }
        }
    }
}

TEST_F(Fields, WriteThenReadGivesTheTextForEveryLength) {
    std::mt19937_64 random(4);
    for (int length = 1; length <= 99; ++length) {
        for (int i = 0; i < 20; ++i) {
            std::string text(random() % 120, ' ');
            for (char& c : text) {
                c = static_cast<char>(random() % 256);
                c = c == ',' ? '.' : c;
            }
            std::string expected = text.substr(0, static_cast<std::size_t>(length));
            expected.resize(static_cast<std::size_t>(length), ' ');
            ASSERT_EQ(written('A', length, text), expected);
            ASSERT_EQ(read('A', expected), expected);
        }
    }
}

/// Values as a payroll makes them: cents, quotients, products, halves, and any double at all.
double any_value(std::mt19937_64& random) {
    const double sign = (random() & 1U) != 0 ? 1 : -1;
    const auto whole = [&random](std::uint64_t limit) {
        return static_cast<double>(random() % limit);
    };
    switch (random() % 7) {
        case 0:
            return sign * whole(10'000'000'000) / 100;
        case 1:
            return sign * whole(10'000'000) / (1 + whole(400));
        case 2:
            return sign * whole(1'000'000) / 1000 + 0.005;
        case 3:
            return sign * (whole(100'000'000) + 0.5) /
                   static_cast<double>(power(2 + static_cast<int>(random() % 5)));
        case 4:
            return sign * whole(power(15)) /
                   static_cast<double>(power(static_cast<int>(random() % 16)));
        case 5:
            return sign * whole(1'000'000) / 100 * whole(10'000) / 100;
        default:
            return sign * std::ldexp(whole(power(15)), static_cast<int>(random() % 60) - 55);
    }
}

TEST_F(Fields, WritingANumberIsWritingItsText) {
    std::mt19937_64 random(20240531);
    const std::string types = "N23456D0A";
    for (int i = 0; i < 300'000; ++i) {
        const double value = any_value(random);
        const char type = types[random() % types.size()];
        const int length = 1 + static_cast<int>(random() % 18);
        ASSERT_EQ(written(type, length, value), written(type, length, testo_numero(value)))
            << type << length << ' ' << testo_numero(value);
    }
}

/// A number, or nothing where it ends in a failure ("9E99999" is none that a double holds).
template <class Reading>
std::optional<double> outcome(Reading reading) {
    try {
        return reading();
    } catch (const platform::Failure&) {
        return std::nullopt;
    }
}

TEST_F(Fields, ReadingANumberIsReadingItsText) {
    std::mt19937_64 random(31);
    const std::string types = "N23456D0A";
    const std::string characters = "00112233445566778899-  .AE";
    for (int i = 0; i < 300'000; ++i) {
        std::string content(1 + random() % 18, '0');
        const bool plain = (random() & 1U) != 0;
        for (char& c : content) {
            c = characters[random() % (plain ? 20 : characters.size())];
        }
        if (plain && random() % 3 == 0) {
            content.front() = '-';
        }
        const char type = types[random() % types.size()];
        if (static_cast<int>(content.size()) < type - '0' && type >= '2' && type <= '6') {
            continue;
        }
        const auto number = outcome([&] { return read_number(type, content); });
        const auto from_text = outcome([&] { return valore(read(type, content)); });
        ASSERT_EQ(number, from_text) << type << content;
        if (number) {
            ASSERT_EQ(std::signbit(*number), std::signbit(*from_text)) << type << content;
        }
    }
}

}  // namespace
