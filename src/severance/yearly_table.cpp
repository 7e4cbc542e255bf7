#include "severance/yearly_table.h"

#include <string>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "records/fields.h"

namespace ModSwCalm2 {

using MXLIBRERIA::file_numbers::kFixedData;

void write_yearly(const MXREPOSITORY::Descriptor& field, double value) {
    MXREPOSITORY::scrivi(field, value);
    const auto& file = MXLIBRERIA::file_table.entries[static_cast<std::size_t>(kFixedData)];
    if (file.CANALI == 0 || MXLIBRERIA::LEGGIREC(kFixedData, 1) == 1) {
        return;
    }
    std::string record = MXLIBRERIA::record_buffer(kFixedData);
    MXREPOSITORY::SCRIVICAMPONUM(field, value, 0, record);
    MXLIBRERIA::write_whole_record(kFixedData, 1, record);
}

}  // namespace ModSwCalm2
