#pragma once
// MAIN: from the start of the program to the second walk.

namespace ModSWCALM {

void MAIN();
/// Environment from the registry, with installation data; see run/environment.h.
void CARICAAMBIENTE();
/// Form load: caption, labels, period.
void load_form();

}  // namespace ModSWCALM
