#include "commondlg3/error_warning_dialog.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include "icon_type.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/input_guard.h>

#include <wx/button.h>
#include <wx/sizer.h>

namespace commondlg3 {

error_warning_dialog_t::error_warning_dialog_t(const message_window_t& window,
                                               const message_options_t& options)
    : m_window(window), m_panel(new error_warning_panel_t(window, options))
{
    set_resource_object("dlg.error_warning_dialog");
    Bind(wxEVT_CHAR_HOOK, &error_warning_dialog_t::on_key, this);
}

error_warning_dialog_t::~error_warning_dialog_t()
{
    if (!m_panel->GetParent())
        delete m_panel; // never shown, it is nobody's child
}

bool error_warning_dialog_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                                    const std::string& catalog_name,
                                                    const std::string& object_name)
{
    return m_panel->can_be_loaded(resource_file, catalog_name) &&
           dialog_base_t::load_from_xml_resource(parent, resource_file, catalog_name, object_name);
}

void error_warning_dialog_t::set_window(const message_window_t& window, const message_options_t& options)
{
    m_window = window;
    m_panel->set_window(window, options);
    m_stale = is_initialized();
}

void error_warning_dialog_t::on_init_dialog()
{
    m_panel->get_end_signal().connect(
        this, [this](generic_base_t<wxPanel>* panel, int code) { on_end_panel(panel, code); });
    m_panel->get_resized_signal().connect(this, [this] { on_panel_resized(); });
    need_sizer()->Add(m_panel, 1, wxEXPAND);
    m_panel->create(this);
    wx_helpers1::guard_input(this); // it may come while the user types
    wx_helpers1::set_accessible_role(this, wx_helpers1::accessible_role_t::alert);
    present();
}

// What a message changes of the window around it.
void error_warning_dialog_t::present()
{
    set_title(translate_message(icon_type_of(m_window.icon_type).title_key));
    constexpr std::size_t spoken_bytes = 4096; // nobody listens to more without asking for it
    wx_helpers1::set_accessible_description(this, m_panel->get_shown_text().substr(0, spoken_bytes));
    fit_to_contents();
    m_panel->Layout(); // of the same size as before it would keep the places of the last message's buttons
    centre_on_parent();
}

void error_warning_dialog_t::on_panel_resized()
{
    fit_to_contents();
    m_panel->Layout();
    keep_in_sight();
}

void error_warning_dialog_t::on_update_ui_settings()
{
    // The panel hears of the change by itself, once its texts are there to be measured anew.
    if (!m_panel->is_initialized())
        return;
    if (m_stale) {
        m_stale = false;
        m_panel->refill();
        present();
    } else {
        m_panel->on_update_ui_settings();
        fit_to_contents();
    }
}

// Whoever closes the window has not chosen to destroy anything.
void error_warning_dialog_t::on_cancel()
{
    if (m_panel->get_options().second.destructive) {
        set_return_code(wxID_NONE);
        return;
    }
    m_panel->on_cancel();
}

void error_warning_dialog_t::on_end_panel(generic_base_t<wxPanel>*, int code)
{
    end_dialog(code);
}

void error_warning_dialog_t::on_key(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    const bool copies = event.GetModifiers() == wxMOD_CONTROL && (key == 'C' || key == WXK_INSERT);
    const bool plain = event.GetModifiers() == wxMOD_NONE;
    if (copies)
        m_panel->copy(get_title());
    else if (plain && key == WXK_ESCAPE &&
             (m_window.button_type == message_window_t::button_type_t::none ||
              m_panel->get_options().second.destructive))
        Close(); // there is no button that the toolkit could press, or none that it should
    else if (!plain || !m_panel->scroll_by_key(key))
        event.Skip();
}

} // namespace commondlg3
