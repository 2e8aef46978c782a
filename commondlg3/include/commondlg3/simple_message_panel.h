#pragma once

#include "commondlg3/caption_label.h"

#include <gen_helpers2/signal.h>
#include <wx_helpers1/elements/element_adapter.h>

#include <wx/panel.h>

#include <cstdint>
#include <memory>
#include <string>

namespace wx_helpers1 {
class rectangle_element_t;
class static_picture_ctrl_t;
} // namespace wx_helpers1

namespace commondlg3 {

class parent_layout_t;

/// A framed notice inside a page: a severity picture and one text.
///
/// Use it for a single notice that belongs to a part of a page; the page decides when to show and to hide it.
/// For several messages that wait use caption_panel_t.
///
///     m_notice = new simple_message_panel_t(this);
///     sizer->Add(m_notice, 0, wxEXPAND);
///     m_notice->set_message(simple_message_panel_t::severity_t::warning, text);
///     m_notice->enable(true);
///     Layout();
///
/// Text is UTF-8 bytes. The picture is never alone: its severity stands in its tool tip, and a screen reader
/// says it before the text. Ownership: a window, destroyed by its parent. GUI thread; no errors.
class COMMONDLG3_EXPORT simple_message_panel_t : public wxPanel, public gen_helpers2::subscriber_base_t
{
public:
    /// The lower, the more severe. Any other value is shown as information.
    enum class severity_t : std::int32_t
    {
        critical,
        error,
        warning,
        information
    };

    explicit simple_message_panel_t(wxWindow* parent);
    ~simple_message_panel_t() override;

    /// Sets picture and text. It does not show the panel, and the text is wrapped when the panel is next
    /// given a size. An empty text hides the panel and changes nothing else.
    void set_message(severity_t severity, const std::string& text);
    /// Shows or hides the panel; laying the page out is up to the page.
    void enable(bool shown);

    virtual void on_size(wxSizeEvent& event);
    /// Takes font, colours and picture of the theme; called at each change of it.
    virtual void on_ui_changed();
    bool InformFirstDirection(int direction, int size, int available_other_dir) override;

private:
    void fit_picture();
    bool wrap(int width);
    void wrap_and_lay_out(int width);

    std::unique_ptr<parent_layout_t> m_parent_layout;
    wx_helpers1::element_adapter_t m_elements;
    wx_helpers1::rectangle_element_t* m_frame = nullptr;
    wx_helpers1::static_picture_ctrl_t* m_picture = nullptr;
    caption_label_t* m_label = nullptr;
};

} // namespace commondlg3
