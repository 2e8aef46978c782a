/// Windows that count what is done to them, on the layouts of the host's example windows.
#pragma once

#include "support.h"

#include <commondlg3/dialog_base.h>
#include <commondlg3/message_window.h>
#include <commondlg3/pref_base.h>
#include <commondlg3/resources.h>

#include <wx/button.h>

#include <gtk/gtk.h>

#include <functional>
#include <map>
#include <string>
#include <type_traits>

namespace test {

template <class Base>
class probe_t : public Base
{
public:
    explicit probe_t(const std::string& object)
    {
        this->set_resource_file(commondlg3::create_resource_filename("gallery.dat", "gallery.xrc"));
        this->set_resource_object(object);
    }

    void on_init_dialog() override
    {
        ++calls["init"];
        if (on_init)
            on_init();
    }
    void on_ok() override
    {
        ++calls["ok"];
        Base::on_ok();
        if (code_of_ok)
            set_code(code_of_ok);
    }
    void on_cancel() override
    {
        ++calls["cancel"];
        if (code_of_cancel)
            set_code(code_of_cancel);
    }
    bool save_settings() override
    {
        ++calls["save"];
        return true;
    }
    void on_update_ui_settings() override
    {
        ++calls["fonts"];
        Base::on_update_ui_settings();
    }
    void load_auxiliary_strings() override
    {
        ++calls["strings"];
        Base::load_auxiliary_strings();
    }
    void set_max_text_limit() override
    {
        ++calls["limits"];
        if (register_limits)
            register_limits();
        Base::set_max_text_limit();
    }

    using Base::m_btn_cancel;
    using Base::m_btn_help;
    using Base::m_btn_ok;
    using Base::m_min_size;
    using Base::m_path_messages;
    using Base::m_unknown_text;
    using Base::set_max_len_options;
    using Base::set_resource_file;
    using Base::set_resource_object;

    void send_init_event()
    {
        wxInitDialogEvent event(this->GetId());
        event.SetEventObject(this);
        this->handle_init_dialog_event(event);
    }

    std::map<std::string, int> calls;
    std::function<void()> on_init;
    std::function<void()> register_limits;
    int code_of_ok = 0;
    int code_of_cancel = 0;

private:
    void set_code(int code)
    {
        if constexpr (std::is_base_of_v<commondlg3::dialog_base_t, Base>)
            this->set_return_code(code);
    }
};

using probe_dialog_t = probe_t<commondlg3::dialog_base_t>;
using probe_page_t = probe_t<commondlg3::pref_base_t>;

/// A warning with all of its texts.
inline commondlg3::message_window_t sample_message(int button_type = 0)
{
    commondlg3::message_window_t window;
    window.main_message = "The result could not be saved";
    window.supplemental_message = "The disk is full. Free some space and try again.";
    window.details_message = "write: ENOSPC";
    window.button_type = static_cast<commondlg3::message_window_t::button_type_t>(button_type);
    window.icon_type = commondlg3::message_window_t::icon_types_t::warning;
    return window;
}

/// run_modal() over the main window.
inline int run(const commondlg3::message_window_t& window, const std::function<void(wxTopLevelWindow*)>& act)
{
    return run_modal([&] { return commondlg3::show_modal(window, main_window()); }, act);
}

/// Whether a button is down: one that the keyboard pressed acts only when it comes up again.
inline bool is_pressed(const wxWindow* button)
{
    return gtk_widget_get_state_flags(GTK_WIDGET(button->GetHandle())) & GTK_STATE_FLAG_ACTIVE;
}

/// A window that has been given the focus; later it would take that from the window over it.
inline wxFrame* show_frame(const char* title)
{
    auto* frame = new wxFrame(main_window(), wxID_ANY, title);
    frame->Show();
    EXPECT_TRUE(wait_for([frame] { return frame->IsActive(); }));
    return frame;
}

} // namespace test
