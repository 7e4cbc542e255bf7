#pragma once
// The registry's stand-in: an INI file. Path: environment SOLMAREL_REGISTRO, else
// $XDG_CONFIG_HOME/solmarel/registro.ini, else ~/.config/solmarel/registro.ini.

#include <optional>
#include <string>

namespace platform {

/// A stored value: type 1 is text, type 4 a 32-bit number (its decimal text in `text`).
struct RegistryValue {
    int type = 1;
    std::string text;
};

class Registry {
  public:
    virtual ~Registry() = default;
    /// True if the key (as `SOFTWARE\TRAMONTIVAL\SOLMAREL`) exists under the current user.
    [[nodiscard]] virtual bool has_key(const std::string& key) = 0;
    /// The value, or nothing.
    [[nodiscard]] virtual std::optional<RegistryValue> value(const std::string& key,
                                                             const std::string& name) = 0;
};

[[nodiscard]] Registry& registry();
/// Sets another registry (tests); nullptr brings back the real one.
void set_registry(Registry* other);

}  // namespace platform
