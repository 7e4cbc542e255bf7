#pragma once
// A window for tests: keeps what is shown, answers from a script, and counts as a failure each box
// or question that the test did not announce.

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/window.h"

namespace test_support {

class ScriptedWindow : public platform::Window {
  public:
    struct Box {
        std::string title;
        std::string text;
        platform::Icon icon;
    };

    /// Installs a new scripted window as the window of the run and returns it.
    static ScriptedWindow& install() {
        auto window = std::make_unique<ScriptedWindow>();
        ScriptedWindow& reference = *window;
        platform::set_window(std::move(window));
        return reference;
    }

    /// Announces a box whose text contains `part`; each announcement serves once.
    void expect_box(const std::string& part) { expected_.push_back(part); }
    /// Announces a question whose text contains `part` and its answer.
    void expect_question(const std::string& part, bool yes) {
        expected_.push_back(part);
        answers_.push_back(yes);
    }
    /// Fails if an announced box has not come.
    void verify() {
        for (const std::string& part : expected_) {
            ADD_FAILURE() << "no box with the text: " << part;
        }
        expected_.clear();
    }

    std::vector<Box> boxes;
    std::vector<std::string> lines;
    std::vector<std::string> remarks;
    std::vector<std::string> walks;
    int failure_at_walk = 0;  ///< failure that the beginning of a walk raises; 0: none
    std::string caption;
    std::map<std::pair<platform::Control, int>, std::string> texts;
    std::map<std::pair<platform::Control, int>, bool> visible;
    std::pair<std::size_t, std::size_t> last_progress{0, 0};
    int modal_shows = 0;

    void set_caption(const std::string& text) override { caption = text; }
    void set_text(platform::Control control, int element, const std::string& text) override {
        texts[{control, element}] = text;
    }
    [[nodiscard]] std::string text(platform::Control control, int element) const override {
        const auto found = texts.find({control, element});
        return found == texts.end() ? std::string() : found->second;
    }
    void set_visible(platform::Control control, int element, bool shown) override {
        visible[{control, element}] = shown;
    }
    void set_busy(bool /*hourglass*/) override {}
    void refresh() override {}
    void clear_list() override { lines.clear(); }
    void add_line(const std::string& line) override { lines.push_back(line); }
    [[nodiscard]] std::size_t line_count() const override { return lines.size(); }
    void box(const std::string& title, const std::string& text, platform::Icon icon) override {
        boxes.push_back({title, text, icon});
        take_expected(text);
    }
    [[nodiscard]] bool ask(const std::string& title, const std::string& text,
                           platform::Icon icon) override {
        boxes.push_back({title, text, icon});
        take_expected(text);
        if (answers_.empty()) {
            return false;
        }
        const bool yes = answers_.front();
        answers_.pop_front();
        return yes;
    }
    void remark(const std::string& text) override { remarks.push_back(text); }
    void begin_walk(const std::string& label, int from, int to) override {
        walks.push_back(label + " " + std::to_string(from) + "-" + std::to_string(to));
        if (failure_at_walk != 0) {
            throw platform::Failure(failure_at_walk);
        }
    }
    void progress(std::size_t done, std::size_t total) override { last_progress = {done, total}; }
    void show_modal() override { ++modal_shows; }

  private:
    void take_expected(const std::string& text) {
        for (auto it = expected_.begin(); it != expected_.end(); ++it) {
            if (text.find(*it) != std::string::npos) {
                expected_.erase(it);
                return;
            }
        }
        ADD_FAILURE() << "a message that the test did not expect: " << text;
    }

    std::deque<std::string> expected_;
    std::deque<bool> answers_;
};

}  // namespace test_support
