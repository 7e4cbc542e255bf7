#include "context/trace.h"

namespace MXLIBRERIA {

TraceRing trace_ring;

namespace {
constexpr std::int16_t kLastSlot = 10;
}

void TRACCIA(std::string_view name) {
    auto current = static_cast<std::size_t>(trace_ring.index);
    if (trace_ring.slots.at(current) == name) {
        return;
    }
    trace_ring.index = trace_ring.index == kLastSlot
                           ? std::int16_t{1}
                           : static_cast<std::int16_t>(trace_ring.index + 1);
    trace_ring.slots.at(static_cast<std::size_t>(trace_ring.index)) = name;
}

std::string trace_listing() {
    std::string listing;
    for (std::int16_t step = 0; step < kLastSlot; ++step) {
        const int slot = (trace_ring.index + step) % kLastSlot + 1;
        listing += trace_ring.slots.at(static_cast<std::size_t>(slot)) + "\r\n";
    }
    return listing;
}

}  // namespace MXLIBRERIA
