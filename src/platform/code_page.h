#pragma once
// Code page 1252 on one side, UTF-8 on the other. Records, dictionary files and text files are
// bytes of code page 1252; UTF-8 exists only beyond the platform's interfaces. The five codes that
// the code page leaves undefined (81, 8D, 8F, 90, 9D) go to U+0081 ... and back, so no byte is
// lost.

#include <string>
#include <string_view>

namespace platform {

/// Bytes of code page 1252 to UTF-8.
[[nodiscard]] std::string to_utf8(std::string_view bytes_1252);

/// The same for a terminal: a control character, which a terminal would obey, becomes '?'. A line
/// end is one too.
[[nodiscard]] std::string to_terminal(std::string_view bytes_1252);

/// UTF-8 text (arguments, paths) for a terminal in the same way; bytes that are no UTF-8 become
/// '?'.
[[nodiscard]] std::string utf8_to_terminal(std::string_view utf8);
/// The same for text of several lines: line feeds stay.
[[nodiscard]] std::string utf8_lines_to_terminal(std::string_view utf8);

/// UTF-8 to bytes of code page 1252. A character that the code page lacks becomes '?'.
[[nodiscard]] std::string from_utf8(std::string_view utf8);

}  // namespace platform
