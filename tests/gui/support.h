/// What the window tests share. All of it runs on the GUI thread, inside the program's one event loop.
#pragma once

#include <gtest/gtest.h>

#include <wx/event.h>
#include <wx/frame.h>
#include <wx/gdicmn.h>

#include <functional>
#include <string>
#include <vector>

class wxTopLevelWindow;

namespace commondlg3 {
class dialog_base_t;
}

namespace test {

/// The application's main window, shown for the length of the program.
wxFrame* main_window();

/// Lets the event loop turn until the condition holds; false when it does not within the limit.
bool wait_for(const std::function<bool()>& condition, int milliseconds = 15000);
/// Lets the event loop turn until nothing is left to do.
void settle();

/// Runs `show`, which blocks in a modal loop, and `act` with the window that it opened once that is painted.
/// The test fails when no window opens, and when `act` leaves it open: it is closed after a while then.
int run_modal(const std::function<int()>& show, const std::function<void(wxTopLevelWindow*)>& act);
/// The same for a dialog over the main window.
int run(commondlg3::dialog_base_t& dialog, const std::function<void(wxTopLevelWindow*)>& act);

/// What the toolkit does when a control of a window was used. `number` is what the event tells beside.
void send(wxEventType type, wxWindow* control, int number = 0);
/// Presses a button, by its name, as the mouse would.
void click(wxWindow* parent, const char* name);

/// A real key press, through the display.
void press(int key, int modifiers = wxMOD_NONE);
/// Real typing of ASCII text.
void type(const char* text);

/// With the mouse, between two points of the screen.
void drag(const wxPoint& from, const wxPoint& to);
std::string clipboard_text();

/// Assertions of ours that were raised since the test began, by their condition's text. Reading them accepts
/// them; one that is left unread fails the test.
std::vector<std::string> take_assertions();

/// What exceptions told the application since the test began, under the same rule.
std::vector<std::string> take_exceptions();

/// Points the product at other folders for as long as it lives.
class product_guard_t
{
public:
    product_guard_t(const std::string& resource_dir, const std::string& locale_dir,
                    const std::string& config_dir = {});
    ~product_guard_t();
};

/// Another language for as long as it lives.
class language_guard_t
{
public:
    explicit language_guard_t(const std::string& language);
    ~language_guard_t();
};

/// The light or the dark theme for as long as it lives, the system's after that.
class theme_guard_t
{
public:
    explicit theme_guard_t(bool dark);
    ~theme_guard_t();
};

/// The desktop's font, for as long as it lives; windows follow when the loop turns.
class font_guard_t
{
public:
    explicit font_guard_t(const char* font);
    ~font_guard_t();
};

/// A folder of the test's own, removed at its end.
class temp_dir_t
{
public:
    temp_dir_t();
    ~temp_dir_t();
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

void use_default_product();
/// At once, as a program opens them here; for tests of the waiting, until this is called.
void let_unasked_windows_take_input();
void note_exception();
/// Called by the program's own listener.
void end_test();
void install_handlers();

} // namespace test
