#pragma once

#include <memory>
#include <string>

namespace vdxcfrw7 {

class CMessageElement;
class log_view_t;
struct line_t;
struct text_place_t;

/// Tells screen readers what the window of a log shows, from top to bottom: headings, bodies, lines with
/// their severity in words, buttons and gauges. The reader's place is what they read when it moves; lines
/// that come while the reader follows the end are said in passing, the last of a burst with how many
/// came.
class view_accessible_t
{
public:
    explicit view_accessible_t(log_view_t& view);
    ~view_accessible_t();
    view_accessible_t(const view_accessible_t&) = delete;
    view_accessible_t& operator=(const view_accessible_t&) = delete;

    /// The window exists now.
    void attach();
    /// Something else is seen.
    void changed();
    /// The window is on the screen.
    void painted();
    /// The reader went elsewhere, or came into the window.
    void place_changed();
    /// What was searched for is there, while the keyboard is in the bar that searches.
    void found(const text_place_t& place);
    void say(const std::string& text);
    void line_added(const line_t& line);
    void element_removing(const CMessageElement& element);
    void set_name(const std::string& name);

    struct impl_t;

private:
    std::unique_ptr<impl_t> m_impl;
};

} // namespace vdxcfrw7
