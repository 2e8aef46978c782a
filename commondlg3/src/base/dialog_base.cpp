#include "commondlg3/dialog_base.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/moving.h>
#include <wx_helpers1/resource_loader.h>
#include <wx_helpers1/screen.h>
#include <wx_helpers1/scroll_area.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/display.h>
#include <wx/scrolwin.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>
#include <utility>

namespace commondlg3 {
namespace {

void forget_measurements(wxWindow* window)
{
    window->InvalidateBestSize();
    for (wxWindow* child : window->GetChildren())
        if (!child->IsTopLevel())
            forget_measurements(child);
}

// It takes the content's place in its sizer and for Tab.
wxScrolledWindow* put_into_area(wxWindow* content)
{
    auto* area = new wx_helpers1::scroll_area_t(content->GetParent());
    if (wxWindow* next = content->GetNextSibling(); next && next != area)
        area->MoveBeforeInTabOrder(next);
    if (content->GetContainingSizer())
        content->GetContainingSizer()->Replace(content, area);
    wx_helpers1::move_window(content, area, true);
    area->SetSizer(new wxBoxSizer(wxVERTICAL));
    area->GetSizer()->Add(content, 1, wxEXPAND);
    return area;
}

// What is in it may need another size whenever its texts have been broken anew.
void follow_contents(wxScrolledWindow* area)
{
    area->Bind(wxEVT_IDLE, [area, fitted = wxSize()](wxIdleEvent& event) mutable {
        event.Skip();
        const wxSize needed = area->GetSizer() ? area->GetSizer()->CalcMin() : wxSize();
        if (needed == fitted)
            return;
        fitted = needed;
        area->FitInside();
        area->Layout();
    });
}

} // namespace

// clang-format off
wxBEGIN_EVENT_TABLE(dialog_base_t, dummy)
    EVT_INIT_DIALOG(generic_base_t<dummy>::handle_init_dialog_event)
    EVT_CLOSE(dialog_base_t::handle_close)
    EVT_BUTTON(XRCID("m_btn_ok"), dialog_base_t::handle_ok)
    EVT_BUTTON(XRCID("m_btn_cancel"), generic_base_t<dummy>::handle_cancel)
    EVT_BUTTON(XRCID("m_btn_help"), generic_base_t<dummy>::handle_help)
    EVT_HELP(wxID_ANY, dialog_base_t::handle_dialog_help)
    EVT_TIMER(wxID_ANY, dialog_base_t::handle_timer_event)
wxEND_EVENT_TABLE()
    // clang-format on

    dialog_base_t::dialog_base_t() = default;
dialog_base_t::~dialog_base_t() = default;

bool dialog_base_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                           const std::string& catalog_name, const std::string& object_name)
{
    const wx_helpers1::resource_loader_t loader(resource_file, catalog_name);
    SetEscapeId(XRCID("m_btn_cancel"));
    return loader.load_dialog(this, parent, object_name);
}

bool dialog_base_t::load(wxWindow* parent)
{
    if (!m_loaded) {
        m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_resource_object);
        if (m_loaded) {
            wx_helpers1::set_accessible_role(this, wx_helpers1::accessible_role_t::dialog);
            if (auto* settings = wx_helpers1::ui_settings_t::get())
                settings->settled().connect(this, [this] {
                    m_outdated = true;
                    fit_in_turn();
                });
        }
    }
    return m_loaded;
}

// The toolkit raises the init-dialog event when the window is on the screen already, where every control that
// is filled and every change of size costs a pass of layout and a word with the window manager.
bool dialog_base_t::Show(bool show)
{
    if (!show || !m_loaded || IsShown())
        return dummy::Show(show);
    const bool modal = IsModal();
    InitDialog();
    if (modal && !IsModal())
        return false; // ended before it appeared
    if (m_outdated)
        on_look_settled();
    m_just_initialized = true;
    const bool changed = dummy::Show(true);
    m_just_initialized = false;
    return changed;
}

int dialog_base_t::show_modal(wxWindow* parent)
{
    return load(parent) ? ShowModal() : 0;
}

bool dialog_base_t::show_nonmodal(wxWindow* parent, bool show)
{
    return load(parent) && Show(show);
}

