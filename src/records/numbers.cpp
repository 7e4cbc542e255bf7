#include "records/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/failure.h"
#include "records/powers_of_ten.h"

namespace MXREPOSITORY {

using platform::Failure;

namespace {

constexpr int kSignificantDigits = 15;
constexpr std::uint64_t kLargestExactMantissa = std::uint64_t{1} << 53U;
constexpr int kLargestExponent = 400;  ///< beyond the exponents of all numbers

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// End of the number that starts at `text[0]` (after blanks): digits, point, digits, exponent.
std::size_t number_end(std::string_view text) {
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        ++i;
    }
    bool digits = false;
    for (; i < text.size() && is_digit(text[i]); ++i) {
        digits = true;
    }
    if (i < text.size() && text[i] == '.') {
        ++i;
        for (; i < text.size() && is_digit(text[i]); ++i) {
            digits = true;
        }
    }
    if (!digits) {
        return 0;
    }
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '-' || text[j] == '+')) {
            ++j;
        }
        const std::size_t first = j;
        for (; j < text.size() && is_digit(text[j]); ++j) {
        }
        if (j > first) {
            i = j;
        }
    }
    return i;
}

}  // namespace

double Int(double x) {
    return std::floor(x);
}

double Fix(double x) {
    return std::trunc(x);
}

double valore(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(first);

    // The ordinary case: sign, at most 15 digits, a point. The quotient of two whole numbers that a
    // double holds exactly is the nearest double of the decimal text.
    std::size_t i = 0;
    const bool negative = text[0] == '-';
    if (negative || text[0] == '+') {
        ++i;
    }
    std::uint64_t mantissa = 0;
    std::size_t decimals = 0;
    bool point = false;
    bool digits = false;
    for (; i < text.size(); ++i) {
        if (is_digit(text[i])) {
            if (mantissa >= kLargestExactMantissa / 10 - 1) {
                break;
            }
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(text[i] - '0');
            decimals += point ? 1 : 0;
            digits = true;
        } else if (text[i] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    const bool plain_end =
        i == text.size() || (!is_digit(text[i]) && text[i] != 'E' && text[i] != 'e');
    if (plain_end && decimals < kPowersOfTen.size()) {
        if (!digits) {
            return 0;
        }
        const double value = static_cast<double>(mantissa) / kPowersOfTen[decimals];
        return negative ? -value : value;
    }

    const std::size_t end = number_end(text);
    if (end == 0) {
        return 0;
    }
    std::string_view number = text.substr(0, end);
    if (number.front() == '+') {
        number.remove_prefix(1);
    }
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Either far too large, a failure, or so small that it is 0.
        if (number.find('-', 1) != std::string_view::npos) {
            return 0;
        }
        throw Failure(platform::kOverflow);
    }
    return value;
}

std::string testo_numero(double value) {
    if (!std::isfinite(value)) {
        throw Failure(platform::kOverflow);
    }
    if (value == 0) {
        return "0";
    }
    std::array<char, 40> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                      std::chars_format::scientific, kSignificantDigits - 1);
    // d.ddddddddddddddE+xx: the digits without point and trailing zeros, and the exponent.
    std::array<char, kSignificantDigits> digits{};
    digits[0] = buffer[0];
    std::copy_n(buffer.data() + 2, kSignificantDigits - 1, digits.data() + 1);
    std::size_t count = kSignificantDigits;
    while (count > 1 && digits[count - 1] == '0') {
        --count;
    }
    int exponent = 0;
    const char* exponent_text = buffer.data() + kSignificantDigits + 2;
    std::from_chars(*exponent_text == '+' ? exponent_text + 1 : exponent_text, written.ptr,
                    exponent);

    std::string text;
    text.reserve(24);
    if (value < 0) {
        text += '-';
    }
    const int length = static_cast<int>(count);
    if (exponent >= 0 && exponent < kSignificantDigits) {
        const int whole = exponent + 1;
        text.append(digits.data(), static_cast<std::size_t>(std::min(whole, length)));
        if (whole > length) {
            text.append(static_cast<std::size_t>(whole - length), '0');
        } else if (length > whole) {
            text += '.';
            text.append(digits.data() + whole, static_cast<std::size_t>(length - whole));
        }
        return text;
    }
    if (exponent < 0 && length - 1 - exponent <= kSignificantDigits) {
        text += '.';
        text.append(static_cast<std::size_t>(-exponent - 1), '0');
        text.append(digits.data(), count);
        return text;
    }
    text += digits[0];
    if (length > 1) {
        text += '.';
        text.append(digits.data() + 1, count - 1);
    }
    text += exponent < 0 ? "E-" : "E+";
    const std::string size = std::to_string(std::abs(exponent));
    if (size.size() < 2) {
        text += '0';
    }
    return text + size;
}

void NORMALIZZAESPONENTE(std::string& text) {
    std::size_t mark = text.find("E+");
    if (mark == std::string::npos) {
        mark = text.find("E-");
    }
    if (mark == std::string::npos) {
        return;
    }
    int exponent = 0;
    const char* first = text.data() + mark + 2;
    const auto read = std::from_chars(first, text.data() + text.size(), exponent);
    if (read.ec == std::errc::result_out_of_range || std::abs(exponent) > kLargestExponent) {
        throw Failure(platform::kOverflow);
    }
    if (text[mark + 1] == '-') {
        exponent = -exponent;
    }
    std::string mantissa = text.substr(0, mark);
    std::string sign;
    if (!mantissa.empty() && (mantissa.front() == '-' || mantissa.front() == '+')) {
        sign = mantissa.front();
        mantissa.erase(0, 1);
    }
    const std::size_t separator = mantissa.find_first_of(",.");
    std::string whole = "0" + mantissa.substr(0, separator);
    std::string fraction =
        (separator == std::string::npos ? std::string() : mantissa.substr(separator + 1)) + "0";
    for (; exponent > 0; --exponent) {
        whole += fraction.front();
        fraction.erase(0, 1);
        if (fraction.empty()) {
            fraction = "0";
        }
    }
    for (; exponent < 0; ++exponent) {
        fraction.insert(fraction.begin(), whole.back());
        whole.pop_back();
        if (whole.empty()) {
            whole = "0";
        }
    }
    text = sign;
    text.append(whole).append(".").append(fraction);
}

double dividi(double dividend, double divisor) {
    if (divisor == 0) {
        throw Failure(platform::kDivisionByZero);
    }
    return dividend / divisor;
}

std::int16_t intero16(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= -32768 && whole <= 32767)) {
        throw Failure(platform::kOverflow);
    }
    return static_cast<std::int16_t>(whole);
}

std::string zeri_a_sinistra(std::string_view text, std::size_t width) {
    if (text.size() >= width) {
        return std::string(text.substr(text.size() - width));
    }
    std::string result(width - text.size(), '0');
    result += text;
    return result;
}

std::string a_sinistra(std::string_view text, std::size_t width) {
    std::string result(text.substr(0, width));
    result.resize(width, ' ');
    return result;
}

std::string rifila(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string rifila_destra(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string_view ritaglia(std::string_view text, std::size_t position, std::size_t length) {
    if (position == 0 || position > text.size()) {
        return {};
    }
    return text.substr(position - 1, length);
}

std::string_view destra(std::string_view text, std::size_t length) {
    return text.substr(text.size() - std::min(length, text.size()));
}

}  // namespace MXREPOSITORY
