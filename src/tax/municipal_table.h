#pragma once
// The municipal rates TABCOM.MDB, table CATASTO: opened at start-up, closed at the end of the run.

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "platform/database.h"

namespace ModSWCALB {

inline constexpr std::size_t kMunicipalBands = 6;
/// Columns of the bands, from the lowest.
inline constexpr std::array<const char*, kMunicipalBands> kLimitColumns{
    "FASCIA", "FASCIA_2", "FASCIA_3", "FASCIA_4", "FASCIA_5", "FASCIA_6"};
inline constexpr std::array<const char*, kMunicipalBands> kRateColumns{
    "aliquota", "aliquota_2", "aliquota_3", "aliquota_4", "aliquota_5", "aliquota_6"};

/// What a municipality charges; amounts in euro, rates in percent. What the table lacks is 0.
struct MunicipalRates {
    struct Band {
        double limit = 0;
        double rate = 0;
    };
    double exempt_up_to = 0;                    ///< ESENZIONE
    std::array<Band, kMunicipalBands> bands{};  ///< FASCIA ... FASCIA_6, aliquota ... aliquota_6
    std::string kind;                           ///< TIPOCALCOLO, without blanks
};
/// TIPOCALCOLO of a municipality that charges by brackets, and of one without a rate of its own.
inline constexpr const char* kByBrackets = "S";
inline constexpr const char* kNoRateOfItsOwn = "**";

/// The open table: lives from start-up to the end of the run.
struct MunicipalTable {
    std::unique_ptr<platform::Database> archive;
    std::unique_ptr<platform::Recordset> rows;
};
extern MunicipalTable municipal_table;

/// The table as it stands in the archive.
[[nodiscard]] platform::Table municipal_schema();

/// Opens the table; called only where the file exists. Failures as platform::open_database; 3265
/// without the column of the codes.
void TABCOM();
void close_TABCOM();

/// Row of a municipality by its code; nothing where there is none or the table is closed.
[[nodiscard]] std::optional<MunicipalRates> municipal_rates(const std::string& code);

}  // namespace ModSWCALB