void dialog_base_t::end_dialog(int code)
{
    if (IsModal()) {
        EndModal(code);
        return;
    }
    m_return_code = code;
    SetReturnCode(code);
    if (m_loaded)
        Show(false);
}

void dialog_base_t::on_help()
{
    const std::string topic = m_help_topic; // a slot may set another
    if (!topic.empty())
        m_help_signal.emit(topic);
}

void dialog_base_t::handle_ok(wxCommandEvent&)
{
    m_return_code = wxID_OK;
    on_ok();
    end_dialog(m_return_code);
}

void dialog_base_t::handle_close(wxCloseEvent&)
{
    m_return_code = wxID_CANCEL;
    on_cancel();
    end_dialog(m_return_code);
}

void dialog_base_t::handle_dialog_help(wxHelpEvent&)
{
    on_help();
}

void dialog_base_t::help_activated()
{
    on_help();
}

void dialog_base_t::set_title(const std::string& title)
{
    SetTitle(wx_helpers1::to_wx_locale(title));
}

std::string dialog_base_t::get_title() const
{
    return wx_helpers1::from_wx_locale(GetTitle());
}

wxSize dialog_base_t::get_proportional_size(float fx, float fy, const wxSize& min) const
{
    const wxWindow* parent = GetParent();
    if (!parent)
        return min;
    const wxSize size = parent->GetSize();
    const auto part = [](float fraction, int of, int least) {
        // A fraction that no pixel count can hold, or that is no number, is none.
        const double wanted = static_cast<double>(fraction) * of;
        const int pixels = wanted > -2e9 && wanted < 2e9 ? static_cast<int>(wanted) : 0;
        return std::max({pixels, least, 0});
    };
    return wxSize(part(fx, size.x, min.x), part(fy, size.y, min.y));
}

wxSizer* dialog_base_t::need_sizer()
{
    if (!GetSizer())
        SetSizer(new wxBoxSizer(wxVERTICAL));
    return GetSizer();
}

// The toolkit's own ways of sizing and centring ask the window manager for the free part of the screen, a
// dozen questions to the display each time; what is larger than the screen would be no better for being cut
// off.
void dialog_base_t::fit_to_contents()
{
    if (!GetSizer())
        return;
    m_fit = fit_t::contents;
    forget_measurements(this);
    const wxSize contents = GetSizer()->CalcMin();
    const wxSize needed = ClientToWindowSize(contents);
    // The first window of its kind does not know its frame yet: the toolkit defers its showing until it does, and
    // its way corrects the size then. One that is shown again has forgotten its frame with the last showing;
    // that way would then make it a single pixel wide until it has come.
    if (needed == contents && m_deferShow) {
        GetSizer()->SetSizeHints(this);
        m_fitted = GetClientSize();
        return;
    }
    SetMinSize(needed);
    if (GetSize() == needed) {
        Layout(); // what is in it may have changed all the same
    } else {
        wx_helpers1::forget_client_size(this);
        SetSize(needed);
    }
    m_fitted = GetClientSize();
}

// Labels that wrap need a width before they know their height. Until they do, the dialog is high enough for
// anything, so that nothing is squeezed.
void dialog_base_t::fit_to_contents(int width)
{
    if (!GetSizer())
        return;
    m_fit = fit_t::width;
    m_fit_width = width;
    forget_measurements(this);
    // The inner width, as to some desktops the frame and its shadow are part of the window.
    SetClientSize(std::max(width, GetSizer()->CalcMin().x), GetSize().y + wxGetDisplaySize().y);
    Layout();
    // The inner size, as the first window of its kind does not know its frame yet.
    const wxSize needed(GetClientSize().x, GetSizer()->CalcMin().y);
    SetMinClientSize(needed);
    SetClientSize(needed);
    m_fitted = GetClientSize();
}

