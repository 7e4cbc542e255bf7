#pragma once
// The files that a walk of the selection touches, with one company, its sector and two employees.

#include <string>

#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "records/dictionary/DICX.h"
#include "records/dictionary/DIPX.h"
#include "records/dictionary/DITX.h"
#include "records/dictionary/SETX.h"
#include "records/fields.h"
#include "tests/support/logical_files.h"
#include "tests/support/record_areas.h"

namespace run_tests {

using namespace MXLIBRERIA::file_numbers;

inline constexpr std::size_t kCompanyLength = 6600;
inline constexpr std::size_t kEmployeeLength = 16600;
inline constexpr std::size_t kSectorLength = 1400;
inline constexpr std::size_t kMonthsLength = 7800;
inline constexpr std::size_t kYearlyLength = 3100;
inline constexpr std::size_t kCertificateLength = 6100;
inline constexpr std::size_t kKeyWidth = 10;

/// A record with some fields set; the others empty.
class Record {
  public:
    Record(MXREPOSITORY::Area area, std::size_t length)
        : text_(test_support::empty_record(area, length)) {}
    Record& set(const MXREPOSITORY::Descriptor& field, double value, int occurrence = 0) {
        MXREPOSITORY::SCRIVICAMPONUM(field, value, static_cast<std::int16_t>(occurrence), text_);
        return *this;
    }
    Record& set(const MXREPOSITORY::Descriptor& field, std::string value) {
        MXREPOSITORY::SCRIVICAMPO(field, value, 0, text_);
        return *this;
    }
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    std::string text_;
};

inline double value_of(const MXREPOSITORY::Descriptor& field, const std::string& record,
                       int occurrence = 0) {
    return MXREPOSITORY::LEGGICAMPONUM(field, static_cast<std::int16_t>(occurrence), record);
}
inline std::string text_of(const MXREPOSITORY::Descriptor& field, const std::string& record) {
    return MXREPOSITORY::LEGGICAMPO(field, 0, record);
}

/// Employee n of company 1: code 001001000n, born to be changed by the test.
inline Record employee(int n) {
    Record record(MXREPOSITORY::Area::DIPX, kEmployeeLength);
    record.set(MXREPOSITORY::P001, "001001000" + std::to_string(n))
        .set(MXREPOSITORY::P002, "ROSSI")
        .set(MXREPOSITORY::P003, "MARIA");
    return record;
}

inline Record company(int n) {
    Record record(MXREPOSITORY::Area::DITX, kCompanyLength);
    record.set(MXREPOSITORY::T001, n)
        .set(MXREPOSITORY::T002, "DITTA DI PROVA")
        .set(MXREPOSITORY::T067, 1);
    return record;
}

using test_support::LogicalFiles;

inline std::string name_of(int file) {
    return test_support::DictionaryArchive::name_of(file);
}
/// Whole records that a file holds.
inline std::size_t records(const LogicalFiles& files, int n) {
    const auto length = static_cast<std::size_t>(MXLIBRERIA::FAIOPEN(n));
    MXLIBRERIA::CHIUDI(n);
    return files.directory().read(name_of(n)).size() / length;
}

/// Entry of the selection.
inline std::string entry(const std::string& company, const std::string& employee) {
    return company + "000" + employee;
}
inline const std::string kEnd = "9999999999";

/// Defines and fills the files of a walk: company 1 of sector 1, employees 1 and 2 with their
/// twelve-month tables, empty indexes of before-images and
/// certificates.
inline void define_payroll(LogicalFiles& installation) {
    using MXREPOSITORY::Area;
    installation.define(kCompanies, kCompanyLength);
    installation.define(kEmployees, kEmployeeLength);
    installation.define(kSelection, 200);
    installation.define(kPeriod, 20);
    installation.define(kSectors, kSectorLength);
    installation.define(kSemaphore, 2000);
    installation.define(kBeforeImages, kEmployeeLength);
    installation.define(kBeforeImageIndex, (kKeyWidth + 7) * 128);
    installation.define(kTwelveMonths, kMonthsLength);
    installation.define(kCertificates, kCertificateLength);
    installation.define(kCertificateIndex, (kKeyWidth + 7) * 128);
    installation.put(kCompanies, 1, company(1).text());
    installation.put(kEmployees, 1, employee(1).text());
    installation.put(kEmployees, 2, employee(2).text());
    installation.put(kSectors, 1, Record(Area::SETX, kSectorLength).text());
    installation.put(kTwelveMonths, 1, Record(Area::DICX, kMonthsLength).text());
    installation.put(kTwelveMonths, 2, Record(Area::DICX, kMonthsLength).text());
    for (const int index : {36, 356}) {
        MXLIBRERIA::FAIOPEN(index);
        static_cast<void>(MXLIBRERIA::ISAM(index, "", MXLIBRERIA::kIsamEmpty, 0));
    }
    MXLIBRERIA::CHIUDI(0);
}

}  // namespace run_tests
