#include "platform/window.h"

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <utility>

#include "platform/terminal_texts.h"

namespace platform {

namespace {

struct WindowInUse {
    std::unique_ptr<Window> window;
};
WindowInUse window_in_use;

}  // namespace

Window& window() {
    if (window_in_use.window == nullptr) {
        window_in_use.window = make_terminal_window();
    }
    return *window_in_use.window;
}

void set_window(std::unique_ptr<Window> other) {
    window_in_use.window = std::move(other);
}

std::unique_ptr<Window> make_window_from_environment() {
    const char* wanted = std::getenv("VELMOR_INTERFACCIA");
    if (wanted != nullptr && std::string_view(wanted) == "finestra") {
        std::cerr << terminal_texts::kNoGraphicWindow << std::endl;
    }
    return make_terminal_window();
}

}  // namespace platform
