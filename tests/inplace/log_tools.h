/// What the tests of the in-place message control share.
#pragma once

#include "support.h"

#include <commondlg3/inplace_ctrl.h>
#include <vdx/event_log.h>

#include <wx/image.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace test {

using commondlg3::inplace_ctrl_t;

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int flood = 20000;
#else
constexpr int flood = 400000;
#endif

/// A control in a window of its own, 800 by 600 pixels inside, shown and painted.
class log_window_t
{
public:
    explicit log_window_t(bool show_debug = false);
    ~log_window_t();

    inplace_ctrl_t& control() { return *m_control; }
    inplace_ctrl_t* operator->() { return m_control; }
    vdxcfrw7::CEventLog& log() { return m_control->get_log(); }
    const vdxcfrw7::CMessageElement& element(std::size_t entry) { return *log().GetElements().at(entry); }
    wxFrame* frame() { return m_frame; }
    /// Gives the log the focus.
    void focus();
    /// Destroys the window at once, with everything in it.
    void destroy();

private:
    wxFrame* m_frame;
    inplace_ctrl_t* m_control;
};

commondlg3::message_t::ptr_t make_message(const std::string& caption, const std::string& message = "");
commondlg3::progress_message_t::ptr_t make_progress(const std::string& caption);

commondlg3::message_t::ptr_t with_buttons(const std::string& caption, std::initializer_list<int> ids);

/// The remembered lines of the n-th entry, as they are shown.
std::vector<std::string> lines_of(inplace_ctrl_t& control, std::size_t entry);
/// The captions of the entries.
std::vector<std::string> captions_of(inplace_ctrl_t& control);
/// The text of the button with that id in the n-th entry, when it is offered; empty when it is not.
vdxcfrw7::CButton* offered_button(inplace_ctrl_t& control, std::size_t entry, int id);

/// What the screen shows of a window.
wxImage picture_of(const wxTopLevelWindow& window);

/// Line `i` of a flood: 80 characters, every fifth 300.
std::string flood_line(int i);
/// Says so many lines and waits until they are shown.
void say_lines(log_window_t& window, inplace_ctrl_t::tag_t tag, int count);

} // namespace test
