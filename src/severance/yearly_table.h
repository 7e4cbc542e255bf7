#pragma once
// Figures of law that the yearly table may lack.

#include "records/descriptor.h"

namespace ModSwCalm2 {

/// Stores a figure in the yearly table, for the run and in its record (logical file 19).
void write_yearly(const MXREPOSITORY::Descriptor& field, double value);

}  // namespace ModSwCalm2
