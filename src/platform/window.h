#pragma once
// The one window of the program, Vide, and its boxes, as an interface. The calculation refreshes it
// by explicit calls; it has no message pump. All texts are bytes of code page 1252.

#include <cstddef>
#include <memory>
#include <string>

namespace platform {

enum class Icon { none, critical, question, exclamation, information };

/// Controls of the window that the program touches.
enum class Control {
    FrameGesCalcolo,
    Label2,
    Label3,
    Label4,
    FrameCalcolo,
    FrameLista,
    Label7,
    LIST1,
    Comando1
};

class Window {
  public:
    virtual ~Window() = default;
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    Window(Window&&) = delete;
    Window& operator=(Window&&) = delete;

    virtual void set_caption(const std::string& text) = 0;
    /// Text of a control; `element` for the label array Label3.
    virtual void set_text(Control control, int element, const std::string& text) = 0;
    [[nodiscard]] virtual std::string text(Control control, int element) const = 0;
    virtual void set_visible(Control control, int element, bool visible) = 0;
    virtual void set_busy(bool hourglass) = 0;
    virtual void refresh() = 0;

    /// Lines of LIST1.
    virtual void clear_list() = 0;
    virtual void add_line(const std::string& line) = 0;
    [[nodiscard]] virtual std::size_t line_count() const = 0;

    /// A box with one button.
    virtual void box(const std::string& title, const std::string& text, Icon icon) = 0;
    /// A Yes/No box; true for Yes.
    [[nodiscard]] virtual bool ask(const std::string& title, const std::string& text,
                                   Icon icon) = 0;
    /// The same question for the nth time (from 0) about the same trial. Answers that stand ready
    /// are a Yes three times at most, since nobody watches what is tried again.
    [[nodiscard]] virtual bool ask_again(const std::string& title, const std::string& text,
                                         Icon icon, int /*times_before*/) {
        return ask(title, text, icon);
    }

    /// A remark that asks for nothing: why the run waits, who holds the archive.
    virtual void remark(const std::string& /*text*/) {}

    /// True if a line or a box could not be shown: the operator has not seen all of the run.
    [[nodiscard]] virtual bool output_failed() const { return false; }

    /// A walk begins: its name (bytes of code page 1252), and the part of the whole run, in
    /// percent, that its progress covers.
    virtual void begin_walk(const std::string& /*label*/, int /*from*/, int /*to*/) {}
    /// Progress of a walk: entries done of those the selection has.
    virtual void progress(std::size_t done, std::size_t total) = 0;

    /// Shows the window until Comando1 (nothing to wait for without an operator).
    virtual void show_modal() = 0;
};

[[nodiscard]] Window& window();
/// Sets the window of the run.
void set_window(std::unique_ptr<Window> other);

/// The terminal: each line of LIST1 is a line of standard output in UTF-8, boxes with title, text
/// and answer, progress on standard error. Answers from VELMOR_RISPOSTE, see docs/formats.md.
[[nodiscard]] std::unique_ptr<Window> make_terminal_window();

/// Looks whether the file of answers that VELMOR_RISPOSTE names can be read; failure 53 or 75 if
/// not, so that it shows before anything is calculated.
void check_answers();

/// The window that VELMOR_INTERFACCIA asks for.
[[nodiscard]] std::unique_ptr<Window> make_window_from_environment();

}  // namespace platform
