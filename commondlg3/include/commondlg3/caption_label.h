#pragma once

#include "commondlg3/export.h"

#include <wx/font.h>
#include <wx/stattext.h>

#include <string>

namespace commondlg3 {

/// A static text that breaks itself into lines of a width that it is told, and says how many there are.
///
/// To a sizer it is as narrow as can be, so that a long text never widens its window: give it a proportion or
/// wxEXPAND, and whoever lays it out tells it the width. For a text that stands still use wxStaticText.
///
///     auto* label = new caption_label_t(this, "", this);
///     label->set_label(text);
///     if (label->wrap_to_width(GetClientSize().x))
///         ...                                        // another number of lines: lay out again
///
/// Texts are UTF-8 bytes and shown as they stand ('&' is no mnemonic). Widths are in pixels. Ownership: a
/// window, destroyed by its parent; the window whose width it follows must outlive it. GUI thread.
class COMMONDLG3_EXPORT caption_label_t : public wxStaticText
{
public:
    /// @param window_for_get_parent_size the window whose width it follows; null is an assertion
    caption_label_t(wxWindow* parent, const std::string& text, wxWindow* window_for_get_parent_size);

    /// Sets the text; it shows with the next wrap_to_width().
    void set_label(const std::string& text);
    /// As it was set, without line breaks of ours.
    const std::string& get_full_text() const { return m_text; }

    /// Breaks the text for this width less the delta and shows it. A width that leaves less than -1 changes
    /// nothing.
    /// @return whether the number of lines changed
    bool wrap_to_width(int width);
    /// -1 before the first wrap.
    int get_line_num() const { return m_lines; }

    /// Takes what the followed window is wider than this label, and `extra` more, as the delta; only ever
    /// more than it was.
    void update_delta(int extra);
    /// What stands beside the label has become wider, or narrower, by so much.
    /// @since 3.1
    void shift_delta(int by);
    int get_delta() const { return m_delta; }

protected:
    wxSize DoGetBestSize() const override;
    void DoSetSize(int x, int y, int width, int height, int flags) override;

private:
    std::string m_text;
    wxWindow* m_window_for_get_parent_size;
    int m_delta = 0;
    int m_lines = -1;
    // What the text on the screen was made for: a window that is laid out asks for the same again and again.
    bool m_wrapped = false;
    int m_wrapped_width = 0;
    int m_wrapped_look = 0;
    wxFont m_wrapped_own_font;
};

} // namespace commondlg3
