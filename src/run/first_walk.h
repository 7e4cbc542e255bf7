#pragma once
// The first walk of the selection: skip test, clearing of the month, before-image, write-back.

#include <string>
#include <vector>

namespace ModSWCALM {

void first_walk();

}  // namespace ModSWCALM
