#include "commondlg3/message_window.h"
#include "commondlg3/opt_in_pp.h"
#include "commondlg3/text_utils.h"
#include "paths/disk_question.h"

#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>
#include <wx/wrapsizer.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

// What was written of the user's use, and how to be rid of it.
namespace commondlg3 {
namespace {

using written_t = usage_data_keeper_t::written_t;

constexpr int written_gap = 6;

void insert_above_record(const wxWindow& record_label,
                         const std::function<void(wxSizer& sizer, std::size_t place)>& insert)
{
    wxSizer* sizer = record_label.GetContainingSizer();
    std::size_t place = 0;
    while (place < sizer->GetItemCount() && sizer->GetItem(place)->GetWindow() != &record_label)
        ++place;
    insert(*sizer, place);
}

} // namespace

usage_data_keeper_t::~usage_data_keeper_t() = default;

void opt_in_pp_t::make_written()
{
    m_written_label =
        new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE);
    if (const auto* settings = wx_helpers1::ui_settings_t::get())
        wx_helpers1::apply_font(m_written_label, settings->get_font(wx_helpers1::ui_font::text));
    insert_above_record(*m_record_label, [this](wxSizer& sizer, std::size_t place) {
        sizer.Insert(place, m_written_label, 0, wxEXPAND | wxTOP, 3 * written_gap);
    });
    ask_keeper();
}

// Where there is something to see, or to be rid of.
void opt_in_pp_t::make_written_buttons()
{
    m_show_written =
        new wxButton(this, wxID_ANY, wx_helpers1::to_wx(translate_message("pref.optin.show_written")));
    m_withdraw = new wxButton(this, wxID_ANY, wx_helpers1::to_wx(translate_message("pref.optin.withdraw")));
    m_show_written->Bind(wxEVT_BUTTON, &opt_in_pp_t::on_show_written, this);
    m_withdraw->Bind(wxEVT_BUTTON, &opt_in_pp_t::on_withdraw, this);
    m_show_written->MoveAfterInTabOrder(m_refuse);
    m_withdraw->MoveAfterInTabOrder(m_show_written);
    if (const auto* settings = wx_helpers1::ui_settings_t::get())
        for (wxButton* button : {m_show_written, m_withdraw})
            wx_helpers1::apply_font(button, settings->get_font(wx_helpers1::ui_font::text));
    auto* buttons = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    buttons->Add(m_show_written, 0, wxRIGHT | wxTOP, written_gap);
    buttons->Add(m_withdraw, 0, wxTOP, written_gap);
    insert_above_record(*m_record_label, [buttons](wxSizer& sizer, std::size_t place) {
        sizer.Insert(place, buttons, 0, wxEXPAND);
    });
}

// The record may be in a home on a network.
void opt_in_pp_t::ask_keeper()
{
    const auto written = std::make_shared<std::optional<written_t>>();
    const auto later = [written, page = wxWeakRef<opt_in_pp_t>(this)] {
        if (page)
            page->show_written(*written);
    };
    if (ask_disk([written, keeper = m_keeper] { *written = keeper->read_last_written(); },
                 patience_while_typing, later))
        show_written(*written);
    else
        set_written_text(translate_message("pref.optin.written_unknown"));
}

void opt_in_pp_t::set_written_text(const std::string& text)
{
    wx_helpers1::set_label_text(m_written_label, text);
    const bool can_withdraw = consent == user_consent_t::given || !m_written.empty();
    if (can_withdraw && !m_withdraw)
        make_written_buttons();
    if (m_withdraw) {
        wx_helpers1::set_accessible_description(m_show_written, text);
        wx_helpers1::set_enabled({{m_show_written, !m_written.empty()}, {m_withdraw, can_withdraw}},
                                 m_refuse);
    }
    rewrap();
}

void opt_in_pp_t::show_written(const std::optional<written_t>& written)
{
    m_written = written ? written->text : std::string();
    constexpr double milliseconds = 1000;
    set_written_text(written
                         ? translate_message("pref.optin.written",
                                             {{"when", static_cast<double>(written->when) * milliseconds}})
                         : translate_message("pref.optin.nothing_written"));
}

void opt_in_pp_t::on_show_written(wxCommandEvent& event)
{
    event.Skip();
    if (!m_show_written)
        return;
    m_shows_written = !m_shows_written && !m_written.empty();
    m_record_text->ChangeValue(wx_helpers1::to_label(m_shows_written ? m_written : m_record));
    m_record_text->SetInsertionPoint(0);
    m_record_label->SetLabel(wx_helpers1::to_wx(translate_message(
        m_shows_written ? CPIL_2_18::i18n::catalog_key("pref.optin.record_written")
                        : CPIL_2_18::i18n::catalog_key("pref.optin.record")))); // with its letter
    m_show_written->SetLabel(wx_helpers1::to_wx(
        translate_message(m_shows_written ? CPIL_2_18::i18n::catalog_key("pref.optin.show_now")
                                          : CPIL_2_18::i18n::catalog_key("pref.optin.show_written"))));
    m_record_label->Show();
    m_record_text->Show(m_shows_written || !m_record.empty());
    m_record_label->Show(m_record_text->IsShown());
    rewrap();
    wx_helpers1::announce(m_record_text, wx_helpers1::from_wx(m_record_label->GetLabelText()));
}

void opt_in_pp_t::on_withdraw(wxCommandEvent& event)
{
    if (!m_keeper)
        return;
    const wxWeakRef<wxWindow> alive(this);
    const auto result = m_keeper->withdraw();
    if (result.failed()) {
        message_window_t window;
        window.main_message = translate_message("pref.optin.not_withdrawn");
        window.supplemental_message = translate_message("pref.optin.not_withdrawn_details");
        window.details_message = result.message();
        window.icon_type = message_window_t::icon_types_t::error;
        show_modal(window, this);
        if (alive)
            ask_keeper(); // some of it may be gone
        return;
    }
    consent = user_consent_t::refused;
    set_conset(false);
    m_written.clear();
    if (m_shows_written)
        on_show_written(event);
    const std::string text = translate_message("pref.optin.withdrawn");
    set_written_text(text);
    wx_helpers1::announce(m_refuse, text);
    event.Skip();
}

} // namespace commondlg3
