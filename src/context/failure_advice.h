#pragma once
// What the operator is to do about a failure.

#include <string>

#include "platform/failure.h"

namespace MXLIBRERIA {

/// The advice of the failure itself, else that of its number; with the employee under calculation,
/// where there is one, and the command that shows his record. Lines end with CR LF; code page 1252.
[[nodiscard]] std::string failure_advice(const platform::Failure& failure);

}  // namespace MXLIBRERIA
