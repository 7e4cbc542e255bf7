#include "nzutil/index_check.h"

#include <filesystem>
#include <optional>
#include <set>

#include "installation/tool_error.h"
#include "records/numbers.h"

namespace nzutil {

namespace {

constexpr int kEntries = 128;
constexpr int kLevels = 3;
constexpr int kEntryOverhead = 7;  // level digit and six digits of pointer
constexpr char kHighCharacter = static_cast<char>(252);

/// Bytes compare by their code, without a sign.
bool less(std::string_view a, std::string_view b) {
    return std::char_traits<char>::compare(a.data(), b.data(), std::min(a.size(), b.size())) < 0;
}

class Checker {
  public:
    Checker(const Installation& installation, int file, int key_length)
        : installation_(installation), file_(file), key_length_(key_length) {}

    IndexCheck run() {
        result_.blocks = installation_.record_count(file_);
        const auto bytes = std::filesystem::file_size(installation_.path(file_));
        if (bytes == 0) {
            damage(texts::kToolIndexEmptyFile, {});
        } else if (bytes % static_cast<std::uintmax_t>(index_block(key_length_)) != 0) {
            damage(texts::kToolIndexPartialBlock, {});
        } else {
            seen_.insert(1);
            check_block(1, 1, std::nullopt);
        }
        return result_;
    }

  private:
    struct Entry {
        std::string key;
        char level;
        std::string pointer;
    };

    void damage(const texts::Text& text, std::initializer_list<std::string_view> values) {
        if (result_.damage.empty()) {
            result_.damage = fill(text, values);
        }
    }
    [[nodiscard]] bool damaged() const { return !result_.damage.empty(); }

    [[nodiscard]] Entry entry_of(const std::string& block, int number) const {
        const auto width = static_cast<std::size_t>(key_length_ + kEntryOverhead);
        const std::size_t start = static_cast<std::size_t>(number) * width;
        const auto key_width = static_cast<std::size_t>(key_length_);
        return {block.substr(start, key_width), block[start + key_width],
                block.substr(start + key_width + 1, 6)};
    }
    static bool is_free(const Entry& entry) { return entry.key.front() == kHighCharacter; }

    void check_block(int number, int level, const std::optional<std::string>& parent_key) {
        const std::optional<std::string> block = installation_.read(file_, number);
        const std::string name = std::to_string(number);
        if (!block) {
            damage(texts::kToolIndexBadBlock, {name, std::to_string(level)});
            return;
        }
        if (parent_key && entry_of(*block, 0).key != *parent_key) {
            damage(texts::kToolIndexFirstKey, {name});
        }
        std::string previous;
        int used = 0;
        for (int i = 0; i < kEntries && !damaged(); ++i) {
            const Entry entry = entry_of(*block, i);
            if (entry.level != static_cast<char>('0' + level)) {
                damage(texts::kToolIndexLevel,
                       {name, std::string(1, entry.level), std::to_string(level)});
            } else if (!is_free(entry)) {
                check_entry(name, level, i, used, previous, entry);
                previous = entry.key;
                ++used;
            }
        }
        if (used == 0 && number != 1) {
            damage(texts::kToolIndexEmptyBlock, {name});
        }
        if (used == kEntries && number != 1) {
            damage(texts::kToolIndexFull, {name});
        }
    }

    void check_entry(const std::string& block, int level, int place, int used,
                     const std::string& previous, const Entry& entry) {
        const std::string number = std::to_string(place + 1);
        if (place != used) {
            damage(texts::kToolIndexUsedAfterFree, {block, number});
            return;
        }
        if (used > 0 && !less(previous, entry.key)) {
            damage(texts::kToolIndexOrder, {block, number});
            return;
        }
        const int pointer = static_cast<int>(MXREPOSITORY::valore(entry.pointer));
        if (pointer < 1 || entry.pointer.find_first_not_of("0123456789") != std::string::npos) {
            damage(texts::kToolIndexPointer, {block, number});
            return;
        }
        if (level == kLevels) {
            ++result_.keys;
        } else if (!seen_.insert(pointer).second) {
            damage(texts::kToolIndexBlockTwice, {std::to_string(pointer)});
        } else {
            check_block(pointer, level + 1, entry.key);
        }
    }

    const Installation& installation_;
    int file_;
    int key_length_;
    std::set<int> seen_;
    IndexCheck result_;
};

}  // namespace

int index_key_length(const Installation& installation, int file) {
    const int length = installation.record_length(file);
    const int key_length = length / kEntries - kEntryOverhead;
    if (length % kEntries != 0 || key_length < 1) {
        throw ToolError(texts::kToolNoIndex, {std::to_string(file)});
    }
    return key_length;
}

IndexCheck check_index(const Installation& installation, int file) {
    return Checker(installation, file, index_key_length(installation, file)).run();
}

}  // namespace nzutil
