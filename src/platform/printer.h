#pragma once
// A printer of lines in a fixed-pitch font. A failure of the printer is Failure 482; the retry and
// skip of a line stand in run/failure_handler.h (stampa_riga).

#include <string>

namespace platform {

class Printer {
  public:
    virtual ~Printer() = default;
    /// Starts a document: font name, as "Courier New", and size in points.
    virtual void begin(const std::string& font, int size) = 0;
    /// Prints one line (bytes of code page 1252). Failure 482 when the printer refuses it.
    virtual void line(const std::string& text) = 0;
    virtual void end() = 0;
};

[[nodiscard]] Printer& printer();
/// Sets another printer (tests); nullptr brings back the real one.
void set_printer(Printer* other);

}  // namespace platform
