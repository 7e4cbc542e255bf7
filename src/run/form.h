#pragma once
// The window Vide as the run sets it up.

namespace ModSWCALM {

/// Form load: captions, caption of the window, period and run kind ("Non trovato" without a period
/// record).
void load_form();

/// Shows the form without waiting, ready for the walk: labels visible and blank, list empty,
/// hourglass.
void show_window();

}  // namespace ModSWCALM
