#include "paint_dc.h"

#include <wx/fontutil.h>
#include <wx/graphics.h>
#include <wx/window.h>

#include <gtk/gtk.h>

namespace vdxcfrw7 {

class paint_dc_t::impl_t : public wxGCDCImpl
{
public:
    impl_t(wxDC* owner, wxPaintDC& dc)
        : wxGCDCImpl(owner, 0),
          m_window(dc),
          m_cairo(static_cast<cairo_t*>(dc.GetGraphicsContext()->GetNativeContext()))
    {
        SetGraphicsContext(wxGraphicsContext::CreateFromNative(m_cairo));
        m_ok = m_graphicContext != nullptr;
        // Lines of one pixel lie in pixels, not between two.
        if (m_ok)
            m_graphicContext->EnableOffset(dc.GetContentScaleFactor() <= 1);
        cairo_matrix_t matrix;
        cairo_get_matrix(m_cairo, &matrix);
        m_mirrored = matrix.xx < 0;
        // The window's own text settings: resolution, hinting, smoothing.
        PangoContext* context = gtk_widget_create_pango_context(dc.GetWindow()->GetHandle());
        m_layout = pango_layout_new(context);
        g_object_unref(context);
    }

    ~impl_t() override { g_object_unref(m_layout); }

    // Fonts are compared by the data that copies share: comparing their attributes takes longer than drawing
    // a word.
    void SetFont(const wxFont& font) override
    {
        if (font.GetRefData() == m_font.GetRefData())
            return;
        m_font = font;
        m_decorated = font.IsOk() && (font.GetUnderlined() || font.GetStrikethrough());
        if (font.IsOk())
            pango_layout_set_font_description(m_layout, font.GetNativeFontInfo()->description);
    }

    void DoDrawText(const wxString& text, wxCoord x, wxCoord y) override
    {
        if (m_decorated || m_backgroundMode != wxBRUSHSTYLE_TRANSPARENT || !m_font.IsOk()) {
            prepare_window();
            m_window.DrawText(text, x, y);
            return;
        }
        set_text(text);
        draw_layout(m_layout, x, y, m_textForegroundColour);
    }

    void draw_layout(PangoLayout* layout, int x, int y, const wxColour& ink)
    {
        cairo_set_source_rgba(m_cairo, ink.Red() / 255.0, ink.Green() / 255.0, ink.Blue() / 255.0,
                              ink.Alpha() / 255.0);
        cairo_save(m_cairo);
        cairo_translate(m_cairo, x, y);
        if (m_mirrored) { // a window from right to left is drawn in a mirror: text is turned back in its
                          // place
            int width = pango_layout_get_width(layout) / PANGO_SCALE;
            if (width <= 0)
                pango_layout_get_pixel_size(layout, &width, nullptr);
            cairo_translate(m_cairo, width, 0);
            cairo_scale(m_cairo, -1, 1);
        }
        cairo_move_to(m_cairo, 0, 0);
        pango_cairo_show_layout(m_cairo, layout);
        cairo_new_path(m_cairo);
        cairo_restore(m_cairo);
    }

    void DoDrawBitmap(const wxBitmap& bitmap, wxCoord x, wxCoord y, bool use_mask) override
    {
        m_window.DrawBitmap(bitmap, x, y, use_mask);
    }

    void DoGetTextExtent(const wxString& text, wxCoord* width, wxCoord* height, wxCoord* descent,
                         wxCoord* leading, const wxFont* font) const override
    {
        if (font || descent || leading || !m_font.IsOk()) {
            prepare_window();
            m_window.GetTextExtent(text, width, height, descent, leading, font);
            return;
        }
        set_text(text);
        pango_layout_get_pixel_size(m_layout, width, height);
    }

    void draw_text(const wxString& text, int x, int y, PangoDirection direction)
    {
        const PangoDirection before = pango_context_get_base_dir(pango_layout_get_context(m_layout));
        set_direction(direction);
        pango_layout_set_auto_dir(m_layout, FALSE);
        DoDrawText(text, x, y);
        pango_layout_set_auto_dir(m_layout, TRUE);
        set_direction(before); // texts without letters follow it
    }

    void push_clip(const wxRect& rect)
    {
        cairo_save(m_cairo);
        cairo_rectangle(m_cairo, rect.x, rect.y, rect.width, rect.height);
        cairo_clip(m_cairo);
    }
    void pop_clip() { cairo_restore(m_cairo); }

private:
    // What is left to the toolkit is done by the window's own context, which knows of the mirror.
    void prepare_window() const
    {
        m_window.SetFont(m_font);
        m_window.SetTextForeground(m_textForegroundColour);
        m_window.SetTextBackground(m_textBackgroundColour);
        m_window.SetBackgroundMode(m_backgroundMode);
    }

    void set_direction(PangoDirection direction)
    {
        PangoContext* context = pango_layout_get_context(m_layout);
        if (pango_context_get_base_dir(context) == direction)
            return;
        pango_context_set_base_dir(context, direction);
        pango_layout_context_changed(m_layout);
    }

    void set_text(const wxString& text) const
    {
        const wxScopedCharBuffer bytes = text.utf8_str();
        pango_layout_set_text(m_layout, bytes.data(), static_cast<int>(bytes.length()));
    }

    wxPaintDC& m_window;
    cairo_t* m_cairo;
    PangoLayout* m_layout;
    bool m_mirrored = false;
    bool m_decorated = false;
};

paint_dc_t::paint_dc_t(wxPaintDC& dc) : wxDC(new impl_t(this, dc)) {}

void paint_dc_t::draw_text(const wxString& text, int x, int y, PangoDirection direction)
{
    static_cast<impl_t*>(GetImpl())->draw_text(text, x, y, direction);
}

void paint_dc_t::draw_layout(PangoLayout* layout, int x, int y, const wxColour& ink)
{
    static_cast<impl_t*>(GetImpl())->draw_layout(layout, x, y, ink);
}

paint_dc_t::clip_t::clip_t(paint_dc_t& dc, const wxRect& rect) : m_dc(dc)
{
    static_cast<impl_t*>(m_dc.GetImpl())->push_clip(rect);
}

paint_dc_t::clip_t::~clip_t()
{
    static_cast<impl_t*>(m_dc.GetImpl())->pop_clip();
}

} // namespace vdxcfrw7
