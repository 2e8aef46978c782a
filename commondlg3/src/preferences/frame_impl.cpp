#include "frame_impl.h"

#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include "frame_notice.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/text_limit.h>

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/display.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

namespace commondlg3 {
namespace {

// In characters of the present font.
constexpr int usual_columns = 95;
constexpr int usual_lines = 30;
constexpr int least_columns = 65;
constexpr int least_lines = 19;

int stored_number(cfgmgr2::IPropertyStorage& storage, const char* name, int otherwise)
{
    constexpr int beyond_any_screen = 20000;
    const auto value = storage.get_value(name);
    if (!value.can_get<int>() || value.get<int>() <= 0 || value.get<int>() > beyond_any_screen)
        return otherwise;
    return value.get<int>();
}

} // namespace

preferences_frame_t::impl_t::impl_t(preferences_frame_t& frame)
    : m_frame(frame), m_size(frame, wxSize(usual_columns, usual_lines), wxSize(least_columns, least_lines))
{
}

preferences_frame_t::impl_t::~impl_t() = default;

bool preferences_frame_t::impl_t::find_controls()
{
    auto* list = from_xrc<wxDataViewTreeCtrl>(&m_frame, "m_pages");
    auto* area = from_xrc<wxScrolledWindow>(&m_frame, "m_page_area");
    auto* notice = from_xrc<wxPanel>(&m_frame, "m_notice");
    m_apply = from_xrc<wxButton>(&m_frame, "m_btn_apply");
    m_more = from_xrc<wxButton>(&m_frame, "m_btn_more");
    m_search = from_xrc<wxSearchCtrl>(&m_frame, "m_search");
    m_nothing_found = from_xrc<wxStaticText>(&m_frame, "m_nothing_found");
    m_waiting = from_xrc<wxStaticText>(&m_frame, "m_waiting");
    if (!list || !area || !area->GetSizer() || !notice || !m_apply || !m_more || !m_search ||
        !m_nothing_found || !m_waiting || !m_frame.m_btn_ok)
        return false;
    wx_helpers1::limit_search(m_search);
    stack.use(area);
    m_more->MoveAfterInTabOrder(area); // from the list Tab goes into the page
    if (m_frame.m_btn_help)
        m_frame.m_btn_help->MoveAfterInTabOrder(m_more);
    m_list = std::make_unique<page_list_t>(list);
    m_notice = std::make_unique<frame_notice_t>(notice);
    return true;
}

void preferences_frame_t::impl_t::on_init_dialog()
{
    if (!find_controls())
        return;
    wx_helpers1::set_accessible_name(m_list->get_control(), translate_message("preferences.pages"));
    m_search->SetDescriptiveText(wx_helpers1::to_label(translate_message("preferences.search")));
    wx_helpers1::set_accessible_name(m_search, translate_message("preferences.search"));
    if (m_frame.m_btn_help)
        m_frame.m_btn_help->Show(m_frame.get_help_id() != -1);
    connect();
    fill_list();
    begin_reading([this] { begin_with_size(); });
    if (m_busy != busy_t::none)
        fit();
    m_frame.centre_on_parent();
    m_list->set_focus();
}

void preferences_frame_t::impl_t::begin_again()
{
    if (!m_list)
        return;
    m_search->ChangeValue(wxString());
    m_marks.show({});
    fill_list();
    m_notice->hide();
    m_reported = page_stack_t::none;
    wants_restart = false;
    begin_reading([this] {
        show_read();
        begin_with_page();
    });
    m_list->set_focus();
}

void preferences_frame_t::impl_t::connect()
{
    m_frame.Bind(wxEVT_IDLE, &impl_t::on_idle, this);
    m_frame.Bind(wxEVT_CHAR_HOOK, &impl_t::on_search_key, this);
    m_frame.Bind(wxEVT_CONTEXT_MENU, &impl_t::on_context_menu, this);
    m_frame.Bind(wxEVT_SHOW, [this](wxShowEvent& event) {
        event.Skip();
        if (event.IsShown() && m_tell)
            std::exchange(m_tell, nullptr)();
    });
    m_frame.Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
        event.Skip();
        if (event.GetActive())
            look_for_theirs();
    });
    m_list->get_selected_signal().connect(&m_frame, [this](int page) { select(page); });
    m_search->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { search(); });
    m_more->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { pop_up_menu(); });
    m_apply->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        apply([this] {
            if (wants_restart)
                end_with_ok();
        });
    });
    for (const auto& each : stack.all())
        each.page->get_changed_signal().connect(&m_frame, [this, alive = std::weak_ptr<char>(m_alive)] {
            if (alive.lock())
                update();
        });
    const auto changed = [this](wxCommandEvent& event) {
        event.Skip();
        update_shown();
    };
    for (const auto& type : {wxEVT_TEXT, wxEVT_CHECKBOX, wxEVT_RADIOBUTTON, wxEVT_CHOICE, wxEVT_LISTBOX,
                             wxEVT_BUTTON, wxEVT_COMBOBOX})
        m_frame.Bind(type, changed);
    m_frame.Bind(wxEVT_SPINCTRL, [this](wxSpinEvent& event) {
        event.Skip();
        update_shown();
    });
}

