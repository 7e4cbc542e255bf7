#pragma once
// A model of the three-level index for tests: the tree as lists of entries in memory, written out
// as the bytes that the file must hold. And a check that the bytes of a file are a sound index.

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

class IndexModel {
  public:
    explicit IndexModel(std::size_t key_length) : key_length_(key_length) { blocks_[1] = {1, {}}; }

    int insert(const std::string& key, int record) {
        if (blocks_[1].entries.empty()) {
            blocks_[1] = {1, {{key, 2}}};
            blocks_[2] = {2, {{key, 3}}};
            blocks_[3] = {3, {{key, record}}};
            return 0;
        }
        const Path path = descend(key);
        if (const int present = number_in(path[3], key); present != -1) {
            return present;
        }
        add(path[3], key, record);
        raise_first_keys(path);
        for (int level = 3; level > 1 && at(path, level).entries.size() == 128; --level) {
            const int upper = cut(path, level);
            add(path[static_cast<std::size_t>(level) - 1], blocks_[upper].entries.front().first,
                upper);
        }
        return 0;
    }

    int remove(const std::string& key) {
        if (blocks_[1].entries.empty()) {
            return -1;
        }
        const Path path = descend(key);
        const int record = number_in(path[3], key);
        if (record == -1) {
            return -1;
        }
        std::erase_if(at(path, 3).entries, [&](const Entry& e) { return e.first == key; });
        for (int level = 3; level > 1 && at(path, level).entries.empty(); --level) {
            const int empty = path[static_cast<std::size_t>(level)];
            std::erase_if(at(path, level - 1).entries,
                          [&](const Entry& e) { return e.second == empty; });
        }
        raise_first_keys(path);
        return record;
    }

    [[nodiscard]] std::string bytes() const {
        std::string out;
        const std::string high(key_length_, '\xFC');
        for (const auto& [number, block] : blocks_) {
            for (std::size_t i = 0; i < 128; ++i) {
                const bool used = i < block.entries.size();
                out += used ? block.entries[i].first : high;
                out += static_cast<char>('0' + block.level);
                const std::string digits = std::to_string(used ? block.entries[i].second : 0);
                out += std::string(6 - digits.size(), '0') + digits;
            }
        }
        return out;
    }

  private:
    using Entry = std::pair<std::string, int>;
    struct Block {
        int level = 0;
        std::vector<Entry> entries;
    };
    using Path = std::array<int, 4>;  ///< block numbers of levels 1 to 3

    Block& at(const Path& path, int level) {
        return blocks_[path[static_cast<std::size_t>(level)]];
    }

    Path descend(const std::string& key) {
        Path path{0, 1, 0, 0};
        for (std::size_t level = 1; level < 3; ++level) {
            int chosen = blocks_[path[level]].entries.front().second;
            for (const Entry& entry : blocks_[path[level]].entries) {
                if (entry.first <= key) {
                    chosen = entry.second;
                }
            }
            path[level + 1] = chosen;
        }
        return path;
    }

    int number_in(int block, const std::string& key) {
        for (const Entry& entry : blocks_[block].entries) {
            if (entry.first == key) {
                return entry.second;
            }
        }
        return -1;
    }

    void add(int block, const std::string& key, int pointer) {
        std::vector<Entry>& entries = blocks_[block].entries;
        entries.insert(
            std::upper_bound(entries.begin(), entries.end(), key,
                             [](const std::string& k, const Entry& e) { return k < e.first; }),
            {key, pointer});
    }

    /// Every entry above a block carries the lowest key of that block.
    void raise_first_keys(const Path& path) {
        for (int level = 2; level >= 1; --level) {
            const int child = path[static_cast<std::size_t>(level) + 1];
            for (Entry& entry : at(path, level).entries) {
                if (entry.second == child && !blocks_[child].entries.empty()) {
                    entry.first = blocks_[child].entries.front().first;
                }
            }
        }
    }

    /// The upper 64 entries go to a new block at the end of the file.
    int cut(const Path& path, int level) {
        const int upper = blocks_.rbegin()->first + 1;
        std::vector<Entry>& lower = at(path, level).entries;
        blocks_[upper] = {level, {lower.begin() + 64, lower.end()}};
        lower.resize(64);
        return upper;
    }

    std::size_t key_length_;
    std::map<int, Block> blocks_;
};

/// Reads an index from its bytes: all keys with their numbers, and what is wrong with the tree.
class IndexReader {
  public:
    IndexReader(std::string bytes, std::size_t key_length)
        : bytes_(std::move(bytes)), key_length_(key_length), high_(key_length, '\xFC') {
        read(1, 1, {}, high_);
    }

    std::map<std::string, double> keys;
    std::string fault;            ///< empty for a sound index
    std::array<int, 4> blocks{};  ///< blocks in use by level

  private:
    void read(int block, int level, const std::string& from, const std::string& below) {
        const std::size_t width = key_length_ + 7;
        const std::size_t start = (static_cast<std::size_t>(block) - 1) * width * 128;
        if (block < 1 || start + width * 128 > bytes_.size()) {
            fault = "block " + std::to_string(block) + " is outside the file";
            return;
        }
        ++blocks[static_cast<std::size_t>(level)];
        std::string last = from;
        bool ended = false;
        for (std::size_t i = 0; i < 128; ++i) {
            const std::string entry = bytes_.substr(start + i * width, width);
            const std::string key = entry.substr(0, key_length_);
            if (entry[key_length_] != static_cast<char>('0' + level)) {
                fault = "level digit in block " + std::to_string(block);
            }
            if (key == high_) {
                ended = true;
                if (entry.substr(key_length_ + 1) != "000000") {
                    fault = "pointer in a free entry of block " + std::to_string(block);
                }
                continue;
            }
            check_order(block, i, key, last, below, ended);
            last = key;
            const int pointer = std::stoi(entry.substr(key_length_ + 1));
            if (level == 3) {
                keys[key] = pointer;
            } else {
                read(pointer, level + 1, key, next_key(start, i, below));
            }
        }
        if (level > 1 && last == from && keys.find(from) == keys.end()) {
            fault = "empty block " + std::to_string(block) + " is linked";
        }
    }

    void check_order(int block, std::size_t index, const std::string& key, const std::string& last,
                     const std::string& below, bool ended) {
        const bool first_is_parents = index != 0 || last.empty() || key == last;
        const bool rises = index == 0 || key > last;
        if (ended || !first_is_parents || !rises || key >= below) {
            fault = "order in block " + std::to_string(block);
        }
    }

    [[nodiscard]] std::string next_key(std::size_t start, std::size_t index,
                                       const std::string& below) const {
        if (index == 127) {
            return below;
        }
        const std::string key = bytes_.substr(start + (index + 1) * (key_length_ + 7), key_length_);
        return key == high_ ? below : key;
    }

    std::string bytes_;
    std::size_t key_length_;
    std::string high_;
};

}  // namespace test_support
