#pragma once
// State of the closing, put back to the defaults when a closing opens.

namespace ModSwCalm2 {

struct ClosingState {
    double period_factor = 1;           ///< whole instalment factor of a collaborator, 1 for others
    double surtax_instalments = 0;      ///< surtax instalments of the month, in euro
    double ceiling_lines_before = 0;    ///< lines of the ceiling list when the closing opened
    double municipal_lines_before = 0;  ///< lines of the municipal list when the closing opened
    double separate_contributions = 0;  ///< contributions on P244 and P245, inside Q224
};
extern ClosingState closing;

}  // namespace ModSwCalm2
