#include "commondlg3/silenced_messages_pp.h"

#include "base/wrapped_labels.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"
#include "without_mnemonic.h"

#include <cpil/catalog.h>
#include <gen_helpers2/strings.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;

enum silenced_column_t : unsigned
{
    message_column,
    time_column,
    answer_column,
    silenced_columns
};

// A row has one line, whatever the message has.
std::string in_one_line(std::string text)
{
    constexpr std::size_t most_bytes = 1000; // more has no room in any window
    if (text.size() > most_bytes)
        text.resize(most_bytes);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20; }, ' ');
    return text;
}

std::string text_of(const silenced_message_t& message)
{
    for (const std::string* text : {&message.main_message, &message.supplemental_message, &message.name})
        if (!gen_helpers2::trim(*text).empty())
            return in_one_line(*text);
    return message.name;
}

std::string time_of(const silenced_message_t& message)
{
    if (message.silenced_at <= 0)
        return translate_message("silenced_messages.time_unknown");
    const double milliseconds = static_cast<double>(message.silenced_at) * 1000;
    return translate_message("silenced_messages.time", {{"time", milliseconds}});
}

std::string answer_of(const silenced_message_t& message)
{
    const char* key = catalog_key("silenced_messages.answer_none");
    if (message.answer == message_window_t::result_yes)
        key = catalog_key("btn.yes");
    else if (message.answer == message_window_t::result_no)
        key = catalog_key("btn.no");
    else if (message.answer == message_window_t::result_ok)
        key = catalog_key("btn.ok");
    return without_mnemonic(message.answer_label.empty() ? translate_message(key) : message.answer_label);
}

} // namespace

class silenced_messages_pp_t::rows_t : public wxDataViewVirtualListModel
{
public:
    explicit rows_t(const std::vector<silenced_message_t>& messages) : m_messages(messages) {}

    unsigned GetColumnCount() const override { return silenced_columns; }
    wxString GetColumnType(unsigned) const override { return "string"; }
    void GetValueByRow(wxVariant& value, unsigned row, unsigned column) const override
    {
        if (row >= m_messages.size())
            return;
        const silenced_message_t& message = m_messages[row];
        value = wx_helpers1::to_label(column == message_column ? text_of(message)
                                      : column == time_column  ? time_of(message)
                                                               : answer_of(message));
    }
    bool SetValueByRow(const wxVariant&, unsigned, unsigned) override { return false; }

private:
    ~rows_t() override = default;

    const std::vector<silenced_message_t>& m_messages; // of the page, which has the list as its child
};

silenced_messages_pp_t::silenced_messages_pp_t(const silenced_messages_t& messages) : m_stored(messages)
{
    set_resource_object("pref.silenced_messages");
}

silenced_messages_pp_t::~silenced_messages_pp_t()
{
    if (m_list)
        m_list->Destroy(); // its model reads what the page holds
}

bool silenced_messages_pp_t::has_controls() const
{
    return m_description && m_none && m_list && m_show && m_restore && m_restore_all;
}

void silenced_messages_pp_t::on_init_dialog()
{
    m_description = from_xrc<wxStaticText>(this, "m_description");
    m_none = from_xrc<wxStaticText>(this, "m_none");
    m_show = from_xrc<wxButton>(this, "m_btn_show");
    m_restore = from_xrc<wxButton>(this, "m_btn_restore");
    m_restore_all = from_xrc<wxButton>(this, "m_btn_restore_all");
    m_area = from_xrc<wxPanel>(this, "m_list_area");
    if (m_area)
        make_list(m_area);
    if (!has_controls())
        return;
    m_show->Bind(wxEVT_BUTTON, &silenced_messages_pp_t::on_show, this);
    m_restore->Bind(wxEVT_BUTTON, &silenced_messages_pp_t::on_restore, this);
    m_restore_all->Bind(wxEVT_BUTTON, &silenced_messages_pp_t::on_restore_all, this);
    Bind(wxEVT_SIZE, &silenced_messages_pp_t::on_size, this);
    Bind(wxEVT_CHAR_HOOK, &silenced_messages_pp_t::on_key, this);
    load_settings();
}

void silenced_messages_pp_t::make_list(wxWindow* area)
{
    m_rows = new rows_t(m_messages);
    m_list =
        new wxDataViewCtrl(area, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_MULTIPLE | wxDV_ROW_LINES);
    const char* const titles[] = {catalog_key("silenced_messages.column_message"),
                                  catalog_key("silenced_messages.column_time"),
                                  catalog_key("silenced_messages.column_answer")};
    for (unsigned column = 0; column < std::size(titles); ++column) {
        auto* renderer = new wxDataViewTextRenderer;
        renderer->EnableEllipsize(wxELLIPSIZE_END);
        m_list->AppendColumn(new wxDataViewColumn(wx_helpers1::to_label(translate_message(titles[column])),
                                                  renderer, column, wxDVC_DEFAULT_WIDTH, wxALIGN_LEFT,
                                                  wxDATAVIEW_COL_RESIZABLE));
    }
    m_list->AssociateModel(m_rows.get());
    wx_helpers1::set_accessible_name(m_list, translate_message("silenced_messages.list"));
    m_list->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { update_buttons(); });
    m_list->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent& event) {
        show_message(static_cast<int>(m_rows->GetRow(event.GetItem())));
    });
    area->SetSizer(new wxBoxSizer(wxVERTICAL));
    area->GetSizer()->Add(m_list, 1, wxEXPAND);
}

void silenced_messages_pp_t::load_settings()
{
    m_messages = m_stored.get_all();
    const bool was_changed = is_changed();
    m_restored.clear();
    fill_list(0);
    if (was_changed)
        m_changed_signal.emit();
}

