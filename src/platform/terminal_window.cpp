// The run on a terminal: LIST1 and boxes on standard output, progress on standard error.

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/file_system.h"
#include "platform/stop_request.h"
#include "platform/terminal_texts.h"
#include "platform/window.h"

namespace platform {

namespace {

/// CR LF and CR alone, the line ends of the boxes, as line ends of the terminal.
std::string with_line_ends(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            out += '\n';
            i += i + 1 < text.size() && text[i + 1] == '\n' ? 1U : 0U;
        } else {
            out += text[i];
        }
    }
    return out;
}

/// A line of the list stays one line: line ends inside it become blanks.
std::string on_one_line(std::string line) {
    line = with_line_ends(line);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

/// The text of a box for the terminal, which obeys nothing in it but its line ends.
std::string box_text(const std::string& text) {
    const std::string lines = with_line_ends(text);
    std::string out;
    for (std::size_t start = 0; start <= lines.size();) {
        const std::size_t end = std::min(lines.find('\n', start), lines.size());
        out += (start == 0 ? "" : "\n") + to_terminal(lines.substr(start, end - start));
        start = end + 1;
    }
    return out;
}

/// `si` or `no` (also `sì`, `s`, `n`) in any case; nothing for any other text.
std::optional<bool> answer_of(std::string_view text) {
    std::string word;
    for (const char c : text) {
        if (c != ' ' && c != '\t' && c != '\r') {
            word += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    if (word == terminal_texts::kYes || word == "s" || word == "s\xC3\xAC" || word == "s\xEC") {
        return true;
    }
    if (word == terminal_texts::kNo || word == "n") {
        return false;
    }
    return std::nullopt;
}

/// VELMOR_RISPOSTE; empty where it is not set.
std::string given_answers() {
    const char* given = std::getenv("VELMOR_RISPOSTE");
    return given == nullptr ? std::string() : given;
}

/// What the operator types, line by line. Unlike a stream it lets a request to stop end the wait.
class OperatorInput {
  public:
    /// The next line; nothing at the end of the input, or when the run is to stop.
    std::optional<std::string> next_line() {
        for (;;) {
            const std::size_t end = typed_.find('\n');
            if (end != std::string::npos) {
                std::string line = typed_.substr(0, end);
                typed_.erase(0, end + 1);
                return line;
            }
            if (stop_requested() || !wait_for_more()) {
                return std::nullopt;
            }
        }
    }

  private:
    /// False at the end of the input.
    bool wait_for_more() {
        constexpr int kLookForStop = 100;  // milliseconds
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (::poll(&input, 1, kLookForStop) <= 0) {
            return true;
        }
        std::array<char, 256> piece{};
        const ssize_t got = ::read(STDIN_FILENO, piece.data(), piece.size());
        if (got > 0) {
            typed_.append(piece.data(), static_cast<std::size_t>(got));
        }
        return got > 0 || (got < 0 && errno == EINTR);
    }

    std::string typed_;
};

/// The answers of VELMOR_RISPOSTE: one for all questions, or a file with one a line.
class Answers {
  public:
    /// Next answer; nothing when the operator is to be asked.
    std::optional<bool> next() {
        const std::string given = given_answers();
        if (given.empty()) {
            return std::nullopt;
        }
        if (const std::optional<bool> same_for_all = answer_of(given)) {
            return same_for_all;
        }
        load(given);
        if (used_ == lines_.size()) {
            return false;
        }
        return answer_of(lines_[used_++]).value_or(false);
    }

  private:
    /// Blank lines answer nothing. A file that cannot be read is a failure, not an answer.
    void load(const std::string& path) {
        if (!loaded_) {
            lines_ = read_lines(path);
            std::erase_if(lines_, [](const std::string& line) {
                return line.find_first_not_of(" \t") == std::string::npos;
            });
            loaded_ = true;
        }
    }

    bool loaded_ = false;
    std::vector<std::string> lines_;
    std::size_t used_ = 0;
};

class TerminalWindow final : public Window {
  public:
    TerminalWindow()
        : operator_present_(::isatty(STDIN_FILENO) != 0 && ::isatty(STDOUT_FILENO) != 0),
          progress_in_place_(::isatty(STDERR_FILENO) != 0) {}

    void set_caption(const std::string& text) override { caption_ = text; }
    void set_text(Control control, int element, const std::string& text) override {
        texts_[{control, element}] = text;
    }
    [[nodiscard]] std::string text(Control control, int element) const override {
        const auto found = texts_.find({control, element});
        return found == texts_.end() ? std::string() : found->second;
    }
    void set_visible(Control /*control*/, int /*element*/, bool /*visible*/) override {}
    void set_busy(bool /*hourglass*/) override {}
    void refresh() override {}

    void clear_list() override { lines_ = 0; }
    void add_line(const std::string& line) override {
        clear_progress();
        print(to_terminal(on_one_line(line)) + "\n");
        ++lines_;
    }
    [[nodiscard]] std::size_t line_count() const override { return lines_; }

    void box(const std::string& title, const std::string& text, Icon /*icon*/) override {
        show(title, text);
    }

    [[nodiscard]] bool ask(const std::string& title, const std::string& text, Icon icon) override {
        return ask_again(title, text, icon, 0);
    }
    [[nodiscard]] bool ask_again(const std::string& title, const std::string& text, Icon /*icon*/,
                                 int times_before) override {
        constexpr int kTrialsWithoutOperator = 3;
        show(title, text);
        const std::optional<bool> given = answers_.next();
        const bool yes = given ? *given && times_before < kTrialsWithoutOperator : ask_operator();
        print(std::string(terminal_texts::kAnswer) +
              std::string(yes ? terminal_texts::kYes : terminal_texts::kNo) + "\n");
        return yes;
    }

    void remark(const std::string& text) override {
        clear_progress();
        std::cerr << to_terminal(text) << std::endl;
    }
    [[nodiscard]] bool output_failed() const override { return output_failed_; }

    void begin_walk(const std::string& label, int from, int to) override {
        walk_ = {to_terminal(label) + " ", static_cast<std::size_t>(from),
                 static_cast<std::size_t>(to)};
    }

    /// On a terminal one line that changes in place; elsewhere a line at each new percent.
    void progress(std::size_t done, std::size_t total) override {
        const std::size_t percent =
            total == 0 ? walk_.to : walk_.from + done * (walk_.to - walk_.from) / total;
        if (!progress_in_place_ && percent == shown_percent_ && done != 0) {
            return;
        }
        shown_percent_ = percent;
        clear_progress();
        // One text, as the error stream passes each piece on by itself.
        std::cerr << walk_.label + std::to_string(done) + "/" + std::to_string(total) + " (" +
                         std::to_string(percent) + "%)" + (progress_in_place_ ? "" : "\n");
        progress_stands_ = progress_in_place_;
    }

    void show_modal() override {
        clear_progress();
        if (operator_present_) {
            std::cerr << terminal_texts::kPressReturn << std::endl;
            static_cast<void>(operator_.next_line());
        }
    }

  private:
    void show(const std::string& title, const std::string& text) {
        clear_progress();
        print("[" + to_terminal(title) + "] " + box_text(text) + "\n");
    }

    /// The wages come first: an output that refuses a line is told, and the run goes on.
    void print(const std::string& text) {
        std::cout << text << std::flush;
        if (std::cout) {
            return;
        }
        std::cout.clear();
        if (!output_failed_) {
            output_failed_ = true;
            std::cerr << terminal_texts::kListNotWritten << std::endl;
        }
    }

    /// No answer (end of input, or nobody there) is No.
    bool ask_operator() {
        if (::isatty(STDIN_FILENO) == 0) {
            return false;
        }
        std::optional<std::string> line;
        do {
            print(std::string(terminal_texts::kAsk));
            line = operator_.next_line();
        } while (line && !answer_of(*line));
        return line && *answer_of(*line);
    }

    void clear_progress() {
        if (progress_stands_) {
            std::cerr << "\r\033[K" << std::flush;
            progress_stands_ = false;
        }
    }

    /// The walk under way, and its part of the whole run in percent.
    struct Walk {
        std::string label{terminal_texts::kProgress};
        std::size_t from = 0;
        std::size_t to = 100;
    };

    bool operator_present_;
    bool progress_in_place_;
    bool progress_stands_ = false;
    std::size_t shown_percent_ = 0;
    Walk walk_;
    std::string caption_;
    std::map<std::pair<Control, int>, std::string> texts_;
    std::size_t lines_ = 0;
    bool output_failed_ = false;
    Answers answers_;
    OperatorInput operator_;
};

}  // namespace

void check_answers() {
    const std::string given = given_answers();
    if (!given.empty() && !answer_of(given)) {
        static_cast<void>(read_lines(given));
    }
}

std::unique_ptr<Window> make_terminal_window() {
    return std::make_unique<TerminalWindow>();
}

}  // namespace platform
