#include "platform/printer.h"

#include <hpdf.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/file_system.h"

namespace platform {

namespace {

struct PrinterInUse {
    Printer* other = nullptr;
    std::string archive_directory;
};
PrinterInUse printer_in_use;

[[noreturn]] void fail(const std::string& culprit) {
    Failure failure(kPrinter);
    failure.culprit = culprit;
    throw failure;
}

// A4 in points, and the margin on all sides.
constexpr float kShortSide = 595.0F;
constexpr float kLongSide = 842.0F;
constexpr float kMargin = 28.0F;
/// Width of a character and distance of two lines, in sizes of the font.
constexpr float kCharacterWidth = 0.6F;
constexpr float kLineHeight = 1.2F;

struct PageShape {
    float width = kShortSide;
    float height = kLongSide;
    std::size_t characters = 0;
    std::size_t lines = 0;
};

PageShape shape(float width, float height, int size) {
    const auto points = static_cast<float>(size);
    const float characters = (width - 2 * kMargin) / (points * kCharacterWidth);
    const float lines = (height - 2 * kMargin) / (points * kLineHeight);
    return {width, height, std::max(std::size_t{1}, static_cast<std::size_t>(characters)),
            std::max(std::size_t{1}, static_cast<std::size_t>(lines))};
}

/// Upright if the longest line fits, else across.
PageShape shape_for(const std::vector<std::string>& lines, int size) {
    const PageShape upright = shape(kShortSide, kLongSide, size);
    const bool fits = std::all_of(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.size() <= upright.characters;
    });
    return fits ? upright : shape(kLongSide, kShortSide, size);
}

/// Lines cut to the width of the page; what does not fit goes on in the next line.
std::vector<std::string> folded(const std::vector<std::string>& lines, std::size_t width) {
    std::vector<std::string> out;
    for (const std::string& line : lines) {
        std::size_t begin = 0;
        do {
            out.push_back(line.substr(begin, width));
            begin += width;
        } while (begin < line.size());
    }
    return out;
}

using Document = std::unique_ptr<std::remove_pointer_t<HPDF_Doc>, void (*)(HPDF_Doc)>;

void draw_page(HPDF_Doc document, HPDF_Font font, int size, const PageShape& page_shape,
               const std::string* first, const std::string* last) {
    HPDF_Page page = HPDF_AddPage(document);
    HPDF_Page_SetWidth(page, page_shape.width);
    HPDF_Page_SetHeight(page, page_shape.height);
    const auto points = static_cast<float>(size);
    HPDF_Page_BeginText(page);
    HPDF_Page_SetFontAndSize(page, font, points);
    HPDF_Page_SetTextLeading(page, points * kLineHeight);
    HPDF_Page_MoveTextPos(page, kMargin, page_shape.height - kMargin - points);
    for (const std::string* line = first; line != last; ++line) {
        HPDF_Page_ShowText(page, line->c_str());
        HPDF_Page_MoveToNextLine(page);
    }
    HPDF_Page_EndText(page);
}

/// The lines as a PDF document. WinAnsiEncoding is code page 1252.
std::string make_pdf(const std::vector<std::string>& lines, int size, const std::string& name) {
    const Document document(HPDF_New(nullptr, nullptr), HPDF_Free);
    if (document == nullptr) {
        fail(name);
    }
    HPDF_Font font = HPDF_GetFont(document.get(), "Courier", "WinAnsiEncoding");
    const PageShape page_shape = shape_for(lines, size);
    const std::vector<std::string> rows = folded(lines, page_shape.characters);
    for (std::size_t begin = 0; begin == 0 || begin < rows.size(); begin += page_shape.lines) {
        const std::size_t end = std::min(rows.size(), begin + page_shape.lines);
        draw_page(document.get(), font, size, page_shape, rows.data() + begin, rows.data() + end);
    }
    if (HPDF_SaveToStream(document.get()) != HPDF_OK || HPDF_GetError(document.get()) != HPDF_OK) {
        fail(name);
    }
    std::string bytes(HPDF_GetStreamSize(document.get()), '\0');
    auto size_read = static_cast<HPDF_UINT32>(bytes.size());
    std::vector<HPDF_BYTE> buffer(bytes.size());
    HPDF_ReadFromStream(document.get(), buffer.data(), &size_read);
    bytes.assign(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(size_read));
    return bytes;
}

/// Sends a file to a printer of the system; failure 482 if the spooler refuses it.
void send_to_printer(const std::string& printer_name, const std::string& path) {
    std::string program = "lp";
    std::string option = "-d";
    std::string name = printer_name;
    std::string separator = "--";
    std::string file = path;
    const std::array<char*, 6> arguments{program.data(),   option.data(), name.data(),
                                         separator.data(), file.data(),   nullptr};
    pid_t child = 0;
    if (::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
        fail(printer_name);
    }
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0) {
        fail(printer_name);
    }
}

