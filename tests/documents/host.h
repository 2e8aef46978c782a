// What the examples of the documents take for granted: their own window, its members, and what they call.
#pragma once

#include <cfgmgr2/product_locations.h>
#include <commondlg3/advanced_panel.h>
#include <commondlg3/audit.h>
#include <commondlg3/caption_panel.h>
#include <commondlg3/dialog_base.h>
#include <commondlg3/editor_data.h>
#include <commondlg3/editor_launch.h>
#include <commondlg3/image_loader.h>
#include <commondlg3/inplace_ctrl.h>
#include <commondlg3/message_center.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/resources.h>
#include <commondlg3/search_dirs_tab.h>
#include <commondlg3/silenced_messages.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <iostream>
#include <memory>
#include <string>

using namespace commondlg3;

std::shared_ptr<preferences_page_t> make_sampling_page(settings_file_ptr_t file);

struct host_t : pref_base_t
{
    wxWindow* parent = nullptr;
    wxSizer* sizer = nullptr;
    wxSizer* rows = nullptr;
    wxTextCtrl* m_folder = nullptr;
    wxStaticText* label = nullptr;
    wxTextCtrl* field = nullptr;
    wxButton* button = nullptr;
    wxStaticText* explanation = nullptr;
    wx_helpers1::static_picture_ctrl_t* control = nullptr;
    caption_panel_t* m_heading = nullptr;
    advanced_panel_t* more = nullptr;
    inplace_ctrl_t* log = nullptr;
    int m_bad_port = 0;
    std::string title, description, trouble;
    message_window_t window;
    progress_message_t::ptr_t message;
    inplace_ctrl_t::callback_t callback;
    gen_helpers2::path_t file, config_directory;
    int line = 1;
    gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> preferences, settings;

    std::string text(const std::string& key);
    void overwrite();
    void remove_results();
    void retry();
    void restart();
    void use(const std::string& text);
    template <class F>
    void start_worker(F work)
    {
        work();
    }
};
