#include "wx_helpers1/window_size.h"

#include <wx/display.h>
#include <wx/math.h>

namespace wx_helpers1 {

window_size_t::window_size_t(wxTopLevelWindow& window, const wxSize& usual, const wxSize& least)
    : m_window(window), m_wanted(usual.x, usual.y), m_least(least)
{
}

void window_size_t::want(const wxSize& pixels)
{
    m_wanted =
        wxRealPoint(pixels.x / double(m_window.GetCharWidth()), pixels.y / double(m_window.GetCharHeight()));
    m_given = wxSize();
}

void window_size_t::take_over()
{
    const wxSize now = m_window.GetClientSize();
    if (m_given != wxSize() && now != m_given)
        m_wanted = wxRealPoint(now.x / double(m_character.x), now.y / double(m_character.y));
}

void window_size_t::give(const wxSize& needed)
{
    m_character = wxSize(m_window.GetCharWidth(), m_window.GetCharHeight());
    // The frame is the window manager's as a rule, and not known yet.
    wxSize frame = m_window.GetSize() - m_window.GetClientSize();
    frame.IncTo(wxSize(m_character.x, 3 * m_character.y));
    const wxSize screen = wxGetClientDisplayRect().GetSize() - frame;
    wxSize least(m_least.x * m_character.x, m_least.y * m_character.y);
    least.IncTo(needed);
    least.DecTo(screen);
    m_window.SetMinClientSize(least);
    wxSize size(wxRound(m_character.x * m_wanted.x), wxRound(m_character.y * m_wanted.y));
    size.DecTo(screen);
    size.IncTo(least);
    m_window.SetClientSize(size);
    m_window.Layout();
    keep();
}

} // namespace wx_helpers1
