#include "history/slip_images.h"

#include "context/environment.h"
#include "context/period.h"
#include "context/utilities.h"

namespace NZCedLibPaga {

using MXLIBRERIA::archive_path;
using MXLIBRERIA::ESISTEFILE;
using MXLIBRERIA::kTrue;

SlipImages slip_images;

platform::Table slip_image_schema() {
    using platform::ColumnType;
    return {"CEDSTORICO",
            {{"KDIPENDENTE", ColumnType::key},
             {"KPERIODO", ColumnType::key},
             {"KTIPOELAB", ColumnType::key},
             {"CED_DIPE", ColumnType::text}},
            {"CHIAVE", {"KDIPENDENTE", "KPERIODO", "KTIPOELAB"}, false}};
}

std::string archive_name(const std::string& year, const std::string& month) {
    // The images of 2008 lie in one file for the whole year.
    const std::string name = year == "2008" ? "\\NZCU" + year : "\\NZ" + year + month;
    return archive_path(name + ".MDB");
}

void prepare_name() {
    slip_images.path =
        archive_name(MXLIBRERIA::period.year_text(), MXLIBRERIA::period.month_text());
}

bool archive_exists() {
    return !slip_images.path.empty() && ESISTEFILE(slip_images.path) == kTrue;
}

// Filled when the room of the slip images is built; each does nothing yet.

void open_archive() {}

void close_archive() {}

void prepare_slip() {}

void update_slip() {}

void closing_step_Q970() {}

void closing_step_Q274() {}

void closing_step_net() {}

bool slip_on_file(const std::string& /*employee*/, const std::string& /*yyyymm*/) {
    return false;
}

}  // namespace NZCedLibPaga
