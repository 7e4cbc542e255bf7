#include "platform/registry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace platform {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool same_name(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A key without the name of its root, which may stand in front of it.
std::string_view without_root(std::string_view key) {
    for (const std::string_view root :
         {std::string_view("HKEY_CURRENT_USER\\"), std::string_view("HKCU\\")}) {
        if (key.size() > root.size() && same_name(key.substr(0, root.size()), root)) {
            return key.substr(root.size());
        }
    }
    return key;
}

/// A stored value: `dword:` and hexadecimal digits is a number, anything else text as it stands.
RegistryValue parsed_value(std::string_view text) {
    constexpr std::string_view kNumber = "dword:";
    if (text.size() > kNumber.size() && same_name(text.substr(0, kNumber.size()), kNumber)) {
        std::uint32_t number = 0;
        const char* end = text.data() + text.size();
        if (std::from_chars(text.data() + kNumber.size(), end, number, 16).ptr == end) {
            return {4, std::to_string(number)};
        }
    }
    return {1, std::string(text)};
}

struct IniValue {
    std::string key;
    std::string name;  ///< empty for the line of the key itself
    RegistryValue value;
};

std::string registry_file_path() {
    if (const char* path = std::getenv("SOLMAREL_REGISTRO"); path != nullptr && *path != '\0') {
        return path;
    }
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config != '\0') {
        return std::string(config) + "/solmarel/registro.ini";
    }
    const char* home = std::getenv("HOME");
    return std::string(home == nullptr ? "" : home) + "/.config/solmarel/registro.ini";
}

std::vector<IniValue> parse(const std::vector<std::string>& lines) {
    std::vector<IniValue> values;
    std::string key;
    for (std::string_view line : lines) {
        if (line.substr(0, 3) == "\xEF\xBB\xBF") {
            line.remove_prefix(3);
        }
        line = trimmed(line);
        if (line.empty() || line.front() == ';' || line.front() == '#') {
            continue;
        }
        if (line.front() == '[' && line.back() == ']') {
            key = without_root(trimmed(line.substr(1, line.size() - 2)));
            values.push_back({key, {}, {}});
        } else if (const std::size_t equals = line.find('='); equals != std::string_view::npos) {
            values.push_back({key, std::string(trimmed(line.substr(0, equals))),
                              parsed_value(trimmed(line.substr(equals + 1)))});
        }
    }
    return values;
}

/// The INI file. It is read at each question: a run asks it twice.
class IniRegistry final : public Registry {
  public:
    bool has_key(const std::string& key) override {
        const std::vector<IniValue> values = read();
        return std::any_of(values.begin(), values.end(),
                           [&](const IniValue& v) { return same_name(v.key, without_root(key)); });
    }

    std::optional<RegistryValue> value(const std::string& key, const std::string& name) override {
        const std::vector<IniValue> values = read();
        const auto found = std::find_if(values.begin(), values.end(), [&](const IniValue& v) {
            return !v.name.empty() && same_name(v.name, name) &&
                   same_name(v.key, without_root(key));
        });
        if (found == values.end()) {
            return std::nullopt;
        }
        return found->value;
    }

  private:
    static std::vector<IniValue> read() {
        const std::string path = registry_file_path();
        return real_files().exists(path) ? parse(read_lines(path)) : std::vector<IniValue>{};
    }
};

struct RegistryInUse {
    IniRegistry ini;
    Registry* other = nullptr;
};
RegistryInUse registry_in_use;

}  // namespace

Registry& registry() {
    return registry_in_use.other == nullptr ? registry_in_use.ini : *registry_in_use.other;
}

void set_registry(Registry* other) {
    registry_in_use.other = other;
}

}  // namespace platform
