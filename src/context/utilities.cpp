#include "context/utilities.h"

#include <cmath>

#include "platform/failure.h"
#include "platform/file_system.h"
#include "platform/registry.h"
#include "records/numbers.h"

namespace MXLIBRERIA {

using namespace MXREPOSITORY;

int ESISTEFILE(const std::string& path) {
    try {
        if (!platform::files().exists(path)) {
            return 0;
        }
        static_cast<void>(platform::files().open(path, platform::OpenMode::read_only));
        return kTrue;
    } catch (const platform::Failure&) {
        return 0;  // Whatever refuses the file, it is not there to be read.
    }
}

void COPIAFILE(const std::string& source, const std::string& target) {
    if (ESISTEFILE(target) == kTrue) {
        platform::files().remove(target);
    }
    platform::files().copy(source, target);
}

int BISESTILE(double year) {
    const auto divisible = [year](double by) { return std::fmod(year, by) == 0; };
    if (!divisible(4)) {
        return 0;
    }
    return !divisible(100) || divisible(400) ? kTrue : 0;
}

double TRONCA(double value) {
    constexpr double kBinaryNoise = 0.000001;
    return Fix(value + kBinaryNoise);
}

std::string INTEROTESTO(double value) {
    constexpr double kMargin = 0.1;
    return testo_numero(Fix(value < 0 ? value - kMargin : value + kMargin));
}

// ---- Registry ----

namespace {

constexpr std::string_view kCurrentUser = "HKEY_CURRENT_USER";
constexpr int kTextValue = 1;
constexpr int kNumberValue = 4;

}  // namespace

std::string LEGGIREGISTRO(const std::string& root, const std::string& key,
                          const std::string& value) {
    if (root != kCurrentUser || !platform::registry().has_key(key)) {
        return {};
    }
    return LEGGIVALOREREGISTRO(key, value);
}

std::string LEGGIVALOREREGISTRO(const std::string& open_key, const std::string& value) {
    const std::optional<platform::RegistryValue> stored =
        platform::registry().value(open_key, value);
    if (!stored) {
        return {};
    }
    if (stored->type == kTextValue) {
        return stored->text.substr(0, stored->text.find('\0'));
    }
    return stored->type == kNumberValue ? stored->text : std::string();
}

// ---- Dates ----

double yyyymm_of(const std::string& ddmmyyyy) {
    return valore(ritaglia(ddmmyyyy, 5, 4)) * 100 + valore(ritaglia(ddmmyyyy, 3, 2));
}

int days_of_month(int month, int year) {
    constexpr int kFebruary = 2;
    if (month == kFebruary) {
        return BISESTILE(year) == kTrue ? 29 : 28;
    }
    const bool short_month = month == 4 || month == 6 || month == 9 || month == 11;
    return short_month ? 30 : 31;
}

}  // namespace MXLIBRERIA
