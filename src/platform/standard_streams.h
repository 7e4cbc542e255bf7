#pragma once

namespace platform {

/// Opens the null device on those of descriptors 0 to 2 that the caller has closed, so that no file
/// of the archive gets one of them and takes what is meant for the terminal. To be called before
/// anything is opened; ends the process with status 1 where there is no null device.
void open_standard_streams();

}  // namespace platform
