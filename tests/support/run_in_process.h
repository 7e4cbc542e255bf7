#pragma once
// Whole runs in the process of the test.

#include <memory>
#include <utility>

#include "context/environment.h"
#include "context/period.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "formulas/named_access.h"
#include "platform/failure.h"
#include "platform/file_system.h"
#include "platform/window.h"
#include "records/fields.h"
#include "run/load_environment.h"
#include "run/main_run.h"
#include "slip/slip.h"

namespace test_support {

/// What is in memory goes with the process.
inline void forget_run() {
    platform::set_files(nullptr);
    ModSWCALM::instance_lock = {};
    MXLIBRERIA::recovery_slot = {};
    MXLIBRERIA::CHIUDI(0);
    MXLIBRERIA::file_table = {};
    MXLIBRERIA::environment = {};
    MXLIBRERIA::period = {};
    ModSWCALM::run_tables = {};
    ModSWCALM::company = {};
    ModSWCALM::slip = {};
    MXREPOSITORY::clear_areas();
    MXREPOSITORY::repository = {};
}

/// A run to its end, with nothing in memory before it; the exit status. The window stays.
inline int run_here(std::unique_ptr<platform::Window> window) {
    platform::set_window(std::move(window));
    try {
        ModSWCALM::MAIN();
    } catch (const platform::EndOfProgram& end) {
        return end.status;
    }
    return 0;
}

}  // namespace test_support
