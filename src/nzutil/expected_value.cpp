#include "nzutil/expected_value.h"

#include <cmath>

#include "installation/field_value.h"
#include "platform/code_page.h"
#include "records/fields.h"
#include "records/meanings.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

/// Less than half of the last decimal of any field: binary noise of a difference.
constexpr double kNoise = 0.0000001;

bool is_near(double found, const FieldValue& expected) {
    const double tolerance = MXREPOSITORY::valore(expected.tolerance);
    return std::fabs(found - MXREPOSITORY::valore(expected.value)) <= tolerance + kNoise;
}

std::string with_tolerance(const std::string& wanted, const FieldValue& expected) {
    return expected.tolerance.empty()
               ? wanted
               : fill(texts::kToolWithTolerance, {wanted, expected.tolerance});
}

std::string place_of(const FieldValue& value) {
    std::string place(value.field.name());
    if (value.occurrence != 0) {
        place += "(" + std::to_string(value.occurrence) + ")";
    }
    return place;
}

std::string meaning_in(const FieldValue& value) {
    return platform::to_utf8(MXREPOSITORY::meaning_of(value.field.name()));
}

}  // namespace

std::optional<Difference> compare_value(const FieldValue& expected, const std::string& record) {
    const std::string wanted = as_stored(expected.field, expected.value);
    const std::string found = shown(expected.field, expected.occurrence, record);
    if (wanted == found ||
        (!expected.tolerance.empty() && is_near(MXREPOSITORY::valore(found), expected))) {
        return std::nullopt;
    }
    return Difference{place_of(expected), with_tolerance(platform::to_terminal(wanted), expected),
                      platform::to_terminal(found), meaning_in(expected)};
}

std::optional<Difference> compare_sum(const FieldValue& expected, double sum) {
    if (is_near(sum, expected)) {
        return std::nullopt;
    }
    const int decimals = expected.field.decimals();
    const auto text = [decimals](double number) {
        return MXREPOSITORY::arrotondato_testo(number, decimals);
    };
    return Difference{fill(texts::kToolPlaceSum, {place_of(expected)}),
                      with_tolerance(text(MXREPOSITORY::valore(expected.value)), expected),
                      text(sum), meaning_in(expected)};
}

}  // namespace nzutil
