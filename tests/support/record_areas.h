#pragma once
// Record areas for tests: each as long as a record of our installation, numeric fields in zeros,
// text fields in blanks.

#include <string>

#include "records/descriptor.h"
#include "records/fields.h"

namespace test_support {

/// An empty record of an area: blanks, and zeros in every numeric field.
inline std::string empty_record(MXREPOSITORY::Area area, std::size_t length) {
    std::string record(length, ' ');
    for (const MXREPOSITORY::Descriptor& field : MXREPOSITORY::fields_of(area)) {
        if (field.type != 'A') {
            record.replace(static_cast<std::size_t>(field.offset - 1),
                           static_cast<std::size_t>(field.length),
                           static_cast<std::size_t>(field.length), '0');
        }
    }
    return record;
}

/// Fills all nine areas with empty records.
inline void fill_areas() {
    using MXREPOSITORY::Area;
    struct Length {
        Area area;
        std::size_t length;
    };
    for (const Length row :
         {Length{Area::DITX, 6600}, Length{Area::DIPX, 16600}, Length{Area::FISX, 3100},
          Length{Area::SETX, 1400}, Length{Area::FOTX, 1500}, Length{Area::DICX, 7800},
          Length{Area::CONX, 6000}, Length{Area::CUDX, 6100}, Length{Area::FOPX, 700}}) {
        MXREPOSITORY::area(row.area) = empty_record(row.area, row.length);
    }
}

}  // namespace test_support
