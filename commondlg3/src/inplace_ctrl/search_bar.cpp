#include "search_bar.h"

#include "commondlg3/image_loader.h"
#include "commondlg3/text_utils.h"

#include <msngr2/messenger.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/text_limit.h>
#include <wx_helpers1/tooltip.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/bmpbuttn.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tglbtn.h>
#include <wx/wrapsizer.h>

#include <algorithm>
#include <cstdint>

namespace commondlg3 {
namespace {

using wx_helpers1::to_label;
using search_t = vdxcfrw7::CEventLog::search_t;

// In the order of the choice.
enum shown_t
{
    shown_all,
    shown_warnings,
    shown_errors
};
constexpr int severities[] = {
    0,
    msngr2::sev_warning | msngr2::sev_error | msngr2::sev_critical,
    msngr2::sev_error | msngr2::sev_critical,
};

wxButton* make_button(search_bar_t* parent, image_loader_t::image_type_t image, const std::string& name)
{
    const wx_helpers1::wxStaticPicture picture = image_loader_t::get().load_image(image);
    auto* button = new wxBitmapButton(parent, wxID_ANY, picture.get_bundle(), wxDefaultPosition,
                                      wxDefaultSize, wxBORDER_NONE);
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(parent, [button, picture] { button->SetBitmap(picture.get_bundle()); });
    wx_helpers1::SetTooltip(button, name);
    wx_helpers1::set_accessible_name(button, name);
    return button;
}

} // namespace

search_bar_t::search_bar_t(wxWindow* parent, vdxcfrw7::CEventLog& log)
    : wxPanel(parent, wxID_ANY, wxPoint(), wxSize(parent->GetClientSize().x, 100)), m_log(log)
{
    make_controls();
    // With the size that they will have: the theme complains of buttons smaller than their frames.
    SetSize(GetSize().x, GetBestSize().y);
    Layout();
    Hide();
    Bind(wxEVT_CHAR_HOOK, &search_bar_t::on_key, this);
    parent->Bind(wxEVT_SIZE, &search_bar_t::on_parent_size, this);
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->settled().connect(static_cast<gen_helpers2::subscriber_base_t*>(this), [this] { fit(); });
    m_text->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { look(); });
    m_text->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { find(true); });
    for (wxToggleButton* option : {m_match_case, m_whole_words, m_expression})
        option->Bind(wxEVT_TOGGLEBUTTON, [this](wxCommandEvent&) { look(); });
    m_severity->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { filter(); });
    m_errors->Bind(wxEVT_TOGGLEBUTTON, [this](wxCommandEvent& event) {
        m_severity->SetSelection(event.IsChecked() ? shown_errors : shown_all);
        filter();
    });
    m_warnings->Bind(wxEVT_TOGGLEBUTTON, [this](wxCommandEvent& event) {
        m_severity->SetSelection(event.IsChecked() ? shown_warnings : shown_all);
        filter();
    });
    m_only_matching->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { filter(); });
    m_only_entry->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
        show_only(event.IsChecked() ? m_log.GetCurrentElement() : nullptr);
    });
    m_log.hidden_changed().connect(this, &search_bar_t::tell_hidden);
    m_log.find_changed().connect(this, &search_bar_t::tell_found);
    m_log.counts_changed().connect(this, &search_bar_t::tell_counts);
}

