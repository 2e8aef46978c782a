#include "commondlg3/experimental_options_panel.h"
#include "commondlg3/text_utils.h"

#include <cpil/catalog.h>
#include <cpil/strings.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/text_limit.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// What the page shows beyond the features: finding them, what was changed, turning all off.
namespace commondlg3 {
namespace {

constexpr std::size_t most_without_search = 10;
constexpr int extras_gap = 6;

// The upper case of two texts is the same when only their cases differ, in every script.
bool has_all_words(const std::string& text, const std::string& words)
{
    const std::string in = CPIL_2_18::strings::to_upper(text);
    std::istringstream typed(CPIL_2_18::strings::to_upper(words));
    for (std::string word; typed >> word;)
        if (in.find(word) == std::string::npos)
            return false;
    return true;
}

} // namespace

void experimental_options_panel_t::set_on_at_start(std::vector<std::string> env_variables)
{
    m_on_at_start = std::move(env_variables);
    m_knows_start = true;
}

// Made when there is something for them.
void experimental_options_panel_t::make_extras()
{
    if (!has_controls())
        return;
    const auto* settings = wx_helpers1::ui_settings_t::get();
    wxSizer* outer = m_list->GetContainingSizer();
    if ((m_flags & search_features) && !m_search && m_features.size() > most_without_search) {
        m_search = new wxSearchCtrl(this, wxID_ANY);
        wx_helpers1::limit_search(m_search);
        const std::string name = translate_message("panel.experimental.search");
        m_search->SetDescriptiveText(wx_helpers1::to_wx(name));
        wx_helpers1::set_accessible_name(m_search, name);
        m_search->MoveBeforeInTabOrder(m_list);
        m_search->Bind(wxEVT_TEXT, &experimental_options_panel_t::on_search, this);
        std::size_t place = 0;
        while (place < outer->GetItemCount() && outer->GetItem(place)->GetWindow() != m_list)
            ++place;
        outer->Insert(place, m_search, 0, wxEXPAND | wxBOTTOM, 2 * extras_gap);
        if (settings)
            wx_helpers1::apply_font(m_search, settings->get_font(wx_helpers1::ui_font::text));
    }
    if ((m_flags & offer_reset) && !m_reset && !m_features.empty()) {
        m_reset =
            new wxButton(this, wxID_ANY, wx_helpers1::to_wx(translate_message("panel.experimental.reset")));
        m_reset->Bind(wxEVT_BUTTON, &experimental_options_panel_t::on_reset, this);
        outer->Add(m_reset, 0, wxTOP, extras_gap);
        if (settings)
            wx_helpers1::apply_font(m_reset, settings->get_font(wx_helpers1::ui_font::text));
    }
}

// On a line of its own: a description may be in another language, which may run the other way.
void experimental_options_panel_t::show_change(std::size_t row)
{
    if (!(m_flags & show_changes))
        return;
    const feature_info_t& feature = m_features[row];
    row_t& shown = m_rows[row];
    const bool was_on =
        std::find(m_on_at_start.begin(), m_on_at_start.end(), feature.env_variable) != m_on_at_start.end();
    std::string text;
    if (was_on != feature.enabled)
        text = translate_message(was_on ? CPIL_2_18::i18n::catalog_key("panel.experimental.was_on")
                                        : CPIL_2_18::i18n::catalog_key("panel.experimental.was_off"));
    if (!text.empty() && !shown.change) {
        wxSizer* sizer = m_list->GetSizer();
        std::size_t place = 0;
        while (place < sizer->GetItemCount() && sizer->GetItem(place)->GetWindow() != shown.description)
            ++place;
        const wxSizerItem* above = sizer->GetItem(place);
        shown.change = new wxStaticText(m_list, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                        wxST_NO_AUTORESIZE);
        shown.change->MoveAfterInTabOrder(shown.description);
        sizer->Insert(place + 1, shown.change, 0, above->GetFlag(), above->GetBorder());
        if (const auto* settings = wx_helpers1::ui_settings_t::get())
            wx_helpers1::apply_font(shown.change, settings->get_font(wx_helpers1::ui_font::text));
    }
    if (!shown.change)
        return;
    wx_helpers1::set_label_text(shown.change, text);
    shown.change->Show(!text.empty() && shown.box->IsShown());
    const std::string& description = feature.description;
    wx_helpers1::set_accessible_description(
        shown.box, description + (description.empty() || text.empty() ? "" : "\n") + text);
}

bool experimental_options_panel_t::is_searched() const
{
    return m_search && !m_search->IsEmpty();
}

std::string experimental_options_panel_t::get_status() const
{
    if (m_features.empty())
        return translate_message("panel.experimental.none");
    const auto on = std::count_if(m_features.begin(), m_features.end(),
                                  [](const feature_info_t& feature) { return feature.enabled; });
    const std::string status =
        translate_message("panel.experimental.status",
                          {{"on", static_cast<int>(on)}, {"count", static_cast<int>(m_features.size())}});
    if (!is_searched())
        return status;
    return translate_message(
        "text.two_sentences",
        {{"first", translate_message("panel.experimental.found", {{"found", static_cast<int>(m_found)}})},
         {"second", status}});
}

void experimental_options_panel_t::on_search(wxCommandEvent& event)
{
    event.Skip();
    const std::string words = wx_helpers1::from_wx(m_search->GetValue());
    m_found = 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const feature_info_t& feature = m_features[i];
        const bool found =
            has_all_words(feature.name + " " + feature.description + " " + feature.env_variable, words);
        m_found += found ? 1 : 0;
        m_rows[i].box->Show(found);
        m_rows[i].description->Show(found && !m_rows[i].description->GetLabelText().empty());
        if (m_rows[i].change)
            m_rows[i].change->Show(found && !m_rows[i].change->GetLabelText().empty());
        m_rows[i].gap->Show(found);
    }
    m_list->Scroll(0, 0);
    m_list->FitInside();
    show_state();
    wx_helpers1::announce(m_list, get_status());
}

void experimental_options_panel_t::on_reset(wxCommandEvent& event)
{
    event.Skip();
    for (std::size_t i = 0; i < m_features.size(); ++i) {
        m_features[i].enabled = false;
        if (i >= m_rows.size())
            continue;
        m_rows[i].box->SetValue(false);
        show_change(i);
    }
    show_state();
    wx_helpers1::announce(m_list, get_status());
}

} // namespace commondlg3