/// "LISTA_20240531_181500_1": day, time, and the first number that is free in the directory.
std::string free_name(const std::string& directory) {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> stamp{};
    const std::size_t length =
        std::strftime(stamp.data(), stamp.size(), "LISTA_%Y%m%d_%H%M%S_", &local);
    const std::string prefix = directory + "/" + std::string(stamp.data(), length);
    int number = 1;
    while (real_files().exists(prefix + std::to_string(number) + ".pdf")) {
        ++number;
    }
    return prefix + std::to_string(number) + ".pdf";
}

std::string print_directory() {
    const char* given = std::getenv("VELMOR_STAMPE");
    if (given != nullptr && *given != '\0') {
        return path_on_disk(given);
    }
    return path_on_disk(printer_in_use.archive_directory + "/STAMPE");
}

/// One PDF a document. The file is made by the first line, so that a directory that refuses it
/// shows at a line, where the operator can have it tried again.
class PdfPrinter final : public Printer {
  public:
    void begin(const std::string& /*font*/, int size) override {
        lines_.clear();
        channel_.reset();
        place_.clear();
        size_ = std::max(1, size);
    }

    void line(const std::string& text) override {
        if (channel_ == nullptr) {
            open_file();
        }
        std::string row;
        for (const char c : text) {
            const auto code = static_cast<unsigned char>(c);
            if (c == '\n') {
                lines_.push_back(std::exchange(row, {}));
            } else if (c != '\r') {
                row += code < ' ' ? ' ' : c;
            }
        }
        lines_.push_back(std::move(row));
    }

    void end() override {
        if (channel_ == nullptr) {
            return;
        }
        const std::unique_ptr<Channel> channel = std::move(channel_);
        try {
            channel->write_at(0, make_pdf(lines_, size_, path_));
        } catch (const Failure&) {
            fail(path_);
        }
        lines_.clear();
        place_ = path_;
        const char* name = std::getenv("VELMOR_STAMPANTE");
        if (name != nullptr && *name != '\0') {
            send_to_printer(name, path_);
        }
    }

    [[nodiscard]] std::string place() const override { return place_; }

  private:
    void open_file() {
        const std::string directory = print_directory();
        std::error_code refused;
        std::filesystem::create_directories(directory, refused);
        try {
            path_ = free_name(directory);
            channel_ = real_files().open(path_, OpenMode::truncate);
        } catch (const Failure&) {
            fail(path_);
        }
    }

    int size_ = 9;
    std::vector<std::string> lines_;
    std::string path_;
    std::string place_;
    std::unique_ptr<Channel> channel_;
};
PdfPrinter pdf_printer;

}  // namespace

Printer& printer() {
    return printer_in_use.other == nullptr ? pdf_printer : *printer_in_use.other;
}

void set_printer(Printer* other) {
    printer_in_use.other = other;
}

void write_pdf(const std::string& path, const std::vector<std::string>& lines, int size) {
    const std::string bytes = make_pdf(lines, size, path);
    real_files().open(path, OpenMode::truncate)->write_at(0, bytes);
}

void set_print_archive_directory(const std::string& archive_directory) {
    printer_in_use.archive_directory = archive_directory;
}

}  // namespace platform
