#pragma once
// The trace ring: the names of the last ten procedures entered.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace MXLIBRERIA {

/// 11 slots of which 1 to 10 are used, and the index of the last one written (0: none yet).
struct TraceRing {
    std::array<std::string, 11> slots;
    std::int16_t index = 0;
};
extern TraceRing trace_ring;

/// Records a name; the same name twice running takes one slot.
void TRACCIA(std::string_view name);

/// The ten names from the oldest to the newest, each with CR LF; unused slots are empty lines in
/// front of the names.
[[nodiscard]] std::string trace_listing();

}  // namespace MXLIBRERIA
