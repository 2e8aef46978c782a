#pragma once

#include <wx/dcclient.h>
#include <wx/dcgraph.h>

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

    /// Whether texts are pieces of a larger one, in the window's direction, instead of each in that of its
    /// own first letter: else the punctuation around a foreign word ends up on its wrong side.
    void set_pieces(bool pieces);

private:
    class impl_t;
};

} // namespace vdxcfrw7
