#pragma once
// The control lists that the calculation has filled: each is offered at the end of the run with a
// Yes/No box and printed line by line as it stands, in Courier New 9.

#include <functional>

namespace ModSWCALM {

/// Offers, in this order: bonus to repay, integrative sum to repay, collaborators above the
/// ceiling, municipal surtax, treasury fund. A list without lines is not offered.
void offer_control_lists();

/// The list of the treasury fund; the answer tells whether Q896 has been filled, and so which note
/// closes it.
void offer_treasury_list();

/// A printed document: opens it, prints `lines` (through stampa_riga), closes it, and tells the
/// operator where it went.
void print_document(const std::function<void()>& lines);

}  // namespace ModSWCALM
