#pragma once
// Requests to stop from outside: Ctrl-C, the end of the session, a closed terminal. The run asks
// for them between two employees, so that nobody's month is left half written.

#include <exception>

namespace platform {

/// From here on SIGINT, SIGTERM and SIGHUP are requests to stop; a second SIGINT ends the process
/// at once with status 1. A SIGHUP that was ignored at the start (nohup) stays ignored. A closed
/// pipe and a limit on the size of files become failures of the write that meets them.
void listen_to_stop_requests();

[[nodiscard]] bool stop_requested();
/// For tests: as if a request had come, or none.
void set_stop_requested(bool requested);

/// Ends a wait that a request to stop has met; the walks of the selection catch it.
class StopRequested : public std::exception {
  public:
    [[nodiscard]] const char* what() const noexcept override { return "stop requested"; }
};

}  // namespace platform
