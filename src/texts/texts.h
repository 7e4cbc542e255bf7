#pragma once
// The catalogue of the texts shown to the operator: boxes, questions, list lines, labels, messages
// of the support tool. Nothing is shown that does not stand here; tests know the texts from here.
// A text is written in UTF-8 in the source and leaves as bytes of code page 1252.

#include <span>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace texts {

enum class Kind {
    box,       ///< a plain box; the run goes on
    question,  ///< a Yes/No box
    failure,   ///< shown by the failure handler, or before the program ends with an error
    line,      ///< a line of LIST1
    label,     ///< a label or caption of the window
    tool,      ///< a message of nzutil
};

/// One text. Where a value follows or stands inside, the text holds the fixed part in front of it.
struct Text {
    Kind kind;
    std::string_view utf8;

    /// The text in code page 1252.
    [[nodiscard]] std::string bytes() const { return platform::from_utf8(utf8); }
};

/// Title of a plain box.
inline constexpr Text kPlainBoxTitle{Kind::label, "VELMOR"};
/// Title of the boxes of the suite.
inline constexpr Text kSuiteTitle{Kind::label, "Solmarel"};

// Records
inline constexpr Text kRepositoryUnknownTag{Kind::box, "ERRORE REPOSITORY - STRCOSTANTE"};
inline constexpr Text kRepositoryUnknownLetter{Kind::box,
                                               "ERRORE REPOSITORY - LETTERA SCONOSCIUTA"};

}  // namespace texts
