#include "commondlg3/experimental_options_panel.h"

#include "base/wrapped_labels.h"
#include "commondlg3/resources.h"
#include "commondlg3/simple_message_panel.h"
#include "commondlg3/text_utils.h"

#include <gen_helpers2/assertion.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/scrolwin.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char experimental_options_panel_unit[] = "experimental_options_panel";
constexpr int gap = 6;
constexpr int indent = 24; // what a check box takes before its label

} // namespace

experimental_options_panel_t::experimental_options_panel_t(boost::shared_ptr<feature_list_config_t> features,
                                                           boost::shared_ptr<active_features_config_t> active,
                                                           unsigned flags)
    : m_feature_list(std::move(features)), m_active(std::move(active)), m_flags(flags)
{
    set_resource_object("panel.experimental");
}

experimental_options_panel_t::~experimental_options_panel_t() = default;

bool experimental_options_panel_t::has_controls() const
{
    return m_description && m_status && m_list && m_notice;
}

void experimental_options_panel_t::on_init_dialog()
{
    m_description = from_xrc<wxStaticText>(this, "m_experimental_descr");
    m_status = from_xrc<wxStaticText>(this, "m_experimental_status");
    m_list = from_xrc<wxScrolledWindow>(this, "m_feature_list_wnd");
    if (auto* place = from_xrc<wxPanel>(this, "m_mesage_panel")) {
        m_notice = new simple_message_panel_t(place);
        m_notice->set_message(simple_message_panel_t::severity_t::information,
                              translate_message("panel.experimental.restart_needed"));
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        sizer->Add(m_notice, 0, wxEXPAND | wxBOTTOM, 2 * gap);
        place->SetSizer(sizer);
    }
    if (!has_controls())
        return;
    m_least_width = m_list->GetMinSize().x;
    m_list->SetScrollRate(0, 10);
    m_list->SetSizer(new wxBoxSizer(wxVERTICAL));
    Bind(wxEVT_SIZE, &experimental_options_panel_t::on_size, this);
    load_settings();
}

void experimental_options_panel_t::load_settings()
{
    remove_features();
    m_loaded_features = true;
    m_loading = true; // many features are laid out once
    load_feature_list();
    m_loading = false;
    for (std::size_t i = 0; i < m_features.size(); ++i) {
        feature_info_t& feature = m_features[i];
        feature.enabled =
            m_active && m_active->is_turned_on({feature.name, feature.description, feature.env_variable});
        if (i < m_rows.size()) {
            m_rows[i].box->SetValue(feature.enabled);
            m_rows[i].stored = feature.enabled;
        }
    }
    if (!m_knows_start) {
        std::vector<std::string> on;
        for (const feature_info_t& feature : m_features)
            if (feature.enabled)
                on.push_back(feature.env_variable);
        set_on_at_start(std::move(on));
    }
    make_extras();
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        show_change(i);
    show_state();
}

void experimental_options_panel_t::load_feature_list()
{
    if (!m_feature_list)
        return;
    for (int i = 0; i < m_feature_list->get_count(); ++i) {
        const auto feature = m_feature_list->get_feature(i);
        add_feature({feature.name, feature.description, feature.env_variable, false});
    }
}

void experimental_options_panel_t::remove_features()
{
    m_features.clear();
    m_rows.clear();
    if (m_list)
        m_list->GetSizer()->Clear(true);
}

void experimental_options_panel_t::add_feature(const feature_info_t& feature)
{
    if (std::find(m_features.begin(), m_features.end(), feature) != m_features.end())
        return;
    m_features.push_back(feature);
    m_loaded_features = true;
    if (!m_list)
        return;
    add_checkbox(feature.name, feature.description, feature.enabled);
    if (!m_loading)
        show_state();
}

void experimental_options_panel_t::add_checkbox(const std::string& name, const std::string& description,
                                                bool enabled)
{
    auto* box = new wxCheckBox(m_list, wxID_ANY, wx_helpers1::to_plain_label(name));
    box->SetValue(enabled);
    box->Bind(wxEVT_CHECKBOX, &experimental_options_panel_t::on_checkbox, this);
    auto* label = new wxStaticText(m_list, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                   wxST_NO_AUTORESIZE);
    wx_helpers1::set_label_text(label, description);
    label->Show(!description.empty());
    wx_helpers1::set_accessible_description(box, description);
    wxSizer* sizer = m_list->GetSizer();
    sizer->Add(box, 0, wxBOTTOM, gap / 2);
    sizer->Add(label, 0, wxEXPAND | wxLEFT, indent);
    m_rows.push_back({box, label, enabled, sizer->AddSpacer(2 * gap)});
    const auto* settings = wx_helpers1::ui_settings_t::get();
    if (!settings)
        return;
    wx_helpers1::apply_font(box, settings->get_font(wx_helpers1::ui_font::text));
    wx_helpers1::apply_font(label, settings->get_font(wx_helpers1::ui_font::text));
    label->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::secondary_text));
}