// What was read says which page was seen.
void preferences_frame_t::impl_t::begin_with_page()
{
    std::string wanted = first_page;
    const auto remembered =
        memory ? memory->get()->get_child("preferences")->get_value("page") : gen_helpers2::variant_t();
    if (wanted.empty() && remembered.can_get<std::string>())
        wanted = remembered.get<std::string>();
    const int page = stack.find(wanted);
    if (stack.size() > 0)
        select(page == page_stack_t::none ? 0 : page);
}

// And how large the dialog was.
void preferences_frame_t::impl_t::begin_with_size()
{
    if (memory) {
        const auto stored = memory->get()->get_child("preferences");
        m_size.want(wxSize(stored_number(*stored, "width", usual_columns * m_frame.GetCharWidth()),
                           stored_number(*stored, "height", usual_lines * m_frame.GetCharHeight())));
    }
    fit();
    begin_with_page();
    make_room();
}

// As large as it was in characters, of which there is less room on the screen at large fonts: the area scrolls
// then.
void preferences_frame_t::impl_t::fit()
{
    m_list->fit_width();
    m_frame.fit_to_contents();
    m_size.give(m_frame.GetMinClientSize());
}

void preferences_frame_t::impl_t::fit_again()
{
    if (!m_list)
        return;
    m_size.take_over();
    m_list->refresh_icons();
    stack.forget_widths();
    fit();
    stack.fit();
    make_room();
}

// The page that is seen first says how wide the dialog must be at the present font, as far as the screen
// goes; what is wider than the area scrolls.
void preferences_frame_t::impl_t::make_room()
{
    wxScrolledWindow* const area = stack.get_area();
    const int missing = area->GetSizer()->CalcMin().x - area->GetClientSize().x;
    if (missing > 0) {
        const wxSize now = m_frame.GetClientSize();
        const int widest = std::max(now.x, wxGetClientDisplayRect().width - m_frame.GetCharWidth());
        m_frame.SetClientSize(std::min(now.x + missing, widest), now.y);
        m_frame.Layout();
    }
    m_size.keep();
}

void preferences_frame_t::impl_t::fill_list()
{
    const search_words_t words(wx_helpers1::from_wx(m_search->GetValue()));
    std::vector<page_list_t::row_t> rows;
    for (int i = 0; i < stack.size(); ++i) {
        const preferences_page_t& page = *stack.at(i).page;
        if (words.empty() || words.are_in_searched(stack.get_texts(i)))
            rows.push_back({i, page.get_title(), page.get_group(), page.get_icon()});
    }
    m_list->show(rows);
    for (const int page : stack.get_changed())
        m_list->mark_changed(page, true);
    m_nothing_found->Show(rows.empty());
}

