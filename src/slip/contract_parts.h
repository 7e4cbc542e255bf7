#pragma once
// What the parts of the pay scale share: the copy of the employee's record (slip.record_copy), and
// the phases that PASSQUAL runs in order on the contract in CONX$.

#include <array>
#include <cstdint>
#include <string>

#include "files/logical_files.h"
#include "records/dictionary/CONX.h"
#include "records/fields.h"
#include "slip/slip.h"

namespace ModSWCALM {

/// Minimum pay and the other pay elements of a grade.
inline constexpr std::array<MXREPOSITORY::Descriptor, 8> kPayElements{
    MXREPOSITORY::G022, MXREPOSITORY::G023, MXREPOSITORY::G024, MXREPOSITORY::G025,
    MXREPOSITORY::G026, MXREPOSITORY::G027, MXREPOSITORY::G028, MXREPOSITORY::G029};

inline double copy_num(const MXREPOSITORY::Descriptor& field) {
    return MXREPOSITORY::LEGGICAMPONUM(field, 0, slip.record_copy);
}

inline std::string copy_text(const MXREPOSITORY::Descriptor& field) {
    return MXREPOSITORY::LEGGICAMPO(field, 0, slip.record_copy);
}

inline void copy_write(const MXREPOSITORY::Descriptor& field, double value) {
    MXREPOSITORY::SCRIVICAMPONUM(field, value, 0, slip.record_copy);
}

inline bool file_is_open(double n) {
    return MXLIBRERIA::file_table.entries.at(static_cast<std::size_t>(n)).CANALI != 0;
}

/// P026, the amount of one step, and P061, the seniority pay, by the rule of the contract.
void set_contract_seniority(std::int16_t grade);

/// The pay elements of the grade into the employee's, those by the month brought to the hour where
/// P334 and P175 ask for it.
void copy_scale(std::int16_t grade);

}  // namespace ModSWCALM
