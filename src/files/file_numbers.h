#pragma once
// The logical numbers of the files, as NZBASE.DAT counts them. Names on disk and record lengths
// stand there; docs/formats.md says what each file holds.

#include <algorithm>
#include <array>

namespace MXLIBRERIA::file_numbers {

inline constexpr int kCompanies = 1;
inline constexpr int kEmployees = 2;
inline constexpr int kSelection = 5;
inline constexpr int kPeriod = 6;  ///< period of the run, and the contract in use behind it
inline constexpr int kSectors = 8;
inline constexpr int kEmployeeFields = 11;  ///< dictionary of letter P, for the history too
inline constexpr int kSemaphore = 16;       ///< shared with the other programs of the suite
inline constexpr int kTaxBrackets = 18;     ///< brackets of income tax, deductions behind them
inline constexpr int kFixedData = 19;       ///< the tables of the year
inline constexpr int kSlipImages = 23;      ///< a table of the slip images
inline constexpr int kBeforeImages = 35;
inline constexpr int kBeforeImageIndex = 36;
inline constexpr int kInstallation = 55;
inline constexpr int kContracts = 71;
inline constexpr int kTwelveMonths = 97;           ///< an employee's months of the year
inline constexpr int kPensionFundTexts = 190;      ///< text
inline constexpr int kFirstAllowanceTable = 232;   ///< tables of family allowance by digit ...
inline constexpr int kLetterAllowanceTable = 245;  ///< ... and from here on by letter
inline constexpr int kLastAllowanceTable = 252;
inline constexpr int kDailyWages = 260;  ///< text: daily wages of entertainers
inline constexpr int kSeveranceBrackets = 276;
inline constexpr int kYearTables = 278;
inline constexpr int kCertificates = 354;
inline constexpr int kFormerCertificates = 355;
inline constexpr int kCertificateIndex = 356;
inline constexpr int kFormerCertificateIndex = 357;
inline constexpr int kHistoryColumns = 386;  ///< dictionary of letter V
inline constexpr int kHistory = 387;
inline constexpr int kHistoryIndex = 389;
inline constexpr int kUser = 395;
inline constexpr int kPayItems = 401;
inline constexpr int kPensionFunds = 403;
inline constexpr int kRegions = 430;  ///< text: table of the regions

/// Dictionary files of a code letter; 0 where there are fewer than three.
struct DictionaryFiles {
    char letter;
    std::array<int, 3> files;
};
inline constexpr std::array<DictionaryFiles, 24> kDictionaryFiles{{
    {'A', {359, 0, 0}},   {'B', {47, 0, 0}},
    {'E', {25, 0, 0}},    {'F', {9, 0, 0}},
    {'G', {70, 0, 0}},    {'H', {73, 74, 0}},
    {'I', {17, 0, 0}},    {'J', {99, 100, 103}},
    {'K', {412, 0, 0}},   {'L', {415, 0, 0}},
    {'M', {62, 0, 0}},    {'N', {64, 0, 0}},
    {'O', {383, 384, 0}}, {'P', {kEmployeeFields, 0, 0}},
    {'Q', {33, 0, 0}},    {'R', {404, 0, 0}},
    {'S', {10, 0, 0}},    {'T', {13, 0, 0}},
    {'U', {421, 0, 0}},   {'V', {kHistoryColumns, 0, 0}},
    {'W', {163, 0, 0}},   {'X', {353, 0, 0}},
    {'Y', {21, 0, 0}},    {'Z', {402, 0, 0}},
}};

/// The files of a letter; a letter without any has three zeros.
[[nodiscard]] constexpr std::array<int, 3> dictionary_files(char letter) {
    const auto* row = std::ranges::find(kDictionaryFiles, letter, &DictionaryFiles::letter);
    return row == kDictionaryFiles.end() ? std::array<int, 3>{} : row->files;
}

}  // namespace MXLIBRERIA::file_numbers
