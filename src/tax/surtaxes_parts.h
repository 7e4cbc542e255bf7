#pragma once
// The two surtaxes of the year, each with its own table.

namespace ModSWCALB {

/// Surtax of the region on a base in euro: a fixed rule, whole-base bands or brackets, less the
/// reductions of the region. 0 for a region without a line in the table. Keeps the columns of the
/// region's line on the slip.
[[nodiscard]] double regional_surtax_on(double base);
/// Q342 of the slip, and the charge of a leaver.
void regional_surtax();

/// Q343 of the slip with what the advance has paid of it, charge or refund of a leaver, and the
/// line of the control list.
void municipal_surtax();

}  // namespace ModSWCALB
