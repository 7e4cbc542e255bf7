// Fields of a record against the bare conversion of the same bytes: std::from_chars for reading;
// for writing std::to_chars with 15 digits, and whole cents; for rounding the same two.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench/ratio_reporter.h"
#include "records/dictionary/DIPX.h"
#include "records/fields.h"
#include "records/numbers.h"

namespace {

using namespace MXREPOSITORY;

/// The employee's numeric fields with decimals that do not overlap, as the slip reads and writes
/// them.
const std::vector<Descriptor>& amounts() {
    static const std::vector<Descriptor> fields = [] {
        std::vector<Descriptor> found;
        std::vector<bool> taken(17000, false);
        for (const Descriptor& field : fields_of(Area::DIPX)) {
            const auto first = taken.begin() + field.offset;
            const auto last = first + field.length;
            if (field.decimals() > 0 && std::find(first, last, true) == last) {
                std::fill(first, last, true);
                found.push_back(field);
            }
        }
        return found;
    }();
    return fields;
}

/// Amounts as a slip has them: cents, hourly values, percentages of them; some negative.
std::vector<double> values() {
    std::mt19937 random(20240531);
    std::vector<double> result;
    for (std::size_t i = 0; i < amounts().size(); ++i) {
        const double cents = static_cast<double>(random() % 500'000) / 100;
        const double value = i % 3 == 0 ? cents : i % 3 == 1 ? cents / 173 : cents * 9.19 / 100;
        result.push_back(i % 10 == 9 ? -value : value);
    }
    return result;
}

void fill_employee() {
    area(Area::DIPX).assign(16600, '0');
    const std::vector<double> all = values();
    for (std::size_t i = 0; i < all.size(); ++i) {
        scrivi(amounts()[i], all[i]);
    }
}

void count(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(amounts().size()));
}

void read_field(benchmark::State& state) {
    fill_employee();
    for (auto step : state) {
        (void)step;
        for (const Descriptor& field : amounts()) {
            const double value = num(field);
            benchmark::DoNotOptimize(value);
        }
    }
    count(state);
}

/// The floor of reading: the characters of the field as a number, no point, no sign, no area.
void read_from_chars(benchmark::State& state) {
    fill_employee();
    const std::string& record = area(Area::DIPX);
    for (auto step : state) {
        (void)step;
        for (const Descriptor& field : amounts()) {
            const char* first = record.data() + field.offset - 1;
            double value = 0;
            std::from_chars(first, first + field.length, value);
            benchmark::DoNotOptimize(value);
        }
    }
    count(state);
}

void write_field(benchmark::State& state) {
    fill_employee();
    const std::vector<double> all = values();
    for (auto step : state) {
        (void)step;
        for (std::size_t i = 0; i < all.size(); ++i) {
            scrivi(amounts()[i], all[i]);
        }
        benchmark::ClobberMemory();
    }
    count(state);
}

/// A floor of writing: the number's text of 15 digits, copied over the field's characters.
void write_to_chars(benchmark::State& state) {
    fill_employee();
    const std::vector<double> all = values();
    std::string& record = area(Area::DIPX);
    for (auto step : state) {
        (void)step;
        for (std::size_t i = 0; i < all.size(); ++i) {
            std::array<char, 40> text{};
            std::to_chars(text.data(), text.data() + text.size(), all[i],
                          std::chars_format::general, 15);
            std::memcpy(record.data() + amounts()[i].offset - 1, text.data(),
                        static_cast<std::size_t>(amounts()[i].length));
        }
        benchmark::ClobberMemory();
    }
    count(state);
}

/// The lowest floor: the nearest whole number of cents in digits, without the decimal rounding, the
/// other decimals and the sign that a field has.
void write_cents(benchmark::State& state) {
    fill_employee();
    const std::vector<double> all = values();
    std::string& record = area(Area::DIPX);
    for (auto step : state) {
        (void)step;
        for (std::size_t i = 0; i < all.size(); ++i) {
            char* const field = record.data() + amounts()[i].offset - 1;
            auto cents = static_cast<std::uint64_t>(std::llround(std::abs(all[i]) * 100));
            for (int digit = amounts()[i].length; digit-- > 0; cents /= 10) {
                field[digit] = static_cast<char>('0' + cents % 10);
            }
        }
        benchmark::ClobberMemory();
    }
    count(state);
}

void round_to_cents(benchmark::State& state) {
    const std::vector<double> all = values();
    for (auto step : state) {
        (void)step;
        for (const double value : all) {
            const double rounded = arrotonda(value, 2);
            benchmark::DoNotOptimize(rounded);
        }
    }
    count(state);
}

/// A floor of rounding to the cent: the text of 15 digits that says where the half lies.
void round_to_chars(benchmark::State& state) {
    const std::vector<double> all = values();
    for (auto step : state) {
        (void)step;
        for (const double value : all) {
            std::array<char, 40> text{};
            std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general,
                          15);
            benchmark::DoNotOptimize(text);
        }
    }
    count(state);
}

/// The lowest floor: the nearest binary cent, which takes 1.005 for less than a half.
void round_binary(benchmark::State& state) {
    const std::vector<double> all = values();
    for (auto step : state) {
        (void)step;
        for (const double value : all) {
            const double rounded = std::round(value * 100) / 100;
            benchmark::DoNotOptimize(rounded);
        }
    }
    count(state);
}

BENCHMARK(read_field);
BENCHMARK(read_from_chars);
BENCHMARK(write_field);
BENCHMARK(write_to_chars);
BENCHMARK(write_cents);
BENCHMARK(round_to_cents);
BENCHMARK(round_to_chars);
BENCHMARK(round_binary);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratio("read_field", "read_from_chars");
    reporter.print_ratio("write_field", "write_to_chars");
    reporter.print_ratio("write_field", "write_cents");
    reporter.print_ratio("round_to_cents", "round_to_chars");
    reporter.print_ratio("round_to_cents", "round_binary");
    return 0;
}