void dialog_base_t::keep_on_screen(wxWindow* content)
{
    const unsigned display = wx_helpers1::display_near(GetParent() ? GetParent() : this);
    // The frame is the window manager's, and not known yet.
    const wxSize room =
        wxDisplay(display).GetClientArea().GetSize() - wxSize(GetCharWidth(), 3 * GetCharHeight());
    wxSize size = GetSize();
    m_kept_on_screen = content;
    if (!content || (size.x <= room.x && size.y <= room.y))
        return;
    auto* area = wxDynamicCast(content, wxScrolledWindow);
    if (!area)
        area = put_into_area(content);
    m_kept_on_screen = area;
    if (!std::exchange(m_follows, true))
        follow_contents(area);
    area->SetScrollRate(GetCharWidth(), GetCharHeight());
    // A bar that comes and goes with the height of texts, which goes by the width that it leaves, would never
    // rest.
    area->ShowScrollbars(wxSHOW_SB_DEFAULT, wxSHOW_SB_ALWAYS);
    area->SetMinSize(wxSize(1, 1));
    if (size.y > room.y) // what is in the area shall be as wide beside the bar as it was
        size.x += std::max(0, wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, area));
    size.DecTo(room);
    SetMinSize(wxSize(size.x, std::min(size.y, 2 * room.y / 3)));
    SetSize(size);
    Layout();
    if (const int missing = area->GetSizer()->CalcMin().x - area->GetClientSize().x; missing > 0) {
        SetSize(std::min(size.x + missing, room.x), size.y);
        Layout();
    }
    area->FitInside();
    m_fitted = GetClientSize();
}

// With the new look it may have room enough, or need less or more.
void dialog_base_t::fit_again()
{
    if (m_fit == fit_t::none || !GetSizer())
        return;
    wxSize enlarged = GetClientSize() - m_fitted; // by the user
    enlarged.IncTo(wxSize(0, 0));
    if (auto* area = wxDynamicCast(m_kept_on_screen.get(), wxScrolledWindow)) {
        area->Scroll(0, 0);
        area->SetScrollRate(0, 0);
        area->SetMinSize(wxDefaultSize);
    }
    SetMinSize(wxDefaultSize); // what it needed before
    if (m_fit == fit_t::contents) {
        fit_to_contents();
        fit_to_contents(); // labels that wrap know their height once they have their width
    } else {
        fit_to_contents(m_fit_width);
    }
    if (m_kept_on_screen)
        keep_on_screen(m_kept_on_screen);
    if (enlarged != wxSize(0, 0)) {
        const wxSize fitted = m_fitted;
        SetClientSize(fitted + enlarged);
        m_fitted = fitted;
    }
}

// With long texts each takes a moment, and all that are open together would keep the user waiting.
void dialog_base_t::fit_in_turn()
{
    const auto fit = [dialog = wxWeakRef<dialog_base_t>(this)] {
        if (dialog && dialog->m_outdated && dialog->IsShown())
            dialog->on_look_settled();
    };
    if (wx_helpers1::tasks::Scheduler::IsInitialized())
        wx_helpers1::tasks::Scheduler::Post(fit);
    else
        fit();
}

void dialog_base_t::on_look_settled()
{
    if (!is_initialized())
        return;
    m_outdated = false;
    fit_again();
    keep_in_sight();
}

// It has grown to the right and down.
void dialog_base_t::keep_in_sight()
{
    const wxRect screen = wxDisplay(wx_helpers1::display_near(this)).GetClientArea();
    wxRect place = GetRect();
    place.x = std::max(screen.x, std::min(place.x, screen.GetRight() + 1 - place.width));
    place.y = std::max(screen.y, std::min(place.y, screen.GetBottom() + 1 - place.height));
    if (place != GetRect())
        Move(place.GetPosition());
}

void dialog_base_t::centre_on_parent()
{
    const wxWindow* over = GetParent() ? wxGetTopLevelParent(GetParent()) : nullptr;
    if (!over || !over->IsShown()) {
        CentreOnScreen();
        return;
    }
    const wxRect screen = wxDisplay(wx_helpers1::display_near(over)).GetGeometry();
    wxRect place = wxRect(GetSize()).CentreIn(over->GetRect());
    place.x = std::max(screen.x, std::min(place.x, screen.GetRight() + 1 - place.width));
    place.y = std::max(screen.y, std::min(place.y, screen.GetBottom() + 1 - place.height));
    wx_helpers1::place_window(this, place.GetPosition());
}

} // namespace commondlg3
