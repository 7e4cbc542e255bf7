#pragma once
// A window that shows nothing and counts its boxes.

#include <cstddef>
#include <string>

#include "platform/window.h"

namespace fuzz {

class SilentWindow : public platform::Window {
  public:
    std::size_t boxes = 0;

    void set_caption(const std::string& /*text*/) override {}
    void set_text(platform::Control /*control*/, int /*element*/,
                  const std::string& /*text*/) override {}
    [[nodiscard]] std::string text(platform::Control /*control*/, int /*element*/) const override {
        return {};
    }
    void set_visible(platform::Control /*control*/, int /*element*/, bool /*visible*/) override {}
    void set_busy(bool /*hourglass*/) override {}
    void refresh() override {}
    void clear_list() override {}
    void add_line(const std::string& /*line*/) override {}
    [[nodiscard]] std::size_t line_count() const override { return 0; }
    void box(const std::string& /*title*/, const std::string& /*text*/,
             platform::Icon /*icon*/) override {
        ++boxes;
    }
    [[nodiscard]] bool ask(const std::string& /*title*/, const std::string& /*text*/,
                           platform::Icon /*icon*/) override {
        ++boxes;
        return false;
    }
    void progress(std::size_t /*done*/, std::size_t /*total*/) override {}
    void show_modal() override {}
};

}  // namespace fuzz
