#include "advanced_panel_page.h"

#include "json_report.h"
#include "missing_resource.h"

#include <commondlg3/resources.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/checkbox.h>

#include <algorithm>
#include <string>

namespace gallery {

using commondlg3::advanced_panel_t;
using commondlg3::from_xrc;
using button_style_t = advanced_panel_t::button_style_t;

advanced_panel_page_t::advanced_panel_page_t(const nlohmann::json& data)
    : demo_dialog_t(object_name), m_data(data)
{
    set_resource_object("dlg.advanced_panel_demo");
}

void advanced_panel_page_t::on_init_dialog()
{
    auto* caption = from_xrc<wxTextCtrl>(this, "m_caption");
    auto* enabled = from_xrc<wxCheckBox>(this, "m_enabled");
    auto* add_button = from_xrc<wxButton>(this, "m_add");
    auto* clear_button = from_xrc<wxButton>(this, "m_clear");
    if (!caption || !enabled || !add_button || !clear_button)
        return;
    const auto style = static_cast<button_style_t>(get_int(m_data, "style", 0));
    const auto other_style = style == button_style_t::box ? button_style_t::arrow : button_style_t::box;
    m_outer = new advanced_panel_t(this, get_string(m_data, "caption", text("advanced.sample.outer")), style,
                                   wxID_ANY);
    constexpr int below_the_caption = 1;
    insert_panel(m_outer, below_the_caption, get_margin(), caption);
    const auto box = [](wxWindow* parent, const char* key) {
        return new wxCheckBox(parent, wxID_ANY, wx_helpers1::to_plain_label(text(key)));
    };
    m_outer->add(box(m_outer, "advanced.sample.first"), 0, wxBOTTOM, 6, nullptr);
    m_outer->add(box(m_outer, "advanced.sample.second"), 0, wxBOTTOM, 6, nullptr);
    m_inner = new advanced_panel_t(m_outer, text("advanced.sample.inner"), other_style, wxID_ANY);
    m_outer->add(m_inner, 0, wxEXPAND, 0, nullptr);
    add();
    m_outer->open(get_bool(m_data, "open", true));
    m_inner->open(get_bool(m_data, "inner_open", true));
    m_outer->get_open_close_signal().connect(this, [this](bool opened) { toggled("open_close", opened); });
    m_inner->get_open_close_signal().connect(this,
                                             [this](bool opened) { toggled("inner_open_close", opened); });

    caption->ChangeValue(wx_helpers1::to_wx(m_outer->get_caption()));
    caption->Bind(wxEVT_TEXT, [this, caption](wxCommandEvent&) {
        m_outer->set_caption(wx_helpers1::from_wx(caption->GetValue()));
    });
    enabled->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { m_outer->Enable(event.IsChecked()); });
    add_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        add();
        toggled("added", m_inner->is_opened());
    });
    clear_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { clear(); });
    caption->SetFocus();
    finish_layout();
}

// So that the panel's frame is in line with the other controls.
int advanced_panel_page_t::get_margin() const
{
    return std::max(0, 18 - m_outer->get_header_height() / 2);
}

void advanced_panel_page_t::fit_again()
{
    if (m_outer)
        need_sizer()->GetItem(m_outer)->SetBorder(get_margin());
    demo_dialog_t::fit_again();
}

void advanced_panel_page_t::add()
{
    auto* added =
        new wxCheckBox(m_inner, wxID_ANY, wx_helpers1::to_plain_label(text("advanced.sample.third")));
    m_added.push_back(added);
    m_inner->add(added, 0, wxBOTTOM, 6, nullptr);
    Layout();
}

void advanced_panel_page_t::clear()
{
    m_inner->clear();
    for (wxWindow* window : m_added)
        window->Destroy();
    m_added.clear();
    m_inner->update_min_size();
    toggled("cleared", m_inner->is_opened());
}

// The window grows and shrinks with what is open in it.
void advanced_panel_page_t::toggled(const char* name, bool opened)
{
    fit_to_contents();
    report_signal(object_name, name, opened);
}

nlohmann::json advanced_panel_page_t::get_state() const
{
    return {{"caption", m_outer ? m_outer->get_caption() : std::string()},
            {"open", m_outer && m_outer->is_opened()},
            {"inner_open", m_inner && m_inner->is_opened()},
            {"size", {GetSize().x, GetSize().y}}};
}

int open_advanced_panel_page(const nlohmann::json& data, wxWindow* parent)
{
    advanced_panel_page_t page(data);
    return page.run(parent);
}

} // namespace gallery
