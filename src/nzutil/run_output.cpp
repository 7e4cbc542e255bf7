#include "nzutil/run_output.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "platform/terminal_texts.h"
#include "texts/tool_texts.h"

namespace nzutil {

namespace {

bool opens_box(const std::string& line) {
    return line.starts_with('[') && line.find("] ") != std::string::npos;
}

bool is_answer(const std::string& line) {
    return line.starts_with(platform::terminal_texts::kAnswer);
}

/// Messages that nothing follows but boxes.
bool goes_to_the_end(const ShownBox& box) {
    const std::string_view restore = texts::kRestoreTask.utf8;
    return is_closing_message(box) || box.text.starts_with(texts::kFailure.utf8) ||
           box.text.starts_with(restore.substr(0, restore.find('\r')));
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Index one past the lines of the box that begins at `first`.
std::size_t end_of_box(const std::vector<std::string>& lines, std::size_t first,
                       const ShownBox& box) {
    std::size_t next = first + 1;
    while (next < lines.size() && !opens_box(lines[next])) {
        if (is_answer(lines[next])) {
            return next + 1;
        }
        ++next;
    }
    return goes_to_the_end(box) ? next : first + 1;
}

}  // namespace

bool is_closing_message(const ShownBox& box) {
    const std::array closing{texts::kFinished.utf8, texts::kFinishedWithArchive.utf8};
    return std::ranges::any_of(closing,
                               [&](std::string_view text) { return box.text.starts_with(text); });
}

RunOutput read_run_output(const std::string& standard_output) {
    const std::vector<std::string> lines = lines_of(standard_output);
    RunOutput output;
    for (std::size_t i = 0; i < lines.size();) {
        if (!opens_box(lines[i])) {
            output.list.push_back(lines[i++]);
            continue;
        }
        const std::size_t close = lines[i].find("] ");
        ShownBox box{lines[i].substr(1, close - 1), lines[i].substr(close + 2), std::nullopt};
        const std::size_t end = end_of_box(lines, i, box);
        for (++i; i < end; ++i) {
            if (is_answer(lines[i])) {
                box.answer = lines[i].ends_with(platform::terminal_texts::kYes);
            } else {
                box.text += "\n" + lines[i];
            }
        }
        output.boxes.push_back(std::move(box));
    }
    return output;
}

}  // namespace nzutil
