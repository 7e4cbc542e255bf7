#include "platform/stop_request.h"

#include <unistd.h>
#include <csignal>

#include <atomic>

namespace platform {

namespace {

struct Requests {
    std::atomic<bool> stop{false};
    std::atomic<int> interrupts{0};
};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "a signal handler may not wait");
Requests requests;

void ask_to_stop(int signal) {
    constexpr int kInterrupted = 1;
    if (signal == SIGINT && requests.interrupts.fetch_add(1) > 0) {
        ::_exit(kInterrupted);
    }
    requests.stop = true;
}

/// The write that met the signal tells its failure itself. A handler, unlike SIG_IGN, is not handed
/// on to the programs started from here.
void leave_it_to_the_write(int /*signal*/) {}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

bool ignored(int signal) {
    struct sigaction present {};
    return ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

}  // namespace

void listen_to_stop_requests() {
    handle(SIGINT, ask_to_stop);
    handle(SIGTERM, ask_to_stop);
    if (!ignored(SIGHUP)) {
        handle(SIGHUP, ask_to_stop);
    }
    handle(SIGPIPE, leave_it_to_the_write);
    handle(SIGXFSZ, leave_it_to_the_write);
}

bool stop_requested() {
    return requests.stop;
}

void set_stop_requested(bool requested) {
    requests.stop = requested;
    requests.interrupts = 0;
}

}  // namespace platform
