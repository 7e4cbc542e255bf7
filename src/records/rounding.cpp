// Rounding on the decimal text, and the amount format.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "records/numbers.h"
#include "records/powers_of_ten.h"

namespace MXREPOSITORY {

namespace {

/// Units of the last decimal as a rounded text: "0.50", and "-.50" below 1.
std::string text_of_units(std::uint64_t units, std::size_t decimals, bool negative) {
    std::array<char, 24> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), units);
    const std::string_view number(digits.data(),
                                  static_cast<std::size_t>(written.ptr - digits.data()));
    std::string text;
    if (negative) {
        text += '-';
    }
    if (number.size() > decimals) {
        text += number.substr(0, number.size() - decimals);
        text += '.';
        text += number.substr(number.size() - decimals);
        return text;
    }
    text += negative ? "." : "0.";
    text.append(decimals - number.size(), '0');
    text += number;
    return text;
}

}  // namespace

std::string ARROTONDATESTO(double value, std::int16_t& decimals) {
    if (decimals == 0) {
        decimals = 2;
    }
    if (const auto units = plain_units(std::abs(value), decimals)) {
        return text_of_units(*units, static_cast<std::size_t>(decimals), value < 0);
    }
    std::string half_text = "0.";
    half_text.append(static_cast<std::size_t>(std::max<int>(decimals, 0)), '0');
    half_text += '5';
    const double half = valore(half_text);
    std::string text = testo_numero(value >= 0 ? value + half : value - half);
    NORMALIZZAESPONENTE(text);
    const auto wanted = static_cast<std::size_t>(std::max<int>(decimals, 0));
    const std::size_t point = text.find_first_of(",.");
    if (point == std::string::npos) {
        text += '.';
        text.append(wanted, '0');
    } else {
        text[point] = '.';
        text.append(wanted, '0');
        text.resize(point + 1 + wanted);
    }
    if (text.front() == '.') {
        text.insert(text.begin(), '0');
    }
    return text;
}

std::string arrotondato_testo(double value, int decimals) {
    auto places = static_cast<std::int16_t>(decimals);
    return ARROTONDATESTO(value, places);
}

double arrotonda(double value, int decimals) {
    if (decimals > 0) {
        if (const auto units = plain_units(std::abs(value), decimals)) {
            const double rounded =
                static_cast<double>(*units) / kPowersOfTen[static_cast<std::size_t>(decimals)];
            return value < 0 ? -rounded : rounded;
        }
    }
    return valore(arrotondato_testo(value, decimals));
}

std::optional<std::uint64_t> plain_units(double magnitude, int decimals) {
    // Two roundings to 15 digits, one product and one sum move the value by less than 2E-14 of
    // itself, 0.002 units below 10^11: a fraction further than that from a whole unit is safe.
    constexpr double kUnitsLimit = 1e11;
    constexpr double kMargin = 0.01;
    constexpr int kDecimalsLimit = 9;
    if (decimals < 1 || decimals > kDecimalsLimit) {
        return std::nullopt;
    }
    const double with_half = magnitude * kPowersOfTen[static_cast<std::size_t>(decimals)] + 0.5;
    if (!(with_half < kUnitsLimit)) {
        return std::nullopt;
    }
    const auto units = static_cast<std::uint64_t>(with_half);
    const double fraction = with_half - static_cast<double>(units);
    if (fraction < kMargin || fraction > 1 - kMargin) {
        return std::nullopt;
    }
    return units;
}

double unita(double x) {
    return Int(x + 0.5);
}

std::string formato_importo(double value) {
    // The 15-digit decimal text, rounded half away from zero in decimal.
    std::string text = testo_numero(std::abs(value));
    NORMALIZZAESPONENTE(text);
    std::size_t point = text.find('.');
    if (point == std::string::npos) {
        point = text.size();
        text += '.';
    }
    text += "000";
    const bool up = text[point + 3] >= '5';
    text.resize(point + 3);
    if (up) {
        for (std::size_t i = text.size(); i-- > 0;) {
            if (text[i] == '.') {
                continue;
            }
            if (text[i] != '9') {
                ++text[i];
                break;
            }
            text[i] = '0';
            if (i == 0) {
                text.insert(text.begin(), '1');
            }
        }
    }
    const std::size_t first = text.find_first_not_of('0');
    text.erase(0, std::min(first, text.find('.')));
    if (text.front() == '.') {
        text.insert(text.begin(), '0');
    }
    const bool zero = text == "0.00";
    return value < 0 && !zero ? "-" + text : text;
}

double importo(double value) {
    return valore(formato_importo(value));
}

}  // namespace MXREPOSITORY