bool experimental_options_panel_t::owns(const wxCheckBox* box) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [box](const row_t& row) { return row.box == box; });
}

void experimental_options_panel_t::on_checkbox(wxCommandEvent& event)
{
    event.Skip();
    auto* box = wxDynamicCast(event.GetEventObject(), wxCheckBox);
    if (!box || !GH2_ASSERT_TEXT(!box->Is3State(), "!Is3State()", experimental_options_panel_unit))
        return;
    const wxString label = box->GetLabelText();
    for (std::size_t i = 0; i < m_features.size(); ++i) {
        // Two features may bear one name: a box of this page's own also knows its place.
        const bool another = i < m_rows.size() && m_rows[i].box != box && owns(box);
        if (another || wx_helpers1::to_label(m_features[i].name) != label)
            continue;
        m_features[i].enabled = box->GetValue();
        if (i < m_rows.size())
            show_change(i);
        break;
    }
    show_state();
}

bool experimental_options_panel_t::save_settings()
{
    take_choice();
    if (!m_active)
        return m_restart_requested;
    if (!m_loaded_features)
        return true;
    const bool saved = m_active->save();
    if (saved)
        set_unchanged();
    return saved;
}

void experimental_options_panel_t::take_choice()
{
    m_restart_requested = is_changed();
    if (!m_active || !m_loaded_features)
        return; // nothing was shown, so nothing was chosen: an empty list would be nobody's choice
    m_active->clear();
    for (const feature_info_t& feature : m_features)
        if (feature.enabled)
            m_active->turn_on({feature.name, feature.description, feature.env_variable});
}

void experimental_options_panel_t::set_unchanged()
{
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i].stored = m_features[i].enabled;
}

bool experimental_options_panel_t::set_enabled(const std::string& env_variable, bool enabled)
{
    for (std::size_t i = 0; i < m_features.size(); ++i) {
        if (m_features[i].env_variable != env_variable)
            continue;
        m_features[i].enabled = enabled;
        if (i < m_rows.size()) {
            m_rows[i].box->SetValue(enabled);
            show_change(i);
        }
        show_state();
        return true;
    }
    return false;
}

bool experimental_options_panel_t::is_changed() const
{
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (m_features[i].enabled != m_rows[i].stored)
            return true;
    return false;
}

bool experimental_options_panel_t::is_experimental_on() const
{
    return std::any_of(m_features.begin(), m_features.end(),
                       [](const feature_info_t& feature) { return feature.enabled; });
}

bool experimental_options_panel_t::prompt_restart_now() const
{
    message_window_t window;
    window.main_message = translate_message("panel.experimental.restart_prompt_title");
    window.supplemental_message = translate_message("panel.experimental.restart_prompt_description");
    window.icon_type = message_window_t::icon_types_t::information;
    window.button_type = message_window_t::button_type_t::yes_no;
    return show_modal(window, nullptr) == message_window_t::result_yes;
}

void experimental_options_panel_t::show_state()
{
    if (!has_controls())
        return;
    wx_helpers1::set_label_text(m_status, get_status());
    if (m_reset)
        wx_helpers1::set_enabled(m_reset, is_experimental_on(),
                                 m_rows.empty() ? nullptr : m_rows.front().box);
    // What was changed takes effect later also after it was saved.
    const bool needed = is_changed() || m_restart_requested;
    if (needed != m_notice->IsShown()) {
        m_notice->enable(needed);
        Layout();
    }
    rewrap();
}

void experimental_options_panel_t::on_size(wxSizeEvent&)
{
    rewrap();
}

void experimental_options_panel_t::rewrap()
{
    if (!has_controls())
        return;
    // Their boxes do not wrap: the page is as wide as they are, whoever shows it.
    const int bar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, m_list);
    m_list->SetMinSize(
        wxSize(std::max(m_least_width, m_list->GetSizer()->CalcMin().x + bar), m_list->GetMinSize().y));
    bool changed = fit_wrapped_labels(*this, {m_description, m_status});
    std::vector<wxStaticText*> descriptions;
    for (const row_t& row : m_rows)
        descriptions.insert(descriptions.end(), {row.description, row.change});
    changed = fit_wrapped_labels(*m_list, descriptions) || changed;
    if (changed)
        SendSizeEventToParent(wxSEND_EVENT_POST);
}

void experimental_options_panel_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    const auto* settings = wx_helpers1::ui_settings_t::get();
    if (!settings)
        return;
    for (const row_t& row : m_rows)
        row.description->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::secondary_text));
    rewrap();
}

} // namespace commondlg3
