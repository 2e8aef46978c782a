#include "log_menu.h"

#include "commondlg3/text_utils.h"

#include "search_bar.h"

#include <vdx/event_log.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <memory>
#include <utility>

namespace commondlg3 {

using vdxcfrw7::CEventLog;

wxMenuItem* log_menu_t::add(wxMenu& menu, const std::string& text, std::function<void()> chosen,
                            wxItemKind kind, bool checked)
{
    wxMenuItem* item = menu.Append(wxID_ANY, wx_helpers1::to_label(text), wxString(), kind);
    if (kind != wxITEM_NORMAL)
        item->Check(checked);
    menu.Bind(
        wxEVT_MENU, [chosen = std::move(chosen)](wxCommandEvent&) { chosen(); }, item->GetId());
    return item;
}

void log_menu_t::change(const std::function<void()>& set)
{
    set();
    const auto signal = m_log.options_changed();
    signal.emit();
}

void log_menu_t::add_times()
{
    auto* times = new wxMenu;
    const auto add_kind = [&](CEventLog::times_t kind, const std::string& text) {
        add(
            *times, text, [this, kind] { change([&] { m_log.SetTimes(kind); }); }, wxITEM_RADIO,
            m_log.GetTimes() == kind);
    };
    add_kind(CEventLog::times_t::none, translate_message("inplace_ctrl.menu.times_none"));
    add_kind(CEventLog::times_t::clock, translate_message("inplace_ctrl.menu.times_clock"));
    add_kind(CEventLog::times_t::since_entry, translate_message("inplace_ctrl.menu.times_since"));
    times->AppendSeparator();
    add(
        *times, translate_message("inplace_ctrl.menu.copy_times"),
        [this] { change([this] { m_log.SetCopyTimes(!m_log.GetCopyTimes()); }); }, wxITEM_CHECK,
        m_log.GetCopyTimes());
    AppendSubMenu(times, wx_helpers1::to_label(translate_message("inplace_ctrl.menu.times")));
}

void log_menu_t::add_view()
{
    add(*this, translate_message("inplace_ctrl.menu.copy") + "\tCtrl+C", [this] {
        vdxcfrw7::CopyToClipboard(m_log.GetSelectedText(), m_log.GetSelectedHTML());
    })->Enable(m_log.HasSelection());
    add(*this, translate_message("inplace_ctrl.menu.select_all") + "\tCtrl+A", [this] { m_log.SelectAll(); });
    AppendSeparator();
    add(*this, translate_message("inplace_ctrl.menu.find") + "\tCtrl+F",
        [this] { m_search_bar().search(CEventLog::search_t::open); });
    const bool only = m_log.GetOnlyElement() != nullptr;
    add(
        *this, translate_message("inplace_ctrl.only_entry"),
        [this, only] { m_search_bar().show_only(only ? nullptr : m_log.GetCurrentElement()); }, wxITEM_CHECK,
        only);
    AppendSeparator();
    add_times();
    add(
        *this, translate_message("inplace_ctrl.menu.wrap"),
        [this] { change([this] { m_log.SetWrap(!m_log.GetWrap()); }); }, wxITEM_CHECK, m_log.GetWrap());
    add(
        *this, translate_message("inplace_ctrl.menu.collapse"),
        [this] { change([this] { m_log.SetCollapse(!m_log.GetCollapse()); }); }, wxITEM_CHECK,
        m_log.GetCollapse());
    const auto zoom = [this](int percent) { change([&] { m_log.SetZoom(percent); }); };
    constexpr int step = 10;
    add(*this, translate_message("inplace_ctrl.menu.larger") + "\tCtrl++",
        [=] { zoom(m_log.GetZoom() + step); });
    add(*this, translate_message("inplace_ctrl.menu.smaller") + "\tCtrl+-",
        [=] { zoom(m_log.GetZoom() - step); });
    add(*this, translate_message("inplace_ctrl.menu.usual_size") + "\tCtrl+0", [=] {
        zoom(100);
    })->Enable(m_log.GetZoom() != 100);
}

void log_menu_t::add_save(std::function<void()> save, bool enabled)
{
    AppendSeparator();
    add(*this, translate_message("inplace_ctrl.menu.save_as"), std::move(save))->Enable(enabled);
}

void log_menu_t::add_link(const wxPoint& point)
{
    vdxcfrw7::log_link_t link;
    if (m_log.GetLinkAt(point, link))
        add(*this, translate_message("inplace_ctrl.menu.copy_link"),
            [target = link.target] { wx_helpers1::copy_to_clipboard(target); });
}

void log_menu_t::add_clear(std::function<void()> clear, bool enabled)
{
    AppendSeparator();
    add(*this, translate_message("inplace_ctrl.menu.clear"), std::move(clear))->Enable(enabled);
}

} // namespace commondlg3
