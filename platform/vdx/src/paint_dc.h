#pragma once

#include <wx/dcclient.h>
#include <wx/dcgraph.h>

#include <pango/pango.h>

namespace vdxcfrw7 {

/// Draws onto a window that is being painted, with text at its own speed: the toolkit's contexts shape each
/// text twice, once to draw it and once more to keep a bounding box that nobody reads, and make a layout for
/// each.
///
/// Everything else is the toolkit's own drawing. It must not outlive `dc`. GUI thread.
class paint_dc_t : public wxDC
{
public:
    explicit paint_dc_t(wxPaintDC& dc);

    /// A part of a text in the direction of the whole; DrawText() takes that of the part's first letter.
    void draw_text(const wxString& text, int x, int y, PangoDirection direction);
    void draw_layout(PangoLayout* layout, int x, int y, const wxColour& ink);

    /// Draws into a rectangle alone for as long as it lives. The toolkit's own clipper must not be used: a
    /// context made over a bare graphics context has no size for it to intersect with, and draws nothing
    /// afterwards.
    class clip_t
    {
    public:
        clip_t(paint_dc_t& dc, const wxRect& rect);
        ~clip_t();
        clip_t(const clip_t&) = delete;
        clip_t& operator=(const clip_t&) = delete;

    private:
        paint_dc_t& m_dc;
    };

private:
    class impl_t;
};

} // namespace vdxcfrw7
