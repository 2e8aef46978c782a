#pragma once

#include "body_reader.h"
#include "text_shaper.h"

#include <wx/colour.h>
#include <wx/gdicmn.h>

#include <string>
#include <vector>

namespace vdxcfrw7 {

class paint_dc_t;

/// How bodies are drawn in a window.
struct body_look_t
{
    void set_window(wxWindow& window);

    object_ptr_t<PangoContext> context;
    wxFont font;
    wxColour ink;
    wxColour link;
    wxColour border;
    wxColour background;
    int line_height = 1;
};

/// A message body laid out: paragraphs, lists and tables, each text in the direction of its first letter.
class html_body_t
{
public:
    /// The look must live as long.
    html_body_t(const std::string& html, const body_look_t& look);

    /// Lays it out for a width and returns its height, both in pixels.
    int set_width(int width);
    int get_height() const { return m_height; }
    struct link_t
    {
        std::string target;
        std::vector<wxRect> rects; ///< from the body's top and leading edge
    };
    std::vector<link_t> get_links() const;
    /// Draws what of it is seen: between 0 and `bottom`. All in one colour when `selected` is valid.
    void draw(paint_dc_t& dc, int x, int y, int bottom, const wxColour& selected) const;

private:
    struct placed_t
    {
        pango_layout_t layout;
        wxPoint at;
        int height;
        const body_paragraph_t* paragraph;
    };

    pango_layout_t make_layout(const body_paragraph_t& paragraph, int width) const;
    int natural_width(const body_flow_t& flow) const;
    std::vector<int> natural_columns(const body_table_t& table) const;
    int place(const body_flow_t& flow, int x, int y, int width);
    int place_table(const body_table_t& table, int x, int y, int width);
    /// Returns its height.
    int add_text(pango_layout_t layout, int x, int y, const body_paragraph_t* paragraph = nullptr);

    const body_look_t& m_look;
    body_flow_t m_flow;
    std::vector<placed_t> m_placed;
    std::vector<wxRect> m_frames; // of tables, and rules
    int m_width = -1;
    int m_height = 0;
};

} // namespace vdxcfrw7