wxToggleButton* search_bar_t::make_option(const wxString& label, const std::string& name)
{
    auto* option = new wxToggleButton(this, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    wx_helpers1::SetTooltip(option, name);
    wx_helpers1::set_accessible_name(option, name);
    return option;
}

wxToggleButton* search_bar_t::make_badge(int severity)
{
    using image = image_loader_t::image_type_t;
    const auto picture =
        image_loader_t::get().load_image(severity == shown_errors ? image::error12 : image::warning12);
    auto* badge = new wxToggleButton(this, wxID_ANY, "0", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    badge->SetBitmap(picture.get_bundle());
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(this, [badge, picture] { badge->SetBitmap(picture.get_bundle()); });
    return badge;
}

void search_bar_t::make_controls()
{
    using image = image_loader_t::image_type_t;
    const std::string hint = translate_message("inplace_ctrl.find_hint");
    m_text = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    m_text->SetHint(to_label(hint));
    m_text->SetMaxLength(1000);
    wx_helpers1::keep_what_fits(m_text);
    wx_helpers1::set_accessible_name(m_text, hint);
    m_match_case = make_option("Aa", translate_message("inplace_ctrl.match_case"));
    m_whole_words = make_option("|ab|", translate_message("inplace_ctrl.whole_words"));
    m_expression =
        make_option(wxString::FromUTF8("\u2066.*\u2069"),
                    /* the same in both directions */ translate_message("inplace_ctrl.expression"));
    auto* previous = make_button(this, image::up, translate_message("inplace_ctrl.find_previous"));
    auto* next = make_button(this, image::down, translate_message("inplace_ctrl.find_next"));
    m_found = new wxStaticText(this, wxID_ANY, wxString());
    auto* close_button = make_button(this, image::cross, translate_message("inplace_ctrl.find_close"));
    wxArrayString choices;
    choices.Add(to_label(translate_message("inplace_ctrl.filter_all")));
    choices.Add(to_label(translate_message("inplace_ctrl.filter_warnings")));
    choices.Add(to_label(translate_message("inplace_ctrl.filter_errors")));
    m_severity = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, choices);
    m_severity->SetSelection(shown_all);
    wx_helpers1::set_accessible_name(m_severity, translate_message("inplace_ctrl.filter"));
    m_errors = make_badge(shown_errors);
    m_warnings = make_badge(shown_warnings);
    m_only_matching =
        new wxCheckBox(this, wxID_ANY, to_label(translate_message("inplace_ctrl.only_matching")));
    m_only_entry = new wxCheckBox(this, wxID_ANY, to_label(translate_message("inplace_ctrl.only_entry")));
    m_hidden = new wxStaticText(this, wxID_ANY, wxString());
    for (wxStaticText* told : {m_found, m_hidden})
        wx_helpers1::keep_label_relations(told);
    previous->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { find(false); });
    next->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { find(true); });
    close_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { close(false); });
    tell_counts();
    make_sizers(previous, next, close_button);
}

void search_bar_t::make_sizers(wxWindow* previous, wxWindow* next, wxWindow* close_button)
{
    const auto add = [](wxSizer* sizer, wxWindow* control, int border) {
        sizer->Add(control, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, border);
    };
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_text, 1, wxALIGN_CENTRE_VERTICAL);
    for (wxWindow* option : {m_match_case, m_whole_words, m_expression})
        add(row, option, 2);
    add(row, previous, 4);
    add(row, next, 4);
    add(row, close_button, 4);
    // At large fonts there is no room for all in a row.
    auto* below = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    for (wxWindow* control : std::initializer_list<wxWindow*>{
             m_severity, m_errors, m_warnings, m_only_matching, m_only_entry, m_found, m_hidden})
        below->Add(control, 0, wxALIGN_CENTRE_VERTICAL | wxRIGHT, 8);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(row, 0, wxEXPAND);
    sizer->Add(below, 0, wxEXPAND | wxTOP, 2);
    SetSizer(sizer);
}

search_bar_t::~search_bar_t()
{
    GetParent()->Unbind(wxEVT_SIZE, &search_bar_t::on_parent_size, this);
}

void search_bar_t::on_parent_size(wxSizeEvent& event)
{
    event.Skip();
    fit();
}

// As high as its rows, of which there are more in a narrow window.
void search_bar_t::fit()
{
    if (!IsShown() || !GetSizer())
        return;
    wx_helpers1::apply_native_height(m_text);
    GetSizer()->InformFirstDirection(wxHORIZONTAL, GetParent()->GetClientSize().x, -1);
    const wxSize needed(-1, GetSizer()->CalcMin().y);
    if (needed != GetMinSize())
        SetMinSize(needed);
    GetParent()->Layout();
}

std::string search_bar_t::get_text() const
{
    return wx_helpers1::from_wx(m_text->GetValue());
}

vdxcfrw7::find_options_t search_bar_t::get_options() const
{
    return {m_match_case->GetValue(), m_whole_words->GetValue(), m_expression->GetValue()};
}

void search_bar_t::search(search_t what)
{
    switch (what) {
    case search_t::open:
        open();
        break;
    case search_t::close:
        close(true);
        break;
    case search_t::next:
    case search_t::previous:
        if (get_text().empty())
            open();
        else
            find(what == search_t::next);
        break;
    }
}