void silenced_messages_pp_t::load_settings(const silenced_messages_t& messages)
{
    m_stored = messages;
    load_settings();
}

bool silenced_messages_pp_t::save_settings()
{
    m_stored.restore(m_restored);
    const bool was_changed = is_changed();
    m_restored.clear();
    if (was_changed)
        m_changed_signal.emit();
    return true;
}

void silenced_messages_pp_t::fill_list(int selected)
{
    if (!has_controls())
        return;
    const bool empty = m_messages.empty();
    m_rows->Reset(static_cast<unsigned>(m_messages.size()));
    // A button that was disabled in between would give its focus to another.
    if (empty)
        update_buttons();
    else
        select(selected);
    wx_helpers1::set_enabled(m_area, !empty); // which gives the focus on
    m_area->Show(!empty);
    m_none->Show(empty);
    rewrap_page(*this, {m_description, m_none});
    fit_columns();
}

std::vector<int> silenced_messages_pp_t::get_selected() const
{
    wxDataViewItemArray items;
    if (m_list)
        m_list->GetSelections(items);
    std::vector<int> rows;
    for (const wxDataViewItem& item : items)
        rows.push_back(static_cast<int>(m_rows->GetRow(item)));
    return rows;
}

void silenced_messages_pp_t::select(int row)
{
    if (!m_list || m_messages.empty())
        return;
    const wxDataViewItem item =
        m_rows->GetItem(static_cast<unsigned>(std::clamp(row, 0, static_cast<int>(m_messages.size()) - 1)));
    m_list->SetCurrentItem(item); // and scrolls to it; EnsureVisible() would once more, when it may be gone
    wxDataViewItemArray only;
    only.Add(item);
    m_list->SetSelections(only);
    update_buttons();
}

void silenced_messages_pp_t::update_buttons()
{
    if (!has_controls())
        return;
    const auto count = get_selected().size();
    wx_helpers1::set_enabled(
        {{m_show, count == 1}, {m_restore, count > 0}, {m_restore_all, !m_messages.empty()}});
}

void silenced_messages_pp_t::restore(const std::vector<int>& rows)
{
    std::vector<bool> goes(m_messages.size());
    for (const int row : rows)
        if (row >= 0 && row < static_cast<int>(goes.size()))
            goes[static_cast<std::size_t>(row)] = true;
    const auto first = std::find(goes.begin(), goes.end(), true);
    if (first == goes.end())
        return;
    const auto went = std::count(goes.begin(), goes.end(), true);
    std::vector<silenced_message_t> stay;
    for (std::size_t i = 0; i < goes.size(); ++i)
        if (goes[i])
            m_restored.push_back(m_messages[i].name);
        else
            stay.push_back(std::move(m_messages[i]));
    m_messages = std::move(stay);
    fill_list(static_cast<int>(first - goes.begin()));
    if (has_controls())
        wx_helpers1::announce(m_description, translate_message("silenced_messages.restored",
                                                               {{"count", static_cast<int>(went)}}));
    m_changed_signal.emit();
}

void silenced_messages_pp_t::restore_all()
{
    std::vector<int> rows(m_messages.size());
    std::iota(rows.begin(), rows.end(), 0);
    restore(rows);
}

void silenced_messages_pp_t::show_message(int row)
{
    if (row >= 0 && row < static_cast<int>(m_messages.size()))
        show_modal(m_messages[static_cast<std::size_t>(row)].get_window(), this);
}

void silenced_messages_pp_t::on_show(wxCommandEvent&)
{
    const auto rows = get_selected();
    if (rows.size() == 1)
        show_message(rows.front());
}

void silenced_messages_pp_t::on_restore(wxCommandEvent&)
{
    restore(get_selected());
}

void silenced_messages_pp_t::on_restore_all(wxCommandEvent&)
{
    restore_all();
}

void silenced_messages_pp_t::on_key(wxKeyEvent& event)
{
    const wxWindow* focus = wxWindow::FindFocus();
    const bool in_list = focus && (focus == m_list || focus->GetParent() == m_list);
    if (in_list && event.GetKeyCode() == WXK_DELETE && event.GetModifiers() == wxMOD_NONE)
        restore(get_selected());
    else
        event.Skip();
}

void silenced_messages_pp_t::on_size(wxSizeEvent&)
{
    rewrap_page(*this, {m_description, m_none});
    fit_columns();
}

// Dates and answers are as wide as they need; the message has what is left over.
void silenced_messages_pp_t::fit_columns()
{
    if (!m_list || !m_area->IsShown())
        return;
    const int margins = 3 * m_list->GetCharWidth();
    silenced_message_t longest;
    longest.silenced_at = 1600000000; // in September, whose name is long
    longest.answer = message_window_t::result_none;
    const auto width_of = [&](unsigned column, const std::string& text) {
        const int title = m_list->GetTextExtent(m_list->GetColumn(column)->GetTitle()).x;
        return margins + std::max(title, m_list->GetTextExtent(wx_helpers1::to_label(text)).x);
    };
    const int times = width_of(time_column, time_of(longest));
    const int answers = width_of(answer_column, answer_of(longest));
    const int bar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, m_list) + 4;
    const int left = m_area->GetClientSize().x - times - answers - bar;
    m_list->GetColumn(message_column)->SetWidth(std::max(left, 12 * m_list->GetCharWidth()));
    m_list->GetColumn(time_column)->SetWidth(times);
    m_list->GetColumn(answer_column)->SetWidth(answers);
}

void silenced_messages_pp_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    if (!has_controls())
        return;
    rewrap_page(*this, {m_description, m_none});
    fit_columns();
}

} // namespace commondlg3
