#pragma once
// A printer of lines in a fixed-pitch font. A failure of the printer is Failure 482; the retry and
// skip of a line stand in run/failure_handler.h (stampa_riga).
//
// The real one makes a PDF of each list in the directory VELMOR_STAMPE, or STAMPE under the archive
// directory, and sends it to the system's printer VELMOR_STAMPANTE where one is named.

#include <string>
#include <vector>

namespace platform {

class Printer {
  public:
    virtual ~Printer() = default;
    Printer() = default;
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    Printer(Printer&&) = delete;
    Printer& operator=(Printer&&) = delete;

    /// Starts a document: font name, as "Courier New", and size in points.
    virtual void begin(const std::string& font, int size) = 0;
    /// Prints one line (bytes of code page 1252). Failure 482 when the printer refuses it.
    virtual void line(const std::string& text) = 0;
    /// Ends the document: it stands on disk, and goes to the printer. Failure 482 as above.
    virtual void end() = 0;
    /// Where the document of the last end() went: a path in UTF-8; empty if it went nowhere.
    [[nodiscard]] virtual std::string place() const { return {}; }
};

[[nodiscard]] Printer& printer();
/// Sets another printer (tests); nullptr brings back the real one.
void set_printer(Printer* other);

/// Writes lines (bytes of code page 1252) as a PDF document of a fixed-pitch font of `size` points.
/// Failures as FileSystem::open.
void write_pdf(const std::string& path, const std::vector<std::string>& lines, int size);

/// Tells the real printer the archive directory, under which STAMPE stands.
void set_print_archive_directory(const std::string& archive_directory);

}  // namespace platform