void search_bar_t::open()
{
    if (!IsShown()) {
        m_before = m_log.GetReading();
        Show();
        tell_counts();
        fit();
        look();
    }
    m_text->SetFocus();
    m_text->SelectAll();
}

void search_bar_t::close(bool go_back)
{
    if (!IsShown())
        return;
    Hide();
    GetParent()->Layout();
    m_only_entry->SetValue(false);
    m_severity->SetSelection(shown_all);
    m_log.SetFilter(0, std::string());
    m_log.SetFind(std::string(), {});
    if (go_back) // when all lines are there again
        m_log.AddWork(this, [this] {
            if (m_log.IsFiltering())
                return true;
            m_log.GoBack(m_before);
            return false;
        });
    if (wxWindow* window = m_log.GetWindow())
        window->SetFocus();
}

void search_bar_t::look()
{
    m_log.SetFind(get_text(), get_options());
    filter();
    tell_found();
}

void search_bar_t::find(bool forward)
{
    if (get_text().empty())
        return;
    if (!m_log.IsFinding()) // the bar was closed, and what was looked for last is looked for again
        m_log.SetFind(get_text(), get_options());
    m_log.FindNext(forward);
    tell_found();
}

void search_bar_t::filter()
{
    filter(m_log.GetOnlyElement());
}

void search_bar_t::filter(const vdxcfrw7::CMessageElement* only)
{
    const int shown = std::max(0, m_severity->GetSelection());
    m_errors->SetValue(shown == shown_errors);
    m_warnings->SetValue(shown == shown_warnings);
    m_log.SetFilter(severities[shown], m_only_matching->GetValue() ? get_text() : std::string(),
                    get_options(), only);
    tell_hidden();
}

void search_bar_t::show_only(const vdxcfrw7::CMessageElement* element)
{
    if (!IsShown())
        open();
    filter(element);
}

void search_bar_t::tell(wxStaticText* where, const std::string& text)
{
    const wxString shown = to_label(text);
    if (shown == where->GetLabelText())
        return;
    where->SetLabelText(shown);
    fit(); // it may take another row
}

void search_bar_t::tell_found()
{
    const auto state = m_log.GetFindState();
    if (get_text().empty() || !IsShown())
        tell(m_found, std::string());
    else if (state.wrong)
        tell(m_found, translate_message("inplace_ctrl.wrong_expression"));
    else if (state.given_up)
        tell(m_found, translate_message("inplace_ctrl.hard_expression"));
    else if (!state.complete)
        tell(m_found, translate_message("inplace_ctrl.counting", {{"count", state.count}}));
    else if (state.count == 0)
        tell(m_found, translate_message("inplace_ctrl.not_found"));
    else if (state.current == 0)
        tell(m_found, translate_message("inplace_ctrl.found_many", {{"count", state.count}}));
    else
        tell(m_found,
             translate_message("inplace_ctrl.found", {{"index", state.current}, {"count", state.count}}));
}

void search_bar_t::tell_hidden()
{
    m_only_entry->SetValue(m_log.GetOnlyElement() != nullptr); // which may have been removed
    const std::size_t hidden = m_log.GetHiddenCount();
    tell(m_hidden,
         hidden ? translate_message("inplace_ctrl.hidden_lines", {{"count", hidden}}) : std::string());
}

void search_bar_t::tell_counts()
{
    if (!IsShown())
        return;
    const auto& counts = m_log.GetCounts();
    const auto tell_one = [](wxToggleButton* badge, std::uint64_t count, const std::string& name) {
        const std::string number = translate_message("inplace_ctrl.count", {{"count", count}});
        badge->SetLabel(to_label(number));
        wx_helpers1::SetTooltip(badge, name);
        wx_helpers1::set_accessible_name(badge, name);
    };
    tell_one(m_errors, counts.errors,
             translate_message("inplace_ctrl.show_errors", {{"count", counts.errors}}));
    tell_one(m_warnings, counts.warnings,
             translate_message("inplace_ctrl.show_warnings", {{"count", counts.warnings}}));
    fit();
}

void search_bar_t::on_key(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE)
        close(true);
    else if (key == WXK_F3)
        find(!event.ShiftDown());
    else if (event.ControlDown() && key == 'F')
        open();
    else if (key == WXK_RETURN && event.ShiftDown() && FindFocus() == m_text)
        find(false);
    else
        event.Skip();
}

} // namespace commondlg3
