#pragma once
// What a run that was killed has left, finished at the start of the next one.

namespace ModSWCALM {

/// Finishes the step of records that a killed run left in the recovery slot, before a file is read,
/// and tells it in one line of the list. From here on the run writes through the slot.
void finish_killed_run();

}  // namespace ModSWCALM
