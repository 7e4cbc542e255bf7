#pragma once
// What the terminal says of its own, in UTF-8. The catalogue of the operator's texts
// (texts/texts.h) stands a floor above and lists them from here.

#include <string_view>

namespace platform::terminal_texts {

inline constexpr std::string_view kYes = "si";
inline constexpr std::string_view kNo = "no";
/// In front of the answer taken.
inline constexpr std::string_view kAnswer = "Risposta: ";
inline constexpr std::string_view kAsk = "Si o No? (s/n) ";
inline constexpr std::string_view kPressReturn = "Premere Invio per uscire.";
/// In front of "3/12 (25%)".
inline constexpr std::string_view kProgress = "Avanzamento ";
inline constexpr std::string_view kNoGraphicWindow =
    "La finestra grafica non è disponibile: si prosegue sul terminale.";

/// Said once, where standard output refuses a line.
inline constexpr std::string_view kListNotWritten =
    "La lista non può essere scritta sull'uscita standard: il calcolo prosegue.";

}  // namespace platform::terminal_texts
