/// What the window tests share. All of it runs on the GUI thread, inside the program's one event loop.
#pragma once

#include <gtest/gtest.h>

#include <wx/event.h>
#include <wx/frame.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxTopLevelWindow;

namespace test {

/// The application's main window, shown for the length of the program.
wxFrame* main_window();

/// Lets the event loop turn until the condition holds; false when it does not within the limit.
bool wait_for(const std::function<bool()>& condition, int milliseconds = 5000);
/// Lets the event loop turn until nothing is left to do.
void settle();

/// Runs `show`, which blocks in a modal loop, and `act` with the window that it opened once that is painted.
/// When `act` leaves the window open it is closed after a while and the test fails.
int run_modal(const std::function<int()>& show, const std::function<void(wxTopLevelWindow*)>& act);

/// A real key press, through the display.
void press(int key, int modifiers = wxMOD_NONE);
/// Real typing of ASCII text.
void type(const char* text);

/// Assertions of ours that were raised since the test began, by their condition's text. Reading them accepts
/// them; one that is left unread fails the test.
std::vector<std::string> take_assertions();

/// What exceptions told the application since the test began, under the same rule.
std::vector<std::string> take_exceptions();

/// Points the product at other folders for as long as it lives.
class product_guard_t
{
public:
    product_guard_t(const std::string& resource_dir, const std::string& locale_dir);
    ~product_guard_t();
};

/// Another folder for the user's settings for as long as it lives; need not exist.
class config_guard_t
{
public:
    explicit config_guard_t(const std::string& directory);
    ~config_guard_t();
};

/// Another language for as long as it lives.
class language_guard_t
{
public:
    explicit language_guard_t(const std::string& language);
    ~language_guard_t();
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
/// Called by the program's own listener.
void begin_test();
void note_exception();
void end_test();
void install_handlers();

} // namespace test
