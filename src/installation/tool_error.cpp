#include "installation/tool_error.h"

#include "platform/code_page.h"

namespace nzutil {

std::string fill(const texts::Text& text, std::initializer_list<std::string_view> values) {
    std::string result(text.utf8);
    std::size_t from = 0;
    for (const std::string_view given : values) {
        const std::string value = platform::utf8_to_terminal(given);
        const std::size_t place = result.find("{}", from);
        if (place == std::string::npos) {
            break;
        }
        result.replace(place, 2, value);
        from = place + value.size();
    }
    return result;
}

}  // namespace nzutil