void preferences_frame_t::impl_t::search()
{
    if (m_busy == busy_t::reading)
        return;
    const search_words_t words(wx_helpers1::from_wx(m_search->GetValue()));
    while (!words.empty() && stack.make_next()) // only a page that is there has words to be searched
        continue;
    const bool was_empty = m_nothing_found->IsShown();
    fill_list();
    if (m_nothing_found->IsShown() != was_empty)
        m_frame.Layout();
    if (m_list->get_selected() == page_list_t::none && m_list->get_first() != page_list_t::none)
        select(m_list->get_first());
    else if (stack.get_shown() != page_stack_t::none)
        m_marks.show(find_settings(*stack.at(stack.get_shown()).window, words));
}

// Enter would press OK, and Escape end the dialog, before a search is over.
void preferences_frame_t::impl_t::on_search_key(wxKeyEvent& event)
{
    const wxWindow* focus = wxWindow::FindFocus();
    const bool searching = focus && (focus == m_search || focus->GetParent() == m_search);
    const int key = event.GetKeyCode();
    if (event.ControlDown() && key == 'F')
        m_search->SetFocus();
    else if (searching && key == WXK_ESCAPE && !m_search->IsEmpty())
        m_search->SetValue(wxEmptyString);
    else if (searching && key == WXK_DOWN)
        m_list->set_focus();
    else if (searching && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && m_marks.get_first())
        focus_setting(*m_marks.get_first());
    else if (!(searching && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && !m_search->IsEmpty()))
        event.Skip();
}

// The toolkit shows what is new when it is idle: what a script does before that goes elsewhere.
void preferences_frame_t::impl_t::on_idle(wxIdleEvent& event)
{
    event.Skip();
    stack.fit();
    // While somebody who has gone to the search thinks of a word.
    const wxWindow* focus = wxWindow::FindFocus();
    if (m_busy == busy_t::none && focus && (focus == m_search || focus->GetParent() == m_search) &&
        stack.make_next())
        event.RequestMore();
    const int shown = stack.get_shown();
    if (shown == page_stack_t::none || shown == m_reported || !stack.at(shown).window->IsShownOnScreen())
        return;
    m_reported = shown;
    page_signal.emit(stack.at(shown).page->get_name());
}

void preferences_frame_t::impl_t::select(int page)
{
    if (m_busy == busy_t::reading)
        return;
    if (m_list->get_selected() != page)
        m_list->select(page);
    stack.show(page);
    const search_words_t words(wx_helpers1::from_wx(m_search->GetValue()));
    m_marks.show(find_settings(*stack.at(page).window, words));
    update();
}

void preferences_frame_t::impl_t::update()
{
    if (m_busy != busy_t::none)
        return;
    stack.look_at_all();
    show_changed();
}

void preferences_frame_t::impl_t::update_shown()
{
    if (m_busy != busy_t::none || stack.get_shown() == page_stack_t::none)
        return;
    stack.look(stack.get_shown());
    show_changed();
}

void preferences_frame_t::impl_t::show_changed()
{
    for (int i = 0; i < stack.size(); ++i)
        m_list->mark_changed(i, stack.at(i).changed);
    wx_helpers1::set_enabled(m_apply, !stack.get_changed().empty(), m_frame.m_btn_ok);
}

std::vector<std::string> preferences_frame_t::impl_t::get_titles(const std::vector<int>& pages) const
{
    std::vector<std::string> titles;
    titles.reserve(pages.size());
    for (const int page : pages)
        titles.push_back(stack.all()[page].page->get_title());
    return titles;
}

std::string preferences_frame_t::impl_t::get_help_topic() const
{
    const int shown = stack.get_shown();
    return shown == page_stack_t::none ? std::string() : stack.all()[shown].page->get_help_topic();
}

} // namespace commondlg3
