#pragma once
// A window without a screen, for the support tool, tests and benchmarks: keeps the lines of the
// list, counts boxes and questions, and answers every question with No.

#include <cstddef>
#include <string>
#include <vector>

#include "platform/window.h"

namespace platform {

class SilentWindow : public Window {
  public:
    std::vector<std::string> lines;
    std::size_t boxes = 0;

    void set_caption(const std::string& /*text*/) override {}
    void set_text(Control /*control*/, int /*element*/, const std::string& /*text*/) override {}
    [[nodiscard]] std::string text(Control /*control*/, int /*element*/) const override {
        return {};
    }
    void set_visible(Control /*control*/, int /*element*/, bool /*visible*/) override {}
    void set_busy(bool /*hourglass*/) override {}
    void refresh() override {}
    void clear_list() override { lines.clear(); }
    void add_line(const std::string& line) override { lines.push_back(line); }
    [[nodiscard]] std::size_t line_count() const override { return lines.size(); }
    void box(const std::string& /*title*/, const std::string& /*text*/, Icon /*icon*/) override {
        ++boxes;
    }
    [[nodiscard]] bool ask(const std::string& /*title*/, const std::string& /*text*/,
                           Icon /*icon*/) override {
        ++boxes;
        return false;
    }
    void progress(std::size_t /*done*/, std::size_t /*total*/) override {}
    void show_modal() override {}
};

}  // namespace platform
