#pragma once
// What the field accessors do about a descriptor that fits no record.

#include <cstdint>

#include "platform/failure.h"
#include "platform/window.h"
#include "texts/texts.h"

namespace MXREPOSITORY {

inline void show_repository_error(const texts::Text& text) {
    platform::window().box(texts::kPlainBoxTitle.bytes(), text.bytes(), platform::Icon::none);
}

/// A position within the record; outside 16 bits failure 6.
inline std::int16_t checked16(int value) {
    if (value < INT16_MIN || value > INT16_MAX) {
        throw platform::Failure(platform::kOverflow);
    }
    return static_cast<std::int16_t>(value);
}

}  // namespace MXREPOSITORY
