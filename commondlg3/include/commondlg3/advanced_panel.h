#pragma once

#include "commondlg3/export.h"

#include <gen_helpers2/signal.h>
#include <wx_helpers1/elements/element_adapter.h>
#include <wx_helpers1/picture.h>

#include <wx/panel.h>
#include <wx/sizer.h>

#include <array>
#include <cstdint>
#include <string>

class wxImage;

namespace wx_helpers1 {
class icon_button_element_t;
class rectangle_element_t;
class text_element_t;
} // namespace wx_helpers1

namespace commondlg3 {

/// A framed group of controls that folds away: a caption with a button, and what was added below it, which is
/// there only while the panel is open.
///
/// Use it for settings that few people need. Do not hide in it what a page cannot be understood without, nor
/// a field that may hold an error.
///
///     auto* more = new advanced_panel_t(this, caption, advanced_panel_t::button_style_t::arrow, wxID_ANY);
///     more->add(new wxCheckBox(more, wxID_ANY, label), 0, wxBOTTOM, 5, nullptr);
///     sizer->Add(more, 0, wxEXPAND);
///     more->open(false);
///
/// A new panel is open. Mouse, Space and Enter on its header open and close it, Tab reaches the header first
/// and passes over what is hidden. A screen reader finds the header as a toggle button named by the caption,
/// expanded or not. Panels may stand in one another.
///
/// Texts are UTF-8 bytes, sizes pixels. Ownership: windows and sizers that are added belong to the panel;
/// the panel to its parent. GUI thread; no errors.
class COMMONDLG3_EXPORT advanced_panel_t : public wxPanel, public gen_helpers2::subscriber_base_t
{
public:
    /// The pictures of the button; any other value is an arrow too.
    enum class button_style_t : std::int32_t
    {
        arrow = 0, ///< an arrow head
        box = 1    ///< plus and minus in a box
    };

    /// @param id the window's identifier, wxID_ANY for any
    advanced_panel_t(wxWindow* parent, const std::string& caption, button_style_t style, int id);

    /// Makes the window a child of the panel and adds it below what is there, with these arguments of a
    /// sizer.
    void add(wxWindow* window, int proportion, int flag, int border, wxObject* user_data);
    /// The same with a sizer, whose windows must be children of the panel already.
    void add(wxSizer* sizer, int proportion, int flag, int border, wxObject* user_data);
    /// Takes out everything that was added; the windows stay children of the panel, and as visible as they
    /// were.
    void clear();

    /// What stands in the header, and what a screen reader calls it.
    void set_caption(const std::string& caption);
    const std::string& get_caption() const;

    /// Opens the panel, or closes it; the signal follows where that is a change.
    void open(bool opened);
    bool is_opened() const { return m_open; }
    /// Raised after each opening and closing, with the new state, when the parent has been laid out.
    gen_helpers2::signal_t<bool>& get_open_close_signal() { return m_open_close_signal; }

    bool Layout() override;
    /// Sets the minimum size again, after something in it was changed: that of the contents while open, a
    /// square of twice the header's height while closed.
    void update_min_size();
    /// A disabled panel draws its header greyed and cannot be opened or closed by the user.
    bool Enable(bool enable = true) override;

    /// Takes the pictures of the button's style, in place of those that set_button_image() has set.
    void load_button_images();
    /// Shows the pictures that belong to the present state: open or closed.
    void propagate_button_images();
    /// Takes the font and the colours of the theme; called at each change of it.
    void apply_colors();
    /// @param state_flags wx_helpers1::element_state's flags: all of these get the image
    void set_button_image(bool open_set, int state_flags, wxImage& image);

    int get_header_height() const { return m_header_height; }

protected:
    /// The constructor's part that makes header, button and frame.
    void init(const std::string& caption);
    /// Works out the header's height anew, and the frame's margins from it.
    void reset_border();
    /// Turns the panel from open to closed or back.
    virtual void on_open_close();
    virtual void on_resize(wxSizeEvent& event);

private:
    class header_t;
    struct button_images_t
    {
        static constexpr std::size_t states = 4;
        std::array<wx_helpers1::wxStaticPicture, states> images;
    };

    void insert_content();
    void place_elements();
    void apply_min_size();
    void after_adding(wxSizerItem* item);
    void keep_focus_visible();
    void lay_out_ancestors();

    bool m_open = true;
    int m_header_height = 19;
    button_style_t m_style;
    button_images_t m_closed_images;
    button_images_t m_open_images;
    wx_helpers1::element_adapter_t m_elements;
    wx_helpers1::rectangle_element_t* m_frame = nullptr;
    header_t* m_header = nullptr;
    wxSizer* m_content = nullptr;
    gen_helpers2::signal_t<bool> m_open_close_signal;
};

} // namespace commondlg3
