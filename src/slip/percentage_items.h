#pragma once
// Items that are a percentage on the base (".P240", "%", "=OG").

namespace ModSWCALM {

/// Recomputes them with their lines on the final P240; P256 follows.
void recompute_percentage_items();

}  // namespace ModSWCALM
